// A polynomial in δ times exp(−δ^l), with its derivatives.
#pragma once

namespace corvane {

/// δ^i·∂^iP/∂δ^i of a polynomial P, i = 0 … 3.
struct Polynomial {
    double p0 = 0.0, p1 = 0.0, p2 = 0.0, p3 = 0.0;

    /// c is a coefficient times δ^d.
    template <int order>
    void add(int d, double c) {
        p0 += c;
        if constexpr (order >= 1) p1 += d * c;
        if constexpr (order >= 2) p2 += d * (d - 1) * c;
        if constexpr (order >= 3) p3 += d * (d - 1) * (d - 2) * c;
    }
    /// Adds those of P·E to d0 … d3, for E = exp(−δ^l), or 1 where l = 0. power = δ^l.
    template <int order>
    void add_damped(int l_, double power, double E, double& d0, double& d1, double& d2,
                    double& d3) const {
        const double l = l_, u = l_ == 0 ? 0.0 : l * power;  // −δ ∂ln E/∂δ
        d0 += p0 * E;
        if constexpr (order >= 1) d1 += (p1 - u * p0) * E;
        const double u2 = u * (u - (l - 1.0));  // δ² ∂²E/E
        if constexpr (order >= 2) d2 += (p2 - 2.0 * u * p1 + u2 * p0) * E;
        if constexpr (order >= 3) {
            const double u3 = -u * (u * u - 3.0 * (l - 1.0) * u + (l - 1.0) * (l - 2.0));
            d3 += (p3 - 3.0 * u * p2 + 3.0 * u2 * p1 + u3 * p0) * E;
        }
    }
};

}  // namespace corvane
