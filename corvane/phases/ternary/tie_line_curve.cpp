#include <corvane/core/errors.h>
#include <corvane/phases/ternary/tie_line_curve.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr int n = 3, kNewton = 8;
constexpr double kTrace = 1e-4;     // both fractions below it: at the edge
constexpr double kWeight = 0.03;    // least weight of a change of ln rho_i
constexpr double kFirst = 0.3;      // first step, of the longest
constexpr double kShortest = 1e-5;  // of the longest step

double weight(std::vector<double> const& u, int i) {
    return std::max(fraction_of(u, i / n, i % n), kWeight);
}
/// Half the distance of the phases, over the mean composition.
double half_distance(std::vector<double> const& u) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        const double x = 0.5 * (fraction_of(u, 0, i) + fraction_of(u, 1, i));
        sum += x * 0.25 * (u[i] - u[n + i]) * (u[i] - u[n + i]);
    }
    return std::sqrt(sum);
}
std::vector<double> minus(std::vector<double> a, std::vector<double> const& b) {
    for (std::size_t i = 0; i < a.size(); ++i) a[i] -= b[i];
    return a;
}
bool wholly_present(PhaseRecord const& q) {
    return q.x[0] > 0.0 && q.x[1] > 0.0 && q.x[2] > 0.0;
}
}  // namespace

double detail::fraction_of(std::vector<double> const& u, int k, int i) {
    double sum = 0.0;
    for (int j = 0; j < n; ++j) sum += std::exp(u[k * n + j] - u[k * n + i]);
    return 1.0 / sum;
}

double detail::tie_product(std::vector<double> const& u, std::vector<double> const& a,
                           std::vector<double> const& b) {
    double sum = 0.0;
    for (int i = 0; i < 2 * n; ++i) sum += a[i] * b[i] * weight(u, i) * weight(u, i);
    return sum;
}

std::vector<double> detail::tie_variables(PhaseRecord const& a, PhaseRecord const& b, double T) {
    std::vector<double> u;
    for (PhaseRecord const* q : {&a, &b})
        for (int i = 0; i < n; ++i) u.push_back(std::log(q->rho * q->x[i]));
    u.push_back(std::log(T));
    return u;
}
std::vector<double> detail::tie_middle(std::vector<double> const& u) {
    std::vector<double> z(n);
    for (int i = 0; i < n; ++i) z[i] = 0.5 * (fraction_of(u, 0, i) + fraction_of(u, 1, i));
    return z;
}
Vector<double> detail::three_of(double const* x) {
    Vector<double> v(n);
    std::copy(x, x + n, v.data);
    return v;
}

TieLineCurve::TieLineCurve(ModelN const& model, FluidModel const& fluid, double T, double p,
                           TernaryOptions const& options)
    : model_(model), fluid_(fluid), T_(T), p_(p), o_(options), pair_(fluid) {
    pair_.T = T;
    pair_.p = p;
}

/// Newton's method from u, within the plane through it across `along`; the node with its tangent.
bool TieLineCurve::solve(std::vector<double> const& u, std::vector<double> const& along,
                         TieNode& next) {
    pair_.u = u;
    pair_.row.assign(u.size(), 0.0);
    pair_.value = 0.0;
    for (int i = 0; i < 2 * n; ++i) {
        pair_.row[i] = weight(u, i) * weight(u, i) * along[i];
        pair_.value += pair_.row[i] * u[i];
    }
    pair_.iterations = 0;
    if (!tolerated([&] { return pair_.solve(kNewton); })) return false;
    if (!(pair_.a.S > 0.0) || !(pair_.b.S > 0.0)) return false;
    return tangent(next, &along);
}

/// The unit tangent at the solution in pair_.
bool TieLineCurve::tangent(TieNode& node, std::vector<double> const* along) {
    node.u = pair_.u;
    // The condition that the tangent is unique under: any row that it is not orthogonal to.
    if (!pair_.tangent(node.t)) return false;
    double size = std::sqrt(tie_product(node.u, node.t, node.t));
    if (along && tie_product(node.u, node.t, *along) < 0.0) size = -size;
    for (double& v : node.t) v /= size;
    return std::isfinite(node.t[0]);
}

