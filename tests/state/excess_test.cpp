// Activity coefficients, excess functions and Henry's constants: thermodynamic identities, limits,
// and closed forms of the cubic equation.
#include "support/errors.h"
#include "support/mixtures.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {
using corvane::excess_properties;

struct Case {
    char const *model, *a, *b;
    double T, p;
};
const Case kCases[] = {{"PR+vdW1", "acetone", "chloroform", 300, 0.1},
                       {"SRK+vdW1", "propane", "butane", 250, 2.0},
                       {"PCSAFT+LB", "ethanol", "hexane", 320, 0.1},
                       {"PCSAFT+LB", "methane", "water", 300, 5.0},
                       {"MEOS+GERG", "methane", "nitrogen", 100, 3.0},
                       {"MEOS+GERG", "methane", "carbon_dioxide", 280, 12.0}};

TEST(Component, PropertiesAreOnesOfTheWholeByTheirSums) {
    for (Case const& c : kCases) {
        SCOPED_TRACE(std::string(c.model) + " " + c.a);
        const auto mixture = corvane::open_mixture(c.model, {c.a, c.b});
        ModelN const& m = *mixture.model;
        for (double x0 : {0.0, 0.3, 1.0})
            for (double rho : {1e-4, 1.2e-2}) {
                const auto x = vec({x0, 1 - x0});
                const auto q = corvane::component_properties(m, c.T, rho, x);
                const auto all = corvane::phase_properties(m, c.T, rho, x);
                double v = 0, h = 0, g = 0;
                for (int i = 0; i < 2; ++i) {
                    v += x[i] * q.v[i];
                    h += x[i] * q.h_res[i];
                    g += x[i] * q.ln_fx[i];
                }
                EXPECT_NEAR(v * rho, 1.0, 1e-12);
                EXPECT_NEAR(h / (R * c.T), all.h_res, 1e-10 * (1 + std::fabs(all.h_res)));
                EXPECT_NEAR(g - std::log(rho * R * c.T), all.a_res + all.Z - 1, 1e-11);
            }
    }
}

// Gibbs–Duhem: Σ x_i·∂ln γ_i/∂x = 0; h, v and s from g by differentiation in T and p; and the limit
// of a pure component, with the infinitely dilute one as the limit of dilution.
TEST(Excess, FunctionsBelongTogether) {
    for (Case const& c : kCases) {
        SCOPED_TRACE(std::string(c.model) + " " + c.a);
        const auto mixture = corvane::open_mixture(c.model, {c.a, c.b});
        ModelN const& m = *mixture.model;
        const auto at = [&](double T, double p, double x0) {
            return excess_properties(m, T, p, vec({x0, 1 - x0}));
        };
        const double RT = R * c.T, x = 0.4, d = 1e-5;
        const auto q = at(c.T, c.p, x);
        const auto low = at(c.T, c.p, x - d), high = at(c.T, c.p, x + d);
        double sum = 0, largest = 0;
        for (int i = 0; i < 2; ++i) {
            const double slope = (high.ln_gamma[i] - low.ln_gamma[i]) / (2 * d);
            sum += (i == 0 ? x : 1 - x) * slope;
            largest = std::fmax(largest, std::fabs(slope));
        }
        EXPECT_NEAR(sum, 0.0, 1e-8 * (1 + largest));
        EXPECT_NEAR(q.g, RT * (x * q.ln_gamma[0] + (1 - x) * q.ln_gamma[1]), 1e-12 * RT);
        const double dT = 1e-3 * c.T, dp = 1e-3 * c.p;  // third derivatives bound these
        const auto cold = at(c.T - dT, c.p, x), hot = at(c.T + dT, c.p, x);
        EXPECT_NEAR(q.s, -(hot.g - cold.g) / (2 * dT), 1e-4 * (R + std::fabs(q.s)));
        EXPECT_NEAR(q.cp, (hot.h - cold.h) / (2 * dT), 1e-4 * (R + std::fabs(q.cp)));
        EXPECT_NEAR(q.v, (at(c.T, c.p + dp, x).g - at(c.T, c.p - dp, x).g) / (2 * dp),
                    1e-4 * (1 + std::fabs(q.v)));
        const auto pure = at(c.T, c.p, 1.0), nearly = at(c.T, c.p, 1.0 - 1e-9);
        EXPECT_NEAR(pure.ln_gamma[0], 0.0, 1e-11);
        EXPECT_NEAR(pure.h / RT, 0.0, 1e-11);
        EXPECT_NEAR(pure.ln_gamma[1], nearly.ln_gamma[1], 1e-6);
        for (double zero : {pure.g / RT, pure.s / R, pure.cp / R, pure.v * pure.rho})
            EXPECT_NEAR(zero, 0.0, 1e-10);
    }
}

TEST(Excess, ReferencesSayWhatTheyAre) {
    const auto gas = corvane::open_mixture("PR+vdW1", {"methane", "butane"});
    const auto q = excess_properties(*gas.model, 300, 1.0, vec({0.1, 0.9}));
    EXPECT_TRUE(q.pure[0].alone && !q.pure[0].liquid);  // above its critical temperature
    EXPECT_TRUE(q.pure[1].liquid);
    const auto hot = excess_properties(*gas.model, 380, 0.8, vec({0.0, 1.0}));
    EXPECT_TRUE(hot.pure[1].liquid && !hot.pure[1].stable && !hot.pure[1].alone);  // superheated
    const auto vapour =
        excess_properties(*gas.model, 380, 0.8, vec({0.5, 0.5}), corvane::Root::dilute);
    EXPECT_FALSE(vapour.pure[1].liquid);
    EXPECT_TRUE(vapour.pure[1].stable);
}

