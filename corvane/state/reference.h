// Reference states: where enthalpy and entropy of a pure fluid have their zero.
#pragma once

#include <corvane/core/api.h>

class Model1;

namespace corvane {

/// The usual choices. Saturated liquid, except for the first two.
enum class ReferenceState {
    table,      ///< u = 0, s = 0 of the ideal gas at the start of its table and 1 mol/cm³
    formation,  ///< enthalpy of formation and standard entropy at 0.1 MPa (Model1::load_thchem)
    IIR,        ///< h = 200 kJ/kg, s = 1 kJ/(kg K) at 0 °C
    ASHRAE,     ///< h = 0, s = 0 at −40 °C
    NBP,        ///< h = 0, s = 0 at 0.101325 MPa
    triple      ///< u = 0, s = 0 at the triple point: the steam tables' zero
};

/// Moves the reference state of the model's ideal part (Ideal::offset), wherever it was before,
/// and with it u, h, s, g and a. `table` leaves it where it is. T_triple [K] serves `triple` alone.
/// Other callers must not use the model meanwhile.
/// @throws ThException 3 no ideal-gas table; 5 no molar mass (IIR), no T_triple; of load_thchem.
///     EquilibriumFailure no_solution: the fluid has no saturated liquid there; gave_up
CORVANE_API void set_reference(Model1& model, ReferenceState which, double T_triple = 0.0);

}  // namespace corvane
