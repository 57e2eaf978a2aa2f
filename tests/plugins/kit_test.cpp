// The kit for authors: roots of isotherms that are no cubics, and labelled sections.
#include "model_text.h"

#include <corvane/plugin/density.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
using namespace corvane;

// An isotherm with two loops, as multiparameter equations have. Its slope is the product of
// (1 − x/a) for a = 1/10, 3/10, 1/2, 7/10, the spinodals.
IsothermPoint two_loops(double x) {
    constexpr double c[] = {1.0, -352 / 21.0, 1720 / 21.0, -3200 / 21.0, 2000 / 21.0};
    double P = 0.0, dP = 0.0;
    for (int i = 4; i >= 0; --i) {
        P = P * x + c[i] / (i + 1);
        dP = dP * x + c[i];
    }
    return {P * x, dP};
}

TEST(PluginKit, FirstAndLastBranchCountInnerLoopsDoNot) {
    EXPECT_NEAR(spinodal(two_loops, 0.0, 0.6, 12), 0.1, 1e-12);
    EXPECT_NEAR(spinodal(two_loops, 1.0, 0.2, 12), 0.7, 1e-12);
    EXPECT_NEAR(spinodal_around(two_loops, 0.2, 0.0, 1e-3), 0.1, 1e-12);
    EXPECT_EQ(spinodal_around(two_loops, 0.4, 0.0, 1e-3), 0.0);  // 0.4 is on a rising branch
    EXPECT_EQ(spinodal(two_loops, 0.0, 0.05, 5), 0.0);
    const double top = two_loops(0.1).P, bottom = two_loops(0.7).P;
    for (double part : {1e-9, 0.01, 0.5, 0.9, 0.999999}) {
        const double P = bottom + part * (two_loops(1.2).P - bottom);
        int calls = 0;
        auto isotherm = [&](double x) { return ++calls, two_loops(x); };
        double dense = 0, other = 0;
        const int n = density_roots(
            isotherm, P, {0.2, 0.6, 1.2, true}, 1, [](double) { return 0.0; }, dense, other);
        EXPECT_EQ(n, P > 0 && P < top ? 3 : 1);
        EXPECT_GT(dense, 0.7);
        EXPECT_NEAR(two_loops(dense).P, P, 1e-13);
        EXPECT_LT(other, 0.1);
        EXPECT_LE(calls, 45);  // of 200; about 10 away from the spinodals
    }
}

// The van der Waals isotherm in reduced form, b = 1, with what the kit's search asks for.
struct VanDerWaals {
    static constexpr bool closed = false;
    double a;
    mutable int slopes = 0, pressures = 0;

    static double P(double x, double a) { return x / (1.0 - x) - a * x * x; }
    IsothermPoint operator()(double x) const {
        ++slopes;
        return {P(x, a), 1.0 / ((1.0 - x) * (1.0 - x)) - 2.0 * a * x};
    }
    double pressure(double x) const { return ++pressures, P(x, a); }
    SlopePoint slope(double x) const {
        const double f = 1.0 / (1.0 - x);
        return {f * f - 2.0 * a * x, x * (2.0 * f * f * f - 2.0 * a), 6.0 * x * x * f * f * f * f};
    }
    double gibbs(double) const { return 0.0; }
};

TEST(PluginKit, SearchNeedsFewEvaluationsAndEndsWhereNewtonsMethodDoes) {
    int two = 0;
    for (double Tr : {0.4, 0.6, 0.8, 0.95, 0.999, 1.001, 1.3})
        for (double P : {-0.3, 1e-280, 1e-7, 1e-3, 0.03, 0.1, 0.12, 0.3, 5.0, 1e3})
            for (double liquid : {0.0, 0.4, 0.7}) {
                SCOPED_TRACE(testing::Message() << "Tr " << Tr << ", P " << P << ", liquid " << liquid);
                const VanDerWaals f{27.0 / 8.0 / Tr};
                const double top = 1.0 - 1e-9, third = 1.0 / 3.0;
                double a[2] = {7, 7}, b[2] = {7, 7};
                const int n = all_densities(
                    f, {.top = top, .loop = third, .liquid = liquid, .single = true}, P, 1, a[0], a[1]);
                const int spent = f.slopes + f.pressures;
                ASSERT_EQ(n, density_roots(f, P, {third, third, top, Tr < 1.0}, 1,
                                           [](double) { return 0.0; }, b[0], b[1]));
                two += n == 3;
                for (int i = 0; i < 2; ++i) {
                    if (b[i] == 7) continue;
                    // A root is worth the rounding of x/(1 − x) and a·x² over the slope there.
                    const double x = b[i], size = x / (1.0 - x) * (1.0 + x / (1.0 - x)) + f.a * x * x;
                    EXPECT_NEAR(a[i], x, 4e-16 * (x + size / f(x).dP));
                }
                EXPECT_LE(spent, 30);
            }
    EXPECT_GT(two, 20);
}

TEST(PluginKit, HopelessIsothermsEndWithoutARoot) {
    const IsothermPoint kinds[] = {{NAN, NAN}, {-1.0, -1.0}, {0.1, 0.0}};
    for (IsothermPoint const& kind : kinds)
        for (bool loop : {false, true}) {
            auto isotherm = [&](double) { return kind; };
            auto g = [](double) { return 0.0; };
            double a = 7, b = 8;
            EXPECT_EQ(density_roots(isotherm, 0.5, {0.2, 0.6, 1.0, loop}, 1, g, a, b), 0);
            EXPECT_TRUE(a == 7 && b == 8);
        }
    auto nan = [](double, double) { return IsothermPoint{NAN, NAN}; };
    Vector<double> T, dilute, dense;
    fill_density_tables(nan, {300, 0.01, 0.04, 100, 10}, T, dilute, dense);
    EXPECT_EQ(T.size(), 15);
    EXPECT_GT(dilute[5], dense[5]);  // no loop known: nothing is ruled out
    fill_density_tables(nan, {0, 0.01, 0.04, 100, 10}, T, dilute, dense);
    EXPECT_EQ(T.size() + dilute.size() + dense.size(), 0);
}

TEST(PluginKit, SectionsAreReadByLabel) {
    const File f = text_file("n:\t3\na:\t1 2.5 -3e2\nnote: free 1 2\nrest");
    {
        SectionReader section(f.get());
        double a[3];
        EXPECT_EQ(section.number("missing", 4.5), 4.5);
        EXPECT_EQ(section.count("n", 0, 10), 3);
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
        EXPECT_EQ(th_code([&] { SectionReader(bad.get()).count("n", 0, 10); }), th_cannot_open);
    }
}
}  // namespace
