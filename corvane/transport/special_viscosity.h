// Reference correlations of the viscosity whose form no other substance has.
#pragma once

#include <corvane/transport/reference_viscosity.h>

#include <memory>
#include <string>

namespace corvane::inline detail {

/// form: "methanol" (Xiang, Laesecke, Huber 2006), "trifluoromethane" (Shan, Penoncello, Jacobsen 2000), "helium" (Arp,
/// McCarty, Friend 1998); null: another one. @throws OpenFailure figures that do not fit it
std::unique_ptr<ViscosityCorrelation> special_viscosity(Figures const& figures, std::string const& form, double M);

}  // namespace corvane::inline detail
