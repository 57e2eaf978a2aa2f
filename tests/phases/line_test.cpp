// Lines of three phases and of azeotropes: their ends by other solvers, identities along them.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::AzeotropePoint;
using corvane::EquilibriumFailure;
using corvane::PhaseLineEnd;

namespace {
TEST(ThreePhaseLine, RunsToCriticalEndPoints) {
    const struct {
        char const *first, *second;
        double kij;
        std::size_t critical, other;  // phases that are alike at the end: critical and critical + 1
    } cases[] = {{"carbon_dioxide", "water", 0.19, 1, 0},   // the second liquid and the vapour
                 {"carbon_dioxide", "ethane", 0.13, 0, 2},  // the liquids
                 {"nitrogen", "ethane", 0.05, 1, 0}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = peng_robinson(c.first, c.second, c.kij);
        const auto lines = corvane::three_phase_lines(*m);
        ASSERT_EQ(lines.size(), 1u);
        auto const& line = lines[0];
        EXPECT_EQ(line.begin, PhaseLineEnd::coldest);
        EXPECT_NEAR(line.points.front().T, 0.3 * std::min(m->mdl1[0]->Tcrit(), m->mdl1[1]->Tcrit()),
                    1e-9);
        ASSERT_EQ(line.end, PhaseLineEnd::critical);
        auto const& end = line.points.back();
        auto const &critical = end.phases[c.critical], &other = end.phases[c.other];
        EXPECT_NEAR(critical.x[0], end.phases[c.critical + 1].x[0], 1e-12);
        expect_equilibrium(*m, end.T, critical.x * critical.rho, other.x * other.rho, end.p);
        double nearest = 1;
        for (auto const& q : corvane::critical_points(*m, critical.x))
            nearest =
                std::min(nearest, std::fabs(q.T / end.T - 1) + std::fabs(q.rho / critical.rho - 1));
        EXPECT_LT(nearest, 1e-7);
        for (std::size_t k = 1; k < line.points.size(); ++k) {
            EXPECT_TRUE(line.points[k].certificate.holds());
            EXPECT_GT(line.points[k].T, line.points[k - 1].T);
        }
        auto const& middle = line.points[line.points.size() / 2];
        EXPECT_NEAR(corvane::three_phase_T(*m, middle.T).p / middle.p, 1, 1e-8);
    }
    EXPECT_TRUE(corvane::three_phase_lines(*peng_robinson("methane", "propane", 0.01)).empty());
    // A state on it, at a temperature of the search, misses its certificate: no line is without
    // points.
    const auto hexane = corvane::open_mixture("PCSAFT+LB", {"methane", "hexane"});
    for (auto const& line : corvane::three_phase_lines(*hexane.model))
        EXPECT_FALSE(line.points.empty());
}

// Gibbs–Konovalov: p is stationary in x at an azeotrope, so that along the line of azeotropes it
// rises as the bubble pressure of constant composition.
TEST(Azeotrope, IsAnExtremumOfPressure) {
    const struct {
        char const *first, *second;
        double kij, T;
    } cases[] = {{"carbon_dioxide", "ethane", 0.13, 250},
                 {"ethanol", "water", -0.1, 200},
                 {"acetone", "hexane", 0.1, 330},
                 {"ethanol", "heptane", 0.26, 470}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = peng_robinson(c.first, c.second, c.kij);
        const AzeotropePoint q = corvane::azeotrope_T(*m, c.T);
        EXPECT_TRUE(q.certificate.holds());
        EXPECT_EQ(q.dense.x[0], q.x);
        EXPECT_NEAR(q.light.x[0], q.x, 1e-10);
        auto bubble = [&](double T, double x) { return corvane::bubble_T(*m, T, mix(x)).p / q.p; };
        const double h = 1e-3;
        const double left = bubble(c.T, q.x - h) - 1, right = bubble(c.T, q.x + h) - 1;
        EXPECT_GT(left * right, 0);                                  // an extremum
        EXPECT_LT(std::fabs(right - left), 0.02 * std::fabs(left));  // of third order in h
        corvane::AzeotropeOptions near;
        near.start = &q;
        auto azeotrope = [&](double T) { return corvane::azeotrope_T(*m, T, near).p / q.p; };
        EXPECT_NEAR((azeotrope(c.T + h) - azeotrope(c.T - h)) /
                        (bubble(c.T + h, q.x) - bubble(c.T - h, q.x)),
                    1, 1e-5);  // rounding of p over a difference of 1e-4
        EXPECT_NEAR(corvane::azeotrope_p(*m, q.p).T / q.T, 1, 1e-9);
    }
    try {
        corvane::azeotrope_T(*peng_robinson("methane", "propane", 0.01), 200);
        ADD_FAILURE() << "an azeotrope of methane and propane";
    } catch (EquilibriumFailure const& f) {
        EXPECT_EQ(f.kind(), EquilibriumFailure::Kind::no_solution);
    }
    const VdwTwins twins(0.05);
    EXPECT_NEAR(corvane::azeotrope_T(twins, 250).x, 0.5, 1e-8);
    EXPECT_EQ(th_code([&] { corvane::azeotropic_line(twins, AzeotropePoint()); }), 5);
}

TEST(AzeotropicLine, EndsWhereItShould) {
    Mixture m = peng_robinson("carbon_dioxide", "ethane", 0.13);
    auto lines = corvane::azeotropic_lines(*m);
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].begin, PhaseLineEnd::three_phase);
    const AzeotropePoint cold = lines[0].points.front(), top = lines[0].points.back();
    EXPECT_NEAR(corvane::three_phase_T(*m, cold.T).p / cold.p, 1, 1e-8);
    ASSERT_EQ(lines[0].end, PhaseLineEnd::critical);
    corvane::CriticalPoint near;
    near.T = top.T;
    near.rho = top.dense.rho;
    corvane::CriticalOptions o;
    o.start = &near;
    EXPECT_NEAR(corvane::critical_point(*m, mix(top.x), o).p / top.p, 1, 1e-6);
    m = peng_robinson("ethanol", "water", -0.1);
    lines = corvane::azeotropic_lines(*m);
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].end, PhaseLineEnd::pure);  // K of water at infinite dilution is 1
    const double T = lines[0].points.back().T;
    const auto q = corvane::bubble_T(*m, T, mix(1 - 1e-6));
    EXPECT_NEAR(q.incipient.x[1] / 1e-6, 1, 1e-4);
    // Of 27 K, between three phases and the critical line.
    m = peng_robinson("ethanol", "heptane", 0.26);
    lines = corvane::azeotropic_lines(*m);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].begin, PhaseLineEnd::three_phase);
    EXPECT_EQ(lines[0].end, PhaseLineEnd::critical);
}
}  // namespace
