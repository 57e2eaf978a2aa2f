// Azeotropes of binaries.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/binary/phase_line.h>
#include <corvane/phases/report/certificate.h>

#include <vector>

class ModelN;

namespace corvane {

struct AzeotropePoint {
    double T = 0.0, p = 0.0;  ///< K, MPa
    double x = 0.0;           ///< mole fraction of component 0 in both phases
    PhaseRecord dense, light;
    Certificate certificate;
};

struct AzeotropeOptions {
    AzeotropePoint const* start = nullptr;  ///< a neighbouring azeotrope
    Validity const* validity = nullptr;     ///< for the flags of the certificate
    double p_max = 1000.0;                  ///< MPa: bound of the search
};

/// The azeotrope of a binary at T [K]: two phases of the same composition.
///
/// Newton's method with exact derivatives in ln rho_i of both phases and ln T (CoexistenceSolver),
/// equal mole fractions being one of the equations. Without a start all stable two-phase curves at
/// T are traced (complete_pxy), and their azeotropes are the answer; of several the one of lowest
/// x.
/// @throws EquilibriumFailure no_solution: the diagram is complete and has none; gave_up otherwise,
///     or if the start leads to no certified state; ThException 4 not a binary, 5; what the model
///     throws
CORVANE_API AzeotropePoint azeotrope_T(ModelN const& binary, double T,
                                       AzeotropeOptions const& options = {});
/// The same at p [MPa]; T is found.
CORVANE_API AzeotropePoint azeotrope_p(ModelN const& binary, double p,
                                       AzeotropeOptions const& options = {});

struct AzeotropicLine {
    std::vector<AzeotropePoint> points;  ///< as it runs; the first is at lower T, mostly
    PhaseLineEnd begin = PhaseLineEnd::stuck, end = PhaseLineEnd::stuck;
};

/// The azeotropic line through a point, by continuation in both directions. Ends: at a pure
/// component; a critical azeotrope; where it meets the line of three phases; bounds.
/// @throws EquilibriumFailure gave_up: no azeotrope at start; ThException 4 not a binary
CORVANE_API AzeotropicLine azeotropic_line(ModelN const& binary, AzeotropePoint const& start,
                                           PhaseLineOptions const& options = {});

/// All azeotropic lines that cross one of the temperatures 6 % apart (and close below the critical
/// ones) from T_min to the higher critical temperature.
CORVANE_API std::vector<AzeotropicLine> azeotropic_lines(ModelN const& binary,
                                                         PhaseLineOptions const& options = {});

}  // namespace corvane
