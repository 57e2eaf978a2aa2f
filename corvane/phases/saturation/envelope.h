// The phase envelope of a mixture of fixed composition.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/line_options.h>

#include <vector>

class ModelN;

namespace corvane {

struct EnvelopePoint {
    double T = 0.0, p = 0.0;  ///< K, MPa
    double rho = 0.0;         ///< density of the phase of the given composition, mol/cm³
    double rho2 = 0.0;        ///< of the incipient phase
    Vector<double> y;         ///< composition of the incipient phase
    bool unstable = false;    ///< with EnvelopeOptions::stability: a third phase is more stable
    bool bubble = false;      ///< the incipient phase has the lower mass density
    /// With EnvelopeOptions::stability, and of critical points always: bounds as in Certificate, of T
    /// and p (relative) and of the mole fractions of a point that the true curve has; not-a-number
    /// where unknown.
    double value_error = Certificate::unknown, x_error = Certificate::unknown;
};

/// Why an envelope ended: closed (back at the pressure where it started, on the bubble side),
/// pressure or cold (at the limit, exactly: open, as far as it was followed), full, interrupted,
/// stuck.
using EnvelopeEnd = CurveEnd;

struct Envelope {
    std::vector<EnvelopePoint> points;  ///< from the dew side at low pressure on
    EnvelopeEnd end = EnvelopeEnd::stuck;
    std::vector<EnvelopePoint> critical;  ///< where bubble and dew side meet; y is then the given z
    std::vector<EnvelopePoint> cricondentherm;  ///< local maxima of T along the curve, and
    std::vector<EnvelopePoint> cricondenbar;    ///< of p, up to where p rises again on the bubble
                                                ///< side: there the curve leaves for dense states
    std::vector<EnvelopePoint> beyond_T, beyond_p;  ///< local maxima of T, of p beyond that
    double dmu = 0.0, dp = 0.0;                     ///< largest of all points, see Certificate
    /// Points at which the tangent-plane test finds a third phase; their number among all. Such a
    /// curve goes on through states that are not stable: a split of the liquid hides part of it.
    int unstable = 0;
    long evaluations = 0;
};

struct EnvelopeOptions : LineOptions {
    /// A step is of ln T four times, of ln p and every ln K.
    EnvelopeOptions() {
        step = 0.08;
        points = 2000;
        T_min = 50.0;
    }
    double p_start = 0.05;   ///< MPa: of the first dew point
    bool stability = false;  ///< test every point, and bound its errors; else `unstable` stays 0
};

/// Traces the envelope from the dew point at p_start.
///
/// Continuation of the two-phase equations (PairSolver) in the way of Michelsen (Fluid Phase
/// Equilib. 4 (1980) 1): at each point the variable that changes most along the curve, among ln T
/// and all ln(rho_i of the incipient phase / rho_i), is the one specified next; the predictor is a
/// cubic through two points and their tangents; steps follow the number of iterations. Near a
/// critical point the ratio specified steps through zero, so that the trivial solution is excluded.
/// The critical point comes from ratios ± 0.02 by Hermite interpolation, then by Newton's method on
/// its own conditions (see critical_point), extrema of T and p by the secant method on the slope.
/// All points are solved to 1e-9, see Certificate.
///
/// @throws EquilibriumFailure gave_up: no dew point at p_start, or a pure fluid (one component
///     present); ThException 5, MthException 2; what the model throws
CORVANE_API Envelope phase_envelope(ModelN const& model, Vector<double> const& z,
                                    EnvelopeOptions const& options = {});

/// All curves that are found: that of phase_envelope first, then those of other incipient liquids.
/// A wet gas has the dew line of water and, below it in temperature, the envelope of its
/// hydrocarbons, whose points are not stable where water has condensed before.
///
/// Looked for are, at p_start, the dew point of the mixture without the component of which the
/// first incipient liquid almost consists (above 0.9, and below 0.5 in z), continued to the whole
/// mixture; and, if the first curve has points that are not stable, dew points of nearly pure
/// liquids of every component, whose curves belong to the answer if some of their points are
/// stable. options.stability is always on. A curve without a dew point at p_start is not found.
/// @throws as phase_envelope, for the first curve
CORVANE_API std::vector<Envelope> phase_envelopes(ModelN const& model, Vector<double> const& z,
                                                  EnvelopeOptions const& options = {});

}  // namespace corvane
