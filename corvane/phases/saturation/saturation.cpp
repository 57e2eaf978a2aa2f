#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr int kSubstitutions = 3, kMoreSubstitutions = 10;
constexpr int kOthers = 3;                // liquids of a dew point that are tried after the first
constexpr double kLeast = 1e-300;         // mole fraction in a start, whose logarithm is finite
constexpr double kFactor = 3.0;           // largest change of p in a substitution
constexpr double kFiner = 2.5;            // steps of the search that stands in for the trace
constexpr double kBracket = 1e-3;         // of ln p: where the bracket of a solution is
constexpr double kLiquid = 1.4;           // over the pseudocritical density: no vapour
constexpr double kBelow[] = {0.6, 0.94};  // of p, of T: where from_below() begins
constexpr int kUpward = 16;               // its steps
constexpr double kSmallest = 1e-3;        // and the least of them, of ln T
constexpr double kCloser = 0.4;           // of the distance of the phases left by a step
}  // namespace

SaturationSolver::SaturationSolver(ModelN const& model, Saturated kind, Fixed held,
                                   Vector<double> const& z)
    : fluid_(model, z),
      asked_(z),
      kind_(kind),
      held_(held),
      pair_(fluid_),
      regular_(fluid_),
      stability_(fluid_) {
    if (!(held.value > 0.0) || !std::isfinite(held.value)) throw ThException(th_out_of_range);
    pair_.z = &fluid_.z();
    pair_.hold(held);
    (held.at_T ? regular_.T : regular_.p) = held.value;
}

SaturationPoint SaturationSolver::answer(SaturationOptions const& o) {
    const auto gave_up = [&](char const* why) {
        return EquilibriumFailure(EquilibriumFailure::Kind::gave_up, state(), name(),
                                  pair_.iterations, pair_.residual, why);
    };
    // The arguments are checked: what comes here is from flashes and critical points on the way.
    try {
        return run(o);
    } catch (ThException const& e) {
        if (e.number == th_no_density)
            throw gave_up("the model has no density for some states on the way");
        if (e.number != th_out_of_range) throw;
    } catch (MthException const& e) {
        if (e.number != mth_out_of_range) throw;
    }
    throw gave_up("the model has no values for some states on the way");
}

SaturationPoint SaturationSolver::run(SaturationOptions const& o) {
    stability_.kind = o.test;
    if (o.envelope && o.envelope->of(fluid_.model(), asked_)) kept_ = o.envelope;
    beyond_ = kept_ && kept_->beyond(held_.at_T, held_.value);
    const bool any = o.branch == Branch::any;
    may_outline_ = any && o.trace && !kept_ && fluid_.size() > 1;
    const bool may_split = kind_ == Saturated::bubble && fluid_.size() > 1;
    std::optional<Found> direct;  // of a branch: candidates beside those of the search
    std::optional<SaturationPoint> beside;
    if (any) {
        if (may_split && o.start && !o.start->split.empty())
            if (const auto found = warm_split(*o.start, o)) return *found;
        if (o.start && warm(*o.start) && accept()) return result(o);
        bool converged = cold();
        if (!converged && above() && quiet()) return search(o, {}, {});
        converged = converged || from_below();
        bool accepted = converged && accept();
        // Another liquid appears before the one that was found.
        for (int k = 0; k < kOthers && !accepted && below_; ++k)
            accepted = substitute(std::exchange(below_, {})->w, pair_.a.T, pair_.pressure(),
                                  kMoreSubstitutions) &&
                       accept();
        if (accepted && !second_liquid()) return result(o);
        std::optional<Found> first;
        if (accepted) first = take();
        // Where no start is near, the way from the critical point costs less than flashes on the
        // way to a vapour beside liquids.
        const bool sooner = !converged && may_split;
        if (sooner && along_from_critical()) {
            if (!second_liquid()) return result(o);
            first = take();
        }
        // Not stable, none, of the other kind, or the boundary of a second liquid: the vapour may
        // come beside others.
        if (may_split)
            if (const auto found = beside_liquids(o)) return *found;
        if (first && restore(*first)) return result(o);
        if (fluid_.size() > 1 && !sooner && along_from_critical()) return result(o);
    } else if (fluid_.size() > 1) {
        if (cold() && accept()) direct = take();
        if (may_split) beside = beside_liquids(o);
    }
    if (fluid_.size() == 1) {
        if (cold() && accept()) return result(o);
        if (pure() || (!complete_ && by_pure_fluid() && accept())) return result(o);
        throw EquilibriumFailure(
            complete_ ? EquilibriumFailure::Kind::no_solution : EquilibriumFailure::Kind::gave_up,
            state(), name(), pair_.iterations, complete_ ? std::nan("") : pair_.residual,
            complete_ ? "at or above the critical point"
                      : "too near the critical point, or out of the model's reach");
    }
    return search(o, direct, beside);
}

