// One row of the table of an equation's parameters.
#pragma once

#include <limits>

namespace corvane {

/// The least positive number, as a lower limit: above zero.
inline constexpr double above_zero = std::numeric_limits<double>::min();
inline constexpr double no_limit = std::numeric_limits<double>::infinity();

/// One parameter. In files it is a line of label, colon, tab and value.
struct Parameter {
    char const* label;       ///< at most 30 characters, no blank
    char const* unit = "";   ///< for people; empty: a pure number
    double value = 0.0;      ///< before anything is read, and where an optional line is missing
    double low = -no_limit;  ///< least and greatest value that a file may give, themselves included
    double high = no_limit;
    bool adjustable = false;  ///< meant to be fitted; those of a substance stand next to each other
    bool optional = false;    ///< the line may be missing; optional lines come last, in any order
    int mirror = -1;  ///< of a pair (i, j): the parameter that this one is for (j, i); −1: itself
};

}  // namespace corvane
