// Densities of the cubic equations: every root, to rounding, and the rules of vcalc.
#include "cubic_reference.h"
#include "model_text.h"

#include <plugins/common/alpha.h>
#include <corvane/plugin/cubic.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
using namespace corvane;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kEps = std::numeric_limits<double>::epsilon();

/// All stable roots at (P, q) against the 100-digit formula.
template <class Form>
void expect_exact(double P, double q) {
    SCOPED_TRACE(testing::Message() << Form::name << " P = " << P << " q = " << q);
    const auto exact = reference::reduced_roots(Form::u, Form::w, P, q);
    ASSERT_TRUE(exact.size() == 1 || exact.size() == 3);
    const StableRoots root = cubic_roots<Form>(P, q);
    const bool loop = q > q_c<Form>, three = exact.size() == 3;
    const bool dilute = three || (loop && exact[0] < Form::y_c);
    EXPECT_EQ(root.dilute > 0.0, dilute);
    EXPECT_EQ(root.dense > 0.0, three || !dilute);
    auto check = [&](double y, reference::Big const& ref) {
        if (!(y > 0.0)) return;
        // 2 ulp, times what rounding of the two terms of the isotherm moves the root by.
        const double terms = y / (1 - y) + q * y * y / (1 + y * (Form::u + Form::w * y));
        const double condition = terms / (y * cubic_isotherm<Form>(y, q).dP);
        EXPECT_LE(static_cast<double>(abs(y / ref - 1)), 2 * kEps * std::max(1.0, condition));
    };
    check(root.dilute, exact.front());
    check(root.dense, exact.back());
}

TEST(CubicRoots, AgreeWithTheClosedFormInManyDigits) {
    // Tc [K], b [cm³/mol], omega: helium, methane, propane, water, decane, eicosane.
    constexpr double kFluids[][3] = {{5.2, 14.8, -0.386},  {190.6, 26.8, 0.011},
                                     {369.8, 56.3, 0.152}, {647.1, 18.9, 0.344},
                                     {617.7, 190., 0.488}, {768., 406., 0.907}};
    for (auto const& [Tc, b, omega] : kFluids)
        for (double Tr : {0.25, 0.45, 0.7, 0.85, 0.95, 0.99, 0.9999, 1.0, 1.0001, 1.1, 2.0, 12.0})
            for (double p = 1e-12; p < 120; p *= 6.3) {
                const double par[cubic_parameters] = {0, Tc, b, omega};
                const double P = p * b / (R * Tr * Tc);
                expect_exact<PengRobinson>(P, attraction<PengRobinson>(par, Tr * Tc).q);
                expect_exact<SoaveRedlichKwong>(P, attraction<SoaveRedlichKwong>(par, Tr * Tc).q);
            }
}

// What the suite of all equations leaves out: tension and vacuum, the critical point, and start
// values on either side of the unstable root.
TEST(CubicRoots, EndAtTheSpinodalAndTheCriticalPoint) {
    const Plugin model = model_from("PR", "M: 44\nTs: 370\nvs: 56\nomega: 0.15\n");
    const double pc = static_cast<double>(0.077796073903888456L * R * 370 / 56);
    double a = 7, b = 8;
    for (auto [p, T] : {std::pair(-500., 200.), {0., 360.}, {-1., 500.}, {0., 500.}})
        EXPECT_EQ(model->vcalc(p, T, 1, a, b), 0) << p;
    EXPECT_TRUE(a == 7 && b == 8);
    for (auto [p, T] : {std::pair(-5., 200.), {0., 200.}, {pc, 370 * (1 - 1e-14)}, {pc, 370.}}) {
        ASSERT_EQ(model->vcalc(p, T, 1, a, b), 1) << p;
        EXPECT_NEAR(model->Z(a, T) * R * T * a, p, 60 * 4 * kEps * R * T * a);
    }
    EXPECT_NEAR(a * 56, PengRobinson::y_c, 1e-5);  // a threefold root: cube root of rounding
    // At 300 K the vapour pressure is 1.003 MPa; the unstable root lies between 0.003 and 0.006.
    for (auto [p, start, dense] : {std::tuple(1.2, 0.002, false),
                                   {1.2, 0.006, true},
                                   {1.2, -1., true},
                                   {1.2, kNaN, true},
                                   {0.6, kInf, false}}) {
        EXPECT_EQ(model->vcalc(p, 300, -1, a = start, b), 3);
        EXPECT_EQ(a > b, dense) << p << ' ' << start;
    }
}
}  // namespace
