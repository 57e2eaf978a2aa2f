#include <corvane/fit/boundary.h>
#include <corvane/phases/numerics/illinois.h>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
constexpr int kNewton = 20, kSteps = 100, kBack = 10, kBracket = 60;
constexpr double kNearest =
    0.02;  // |v| that a step to the other side of a critical point leaves out
constexpr double kColder[] = {0.98, 0.93, 0.85};  // of T: where the measured p may be a start
constexpr double kCold[] = {0.7, 0.6, 0.5};       // where a dew point of Wilson's is

Point at(Point const& point, double T) {
    Point other = point;
    other.T = T;
    return other;
}
}  // namespace

/// Newton's method in ln rho_i of both phases and ln T at a given ratio v.
bool Boundary::solve(Point const& point, Spot& spot) const {
    const int size = 2 * n_ + 1;
    Eigen::MatrixXd J, extended(size, size);
    Eigen::VectorXd F, F_T, r(size);
    double last = 1e300;
    for (int round = 0; round < kNewton; ++round) {
        Point const here = at(point, spot.T);
        if (!equilibrium_.residuals(here, spot.phases, &J, F, &F_T)) return false;
        const auto k = static_cast<std::size_t>(spot.k);
        extended.setZero();
        extended.topLeftCorner(size - 1, size - 1) = J;
        extended.col(size - 1).head(size - 1) = F_T;
        extended(size - 1, n_ + spot.k) = 1.0;
        extended(size - 1, spot.k) = -1.0;
        r.head(size - 1) = -F;
        r[size - 1] = spot.v - std::log(spot.phases.rho_i[1][k] / spot.phases.rho_i[0][k]);
        const Eigen::PartialPivLU<Eigen::MatrixXd> lu(extended);
        const Eigen::VectorXd step = lu.solve(r);
        if (!step.allFinite()) return false;
        const double length = step.lpNorm<Eigen::Infinity>();
        if (length < 1e-7 && (length < 1e-12 || length > 0.5 * last)) {
            spot.tangent = lu.solve(Eigen::VectorXd::Unit(size, size - 1));
            spot.p_v = equilibrium_.pressure_slope(here, spot.phases,
                                                   spot.tangent.head(size - 1) / spot.T_v()) *
                       spot.T_v();
            spot.p = equilibrium_.pressure(here, spot.phases.rho_i[spot.phases.lightest()]);
            return spot.p > 0.0 && std::isfinite(spot.p_v);
        }
        last = length;
        const double part = std::fmin(1.0, 0.3 / length);
        spot.phases = equilibrium_.moved(spot.phases, step.head(size - 1), part);
        spot.T *= std::exp(part * step[size - 1]);
    }
    return false;
}

bool Boundary::moved(Point const& point, Spot const& from, double v, Spot& to) const {
    const auto size = from.tangent.size();
    to = from;
    to.v = v;
    to.phases = equilibrium_.moved(from.phases, from.tangent.head(size - 1), v - from.v);
    to.T = from.T * std::exp((v - from.v) * from.T_v());
    return solve(point, to);
}

/// Starts at a solution.
bool Boundary::begin(Point const& point, Phases const& phases, double T, Spot& spot) const {
    if (phases.empty()) return false;
    spot = {};
    spot.phases = phases;
    spot.T = T;
    for (int i = 0; i < n_; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const double v = std::log(phases.rho_i[1][k] / phases.rho_i[0][k]);
        if (std::fabs(v) <= std::fabs(spot.v)) continue;
        spot.v = v;
        spot.k = i;
    }
    if (!(std::fabs(spot.v) > kNearest) || !solve(point, spot)) return false;
    spot.hot = spot.T_v() > 0.0 ? 1.0 : -1.0;
    return true;
}

/// Starts at a dew point of low pressure, from where every boundary can be followed: p of an ideal
/// mixture with Wilson's K-factors.
bool Boundary::begin_cold(Point const& point, Spot& spot) const {
    Point dew = point;
    dew.kind = PointKind::dew;
    dew.y = Equilibrium::given(point);
    dew.x.clear();
    for (double part : kCold) {
        dew.T = part * point.T;
        dew.p = equilibrium_.wilson_dew(dew);
        Phases phases;
        if (!equilibrium_.near(dew, phases) || !begin(point, phases, dew.T, spot)) continue;
        // The bubble side is beyond the largest T, and gets hotter towards it.
        if (!Equilibrium::dew(point)) spot.hot = -spot.hot;
        return true;
    }
    return false;
}

/// Above 0 where p changes by less than the steepest slope, on the side that gets hotter towards
/// `hot`.
double Boundary::gentle(Spot const& spot) {
    const double T_v = spot.hot * spot.T_v(), p_v = std::fabs(spot.p_v);
    return (kSteepest * T_v - p_v) / (kSteepest * std::fabs(T_v) + p_v);
}

