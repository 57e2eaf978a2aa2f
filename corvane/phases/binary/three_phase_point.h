// From a solution of the three-phase equations to a certified result. Internal to the library.
#pragma once

#include <corvane/phases/binary/three_phase.h>
#include <corvane/phases/coexistence/coexistence.h>
#include <corvane/phases/stability/test_phases.h>

namespace corvane::inline detail {

/// The converged state with its certificate.
ThreePhasePoint three_phase_point(CoexistenceSolver& solver, double tpd, Validity const* validity);

/// Bounds of the errors of the solution; none where two phases are one, at critical ends of lines.
inline void state_bounds(CoexistenceSolver& solver, Certificate& c) {
    if (!solver.trivial()) solver.bound(c);
}

/// Start values from three phases. False if they are not three of two components each.
bool start_three(CoexistenceSolver& solver, ThreePhasePoint const& start);

}  // namespace corvane::inline detail
