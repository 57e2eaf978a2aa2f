// Density roots against a scan of the isotherm.
#pragma once

#include <corvane/core/constants.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

/// The first two stable crossings of p below `top` by bisection against both roots of
/// vcalc(dilute, dense). They part by rounding over the slope: room·(1 + 0.1/(∂p/∂rho/RT)).
template <class Z, class Slope, class Vcalc>
void expect_roots_of_scan(double p, double T, double top, double room, Z z, Slope slope,
                          Vcalc vcalc) {
    const auto excess = [&](double rho) { return rho * R * T * z(rho) - p; };
    std::vector<double> want;
    double below = std::min(p / (10 * R * T), 1e-3 * top), low = excess(below);
    while (below < top && want.size() < 2) {
        const double rho = std::min({below * 1.02, below + 5e-4 * top, top}), high = excess(rho);
        if (low < 0 && high >= 0) {
            double a = below, b = rho;
            for (int k = 0; k < 60; ++k) (excess(0.5 * (a + b)) < 0 ? a : b) = 0.5 * (a + b);
            want.push_back(b);
        }
        below = rho;
        low = high;
    }
    double rho1 = 0, rho2 = 0;
    const int n = vcalc(rho1, rho2);
    ASSERT_EQ(n, want.size() == 2 ? 3 : static_cast<int>(want.size()));
    if (n == 0) return;
    EXPECT_NEAR(rho1 / want.front(), 1, room * (1 + 0.1 / slope(rho1)));
    EXPECT_NEAR((n == 3 ? rho2 : rho1) / want.back(), 1, room * (1 + 0.1 / slope(want.back())));
}
