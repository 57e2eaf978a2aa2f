// Isolines of property diagrams against the fundamental equation and the saturation solver.
#include "support/errors.h"
#include "support/mixtures.h"

#include <corvane/corvane.h>

#include <cmath>

using corvane::PropertyDiagram;
using corvane::PropertyDiagramOptions;

namespace {
/// dh = T·ds + v·dp along every line, through phase boundaries: by the trapezoidal rule, so to the
/// third power of a step, which is where `slack` (of R·T) comes from.
void expect_fundamental(PropertyDiagram const& d, double slack) {
    for (auto const& line : d.lines) {
        double off = 0.0, way = 0.0;
        for (std::size_t k = 1; k < line.points.size(); ++k) {
            auto const &a = line.points[k - 1], &b = line.points[k];
            const double heat = 0.5 * (a.T + b.T) * (b.s - a.s),
                         // v·p is smooth in ln p where v is not.
                work = a.p == b.p ? 0.0
                                  : 0.5 * (a.p / a.rho + b.p / b.rho) * std::log(b.p / a.p);
            off += b.h - a.h - heat - work;
            way += std::fabs(b.h - a.h);
            EXPECT_NEAR(a.u, a.h - a.p / a.rho, 1e-9 * (1 + std::fabs(a.h)));
        }
        EXPECT_GT(way, 0.0);
        EXPECT_NEAR(off / (R * line.points.front().T), 0, slack)
            << "line of " << static_cast<int>(line.what) << " = " << line.value;
    }
}

TEST(PropertyDiagram, LinesObeyTheFundamentalEquation) {
    PropertyDiagramOptions o;
    o.points = 400;
    o.T = {240, 300, 320};
    o.p = {0.5, 5, 10};
    o.s = {120};
    o.q = {0.3};
    o.rho = {2e-3, 0.015};
    o.T_min = 220;
    o.T_min = 220;
    for (auto const& [eos, name] : {std::pair{"MEOS", "carbon_dioxide"}, {"PR", "carbon_dioxide"}}) {
        Model m = load_set(eos, name);
        m->ideal.load();
        const PropertyDiagram d = corvane::property_diagram(*m, o);
        ASSERT_EQ(d.lines.size(), 10u);
        EXPECT_EQ(d.failures, 0);
        expect_fundamental(d, 2e-3);
        ASSERT_EQ(d.liquid.size(), d.vapour.size());
        for (std::size_t k = 1; k < d.liquid.size(); k += 40) {
            auto const &l = d.liquid[k], &v = d.vapour[k];
            const auto q = corvane::pure_saturation_T(*m, l.T);
            EXPECT_NEAR(l.rho / q.rhoL, 1, 1e-9);
            EXPECT_NEAR(v.rho / q.rhoV, 1, 1e-9);
            EXPECT_NEAR((v.h - l.h) / (l.T * (v.s - l.s)), 1, 1e-6);  // equal Gibbs energies
        }
        // An isotherm has its two-phase part, at one pressure, and both of its ends.
        int two = 0;
        for (auto const& q : d.lines[0].points) two += std::isfinite(q.q) ? 1 : 0;
        EXPECT_EQ(two, 11);
        for (auto const& q : d.lines[6].points) EXPECT_EQ(q.q, 0.3);
        // An isochore leaves the two phases where its density is that of the saturated vapour or liquid.
        for (std::size_t k : {8, 9}) {
            double last = 0.0;
            for (auto const& q : d.lines[k].points) {
                EXPECT_NEAR(q.rho, o.rho[k - 8], 1e-12);
                if (std::isfinite(q.q)) last = std::max(last, q.T);
            }
            const auto end = corvane::pure_saturation_T(*m, last);
            EXPECT_NEAR((k == 8 ? end.rhoV : end.rhoL) / o.rho[k - 8], 1, 2e-4);
        }
    }
}

TEST(PropertyDiagram, OfAMixtureToo) {
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane"});
    PropertyDiagramOptions o;
    o.points = 400;
    o.T = {250, 320};
    o.p = {2, 8};
    o.s = {150};
    o.rho = {4e-3};
    const PropertyDiagram d = corvane::property_diagram(*m, vec({0.7, 0.3}), o);
    ASSERT_EQ(d.lines.size(), 6u);
    EXPECT_EQ(d.failures, 0);
    expect_fundamental(d, 5e-3);
    EXPECT_GT(d.liquid.size(), 5u);
    // On an isobar the splits end where the bubble and the dew point are.
    double from = 1e300, to = 0.0;
    for (auto const& q : d.lines[2].points)
        if (std::isfinite(q.q)) from = std::min(from, q.T), to = std::max(to, q.T);
    EXPECT_NEAR(from, corvane::bubble_p(*m, 2, vec({0.7, 0.3})).T, 2e-3);
    EXPECT_NEAR(to, corvane::dew_p(*m, 2, vec({0.7, 0.3})).T, 2e-3);
    EXPECT_EQ(th_code([&] {
                  o.T_max = 100;
                  corvane::property_diagram(*m, vec({0.7, 0.3}), o);
              }),
              5);
}
}  // namespace
