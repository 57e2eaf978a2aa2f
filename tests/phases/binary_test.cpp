// Three phases and complete diagrams of binaries, seen from their two-phase sides.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::DiagramEnd;
using corvane::EquilibriumFailure;
using corvane::PhasePair;
using corvane::ThreePhasePoint;

namespace {
TEST(ThreePhase, IsTheEndOfThreeTwoPhaseStates) {
    const struct {
        char const *first, *second;
        double kij, T;
    } cases[] = {{"carbon_dioxide", "water", 0.19, 290},
                 {"carbon_dioxide", "decane", 0.11, 245},
                 {"nitrogen", "ethane", 0.05, 110},
                 {"ethanol", "water", 0.1, 350}};  // heteroazeotrope: the vapour is in the middle
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = peng_robinson(c.first, c.second, c.kij);
        const ThreePhasePoint q = corvane::three_phase_T(*m, c.T);
        ASSERT_EQ(q.phases.size(), 3u);
        EXPECT_TRUE(q.certificate.holds());
        for (unsigned i = 0; i < 3; ++i) {
            auto const &a = q.phases[i], &b = q.phases[(i + 1) % 3];
            expect_equilibrium(*m, q.T, a.x * a.rho, b.x * b.rho, q.p);
            corvane::SaturationPoint start;  // the denser one boils into the lighter one
            start.given = i < 2 ? a : b;
            start.incipient = i < 2 ? b : a;
            corvane::SaturationOptions o;
            o.start = &start;
            EXPECT_NEAR(corvane::bubble_T(*m, q.T, start.given.x, o).p / q.p, 1, 1e-8);
        }
        EXPECT_NEAR(corvane::three_phase_p(*m, q.p).T / q.T, 1, 1e-9);
        corvane::ThreePhaseOptions near;
        near.start = &q;
        EXPECT_NEAR(corvane::three_phase_T(*m, c.T + 1, near).p,
                    corvane::three_phase_T(*m, c.T + 1).p, 1e-8);
    }
}

// Equal components: the two liquids are mirror images, the vapour is in the middle.
TEST(ThreePhase, OfTwinsIsSymmetric) {
    const VdwTwins twins(0.4);
    const ThreePhasePoint q = corvane::three_phase_T(twins, 200);
    EXPECT_NEAR(q.phases[0].x[0] + q.phases[1].x[0], 1, 1e-6);
    EXPECT_NEAR(q.phases[0].rho / q.phases[1].rho, 1, 1e-6);
    EXPECT_NEAR(q.phases[2].x[0], 0.5, 1e-6);
}

TEST(ThreePhase, Refused) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    ThreePhasePoint start;
    start.T = 200;
    for (double x : {0.2, 0.4, 0.6}) start.phases.push_back({0.01, mix(x)});
    corvane::ThreePhaseOptions o;
    for (bool given : {false, true}) try {
            o.start = given ? &start : nullptr;
            corvane::three_phase_T(*m, 200, o);
            ADD_FAILURE() << "three phases of methane and propane";
        } catch (EquilibriumFailure const& f) {
            EXPECT_EQ(f.kind(), given ? EquilibriumFailure::Kind::gave_up
                                      : EquilibriumFailure::Kind::no_solution);
        }
    start.phases.pop_back();
    EXPECT_EQ(th_code([&] { corvane::three_phase_T(*m, 200, o); }), 5);
    EXPECT_EQ(th_code([&] { corvane::three_phase_p(*m, -1); }), 5);
}
}  // namespace
