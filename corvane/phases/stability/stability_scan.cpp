#include <corvane/phases/stability/stability_scan.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kEnd = 1e-8, kTiny = 1e-300;  // mole fractions at the ends
constexpr double kDilute = 0.1;                // of the excess curvature times w
constexpr int kNodes = 500;                    // of one test
constexpr double kSafety = 8.0;     // of the error estimates
constexpr int kRefine = 60;
constexpr double kConverged = 1e-11;  // of t′

double ideal(double w0, double w1) {
    return w0 * std::log(w0) + w1 * std::log(w1);
}
}  // namespace

BinaryScan::BinaryScan(FluidModel const& fluid) : fluid_(fluid), x_(2) {
    s_.resize(2);
    nodes_.reserve(64);  // as many as most tests need
    cells_.reserve(64);
}

/// Evaluates both roots at a composition; index of the new node.
int BinaryScan::node(double w0, double w1) {
    const int at = static_cast<int>(nodes_.size());
    Node& n = nodes_.emplace_back();
    n.w0 = w0;
    n.w1 = w1;
    x_[0] = w0;
    x_[1] = w1;
    ++result_.nodes;
    double rho[2];
    const int found = fluid_.densities(p_, T_, x_, rho);
    const double f0 = std::log(w0), f1 = std::log(w1);
    for (int k = 0; k < found; ++k) {
        s_.rho_i[0] = w0 * rho[k];
        s_.rho_i[1] = w1 * rho[k];
        if (!fluid_.evaluate(s_, T_, phase_H) || !(s_.S > 0.0)) continue;
        const int r = n.roots++;
        n.rho[r] = rho[k];
        n.stiff[r] = s_.S / rho[k];
        n.m0[r] = s_.m[0];
        n.m1[r] = s_.m[1];
        n.G2[r] = s_.m_n(0, 0) - s_.m_n(0, 1) - s_.m_n(1, 0) + s_.m_n(1, 1);
        n.e2[r] = n.G2[r] - 1.0 / (w0 * w1);
        n.U2[r] = s_.rho * (s_.H[0] - s_.H[1] - s_.H[2] + s_.H[3]) - 1.0 / (w0 * w1);
        n.slope[r] = (s_.m[0] - f0) - (s_.m[1] - f1);
        n.excess[r] = w0 * (s_.m[0] - f0) + w1 * (s_.m[1] - f1);
    }
    return at;
}

/// Halves the angle θ with w = sin²(θ/2); where an end is dilute, the logarithm.
int BinaryScan::middle(Cell const& c) {
    Node const &a = nodes_[c.a], &b = nodes_[c.b];
    double w0 = 0.0, w1 = 0.0;
    if (b.w0 < 1e-3 && a.w0 < 0.05 * b.w0) {
        w0 = std::sqrt(a.w0 * b.w0);
        w1 = 1.0 - w0;
    } else if (a.w1 < 1e-3 && b.w1 < 0.05 * a.w1) {
        w1 = std::sqrt(a.w1 * b.w1);
        w0 = 1.0 - w1;
    } else {
        // sin and cos of half the sum of the half angles
        const double sa = std::sqrt(a.w0), ca = std::sqrt(a.w1), sb = std::sqrt(b.w0),
                     cb = std::sqrt(b.w1);
        const double s = sa + sb, q = ca + cb, norm = s * s + q * q;
        w0 = s * s / norm;
        w1 = q * q / norm;
    }
    return node(w0, w1);
}

bool BinaryScan::dilute(Node const& n) const {
    for (int r = 0; r < n.roots; ++r)
        if (!(std::fabs(n.e2[r]) * std::min(n.w0, n.w1) < kDilute)) return false;
    return true;
}

BinaryScan::Point const& BinaryScan::point(Node const& n, int r) const {
    Point& q = n.at[r];
    if (n.seen[r] == test_) return q;
    n.seen[r] = test_;
    q.zero = false;
    q.w0 = n.w0;
    q.w1 = n.w1;
    const double d0 = n.m0[r] - mu0_, d1 = n.m1[r] - mu1_;
    q.t = n.w0 * d0 + n.w1 * d1;
    q.t1 = d0 - d1;
    q.t2 = n.G2[r];
    q.e = n.excess[r] - (n.w0 * mu0_ + n.w1 * mu1_);
    q.e1 = n.slope[r] - (mu0_ - mu1_);
    q.e2 = n.e2[r];
    q.rho = n.rho[r];
    q.stiff = n.stiff[r];
    for (int z = 0; z < zeros_; ++z) {
        Point const& at = zero_[z].at;
        if (std::fabs(length(n.w0, n.w1, at.w0, at.w1)) < 1e-9 * n.w0 * n.w1 &&
            std::fabs(zero_[z].rho / n.rho[r] - 1.0) < 1e-6) {
            q.t = q.t1 = 0.0;
            q.zero = true;
        }
    }
    return q;
}

void BinaryScan::take(double t, double rho, double w0, double w1) {
    if (negative(t)) result_.negative = true;
    if (result_.found && !(t < result_.t)) return;
    result_.found = true;
    result_.t = t;
    result_.rho = rho;
    result_.w = {w0, w1};
}

