// Three fluid phases of a binary.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/report/progress.h>

#include <vector>

class ModelN;

namespace corvane {

struct ThreePhasePoint {
    double T = 0.0, p = 0.0;          ///< K, MPa
    std::vector<PhaseRecord> phases;  ///< three, by decreasing mass density
    Certificate certificate;
};

struct ThreePhaseOptions {
    /// Three phases near the solution, in any order, with their T: from another solver, or the
    /// state at a neighbouring T or p. Without a start the whole diagram at T or p is traced.
    ThreePhasePoint const* start = nullptr;
    Validity const* validity = nullptr;  ///< for the flags of the certificate
    double p_max = 1000.0;               ///< MPa: bound of the search
};

/// The state of three phases of a binary at T [K]; p is found. With several, that of lowest p.
///
/// Newton's method with exact derivatives in ln rho_i of the three phases and ln T
/// (CoexistenceSolver). Start values come from the tangent-plane test along the stable two-phase
/// curves (complete_pxy): where one ceases to be stable there are three phases.
/// @throws EquilibriumFailure no_solution: the diagram is complete and has none; gave_up otherwise,
///     or if the start leads to no certified state; ThException 4 not a binary, 5; what the model
///     throws
CORVANE_API ThreePhasePoint three_phase_T(ModelN const& binary, double T,
                                          ThreePhaseOptions const& options = {});
/// The same at p [MPa]; T is found. With several, that of lowest T.
CORVANE_API ThreePhasePoint three_phase_p(ModelN const& binary, double p,
                                          ThreePhaseOptions const& options = {});

}  // namespace corvane
