// Two phases of a binary at (p, T): common tangent, equal potentials, minimum of the Gibbs energy,
// freeze-out of a solid.
#include "equilibria/phases.h"

#include <corvane/classic/equilibria/equil2.h>
#include <corvane/classic/equilibria/equil2s-1.h>
#include <corvane/classic/equilibria/equil_min.h>
#include <corvane/classic/equilibria/ffinit.h>
#include <corvane/classic/equilibria/list_different.h>

#include <limits>

namespace {
Vector<phdesc> phases(phdesc a, phdesc b) {
    Vector<phdesc> ph(2);
    ph[0] = a;
    ph[1] = b;
    return ph;
}
constexpr phdesc kFluid{0, -1};

/// ffinit, equil2 and equil_min find the same pair of compositions; returns them.
Vector<double> split(ModelN const& m, double p, double T, Vector<double>& rho) {
    const Vector<double> grid = ffinit(&m, p, T);
    Vector<double> x(2), least(2);
    equil2(&m, p, T, x, rho);
    expect_equilibrium(m, T, mix(x[0]) * rho[0], mix(x[1]) * rho[1], p);
    for (int k = 0; k < 2; ++k) {
        EXPECT_NEAR(grid[k], x[k], 0.01);  // a grid step
        least[k] = 0.9 * x[1 - k] + 0.05;  // inside the gap, phases in the other order
    }
    equil_min(&m, p, T, phases(kFluid, kFluid), least);
    Vector<double> again = least, spare(2);
    equil2(&m, p, T, again, spare);
    for (int k = 0; k < 2; ++k) {
        EXPECT_NEAR(least[k], x[1 - k], 1e-6);  // the square root of rounding noise
        EXPECT_NEAR(again[k], x[1 - k], 1e-9);
    }
    return x;
}

TEST(Split, ThreeMethodsAgree) {
    Vector<double> rho(2);
    split(*peng_robinson("methane", "propane", 0.01), 3, 250, rho);        // vapour and liquid
    split(*peng_robinson("carbon_dioxide", "decane", 0.1), 10, 235, rho);  // two liquids
    // Twins: x and 1 − x, equal densities, ln(x/(1 − x)) = 2·rho·a·k·(2x − 1)/(RT). The second
    // row is purer than the grid of ffinit.
    for (auto [k, T] : {std::pair(0.35, 250.0), std::pair(0.8, 200.0)}) {
        const Vector<double> x = split(VdwTwins(k), 50, T, rho);
        EXPECT_NEAR(x[0] + x[1], 1, 1e-9);
        const double y = 2 * rho[0] * 27.0 / 8.0 * 300 * 40 * k * (2 * x[1] - 1) / T;
        EXPECT_NEAR(std::log(x[1] / x[0]) / y, 1, 1e-8);
    }
}

TEST(Split, FailuresKeepTheCompositions) {
    const VdwTwins same(0), twins(0.35);
    const Mixture three = mixture_of("PR", "vdW1", {"methane", "ethane", "propane"});
    Vector<double> rho(2), x = vec({0.3, 0.4});
    EXPECT_EQ(th_code([&] { ffinit(&same, 5, 250); }), th_generic);          // convex
    EXPECT_EQ(th_code([&] { equil2(&same, 5, 250, x, rho); }), th_trivial);  // one phase only
    EXPECT_EQ(th_code([&] { equil2(&twins, -1, 250, x, rho); }), th_no_density);
    EXPECT_EQ(th_code([&] { ffinit(three.get(), 5, 250); }), th_no_option);
    EXPECT_EQ(x[0], 0.3);
    const struct {
        ModelN const* model;
        phdesc first;
        double a, b;
    } rows[] = {{&same, kFluid, 0.2, 0.3},    // leaves [0, 1]
                {&twins, kFluid, 0.4, 0.4},   // 0/0
                {&twins, {0, -2}, 0.2, 0.8},  // no such fluid
                {&twins, {0, 0}, 1.0, 0.5},   // no solid data
                {&twins, {7, 0}, 1.0, 0.5}};  // no such component
    for (auto const& row : rows) {
        x = vec({row.a, row.b});
        equil_min(row.model, 50, 250, phases(row.first, kFluid), x);
        EXPECT_EQ(x[0], row.a);
        EXPECT_EQ(x[1], row.b);
    }
    equil_min(nullptr, 50, 250, phases({1, 0}, {0, 0}), x);  // two solids ask no model
    EXPECT_EQ(x[1], 0.5);
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
        list_different(vec({row.a, row.b}), row.d, list, count, idx);
        EXPECT_EQ(idx[0], row.ia);
        EXPECT_EQ(idx[1], row.ib);
        EXPECT_EQ(count, row.count);
    }
}

