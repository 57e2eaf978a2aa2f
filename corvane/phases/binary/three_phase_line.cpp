#include <corvane/phases/binary/binary.h>
#include <corvane/phases/binary/line.h>
#include <corvane/phases/binary/three_phase_line.h>
#include <corvane/phases/binary/three_phase_point.h>
#include <corvane/phases/report/words.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
/// Without points if the start misses its certificate.
ThreePhaseLine trace(ModelN const& binary, ThreePhasePoint const& start,
                     PhaseLineOptions const& o) {
    check_binary(binary, start.T);
    check_options(o);
    const FluidModel fluid(binary, equal_parts());
    LineTracer tracer(fluid, 3, {}, o);
    if (!start_three(tracer.solver, start)) throw ThException(th_out_of_range);
    if (!tracer.begin() || tracer.tpd < -Certificate::tpd_tolerance)
        throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, T_or_p(true, start.T), "three_phase_line",
                                 tracer.solver.iterations, tracer.solver.residual,
                                 "no stable three phases next to the start");
    return trace_line<ThreePhaseLine>(
        tracer, [&] { return three_phase_point(tracer.solver, tracer.tpd, o.validity); });
}
}  // namespace

ThreePhaseLine three_phase_line(ModelN const& binary, ThreePhasePoint const& start,
                                PhaseLineOptions const& o) {
    ThreePhaseLine line = trace(binary, start, o);
    if (line.points.empty()) fail_uncertified(start.T, "three_phase_line");
    return line;
}

std::vector<ThreePhaseLine> three_phase_lines(ModelN const& binary, PhaseLineOptions const& o) {
    check_binary(binary, 1.0);
    check_options(o);
    std::vector<ThreePhaseLine> lines;
    search_lines(binary, o, [&](BinaryDiagram const& d) {
        auto x = [](ThreePhasePoint const& q) { return q.phases[2].x[0]; };
        for (ThreePhasePoint const& q : d.three_phase) {
            if (std::any_of(lines.begin(), lines.end(), [&](ThreePhaseLine const& line) {
                    return passes(line.points, q.T, q.p, x(q), x);
                }))
                continue;
            ThreePhaseLine line = trace(binary, q, o);
            const bool interrupted = line.end == PhaseLineEnd::interrupted;
            if (!line.points.empty()) lines.push_back(std::move(line));
            if (interrupted) return false;
        }
        return true;
    });
    return lines;
}

}  // namespace corvane
