#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/binary/binary.h>
#include <corvane/phases/binary/pure_point.h>
#include <corvane/phases/binary/tie_lines.h>
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr double kTrace = 1e-4;     // both fractions below it: at the pure component
constexpr double kCritical = 1e-3;  // in x, from the extrapolated critical point
}  // namespace

TieLine detail::tie_line(CoexistenceSolver const& s) {
    PhaseState const &a = s.phase[0], &b = s.phase[1];
    const auto fraction = [](PhaseState const& q) {
        return absent(q.x[0]) ? 0.0 : absent(q.x[1]) ? 1.0 : q.x[0];
    };
    return {a.T, s.phase[s.softest()].p, fraction(a), fraction(b), a.rho, b.rho, true};
}

TieLineTracer::TieLineTracer(FluidModel const& fluid, Fixed constant, DiagramOptions const& o,
                             bool cut)
    : fluid_(fluid),
      constant_(constant),
      o_(o),
      cut_(cut),
      pair_(fluid),
      azeotrope_(fluid),
      solver3_(fluid, 3),
      path_(pair_, o.step),
      stability_(fluid),
      evaluations_(fluid.evaluations) {
    for (CoexistenceSolver* s : {static_cast<CoexistenceSolver*>(&pair_),
                                 static_cast<CoexistenceSolver*>(&azeotrope_), &solver3_})
        s->hold(constant);
    azeotrope_.also = {1, -1, -1, 1, 0};
    const double Tc[] = {fluid.pure(0).Tcrit(), fluid.pure(1).Tcrit()};
    T_min_ = o.T_min > 0.0 ? o.T_min : 0.3 * std::min(Tc[0], Tc[1]);
    T_max_ = 2.0 * std::max(Tc[0], Tc[1]);
}

bool TieLineTracer::begin_pure(int component) {
    return survives([&] {
        if (!leave_pure(component)) return false;
        outside_ = !within(std::log(first().p), std::log(first().T));
        return !outside_ || enter();
    });
}
bool TieLineTracer::within(double ln_p, double ln_T) const {
    return constant_.at_T ? ln_p <= std::log(o_.p_max) : ln_T >= std::log(T_min_);
}
/// Follows the curve to the bound, which becomes its first point. False if it does not get there
/// or is not stable there.
bool TieLineTracer::enter() {
    for (int k = 0; k < o_.points; ++k) {
        if (advance(path_, path_.step)) return false;
        if (!within(path_.now().ln_p, path_.now().u.back())) continue;
        if (!path_.stop_at({!constant_.at_T, constant_.at_T ? o_.p_max : T_min_}))
            return false;
        stable_ = !o_.stability || test(pair_, true);
        d_ = {};
        d_.begin = constant_.at_T ? DiagramEnd::limit : DiagramEnd::coldest;
        push(pair_, stable_);
        return stable_ || !cut_;
    }
    return false;
}
bool TieLineTracer::leave_pure(int component) {
    TieLine q;
    if (!pure_point(fluid_, component, constant_, q)) return false;
    d_.points.push_back(q);
    d_.begin = DiagramEnd::pure;
    kind = PhasePair::vapour_liquid;
    const int trace = 1 - component;
    // Smaller and smaller traces of the other component, until they do not form a third phase.
    for (double least = kTrace; least > 1e-17; least *= 1e-3) {
        std::vector<double> x(2);
        x[component] = 1.0;
        x[trace] = 1e-20;
        // At infinite dilution its partial densities are in a fixed ratio.
        pair_.start(x, q.rho_x, x, q.rho_y, q.T);
        if (!pair_.evaluate()) return false;
        const double ratio = std::exp(pair_.a.m[trace] - std::log(pair_.a.rho_i[trace]) -
                                      pair_.b.m[trace] + std::log(pair_.b.rho_i[trace])) *
                             q.rho_x / q.rho_y;  // of the mole fractions
        std::vector<double> y(2);
        x[trace] = least / std::max(1.0, ratio);
        y[trace] = ratio * x[trace];
        x[component] = 1.0 - x[trace];
        y[component] = 1.0 - y[trace];
        pair_.start(x, q.rho_x, y, q.rho_y, q.T);
        if (!path_.begin(ratio > 1.0 ? 1 : 0)) continue;
        stable_ = !o_.stability || test(pair_, true);
        if (cut_ && !stable_) continue;
        const double away = Path::logit(path_.now().t, 0) + Path::logit(path_.now().t, 1);
        if ((away > 0.0) == (component == 0)) path_.reverse();
        push(pair_, stable_);
        return true;
    }
    return false;
}

bool TieLineTracer::begin_at(std::vector<double> const& u, bool rising, DiagramEnd why) {
    pair_.u = u;
    if (!path_.begin_at_solution()) return false;
    const double slope = constant_.at_T ? path_.now().ln_p_t : path_.now().t.back();
    if ((slope > 0.0) != rising) path_.reverse();
    d_.begin = why;
    push(pair_, true);
    return true;
}

bool TieLineTracer::test(PairSolver const& pair, bool first) {
    result_ = test_pair(pair, stability_, first);
    return result_.stable;
}

