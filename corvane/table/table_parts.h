// What building, reading and evaluating a table share: axes, and the polynomials on a cell, −1 <= x, y <= 1.
#pragma once

#include <corvane/table/property_table.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane::inline detail {

/// @throws ThException 5
void check_design(TableDesign const& design);

/// The value at a part, 0 to 1, of the axis.
inline double value_at(TableAxis const& axis, double part) {
    const double v = axis.logarithmic ? axis.from * std::exp(part * std::log(axis.to / axis.from))
                                      : axis.from + part * (axis.to - axis.from);
    return std::clamp(v, axis.from, axis.to);
}

using CellRow = std::array<double, PropertyTable::kOrder>;

inline CellRow chebyshev_polynomials(double x) {
    CellRow t;
    t[0] = 1;
    t[1] = x;
    for (int k = 2; k < PropertyTable::kOrder; ++k)
        t[static_cast<std::size_t>(k)] = 2 * x * t[static_cast<std::size_t>(k - 1)] -
                                         t[static_cast<std::size_t>(k - 2)];
    return t;
}
/// Seven sums side by side, which the processor does at once.
inline double chebyshev_sum(double const* c, CellRow const& tx, CellRow const& ty) {
    CellRow row{};
    for (double x : tx)
        for (double& sum : row) sum += x * *c++;
    double sum = 0;
    for (std::size_t j = 0; j < row.size(); ++j) sum += row[j] * ty[j];
    return sum;
}

}  // namespace corvane::inline detail
