#include <corvane/phases/binary/binary.h>
#include <corvane/phases/binary/binary_diagram.h>
#include <corvane/phases/binary/three_phase.h>
#include <corvane/phases/binary/three_phase_point.h>
#include <corvane/phases/report/words.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kNewton = 30;
using Kind = EquilibriumFailure::Kind;

ThreePhasePoint find(ModelN const& model, bool at_T, double value, ThreePhaseOptions const& o) {
    check_binary(model, value);
    const char* name = at_T ? "three_phase_T" : "three_phase_p";
    const std::string state = T_or_p(at_T, value);
    if (!o.start) {
        DiagramOptions d;
        d.p_max = o.p_max;
        const BinaryDiagram all =
            at_T ? complete_pxy(model, value, d) : complete_Txy(model, value, d);
        if (all.three_phase.empty())
            throw EquilibriumFailure(all.complete() ? Kind::no_solution : Kind::gave_up, state,
                                     name, 0, std::nan(""),
                                     all.complete() ? "no third phase along the stable curves"
                                                    : "the diagram is not complete: give a start");
        auto less = [&](ThreePhasePoint const& a, ThreePhasePoint const& b) {
            return at_T ? a.p < b.p : a.T < b.T;
        };
        ThreePhasePoint q = *std::min_element(all.three_phase.begin(), all.three_phase.end(), less);
        q.certificate.evaluations = all.evaluations;
        q.certificate.flag(o.validity, q.T, q.p, q.phases[0].x);
        return q;
    }
    const FluidModel fluid(model, equal_parts());
    CoexistenceSolver solver(fluid, 3);
    solver.hold({at_T, value});
    if (!start_three(solver, *o.start)) throw ThException(th_out_of_range);
    auto fail = [&](double residual, char const* advice) {
        throw EquilibriumFailure(Kind::gave_up, state, name, solver.iterations, residual, advice);
    };
    if (!solver.solve(kNewton)) fail(solver.residual, "give a nearer start, or none");
    if (solver.trivial())
        fail(solver.residual, "two phases became one: give a nearer start, or none");
    Stability stability(fluid);
    double tpd = 0.0;
    test_phases(solver, stability, tpd);
    ThreePhasePoint q = three_phase_point(solver, tpd, o.validity);
    q.certificate.evaluations = fluid.evaluations;
    if (q.certificate.tpd < -Certificate::tpd_tolerance)
        fail(q.certificate.tpd, "not stable: a fourth phase");
    if (!q.certificate.holds())
        fail(std::max(q.certificate.dmu, q.certificate.dp),
             "the solution misses its tolerances: model without exact derivatives?");
    return q;
}
}  // namespace

ThreePhasePoint three_phase_point(CoexistenceSolver const& s, double tpd,
                                  Validity const* validity) {
    ThreePhasePoint q;
    q.T = s.phase[0].T;
    q.p = s.p.value_or(s.pressure());
    std::vector<PhaseState const*> order;
    for (PhaseState const& phase : s.phase) order.push_back(&phase);
    std::sort(order.begin(), order.end(), [&](PhaseState const* a, PhaseState const* b) {
        return s.fluid.mass_density(*a) > s.fluid.mass_density(*b);
    });
    certify(s.fluid, q.p, order, q.certificate);
    q.phases = q.certificate.phases;
    q.certificate.tpd = tpd;
    q.certificate.evaluations = s.fluid.evaluations;
    q.certificate.flag(validity, q.T, q.p, q.phases[0].x);
    return q;
}

bool start_three(CoexistenceSolver& solver, ThreePhasePoint const& start) {
    if (start.phases.size() != 3 || !(start.T > 0.0)) return false;
    for (int k = 0; k < 3; ++k) {
        PhaseRecord const& q = start.phases[static_cast<std::size_t>(k)];
        if (q.x.size() != 2 || !(q.x[0] > 0.0) || !(q.x[1] > 0.0) || !(q.rho > 0.0)) return false;
        solver.start(k, {q.x[0], q.x[1]}, q.rho);
    }
    solver.u.back() = std::log(start.T);
    return true;
}

ThreePhasePoint three_phase_T(ModelN const& binary, double T, ThreePhaseOptions const& options) {
    return find(binary, true, T, options);
}
ThreePhasePoint three_phase_p(ModelN const& binary, double p, ThreePhaseOptions const& options) {
    return find(binary, false, p, options);
}

}  // namespace corvane
