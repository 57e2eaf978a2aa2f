// The property calculus on the van der Waals fluid, where everything has a closed form, by the
// numerical and by the exact route.
#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <tuple>
#include <vector>

namespace {
/// The same fluid with exact derivatives.
class ExactVdw : public VdwModel, public corvane::Deriv1 {
  public:
    ExactVdw() { derivatives(this); }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        const double y = rho * vs(), a = 27.0 / 8 * Ts() / T * y, q = 1 / (1 - y);
        // rho^i·T^j·derivative: −ln(1−y) has i = 1, 2, 3 only; α·y is linear in y and 1/T.
        const double repulsion[4] = {-std::log1p(-y), y * q, y * y * q * q,
                                     2 * y * y * y * q * q * q};
        const double power[3] = {1, -1, 2};
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT; ++j)
                d[i * (nT + 1) + j] = (j == 0 ? repulsion[i] : 0) - (i < 2 ? a * power[j] : 0);
        return 1;
    }
};

struct State {
    double rho, T;
};
// Gas, critical region, liquid, compressed gas; mol/cm³ and K, rho_c = 1/96, Tc = 150.
const State kStates[] = {{1e-7, 120},   {1e-4, 120}, {3e-3, 200},
                         {0.0104, 155}, {0.02, 110}, {0.025, 400}};

TEST(Properties, AgreeWithTheClosedFormsByBothRoutes) {
    const VdwModel numerical;
    const ExactVdw exact;
    for (Model1 const* m :
         {static_cast<Model1 const*>(&numerical), static_cast<Model1 const*>(&exact)})
        for (State const& s : kStates) {
            SCOPED_TRACE(testing::Message() << (m == &exact) << " rho " << s.rho << " T " << s.T);
            const double y = s.rho * m->vs(), a = 27.0 / 8 * m->Ts() / s.T, q = 1 / (1 - y);
            const double ar = -std::log1p(-y) - a * y, Z = q - a * y;
            const double PT = q, Prho = q * q - 2 * a * y;
            // First derivatives to 1e-12 and second to 1e-9 of the terms they are made of.
            const double e1 = m == &exact ? 1e-14 : 2e-12 * (1 + a * y),
                         e2 = m == &exact ? 1e-13 : 1e-9;
            EXPECT_NEAR(m->Ur(s.rho, s.T), -a * y, e1);
            EXPECT_NEAR(m->Hr(s.rho, s.T), -a * y + Z - 1, e1);
            EXPECT_NEAR(m->Sr(s.rho, s.T), std::log1p(-y), e1);
            EXPECT_NEAR(m->Gr(s.rho, s.T), ar + Z - 1, 1e-14);
            EXPECT_NEAR(m->Gr(s.rho, s.T), m->Hr(s.rho, s.T) - m->Sr(s.rho, s.T), 2 * e1);
            EXPECT_NEAR(m->Ge(s.rho, s.T), ar + Z - 1 + std::log(s.rho), 1e-13);
            EXPECT_NEAR(m->Ak(s.rho, s.T), ar - 1 + std::log(s.rho), 1e-13);
            EXPECT_NEAR(m->Sk(s.rho, s.T), std::log1p(-y) - std::log(s.rho), 2e-14 + e1);
            EXPECT_NEAR(m->betaV(s.rho, s.T), PT, e1 * PT);
            EXPECT_NEAR(m->pV(s.rho, s.T), Prho, e1 * q * q);
            EXPECT_NEAR(m->kappaT(s.rho, s.T) * Prho, 1, e1 * q * q / Prho);
            EXPECT_NEAR(m->alphap(s.rho, s.T), PT / Prho, 2 * e1 * PT * q * q / Prho / Prho);
            EXPECT_NEAR(m->CVr(s.rho, s.T), 0, e2 * (1 + a * y));  // no residual cv
            EXPECT_NEAR(m->Cpr(s.rho, s.T), PT * PT / Prho - 1,
                        e2 * (1 + a * y) * (1 + q * q / Prho));
        }
}

TEST(Properties, VirialCoefficientsAreExactOnes) {
    const VdwModel m;
    const double b = m.vs(), a = 27.0 / 8 * m.Ts() / 200 * b;
    EXPECT_EQ(m.B(200, 1), 1);
    EXPECT_NEAR(m.B(200, 2), b - a, 1e-11 * b);
    EXPECT_NEAR(m.B(200, 3), b * b, 1e-9 * b * b);
    EXPECT_NEAR(m.B(200, 4), b * b * b, 1e-7 * b * b * b);
    EXPECT_EQ(mth_code([&] { m.B(200, 0); }), mth_no_option);
}

TEST(Properties, CriticalResidualsVanishAtTheCriticalPoint) {
    const VdwModel numerical;
    const ExactVdw exact;
    for (Model1 const* m :
         {static_cast<Model1 const*>(&numerical), static_cast<Model1 const*>(&exact)}) {
        const double rho = 1 / m->vcrit();
        const Vector<double> r = m->crit(m->Ts(), rho, 0.375);
        EXPECT_NEAR(r[0], 0, 1e-15);
        EXPECT_NEAR(r[1], 0, 1e-12);       // of terms of size 2.25
        EXPECT_NEAR(r[2] * rho, 0, 1e-9);  // second derivative, level 4
        // Off the critical point: 1/(1−y)² − 2αy and its slope b·(2/(1−y)³ − 2α).
        const double T = 170, y = 0.2, a = 27.0 / 8 * m->Ts() / T;
        const Vector<double> s = m->crit(T, y / m->vs(), 0.375);
        EXPECT_NEAR(s[0], 1.25 - a * y - 0.375, 1e-14);
        EXPECT_NEAR(s[1], 1.5625 - 2 * a * y, 1e-11);
        EXPECT_NEAR(s[2] / m->vs(), 2 * 1.953125 - 2 * a, 1e-8);
    }
}

