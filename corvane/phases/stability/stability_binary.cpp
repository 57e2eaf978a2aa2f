// The tangent-plane test of a binary: one composition variable, so that the distance d(w) is
// scanned along both density roots and every minimum of the scan is refined.
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
// The quick test is for curves whose ends are tested completely: some 0.1 apart, closer at the
// ends, and minima next to the phase itself are looked for besides.
constexpr std::array<double, 15> kGrid{0.003, 0.02, 0.06, 0.12, 0.2,  0.3,  0.4,  0.5,
                                       0.6,   0.7,  0.8,  0.88, 0.94, 0.98, 0.997};
constexpr int kPoints = static_cast<int>(kGrid.size());
constexpr double kNone = 1e300;  // no density root
constexpr int kIterations = 60;
constexpr double kConverged = 1e-10;  // of the slope of d
constexpr double kLimit = -Certificate::tpd_tolerance;

double logit(double w) {
    return std::log(w / (1.0 - w));
}
constexpr double kInfinite = std::numeric_limits<double>::infinity();

/// Where a parabola through three points is lowest, and how low. The outer values are not below the
/// middle one.
struct Vertex {
    double w, value;
};
Vertex vertex(double const* w, double const* y) {
    const double a = w[0] - w[1], b = w[2] - w[1], ya = (y[0] - y[1]) / a, yb = (y[2] - y[1]) / b;
    const double curvature = (yb - ya) / (b - a), slope = ya - a * curvature;
    if (!(curvature > 0.0)) return {w[1], y[1]};
    const double step = std::clamp(-0.5 * slope / curvature, a, b);
    return {w[1] + step, y[1] + step * (slope + step * curvature)};
}
}  // namespace

int Stability::scan_binary(PhaseState const& phase, double p) {
    brackets_.clear();
    int missing = 0;
    std::array<std::array<double, kPoints>, 2> d;
    double rho[2], g[2];
    for (int k = 0; k < kPoints; ++k) {
        step_[0] = kGrid[k];
        step_[1] = 1.0 - kGrid[k];
        const int roots = fluid_.densities(p, phase.T, step_, rho, g);
        if (roots == 0) ++missing;
        double plane = 0.0;  // of the tangent, less the mixing term
        for (int i = 0; i < 2; ++i) plane += step_[i] * (phase.m[i] - std::log(step_[i]));
        for (int root = 0; root < 2; ++root)
            d[root][k] = root < roots && std::isfinite(g[root]) ? g[root] - plane : kNone;
        if (roots == 1) d[1][k] = d[0][k];
    }
    const int roots = fluid_.densities(p, phase.T, phase.x, rho);
    for (int root = 0; root < 2; ++root) {
        const bool own =
            roots < 2 || std::fabs(rho[root] - phase.rho) <= std::fabs(rho[1 - root] - phase.rho);
        scan_root(phase, root == 0 ? Root::dense : Root::dilute, own, d[root].data(),
                  root == 0 ? nullptr : d[0].data());
    }
    return missing;
}

/// Minima of d at the grid points along one density root.
///
/// At the phase itself (own: it lies on this root) d has a double zero, beside which another
/// minimum may hide between grid points: next to a critical point. The quotient e = d/(w − x)²,
/// which is smooth and begins with d″/2 there, shows it.
void Stability::scan_root(PhaseState const& phase, Root root, bool own, double const* d,
                          double const* same) {
    const double x = phase.x[0];
    const std::size_t begin = brackets_.size();
    for (int k = 0; k < kPoints; ++k) {
        if (d[k] >= kNone) continue;
        // Only one density root here and next to it: the scan of the dense root has that. Where the
        // second one begins both scans need the point.
        auto single = [&](int j) { return j < 0 || j >= kPoints || d[j] == same[j]; };
        if (same && single(k - 1) && single(k) && single(k + 1)) continue;
        if (k > 0 && d[k - 1] < d[k]) continue;
        if (k + 1 < kPoints && d[k + 1] <= d[k]) continue;
        const double lo = k > 0 ? kGrid[k - 1] : 0.0, hi = k + 1 < kPoints ? kGrid[k + 1] : 1.0;
        if (own && d[k] > kLimit && lo < x && x < hi) continue;  // the phase itself
        const bool inner = k > 0 && k + 1 < kPoints && std::max(d[k - 1], d[k + 1]) < 1.0;
        brackets_.push_back({root, lo, inner ? vertex(&kGrid[k - 1], &d[k - 1]).w : kGrid[k], hi});
    }
    if (!own) return;
    std::array<double, kPoints + 1> w, e;
    int n = 0;
    bool placed = false;
    auto place = [&] {
        w[n] = x;
        e[n++] = 0.5 * (phase.m_n(0, 0) - phase.m_n(0, 1) - phase.m_n(1, 0) + phase.m_n(1, 1));
        placed = true;
    };
    for (int k = 0; k < kPoints; ++k) {
        if (!placed && kGrid[k] > x) place();
        const double from = kGrid[k] - x;
        if (d[k] >= kNone || std::fabs(from) < 1e-3) continue;
        w[n] = kGrid[k];
        e[n++] = d[k] / (from * from);
    }
    if (!placed) place();
    for (int j = 1; j + 1 < n; ++j) {
        if (e[j - 1] < e[j] || e[j + 1] < e[j]) continue;
        const Vertex v = vertex(&w[j - 1], &e[j - 1]);
        if (e[j] > 0.0 && v.value > 0.5 * e[j]) continue;
        double lo = w[j - 1], hi = w[j + 1];
        (v.w > x ? lo : hi) = v.w > x ? std::max(lo, x) : std::min(hi, x);
        const bool known =
            std::any_of(brackets_.begin() + static_cast<std::ptrdiff_t>(begin), brackets_.end(),
                        [&](Bracket const& b) { return b.at > lo && b.at < hi; });
        if (!known) brackets_.push_back({root, lo, v.w, hi});
    }
}

