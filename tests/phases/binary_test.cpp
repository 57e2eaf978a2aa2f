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

/// Stable two-phase interval around x at the running variable s (ln p or ln T); how far x is from
/// the nearest boundary.
bool inside(corvane::BinaryDiagram const& d, bool at_T, double s, double x, double& margin) {
    bool in = false;
    margin = 1;
    for (auto const& b : d.branches)
        for (std::size_t k = 1; k < b.points.size(); ++k) {
            auto const &a = b.points[k - 1], &c = b.points[k];
            const double sa = std::log(at_T ? a.p : a.T), sc = std::log(at_T ? c.p : c.T);
            const double beyond = std::max({0.0, std::min(sa, sc) - s, s - std::max(sa, sc)});
            const double q = std::clamp((s - sa) / (sc - sa + 1e-300), 0.0, 1.0);
            const double l = a.x + q * (c.x - a.x), r = a.y + q * (c.y - a.y);
            margin = std::min({margin, std::fabs(x - l) + beyond, std::fabs(x - r) + beyond});
            if (beyond == 0 && (x - l) * (x - r) < 0) in = true;
        }
    return in;
}

// What each diagram consists of, and that the field of states divides into one and two phases
// exactly at its curves: the stability of the whole, wherever it is not near a curve (chords).
TEST(CompleteDiagram, DividesTheField) {
    using enum DiagramEnd;
    const auto VL = PhasePair::vapour_liquid, LL = PhasePair::liquid_liquid,
               FF = PhasePair::fluid_fluid;
    struct Branch {
        PhasePair kind;
        DiagramEnd begin, end;
    };
    const struct {
        char const *first, *second;
        double kij;
        bool at_T;
        double value;
        std::vector<Branch> branches;
        std::size_t azeotropes;
    } cases[] = {
        {"methane", "propane", 0.01, true, 170, {{VL, pure, pure}}, 0},
        {"methane", "propane", 0.01, true, 190.5, {{VL, pure, pure}}, 0},  // 0.9997 Tc of methane
        {"methane", "propane", 0.01, false, 3, {{VL, pure, pure}}, 0},
        {"methane", "propane", 0.01, false, 8, {{FF, critical, critical}}, 0},
        {"methane", "propane", 0.01, true, 400, {}, 0},
        {"carbon_dioxide", "ethane", 0.13, true, 250, {{VL, pure, pure}}, 1},
        {"carbon_dioxide",
         "ethane",
         0.13,
         true,
         295,
         {{VL, pure, critical}, {VL, pure, critical}},
         0},
        {"water", "methane", 0, true, 300, {{VL, pure, limit}}, 0},
        {"carbon_dioxide",
         "water",
         0.19,
         true,
         290,
         {{VL, pure, three_phase}, {LL, three_phase, limit}, {VL, three_phase, pure}},
         0},
        {"carbon_dioxide",
         "water",
         0.19,
         false,
         5,
         {{VL, pure, three_phase}, {LL, three_phase, coldest}, {VL, three_phase, pure}},
         0},
        // a second liquid below 7.6 MPa, another one above 34 MPa
        {"carbon_dioxide",
         "decane",
         0.1141,
         true,
         300,
         {{VL, pure, three_phase},
          {LL, three_phase, critical},
          {VL, three_phase, pure},
          {LL, critical, limit}},
         0},
        {"nitrogen",
         "ethane",
         0.05,
         true,
         110,
         {{VL, pure, three_phase}, {LL, three_phase, critical}, {VL, three_phase, pure}},
         0},
        {"ethanol",
         "water",
         0.1,
         false,
         0.1,
         {{VL, pure, three_phase}, {LL, three_phase, coldest}, {VL, three_phase, pure}},
         0},
        // ln x of decane in cold mercury falls to -1000
        {"decane",
         "mercury",
         0,
         false,
         1,
         {{VL, pure, three_phase}, {LL, three_phase, coldest}, {VL, three_phase, pure}},
         0}};
    int splits = 0;
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.first << "+" << c.second << " " << c.value);
        const Mixture m = peng_robinson(c.first, c.second, c.kij);
        const corvane::BinaryDiagram d =
            c.at_T ? corvane::complete_pxy(*m, c.value) : corvane::complete_Txy(*m, c.value);
        EXPECT_TRUE(d.complete());
        ASSERT_EQ(d.branches.size(), c.branches.size());
        std::size_t azeotropes = 0;
        for (std::size_t k = 0; k < c.branches.size(); ++k) {
            corvane::Diagram const& b = d.branches[k];
            EXPECT_EQ(b.kind, c.branches[k].kind);
            EXPECT_EQ(b.begin, c.branches[k].begin);
            EXPECT_EQ(b.end, c.branches[k].end);
            EXPECT_EQ(b.unstable, 0);
            EXPECT_LE(b.dmu, 1e-9);
            EXPECT_LE(b.dp, 1e-9);
            azeotropes += b.azeotropes.size();
            EXPECT_EQ(b.end == limit, std::fabs(b.points.back().p - 1000) < 1e-9);
            const double T_min = 0.3 * std::min(m->mdl1[0]->Tcrit(), m->mdl1[1]->Tcrit());
            EXPECT_EQ(b.end == coldest, std::fabs(b.points.back().T / T_min - 1) < 1e-9);
            for (auto const& [why, q] :
                 {std::pair{b.begin, b.points.front()}, std::pair{b.end, b.points.back()}}) {
                if (why == pure) {
                    EXPECT_EQ(q.x, q.y);
                    Model1 const* component = m->mdl1[q.x == 1 ? 0 : 1];
                    double p = 0, liquid = 0, vapour = 0;
                    corvane::SaturationMarch().at_T(component, q.T, 0, p, liquid, vapour);
                    EXPECT_NEAR(p / q.p, 1, 1e-8);
                } else if (why == critical) {
                    corvane::CriticalPoint near;
                    near.T = q.T;
                    near.rho = q.rho_x;
                    corvane::CriticalOptions o;
                    o.start = &near;
                    const auto exact = corvane::critical_point(*m, mix(q.x), o);
                    EXPECT_NEAR(exact.T / q.T, 1, 1e-8);
                    EXPECT_NEAR(exact.p / q.p, 1, 1e-7);
                } else if (why == three_phase) {
                    ASSERT_EQ(d.three_phase.size(), 1u);
                    EXPECT_NEAR(d.three_phase[0].p / q.p, 1, 1e-9);
                    EXPECT_NEAR(d.three_phase[0].T / q.T, 1, 1e-12);
                }
            }
        }
        EXPECT_EQ(azeotropes, c.azeotropes);
        int tested = 0;
        for (int k = 0; k < 150;
             ++k) {  // a quasi-random sequence over x and the logarithm of p or T
            const double x = std::fmod(0.5 + 0.7548776662 * k, 1.0),
                         v = std::fmod(0.5 + 0.5698402910 * k, 1.0);
            const double p = c.at_T ? std::pow(10, -2 + 4.9 * v) : c.value,
                         T = c.at_T ? c.value : 187 * std::pow(3.0, v);
            double margin = 0;
            const bool two = inside(d, c.at_T, std::log(c.at_T ? p : T), x, margin);
            if (margin < 0.02) continue;
            ++tested;
            splits += two;
            EXPECT_EQ(two, !corvane::stability(*m, p, T, mix(x)).stable)
                << T << " K, " << p << " MPa, x " << x;
        }
        EXPECT_GT(tested, 75);
    }
    EXPECT_GT(splits, 250);
}

