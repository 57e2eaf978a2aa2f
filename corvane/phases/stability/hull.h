// Where a binary splits at given p and T: the convex hull of its Gibbs energy. Internal to the
// library.
#pragma once

#include <corvane/phases/phase/phase.h>

#include <vector>

namespace corvane::inline detail {

/// Two grid compositions with a split between them, and their densities.
struct Facet {
    double x[2], rho[2];  ///< mole fractions of component 0, ascending; mol/cm³
};

/// The facets of the lower convex hull of g(x), the Gibbs energy of mixing at the density root of
/// lower energy, over a grid of 25 compositions, that pass over grid points or join different
/// density roots. A split between neighbouring grid points is not seen unless the density jumps.
std::vector<Facet> split_facets(FluidModel const& fluid, double p, double T);

}  // namespace corvane::inline detail
