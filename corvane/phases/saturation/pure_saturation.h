// Saturation of a pure fluid, up to its critical point, with a bound of the error.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>

class Model1;

namespace corvane {

/// A vapour–liquid equilibrium of a pure fluid.
struct PureSaturation {
    double T = 0.0, p = 0.0;        ///< K, MPa
    double rhoL = 0.0, rhoV = 0.0;  ///< mol/cm³
    /// Bounds of the relative errors against the exact solution of the equation, from residuals and
    /// what rounding may add to them, times the inverse Jacobian: of p (given T) or T (given p), of
    /// the densities, and of their distance.
    double value_error = 0.0, rho_error = 0.0, apart_error = 0.0;
};

/// Saturation at T [K], and at p [MPa].
///
/// From 0.5 % below the critical temperature on the unknowns are the mean density u and the square
/// q of half the distance over it, so that the densities are u·(1 ± √q). With H = ∂m/∂rho, the
/// slope of the chemical potential, equal potentials and equal pressures are, for q > 0,
///
///     ½·∫ u·H(u + s·√q·u) ds = 0,   ½·∫ (1 − s²)·u²·H'(u + s·√q·u) ds = 0,   s = −1 … 1,
///
/// in which nothing cancels, and which go over into the critical conditions H = H' = 0 at q = 0:
/// the critical point is a regular point of the system, and the trivial solution is none. Newton's
/// method, Gauss–Legendre quadrature with 16 points; where an equation is not smooth between the
/// densities and 8 points say otherwise, differences of m and of p take its place. Farther from the
/// critical point Newton's method for both densities, from a start by the acentric factor if vcalc
/// has the roots that it leads to, else from the walk of SaturationMarch. At given p, steps of T by
/// Newton's method with the slope of the critical isochore or by secants.
///
/// @throws EquilibriumFailure no_solution: at or above the critical point of the equation; gave_up:
///     closer to it than rounding can tell, below a fifth of the critical temperature or 1e-24 MPa,
///     or the model has no two phases; ThException 5 T or p not positive or not finite; what the
///     model throws
CORVANE_API PureSaturation pure_saturation_T(Model1 const& model, double T);
CORVANE_API PureSaturation pure_saturation_p(Model1 const& model, double p);

}  // namespace corvane
