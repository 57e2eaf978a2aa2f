// What a long trace tells its caller.
#pragma once

#include <functional>

namespace corvane {

/// Called after every point of a trace with the number of points so far. False ends the trace,
/// which keeps what it has and says `interrupted`. May be empty. What it throws goes through.
using Progress = std::function<bool(int points)>;

}  // namespace corvane
