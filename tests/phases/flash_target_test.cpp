// Flashes at given (p, h), (p, s) and (T, rho).
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::EquilibriumFailure;
using corvane::FlashResult;

namespace {
/// h and s of the phases by the published calculus add up to the whole's.
void expect_sums(ModelN const& m, FlashResult const& q) {
    double h = 0, s = 0, v = 0;
    for (unsigned k = 0; k < q.phases.size(); ++k) {
        auto const& [rho, x] = q.phases[k];
        h += q.fraction[k] * R * q.T * m.Hm(rho, q.T, x);
        s += q.fraction[k] * R * m.Sm(rho, q.T, x);
        v += q.fraction[k] / rho;
    }
    EXPECT_NEAR(q.h / (R * q.T), h / (R * q.T), 1e-10);
    EXPECT_NEAR(q.s / R, s / R, 1e-10);
    EXPECT_NEAR(q.rho * v, 1, 1e-12);
}

// Into one, two and three phases, and back to the T and p that went in.
TEST(FlashTarget, RoundTrips) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z;
        double T, p;
        unsigned phases;
    } cases[] = {{{"methane", "propane"}, mix(0.45), 270, 3, 2},
                 {{"methane", "propane"}, mix(0.45), 400, 3, 1},
                 {{"methane", "propane"}, mix(0.45), 150, 30, 1},
                 {{"methane", "propane"}, mix(1.0), 150, 3, 1},
                 {{"methane", "decane"}, mix(0.9), 320, 20, 2},
                 {{"water", "methane"}, mix(0.3), 180, 0.1, 2},        // water is all but absent
                 {{"carbon_dioxide", "water"}, mix(0.5), 280, 10, 2},  // two liquids
                 {{"nitrogen", "methane", "ethane", "propane", "decane"},
                  vec({0.05, 0.6, 0.15, 0.1, 0.1}),
                  280,
                  4,
                  2},
                 {{"methane", "decane", "water"}, vec({0.4, 0.3, 0.3}), 300, 3, 3},
                 {{"water"}, vec({1}), 500, 30, 1}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.names[0] << " " << c.T << " K");
        const Mixture m = mixture_of("PR", "vdW1", c.names);
        FlashResult in = corvane::flash_pT(*m, c.p, c.T, c.z);
        corvane::add_caloric(*m, c.z, in);
        expect_sums(*m, in);
        corvane::FlashOptions warm;
        warm.start = &in;
        for (auto const& o : {corvane::FlashOptions{}, warm})
            for (auto const& q : {corvane::flash_ph(*m, c.p, in.h, c.z, o),
                                  corvane::flash_ps(*m, c.p, in.s, c.z, o),
                                  corvane::flash_Trho(*m, c.T, in.rho, c.z, o)}) {
                ASSERT_EQ(q.phases.size(), c.phases);
                EXPECT_NEAR(q.T, c.T, 1e-6);
                EXPECT_NEAR(q.p / c.p, 1, 1e-8);
                expect_sums(*m, q);
                EXPECT_EQ(q.certificate.bounded(), c.phases > 1);
                if (c.phases < 2) continue;
                // of both results: h, s and rho of the first one have the error of its phases
                const double error = q.certificate.value_error + 10 * in.certificate.x_error;
                EXPECT_LE(std::fabs(q.T / c.T - 1) + std::fabs(q.p / c.p - 1), error + 1e-15);
                EXPECT_LE(error, 1e-8);
            }
    }
}

