#include <tools/corvane/text/text.h>

namespace cli {
namespace {
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

}  // namespace cli
