// Theory of dilute gases: collision integrals, Chapman–Enskog, Wilke's rule.
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>

namespace corvane::inline detail {

/// Reduced collision integrals of the Lennard-Jones potential at T* = kT/ε, of viscosity (2,2) and of
/// diffusion (1,1): Neufeld, Janzen, Aziz, J. Chem. Phys. 57 (1972) 1100.
inline double collision_viscosity(double t) {
    return 1.16145 * std::pow(t, -0.14874) + 0.52487 * std::exp(-0.77320 * t) +
           2.16178 * std::exp(-2.43787 * t);
}
inline double collision_diffusion(double t) {
    return 1.06036 * std::pow(t, -0.15610) + 0.19300 * std::exp(-0.47635 * t) +
           1.03587 * std::exp(-1.52996 * t) + 1.76474 * std::exp(-3.89411 * t);
}

/// 26.692e-9·√(M·T)/(σ²·Ω) in Pa·s; T, ε/k in K, M in g/mol, σ in nm.
inline double chapman_enskog_viscosity(double T, double M, double sigma, double epsilon) {
    return 26.692e-9 * std::sqrt(M * T) / (sigma * sigma * collision_viscosity(T / epsilon));
}

/// Σ_i x_i·a_i/Σ_j x_j·φ_ij, Wilke's φ (J. Chem. Phys. 18 (1950) 517) from viscosities eta and molar
/// masses M; components without share are left out.
template <class X, class A, class Eta, class Mass>
double of_gases(int n, X const& x, A const& a, Eta const& eta, Mass const& M) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        if (!(x(i) > 0.0)) continue;
        double below = 0.0;
        for (int j = 0; j < n; ++j) {
            if (!(x(j) > 0.0)) continue;
            const double m = M(i) / M(j);
            const double root = 1.0 + std::sqrt(eta(i) / eta(j)) / std::sqrt(std::sqrt(m));
            below += x(j) * root * root / std::sqrt(8.0 * (1.0 + m));
        }
        sum += x(i) * a(i) / below;
    }
    return sum;
}

}  // namespace corvane::inline detail
