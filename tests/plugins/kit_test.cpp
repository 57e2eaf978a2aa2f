// The kit for authors: roots of isotherms that are no cubics, and labelled sections.
#include "model_text.h"

#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {
using namespace corvane;

// An isotherm with two loops, as multiparameter equations have: its slope is a product of the
// distances from four chosen densities, so that the spinodals are known exactly.
struct TwoLoops {
    mutable int calls = 0;
    static constexpr double at[4] = {0.1, 0.3, 0.5, 0.7};
    IsothermPoint operator()(double x) const {
        ++calls;
        // ∏(x − at)/∏at integrated from 0: coefficients of the product, lowest power first.
        std::vector<double> c{1.0};
        for (double a : at) {
            std::vector<double> next(c.size() + 1, 0.0);
            for (std::size_t i = 0; i < c.size(); ++i) {
                next[i] += c[i];
                next[i + 1] -= c[i] / a;
            }
            c = next;
        }
        double P = 0.0, dP = 0.0;
        for (std::size_t i = c.size(); i-- > 0;) {
            P = P * x + c[i] / (static_cast<double>(i) + 1);
            dP = dP * x + c[i];
        }
        return {P * x, dP};
    }
};

TEST(PluginKit, FirstAndLastBranchCountInnerLoopsDoNot) {
    const TwoLoops isotherm;
    EXPECT_NEAR(spinodal(isotherm, 0.0, 0.6, 12), 0.1, 1e-12);
    EXPECT_NEAR(spinodal(isotherm, 1.0, 0.2, 12), 0.7, 1e-12);
    EXPECT_NEAR(spinodal_around(isotherm, 0.2, 0.0, 1e-3), 0.1, 1e-12);
    EXPECT_EQ(spinodal_around(isotherm, 0.4, 0.0, 1e-3), 0.0);  // 0.4 is on a rising branch
    EXPECT_EQ(spinodal(isotherm, 0.0, 0.05, 5), 0.0);
    const double top = isotherm(0.1).P, bottom = isotherm(0.7).P;
    const Branches branches{0.2, 0.6, 1.2, true};
    for (double part : {1e-9, 0.01, 0.5, 0.9, 0.999999}) {
        const double P = bottom + part * (isotherm(1.2).P - bottom);
        isotherm.calls = 0;
        double dense = 0, other = 0;
        auto g = [](double) { return 0.0; };
        const int n = density_roots(isotherm, P, branches, 1, g, dense, other);
        EXPECT_EQ(n, P > 0 && P < top ? 3 : 1);
        EXPECT_GT(dense, 0.7);
        EXPECT_NEAR(isotherm(dense).P, P, 1e-14);
        EXPECT_LE(isotherm.calls, 45);  // both branches; 6 to 10 each away from the spinodals
        EXPECT_LT(other, 0.1);
    }
}

// Slope 1 − x·(…): a loop that is narrow (half width w around 0.4), wide or absent.
TEST(PluginKit, FallingPartIsFoundFromABadGuess) {
    for (double w : {0.2, 0.01, 1e-3}) {
        auto f = [w](double x) { return IsothermPoint{0.0, (x - 0.4) * (x - 0.4) - w * w}; };
        for (double guess : {0.4, 0.05, 0.9, 0.0, 5.0}) {
            const double x = falling_density(f, guess, 1.0);
            EXPECT_LE(std::abs(x - 0.4), w) << guess;
        }
    }
    int calls = 0;
    auto rising = [&](double x) { return ++calls, IsothermPoint{0.0, 0.1 + x * x}; };
    EXPECT_EQ(falling_density(rising, 0.3, 1.0), 0.0);
    EXPECT_LE(calls, 60);
}

TEST(PluginKit, HopelessIsothermsEndWithoutARoot) {
    const Branches branches{0.2, 0.6, 1.0, true}, rising{0.0, 0.0, 1.0, false};
    auto g = [](double) { return 0.0; };
    auto nan = [](double) { return IsothermPoint{NAN, NAN}; };
    auto falling = [](double x) { return IsothermPoint{-x, -1.0}; };
    auto flat = [](double) { return IsothermPoint{0.1, 0.0}; };
    double a = 7, b = 8;
    for (Branches const& at : {branches, rising}) {
        EXPECT_EQ(density_roots(nan, 0.5, at, 1, g, a, b), 0);
        EXPECT_EQ(density_roots(falling, 0.5, at, 1, g, a, b), 0);
        EXPECT_EQ(density_roots(flat, 0.5, at, 1, g, a, b), 0);
    }
    EXPECT_EQ(a, 7);
    EXPECT_EQ(b, 8);
    Vector<double> T(3), dilute(3), dense(3);
    auto any = [&](double rho, double) { return nan(rho); };
    fill_density_tables(any, {300, 0.01, 0.04, 100, 10}, T, dilute, dense);
    EXPECT_EQ(T.size(), 12);
    EXPECT_GT(dilute[5], dense[5]);  // no loop known: nothing is ruled out
    fill_density_tables(any, {0, 0.01, 0.04, 100, 10}, T, dilute, dense);
    EXPECT_EQ(T.size() + dilute.size() + dense.size(), 0);
}

TEST(PluginKit, SectionsAreReadByLabel) {
    const File f = text_file("n:\t3\na:\t1 2.5 -3e2\nnote: free 1 2\nrest");
    {
        SectionReader section(f.get());
        EXPECT_EQ(section.number("missing", 4.5), 4.5);
        EXPECT_EQ(section.count("n", 0, 10), 3);
        double a[3];
        EXPECT_EQ(th_code([&] { section.numbers("b", a, 3); }), th_cannot_open);
        section.numbers("a", a, 3);
        EXPECT_EQ(a[2], -300.0);
        EXPECT_FALSE(section.at("not"));
    }
    char next[32] = {};
    ASSERT_EQ(std::fscanf(f.get(), "%31s", next), 1);
    EXPECT_STREQ(next, "note:");  // left for the next reader
    for (char const* text :
         {"n: -1\n", "n: 11\n", "n: 2.5\n", "n: 1e300\n", "n:\n", "n 3\n", "n"}) {
        const File bad = text_file(text);
        SectionReader section(bad.get());
        EXPECT_EQ(th_code([&] { section.count("n", 0, 10); }), th_cannot_open) << text;
    }
}
}  // namespace
