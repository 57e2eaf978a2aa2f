// Descents of the tangent-plane test towards critical phases end where three times a step of
// Newton's method does, or in the valley about the phase: the distance is of fourth order there,
// and a step covers a third of the way.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

namespace {
struct Tested {
    corvane::StabilityResult result;
    long evaluations;
};
/// Of a critical phase, with a margin for rounding of its singular Hessian.
Tested tested(corvane::FluidModel const& fluid, corvane::CriticalPoint const& c, bool critical) {
    constexpr double kMargin = 1e-5;
    corvane::PhaseState phase;
    phase.resize(fluid.size());
    for (int i = 0; i < fluid.size(); ++i) phase.rho_i[i] = c.rho * (phase.x[i] = fluid.z()[i]);
    phase.rho = c.rho;
    EXPECT_TRUE(fluid.evaluate(phase, c.T, corvane::phase_all));
    for (int i = 0; i < phase.size(); ++i) {
        phase.H[i * phase.size() + i] += kMargin / phase.rho_i[i];
        phase.P[i] += kMargin;
    }
    phase.S += kMargin * phase.rho;
    corvane::Stability test(fluid);
    test.critical = critical;
    const long before = fluid.evaluations;
    const auto result = test.test(phase, phase.p, nullptr, false);
    return {result, fluid.evaluations - before};
}
}  // namespace

// What ends early has gone back to the phase: the answers are those of descents that go all the
// way, stable or not, which take more than twice as many evaluations.
TEST(CriticalDescent, EndsEarlyWithTheAnswersOfTheWholeWay) {
    long early = 0, whole = 0;
    int stable = 0, unstable = 0;
    const struct {
        char const *eos, *rule;
        std::vector<std::string> names;
        std::vector<std::vector<double>> compositions;
    } cases[] = {
        {"PR",
         "vdW1",
         {"methane", "ethane", "propane"},
         {{0.6, 0.3, 0.1}, {0.3, 0.3, 0.4}, {0.1, 0.6, 0.3}, {0.45, 0.1, 0.45}}},
        {"SRK",
         "vdW1",
         {"nitrogen", "methane", "ethane", "propane", "butane"},
         {{0.05, 0.7, 0.1, 0.1, 0.05}, {0.2, 0.2, 0.2, 0.2, 0.2}, {0.02, 0.3, 0.3, 0.2, 0.18}}},
        // Two liquids where the whole would be critical.
        {"PR",
         "vdW1",
         {"methane", "carbon_dioxide", "hydrogen_sulfide"},
         {{0.5, 0.1, 0.4}, {0.6, 0.05, 0.35}, {0.4, 0.3, 0.3}, {0.7, 0.1, 0.2}}},
        {"PR",
         "vdW1",
         {"methane", "hexane", "water"},
         {{0.6, 0.3, 0.1}, {0.3, 0.5, 0.2}, {0.2, 0.3, 0.5}}}};
    for (auto const& c : cases)
        for (auto const& composition : c.compositions) {
            const Mixture m = mixture_of(c.eos, c.rule, c.names);
            Vector<double> z(static_cast<int>(composition.size()));
            for (int i = 0; i < z.size(); ++i) z[i] = composition[static_cast<std::size_t>(i)];
            const corvane::FluidModel fluid(*m, z);
            for (corvane::CriticalPoint const& point : corvane::critical_points(*m, z)) {
                SCOPED_TRACE(c.names[0] + " " + c.names[2] + " " + std::to_string(point.T));
                const Tested with = tested(fluid, point, true),
                             without = tested(fluid, point, false);
                EXPECT_EQ(with.result.stable, without.result.stable);
                EXPECT_NEAR(with.result.tpd, without.result.tpd, 1e-8);
                ++(without.result.stable ? stable : unstable);
                if (!without.result.stable) continue;
                early += with.evaluations;
                whole += without.evaluations;
            }
        }
    EXPECT_GT(stable, 5);
    EXPECT_GE(unstable, 2);
    EXPECT_LT(early, 0.5 * static_cast<double>(whole));
}
