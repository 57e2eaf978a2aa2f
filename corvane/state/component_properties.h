// What each component of one homogeneous phase has: fugacity coefficient, partial molar quantities.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

namespace corvane {

/// Of every component of the model; those of mole fraction 0 are infinitely dilute.
struct ComponentProperties {
    double p = 0.0;         ///< MPa
    Vector<double> ln_fx;   ///< ln of f_i/x_i in MPa: μ_i^r/(RT) + ln(rho·RT)
    Vector<double> ln_phi;  ///< ln_fx − ln p; not-a-number where p is not positive
    Vector<double> v;       ///< partial molar volume, cm³/mol
    Vector<double> h_res;  ///< partial molar residual enthalpy at p and T, −R·T²·∂ln_fx/∂T, J/mol
};

/// x: mole fractions, used as given, zeros allowed. With P_j = 1 + Σ_i rho_i·∂μ_i^r/∂rho_j/(RT),
/// v_j = P_j/Σ rho_k·P_k. From the exact derivatives of the model (DerivN); without, as
/// ModelN::PsiH and by central differences in T.
/// @throws ThException 5 rho or T not positive, not finite, or outside the range in which the
///     equation has values; MthException 2 x of a wrong length
CORVANE_API ComponentProperties component_properties(ModelN const& model, double T, double rho,
                                                     Vector<double> const& x);

}  // namespace corvane
