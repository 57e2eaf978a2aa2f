// Activity coefficients and excess functions of a phase, Henry's constants, both against the
// density root of a kind that is asked for.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/phases/phase/phase.h>

#include <vector>

class ModelN;

namespace corvane {

/// The pure component at the T and p of the mixture, by the mixture's model.
struct PureReference {
    double rho = 0.0;     ///< mol/cm³; 0: there is no density root
    double ln_phi = 0.0;  ///< not-a-number without a root
    bool alone = false;   ///< the only density root: the component has no choice of phases there
    bool stable = true;   ///< no other root has a lower Gibbs energy
    /// The root is a liquid: denser than the critical density of the equation, at a temperature
    /// below its critical one.
    bool liquid = false;
};

/// A phase against the ideal mixture of the pure components at the same T, p and x (symmetric
/// convention: γ_i → 1 as x_i → 1). Molar. h, s … are those of mixing less −R·Σ x_i·ln x_i in s.
struct ExcessProperties {
    double T = 0.0, p = 0.0, rho = 0.0;  ///< K, MPa, mol/cm³
    Vector<double>
        ln_gamma;  ///< ln φ_i − ln φ_i of the pure; of an absent component at infinite dilution
    Vector<double> ln_phi;
    double g = 0.0, h = 0.0;   ///< J/mol; g = RT·Σ x_i·ln γ_i
    double s = 0.0, cp = 0.0;  ///< J/(mol K); s = (h − g)/T
    double v = 0.0;            ///< cm³/mol
    std::vector<PureReference> pure;
};

/// The phase of mole fractions x at T [K] and p [MPa], its density and those of the pure components
/// by the same rule: the dense root (default: activity coefficients are asked of liquids), the
/// dilute, or each the one of lower Gibbs energy. Where there is one root alone it is taken,
/// whatever it is: PureReference tells. Excess functions sum over the components that are present;
/// what lacks a reference is not-a-number. Whether the phase splits is not tested.
/// @throws ThException 5 T, p or a mole fraction that makes no sense, or a sum that differs from 1
///     by more than 1e-6; 9 no density root of the mixture; MthException 2 x of a wrong length
CORVANE_API ExcessProperties excess_properties(ModelN const& model, double T, double p,
                                               Vector<double> const& x, Root root = Root::dense);

/// A solute, infinitely dilute in a liquid.
struct HenryConstant {
    double T = 0.0, p = 0.0, rho = 0.0;  ///< of the solvent: K, MPa, mol/cm³
    bool stable = true;                  ///< of the solvent: no other root has a lower Gibbs energy
    double H = 0.0;                      ///< MPa: lim f/x for x → 0 at T and p
    double ln_H = 0.0;
    double ln_phi = 0.0;      ///< of the solute: H = φ·p
    double ln_gamma = 0.0;    ///< against the pure solute, H/f_pure; see `pure`
    double v = 0.0;           ///< partial molar volume of the solute, (RT)·∂ln H/∂p, cm³/mol
    double h_solution = 0.0;  ///< its partial molar enthalpy less that of its ideal gas,
                              ///< −R·T²·∂ln H/∂T at p, J/mol
    PureReference pure;
};

/// Of component `solute` in the liquid of mole fractions x, of which x[solute] must be 0: at the
/// vapour pressure of that liquid at T (its bubble pressure, certified), or at p, on the dense
/// root.
/// @throws as excess_properties; ThException 5 solute; EquilibriumFailure as saturation_T
CORVANE_API HenryConstant henry_constant(ModelN const& model, int solute, double T,
                                         Vector<double> const& x);
CORVANE_API HenryConstant henry_constant(ModelN const& model, int solute, double T, double p,
                                         Vector<double> const& x);

}  // namespace corvane
