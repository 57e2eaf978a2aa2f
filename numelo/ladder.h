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

/// Kinds of difference quotients: the ratio of u from row to row, and the power of the step by
/// which rounding grows.
enum class Quotient { odd, even, one_sided };

constexpr int max_rows = 12;
constexpr int max_coefficient = 7;

/// Rounding error of T_j in units of that of the innermost quotient over u^c, for steps that halve:
/// the root of the sum of the squares of the weights of the rows.
struct Amplification {
    double of[3][max_coefficient + 1][max_rows] = {};

    constexpr Amplification() {
        for (int kind = 0; kind < 3; ++kind)
            for (int j = 0; j < max_rows; ++j) add(kind, j);
    }

  private:
    static constexpr double root(double x) {
        double y = x > 1.0 ? x : 1.0;
        for (int k = 0; k < 60; ++k) y = 0.5 * (y + x / y);
        return y;
    }
    constexpr void add(int kind, int j) {
        const double ratio = kind == 2 ? 2.0 : 4.0, growth = kind == 1 ? 4.0 : 2.0;
        double u[max_rows] = {1.0}, sum[max_coefficient + 1] = {};
        for (int i = 1; i <= j; ++i) u[i] = ratio * u[i - 1];
        for (int i = 0; i <= j; ++i) {
            // Coefficients of Lagrange's polynomial of row i.
            double p[max_coefficient + 1] = {1.0}, scale = 1.0;
            for (int k = 0; k <= j; ++k) {
                if (k == i) continue;
                for (int c = max_coefficient; c > 0; --c)
                    p[c] = (p[c - 1] - u[k] * p[c]) / (u[i] - u[k]);
                p[0] *= -u[k] / (u[i] - u[k]);
            }
            for (int k = 0; k < i; ++k) scale /= growth;
            for (int c = 0; c <= max_coefficient; ++c) sum[c] += scale * scale * p[c] * p[c];
        }
        for (int c = 0; c <= max_coefficient; ++c) of[kind][c][j] = root(sum[c]);
    }
};
inline constexpr Amplification amplification;

/// Extrapolation of q(u) to its coefficient a_c from rows of decreasing u.
class Extrapolation {
  public:
    /// @param c        coefficient wanted, 0 … 7
    /// @param min_rows rows to take before the stop rule applies, > c + 1
    Extrapolation(Quotient kind, int c, int min_rows)
        : kind_(static_cast<int>(kind)), c_(c), min_rows_(std::min(min_rows, max_rows)) {}

    /// Adds the row (u, q); noise is the rounding error of q.
    void add(double u, double q, double noise) {
        // diff_[j] becomes the divided difference over the j + 1 innermost rows.
        double carry = q;
        for (int j = 0; j <= rows_; ++j) {
            const double before = diff_[j];
            diff_[j] = carry;
            if (j < rows_) carry = (carry - before) / (u - u_[rows_ - 1 - j]);
        }
        u_[rows_++] = u;
        for (int i = 0; i < c_; ++i) noise /= u;

        std::array<double, max_coefficient + 1> p{1.0};  // Π (u − u_i), innermost row first
        const double before_row = best_;
        double t = 0.0, last_change = 0.0, row_best = std::numeric_limits<double>::infinity();
        for (int j = 0; j < rows_; ++j) {
            const double change = diff_[j] * p[c_];
            t += change;
            const double d = std::fabs(change);
            if (j > c_) {
                const double factor =
                    j > c_ + 1 && 4.0 * d < last_change ? 4.0 * d / last_change : 1.0;
                const double truncation = d * factor;
                const double error = noise * amplification.of[kind_][c_][j];
                row_best = std::min(row_best, truncation + error);
                if (truncation + error < best_) {
                    best_ = truncation + error;
                    value_ = t;
                    settled_ = truncation <= error;
                    near_noise_ = truncation <= 64.0 * error;
                }
            }
            last_change = d;
            const double ui = u_[rows_ - 1 - j];
            for (int i = c_; i > 0; --i) p[i] = p[i - 1] - ui * p[i];
            p[0] *= -ui;
        }
        worse_ = row_best > 2.0 * best_ ? worse_ + 1 : 0;
        const bool stalled = near_noise_
                                 ? worse_ > 0 || (rows_ > min_rows_ && row_best > 0.25 * before_row)
                                 : worse_ > 1;
        done_ = rows_ >= max_rows || (rows_ >= min_rows_ && (settled_ || stalled));
    }

