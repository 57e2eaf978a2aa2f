// From a solution of the three-phase equations to a certified result. Internal to the library.
#pragma once

#include <corvane/phases/coexistence.h>
#include <corvane/phases/stability.h>
#include <corvane/phases/three_phase.h>

namespace corvane {

/// Tangent-plane test of converged phases: of the lightest, which runs into the others or finds a
/// further one. tpd: as in Certificate.
StabilityResult test_phases(CoexistenceSolver const& solver, Stability& stability, double& tpd);

/// The converged state with its certificate.
ThreePhasePoint three_phase_point(CoexistenceSolver const& solver, double tpd,
                                  Validity const* validity);

/// Start values from three phases. False if they are not three of two components each.
bool start_three(CoexistenceSolver& solver, ThreePhasePoint const& start);

}  // namespace corvane
