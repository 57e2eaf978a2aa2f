// Bubble and dew points of mixtures from the composition alone.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>

#include <vector>

class ModelN;

namespace corvane {

class KeptEnvelope;

/// Lighter and denser by mass per volume.
enum class Saturated {
    bubble,  ///< the incipient phase is the lighter one
    dew      ///< the incipient phase is the denser one
};

/// Where there are several solutions (retrograde condensation; a second liquid). The vapour beside
/// liquids counts among them. lower and upper are refused where one beyond the answer is not excluded.
enum class Branch {
    any,    ///< the first certified one: from low pressure (or low T) without a start, else near it
    lower,  ///< the one of lowest p (or T)
    upper   ///< the one of highest p (or T)
};

struct SaturationPoint {
    double T = 0.0, p = 0.0;  ///< K, MPa
    PhaseRecord given;        ///< of the composition asked for; the whole, where that is split
    PhaseRecord incipient;
    /// Where the given composition is two liquids or more (by falling mass density, at most as many as
    /// there are components), beside which the first vapour appears: they, with their mole fractions
    /// of the whole. Empty where it is one phase.
    std::vector<PhaseRecord> split;
    std::vector<double> fraction;
    Certificate certificate;
};

struct SaturationOptions {
    Branch branch = Branch::any;
    SaturationPoint const* start = nullptr;  ///< a neighbouring solution, for a warm start
    Validity const* validity = nullptr;      ///< for the flags of the certificate
    bool trace = true;                       ///< step 3 below
    StabilityTest test = StabilityTest::complete;
    /// Of this model and composition (else it is not read), for step 3; see kept_envelope.h.
    KeptEnvelope const* envelope = nullptr;
};

/// Bubble or dew pressure at T [K] for mole fractions z (zeros allowed: absent components).
///
/// 1. From `start`, or from Wilson's K-factors and a few substitutions, Newton's method with exact
///    derivatives in ln rho_i of both phases (PairSolver); phases nearly alike are solved by
///    RegularPair, which has no trivial solution. Accepted when certified: stable, of the right
///    kind, farther apart than uncertain (Certificate::apart_error).
///    A bubble point that is not stable, or none: the first vapour beside liquids that it splits
///    into (SaturationPoint::split). Then, or before that where Newton's method found nothing, the
///    pairs that begin at the critical point of z, as far as a half distance of 0.5 in ln rho,
///    towards T and through extrema of T. Where that fails at a T well above the spinodal (a p
///    likewise), the search of step 2 comes first. If it finds all stable, and T lies beyond a
///    rough outline of a closed envelope on which the critical point of z is, there is no solution;
///    where dense fluids part above 4000 MPa is not looked for then.
///    Where Newton's method fails, from a colder state (0.94 of T, or 0.6 of p) along the curve; of a
///    dew point after more substitutions, and from the liquid that the stability test finds below it.
/// 2. Otherwise, and for Branch::lower and upper beside the first of these, a search over all
///    pressures from where the gas is nearly ideal to 1000 MPa: a phase boundary is where the
///    tangent-plane test changes its answer. Each change is bracketed, then solved as above. Steps
///    of a factor 1.5, refined where the density jumps or where the tangent-plane distance has a
///    minimum.
/// 3. Without an answer, and for Branch::lower and upper, the envelope is traced (phase_envelope)
///    and every crossing of T on it solved: this finds the narrow regions next to a critical point
///    or cricondentherm that step 2 may step over. The trace is complete where it closes, leaves
///    the range, or ends because the incipient phase loses its mechanical stability. Where it gets
///    stuck before, step 2 is repeated with steps of 1.17 instead.
///
/// A pure fluid (one component present) starts from its critical point where step 1 fails, and is
/// refused from there on, and where the phases are nearer than ten times their uncertainty.
///
/// @throws EquilibriumFailure no_solution: search and trace were complete and have no stable
///     boundary of this kind; gave_up otherwise. ThException 5, MthException 2 bad arguments; what
///     the model throws
CORVANE_API SaturationPoint saturation_T(ModelN const& model, Saturated kind, double T,
                                         Vector<double> const& z,
                                         SaturationOptions const& options = {});

/// Bubble or dew temperature at p [MPa]; the search goes from 0.3 of the lowest critical
/// temperature to twice the highest, by 3 % (1.2 % where repeated).
CORVANE_API SaturationPoint saturation_p(ModelN const& model, Saturated kind, double p,
                                         Vector<double> const& z,
                                         SaturationOptions const& options = {});

inline SaturationPoint bubble_T(ModelN const& m, double T, Vector<double> const& z,
                                SaturationOptions const& o = {}) {
    return saturation_T(m, Saturated::bubble, T, z, o);
}
inline SaturationPoint dew_T(ModelN const& m, double T, Vector<double> const& z,
                             SaturationOptions const& o = {}) {
    return saturation_T(m, Saturated::dew, T, z, o);
}
inline SaturationPoint bubble_p(ModelN const& m, double p, Vector<double> const& z,
                                SaturationOptions const& o = {}) {
    return saturation_p(m, Saturated::bubble, p, z, o);
}
inline SaturationPoint dew_p(ModelN const& m, double p, Vector<double> const& z,
                             SaturationOptions const& o = {}) {
    return saturation_p(m, Saturated::dew, p, z, o);
}

}  // namespace corvane
