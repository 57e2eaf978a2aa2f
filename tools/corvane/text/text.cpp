#include <tools/corvane/text/text.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <vector>

namespace cli {
namespace {
bool is_number(std::string const& part) {
    return !part.empty() && part.find_first_not_of("0123456789") == std::string::npos;
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
/// What is joined to the next part of a name by a hyphen.
bool is_prefix(std::string const& part) {
    static char const* const prefixes[] = {"cis", "trans", "tert", "m", "n", "o", "p"};
    return is_number(part) ||
           std::find(std::begin(prefixes), std::end(prefixes), part) != std::end(prefixes);
}
}  // namespace

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

std::string written_name(std::string_view name) {
    std::vector<std::string> parts = split(name, '_');
    const std::string first = parts.front();
    if (first.size() > 2 && first[0] == 'r' && std::isdigit(static_cast<unsigned char>(first[1]))) {
        parts.front()[0] = 'R';
        return parts.size() == 2 ? parts[0] + '(' + std::string(1, static_cast<char>(std::toupper(
                                       static_cast<unsigned char>(parts[1][0])))) + ')'
                                 : join(parts, "-");
    }
    std::string text = first == "n" && parts.size() > 1 ? "N" : first;
    for (std::size_t k = 1; k < parts.size(); ++k) {
        const bool number = is_number(parts[k]);
        text += number && is_number(parts[k - 1]) ? "," : number || is_prefix(parts[k - 1]) ? "-" : " ";
        text += parts[k];
    }
    return text;
}

}  // namespace cli
