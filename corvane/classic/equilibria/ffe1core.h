// Vapour–liquid equilibrium of a pure fluid.
#pragma once

#include <corvane/core/api.h>

class Model1;

/// (μ_V − μ_L)/(RT) of the liquid-like and vapour-like roots at p [MPa], T [K]; sets both densities
/// [mol/cm³]. @throws ThException 5 p or T not positive; 9 no root; 10 a liquid root only; 11 a gas
/// root only
CORVANE_API double maxwell(Model1 const* model, double p, double T, double& rhoL, double& rhoV);

/// Saturation pressure p [MPa] at T [K] and the two densities [mol/cm³].
///
/// cont = 0 starts from the critical point; otherwise from the last solution of this function,
/// along the Clausius–Clapeyron line through the last two (a march). Not re-entrant: one static
/// state for all callers; corvane::SaturationMarch is the re-entrant form of the same solver.
/// @throws ThException 0 no start with two roots in 16 trials (T at or above critical); 9; what the
///         fit throws. The state is then as before, apart from a fresh start's own initialisation.
CORVANE_API void vle1_T(Model1 const* model, double T, int cont, double& p, double& rhoL,
                        double& rhoV);

/// Saturation temperature T [K] at p [MPa]; otherwise like vle1_T, with a state of its own.
CORVANE_API void vle1_p(Model1 const* model, double p, int cont, double& T, double& rhoL,
                        double& rhoV);

namespace corvane {

/// The memory of a march along a saturation curve, as an object: use one per curve and thread. A
/// new one starts from the critical point. Copies are independent. Next to the critical point the
/// march may fail, which corvane::Saturation does not.
class CORVANE_API SaturationMarch {
  public:
    void at_T(Model1 const* model, double T, int cont, double& p, double& rhoL, double& rhoV);
    void at_p(Model1 const* model, double p, int cont, double& T, double& rhoL, double& rhoV);

  private:
    void start(Model1 const* model, double DeltaH);
    void remember(double T, double lp);

    double T0_ = 0.0;             // temperature of the last solution, K
    double lp0_ = 0.0;            // ln p of the last solution
    double DeltaH_ = 0.0;         // slope −∂ln p/∂(1/T)·R, J/mol
    double pc_ = 0.0, Tc_ = 0.0;  // critical point, MPa, K: start and bound of the retry walk
};

}  // namespace corvane