// Where h, s and rho jump at one T and p: the phases of the jump share the whole by the lever.
TEST(FlashTarget, Jumps) {
    const Mixture m = mixture_of("PR", "vdW1", {"carbon_dioxide", "water"});
    const auto expect_there = [&](Vector<double> const& z, FlashResult const& q, double T, double p,
                                  std::vector<double> const& fraction) {
        ASSERT_EQ(q.phases.size(), fraction.size());
        EXPECT_NEAR(q.T, T, 1e-6);
        EXPECT_NEAR(q.p / p, 1, 1e-8);
        for (unsigned k = 0; k < fraction.size(); ++k)
            EXPECT_NEAR(q.fraction[k], fraction[k], 1e-8);
        expect_sums(*m, q);
    };
    // A pure fluid between its saturated liquid and vapour, from the solver of saturation points.
    const auto sat = corvane::bubble_T(*m, 280, mix(1));
    for (double f : {1e-6, 0.3, 0.999}) {
        FlashResult in;
        in.T = 280;
        in.p = sat.p;
        in.phases = {sat.given, sat.incipient};
        in.fraction = {1 - f, f};
        in.rho = 1 / ((1 - f) / sat.given.rho + f / sat.incipient.rho);
        corvane::add_caloric(*m, mix(1), in);
        for (auto const& q : {corvane::flash_ph(*m, sat.p, in.h, mix(1)),
                              corvane::flash_ps(*m, sat.p, in.s, mix(1)),
                              corvane::flash_Trho(*m, 280, in.rho, mix(1))})
            expect_there(mix(1), q, 280, sat.p, in.fraction);
    }
    // Three phases, at a state found here by way of (T, rho): between densities of two liquids and
    // of liquid and vapour.
    const double p3 = 5.25;  // MPa, about
    for (double x : {0.3, 0.9})
        for (double f : {0.1, 0.8}) {
            const double low = corvane::flash_pT(*m, 0.99 * p3, 290, mix(x)).rho,
                         high = corvane::flash_pT(*m, 1.01 * p3, 290, mix(x)).rho;
            const auto in = corvane::flash_Trho(*m, 290, 1 / ((1 - f) / low + f / high), mix(x));
            ASSERT_EQ(in.phases.size(), 3u);
            for (int i = 0; i < 2; ++i)
                for (unsigned k = 1; k < 3; ++k)
                    EXPECT_NEAR(m->my(in.phases[0].x * in.phases[0].rho, 290, i),
                                m->my(in.phases[k].x * in.phases[k].rho, 290, i), 1e-9);
            for (auto const& q : {corvane::flash_ph(*m, in.p, in.h, mix(x)),
                                  corvane::flash_ps(*m, in.p, in.s, mix(x))})
                expect_there(mix(x), q, 290, in.p, in.fraction);
        }
}

TEST(FlashTarget, Azeotrope) {
    const Mixture m = peng_robinson("carbon_dioxide", "ethane", 0.13);
    double low = 0.5, high = 0.9;
    for (int k = 0; k < 50; ++k) {
        const double x = (low + high) / 2;
        (corvane::bubble_p(*m, 3, mix(x)).incipient.x[0] > x ? low : high) = x;
    }
    const auto at = corvane::bubble_p(*m, 3, mix(low));
    FlashResult in;
    in.T = at.T;
    in.phases = {at.given, at.incipient};
    in.fraction = {0.4, 0.6};
    in.rho = 1 / (0.4 / at.given.rho + 0.6 / at.incipient.rho);
    corvane::add_caloric(*m, mix(low), in);
    for (auto const& q :
         {corvane::flash_ph(*m, 3, in.h, mix(low)), corvane::flash_ps(*m, 3, in.s, mix(low)),
          corvane::flash_Trho(*m, at.T, in.rho, mix(low))}) {
        ASSERT_EQ(q.phases.size(), 2u);
        EXPECT_NEAR(q.T, at.T, 1e-6);
        EXPECT_NEAR(q.p, 3, 1e-8);
        EXPECT_NEAR(q.fraction[1], 0.6, 1e-8);
    }
}

