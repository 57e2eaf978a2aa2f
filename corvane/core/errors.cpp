#include <corvane/core/errors.h>

#include <cstddef>
#include <cstdio>

char const* const ThException::errmsg[th_codes] = {
    "generic failure",
    "could not open file",
    "substance ID numbers not matching",
    "no ideal-gas heat capacities available",
    "option or level of theory not available",
    "value out of range",
    "no solid-state data available",
    "no thermochemical data available",
    "trivial result",
    "volume finder returned no solution",
    "volume finder returned a liquid volume only",
    "volume finder returned a gas volume only",
};

char const* const MthException::errmsg[mth_codes] = {
    "generic failure",
    "too many iteration cycles",
    "incompatible matrix/vector dimensions",
    "matrix not square",
    "matrix singular",
    "duplicate x data",
    "abscissa values not in ascending order",
    "too few data points/equations",
    "option/approximation level not implemented",
    "increment/initial step size too small or wrong sign",
    "value out of range",
    "interval too narrow, or reversed boundaries",
    "initial y values have the same signs",
    "initial values do not show a local minimum",
    "inflection point in step function",
    "points collinear",
    "parameter #%d irrelevant",
};

namespace {
// Longest text (55 characters) plus ": ", a signed 32-bit number, newline and terminator.
constexpr std::size_t kMessageLength = 96;

char const* table_text(char const* const* table, int size, int number) {
    return table[number >= 0 && number < size ? number : 0];
}
}  // namespace

char const* ThException::message() const {
    char const* text = table_text(errmsg, th_codes, number);
    if (info < 0) return text;
    static char buffer[kMessageLength];  // intended: one static buffer, no lock
    std::snprintf(buffer, sizeof buffer, "%s: %d\n", text, info);
    return buffer;
}

char const* MthException::message() const {
    char const* text = table_text(errmsg, mth_codes, number);
    if (info < 0) return text;
    static char buffer[kMessageLength];
    if (number == mth_irrelevant)
        std::snprintf(buffer, sizeof buffer, "parameter #%d irrelevant", info);
    else
        std::snprintf(buffer, sizeof buffer, "%s: %d\n", text, info);
    return buffer;
}
