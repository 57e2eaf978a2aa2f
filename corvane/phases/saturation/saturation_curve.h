// Points of a pure fluid's saturation curve, one after the other.
#pragma once

#include <corvane/classic/equilibria/ffe1core.h>

namespace corvane {

/// SaturationMarch, which is quick along a curve, and where that does not get there, next to the
/// critical point for one, pure_saturation_T or pure_saturation_p. Use one per curve and thread; a
/// new one starts from the critical point. Copies are independent.
///
/// cont and units as in vle1_T. @throws what the march throws, if neither answers
class CORVANE_API Saturation {
  public:
    void at_T(Model1 const* model, double T, int cont, double& p, double& rhoL, double& rhoV);
    void at_p(Model1 const* model, double p, int cont, double& T, double& rhoL, double& rhoV);

  private:
    SaturationMarch march_;
};

}  // namespace corvane
