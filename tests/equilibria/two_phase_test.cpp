// Bubble and dew points of mixtures.
#include "equilibria/phases.h"

#include <corvane/core/records.h>

namespace {
TEST(TwoPhase, BubblePointsMeetTheConditionsAndInvert) {
    const struct {
        char const *first, *second;
        double k, T, x_last;
    } rows[] = {{"methane", "propane", 0.01, 200, 0.7},
                {"methane", "propane", 0.01, 330, 0.3},
                {"carbon_dioxide", "ethane", 0.13, 250, 0.95}};  // azeotrope
    for (auto const& row : rows) {
        const Mixture m = peng_robinson(row.first, row.second, row.k);
        march(*m, row.T, row.x_last, 0.05, [&](double x, Bubble const& s) {
            SCOPED_TRACE(testing::Message() << row.first << " " << x << " at " << row.T << " K");
            expect_equilibrium(*m, row.T, mix(x) * s.rho1, s.rho2, s.p);
            Bubble t = s;  // at that pressure the temperature comes back, from 2 % away
            double T = 1.02 * row.T;
            vleN_p(m.get(), s.p, mix(x), T, t.rho1, t.rho2);
            EXPECT_NEAR(T / row.T, 1, 1e-9);
            // The second phase, given, finds the first: a dew point.
            Bubble dew{0, 1.02 * s.rho2.sum(), mix(x) * (0.99 * s.rho1)};
            vleN_T(m.get(), row.T, s.rho2 * (1 / s.rho2.sum()), dew.p, dew.rho1, dew.rho2);
            EXPECT_NEAR(dew.p / s.p, 1, 1e-9);
            EXPECT_NEAR(dew.rho2[0] / (x * s.rho1), 1, 1e-7);
        });
    }
}

TEST(TwoPhase, Limits) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    double p, rhoL, rhoV;
    corvane::SaturationMarch().at_T(m->mdl1[1], 230, 0, p, rhoL, rhoV);
    Bubble s{0, 1.02 * rhoL, vec({7, 0.9 * rhoV})};  // x = 0: the pure fluid
    vleN_T(m.get(), 230, mix(0), s.p, s.rho1, s.rho2);
    EXPECT_NEAR(s.p / p, 1, 1e-10);
    EXPECT_EQ(s.rho2[0], 0.0);
    // Nothing of an absent component is used, not even its potential.
    struct Blind final : corvane::DerivN {
        corvane::DerivN const& inner;
        explicit Blind(corvane::DerivN const& of) : inner(of) {}
        int deriv(double rho, double at, Vector<double> const& x, int nrho, int nT,
                  double* d) const override {
            return inner.deriv(rho, at, x, nrho, nT, d);
        }
        void potentials(Vector<double> const& rho_i, double at, double* mu, double* mu_T,
                        double* mu_rho) const override {
            inner.potentials(rho_i, at, mu, mu_T, mu_rho);
            for (int i : {0, 1})
                if (rho_i[i] == 0) mu[i] = std::nan("");
        }
    } const blind(*m->derivatives());
    m->derivatives(&blind);
    Bubble again{0, 1.02 * rhoL, vec({7, 0.9 * rhoV})};
    vleN_T(m.get(), 230, mix(0), again.p, again.rho1, again.rho2);
    m->derivatives(&blind.inner);
    EXPECT_EQ(again.p, s.p);
    // Raoult's law of the solvent; what is left of it is 1e-8 of dissolved gas.
    march(*m, 230, 1e-9, 1e-9, [&](double, Bubble const& b) {
        EXPECT_NEAR(b.rho2[1] / b.rho2.sum() * b.p / p, 1, 1e-7);
    });
    // A ternary without its second component is the binary.
    const Mixture three = mixture_of("PR", "vdW1", {"methane", "ethane", "propane"});
    three->param(0, 0, 2, 0.01);
    march(*m, 230, 0.1, 0.1, [&](double x, Bubble const& b) {
        double p3 = 0, rho1 = b.rho1;
        Vector<double> rho2 = vec({0.9 * b.rho2[0], 5, b.rho2[1]});
        vleN_T(three.get(), 230, vec({x, 0, 1 - x}), p3, rho1, rho2);
        EXPECT_NEAR(p3 / b.p, 1, 1e-10);
        EXPECT_EQ(rho2[1], 0.0);
    });
    // Identical components boil like one; twins have their azeotrope at x = 1/2 by symmetry.
    for (double k : {0.0, 0.05}) {
        const VdwTwins twins(k);
        const VdwModel fluid("", twins.Tc(mix(0.5)), 40);
        corvane::SaturationMarch().at_T(&fluid, 240, 0, p, rhoL, rhoV);
        s = {0, 1.02 * rhoL, mix(0.5) * (0.95 * rhoV)};
        vleN_T(&twins, 240, mix(0.5), s.p, s.rho1, s.rho2);
        EXPECT_NEAR(s.p / p, 1, 1e-10);
        EXPECT_NEAR(s.rho2[0] / s.rho2[1], 1, 1e-9);
    }
}

