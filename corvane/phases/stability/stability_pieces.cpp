// When a piece of a density root is settled: the shape of the distance between two nodes.
#include <corvane/phases/stability/stability_scan.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kBeside = 1e-4;    // kNarrow beside the phase itself
constexpr double kRounding = 1e-13, kSlopeRounding = 1e-14;  // least A and B
constexpr double kResolved = 0.5;   // error at the middle of a piece whose shape is believed
constexpr double kJump = 0.16;      // of (Δ ln rho)² over ∂(p/RT)/∂rho
constexpr double kSoft = 0.5;       // ∂(p/RT)/∂rho of a root that may vanish in a cell
constexpr double kCurved = 4.0;     // largest U between two nodes over that at them
constexpr double kUnchecked = 0.1;  // of w·(1 − w): a piece this wide needs the errors of its quintic

/// Bernstein coefficients of the quintic with value, slope and curvature at both ends.
void quintic(double h, double ta, double a1, double a2, double tb, double b1, double b2,
             double* c) {
    c[0] = ta;
    c[1] = ta + 0.2 * h * a1;
    c[2] = ta + 0.4 * h * a1 + 0.05 * h * h * a2;
    c[3] = tb - 0.4 * h * b1 + 0.05 * h * h * b2;
    c[4] = tb - 0.2 * h * b1;
    c[5] = tb;
}
/// Value, slope and curvature (in w) at s by de Casteljau's scheme.
void at(double const* c, double h, double s, double* v) {
    double q[6];
    std::copy(c, c + 6, q);
    for (int n = 5; n > 0; --n) {
        if (n == 2) v[2] = 20.0 / (h * h) * (q[2] - 2.0 * q[1] + q[0]);
        if (n == 1) v[1] = 5.0 / h * (q[1] - q[0]);
        for (int i = 0; i < n; ++i) q[i] += s * (q[i + 1] - q[i]);
    }
    v[0] = q[0];
}
}  // namespace

/// Errors of a piece from what it says of a point inside, at the part x of its length h.
void BinaryScan::compare(Point const& a, Point const& b, Point const& m, double h, double x,
                         double& A, double& B) {
    double q[6], v[3] = {};
    const double y = 1.0 - x, g = x * y;
    quintic(h, a.e, a.e1, a.e2, b.e, b.e1, b.e2, q);
    at(q, h, x, v);
    const double d0 = std::fabs(v[0] - m.e), d1 = std::fabs(v[1] - m.e1),
                 d2 = std::fabs(v[2] - m.e2);
    // A·g³ has the curvature −6·A·g²/h² at the middle, where its slope vanishes.
    A = std::max({d0 / (g * g * g), 0.5 * d1 * h / (g * g), 0.667 * d2 * h * h / g, kRounding});
    // Cubic through the slopes alone: error B·g².
    const double p1 = a.e1 + h * a.e2 / 3.0, p2 = b.e1 - h * b.e2 / 3.0;
    const double u0 = a.e1 * y + p1 * x, u1 = p1 * y + p2 * x, u2 = p2 * y + b.e1 * x,
                 w0 = u0 * y + u1 * x, w1 = u1 * y + u2 * x;
    B = std::max({std::fabs(w0 * y + w1 * x - m.e1) / (g * g),
                  0.5 * h * std::fabs(3.0 / h * (w1 - w0) - m.e2) / g, kSlopeRounding});
}

/// Sizes of the errors of a strand, from the middle of its cell: s.A and s.B of the whole cell.
void BinaryScan::error(Cell const& c, Strand& s, int& r) const {
    Node const &a = nodes_[c.a], &b = nodes_[c.b], &m = nodes_[c.mid];
    s.A = s.B = kInfinite;
    const int two = a.roots == 2 ? s.a : b.roots == 2 ? s.b : 0;
    r = m.roots == 2 ? two : 0;
    if (m.roots == 0 || (m.roots == 1 && a.roots == 2 && b.roots == 2) ||
        (m.roots == 2 && a.roots == 1 && b.roots == 1))
        return;
    const double h = length(a.w0, a.w1, b.w0, b.w1);
    compare(point(a, s.a), point(b, s.b), point(m, r), h,
            length(a.w0, a.w1, m.w0, m.w1) / h, s.A, s.B);
}

