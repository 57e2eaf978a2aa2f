#include <corvane/table/property_table.h>

#include <corvane/core/errors.h>
#include <corvane/table/table_parts.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace corvane {
namespace {
/// Where a value lies on its axis, 0 to 1; outside: below 0 or above 1, or not a number.
double part(TableAxis const& axis, double value) {
    return axis.logarithmic ? std::log(value / axis.from) / std::log(axis.to / axis.from)
                            : (value - axis.from) / (axis.to - axis.from);
}
}  // namespace

double const* PropertyTable::cell(double a, double b, double& x, double& y) const noexcept {
    // The ends belong to the range whatever rounding says.
    if (!(a >= design_.a.from && a <= design_.a.to && b >= design_.b.from && b <= design_.b.to))
        return nullptr;
    x = std::clamp(part(design_.a, a), 0.0, 1.0);
    y = std::clamp(part(design_.b, b), 0.0, 1.0);
    int k = 0;
    while (cells_[static_cast<std::size_t>(k)] > 0) {
        x *= 2, y *= 2;
        const int right = x >= 1, upper = y >= 1;
        x -= right, y -= upper;
        k = cells_[static_cast<std::size_t>(k)] + 2 * right + upper;
    }
    const int leaf = -2 - cells_[static_cast<std::size_t>(k)];
    if (leaf < 0) return nullptr;
    x = 2 * x - 1;
    y = 2 * y - 1;
    return values_.data() + static_cast<std::size_t>(leaf) * design_.columns.size() * kOrder * kOrder;
}

bool PropertyTable::at(double a, double b, double* values) const noexcept {
    double x, y;
    double const* c = cell(a, b, x, y);
    if (!c) return false;
    const CellRow tx = chebyshev_polynomials(x), ty = chebyshev_polynomials(y);
    for (TableColumn const& column : design_.columns) {
        const double v = chebyshev_sum(c, tx, ty);
        *values++ = column.unit == 0 ? std::exp(v) : v;
        c += kOrder * kOrder;
    }
    return true;
}

double PropertyTable::coverage() const {
    double covered = 0;
    std::vector<std::pair<int, double>> open{{0, 1.0}};
    while (!open.empty()) {
        const auto [k, area] = open.back();
        open.pop_back();
        const int what = cells_[static_cast<std::size_t>(k)];
        if (what > 0)
            for (int child = 0; child < 4; ++child) open.emplace_back(what + child, area / 4);
        else if (what < -1)
            covered += area;
    }
    return covered;
}

TableCheck PropertyTable::check(TableSample const& sample, int points, unsigned seed) const {
    if (points < 1) throw ThException(th_out_of_range);
    std::mt19937_64 generator(seed);
    auto draw = [&] { return static_cast<double>(generator() >> 11) * 0x1p-53; };
    const std::size_t n = columns().size();
    TableCheck c;
    c.worst.assign(n, 0.0);
    std::vector<double> is(n), said(n);
    for (c.points = 0; c.points < points; ++c.points) {
        const double a = value_at(design_.a, draw()), b = value_at(design_.b, draw());
        const bool answer = at(a, b, said.data());
        const int kind = sample(a, b, is.data());
        c.answered += answer;
        c.without += !answer && kind == 0;
        bool same = kind != 0;
        for (std::size_t k = 0; k < n; ++k) same &= std::isnan(is[k]) == std::isnan(said[k]);
        if (!answer) continue;
        c.other += !same;
        for (std::size_t k = 0; k < n && same; ++k) {
            if (std::isnan(is[k])) continue;
            const double unit = columns()[k].unit;
            const double error = unit == 0 ? std::fabs(said[k] / is[k] - 1)
                                           : std::fabs(said[k] - is[k]) / unit;
            c.worst[k] = std::max(c.worst[k], error);
        }
    }
    return c;
}

}  // namespace corvane