void TieLineTracer::push(PairSolver& pair, bool stable) {
    PhaseState const &a = pair.a, &b = pair.b;
    TieLine q = tie_line(pair);
    q.stable = stable;
    if (!stable) ++d_.unstable;
    for (int k = 0; k < 2; ++k)
        if (!absent(a.x[k]) && !absent(b.x[k]))
            d_.dmu = std::max(d_.dmu, std::fabs(a.m[k] - b.m[k]));
    const double rounding = R * a.T * std::max(a.P_rounding(), b.P_rounding());
    d_.dp = std::max(d_.dp, std::max(0.0, std::fabs(a.p - b.p) - rounding) / q.p);
    if (Certificate c; o_.stability && pair.bound(c)) {
        q.value_error = c.value_error;
        q.x_error = c.x_error;
    }
    d_.points.push_back(q);
}

/// Between the two the mole fractions become equal: the state where they are.
void TieLineTracer::azeotrope(std::vector<double> const& from, std::vector<double> const& to) {
    const double f = Path::logit(from, 0) - Path::logit(from, 1),
                 g = Path::logit(to, 0) - Path::logit(to, 1);
    if (!(f * g < 0.0)) return;
    for (std::size_t i = 0; i < from.size(); ++i)
        azeotrope_.u[i] = (f * to[i] - g * from[i]) / (f - g);
    if (!azeotrope_.solve(15) || !path_.contains(azeotrope_.u)) return;
    push(azeotrope_, !o_.stability || test(azeotrope_, true));
    TieLine& q = d_.points.back();
    q.y = q.x;
    d_.azeotropes.push_back(q);
}

/// Beyond a bound of p or T: the last step is shortened to end there.
std::optional<DiagramEnd> TieLineTracer::bound() {
    Path::Node const &a = path_.before(), &b = path_.now();
    double to = b.ln_p, limit = std::log(o_.p_max);
    DiagramEnd why = DiagramEnd::limit;
    if (!constant_.at_T) {
        to = b.u.back();
        if (to < a.u.back()) why = DiagramEnd::coldest;
        limit = std::log(why == DiagramEnd::coldest ? T_min_ : T_max_);
    }
    if (why == DiagramEnd::coldest ? to > limit : to < limit) return {};
    if (!path_.stop_at({!constant_.at_T, std::exp(limit)}))
        return DiagramEnd::stuck;
    return why;
}

/// The critical point that the curve runs into: extrapolated, then solved.
DiagramEnd TieLineTracer::critical() {
    std::vector<double> u;
    std::vector<std::vector<double>> approach;
    const bool close = path_.critical(u, &approach);
    for (std::vector<double> const& v : approach) {
        Path::Node node;
        if (!path_.evaluate(v, node)) continue;
        path_.set_before(path_.now());
        path_.set_now(node);
        stable_ = !o_.stability || test(pair_, true);
        if (cut_ && !stable_) return end_at_three_phases();
        push(pair_, stable_);
    }
    pair_.u = u;
    if (!pair_.evaluate()) return DiagramEnd::stuck;
    TieLine q = tie_line(pair_);
    q.stable = stable_;
    bool solved = false;
    // At constant T directly; at constant p by Newton's method in ln T.
    CriticalConditions c(fluid_);
    CriticalConditions::Variables y{std::log(q.rho_x), std::log(q.T), q.x, 1.0 - q.x};
    const CriticalConditions::Variables row{0.0, 1.0, 0.0, 0.0};
    double lnT = y[1], last_T = 0.0, last_p = 0.0;
    for (int it = 0; it < 8 && c.solve(y, 3, &row, lnT, 10); ++it) {
        const double off = constant_.at_T ? 0.0 : std::log(c.s.p / constant_.value);
        if (std::fabs(off) < 1e-10) {
            solved = std::fabs(y[2] - q.x) < (close ? kCritical : 30 * kCritical);
            if (!solved) break;
            q = {c.s.T, c.s.p, y[2], y[2], c.s.rho, c.s.rho, stable_};
            using Kept = CriticalConditions::Kept;
            if (const auto e = c.errors(y, 3, constant_.at_T ? Kept::T : Kept::p)) {
                q.value_error = (constant_.at_T ? e->p : e->T) + std::fabs(off);
                q.x_error = e->x;
            }
            break;
        }
        const double slope = it > 0 ? (off - last_p) / (lnT - last_T) : 7.0;
        last_T = lnT;
        last_p = off;
        lnT -= off / slope;
    }
    if (!solved && !close) return DiagramEnd::stuck;
    d_.points.push_back(q);
    return DiagramEnd::critical;
}