TEST(TwoPhase, CodesAndResiduals) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    const auto code = [&](double T, double rho1, double a, double b) {
        Bubble s{0, rho1, vec({a, b})};
        return th_code([&] { vleN_T(m.get(), T, mix(0.2), s.p, s.rho1, s.rho2); });
    };
    EXPECT_EQ(code(250, 0.011, 0.0022, 0.0088), th_trivial);    // the phase itself
    EXPECT_EQ(code(900, 0.001, 0.0003, 0.0007), th_trivial);    // only one phase there
    EXPECT_EQ(code(250, 0.011, -1e-4, 1e-4), th_out_of_range);  // start values
    EXPECT_EQ(code(250, 0.0, 1e-4, 1e-4), th_out_of_range);

    const Vector<double> x = mix(0.3), given = x * 0.01, second = vec({1e-3, 2e-3});
    pass_ffeN context{m.get(), 1, 2.0, 0.0, &x};
    const Vector<double> r = objffeN(vec({1e-3, 2e-3, 0.01, 260}), &context);
    ASSERT_EQ(r.size(), 4);
    EXPECT_NEAR(r[1], m->my(second, 260, 1) - m->my(given, 260, 1), 1e-12);
    EXPECT_NEAR(r[2], pressure(*m, given, 260) - pressure(*m, second, 260), 1e-10);
    EXPECT_NEAR(r[3], 2.0 - pressure(*m, given, 260), 1e-10);
    EXPECT_EQ(mth_code([&] { objffeN(vec({1e-3, 2e-3, 0.01}), &context); }), mth_dimensions);
    EXPECT_EQ(th_code([&] { objffeN(vec({1e-3, 2e-3, 0.01, -1}), &context); }), th_out_of_range);
    const Vector<double> negative = vec({-0.5, -0.5}), one = vec({1});
    pass_ffeN absent{m.get(), 0, 0.0, 260.0, &negative};  // nothing is present, but amounts are
    EXPECT_EQ(th_code([&] { objffeN(vec({-0.01}), &absent); }), th_out_of_range);
    double p = 0, rho1 = 0.01;
    Vector<double> rho2 = second, rho3 = one;
    EXPECT_EQ(mth_code([&] { vleN_T(m.get(), 260, one, p, rho1, rho2); }), mth_dimensions);
    EXPECT_EQ(mth_code([&] { vleN_T(m.get(), 260, x, p, rho1, rho3); }), mth_dimensions);
    // The pressure of the thinner phase, by Z, has to be positive and that of the equations, by Ar.
    struct Inconsistent : VdwTwins {
        double factor = 1, most = 1e99;
        double Z(double rho, double T, Vector<double> const& y) const override {
            return std::min(factor * VdwTwins::Z(rho, T, y), most);
        }
        Inconsistent() : VdwTwins(0.05) {}
    } twins;
    double T = 240;
    double rhoL, rhoV;
    const VdwModel fluid("", twins.Tc(mix(0.5)), 40);
    corvane::SaturationMarch().at_T(&fluid, T, 0, p, rhoL, rhoV);
    const auto again = [&](bool by_T) {
        rho1 = 1.02 * rhoL;
        rho2 = mix(0.5) * (0.95 * rhoV);
        return th_code([&] {
            by_T ? vleN_T(&twins, T, mix(0.5), p, rho1, rho2)
                 : vleN_p(&twins, p, mix(0.5), T, rho1, rho2);
        });
    };
    EXPECT_EQ(again(true), -1);
    EXPECT_EQ(again(false), -1);
    twins.factor = 1.001;
    EXPECT_EQ(again(false), th_generic);
    twins.most = -1e-9;
    EXPECT_EQ(again(true), th_generic);
}