TEST(Properties, LogarithmsNeedAPositiveDensityAndResidualsDoNot) {
    const VdwModel m;
    using Property = double (Model1::*)(double, double) const;
    for (Property f : {Property(&Model1::Ak), Property(&Model1::Am), Property(&Model1::Ge),
                       Property(&Model1::Gm), Property(&Model1::Sk), Property(&Model1::Sm)})
        for (double rho : {0.0, -1e-3})
            EXPECT_EQ(th_code([&] { (m.*f)(rho, 300); }), th_out_of_range);
    for (Property f : {Property(&Model1::Sr), Property(&Model1::Hr), Property(&Model1::Ur),
                       Property(&Model1::Gr)})
        EXPECT_EQ((m.*f)(0.0, 300), 0);
    EXPECT_EQ(mth_code([&] { m.pV(0.0, 300); }), mth_bad_step);
    EXPECT_EQ(th_code([&] { m.Hm(1e-3, 300); }), th_no_ideal);
}

/// Returns scripted roots and notes the phase codes it gets.
class Scripted : public VdwModel {
  public:
    /// Number of roots and rho1, rho2 of the first call; rho1 of the next one.
    Scripted(int n, double first, double second, double third) : script_{n, first, second, third} {}
    mutable std::vector<int> codes;
    int vcalc(double, double, int phase, double& rho1, double& rho2) const override {
        codes.push_back(phase);
        auto [n, first, second, third] = script_;
        if (n == 0) return 0;
        rho1 = codes.size() > 1 ? third : first;
        if (n > 1) rho2 = second;
        return n;
    }

  private:
    std::tuple<int, double, double, double> script_;
};

TEST(Properties, PhaseCodesAreLoweredAndOnlyCodeTwoComparesRoots) {
    const double p = 1, T = 110;
    struct Row {
        int phase, n;
        double first, second, third;
        std::vector<int> codes;
        double chosen;
    };
    const VdwModel vdw;
    const bool liquid = vdw.Ge(2e-2, T) < vdw.Ge(1e-3, T);
    const double stable = liquid ? 2e-2 : 1e-3;
    for (Row const& r :
         std::vector<Row>{{1, 3, 1e-3, 2e-2, 9, {1}, 1e-3},  // 1 and 3 never compare
                          {3, 3, 1e-3, 2e-2, 9, {3}, 1e-3},
                          {0, 3, 1e-3, 2e-2, 9, {-1}, 1e-3},
                          {-2, 1, 1e-3, 2e-2, 9, {-3}, 1e-3},
                          {2, 1, 1e-3, 2e-2, 9, {1}, 1e-3},    // one root
                          {2, 3, 1e-3, 2e-2, 9, {1}, stable},  // three: the second output
                          {2, 3, 2e-2, 1e-3, 9, {1}, stable},
                          {2, 2, 1e-3, 9, 2e-2, {1, 3}, stable},       // two: a second call
                          {2, 2, 1e-3, 9, 1.005e-3, {1, 3}, 1e-3}}) {  // closer than 1 %: the first
        SCOPED_TRACE(testing::Message() << "phase " << r.phase << " n " << r.n);
        const Scripted m(r.n, r.first, r.second, r.third);
        double rho = 7;
        EXPECT_NEAR(m.Gr(p, T, r.phase, rho), vdw.Gr(r.chosen, T), 1e-15);
        EXPECT_EQ(rho, r.chosen);
        EXPECT_EQ(m.codes, r.codes);
        m.codes.clear();
        EXPECT_DOUBLE_EQ(m.Vm(p, T, r.phase), 1 / r.chosen);
    }
    const Scripted none(0, 0, 0, 0);
    double rho = 7;
    EXPECT_EQ(th_code([&] { none.Cpr(p, T, 1, rho); }), th_no_density);
    EXPECT_EQ(th_code([&] { none.Vm(p, T, 1); }), th_no_density);
    EXPECT_EQ(rho, 7);
}

TEST(Properties, TotalsAddTheIdealGasPart) {
    Scratch scratch;
    scratch.write("CorvaneS/ideal/argon", "2\n100 20.78615525\n500 20.78615525\n");  // 5/2·R
    VdwModel m;
    m.ideal.load();
    for (State const& s : kStates) {
        SCOPED_TRACE(testing::Message() << s.rho << " " << s.T);
        const double y = s.rho * m.vs(), a = 27.0 / 8 * m.Ts() / s.T, Z = m.Z(s.rho, s.T);
        const double U = 1.5 * (s.T - 100) / s.T - a * y,
                     S = 1.5 * std::log(s.T / 100) - std::log(s.rho) + std::log1p(-y);
        const double e = 1e-11 * (1 + a * y);
        EXPECT_NEAR(m.Um(s.rho, s.T), U, e);
        EXPECT_NEAR(m.Hm(s.rho, s.T), U + Z, e);
        EXPECT_NEAR(m.Sm(s.rho, s.T), S, e);
        EXPECT_NEAR(m.Am(s.rho, s.T), U - S, e);
        EXPECT_NEAR(m.Gm(s.rho, s.T), U + Z - S, e);
        EXPECT_NEAR(m.CVm(s.rho, s.T), 1.5, 1e-9 * (1 + a * y));
        EXPECT_NEAR(m.Cpm(s.rho, s.T) - m.CVm(s.rho, s.T),
                    m.Cpr(s.rho, s.T) - m.CVr(s.rho, s.T) + 1, 1e-12);
    }
}
}  // namespace
