// Whether a phase splits, and whether it must.
#pragma once

#include <corvane/mixture/modeln.h>

#include <optional>

namespace cli {

/// Whether a phase lies beyond the limit of stability: the Hessian of the Helmholtz energy density,
/// by the pivots of its elimination, is not positive definite.
bool unstable(ModelN const& model, double T, Vector<double> const& rho_i);

/// Composition of a phase into which a phase of density rho and composition x at (p, T) would
/// split, nothing if none is found: tangent-plane criterion with successive substitution from
/// nearly pure trial phases and the even mixture (Michelsen, Fluid Phase Equilib. 9 (1982) 1). The
/// trial phases need not meet all minima: nothing found is no proof of stability.
std::optional<Vector<double>> splitting_phase(ModelN const& model, double p, double T, double rho,
                                              Vector<double> const& x);

}  // namespace cli
