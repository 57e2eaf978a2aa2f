#include <tools/corvane/text/text.h>

#include <corvane/catalogue/substances.h>

#include <algorithm>
#include <cctype>

namespace cli {
namespace {
bool digit(char c) {
    return c >= '0' && c <= '9';
}

/// A sum formula, and no family (C3) or refrigerant (R12, HFC134) that looks like one.
bool is_formula(std::string const& text) {
    if (corvane::sum_formula(text).empty() || std::none_of(text.begin(), text.end(), digit)) return false;
    for (char const* family : {"R", "FC", "CFC", "HFC", "HCFC", "HC"})
        if (const std::string_view name = family; text.starts_with(name) && digit(text[name.size()])) return false;
    // Of one element as a molecule: H2, N2, O2, F2, Cl2, D2, O3.
    const auto elements = std::count_if(text.begin(), text.end(), [](unsigned char c) { return std::isupper(c); });
    return elements > 1 || text.front() != 'C' || text.starts_with("Cl");
}

/// Digits and + as subscripts (Unicode, "Superscripts and Subscripts").
std::string lowered(std::string const& text) {
    std::string result;
    for (char c : text)
        if (digit(c))
            result += std::string("\xe2\x82") + static_cast<char>(0x80 + (c - '0'));
        else if (c == '+')
            result += "\xe2\x82\x8a";
        else
            result += c;
    return result;
}

/// Length of the UTF-8 sequence at the beginning, 0 for none; the code point into `code`. The table
/// of well-formed sequences: The Unicode Standard 15.0, table 3-7.
std::size_t sequence(std::string_view text, unsigned& code) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned first = byte(0);
    const std::size_t length = first < 0x80                    ? 1
                               : first >= 0xc2 && first < 0xe0 ? 2
                               : first >= 0xe0 && first < 0xf0 ? 3
                               : first >= 0xf0 && first < 0xf5 ? 4
                                                               : 0;
    if (length == 0 || text.size() < length) return 0;
    code = length == 1 ? first : first & (0x7fu >> length);
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(k) & 0xc0u) != 0x80u) return 0;
        code = code << 6 | (byte(k) & 0x3fu);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xd800 && code < 0xe000;
    return overlong || surrogate || code > 0x10ffff ? 0 : length;
}
}  // namespace

std::string name_in_picture(std::string const& asked, std::string const& name) {
    const bool fraction = name.size() > 1 && name.front() == 'C' &&
                          name.find_first_not_of("0123456789+", 1) == std::string::npos;
    return fraction ? lowered(name) : is_formula(asked) ? lowered(asked) : written_name(name);
}

std::string printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        unsigned code = 0;
        const std::size_t length = sequence(text, code);
        // C0, DEL and C1; and what turns the direction of writing, which can hide a word.
        const bool control = code < 0x20 || (code >= 0x7f && code < 0xa0) ||
                             (code >= 0x202a && code <= 0x202e) ||
                             (code >= 0x2066 && code <= 0x2069);
        if (length == 0 || control)
            result += '?';
        else
            result += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

std::string unit_in_picture(std::string unit) {
    if (unit == "C" || unit == "F") return "\u00b0" + unit;
    if (unit.starts_with("uPa")) unit.replace(0, 1, "\u00b5");
    for (char const* length : {"m3", "ft3"})
        if (const std::size_t at = unit.find(length); at != std::string::npos)
            unit.replace(at + std::string_view(length).size() - 1, 1, "\u00b3");
    return unit;
}

}  // namespace cli