bool SaturationSolver::untested(SaturationPoint& q) {
    const bool found = cold() && bubble() == (kind_ == Saturated::bubble);
    q.certificate.evaluations = fluid_.evaluations;
    if (!found) return false;
    q.T = pair_.a.T;
    q.p = pair_.pressure();
    q.given = {pair_.a.rho, fluid_.expand(pair_.a.x)};
    q.incipient = {pair_.b.rho, fluid_.expand(pair_.b.x)};
    return true;
}

bool SaturationSolver::along_from_critical() {
    if (beyond_) return false;
    try {
        const CriticalPoint c = critical_point(fluid_.model(), fluid_.expand(fluid_.z()));
        fluid_.evaluations += c.certificate.evaluations;
        return from_critical(c);
    } catch (EquilibriumFailure const&) {
        return false;
    }
}

/// direct, beside: what is known of a branch.
SaturationPoint SaturationSolver::search(SaturationOptions const& o,
                                         std::optional<Found> const& direct,
                                         std::optional<SaturationPoint> beside) {
    const bool any = o.branch == Branch::any, upper = o.branch == Branch::upper;
    const auto outside = [&](double a, double b) { return upper ? a > b : a < b; };
    bool found = !quiet_.value_or(false) && global(upper, 1.0);
    Found best = take();
    if (direct && !(found && outside(best.s, direct->s))) {
        found = true;
        best = *direct;
    }
    if (o.trace && !by_outline_ && (!found || !any) && traced(upper, found, best)) found = true;
    if (!found && complete_ && stuck_) {
        found = global(upper, kFiner);
        best = take();
    }
    const bool may_split = kind_ == Saturated::bubble && fluid_.size() > 2;
    const auto ln = [&](SaturationPoint const& q) { return std::log(held_.at_T ? q.p : q.T); };
    if (!any && may_split) {
        const auto last = beside_liquids_at(nodes_, o);
        if (last && !(beside && outside(ln(*beside), ln(*last)))) beside = last;
    }
    // Of a branch an answer counts if none can lie beyond it.
    const bool beyond =
        bracketed_ && !(found && !outside(*bracketed_, best.s + (upper ? kBracket : -kBracket)));
    if (any || !(missed_ || beyond || (open_ && !beside))) {
        if (beside && !(found && outside(best.s, ln(*beside)))) return *beside;
        if (found && restore(best)) return result(o);
    }
    if (found || beside) complete_ = false;
    bool none = complete_ && !bracketed_ && !lost_;
    if (none && any && may_split)
        if (const auto last = beside_liquids_at(nodes_, o)) return *last;
    none = none && !open_ && !unsolved_;
    throw EquilibriumFailure(
        none ? EquilibriumFailure::Kind::no_solution : EquilibriumFailure::Kind::gave_up, state(),
        name(), pair_.iterations, none ? std::nan("") : pair_.residual,
        none       ? "no stable boundary of this kind on the way or on the envelope"
        : unknown_ ? "the model has no density for some states or trial phases on the way"
                   : "start from a neighbouring solution, or trace the envelope");
}

