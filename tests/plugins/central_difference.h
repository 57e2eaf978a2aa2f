// Derivatives of formulas in 100 decimal digits, where differences cost nothing.
#pragma once

#include <boost/multiprecision/cpp_bin_float.hpp>

namespace reference {
using Big = boost::multiprecision::cpp_bin_float_100;

/// x^i·y^j·∂^(i+j)f/∂x^i∂y^j by central differences, good to about 1e-30.
template <class F>
Big scaled_derivative(F f, Big const& x, Big const& y, int i, int j) {
    const Big h("1e-16");
    constexpr int kBinomial[4][4] = {{1}, {1, 1}, {1, 2, 1}, {1, 3, 3, 1}};
    Big sum = 0;
    for (int k = 0; k <= i; ++k)
        for (int l = 0; l <= j; ++l)
            sum += ((k + l) % 2 ? -1 : 1) * kBinomial[i][k] * kBinomial[j][l] *
                   f(x * (1 + h * (Big(i) / 2 - k)), y * (1 + h * (Big(j) / 2 - l)));
    return sum / pow(h, i + j);
}
}  // namespace reference
