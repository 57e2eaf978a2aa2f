// Following a curve of solutions with one degree of freedom. Internal to the library.
#pragma once

#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/progress.h>

#include <algorithm>
#include <optional>

namespace corvane::inline detail {

/// Length of the next step, in the curve's own measure of its tangent.
struct StepLength {
    double length = 1.0, longest = 1.0, shortest = 0.0;
    double shorten = 0.5;  ///< factor after a step that failed
};

/// What became of a step.
enum class Trial {
    taken,
    failed,  ///< to be tried again, shorter
    ended    ///< the curve ends within it
};

/// One step of a continuation by predictor and corrector (Allgower & Georg, Numerical Continuation
/// Methods, Springer 1990, chapters 2 and 6): tried at step.length, then at shorter ones, until one
/// is taken; the next one is longer or shorter as this one was easy or not (den Heijer &
/// Rheinboldt, SIAM J. Numer. Anal. 18 (1981) 925, from the Newton iterations; Allgower &
/// Georg, 6.1, from the angle between tangents). Nothing if a step was taken, else why not. The
/// curve's part:
///   attempt(length, end)  predictor, corrector, and the tests of what that has found; it may
///                         shorten the length. Trial::ended: says why
///   growth()              factor for the next length, after a step that was taken
///   lost()                why, when the shortest step failed
template <class Curve>
std::optional<CurveEnd> advance(Curve& curve, StepLength& step) {
    for (;; step.length *= step.shorten) {
        if (step.length < step.shortest) return curve.lost();
        CurveEnd end = CurveEnd::stuck;
        const Trial trial = curve.attempt(step.length, end);
        if (trial == Trial::ended) return end;
        if (trial == Trial::taken) break;
    }
    step.length = std::min(step.longest, curve.growth() * step.length);
    return {};
}

/// Step after step up to an end. Beside the above, the curve's part:
///   count()   points so far, the call for this step included where it counts as one
///   arrive()  after a step: limits that it has passed and events on the way are solved for, the
///             point is recorded; the end that this is, if it is one
/// `others`: points of other curves, of which `progress` is told, too.
template <class Curve>
CurveEnd continuation(Curve& curve, StepLength& step, int most, Progress const& progress,
                      int others = 0) {
    while (true) {
        const int count = curve.count();
        if (count >= most) return CurveEnd::full;
        if (progress && !progress(others + count)) return CurveEnd::interrupted;
        if (const auto end = advance(curve, step)) return *end;
        if (const auto end = curve.arrive()) return *end;
    }
}

}  // namespace corvane::inline detail