// Equal components: every curve has its mirror image, and the azeotrope is in the middle.
TEST(CompleteDiagram, OfTwinsIsSymmetric) {
    const VdwTwins twins(0.05);
    const corvane::BinaryDiagram d = corvane::complete_pxy(twins, 250);
    EXPECT_TRUE(d.complete());
    ASSERT_EQ(d.branches.size(), 1u);
    ASSERT_EQ(d.branches[0].azeotropes.size(), 1u);
    EXPECT_NEAR(d.branches[0].azeotropes[0].x, 0.5, 1e-6);
    EXPECT_NEAR(d.branches[0].points.front().p / d.branches[0].points.back().p, 1, 1e-8);
}

TEST(CompleteDiagram, SaysWhatIsMissing) {
    const Mixture m = peng_robinson("carbon_dioxide", "water", 0.19);
    corvane::DiagramOptions o;
    int calls = 0;
    o.progress = [&](int points) { return ++calls, points < 20; };
    EXPECT_FALSE(corvane::complete_pxy(*m, 290, o).complete());
    EXPECT_LT(calls, 30);
    o.progress = nullptr;
    o.points = 10;
    EXPECT_FALSE(corvane::complete_pxy(*m, 290, o).complete());
    EXPECT_EQ(th_code([&] { corvane::complete_pxy(*m, 0, o); }), 5);
    o.p_max = std::nan("");
    EXPECT_EQ(th_code([&] { corvane::complete_Txy(*m, 1, o); }), 5);
}
}  // namespace
