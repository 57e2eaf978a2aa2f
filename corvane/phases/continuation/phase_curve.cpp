#include <corvane/phases/continuation/phase_curve.h>

#include <algorithm>

namespace corvane {
namespace {
constexpr double kNear = 1.0;  // below it only ratios are specified
constexpr double kTraces = 40.0;  // ratios and logits beyond it count by their relative change
}  // namespace

double detail::dot(std::vector<double> const& a, std::vector<double> const& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
}

PhaseCurve::PhaseCurve(CoexistenceSolver& solver, bool logits, Measure measure, double step)
    : s_(solver), n_(solver.fluid.size()), measure_(measure), step_(step) {
    const int m = s_.count();
    for (int k = 0; logits && k < m; ++k) coordinates_.push_back({2 * k, 2 * k + 1, false});
    first_ratio_ = static_cast<int>(coordinates_.size());
    for (int k = 1; k < m; ++k)
        for (int j = 0; j < k; ++j)
            for (int i = 0; i < n_; ++i) coordinates_.push_back({n_ * k + i, n_ * j + i, true});
    coordinates_.push_back({n_ * m, -1, false});
}

double PhaseCurve::apart(std::vector<double> const& u, int j, int k) const {
    double largest = 0.0;
    for (int i = 0; i < n_; ++i)
        largest = std::max(largest, std::fabs(u[n_ * k + i] - u[n_ * j + i]));
    return largest;
}

void PhaseCurve::reverse() {
    for (double& v : now_.t) v = -v;
    now_.ln_p_t = -now_.ln_p_t;
}

double PhaseCurve::weight(std::vector<double> const& u, int c) const {
    Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
    if (q.j < 0) return measure_.ln_T;
    const double trace = std::min(1.0, kTraces / std::fabs(at(u, c)));
    if (q.ratio) return measure_.ratio * trace;
    const double x = 1.0 / (1.0 + std::exp(-at(u, c)));
    return std::max(x * (1.0 - x), 0.03 * trace);
}

double PhaseCurve::moves(std::vector<double> const& u, std::vector<double> const& d,
                         double ln_p) const {
    double largest = measure_.ln_p * std::fabs(ln_p);
    for (int c = 0; c <= last_coordinate(); ++c)
        largest = std::max(largest, weight(u, c) * std::fabs(at(d, c)));
    return largest / step_;
}

int PhaseCurve::most(Node const& node, double length) const {
    double nearest = 1e300, largest = 0.0;
    const auto absent = [&](int i) {
        if (i >= n_ * s_.count() || n_ != 2) return false;
        const double step = length * (node.t[i] - node.t[i ^ 1]);
        return node.u[i] - node.u[i ^ 1] + std::min(0.0, step) < kAbsent;
    };
    for (int k = 1; k < s_.count(); ++k)
        for (int j = 0; j < k; ++j) nearest = std::min(nearest, apart(node.u, j, k));
    int best = first_ratio_;
    for (int c = 0; c <= last_coordinate(); ++c) {
        if (nearest < kNear && !is_ratio(c)) continue;
        Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
        if (absent(q.i) || (q.j >= 0 && absent(q.j))) continue;
        const double size = weight(node.u, c) * std::fabs(at(node.t, c));
        if (size > largest) largest = size, best = c;
    }
    return best;
}

int PhaseCurve::largest_ratio(std::vector<double> const& u, int j, int k) const {
    int best = first_ratio_;
    double largest = -1.0;
    for (int c = first_ratio_; c < last_coordinate(); ++c) {
        Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
        if (q.i / n_ != k || q.j / n_ != j) continue;
        if (std::fabs(at(u, c)) > largest) largest = std::fabs(at(u, c)), best = c;
    }
    return best;
}

void PhaseCurve::specify(int c) {
    Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
    s_.row.assign(s_.u.size(), 0.0);
    s_.row[q.i] = 1.0;
    if (q.j >= 0) s_.row[q.j] = -1.0;
}

bool PhaseCurve::finish(Node& node, std::vector<double> const* along, bool solved) {
    node.u = s_.u;
    if (!s_.tangent(node.t, solved)) return false;
    node.ln_p = s_.ln_p();
    node.ln_p_t = s_.ln_p(node.t);
    const double sign = along && dot(*along, node.t) < 0.0 ? -1.0 : 1.0;
    const double scale = sign / moves(node.u, node.t, node.ln_p_t);
    for (double& v : node.t) v *= scale;
    node.ln_p_t *= scale;
    return std::isfinite(scale) && std::isfinite(node.ln_p);
}

bool PhaseCurve::solve(int limit) {
    if (!s_.solve(limit) || !(s_.pressure() > 0.0)) return false;
    return std::all_of(s_.phase.begin(), s_.phase.end(),
                       [](PhaseState const& s) { return s.S > 0.0; });
}

bool PhaseCurve::cubic_serves(Node const& a, Node const& b, int c, double length,
                              double reach) const {
    const double t0 = at(a.t, c), t1 = at(b.t, c), h = at(b.u, c) - at(a.u, c);
    return h * t0 > 0.0 && h * t1 > 0.0 && std::fabs(length * t1) < reach * std::fabs(h);
}

std::vector<double> PhaseCurve::cubic(Node const& a, Node const& b, int c, double length) const {
    const double t0 = at(a.t, c), t1 = at(b.t, c), h = at(b.u, c) - at(a.u, c), q = length * t1 / h;
    std::vector<double> u(b.u.size());
    for (std::size_t i = 0; i < u.size(); ++i) {
        const double d0 = a.t[i] * h / t0, d1 = b.t[i] * h / t1, rise = b.u[i] - a.u[i];
        // Hermite's polynomial about b: curvature and third difference.
        const double third = d0 + d1 - 2.0 * rise, second = 2.0 * d1 + d0 - 3.0 * rise;
        u[i] = b.u[i] + length * b.t[i] + q * q * (second + third * q);
    }
    return u;
}

}  // namespace corvane