// Of the stable state: (∂h/∂s)_p = T and (∂h/∂p)_s = v, in one phase and in two; and
// (∂h/∂T)_p = cp in one.
TEST(FlashTarget, SlopesOfTheEnthalpy) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    for (double T : {170.0, 250.0, 280.0, 350.0}) {
        const Vector<double> z = mix(0.5);
        FlashResult at = corvane::flash_pT(*m, 3, T, z);
        corvane::add_caloric(*m, z, at);
        const double ds = 1e-3 * R, dp = 1e-3;
        EXPECT_NEAR(
            (corvane::flash_ps(*m, 3, at.s + ds, z).h - corvane::flash_ps(*m, 3, at.s - ds, z).h) /
                (2 * ds * T),
            1, 1e-6);
        EXPECT_NEAR(
            (corvane::flash_ps(*m, 3 + dp, at.s, z).h - corvane::flash_ps(*m, 3 - dp, at.s, z).h) /
                (2 * dp) * at.rho,
            1, 1e-5);
        if (at.phases.size() > 1) continue;
        const double dT = 1e-3 * T, cp = R * corvane::heat_capacities(*m, at.rho, T, z).Cpm;
        EXPECT_NEAR(corvane::flash_ph(*m, 3, at.h + cp * dT, z).T -
                        corvane::flash_ph(*m, 3, at.h - cp * dT, z).T,
                    2 * dT, 1e-5 * dT);
    }
}

TEST(FlashTarget, Refusals) {
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane"});
    const auto kind = [&](auto const& flash) {
        try {
            flash();
        } catch (EquilibriumFailure const& e) {
            EXPECT_NE(std::string(e.what()).find("is reached between"), std::string::npos);
            return e.kind();
        }
        return EquilibriumFailure::Kind::gave_up;
    };
    for (double sign : {1.0, -1.0}) {
        EXPECT_EQ(kind([&] { corvane::flash_ph(*m, 1, sign * 1e7, mix(0.5)); }),
                  EquilibriumFailure::Kind::no_solution);
        EXPECT_EQ(kind([&] { corvane::flash_ps(*m, 1, sign * 1e4, mix(0.5)); }),
                  EquilibriumFailure::Kind::no_solution);
    }
    const double none = std::nan("");
    EXPECT_EQ(th_code([&] { corvane::flash_ph(*m, 1, none, mix(0.5)); }), 5);
    EXPECT_EQ(th_code([&] { corvane::flash_ps(*m, -1, 100, mix(0.5)); }), 5);
    EXPECT_EQ(th_code([&] { corvane::flash_Trho(*m, 300, 0, mix(0.5)); }), 5);
    // Without ideal-gas tables there is no h and no s, but a density.
    m->mdl1[1]->ideal.reset();
    EXPECT_EQ(th_code([&] { corvane::flash_ph(*m, 1, 0, mix(0.5)); }), 3);
    EXPECT_EQ(corvane::flash_ph(*m, 1, 5000, mix(1)).phases.size(), 1u);  // none of it present
    const auto q = corvane::flash_Trho(*m, 250, 1e-3, mix(0.5));
    EXPECT_EQ(q.phases.size(), 2u);
    EXPECT_TRUE(std::isnan(q.h));
}

// At given rho a split is that at its p, and the bounds of its errors, from another system of
// equations, are of the same size away from critical points.
TEST(FlashTarget, BoundsAreThoseAtGivenPressure) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    for (auto [T, p] : {std::pair(250.0, 1.0), {250.0, 3.0}, {300.0, 3.0}}) {
        const auto at_p = corvane::flash_pT(*m, p, T, mix(0.5));
        const auto at_rho = corvane::flash_Trho(*m, T, at_p.rho, mix(0.5));
        ASSERT_EQ(at_rho.phases.size(), 2u);
        for (auto bound : {&corvane::Certificate::x_error, &corvane::Certificate::rho_error})
            EXPECT_LT(std::fabs(std::log(at_rho.certificate.*bound / (at_p.certificate.*bound))),
                      std::log(5))
                << T << " " << p;
    }
}
}  // namespace
