#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability_line.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kNodes = 8;         // of one way
constexpr double kNarrow = 0.06;  // of a way that is halved no further
// Of the slope, per length, that a cubic may miss; the ideal part's curvature is 4 or more.
constexpr double kSmooth = 0.1;
constexpr double kJump = 1.5;    // of the density: another root
constexpr double kMargin = 0.1;  // of the distance by which an extrapolated root may be too high
constexpr double kFar = 0.3;  // between nodes whose roots may be extrapolated to negative distances
constexpr int kPlaces = 4, kPlacesOfTwo = 6;  // between two nodes, of one root and of two

bool jump(DistanceLine::Node const& a, DistanceLine::Node const& b) {
    const double q = b.rho / a.rho;
    return q > kJump || q < 1.0 / kJump;
}
/// Cubic of Hermite's through what is left of two nodes, or a straight line from one, at s.
DistanceLine::Slope cubic(DistanceLine::Node const& a, DistanceLine::Node const* b, double s) {
    if (!b) return {a.rest.t + a.rest.slope * (s - a.s), a.rest.slope};
    const double h = b->s - a.s, x = (s - a.s) / h, y = 1.0 - x, ta = a.rest.t, tb = b->rest.t,
                 da = a.rest.slope * h, db = b->rest.slope * h;
    return {y * y * (1.0 + 2.0 * x) * ta + x * x * (1.0 + 2.0 * y) * tb + x * y * (y * da - x * db),
            (6.0 * x * y * (tb - ta) + y * (y - 2.0 * x) * da + x * (x - 2.0 * y) * db) / h};
}
/// Has the slope one sign between l and r on the root of q? The ideal part's slope rises from l to
/// r, the rest's is bounded by Bernstein coefficients.
bool monotone(DistanceLine::Node const& q, DistanceLine::Node const* other,
              DistanceLine::Node const& l, DistanceLine::Node const& r) {
    const double b0 = cubic(q, other, l.s).slope, b2 = cubic(q, other, r.s).slope,
                 b1 = 2.0 * cubic(q, other, 0.5 * (l.s + r.s)).slope - 0.5 * (b0 + b2);
    return l.all.slope - l.rest.slope + std::min({b0, b1, b2}) >= 0.0 ||
           r.all.slope - r.rest.slope + std::max({b0, b1, b2}) <= 0.0;
}
}  // namespace

void DistanceLine::set(std::vector<double> const& from, double const* to, int pure) {
    from_ = &from;
    to_ = to;
    pure_ = pure;
    left_ = kNodes;
    negative = false;
    minima.clear();
}

DistanceLine::Node DistanceLine::complete(Node q) const {
    if (q.s == 0.0) return q;  // no ideal part
    const Slope i = ideal(q.s);
    q.rest = {q.all.t - i.t, q.all.slope - i.slope};
    return q;
}
DistanceLine::Node DistanceLine::node(double s, double rho, double const* over) const {
    Node q{s, rho, {}, {}};
    for (int k = 0; k < phase_.size(); ++k) {
        q.all.t += fraction(s, k) * over[k];
        q.all.slope += (end(k) - (*from_)[k]) * over[k];
    }
    return complete(q);
}

bool DistanceLine::evaluate(double s, Node& q) {
    --left_;
    for (int k = 0; k < phase_.size(); ++k) x_[k] = fraction(s, k);
    if (!fluid_.evaluate_at(work_, p_, phase_.T, x_, Root::stable, 0)) return false;
    q = {s, work_.rho, {}, {}};
    for (int k = 0; k < phase_.size(); ++k) {
        const double over = work_.m[k] - phase_.m[k];
        q.all.t += x_[k] * over;
        q.all.slope += (end(k) - (*from_)[k]) * over;
    }
    q = complete(q);
    negative = q.all.t < 10 * -Certificate::tpd_tolerance;
    return !negative;
}

/// Σ w·ln(w/x).
DistanceLine::Slope DistanceLine::ideal(double s) const {
    if (!to_) {
        const double x = (*from_)[pure_], w = fraction(s, pure_), own = std::log(w / x),
                     others = std::log(1.0 - s);
        return {w * own + (1.0 - s) * (1.0 - x) * others, (1.0 - x) * (own - others)};
    }
    Slope q;
    for (int k = 0; k < phase_.size(); ++k) {
        const double w = fraction(s, k), ln = std::log(w / (*from_)[k]);
        q.t += w * ln;
        q.slope += (to_[k] - (*from_)[k]) * ln;
    }
    return q;
}

/// Between nodes of different roots: may either have a minimum there, where it is the lower, or be
/// negative? before, after: the next nodes on the roots of l and r, or null.
bool DistanceLine::may_dip(Node const& l, Node const* before, Node const& r,
                           Node const* after) const {
    const bool far = r.s - l.s > kFar;
    const bool steady = monotone(l, before, l, r) && monotone(r, after, l, r);
    double last[2] = {0.0, 0.0};
    for (int k = 0; k <= kPlacesOfTwo; ++k) {
        const double s = l.s + k * (r.s - l.s) / kPlacesOfTwo;
        const Slope i = ideal(s), left = cubic(l, before, s), right = cubic(r, after, s);
        const double t[2] = {k < kPlacesOfTwo ? left.t : 1e300, k > 0 ? right.t : 1e300};
        double slope[2] = {left.slope + i.slope, right.slope + i.slope};
        for (int root : {0, 1}) {
            if (far && t[root] < std::min(0.0, t[1 - root] - kMargin)) return true;
            if (t[root] > t[1 - root] + kMargin) slope[root] = 0.0;
            if (!steady && last[root] < 0.0 && slope[root] > 0.0) return true;
            last[root] = slope[root];
        }
    }
    return false;
}

void DistanceLine::search(Node const& a, Node const& m, Node const& b) {
    const double h = b.s - a.s;
    const Slope off = cubic(a, &b, m.s);
    const bool smooth = std::max(std::fabs(off.slope - m.rest.slope),
                                 4.0 * std::fabs(off.t - m.rest.t) / h) < kSmooth * h;
    const auto side = [&](Node const& l, Node const& r, Node const* before, Node const* after) {
        Node q;
        if (jump(l, r) && !may_dip(l, before, r, after)) return;
        if (!smooth && r.s - l.s > kNarrow && left_ > 0) {
            if (evaluate(0.5 * (l.s + r.s), q)) return search(l, q, r);
            if (negative) return;
        }
        between(l, r);
    };
    side(a, m, nullptr, jump(m, b) ? nullptr : &b);
    if (!negative) side(m, b, jump(a, m) ? nullptr : &a, nullptr);
}

/// Minima of the cubic between two nodes.
void DistanceLine::between(Node const& a, Node const& b) {
    if (monotone(a, &b, a, b)) return;
    double before = a.all.slope, last = a.s;
    for (int k = 1; k <= kPlaces; ++k) {
        const double s = a.s + k * (b.s - a.s) / kPlaces;
        const double slope = k < kPlaces ? ideal(s).slope + cubic(a, &b, s).slope : b.all.slope;
        if (before < 0.0 && slope > 0.0)
            minima.push_back(last + (s - last) * before / (before - slope));
        before = slope;
        last = s;
    }
}

}  // namespace corvane
