// Critical lines: the types of van Konynenburg & Scott (Phil. Trans. R. Soc. A 298 (1980) 495), end
// points recomputed through the published functions, an exact line.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

#include <array>

using corvane::CriticalLine;
using corvane::CriticalLineOptions;
using End = corvane::CriticalLineEnd;
using Ends = std::vector<std::pair<End, End>>;

namespace {
void expect_end_point(ModelN const& m, corvane::CriticalPoint const& q,
                      corvane::PhaseRecord const& other) {
    ASSERT_EQ(other.x.size(), 2);
    if (q.certificate.phases.size() < 2) return;  // beyond the last digits of a pure component
    expect_equilibrium(m, q.T, q.rho * q.x, other.rho * other.x, q.p);
    EXPECT_LE(q.certificate.dmu, 1e-9);
    EXPECT_LE(q.certificate.dp, 1e-9);
}

TEST(CriticalLine, Types) {
    const struct {
        char const *first, *second;
        double k;
        Ends ends;
    } cases[] = {
        {"methane", "ethane", 0, {{End::pure, End::pure}}},  // I
        {"ethane",
         "decane",
         0.0144,
         {{End::pure, End::pure}, {End::pressure, End::tension}}},  // II
        {"nitrogen", "methane", 0.03, {{End::pure, End::pure}}},    // I
        {"carbon_dioxide",
         "decane",
         0.09,
         {{End::pure, End::pure}, {End::pressure, End::end_point}}},  // II
        {"carbon_dioxide",
         "decane",
         0.1241,
         {{End::pure, End::end_point}, {End::pure, End::pressure}}},
        {"methane", "decane", 0.04, {{End::pure, End::end_point}, {End::pure, End::pressure}}},
        {"methane",
         "water",
         0.5,
         {{End::pure, End::end_point}, {End::pure, End::pressure}}},  // III
        {"carbon_dioxide",
         "decane",
         0.105,
         {{End::pure, End::end_point},
          {End::pure, End::end_point},
          {End::end_point, End::pressure}}},
        // IV, nearly tricritical: the phases of the end points are 0.04 apart in x
        {"carbon_dioxide",
         "decane",
         0.1,
         {{End::pure, End::end_point},
          {End::end_point, End::pure},
          {End::pressure, End::end_point}}}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.first << "/" << c.second << " " << c.k);
        const Mixture m = peng_robinson(c.first, c.second, c.k);
        const auto lines = corvane::critical_lines(*m);
        ASSERT_EQ(lines.size(), c.ends.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            CriticalLine const& l = lines[i];
            EXPECT_EQ(l.begin, c.ends[i].first) << i;
            EXPECT_EQ(l.end, c.ends[i].second) << i;
            for (std::size_t k = 0; k < l.points.size(); ++k) {
                auto const& q = l.points[k];
                EXPECT_TRUE(q.stable && q.certificate.holds());
                EXPECT_LE(q.certificate.conditions, 1e-9);
                EXPECT_GT(q.p, 0);
                if (k % 9 != 4 || q.x[0] < 1e-3 || q.x[1] < 1e-3) continue;
                Vector<double> x = q.x;  // by nested searches
                Matrix<double> row(1, 4);
                row[0][1] = 1.001 * q.T;
                row[0][2] = q.rho;
                double s = 0;
                try {
                    crit_slope_x(m.get(), x, s, row);
                } catch (ThException const&) {
                    continue;  // next to an extremum of x it finds no bracket
                }
                // truncation of its stencil, 4e-6 in rho next to the light component
                EXPECT_NEAR(row[0][1] / q.T, 1, 5e-6);
                EXPECT_NEAR(row[0][2] / q.rho, 1, 7e-6);
            }
            for (End end : {l.begin, l.end}) {
                auto const& q = end == l.begin ? l.points.front() : l.points.back();
                if (end == End::pure) {
                    const int pure = q.x[0] == 1 ? 0 : 1;
                    EXPECT_EQ(q.x[pure], 1);
                    EXPECT_NEAR(q.T / m->mdl1[pure]->Tcrit(), 1, 1e-9);
                } else if (end == End::pressure) {
                    EXPECT_NEAR(q.p / 1000, 1, 1e-6);
                } else if (end == End::tension) {
                    EXPECT_LT(q.p, 0.01);
                } else {
                    expect_end_point(*m, q, end == l.begin ? l.begin_phase : l.end_phase);
                }
            }
        }
    }
}