// Starts from estimates, some of them far off: what returns normally is an equilibrium. The first
// used to end in a stagnated fit, the second under tension, with a phase between its spinodals.
TEST(TwoPhase, WhatReturnsIsAnEquilibrium) {
    const Mixture m = peng_robinson("carbon_dioxide", "methane", 0.1);
    double T = 103.8, p = 0, rho1 = 2.63e-5;
    Vector<double> rho2 = vec({0.018, 0.0152});
    EXPECT_EQ(mth_code([&] { vleN_p(m.get(), 0.0225, mix(0.00055), T, rho1, rho2); }),
              mth_iterations);
    const Mixture gerg = mixture_of("MEOS", "GERG", {"butane", "water"});
    for (int i : {0, 1}) gerg->mdl1[i]->id(-1);
    gerg->id(0, 1, 2);
    gerg->load("MEOS", "GERG");
    for (double x0 : {0.3, 0.4, 0.5}) {
        rho1 = 9.3e-5;
        rho2 = vec({0.0022892, 0.0400387});
        EXPECT_NE(-1, th_code([&] { vleN_T(gerg.get(), 390, mix(x0), p, rho1, rho2); })) << x0;
    }
    int found = 0;
    const auto start = [&](ModelN const& of, bool by_T, Vector<double> const& x) {
        SCOPED_TRACE(testing::Message() << x[0] << " T " << T << " p " << p << " by T " << by_T);
        try {
            if (by_T)
                vleN_T(&of, T, x, p, rho1, rho2);
            else
                vleN_p(&of, p, x, T, rho1, rho2);
            ++found;
            ASSERT_GT(p, 0);
            for (int i : {0, 1}) EXPECT_NEAR(of.my(x * rho1, T, i), of.my(rho2, T, i), 1e-4);
            for (auto const& row : {x * rho1, rho2}) {
                const double rho = row.sum();
                EXPECT_NEAR(pressure(of, row, T), p, 1e-4 * p + 1e-12 * rho * R * T);
                EXPECT_GT(of.pV(rho, T, row * (1 / rho)), 0);
            }
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
    };
    for (double x0 : {1e-5, 0.01, 0.3, 0.7, 0.99})
        for (double at = 90; at < 280; at += 19.3)
            for (double guess = 1e-5; guess < 10; guess *= 5)
                for (bool by_T : {true, false}) {
                    T = at;
                    p = guess;
                    rho1 = guess / (R * at);
                    rho2 = vec({0.02 * x0 + 0.003, 0.015});
                    start(*m, by_T, mix(x0));
                }
    // To a phase between its spinodals, and to a liquid whose pressure is below what cancels in it.
    const struct {
        char const *first, *second;
        bool by_T;
        double x, T, p, rho1, a, b;
    } others[] = {
        {"carbon_dioxide", "methane", false, 0.137957, 229.182, 7.75684e-4, 0.0301613, 6.21307e-3,
         1.04062e-3},
        {"butane", "water", false, 0.431795, 282.518, 0.0102608, 0.0122641, 0.0103353, 1.31204e-3},
        {"methane", "hexane", true, 0.179532, 95.1666, 0, 3.79677e-7, 9.10414e-4, 8.38167e-3}};
    for (auto const& o : others) {
        T = o.T;
        p = o.p;
        rho1 = o.rho1;
        rho2 = vec({o.a, o.b});
        start(*peng_robinson(o.first, o.second, 0.1), o.by_T, mix(o.x));
    }
    EXPECT_GT(found, 50);
}
}  // namespace
