// Bubble and dew points as crossings of the phase envelope.
#include <corvane/core/constants.h>
#include <corvane/phases/critical/spinodal.h>
#include <corvane/phases/saturation/envelope_outline.h>
#include <corvane/phases/saturation/saturation_solver.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kSolved = 1e-9;          // of the potentials
constexpr double kBend[] = {1e-3, 1e-2};  // of ln T, of ln p
constexpr double kSamePoint = 1e-6;       // critical points, of ln T and ln p
constexpr double kDeep = -1e-3;           // distance that is no sign of a boundary nearby
constexpr double kFarAbove[] = {0.04,
                                0.3};  // of ln T, of ln p: above the spinodal, worth an outline
constexpr double kOnCurve[] = {3e-3, 1e-2};  // of ln T, of ln p: critical points that are one
constexpr double kThere[] = {0.1, 0.02};  // of ln rho, of ln T: from its start to a critical point
constexpr double kBack[] = {0.02, 0.1};   // of ln T, of ln p: beyond two neighbours of an envelope

/// Does the curve end at this point of an envelope? Where the incipient phase becomes mechanically
/// unstable, and where two liquids leave the positive pressures.
bool ends(FluidModel const& fluid, EnvelopePoint const& q) {
    PhaseState s;
    s.resize(fluid.size());
    for (int i = 0, k = 0; i < q.y.size(); ++i)
        if (q.y[i] > 0.0 && k < fluid.size()) s.rho_i[k++] = q.y[i] * q.rho2;
    if (!fluid.evaluate(s, q.T, phase_H)) return false;
    return s.S < 1e-3 * s.rho || q.p < 1e-4 * R * q.T * std::min(q.rho, q.rho2);
}
}  // namespace

bool detail::trace_envelope(FluidModel const& fluid, Envelope& curve, bool& stuck) {
    EnvelopeOptions options;
    try {
        for (int k = 0; k < 2; ++k, options.step *= 0.5) {
            curve = phase_envelope(fluid.model(), fluid.expand(fluid.z()), options);
            fluid.evaluations += curve.evaluations;
            if (curve.end != EnvelopeEnd::full &&
                (curve.end != EnvelopeEnd::stuck || ends(fluid, curve.points.back())))
                return true;
        }
    } catch (EquilibriumFailure const&) {
        stuck = true;
        return false;
    }
    stuck = true;
    return true;
}

KeptEnvelope::KeptEnvelope(ModelN const& model, Vector<double> const& z) : model_(&model), z_(z) {
    const FluidModel fluid(model, z);
    if (fluid.size() < 2) return;
    found_ = trace_envelope(fluid, curve_, stuck_);
    if (!whole()) return;
    CriticalPoint c;
    try {
        c = critical_point(model, z);
    } catch (EquilibriumFailure const&) {
        return;
    }
    if (std::none_of(curve_.critical.begin(), curve_.critical.end(), [&](EnvelopePoint const& q) {
            return std::fabs(std::log(q.T / c.T)) + std::fabs(std::log(q.p / c.p)) < kSamePoint;
        }))
        return;
    T_end_ = p_end_ = 0.0;
    for (EnvelopePoint const& q : curve_.points)
        T_end_ = std::max(T_end_, q.T), p_end_ = std::max(p_end_, q.p);
    T_end_ *= std::exp(kBack[0]), p_end_ *= std::exp(kBack[1]);
}

bool KeptEnvelope::of(ModelN const& model, Vector<double> const& z) const {
    if (&model != model_ || z.size() != z_.size()) return false;
    for (int i = 0; i < z.size(); ++i)
        if (z[i] != z_[i]) return false;
    return true;
}

