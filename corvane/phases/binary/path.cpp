#include <corvane/phases/binary/path.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kLost = 0.15;      // ratios where Newton may fail next to a critical point
constexpr double kNear = 1.0;       // below it only ratios are specified
constexpr double kTrace = 460.0;    // −ln 1e-200
constexpr double kFirst = 0.3;      // first step, of the longest
constexpr double kShortest = 1e-5;  // of the longest step
constexpr double kPolish = 0.06;    // ratio from which a critical point is found
constexpr int kNewton = 8;

/// Mole fraction of component 0 in phase k.
double fraction(std::vector<double> const& u, int k) {
    return 1.0 / (1.0 + std::exp(-Path::logit(u, k)));
}
double dot(std::vector<double> const& a, std::vector<double> const& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
}
}  // namespace

Path::Path(CoexistenceSolver& solver, double step) : s_(solver), step_(step) {
    const int m = s_.count();
    for (int k = 0; k < m; ++k) coordinates_.push_back({2 * k, 2 * k + 1, false});
    for (int k = 1; k < m; ++k)
        for (int j = 0; j < k; ++j)
            for (int i = 0; i < 2; ++i) coordinates_.push_back({2 * k + i, 2 * j + i, true});
    coordinates_.push_back({2 * m, -1, false});
}

double Path::apart(std::vector<double> const& u, int j, int k) {
    return std::max(std::fabs(u[2 * k] - u[2 * j]), std::fabs(u[2 * k + 1] - u[2 * j + 1]));
}

void Path::specify(int c) {
    Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
    s_.row.assign(s_.u.size(), 0.0);
    s_.row[q.i] = 1.0;
    if (q.j >= 0) s_.row[q.j] = -1.0;
}

// What a change of a coordinate counts: that of a mole fraction by itself, but at least a thirtieth
// of its logit; a tenth of a ratio; ln T fully.
double Path::weight(std::vector<double> const& u, int c) const {
    Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
    if (q.ratio) return 0.1;
    if (q.j < 0) return 1.0;
    const double x = 1.0 / (1.0 + std::exp(-at(u, c)));
    return std::max(x * (1.0 - x), 0.03);
}
double Path::moves(std::vector<double> const& u, std::vector<double> const& d, double ln_p) const {
    double largest = 0.1 * std::fabs(ln_p);
    for (int c = 0; c <= last_coordinate(); ++c)
        largest = std::max(largest, weight(u, c) * std::fabs(at(d, c)));
    return largest / step_;
}
int Path::most(Node const& node) const {
    double nearest = 1e300, largest = 0.0;
    for (int k = 1; k < s_.count(); ++k)
        for (int j = 0; j < k; ++j) nearest = std::min(nearest, apart(node.u, j, k));
    int best = s_.count();
    for (int c = nearest < kNear ? s_.count() : 0; c <= last_coordinate(); ++c) {
        if (nearest < kNear && !coordinates_[static_cast<std::size_t>(c)].ratio) continue;
        const double size = weight(node.u, c) * std::fabs(at(node.t, c));
        if (size > largest) largest = size, best = c;
    }
    return best;
}

bool Path::finish(Node& node, std::vector<double> const* along) {
    node.u = s_.u;
    if (!s_.tangent(node.t)) return false;
    node.ln_p = s_.ln_p();
    node.ln_p_t = s_.ln_p(node.t);
    const double sign = along && dot(*along, node.t) < 0.0 ? -1.0 : 1.0;
    const double scale = sign / moves(node.u, node.t, node.ln_p_t);
    for (double& v : node.t) v *= scale;
    node.ln_p_t *= scale;
    return std::isfinite(scale) && std::isfinite(node.ln_p);
}
bool Path::solve(int limit, Node& node, std::vector<double> const* along) {
    s_.iterations = 0;
    if (!s_.solve(limit) || !(s_.pressure() > 0.0)) return false;
    for (PhaseState const& s : s_.phase)
        if (!(s.S > 0.0)) return false;
    return finish(node, along);
}

