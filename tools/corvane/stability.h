// Whether a phase splits.
#pragma once

#include <corvane/mixture/modeln.h>

#include <optional>

namespace cli {

/// Composition of a phase into which a phase of density rho and composition x at (p, T) would
/// split, nothing if none is found: tangent-plane criterion with successive substitution from
/// nearly pure trial phases and the even mixture (Michelsen, Fluid Phase Equilib. 9 (1982) 1). The
/// trial phases need not meet all minima: nothing found is no proof of stability.
std::optional<Vector<double>> splitting_phase(ModelN const& model, double p, double T, double rho,
                                              Vector<double> const& x);

}  // namespace cli
