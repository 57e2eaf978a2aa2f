// The step ladder behind the derivatives: finite differences at steps s, s/2, s/4, … and their
// extrapolation to step zero (Richardson 1911; Romberg 1955), with the choice of the best entry.
//
// A difference quotient is a power series in u (u = s² for central, u = s for one-sided quotients),
//     q(u) = a0 + a1·u + a2·u² + …,
// and the wanted derivative is a multiple of one coefficient a_c. The polynomial through the j + 1
// innermost rows, in Newton's form, gives the estimate T_j of it. What limits T_j is truncation for
// wide steps and few rows, and rounding of the function values, which grows as 1/s^m, for narrow
// ones. Ladders therefore start outward and end as soon as truncation is below rounding.
#pragma once

#include <corvane/core/errors.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace corvane {

/// Extrapolation of q(u) to its coefficient a_c from rows of decreasing u.
class Extrapolation {
  public:
    static constexpr int max_rows = 12;
    static constexpr int max_coefficient = 7;

    /// @param c        coefficient wanted, 0 … 7
    /// @param min_rows rows to take before the stop rule applies, > c + 1
    Extrapolation(int c, int min_rows) : c_(c), min_rows_(std::min(min_rows, max_rows)) {}

    /// Adds the row (u, q); noise is the rounding error that it brings into a_c.
    void add(double u, double q, double noise) {
        // diff_[j] becomes the divided difference over the j + 1 innermost rows.
        double carry = q;
        for (int j = 0; j <= rows_; ++j) {
            const double before = diff_[j];
            diff_[j] = carry;
            if (j < rows_) carry = (carry - before) / (u - u_[rows_ - 1 - j]);
        }
        u_[rows_++] = u;

        std::array<double, max_coefficient + 1>
            p{};  // coefficients of Π (u − u_i), innermost first
        p[0] = 1.0;
        double t = 0.0, last_change = 0.0, row_best = std::numeric_limits<double>::infinity();
        for (int j = 0; j < rows_; ++j) {
            const double change = diff_[j] * p[c_];
            t += change;
            const double d = std::fabs(change);
            if (j > c_) {
                const double factor =
                    j > c_ + 1 && 4.0 * d < last_change ? 4.0 * d / last_change : 1.0;
                const double truncation = d * factor;
                row_best = std::min(row_best, truncation + noise);
                if (truncation + noise < best_) {
                    best_ = truncation + noise;
                    value_ = t;
                    settled_ = truncation <= noise;
                }
            }
            last_change = d;
            const double ui = u_[rows_ - 1 - j];
            for (int i = c_; i > 0; --i) p[i] = p[i - 1] - ui * p[i];
            p[0] *= -ui;
        }
        done_ = rows_ >= max_rows || (rows_ >= min_rows_ && (settled_ || row_best > 2.0 * best_));
    }

    bool done() const { return done_; }
    double value() const { return value_; }
    /// Forgets all rows.
    void restart() { *this = Extrapolation(c_, min_rows_); }

  private:
    int c_, min_rows_, rows_ = 0;
    bool settled_ = false, done_ = false;
    double best_ = std::numeric_limits<double>::infinity(), value_ = 0.0;
    std::array<double, max_rows> u_{}, diff_{};
};

/// Runs a ladder. row(s, q, size) evaluates the quotient q at step s and the largest |f| in it, and
/// returns false when a value is not finite. Steps above `sure` are optional: an exception or a
/// value that is not finite there starts the ladder again at half the step; below, exceptions pass
/// and values that are not finite narrow the ladder down to sure/64, where MthException 10 ends it.
/// @param noise_factor  rounding error of a_c is eps·size·noise_factor/s^power
template <class Row>
double climb(Row&& row, int c, int min_rows, bool even, int power, double noise_factor,
             double start, double sure) {
    constexpr double eps = std::numeric_limits<double>::epsilon();
    Extrapolation table(c, min_rows);
    double s = start;
    while (!table.done()) {
        double q = 0.0, size = 0.0;
        bool ok = false;
        if (s > sure) {
            try {
                ok = row(s, q, size);
            } catch (...) {
                ok = false;
            }
        } else {
            ok = row(s, q, size);
        }
        if (ok) {
            table.add(even ? s * s : s, q, eps * size * noise_factor / std::pow(s, power));
        } else {
            if (s <= sure / 64.0) throw MthException(mth_out_of_range);
            table.restart();
        }
        s *= 0.5;
    }
    return table.value();
}

/// Derivative of f of order m >= 1 at x; see diff_romberg for the arguments, which are checked
/// here.
template <class F>
double derivative(F&& f, int m, double x, double h, int level, double xmin, double xmax) {
    if (m < 0 || m > 8 || level < 1) throw MthException(mth_no_option);
    if (!(xmin < xmax)) throw MthException(mth_bad_interval);
    if (!(x >= xmin && x <= xmax)) throw MthException(mth_out_of_range);
    if (m == 0) return f(x);
    if (!(h > 0.0) || !std::isfinite(h) || x + h == x) throw MthException(mth_bad_step);

    constexpr std::array<double, 9> outward{1, 4, 16, 32, 64, 64, 64, 64, 64};
    constexpr std::array<double, 9> factorial{1, 1, 2, 6, 24, 120, 720, 5040, 40320};
    double start = outward[m] * h;
    if (x != 0.0) start = std::min(start, std::max(h, 0.1 * std::fabs(x)));
    const int extra = level >= 4 ? 1 : 0;
    const double up = xmax - x, down = x - xmin, room = std::min(up, down);
    const double noise = factorial[m] * (m == 1 ? 1.0 : 2.0);
    const bool central = room >= 0.5 * h, even_order = m % 2 == 0;
    const double f0 = central && !even_order ? 0.0 : f(x);
    if (!std::isfinite(f0)) throw MthException(mth_out_of_range);

    if (central) {
        // The step is rounded so that it is exact at the point of larger magnitude, hence at both.
        auto row = [&](double& s, double& q, double& size) {
            s = x >= 0.0 ? (x + s) - x : x - (x - s);
            const double fp = f(std::min(x + s, xmax)), fm = f(std::max(x - s, xmin));
            q = even_order ? ((fp - f0) + (fm - f0)) / (2.0 * s * s) : (fp - fm) / (2.0 * s);
            size = std::max({std::fabs(f0), std::fabs(fp), std::fabs(fm)});
            return std::isfinite(q) && std::isfinite(size);
        };
        const int c = (m - 1) / 2;
        return factorial[m] * climb(row, c, c + 3 + extra, true, m, noise / factorial[m],
                                    std::min(start, room), h);
    }
    const double sign = up >= down ? 1.0 : -1.0;
    auto row = [&](double& s, double& q, double& size) {
        const double t = std::clamp(x + sign * s, xmin, xmax);
        s = sign * (t - x);
        const double ft = f(t);
        q = (ft - f0) / s;
        size = std::max(std::fabs(f0), std::fabs(ft));
        return std::isfinite(q) && std::isfinite(size);
    };
    const int c = m - 1;
    const double value = climb(row, c, c + 4 + extra, false, m, noise / factorial[m],
                               std::min(start, std::max(up, down)), h);
    return even_order ? factorial[m] * value : factorial[m] * sign * value;
}

}  // namespace corvane
