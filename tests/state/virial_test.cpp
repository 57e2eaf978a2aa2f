// Virial coefficients: closed forms, the limit of Z, sums over the pairs.
#include "support/mixtures.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {
using corvane::virial_coefficients;

// Peng–Robinson: B = b − a/RT, C = b² + 2·a·b/RT, T·dB/dT = a/RT·(1 + m·√Tr/√α) with √α = 1 + m·(1 − √Tr), to
// more digits than differences have; with one-fluid mixing b_ij = (b_i + b_j)/2 and
// a_ij = √(a_i·a_j)·(1 − k_ij).
TEST(Virial, CoefficientsOfTheCubicEquationAreClosedForms) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"methane", "butane", "nitrogen"});
    ModelN const& m = *mixture.model;
    const double T = 300, RT = R * T;
    const auto x = vec({0.5, 0.3, 0.2});
    const auto q = virial_coefficients(m, T, x);
    double a[3], b[3], a_mix = 0, b_mix = 0;
    for (int i = 0; i < 3; ++i) {
        const auto pure = virial_coefficients(*m.mdl1[i], T);
        b[i] = 0.0777960739038885 * R * m.mdl1[i]->Tcrit() / m.mdl1[i]->pcrit();
        a[i] = RT * (b[i] - pure.B);
        EXPECT_NEAR(pure.C / (b[i] * b[i] + 2 * a[i] * b[i] / RT), 1.0, 1e-9);
        EXPECT_NEAR(pure.B / m.mdl1[i]->B(T, 2), 1.0, 1e-9);  // by differences
        const double root = std::sqrt(T / m.mdl1[i]->Tcrit()), w = m.mdl1[i]->omega(),
                     slope = 0.37464 + w * (1.54226 - w * 0.26992);
        EXPECT_NEAR(pure.B_T, a[i] / RT * (1 + slope * root / (1 + slope * (1 - root))),
                    1e-9 * pure.B_T);
        b_mix += x[i] * b[i];
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const double k = i == j ? 0.0 : m.param(0, i, j),
                         a_ij = std::sqrt(a[i] * a[j]) * (1 - k);
            EXPECT_NEAR(q.B_ij[i][j], (b[i] + b[j]) / 2 - a_ij / RT, 1e-9 * std::fabs(q.B));
            a_mix += x[i] * x[j] * a_ij;
        }
    EXPECT_NEAR(q.B, b_mix - a_mix / RT, 1e-9 * std::fabs(q.B));
    EXPECT_NEAR(q.C / (b_mix * b_mix + 2 * a_mix * b_mix / RT), 1.0, 1e-9);
}

// The limit of (Z − 1)/rho, sums over pairs, and B_T against differences, for every kind of model.
TEST(Virial, CoefficientsAreLimitsOfTheCompressibility) {
    for (char const* model : {"PR+vdW1", "SRK+vdW1", "PCSAFT+LB", "MEOS+GERG"}) {
        SCOPED_TRACE(model);
        const auto mixture = corvane::open_mixture(model, {"methane", "carbon_dioxide", "ethane"});
        ModelN const& m = *mixture.model;
        for (auto const& x : {vec({0.5, 0.3, 0.2}), vec({0.6, 0.0, 0.4}), vec({0.0, 1.0, 0.0})}) {
            const double T = 320, rho = 1e-6;
            const auto q = virial_coefficients(m, T, x);
            // Z − 1 of two densities, extrapolated; the fourth coefficient is of order v³
            const double one = (m.Z(rho, T, x) - 1) / rho,
                         two = (m.Z(2 * rho, T, x) - 1) / (2 * rho);
            EXPECT_NEAR(q.B, 2 * one - two, 1e-5);
            EXPECT_NEAR(q.C, (two - one) / rho, 3.0);
            double sum = 0;
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) {
                    EXPECT_DOUBLE_EQ(q.B_ij[i][j], q.B_ij[j][i]);
                    sum += x[i] * x[j] * q.B_ij[i][j];
                }
            EXPECT_NEAR(sum, q.B, 1e-10 * std::fabs(q.B));
            const double h = 1e-3 * T;
            EXPECT_NEAR(
                q.B_T,
                T * (virial_coefficients(m, T + h, x).B - virial_coefficients(m, T - h, x).B) /
                    (2 * h),
                1e-4 * std::fabs(q.B_T));
        }
    }
}
}  // namespace
