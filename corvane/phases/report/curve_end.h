// Why a traced curve ends.
#pragma once

#include <corvane/core/api.h>

namespace corvane {

/// Why a curve begins or ends where it does. The header of each curve says which of these it has;
/// up to `other_range` the last point is exactly there.
enum class CurveEnd {
    closed,       ///< back at its beginning
    pure,         ///< at a pure component
    critical,     ///< at a critical point: two phases become alike
    end_point,    ///< a critical line at a critical end point: another phase coexists
    three_phase,  ///< where a further phase appears
    edge,         ///< tie lines of a ternary at a binary split
    plait,        ///< at the plait point
    eutectic,     ///< the other component freezes, too: two solids and a fluid
    pressure,     ///< at the highest pressure asked for
    tension,      ///< at 1e-3 MPa, beyond which the pressure becomes negative
    cold,         ///< at the lowest temperature asked for
    dilute,       ///< a mole fraction falls below a limit
    saturation,   ///< at the edge of the liquid
    solid_range,  ///< at the end of the solid's data
    other_range,  ///< the other component freezes at once where the data of its solid begin
    uncertified,  ///< the next point misses its certificate
    full,         ///< bound of the number of points
    interrupted,  ///< by the caller
    stuck,        ///< no shorter step finds a further point
    // Names that some curves have for the same.
    limit = pressure,
    coldest = cold,
    trace = dilute,
    split = three_phase
};

/// Curves with words of their own for some ends.
enum class CurveKind { any, branch, phase_line, azeotrope, solid, ternary, ideal };

/// "ends at ..." without the verb: "a pure component".
CORVANE_API char const* in_words(CurveEnd end, CurveKind kind = CurveKind::any);

}  // namespace corvane
