#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/core/numelo.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/numerics/newton.h>
#include <corvane/phases/report/error_bound.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

namespace corvane {
namespace {
// Steps of C along u, of the gradients and of D; then the limit: with exact derivatives, without.
constexpr double kAlong[] = {1e-5, 1e-3}, kGradient[] = {1e-5, 1e-3}, kQuartic[] = {1e-3, 2e-2},
                 kLimits[] = {1e-9, 1e-6};
constexpr double kWide = 1e-3;      // first step of C where its error is bounded,
constexpr double kPolishing = 4e-3;  // and where its rounding counts more than that bound
constexpr double kUnits = 128 * std::numeric_limits<double>::epsilon();  // of rounding in sums of H
constexpr double kStep = 1e-6;  // last step of Newton's method, whose rate is 1e-5
using Variables = CriticalConditions::Variables;
}  // namespace

CriticalConditions::CriticalConditions(FluidModel const& fluid)
    : limit(kLimits[fluid.model().derivatives() ? 0 : 1]),
      fluid_(fluid),
      n_(fluid.size()),
      exact_(fluid.model().derivatives()) {
    const auto n = static_cast<std::size_t>(n_);
    s.resize(n_);
    side_.resize(n_);
    kept_.resize(n_);
    u.resize(n);
    last_u_.resize(n);
    root_.resize(n);
    B_.resize(n * n);
    values_.resize(n);
    vectors_.resize(n * n);
}

/// Searches pass through states that a model refuses, by an exception or by a value.
bool CriticalConditions::possible(PhaseState& q, double T, int order) {
    try {
        return fluid_.evaluate(q, T, order);
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return false;
}

bool CriticalConditions::state(PhaseState& q, Variables const& y, int m, int order) {
    const double rho = std::exp(y[0]);
    if (m == 2) {
        for (int i = 0; i < n_; ++i) q.rho_i[i] = rho * fluid_.z()[i];
    } else {
        q.rho_i[0] = rho * y[2];
        q.rho_i[1] = rho * y[3];
        if (!(q.rho_i[0] > 0.0) || !(q.rho_i[1] > 0.0)) return false;
    }
    return possible(q, std::exp(y[1]), order);
}

/// λ and u of s.H.
void CriticalConditions::smallest() {
    const int n = n_;
    for (int i = 0; i < n; ++i) {
        root_[i] = std::sqrt(s.rho_i[i]);
        for (int j = 0; j <= i; ++j)
            B_[i * n + j] = B_[j * n + i] =
                root_[i] * root_[j] * 0.5 * (s.H[i * n + j] + s.H[j * n + i]);
        last_u_[i] = u[i];
    }
    if (n == 1) {
        values_[0] = B_[0];
        vectors_[0] = 1.0;
    } else if (n == 2) {
        // The smaller eigenvalue from the determinant, and its vector from the row where nothing
        // cancels: a trace has a tiny component that must keep its digits.
        const double a = B_[0], b = B_[1], d = B_[3];
        const double mean = 0.5 * (a + d), half = std::hypot(0.5 * (a - d), b);
        values_[1] = mean + half;
        values_[0] = mean > 0.0 ? (a * d - b * b) / values_[1] : mean - half;
        double first = d - values_[0], second = -b;
        if (a > d) {
            first = -b;
            second = a - values_[0];
        }
        const double norm = std::hypot(first, second);
        vectors_[0] = norm > 0.0 ? first / norm : 1.0;
        vectors_[1] = norm > 0.0 ? second / norm : 0.0;
        vectors_[2] = -vectors_[1];
        vectors_[3] = vectors_[0];
    } else {
        Matrix<double> A(n, n), vectors;
        Vector<double> values;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) A[i][j] = B_[i * n + j];
        lin_jacobi(A, values, vectors);
        for (int i = 0; i < n; ++i) {
            values_[i] = values[i];
            for (int j = 0; j < n; ++j) vectors_[i * n + j] = vectors[i][j];
        }
    }
    lambda = values_[0];
    stiffness_ = values_[n - 1];
    double dot = 0.0, sum = 0.0;
    for (int i = 0; i < n; ++i) {
        u[i] = vectors_[i];
        dot += u[i] * last_u_[i];
        sum += u[i];
    }
    if (dot < 0.0 || (dot == 0.0 && sum < 0.0))
        for (double& v : u) v = -v;
}

bool CriticalConditions::eigen(Variables const& y, int m, int order) {
    if (!state(s, y, m, phase_H | order)) return false;
    smallest();
    return std::isfinite(lambda);
}

double CriticalConditions::form(PhaseState const& q) const {
    double sum = 0.0;
    for (int i = 0; i < n_; ++i)
        for (int j = 0; j < n_; ++j)
            sum += std::sqrt(s.x[i] * s.x[j]) * u[i] * u[j] *
                   (q.H[i * n_ + j] - (i == j ? 1.0 / q.rho_i[i] : 0.0));
    return s.rho * sum;
}

/// side_ at the distance h along u.
bool CriticalConditions::shifted(double h) {
    for (int i = 0; i < n_; ++i) side_.rho_i[i] = s.rho * (s.x[i] + h * std::sqrt(s.x[i]) * u[i]);
    return possible(side_, s.T, phase_H);
}

bool CriticalConditions::evaluate(Variables const& y, int m, int order) {
    if (!eigen(y, m, order)) return false;
    double h = kAlong[exact_ ? 0 : 1];
    for (int i = 0; i < n_; ++i)
        h = std::min(h, 0.3 * std::sqrt(s.x[i]) / std::max(std::fabs(u[i]), 1e-300));
    if (!third(h, C)) return false;
    C += ideal_third();
    return std::isfinite(C);
}

/// The residual part of C by a central difference.
bool CriticalConditions::third(double h, double& difference) {
    if (!shifted(h)) return false;
    const double high = form(side_);
    if (!shifted(-h)) return false;
    difference = (high - form(side_)) / (2.0 * h);
    return true;
}

/// The residual part of C from wider steps, where rounding is less, extrapolated to zero
/// (Richardson); the last step of that bounds what is left.
bool CriticalConditions::extrapolated(double first, Wide& w) {
    w.h = first;
    for (int i = 0; i < n_; ++i)
        w.h = std::min(w.h, 0.05 * std::sqrt(s.x[i]) / std::max(std::fabs(u[i]), 1e-300));
    double c[3];
    for (int k = 0; k < 3; ++k)
        if (!third(w.h * (1 << k), c[k])) return false;
    const double once = (4.0 * c[0] - c[1]) / 3.0, again = (4.0 * c[1] - c[2]) / 3.0;
    w.C = (16.0 * once - again) / 15.0;
    w.left = std::fabs(w.C - once);
    return std::isfinite(w.C + w.left);
}

double CriticalConditions::ideal_third() const {
    double sum = 0.0;
    for (int i = 0; i < n_; ++i) sum -= u[i] * u[i] * u[i] / std::sqrt(s.x[i]);
    return sum;
}

bool CriticalConditions::equations(Variables const& y, int m, double* e) {
    Wide wide;
    if (!exact_ || !eigen(y, m, phase_all) || !extrapolated(kWide, wide)) return false;
    double size = 0.0;
    for (int i = 0; i < n_; ++i)
        for (int j = 0; j < n_; ++j)
            size += s.rho * std::sqrt(s.x[i] * s.x[j]) * std::fabs(u[i] * u[j]) *
                    (std::fabs(s.H[i * n_ + j]) + (i == j ? 1.0 / s.rho_i[i] : 0.0));
    const double ideal = ideal_third();
    e[0] = std::fabs(lambda) + kUnits * size;
    e[1] = std::fabs(ideal + wide.C) + wide.left + 2.0 * kUnits * size / wide.h +
           kUnits * std::fabs(ideal);
    return std::isfinite(e[0] + e[1]);
}

std::optional<CriticalConditions::Errors> CriticalConditions::errors(Variables const& y, int m,
                                                                     Kept kept) {
    assert(m == 2 || m == 3);
    std::vector<double> e(static_cast<std::size_t>(m), 0.0);
    if (!equations(y, m, e.data())) return {};
    const double RT = R * s.T;
    double ln_p[3] = {RT * s.S / s.p, 1.0 + RT * s.p_T / s.p,
                      m == 3 ? RT * s.rho * (s.P[0] - s.P[1]) / s.p : 0.0};
    std::array<double, 9> J = J_, inverse{};
    if (m == 3) {
        const Variables t = tangent();
        for (int k = 0; k < 3; ++k)
            J[6 + k] = kept == Kept::across ? t[k] : kept == Kept::p ? ln_p[k] : k == 1;
    }
    if (!invert(m, J.data(), inverse.data())) return {};
    const ErrorBound bound(e);
    std::array<double, 3> p{};
    for (int k = 0; k < m; ++k)
        for (int i = 0; i < m; ++i) p[k] += ln_p[i] * inverse[i * m + k];
    const double rounding = rounding_of_P(fluid_, s) * RT / s.p;
    return Errors{bound(&inverse[m]), bound(p.data()) + rounding, bound(&inverse[0]),
                  m == 3 ? bound(&inverse[6]) : 0.0};
}

bool CriticalConditions::gradients(Variables const& y, int m, double* J) {
    const double at[] = {lambda, C};
    const std::vector<double> direction = u;
    for (int k = 0; k < m; ++k) {
        double h = kGradient[exact_ ? 0 : 1];
        if (k == 2) {  // traces bend the line on the scale of themselves
            h = std::clamp(0.1 * std::min(y[2], y[3]), 1e-3 * h, h);
            if (y[2] > 0.5) h = -h;
        }
        Variables next = y;
        next[k] += h;
        if (k == 2) next[3] -= h;
        std::swap(s, kept_);
        const bool good = evaluate(next, m);
        std::swap(s, kept_);
        J[k] = (lambda - at[0]) / h;
        J[m + k] = (C - at[1]) / h;
        lambda = at[0];
        C = at[1];
        u = direction;
        if (!good) return false;
    }
    return true;
}

bool CriticalConditions::quartic(Variables const& y, int m, double& D) {
    if (!evaluate(y, m)) return false;
    double h = kQuartic[exact_ ? 0 : 1];
    for (int i = 0; i < n_; ++i)
        h = std::min(h, 0.1 * std::sqrt(s.x[i]) / std::max(std::fabs(u[i]), 1e-300));
    // Along u: the third derivatives Σ_j w_k·∂³/(∂k ∂u ∂u) by differences of B·u, all as one row.
    std::vector<double> third(static_cast<std::size_t>(n_), 0.0);
    double fourth = -2.0 * lambda;
    for (double side : {1.0, -1.0}) {
        if (!shifted(side * h)) return false;
        for (int i = 0; i < n_; ++i) {
            double row = 0.0;
            for (int j = 0; j < n_; ++j)
                row += s.rho * std::sqrt(s.x[i] * s.x[j]) * side_.H[i * n_ + j] * u[j];
            third[i] += side * row / (2.0 * h);
            fourth += u[i] * row;
        }
    }
    D = fourth / (h * h);
    for (int k = 1; k < n_; ++k) {
        double along = 0.0;
        for (int i = 0; i < n_; ++i) along += vectors_[k * n_ + i] * third[i];
        D -= 3.0 * along * along / values_[k];
    }
    return std::isfinite(D);
}

double CriticalConditions::residual() const {
    return std::max(std::fabs(lambda), std::fabs(C)) / std::max(1.0, stiffness_);
}

CriticalConditions::Variables CriticalConditions::tangent(double const* J) {
    Variables t{J[1] * J[5] - J[2] * J[4], J[2] * J[3] - J[0] * J[5], J[0] * J[4] - J[1] * J[3],
                0.0};
    const double length = std::hypot(t[0], t[1], t[2]);
    for (double& v : t) v /= length;
    t[3] = -t[2];
    return t;
}

/// Newton's method ends where its C, whose narrow steps leave 1e-10 of rounding and truncation, and
/// the rate of its differences allow: 1e-11 of T and p that depend on the start and on the last bits
/// of exponentials and logarithms. One more step, with the extrapolated C.
void CriticalConditions::polish(Variables& y, int m, Variables const* row, double value) {
    if (!exact_) return;
    Wide wide;
    const double ideal = ideal_third(), most = limit * std::max(1.0, stiffness_);
    // The extrapolation errs by far less than its last step, if that is small.
    const auto good = [&](double first) {
        return extrapolated(first, wide) && std::fabs(ideal + wide.C) < most && wide.left < 10.0 * most;
    };
    if (!good(kPolishing) && !good(kWide)) return;
    C = ideal + wide.C;
    double r[3];
    std::array<double, 9> J;
    system(y, m, row, value, r, J.data());
    for (int i = 0; i < m; ++i) r[i] = -r[i];
    if (!lu_solve(m, J.data(), r)) return;
    for (int i = 0; i < m; ++i)
        if (!(std::fabs(r[i]) < (i < 2 ? kStep : kStep * std::min(y[2], y[3])))) return;
    for (int k = 0; k < m; ++k) y[k] += r[k];
    if (m == 3) y[3] -= r[2];
}

/// The equations of Newton's method, and J_ as their Jacobian.
void CriticalConditions::system(Variables const& y, int m, Variables const* row, double value,
                                double* r, double* J) const {
    std::copy(J_.begin(), J_.end(), J);
    r[0] = lambda;
    r[1] = C;
    if (m < 3) return;
    r[2] = -value;
    for (int k = 0; k < 3; ++k) {
        J[6 + k] = (*row)[k];
        r[2] += (*row)[k] * y[k];
    }
}

bool CriticalConditions::solve(Variables& y, int m, Variables const* row, double value, int most) {
    assert(m == 2 || m == 3);
    double r[3];
    std::array<double, 9> J;
    const auto converged = [&](double step) {
        return residual() < limit && step < (exact_ ? kStep : 100 * kStep);
    };
    const auto assemble = [&] {
        if (!gradients(y, m, J_.data())) return false;
        system(y, m, row, value, r, J.data());
        return true;
    };
    const auto advance = [&](double) {
        // Bounds: 20 % in rho, 10 % in T; a mole fraction may halve its distance to 0 and 1.
        StepBound bound;
        bound(r[0], 0.2);
        bound(r[1], 0.1);
        if (m == 3) bound(r[2], 0.5 * (r[2] < 0.0 ? y[2] : y[3]));
        for (int k = 0; k < m; ++k) y[k] += bound.part() * r[k];
        if (m == 3) y[3] -= bound.part() * r[2];
        return true;
    };
    if (!damped_newton(
            m, J.data(), r, most, iterations, [&] { return evaluate(y, m); }, converged, assemble,
            advance))
        return false;
    polish(y, m, row, value);
    return eigen(y, m, phase_p);
}

}  // namespace corvane
