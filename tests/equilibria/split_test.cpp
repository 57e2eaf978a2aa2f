// Two phases of a binary at (p, T): common tangent, equal potentials, minimum of the Gibbs energy,
// freeze-out of a solid.
#include <corvane/equilibria/equil2.h>
#include <corvane/equilibria/equil2s-1.h>
#include <corvane/equilibria/equil_min.h>
#include <corvane/equilibria/ffinit.h>
#include <corvane/equilibria/list_different.h>

#include "equilibria/phases.h"
#include "support/scratch.h"
#include "support/vdw_mixture.h"

#include <limits>
#include <string>

namespace {
Vector<phdesc> phases(phdesc a, phdesc b) {
    Vector<phdesc> ph(2);
    ph[0] = a;
    ph[1] = b;
    return ph;
}
constexpr phdesc kFluid{0, -1};

TEST(Split, ThreeMethodsAgree) {
    struct Row {
        VdwMixture::Component first, second;
        double k, p, T;
    };
    const Row rows[] = {{{300, 40}, {300, 40}, 0.35, 50, 250},  // two liquids, symmetrical
                        {{300, 40}, {320, 60}, 0.25, 20, 200},
                        {{300, 40}, {300, 40}, 0.80, 50, 200},  // purer than the grid of ffinit
                        {{190, 40}, {370, 60}, 0.01, 3, 250}};  // vapour and liquid
    for (Row const& c : rows) {
        SCOPED_TRACE(testing::Message() << "k " << c.k << " p " << c.p);
        const VdwMixture m({c.first, c.second}, c.k);
        const Vector<double> grid = ffinit(&m, c.p, c.T);
        Vector<double> x = pair(0, 0), rho(2), least(2);
        equil2(&m, c.p, c.T, x, rho);
        expect_equilibrium(m, c.T, mix(x[0]) * rho[0], mix(x[1]) * rho[1], c.p);
        for (int k = 0; k < 2; ++k) {
            EXPECT_NEAR(grid[k], x[k], 0.01);  // a grid step
            least[k] = 0.9 * x[1 - k] + 0.05;  // inside the gap, phases in the other order
        }
        equil_min(&m, c.p, c.T, phases(kFluid, kFluid), least);
        for (int k = 0; k < 2; ++k) EXPECT_NEAR(least[k], x[1 - k], 1e-6);  // sqrt of rounding
        equil2(&m, c.p, c.T, least, rho);
        EXPECT_NEAR(least[0], x[1], 1e-9);
        if (c.first.Tc == c.second.Tc) {
            // Equal fluids: x and 1 − x, equal densities, ln(x/(1 − x)) = 2·rho·a·k·(2x − 1)/(RT).
            const double y = 2 * rho[0] * m.a(0, 0) * c.k * (2 * x[1] - 1) / (R * c.T);
            EXPECT_NEAR(x[0] + x[1], 1, 1e-9);
            EXPECT_NEAR(std::log(x[1] / x[0]) / y, 1, 1e-8);
        }
    }
}

TEST(Split, FailuresKeepTheCompositions) {
    const VdwMixture twins({{300, 40}, {300, 40}}, 0), three({{1, 1}, {1, 1}, {1, 1}}, 0),
        m({{300, 40}, {300, 40}}, 0.35);
    Vector<double> rho(2), x = pair(0.3, 0.4);
    EXPECT_EQ(th_code([&] { ffinit(&twins, 5, 250); }), th_generic);          // convex
    EXPECT_EQ(th_code([&] { equil2(&twins, 5, 250, x, rho); }), th_trivial);  // one phase only
    EXPECT_EQ(th_code([&] { equil2(&m, -1, 250, x, rho); }), th_no_density);
    EXPECT_EQ(th_code([&] { ffinit(&three, 5, 250); }), th_no_option);
    EXPECT_EQ(x[0], 0.3);
    const struct {
        ModelN const* model;
        Vector<phdesc> ph;
        double a, b;
    } rows[] = {{&twins, phases(kFluid, kFluid), 0.2, 0.3},    // leaves [0, 1]
                {&m, phases(kFluid, kFluid), 0.4, 0.4},        // 0/0
                {&m, phases({0, -2}, kFluid), 0.2, 0.8},       // no such fluid
                {&m, phases({0, 0}, kFluid), 1.0, 0.5},        // no solid data
                {&m, phases({7, 0}, kFluid), 1.0, 0.5},        // no such component
                {nullptr, phases({1, 0}, {0, 0}), 0.0, 1.0}};  // two solids ask no model
    for (auto const& row : rows) {
        x = pair(row.a, row.b);
        equil_min(row.model, 50, 250, row.ph, x);
        EXPECT_EQ(x[0], row.a);
        EXPECT_EQ(x[1], row.b);
    }
}

TEST(Split, ListOfDifferentValues) {
    Vector<double> list;
    Vector<int> idx(2);
    int count = 0;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        double a, b, d;
        int ia, ib, count;
    } rows[] = {{1, 1, 0, 0, 0, 1}, {2, 1, 0, 1, 0, 2}, {1, 2, 1, 1, 2, 3}, {nan, nan, 0, 3, 4, 5}};
    for (auto const& row : rows) {
        list_different(pair(row.a, row.b), row.d, list, count, idx);
        EXPECT_EQ(idx[0], row.ia);
        EXPECT_EQ(idx[1], row.ib);
        EXPECT_EQ(count, row.count);
    }
    EXPECT_EQ(list[2], 3.0);
}

