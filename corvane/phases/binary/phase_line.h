// Options and ends that lines of three phases and of azeotropes share.
#pragma once

#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/progress.h>

namespace corvane {

struct Validity;

/// Why a line ends: critical (a critical end point: two phases become alike; they are equal there);
/// pure (an azeotrope reaches a pure component); three_phase (a further phase appears: an azeotrope
/// meets the line of three phases, as a heteroazeotrope it goes on; three phases become four);
/// pressure; cold; dilute (a mole fraction falls below 1e-200); uncertified (at very low p, by
/// rounding); full; interrupted; stuck.
using PhaseLineEnd = CurveEnd;

/// What the curves of a binary are asked for alike: diagrams, lines of three phases, azeotropes.
struct LineOptions {
    double step = 0.05;     ///< longest step in every mole fraction and in ln T, about
    double p_max = 1000.0;  ///< MPa
    double T_min = 0.0;     ///< K; 0: 0.3 of the lower critical temperature
    int points = 1000;      ///< bound of their number, of every line or branch
    bool stability = true;  ///< test every tie line of a diagram; lines are always tested
    Validity const* validity = nullptr;  ///< for the flags of the certificates
    Progress progress;
};
using PhaseLineOptions = LineOptions;

}  // namespace corvane