bool SaturationSolver::warm(SaturationPoint const& start) {
    const int n = fluid_.size();
    const Vector<double> all = fluid_.expand(fluid_.z());
    std::vector<double> y;
    for (int i = 0; i < std::min(start.incipient.x.size(), all.size()); ++i)
        if (all[i] > 0.0) y.push_back(start.incipient.x[i]);
    if (static_cast<int>(y.size()) != n ||
        !std::all_of(y.begin(), y.end(), [](double v) { return v >= 0.0; }))
        return false;
    pair_.start(fluid_.z(), start.given.rho, y, start.incipient.rho, held_.T(start.T));
    return solve();
}

bool SaturationSolver::cold() {
    const int n = fluid_.size();
    std::vector<double> const& z = fluid_.z();
    a_.resize(n);
    b_.resize(n);
    const bool bubble = kind_ == Saturated::bubble;
    const double sign = bubble ? 1.0 : -1.0;
    std::vector<double> y(z);
    double t = held_.T(0.0), q = held_.value;
    auto wilson_sum = [&](double temperature, double& slope) {
        double sum = 0.0;
        slope = 0.0;
        for (int k = 0; k < n; ++k) {
            y[k] = z[k] * std::exp(sign * fluid_.wilson(k, temperature));
            sum += y[k];
            slope += y[k] * fluid_.wilson_slope(k);
        }
        slope /= sum;
        return sum;
    };
    double slope = 0.0;
    if (held_.at_T) {
        q = std::pow(wilson_sum(t, slope), sign);
    } else {
        double tau = 0.0;  // 1/T
        for (int k = 0; k < n; ++k) tau += z[k] / fluid_.pure(k).Tcrit();
        for (int it = 0; it < 30; ++it) {
            const double f = std::log(wilson_sum(1 / tau, slope)) - sign * std::log(held_.value);
            const double d = std::clamp(sign * f / slope, -0.3 * tau, 0.5 * tau);
            tau += d;
            if (std::fabs(d) < 1e-3 * tau) break;
        }
        t = 1 / tau;
    }
    if (substitute(y, t, q, kSubstitutions)) return true;
    // Where the first liquid of a gas is far from what Wilson's estimate says (of a cold one, of
    // carbon dioxide) Newton's method needs a better start.
    return n > 1 && !bubble && !alike() && substitute(b_.x, a_.T, a_.p, kMoreSubstitutions);
}

bool SaturationSolver::substitute(std::vector<double> y, double t, double q, int last) {
    const int n = fluid_.size();
    std::vector<double> const& z = fluid_.z();
    const bool bubble = kind_ == Saturated::bubble;
    const double sign = bubble ? 1.0 : -1.0;
    double slope = 0.0, all = 0.0;
    for (int k = 0; k < n; ++k) {
        slope += y[k] * fluid_.wilson_slope(k);
        all += y[k];
    }
    slope /= all;
    for (int it = 1;; ++it) {
        double sum = 0.0;
        for (double v : y) sum += v;
        for (double& v : y) v = std::max(v / sum, kLeast);
        a_.T = t;  // where beside_liquids starts
        a_.p = q;
        b_.x = y;
        if (!fluid_.evaluate_at(a_, q, t, z, bubble ? Root::dense : Root::dilute, 0) ||
            !fluid_.evaluate_at(b_, q, t, y, bubble ? Root::dilute : Root::dense, 0))
            return false;
        if (it == last) break;
        sum = 0.0;
        for (int k = 0; k < n; ++k) sum += y[k] = std::exp(a_.m[k] - b_.m[k] + std::log(y[k]));
        if (!std::isfinite(sum)) return false;
        if (held_.at_T)
            q *= std::clamp(std::pow(sum, sign), 1 / kFactor, kFactor);
        else
            t = 1 / (1 / t + std::clamp(sign * std::log(sum) / slope, -0.1 / t, 0.1 / t));
    }
    pair_.start(z, a_.rho, b_.x, b_.rho, t);
    return solve(true, true);
}

