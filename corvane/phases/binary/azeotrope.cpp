#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/binary_diagram.h>
#include <corvane/phases/binary/line.h>
#include <corvane/phases/binary/three_phase_point.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace corvane {
namespace {
const std::vector<double> kEqual{1, -1, -1, 1, 0};  // logits of both phases

AzeotropePoint azeotrope_point(CoexistenceSolver& s, double tpd, Validity const* validity) {
    AzeotropePoint q;
    PhaseState const *a = &s.phase[0], *b = &s.phase[1];
    if (a->rho < b->rho) std::swap(a, b);
    q.T = a->T;
    q.p = s.p.value_or(s.pressure());
    q.x = a->x[0];
    certify(s.fluid, q.p, {a, b}, q.certificate);
    q.dense = q.certificate.phases[0];
    q.light = q.certificate.phases[1];
    state_bounds(s, q.certificate);
    q.certificate.tpd = tpd;
    q.certificate.evaluations = s.fluid.evaluations;
    q.certificate.flag(validity, q.T, q.p, q.dense.x);
    return q;
}

bool start_at(CoexistenceSolver& s, AzeotropePoint const& q) {
    if (!(q.x > 0.0) || !(q.x < 1.0) || !(q.T > 0.0) || !(q.dense.rho > 0.0) ||
        !(q.light.rho > 0.0))
        return false;
    s.start(0, {q.x, 1 - q.x}, q.dense.rho);
    s.start(1, {q.x, 1 - q.x}, q.light.rho);
    s.u.back() = std::log(q.T);
    return true;
}

AzeotropePoint of_tie_line(TieLine const& t) {
    AzeotropePoint q;
    q.T = t.T;
    q.p = t.p;
    q.x = t.x;
    q.dense.rho = std::max(t.rho_x, t.rho_y);
    q.light.rho = std::min(t.rho_x, t.rho_y);
    return q;
}

AzeotropePoint find(ModelN const& model, Fixed held, AzeotropeOptions const& o) {
    char const* const name = held.at_T ? "azeotrope_T" : "azeotrope_p";
    check_binary(model, held.value);
    AzeotropePoint start;
    long evaluations = 0;
    if (o.start) {
        start = *o.start;
    } else {
        const BinaryDiagram all = complete_diagram(model, held, o.p_max);
        TieLine const* first = nullptr;
        for (Diagram const& b : all.branches)
            for (TieLine const& t : b.azeotropes)
                if (!first || t.x < first->x) first = &t;
        if (!first) fail_none(all, held, name, "none on the stable curves");
        start = of_tie_line(*first);
        evaluations = all.evaluations;
    }
    const FluidModel fluid(model, equal_parts());
    CoexistenceSolver solver(fluid, 2);
    solver.also = kEqual;
    solver.hold(held);
    if (!start_at(solver, start)) throw ThException(th_out_of_range);
    AzeotropePoint q =
        point_from(solver, held, name, "the phases became one: give a nearer start, or none",
                   "not stable: a third phase", [&](CoexistenceSolver& s, double tpd) {
                       return azeotrope_point(s, tpd, o.validity);
                   });
    q.certificate.evaluations += evaluations;
    return q;
}
}  // namespace

AzeotropePoint azeotrope_T(ModelN const& binary, double T, AzeotropeOptions const& options) {
    return find(binary, {true, T}, options);
}
AzeotropePoint azeotrope_p(ModelN const& binary, double p, AzeotropeOptions const& options) {
    return find(binary, {false, p}, options);
}

namespace {
constexpr char kLine[] = "azeotropic_line";

/// Without points if the start misses its certificate.
AzeotropicLine trace(ModelN const& binary, AzeotropePoint const& start, PhaseLineOptions const& o) {
    return line_from<AzeotropicLine>(
        binary, start.T, 2, kEqual, o, kLine, "no stable azeotrope next to the start",
        [&](CoexistenceSolver& s) { return start_at(s, start); }, azeotrope_point);
}
}  // namespace

AzeotropicLine azeotropic_line(ModelN const& binary, AzeotropePoint const& start,
                               PhaseLineOptions const& o) {
    AzeotropicLine line = trace(binary, start, o);
    if (line.points.empty())
        fail_start({true, start.T}, kLine, 0, std::nan(""), "the start misses its certificate");
    return line;
}

std::vector<AzeotropicLine> azeotropic_lines(ModelN const& binary, PhaseLineOptions const& o) {
    check_binary(binary, 1.0);
    check_options(o);
    std::vector<AzeotropicLine> lines;
    search_lines(binary, o, [&](BinaryDiagram const& d) {
        auto x = [](AzeotropePoint const& q) { return q.x; };
        for (Diagram const& b : d.branches)
            for (TieLine const& t : b.azeotropes)
                if (!add_line(lines, t.T, t.p, t.x, x,
                              [&] { return trace(binary, of_tie_line(t), o); }))
                    return false;
        return true;
    });
    return lines;
}

}  // namespace corvane
