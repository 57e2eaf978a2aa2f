#include <corvane/phases/binary/line.h>
#include <corvane/phases/binary/three_phase_line.h>
#include <corvane/phases/binary/three_phase_point.h>

#include <cmath>

namespace corvane {
namespace {
constexpr char kName[] = "three_phase_line";

/// Without points if the start misses its certificate.
ThreePhaseLine trace(ModelN const& binary, ThreePhasePoint const& start,
                     PhaseLineOptions const& o) {
    return line_from<ThreePhaseLine>(
        binary, start.T, 3, {}, o, kName, "no stable three phases next to the start",
        [&](CoexistenceSolver& s) { return start_three(s, start); }, three_phase_point);
}
}  // namespace

ThreePhaseLine three_phase_line(ModelN const& binary, ThreePhasePoint const& start,
                                PhaseLineOptions const& o) {
    ThreePhaseLine line = trace(binary, start, o);
    if (line.points.empty())
        fail_start({true, start.T}, kName, 0, std::nan(""), "the start misses its certificate");
    return line;
}

std::vector<ThreePhaseLine> three_phase_lines(ModelN const& binary, PhaseLineOptions const& o) {
    check_binary(binary, 1.0);
    check_options(o);
    std::vector<ThreePhaseLine> lines;
    search_lines(binary, o, [&](BinaryDiagram const& d) {
        auto x = [](ThreePhasePoint const& q) { return q.phases[2].x[0]; };
        for (ThreePhasePoint const& q : d.three_phase)
            if (!add_line(lines, q.T, q.p, x(q), x, [&] { return trace(binary, q, o); }))
                return false;
        return true;
    });
    return lines;
}

}  // namespace corvane