TEST(CriticalLine, OrderOfComponentsAndStep) {
    CriticalLineOptions fine;
    fine.step = 0.02;
    const auto lines = corvane::critical_lines(*peng_robinson("carbon_dioxide", "decane", 0.105));
    auto other = corvane::critical_lines(*peng_robinson("decane", "carbon_dioxide", 0.105), fine);
    ASSERT_EQ(other.size(), lines.size());
    std::swap(other[0], other[2]);  // the curve from decane first, in two stable parts
    std::swap(other[1], other[2]);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto const &a = lines[i].points, &b = other[i].points;
        EXPECT_GT(b.size(), 3 * a.size() / 2);
        EXPECT_NEAR(b.front().T / a.front().T, 1, 1e-8);
        EXPECT_NEAR(b.back().T / a.back().T, 1, 1e-8);
        EXPECT_NEAR(b.back().x[1], a.back().x[0], 1e-8);
        for (std::size_t k = 1; k < b.size(); ++k)
            EXPECT_LT(std::fabs(b[k].x[0] - b[k - 1].x[0]), 0.0201);
    }
}

// Three-phase lines, solved without critical conditions, run into the end points: the pressure, the
// other phase and the mean of the two phases that become one are smooth in T.
TEST(CriticalLine, ThreePhaseLinesEndThere) {
    const Mixture m = peng_robinson("carbon_dioxide", "decane", 0.105);
    int found = 0;
    for (CriticalLine const& l : corvane::critical_lines(*m))
        for (bool last : {false, true}) {
            corvane::PhaseRecord const& other = last ? l.end_phase : l.begin_phase;
            if (other.x.size() == 0) continue;
            auto const& q = last ? l.points.back() : l.points.front();
            SCOPED_TRACE(q.T);
            const double side = corvane::complete_pxy(*m, q.T + 1).three_phase.empty() ? -1 : 1;
            std::array<double, 3>
                end{};  // p, other x, mean x: the parabola through three temperatures
            for (auto const& [far, weight] : {std::pair{1.0, 6}, {1.5, -8}, {2.0, 3}}) {
                const auto t = corvane::complete_pxy(*m, q.T + side * far).three_phase;
                ASSERT_EQ(t.size(), 1u);
                double sum = 0, x = -1;
                for (auto const& f : t[0].phases) {
                    sum += f.x[0];
                    if (std::fabs(f.x[0] - other.x[0]) < std::fabs(x - other.x[0])) x = f.x[0];
                }
                const double state[] = {t[0].p, x, 0.5 * (sum - x)};
                for (unsigned i = 0; i < 3; ++i) end[i] += weight * state[i];
            }
            EXPECT_NEAR(end[0] / q.p, 1, 1e-4);
            EXPECT_NEAR(end[1], other.x[0], 5e-4);
            EXPECT_NEAR(end[2], q.x[0], 1e-3);
            ++found;
        }
    EXPECT_EQ(found, 3);
}

// Equal van der Waals fluids part at x = 1/2 where 4 = (4·k·a/RT)·rho, since Ar has the term
// −(a/RT)·rho·(1 − 2·k·x·(1 − x)). The model supplies no derivatives.
TEST(CriticalLine, TwoLiquidsExactly) {
    const double k = 0.25, a = 27.0 / 8.0 * 300 * 40;  // a/R
    const VdwTwins m(k);
    CriticalLineOptions o;
    o.p_max = 300;
    const auto lines = corvane::critical_lines(m, o);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].end, End::pure);
    CriticalLine const& l = lines[1];
    EXPECT_EQ(l.begin == End::end_point, l.end == End::pressure);
    EXPECT_EQ(l.begin == End::pressure, l.end == End::end_point);
    for (auto const& q : l.points) {
        EXPECT_NEAR(q.x[0], 0.5, 1e-5);
        EXPECT_NEAR(q.T / (k * a * q.rho), 1, 1e-5);
    }
}

TEST(CriticalLine, LimitsAndRefusals) {
    const Mixture m = peng_robinson("carbon_dioxide", "decane", 0.1241);
    CriticalLineOptions o;
    o.detached = false;
    o.p_max = 15;
    o.unstable = true;
    auto lines = corvane::critical_lines(*m, o);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_FALSE(lines[1].stable);
    EXPECT_EQ(lines[1].begin, End::end_point);
    EXPECT_EQ(lines[1].end, End::tension);
    EXPECT_NEAR(lines[1].points.back().p, 1e-3, 1e-8);
    EXPECT_NEAR(lines[2].points.back().p, 15, 1e-5);
    o.unstable = false;
    o.T_min = 550;  // that of carbon dioxide is colder
    lines = corvane::critical_lines(*m, o);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].begin, End::pure);
    EXPECT_EQ(lines[0].end, End::cold);
    EXPECT_NEAR(lines[0].points.back().T, 550, 1e-3);
    o = {};
    o.points = 7;
    lines = corvane::critical_lines(*m, o);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].end, End::full);
    EXPECT_EQ(lines[0].points.size(), 7u);
    o = {};
    o.progress = [](int points) { return points < 5; };
    lines = corvane::critical_lines(*m, o);
    EXPECT_EQ(lines[0].end, End::interrupted);
    EXPECT_EQ(th_code([&] { corvane::critical_lines(*mixture_of("PR", "vdW1", {"methane"})); }),
              th_no_option);
    o.p_max = -1;
    EXPECT_EQ(th_code([&] { corvane::critical_lines(*m, o); }), th_out_of_range);
}
}  // namespace
