// Critical lines of binaries.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/line_options.h>

#include <vector>

namespace corvane {

/// Why a critical line begins or ends where it does: pure, end_point, pressure and cold (within
/// 1e-6), tension, closed, full, interrupted, stuck.
using CriticalLineEnd = CurveEnd;

struct CriticalLine {
    std::vector<CriticalPoint> points;  ///< all stable, or all unstable; x over both components
    CriticalLineEnd begin = CriticalLineEnd::stuck, end = CriticalLineEnd::stuck;
    /// The phase that coexists with the critical one at a critical end point; x is empty elsewhere.
    PhaseRecord begin_phase, end_phase;
    bool stable = true;
    long evaluations = 0;  ///< of the curve that this line is a part of
};

struct CriticalLineOptions : LineOptions {
    /// T_min = 0: 50 K, or half of the lowest critical temperature if less. A step, see critical_lines,
    /// is at most 1. `points` bounds the number of points of all lines.
    CriticalLineOptions() { points = 2000; }
    bool detached = true;   ///< look for lines that no pure component lies on
    /// The unstable stretches, too, as lines of their own. One that was cut short by `points` or by
    /// the caller is always there.
    bool unstable = false;
};

/// The critical lines of a binary: from the critical point of component 0, of component 1 (unless
/// the first line ends there), then the detached ones.
///
/// Continuation by arc length in (ln rho, ln T, x_0) with Newton's method on the two conditions of
/// critical_point; extrema of p, T and x and the cusps of unstable stretches are passed. Steps are
/// at most `step` long in this metric and turn by at most 25 degrees. Every point has its
/// certificate, with bounds of the distance, along ln T, ln p, ln rho and x_0, to the point of the
/// true line in the plane across it. Where the tangent-plane test changes its answer, the critical end point is solved
/// for (five equations, see CriticalEndPoint), and a stable line ends or begins there; its
/// certificate has both phases (except where less than 1e-9 of the other component is dissolved in
/// a pure one: then the pure critical point stands for it). The curve is followed beyond it, so
/// that a line that becomes stable again is found, too.
///
/// Detached lines come from a search on the spinodal surface: at 9 compositions and 31 densities
/// all temperatures with λ = 0; where C changes its sign between neighbours, there is a critical
/// line. What lies on none of the lines known is traced both ways. From a point of
/// such a line under tension or above p_max the line is followed to the pressures asked for. A line
/// that is shorter than the meshes of this grid can be missed. Unstable stretches may end `stuck`
/// where a second eigenvalue vanishes.
///
/// @throws EquilibriumFailure gave_up: neither a pure component nor the search gave a point;
///     ThException 4 not a binary; 5 options or components without Tcrit and vcrit; what the model
///     throws
CORVANE_API std::vector<CriticalLine> critical_lines(ModelN const& binary,
                                                     CriticalLineOptions const& options = {});

}  // namespace corvane
