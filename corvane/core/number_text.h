// Numbers to text and back with a point, whatever locale the process has: std::from_chars and
// std::to_chars, and what stands in for them where a standard library has these for integers only
// (libc++ before 14 and 20). Internal.
#pragma once

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>
#include <version>

namespace corvane::inline detail {

/// By the C library, whose locale must be "C" (Emscripten's has no other).
namespace by_c_library {

/// As std::from_chars for finite decimal numbers; "inf" and "nan" are no numbers here.
inline std::from_chars_result from_chars(char const* first, char const* last, double& x) {
    const std::string text(first, last);  // what follows `last` is not read
    char const *const begin = text.c_str(), *digit = begin + (*begin == '-');
    const bool begins = (*digit >= '0' && *digit <= '9') || *digit == '.';
    const bool hexadecimal = *digit == '0' && (digit[1] == 'x' || digit[1] == 'X');
    char* end = nullptr;
    const double read = begins && !hexadecimal ? std::strtod(begin, &end) : 0.0;
    if (hexadecimal) {  // the zero before the x
        x = digit == begin ? 0.0 : -0.0;
        return {first + (digit - begin) + 1, std::errc()};
    }
    if (!begins || end == begin) return {first, std::errc::invalid_argument};
    char const* const stop = first + (end - begin);
    bool zero = true;
    for (char const* c = digit; c != end && *c != 'e' && *c != 'E'; ++c)
        zero = zero && (*c == '0' || *c == '.');
    if (std::isinf(read) || (read == 0.0 && !zero)) return {stop, std::errc::result_out_of_range};
    x = read;
    return {stop, std::errc()};
}

/// printf's %g or %e (form) with so many digits.
inline std::string text_of(double x, char form, int digits) {
    const char format[] = {'%', '.', '*', form, '\0'};
    char text[400];
    const int length = std::snprintf(text, sizeof text, format, digits, x);
    return {text, static_cast<std::size_t>(length)};
}

/// The fewest digits that read back as x.
inline std::string shortest_text(double x) {
    for (int digits = 1; digits < 17; ++digits) {
        std::string text = text_of(x, 'g', digits);
        if (std::strtod(text.c_str(), nullptr) == x) return text;
    }
    return text_of(x, 'g', 17);
}

}  // namespace by_c_library

#ifdef __cpp_lib_to_chars
inline std::from_chars_result number_from_chars(char const* first, char const* last, double& x) {
    return std::from_chars(first, last, x);
}
inline std::string number_text(double x, char form, int digits) {
    char text[400];
    const auto format = form == 'e' ? std::chars_format::scientific : std::chars_format::general;
    return {text, std::to_chars(text, text + sizeof text, x, format, digits).ptr};
}
inline std::string shortest_text(double x) {
    char text[40];
    return {text, std::to_chars(text, text + sizeof text, x).ptr};
}
#else
inline std::from_chars_result number_from_chars(char const* first, char const* last, double& x) {
    return by_c_library::from_chars(first, last, x);
}
inline std::string number_text(double x, char form, int digits) {
    return by_c_library::text_of(x, form, digits);
}
inline std::string shortest_text(double x) {
    return by_c_library::shortest_text(x);
}
#endif

}  // namespace corvane::inline detail
