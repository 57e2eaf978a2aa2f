// How far an envelope reaches, without its points. Internal to the library.
#pragma once

#include <corvane/phases/phase/phase.h>

namespace corvane::inline detail {

struct EnvelopeOutline {
    /// Closed, through one critical point. Else the rest says nothing.
    bool whole = false;
    /// No less than T [K] and p [MPa] anywhere on it from p_start up: a maximum is below where the
    /// tangents at the points on either side of it meet.
    double T_max = 0.0, p_max = 0.0;
    double T_critical = 0.0, p_critical = 0.0, rho_critical = 0.0;  ///< interpolated, to 1e-3
};

/// The curve of phase_envelope from half the mean critical pressure on, in steps twelve times as
/// long and solved to 1e-5. Its first point is the nearest dew point, stable or not.
EnvelopeOutline envelope_outline(FluidModel const& fluid);

}  // namespace corvane::inline detail