constexpr double kT0 = 250, kp0 = 0.1, kSlope = 4000;  // triple point; enthalpy of sublimation/R
double sublimation(double T) {
    return kp0 * std::exp(-kSlope * (1 / T - 1 / kT0));
}
void give_solid(Scratch const& dir, Model1& substance) {
    std::string text = "1 250\ns 6\n";
    for (double T = kT0; T > 140; T -= 20)
        text += std::to_string(T) + " " + std::to_string(1e9 * sublimation(T)) + "e-9 45 0\n";
    dir.write("CorvaneS/solid/component", text);
    substance.solid.load();
}

TEST(Freeze, PotentialEqualsThatOfTheSolid) {
    const Scratch dir;
    const VdwMixture m({{390, 60}, {190, 40}}, 0.05);  // 0 freezes, as carbon dioxide in methane
    Vector<double> x = pair(0.5, 0), rho(2);           // 0.5 selects component 0
    int i = -1;
    const auto code = [&](double p, double T) {
        return th_code([&] { equil2s(&m, p, T, x, 2, 0.0, rho, i); });
    };
    EXPECT_EQ(code(5, 200), th_no_solid);
    give_solid(dir, *m.mdl1[0]);
    EXPECT_EQ(code(5, 251), th_out_of_range);
    EXPECT_EQ(code(1e-3, 249), th_generic);  // the pure vapour is stable
    EXPECT_NEAR(rho[0], 1 / 45.0, 1e-12);    // written before the failure
    const struct {
        double p, T;
        int phase;
    } rows[] = {{5, 160, 1}, {20, 200, 2}, {20, 240, 2}, {1, 200, 3}, {1e-3, 170, 3}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.p << " MPa " << row.T << " K");
        equil2s(&m, row.p, row.T, x, row.phase, 0.0, rho, i);
        double rho_s;
        const double g = m.mdl1[0]->solid.Ge(row.p, row.T, i, rho_s);
        EXPECT_NEAR(m.my(mix(x[1]) * rho[1], row.T, 0), g, 1e-10);
        EXPECT_NEAR(pressure(m, mix(x[1]) * rho[1], row.T) / row.p, 1, 1e-9);
        EXPECT_EQ(rho[0], rho_s);
        Vector<double> y = pair(1, 0.7 * x[1]);  // the minimum stands at the same composition
        equil_min(&m, row.p, row.T, phases({0, 0}, kFluid), y);
        EXPECT_EQ(y[0], 1.0);
        EXPECT_NEAR(y[1], x[1], 2e-6);
        // A thin gas: x·p = psub, up to second virial and volume terms, 2·B·p/(RT) of 1e-3.
        EXPECT_NEAR(x[1] * row.p / sublimation(row.T), 1, row.p == 1e-3 ? 1e-3 : 1e9);
    }
    x[0] = 0.4;  // now component 1, which has no data
    EXPECT_EQ(code(5, 200), th_no_solid);
}
}  // namespace
