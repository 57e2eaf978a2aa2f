// The ideal curves of a fluid: where it behaves as an ideal gas in one respect.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/phases/report/curve_end.h>

#include <vector>

class Model1;
class ModelN;

namespace corvane {

/// After Brown, Bull. Inst. Int. Froid Annexe 1960-1, 169; in terms of Ar by Span & Wagner, Int. J.
/// Thermophys. 18 (1997) 1415.
enum class IdealCurve {
    zeno,           ///< Z = 1 (the ideal curve)
    boyle,          ///< ∂Z/∂rho = 0 at T
    joule_thomson,  ///< ∂Z/∂T = 0 at p: inversion of the Joule–Thomson coefficient
    joule           ///< ∂Z/∂T = 0 at rho: inversion of ∂T/∂rho at u
};

struct IdealCurvePoint {
    double T = 0.0, p = 0.0, rho = 0.0;  ///< K, MPa, mol/cm³
};

/// Why an ideal curve ends: saturation (the saturated liquid; of a mixture, where it loses mechanical
/// stability or p = 0), cold (T_min), pressure (p_max), stuck.
using IdealCurveEnd = CurveEnd;

struct IdealCurveResult {
    std::vector<IdealCurvePoint> points;  ///< from zero density on, or at options.T, as they come
    double T_zero = 0.0;                  ///< temperature at zero density, K
    IdealCurvePoint highest;              ///< highest pressure
    IdealCurveEnd end = IdealCurveEnd::stuck;
    IdealCurvePoint last;
};

struct IdealCurveOptions {
    std::vector<double> T = {};  ///< K: only the points at these temperatures; empty: a dense curve
    double T_min = 0.0;          ///< K; 0: 0.4 of the critical temperature
    double T_max = 0.0;          ///< K: to which the temperature at zero density is looked for; 0:
                                 ///< 50 critical temperatures
    double p_max = 0.0;          ///< MPa; 0: 10000
};

/// The curve from zero density, where its condition is one of the second virial coefficient (B = 0;
/// B_T = B; B_T = 0) that is bracketed in steps of 5 % of T from below, along (ln T, rho): secant
/// predictor, corrector along the normal by the Illinois method to rounding, steps of at most 0.05
/// that are halved where the curve turns by more than 0.15. At most 3000 points. With exact
/// derivatives nothing is differenced.
/// @throws ThException 5 an option; 0 the curve does not begin between T_min and T_max (that of van
///     der Waals' Joule inversion does not exist); what the model throws
CORVANE_API IdealCurveResult ideal_curve(Model1 const& model, IdealCurve which,
                                         IdealCurveOptions const& options = {});
/// The same for mole fractions x: whether the phase splits is not tested.
CORVANE_API IdealCurveResult ideal_curve(ModelN const& model, Vector<double> const& x,
                                         IdealCurve which, IdealCurveOptions const& options = {});

}  // namespace corvane