bool Path::begin(int c) {
    specify(c);
    s_.value = at(s_.u, c);
    return solve(20, now_, nullptr) && begin_at_solution();
}
bool Path::begin_at_solution() {
    if (!s_.evaluate() || !(s_.pressure() > 0.0)) return false;
    length_ = kFirst;
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
void Path::reverse() {
    for (double& v : now_.t) v = -v;
    now_.ln_p_t = -now_.ln_p_t;
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

/// The cubic in coordinate c through before() and now() with their tangents, as long as the step is
/// not longer than twice the last one; else the tangent. Did the cubic serve?
bool Path::predict(int c, double length, std::vector<double>& u) const {
    const double s0 = at(before_.u, c), t0 = at(before_.t, c), s1 = at(now_.u, c),
                 t1 = at(now_.t, c), h = s1 - s0, to = length * t1;
    const bool cubic = h * t0 > 0.0 && h * t1 > 0.0 && std::fabs(to) < 2.0 * std::fabs(h);
    const double q = to / h;
    for (std::size_t i = 0; i < u.size(); ++i) {
        u[i] = now_.u[i] + length * now_.t[i];
        if (!cubic) continue;
        const double d0 = before_.t[i] * h / t0, d1 = now_.t[i] * h / t1,
                     rise = now_.u[i] - before_.u[i];
        // Hermite's polynomial about now(): curvature and third difference.
        const double third = d0 + d1 - 2.0 * rise, second = 2.0 * d1 + d0 - 3.0 * rise;
        u[i] += q * q * (second + third * q);
    }
    return cubic;
}

Path::Step Path::advance() {
    const int c = most(now_);
    Node next;
    for (;; length_ *= 0.4) {
        if (length_ < kShortest) return close(now_.u, kLost) ? Step::alike : Step::stuck;
        specify(c);
        predict(c, length_, s_.u);
        // The logits were weighted where the step begins.
        double widest = 0.0;
        for (int k = 0; k < s_.count(); ++k)
            widest = std::max(widest, std::fabs(fraction(s_.u, k) - fraction(now_.u, k)));
        if (widest > 1.2 * step_) {
            length_ *= step_ / widest;
            predict(c, length_, s_.u);
        }
        s_.value = at(now_.u, c) + length_ * at(now_.t, c);
        if (close(s_.u, alike_limit_, &now_.u)) return Step::alike;
        if (!solve(kNewton, next, &now_.t)) continue;
        if (close(next.u, alike_limit_, &now_.u))
            continue;  // the trivial solution: it was not foreseen
        // Against jumps to another branch: not backwards, not further than twice the step, nor
        // round a corner.
        std::vector<double> way(next.u);
        for (std::size_t i = 0; i < way.size(); ++i) way[i] -= now_.u[i];
        if (!(dot(way, now_.t) > 0.3 * std::sqrt(dot(way, way) * dot(now_.t, now_.t)))) continue;
        if (moves(now_.u, way, next.ln_p - now_.ln_p) > 2.0 * length_ + 1e-3) continue;
        if (dot(next.t, now_.t) > 0.5 * std::sqrt(dot(next.t, next.t) * dot(now_.t, now_.t))) break;
    }
    specified_ = c;
    before_ = std::move(now_);
    now_ = std::move(next);
    length_ = s_.iterations <= 5 ? std::min(1.0, 1.6 * length_) : 0.7 * length_;
    return Step::done;
}

bool Path::between(double q, Node& node) {
    specify(specified_);
    const double from = at(before_.u, specified_), to = at(now_.u, specified_);
    s_.value = (1 - q) * from + q * to;
    if (!predict(specified_, (s_.value - to) / at(now_.t, specified_), s_.u))
        for (std::size_t i = 0; i < s_.u.size(); ++i)
            s_.u[i] = (1 - q) * before_.u[i] + q * now_.u[i];
    const std::vector<double> along = now_.t;
    return solve(kNewton, node, &along);
}
bool Path::stop_at(double& condition, double value) {
    const bool of_T = &condition == &s_.T;
    auto off = [&](Node const& q) { return (of_T ? q.u.back() : q.ln_p) - std::log(value); };
    double lo = 0.0, hi = 1.0, below = off(before_), above = off(now_);
    for (int it = 0; it < 12; ++it) {
        const double q = (below * hi - above * lo) / (below - above);
        Node node;
        if (!between(q, node)) return false;
        s_.row.clear();
        condition = value;
        const bool solved = s_.solve(kNewton);
        condition = 0.0;
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
    // The larger of the two ratios.
    int c = 0;
    double largest = -1.0;
    for (int d = 0; d <= last_coordinate(); ++d) {
        Coordinate const& q = coordinates_[static_cast<std::size_t>(d)];
        if (!q.ratio || q.i / 2 != k || q.j / 2 != j) continue;
        if (std::fabs(at(now_.u, d)) > largest) largest = std::fabs(at(now_.u, d)), c = d;
    }
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
