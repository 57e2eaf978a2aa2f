// Every kind of term against its published formula in 50 decimal digits.
#include "central_difference.h"
#include "model_text.h"

#include <corvane/core/lanes.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {
using reference::Big;
constexpr double kEps = std::numeric_limits<double>::epsilon();

// Ts = 300 K, vs = 100 cm³/mol, so that τ = 300/T and δ = 100·rho.
const std::string kHead = "M: 40\nTs: 300\nvs: 100\nR_eos: 8.3\nomega: 0\nblocks: ";

struct Case {
    char const* name;
    std::string blocks;
    std::function<Big(Big const& delta, Big const& tau)> formula;
};

Big association(Big const& d, Big const& t) {
    const Big eta = Big("0.0444215309") * d;
    const Big g = (2 - eta) / (2 * pow(1 - eta, 3));
    const Big Delta = g * (exp(Big("12.2735737") * t) - 1) * Big("1.09117041e-05");
    const Big X = 2 / (1 + sqrt(1 + 4 * Delta * d));
    return Big("1.5") * Big("1.01871348") * (log(X) - X / 2 + Big("0.5"));
}
Big non_analytic(Big const& d, Big const& t) {
    const Big s = (d - 1) * (d - 1);
    const Big theta = (1 - t) + Big("0.32") * pow(s, 1 / (2 * Big("0.3")));
    const Big Delta = theta * theta + Big("0.2") * pow(s, Big("3.5"));
    const Big psi = exp(-28 * s - 700 * (t - 1) * (t - 1));
    return Big("-0.1487") * pow(Delta, Big("0.85")) * d * psi;
}

// Numbers of the size that publications have; formulas as in README.md of the plug-in.
std::vector<Case> cases() {
    using B = Big const&;
    const auto sq = [](Big const& x) -> Big { return x * x; };
    return {
        {"power", "1\npower: 3 n d t l\n0.5 1 -0.5 0\n-1.25 3 0.875 2\n0.01 4 11 6\n",
         [](B d, B t) -> Big {
             return 0.5 * d / sqrt(t) - 1.25 * pow(d, 3) * pow(t, 0.875) * exp(-d * d) +
                    Big("0.01") * pow(d, 4) * pow(t, 11) * exp(-pow(d, 6));
         }},
        {"power without density", "1\npower: 2 n d t l\n-1.5 0 3 0\n1.5 0 3 2\n",
         [](B d, B t) -> Big { return 1.5 * pow(t, 3) * (exp(-d * d) - 1); }},
        {"exponential", "1\nexponential: 2 n d t g l\n0.75 2 3 1.25 2\n-0.5 0 4 1.25 2\n",
         [](B d, B t) -> Big {
             const Big e = exp(-1.25 * d * d);
             return 0.75 * d * d * pow(t, 3) * e - 0.5 * pow(t, 4) * (e - 1);
         }},
        {"gaussian",
         "1\ngaussian: 2 n d t eta epsilon beta gamma\n-3.5 3 1.5 20 1 150 1.25\n"
         "2 1 0.5 0.75 0.5 1.5 0.875\n",
         [sq](B d, B t) -> Big {
             return -3.5 * pow(d, 3) * pow(t, 1.5) * exp(-20 * sq(d - 1) - 150 * sq(t - 1.25)) +
                    2 * d * sqrt(t) * exp(-0.75 * sq(d - 0.5) - 1.5 * sq(t - 0.875));
         }},
        {"gaussian without density",
         "1\ngaussian: 1 n d t eta epsilon beta gamma\n2 0 1 2 1 3 1.25\n",
         [sq](B d, B t) -> Big {
             return 2 * t * exp(-3 * sq(t - 1.25)) * (exp(-2 * sq(d - 1)) - exp(Big(-2)));
         }},
        {"gao_b",
         "1\ngao_b: 1 n d t eta epsilon beta gamma b\n-1.5 1 4.25 -2.75 0.4375 0.375 1.125 1.25\n",
         [sq](B d, B t) -> Big {
             return -1.5 * d * pow(t, 4.25) *
                    exp(-2.75 * sq(d - 0.4375) + 1 / (1.25 + 0.375 * sq(t - 1.125)));
         }},
        {"double_exponential",
         "1\ndouble_exponential: 2 n d t gd ld gt lt\n0.5 1 0 4 2 -3.5 1\n0.25 3 1 8 4 1.5 2.5\n",
         [](B d, B t) -> Big {
             return 0.5 * d * exp(-4 * d * d + 3.5 * t) +
                    0.25 * pow(d, 3) * t * exp(-8 * pow(d, 4) - 1.5 * pow(t, 2.5));
         }},
        {"lemmon_2005",
         "1\nlemmon_2005: 3 n d t l m\n0.5 1 0.75 0 0\n-0.5 2 1 1 0\n1.25 2 4.5 2 1.75\n",
         [](B d, B t) -> Big {
             return 0.5 * d * pow(t, 0.75) - 0.5 * d * d * t * exp(-d) +
                    1.25 * d * d * pow(t, 4.5) * exp(-d * d - pow(t, 1.75));
         }},
        {"non_analytic",
         "1\nnon_analytic: 1 n a b beta A B C D\n-0.1487 3.5 0.85 0.3 0.32 0.2 28 700\n",
         non_analytic},
        {"association",
         "1\nassociation: 1 a m epsilonbar kappabar vbarn\n"
         "1.5 1.01871348 12.2735737 1.09117041e-05 0.0444215309\n",
         association},
    };
}

