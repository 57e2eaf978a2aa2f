// What is held constant. Internal to the library.
#pragma once

namespace corvane::inline detail {

/// A temperature, K, or a pressure, MPa.
struct Fixed {
    bool at_T;
    double value;

    /// Temperature and pressure of a state whose other one, p or T, is given.
    double T(double other) const { return at_T ? value : other; }
    double p(double other) const { return at_T ? other : value; }
};

}  // namespace corvane::inline detail
