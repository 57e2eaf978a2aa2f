// Bubble and dew points of mixtures.
#include <corvane/core/records.h>

#include "equilibria/phases.h"
#include "support/vdw_mixture.h"

namespace {
TEST(TwoPhase, BubblePointsMeetTheConditionsAndInvert) {
    struct Row {
        VdwMixture::Component first, second;
        double k, T, x_last;
    };
    const Row rows[] = {{{190, 40}, {370, 60}, 0.01, 250, 0.3},  // as methane in propane
                        {{190, 40}, {370, 60}, 0.01, 300, 0.3},
                        {{300, 40}, {310, 40}, 0.05, 250, 0.95},   // azeotrope
                        {{300, 40}, {330, 50}, -0.1, 270, 0.95}};  // pressure minimum
    for (Row const& b : rows) {
        const VdwMixture m({b.first, b.second}, b.k);
        march(m, b.T, b.x_last, 0.05, [&](double x, Bubble const& s) {
            SCOPED_TRACE(testing::Message() << "Tc " << b.second.Tc << " T " << b.T << " x " << x);
            expect_equilibrium(m, b.T, mix(x) * s.rho1, s.rho2, s.p);
            Bubble t = s;  // at that pressure the temperature comes back, from 2 % away
            double T = 1.02 * b.T;
            vleN_p(&m, s.p, mix(x), T, t.rho1, t.rho2);
            EXPECT_NEAR(T / b.T, 1, 1e-9);
            // The second phase, given, finds the first: a dew point.
            Bubble dew{0, 1.02 * s.rho2.sum(), mix(x) * (0.99 * s.rho1)};
            vleN_T(&m, b.T, s.rho2 * (1 / s.rho2.sum()), dew.p, dew.rho1, dew.rho2);
            EXPECT_NEAR(dew.p / s.p, 1, 1e-9);
            EXPECT_NEAR(dew.rho2[0] / (x * s.rho1), 1, 1e-7);
        });
    }
}

TEST(TwoPhase, Limits) {
    const VdwMixture m({{190, 40}, {370, 60}}, 0.01);
    double p, rhoL, rhoV;
    corvane::Saturation().at_T(m.mdl1[1], 280, 0, p, rhoL, rhoV);
    Bubble s{0, 1.05 * rhoL, pair(7, 0.9 * rhoV)};  // x = 0: the pure fluid
    vleN_T(&m, 280, mix(0), s.p, s.rho1, s.rho2);
    EXPECT_NEAR(s.p / p, 1, 1e-10);
    EXPECT_EQ(s.rho2[0], 0.0);
    // Identical components boil like one; equal fluids with a12 = a(1 − k) have their azeotrope at
    // x = 1/2 by symmetry, where they are a pure fluid with a(1 − k/2).
    for (double k : {0.0, 0.05}) {
        const VdwMixture twins({{300, 40}, {300, 40}}, k);
        const VdwModel fluid("", 300 * (1 - k / 2), 40);
        corvane::Saturation().at_T(&fluid, 240, 0, p, rhoL, rhoV);
        s = {0, 1.02 * rhoL, mix(0.5) * (0.95 * rhoV)};
        vleN_T(&twins, 240, mix(0.5), s.p, s.rho1, s.rho2);
        EXPECT_NEAR(s.p / p, 1, 1e-10);
        EXPECT_NEAR(s.rho2[0] / s.rho2[1], 1, 1e-9);
    }
    // Raoult's law of the solvent; what is left of it is 2e-9 of dissolved gas.
    corvane::Saturation().at_T(m.mdl1[1], 148, 0, p, rhoL, rhoV);
    march(m, 148, 1e-9, 1e-9, [&](double, Bubble const& b) {
        EXPECT_NEAR(b.rho2[1] / b.rho2.sum() * b.p / p, 1, 1e-7);
    });
}

TEST(TwoPhase, CodesAndResiduals) {
    const VdwMixture m({{190, 40}, {370, 60}}, 0.01);
    const auto code = [&](double T, double x0, double rho1, double a, double b) {
        Bubble s{0, rho1, pair(a, b)};
        return th_code([&] { vleN_T(&m, T, mix(x0), s.p, s.rho1, s.rho2); });
    };
    EXPECT_EQ(code(250, 0.2, 0.011, 0.0022, 0.0088), th_trivial);    // the phase itself
    EXPECT_EQ(code(900, 0.5, 0.001, 0.0004, 0.0006), th_trivial);    // only one phase there
    EXPECT_EQ(code(250, 0.2, 0.011, -1e-4, 1e-4), th_out_of_range);  // start values
    EXPECT_EQ(code(250, 0.2, 0.0, 1e-4, 1e-4), th_out_of_range);

    const Vector<double> x = mix(0.3), row = pair(1e-3, 2e-3);
    pass_ffeN context{&m, 1, 2.0, 0.0, &x};
    Vector<double> u(4);
    u[0] = row[0];
    u[1] = row[1];
    u[2] = 0.01;
    u[3] = 260;
    const Vector<double> r = objffeN(u, &context);
    const double p1 = pressure(m, x * 0.01, 260);
    ASSERT_EQ(r.size(), 4);
    EXPECT_NEAR(r[1], m.my(row, 260, 1) - m.my(x * 0.01, 260, 1), 1e-12);
    EXPECT_NEAR(r[2], p1 - pressure(m, row, 260), 1e-10);
    EXPECT_NEAR(r[3], 2.0 - p1, 1e-10);
}
}  // namespace
