// Residue curve maps: closed form, topology, the second law.
#include "support/errors.h"
#include "support/mixtures.h"

#include <corvane/corvane.h>
#include <corvane/phases/ternary/residue_path.h>

#include <cmath>
#include <map>

using corvane::Boiling;
using corvane::Fractions3;
using corvane::ResidueMap;
using corvane::SingularKind;

namespace {
TEST(ResidueCurves, ConstantVolatilitiesHaveTheClosedForm) {
    // y_i = α_i x_i/Σ in Rayleigh's equation: the amounts n_i = x_i·e^−ξ obey
    // n_i/n_i° = (n_r/n_r°)^(α_i/α_r).
    const Fractions3 alpha{4.0, 2.0, 1.0}, start{0.3, 0.4, 0.3};
    int count = 0;
    const auto boil = [&](Fractions3 const& x) -> std::optional<Boiling> {
        ++count;
        const double sum = alpha[0] * x[0] + alpha[1] * x[1] + alpha[2] * x[2];
        return Boiling{x, {alpha[0] * x[0] / sum, alpha[1] * x[1] / sum, alpha[2] * x[2] / sum}, 1.0 / sum};
    };
    for (double sign : {1.0, -1.0}) {
        const std::size_t r = sign > 0 ? 2 : 0;  // what the node is of: relatively accurate all the way
        const auto path = corvane::residue_path(start, sign, 0.05, 1e-8, 300, boil,
                                                [&](auto const& node) { return node.at.x[r] > 0.999; });
        ASSERT_GT(path.back().at.x[r], 0.999);
        for (auto const& node : path)
            for (std::size_t i : {0, 1, 2}) {
                const double left = std::exp(-node.xi), part = node.at.x[r] * left / start[r];
                // at most 50 steps of 1e-8
                EXPECT_NEAR(start[i] * std::pow(part, alpha[i] / alpha[r]) / left, node.at.x[i], 5e-7);
            }
    }
    EXPECT_LT(count, 1500);
}

TEST(ResidueCurves, MapsAreConsistentAndBoilHigherAlongTheWay) {
    struct {
        std::vector<std::string> names;
        std::array<double, 3> kij;  // 0-1, 0-2, 1-2
        double p;
        std::map<std::pair<int, SingularKind>, int> singular;  // by components
    } const cases[] = {
        // Nearly ideal: the lowest and the highest boiling component are nodes.
        {{"propane", "butane", "pentane"}, {}, 0.5,
         {{{1, SingularKind::unstable_node}, 1}, {{1, SingularKind::saddle}, 1}, {{1, SingularKind::stable_node}, 1}}},
        // A minimum azeotrope of carbon dioxide and ethane takes the place of both as a node.
        {{"carbon_dioxide", "ethane", "propane"}, {0.13, 0.12, 0.0}, 2.0,
         {{{1, SingularKind::saddle}, 2}, {{1, SingularKind::stable_node}, 1}, {{2, SingularKind::unstable_node}, 1}}}};
    for (auto const& c : cases) {
        Mixture m = mixture_of("PR", "vdW1", c.names);
        m->param(0, 0, 1, c.kij[0]);
        m->param(0, 0, 2, c.kij[1]);
        m->param(0, 1, 2, c.kij[2]);
        const ResidueMap map = corvane::residue_map(*m, c.p);
        SCOPED_TRACE(c.names[0]);
        EXPECT_TRUE(map.consistent());
        EXPECT_EQ(map.failures, 0);
        std::map<std::pair<int, SingularKind>, int> found;
        for (auto const& s : map.singular) {
            ++found[{s.components, s.kind}];
            if (s.components > 1) {  // liquid and vapour are the same
                const auto q = corvane::bubble_p(*m, c.p, s.x);
                for (int i = 0; i < 3; ++i) EXPECT_NEAR(q.incipient.x[i], s.x[i], 1e-9);
            }
        }
        EXPECT_EQ(found, c.singular);
        ASSERT_GE(map.curves.size(), 4u);
        for (auto const& curve : map.curves) {
            EXPECT_GE(curve.begin, 0);
            EXPECT_GE(curve.end, 0);
            double off = 0.0;
            for (std::size_t k = 1; k < curve.points.size(); ++k) {
                auto const &a = curve.points[k - 1], &b = curve.points[k];
                EXPECT_GE(b.T, a.T * (1 - 1e-12));
                EXPECT_GT(b.xi, a.xi);
                // What evaporates leaves: d(n·x) = y·dn by the trapezoidal rule, n = exp(−ξ).
                const double n = std::exp(a.xi - b.xi);
                for (int i = 0; i < 3; ++i)
                    off = std::max(off, std::fabs(n * b.x[i] - a.x[i] + (1 - n) * 0.5 * (a.y[i] + b.y[i])));
            }
            EXPECT_LT(off, 5e-3);
        }
    }
}

// Three components that are alike but for their k_ij. If these are equal, symmetry has azeotropes in the middles of the
// edges and of the triangle; if not, the azeotropes of exchanged components are the exchanged ones.
TEST(ResidueCurves, AzeotropesAreAsSymmetricAsTheMixture) {
    const auto map = [](double k01, double k02, double k12) {
        Mixture m = mixture_of("PR", "vdW1", std::vector<std::string>(3, "butane"));
        m->param(0, 0, 1, k01);
        m->param(0, 0, 2, k02);
        m->param(0, 1, 2, k12);
        corvane::ResidueOptions few;
        few.mesh = 3;
        few.tolerance = 1e-3;
        return corvane::residue_map(*m, 0.3, few);
    };
    const ResidueMap alike = map(0.05, 0.05, 0.05);
    EXPECT_TRUE(alike.consistent());
    ASSERT_EQ(alike.singular.size(), 7u);
    for (corvane::SingularPoint const& s : alike.singular) {
        EXPECT_EQ(s.kind, s.components == 1   ? SingularKind::stable_node
                          : s.components == 2 ? SingularKind::saddle
                                              : SingularKind::unstable_node);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(s.x[i], s.x[i] > 0.0 ? 1.0 / s.components : 0.0, 1e-7);
        EXPECT_NEAR(s.eigenvalues[0], s.components == 2 ? s.eigenvalues[0] : s.eigenvalues[1], 1e-4);
    }
    const ResidueMap given = map(0.05, 0.06, 0.045), first = map(0.05, 0.045, 0.06),
                    ends = map(0.045, 0.06, 0.05);
    for (auto const& [other, order] : {std::pair(&first, std::array{1, 0, 2}), {&ends, {2, 1, 0}}}) {
        ASSERT_EQ(given.singular.size(), 7u);
        ASSERT_EQ(other->singular.size(), 7u);
        for (auto const& a : given.singular) {
            double nearest = 1.0;
            for (auto const& b : other->singular) {
                double off = std::fabs(a.T / b.T - 1) + (a.kind != b.kind);
                for (int i = 0; i < 3; ++i) off += std::fabs(a.x[i] - b.x[order[static_cast<unsigned>(i)]]);
                nearest = std::min(nearest, off);
            }
            EXPECT_LT(nearest, 1e-7) << a.x[0] << ' ' << a.x[1];
        }
    }
}

TEST(ResidueCurves, RefuseWhatMakesNoSense) {
    Mixture m = mixture_of("PR", "vdW1", {"propane", "butane", "pentane"});
    EXPECT_EQ(th_code([&] { corvane::residue_map(*m, -1.0); }), 5);
    const auto refused = [&](auto change) {
        corvane::ResidueOptions wrong;
        change(wrong);
        EXPECT_EQ(th_code([&] { corvane::residue_map(*m, 1.0, wrong); }), 5);
    };
    for (double step : {9e-4, 0.51, std::nan("")}) refused([&](auto& o) { o.step = step; });
    for (double tolerance : {9e-11, 0.011}) refused([&](auto& o) { o.tolerance = tolerance; });
    for (int mesh : {2, 31}) refused([&](auto& o) { o.mesh = mesh; });
    refused([&](auto& o) { o.points = 1; });
    for (double p : {0.0, std::nan(""), HUGE_VAL})
        EXPECT_EQ(th_code([&] { corvane::residue_map(*m, p); }), 5);
    EXPECT_THROW(corvane::residue_map(*m, 20.0), corvane::EquilibriumFailure);
    Mixture two = mixture_of("PR", "vdW1", {"propane", "butane"});
    EXPECT_EQ(th_code([&] { corvane::residue_map(*two, 1.0); }), 4);
}
}  // namespace
