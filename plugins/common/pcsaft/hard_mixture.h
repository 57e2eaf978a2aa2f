// Hard chains of unlike segments: the reference fluid of PC-SAFT mixtures.
//
// Hard spheres of Boublik, J. Chem. Phys. 53 (1970) 471, and Mansoori, Carnahan, Starling &
// Leland, J. Chem. Phys. 54 (1971) 1523, with ζ_n = Σ rho_i·m_i·d_i^n and eta = ζ_3 (lengths in
// units that make π/6·NA one):
//     rho·a_hs = −ζ0·ln(1 − ζ3) + 3·ζ1·ζ2/(1 − ζ3) + ζ2³/ζ3²·ψ(ζ3).
// The contact value of a pair depends on d_ij = 2·d_i·d_j/(d_i + d_j) and ζ2 through w = d_ij·ζ2:
//     g = q/(1 − ζ3)³,   q = (1 − ζ3)² + 3/2·w·(1 − ζ3) + w²/2.
#pragma once

#include <cmath>

namespace corvane::pcsaft {

/// ψ = eta/(1 − eta)² + ln(1 − eta), its slope over eta, and its second derivative. ψ ~ 3/2·eta².
/// What cancels in ψ is of the size of rounding in the terms that it is added to.
template <class S>
S unequal_spheres(S const& eta) {
    using std::log1p;
    const S free = 1.0 - eta;
    return eta / (free * free) + log1p(-eta);
}
template <class S>
S unequal_spheres_slope_over_eta(S const& eta) {
    const S free = 1.0 - eta;
    return (3.0 - eta) / (free * free * free);
}
inline double unequal_spheres_curvature(double eta) {
    const double free = 1.0 - eta, square = free * free;
    return (3.0 + (4.0 - eta) * eta) / (square * square);
}

/// Contact value along an isotherm, where w/eta is constant: q = 1 + eta·(p1 + p2·eta).
template <class T>
struct ContactLine {
    T p1{}, p2{};
    ContactLine() = default;
    /// @param ratio  w/eta
    explicit ContactLine(T const& ratio)
        : p1(1.5 * ratio - 2.0), p2((1.0 - ratio) * (1.0 - 0.5 * ratio)) {}

    template <class S>
    S g(S const& eta) const {
        const S free = 1.0 - eta;
        return (1.0 + eta * (p1 + p2 * eta)) / (free * free * free);
    }
    template <class S>
    S ln_g(S const& eta) const {
        using std::log1p;
        return log1p(eta * (p1 + p2 * eta)) - 3.0 * log1p(-eta);
    }
    template <class S>
    S ln_g_slope(S const& eta) const {
        return (p1 + 2.0 * p2 * eta) / (1.0 + eta * (p1 + p2 * eta)) + 3.0 / (1.0 - eta);
    }
};

/// ln g of a pair and its derivatives in ζ2 and ζ3; the second ones for numbers only.
template <class S>
struct ContactPoint {
    S g, d2, d3;        // g, ∂ln g/∂ζ2, ∂ln g/∂ζ3
    S excess, ln_free;  // q − 1, ln(1 − ζ3)
    S d22{}, d23{}, d33{};

    ContactPoint(S const& d, S const& z2, S const& z3, S const& ln_free_, bool second)
        : ln_free(ln_free_) {
        const S free = 1.0 - z3, w = d * z2, inverse = 1.0 / free;
        excess = z3 * (z3 - 2.0) + w * (1.5 * free + 0.5 * w);
        const S over = 1.0 / (1.0 + excess);
        const S q2 = d * (1.5 * free + w) * over, q3 = -(2.0 * free + 1.5 * w) * over;
        g = (1.0 + excess) * (inverse * inverse * inverse);
        d2 = q2;
        d3 = q3 + 3.0 * inverse;
        if (!second) return;
        d22 = d * d * over - q2 * q2;
        d23 = -1.5 * d * over - q2 * q3;
        d33 = 2.0 * over - q3 * q3 + 3.0 * inverse * inverse;
    }
    S ln_g() const {
        using std::log1p;
        return log1p(excess) - 3.0 * ln_free;
    }
};

}  // namespace corvane::pcsaft