/// A node as part of the present test; false where the test is over.
bool BinaryScan::visit(int k) {
    Node const& n = nodes_[k];
    if (n.roots == 0) result_.resolved = false;
    for (int r = 0; r < n.roots; ++r) {
        Point const& q = point(n, r);
        if (!negative(q.t)) continue;
        take(q.t, n.rho[r], n.w0, n.w1);
        if (first_ && q.t < -10.0 * tolerance_) over_ = true;
    }
    return !over_;
}

/// Which density root a phase lies on; −1: the model has but one there, −2: none.
int BinaryScan::root_of(Zero& z) {
    if (z.asked) return z.root;
    z.asked = true;
    double rho[2];
    x_[0] = z.at.w0;
    x_[1] = z.at.w1;
    const int found = fluid_.densities(p_, T_, x_, rho);
    z.root = found == 0   ? -2
             : found == 1 ? -1
             : std::fabs(std::log(rho[0] / z.rho)) <= std::fabs(std::log(rho[1] / z.rho)) ? 0 : 1;
    return z.root;
}

int BinaryScan::strands(Cell const& c, Strand* s) const {
    Node const &a = nodes_[c.a], &b = nodes_[c.b];
    if (a.roots == 0 || b.roots == 0) return 0;
    if (a.roots == b.roots) {
        for (int r = 0; r < a.roots; ++r) s[r] = {r, r, kInfinite, kInfinite};
        return a.roots;
    }
    Node const &one = a.roots == 1 ? a : b, &two = a.roots == 1 ? b : a;
    const int near =
        std::fabs(std::log(two.rho[0] / one.rho[0])) < std::fabs(std::log(two.rho[1] / one.rho[0]))
            ? 0
            : 1;
    s[0] = {0, near, kInfinite, kInfinite};
    s[1] = {-1, 1 - near, kInfinite, kInfinite};
    if (a.roots == 2) {
        std::swap(s[0].a, s[0].b);
        std::swap(s[1].a, s[1].b);
    }
    return 2;
}

void BinaryScan::process(int k, Strand const* known, int count, int depth) {
    Strand s[2];
    const int n = strands(cells_[k], s);
    if (n == 0) return;  // no density: counted as not resolved
    const Cell c = cells_[k];
    const std::size_t brackets = brackets_.size();
    bool all = true;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < count; ++j)
            if (known[j].a == s[i].a && known[j].b == s[i].b) s[i] = known[j];
        if (all)
            all = s[i].a < 0 || s[i].b < 0 ? vanishing(c, s[i], depth > 0)
                                           : settled(c, s[i], depth > 0);
    }
    if (all) return;
    Node const &a = nodes_[c.a], &b = nodes_[c.b];
    if (!(length(a.w0, a.w1, b.w0, b.w1) > kNarrow * std::min(a.w0 * a.w1, b.w0 * b.w1))) return;
    brackets_.resize(brackets);
    if (depth > 60 || result_.nodes > kNodes) {
        result_.resolved = false;
        return;
    }
    if (c.mid < 0) {
        const int m = middle(c);
        const int at = static_cast<int>(cells_.size());
        cells_.push_back({c.a, m});
        cells_.push_back({m, c.b});
        cells_[k].mid = m;
        cells_[k].left = at;
    }
    const int left = cells_[k].left;
    if (!visit(cells_[k].mid)) return;
    Strand l[2], r[2];
    int passed = 0;
    for (int i = 0; i < n; ++i) {
        if (s[i].a < 0 || s[i].b < 0) continue;
        int m = 0;
        error(cells_[k], s[i], m);
        if (!(s[i].A < kInfinite)) continue;
        l[passed] = {s[i].a, m, s[i].A / kSafety, s[i].B / 4.0};
        r[passed] = {m, s[i].b, s[i].A / kSafety, s[i].B / 4.0};
        ++passed;
    }
    process(left, l, passed, depth + 1);
    if (!over_) process(left + 1, r, passed, depth + 1);
}

/// From an end node to the pure component, along each root.
void BinaryScan::end(int k) {
    const Node n = nodes_[k];
    const bool low = n.w0 < n.w1;
    const double w = low ? n.w0 : n.w1;
    for (int r = 0; r < n.roots; ++r) {
        bool own = false;
        for (int z = 0; z < zeros_; ++z)
            own = own || ((low ? zero_[z].at.w0 : zero_[z].at.w1) <= w &&
                          std::fabs(zero_[z].rho / n.rho[r] - 1.0) < 1e-3);
        const Point q = point(n, r);
        const double slope = low ? q.t1 : -q.t1;
        if (own || q.zero || !(slope > 0.0)) continue;
        const double least = q.t - w * (slope - 1.0 + std::exp(-slope));
        if (first_ && !negative(least)) continue;
        const double at = std::max(w * std::exp(-slope), kTiny);
        const int m = low ? node(at, 1.0 - at) : node(1.0 - at, at);
        Node const& found = nodes_[m];
        for (int j = 0; j < found.roots; ++j)
            if (std::fabs(found.rho[j] / n.rho[r] - 1.0) < 1e-3)
                take(point(found, j).t, found.rho[j], found.w0, found.w1);
    }
}

