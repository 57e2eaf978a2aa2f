#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/critical/critical_certificate.h>
#include <corvane/phases/report/error_bound.h>
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
constexpr double kConditions = 1e-8;  // of a plait point

Vector<double> vector_of(double const* x) {
    Vector<double> v(n);
    std::copy(x, x + n, v.data);
    return v;
}
double weight(std::vector<double> const& u, int i) {
    return std::max(fraction_of(u, i / n, i % n), kWeight);
}
/// Product of two directions at u in the measure of the arc length.
double product(std::vector<double> const& u, std::vector<double> const& a,
               std::vector<double> const& b) {
    double sum = 0.0;
    for (int i = 0; i < 2 * n; ++i) sum += a[i] * b[i] * weight(u, i) * weight(u, i);
    return sum;
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
std::vector<double> variables(PhaseRecord const& a, PhaseRecord const& b, double T) {
    std::vector<double> u;
    for (PhaseRecord const* q : {&a, &b})
        for (int i = 0; i < n; ++i) u.push_back(std::log(q->rho * q->x[i]));
    u.push_back(std::log(T));
    return u;
}
std::vector<double> middle(std::vector<double> const& u) {
    std::vector<double> z(n);
    for (int i = 0; i < n; ++i) z[i] = 0.5 * (fraction_of(u, 0, i) + fraction_of(u, 1, i));
    return z;
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
    double size = std::sqrt(product(node.u, node.t, node.t));
    if (along && product(node.u, node.t, *along) < 0.0) size = -size;
    for (double& v : node.t) v /= size;
    return std::isfinite(node.t[0]);
}

/// As a flash of the whole half-way. pair_ is solved at node.u, which it may improve.
TieLineCurve::Verdict TieLineCurve::certify(TieNode& node) {
    const std::vector<double> z = middle(node.u);
    const FluidModel whole(model_, vector_of(z.data()));
    Stability stability(whole);
    FlashResult q;
    q.T = T_;
    q.p = p_;
    trial_rho_ = 0.0;
    Verdict verdict = Verdict::no;
    tolerated([&] {
        PhaseState a = pair_.a, b = pair_.b;
        double beta = 0.5;
        if (!flash_bound(whole, T_, p_, a, b, beta, q.certificate)) return false;
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
        const double grows = product(now_.u, now_.t, along);
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
    const std::vector<double> u = variables(split[0], split[1], T_);
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
    const double moved = std::sqrt(product(now_.u, way, way));
    if (!(product(now_.u, way, now_.t) > 0.5 * moved) || moved > 2.0 * length ||
        half_distance(next_.u) < 0.3 * d ||
        !(product(next_.u, next_.t, now_.t) > 0.7 * std::sqrt(product(next_.u, now_.t, now_.t))))
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
    const double square = product(before.u, way, way), part = product(before.u, off, way) / square;
    if (!(part > 0.0) || part > 1.0) return false;
    std::vector<double> rest = off;
    for (std::size_t i = 0; i < rest.size(); ++i) rest[i] -= part * way[i];
    return product(before.u, rest, rest) < 0.04 * square;
}

/// Next to an edge that is being approached: its split, as the last point.
bool TieLineCurve::at_edge(TieNode const& node) {
    for (int k = 0; k < n; ++k) {
        if (std::max(fraction_of(node.u, 0, k), fraction_of(node.u, 1, k)) > kTrace ||
            node.t[k] > 0.0)
            continue;
        std::vector<double> z = middle(node.u);
        z[k] = 0.0;
        const double sum = z[0] + z[1] + z[2];
        for (double& v : z) v /= sum;
        FlashResult q;
        if (!tolerated([&] { return q = flash_pT(model_, p_, T_, vector_of(z.data())), true; }))
            continue;
        evaluations += q.certificate.evaluations;
        if (q.phases.size() != 2) continue;
        double off[2] = {0.0, 0.0};  // as they are, and exchanged
        for (int phase = 0; phase < 2; ++phase)
            for (int i = 0; i < n; ++i)
                for (int swap = 0; swap < 2; ++swap)
                    off[swap] = std::max(
                        off[swap], std::fabs(fraction_of(node.u, phase, i) -
                                             q.phases[static_cast<std::size_t>(phase ^ swap)].x[i]));
        if (std::min(off[0], off[1]) > 0.01) continue;
        if (off[1] < off[0]) std::swap(q.phases[0], q.phases[1]);
        Certificate const& c = q.certificate;
        points.push_back({{q.phases[0], q.phases[1]}, c.dmu, c.dp, c.tpd, c.x_error});
        edge = k;
        return true;
    }
    return false;
}

/// The plait point that the curve runs into, by tie lines nearer and nearer to it in variables that
/// are regular there. All but d are even functions of d.
bool TieLineCurve::at_plait(TieNode const& node) {
    const std::vector<double> z = middle(node.u);
    const FluidModel near(model_, vector_of(z.data()));
    RegularPair pair(near);
    pair.T = T_;
    pair.p = p_;
    pair.free_composition = true;
    std::vector<double> rho[2];
    for (int i = 0; i < 2 * n; ++i) rho[i / n].push_back(std::exp(node.u[i]));
    std::vector<TernaryTieLine> approach;
    const bool found = tolerated([&] {
        pair.start(rho[0], rho[1], T_);
        if (!pair.solve(20)) return false;
        for (double d = pair.distance(); d > 0.0;) {
            std::vector<double> t;
            if (!pair.tangent(t)) return false;
            const double to = d > 0.04 ? 0.5 * d : 0.0, q = 0.5 * (to * to - d * d) / d;
            for (int i = 0; i < 2 * n; ++i) pair.y[i] += q * t[i];
            pair.y[2 * n] = d = to;
            if (!pair.solve(20)) return false;
            if (d == 0.0) break;
            TieNode between;
            between.u = variables({pair.a.rho, near.expand(pair.a.x)},
                                  {pair.b.rho, near.expand(pair.b.x)}, T_);
            pair_.a = pair.a;
            pair_.b = pair.b;
            if (certify(between) != Verdict::certified) return false;
            approach.push_back(between.tie);
        }
        // Not another one, elsewhere: the way is about that of a parabola.
        double far = 0.0, wide = 0.0;
        for (int i = 0; i < n; ++i) {
            far = std::max(far, std::fabs(pair.a.x[i] - z[i]));
            wide = std::max(wide,
                            std::fabs(fraction_of(node.u, 0, i) - fraction_of(node.u, 1, i)));
        }
        if (far > 2.0 * wide + 0.02) return false;
        const FluidModel at(model_, vector_of(pair.a.x.data()));
        CriticalConditions conditions(at);
        CriticalConditions::Variables y{std::log(pair.a.rho), std::log(T_), 0.0, 0.0};
        CriticalCertifier certifier(at, conditions);
        CriticalPoint c;
        const bool solved = conditions.evaluate(y, 2, phase_all) &&
                            conditions.residual() <= kConditions &&
                            certifier.certify(y, 2, true, o_.validity, c) && c.stable;
        evaluations += at.evaluations;
        if (solved) plait = std::move(c);
        return solved;
    });
    evaluations += near.evaluations;
    if (!found) return false;
    for (TernaryTieLine& tie : approach) points.push_back(std::move(tie));
    const PhaseRecord phase{plait->rho, plait->x};
    points.push_back({{phase, phase}, 0.0, 0.0, 0.0, Certificate::unknown});
    return true;
}

bool TieLineCurve::solve_triangle(std::vector<double> const& start, Triangle& found) {
    CoexistenceSolver three(fluid_, 3);
    three.T = T_;
    three.p = p_;
    three.u = start;
    FlashResult q;
    q.T = T_;
    q.p = p_;
    return tolerated([&] {
        if (!three.solve(20) || three.trivial()) return false;
        std::vector<double> z(n, 0.0);
        for (PhaseState const& s : three.phase)
            for (int i = 0; i < n; ++i) z[i] += s.x[i] / 3.0;
        const FluidModel whole(model_, vector_of(z.data()));
        Stability stability(whole);
        const bool certified =
            three.bound(q.certificate) &&
            flash_certified(whole, stability, three.phase, {1.0 / 3, 1.0 / 3, 1.0 / 3}, q);
        evaluations += whole.evaluations;
        if (!certified) return false;
        found.u.clear();
        for (std::size_t k = 0; k < 3; ++k) {
            found.record.phases[k] = q.phases[k];
            for (int i = 0; i < n; ++i)
                found.u.push_back(std::log(q.phases[k].rho * q.phases[k].x[i]));
        }
        found.u.push_back(std::log(T_));
        found.record.certificate = q.certificate;
        found.record.certificate.flag(o_.validity, T_, p_, vector_of(z.data()));
        return true;
    });
}

/// Is a side of the triangle within the step from `before`? It becomes the last point.
bool TieLineCurve::side_of(Triangle const& found, TieNode const& before, double length) {
    double nearest = 1e300;
    int at[2] = {0, 0};
    for (int a = 0; a < 3; ++a)
        for (int b = 0; b < 3; ++b) {
            if (a == b) continue;
            std::vector<double> off(2 * n + 1, 0.0);
            for (int i = 0; i < n; ++i) {
                off[i] = found.u[a * n + i] - before.u[i];
                off[n + i] = found.u[b * n + i] - before.u[n + i];
            }
            const double along = product(before.u, off, before.t),
                         whole = std::sqrt(product(before.u, off, off));
            if (along < -1e-3 * o_.step || whole > 1.3 * length + 1e-3 * o_.step ||
                whole > nearest)
                continue;
            nearest = whole;
            at[0] = a;
            at[1] = b;
        }
    if (!(nearest < 1e299)) return false;
    Certificate const& c = found.record.certificate;
    points.push_back({{found.record.phases[static_cast<std::size_t>(at[0])],
                       found.record.phases[static_cast<std::size_t>(at[1])]},
                      c.dmu, c.dp, c.tpd, c.x_error});
    triangle = found;
    return true;
}

/// before is stable, now is not: the triangle in between.
TernaryEnd TieLineCurve::third_phase(TieNode const& from, TieNode& now, double length) {
    TieNode before = from;
    for (int it = 0; it < 30; ++it) {
        Triangle found;
        if (trial_rho_ > 0.0) {
            std::vector<double> u(now.u.begin(), now.u.end() - 1);
            for (int i = 0; i < n; ++i) u.push_back(std::log(trial_rho_ * trial_[i]));
            u.push_back(now.u.back());
            if (solve_triangle(u, found) && side_of(found, before, length))
                return TernaryEnd::three_phase;
        }
        if (it % 4 == 0) {  // a flash finds it from nothing
            FlashResult q;
            const std::vector<double> z = middle(now.u);
            if (tolerated([&] { return q = flash_pT(model_, p_, T_, vector_of(z.data())), true; })) {
                evaluations += q.certificate.evaluations;
                if (q.phases.size() == 3) {
                    std::vector<double> u;
                    for (PhaseRecord const& phase : q.phases)
                        for (int i = 0; i < n; ++i) u.push_back(std::log(phase.rho * phase.x[i]));
                    u.push_back(std::log(T_));
                    if (solve_triangle(u, found) && side_of(found, before, length))
                        return TernaryEnd::three_phase;
                }
            }
        }
        length *= 0.5;
        std::vector<double> u = before.u;
        for (std::size_t i = 0; i < u.size(); ++i) u[i] += length * before.t[i];
        TieNode half;
        if (!solve(u, before.t, half)) continue;
        const Verdict verdict = certify(half);
        if (verdict == Verdict::certified) {
            points.push_back(half.tie);
            before = half;
        } else if (verdict == Verdict::unstable) {
            now = half;
        }
    }
    return TernaryEnd::stuck;
}

}  // namespace corvane
