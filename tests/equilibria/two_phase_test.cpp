// Bubble and dew points of mixtures. Conditions are recomputed outside the solver, through the
// model's own slots; van der Waals mixtures give exact anchors.
#include <corvane/core/records.h>

#include "equilibria/march.h"
#include "support/errors.h"
#include "support/vdw_mixture.h"

namespace {
double pressure(ModelN const& m, Vector<double> const& rho_i, double T) {
    return m.Z(rho_i, T) * R * T * rho_i.sum();
}

void expect_equilibrium(ModelN const& m, double T, Vector<double> const& x, State const& s) {
    const Vector<double> rho1 = x * s.rho1;
    for (int i = 0; i < 2; ++i) EXPECT_NEAR(m.my(rho1, T, i), m.my(s.rho2, T, i), 1e-9);
    EXPECT_NEAR(pressure(m, rho1, T) / s.p, 1, 1e-9);
}

struct Binary {
    VdwMixture::Component first, second;
    double k, T, x_last;
};
constexpr Binary kBinaries[] = {
    {{190, 40}, {370, 60}, 0.01, 250, 0.3},  // a supercritical component, as methane in propane
    {{190, 40}, {370, 60}, 0.01, 300, 0.3},
    {{300, 40}, {310, 40}, 0.05, 250, 0.95},  // azeotrope
    {{300, 40}, {330, 50}, -0.1, 270, 0.95},  // pressure minimum
};

TEST(TwoPhase, BubblePointsMeetTheConditionsAndInvert) {
    for (Binary const& b : kBinaries) {
        const ExactVdwMixture m({b.first, b.second}, b.k);
        march(m, b.T, b.x_last, 0.05, [&](double x, State const& s) {
            SCOPED_TRACE(testing::Message() << "Tc " << b.second.Tc << " T " << b.T << " x " << x);
            expect_equilibrium(m, b.T, mix(x), s);
            // At that pressure the temperature comes back, from 2 % away.
            State t = s;
            double T = 1.02 * b.T;
            vleN_p(&m, s.p, mix(x), T, t.rho1, t.rho2);
            EXPECT_NEAR(T / b.T, 1, 1e-9);
            // The second phase, given, finds the first: a dew point.
            const double rho = s.rho2.sum();
            State d{s.p, 1.02 * rho, mix(x) * (0.99 * s.rho1)};
            vleN_T(&m, b.T, s.rho2 * (1 / rho), d.p, d.rho1, d.rho2);
            EXPECT_NEAR(d.p / s.p, 1, 1e-9);
            EXPECT_NEAR(d.rho2[0] / (x * s.rho1), 1, 1e-7);
        });
    }
}

TEST(TwoPhase, PlainModelsGiveTheSameAsExactOnes) {  // numerical myr and Z: 1e-11 … 1e-9
    const Binary& b = kBinaries[0];
    const VdwMixture plain({b.first, b.second}, b.k);
    const ExactVdwMixture exact({b.first, b.second}, b.k);
    const State s = march(plain, b.T, 0.2, 0.05, [](double, State const&) {});
    const State e = march(exact, b.T, 0.2, 0.05, [](double, State const&) {});
    EXPECT_NEAR(s.p / e.p, 1, 1e-9);
    EXPECT_NEAR(s.rho2[0] / e.rho2[0], 1, 1e-8);
}

TEST(TwoPhase, ExactLimits) {
    double p, rhoL, rhoV;
    // x = 0 is the pure fluid; the absent component comes back as exactly 0.
    const ExactVdwMixture m({{190, 40}, {370, 60}}, 0.01);
    corvane::Saturation().at_T(m.mdl1[1], 280, 0, p, rhoL, rhoV);
    State s{0, 1.05 * rhoL, mix(0) * (0.9 * rhoV)};
    s.rho2[0] = 7;
    vleN_T(&m, 280, mix(0), s.p, s.rho1, s.rho2);
    EXPECT_NEAR(s.p / p, 1, 1e-10);
    EXPECT_EQ(s.rho2[0], 0.0);
    // Identical components boil like one; equal fluids with a12 = a(1 − k) have their azeotrope at
    // x = 1/2 by symmetry, where they are a pure fluid with a(1 − k/2).
    for (double k : {0.0, 0.05}) {
        const ExactVdwMixture twins({{300, 40}, {300, 40}}, k);
        const VdwModel fluid("", 300 * (1 - k / 2), 40);
        corvane::Saturation().at_T(&fluid, 240, 0, p, rhoL, rhoV);
        State t{0, 1.02 * rhoL, mix(0.5) * (0.95 * rhoV)};
        vleN_T(&twins, 240, mix(0.5), t.p, t.rho1, t.rho2);
        EXPECT_NEAR(t.p / p, 1, 1e-10);
        EXPECT_NEAR(t.rho2[0] / t.rho2[1], 1, 1e-9);
    }
    // Raoult's law of the solvent: y·p = x·psat up to vapour imperfection, here B·p/RT of 4e-4.
    const double T = 0.4 * 370;
    corvane::Saturation().at_T(m.mdl1[1], T, 0, p, rhoL, rhoV);
    s = march(m, T, 1e-7, 1e-7, [](double, State const&) {});
    EXPECT_NEAR(s.rho2[1] / s.rho2.sum() * s.p / p, 1, 1e-3);
}

TEST(TwoPhase, CodesAndResidualOrder) {
    const ExactVdwMixture m({{190, 40}, {370, 60}}, 0.01);
    const auto code = [&](double T, double x0, double rho1, double a, double b) {
        State s;
        s.rho1 = rho1;
        s.rho2[0] = a;
        s.rho2[1] = b;
        return th_code([&] { vleN_T(&m, T, mix(x0), s.p, s.rho1, s.rho2); });
    };
    EXPECT_EQ(code(250, 0.2, 0.011, 0.0022, 0.0088), th_trivial);    // the phase itself
    EXPECT_EQ(code(900, 0.5, 0.001, 0.0005, 0.0005), th_trivial);    // a single phase
    EXPECT_EQ(code(250, 0.2, 0.011, -1e-4, 1e-4), th_out_of_range);  // start values
    EXPECT_EQ(code(250, 0.2, 0.0, 1e-4, 1e-4), th_out_of_range);
    State s;
    EXPECT_EQ(mth_code([&] { vleN_T(&m, 250, Vector<double>(3), s.p, s.rho1, s.rho2); }),
              mth_dimensions);

    const Vector<double> x = mix(0.3);
    pass_ffeN context{&m, 1, 2.0, 0.0, &x};
    Vector<double> u(4), row(2);
    u[0] = row[0] = 1e-3;
    u[1] = row[1] = 2e-3;
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
