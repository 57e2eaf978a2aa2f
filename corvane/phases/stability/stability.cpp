#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/phases/stability/stability_scan.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace corvane {
namespace {
constexpr int kIterations = 120;
constexpr double kConverged = 1e-10;  // of ln W
constexpr double kLeast = 1e-278;     // of W that is told from 0
constexpr double kFew = 0.01;  // of a component in a trial, up to which it may grow in a step
constexpr double kTrace = 1e-6, kFar = 2.0, kGrown = -7.0;  // see traces()
constexpr double kLevel = 1e-13, kShortest = 1e-4, kFlat = 1e-7;  // of descents at rounding
constexpr double kRounding = 5e-14;   // of a distance, over the size of its terms

constexpr double kSpinodal = 1e-9;    // what rounding may leave of w·(1 − w)·t″

constexpr double kMet = 1e-6, kSameRho = 2e-3;  // of trials that have run into a phase
constexpr double kAlike = 0.05,
                 kBeside = 1.01;      // phases nearly alike; a way past both, over the direct one
constexpr double kShort = 0.1;        // step over W whose end is foreseen
// A bowl about a phase, see in_bowl(): its radius squared, its relative height and how far it may be from
// a parabola; least eigenvalue of the phase's own Hessian (1 in an ideal mixture).
constexpr double kBowl = 0.04, kParabola = 0.15, kSteep = 0.2;
// The same of a critical phase, see in_valley(): its radius squared and in the density, least slope
// over the fourth power, slope over the height.
constexpr double kCloseBy = 0.05, kValley = 0.1, kValleyRho = 0.1, kFourth = 0.3,
                 kLeastSlope = 1.85, kMostSlope = 5.6;

/// From a phase to a trial: the squared way, Σ Δx²/x, and the slope along it and the value of the
/// distance from the plane of the phase there.
struct Rise {
    double square = 0.0, slope = 0.0, height = 0.0;
};
Rise rise(PhaseState const& s, PhaseState const& phase) {
    Rise r;
    for (int k = 0; k < s.size(); ++k) {
        const double off = s.x[k] - phase.x[k], g = s.m[k] - phase.m[k];
        r.square += off * off / phase.x[k];
        r.slope += off * g;
        r.height += s.x[k] * g;
    }
    return r;
}
}  // namespace

/// Squared distance in ln x, weighted, and in ln rho.
double Stability::apart(PhaseState const& s, PhaseState const& phase) {
    double d = std::log(s.rho / phase.rho);
    d *= d;
    for (int k = 0; k < s.size(); ++k) {
        const double c = std::log(s.x[k] / phase.x[k]);
        d += s.x[k] * c * c;
    }
    return d;
}
/// The trial has run into a phase.
bool Stability::meets(PhaseState const& s, PhaseState const& phase) {
    return std::fabs(s.rho / phase.rho - 1.0) < kSameRho && apart(s, phase) < kMet;
}
/// The trial is between two phases nearly alike, where the distance has its least barrier, so flat
/// that no step leads away: either side is one of them.
bool Stability::between(PhaseState const& s, PhaseState const& phase, PhaseState const& known) {
    const double whole = std::sqrt(apart(phase, known));
    return whole < kAlike &&
           std::sqrt(apart(s, phase)) + std::sqrt(apart(s, known)) < kBeside * whole;
}

Stability::Stability(FluidModel const& fluid, StabilityTest k) : kind(k), fluid_(fluid) {
    const auto n = static_cast<std::size_t>(fluid.size());
    s_.resize(fluid.size());
    for (auto* v : {&W_, &g_, &step_, &root_, &way_, &over_}) v->resize(n);
    hess_.resize(n * n);
}
Stability::~Stability() = default;
void Stability::forget() {
    kind = StabilityTest::complete;
    critical = false;
    if (scan_) scan_->forget();
}

