#include <corvane/mixture/modeln.h>
#include <corvane/phases/binary/critical_end_point.h>
#include <corvane/phases/binary/line.h>
#include <corvane/phases/binary/three_phase_point.h>
#include <corvane/phases/critical/critical_certificate.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kTrace = 1e-4;  // below it a mole fraction is at its end
constexpr double kPure = 1e-11;  // where that end is solved

double coldest(ModelN const& m, PhaseLineOptions const& o) {
    return o.T_min > 0.0 ? o.T_min : 0.3 * std::min(m.mdl1[0]->Tcrit(), m.mdl1[1]->Tcrit());
}
}  // namespace

void detail::search_lines(ModelN const& binary, PhaseLineOptions const& o,
                  std::function<bool(BinaryDiagram const&)> const& visit) {
    const double Tc[] = {binary.mdl1[0]->Tcrit(), binary.mdl1[1]->Tcrit()};
    const double low = coldest(binary, o);
    // A line is met if it spans one of the temperatures. Short ones end at two critical end points
    // or begin close to a component's critical point, as where the light one of a pair with limited
    // miscibility ends: there the temperatures are closer.
    std::vector<double> all;
    for (double T = std::max(Tc[0], Tc[1]); T > low; T *= 0.94) all.push_back(T);
    for (double T : Tc)
        for (double close : {0.97, 0.99, 0.998, 1.005})
            if (close * T > low) all.push_back(close * T);
    std::sort(all.begin(), all.end());
    DiagramOptions d;
    d.p_max = o.p_max;
    bool interrupted = false;
    if (o.progress) d.progress = [&](int) { return !(interrupted = !o.progress(0)); };
    for (double T : all)
        if (!visit(complete_pxy(binary, T, d)) || interrupted) return;
}

LineTracer::LineTracer(FluidModel const& fluid, int phases, std::vector<double> const& also,
                       PhaseLineOptions const& o)
    : solver(fluid, phases),
      fluid_(fluid),
      o_(o),
      T_min_(coldest(fluid.model(), o)),
      path_(solver, o.step),
      stability_(fluid) {
    solver.also = also;
}

bool LineTracer::begin() {
    if (!path_.begin(path_.last_coordinate())) return false;
    start_ = path_.now().u;
    return settle(start_);
}

bool LineTracer::stable() {
    result_ = test_phases(solver, stability_, tpd);
    return result_.stable;
}

/// Puts the solver at u, which is a solution.
bool LineTracer::settle(std::vector<double> const& u) {
    solver.u = u;
    return solver.evaluate() && (stable(), true);
}

/// before() is stable, now() is not: where a further phase appears.
bool LineTracer::new_phase() {
    const int m = solver.count(), last = 2 * m;
    CoexistenceSolver more(fluid_, m + 1);
    if (!solver.also.empty()) {
        more.also = solver.also;
        more.also.resize(more.u.size(), 0.0);
    }
    for (int it = 0; it < 30; ++it) {
        if (TrialPhase const& w = result_.trial; w.w.size() == 2 && w.rho > 0.0) {
            std::copy(solver.u.begin(), solver.u.end() - 1, more.u.begin());
            more.start(m, w.w, w.rho);
            more.u.back() = solver.u[last];
            if (more.solve(15) && !more.trivial()) {
                std::vector<double> u(more.u.begin(), more.u.begin() + last);
                u.push_back(more.u.back());
                if (path_.contains(u)) return settle(u);
            }
        }
        Path::Node middle;
        if (!path_.between(0.5, middle)) return false;
        if (stable()) {
            path_.set_before(middle);
            settle(path_.now().u);
        } else {
            path_.set_now(middle);
        }
    }
    return false;
}

/// The azeotrope at a vanishing fraction of the other component.
PhaseLineEnd LineTracer::pure(int component) {
    const int k = 1 - component;  // the one that vanishes
    solver.row.assign(solver.u.size(), 0.0);
    solver.row[k] = 1.0;
    solver.row[1 - k] = -1.0;
    solver.value = std::log(kPure);
    const double shift = solver.value - (solver.u[k] - solver.u[1 - k]);
    solver.u[k] += shift;
    solver.u[2 + k] += shift;
    if (!solver.solve(20)) return PhaseLineEnd::stuck;
    stable();
    return PhaseLineEnd::pure;
}

