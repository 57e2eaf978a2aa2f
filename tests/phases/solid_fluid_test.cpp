// Solid–fluid lines: ideal solutions exactly, the published function, limits and end points.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::EquilibriumFailure;
using corvane::SolidFluidLine;
using End = corvane::SolidFluidEnd;
using Ends = std::vector<std::pair<End, End>>;

namespace {
Mixture freezing(char const* first, char const* second, double kij) {
    Mixture m = peng_robinson(first, second, kij);
    for (int i = 0; i < 2; ++i) m->mdl1[i]->solid.load();
    return m;
}
/// ln of the ideal solubility of a pure component, through the published functions; < 0.
double ideal(Model1 const& c, double p, double T) {
    int form = 0;
    double rho = 0.0;
    return c.solid.Ge(p, T, form, rho) - c.Ge(p, T, 2, rho);
}

// Two components with the same parameters are an ideal solution: x = exp(g_solid − g_liquid), and
// both freeze at x = 1/2.
TEST(SolidFluid, IdealSolution) {
    const Mixture m = freezing("hydrogen_sulfide", "hydrogen_sulfide", 0);
    const double p = 2;
    const auto lines = corvane::solid_fluid_isobar(*m, 0, p);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].end, End::eutectic);
    ASSERT_GT(lines[0].points.size(), 5u);
    for (auto const& q : lines[0].points) {
        EXPECT_TRUE(q.stable && q.certificate.holds());
        EXPECT_NEAR(std::log(q.x[0]), ideal(*m->mdl1[0], p, q.T), 1e-9) << q.T;
    }
    EXPECT_NEAR(lines[0].points.back().x[0], 0.5, 1e-9);
    const auto e = corvane::eutectic(*m, p);
    EXPECT_NEAR(ideal(*m->mdl1[0], p, e.T), -std::log(2.0), 1e-9);
    ASSERT_EQ(e.certificate.phases.size(), 3u);
    EXPECT_EQ(e.certificate.phases[2].x[1], 1);
}

TEST(SolidFluid, LinesAndTheirEnds) {
    const struct {
        char const *first, *second;
        double kij;
        int solid;
        bool at_T;
        double value;
        Ends ends;
    } cases[] = {
        {"methane",
         "carbon_dioxide",
         0.1,
         1,
         false,
         0.1,  // frost point, then freeze-out of a liquid
         {{End::pure, End::split}, {End::split, End::eutectic}}},
        {"methane",
         "carbon_dioxide",
         0.1,
         1,
         false,
         3,  // both crossings of the three-phase line
         {{End::solid_range, End::split}, {End::split, End::split}, {End::split, End::eutectic}}},
        {"methane", "carbon_dioxide", 0.1, 1, false, 20, {{End::solid_range, End::eutectic}}},
        {"methane", "carbon_dioxide", 0.1, 0, false, 3, {{End::pure, End::eutectic}}},
        {"methane",
         "carbon_dioxide",
         0.1,
         1,
         true,
         180,
         {{End::pure, End::split}, {End::split, End::pressure}}},
        {"carbon_dioxide",
         "naphthalene",
         0.095,
         1,
         true,
         338,
         {{End::pure, End::split}, {End::split, End::pressure}}},
        {"nitrogen", "methane", 0.03, 1, false, 0.5, {{End::pure, End::eutectic}}},
        {"hydrogen",
         "methane",
         0.1,
         1,
         false,
         5,
         {{End::pure, End::split}, {End::split, End::solid_range}}}};
    int compared = 0, measured = 0;
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.first << "/" << c.second << " " << c.value);
        const Mixture m = freezing(c.first, c.second, c.kij);
        const auto lines = c.at_T ? corvane::solid_fluid_isotherm(*m, c.solid, c.value)
                                  : corvane::solid_fluid_isobar(*m, c.solid, c.value);
        ASSERT_EQ(lines.size(), c.ends.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            SolidFluidLine const& l = lines[i];
            EXPECT_EQ(l.begin, c.ends[i].first) << i;
            EXPECT_EQ(l.end, c.ends[i].second) << i;
            for (auto const& q : l.points) {
                EXPECT_TRUE(q.stable && q.certificate.holds());
                EXPECT_EQ(c.at_T ? q.T : q.p, c.value);
                measured += q.certificate.dmu > 0;  // rounding: of the fluid to the solid
                Vector<double> x = vec({1.0 - c.solid, 0}), rho(2);
                int form = 0;
                try {
                    equil2s(m.get(), q.p, q.T, x, 2, 0, rho, form);
                } catch (ThException const&) {
                    continue;  // it searches from the dilute side, and a metastable root may come
                               // first
                }
                const double xs = c.solid == 0 ? x[1] : 1 - x[1];
                if (std::fabs(rho[1] / q.rho - 1) > 0.01) continue;
                EXPECT_NEAR(xs / q.x[c.solid], 1, 1e-8 + 1e-9 / q.x[c.solid]);  // stops at 1e-9
                EXPECT_NEAR(rho[0] / q.rho_solid, 1, 1e-9);
                ++compared;
            }
            auto const& q = l.points.back();
            if (l.end == End::split)
                expect_equilibrium(*m, q.T, q.rho * q.x, l.end_phase.rho * l.end_phase.x, q.p);
            if (l.end == End::eutectic) {
                int form = 0;
                double rho = 0;
                const int o = 1 - c.solid;
                EXPECT_NEAR(m->my(q.rho * q.x, q.T, o), m->mdl1[o]->solid.Ge(q.p, q.T, form, rho),
                            1e-9);
            }
        }
    }
    EXPECT_GT(compared, 350);
    EXPECT_GT(measured, 350);
    // The three-phase point of an isobar is that of the isotherm.
    const Mixture m = freezing("methane", "carbon_dioxide", 0.1);
    const auto at_p = corvane::solid_fluid_isobar(*m, 1, 3)[0].points.back();
    const auto at_T = corvane::solid_fluid_isotherm(*m, 1, at_p.T)[0].points.back();
    EXPECT_NEAR(at_T.p, 3, 1e-6);
}