/// Is the density nearly the same at both points, for its stiffness? Next to a critical point t″ has
/// a dip as narrow as that of ∂p/∂rho, which is parabolic in ln rho, about 3·(ln rho − ln rho_c)²;
/// and a root may vanish between the points and appear again.
bool BinaryScan::gentle(Point const& a, Point const& b) {
    const double jump = std::log(b.rho / a.rho);
    return jump * jump <= kJump * std::min(a.stiff, b.stiff);
}

/// Is the piece between two points settled? It may leave a bracket of a minimum.
bool BinaryScan::piece(Point const& a, Point const& b, double A, double B, int root) {
    const double h = length(a.w0, a.w1, b.w0, b.w1);
    const double least = std::min(a.w0 * a.w1, b.w0 * b.w1);
    if (!(h > kNarrow * least)) return true;
    // Two phases that are nearly alike: t is (w − x)²·(w − y)² times what is constant here.
    if (a.zero && b.zero && h < 0.02 * least && a.t2 > 0.0 && b.t2 > 0.0) return true;
    if (h < kBeside * least && ((a.zero && a.t2 >= 0.0 && b.t1 >= 0.0 && b.t >= 0.0) ||
                                (b.zero && b.t2 >= 0.0 && a.t1 <= 0.0 && a.t >= 0.0)))
        return true;
    if (!(A < 64.0 * kResolved)) return false;
    if (!gentle(a, b)) return false;
    double c[6], D[5];
    // Convex or concave?
    quintic(h, a.e, a.e1, a.e2, b.e, b.e1, b.e2, c);
    const double per = 20.0 / (h * h);
    double d[4];
    for (int i = 0; i < 4; ++i) d[i] = per * (c[i + 2] - 2.0 * c[i + 1] + c[i]);
    d[0] = a.e2;
    d[3] = b.e2;
    for (int i = 0; i < 5; ++i)
        D[i] = (i > 0 ? 0.25 * i * d[i - 1] : 0.0) + (i < 4 ? (1.0 - 0.25 * i) * d[i] : 0.0);
    const double margin = A / (h * h);
    const double off[5] = {0.0, 1.5 * margin, 3.0 * margin, 1.5 * margin, 0.0};
    double lowest = kInfinite, highest = -kInfinite;
    for (int i = 0; i < 5; ++i) {
        lowest = std::min(lowest, D[i] - off[i]);
        highest = std::max(highest, D[i] + off[i]);
    }
    const double flattest = b.w0 < 0.5   ? 1.0 / (b.w0 * b.w1)
                            : a.w0 > 0.5 ? 1.0 / (a.w0 * a.w1)
                                         : 4.0;  // least curvature of the ideal part
    if (lowest > -flattest) {
        if (a.t1 >= 0.0 || b.t1 <= 0.0) return true;
        const double s = (b.t - a.t - b.t1 * h) / (a.t1 - b.t1), meet = a.t + a.t1 * s;
        if (meet >= 0.0 && first_) return true;
        brackets_.push_back({root, a, b, meet});
        return true;
    }
    if (highest < -1.0 / least) return true;
    // Monotone? By the slopes alone, which keep their digits where t is nearly zero.
    const double t1[4] = {a.t1, a.t1 + h * a.t2 / 3.0, b.t1 - h * b.t2 / 3.0, b.t1};
    // Fourth derivative of the slope of the ideal part, of either sign, joins the error.
    const double r0 = h / a.w0, r1 = h / b.w1;
    const double ideal4 = 6.0 / 24.0 * (r0 * r0 * r0 * r0 + r1 * r1 * r1 * r1);
    const double mid = 0.5 * (t1[1] + t1[2]), off1 = (B + ideal4) / 6.0;
    const double q1 = 0.25 * t1[0] + 0.75 * t1[1], q3 = 0.75 * t1[2] + 0.25 * t1[3];
    if ((t1[0] >= 0.0 && q1 >= 0.0 && mid - off1 >= 0.0 && q3 >= 0.0 && t1[3] >= 0.0) ||
        (t1[0] <= 0.0 && q1 <= 0.0 && mid + off1 <= 0.0 && q3 <= 0.0 && t1[3] <= 0.0))
        return true;
    // Positive? The ideal part lies below its quintic by at most its sixth derivative's share.
    quintic(h, a.t, a.t1, a.t2, b.t, b.t1, b.t2, c);
    const double ideal6 =
        24.0 / 720.0 * h * (r0 * r0 * r0 * r0 * r0 + r1 * r1 * r1 * r1 * r1);
    for (int i = 0; i < 7; ++i) {
        const double C = (i > 0 ? i / 6.0 * c[i - 1] : 0.0) + (i < 6 ? (1.0 - i / 6.0) * c[i] : 0.0);
        if (C - (i == 3 ? (A + ideal6) / 20.0 : 0.0) < 0.0) return false;
    }
    return true;
}

