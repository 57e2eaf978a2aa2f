// The tangent-plane test of phases in equilibrium. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/coexistence.h>
#include <corvane/phases/stability/stability.h>

namespace corvane::inline detail {

/// Tangent-plane test of converged phases: of the softest, which runs into the others or finds a
/// further one. tpd: as in Certificate.
StabilityResult test_phases(CoexistenceSolver const& solver, Stability& stability, double& tpd);

/// Of two phases of a binary: the tangent plane of both, from which one may lack what the other has.
StabilityResult test_pair(CoexistenceSolver const& pair, Stability& stability, bool first);

}  // namespace corvane::inline detail
