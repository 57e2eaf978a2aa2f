// Mixtures against reference correlations that were fitted to measurements of the mixture itself, and what
// must hold exactly.
#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

Vector<double> vec(std::vector<double> const& values) {
    Vector<double> v(static_cast<int>(values.size()));
    for (int i = 0; i < v.size(); ++i) v[i] = values[static_cast<std::size_t>(i)];
    return v;
}

// Air: Lemmon, Jacobsen (2004). Blends: compositions by mass of their designation; viscosity and
// conductivity by Geller and co-workers (2000, 2001), surface tension by Okada and co-workers (1999). Their own
// states of saturation, to 0.9 Tc. The tolerances are the accuracy that the page of transport properties states.
TEST(MixtureTransport, MeetsReferenceCorrelationsOfMixtures) {
    struct Blend {
        char const* name;
        std::vector<std::string> components;
        std::vector<double> parts;
        bool by_mass;
    };
    for (Blend const& blend : {Blend{"air", {"nitrogen", "oxygen", "argon"}, {0.7812, 0.2096, 0.0092}, false},
                               {"r404a", {"r125", "r143a", "r134a"}, {44, 52, 4}, true},
                               {"r407c", {"r32", "r125", "r134a"}, {23, 25, 52}, true},
                               {"r410a", {"r32", "r125"}, {50, 50}, true},
                               {"r507a", {"r125", "r143a"}, {50, 50}, true}}) {
        SCOPED_TRACE(blend.name);
        const auto fluid = corvane::open("MEOS", blend.name);
        const corvane::Transport expected(fluid);
        const auto mixture = corvane::open_mixture("MEOS+GERG", blend.components);
        const corvane::MixtureTransport transport(mixture);
        Vector<double> x = vec(blend.parts);
        double sum = 0;
        for (int i = 0; i < x.size(); ++i) {
            if (blend.by_mass) x[i] /= *mixture.model->mdl1[i]->ppar(0);
            sum += x[i];
        }
        for (int i = 0; i < x.size(); ++i) x[i] /= sum;
        for (double part : {0.7, 0.8, 0.9}) {
            const double T = part * fluid.model->Tcrit();
            const auto s = corvane::pure_saturation_T(*fluid.model, T);
            for (double rho : {0.0, s.rhoV, s.rhoL}) {
                EXPECT_NEAR(transport.viscosity(T, rho, x).value / expected.viscosity(T, rho).value, 1, 0.08);
                EXPECT_NEAR(transport.thermal_conductivity(T, rho, x).value /
                                expected.conductivity_background(T, rho).value,
                            1, 0.15);
            }
            if (part > 0.85) continue;  // parachors are for temperatures farther from the critical one
            EXPECT_NEAR(transport.surface_tension(T, s.rhoL, x, s.rhoV, x).value /
                            expected.surface_tension(T).value,
                        1, 0.05);
        }
    }
}

TEST(MixtureTransport, PureComponentsDiluteGasesAndOrderAreExact) {
    const auto ab = corvane::open_mixture("PR+vdW1", {"methane", "acetone"}),
               ba = corvane::open_mixture("PR+vdW1", {"acetone", "methane"});
    const corvane::MixtureTransport transport(ab), other(ba);
    const auto fluid = corvane::open("PR", "acetone");
    const corvane::Transport acetone(fluid);
    const double T = 320;
    const auto s = corvane::pure_saturation_T(*fluid.model, T);
    const Vector<double> pure = vec({0, 1});
    for (double rho : {0.0, s.rhoV, s.rhoL}) {
        EXPECT_NEAR(transport.viscosity(T, rho, pure).value / acetone.viscosity(T, rho).value, 1, 1e-13);
        EXPECT_NEAR(transport.thermal_conductivity(T, rho, pure).value /
                        acetone.thermal_conductivity(T, rho).value, 1, 1e-13);
        const auto one = transport.viscosity(T, rho, vec({0.3, 0.7})), two = other.viscosity(T, rho, vec({0.7, 0.3}));
        EXPECT_NEAR(one.value / two.value, 1, 1e-13);
    }
    EXPECT_NEAR(transport.surface_tension(T, s.rhoL, pure, s.rhoV, pure).value / acetone.surface_tension(T).value,
                1, 1e-13);
    // Wilke's formula by hand, and the limit along the density.
    const Vector<double> x = vec({0.4, 0.6});
    EXPECT_NEAR(transport.viscosity(T, 1e-12, x).value / transport.viscosity(T, 0, x).value, 1, 1e-6);
    EXPECT_NEAR(transport.thermal_conductivity(T, 1e-12, x).value / transport.thermal_conductivity(T, 0, x).value,
                1, 1e-6);
    const double a = corvane::Transport(corvane::open("PR", "methane")).viscosity(T, 0).value,
                 b = acetone.viscosity(T, 0).value, m = 16.0428 / 58.07914;
    const auto phi = [](double eta, double mass) {
        return std::pow(1 + std::sqrt(eta) * std::pow(mass, -0.25), 2) / std::sqrt(8 * (1 + mass));
    };
    const double wilke = 0.4 * a / (0.4 + 0.6 * phi(a / b, m)) + 0.6 * b / (0.6 + 0.4 * phi(b / a, 1 / m));
    EXPECT_NEAR(transport.viscosity(T, 0, x).value / wilke, 1, 1e-4);  // molar masses to five digits
    // Where liquid and vapour become one there is no tension.
    EXPECT_EQ(transport.surface_tension(T, 0.005, x, 0.005, x).value, 0);
}

TEST(MixtureTransport, WhatIsMissingOrWrongIsSaid) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"acetone", "r1336mzz_z"});
    const corvane::MixtureTransport transport(mixture);
    try {
        transport.viscosity(300, 0, vec({0.5, 0.5}));
        ADD_FAILURE();
    } catch (corvane::OpenFailure const& failure) {
        EXPECT_NE(std::string(failure.what()).find("no viscosity of r1336mzz_z"), std::string::npos);
    }
    EXPECT_GT(transport.viscosity(300, 0, vec({1, 0})).value, 0);  // it is not there
    EXPECT_FALSE(transport.viscosity(1900, 0, vec({1, 0})).in_range);
    // Ethane's viscosity reaches to 675 K, its conductivity farther; a mixture's needs both.
    const auto gas = corvane::open_mixture("PR+vdW1", {"ethane", "propane"});
    EXPECT_TRUE(corvane::MixtureTransport(gas).thermal_conductivity(640, 0, vec({0.5, 0.5})).in_range);
    EXPECT_FALSE(corvane::MixtureTransport(gas).thermal_conductivity(800, 0, vec({1, 0})).in_range);
    for (auto const& x : {vec({0.5, 0.4}), vec({1.5, -0.5}), vec({1})})
        EXPECT_THROW(transport.viscosity(300, 0.001, x), ThException);
    EXPECT_THROW(transport.viscosity(-1, 0.001, vec({1, 0})), ThException);
    EXPECT_THROW(transport.thermal_conductivity(300, -1, vec({1, 0})), ThException);
}
}  // namespace
