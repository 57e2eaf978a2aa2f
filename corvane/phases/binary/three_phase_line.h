// The lines of three fluid phases of a binary.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/binary/phase_line.h>
#include <corvane/phases/binary/three_phase.h>

#include <vector>

class ModelN;

namespace corvane {

struct ThreePhaseLine {
    /// By rising T. At a critical end point two of the phases are the same.
    std::vector<ThreePhasePoint> points;
    PhaseLineEnd begin = PhaseLineEnd::stuck, end = PhaseLineEnd::stuck;
};

/// The line of three phases through a point, by continuation in both directions of T. Ends: at
/// critical end points, extrapolated to the sixth power of the distance between the phases; where a
/// fourth phase is more stable; bounds. All points are certified.
/// @throws EquilibriumFailure gave_up: no three phases at start; ThException 4 not a binary, 5
CORVANE_API ThreePhaseLine three_phase_line(ModelN const& binary, ThreePhasePoint const& start,
                                            PhaseLineOptions const& options = {});

/// All lines of three phases that cross one of the temperatures 6 % apart (and close below the
/// critical ones) from T_min to the higher critical temperature, at which complete_pxy looks for
/// them. Empty: none was found.
CORVANE_API std::vector<ThreePhaseLine> three_phase_lines(ModelN const& binary,
                                                          PhaseLineOptions const& options = {});

}  // namespace corvane