// Gradient √W_i·g_i and Hessian √(w_i·w_j)·(∂m_i/∂n_j + 1) in 2·√W, without the term in g. Where
// that is not definite it is shifted, so that steps are long in the direction of least curvature.
// No W falls below 0.09 of itself or grows above 2.9 times that, but up to kFew of the trial in one
// step: as little as that moves no minimum of the others.
void Stability::newton() {
    const int n = s_.size();
    double scale = 1.0;
    convex_ = true;
    for (int i = 0; i < n; ++i) {
        root_[i] = std::sqrt(W_[i]);
        way_[i] = std::sqrt(s_.x[i]);
    }
    for (double shift : {0.0, 1e-3, 1e-2, 0.1, 1.0, 10.0}) {
        for (int i = 0; i < n; ++i) {
            step_[i] = -root_[i] * g_[i];
            for (int j = 0; j <= i; ++j)  // all that Cholesky's method reads
                hess_[i * n + j] = way_[i] * way_[j] * (s_.m_n(i, j) + 1.0);
            hess_[i * n + i] += shift;
        }
        if (cholesky_solve(n, hess_.data(), step_.data())) break;
        convex_ = false;
    }
    const double few = std::sqrt(kFew * std::accumulate(W_.begin(), W_.end(), 0.0));
    for (int i = 0; i < n; ++i) {
        double limit = 1.4 * root_[i];
        if (step_[i] > 0.0) limit = std::max(limit, 2.0 * (few - root_[i]));
        scale = std::min(scale, limit / std::max(std::fabs(step_[i]), 1e-300));
    }
    for (int i = 0; i < n; ++i) way_[i] = 0.5 * scale * step_[i];
    along(1.0);
}
/// Traces far from what the rest of the trial asks for are set to that; a step of newton() would
/// gain a factor of three, and hold all others back. True if there were some.
bool Stability::traces() {
    bool moved = false;
    for (int i = 0; i < s_.size(); ++i) {
        if (!(s_.x[i] < kTrace) || !(std::fabs(g_[i]) > kFar)) continue;
        const double ln = std::log(W_[i]);
        W_[i] = std::exp(std::min(ln - g_[i], std::max(ln + 1.0, kGrown)));
        moved = true;
    }
    return moved;
}
void Stability::along(double part) {
    for (int i = 0; i < s_.size(); ++i) {
        const double root = root_[i] + part * way_[i];
        W_[i] = root * root;
    }
}

/// Does a short step of Newton's method from s_, so many times as long, end at the phase, as
/// meets() has it? Then it need not be evaluated.
bool Stability::leads_to(PhaseState const& phase, double times) {
    double sum = 0.0, d = 0.0, volume = 1.0 / s_.rho;
    for (int k = 0; k < s_.size(); ++k) {
        if (!(2.0 * times * std::fabs(way_[k]) < kShort * root_[k])) return false;
        const double end = root_[k] + times * way_[k];
        sum += step_[k] = end * end;
    }
    for (int k = 0; k < s_.size(); ++k) {
        const double c = std::log(step_[k] / (sum * phase.x[k]));
        d += phase.x[k] * c * c;
        volume += s_.v(k) * (step_[k] / sum - s_.x[k]);
    }
    const double off = std::fabs(volume * phase.rho - 1.0);
    return off < kSameRho && d + off * off < kMet;
}
/// Does the distance from the plane of a minimum rise as a parabola does on the way to s_? Value and
/// slope at s_ are known, both vanish at the minimum; if that is distinct and near, so that all of this
/// holds sideways, too, a descent from s_ ends there.
bool Stability::in_bowl(PhaseState const& phase) const {
    if (!(std::fabs(s_.rho / phase.rho - 1.0) < kBowl)) return false;
    const auto [square, slope, height] = rise(s_, phase);
    return square < kBowl && slope > kSteep * square &&
           std::fabs(2.0 * height / slope - 1.0) < kParabola;
}
/// Likewise about a critical phase, where the distance rises with the fourth power in one direction
/// and as a parabola in all others: its slope is between two and four times the value, more by the
/// terms of fifth order, and less where the fourth is small and another minimum is near.
bool Stability::in_valley(PhaseState const& phase) const {
    if (!(std::fabs(s_.rho / phase.rho - 1.0) < kValleyRho)) return false;
    const auto [square, slope, height] = rise(s_, phase);
    return square < kValley && slope > kFourth * square * square && slope > kLeastSlope * height &&
           slope < kMostSlope * height;
}
/// Of the phase, the known one or a minimum that another descent has found?
bool Stability::in_bowl(PhaseState const& phase, PhaseState const* known) const {
    return in_bowl(phase) || (known && in_bowl(*known)) ||
           std::any_of(bowls_.begin(), bowls_.end(), [&](PhaseState const& s) { return in_bowl(s); });
}
/// Are all eigenvalues of the Hessian in 2·√W at the phase above kSteep?
bool Stability::is_steep(PhaseState const& phase) {
    const int n = phase.size();
    for (int i = 0; i < n; ++i) {
        root_[i] = std::sqrt(phase.x[i]);
        step_[i] = 0.0;
        for (int j = 0; j <= i; ++j)
            hess_[i * n + j] = root_[i] * root_[j] * (phase.m_n(i, j) + 1.0);
        hess_[i * n + i] -= kSteep;
    }
    return cholesky_solve(n, hess_.data(), step_.data());
}
/// What ends a descent at the trial s_: worst: the largest of its gradient; curved: with its
/// Hessian.
std::optional<Stability::End> Stability::met(PhaseState const& phase, PhaseState const* known,
                                             bool first, double worst, bool curved, double& tpd) {
    const double limit = -Certificate::tpd_tolerance;
    if (first && tpd < 10 * limit) return End::negative;
    const bool flat = known && !convex_ && worst < kFlat;
    if (tpd >= limit && (meets(s_, phase) || (known && meets(s_, *known)) ||
                         (flat && between(s_, phase, *known)))) {
        tpd = std::min(0.0, tpd);
        return End::trivial;
    }
    if (steep_ && tpd >= 0.0 && in_bowl(phase, known)) {
        tpd = 0.0;
        return End::trivial;
    }
    if (critical && tpd >= 0.0 && in_valley(phase)) {
        tpd = 0.0;
        return End::trivial;
    }
    if (!(worst < kConverged)) return {};
    if (tpd < limit) return End::negative;
    if (steep_ && curved && is_steep(s_)) bowls_.push_back(s_);
    return End::stationary;
}