/// The critical azeotrope: on the critical line where the direction of λ leaves the composition as
/// it is. Secant in x_0. False if it does not converge; u then stays.
bool LineTracer::critical_azeotrope(CriticalConditions& c, std::vector<double>& u) {
    const double r0 = std::exp(u[0]), r1 = std::exp(u[1]);
    CriticalConditions::Variables y{std::log(r0 + r1), u[4], r0 / (r0 + r1), r1 / (r0 + r1)};
    const CriticalConditions::Variables row{0.0, 0.0, 1.0, 0.0};
    double x = y[2], last_x = 0.0, last = 0.0;
    for (int it = 0; it < 12; ++it) {
        if (!(x > 0.0) || !(x < 1.0) || !c.solve(y, 3, &row, x, 15)) return false;
        const double off = c.u[0] * std::sqrt(y[3]) / (c.u[1] * std::sqrt(y[2])) - 1.0;
        const double step = it == 0 ? 1e-4 * x * (1.0 - x) : -off * (x - last_x) / (off - last);
        last_x = x;
        last = off;
        x += step;
        if (std::fabs(step) < 1e-9 * x * (1.0 - x)) break;
        if (!(std::fabs(step) < 0.05) || it == 11) return false;
    }
    for (int i = 0; i < 2; ++i) u[i] = u[2 + i] = std::log(c.s.rho_i[i]);
    u[4] = y[1];
    return true;
}

/// Two phases become alike: extrapolated; with three phases then solved.
bool LineTracer::critical() {
    std::vector<double> u;
    const bool close = path_.critical(u);
    CriticalConditions conditions(fluid_);
    // Where two phases are one, the margin of a critical point belongs to the test.
    auto settled = [&](PhaseState const& critical, PhaseState const* known) {
        if (!settle(u)) return false;
        PhaseState phase = critical;
        phase.p = solver.pressure();  // a liquid's own has its rounding
        CriticalCertifier certifier(fluid_, conditions);
        certifier.test(phase, known, false);
        tpd = certifier.result.stable ? std::min(0.0, certifier.result.tpd) : certifier.result.tpd;
        return true;
    };
    if (solver.count() == 2)
        return (critical_azeotrope(conditions, u) || close) && settled(solver.phase[0], nullptr);
    const int j = path_.alike_j(), k = path_.alike_k(), o = 3 - j - k;
    // Both are at their mean in u.
    const double c0 = std::exp(u[2 * j]), c1 = std::exp(u[2 * j + 1]), o0 = std::exp(u[2 * o]),
                 o1 = std::exp(u[2 * o + 1]);
    CriticalConditions::Variables y{std::log(c0 + c1), u[6], c0 / (c0 + c1), c1 / (c0 + c1)};
    CriticalEndPoint point(fluid_, conditions);
    if (!point.solve(y, o0 + o1, {o0 / (o0 + o1), o1 / (o0 + o1)})) return false;
    for (int i = 0; i < 2; ++i) {
        u[2 * j + i] = u[2 * k + i] = std::log(conditions.s.rho_i[i]);
        u[2 * o + i] = std::log(point.other.rho_i[i]);
    }
    u[6] = y[1];
    return settled(solver.phase[j], &solver.phase[o]);
}

/// The state in the solver as the last point.
PhaseLineEnd LineTracer::at_end(bool solved, PhaseLineEnd why) {
    if (!solved) return PhaseLineEnd::stuck;
    return record_() ? why : PhaseLineEnd::uncertified;
}

Trial LineTracer::attempt(double& length, CurveEnd& end) {
    while (true) {
        const Trial trial = path_.attempt(length, end);
        if (trial != Trial::ended) return trial;
        const bool solved = critical();
        if (!solved && path_.narrow()) continue;
        end = at_end(solved, PhaseLineEnd::critical);
        return trial;
    }
}

CurveEnd LineTracer::lost() {
    if (path_.lost() == CurveEnd::stuck) return CurveEnd::stuck;
    bool solved = critical();
    if (!solved && path_.narrow()) solved = critical();
    return at_end(solved, PhaseLineEnd::critical);
}

std::optional<CurveEnd> LineTracer::arrive() {
    Path::Node const& b = path_.now();
    if (b.u.back() < std::log(T_min_))
        return at_end(path_.stop_at({true, T_min_}) && (stable(), true), PhaseLineEnd::cold);
    if (b.ln_p > std::log(o_.p_max))
        return at_end(path_.stop_at({false, o_.p_max}) && (stable(), true),
                      PhaseLineEnd::pressure);
    if (!stable()) return at_end(new_phase(), PhaseLineEnd::three_phase);
    if (!record_()) return PhaseLineEnd::uncertified;
    if (path_.at_trace()) return PhaseLineEnd::dilute;
    if (solver.count() > 2) return {};
    for (int component : {0, 1}) {
        const double away = component == 0 ? -1.0 : 1.0;
        if (Path::logit(b.u, 0) * away > std::log(kTrace) || Path::logit(b.t, 0) * away > 0.0)
            continue;
        const PhaseLineEnd why = pure(component);
        return at_end(why == PhaseLineEnd::pure, why);
    }
    return {};
}

PhaseLineEnd LineTracer::run(bool hotter, std::function<bool()> const& record) {
    solver.u = start_;
    if (!path_.begin(path_.last_coordinate())) return PhaseLineEnd::stuck;
    if ((path_.now().t.back() > 0.0) != hotter) path_.reverse();
    record_ = record;
    return continuation(*this, path_.step, o_.points, o_.progress);
}

}  // namespace corvane
