// Options and ends that lines of three phases and of azeotropes share.
#pragma once

#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/line_options.h>

namespace corvane {

/// Why a line ends: critical (a critical end point: two phases become alike; they are equal there);
/// pure (an azeotrope reaches a pure component); three_phase (a further phase appears: an azeotrope
/// meets the line of three phases, as a heteroazeotrope it goes on; three phases become four);
/// pressure; cold; dilute (a mole fraction falls below 1e-200); uncertified (at very low p, by
/// rounding); full; interrupted; stuck.
using PhaseLineEnd = CurveEnd;

/// A step is the longest in every mole fraction and in ln T, about.
using PhaseLineOptions = LineOptions;

}  // namespace corvane
