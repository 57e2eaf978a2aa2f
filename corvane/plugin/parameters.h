// The table of an equation's parameters: what they are called, which values they may have, how they
// are read and written.
#pragma once

#include <corvane/plugin/section.h>

#include <array>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>

namespace corvane {

/// The least positive number, as a lower limit: above zero.
inline constexpr double above_zero = std::numeric_limits<double>::min();
inline constexpr double no_limit = std::numeric_limits<double>::infinity();

/// One parameter. In files it is a line of label, colon, tab and value.
struct Parameter {
    char const* label;       ///< at most 30 characters, no blank
    char const* unit = "";   ///< for people; empty: a pure number
    double value = 0.0;      ///< before anything is read, and where an optional line is missing
    double low = -no_limit;  ///< least and greatest value that a file may give, themselves included
    double high = no_limit;
    bool adjustable = false;  ///< meant to be fitted; those of a substance stand next to each other
    bool optional = false;    ///< the line may be missing; optional lines come last, in any order
    int mirror = -1;  ///< of a pair (i, j): the parameter that this one is for (j, i); −1: itself
};

/// Values in the order of their table.
template <std::size_t N>
using ParameterValues = std::array<double, N>;

template <std::size_t N>
constexpr ParameterValues<N> default_values(Parameter const (&table)[N]) {
    ParameterValues<N> values{};
    for (std::size_t k = 0; k < N; ++k) values[k] = table[k].value;
    return values;
}

/// Number of the parameter with this label, or −1.
template <std::size_t N>
constexpr int parameter_index(Parameter const (&table)[N], std::string_view label) {
    for (std::size_t k = 0; k < N; ++k)
        if (label == table[k].label) return static_cast<int>(k);
    return -1;
}

namespace parameters_detail {
inline double checked(SectionReader& section, Parameter const& p) {
    const double x = section.number(p.label);
    if (x >= p.low && x <= p.high) return x;
    const auto text = [](double limit) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%g", limit);
        return std::string(digits);
    };
    std::string range = p.low == above_zero ? "above 0" : "at least " + text(p.low);
    if (p.high < no_limit)
        range =
            p.low == -no_limit ? "at most " + text(p.high) : range + " and at most " + text(p.high);
    section.refuse(std::string(p.label) + " must be " + range);
}
}  // namespace parameters_detail

/// Reads the lines of a table: first those that must be there, in their order, then the others.
/// @throws ThException 1 (FileError) for what cannot be read or lies outside its limits
template <std::size_t N>
ParameterValues<N> read_parameters(SectionReader& section, Parameter const (&table)[N]) {
    ParameterValues<N> values = default_values(table);
    for (std::size_t k = 0; k < N; ++k)
        if (!table[k].optional) values[k] = parameters_detail::checked(section, table[k]);
    std::array<bool, N> read{};
    for (bool more = true; more;) {
        more = false;
        for (std::size_t k = 0; k < N; ++k)
            if (table[k].optional && !read[k] && section.at(table[k].label)) {
                values[k] = parameters_detail::checked(section, table[k]);
                more = read[k] = true;
            }
    }
    return values;
}

/// Writes them; optional lines only where the value is not the default.
template <std::size_t N>
void write_parameters(SectionWriter& section, Parameter const (&table)[N], double const* values) {
    for (std::size_t k = 0; k < N; ++k)
        if (!table[k].optional || values[k] != table[k].value)
            section.number(table[k].label, values[k]);
}

}  // namespace corvane
