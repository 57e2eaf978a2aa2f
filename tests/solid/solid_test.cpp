// Solid phases: published figures, identities between solid and vapour, files.
#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/core/numelo.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <support/errors.h>
#include <support/scratch.h>
#include <support/vdw_model.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

namespace {
struct State {
    int phase = -2;
    double psub = -1, v = -1, kappa = -1;
};

State sublimation(Solid const& solid, double T, int i = -1) {
    State s;
    s.phase = solid.sge(T, i, s.psub, s.v, s.kappa);
    return s;
}

/// The vapour above ice is so thin that any equation of state serves.
struct Water : VdwModel {
    Water() : VdwModel("water", 647.1, 30.5) {
        M(18.015268);
        solid.load();
    }
    /// −T·∂(Ge)/∂T of the vapour.
    double vapour(double p, double T) const {
        double rho = 0;
        return 1 + Hr(p, T, 3, rho);
    }
};

double log_psub(double T, void* solid) {
    return std::log(sublimation(*static_cast<Solid const*>(solid), T).psub);
}
}  // namespace

TEST(Solid, FollowsPublishedFigures) {
    const Water m;
    const Solid& ice = m.solid;
    // IAPWS R14-08 (2011), check value of the sublimation pressure; the printed digits.
    EXPECT_NEAR(sublimation(ice, 230).psub, 8.94735e-6, 1e-11);
    // IAPWS R10-06 (2009), table 6: densities, compressibility. The table rounds v to 1e-5 cm³/mol.
    EXPECT_NEAR(ice.d(0.101325, 273.152519), 0.916721463419, 2e-6);
    EXPECT_NEAR(sublimation(ice, 273.16).kappa, 1.17793449348e-4, 1e-10);
    // 20 K below the data, where the file's expansivity falls linearly with T (ice's rather as its
    // cube), and kappa is taken as constant up to 100 MPa.
    EXPECT_NEAR(ice.d(100, 100), 0.941678203297, 6e-4);
    // Enthalpy of sublimation: Feistel & Wagner, Geochim. Cosmochim. Acta 71 (2007) 36. The slope
    // of a spline and the vapour's equation leave 0.1 %.
    const double p = 6.11657e-4, T = ice.Ttrp();
    EXPECT_NEAR((m.vapour(p, T) - ice.He(p, T)) * R * T / m.M(), 2834.4, 3);

    // The α–β transition of nitrogen: 35.61 K (Giauque & Clayton, J. Am. Chem. Soc. 55 (1933)
    // 4875). Two independent correlations of the pressure cross there within 1 K.
    VdwModel nitrogen("nitrogen", 126.19, 39);
    nitrogen.solid.load();
    for (int stable : {0, 1}) {
        int phase = -1;
        double rho = 0;
        const State s = sublimation(nitrogen.solid, 36.6 - 2 * stable);
        nitrogen.solid.Ge(s.psub, 36.6 - 2 * stable, phase, rho);
        EXPECT_EQ(s.phase, stable);
        EXPECT_EQ(phase, stable);
        EXPECT_EQ(sublimation(nitrogen.solid, 30, 9 * stable - 5).phase, stable);  // clamped
    }
    testing::internal::CaptureStdout();
    nitrogen.solid.info();
    nitrogen.solid.reset();
    nitrogen.solid.info();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "sublimation data available: 6.65-63.151 K\n\nsublimation data available: none\n\n");
    EXPECT_EQ(nitrogen.solid.Ttrp(), 0);
}

TEST(Solid, IsInEquilibriumWithItsVapour) {
    Water m;
    EXPECT_EQ(th_code([&] { m.solid.Gm(1, 250); }), th_no_ideal);
    m.ideal.load();
    const Solid& ice = m.solid;
    for (double T : {150.0, 200.0, 250.0, 273.1}) {
        SCOPED_TRACE(T);
        const State s = sublimation(ice, T);
        int phase = -1;
        double rho = 0, vapour = 0;
        EXPECT_NEAR(ice.Ge(s.psub, T, phase, rho), m.Ge(s.psub, T, 3, vapour), 1e-13);
        EXPECT_NEAR(rho * s.v, 1, 1e-14);
        // Clausius and Clapeyron: d ln p/dT = (H_vapour − H_solid)/(T·(Z_vapour − Z_solid)). The
        // numerical He is good to 20·eps·T/1 mK.
        const double slope = diff_romberg(log_psub, &m.solid, 1, T, 0.05, 4, 0.0, 1e99);
        const double dH = m.vapour(s.psub, T) - ice.He(s.psub, T);
        const double dZ = m.Z(vapour, T) - s.psub * s.v / (R * T);
        EXPECT_NEAR(slope * T * dZ / dH, 1, 1e-9);
        // (∂Ge/∂p)_T = v/(RT) by a central difference, error kappa²·h²/6.
        const double p = 50, h = 0.01, G = ice.Ge(p, T, phase, rho), Zs = p / (rho * R * T);
        const double dG = ice.Ge(p + h, T, phase, rho) - ice.Ge(p - h, T, phase, rho);
        EXPECT_NEAR(dG / (2 * h) * p / Zs, 1, 1e-10);
        EXPECT_NEAR(ice.Vm(p, T) / s.v, std::exp(-s.kappa * (p - s.psub)), 1e-14);
        EXPECT_NEAR(ice.He(p, T) - ice.Se(p, T), G, 1e-12);
        EXPECT_NEAR(ice.He(p, T) - ice.Ue(p, T), Zs, 1e-12);
        EXPECT_NEAR(ice.Ae(p, T), G - Zs, 1e-13);
        // Intended: the ideal gas is added as it stands.
        EXPECT_EQ(ice.Gm(p, T), G + m.ideal.Gm(T));
        EXPECT_EQ(ice.Hm(p, T), ice.He(p, T) + m.ideal.Hm(T));
        EXPECT_EQ(ice.Sm(p, T), ice.Se(p, T) + m.ideal.Sm(T));
        EXPECT_EQ(ice.Um(p, T), ice.Ue(p, T) + m.ideal.Um(T));
        EXPECT_EQ(ice.Am(p, T), ice.Ae(p, T) + m.ideal.Am(T));
        EXPECT_EQ(ice.Gm(p, T) + ice.Am(p, T) + ice.Ae(p, T),
                  ice.Gm(p, T, phase, rho) + ice.Am(p, T, phase, rho) + ice.Ae(p, T, phase, rho));
    }
}

