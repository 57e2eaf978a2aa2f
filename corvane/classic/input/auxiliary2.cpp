// Mole fraction of a binary mixture as an unbounded variable.
#include <corvane/classic/input/input.h>

#include <cmath>

namespace {
constexpr double kEnd = 230.0;  // exp(±230) is still far inside the range of a double
}

double xtoz(double x) {
    if (x <= 0.0) return -kEnd;
    if (x >= 1.0) return kEnd;
    return std::log(x / (1.0 - x));
}

double ztox(double z) {
    if (z > kEnd) return 1.0;
    if (z < -kEnd) return 0.0;
    return 1.0 / (std::exp(-z) + 1.0);
}
