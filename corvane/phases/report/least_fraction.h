// Components that are nowhere near dissolving in a phase of a flash. Internal to the library.
#pragma once

namespace corvane::inline detail {

/// Mole fractions go no lower, where ln x of equilibrium may be −1500: the component's potential at
/// this fraction is above that in the other phases, it takes no part in dmu, and the result has 0.
inline constexpr double least_fraction = 1e-280;

/// ln of the fraction that an absent component is given where logarithms are the variables: less, so
/// that it stays absent while the density changes.
inline constexpr double ln_trace = -650.0;

/// Is x that, beyond rounding?
inline bool absent(double x) {
    return x <= 1.01 * least_fraction;
}

}  // namespace corvane::inline detail
