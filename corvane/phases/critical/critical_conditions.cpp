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
constexpr double kNear = 0.1;   // step after which gradients are updated
constexpr int kPower = 4;       // steps of the power method
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

/// B_ and root_ of s.
void CriticalConditions::form_B() {
    for (int i = 0; i < n_; ++i) {
        root_[i] = std::sqrt(s.rho_i[i]);
        for (int j = 0; j <= i; ++j)
            B_[i * n_ + j] = B_[j * n_ + i] =
                root_[i] * root_[j] * 0.5 * (s.H[i * n_ + j] + s.H[j * n_ + i]);
    }
}

bool CriticalConditions::definite(Variables const& y, int m, bool& positive) {
    if (!state(s, y, m, phase_H)) return false;
    form_B();
    positive = smallest_.above(0.0, n_, B_.data());
    return true;
}

/// λ and u of s.H.
void CriticalConditions::smallest() {
    const int n = n_;
    form_B();
    std::copy(u.begin(), u.end(), last_u_.begin());
    if (std::all_of(u.begin(), u.end(), [](double v) { return v == 0.0; })) u = root_;
    if (n == 1) {
        lambda = B_[0];
        u[0] = 1.0;
    } else if (n == 2) {
        // The smaller eigenvalue from the determinant, and its vector from the row where nothing
        // cancels: a trace has a tiny component that must keep its digits.
        const double a = B_[0], b = B_[1], d = B_[3];
        const double mean = 0.5 * (a + d), half = std::hypot(0.5 * (a - d), b);
        lambda = mean > 0.0 ? (a * d - b * b) / (mean + half) : mean - half;
        double first = d - lambda, second = -b;
        if (a > d) {
            first = -b;
            second = a - lambda;
        }
        const double norm = std::hypot(first, second);
        u[0] = norm > 0.0 ? first / norm : 1.0;
        u[1] = norm > 0.0 ? second / norm : 0.0;
    } else if (smallest_.find(n, B_.data(), u)) {
        lambda = smallest_.value;
    } else {
        Matrix<double> A(n, n), vectors;
        Vector<double> values;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) A[i][j] = B_[i * n + j];
        lin_jacobi(A, values, vectors);
        lambda = values[0];
        for (int i = 0; i < n; ++i) u[i] = vectors[0][i];
    }
    double dot = 0.0, sum = 0.0;
    for (int i = 0; i < n; ++i) {
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
    for (int i = 0; i < n_; ++i) {
        double row = 0.0;
        for (int j = 0; j < n_; ++j) row += root_[j] * u[j] * q.H[i * n_ + j];
        sum += root_[i] * u[i] * (row - root_[i] * u[i] / q.rho_i[i]);
    }
    return sum;
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
    if (!eigen(y, m)) return false;
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
    // The response of the others, (B − λ)⁺ of what is perpendicular to u.
    double along = 0.0;
    for (int i = 0; i < n_; ++i) along += u[i] * third[i];
    for (int i = 0; i < n_; ++i) third[i] -= along * u[i];
    std::vector<double> A(B_), response(third);
    for (int i = 0; i < n_; ++i)
        for (int j = 0; j < n_; ++j) A[i * n_ + j] += u[i] * u[j];
    if (!lu_solve(n_, A.data(), response.data())) return false;
    for (int i = 0; i < n_; ++i) D -= 3.0 * third[i] * response[i];
    return std::isfinite(D);
}

/// The largest eigenvalue of B, if that exceeds 1: that of the compression of a dense liquid, next
/// to whose vector √x_i a few steps of the power method find all but a few per cent of it. In a gas
/// it is near 1.
double CriticalConditions::stiffness() const {
    double value = 0.0;
    std::vector<double> v(root_), image(v);
    for (int step = 0; step < kPower; ++step) {
        double square = 0.0, length = 0.0;
        for (int i = 0; i < n_; ++i) {
            double sum = 0.0;
            for (int j = 0; j < n_; ++j) sum += B_[i * n_ + j] * v[j];
            square += v[i] * v[i];
            length += sum * sum;
            image[i] = sum;
        }
        value = std::sqrt(length / square);
        std::swap(v, image);
    }
    return std::max(1.0, value);
}

double CriticalConditions::residual() const {
    return std::max(std::fabs(lambda), std::fabs(C)) / stiffness();
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
    const double ideal = ideal_third(), most = limit * stiffness();
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

/// J_ of two equations after a step from where they were `before`: Broyden, Math. Comp. 19 (1965)
/// 577.
void CriticalConditions::update(double const* moved, double const* before) {
    const double square = moved[0] * moved[0] + moved[1] * moved[1];
    const double now[] = {lambda, C};
    for (int i = 0; i < 2; ++i) {
        double* const row = J_.data() + 2 * i;
        const double off = now[i] - before[i] - row[0] * moved[0] - row[1] * moved[1];
        for (int k = 0; k < 2; ++k) row[k] += off * moved[k] / square;
    }
}

bool CriticalConditions::solve(Variables& y, int m, Variables const* row, double value, int most) {
    assert(m == 2 || m == 3);
    double r[3];
    std::array<double, 9> J;
    const auto converged = [&](double step) {
        return residual() < limit && step < (exact_ ? kStep : 100 * kStep);
    };
    double moved[3] = {kNear, kNear, kNear},
           before[2] = {0.0, 0.0};  // by the last step, from where
    bool updated = false;
    // After a short step Broyden's update in place of six evaluations.
    const auto assemble = [&] {
        updated = updates && m == 2 && std::hypot(moved[0], moved[1]) < kNear;
        if (updated)
            update(moved, before);
        else if (!gradients(y, m, J_.data()))
            return false;
        before[0] = lambda;
        before[1] = C;
        system(y, m, row, value, r, J.data());
        return true;
    };
    const auto advance = [&](double) {
        // Bounds: 20 % in rho, 10 % in T; a mole fraction may halve its distance to 0 and 1.
        StepBound bound;
        bound(r[0], 0.2);
        bound(r[1], 0.1);
        if (m == 3) bound(r[2], 0.5 * (r[2] < 0.0 ? y[2] : y[3]));
        for (int k = 0; k < m; ++k) y[k] += moved[k] = bound.part() * r[k];
        if (m == 3) y[3] -= moved[2];
        return true;
    };
    if (!damped_newton(
            m, J.data(), r, most, iterations, [&] { return evaluate(y, m); }, converged, assemble,
            advance))
        return false;
    if (updated && !gradients(y, m, J_.data())) return false;
    polish(y, m, row, value);
    return eigen(y, m, phase_p);
}

}  // namespace corvane
