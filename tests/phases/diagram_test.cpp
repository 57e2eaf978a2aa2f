// p-x-y and T-x-y diagrams against bubble points found one by one and the critical line.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::DiagramEnd;

namespace {
TEST(Diagram, FromPureToPureAndToTheCriticalPoint) {
    const struct {
        char const *first, *second;
        double kij, T;
        DiagramEnd end;
    } cases[] = {{"methane", "propane", 0.01, 170, DiagramEnd::pure},
                 {"methane", "propane", 0.01, 270, DiagramEnd::critical},
                 {"methane", "decane", 0.04, 420, DiagramEnd::critical},
                 {"carbon_dioxide", "ethane", 0.13, 250, DiagramEnd::pure}};  // azeotrope
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = peng_robinson(c.first, c.second, c.kij);
        const corvane::Diagram d = corvane::diagram_pxy(*m, c.T);
        EXPECT_EQ(d.end, c.end);
        EXPECT_EQ(d.unstable, 0);
        EXPECT_LE(d.dmu, 1e-9);
        EXPECT_LE(d.dp, 1e-9);
        ASSERT_GT(d.points.size(), 15u);
        for (std::size_t k = 1; k + 2 < d.points.size(); k += 4) {
            auto const& q = d.points[k];
            const auto again = corvane::bubble_T(*m, c.T, mix(q.x));
            // Off by the bounds of x and p, where d ln p/dx is below 10.
            EXPECT_NEAR(again.p / q.p, 1,
                        10 * q.x_error + q.value_error + again.certificate.value_error);
            EXPECT_LT(q.value_error + q.x_error, 1e-6);
            EXPECT_LT(std::fabs(d.points[k + 1].x - q.x), 1.3 * 0.05);
        }
        auto const& pure = d.points.front();
        const auto boils = corvane::pure_saturation_T(*m->mdl1[pure.x > 0.5 ? 0 : 1], c.T);
        EXPECT_NEAR(pure.p / boils.p, 1, pure.value_error + boils.value_error);
        EXPECT_LT(pure.value_error, 1e-9);
        if (c.end == DiagramEnd::critical) {
            Vector<double> x = mix(d.points.back().x);
            Matrix<double> line(1, 4);
            double s = 0;
            crit_slope_x(m.get(), x, s, line);
            EXPECT_NEAR(line[0][1] / c.T, 1, 1e-4);  // from ratios of about 0.1, fourth order
            EXPECT_NEAR(line[0][3] / d.points.back().p, 1, 1e-3);
        }
        const double p = d.points[5].p;  // the same tie line at constant p
        const corvane::Diagram t = corvane::diagram_Txy(*m, p);
        EXPECT_TRUE(t.end == DiagramEnd::pure || t.end == DiagramEnd::critical);
        EXPECT_LE(t.dmu, 1e-9);
    }
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    try {
        corvane::diagram_pxy(*m, 400);
        ADD_FAILURE() << "above both critical points";
    } catch (corvane::EquilibriumFailure const& f) {
        EXPECT_EQ(f.kind(), corvane::EquilibriumFailure::Kind::no_solution);
    }
}
}  // namespace