/// A zero of the slope d′ = Δm_0 − Δm_1, where it rises, by Newton's method in ln[w/(1 − w)] inside
/// the bracket, every fourth step a bisection. The end of a density root is no minimum, but any
/// negative d met on the way proves instability. Where the model has no density, the step is
/// halved.
Stability::End Stability::descend(PhaseState const& phase, double p, PhaseState const* known,
                                  Bracket const& bracket, bool first, double& tpd,
                                  int& iterations) {
    double lo = bracket.lo > 0.0 ? logit(bracket.lo) : -kInfinite;
    double hi = bracket.hi < 1.0 ? logit(bracket.hi) : kInfinite, t = logit(bracket.at);
    double last = t, lowest = 0.0, lowest_at = t;
    tpd = 0.0;
    auto evaluate = [&] {
        step_[0] = 1.0 / (1.0 + std::exp(-t));
        step_[1] = 1.0 / (1.0 + std::exp(t));
        return fluid_.evaluate_at(s_, p, phase.T, step_, bracket.root, phase_H);
    };
    for (int it = 0; it < kIterations; ++it) {
        ++iterations;
        if (!evaluate()) {
            if (it == 0) return End::failed;
            (t > last ? hi : lo) = t;
            t = 0.5 * (t + last);
            if (std::fabs(t - last) < 1e-3) break;
            continue;
        }
        last = t;
        tpd = distance(s_, phase);
        if (tpd < lowest) {
            lowest = tpd;
            lowest_at = t;
        }
        if (first && tpd < 10 * kLimit) return End::negative;
        if (tpd >= kLimit && (meets(s_, phase) || (known && meets(s_, *known)))) {
            if (lowest < kLimit) break;
            tpd = std::min(0.0, tpd);
            return End::trivial;
        }
        const double slope = s_.m[0] - phase.m[0] - (s_.m[1] - phase.m[1]);
        if (std::fabs(slope) < kConverged) {
            if (tpd < kLimit) return End::negative;
            if (lowest < kLimit) break;
            return End::stationary;
        }
        (slope > 0.0 ? hi : lo) = t;
        const bool closed = std::isfinite(hi - lo);
        const double curvature =
            s_.x[0] * s_.x[1] * (s_.m_n(0, 0) - s_.m_n(0, 1) - s_.m_n(1, 0) + s_.m_n(1, 1));
        // Too steep for a zero inside a bracket that narrow: here a density root ends.
        const double reach = 30.0 * (1.0 + std::fabs(curvature)) * (hi - lo);
        if (closed && (hi - lo < 1e-11 || (hi - lo < 0.1 && std::fabs(slope) > reach))) {
            if (lowest < kLimit) break;
            tpd = 0.0;
            return End::trivial;
        }
        double next = curvature > 0.0 ? t - slope / curvature : kInfinite;
        if (!(next > lo && next < hi) || (closed && it % 4 == 3))
            next = closed ? 0.5 * (lo + hi) : slope > 0.0 ? t - 2.0 : t + 2.0;
        t = std::clamp(next, t - 40.0, t + 40.0);
    }
    if (!(lowest < kLimit)) return End::failed;
    t = lowest_at;
    if (!evaluate()) return End::failed;
    tpd = lowest;
    return End::negative;
}

}  // namespace corvane
