// What is held constant. Internal to the library.
#pragma once

namespace corvane {

/// A temperature, K, or a pressure, MPa.
struct Fixed {
    bool at_T;
    double value;
};

}  // namespace corvane
