// Binary phase equilibrium by minimisation of the Gibbs energy.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/core/records.h>

class ModelN;

/// Adjusts the compositions x (mole fractions of component 0) of two coexisting phases of a binary
/// at p [MPa], T [K]: minimum of the Gibbs energy of the two-phase system with the overall
/// composition z = (x[0] + x[1])/2 of the start values, by the lever rule, with min_powell (at
/// most 20 cycles).
///
/// A phase with ph[k].phase = −1 is a fluid, whose stable density root is taken; with
/// ph[k].phase >= 0 it is the pure solid of component ph[k].species and x[k] is its fixed
/// composition (1 or 0). Two solids leave x alone. z must lie between the compositions that
/// coexist, and x[0] ≠ x[1]. The accuracy is the square root of the model's rounding noise, about
/// 1e-7 in x; equil2 and equil2s solve for equal chemical potentials instead.
///
/// A minimum is not always an equilibrium: from a start far off, the search may come back with two
/// equal phases, or with a pair on its way. corvane::equil_min_judged tells.
///
/// Never throws: any failure (a composition that leaves [0, 1], no density root, no solid data, no
/// convergence, a fluid with another negative phase code) restores x; compositions that have not
/// changed at all are the only sign of it. No state; re-entrant.
CORVANE_API void equil_min(ModelN const* m, double p, double T, Vector<phdesc> const& ph,
                           Vector<double>& x);

namespace corvane {

/// The same, and what comes out is tested: compositions that differ by 1e-3 and equal potentials
/// within the accuracy of the minimum, x_i·|Δμ_i|/(RT) <= 1e-5 with the smaller mole fraction; beside
/// a solid, that of its component. False, and x as it was, for anything else. Never throws.
CORVANE_API bool equil_min_judged(ModelN const* m, double p, double T, Vector<phdesc> const& ph,
                                  Vector<double>& x);

}  // namespace corvane
