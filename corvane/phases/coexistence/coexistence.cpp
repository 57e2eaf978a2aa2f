#include <corvane/core/constants.h>
#include <corvane/phases/coexistence/coexistence.h>
#include <corvane/phases/numerics/newton.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/plugin/small_array.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

namespace corvane {
namespace {
constexpr double kPotential = 1e-11;  // residual of the potentials and of ln p
constexpr double kGas = 3.0;  // of ∂(p/RT)/∂rho, 1 for an ideal gas: below it a fluid is a gas
constexpr double kTrivial = 1e-4;  // of ln rho_i: nearer phases are one
constexpr double kStep = 1e-8;  // last step in u: the next one would be below rounding
constexpr double kRough = 1e-5, kRoughStep = 3e-2;  // the same where a rough solution will do
}  // namespace

CoexistenceSolver::CoexistenceSolver(FluidModel const& f, int phases)
    : fluid(f), phase(static_cast<std::size_t>(phases)), n_(f.size()), count_(phases) {
    for (PhaseState& s : phase) s.resize(n_);
    const auto m = static_cast<std::size_t>(size()) + static_cast<std::size_t>(phases);
    u.resize(static_cast<std::size_t>(size()));
    r_.resize(m);
    jacobian_.resize(m * m);
}

double CoexistenceSolver::first_fraction() const {
    return std::accumulate(fraction.begin(), fraction.end(), 1.0, std::minus<>());
}

std::vector<double> CoexistenceSolver::amounts() const {
    std::vector<double> moles{first_fraction() * phase[0].rho};
    for (std::size_t k = 0; k < fraction.size(); ++k)
        moles.push_back(fraction[k] * phase[k + 1].rho);
    return moles;
}

void CoexistenceSolver::start(int k, std::vector<double> const& x, double rho) {
    for (int i = 0; i < n_; ++i)
        u[k * n_ + i] = absent(x[i]) ? std::log(rho) + ln_trace : std::log(x[i] * rho);
}

int CoexistenceSolver::softest() const {
    int at = 0;
    for (int k = 1; k < count_; ++k)
        if (!(std::fabs(phase[at].S) < std::fabs(phase[k].S))) at = k;
    return at;
}

bool CoexistenceSolver::evaluate() {
    const double t = std::exp(u.back());
    for (int k = 0; k < count_; ++k) {
        for (int i = 0; i < n_; ++i) phase[k].rho_i[i] = std::exp(u[k * n_ + i]);
        if (!fluid.evaluate(phase[k], t, phase_all)) return false;
    }
    return true;
}

/// Rows that make phase k equal to the first in potentials and pressure.
void CoexistenceSolver::equal(int k, double scale, double* J, double* r) const {
    const int n = n_, m = size(), last = count_ * n;
    PhaseState const &a = phase[0], &b = phase[k];
    for (int i = 0; i < n; ++i, J += m, ++r) {
        *r = b.m[i] - a.m[i];
        for (int j = 0; j < n; ++j) {
            J[j] = -a.rho_i[j] * a.H[i * n + j];
            J[k * n + j] = b.rho_i[j] * b.H[i * n + j];
        }
        J[last] = b.m_T[i] - a.m_T[i];
        const bool none = absent(b.x[i]) && *r > 0.0,
                   none_in_a = count_ == 2 && absent(a.x[i]) && *r < 0.0;
        if (!none && !none_in_a) continue;
        std::fill_n(J, m, 0.0);  // it would be fewer than the least: stays as it is
        J[none ? k * n + i : i] = 1.0;
        *r = 0.0;
    }
    *r = (b.p - a.p) / (R * a.T) * scale;
    for (int j = 0; j < n; ++j) {
        J[j] = -a.rho_i[j] * a.P[j] * scale;
        J[k * n + j] = b.rho_i[j] * b.P[j] * scale;
    }
    J[last] = (b.p_T - a.p_T) * scale;
}

void CoexistenceSolver::assemble() {
    const int n = n_, m = size(), last = count_ * n;
    std::fill(jacobian_.begin(), jacobian_.end(), 0.0);
    double *J = jacobian_.data(), *r = r_.data();
    PhaseState const& light = phase[softest()];
    const double RT = R * light.T;
    for (int k = 1; k < count_; ++k, J += (n + 1) * m, r += n + 1) equal(k, 1.0 / light.rho, J, r);
    if (z) {
        compose(J, r);
        J += (n - 1) * m;
        r += n - 1;
    }
    if (T) {
        *r++ = u[last] - std::log(*T);
        J[last] = 1.0;
        J += m;
    }
    if (p) {
        const int at = softest() * n;
        // In ln p for a gas, where that is nearly linear; as it is for a liquid.
        const bool gas = light.p > 0.0 && light.S < kGas * light.rho;
        const double c = gas ? light.p : *p;
        p_row_ = static_cast<int>(r - r_.data());
        *r++ = gas ? std::log(light.p / *p) : light.p / *p - 1.0;
        for (int j = 0; j < n; ++j) J[at + j] = light.rho_i[j] * light.P[j] * RT / c;
        J[last] = (light.p_T + light.p / RT) * RT / c;
        J += m;
    }
    auto linear = [&](std::vector<double> const& c, double to) {
        if (c.empty()) return;
        double at = 0.0;
        for (int i = 0; i < m; ++i) {
            J[i] = c[i];
            at += c[i] * u[i];
        }
        *r++ = at - to;
        J += m;
    };
    linear(also, 0.0);
    linear(row, value);
}

/// Rows of the composition of the whole: of every component but the first, against the first.
void CoexistenceSolver::compose(double* J, double* r) const {
    const int n = n_, m = size(), last = count_ * n;
    if (fraction.empty()) {
        for (int i = 1; i < n; ++i, J += m) {
            *r++ = u[i] - u[0] - std::log((*z)[i] / (*z)[0]);
            J[i] = 1.0;
            J[0] = -1.0;
        }
        return;
    }
    const int parts = static_cast<int>(fraction.size()) + 1;
    const double first = first_fraction();
    const auto part = [&](int k) { return k == 0 ? first : fraction[k - 1]; };
    std::fill_n(r, n - 1, 0.0);
    for (int i = 0; i < n; ++i) {
        double whole = 0.0;
        for (int k = 0; k < parts; ++k) whole += part(k) * phase[k].rho_i[i];
        const double off = std::log(whole / (*z)[i]);
        for (int j = 0; j + 1 < n; ++j) {
            if (i > 0 && j != i - 1) continue;
            const double sign = i == 0 ? -1.0 : 1.0;
            r[j] += sign * off;
            for (int k = 0; k < parts; ++k) {
                double* const slope = J + j * m;
                slope[k * n + i] += sign * part(k) * phase[k].rho_i[i] / whole;
                if (k > 0)
                    slope[last + k] += sign * (phase[k].rho_i[i] - phase[0].rho_i[i]) / whole;
            }
        }
    }
}

bool CoexistenceSolver::solve(int limit) {
    const int n = n_, m = size();
    residual = std::numeric_limits<double>::infinity();
    const auto converged = [&](double step) {
        PhaseState const& light = phase[softest()];
        double rounding = 0.0, dp = 0.0;
        for (PhaseState const& s : phase)
            rounding = std::max(rounding, s.P_rounding() / light.rho);
        residual = 0.0;
        for (int i = 0; i < m; ++i) {
            const double r = std::fabs(r_[i]);
            if (p && i == p_row_)
                residual = std::max(residual, r - rounding * R * light.T * light.rho / *p);
            else if (i < (count_ - 1) * (n + 1) && i % (n + 1) == n)
                dp = std::max(dp, r - rounding);
            else
                residual = std::max(residual, r);
        }
        dp /= std::max(std::fabs(light.p) / (R * light.T * light.rho), 1e-300);
        residual = std::max(residual, dp);
        return (rough && residual < kRough && step < kRoughStep) ||
               (residual < kPotential && step < 1e-4) ||
               (residual < 50 * kPotential && step < kStep);  // at rounding
    };
    const auto advance = [&](double) {
        // Bounds: a factor of e in a partial density, 15 % in the total of all phases but the
        // softest, 20 % in T.
        StepBound bound;
        PhaseState const& light = phase[softest()];
        for (int k = 0, i = 0; k < count_; ++k) {
            double total = 0.0;
            for (int j = 0; j < n; ++j, ++i) {
                bound(r_[i], 1.0);
                total += phase[k].x[j] * r_[i];
            }
            if (&phase[k] != &light) bound(total, 0.15);
        }
        const int last = count_ * n;
        bound(r_[last], 0.2);
        double first = 0.0;  // change of the first phase's fraction: all stay positive
        for (std::size_t k = 0; k < fraction.size(); ++k) {
            const double step = r_[static_cast<std::size_t>(last) + 1 + k];
            first -= step;
            if (step < 0.0) bound(step, 0.5 * fraction[k]);
        }
        if (first < 0.0) bound(first, 0.5 * first_fraction());
        for (int i = 0; i <= last; ++i) u[i] += bound.part() * r_[i];
        for (std::size_t k = 0; k < fraction.size(); ++k)
            fraction[k] += bound.part() * r_[static_cast<std::size_t>(last) + 1 + k];
        return true;
    };
    return damped_newton(
        m, jacobian_.data(), r_.data(), limit, iterations,
        [&] { return evaluate() && (assemble(), true); }, converged,
        [&] { return std::isfinite(residual); }, advance);
}

bool CoexistenceSolver::trivial() const {
    for (int k = 1; k < count_; ++k)
        for (int j = 0; j < k; ++j) {
            double apart = 0.0;
            for (int i = 0; i < n_; ++i)
                apart = std::max(apart, std::fabs(u[k * n_ + i] - u[j * n_ + i]));
            if (apart < kTrivial) return true;
        }
    return false;
}

void CoexistenceSolver::level() {
    const int light = softest();
    for (int k = 0; k < count_; ++k)
        for (int it = 0; k != light && it < 3; ++it) {
            PhaseState& s = phase[k];
            const double off = std::log1p((phase[light].p - s.p) / (R * s.T * s.S));
            if (off == 0.0 || !std::isfinite(off)) break;
            for (int i = 0; i < n_; ++i) s.rho_i[i] = std::exp(u[k * n_ + i] += off);
            if (!fluid.evaluate(s, s.T, phase_all)) break;
        }
}

bool CoexistenceSolver::tangent(std::vector<double>& t, bool solved) {
    if (!solved) assemble();
    t.assign(static_cast<std::size_t>(size()), 0.0);
    t.back() = 1.0;
    return lu_solve(size(), jacobian_.data(), t.data());
}

bool CoexistenceSolver::bound(Certificate& c) {
    assemble();
    const int n = n_, m = size(), last = count_ * n, k_light = softest();
    if (!row.empty()) r_[m - 1] = 0.0;  // it says which point of a curve this is
    constexpr double eps = std::numeric_limits<double>::epsilon();
    PhaseState const& light = phase[k_light];
    const double RT = R * light.T, p_rounding = rounding_of_P(fluid, light) * RT / light.p;
    std::vector<double>& e = equation_error_;
    e.assign(static_cast<std::size_t>(m), 8 * eps);
    int at = 0;
    for (int k = 1; k < count_; ++k) {
        for (int i = 0; i < n; ++i)
            e[at++] = rounding_of_m(fluid, phase[0], i) + rounding_of_m(fluid, phase[k], i);
        e[at++] =
            (rounding_of_P(fluid, phase[0]) + rounding_of_P(fluid, phase[k])) / light.rho;
    }
    for (int i = 1; z && i < n; ++i)
        e[at++] = 4 * eps * (2.0 + std::fabs(u[i]) + std::fabs(u[0]));
    if (p) e[p_row_] = std::fabs(p_rounding);
    if (!also.empty()) {
        double& of_also = e[m - (row.empty() ? 1 : 2)];
        for (int i = 0; i < m; ++i) of_also += 2 * eps * std::fabs(also[i] * u[i]);
    }
    for (int k = 0; k < m; ++k) e[k] += std::fabs(r_[k]);
    inverse_.resize(static_cast<std::size_t>(m * m));
    if (!invert(m, jacobian_.data(), inverse_.data())) return false;
    const ErrorBound off(e);
    const auto change = [&](int i) { return &inverse_[static_cast<std::size_t>(i) * m]; };
    c.x_error = c.rho_error = c.apart_error = 0.0;
    SmallArray<double> sum(m);
    ln_.resize(static_cast<std::size_t>(n));
    rows_.resize(static_cast<std::size_t>(n * m));
    for (int k = 0; k < count_; ++k) {
        off.phase(phase[k], change(k * n), c.x_error, c.rho_error);
        if (k == 0) continue;
        for (int i = 0; i < n; ++i) {
            ln_[i] = u[i] - u[k * n + i];
            for (int j = 0; j < m; ++j) rows_[i * m + j] = change(i)[j] - change(k * n + i)[j];
        }
        c.apart_error = std::max(c.apart_error, off.apart(ln_, rows_.data()));
    }
    for (int j = 0; j < m; ++j) {
        sum[j] = (light.p_T + light.p / RT) * change(last)[j];
        for (int i = 0; i < n; ++i) sum[j] += light.rho_i[i] * light.P[i] * change(k_light * n + i)[j];
        sum[j] *= RT / light.p;
    }
    const double of_p = off(&sum[0]) + std::fabs(p_rounding), of_T = off(change(last));
    c.value_error = T && p ? 0.0 : T ? of_p : p ? of_T : std::max(of_p, of_T);
    return c.bounded();
}

double CoexistenceSolver::pressure() const {
    return phase[softest()].p;
}
double CoexistenceSolver::ln_p() const {
    return std::log(pressure());
}
double CoexistenceSolver::ln_p(std::vector<double> const& t) const {
    const int k = softest();
    PhaseState const& s = phase[k];
    const double reduced = s.p / (R * s.T);
    double d = (s.p_T + reduced) * t.back();
    for (int j = 0; j < n_; ++j) d += s.rho_i[j] * s.P[j] * t[k * n_ + j];
    return d / reduced;
}

}  // namespace corvane