bool SaturationSolver::from_below() {
    if (fluid_.size() < 2) return false;
    SaturationSolver start(fluid_.model(), kind_, {held_.at_T, kBelow[held_.at_T] * held_.value},
                           asked_);
    const bool found = start.cold() && start.bubble() == (kind_ == Saturated::bubble);
    fluid_.evaluations += start.fluid_.evaluations;
    if (!found) return false;
    pair_.u = start.pair_.u;
    const double goal = std::log(held_.value);
    std::vector<double> t, row(pair_.u.size(), 0.0);
    row.back() = 1.0;
    bool reached = false;
    double longest = 1.0;
    for (int it = 0; it < kUpward && !reached; ++it) {
        pair_.release();
        pair_.row = row;
        if (!pair_.evaluate() || !pair_.tangent(t)) break;
        const std::vector<double> from = pair_.u;
        const double distance = apart(),
                     rest = held_.at_T ? goal - from.back() : (goal - pair_.ln_p()) / pair_.ln_p(t),
                     step = std::min(rest, longest);
        if (!(rest > 0.0)) break;
        for (std::size_t i = 0; i < t.size(); ++i) pair_.u[i] += step * t[i];
        bool solved = false;
        if (step < rest) {
            pair_.value = pair_.u.back();
            solved = pair_.solve(kNewton);
        } else {
            pair_.row.clear();
            pair_.hold(held_);
            solved = reached = solve(true, true);
        }
        if (solved && apart() > kCloser * distance) continue;
        reached = false;
        pair_.u = from;
        if ((longest = 0.5 * step) < kSmallest) break;
    }
    pair_.row.clear();
    pair_.release();
    pair_.hold(held_);
    return reached;
}

bool SaturationSolver::pure() {
    complete_ = false;
    CriticalPoint c;
    try {
        c = critical_point(fluid_.model(), fluid_.expand(fluid_.z()));
    } catch (EquilibriumFailure const&) {
        return false;
    }
    fluid_.evaluations += c.certificate.evaluations;
    if (!(held_.value < (held_.at_T ? c.T : c.p))) {
        complete_ = true;
        return false;
    }
    return from_critical(c);
}

bool SaturationSolver::by_pure_fluid() {
    try {
        Model1 const& m = fluid_.pure(0);
        const PureSaturation q =
            held_.at_T ? pure_saturation_T(m, held_.value) : pure_saturation_p(m, held_.value);
        const bool liquid = kind_ == Saturated::bubble;
        pair_.start({1.0}, liquid ? q.rhoL : q.rhoV, {1.0}, liquid ? q.rhoV : q.rhoL, q.T);
        bounds_ = Certificate();
        bounds_.value_error = q.value_error;
        bounds_.x_error = 0.0;
        bounds_.rho_error = q.rho_error;
        bounds_.apart_error = q.apart_error;
    } catch (EquilibriumFailure const&) {
        return false;
    }
    return pair_.evaluate();
}

bool SaturationSolver::solve(bool also_near, bool unless_above) {
    loose_ = false;
    const auto closely = [&] { return also_near && !(unless_above && above()) && near(); };
    if (alike()) return closely();
    if (!pair_.solve(kNewton) || !(pair_.pressure() > 0.0)) return false;
    if (alike()) return closely();
    return within_bounds(pair_.bound(bounds_));
}

bool SaturationSolver::within_bounds(bool known) {
    loose_ = !(known && bounds_.holds());
    return !loose_;
}

bool SaturationSolver::restore(Found const& found) {
    pair_.u = found.u;
    tpd_ = found.tpd;
    bounds_ = found.bounds;
    return pair_.evaluate();
}

bool SaturationSolver::accept() {
    below_.reset();
    const double pressure = pair_.pressure();
    if (!(pressure > 0.0) || !(pair_.a.S > 0.0) || !(pair_.b.S > 0.0)) return false;
    for (int k = 0; k < fluid_.size(); ++k)  // no certificate: another way may lead to one
        if (!absent(pair_.b.x[k]) &&
            !(std::fabs(pair_.a.m[k] - pair_.b.m[k]) <= Certificate::tolerance))
            return false;
    const bool wanted = bubble() == (kind_ == Saturated::bubble);
    if (!wanted && !collect_) return false;
    const StabilityResult r =
        stability_.test(pair_.a, pressure, fluid_.size() > 1 ? &pair_.b : nullptr, true);
    tpd_ = r.stable ? std::min(0.0, r.tpd) : r.tpd;
    if (kind_ == Saturated::dew && !r.stable && r.other) below_ = r.trial;
    if (!wanted) {
        if (r.stable) others_.push_back(other());
        return false;
    }
    return r.stable && r.unconverged == 0;
}

