// The table of an equation's parameters: what they are called, which values they may have, how they
// are read and written.
#pragma once

#include <corvane/plugin/parameter.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/small_array.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace corvane {

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
/// @param[out] values  n of them, written as they are read
/// @throws ThException 1 (FileError) for what cannot be read or lies outside its limits
inline void read_parameters(SectionReader& section, Parameter const* table, int n, double* values) {
    SmallArray<bool, 64> missing(n);
    for (int k = 0; k < n; ++k) {
        missing[k] = table[k].optional;
        values[k] =
            table[k].optional ? table[k].value : parameters_detail::checked(section, table[k]);
    }
    for (bool more = true; more;) {
        more = false;
        for (int k = 0; k < n; ++k)
            if (missing[k] && section.at(table[k].label)) {
                values[k] = parameters_detail::checked(section, table[k]);
                missing[k] = false;
                more = true;
            }
    }
}
template <std::size_t N>
ParameterValues<N> read_parameters(SectionReader& section, Parameter const (&table)[N]) {
    ParameterValues<N> values;
    read_parameters(section, table, static_cast<int>(N), values.data());
    return values;
}

/// Writes them; optional lines only where the value is not the default.
inline void write_parameters(SectionWriter& section, Parameter const* table, int n,
                             double const* values) {
    for (int k = 0; k < n; ++k)
        if (!table[k].optional || values[k] != table[k].value)
            section.number(table[k].label, values[k]);
}
template <std::size_t N>
void write_parameters(SectionWriter& section, Parameter const (&table)[N], double const* values) {
    write_parameters(section, table, static_cast<int>(N), values);
}

}  // namespace corvane
