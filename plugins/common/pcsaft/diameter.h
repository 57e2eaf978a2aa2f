// Temperature-dependent diameter of the segments of PC-SAFT.
#pragma once

#include <corvane/plugin/jet.h>

#include <cmath>
#include <limits>

namespace corvane::pcsaft {

/// d/σ = 1 − 0.12·exp(−3·ε/kT) (Gross & Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244, eq. 3, with
/// the constant of Chen & Kreglewski, Ber. Bunsenges. Phys. Chem. 81 (1977) 1048).
/// @param theta  ε/kT; the result is not-a-number below zero, and with it all that is computed from
/// it
template <class S>
S diameter(S const& theta) {
    using std::exp;
    if (!(value_of(theta) >= 0.0)) return S(std::numeric_limits<double>::quiet_NaN());
    return 1.0 - 0.12 * exp(-3.0 * theta);
}

}  // namespace corvane::pcsaft