SaturationPoint SaturationSolver::result(SaturationOptions const& o) {
    SaturationPoint q;
    q.certificate = bounds_;
    q.T = held_.T(pair_.a.T);
    q.p = held_.p(pair_.pressure());
    certify(fluid_, q.p, {&pair_.a, &pair_.b}, q.certificate);
    q.certificate.tpd = tpd_;
    q.certificate.test = stability_.kind;
    q.certificate.evaluations = fluid_.evaluations;
    if (o.validity) q.certificate.flag(o.validity, q.T, q.p, fluid_.expand(fluid_.z()));
    q.given = q.certificate.phases[0];
    for (int k = 0; k < fluid_.size(); ++k)
        if (absent(pair_.b.x[k])) q.certificate.phases[1].x[fluid_.index(k)] = 0.0;
    q.incipient = q.certificate.phases[1];
    if (!q.certificate.holds())
        throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, state(), name(),
                                 pair_.iterations, std::max(q.certificate.dmu, q.certificate.dp),
                                 "the solution misses its tolerances: model without exact "
                                 "derivatives?");
    return q;
}

bool SaturationSolver::bubble() const {
    return fluid_.mass_density(pair_.b) < fluid_.mass_density(pair_.a);
}

// Of trial phase w at constant composition: d/ds Σ w_i·(ln f_i(w) − ln f_i(z)).
SaturationSolver::Other SaturationSolver::other() const {
    double slope = 0.0;
    for (int k = 0; k < fluid_.size(); ++k)
        slope += pair_.b.x[k] * (held_.at_T ? pair_.b.m_p(k) - pair_.a.m_p(k)
                                            : pair_.b.m_T_at_p(k) - pair_.a.m_T_at_p(k));
    return {found(), slope * std::exp(found()), pair_.a.rho};
}

bool SaturationSolver::second_liquid() const {
    double volume = 0.0;
    for (int k = 0; k < fluid_.size(); ++k) volume += pair_.b.x[k] * fluid_.pure(k).vcrit();
    return kind_ == Saturated::bubble && fluid_.size() > 1 && pair_.b.rho * volume > kLiquid;
}

double SaturationSolver::apart() const {
    double d = 0.0;
    for (int k = 0; k < fluid_.size(); ++k) {
        const double half = 0.5 * (pair_.u[k] - pair_.u[fluid_.size() + k]);
        d += fluid_.z()[k] * half * half;
    }
    return std::sqrt(d);
}

bool SaturationSolver::alike() const {
    double most = 0.0;
    for (int k = 0; k < fluid_.size(); ++k)
        most = std::max(most, 0.5 * std::fabs(pair_.u[k] - pair_.u[fluid_.size() + k]));
    return apart() < RegularPair::kNear && most < RegularPair::kNearEach;
}

std::string SaturationSolver::name() const {
    return std::string(kind_ == Saturated::bubble ? "bubble_" : "dew_") + (held_.at_T ? "T" : "p");
}

std::string SaturationSolver::state() const {
    return T_or_p(held_) + ", " + composition_text(fluid_.expand(fluid_.z()));
}

SaturationPoint saturation_T(ModelN const& model, Saturated kind, double T, Vector<double> const& z,
                             SaturationOptions const& options) {
    return SaturationSolver(model, kind, {true, T}, z).answer(options);
}
SaturationPoint saturation_p(ModelN const& model, Saturated kind, double p, Vector<double> const& z,
                             SaturationOptions const& options) {
    return SaturationSolver(model, kind, {false, p}, z).answer(options);
}

}  // namespace corvane
