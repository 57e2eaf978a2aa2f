#include <corvane/phases/binary/line.h>
#include <corvane/phases/binary/three_phase.h>
#include <corvane/phases/binary/three_phase_point.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
ThreePhasePoint find(ModelN const& model, Fixed held, ThreePhaseOptions const& o) {
    check_binary(model, held.value);
    char const* const name = held.at_T ? "three_phase_T" : "three_phase_p";
    if (!o.start) {
        const BinaryDiagram all = complete_diagram(model, held, o.p_max);
        if (all.three_phase.empty())
            fail_none(all, held, name, "no third phase along the stable curves");
        auto less = [&](ThreePhasePoint const& a, ThreePhasePoint const& b) {
            return held.at_T ? a.p < b.p : a.T < b.T;
        };
        ThreePhasePoint q = *std::min_element(all.three_phase.begin(), all.three_phase.end(), less);
        q.certificate.evaluations = all.evaluations;
        q.certificate.flag(o.validity, q.T, q.p, q.phases[0].x);
        return q;
    }
    const FluidModel fluid(model, equal_parts());
    CoexistenceSolver solver(fluid, 3);
    solver.hold(held);
    if (!start_three(solver, *o.start)) throw ThException(th_out_of_range);
    return point_from(solver, held, name, "two phases became one: give a nearer start, or none",
                      "not stable: a fourth phase", [&](CoexistenceSolver& s, double tpd) {
                          return three_phase_point(s, tpd, o.validity);
                      });
}
}  // namespace

ThreePhasePoint detail::three_phase_point(CoexistenceSolver& s, double tpd,
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
    state_bounds(s, q.certificate);
    q.certificate.tpd = tpd;
    q.certificate.evaluations = s.fluid.evaluations;
    q.certificate.flag(validity, q.T, q.p, q.phases[0].x);
    return q;
}

bool detail::start_three(CoexistenceSolver& solver, ThreePhasePoint const& start) {
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
    return find(binary, {true, T}, options);
}
ThreePhasePoint three_phase_p(ModelN const& binary, double p, ThreePhaseOptions const& options) {
    return find(binary, {false, p}, options);
}

}  // namespace corvane
