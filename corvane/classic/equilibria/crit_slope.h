// Critical points and critical lines of mixtures.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

/// Critical point of a mixture, and the critical line of a binary from there on.
///
/// Criterion (Heidemann & Khalil, AIChE J. 26 (1980) 769, in the isochoric form): the smallest
/// eigenvalue of PsiH is zero, and so is its derivative along its own eigenvector. The line is
/// followed by pseudo-arclength continuation (Allgower & Georg, Numerical Continuation Methods,
/// 1990) along its tangent in x[0], ln rho and ln T, so that extrema in T, p and x are passed.
/// Steps grow up to 0.05 (or the first step, if that is larger) and shrink where the line bends.
/// Every point is then solved again at its composition by nested root searches (T to 1e-10,
/// relative). Next to an extremum of x, where that search finds no bracket, the continuation's own
/// solution stands, which meets both conditions, made dimensionless with rho, to 1e-6. Points may
/// be metastable or, beyond a cusp, unstable: only the two local conditions are solved. No state;
/// re-entrant.
///
/// @param[in,out] x  start composition, x[0] in [0, 1] (a pure end is a good start); receives the
///     last one
/// @param[in,out] s  first step in x[0], its sign is the direction; receives the last step. 0, or
///     a model of one component: only the critical point of x, for any number of components
/// @param[in,out] line  on entry line(0,1) and line(0,2), if present and positive, are the start
///     values of T and rho; otherwise they come from the components (mole-fraction averages of
///     Tcrit and vcrit, a few multiples of them, then along the line from a pure component).
///     Receives one row per point: x0, T [K], rho [mol/cm³], p [MPa]; the start is row 0.
///
/// The line ends normally: at a pure component (last x0 exactly 0 or 1); where a component
/// vanishes (x0 within 1e-6 of 0 or 1); at high density (rho·Σ x_i·vcrit_i > 3, or p > 1000 MPa);
/// where the pressure turns negative; after 1000 points; or open, where no shorter step finds a
/// further point. critical_line_end tells which.
///
/// @throws ThException 0 no critical point near the start values, or none at that composition
///     (with s = 0: none at a pressure above zero);
///     5 x[0] or x[0] + s outside [0, 1], or components without Tcrit and vcrit; 4 s ≠ 0 with
///     three or more components; MthException 2 x of a wrong length. The arguments are then
///     unchanged. What the model throws at given start values passes; elsewhere it counts as no
///     point there.
CORVANE_API void crit_slope_x(ModelN const* model, Vector<double>& x, double& s,
                              Matrix<double>& line);

namespace corvane {

/// Why a critical line of crit_slope_x ended, as far as its last row tells: the published march keeps no
/// more. Lines traced by continuation have CurveEnd.
enum class LineEnd {
    pure,       ///< at a pure component
    vanishing,  ///< a component's mole fraction fell below 1e-6
    dense,      ///< high density or pressure: the line goes on
    tension,    ///< the last pressure is not positive: the line goes on under tension
    full,       ///< bound of the number of points
    open        ///< no further point found
};

/// Reads it off the last row of a line that crit_slope_x made with a step s ≠ 0.
CORVANE_API LineEnd critical_line_end(ModelN const* model, Matrix<double> const& line);

}  // namespace corvane
