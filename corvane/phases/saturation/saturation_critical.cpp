// Bubble and dew points next to a critical point.
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/saturation/saturation_solver.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kFirst = 0.01, kLongest = 0.1, kShortest = 1e-3, kEnd = 0.5;  // half distances
constexpr double kFar[] = {0.7, 0.2};  // of ln p, ln T to the critical point: not from there
constexpr double kAlike = 1e-6;        // half distance at which pairs may be lost in rounding
constexpr int kDistances = 25;
}  // namespace

/// A pair on the way, by its half distance.
struct SaturationSolver::Step {
    double d = 0.0, off = 0.0, slope = 0.0;  // off: ln of T (or p) over the value asked for
    double ln_p = 0.0;
    std::vector<double> y, t;
};

bool SaturationSolver::near() {
    loose_ = false;
    if (!(apart() > 1e-9) || !pair_.evaluate()) return false;
    auto start = [&] { regular_.start(pair_.a.rho_i, pair_.b.rho_i, pair_.a.T); };
    start();
    if (regular_.solve(kNewton)) return close();
    start();
    return by_distance() && close();
}

bool SaturationSolver::equal_potentials() {
    if (!pair_.evaluate()) return false;
    for (int i = 0; i < fluid_.size(); ++i)
        if (!absent(pair_.b.x[i]) &&
            !(std::fabs(pair_.a.m[i] - pair_.b.m[i]) <= 0.5 * Certificate::tolerance))
            return false;
    return true;
}

bool SaturationSolver::close() {
    pair_.iterations += regular_.iterations;
    regular_.iterations = 0;
    const int n = fluid_.size();
    for (int i = 0; i < n; ++i) {
        const double half = regular_.distance() * regular_.y[n + i];
        pair_.u[i] = regular_.y[i] + half;
        pair_.u[n + i] = regular_.y[i] - half;
    }
    pair_.u.back() = held_.at_T ? std::log(held_.value) : regular_.ln_T();
    // Phases that are not alike leave errors of the quadrature in the pressure, and cold liquids,
    // whose potentials bend, in those.
    if (!alike() || !equal_potentials()) {
        const std::vector<double> start = pair_.u;
        const double distance = apart();
        if (pair_.solve(kNewton) && apart() > 0.5 * distance && pair_.pressure() > 0.0 &&
            within_bounds(pair_.bound(bounds_)))
            return true;
        pair_.u = start;
    }
    return pair_.evaluate() && pair_.pressure() > 0.0 && regular_.locally_stable() &&
           within_bounds(regular_.bound(bounds_));
}

bool SaturationSolver::step_to(double d, Step const& from, Step& to) {
    if (&from != &to && !from.t.empty())
        for (std::size_t i = 0; i < from.y.size(); ++i)
            regular_.y[i] = from.y[i] + (d - from.d) * from.t[i];
    regular_.y[2 * fluid_.size()] = d;
    regular_.fixed_distance = true;
    const bool solved = regular_.solve(kNewton) && regular_.a.p > 0.0 && regular_.tangent(to.t);
    regular_.fixed_distance = false;
    if (!solved) return false;
    to.d = d;
    to.y = regular_.y;
    to.ln_p = std::log(regular_.a.p);
    to.off = (held_.at_T ? regular_.ln_T() : to.ln_p) - std::log(held_.value);
    to.slope = held_.at_T ? to.t[2 * fluid_.size() + 1] : regular_.ln_p(to.t);
    return std::isfinite(to.off + to.slope);
}

bool SaturationSolver::by_distance() {
    Step now;
    double d = regular_.distance();
    for (int k = 0; k < kDistances; ++k) {
        if (!(d < 2 * kEnd) || !step_to(d, now, now)) return false;
        if (std::fabs(now.off) > kFar[held_.at_T ? 1 : 0]) return false;
        double next = d - now.off / now.slope;
        next = std::clamp(next, 0.4 * d, 2.5 * d);
        if (std::fabs(next - d) < 0.05 * d && regular_.solve(kNewton)) return true;
        for (std::size_t i = 0; i < now.y.size(); ++i)
            regular_.y[i] = now.y[i] + (next - d) * now.t[i];
        d = next;
    }
    return false;
}