/// The minimum in a bracket by Newton's method in ln(w/(1 − w)), in which a dilute t′ is linear.
void BinaryScan::refine(Bracket const& bracket) {
    double lo = std::log(bracket.a.w0 / bracket.a.w1), hi = std::log(bracket.b.w0 / bracket.b.w1);
    const double part = -bracket.a.t1 / (bracket.b.t1 - bracket.a.t1);
    double y = lo + part * (hi - lo);
    Point q;
    double rho = 0.0;
    for (int it = 0; it < kRefine; ++it) {
        const double w0 = 1.0 / (1.0 + std::exp(-y)), w1 = 1.0 / (1.0 + std::exp(y));
        const int k = node(w0, w1);
        const Node n = nodes_[k];
        nodes_.pop_back();
        if (n.roots == 0) {
            result_.resolved = false;
            return;
        }
        const int r = n.roots == 2 ? bracket.root : 0;
        q = point(n, r);
        rho = n.rho[r];
        if (first_ && q.t < -10.0 * tolerance_) break;
        if (std::fabs(q.t1) < kConverged || hi - lo < 1e-13 * std::max(1.0, std::fabs(y))) break;
        (q.t1 > 0.0 ? hi : lo) = y;
        double next = y - q.t1 / (q.t2 * w0 * w1);
        if (!(next > lo && next < hi)) next = 0.5 * (lo + hi);
        y = next;
    }
    take(q.t, rho, q.w0, q.w1);
}

/// The phase or the known one as a node, where t and its slope are zero.
BinaryScan::Zero BinaryScan::zero_at(PhaseState const& s) {
    Zero z;
    z.rho = s.rho;
    Point& q = z.at;
    q.zero = true;
    q.w0 = s.x[0];
    q.w1 = s.x[1];
    q.t2 = s.m_n(0, 0) - s.m_n(0, 1) - s.m_n(1, 0) + s.m_n(1, 1);
    q.e = -ideal(q.w0, q.w1);
    q.e1 = -std::log(q.w0 / q.w1);
    q.e2 = q.t2 - 1.0 / (q.w0 * q.w1);
    q.rho = s.rho;
    q.stiff = s.S / s.rho;
    return z;
}

/// The first intervals: from the middle, half of the angle on either side, to the ends.
void BinaryScan::lay() {
    nodes_.clear();
    cells_.clear();
    const double q = 0.5 - 0.25 * std::sqrt(2.0);
    const int m = node(0.5, 0.5), a = node(q, 1.0 - q), b = node(1.0 - q, q);
    low_ = node(kEnd, 1.0 - kEnd);
    high_ = node(1.0 - kEnd, kEnd);
    cells_ = {{low_, a}, {a, m}, {m, b}, {b, high_}};
    while (nodes_[low_].roots > 0 && !dilute(nodes_[low_]) && nodes_[low_].w0 > kTiny) {
        const int from = low_;
        low_ = node(std::max(1e-4 * nodes_[from].w0, kTiny), 1.0);
        cells_.push_back({low_, from});
    }
    while (nodes_[high_].roots > 0 && !dilute(nodes_[high_]) && nodes_[high_].w1 > kTiny) {
        const int from = high_;
        high_ = node(1.0, std::max(1e-4 * nodes_[from].w1, kTiny));
        cells_.push_back({from, high_});
    }
    first_cells_ = static_cast<int>(cells_.size());
}

BinaryScan::Result BinaryScan::test(PhaseState const& phase, double p, PhaseState const* known,
                                    bool first, double tolerance) {
    result_ = Result();
    ++test_;
    tolerance_ = tolerance;
    first_ = first;
    over_ = false;
    mu0_ = phase.m[0];
    mu1_ = phase.m[1];
    zeros_ = 0;
    for (PhaseState const* s : {&phase, known})
        if (s) zero_[zeros_++] = zero_at(*s);
    if (phase.T != T_ || p != p_ || nodes_.empty()) {
        T_ = phase.T;
        p_ = p;
        lay();
    }
    brackets_.clear();
    for (int k = 0; k < first_cells_; ++k)
        if (!visit(cells_[k].a) || !visit(cells_[k].b)) return result_;
    for (int k : {low_, high_}) {
        if (nodes_[k].roots > 0 && !dilute(nodes_[k])) result_.resolved = false;
        end(k);
    }
    for (int k = 0; k < first_cells_ && !over_; ++k) process(k, nullptr, 0, 0);
    if (over_ || (first && result_.negative)) return result_;
    std::sort(brackets_.begin(), brackets_.end(),
              [](Bracket const& a, Bracket const& b) { return a.estimate < b.estimate; });
    for (Bracket const& b : brackets_) {
        if (result_.found && b.estimate > result_.t) break;
        refine(b);
        if (first && result_.negative) break;
    }
    return result_;
}

}  // namespace corvane
