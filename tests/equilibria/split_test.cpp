// Two phases of a binary at (p, T): common tangent, equal potentials, minimum of the Gibbs energy,
// freeze-out of a solid.
#include <corvane/equilibria/equil2.h>
#include <corvane/equilibria/equil2s-1.h>
#include <corvane/equilibria/equil_min.h>
#include <corvane/equilibria/ffinit.h>
#include <corvane/equilibria/list_different.h>

#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_mixture.h"

#include <limits>

namespace {
Vector<double> pair(double a, double b) {
    Vector<double> x(2);
    x[0] = a;
    x[1] = b;
    return x;
}

Vector<phdesc> phases(phdesc a, phdesc b) {
    Vector<phdesc> ph(2);
    ph[0] = a;
    ph[1] = b;
    return ph;
}
constexpr phdesc kFluid{0, -1};

struct Case {
    VdwMixture::Component first, second;
    double k, p, T;
};
constexpr Case kSplits[] = {
    {{300, 40}, {300, 40}, 0.35, 50, 250},  // two liquids, symmetrical
    {{300, 40}, {320, 60}, 0.25, 20, 200},  // two liquids
    {{300, 40}, {300, 40}, 0.80, 50, 200},  // purer than the grid of ffinit
    {{190, 40}, {370, 60}, 0.01, 3, 250},   // vapour and liquid
};

TEST(Split, ThreeMethodsAgree) {
    for (Case const& c : kSplits) {
        SCOPED_TRACE(testing::Message() << "k " << c.k << " p " << c.p);
        const ExactVdwMixture m({c.first, c.second}, c.k);
        const Vector<double> grid = ffinit(&m, c.p, c.T);
        Vector<double> x = pair(0, 0), rho(2), least = grid;
        equil2(&m, c.p, c.T, x, rho);
        for (int k = 0; k < 2; ++k) {
            EXPECT_NEAR(grid[k], x[k], 0.01);  // a grid step
            EXPECT_NEAR(m.Z(rho[k], c.T, pair(x[k], 1 - x[k])) * R * c.T * rho[k] / c.p, 1, 1e-9);
            EXPECT_NEAR(m.my(rho[0], c.T, pair(x[0], 1 - x[0]), k),
                        m.my(rho[1], c.T, pair(x[1], 1 - x[1]), k), 1e-9);
            least[k] = 0.9 * x[k] + 0.05;  // start and overall composition inside the gap
        }
        equil_min(&m, c.p, c.T, phases(kFluid, kFluid), least);
        for (int k = 0; k < 2; ++k) EXPECT_NEAR(least[k], x[k], 1e-6);  // sqrt of rounding noise
        // From the minimum the fit converges to the same point, phases in the caller's order.
        Vector<double> swapped = pair(least[1], least[0]);
        equil2(&m, c.p, c.T, swapped, rho);
        EXPECT_NEAR(swapped[0], x[1], 1e-9);
        if (c.first.Tc == c.second.Tc) {
            // Equal fluids: x and 1 − x, equal densities, ln(x/(1 − x)) = 2·rho·a·k·(2x − 1)/(RT).
            EXPECT_NEAR(x[0] + x[1], 1, 1e-9);
            const double y = 2 * rho[0] * m.a(0, 0) * c.k * (2 * x[1] - 1) / (R * c.T);
            EXPECT_NEAR(std::log(x[1] / x[0]) / y, 1, 1e-8);
        }
    }
}

TEST(Split, Codes) {
    const ExactVdwMixture twins({{300, 40}, {300, 40}}, 0), three({{1, 1}, {1, 1}, {1, 1}}, 0),
        m({{300, 40}, {300, 40}}, 0.35);
    Vector<double> x = pair(0, 0), rho(2);
    EXPECT_EQ(th_code([&] { ffinit(&twins, 5, 250); }), th_generic);  // convex
    EXPECT_EQ(th_code([&] { equil2(&twins, 5, 250, x, rho); }), th_generic);
    x = pair(0.3, 0.4);  // one phase only: the difference of the potentials vanishes at x0 = x1
    EXPECT_EQ(th_code([&] { equil2(&twins, 5, 250, x, rho); }), th_trivial);
    EXPECT_EQ(x[0], 0.3);
    EXPECT_EQ(th_code([&] { ffinit(&three, 5, 250); }), th_no_option);
    EXPECT_EQ(th_code([&] { equil2(&m, -1, 250, x, rho); }), th_no_density);
}

TEST(Split, MinimisationRestoresTheCompositions) {
    const ExactVdwMixture m({{300, 40}, {300, 40}}, 0.35), twins({{300, 40}, {300, 40}}, 0);
    struct Row {
        ModelN const* model;
        Vector<phdesc> ph;
        double a, b;
    };
    const Row rows[] = {{&twins, phases(kFluid, kFluid), 0.2, 0.3},  // leaves [0, 1]
                        {&m, phases(kFluid, kFluid), 0.4, 0.4},
                        {&m, phases({0, -2}, kFluid), 0.2, 0.8},
                        {&m, phases({0, 0}, kFluid), 1.0, 0.5},  // no solid data
                        {&m, phases({7, 0}, kFluid), 1.0, 0.5}};
    for (Row const& row : rows) {
        Vector<double> x = pair(row.a, row.b);
        equil_min(row.model, 50, 250, row.ph, x);
        EXPECT_EQ(x[0], row.a);
        EXPECT_EQ(x[1], row.b);
    }
    Vector<double> x = pair(0, 1);
    const long before = m.calls;
    equil_min(&m, 50, 250, phases({1, 0}, {0, 0}), x);  // two solids: no model is asked
    EXPECT_EQ(m.calls, before);
}

TEST(Split, ListOfDifferentValues) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Vector<double> a(3), list;
    Vector<int> idx(3);
    int count = 0;
    a[0] = a[2] = 1;
    a[1] = 2;
    list_different(a, 0.0, list, count, idx);
    EXPECT_EQ(idx[0] * 100 + idx[1] * 10 + idx[2], 10);
    a[0] = 2;
    a[1] = 3;
    a[2] = nan;
    list_different(a, 0.0, list, count, idx);
    EXPECT_EQ(idx[0] * 100 + idx[1] * 10 + idx[2], 123);
    list_different(a, 1.0, list, count, idx);  // 3, 4, not-a-number again
    EXPECT_EQ(idx[0] * 100 + idx[1] * 10 + idx[2], 245);
    EXPECT_EQ(count, 6);
    EXPECT_EQ(list[4], 4.0);
}