/// As a flash of the whole half-way. pair_ is solved at node.u, which it may improve.
TieLineCurve::Verdict TieLineCurve::certify(TieNode& node) {
    const std::vector<double> z = tie_middle(node.u);
    const FluidModel whole(model_, three_of(z.data()));
    CoexistenceSolver two(whole, 2);
    Stability stability(whole);
    FlashResult q;
    q.T = T_;
    q.p = p_;
    trial_rho_ = 0.0;
    Verdict verdict = Verdict::no;
    tolerated([&] {
        PhaseState a = pair_.a, b = pair_.b;
        double beta = 0.5;
        if (!flash_bound(two, T_, p_, a, b, beta, q.certificate)) return false;
        if (flash_certified(whole, stability, {a, b}, {1.0 - beta, beta}, q)) {
            verdict = Verdict::certified;
            Certificate const& c = q.certificate;
            node.tie = {{PhaseRecord{a.rho, whole.expand(a.x)}, {b.rho, whole.expand(b.x)}},
                        c.dmu, c.dp, c.tpd, c.x_error};
            return true;
        }
        const StabilityResult r = stability.test(a, p_, &b, false);
        if (r.stable) return false;
        verdict = Verdict::unstable;
        if (r.trial.w.size() == n && r.trial.rho > 0.0) {
            trial_ = r.trial.w;
            trial_rho_ = r.trial.rho;
        }
        return true;
    });
    evaluations += whole.evaluations;
    return verdict;
}

bool TieLineCurve::begin_edge(TernaryTieLine const& split, int k) {
    points.clear();
    first_.clear();
    // Smaller and smaller traces, until they do not form a third phase.
    for (double least = kTrace; least > 1e-17; least *= 1e-3) {
        std::vector<double> u(2 * n + 1, std::log(T_));
        for (int phase = 0; phase < 2; ++phase)
            for (int i = 0; i < n; ++i) {
                PhaseRecord const& q = split.phases[static_cast<std::size_t>(phase)];
                u[phase * n + i] = std::log(q.rho * (i == k ? 1e-20 : q.x[i]));
            }
        pair_.u = u;
        if (!tolerated([&] { return pair_.evaluate(); })) return false;
        // At infinite dilution the partial densities are in a fixed ratio.
        const double shift = pair_.a.m[k] - pair_.b.m[k],
                     rise = std::log(least / 1e-20) - std::max(0.0, shift);
        u[k] += rise;
        u[n + k] += rise + shift;
        std::vector<double> along(u.size(), 0.0);
        along[shift > 0.0 ? n + k : k] = 1.0;
        if (!solve(u, along, now_) || certify(now_) != Verdict::certified) continue;
        const double grows = tie_product(now_.u, now_.t, along);
        if (grows < 0.0)
            for (double& v : now_.t) v = -v;
        points = {split, now_.tie};
        return true;
    }
    return false;
}

bool TieLineCurve::begin_at(Split const& split, Vector<double> const* side, bool forwards) {
    points.clear();
    first_.clear();
    if (split.size() != 2 || !wholly_present(split[0]) || !wholly_present(split[1])) return false;
    const std::vector<double> u = tie_variables(split[0], split[1], T_);
    // The tangent is known once some row has given one; try each variable for it.
    double longest = 0.0;
    TieNode best;
    pair_.u = u;
    if (!tolerated([&] { return pair_.evaluate(); })) return false;
    for (int i = 0; i < 2 * n; ++i) {
        pair_.row.assign(u.size(), 0.0);
        pair_.row[i] = 1.0;
        TieNode node;
        if (!tangent(node, nullptr)) continue;
        const double part = std::fabs(node.t[i]) * weight(u, i);
        if (part > longest) longest = part, best = std::move(node);
    }
    if (!(longest > 0.0) || !solve(u, best.t, now_)) return false;
    const Verdict verdict = certify(now_);
    if (verdict != Verdict::certified) return false;
    if (side) {
        // Of the plane through both phases, on which side does the middle move?
        double way[2], line[2], third[2];
        for (int i = 0; i < 2; ++i) {
            const std::vector<double>& v = now_.u;
            way[i] = 0.0;
            for (int phase = 0; phase < 2; ++phase) {
                double mean = 0.0;
                for (int j = 0; j < n; ++j)
                    mean += fraction_of(v, phase, j) * now_.t[phase * n + j];
                way[i] += 0.5 * fraction_of(v, phase, i) * (now_.t[phase * n + i] - mean);
            }
            line[i] = split[1].x[i] - split[0].x[i];
            third[i] = (*side)[i] - split[0].x[i];
        }
        const double to_way = line[0] * way[1] - line[1] * way[0],
                     to_third = line[0] * third[1] - line[1] * third[0];
        forwards = to_way * to_third < 0.0;
    } else {
        first_ = now_.u;
    }
    if (!forwards)
        for (double& v : now_.t) v = -v;
    points = {now_.tie};
    return true;
}

