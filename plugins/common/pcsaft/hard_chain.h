// Hard-chain reference fluid of PC-SAFT, as functions of the packing fraction eta.
//
// Chains of m tangent hard spheres (Chapman, Gubbins, Jackson & Radosz, Ind. Eng. Chem. Res. 29
// (1990) 1709; Gross & Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244, eqs. 4-9 and A.4-A.7):
//     a_hc = m·a_hs − (m − 1)·ln g
// S is double or a type that carries derivatives. Every function is relatively accurate as eta → 0.
#pragma once

#include <cmath>

namespace corvane::pcsaft {

/// A^r/(NkT) of hard spheres (Carnahan & Starling, J. Chem. Phys. 51 (1969) 635), and its slope
/// in eta: Z = 1 + eta·slope.
template <class S>
S hard_sphere(S const& eta) {
    const S free = 1.0 - eta;
    return eta * (4.0 - 3.0 * eta) / (free * free);
}
template <class S>
S hard_sphere_slope(S const& eta) {
    const S free = 1.0 - eta;
    return (4.0 - 2.0 * eta) / (free * free * free);
}

/// Pair correlation function of hard spheres at contact, g = (1 − eta/2)/(1 − eta)³.
template <class S>
S contact(S const& eta) {
    const S free = 1.0 - eta;
    return (1.0 - 0.5 * eta) / (free * free * free);
}
/// ln g, and its slope in eta.
template <class S>
S ln_contact(S const& eta) {
    using std::log1p;
    return log1p(-0.5 * eta) - 3.0 * log1p(-eta);
}
template <class S>
S ln_contact_slope(S const& eta) {
    return 3.0 / (1.0 - eta) - 1.0 / (2.0 - eta);
}

}  // namespace corvane::pcsaft
