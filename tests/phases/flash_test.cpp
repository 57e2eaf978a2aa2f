// The (p, T) flash: material balance, the phases' own saturation, and what is not split.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

#include <array>

using corvane::EquilibriumFailure;

namespace {
TEST(Flash, PhasesAreSaturatedAndAddUp) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z;
        double T, p;
    } cases[] = {
        {{"methane", "propane"}, mix(0.45), 270, 3},
        {{"methane", "propane"}, mix(0.45), 320, 0},  // near critical: below its bubble point
        {{"methane", "decane"}, mix(0.9), 320, 20},
        {{"carbon_dioxide", "water"}, mix(0.5), 300, 5},
        {{"nitrogen", "methane", "ethane", "propane", "decane"},
         vec({0.05, 0.6, 0.15, 0.1, 0.1}),
         280,
         4}};
    for (auto c : cases) {
        SCOPED_TRACE(c.names[1]);
        const Mixture m = mixture_of("PR", "vdW1", c.names);
        if (c.p == 0) c.p = 0.98 * corvane::bubble_T(*m, c.T, c.z).p;
        const auto q = corvane::flash_pT(*m, c.p, c.T, c.z);
        ASSERT_EQ(q.phases.size(), 2u);
        EXPECT_NEAR(q.fraction[0] + q.fraction[1], 1, 1e-14);
        const Vector<double> a = q.phases[0].x * q.phases[0].rho,
                             b = q.phases[1].x * q.phases[1].rho;
        for (int i = 0; i < c.z.size(); ++i) {
            EXPECT_NEAR(q.fraction[0] * q.phases[0].x[i] + q.fraction[1] * q.phases[1].x[i], c.z[i],
                        1e-12);
            EXPECT_NEAR(m->my(a, c.T, i), m->my(b, c.T, i), 1e-9);
        }
        EXPECT_NEAR(pressure(*m, a, c.T) / c.p, 1, 1e-9);
        EXPECT_NEAR(pressure(*m, b, c.T) / c.p, 1, 1e-9);
        // The denser phase is at its bubble point, the lighter one at its dew point, with the other
        // as the incipient phase; the start tells the solver which of them, no more.
        corvane::SaturationPoint bubble, dew;
        bubble.given = dew.incipient = q.phases[0];
        bubble.incipient = dew.given = q.phases[1];
        corvane::SaturationOptions o;
        o.start = &bubble;
        EXPECT_NEAR(corvane::bubble_T(*m, c.T, q.phases[0].x, o).p / c.p, 1, 1e-7);
        o.start = &dew;
        EXPECT_NEAR(corvane::dew_T(*m, c.T, q.phases[1].x, o).p / c.p, 1, 1e-7);
        corvane::FlashOptions warm;
        warm.start = &q;
        EXPECT_NEAR(corvane::flash_pT(*m, c.p, c.T, c.z, warm).fraction[1], q.fraction[1], 1e-8);
    }
}

TEST(Flash, BoundaryIsWhereTheSplitEnds) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    for (double x : {0.05, 0.3, 0.6, 0.95}) {
        const double T = 0.85 * (x * m->mdl1[0]->Tcrit() + (1 - x) * m->mdl1[1]->Tcrit());
        const Vector<double> z = mix(x);
        const double bubble = corvane::bubble_T(*m, T, z).p, dew = corvane::dew_T(*m, T, z).p;
        for (double d : {1e-2, 1e-4, 1e-6}) {
            EXPECT_EQ(corvane::flash_pT(*m, bubble * (1 + d), T, z).phases.size(), 1u);
            EXPECT_EQ(corvane::flash_pT(*m, dew * (1 - d), T, z).phases.size(), 1u);
            const auto near_bubble = corvane::flash_pT(*m, bubble * (1 - d), T, z);
            const auto near_dew = corvane::flash_pT(*m, dew * (1 + d), T, z);
            ASSERT_EQ(near_bubble.phases.size(), 2u);
            ASSERT_EQ(near_dew.phases.size(), 2u);
            // the fraction goes to zero with the distance, at a finite rate
            EXPECT_LT(near_bubble.fraction[1], 30 * d);
            EXPECT_LT(near_dew.fraction[0], 30 * d);
        }
    }
}

// Over a whole (p, T) field the answer is one phase exactly where the stability test says so, and
// the Gibbs energy of a split is below that of the whole.
TEST(Flash, Field) {
    for (auto const& names :
         {std::array{"methane", "decane"}, {"carbon_dioxide", "methane"}, {"water", "methane"}}) {
        const Mixture m = peng_robinson(names[0], names[1], 0.05);
        int split = 0, refused = 0;
        for (double x : {0.02, 0.4, 0.8})
            for (double T = 160; T < 650; T += 35)
                for (double p = 0.01; p < 100; p *= 2.5) {
                    corvane::FlashResult q;
                    try {
                        q = corvane::flash_pT(*m, p, T, mix(x));
                    } catch (EquilibriumFailure const&) {
                        ++refused;
                        continue;
                    }
                    EXPECT_EQ(q.phases.size() == 1, corvane::stability(*m, p, T, mix(x)).stable);
                    if (q.phases.size() == 1) continue;
                    ++split;
                    double rho = 0, whole = 0, both = 0;
                    for (int i = 0; i < 2; ++i) {
                        rho = 0;
                        whole += mix(x)[i] * m->my(p, T, mix(x), i, 2, rho);
                        for (unsigned k = 0; k < 2; ++k)
                            both += q.fraction[k] * q.phases[k].x[i] *
                                    m->my(q.phases[k].x * q.phases[k].rho, T, i);
                    }
                    EXPECT_LT(both, whole);
                }
        EXPECT_GT(split, 10);
        EXPECT_EQ(refused, 0);  // a binary has three phases on lines only
    }
}
}  // namespace
