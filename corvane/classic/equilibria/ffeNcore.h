// Two-phase equilibrium of a mixture: bubble and dew points.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

/// Equilibrium pressure of a phase of composition x at T, and the phase that coexists with it.
///
/// Equal chemical potentials of all present components and equal pressures, in the partial
/// densities of the second phase and the density of the first, by fit_marquardt (at most
/// 50·(N + 1) iterations). Components with x[i] <= 0 are absent from both phases. No state;
/// re-entrant.
///
/// The start values decide what is found. For a bubble point take rho1 as the liquid's density at
/// a guessed p, and rho2[i] = x[i]·K_i·p/(RT) with Wilson's K-factors; along a curve take the last
/// solution.
///
/// @param T  K
/// @param x  N mole fractions of the given phase
/// @param[in,out] p  MPa: pressure of the second phase (the value on entry is not used)
/// @param[in,out] rho1  mol/cm³, start and result: density of the given phase
/// @param[in,out] rho2  N partial densities of the second phase, mol/cm³, start and result;
///     exactly 0 for an absent component
/// What returns normally is an equilibrium: residuals below 1e-5, p > 0, no phase mechanically
/// unstable (∂p/∂rho < 0), and where p is small, the thinner phase has it to 1e-4. Phases may be
/// metastable, or split into two: that is not tested. The pressure of a liquid has a rounding of
/// some 1e-12 MPa; where that is more than 1e-4 of p, p is that of the thinner phase.
///
/// @throws ThException 0 sum of squared residuals above th_inc1, or the solution is no equilibrium
///     (densities written, p not); 8 trivial result: the second phase is the given one (the same);
///     5 a start value not positive, or a fit that ends against one; MthException 1 (a fit that
///     stagnates included), 2 and what the model throws
CORVANE_API void vleN_T(ModelN const* model, double T, Vector<double> const& x, double& p,
                        double& rho1, Vector<double>& rho2);

/// Equilibrium temperature T [K] at p [MPa]: as vleN_T, with T as a start value and result and one
/// condition more. T, too, needs a start within a few per cent.
CORVANE_API void vleN_p(ModelN const* model, double p, Vector<double> const& x, double& T,
                        double& rho1, Vector<double>& rho2);

/// Residuals of the two functions above, in the form fit_marquardt takes.
/// @param u  partial densities of the present components in the second phase, then the density of
///     the given phase; with mode 1 then T
/// @param ctx  a pass_ffeN record with m, mode, xl and T (mode 0) or p (mode 1); not owned
/// @return differences (second − given phase) of the reduced chemical potentials of the present
///     components, p1 − p2 [MPa], and with mode 1 p − p1 [MPa]
/// @throws ThException 5 a partial density of a present component, or T, that is not positive;
///     MthException 2 u or xl of a wrong length
CORVANE_API Vector<double> objffeN(Vector<double> const& u, void* ctx);
