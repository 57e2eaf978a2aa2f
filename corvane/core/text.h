// Small operations on text, for what reads data files and names. Numbers as in the C locale.
#pragma once

#include <corvane/core/number_text.h>

#include <cctype>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::inline detail {

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

/// Without blanks, tabs and line ends at both ends.
inline std::string trimmed(std::string_view text) {
    constexpr char const* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

/// A word of a user as messages repeat it: the first of more than 60 bytes, then "...".
inline std::string clipped(std::string_view word) {
    constexpr std::size_t kMost = 60;
    return word.size() <= kMost ? std::string(word) : std::string(word.substr(0, kMost)) + "...";
}

/// The whole text as one finite number, or nothing.
inline std::optional<double> to_number(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double x = 0.0;
    const auto [end, error] = number_from_chars(text.data(), text.data() + text.size(), x);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(x)) return {};
    return x;
}

/// Takes what stands before the next separator off the text.
inline std::string_view next_part(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

}  // namespace corvane::inline detail