    bool done() const { return done_; }
    /// The estimate of least error. MthException 10 if no rows gave a finite one, 1 if it is a
    /// one-sided derivative of order 7 or 8, which amplifies rounding most, without a certain digit.
    double value() const {
        if (!std::isfinite(best_)) throw MthException(mth_out_of_range);
        const bool weak = kind_ == static_cast<int>(Quotient::one_sided) && c_ >= 6;
        if (weak && best_ > 0.1 * std::fabs(value_)) throw MthException(mth_iterations);
        return value_;
    }
    /// Forgets all rows.
    void restart() { *this = Extrapolation(static_cast<Quotient>(kind_), c_, min_rows_); }

  private:
    int kind_, c_, min_rows_, rows_ = 0, worse_ = 0;
    bool settled_ = false, near_noise_ = false, done_ = false;
    double best_ = std::numeric_limits<double>::infinity(), value_ = 0.0;
    std::array<double, max_rows> u_{}, diff_{};
};

/// Rounding error of a sum of two values of f, of which the larger one is size: what was measured
/// on equations of state is about 0.4·eps for each.
inline double rounding(double size) {
    return 0.5 * std::numeric_limits<double>::epsilon() * size;
}

/// Runs a ladder. row(s, q, noise) evaluates the quotient q at step s, which it may round, and the
/// rounding error of q; either is not finite where a value is not. Steps above `sure` are optional:
/// an exception or a value that is not finite there starts the ladder again at half the step;
/// below, exceptions pass and values that are not finite narrow the ladder down to sure/64, where
/// MthException 10 ends it.
template <class Row>
double climb(Row&& row, Quotient kind, int c, int min_rows, double start, double sure) {
    Extrapolation table(kind, c, min_rows);
    for (double rung = start; !table.done(); rung *= 0.5) {
        double s = rung, q = 0.0, noise = 0.0;
        if (rung > 1.001 * sure) {
            try {
                row(s, q, noise);
            } catch (...) {
                q = std::numeric_limits<double>::quiet_NaN();
            }
        } else {
            row(s, q, noise);
        }
        if (std::isfinite(q) && std::isfinite(noise)) {
            table.add(kind == Quotient::one_sided ? s : s * s, q, noise);
        } else {
            if (rung <= sure / 64.0) throw MthException(mth_out_of_range);
            table.restart();
        }
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

    constexpr std::array<double, 9> outward{1, 4, 16, 32, 64, 128, 256, 256, 256};
    constexpr std::array<double, 9> factorial{1, 1, 2, 6, 24, 120, 720, 5040, 40320};
    double start = outward[m] * h;
    if (level >= 4) start *= 2.0;
    if (x != 0.0) start = std::min(start, std::max(h, 0.1 * std::fabs(x)));
    const int extra = level >= 4 ? 1 : 0;
    const double up = xmax - x, down = x - xmin, room = std::min(up, down);
    const bool central = room >= 0.5 * h, even = m % 2 == 0;
    const double f0 = central && !even ? 0.0 : f(x);
    if (!std::isfinite(f0)) throw MthException(mth_out_of_range);

    if (central) {
        // The step is rounded so that it is exact at the point of larger magnitude, hence at both.
        auto row = [&](double& s, double& q, double& noise) {
            s = x >= 0.0 ? (x + s) - x : x - (x - s);
            const double fp = f(std::min(x + s, xmax)), fm = f(std::max(x - s, xmin));
            q = even ? ((fp - f0) + (fm - f0)) / (2.0 * s * s) : (fp - fm) / (2.0 * s);
            noise = rounding(std::max({std::fabs(f0), std::fabs(fp), std::fabs(fm)}));
            noise /= even ? 0.5 * s * s : s;
        };
        const int c = (m - 1) / 2;
        return factorial[m] * climb(row, even ? Quotient::even : Quotient::odd, c, c + 3 + extra,
                                    std::min(start, room), h);
    }
    const double sign = up >= down ? 1.0 : -1.0;
    auto row = [&](double& s, double& q, double& noise) {
        const double t = std::clamp(x + sign * s, xmin, xmax);
        s = sign * (t - x);
        const double ft = f(t);
        q = (ft - f0) / s;
        noise = 2.0 * rounding(std::max(std::fabs(f0), std::fabs(ft))) / s;
    };
    const int c = m - 1;
    const double value =
        climb(row, Quotient::one_sided, c, c + 4 + extra, std::min(start, std::max(up, down)), h);
    return (even ? 1.0 : sign) * factorial[m] * value;
}

}  // namespace corvane
