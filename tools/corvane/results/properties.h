// Properties of a state of a pure fluid, in the library's units (K, MPa, mol/cm³, J/mol).
#pragma once

#include <tools/corvane/text/units.h>

#include <corvane/pure/model1.h>
#include <corvane/state/pure_state.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

struct State {
    Model1 const* model;
    double T, p, rho;
};

/// What a property needs besides the equation of state.
enum class Needs { nothing, ideal_gas, ideal_gas_and_mass };

struct Property {
    char const* name;
    Quantity quantity;
    char const* text;
    Needs needs;
    double (*value)(State const&);
};

/// All properties, in the order in which they are shown; T and p come first.
std::vector<Property> const& properties();

/// A property of two phases together, in library units; nothing where it is not that of a whole.
std::optional<double> of_whole(std::string_view name, corvane::PureState const& state);

/// Density roots at (p, T). With two roots both are set. A single one is liquid or vapour by the
/// critical volume of the equation; at and above its critical temperature it is `fluid`.
struct Roots {
    std::optional<double> liquid, vapour, fluid;
    /// The root of lower Gibbs energy, and what it is called.
    double stable = 0.0;
    char const* stable_name = "";
};

/// @throws Failure no root, or one that does not give back the pressure; ThException, MthException
Roots density_roots(Model1 const& model, double T, double p);

/// The two phases in equilibrium at T, if there are and they are found.
struct SaturatedPair {
    bool found = false;
    double p = 0.0, liquid = 0.0, vapour = 0.0;  ///< MPa, mol/cm³
};
SaturatedPair saturated(Model1 const& model, double T);

/// "liquid", "vapour" or "fluid", as for Roots.
char const* phase_name(Model1 const& model, double T, double rho);

}  // namespace cli
