// Ternary diagrams against flashes, binaries, critical points and symmetric mixtures.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

#include <cmath>
#include <random>

using corvane::PhaseRecord;
using corvane::TernaryDiagram;
using corvane::TernaryEnd;

namespace {
/// Mole fractions of a whole: signed parts of the corners a, b, c of a triangle.
std::array<double, 3> parts(Vector<double> const& z, PhaseRecord const& a, PhaseRecord const& b,
                            PhaseRecord const& c) {
    const auto area = [](auto const& p, auto const& q, auto const& r) {
        return (q[0] - p[0]) * (r[1] - p[1]) - (q[1] - p[1]) * (r[0] - p[0]);
    };
    const double whole = area(a.x, b.x, c.x);
    return {area(z, b.x, c.x) / whole, area(a.x, z, c.x) / whole, area(a.x, b.x, z) / whole};
}
bool inside(Vector<double> const& z, PhaseRecord const& a, PhaseRecord const& b,
            PhaseRecord const& c) {
    for (double part : parts(z, a, b, c))
        if (!(part >= -1e-9)) return false;
    return true;
}
/// How many phases the diagram has at z, its boundaries taken as chords.
int phases_at(TernaryDiagram const& d, Vector<double> const& z) {
    for (auto const& t : d.three_phase)
        if (inside(z, t.phases[0], t.phases[1], t.phases[2])) return 3;
    for (auto const& r : d.regions)
        for (std::size_t k = 1; k < r.tie_lines.size(); ++k) {
            auto const &[a, b] = r.tie_lines[k - 1].phases;
            auto const &[c, e] = r.tie_lines[k].phases;
            if (inside(z, a, b, e) || inside(z, a, c, e)) return 2;
        }
    return 1;
}
double off(Vector<double> const& a, Vector<double> const& b) {
    double most = 0.0;
    for (int i = 0; i < 3; ++i) most = std::max(most, std::fabs(a[i] - b[i]));
    return most;
}
Vector<double> between(PhaseRecord const& a, PhaseRecord const& b, double part) {
    Vector<double> z(3);
    for (int i = 0; i < 3; ++i) z[i] = (1 - part) * a.x[i] + part * b.x[i];
    return z;
}
Vector<double> partial(PhaseRecord const& q) {
    Vector<double> rho_i(3);
    for (int i = 0; i < 3; ++i) rho_i[i] = q.rho * q.x[i];
    return rho_i;
}
Mixture ternary(char const* eos, char const* theory, std::vector<std::string> const& names,
                std::array<double, 3> const& kij) {
    Mixture m = mixture_of(eos, theory, names);
    m->param(0, 0, 1, kij[0]);
    m->param(0, 0, 2, kij[1]);
    m->param(0, 1, 2, kij[2]);
    return m;
}

struct Case {
    char const *eos, *theory;
    std::vector<std::string> names;
    std::array<double, 3> kij;
    double T, p;
    std::size_t regions, triangles, plaits;
};
// One region across, with a plait point, beside another, three phases, two triangles.
const std::array<Case, 6> kCases{{// clang-format off
    {"PR", "vdW1", {"methane", "ethane", "propane"}, {0, 0.01, 0}, 230, 3, 1, 0, 0},
    {"PR", "vdW1", {"nitrogen", "methane", "ethane"}, {0.03, 0.05, 0}, 120, 3, 1, 0, 1},
    {"PR", "vdW1", {"methane", "carbon_dioxide", "decane"}, {0.1, 0.04, 0.11}, 240, 6, 2, 0, 1},
    {"PR", "vdW1", {"ethane", "propane", "butane"}, {0.3, 0.3, 0.3}, 300, 2, 3, 1, 0},
    {"PCSAFT", "LB", {"carbon_dioxide", "methanol", "water"}, {0, 0, 0}, 300, 7, 3, 1, 2},
    {"PR", "vdW1", {"ethanol", "water", "hexane"}, {0, 0.28, 0.48}, 332, 0.1, 5, 2, 0}}};  // clang-format on

TEST(Ternary, AgreesWithFlashesBinariesAndCriticalPoints) {
    std::mt19937 random(7);
    for (Case const& c : kCases) {
        SCOPED_TRACE(c.names[0] + " " + c.names[1] + " " + c.names[2]);
        const Mixture m = ternary(c.eos, c.theory, c.names, c.kij);
        const TernaryDiagram d = corvane::ternary_diagram(*m, c.T, c.p);
        EXPECT_TRUE(d.complete());
        EXPECT_EQ(d.regions.size(), c.regions);
        EXPECT_EQ(d.three_phase.size(), c.triangles);
        EXPECT_EQ(d.plait.size(), c.plaits);
        for (auto const& r : d.regions) {
            EXPECT_LE(r.dmu, 1e-9);
            EXPECT_LE(r.dp, 1e-9);
            EXPECT_GE(r.tpd, -1e-8);
            EXPECT_LE(r.x_error, 1e-6);
            // The whole half-way of a tie line splits into its phases, half and half.
            for (std::size_t k = 1; k + 1 < r.tie_lines.size(); k += 5) {
                auto const& [a, b] = r.tie_lines[k].phases;
                const auto q = corvane::flash_pT(*m, c.p, c.T, between(a, b, 0.5));
                ASSERT_EQ(q.phases.size(), 2u);
                const bool turned = off(q.phases[0].x, a.x) > off(q.phases[1].x, a.x);
                const double slack = 1e-9 + 10 * r.tie_lines[k].x_error;
                EXPECT_LE(off(q.phases[turned].x, a.x), slack);
                EXPECT_LE(off(q.phases[!turned].x, b.x), slack);
                EXPECT_NEAR(q.fraction[0], 0.5, 1e-5);
                for (int i = 0; i < 3; ++i)  // through the slots of the model
                    EXPECT_NEAR(m->my(partial(a), c.T, i), m->my(partial(b), c.T, i), 1e-9);
            }
            // On an edge it is the split of the binary that knows nothing of the third component.
            for (bool first : {true, false}) {
                if ((first ? r.begin : r.end) != TernaryEnd::edge) continue;
                auto const& tie = first ? r.tie_lines.front() : r.tie_lines.back();
                int absent = 0;
                while (tie.phases[0].x[absent] > 0.0) ++absent;
                const int i = absent == 0 ? 1 : 0, j = 3 - i - absent;
                Mixture binary = mixture_of(c.eos, c.theory, {c.names[static_cast<unsigned>(i)],
                                                              c.names[static_cast<unsigned>(j)]});
                binary->param(0, 0, 1, c.kij[static_cast<unsigned>(i + j - 1)]);
                const double lo = std::min(tie.phases[0].x[i], tie.phases[1].x[i]),
                             hi = std::max(tie.phases[0].x[i], tie.phases[1].x[i]);
                corvane::DiagramOptions how;
                how.T_min = c.T;
                const corvane::BinaryDiagram all = corvane::complete_Txy(*binary, c.p, how);
                double nearest = 1.0;  // of the tie lines that end at T_min
                for (auto const& branch : all.branches)
                    for (auto const& t : {branch.points.front(), branch.points.back()})
                        if (std::fabs(t.T - c.T) < 1e-9 * c.T)
                            nearest = std::min(nearest, std::fabs(std::min(t.x, t.y) - lo) +
                                                            std::fabs(std::max(t.x, t.y) - hi));
                EXPECT_LE(nearest, 1e-8) << in_words(r.begin) << ' ' << absent;
            }
        }
        for (auto const& t : d.three_phase) {
            // A flash of any whole inside has the corners, in the amounts of the lever rule.
            Vector<double> z(3);
            for (int i = 0; i < 3; ++i)
                z[i] = 0.2 * t.phases[0].x[i] + 0.5 * t.phases[1].x[i] + 0.3 * t.phases[2].x[i];
            const auto q = corvane::flash_pT(*m, c.p, c.T, z);
            ASSERT_EQ(q.phases.size(), 3u);
            const auto amounts = parts(z, t.phases[0], t.phases[1], t.phases[2]);
            for (std::size_t k = 0; k < 3; ++k) {
                EXPECT_LE(off(q.phases[k].x, t.phases[k].x), 1e-9);
                EXPECT_NEAR(q.fraction[k], amounts[k], 1e-6);
            }
        }
        for (auto const& q : d.plait) {
            const auto critical = corvane::critical_point(*m, q.x, {.start = &q});
            EXPECT_NEAR(critical.T / c.T, 1, 1e-7);
            EXPECT_NEAR((critical.p - c.p) / (q.rho * R * c.T), 0, 1e-5);
            EXPECT_TRUE(q.stable);
        }
        // Anywhere: as many phases as a flash finds, but for what is between chord and boundary.
        for (int k = 0; k < 60; ++k) {
            std::exponential_distribution<> share;
            Vector<double> z(3);
            for (int i = 0; i < 3; ++i) z[i] = share(random);
            const double sum = z[0] + z[1] + z[2];
            for (int i = 0; i < 3; ++i) z[i] /= sum;
            const auto q = corvane::flash_pT(*m, c.p, c.T, z);
            const int found = static_cast<int>(q.phases.size()), drawn = phases_at(d, z);
            if (found == 2 && drawn == 1)
                EXPECT_EQ(phases_at(d, between(q.phases[0], q.phases[1], 0.5)), 2);
            else if (found == 1 && drawn == 2) {
                double nearest = 1.0;
                for (auto const& r : d.regions)
                    for (auto const& tie : r.tie_lines)
                        for (auto const& phase : tie.phases)
                            nearest = std::min(nearest, off(phase.x, z));
                EXPECT_LE(nearest, 0.03);
            } else {
                EXPECT_EQ(found, drawn) << z[0] << ' ' << z[1];
            }
        }
    }
}

// Three components that are alike but for their k_ij: what is exchanged is a mirror image.
TEST(Ternary, IsAsSymmetricAsTheMixture) {
    const std::vector<std::string> butane(3, "butane");
    const Mixture three = ternary("PR", "vdW1", butane, {0.3, 0.3, 0.3});
    const TernaryDiagram d = corvane::ternary_diagram(*three, 300, 5);
    ASSERT_EQ(d.three_phase.size(), 1u);
    EXPECT_EQ(d.regions.size(), 3u);
    // In each phase one component has 1 − 2a. It has the same potential in the other two, where
    // its fraction is a: one equation, equal potentials of two components at (1 − 2a, a, a).
    double lo = 0.01, hi = 0.2;
    for (int it = 0; it < 60; ++it) {
        const double a = 0.5 * (lo + hi);
        Vector<double> rho_i = vec({1 - 2 * a, a, a});
        double rho = 0.0, other = 0.0;
        three->vcalc(5, 300, rho_i, 1, rho, other);
        for (int i = 0; i < 3; ++i) rho_i[i] *= rho;
        (three->my(rho_i, 300, 0) > three->my(rho_i, 300, 1) ? lo : hi) = a;
    }
    for (PhaseRecord const& phase : d.three_phase[0].phases)
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(phase.x[i], phase.x[i] > 0.5 ? 1 - 2 * lo : lo, 1e-9);
    // At its density this is the strict regular solution, of which Meijering (Philips Res. Rep. 5,
    // 1950, 333) has the three phases: ln[(1 - 2x)/x] = chi (1 - 3x); here RT chi = 2^-1/2 a kij/b
    // ln[(1 + (1 + 2^1/2) y)/(1 + (1 - 2^1/2) y)].
    Model1 const& one = *three->mdl1[0];
    const double RT = R * 300, RTc = R * one.Tcrit(), w = one.omega(), s2 = std::sqrt(2.0);
    const double root =
        1 + (0.37464 + w * (1.54226 - 0.26992 * w)) * (1 - std::sqrt(300 / one.Tcrit()));
    const double ac = 0.45723552892138219 * RTc * RTc / one.pcrit(),
                 b = 0.077796073903888456 * RTc / one.pcrit();
    for (PhaseRecord const& phase : d.three_phase[0].phases) {
        const double y = b * phase.rho, x = std::min({phase.x[0], phase.x[1], phase.x[2]});
        const double chi = 0.3 * ac * root * root / (s2 * b * RT) *
                           std::log((1 + (1 + s2) * y) / (1 + (1 - s2) * y));
        EXPECT_NEAR(std::log((1 - 2 * x) / x), chi * (1 - 3 * x), 1e-9);
    }

    // An island: no two components split, all three do, as two of them attract each other.
    const Mixture attracting = ternary("PR", "vdW1", butane, {0.12, 0.12, -0.3});
    const TernaryDiagram island = corvane::ternary_diagram(*attracting, 300, 5);
    ASSERT_EQ(island.regions.size(), 1u);
    ASSERT_EQ(island.plait.size(), 2u);
    EXPECT_EQ(island.regions[0].begin, TernaryEnd::plait);
    EXPECT_EQ(island.regions[0].end, TernaryEnd::plait);
    const auto &q = island.plait[0].x, &r = island.plait[1].x;
    EXPECT_NEAR(q[0], r[0], 1e-8);
    EXPECT_NEAR(q[1], r[2], 1e-8);

    // A ring below the pressure of the ternary azeotrope, between its vapour and the liquid.
    const Mixture boiling = ternary("PR", "vdW1", butane, {0.05, 0.05, 0.05});
    const TernaryDiagram ring = corvane::ternary_diagram(*boiling, 300, 0.3);
    ASSERT_EQ(ring.regions.size(), 1u);
    EXPECT_EQ(ring.regions[0].end, TernaryEnd::closed);
    EXPECT_EQ(ring.regions[0].kind, corvane::PhasePair::vapour_liquid);
    double turned = 0.0;  // the tie lines go round the middle once
    auto const& lines = ring.regions[0].tie_lines;
    const auto angle = [&](std::size_t k) {
        auto const& x = lines[k].phases[0].x;
        return std::atan2(x[1] - x[2], std::sqrt(3.0) * (x[0] - 1.0 / 3));
    };
    for (std::size_t k = 1; k < lines.size(); ++k)
        turned += std::remainder(angle(k) - angle(k - 1), 2 * M_PI);
    EXPECT_NEAR(std::fabs(turned), 2 * M_PI, 1e-9);
}

// What reaches an edge is found from the binary there, not by luck of the mesh: splits that lie between its points, and,
// with components that are alike, one for each edge.
TEST(Ternary, RegionsAtAnEdgeDoNotHangOnTheMesh) {
    const std::vector<std::string> butane(3, "butane");
    for (auto const& [names, kij, T, p, regions] :
         {std::tuple(std::vector<std::string>{"methane", "carbon_dioxide", "decane"}, std::array{0.1, 0.04, 0.11}, 240.0, 6.0, 2u),
          {butane, std::array{0.02, 0.02, 0.02}, 300.0, 0.27, 3u},
          {butane, std::array{0.05, 0.05, 0.05}, 300.0, 0.28, 3u}}) {
        const Mixture m = ternary("PR", "vdW1", names, kij);
        for (int mesh : {2, 3, 10}) {
            corvane::TernaryOptions how;
            how.mesh = mesh;
            const TernaryDiagram d = corvane::ternary_diagram(*m, T, p, how);
            EXPECT_TRUE(d.complete());
            EXPECT_EQ(d.regions.size(), regions) << names[1] << ' ' << mesh;
        }
    }
}

// A vapour at 8 K without one molecule of eicosane: flashes say so, but a triangle, whose variables are logarithms, has no
// such phase. What flashes find there is open, not one phase.
TEST(Ternary, WhatCannotBeSolvedIsOpen) {
    const Mixture m = mixture_of("PR", "vdW1", {"helium", "hydrogen", "eicosane"});
    corvane::TernaryOptions how;
    how.mesh = 4;
    const TernaryDiagram d = corvane::ternary_diagram(*m, 8, 0.01, how);
    EXPECT_FALSE(d.complete());
    for (auto const& z : {vec({0.25, 0.25, 0.5}), vec({0.25, 0.5, 0.25}), vec({0.5, 0.25, 0.25})}) {
        ASSERT_EQ(corvane::flash_pT(*m, 0.01, 8, z).phases.size(), 3u);
        bool open = false;
        for (Vector<double> const& known : d.open) open = open || off(known, z) < 1e-12;
        EXPECT_TRUE(open) << z[0] << ' ' << z[1];
    }
}

TEST(Ternary, RefusesAndIsInterrupted) {
    const Mixture m = ternary("PR", "vdW1", {"methane", "ethane", "propane"}, {0, 0, 0});
    const Mixture two = mixture_of("PR", "vdW1", {"methane", "ethane"});
    EXPECT_EQ(th_code([&] { corvane::ternary_diagram(*two, 230, 3); }), 4);
    EXPECT_EQ(th_code([&] { corvane::ternary_diagram(*m, -1, 3); }), 5);
    EXPECT_EQ(th_code([&] { corvane::ternary_diagram(*m, 230, std::nan("")); }), 5);
    corvane::TernaryOptions how;
    how.mesh = 1;
    EXPECT_EQ(th_code([&] { corvane::ternary_diagram(*m, 230, 3, how); }), 5);
    how = {};
    how.progress = [](int points) { return points < 6; };
    const TernaryDiagram d = corvane::ternary_diagram(*m, 230, 3, how);
    ASSERT_EQ(d.regions.size(), 1u);
    EXPECT_EQ(d.regions[0].end, TernaryEnd::interrupted);
    EXPECT_FALSE(d.complete());
}
}  // namespace