bool SaturationSolver::above() {
    if (!may_outline_) return beyond_;
    may_outline_ = false;
    try {
        beyond_ = by_outline_ = outlined();
    } catch (EquilibriumFailure const&) {  // no curve, or no values on the way
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return beyond_;
}

/// As a kept envelope has it: beyond a whole curve, on which the critical point of the composition
/// is.
bool SaturationSolver::outlined() {
    CriticalConditions conditions(fluid_);
    Spinodal spinodal(fluid_, conditions);
    CriticalConditions::Variables y{spinodal.mean(fluid_.z()), 0.0};
    conditions.updates = true;
    if (!spinodal.hottest(y, 2)) return false;
    const double value = std::log(held_.value);
    if (held_.at_T) {
        if (!(value > y[1] + kFarAbove[0])) return false;
    } else if (conditions.eigen(y, 2, phase_p) && conditions.s.p > 0.0 &&
               !(value > std::log(conditions.s.p) + kFarAbove[1])) {
        return false;
    }
    if (!quiet()) return false;
    const EnvelopeOutline e = envelope_outline(fluid_);
    if (!e.whole ||
        !(held_.value > (held_.at_T ? e.T_max * std::exp(kBack[0]) : e.p_max * std::exp(kBack[1]))))
        return false;
    spinodal.nearer(y);
    if (std::fabs(y[0] - std::log(e.rho_critical)) < kThere[0] &&
        std::fabs(y[1] - std::log(e.T_critical)) < kThere[1])
        return true;
    return conditions.solve(y, 2, nullptr, 0.0, kNewton) &&
           std::fabs(y[1] - std::log(e.T_critical)) < kOnCurve[0] &&
           std::fabs(std::log(conditions.s.p / e.p_critical)) < kOnCurve[1];
}

/// Solves the crossing at `part` of the way from a to b, where ln p (or ln T) is within lo and hi:
/// linear, or as next to an extremum at either end, then from the points themselves. `unstable`: a
/// phase of the solution is inside its spinodal, and there is no boundary here.
bool SaturationSolver::crossing(EnvelopePoint const& a, EnvelopePoint const& b, double part,
                                double lo, double hi, bool& unstable) {
    // Next to an extremum of p (or T) the solution may lie beyond both.
    const double bend = kBend[held_.at_T ? 1 : 0];
    const auto between = [&] {
        return (found() > lo && found() < hi) ||
               (found() > lo - bend && found() < hi + bend &&
                (pair_.a.rho - a.rho) * (pair_.a.rho - b.rho) < 0.0 &&
                (pair_.b.rho - a.rho2) * (pair_.b.rho - b.rho2) < 0.0);
    };
    const auto noted = [&](bool solved) {
        if (!between()) return false;
        if (!solved && pair_.residual < kSolved)
            unstable |= !stability_.locally_stable(pair_.a) || !stability_.locally_stable(pair_.b);
        return solved;
    };
    for (double w : {part, std::sqrt(part), 1 - std::sqrt(1 - part)}) {
        auto mean = [w](double x, double y) { return std::pow(x, 1 - w) * std::pow(y, w); };
        std::vector<double> y;
        for (int i = 0; i < a.y.size(); ++i)
            if (a.y[i] > 0.0) y.push_back(mean(a.y[i], b.y[i]));
        pair_.start(fluid_.z(), mean(a.rho, b.rho), y, mean(a.rho2, b.rho2), mean(a.T, b.T));
        if (noted(solve())) return true;
    }
    for (EnvelopePoint const* q : {&a, &b}) {
        std::vector<double> y;
        for (int i = 0; i < q->y.size(); ++i)
            if (q->y[i] > 0.0) y.push_back(q->y[i]);
        pair_.start(fluid_.z(), q->rho, y, q->rho2, q->T);
        if (noted(near())) return true;
    }
    return false;
}

/// Is the whole unstable from lo to hi, as far as the search looks? Then no boundary of it is an
/// answer there.
bool SaturationSolver::within_unstable(double lo, double hi) {
    const Node a = node(lo), b = node(hi);
    const auto deep = [](Node const& q) { return q.known && !q.stable && q.r.tpd < kDeep; };
    return deep(a) && deep(b) && !window(a, b);
}

bool SaturationSolver::traced(bool upper, bool known, Found& best) {
    Envelope own;
    if (kept_ ? !kept_->found() : !trace_envelope(fluid_, own, stuck_)) {
        stuck_ = true;
        return false;
    }
    if (kept_) stuck_ = stuck_ || !kept_->whole();
    Envelope const& e = kept_ ? kept_->curve() : own;
    const double target = std::log(held_.value);
    auto fixed = [&](EnvelopePoint const& q) { return std::log(held_.at_T ? q.T : q.p) - target; };
    bool any = known;
    for (std::size_t k = 0; k + 1 < e.points.size(); ++k) {
        EnvelopePoint const &a = e.points[k], &b = e.points[k + 1];
        const double fa = fixed(a), fb = fixed(b);
        if (!(fa * fb <= 0.0) || fa == fb) continue;
        if (a.bubble == b.bubble && a.bubble != (kind_ == Saturated::bubble)) continue;
        const double lo = std::log(held_.at_T ? std::min(a.p, b.p) : std::min(a.T, b.T)) - 1e-7,
                     hi = std::log(held_.at_T ? std::max(a.p, b.p) : std::max(a.T, b.T)) + 1e-7;
        // Through a critical point, where p or T may run back between the two.
        const double back = a.bubble == b.bubble ? 0.0 : hi - lo + kBack[held_.at_T ? 1 : 0];
        if (std::any_of(others_.begin(), others_.end(), [&](Other const& o) {
                return o.s > lo - back && o.s < hi + back &&
                       (back == 0.0 || (o.rho - a.rho) * (o.rho - b.rho) < 0.0);
            }))
            continue;
        bool unstable = false;
        if (!crossing(a, b, fa / (fa - fb), lo, hi, unstable)) {
            if (unstable || within_unstable(lo, hi)) continue;
            missed_ = true;
            complete_ = false;
            continue;
        }
        if (!accept()) continue;
        if (any && (upper ? found() <= best.s : found() >= best.s)) continue;
        any = true;
        best = take();
    }
    return any;
}

}  // namespace corvane
