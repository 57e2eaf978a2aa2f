// Options and ends that lines of three phases and of azeotropes share.
#pragma once

#include <corvane/phases/report/progress.h>

namespace corvane {

struct Validity;

/// Why a line ends. The last point is exactly there, but for the last five.
enum class PhaseLineEnd {
    critical,     ///< critical end point: two phases become alike; they are equal there
    pure,         ///< an azeotrope reaches a pure component
    three_phase,  ///< a further phase appears: an azeotrope meets the line of three phases (a
                  ///< heteroazeotrope goes on), three phases become four
    limit,        ///< p_max
    coldest,      ///< T_min
    trace,        ///< a mole fraction falls below 1e-200
    uncertified,  ///< the next point misses its certificate: at very low p, by rounding
    full,         ///< bound of the number of points
    interrupted,
    stuck  ///< no shorter step finds a further point
};

struct PhaseLineOptions {
    double step = 0.05;     ///< longest step in every mole fraction and in ln T, about
    double p_max = 1000.0;  ///< MPa
    double T_min = 0.0;     ///< K; 0: 0.3 of the lower critical temperature
    int points = 1000;      ///< bound of their number
    Validity const* validity = nullptr;
    Progress progress;
};

}  // namespace corvane
