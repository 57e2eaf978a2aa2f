// Critical points of mixtures from the composition alone.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>

#include <vector>

class ModelN;

namespace corvane {

struct CriticalPoint {
    double T = 0.0, p = 0.0, rho = 0.0;  ///< K, MPa, mol/cm³
    Vector<double> x;                    ///< mole fractions of all components
    /// False: the two conditions hold, but the phase is not stable, as a trial phase of negative
    /// tangent-plane distance (certificate.tpd) or the fourth-order term shows.
    bool stable = true;
    /// `conditions`: the larger of |λ| and |C| (see critical_point), over the largest eigenvalue if
    /// that exceeds 1; at most 1e-9 with exact derivatives, 1e-6 without. `phases`: the critical
    /// phase. `value_error`: bound of T and p at this composition, `rho_error` of the density; they are
    /// unknown without exact derivatives, or where they would exceed 1e-6: next to a tricritical point
    /// and where p along a line of dense liquids rises too steeply.
    Certificate certificate;
};

struct CriticalOptions {
    CriticalPoint const* start = nullptr;  ///< a neighbouring point, for a warm start
    Validity const* validity = nullptr;    ///< for the flags of the certificate
    bool unstable = false;                 ///< take an unstable point where there is no stable one
};

/// Critical point of mole fractions z (zeros allowed: absent components; a single component present
/// gives its own critical point by the equation of state).
///
/// Conditions: the smallest eigenvalue λ of √(rho_i·rho_j)·∂m_i/∂rho_j and the third derivative C
/// of the Helmholtz energy density over rho·RT along its eigenvector are zero, both dimensionless
/// (Heidemann & Khalil, AIChE J. 26 (1980) 769, in isochoric variables). Newton's method in ln rho
/// and ln T from `start`, then from the spinodal at the mean critical volume. If that leads to no
/// stable point at positive pressure, the search of critical_points. Where a composition has
/// several critical points it is not specified which one is found without `start`.
///
/// A point is accepted if the next order is positive and the tangent-plane test (Stability) finds
/// no phase of lower Gibbs energy.
///
/// @throws EquilibriumFailure no_solution: the search found none, or unstable ones only (named in
///     what()); ThException 5 z, or components without Tcrit and vcrit; MthException 2; what the
///     model throws
CORVANE_API CriticalPoint critical_point(ModelN const& model, Vector<double> const& z,
                                         CriticalOptions const& options = {});

/// All critical points of z that a search finds, stable or not, at positive pressure, in order of
/// density. Of each density (31 of them, from 0.3 to 4.4 times the mean critical one) all
/// temperatures are determined at which λ vanishes (between 0.2 of the lowest and twice the highest
/// critical temperature, seen in steps of 12 %); where C changes its sign from one density to the
/// next there is a critical point.
CORVANE_API std::vector<CriticalPoint> critical_points(ModelN const& model, Vector<double> const& z,
                                                       CriticalOptions const& options = {});

}  // namespace corvane