// The first trace of a solute lowers the freezing point by x/(d(g_liquid − g_solid)/dT): van 't
// Hoff.
TEST(SolidFluid, FreezingPointDepression) {
    const Mixture m = freezing("nitrogen", "methane", 0.03);
    const double p = 0.5;
    auto const points = corvane::solid_fluid_isobar(*m, 1, p)[0].points;
    const double T = points[0].T, h = 1e-3;
    EXPECT_NEAR(ideal(*m->mdl1[1], p, T), 0, 1e-10);
    const double slope = (ideal(*m->mdl1[1], p, T + h) - ideal(*m->mdl1[1], p, T - h)) / (2 * h);
    EXPECT_NEAR((T - points[1].T) * slope / points[1].x[0], 1, 1e-3);
}

TEST(SolidFluid, SolubilityAndRefusals) {
    const Mixture m = freezing("methane", "carbon_dioxide", 0.1);
    const auto q = corvane::solubility(*m, 1, 3, 160);
    EXPECT_TRUE(q.certificate.holds());
    corvane::SolidFluidOptions o;
    o.points = 4;
    EXPECT_EQ(corvane::solid_fluid_isobar(*m, 1, 3, o).back().end, End::full);
    o = {};
    o.progress = [](int points) { return points < 3; };
    EXPECT_EQ(corvane::solid_fluid_isobar(*m, 1, 3, o).back().end, End::interrupted);
    for (double T : {216.5, 60.0}) try {  // a thin gas; methane freezes, too
            corvane::solubility(*m, 1, T > 100 ? 0.4 : 3, T);
            ADD_FAILURE() << T;
        } catch (EquilibriumFailure const& f) {
            EXPECT_EQ(f.kind(), EquilibriumFailure::Kind::no_solution);
        }
    // Traces: at infinite dilution ln x is the difference of the potentials.
    const Mixture traces = freezing("nitrogen", "naphthalene", 0);
    Vector<double> pure(2);
    pure.set(0.0);
    pure[0] = 1.0;
    for (double T : {100.0, 150.0, 200.0}) {
        const auto trace = corvane::solubility(*traces, 1, 0.1, T);
        int form = 0;
        double rho = 0.0, rho_solid = 0.0;
        const double myr = traces->myr(0.1, T, pure, 1, 2, rho);
        EXPECT_NEAR(std::log(trace.x[1]),
                    traces->mdl1[1]->solid.Ge(0.1, T, form, rho_solid) - myr - std::log(rho), 1e-9);
        EXPECT_TRUE(trace.certificate.holds());
    }
    EXPECT_EQ(th_code([&] { corvane::solubility(*m, 1, 3, 217); }), th_out_of_range);
    EXPECT_EQ(th_code([&] { corvane::solubility(*m, 2, 3, 160); }), th_out_of_range);
    const Mixture liquid = peng_robinson("methane", "propane", 0);
    EXPECT_EQ(th_code([&] { corvane::solid_fluid_isobar(*liquid, 0, 1); }), th_no_solid);
}
}  // namespace
