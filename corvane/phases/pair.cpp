#include <corvane/core/constants.h>
#include <corvane/phases/dense.h>
#include <corvane/phases/pair.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kPotential = 1e-11;  // residual of the potentials and of ln p
constexpr double kStep = 1e-8;        // last step in u: the next one would be below rounding
}  // namespace

PairSolver::PairSolver(FluidModel const& f) : fluid(f), n_(f.size()) {
    a.resize(n_);
    b.resize(n_);
    const auto m = static_cast<std::size_t>(size());
    u.resize(m);
    r_.resize(m);
    jacobian_.resize(m * m);
}

void PairSolver::start(std::vector<double> const& x_a, double rho_a, std::vector<double> const& x_b,
                       double rho_b, double T_) {
    for (int i = 0; i < n_; ++i) {
        u[i] = std::log(x_a[i] * rho_a);
        u[n_ + i] = std::log(x_b[i] * rho_b);
    }
    u[2 * n_] = std::log(T_);
}

bool PairSolver::evaluate() {
    for (int i = 0; i < n_; ++i) {
        a.rho_i[i] = std::exp(u[i]);
        b.rho_i[i] = std::exp(u[n_ + i]);
    }
    const double t = std::exp(u[2 * n_]);
    return fluid.evaluate(a, t, phase_all) && fluid.evaluate(b, t, phase_all);
}

void PairSolver::assemble() {
    const int n = n_, m = size();
    std::fill(jacobian_.begin(), jacobian_.end(), 0.0);
    double* J = jacobian_.data();
    for (int i = 0; i < n; ++i, J += m) {
        r_[i] = b.m[i] - a.m[i];
        for (int j = 0; j < n; ++j) {
            J[j] = -a.rho_i[j] * a.H[i * n + j];
            J[n + j] = b.rho_i[j] * b.H[i * n + j];
        }
        J[2 * n] = b.m_T[i] - a.m_T[i];
    }
    const double RT = R * a.T, scale = 1.0 / light().rho;
    r_[n] = (b.p - a.p) / RT * scale;
    for (int j = 0; j < n; ++j) {
        J[j] = -a.rho_i[j] * a.P[j] * scale;
        J[n + j] = b.rho_i[j] * b.P[j] * scale;
    }
    J[2 * n] = (b.p_T - a.p_T) * scale;
    J += m;
    int k = n + 1;
    if (z)
        for (int i = 1; i < n; ++i, ++k, J += m) {
            r_[k] = u[i] - u[0] - std::log((*z)[i] / (*z)[0]);
            J[i] = 1.0;
            J[0] = -1.0;
        }
    if (T > 0.0) {
        r_[k++] = u[2 * n] - std::log(T);
        J[2 * n] = 1.0;
        J += m;
    }
    if (p > 0.0) {
        PhaseState const& s = light();
        const int at = &s == &a ? 0 : n;
        // In ln p where that exists, which is nearly linear for a gas.
        const double c = s.p > 0.0 ? s.p : p;
        r_[k++] = s.p > 0.0 ? std::log(s.p / p) : s.p / p - 1.0;
        for (int j = 0; j < n; ++j) J[at + j] = s.rho_i[j] * s.P[j] * RT / c;
        J[2 * n] = (s.p_T + s.p / RT) * RT / c;
        J += m;
    }
    if (!row.empty()) {
        double at = 0.0;
        for (int i = 0; i < m; ++i) {
            J[i] = row[i];
            at += row[i] * u[i];
        }
        r_[k] = at - value;
    }
}

bool PairSolver::solve(int limit) {
    const int n = n_, m = size();
    double step = 1.0;
    residual = std::numeric_limits<double>::infinity();
    for (int it = 0; it <= limit; ++it) {
        ++iterations;
        if (!evaluate()) return false;
        assemble();
        residual = 0.0;
        for (int i = 0; i < m; ++i)
            if (i != n) residual = std::max(residual, std::fabs(r_[i]));
        const double rounding = 8 * std::numeric_limits<double>::epsilon() *
                                std::max(std::fabs(a.S), std::fabs(b.S)) / light().rho;
        const double dp = std::max(0.0, std::fabs(r_[n]) - rounding) /
                          std::max(std::fabs(light().p) / (R * a.T * light().rho), 1e-300);
        residual = std::max(residual, dp);
        if (residual < kPotential && step < 1e-4) return true;
        if (residual < 50 * kPotential && step < kStep) return true;  // at rounding
        if (it == limit || !std::isfinite(residual)) return false;
        for (double& r : r_) r = -r;
        if (!lu_solve(m, jacobian_.data(), r_.data())) return false;
        // Bounds: a factor of e in a partial density, 15 % in the denser phase's total, 20 % in T.
        double scale = 1.0, total = 0.0;
        PhaseState const& heavy = dense();
        const int at = &heavy == &a ? 0 : n;
        step = 0.0;
        for (int i = 0; i < 2 * n; ++i) {
            step = std::max(step, std::fabs(r_[i]));
            scale = std::min(scale, 1.0 / std::max(1e-300, std::fabs(r_[i])));
        }
        for (int i = 0; i < n; ++i) total += heavy.x[i] * r_[at + i];
        scale = std::min(scale, 0.15 / std::max(1e-300, std::fabs(total)));
        scale = std::min(scale, 0.2 / std::max(1e-300, std::fabs(r_[2 * n])));
        step = std::max(step, std::fabs(r_[2 * n]));
        for (int i = 0; i < m; ++i) u[i] += scale * r_[i];
    }
    return false;
}

bool PairSolver::tangent(std::vector<double>& t) {
    assemble();
    t.assign(static_cast<std::size_t>(size()), 0.0);
    t.back() = 1.0;
    return lu_solve(size(), jacobian_.data(), t.data());
}

double PairSolver::ln_p() const {
    return std::log(light().p);
}
double PairSolver::ln_p(std::vector<double> const& t) const {
    PhaseState const& s = light();
    const int at = &s == &a ? 0 : n_;
    const double RT = R * s.T, reduced = s.p / RT;
    double d = (s.p_T + reduced) * t[2 * n_];
    for (int j = 0; j < n_; ++j) d += s.rho_i[j] * s.P[j] * t[at + j];
    return d / reduced;
}

}  // namespace corvane
