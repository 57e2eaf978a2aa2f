#include <corvane/phases/binary/path.h>
#include <corvane/phases/report/least_fraction.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kLost = 0.15;      // ratios where Newton may fail next to a critical point
constexpr double kTrace = 460.0;    // −ln 1e-200
constexpr double kFirst = 0.3;      // first step, of the longest
constexpr double kShortest = 1e-5;  // of the longest step
constexpr double kPolish = 0.06;    // ratio from which a critical point is found
constexpr double kReach = 2.0;      // of a cubic, in the length of the last step
constexpr int kNewton = 8;

/// Mole fraction of component 0 in phase k.
double fraction(std::vector<double> const& u, int k) {
    return 1.0 / (1.0 + std::exp(-Path::logit(u, k)));
}
}  // namespace

Path::Path(CoexistenceSolver& solver, double longest)
    : PhaseCurve(solver, true, {.ln_p = 0.1, .ratio = 0.1, .ln_T = 1.0}, longest),
      step{kFirst, 1.0, kShortest, 0.4},
      longest_(longest) {}

bool Path::solve_node(int limit, Node& node, std::vector<double> const* along) {
    s_.iterations = 0;
    return solve(limit, node, along);
}

bool Path::begin(int c) {
    specify(c);
    s_.value = at(s_.u, c);
    return solve_node(20, now_, nullptr) && begin_at_solution();
}
bool Path::begin_at_solution() {
    if (!s_.evaluate() || !(s_.pressure() > 0.0)) return false;
    step.length = kFirst;
    alike_limit_ = kAlike;
    // The tangent in any coordinate tells which one changes most.
    for (int c = 0; c <= last_coordinate(); ++c) {
        specify(c);
        if (!finish(now_, nullptr)) continue;
        specify(most(now_));
        if (!finish(now_, nullptr)) continue;
        before_ = now_;
        return true;
    }
    return false;
}

/// Are two phases closer than the limit, or have they passed through each other since `from`?
bool Path::close(std::vector<double> const& u, double limit, std::vector<double> const* from) {
    for (int k = 1; k < s_.count(); ++k)
        for (int j = 0; j < k; ++j) {
            double same = 1.0;
            if (from) {
                same = 0.0;
                for (int i = 0; i < 2; ++i)
                    same +=
                        ((*from)[2 * k + i] - (*from)[2 * j + i]) * (u[2 * k + i] - u[2 * j + i]);
            }
            if (same > 0.0 && apart(u, j, k) >= limit) continue;
            alike_[0] = j;
            alike_[1] = k;
            return true;
        }
    return false;
}

CurveEnd Path::lost() {
    return close(now_.u, kLost) ? CurveEnd::critical : CurveEnd::stuck;
}

Trial Path::attempt(double& length, CurveEnd& end) {
    const int c = most(now_, length);
    specify(c);
    const auto predict = [&] {
        if (cubic_serves(before_, now_, c, length, kReach)) {
            s_.u = cubic(before_, now_, c, length);
            return;
        }
        for (std::size_t i = 0; i < s_.u.size(); ++i) s_.u[i] = now_.u[i] + length * now_.t[i];
    };
    predict();
    // The logits were weighted where the step begins.
    double widest = 0.0;
    for (int k = 0; k < s_.count(); ++k)
        widest = std::max(widest, std::fabs(fraction(s_.u, k) - fraction(now_.u, k)));
    if (widest > 1.2 * longest_) {
        length *= longest_ / widest;
        predict();
    }
    s_.value = at(now_.u, c) + length * at(now_.t, c);
    for (int i = 0; i < 2 * s_.count(); ++i)  // what is absent stays so; its tangent has a corner
        s_.u[i] = absent_at(now_.u, i) ? s_.u[i ^ 1] + now_.u[i] - now_.u[i ^ 1]
                                       : std::max(s_.u[i], s_.u[i ^ 1] + ln_trace);
    if (close(s_.u, alike_limit_, &now_.u)) {
        end = CurveEnd::critical;
        return Trial::ended;
    }
    Node next;
    if (!solve_node(kNewton, next, &now_.t)) return Trial::failed;
    if (close(next.u, alike_limit_, &now_.u))
        return Trial::failed;  // the trivial solution: it was not foreseen
    // Against jumps to another branch: not backwards, not further than twice the step, nor round a
    // corner.
    std::vector<double> way(next.u), from = now_.t, to = next.t;
    for (std::size_t i = 0; i < way.size(); ++i) way[i] -= now_.u[i];
    for (int i = 0; i < 2 * s_.count(); ++i)  // what is absent has no direction
        if (absent_at(next.u, i) || absent_at(now_.u, i)) way[i] = from[i] = to[i] = 0.0;
    if (!(dot(way, from) > 0.3 * std::sqrt(dot(way, way) * dot(from, from))) ||
        moves(now_.u, way, next.ln_p - now_.ln_p) > 2.0 * length + 1e-3 ||
        !(dot(to, from) > 0.5 * std::sqrt(dot(to, to) * dot(from, from))))
        return Trial::failed;
    specified_ = c;
    before_ = std::move(now_);
    now_ = std::move(next);
    growth_ = s_.iterations <= 5 ? 1.6 : 0.7;
    return Trial::taken;
}

