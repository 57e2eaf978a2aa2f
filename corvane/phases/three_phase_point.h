// From a solution of the three-phase equations to a certified result. Internal to the library.
#pragma once

#include <corvane/phases/coexistence.h>
#include <corvane/phases/stability.h>
#include <corvane/phases/three_phase.h>

namespace corvane {

/// solver: converged. The tangent-plane test of the lightest phase runs into both others, or finds
/// a fourth.
ThreePhasePoint three_phase_point(CoexistenceSolver const& solver, Stability& stability,
                                  Validity const* validity);

/// Start values from three phases. False if they are not three of two components each.
bool start_three(CoexistenceSolver& solver, ThreePhasePoint const& start);

}  // namespace corvane