/// Component `solid` of the mixture gets one solid phase with ln p = ln p0 − H/R·(1/T − 1/T0).
constexpr double kT0 = 250, kp0 = 0.1, kSlope = 4000;  // triple point and H/R, K
void give_solid(Scratch const& dir, Model1& substance) {
    std::string text = "1 250\ns 6\n";
    for (double T = kT0; T > 140; T -= 20)
        text += std::to_string(T) + " " +
                std::to_string(kp0 * std::exp(-kSlope * (1 / T - 1 / kT0)) * 1e6) + "e-6 45 0\n";
    dir.write("CorvaneS/solid/component", text);
    substance.solid.load();
}

TEST(Freeze, PotentialEqualsThatOfTheSolid) {
    const Scratch dir;
    const ExactVdwMixture m({{390, 60}, {190, 40}},
                            0.05);  // 0 freezes, as carbon dioxide in methane
    give_solid(dir, *m.mdl1[0]);
    struct Row {
        double p, T;
        int phase;
    };
    for (Row const& row : {Row{5, 160, 1}, Row{20, 200, 2}, Row{20, 240, 2}, Row{1, 200, 3}}) {
        SCOPED_TRACE(testing::Message() << row.p << " MPa " << row.T << " K");
        Vector<double> x = pair(0.5, -1), rho(2);  // 0.5 selects component 0
        int i = -1;
        equil2s(&m, row.p, row.T, x, row.phase, 0.0, rho, i);
        double rho_s;
        EXPECT_NEAR(m.my(rho[1], row.T, pair(x[1], 1 - x[1]), 0),
                    m.mdl1[0]->solid.Ge(row.p, row.T, i, rho_s), 1e-10);
        EXPECT_EQ(rho[0], rho_s);
        EXPECT_NEAR(m.Z(rho[1], row.T, pair(x[1], 1 - x[1])) * R * row.T * rho[1] / row.p, 1, 1e-9);
        // The minimum of the Gibbs energy stands at the same composition.
        Vector<double> y = pair(1, 0.7 * x[1]);
        equil_min(&m, row.p, row.T, phases({0, 0}, kFluid), y);
        EXPECT_EQ(y[0], 1.0);
        EXPECT_NEAR(y[1], x[1], 2e-6);
    }
}

TEST(Freeze, ThinVapourFollowsTheSublimationPressure) {
    const Scratch dir;
    const ExactVdwMixture m({{190, 40}, {390, 60}}, 0.0);  // now component 1 freezes
    give_solid(dir, *m.mdl1[1]);
    for (double T : {160.0, 170.0, 180.0}) {
        Vector<double> x = pair(0, 0), rho(2);
        int i = -1;
        const double p = 2e-3;
        equil2s(&m, p, T, x, 3, 0.0, rho, i);
        // y·p = psub, up to p·v/(RT) and 2·B12·p/(RT) of 1e-3
        const double psub = kp0 * std::exp(-kSlope * (1 / T - 1 / kT0));
        EXPECT_NEAR((1 - x[1]) * p / psub, 1, 1e-3) << T;
    }
}

TEST(Freeze, Codes) {
    const Scratch dir;
    const ExactVdwMixture m({{390, 60}, {190, 40}}, 0.05);
    Vector<double> x = pair(1, 0), rho(2);
    int i = -1;
    const auto code = [&](double p, double T) {
        rho[0] = 0;
        return th_code([&] { equil2s(&m, p, T, x, 2, 0.0, rho, i); });
    };
    EXPECT_EQ(code(5, 200), th_no_solid);
    give_solid(dir, *m.mdl1[0]);
    EXPECT_EQ(code(5, 251), th_out_of_range);
    EXPECT_EQ(code(1e-3, 249), th_generic);  // the pure vapour is stable
    EXPECT_NEAR(rho[0], 1 / 45.0, 1e-9);     // written before the failure
    x[0] = 0.4;
    EXPECT_EQ(code(5, 200), th_no_solid);  // component 1 has no data
}
}  // namespace