/// Of t along every root at the ends of a cell.
double BinaryScan::lowest(Cell const& c) const {
    double least = kInfinite;
    for (int k : {c.a, c.b})
        for (int r = 0; r < nodes_[k].roots; ++r) least = std::min(least, point(nodes_[k], r).t);
    return least;
}

double BinaryScan::sag(Cell const& c) const {
    Node const &a = nodes_[c.a], &b = nodes_[c.b];
    const double h = length(a.w0, a.w1, b.w0, b.w1);
    double excess = 0.0;
    for (Node const* n : {&a, &b})
        for (int r = 0; r < n->roots; ++r) excess = std::max(excess, std::fabs(n->U2[r]));
    return kCurved / 8.0 * h * h * (1.0 / std::min(a.w0 * a.w1, b.w0 * b.w1) + excess);
}

/// A root that has no end in this cell, from one node to the other. halved: the cell is half of
/// another one.
bool BinaryScan::settled(Cell const& c, Strand const& s, bool halved) {
    Node const &a = nodes_[c.a], &b = nodes_[c.b];
    const int root = a.roots == 2 ? s.a : b.roots == 2 ? s.b : 0;
    const double h = length(a.w0, a.w1, b.w0, b.w1);
    Point const &begin = point(a, s.a), &last = point(b, s.b);
    if (first_ && halved && gentle(begin, last) && std::min(begin.t, last.t) > sag(c) &&
        (std::min(begin.stiff, last.stiff) > kSoft || lowest(c) > 2.0 * sag(c)))
        return true;
    if (!(s.A < kInfinite) && h > kUnchecked * std::min(a.w0 * a.w1, b.w0 * b.w1)) return false;
    std::array<Point, 4> q;
    int n = 0;
    q[n++] = begin;
    double A_here = s.A, B_here = s.B;
    for (int k = 0; k < zeros_; ++k) {
        Zero& z = zero_[k];
        const double from = length(a.w0, a.w1, z.at.w0, z.at.w1);
        if (!(from > 0.0) || !(length(z.at.w0, z.at.w1, b.w0, b.w1) > 0.0)) continue;
        if (a.roots == 2 || b.roots == 2) {
            const int r = root_of(z);
            if (r == -2 || (r == -1 && a.roots == b.roots)) return false;
            if (r >= 0 && r != root) continue;
        }
        double A = 0.0, B = 0.0;
        compare(q[0], last, z.at, h, from / h, A, B);
        A_here = std::max(A_here, A);
        B_here = std::max(B_here, B);
        q[n++] = z.at;
    }
    if (n == 3 && q[1].w0 > q[2].w0) std::swap(q[1], q[2]);
    q[n++] = last;
    bool all = true;
    for (int k = 0; k + 1 < n && all; ++k) {
        const double part = length(q[k].w0, q[k].w1, q[k + 1].w0, q[k + 1].w1) / h;
        const double shrink = part * part * part;
        all = piece(q[k], q[k + 1], std::max(A_here * shrink * part, kRounding),
                    std::max(B_here * shrink, kSlopeRounding), root);
    }
    return all;
}

/// A root that ends in this cell: nothing is left to find on it?
bool BinaryScan::vanishing(Cell const& c, Strand const& s, bool halved) {
    Node const &a = nodes_[c.a], &b = nodes_[c.b], &n = s.a < 0 ? b : a;
    const int r = s.a < 0 ? s.b : s.a;
    for (int k = 0; k < zeros_; ++k) {
        Zero& z = zero_[k];
        if (length(a.w0, a.w1, z.at.w0, z.at.w1) > 0.0 &&
            length(z.at.w0, z.at.w1, b.w0, b.w1) > 0.0 && root_of(z) == r)
            return false;
    }
    Point const& q = point(n, r);
    if (q.t2 * q.w0 * q.w1 < -1.0) return true;
    return halved && lowest(c) > 2.0 * sag(c);
}

}  // namespace corvane