/// Between two spots, the cubics with their values and tangents: next to a critical point, where
/// the equations are singular.
Boundary::Spot Boundary::between(Spot const& a, Spot const& b, double v) {
    const double h = b.v - a.v, t = (v - a.v) / h;
    const auto value = [&](auto const& ya, auto const& da, auto const& yb, auto const& db) {
        return ((1 + 2 * t) * (1 - t) * (1 - t) * ya + t * t * (3 - 2 * t) * yb +
                h * t * (1 - t) * ((1 - t) * da - t * db));
    };
    const auto slope = [&](auto const& ya, auto const& da, auto const& yb, auto const& db) {
        return (6 * t * (1 - t) / h * (yb - ya) + (1 - t) * (1 - 3 * t) * da +
                t * (3 * t - 2) * db);
    };
    Spot s = a;
    s.v = v;
    Eigen::Index at = 0;
    for (std::size_t phase = 0; phase < 2; ++phase)
        for (std::size_t i = 0; i < s.phases.rho_i[phase].size(); ++i, ++at) {
            const double ya = std::log(a.phases.rho_i[phase][i]), da = a.tangent[at],
                         yb = std::log(b.phases.rho_i[phase][i]), db = b.tangent[at];
            s.phases.rho_i[phase][i] = std::exp(value(ya, da, yb, db));
            s.tangent[at] = slope(ya, da, yb, db);
        }
    s.T = std::exp(value(std::log(a.T), a.T_v(), std::log(b.T), b.T_v()));
    s.tangent[at] = slope(std::log(a.T), a.T_v(), std::log(b.T), b.T_v());
    s.p = std::exp(value(std::log(a.p), a.p_v, std::log(b.p), b.p_v));
    s.p_v = slope(std::log(a.p), a.p_v, std::log(b.p), b.p_v);
    return s;
}

/// Where f changes its sign between two neighbours; false where it does not.
template <class F>
bool Boundary::root(Point const& point, Spot const& a, Spot const& b, F f, Spot& spot) const {
    IllinoisBracket bracket{a.v, f(a), b.v, f(b)};
    if (bracket.fa * bracket.fb > 0.0) return false;
    const bool critical = a.v * b.v < 0.0;  // between the two points next to it
    spot = b;
    for (int k = 0; k < kBracket; ++k) {
        const double width = bracket.b - bracket.a;
        if (bracket.fb == 0.0 || std::fabs(width) < 1e-13) break;
        const double v = bracket.b - bracket.fb * width / (bracket.fb - bracket.fa);
        if (v == bracket.b) break;
        Spot trial;
        if (critical)
            trial = between(a, b, v);
        else if (!moved(point, spot, v, trial))
            return false;
        spot = trial;
        bracket.take(v, f(spot));
    }
    return std::fabs(f(spot)) < 1e-8;
}

/// Between two neighbours: where T is the measured one, or the slope the steepest before an
/// extremum of T on this side of the measured one.
bool Boundary::ends(Point const& point, Spot const& a, Spot const& b, Spot& end) const {
    const auto below = [&](Spot const& s) { return std::log(point.T / s.T); };
    if (root(point, a, b, below, end) && gentle(end) >= 0.0) return true;
    if (!root(point, a, b, gentle, end)) return false;
    const double beyond = (gentle(a) < 0.0 ? a.v : b.v) - end.v;
    return beyond * end.T_v() * below(end) > 0.0;
}

/// The spot goes along, as the next start.
bool Boundary::follow(Point const& point, Spot& spot, double way, int steps, Spot& end) const {
    Spot next;
    for (int step = 0, halved = 0; step < steps; ++step) {
        double v = spot.v +
                   way * std::clamp(0.15 * std::fabs(spot.v), 2.0 * kNearest, 0.6) / (1 << halved);
        if (way * spot.v < -kNearest)
            v = way * std::fmin(way * v, -kNearest);
        else if (way * spot.v < kNearest)
            v = way * std::fmax(way * v, kNearest);
        if (!moved(point, spot, v, next)) {
            if (++halved > 5) return false;
            continue;
        }
        if (ends(point, spot, next, end)) return true;
        spot = next;
    }
    return false;
}

bool Boundary::follow(Point const& point, Spot& spot, Spot& end) const {
    if (gentle(spot) >= 0.0)
        return follow(point, spot, point.T > spot.T ? spot.hot : -spot.hot, kSteps, end);
    if (spot.hot * spot.T_v() < 0.0) return follow(point, spot, -spot.hot, kSteps, end);
    Spot const steep = spot;  // before one extremum of T or the other
    if (follow(point, spot, -spot.hot, kBack, end)) return true;
    spot = steep;
    return follow(point, spot, spot.hot, kBack, end);
}

/// From what was found last, from the solution at the measured T, or from a colder one.
bool Boundary::find(Point const& point, Phases const& near, Spot& spot, Spot& end) const {
    if (!spot.phases.empty() && solve(point, spot) && follow(point, spot, end)) return true;
    if (begin(point, near, point.T, spot) && follow(point, spot, end)) return true;
    for (double part : kColder) {
        Phases phases;
        if (equilibrium_.near(at(point, part * point.T), phases) &&
            begin(point, phases, part * point.T, spot) && follow(point, spot, end))
            return true;
    }
    if (begin_cold(point, spot) && follow(point, spot, end)) return true;
    spot = {};
    return false;
}

bool Boundary::end(std::size_t index, Point const& point, Phases const& near, End& end) {
    Spot spot;
    if (!find(point, near, kept_[index], spot)) return false;
    end.phases = spot.phases;
    end.T = spot.T;
    end.p = spot.p;
    end.slope = spot.p_v / spot.T_v();
    auto const& other = spot.phases.rho_i[1];
    const double rho = total(other);
    end.w = end.w_slope = other;
    double mean = 0.0;
    for (std::size_t i = 0; i < other.size(); ++i) {
        end.w[i] /= rho;
        mean += end.w[i] * spot.tangent[n_ + static_cast<int>(i)];
    }
    for (std::size_t i = 0; i < other.size(); ++i)
        end.w_slope[i] = end.w[i] * (spot.tangent[n_ + static_cast<int>(i)] - mean) / spot.T_v();
    return true;
}

}  // namespace corvane::fit
