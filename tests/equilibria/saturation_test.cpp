#include <corvane/classic/equilibria/ffe1core.h>

#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <corvane/pure/attach.h>

#include <memory>
#include <vector>

namespace {
struct Point {
    double T, p, rhoL, rhoV;
};

/// A point of the van der Waals saturation curve, exact, for Tc, pc, b and the parameter y > 0
/// (half the entropy of vaporisation over R): Lekner, Am. J. Phys. 50 (1982) 161.
Point lekner(double y, VdwModel const& m) {
    const double f = (y * std::cosh(y) - std::sinh(y)) / (std::sinh(y) * std::cosh(y) - y);
    const double g = 1 + 2 * f * std::cosh(y) + f * f, L = f * std::exp(y), V = f * std::exp(-y);
    return {m.Tcrit() * 27 * f * (f + std::cosh(y)) / (4 * g * g),
            m.pcrit() * 27 * f * f * (1 - f * f) / (g * g), L / (1 + L) / m.vs(),
            V / (1 + V) / m.vs()};
}

TEST(Saturation, FollowsTheExactCurveOfTheVanDerWaalsFluid) {
    const VdwModel m;
    for (double y : {0.1, 0.5, 1.0, 2.0, 4.0, 7.0}) {  // Tr = 0.9990 … 0.25
        const Point exact = lekner(y, m);
        SCOPED_TRACE(testing::Message() << "Tr = " << exact.T / m.Tcrit());
        double p = 0, T = 0, rhoL = 0, rhoV = 0;
        vle1_T(&m, exact.T, 0, p, rhoL, rhoV);
        // The pressure to rounding of the closed form; densities lose digits as dp/drho does.
        EXPECT_NEAR(p / exact.p, 1, 1e-11);
        EXPECT_NEAR(rhoL / exact.rhoL, 1, 1e-9);
        EXPECT_NEAR(rhoV / exact.rhoV, 1, 1e-9);
        vle1_p(&m, exact.p, 0, T, rhoL, rhoV);
        EXPECT_NEAR(T / exact.T, 1, 1e-11);
        EXPECT_NEAR(rhoL / exact.rhoL, 1, 1e-9);
    }
}

/// Has the roots it is told to have, and counts the calls.
class Scripted : public VdwModel {
  public:
    int n = 3, again = 3;
    double rhoL = 0.02, rhoV = 1e-3;
    mutable int density_calls = 0;
    int vcalc(double, double, int, double& rho1, double& rho2) const override {
        if (++density_calls == 1) {
            rho1 = rhoL;
            if (n == 3) rho2 = rhoV;
            return n;
        }
        rho1 = rhoV;
        return again;
    }
};

TEST(Saturation, MaxwellRefusesByCode) {
    struct Row {
        int n, again;
        double rhoL, rhoV;
        int code;
    };
    // rho_c = 1/96 = 0.0104 mol/cm³; above 1/32 the equation has no value
    for (Row const& r :
         {Row{0, 0, 0.02, 0, th_no_density}, Row{1, 0, 0.02, 0, th_liquid_only},
          Row{1, 0, 0.01, 0, th_gas_only}, Row{2, 2, 0.02, 1e-3, -1},
          Row{2, 1, 0.02, 1e-3, th_liquid_only}, Row{2, 2, 0.02, 0.0201, th_liquid_only},
          Row{2, 2, 0.001, 0.001005, th_gas_only}, Row{3, 0, 0.02, 1e-3, -1},
          Row{4, 0, 0.02, 1e-3, th_no_density}, Row{3, 0, 0.02, -1, th_no_density},
          Row{3, 0, -0.02, -1e-3, th_no_density}, Row{3, 0, 0.05, 1e-3, th_no_density}}) {
        SCOPED_TRACE(testing::Message() << r.n << " " << r.again << " " << r.rhoL);
        Scripted m;
        m.n = r.n;
        m.again = r.again;
        m.rhoL = r.rhoL;
        m.rhoV = r.rhoV;
        double rhoL = 9, rhoV = 9;
        EXPECT_EQ(th_code([&] { maxwell(&m, 1, 110, rhoL, rhoV); }), r.code);
        EXPECT_EQ(m.density_calls, r.n == 2 ? 2 : 1);
    }
    const VdwModel m;
    double rhoL = 0, rhoV = 0;
    m.calls = 0;
    for (auto [p, T] : {std::pair(0.0, 100.0), std::pair(-1.0, 100.0), std::pair(1.0, 0.0),
                        std::pair(std::nan(""), 100.0)})
        EXPECT_EQ(th_code([&] { maxwell(&m, p, T, rhoL, rhoV); }), th_out_of_range);
    EXPECT_EQ(m.calls, 0);
    const double difference = maxwell(&m, 1, 110, rhoL, rhoV);
    EXPECT_NEAR(difference, m.Ge(rhoV, 110) - m.Ge(rhoL, 110), 1e-12);
}

TEST(Saturation, FailsByCodeAtAndAboveTheCriticalPointAndStillWorksAfterwards) {
    const VdwModel m;
    double p = 7, T = 7, rhoL = 7, rhoV = 7;
    for (double Tr : {1.0, 1.0001, 1.5})
        EXPECT_EQ(th_code([&] { vle1_T(&m, Tr * m.Tcrit(), 1, p, rhoL, rhoV); }), th_generic) << Tr;
    EXPECT_EQ(th_code([&] { vle1_p(&m, 1.01 * m.pcrit(), 1, T, rhoL, rhoV); }), th_generic);
    EXPECT_EQ(th_code([&] { vle1_T(&m, std::nan(""), 0, p, rhoL, rhoV); }), th_out_of_range);
    EXPECT_EQ(th_code([&] { vle1_p(&m, -1, 0, T, rhoL, rhoV); }), th_out_of_range);
    EXPECT_EQ(p, 7);
    EXPECT_EQ(T, 7);
    const Point exact = lekner(1.0, m);
    vle1_T(&m, exact.T, 1, p, rhoL, rhoV);
    EXPECT_NEAR(p / exact.p, 1, 1e-11);
}

TEST(Saturation, ObjectsKeepTheirMarchesApart) {
    const VdwModel argon, other("other", 300.0, 50.0);
    corvane::SaturationMarch a, b;
    double pa = 0, pb = 0, rhoL = 0, rhoV = 0;
    for (double y : {0.3, 0.6, 0.9, 1.2, 1.5}) {
        const Point exact_a = lekner(y, argon), exact_b = lekner(1.8 - y, other);
        a.at_T(&argon, exact_a.T, 1, pa, rhoL, rhoV);
        b.at_T(&other, exact_b.T, 1, pb, rhoL, rhoV);
        EXPECT_NEAR(pa / exact_a.p, 1, 1e-11);
        EXPECT_NEAR(pb / exact_b.p, 1, 1e-11);
    }
    // A march needs fewer evaluations than a cold start.
    const Point near = lekner(1.55, argon);
    argon.calls = 0;
    a.at_T(&argon, near.T, 1, pa, rhoL, rhoV);
    const long marching = argon.calls;
    argon.calls = 0;
    a.at_T(&argon, near.T, 0, pa, rhoL, rhoV);
    EXPECT_LT(marching, argon.calls);
    // Trouton's rule starts that so well that half of Tc takes eight evaluations of two densities.
    struct Counted : VdwModel {
        mutable int searches = 0;
        int vcalc(double p, double T, int phase, double& one, double& two) const override {
            ++searches;
            return VdwModel::vcalc(p, T, phase, one, two);
        }
    } m;
    a.at_T(&m, 0.5 * m.Tcrit(), 0, pa, rhoL, rhoV);
    EXPECT_LE(m.searches, 9);
}

using Model = std::unique_ptr<Model1, corvane::Detach>;

TEST(Saturation, PengRobinsonPropaneReproducesThePublishedPressures) {
    // PR with Tc = 369.825 K, pc = 4.248 MPa, ω = 0.1524; pressures computed with 113-bit
    // arithmetic.
    Model m(attach1("PR"));
    const double Tc = 369.825, pc = 4.248;
    m->Ts(Tc);
    m->vs(0.07779607390388845597 * R * Tc / pc);
    m->param(3, 0.1524);
    m->Tcrit(Tc);
    m->pcrit(pc);
    m->vcrit(0.30740130869870386 * R * Tc / pc);
    for (auto [Tr, expected] : {std::pair(0.5, 7.641082651621e-3), std::pair(0.7, 0.2983611725714),
                                std::pair(0.9, 2.113574865981), std::pair(0.99, 3.983327549140)}) {
        double p = 0, T = 0, rhoL = 0, rhoV = 0;
        vle1_T(m.get(), Tr * Tc, 0, p, rhoL, rhoV);
        EXPECT_NEAR(p / expected, 1, 1e-11) << Tr;
        vle1_p(m.get(), expected, 0, T, rhoL, rhoV);
        EXPECT_NEAR(T / (Tr * Tc), 1, 1e-10) << Tr;
    }
}

// Clapeyron: dp/dT = ΔH/(T·ΔV), the slope by central differences of the march.
TEST(Saturation, SlopeObeysClapeyronAndAMarchGivesWhatColdCallsGive) {
    Model m(attach1("PR"));
    m->name("carbon_dioxide");
    m->id(1);
    m->load("PR");
    const double Tc = m->Tcrit();
    std::vector<Point> cold;
    corvane::SaturationMarch march;
    for (double Tr = 0.6; Tr < 0.999; Tr += 0.02) {
        Point c{Tr * Tc, 0, 0, 0};
        vle1_T(m.get(), c.T, 0, c.p, c.rhoL, c.rhoV);
        cold.push_back(c);
        const double h = 1e-4 * c.T;
        double up = 0, down = 0, rhoL = 0, rhoV = 0;
        vle1_T(m.get(), c.T + h, 0, up, rhoL, rhoV);
        vle1_T(m.get(), c.T - h, 0, down, rhoL, rhoV);
        const double dH = R * c.T * (m->Hr(c.rhoV, c.T) - m->Hr(c.rhoL, c.T));
        const double slope = dH / (c.T * (1 / c.rhoV - 1 / c.rhoL));
        EXPECT_NEAR((up - down) / (2 * h) / slope, 1, 2e-6) << Tr;  // h² of the difference near Tc
    }
    const auto check = [&](Point const& c) {
        double p = 0, rhoL = 0, rhoV = 0;
        march.at_T(m.get(), c.T, 1, p, rhoL, rhoV);
        EXPECT_NEAR(p / c.p, 1, 1e-12) << c.T;
        EXPECT_NEAR(rhoL / c.rhoL, 1, 1e-10) << c.T;
        EXPECT_NEAR(rhoV / c.rhoV, 1, 1e-10) << c.T;
    };
    for (auto c = cold.begin(); c != cold.end(); ++c) check(*c);
    for (auto c = cold.rbegin(); c != cold.rend(); ++c) check(*c);
}

// Pressures that nobody needs: an equilibrium of the equation, or a refusal. The multiparameter
// equations jump there.
TEST(Saturation, AbsurdPressuresGiveEquilibriaOrCodes) {
    int found = 0;
    for (char const* eos : {"PR", "PCSAFT", "MEOS"})
        for (char const* name : {"butane", "argon", "water"}) {
            Model m(attach1(eos));
            m->name(name);
            m->id(1);
            m->load(eos);
            for (double p : {1e-8, 1e-20, 1e-50, 1e-100, 1e-280, 1e-310, 1e12, 1e300}) try {
                    double T = 0, rhoL = 0, rhoV = 0;
                    vle1_p(m.get(), p, 0, T, rhoL, rhoV);
                    ++found;
                    const auto g = [&](double rho) {
                        return m->Ar(rho, T) + m->Z(rho, T) - 1 + std::log(rho);
                    };
                    EXPECT_NEAR(g(rhoL), g(rhoV), 1e-8) << eos << " " << name << " " << p;
                    EXPECT_NEAR(m->Z(rhoV, T) * R * T * rhoV / p, 1, 1e-9);
                } catch (ThException const&) {
                } catch (MthException const&) {
                }
        }
    EXPECT_GT(found, 20);
}
}  // namespace