Stability::End Stability::descend(PhaseState const& phase, double p, PhaseState const* known,
                                  double const* lnW, int substitutions, bool first, double& tpd,
                                  int& iterations) {
    const int n = fluid_.size();
    double last = 1e300, part = 1.0;
    start_ = over_[0] = std::numeric_limits<double>::quiet_NaN();
    for (int k = 0; k < n; ++k) W_[k] = std::exp(lnW[k]);
    for (int it = 0; it < kIterations; ++it) {
        ++iterations;
        double sum = 0.0;
        for (double& W : W_) sum += W = std::max(W, kLeast);
        if (!std::isfinite(sum) || !(sum > 0.0)) return End::failed;
        for (int k = 0; k < n; ++k) step_[k] = W_[k] / sum;
        const int order = substitutions > 0 ? 0 : phase_H;
        if (!fluid_.evaluate_at(s_, p, phase.T, step_, Root::stable, order)) return End::failed;
        double tm = 1.0, worst = 0.0, ln_sum = std::log(sum);
        for (int k = 0; k < n; ++k) {
            g_[k] = s_.m[k] + ln_sum - phase.m[k];
            if (W_[k] <= kLeast && g_[k] > 0.0) g_[k] = 0.0;
            tm += W_[k] * (g_[k] - 1.0);
            worst = std::max(worst, std::fabs(g_[k]));
        }
        tpd = distance(s_, phase);  // per mole of the trial phase
        if (it == 0) {
            start_ = tpd;
            start_rho_ = s_.rho;
            for (int k = 0; k < n; ++k) over_[k] = s_.m[k] - phase.m[k];
        }
        if (const auto end = met(phase, known, first, worst, order == phase_H, tpd)) return *end;
        // Towards a critical phase substitutions go less far than Newton's method.
        if (critical && it > 0 && tpd < kCloseBy) substitutions = 0;
        if (substitutions-- > 0) {
            for (int k = 0; k < n; ++k) W_[k] *= std::exp(-g_[k]);
            continue;
        }
        if (traces()) {
            last = 1e300;
            part = 1.0;
            continue;
        }
        // The modified distance tm falls along a step, if that is short enough.
        if (!(tm <= last + kLevel) && part > kShortest) {
            along(part *= 0.3);
            continue;
        }
        // At rounding of the potentials: stationary as far as that can be said.
        if (part <= kShortest && worst < kFlat)
            return tpd < -Certificate::tpd_tolerance ? End::negative : End::stationary;
        last = tm;
        part = 1.0;
        newton();
        if (convex_ && tpd >= -Certificate::tpd_tolerance &&
            (leads_to(phase) || (known && leads_to(*known)) ||
             (critical && leads_to(phase, 3.0)))) {
            tpd = std::min(0.0, tpd);
            return End::trivial;
        }
    }
    return tpd < -Certificate::tpd_tolerance ? End::negative : End::failed;
}

