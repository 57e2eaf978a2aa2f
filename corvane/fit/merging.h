// Phases that become one: how near a solution is to being lost. Internal.
#pragma once

#include <corvane/fit/equilibrium.h>

namespace corvane::fit {

/// Where two liquids become one (an azeotrope reaches a pure component) their compositions move as
/// the square root of the distance to that point. Deviations d of phases nearer than kMerging of
/// what was measured go over into the penalty P of a lost solution, as √(w·d² + (1 − w)·P²): w,
/// from 1 to 0, is of the second order in that distance, so that the sum of squares has continuous
/// first derivatives.
constexpr double kMerging = 0.2;
/// What stands for a measured difference of compositions where none was measured: of liquids (the
/// search for three phases misses those that are less than a few hundredths apart), of azeotropes.
constexpr double kUnmeasured = 0.25, kUnmeasuredAzeotrope = 0.05;

/// w, of the least difference of compositions between two phases of a solution over that of the
/// measured ones (of azeotropes that to the nearest pure component), kUnmeasured where not all was
/// measured. 1 of bubble and dew points.
double merging_weight(Point const& point, Phases const& phases);

/// The deviation of an observation where the phases have become one of the mean composition: of
/// mole fractions half the measured difference to the next phase (of azeotropes that to the nearest
/// pure component), of others 0.
double merged(Point const& point, Observation const& seen);

}  // namespace corvane::fit
