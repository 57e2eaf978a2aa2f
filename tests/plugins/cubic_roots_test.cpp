// Densities of the cubic equations: every root, to rounding, and the rules of vcalc.
#include "cubic_reference.h"
#include "model_text.h"

#include <plugins/common/alpha.h>
#include <plugins/common/cubic.h>

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
    const ReducedRoots root = cubic_roots<Form>(P, q);
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

// Tc 370 K, b 56 cm³/mol, omega 0.15. At 300 K the saturation pressure is near 1 MPa; both roots
// exist from no pressure to about 1.9 MPa.
const char kPropane[] = "M: 44\nTs: 370\nvs: 56\nomega: 0.15\n";

TEST(CubicRoots, VcalcOrdersTheRootsByThePhaseCode) {
    for (double c : {0.0, 4.0}) {
        const Plugin model = model_from("PR", kPropane);
        model->param(8, c);
        double liquid = 0, vapour = 0;
        ASSERT_EQ(model->vcalc(1.2, 300, 1, liquid, vapour), 3);
        ASSERT_GT(liquid, 10 * vapour);
        for (double hint : {0.0, vapour, liquid, 1e-300, 1e300, -3.0, kNaN, kInf}) {
            double a = hint, b = kNaN;
            EXPECT_EQ(model->vcalc(1.2, 300, 1, a, b), 3);
            EXPECT_TRUE(a == liquid && b == vapour) << hint;
            a = hint;
            EXPECT_EQ(model->vcalc(1.2, 300, 3, a, b), 3);
            EXPECT_TRUE(a == vapour && b == liquid) << hint;
        }
        EXPECT_NEAR(model->xinit(1.2, 300, 1) / liquid, 1.0, 0.05);
        EXPECT_NEAR(model->xinit(1.2, 300, 3) / vapour, 1.0, 0.3);
        // Phase −1: the side of the unstable root (between 0.003 and 0.006) that the start value is
        // on, the stable phase (psat is 1.003 MPa) without one.
        const struct {
            double p, start;
            bool dense;
        } sides[] = {{1.2, 1e-9, false}, {1.2, 0.002, false}, {1.2, 0.006, true},
                     {1.2, 0.012, true}, {1.2, 1e9, true},    {1.2, kNaN, true},
                     {1.2, 0, true},     {1.2, -1, true},     {0.6, kInf, false},
                     {0.6, 0, false}};
        for (auto const& side : sides) {
            double a = side.start, b = 0;
            EXPECT_EQ(model->vcalc(side.p, 300, -1, a, b), 3);
            EXPECT_EQ(a > b, side.dense) << side.p << ' ' << side.start;
        }
    }
}

TEST(CubicRoots, VcalcWritesStableRootsOnlyAndNothingWithoutThem) {
    const Plugin model = model_from("PR", kPropane);
    const double pc = static_cast<double>(0.077796073903888456L * R * 370 / 56);
    // Gas and liquid, one of them, supercritical, around the critical point; liquids under tension
    // (down to the spinodal), vacuum, states that are none.
    const struct {
        double p, T;
        int n;
    } rows[] = {// clang-format off
        {0.01, 200, 3}, {1e-12, 80, 3}, {30, 300, 1}, {0.1, 369, 1}, {10, 600, 1}, {1000, 300, 1},
        {1e6, 300, 1}, {pc, 370, 1}, {pc, 370 * (1 - 1e-14), 1}, {pc, 370 * (1 + 1e-14), 1},
        {pc, 1e4, 1}, {-5, 200, 1}, {0, 200, 1}, {-500, 200, 0}, {0, 360, 0}, {-1, 500, 0},
        {0, 500, 0}, {1, 0, 0}, {1, -300, 0}, {kNaN, 300, 0}, {kInf, 300, 0}, {1, kNaN, 0},
        {1, kInf, 0}};  // clang-format on
    for (auto const& row : rows)
        for (int phase : {1, 3, -1}) {
            SCOPED_TRACE(testing::Message() << row.p << " MPa, " << row.T << " K, " << phase);
            double rho1 = 7.0, rho2 = 8.0;
            const int n = model->vcalc(row.p, row.T, phase, rho1, rho2);
            EXPECT_EQ(n, row.n);
            EXPECT_TRUE(n > 0 || rho1 == 7.0);
            EXPECT_TRUE(n == 3 || rho2 == 8.0);
            if (n > 0) {
                EXPECT_TRUE(rho1 > 0.0 && rho1 < 1 / 56.0);
                // A density to 1 ulp leaves rho·(∂p/∂rho)·1 ulp of the pressure open, which near
                // the pole is Z times the pressure.
                const double Z = std::abs(model->Z(rho1, row.T));
                const double ideal = R * row.T * rho1;
                EXPECT_NEAR(ideal * model->Z(rho1, row.T), row.p, 4 * kEps * ideal * (60 + Z * Z));
            }
        }
    double gas = 0, liquid = 0;
    model->vcalc(1e-12, 80, 3, gas, liquid);
    // Ideal but for B·p/(R·T) = 4e-12, B = b − a/(R·T) with m(0.15) = 0.5999058.
    const double s = 1 + 0.5999058 * (1 - std::sqrt(80 / 370.0));
    const double P = 1e-12 / (R * 80), B = 56 * (1 - q_c<PengRobinson> * s * s * 370 / 80);
    EXPECT_NEAR(gas / P, 1.0 - B * P, 4 * kEps);
    model->vcalc(pc, 370, 1, liquid, gas);
    EXPECT_NEAR(liquid * 56, PengRobinson::y_c, 1e-5);  // a threefold root: cube root of rounding
}
}  // namespace
