#include <corvane/mixture/modeln.h>
#include <corvane/phases/certificate.h>
#include <corvane/phases/dense.h>
#include <corvane/phases/stability.h>

#include <cmath>

namespace corvane {
namespace {
constexpr int kIterations = 60, kSubstitutions = 3;
constexpr double kConverged = 1e-10;  // of ln W

/// The trial has run into a phase: squared distance in ln x, weighted, and in ln rho.
bool meets(PhaseState const& s, PhaseState const& phase) {
    double d = std::log(s.rho / phase.rho);
    d *= d;
    for (int k = 0; k < s.size(); ++k) {
        const double c = std::log(s.x[k] / phase.x[k]);
        d += s.x[k] * c * c;
    }
    return d < 1e-6;
}
}  // namespace

Stability::Stability(FluidModel const& fluid) : fluid_(fluid) {
    const auto n = static_cast<std::size_t>(fluid.size());
    s_.resize(fluid.size());
    for (auto* v : {&lnW_, &W_, &g_, &step_, &lnK_}) v->resize(n);
    hess_.resize(n * n);
}

// Gradient √W_i·g_i and Hessian √(w_i·w_j)·(∂m_i/∂n_j + 1) in 2·√W, without the term in g.
bool Stability::newton(PhaseState const&) {
    const int n = s_.size();
    for (int i = 0; i < n; ++i) {
        step_[i] = -std::sqrt(W_[i]) * g_[i];
        for (int j = 0; j < n; ++j)
            hess_[i * n + j] = std::sqrt(s_.x[i] * s_.x[j]) * (s_.m_n(i, j) + 1.0);
    }
    if (!lu_solve(n, hess_.data(), step_.data())) return false;
    double descent = 0.0, scale = 1.0;
    for (int i = 0; i < n; ++i) {
        descent += std::sqrt(W_[i]) * g_[i] * step_[i];
        scale = std::min(scale, 1.4 * std::sqrt(W_[i]) / std::max(std::fabs(step_[i]), 1e-300));
    }
    if (!(descent < 0.0)) return false;
    for (int i = 0; i < n; ++i) {
        const double root = std::sqrt(W_[i]) + 0.5 * scale * step_[i];
        lnW_[i] = 2.0 * std::log(root);
    }
    return true;
}

Stability::End Stability::descend(PhaseState const& phase, double p, PhaseState const* known,
                                  bool first, double& tpd, int& iterations) {
    const int n = fluid_.size();
    double last = 1e300;
    int substitutions = kSubstitutions;
    for (int it = 0; it < kIterations; ++it) {
        ++iterations;
        double sum = 0.0;
        for (int k = 0; k < n; ++k) sum += W_[k] = std::exp(lnW_[k]);
        if (!std::isfinite(sum) || !(sum > 0.0)) return End::failed;
        for (int k = 0; k < n; ++k) step_[k] = W_[k] / sum;
        if (!fluid_.evaluate_at(s_, p, phase.T, step_, Root::stable, phase_H)) return End::failed;
        double tm = 1.0, worst = 0.0, ln_sum = std::log(sum);
        for (int k = 0; k < n; ++k) {
            g_[k] = s_.m[k] + ln_sum - phase.m[k];
            tm += W_[k] * (g_[k] - 1.0);
            worst = std::max(worst, std::fabs(g_[k]));
        }
        // per mole of trial phase
        double distance = 0.0;
        for (int k = 0; k < n; ++k) distance += s_.x[k] * (s_.m[k] - phase.m[k]);
        tpd = distance;
        const double limit = -Certificate::tpd_tolerance;
        if (first && distance < 10 * limit) return End::negative;
        if (distance >= limit && (meets(s_, phase) || (known && meets(s_, *known)))) {
            tpd = std::min(0.0, distance);
            return End::trivial;
        }
        if (worst < kConverged) return distance < limit ? End::negative : End::stationary;
        if (tm > last + 1e-12) substitutions = 2;
        last = tm;
        if (substitutions > 0 || !newton(phase)) {
            for (int k = 0; k < n; ++k) lnW_[k] -= g_[k];
            if (substitutions > 0) --substitutions;
        }
    }
    return tpd < -Certificate::tpd_tolerance ? End::negative : End::failed;
}

StabilityResult Stability::test(PhaseState const& phase, double p, PhaseState const* known,
                                bool first) {
    const int n = fluid_.size();
    StabilityResult r;
    double best = 1e300;
    // The phase itself at its other density root.
    if (fluid_.evaluate_at(s_, p, phase.T, phase.x, Root::stable, 0) &&
        std::fabs(s_.rho / phase.rho - 1) > 1e-3) {
        double distance = 0.0;
        for (int k = 0; k < n; ++k) distance += s_.x[k] * (s_.m[k] - phase.m[k]);
        if (distance < -Certificate::tpd_tolerance) {
            best = r.tpd = distance;
            r.other = true;
            r.stable = false;
            r.trial = {distance, s_.rho, s_.x};
            if (first) return r;
        }
    }
    for (int k = 0; k < n; ++k) lnK_[k] = fluid_.wilson(k, phase.T) - std::log(p);
    for (int start = 0; start < (n == 1 ? 2 : n + 2); ++start) {
        for (int k = 0; k < n; ++k) {
            if (start < n && n > 1)  // pure, in the surroundings of the phase's potentials
                lnW_[k] = std::log(k == start ? 0.998 : 0.002 / (n - 1));
            else
                lnW_[k] = std::log(phase.x[k]) + (start == n ? 1.0 : -1.0) * lnK_[k];
        }
        double tpd = 0.0;
        const End end = descend(phase, p, known, first, tpd, r.iterations);
        if (end == End::failed) ++r.unconverged;
        if (end == End::trivial) r.tpd = std::min(r.tpd, tpd);
        if (end != End::stationary && end != End::negative) continue;
        if (tpd < best) {
            best = tpd;
            r.other = true;
            r.trial = {tpd, s_.rho, s_.x};
        }
        if (end == End::negative) {
            r.stable = false;
            if (first) break;
        }
    }
    if (r.other) r.tpd = std::min(r.tpd == 0.0 ? best : r.tpd, best);
    return r;
}

StabilityResult stability(ModelN const& model, double p, double T, Vector<double> const& z) {
    const FluidModel fluid(model, z);
    PhaseState phase;
    phase.resize(fluid.size());
    if (!fluid.evaluate_at(phase, p, T, fluid.z(), Root::stable, 0))
        throw ThException(th_no_density);
    return Stability(fluid).test(phase, p, nullptr, false);
}

}  // namespace corvane
