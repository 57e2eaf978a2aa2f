// Reference correlations of the viscosity: dilute gas, initial density dependence, dense fluid.
#pragma once

#include <corvane/transport/figures.h>

#include <memory>

namespace corvane::inline detail {

/// η(T, rho) in Pa·s; T in K, rho in mol/m³. What is near a critical point comes on top where the
/// correlation has such a part (water).
class ViscosityCorrelation {
  public:
    virtual ~ViscosityCorrelation() = default;
    virtual double dilute(double T) const = 0;
    virtual double background(double T, double rho) const = 0;
};

/// @param M  molar mass, g/mol
/// @throws OpenFailure an unknown form, or figures that do not fit it
std::unique_ptr<ViscosityCorrelation> viscosity_correlation(Figures const& figures, double M);

/// μ2 of IAPWS R12-08: the enhancement of the viscosity for a correlation length ξ [nm].
double critical_viscosity_factor(double xi);

}  // namespace corvane::inline detail
