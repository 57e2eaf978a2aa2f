// Where a curve of tie lines ends: at an edge, at a plait point, at a triangle.
#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/critical/critical_certificate.h>
#include <corvane/phases/ternary/tie_line_curve.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr int n = 3;
constexpr double kTrace = 1e-4;       // both fractions below it: at the edge
constexpr double kConditions = 1e-8;  // of a plait point
}  // namespace

/// Next to an edge that is being approached: its split, as the last point.
bool TieLineCurve::at_edge(TieNode const& node) {
    for (int k = 0; k < n; ++k) {
        if (std::max(fraction_of(node.u, 0, k), fraction_of(node.u, 1, k)) > kTrace ||
            node.t[k] > 0.0)
            continue;
        std::vector<double> z = tie_middle(node.u);
        z[k] = 0.0;
        const double sum = z[0] + z[1] + z[2];
        for (double& v : z) v /= sum;
        FlashResult q;
        if (!tolerated([&] { return q = flash_pT(model_, p_, T_, three_of(z.data())), true; }))
            continue;
        evaluations += q.certificate.evaluations;
        if (q.phases.size() != 2) continue;
        double off[2] = {0.0, 0.0};  // as they are, and exchanged
        for (int phase = 0; phase < 2; ++phase)
            for (int i = 0; i < n; ++i)
                for (int swap = 0; swap < 2; ++swap)
                    off[swap] =
                        std::max(off[swap],
                                 std::fabs(fraction_of(node.u, phase, i) -
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
    const std::vector<double> z = tie_middle(node.u);
    const FluidModel near(model_, three_of(z.data()));
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
            between.u = tie_variables({pair.a.rho, near.expand(pair.a.x)},
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
            wide = std::max(wide, std::fabs(fraction_of(node.u, 0, i) - fraction_of(node.u, 1, i)));
        }
        if (far > 2.0 * wide + 0.02) return false;
        const FluidModel at(model_, three_of(pair.a.x.data()));
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
        const FluidModel whole(model_, three_of(z.data()));
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
        found.record.certificate.flag(o_.validity, T_, p_, three_of(z.data()));
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
            const double along = tie_product(before.u, off, before.t),
                         whole = std::sqrt(tie_product(before.u, off, off));
            if (along < -1e-3 * o_.step || whole > 1.3 * length + 1e-3 * o_.step || whole > nearest)
                continue;
            nearest = whole;
            at[0] = a;
            at[1] = b;
        }
    if (!(nearest < 1e299)) return false;
    Certificate const& c = found.record.certificate;
    points.push_back({{found.record.phases[static_cast<std::size_t>(at[0])],
                       found.record.phases[static_cast<std::size_t>(at[1])]},
                      c.dmu,
                      c.dp,
                      c.tpd,
                      c.x_error});
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
            const std::vector<double> z = tie_middle(now.u);
            if (tolerated([&] { return q = flash_pT(model_, p_, T_, three_of(z.data())), true; })) {
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
