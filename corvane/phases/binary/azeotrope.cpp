#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/binary_diagram.h>
#include <corvane/phases/binary/line.h>
#include <corvane/phases/binary/three_phase_point.h>
#include <corvane/phases/report/words.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace corvane {
namespace {
using Kind = EquilibriumFailure::Kind;
constexpr int kNewton = 30;
const std::vector<double> kEqual{1, -1, -1, 1, 0};  // logits of both phases

AzeotropePoint azeotrope_point(CoexistenceSolver const& s, double tpd, Validity const* validity) {
    AzeotropePoint q;
    PhaseState const *a = &s.phase[0], *b = &s.phase[1];
    if (a->rho < b->rho) std::swap(a, b);
    q.T = a->T;
    q.p = s.p.value_or(s.pressure());
    q.x = a->x[0];
    certify(s.fluid, q.p, {a, b}, q.certificate);
    q.dense = q.certificate.phases[0];
    q.light = q.certificate.phases[1];
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

AzeotropePoint find(ModelN const& model, bool at_T, double value, AzeotropeOptions const& o) {
    const std::string name = at_T ? "azeotrope_T" : "azeotrope_p";
    const std::string state = T_or_p(at_T, value);
    check_binary(model, value);
    AzeotropePoint start;
    long evaluations = 0;
    if (o.start) {
        start = *o.start;
    } else {
        DiagramOptions d;
        d.p_max = o.p_max;
        const BinaryDiagram all =
            at_T ? complete_pxy(model, value, d) : complete_Txy(model, value, d);
        TieLine const* first = nullptr;
        for (Diagram const& b : all.branches)
            for (TieLine const& t : b.azeotropes)
                if (!first || t.x < first->x) first = &t;
        if (!first)
            throw EquilibriumFailure(all.complete() ? Kind::no_solution : Kind::gave_up, state,
                                     name, 0, std::nan(""),
                                     all.complete() ? "none on the stable curves"
                                                    : "the diagram is not complete: give a start");
        start = of_tie_line(*first);
        evaluations = all.evaluations;
    }
    const FluidModel fluid(model, equal_parts());
    CoexistenceSolver s(fluid, 2);
    s.also = kEqual;
    s.hold({at_T, value});
    if (!start_at(s, start)) throw ThException(th_out_of_range);
    auto fail = [&](double residual, char const* advice) {
        throw EquilibriumFailure(Kind::gave_up, state, name, s.iterations, residual, advice);
    };
    if (!s.solve(kNewton)) fail(s.residual, "give a nearer start, or none");
    if (s.trivial())
        fail(s.residual, "the phases became one: give a nearer start, or none");
    Stability stability(fluid);
    double tpd = 0.0;
    test_phases(s, stability, tpd);
    AzeotropePoint q = azeotrope_point(s, tpd, o.validity);
    q.certificate.evaluations += evaluations;
    if (tpd < -Certificate::tpd_tolerance) fail(tpd, "not stable: a third phase");
    if (!q.certificate.holds())
        fail(std::max(q.certificate.dmu, q.certificate.dp),
             "the solution misses its tolerances: model without exact derivatives?");
    return q;
}

}  // namespace

AzeotropePoint azeotrope_T(ModelN const& binary, double T, AzeotropeOptions const& options) {
    return find(binary, true, T, options);
}
AzeotropePoint azeotrope_p(ModelN const& binary, double p, AzeotropeOptions const& options) {
    return find(binary, false, p, options);
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
        fail_start(start.T, kLine, 0, std::nan(""), "the start misses its certificate");
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
