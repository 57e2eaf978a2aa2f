// Temperature-dependent diameter of the segments of PC-SAFT.
#pragma once

#include <cmath>

namespace corvane::pcsaft {

/// d/σ = 1 − 0.12·exp(−3·ε/kT) (Gross & Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244, eq. 3, with
/// the constant of Chen & Kreglewski, Ber. Bunsenges. Phys. Chem. 81 (1977) 1048).
/// @param theta  ε/kT
template <class S>
S diameter(S const& theta) {
    using std::exp;
    return 1.0 - 0.12 * exp(-3.0 * theta);
}

}  // namespace corvane::pcsaft