// Peng–Robinson with one-fluid mixing, infinitely dilute 1 in 2: ln φ_1 = b_1/b_2·(Z − 1)
// − ln(Z − B) − A/(√8·B)·(2·a_12/a_2 − b_1/b_2)·ln[(Z + (1 + √2)B)/(Z + (1 − √2)B)]; a and b from
// the virial coefficients, B_ij = (b_i + b_j)/2 − a_ij/RT.
TEST(Henry, ConstantIsTheClosedFormOfTheCubicEquation) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"nitrogen", "propane"});
    ModelN const& m = *mixture.model;
    const double T = 250, RT = R * T, s = std::sqrt(2.0);
    const auto x = vec({0.0, 1.0});
    const auto q = corvane::henry_constant(m, 0, T, x);
    const auto saturated = corvane::pure_saturation_T(*m.mdl1[1], T);
    EXPECT_NEAR(q.p / saturated.p, 1.0, 1e-9);
    double b[2];
    for (int i = 0; i < 2; ++i) b[i] = 0.07779607390 * R * m.mdl1[i]->Tcrit() / m.mdl1[i]->pcrit();
    const auto B = corvane::virial_coefficients(m, T, x).B_ij;
    const double a12 = RT * ((b[0] + b[1]) / 2 - B[0][1]), a2 = RT * (b[1] - B[1][1]);
    const double Z = q.p / (q.rho * RT), Bp = b[1] * q.p / RT, A = a2 * q.p / (RT * RT);
    const double ln_phi = b[0] / b[1] * (Z - 1) - std::log(Z - Bp) -
                          A / (2 * s * Bp) * (2 * a12 / a2 - b[0] / b[1]) *
                              std::log((Z + (1 + s) * Bp) / (Z + (1 - s) * Bp));
    EXPECT_NEAR(q.ln_phi, ln_phi, 2e-8);  // the digits of Ω_b
    EXPECT_NEAR(q.H, std::exp(ln_phi) * q.p, 1e-6 * q.H);
}

TEST(Henry, ConstantIsTheLimitOfFugacityOverMoleFraction) {
    for (Case const& c : kCases) {
        SCOPED_TRACE(std::string(c.model) + " " + c.a);
        const auto mixture = corvane::open_mixture(c.model, {c.a, c.b});
        ModelN const& m = *mixture.model;
        const auto solvent = vec({0.0, 1.0});
        const auto q = corvane::henry_constant(m, 0, c.T, c.p, solvent);
        // f/x at two small x, extrapolated in x
        const auto ln_fx = [&](double x) {
            return excess_properties(m, c.T, c.p, vec({x, 1 - x})).ln_phi[0] + std::log(c.p);
        };
        EXPECT_NEAR(q.ln_H, 2 * ln_fx(1e-6) - ln_fx(2e-6), 1e-7);
        EXPECT_NEAR(q.ln_gamma, excess_properties(m, c.T, c.p, solvent).ln_gamma[0], 1e-12);
        const auto ln_H = [&](double T, double p) {
            return corvane::henry_constant(m, 0, T, p, solvent).ln_H;
        };
        const double dT = 1e-3 * c.T, dp = 1e-3 * c.p;
        EXPECT_NEAR(q.h_solution / (R * c.T),
                    -c.T * (ln_H(c.T + dT, c.p) - ln_H(c.T - dT, c.p)) / (2 * dT), 1e-3);
        EXPECT_NEAR(q.v / (R * c.T), (ln_H(c.T, c.p + dp) - ln_H(c.T, c.p - dp)) / (2 * dp),
                    1e-4 * (1 + std::fabs(q.v / (R * c.T))));
    }
}

TEST(Excess, WhatMakesNoSenseIsRefused) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"methane", "butane"});
    ModelN const& m = *mixture.model;
    const double nan = std::nan("");
    for (double bad : {0.0, -1.0, nan, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(th_code([&] { excess_properties(m, bad, 1, vec({0.5, 0.5})); }), 5);
        EXPECT_EQ(th_code([&] { excess_properties(m, 300, bad, vec({0.5, 0.5})); }), 5);
        EXPECT_EQ(th_code([&] { corvane::henry_constant(m, 0, bad, vec({0.0, 1.0})); }), 5);
        EXPECT_EQ(th_code([&] { corvane::virial_coefficients(m, bad, vec({0.0, 1.0})); }), 5);
        EXPECT_EQ(th_code([&] {
                      corvane::component_properties(m, bad, 1e-3, vec({0.5, 0.5}));
                  }),
                  5);
    }
    for (auto const& x : {vec({0.5, 0.6}), vec({-0.1, 1.1}), vec({nan, 1.0})})
        EXPECT_EQ(th_code([&] { excess_properties(m, 300, 1, x); }), 5);
    EXPECT_EQ(th_code([&] { corvane::henry_constant(m, 0, 300, vec({0.5, 0.5})); }), 5);
    EXPECT_EQ(th_code([&] { corvane::henry_constant(m, 2, 300, vec({0.0, 1.0})); }), 5);
    EXPECT_EQ(mth_code([&] { excess_properties(m, 300, 1, vec({1.0})); }), 2);
    EXPECT_EQ(mth_code([&] { corvane::virial_coefficients(m, 300, vec({1.0})); }), 2);
    EXPECT_THROW(corvane::henry_constant(m, 0, 500, vec({0.0, 1.0})), corvane::EquilibriumFailure);
}
}  // namespace
