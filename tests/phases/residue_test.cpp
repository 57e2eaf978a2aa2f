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

TEST(ResidueCurves, RefuseWhatMakesNoSense) {
    Mixture m = mixture_of("PR", "vdW1", {"propane", "butane", "pentane"});
    EXPECT_EQ(th_code([&] { corvane::residue_map(*m, -1.0); }), 5);
    corvane::ResidueOptions wrong;
    wrong.step = 2.0;
    EXPECT_EQ(th_code([&] { corvane::residue_map(*m, 1.0, wrong); }), 5);
    EXPECT_THROW(corvane::residue_map(*m, 20.0), corvane::EquilibriumFailure);
    Mixture two = mixture_of("PR", "vdW1", {"propane", "butane"});
    EXPECT_EQ(th_code([&] { corvane::residue_map(*two, 1.0); }), 4);
}
}  // namespace