bool SaturationSolver::from_critical(CriticalPoint const& c) {
    const int n = fluid_.size();
    if (std::fabs(std::log((held_.at_T ? c.T : c.p) / held_.value)) > kFar[held_.at_T ? 1 : 0])
        return false;
    CriticalConditions conditions(fluid_);
    if (!conditions.eigen({std::log(c.rho), std::log(c.T)}, 2)) return false;
    regular_.start_critical(conditions.s.rho_i, conditions.u, c.T);
    double heavier = 0.0;  // by mass, towards phase a
    for (int i = 0; i < n; ++i)
        heavier += fluid_.z()[i] * fluid_.weight(i) * regular_.y[n + i];
    const double side = (heavier > 0.0) == (kind_ == Saturated::bubble) ? 1.0 : -1.0;
    const std::vector<double> start = regular_.y;
    if (follow(side)) return true;
    // Densities nearly alike may cross next to the critical point. Else the other side shows where
    // the boundaries are that the search would have to resolve.
    regular_.y = start;
    collect_ = true;
    const bool found = follow(-side);
    collect_ = false;
    return found;
}

bool SaturationSolver::follow(double side) {
    Step last, next, middle;
    if (!step_to(0.0, last, last)) return false;
    for (double step = kFirst; std::fabs(last.d) < kEnd;) {
        if (!step_to(last.d + side * step, last, next)) {
            if ((step *= 0.5) < kShortest) return false;
            continue;
        }
        step = std::min(2.0 * step, kLongest);
        Step from = last, to = next;
        // An extremum of T (or p) on the way, towards the value?
        for (int k = 0; k < 6 && from.off * to.off > 0.0; ++k) {
            if (!(from.off * from.slope * side < 0.0) || !(to.off * to.slope * side > 0.0)) break;
            const double part = from.slope / (from.slope - to.slope);
            if (!step_to(from.d + part * (to.d - from.d), from, middle)) break;
            (middle.off * from.off < 0.0 || middle.slope * from.slope < 0.0 ? to : from) = middle;
        }
        if (from.off * to.off <= 0.0) {
            const bool solved = between(from, to);
            if (solved && accept()) return true;
            if (!solved && (loose_ || (from.d == 0.0 && too_near(from, to)))) unresolved(from);
            if (to.d != next.d && between(to, next) && accept()) return true;
        }
        std::swap(last, next);
    }
    return false;
}

bool SaturationSolver::too_near(Step const& critical, Step const& to) {
    return std::fabs(critical.off * to.d) < kAlike * std::fabs(critical.off - to.off);
}

// Phases without bounds, or too near the critical point to be told apart: then the side says which
// kind they are.
void SaturationSolver::unresolved(Step const& from) {
    if (loose_) {
        note_loose();
    } else if (collect_) {
        double rho = 0.0;
        for (int i = 0; i < fluid_.size(); ++i) rho += std::exp(from.y[i]);
        others_.push_back({held_.at_T ? from.ln_p : from.y[2 * fluid_.size() + 1], 0.0, rho});
    } else {
        lost_ = true;
    }
}

void SaturationSolver::note_loose() {
    const std::size_t known = others_.size();
    const bool collect = collect_;
    collect_ = true;
    if (accept() || others_.size() == known) lost_ = true;
    collect_ = collect;
}

/// The pair between two of which one is above and one below the value.
bool SaturationSolver::between(Step const& a, Step const& b) {
    loose_ = false;
    const double h = b.d - a.d;
    // Where a parabola through both, with the slope at a, has the value.
    const double bend = (b.off - a.off - a.slope * h) / (h * h);
    const double root = std::sqrt(std::max(0.0, a.slope * a.slope - 4.0 * bend * a.off));
    double to = -2.0 * a.off / (a.slope + std::copysign(root, a.slope));
    if (!(to / h >= 0.0 && to / h <= 1.0)) to = (root - a.slope) / (2.0 * bend);
    if (!(to / h >= 0.0 && to / h <= 1.0)) to = h * a.off / (a.off - b.off);
    auto inside = [&] {
        const double part = (regular_.distance() - a.d) / h;
        return part > -1e-6 && part < 1.0 + 1e-6;
    };
    for (std::size_t i = 0; i < a.y.size(); ++i)
        regular_.y[i] = a.y[i] + to * a.t[i] +
                        (to / h) * (to / h) * (b.y[i] - a.y[i] - h * a.t[i]);
    if (regular_.solve(kNewton) && inside()) return close();
    Step low = a, high = b, now;
    for (int k = 0; k < 2 * kDistances; ++k) {
        const double part = k % 3 == 2 ? 0.5 : std::clamp(low.off / (low.off - high.off), 0.01, 0.99);
        if (!step_to(low.d + part * (high.d - low.d), low, now)) return false;
        if (regular_.solve(kNewton) && inside()) return close();
        (now.off * low.off > 0.0 ? low : high) = now;
        if (std::fabs(high.d - low.d) < 1e-9 * std::fabs(h)) return false;
    }
    return false;
}

}  // namespace corvane
