// The cubic equations a second time, from the formulas as published (p of v and a(T)) and in 100
// decimal digits, where neither cancellation nor finite differences cost anything.
#pragma once

#include "central_difference.h"

#include <corvane/core/constants.h>

#include <algorithm>
#include <vector>

namespace reference {

struct Cubic {
    double u, w;                  // p = R·T/(v − b) − a/(v² + u·b·v + w·b²)
    Big y_c;                      // b·rho_c
    double Tc, b, m, L, M, N, c;  // Twu's alpha where N is not 0
    double c2 = 0, c3 = 0;        // of Mathias and Copeman, m their c1

    Big q_c() const {  // from ∂p/∂v = ∂²p/∂v² = 0 at y_c
        const Big D = 1 + y_c * (u + w * y_c);
        return D * D / ((1 - y_c) * (1 - y_c) * y_c * (2 + u * y_c));
    }
    Big alpha(Big const& T) const {
        const Big Tr = T / Tc;
        if (N != 0) return pow(Tr, Big(N) * (Big(M) - 1)) * exp(L * (1 - pow(Tr, Big(N) * M)));
        const Big r = 1 - sqrt(Tr), s = 1 + r * (m + (r > 0 ? Big(r * (c2 + r * c3)) : Big(0)));
        return s * s;
    }
    Big q(Big const& T) const { return q_c() * alpha(T) * Tc / T; }
    Big Ar(Big const& rho, Big const& T) const {
        const Big v = 1 / rho + c, root = sqrt(Big(u) * u - 4 * w);
        const Big plus = v + b * (u + root) / 2, minus = v + b * (u - root) / 2;
        return -log((v - b) / v) - q(T) / root * log(plus / minus) - log(rho * v);
    }
    Big derivative(double rho, double T, int i, int j) const {
        return scaled_derivative([&](Big const& r, Big const& t) { return Ar(r, t); }, rho, T, i,
                                 j);
    }
};

/// All y in (0, 1), ascending, with y/(1 − y) − q·y²/(1 + u·y + w·y²) = P: Cardano's formulas.
inline std::vector<Big> reduced_roots(double u, double w, Big const& P, Big const& q) {
    const Big c2 = P * (u - 1) - 1, c1 = -P * (u - q - P * (w - u)), c0 = -P * P * (w + q + P * w);
    const Big Q = (c2 * c2 - 3 * c1) / 9, S = (2 * c2 * c2 * c2 - 9 * c2 * c1 + 27 * c0) / 54;
    const Big D = S * S - Q * Q * Q;
    std::vector<Big> y;
    auto add = [&](Big const& Z) {
        if (Z > P) y.push_back(P / Z);
    };
    if (D > 0) {
        const Big A = (S > 0 ? -1 : 1) * cbrt(abs(S) + sqrt(D));
        add(A + Q / A - c2 / 3);
    } else {
        const Big pi = boost::math::constants::pi<Big>(), root = sqrt(Q);
        for (int k : {-1, 0, 1})
            add(-2 * root * cos((acos(S / (root * root * root)) + 2 * k * pi) / 3) - c2 / 3);
    }
    std::sort(y.begin(), y.end());
    return y;
}

/// 1/y_c of Peng & Robinson and of Soave (1972).
inline Big pr_y_c() {
    return 1 / (1 + cbrt(4 - sqrt(Big(8))) + cbrt(4 + sqrt(Big(8))));
}
inline Big srk_y_c() {
    return cbrt(Big(2)) - 1;
}
}  // namespace reference
