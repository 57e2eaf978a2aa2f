// Two equations of state for any arithmetic type, to measure numerics in double against a wider
// type.
#pragma once

#include <array>
#include <cmath>

namespace equations {

using std::exp;
using std::log;
using std::log1p;
using std::sqrt;

constexpr double gas_constant = 8.3144621;

/// Peng & Robinson (Ind. Eng. Chem. Fundam. 15 (1976) 59) for methane, propane and decane;
/// constants of the substances from their reference equations, k_ij = 0.02.
struct PengRobinson {
    static constexpr std::array<double, 3> Tc{190.564, 369.89, 617.7}, pc{4.5992, 4.2512, 2.103},
        omega{0.01142, 0.1521, 0.4884};
    static constexpr double rhoc = 0.005, Tcrit = 369.89;

    static double b(int i) { return 0.0777960739 * gas_constant * Tc[i] / pc[i]; }

    /// Residual Helmholtz energy density over RT at partial densities r[i] of n components.
    template <class T>
    static T psi(T const* r, int n, T temperature) {
        T rho = 0, y = 0, a = 0;
        for (int i = 0; i < n; ++i) {
            rho += r[i];
            y += r[i] * T(b(i));
            for (int j = 0; j < n; ++j)
                a += r[i] * r[j] * attraction(i, temperature) * attraction(j, temperature) *
                     T(i == j ? 1.0 : 0.98);
        }
        return -rho * log1p(-y) - a / (T(gas_constant) * temperature) / y * chain(y);
    }
    /// Residual Helmholtz energy over RT of propane.
    template <class T>
    static T ar(T rho, T temperature) {
        const T a = attraction(1, temperature), y = rho * T(b(1));
        return -log1p(-y) - a * a / (T(b(1)) * T(gas_constant) * temperature) * chain(y);
    }

  private:
    template <class T>
    static T chain(T y) {
        const T s2 = sqrt(T(2));
        return log1p(2 * s2 * y / (1 + (1 - s2) * y)) / (2 * s2);
    }
    template <class T>
    static T attraction(int i, T temperature) {  // √a
        const double kappa = 0.37464 + (1.54226 - 0.26992 * omega[i]) * omega[i];
        return sqrt(T(0.457235529 / pc[i])) * T(gas_constant * Tc[i]) *
               (1 + T(kappa) * (1 - sqrt(temperature / T(Tc[i]))));
    }
};

/// 1-Butene, short multiparameter form (Lemmon & Ihmels, Fluid Phase Equilib. 228-229 (2005) 173).
struct Butene {
    static constexpr double Tcrit = 419.29, rhoc = 0.00424;

    template <class T>
    static T ar(T rho, T temperature) {
        // clang-format off
        constexpr double n[] = {0.78084, -2.8258, 0.99403, 0.017951, 0.088889, 0.00024673,
                                0.22846, -0.074009, -0.22913, -0.062334, -0.025385, 0.01104},
                         t[] = {0.12, 1.3, 1.74, 2.1, 0.28, 0.69, 0.75, 2, 4.4, 4.7, 15, 14};
        constexpr int d[] = {1, 1, 1, 2, 3, 7, 2, 5, 1, 4, 3, 4}, l[] = {0, 0, 0, 0, 0, 0, 1, 1, 2, 2, 3, 3};
        // clang-format on
        const T lntau = log(T(Tcrit) / temperature), delta = rho / T(rhoc);
        T sum = 0;
        for (int k = 0; k < 12; ++k)
            sum += T(n[k]) * power(delta, d[k]) *
                   exp(T(t[k]) * lntau - (l[k] > 0 ? power(delta, l[k]) : T(0)));
        return sum;
    }

  private:
    template <class T>
    static T power(T x, int n) {
        T y = 1;
        for (; n > 0; --n) y *= x;
        return y;
    }
};

}  // namespace equations