TernaryEnd TieLineCurve::run(int before) {
    tried_ = 1e300;
    StepLength step{kFirst * o_.step, o_.step, kShortest * o_.step, 0.4};
    return continuation(*this, step, o_.points, o_.progress, before);
}

Trial TieLineCurve::attempt(double& length, CurveEnd& end) {
    const double d = half_distance(now_.u);
    std::vector<double> u = now_.u;
    for (std::size_t i = 0; i < u.size(); ++i) u[i] += length * now_.t[i];
    // A step that would make the phases alike, or pass them through each other.
    double same = 0.0;
    for (int i = 0; i < n; ++i)
        same += (now_.u[i] - now_.u[n + i]) * (u[i] - u[n + i]) * 0.5 *
                (fraction_of(u, 0, i) + fraction_of(u, 1, i));
    const double foreseen = half_distance(u);
    if (same < 0.0 || foreseen < 0.4 * d || foreseen < 0.03) {
        if (d < 0.6 * tried_ && d < 0.5) {
            tried_ = d;
            end = TernaryEnd::plait;
            if (at_plait(now_)) return Trial::ended;
        }
        if (same < 0.0 || foreseen < 0.4 * d) return Trial::failed;
    }
    next_ = {};
    if (!solve(u, now_.t, next_)) return Trial::failed;
    // Against jumps to another branch and to the trivial solution.
    const std::vector<double> way = minus(next_.u, now_.u);
    const double moved = std::sqrt(tie_product(now_.u, way, way));
    if (!(tie_product(now_.u, way, now_.t) > 0.5 * moved) || moved > 2.0 * length ||
        half_distance(next_.u) < 0.3 * d ||
        !(tie_product(next_.u, next_.t, now_.t) >
          0.7 * std::sqrt(tie_product(next_.u, now_.t, now_.t))))
        return Trial::failed;
    length_ = length;
    verdict_ = certify(next_);
    return verdict_ == Verdict::no ? Trial::failed : Trial::taken;
}

std::optional<CurveEnd> TieLineCurve::arrive() {
    if (verdict_ == Verdict::unstable) return third_phase(now_, next_, length_);
    if (!first_.empty() && points.size() > 3 && returned(now_, next_)) {
        points.push_back(points.front());
        return TernaryEnd::closed;
    }
    now_ = next_;
    points.push_back(now_.tie);
    if (at_edge(now_)) return TernaryEnd::edge;
    return {};
}

/// Does the step pass the tie line that the trace began with?
bool TieLineCurve::returned(TieNode const& before, TieNode const& now) const {
    const std::vector<double> way = minus(now.u, before.u), off = minus(first_, before.u);
    const double square = tie_product(before.u, way, way),
                 part = tie_product(before.u, off, way) / square;
    if (!(part > 0.0) || part > 1.0) return false;
    std::vector<double> rest = off;
    for (std::size_t i = 0; i < rest.size(); ++i) rest[i] -= part * way[i];
    return tie_product(before.u, rest, rest) < 0.04 * square;
}

}  // namespace corvane