TEST(Freeze, PotentialEqualsThatOfTheSolid) {
    const Mixture m = peng_robinson("carbon_dioxide", "methane", 0.0978);
    Solid& solid = m->mdl1[0]->solid;
    Vector<double> x = vec({0.5, 0}), rho(2);  // 0.5 selects component 0
    int i = -1;
    const auto code = [&](double p, double T) {
        return th_code([&] { equil2s(m.get(), p, T, x, 2, 0.0, rho, i); });
    };
    EXPECT_EQ(code(5, 200), th_no_solid);
    solid.load();
    EXPECT_EQ(code(5, 220), th_out_of_range);
    EXPECT_EQ(code(1e-3, 210), th_generic);  // the pure vapour is stable
    EXPECT_NEAR(rho[0] * 28.38, 1, 2e-3);    // written before the failure
    const struct {
        double p, T;
        int phase;
    } rows[] = {{5, 130, 1}, {5, 160, 2}, {20, 200, 2}, {1, 180, 3}, {1e-3, 140, 3}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.p << " MPa " << row.T << " K");
        equil2s(m.get(), row.p, row.T, x, row.phase, 0.0, rho, i);
        double rho_s, psub = 0, v, kappa;
        const double g = solid.Ge(row.p, row.T, i, rho_s);
        EXPECT_NEAR(m->my(mix(x[1]) * rho[1], row.T, 0), g, 1e-10);
        EXPECT_NEAR(pressure(*m, mix(x[1]) * rho[1], row.T) / row.p, 1, 1e-9);
        EXPECT_EQ(rho[0], rho_s);
        Vector<double> y = vec({1, 0.7 * x[1]});  // the minimum stands at the same composition
        equil_min(m.get(), row.p, row.T, phases({0, 0}, kFluid), y);
        EXPECT_EQ(y[0], 1.0);
        EXPECT_NEAR(y[1], x[1], 2e-6);
        if (row.p > 1e-3) continue;
        // A thin gas: x·p = psub, up to second virial and volume terms, 2·B·p/(RT) of 3e-4.
        solid.sge(row.T, 0, psub, v, kappa);
        EXPECT_NEAR(x[1] * row.p / psub, 1, 1e-3);
    }
    x[0] = 0.4;  // now component 1, which has no data loaded
    EXPECT_EQ(code(5, 130), th_no_solid);
}

// A search that comes back with two equal phases, and absurd states.
TEST(Split, OnlyEquilibriaPassTheJudgement) {
    const Mixture m = peng_robinson("carbon_dioxide", "methane", 0.1);
    const struct {
        double T, p, a, b;
    } rows[] = {{142.9, 0.025, 0.1, 0.9}, {85.1, 1.5e-6, 0.1, 0.8}, {170, 1, 0.2, 0.3}, {190, 3, 0.4, 0.45}};
    int moved = 0;
    for (auto const& row : rows)
        for (double shift : {0.0, 0.01, 0.03}) {
            Vector<double> x = vec({row.a + shift, row.b});
            const bool good = corvane::equil_min_judged(m.get(), row.p, row.T, phases(kFluid, kFluid), x);
            EXPECT_EQ(good, x[0] != row.a + shift);
            if (!good) continue;
            ++moved;
            EXPECT_GT(std::fabs(x[0] - x[1]), 1e-3);
            for (int i : {0, 1}) {
                double rho = 0;
                EXPECT_NEAR(m->my(row.p, row.T, mix(x[0]), i, 2, rho),
                            m->my(row.p, row.T, mix(x[1]), i, 2, rho), 1e-3);
            }
        }
    Vector<double> x = vec({0.1, 0.9}), rho(2);
    for (auto [p, T] : {std::pair(1e300, 200.0), {1e12, 200.0}, {INFINITY, 200.0}, {1.0, -1.0},
                        {1.0, std::nan("")}, {0.0, 200.0}, {1e-310, 200.0}})
        EXPECT_EQ(th_code([&] { equil2(m.get(), p, T, x, rho); }), th_no_density) << p << " " << T;
    EXPECT_EQ(x[0], 0.1);
}
}  // namespace
