// Properties of a state of a pure fluid, in the library's units (K, MPa, mol/cm³, J/mol).
#pragma once

#include <tools/corvane/units.h>

#include <corvane/pure/model1.h>

#include <optional>
#include <string>
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

/// Where a given density lies at T: a note when it is inside the two-phase region ("metastable,
/// between …"), otherwise "". `name` gets what the state is called.
std::string two_phase_note(Model1 const& model, double T, double rho, Units const& units,
                           char const*& name);

}  // namespace cli