TEST(MeosTerms, ValuesAndDerivativesAreThoseOfTheFormula) {
    for (Case const& c : cases()) {
        const Plugin m = model_from("MEOS", kHead + c.blocks);
        // The last two lie inside the narrow bells and the neighbourhood of the critical point.
        const double states[][2] = {{200, 0.004},  {270, 1e-3},   {450, 0.013},
                                    {330, 0.0225}, {700, 0.0195}, {300, 1e-12},
                                    {300, -3e-4},  {238, 0.0103}, {297, 0.0098}};
        for (auto const& [T, rho] : states) {
            SCOPED_TRACE(testing::Message() << c.name << " T = " << T << " rho = " << rho);
            const Big d = Big(rho) * 100, t = Big(300) / T;
            Big a[4][4];
            for (int i = 0; i <= 3; ++i)
                for (int j = 0; i + j <= (j ? 2 : 3); ++j)
                    a[i][j] = reference::scaled_derivative(c.formula, d, t, i, j);
            // Rounding of δ and τ enters through the next derivative; steep functions have more of
            // it.
            const double steep = std::string(c.name) == "non_analytic" ? 2e3 : 60;
            const auto expect = [&](double x, Big const& exact, Big const& size) {
                EXPECT_NEAR(x, static_cast<double>(exact),
                            steep * kEps * static_cast<double>(abs(exact) + size) + 1e-30);
            };
            double x[4], y[4], z[4];
            ASSERT_EQ(m->derivatives()->deriv(rho, T, 3, 0, x), 1);
            ASSERT_EQ(m->derivatives()->deriv(rho, T, 1, 1, y), 1);
            ASSERT_EQ(m->derivatives()->deriv(rho, T, 0, 2, z), 1);
            const Big slopes = abs(a[1][0]) + abs(a[0][1]);
            expect(m->Ar(rho, T), a[0][0], slopes);
            expect(m->Z(rho, T) - 1, a[1][0], 1 + abs(a[2][0]) + slopes);
            expect(x[0], a[0][0], slopes);
            expect(x[1], a[1][0], abs(a[0][0]));
            expect(x[2], a[2][0], abs(a[1][0]) + abs(a[0][0]));
            expect(x[3], a[3][0], 10 * abs(a[2][0]) + 10 * abs(a[1][0]) + abs(a[0][0]));
            expect(y[1], -a[0][1], abs(a[0][0]));
            expect(y[2], a[1][0], abs(a[0][0]));
            expect(y[3], -a[1][1], abs(a[0][1]) + abs(a[1][0]) + abs(a[0][0]));
            expect(z[2], a[0][2] + 2 * a[0][1], 10 * abs(a[0][1]) + abs(a[0][0]));
        }
        EXPECT_EQ(m->Ar(0, 300), 0) << c.name;
        EXPECT_EQ(m->Z(0, 300), 1) << c.name;
        EXPECT_NO_THROW(m->Ar(1e3, 300));
    }
}

TEST(MeosTerms, LimitsAtTheCriticalPointOfANonAnalyticTerm) {
    const Plugin m = model_from("MEOS", kHead + cases()[8].blocks);
    double d[4];
    ASSERT_EQ(m->derivatives()->deriv(0.01, 300, 3, 0, d), 1);
    for (double x : d) EXPECT_EQ(x, 0);
    ASSERT_EQ(m->derivatives()->deriv(0.01, 300, 1, 1, d), 1);
    for (double x : d) EXPECT_EQ(x, 0);
    ASSERT_EQ(m->derivatives()->deriv(0.01, 300, 0, 2, d), 1);
    EXPECT_EQ(d[2], -INFINITY);  // ~ |1 − τ|^(2b−2), so the heat capacity is infinite
}

TEST(MeosTerms, ExponentialIsGoodToOneUnitAndTheSameAtEveryWidth) {
    using namespace corvane::lanes;
    for (int i = -70000; i < 70000; i += 4) {
        double narrow[4], wide[4];
        for (int k = 0; k < 4; ++k) narrow[k] = wide[k] = (i + k) * 0.0101 + 1e-5 * k;
        double x[4];
        std::copy_n(narrow, 4, x);
        exp_narrow(narrow, 4);
        exp_in_place(wide, 4);
        for (int k = 0; k < 4; ++k) {
            ASSERT_EQ(narrow[k], wide[k]);
            const long double exact = std::exp(static_cast<long double>(x[k]));
            ASSERT_NEAR(static_cast<double>(narrow[k] / exact), 1.0, 1.01 * kEps) << x[k];
        }
    }
    double special[8] = {0, -0.0, -709, 710, -INFINITY, INFINITY, NAN, 1e300};
    exp_in_place(special, 8);
    const double expected[7] = {1, 1, 0, INFINITY, 0, INFINITY, NAN};
    for (int k = 0; k < 6; ++k) EXPECT_EQ(special[k], expected[k]);
    EXPECT_TRUE(std::isnan(special[6]));
}

}  // namespace