bool Stability::locally_stable(PhaseState const& phase) {
    const int n = phase.size();
    if (!(phase.S > 0.0)) return false;
    for (int i = 0; i < n; ++i) root_[i] = std::sqrt(phase.x[i]);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            hess_[i * n + j] = root_[i] * root_[j] * (phase.m_n(i, j) + 1.0);
    for (int k = 0; k < n; ++k) {  // positive definite if all pivots are positive
        if (!(hess_[k * n + k] > -1e-7)) return false;
        if (hess_[k * n + k] < 1e-12) return true;  // at rounding: a critical point
        for (int i = k + 1; i < n; ++i)
            for (int j = k + 1; j < n; ++j)
                hess_[i * n + j] -= hess_[i * n + k] * hess_[k * n + j] / hess_[k * n + k];
    }
    return true;
}

double Stability::distance(PhaseState const& s, PhaseState const& phase) {
    double d = 0.0;
    for (int k = 0; k < s.size(); ++k) d += s.x[k] * (s.m[k] - phase.m[k]);
    return d;
}

/// The distance at x, on the density root of lower Gibbs energy; not a number without one. Of the
/// potentials it needs their sum alone.
double Stability::distance_at(std::vector<double> const& x, PhaseState const& phase, double p) {
    double rho[2], gibbs[2];
    const int found = fluid_.densities(p, phase.T, x, rho, gibbs);
    if (found == 0) return std::numeric_limits<double>::quiet_NaN();
    double d = found == 2 ? std::min(gibbs[0], gibbs[1]) : gibbs[0];
    for (std::size_t k = 0; k < x.size(); ++k)
        if (x[k] > 0.0) d += x[k] * (std::log(x[k]) - phase.m[k]);
    return d;
}

/// A binary by the complete test.
StabilityResult Stability::complete(PhaseState const& phase, double p, PhaseState const* known,
                                    bool first, bool whole) {
    StabilityResult r;
    double tolerance = Certificate::tpd_tolerance;
    if (whole) {
        const double scale = std::fabs(phase.m[0]) + std::fabs(phase.m[1]) +
                             p / (R * phase.T * phase.rho);
        tolerance = kRounding * (1.0 + scale);
        const double curvature = phase.m_n(0, 0) - phase.m_n(0, 1) - phase.m_n(1, 0) +
                                 phase.m_n(1, 1);
        r.stable = phase.S > 0.0 && phase.x[0] * phase.x[1] * curvature > -kSpinodal;
    } else {
        r.stable = locally_stable(phase);
    }
    if (!r.stable && first) return r;
    if (!scan_) scan_ = std::make_unique<BinaryScan>(fluid_);
    const BinaryScan::Result found = scan_->test(phase, p, known, first, tolerance);
    r.iterations = found.nodes;
    r.unconverged = found.resolved ? 0 : 1;
    if (found.negative) r.stable = false;
    if (found.found) {
        r.other = true;
        r.tpd = found.t;
        r.trial = {found.t, found.rho, {found.w[0], found.w[1]}};
    }
    if (whole && r.stable && found.resolved) flat(phase, p, tolerance, r);
    return r;
}

StabilityResult stability(ModelN const& model, double p, double T, Vector<double> const& z) {
    const FluidModel fluid(model, z);
    PhaseState phase;
    phase.resize(fluid.size());
    if (!fluid.evaluate_at(phase, p, T, fluid.z(), Root::stable, phase_H))
        throw ThException(th_no_density);
    return Stability(fluid).test(phase, p, nullptr, false, true);
}

}  // namespace corvane