/// Newton for three phases: those of pair_ and the trial phase of the last test.
bool TieLineTracer::solve_three() {
    TrialPhase const& trial = result_.trial;
    if (trial.w.size() != 2 || !(trial.rho > 0.0)) return false;
    for (int i = 0; i < 4; ++i) solver3_.u[i] = pair_.u[i];
    solver3_.u.back() = pair_.u.back();
    solver3_.start(2, trial.w, trial.rho);
    if (!solver3_.solve(15) || solver3_.trivial()) return false;
    std::vector<double> const& u = solver3_.u;
    // The pair that the curve has there: a long step may have passed from one pair to another.
    std::vector<double> const& from = path_.before().u;
    double nearest = 1e300;
    for (auto [j, k] : {std::pair{0, 1}, {0, 2}, {2, 1}}) {
        const std::vector<double> v{u[2 * j], u[2 * j + 1], u[2 * k], u[2 * k + 1], u[6]};
        double off = 0.0;
        for (int i = 0; i < 5; ++i) off += std::fabs(v[i] - from[i]);
        if (off < nearest && path_.contains(v)) nearest = off, end_ = v;
    }
    if (nearest > 1e299) return false;
    double tpd = 0.0;
    test_phases(solver3_, stability_, tpd);
    three_ = three_phase_point(solver3_, tpd, o_.validity);
    return three_->certificate.holds();
}

/// before() is stable, now() is not: the three phases in between become now().
bool TieLineTracer::cut() {
    for (int it = 0; it < 40; ++it) {
        if (!test(pair_, false) || it == 0) {
            if (solve_three()) {
                Path::Node node;
                if (!path_.evaluate(end_, node)) return false;
                path_.set_now(node);
                rising_ = (constant_.at_T ? node.ln_p_t : node.t.back()) > 0.0;
                PhaseRecord const& vapour = three_->phases.back();
                const bool has = std::min(std::fabs(pair_.a.x[0] - vapour.x[0]) +
                                              std::fabs(pair_.a.rho - vapour.rho),
                                          std::fabs(pair_.b.x[0] - vapour.x[0]) +
                                              std::fabs(pair_.b.rho - vapour.rho)) < 1e-7;
                if (!kind) kind = has ? PhasePair::vapour_liquid : PhasePair::liquid_liquid;
                return true;
            }
        }
        Path::Node middle;
        if (!path_.between(0.5, middle)) return false;
        if (test(pair_, true))
            path_.set_before(middle);
        else
            path_.set_now(middle);
        // The trial phase is looked for on the unstable side.
        if (!path_.evaluate(std::vector<double>(path_.now().u), middle)) return false;
    }
    return false;
}

DiagramEnd TieLineTracer::end_at_three_phases() {
    const std::vector<double> from = path_.before().u;
    if (!cut()) return DiagramEnd::stuck;
    azeotrope(from, path_.now().u);
    push(pair_, true);
    return DiagramEnd::three_phase;
}

Trial TieLineTracer::attempt(double& length, CurveEnd& end) {
    while (true) {
        const Trial trial = path_.attempt(length, end);
        if (trial != Trial::ended) return trial;
        end = critical();
        if (end != DiagramEnd::stuck || !path_.narrow()) return trial;
    }
}

CurveEnd TieLineTracer::lost() {
    if (path_.lost() == CurveEnd::stuck) return CurveEnd::stuck;
    const CurveEnd why = critical();
    return why == CurveEnd::stuck && path_.narrow() ? critical() : why;
}

std::optional<CurveEnd> TieLineTracer::arrive() {
    const std::optional<DiagramEnd> why = bound();
    if (why == DiagramEnd::stuck) return why;
    stable_ = !o_.stability || test(pair_, true);
    const std::vector<double> from = path_.before().u;
    if (cut_ && !stable_) return end_at_three_phases();
    azeotrope(from, path_.now().u);
    push(pair_, stable_);
    if (why) return why;
    if (at_pure()) return DiagramEnd::pure;
    return {};
}

/// Next to a pure component that is being approached: its saturation, as the last point.
bool TieLineTracer::at_pure() {
    const TieLine q = d_.points.back();
    for (int component : {0, 1}) {
        const double trace = component == 0 ? std::max(1 - q.x, 1 - q.y) : std::max(q.x, q.y);
        const double away = component == 0 ? -1.0 : 1.0;
        if (trace > kTrace || Path::logit(path_.now().t, 0) * away > 0.0) continue;
        TieLine end;
        if (!pure_point(fluid_, component, constant_, end, &q)) continue;
        if ((q.rho_x < q.rho_y) != (end.rho_x < end.rho_y)) std::swap(end.rho_x, end.rho_y);
        d_.points.push_back(end);
        pure_ = component;
        return true;
    }
    return false;
}

Diagram TieLineTracer::run(int before) {
    DiagramEnd why = DiagramEnd::stuck;
    survives([&] {
        why = continuation(*this, path_.step, o_.points, o_.progress, before);
        return true;
    });
    return finish(why);
}

Diagram TieLineTracer::finish(DiagramEnd why) {
    d_.end = why;
    if (!kind && why == DiagramEnd::pure) kind = PhasePair::vapour_liquid;
    if (!kind) {
        const double Tc = std::min(fluid_.pure(0).Tcrit(), fluid_.pure(1).Tcrit());
        kind = d_.points.front().T < Tc ? PhasePair::liquid_liquid : PhasePair::fluid_fluid;
    }
    d_.kind = *kind;
    d_.evaluations = fluid_.evaluations - evaluations_;
    return std::move(d_);
}

}  // namespace corvane
