// Small operations on strings.
#pragma once

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// The parts between separators; an empty text has one empty part.
inline std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts(1);
    for (char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

inline std::string join(std::vector<std::string> const& parts, std::string_view separator) {
    std::string text;
    for (std::string const& part : parts) {
        if (&part != &parts.front()) text += separator;
        text += part;
    }
    return text;
}

inline std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

/// What a terminal shows as it stands: valid UTF-8 without control characters, each of which, and
/// each byte of what is no UTF-8, becomes '?'.
std::string printable(std::string_view text);

/// A word of a user as messages repeat it: the first of more than 60 bytes, then "...".
inline std::string clipped(std::string_view word) {
    constexpr std::size_t kMost = 60;
    return word.size() <= kMost ? std::string(word) : std::string(word.substr(0, kMost)) + "...";
}

/// Without blanks, tabs and line ends at both ends.
inline std::string trimmed(std::string_view text) {
    constexpr char const* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

}  // namespace cli
