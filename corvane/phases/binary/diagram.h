// p-x-y and T-x-y diagrams of binaries.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/binary/phase_line.h>
#include <corvane/phases/report/certificate.h>

class ModelN;

namespace corvane {

struct TieLine {
    double T = 0.0, p = 0.0;          ///< K, MPa
    double x = 0.0, y = 0.0;          ///< mole fraction of component 0 in the phases a and b
    double rho_x = 0.0, rho_y = 0.0;  ///< mol/cm³; at the start a is the liquid
    bool stable = true;               ///< false: the tangent-plane test finds a third phase
    /// With DiagramOptions::stability, and of critical points and pure components always: bounds as in
    /// Certificate, of p or T (relative) and of x and y of a tie line that the true curve has;
    /// not-a-number where unknown.
    double value_error = Certificate::unknown, x_error = Certificate::unknown;
};

/// Where a branch begins or ends, and why: pure (its saturation point is the last point, x = y = 0
/// or 1; a branch whose component's saturation is out of bounds begins on the bound); critical;
/// three_phase (complete_*); pressure (p_max, or T above twice the higher critical temperature;
/// exactly there); cold (T_min, exactly there); full; interrupted; stuck. A mole fraction below 1e-280
/// is given as 0, or 1, and the branch goes on.
using DiagramEnd = CurveEnd;

/// What the two phases of a branch are. Fluids where no vapour can be told from a liquid: neither
/// end leads to a pure component or to a vapour of three phases, and T exceeds a critical one.
enum class PhasePair { vapour_liquid, liquid_liquid, fluid_fluid };

struct Diagram {
    std::vector<TieLine> points;
    DiagramEnd begin = DiagramEnd::pure, end = DiagramEnd::stuck;
    PhasePair kind = PhasePair::vapour_liquid;
    std::vector<TieLine> azeotropes;  ///< exact, x = y; they are among the points, too
    double dmu = 0.0, dp = 0.0;       ///< largest of all points, see Certificate
    int unstable = 0;  ///< points at which the tangent-plane test finds a third phase
    long evaluations = 0;
};

/// A step is the longest in both mole fractions and in ln T or ln p, about.
struct DiagramOptions : LineOptions {
    bool stability = true;  ///< test every tie line, and bound its errors
};

/// Isothermal (p-x-y) diagram at T [K], from the saturation of a pure component on: of the one with
/// the higher critical temperature where it is below that, else of the other.
///
/// Continuation of the two-phase equations in the logits of both mole fractions and the ratios of
/// the partial densities between the phases, the one that changes most; azeotropes and extrema of p
/// are passed. One curve, also through stretches that are not stable, which are marked: see
/// complete_pxy for all that is stable.
/// @throws EquilibriumFailure no_solution: T above both critical temperatures; gave_up: no start;
///     ThException 4 not a binary; 5 T, p or an option; what the model throws
CORVANE_API Diagram diagram_pxy(ModelN const& model, double T, DiagramOptions const& options = {});

/// The same at p [MPa]: T-x-y.
CORVANE_API Diagram diagram_Txy(ModelN const& model, double p, DiagramOptions const& options = {});

}  // namespace corvane
