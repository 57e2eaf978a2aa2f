// Volume finder: densities at given pressure and temperature, p = Z(rho, T)·R·T·rho.
//
// Four strategies for callers that know only Z and Ar of a model; a model's own vcalc is faster and
// surer where the pressure is tiny or the equation has more than one loop.
//
// Common arguments: model is a Model1 when kind is 0 (x is then ignored and may be null), otherwise
// a ModelN with mole fractions x. p in MPa, T in K, densities in mol/cm³. d [cm³/mol] is a
// reference volume such that all states of interest have a reduced density y = rho·d below 1, for
// example the covolume of a cubic equation. Nothing is kept between calls. Evaluation counts:
// docs/volume.md.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class Model1;

/// All roots of an isotherm with at most one van der Waals loop, without a start value.
///
/// A first root from regula falsi between zero and the first y = 0.70, 0.76 … 1.00 whose pressure
/// reaches p; then slope and curvature there (step 2e-5·y) tell whether and on which side the
/// others lie, and eight trial points look for a bracket. Misses roots where the curvature drowns
/// in rounding (liquid roots below 1e-5 MPa) and those of equations with inner loops.
///
/// @param[out] roots  at least 3 entries (a shorter vector is enlarged). With result 1 every entry
/// is
///                    the root. With 3, roots[0] is the densest, roots[2] the least dense and
///                    roots[1] the root found first: the middle one, or equal to one of the others.
///                    Every entry has the pressure p: where a search comes back with anything else
///                    (next to a pole, or in an inner loop), its entry is the root found first, too.
///                    Unspecified with result 0.
/// @return 0, 1 or 3; 0 also when y = 1 does not reach p, when p, T or d is not positive and finite,
///         and for whatever the model throws. Never throws.
CORVANE_API int volume(void const* model, int kind, double p, double T, Vector<double> const* x,
                       double d, Vector<double>& roots);

/// Root near a start value: Newton's method on y·Z(y) with Z from numerical derivatives of Ar,
/// which leaves an unstable region halfway towards y = 0 or 1, and changes to the Illinois method
/// (Dowell & Jarratt, BIT 11 (1971) 168) at a change of sign. Below y = 4e-5 the gas is ideal.
///
/// @param[in,out] rho  start density; written in every iteration, also when the result is 0
/// @return 1 when the last step in y was at most 1e-9 (absolute, so a thin gas is only good to
/// that, and one of y < 1e-9 comes back as 1e-9; next to a pole, where every step is short, the
///         pressure must be met, too);
///         0 for y >= 1, d <= 0, or p or T no state, at the start (no evaluation), after 20 Newton or
///         200 Illinois steps, or for a step that is not finite
/// @throws what the model throws, and MthException from the numerical differentiation
CORVANE_API int volav(void const* model, int kind, double p, double T, Vector<double> const* x,
                      double d, double& rho);

/// Root near a start value: plain Newton iteration on the pressure, which retreats where the slope
/// is negative.
///
/// @param[in,out] rho  start density; written only on success
/// @return true when the last step was at most 1e-9·y; false after 20 iterations, outside 0 < y <
/// 1,
///         for whatever the model throws, and for a pure model whose density tables put the start
///         density outside its range (Model1::off) or that has none. Never throws.
CORVANE_API bool volnewt(void const* model, int kind, double p, double T, Vector<double> const* x,
                         double d, double& rho);

/// Both stable roots of a pure fluid between the density limits of its tables (Model1::xrho), each
/// by regula falsi. Roots within 0.1 % of a spinodal are left out.
///
/// @param vmin  lower limit of the molar volume, cm³/mol
/// @return number of roots: 0; 1, in rho1 (rho2 is left alone); 2, the dense one in rho1 and the
///         dilute one in rho2. Every root has the pressure p. What the model throws counts as no root on that side; a T outside
///         the tables gives 0. Never throws.
CORVANE_API int volf1(Model1 const* model, double p, double T, double vmin, double& rho1,
                      double& rho2);

namespace corvane {

/// Whether rho is a root of (p, T) to a part in a thousand, for whoever cannot live with the absolute
/// tolerance of volav. @throws what the model throws
CORVANE_API bool is_density(void const* model, int kind, double p, double T,
                            Vector<double> const* x, double rho);

}  // namespace corvane
