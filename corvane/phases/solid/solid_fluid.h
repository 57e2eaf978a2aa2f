// Pure solids in equilibrium with a fluid of two components: solubility, its lines, eutectics.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/line_options.h>

#include <array>
#include <vector>

class ModelN;

namespace corvane {

class AnchoredSolid;

/// A fluid above the pure solid of one component. The solids are those of
/// SolidFluidOptions::anchored, or where that is null of the components' sublimation data, which
/// must be loaded (mdl1[i]->solid.load()); a component with neither never freezes.
struct SolidFluidPoint {
    double T = 0.0, p = 0.0;  ///< K, MPa
    Vector<double> x;         ///< mole fractions of the fluid
    double rho = 0.0;         ///< of the fluid, mol/cm³
    double rho_solid = 0.0;   ///< mol/cm³
    int form = 0;             ///< index of the solid phase in Solid::sg
    bool stable = true;       ///< false: the fluid splits, or the other component freezes
    /// dmu: difference of the potentials of the solid's component, fluid to the solid. tpd: of the
    /// fluid, against fluids and the other component's solid. phases: the fluid, then the solids.
    Certificate certificate;
};

/// Why a solid–fluid line begins or ends where it does: pure (the pure component melts or sublimes,
/// exactly); eutectic (a line of one point: less than 1e-13 of the other component dissolves at the
/// pure point); split (a second fluid coexists with the fluid and the solid); solid_range;
/// other_range; dilute (the limit asked for); pressure; full; interrupted; stuck.
using SolidFluidEnd = CurveEnd;

struct SolidFluidLine {
    int solid = 0;  ///< component that forms the solid
    std::vector<SolidFluidPoint> points;
    SolidFluidEnd begin = SolidFluidEnd::stuck, end = SolidFluidEnd::stuck;
    /// The further phase at a split (fluid) or a eutectic (solid of the other component).
    PhaseRecord begin_phase, end_phase;
    long evaluations = 0;
};

struct SolidFluidOptions : CurveOptions {
    /// A step is a factor of the longest steps: 0.05 in x, 0.5 in ln x, 0.02 in ln T, … `points` bounds
    /// the number of points of all lines.
    SolidFluidOptions() { step = 1.0; }
    /// Solids anchored at the melting point, of components 0 and 1; must live as long as the call.
    std::array<AnchoredSolid const*, 2> anchored{};
    double x_min = 1e-12;   ///< least mole fraction in the fluid
    double p_max = 1000.0;  ///< MPa, of isotherms
};

/// Solubility of component `solid` (0 or 1) at (p [MPa], T [K]): the stable fluid whose potential
/// equals the solid's Gibbs energy. Compositions are scanned along both density roots (52 or more in
/// ln(x/(1 − x)), below 1e-13 Henry's law gives the start), crossings solved by Newton's method.
/// @throws EquilibriumFailure no_solution: no fluid, or only unstable ones; gave_up: a crossing was
///     not solved, or states without density; ThException 4 not a binary, 5 T above the data of the
///     solid or bad arguments, 6 no data of the solid; what the model throws
CORVANE_API SolidFluidPoint solubility(ModelN const& binary, int solid, double p, double T,
                                       SolidFluidOptions const& options = {});

/// The line of solubility at constant p, from the pure component's melting or sublimation point
/// (where that lies above the range of the solid's data, from the end of the data on) to lower T;
/// where the fluid meets a second one, the line goes on with that.
///
/// Newton's method and continuation in (ln rho_i, ln T), exact derivatives (those of the solid in T
/// by Solid::He, or in closed form). Every point is tested against other fluids and the other component's solid;
/// where that fails first, the eutectic or the point with two fluids is solved for, and the line
/// ends there.
/// @throws as solubility; EquilibriumFailure no_solution if there is no start
CORVANE_API std::vector<SolidFluidLine> solid_fluid_isobar(ModelN const& binary, int solid,
                                                           double p,
                                                           SolidFluidOptions const& options = {});

/// The same at constant T, from the pure component's sublimation or melting pressures on.
CORVANE_API std::vector<SolidFluidLine> solid_fluid_isotherm(ModelN const& binary, int solid,
                                                             double T,
                                                             SolidFluidOptions const& options = {});

/// The eutectic at p: the fluid that coexists with both solids, from the line of component 0, then
/// of component 1. rho_solid and form are those of component 0.
/// @throws EquilibriumFailure no_solution: neither line ends in a eutectic; as solubility
CORVANE_API SolidFluidPoint eutectic(ModelN const& binary, double p,
                                     SolidFluidOptions const& options = {});

}  // namespace corvane
