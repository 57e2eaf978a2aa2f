// Interface of libnumelo, the numerics library: thirteen operations.
//
// Every operation reports failure by throwing MthException and nothing else. Objective functions
// get the untyped context pointer unchanged; exceptions that they throw pass to the caller except
// where an operation says that it treats a throwing trial point as a rejected step. All operations
// are re-entrant (an objective may call any of them); only ran_shuffle keeps a state, one per
// thread.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

using numelo_function = double (*)(double x, void* ctx);
using numelo_function2 = double (*)(double x, double y, void* ctx);
using numelo_functionv = double (*)(Vector<double> const& x, void* ctx);
using numelo_residual = Vector<double> (*)(Vector<double> const& x, void* ctx);

/// Derivative of f of the given order at x.
///
/// Differences on a ladder of halved steps that starts outward (4h, 16h, 32h, 64h for orders 1, 2,
/// 3, above), extrapolated to step zero (Romberg 1955; Richardson 1911). Rounding noise
/// eps·|f|/s^m, not truncation, limits a derivative, which is why the ladder goes outward. It ends
/// when the estimated truncation of the best entry is below its rounding, after 12 rungs at the
/// latest; then the entry of least estimated error is the result. Smooth equations take 6 – 8
/// evaluations for order 1, 7 – 9 for order 2, 8 – 12 for order 3.
///
/// Points beyond ±h are optional: an exception or a value that is not finite there makes the ladder
/// start again closer in. Within ±h exceptions pass; values that are not finite narrow the ladder
/// down to h/64.
///
/// @param order  0 … 8; 0 returns f(x)
/// @param h      initial step, > 0. Wider steps stay within 0.1·|x| if h does and x is not 0
/// @param level  >= 1; from 4 on the ladder starts twice as far out and has at least one rung more
/// @param xmin, xmax  no abscissa leaves [xmin, xmax]; near a bound steps shrink, and with less
/// room
///               than h/2 the ladder becomes one-sided
/// @throws MthException 8 order or level; 9 step not positive, not finite or lost in x; 10 x
/// outside
///         the bounds or no finite value; 11 xmin >= xmax; 1 a one-sided derivative of order 7 or 8
///         of which no digit is certain
NUMELO_API double diff_romberg(numelo_function f, void* ctx, int order, double x, double h,
                               int level, double xmin, double xmax);

/// First derivative of f at x: central differences with steps h and h/2, one extrapolation; four
/// evaluations. @throws MthException 9 for a bad step
NUMELO_API double diff_x(numelo_function f, void* ctx, double x, double h);

/// Mixed derivative of order nx in x and ny in y (each 0 … 3) by nested ladders of diff_romberg.
/// @throws MthException 8 order, 9 step
NUMELO_API double diff_2all(numelo_function2 f, void* ctx, double x, double y, int nx, int ny,
                            double hx, double hy);

/// Gradient of f at x with component steps h, each component by diff_romberg's ladder (6 – 8
/// evaluations); a component that is exactly zero gets a forward ladder, so that no negative value
/// is tried.
/// @param order  scheme order; 2 is the only one
/// @throws MthException 2 sizes, 8 order, 9 step (info = component), 10 no finite value
NUMELO_API Vector<double> diff_gradient(numelo_functionv f, void* ctx, Vector<double> const& x,
                                        int order, Vector<double> const& h);

/// Matrix of second derivatives, symmetric; arguments and errors as diff_gradient. Ladders from
/// 16h; mixed derivatives from the points (x_i ± s_i, x_j ± s_j) of equal signs and those that the
/// diagonal has used (Abramowitz & Stegun 1964, eq. 25.3.27): 19 – 25 evaluations for two
/// components, 37 – 49 for three, R·n·(n + 1) + 1 for n components and R = 3 or 4 rungs.
NUMELO_API Matrix<double> diff_hessian(numelo_functionv f, void* ctx, Vector<double> const& x,
                                       int order, Vector<double> const& h);

/// Root of f between a and b (either order), whose values fa and fb the caller hands over and which
/// are not evaluated again. Regula falsi with the end values of Anderson & Björck (BIT 13 (1973)
/// 253), reduced at least as in the Illinois form (Dowell & Jarratt, BIT 11 (1971) 168); bisections
/// where five steps have not shrunk the bracket by 16. Steps are at least tol/2 long until the
/// bracket is below tol; at most sixteen more evaluations (typically one or two) then polish the
/// root to rounding, also one that is much smaller than tol, next to an end at zero down to 1e-300. Densities of an equation of state take
/// 7 evaluations on average, 16 at most; a triple root 65. The last evaluation is at the returned
/// point, unless fa or fb was handed over as exactly 0: then a or b is returned. If f has no root
/// although fa and fb say so, the result is a point within tol of an end.
/// @param tol  absolute tolerance in x
/// @throws MthException 10 not-a-number, 11 a == b, 12 equal signs, 1 after 200 steps
NUMELO_API double eqn_regulafalsi(numelo_function f, void* ctx, double a, double b, double fa,
                                  double fb, double tol);