// The CO2 triple point, 216.592 K: Span & Wagner, J. Phys. Chem. Ref. Data 25 (1996) 1509. MEOS is
// their equation, and the sublimation pressure agrees with it within 1e-4. The vapour pressure of
// Peng–Robinson is 0.4 % low, which moves the crossing of two curves whose slopes d ln p/dT differ
// by 0.027/K by 0.15 K.
TEST(Solid, MeetsLiquidAndVapourAtTheTriplePoint) {
    for (auto const& [eos, tolerance] : {std::pair{"PR", 0.2}, {"MEOS", 0.004}}) {
        SCOPED_TRACE(eos);
        const std::unique_ptr<Model1, corvane::Detach> m(attach1(eos));
        m->name("carbon_dioxide");
        m->id(1);
        m->load(eos);
        m->solid.load();
        const auto gap = [&](double T) {
            double p = 0, liquid = 0, vapour = 0, rho = 0;
            corvane::SaturationMarch().at_T(m.get(), T, 0, p, liquid, vapour);
            int phase = -1;
            return m->solid.Ge(p, T, phase, rho) - m->Ge(liquid, T);
        };
        const double low = 216.4, high = 216.59, slope = (gap(high) - gap(low)) / (high - low);
        EXPECT_NEAR(high - gap(high) / slope, 216.592, tolerance);
    }
}

TEST(Solid, ReadsAndRefusesFiles) {
    const Scratch dir;
    VdwModel m;
    int phase = 7;
    double rho = 7;
    EXPECT_EQ(th_code([&] { m.solid.load(); }), th_cannot_open);
    EXPECT_EQ(th_code([&] { m.solid.Ge(1, 70, phase, rho); }), th_no_solid);
    // ln p linear in 1/T: s is constant, and so is its extrapolation to the first point. kappa is
    // 0.
    const auto p = [](double T) { return std::exp(5 - 1000 / T); };
    std::string good = "I 4\n";
    for (double T : {80, 75, 70, 60}) {
        char row[80];
        std::snprintf(row, sizeof row, "%g %.17g 25 0\n", T, p(T));
        good += row;
    }
    struct Case {
        std::string text;
        int code, phases;
    };
    for (Case const& c :
         {Case{"0 84", -1, 0}, Case{"-3 84", -1, 0}, Case{"", th_cannot_open, 0},
          Case{"2 84\n" + good + "II 2\n60 1e-5", th_cannot_open, 1},
          Case{"2000000 84\n" + good, th_cannot_open, 0}, Case{"1 84\nI 0\n", th_cannot_open, 0},
          Case{"1 84\nI 2000000\n80 1 1 1", th_cannot_open, 0},
          Case{"1 84\nI 2\n80 1e-3 25 0\n70 0 24 0\n", th_cannot_open, 0},
          Case{"2 84\n" + good + "II 2\n60 3e-5 24 0\n70 1e-4 24 0\n", -2, 1},  // MthException
          Case{"2 84\n" + good + "longname\t1\n70 1e-9 24 1e-3 notes", -1, 2}}) {
        SCOPED_TRACE(c.text);
        m.solid.reset();
        dir.write("CorvaneS/solid/argon", c.text);
        EXPECT_EQ(th_code([&] { m.solid.load(); }), c.code);
        EXPECT_EQ(m.solid.sg.n, c.phases);
    }
    EXPECT_STREQ(m.solid.id(1), "longnam");
    EXPECT_EQ(m.solid.id(-1), nullptr);
    for (double T : {50.0, 66.0, 78.0, 84.0})
        EXPECT_NEAR(sublimation(m.solid, T, 0).psub / p(T), 1, 1e-13);
    EXPECT_EQ(sublimation(m.solid, 80, 0).psub, p(80));
    EXPECT_EQ(sublimation(m.solid, 50, 1).psub, 1e-9);  // one point: no slope
    for (double T : {84.001, 0.0, -1.0, std::nan("")}) {
        EXPECT_EQ(sublimation(m.solid, T, 0).phase, -1);
        EXPECT_EQ(sublimation(m.solid, T, 0).psub, -1);  // untouched
        EXPECT_EQ(th_code([&] { m.solid.Ge(1, T, phase, rho); }), th_out_of_range);
        EXPECT_EQ(th_code([&] { m.solid.He(1, T); }), th_out_of_range);
    }
    EXPECT_EQ(th_code([&] { m.solid.Ge(std::nan(""), 70, phase, rho); }), th_out_of_range);
    EXPECT_EQ(phase + rho, 14);
    m.solid.sg.size(1);  // kappa = 0: I = v·(p − psub); |M| is used
    m.M(-m.M());
    EXPECT_NEAR(m.solid.Ge(101, 80, phase, rho) - m.solid.Ge(1, 80, phase, rho),
                25 * 100 / (R * 80), 1e-13);
    EXPECT_EQ(m.solid.d(1, 80), 39.948 * rho);
}
