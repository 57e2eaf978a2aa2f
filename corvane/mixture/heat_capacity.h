// Physical heat capacities of a mixture.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

namespace corvane {

/// Heat capacities of a mixture over R.
struct HeatCapacities {
    double CVr, Cpr;  ///< residual, isochoric and isobaric
    double CVm, Cpm;  ///< total, with the components' ideal-gas parts
};

/// Residual and total heat capacities at rho [mol/cm³], T [K], x. ModelN::CVr and its relatives
/// keep a published form that lacks a factor T; these are the physical quantities, CVr =
/// −2·T·∂Ar/∂T − T²·∂²Ar/∂T² and Cpr = CVr + betaV²/pV − 1.
/// @throws ThException 3 when a component has no ideal-gas table
CORVANE_API HeatCapacities heat_capacities(ModelN const& model, double rho, double T,
                                           Vector<double> const& x);

}  // namespace corvane