bool Path::between(double q, Node& node) {
    specify(specified_);
    const double from = at(before_.u, specified_), to = at(now_.u, specified_);
    s_.value = (1 - q) * from + q * to;
    const double length = (s_.value - to) / at(now_.t, specified_);
    if (cubic_serves(before_, now_, specified_, length, kReach))
        s_.u = cubic(before_, now_, specified_, length);
    else
        for (std::size_t i = 0; i < s_.u.size(); ++i)
            s_.u[i] = (1 - q) * before_.u[i] + q * now_.u[i];
    const std::vector<double> along = now_.t;
    return solve_node(kNewton, node, &along);
}
bool Path::stop_at(Fixed bound) {
    auto off = [&](Node const& q) { return (bound.at_T ? q.u.back() : q.ln_p) - std::log(bound.value); };
    double lo = 0.0, hi = 1.0, below = off(before_), above = off(now_);
    for (int it = 0; it < 12; ++it) {
        const double q = (below * hi - above * lo) / (below - above);
        Node node;
        if (!between(q, node)) return false;
        s_.row.clear();
        s_.hold(bound);
        const bool solved = s_.solve(kNewton);
        (bound.at_T ? s_.T : s_.p).reset();
        if (solved && contains(s_.u) && evaluate(std::vector<double>(s_.u), node)) {
            now_ = node;
            return true;
        }
        const double f = off(node);
        (f * below > 0.0 ? lo : hi) = q;
        (f * below > 0.0 ? below : above) = f;
    }
    return false;
}
bool Path::evaluate(std::vector<double> const& u, Node& node) {
    const std::vector<double> along = now_.t;
    s_.u = u;
    specify(specified_);
    return s_.evaluate() && finish(node, &along);
}
bool Path::at_trace() const {
    for (int k = 0; k < s_.count(); ++k)
        if (std::fabs(logit(now_.u, k)) > kTrace) return true;
    return false;
}
bool Path::contains(std::vector<double> const& u) const {
    const double a = at(before_.u, specified_), b = at(now_.u, specified_), v = at(u, specified_);
    const double slack = 1e-6 + 1e-3 * std::fabs(b - a);
    return v > std::min(a, b) - slack && v < std::max(a, b) + slack;
}

bool Path::critical(std::vector<double>& u, std::vector<std::vector<double>>* approach) {
    const int j = alike_[0], k = alike_[1];
    const int c = largest_ratio(now_.u, j, k);
    specified_ = c;
    std::vector<double> from = now_.u, t = now_.t, slope, even[2];
    // In the ratio s the means of the two phases and all else are even, f(s') = f(s) +
    // (s'² − s²)·f'(s)/(2s) + O(s⁴); half their differences are odd, a·s + b·s³.
    auto predict = [&](double to, std::vector<double>& v) {
        const double s = at(from, c), scale = 1.0 / at(t, c), q = 0.5 * (to * to - s * s) / s;
        v = from;
        for (std::size_t i = 0; i < v.size(); ++i) v[i] += q * scale * t[i];
        for (int i = 0; i < 2; ++i) {
            const double odd = 0.5 * (from[2 * k + i] - from[2 * j + i]),
                         change = 0.5 * scale * (t[2 * k + i] - t[2 * j + i]);
            const double cube = 0.5 * (change * s - odd) / (s * s * s);
            const double half = to * (odd / s - cube * s * s + cube * to * to);
            const double mean = 0.5 * (v[2 * j + i] + v[2 * k + i]);
            v[2 * j + i] = mean - half;
            v[2 * k + i] = mean + half;
        }
    };
    predict(0.0, u);
    double keep = 0.5;
    for (int half = 0; half < 2;) {
        const double last = at(from, c);
        const double s =
            std::copysign(std::max(keep * std::fabs(last), half ? 0.5 * kPolish : kPolish), last);
        specify(c);
        s_.value = s;
        predict(s, s_.u);
        if (!s_.solve(20) || !s_.tangent(slope)) {
            keep = 0.5 * (1.0 + keep);
            if (keep > 0.95 || half) return false;
            continue;
        }
        if (approach && half == 0 && std::fabs(s) < std::fabs(last)) approach->push_back(s_.u);
        from = s_.u;
        t = slope;
        if (std::fabs(s) <= kPolish) predict(0.0, even[half++]);
    }
    for (std::size_t i = 0; i < u.size(); ++i) u[i] = (16 * even[1][i] - even[0][i]) / 15;
    return std::isfinite(u[0]);
}

}  // namespace corvane
