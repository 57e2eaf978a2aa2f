// PC-SAFT a second time: the formulas as printed in the appendix of Gross & Sadowski (2001), in the
// variables ζ_n of mixtures, and the mass balance of association solved by bisection, in 100
// decimal digits, where neither cancellation nor finite differences cost anything.
#pragma once

#include <corvane/core/constants.h>
#include <plugins/pcsaft/fluid.h>

#include <boost/math/constants/constants.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>

namespace reference {
using Big = boost::multiprecision::cpp_bin_float_100;

struct PcSaft {
    corvane::pcsaft::Parameters par;

    /// A^r/(RT) at rho [mol/cm³], T [K].
    Big Ar(Big const& molar, Big const& T) const {
        const Big pi = boost::math::constants::pi<Big>(), m = par.m;
        const Big sigma3 = Big(par.vs) / (pi / 6 * Big(NA));  // cm³
        const Big rho = molar * Big(NA), eps = par.Ts / T;
        const Big d = cbrt(sigma3) * (1 - Big(12) / 100 * exp(-3 * eps));
        const auto zeta = [&](int n) -> Big { return pi / 6 * rho * m * pow(d, n); };
        const Big z0 = zeta(0), z1 = zeta(1), z2 = zeta(2), z3 = zeta(3);
        const Big hs = (3 * z1 * z2 / (1 - z3) + z2 * z2 * z2 / (z3 * (1 - z3) * (1 - z3)) +
                        (z2 * z2 * z2 / (z3 * z3) - z0) * log(1 - z3)) /
                       z0;  // A.6
        const Big half = d / 2;
        const Big g = 1 / (1 - z3) + half * 3 * z2 / pow(1 - z3, 2) +
                      half * half * 2 * z2 * z2 / pow(1 - z3, 3);  // A.7
        Big i1 = 0, i2 = 0;
        for (int i = 0; i < 7; ++i) {  // A.16 to A.19
            const auto series = [&](double const(&c)[3][7]) -> Big {
                return c[0][i] + (m - 1) / m * c[1][i] + (m - 1) / m * (m - 2) / m * c[2][i];
            };
            i1 += series(corvane::pcsaft::kDispersionA) * pow(z3, i);
            i2 += series(corvane::pcsaft::kDispersionB) * pow(z3, i);
        }
        const Big c1 = 1 / (1 + m * (8 * z3 - 2 * z3 * z3) / pow(1 - z3, 4) +
                            (1 - m) * (20 * z3 - 27 * z3 * z3 + 12 * pow(z3, 3) - 2 * pow(z3, 4)) /
                                pow((1 - z3) * (2 - z3), 2));  // A.11
        const Big disp = -2 * pi * rho * i1 * m * m * eps * sigma3 -
                         pi * rho * m * c1 * i2 * m * m * eps * eps * sigma3;  // A.10
        const Big delta = sigma3 * g * par.kappa * (exp(par.epsilon / T) - 1);
        return m * hs - (m - 1) * log(g) + disp + association(rho * delta);
    }

    /// Mass balance of the donors, X·(1 + na·D·Y(X)) = 1 with Y(X) = 1/(1 + nd·D·X) the free
    /// acceptors, by bisection.
    Big association(Big const& D) const {
        const Big nd = par.donors, na = par.acceptors;
        Big low = 0, high = 1, x, y;
        for (int k = 0; k < 340; ++k) {
            x = (low + high) / 2;
            y = 1 / (1 + nd * D * x);
            (x * (1 + na * D * y) > 1 ? high : low) = x;
        }
        return nd * (log(x) - x / 2 + Big(1) / 2) + na * (log(y) - y / 2 + Big(1) / 2);
    }

    /// rho^i·T^j·∂^(i+j)Ar/∂rho^i∂T^j by central differences, good to about 1e-30.
    Big derivative(double rho, double T, int i, int j) const {
        const Big h("1e-16");
        const int binomial[4][4] = {{1}, {1, 1}, {1, 2, 1}, {1, 3, 3, 1}};
        Big sum = 0;
        for (int k = 0; k <= i; ++k)
            for (int l = 0; l <= j; ++l)
                sum += ((k + l) % 2 ? -1 : 1) * binomial[i][k] * binomial[j][l] *
                       Ar(rho * (1 + h * (Big(i) / 2 - k)), T * (1 + h * (Big(j) / 2 - l)));
        return sum / pow(h, i + j);
    }
};

}  // namespace reference
