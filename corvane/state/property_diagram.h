// Property diagrams: saturation and isolines of a pure fluid or of a mixture of given composition.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/phases/report/progress.h>
#include <corvane/state/pure_state.h>

#include <vector>

class Model1;
class ModelN;

namespace corvane {

/// A stable state, of one phase or of several together. What needs ideal-gas tables is not-a-number
/// without them; q is the amount of the lighter of two phases, else not-a-number.
struct PropertyPoint {
    double T = 0.0, p = 0.0, rho = 0.0;  ///< K, MPa, mol/cm³
    double h = 0.0, s = 0.0, u = 0.0;    ///< J/mol, J/(mol K), J/mol
    double q = 0.0;
};

struct Isoline {
    Quantity what = Quantity::T;
    double value = 0.0;
    std::vector<PropertyPoint> points;  ///< without those for which there is no certified state
};

struct PropertyDiagram {
    /// Bubble and dew points: of a pure fluid of the same T up to next to its critical point, of a
    /// mixture in the order of its phase envelope, without points that are not stable.
    std::vector<PropertyPoint> liquid, vapour;
    std::vector<Isoline> lines;
    int failures = 0;  ///< states that are missing in the lines
};

struct PropertyDiagramOptions {
    std::vector<double> T, p, q, s, rho;  ///< of the isolines: K, MPa, -, J/(mol K), mol/cm³
    double T_min = 0.0, T_max = 0.0;   ///< K: of isobars and saturation; 0: 0.55 of the mean and 1.6
                                       ///< of the highest critical temperature
    double p_min = 0.0, p_max = 0.0;   ///< MPa; 0: 0.001 and 10 of the (highest) critical pressure
    int points = 120;                  ///< of every line, beside those at phase boundaries
    Progress progress;
};

/// Saturation and isolines. Isotherms and isentropes run along ln p, isobars and isochores along T,
/// lines of equal vapour content along the saturation. Of a pure fluid the two-phase part of
/// isotherms and isobars is between the exact saturated states, in tenths of q; where an isochore
/// leaves it is bracketed to 1e-3 of a step. States are those of pure_states; those of isentropes
/// outside T_min … T_max and of isochores outside p_min … p_max are left out.
/// @throws ThException 5 an option; what the model throws on evaluation of its constants
CORVANE_API PropertyDiagram property_diagram(Model1 const& model,
                                             PropertyDiagramOptions const& options);

/// The same of mole fractions z: states are flashes at (p, T), phase boundaries on isotherms,
/// isobars and isochores (flash_Trho) are bracketed to 1e-3 of a step. Lines of equal q are not
/// traced, isentropes by flash_ps.
CORVANE_API PropertyDiagram property_diagram(ModelN const& model, Vector<double> const& z,
                                             PropertyDiagramOptions const& options);

}  // namespace corvane
