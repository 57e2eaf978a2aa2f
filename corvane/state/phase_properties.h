// All properties of one homogeneous phase, from one evaluation of its equation of state.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class Model1;
class ModelN;

namespace corvane {

/// Molar properties, in the reference states of Model1::Hm, Sm and ModelN::Hm, Sm. What needs
/// ideal-gas tables is not-a-number without them; the speed of sound is where its square is
/// negative (an unstable state).
struct PhaseProperties {
    double T = 0.0, rho = 0.0;  ///< K, mol/cm³
    double p = 0.0, Z = 1.0;    ///< MPa, –
    double u = 0.0, h = 0.0, g = 0.0, a = 0.0;  ///< J/mol
    double s = 0.0, cv = 0.0, cp = 0.0;         ///< J/(mol K)
    double w = 0.0;       ///< speed of sound, m/s: w² = (R·T/M)·(P_rho + P_T²/(cv/R))
    double mu_JT = 0.0;   ///< Joule–Thomson coefficient ∂T/∂p at h, K/MPa
    double kappa_T = 0.0; ///< isothermal compressibility, 1/MPa
    double alpha_p = 0.0; ///< isobaric thermal expansivity, 1/K
    double dp_dT = 0.0;   ///< ∂p/∂T at constant density, MPa/K
    double dp_drho = 0.0; ///< ∂p/∂rho at constant T, MPa cm³/mol; negative: mechanically unstable
    double a_res = 0.0, h_res = 0.0, s_res = 0.0, cv_res = 0.0;  ///< over RT, RT, R, R; at T and rho
    double M = 0.0;       ///< molar mass, g/mol
    double n_s = 0.0;     ///< isentropic exponent −(v/p)·∂p/∂v at s, = rho·w²·M/p; cp/cv as rho → 0
};

/// @throws ThException 5 rho or T not positive, not finite, or outside the range in which the
///     equation has values
CORVANE_API PhaseProperties phase_properties(Model1 const& model, double T, double rho);
/// x: mole fractions, used as given, zeros allowed; h, s, g with the terms of mixing.
/// @throws MthException 2 x of a wrong length
CORVANE_API PhaseProperties phase_properties(ModelN const& model, double T, double rho,
                                             Vector<double> const& x);

}  // namespace corvane