/// Minimises f from x, which holds the minimiser on return. Powell's conjugate directions (Powell,
/// Comput. J. 7 (1964) 155) with Brent's line search (Brent 1973, ch. 5). The accuracy is that of
/// any method without derivatives: the square root of f's noise, about 1e-8 in x at best; two
/// parameters take about 80 evaluations. A throwing trial point, or one where f is not finite, is a
/// wall: it is rejected; if the final minimum lies against a wall, or no step from the start is
/// possible, the stored exception is thrown again. x is written on success only.
/// @param maxit  most cycles   @param trace  nonzero: a line per cycle on standard error
/// @return the minimum
/// @throws MthException 1 when maxit, or the search for a rising value along a line, is used up; 10
/// f
///         not finite at the start, or the minimum lies against values that are not finite
NUMELO_API double min_powell(numelo_functionv f, Vector<double>& x, void* ctx, int maxit,
                             int trace);

/// Least squares: adjusts x so that the n residuals of f vanish as far as they can. Levenberg–
/// Marquardt in Moré's form (Lecture Notes in Math. 630 (1978) 105): columns scaled, a trust
/// region, QR of the damped Jacobian. The Jacobian is made of forward differences (central ones for
/// n above the number of parameters and a small sum), and carried on by Broyden's update (Math.
/// Comp. 19 (1965) 577) after steps that lower the sum to a hundredth. A saturation pressure takes
/// 7 evaluations, a bubble point of two components about 25.
///
/// Exceptions of f at the start pass; at a trial or Jacobian point they reject the step, and are
/// thrown again if the fit ends before such a wall. Stagnation ends a fit of more residuals than
/// parameters normally: the caller judges the returned sum. A square system is to be solved: it has
/// converged when the sum is at most 1e-10, or when its residuals are rounding (1e-12 of a thousand
/// times the changes that a thousandth of each parameter makes). Where a parameter has no slope, points up to its own size away tell whether it
/// has influence, and the fit goes on from the best of them. The last evaluation of f is at the
/// returned x, which is also written when the fit fails.
/// @return final sum of squared residuals
/// @throws MthException 1 when a square system stagnates before that, or when maxit iterations (or
///         20 that hardly lower the sum, for as many residuals as parameters) leave a sum above
///         1e-8, or steps that still change x by more than 1e-6; 2 f returns another count than n; 7 n < number of parameters; 10 f not finite
///         at the start; 16 a parameter without influence (info = index)
NUMELO_API double fit_marquardt(numelo_residual f, Vector<double>& x, int n, void* ctx, int maxit,
                                int trace);

/// Solution of A·x = b: Gaussian elimination with partial pivoting, rows and columns scaled. A
/// pivot within rounding of zero makes A singular.
/// @throws MthException 3 not square, 2 sizes, 4 singular
NUMELO_API Vector<double> lin_gauss(Matrix<double> const& A, Vector<double> const& b);

/// Eigenvalues in ascending order and eigenvectors (row k belongs to eigenvalue k, unit length) of
/// the symmetric matrix A, or of (A + Aᵀ)/2: cyclic Jacobi rotations (Rutishauser, Numer. Math. 9
/// (1966) 1), converged element by element so that entries of very different size keep their
/// relative accuracy. The component of largest magnitude of each eigenvector is positive, the first
/// of those that are equal within 1e-6.
/// @throws MthException 3 not square, 10 not finite, 1 after 60 sweeps
NUMELO_API void lin_jacobi(Matrix<double> A, Vector<double>& eigenvalues,
                           Matrix<double>& eigenvectors);

/// Coefficients of the interpolating cubic spline through (x[i], y[i]), not-a-knot at both ends (de
/// Boor, A Practical Guide to Splines, ch. IV). c gets three rows of n elements, b, c and d: on
/// segment k the spline is y[k] + b[k]·dx + c[k]·dx² + d[k]·dx³, dx = t − x[k]; row n−1 continues
/// the last segment. One point gives a constant, two a line, three a parabola, none a 3 × 0 matrix.
/// @throws MthException 2 sizes, 5 equal and 6 descending abscissae
NUMELO_API void ipl_spline(SortedVector<double> const& x, Vector<double> const& y,
                           Matrix<double>& c);

/// Value (deriv 0) or first derivative (deriv 1) at x of that spline; outside the table its first
/// and last cubic go on. @throws MthException 7 empty table, 8 deriv
NUMELO_API double ipl_eval(double x, SortedVector<double> const& xs, Vector<double> const& ys,
                           Matrix<double> const& c, int deriv);

/// Next pseudo-random number in the open interval (0, 1): a 64-bit generator behind a shuffle table
/// (Bays & Durham, ACM Trans. Math. Softw. 2 (1976) 59). Threads draw
/// different numbers: the k-th thread that asks starts 2^40·k draws on, the first always with the same.
NUMELO_API double ran_shuffle();
