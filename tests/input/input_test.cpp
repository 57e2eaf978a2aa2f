// Console helpers, driven through a redirected standard input, and transforms of mole fractions.
#include <corvane/input/input.h>
#include <support/errors.h>
#include <support/scratch.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {
/// Runs f with the text as standard input; returns what it wrote to standard error.
template <class F>
std::string with_input(std::string const& text, F f) {
    const Scratch dir;
    dir.write("answers", text);
    EXPECT_TRUE(std::freopen("answers", "r", stdin));
    testing::internal::CaptureStderr();
    f();
    return testing::internal::GetCapturedStderr();
}

Vector<double> vector_of(std::vector<double> const& values) {
    Vector<double> v(static_cast<int>(values.size()));
    for (int i = 0; i < v.n; ++i) v[i] = values[static_cast<std::size_t>(i)];
    return v;
}

void expect_elements(Vector<double> const& x, std::vector<double> const& expected) {
    ASSERT_EQ(x.n, static_cast<int>(expected.size()));
    for (int i = 0; i < x.n; ++i)
        EXPECT_NEAR(x[i], expected[static_cast<std::size_t>(i)], 1e-15) << "element " << i;
}
}  // namespace

TEST(ReadVars, TakesAValueOrARange) {
    struct Case {
        char const* input;
        int points;
        double x1, x2, dx;
    };
    for (Case const& c :
         {Case{"300\n", 1, 300, 300, 1}, Case{" -1e-3 ", 1, -1e-3, -1e-3, 1},
          Case{"(300 400 25)", 5, 300, 400, 25}, Case{"\n (300 400 30)", 4, 300, 400, 30},
          Case{"(400 300 -25)", 5, 400, 300, -25}, Case{"(300 300 25)", 1, 300, 300, 25},
          // No count: dx = 0, more points than an int holds, too few numbers.
          Case{"(300 400 0)", 0, 300, 400, 0}, Case{"(0 1e300 1e-9)", 0, 0, 1e300, 1e-9},
          Case{"(300 400)", 0, 300, 400, 7}, Case{"abc", 0, 7, 7, 7}, Case{"", 0, 7, 7, 7},
          Case{"(nan 1 1)", 0, NAN, 1, 1}}) {
        SCOPED_TRACE(c.input);
        double x1 = 7, x2 = 7, dx = 7;
        int points = -1;
        with_input(c.input, [&] { points = read_vars("", x1, x2, dx); });
        EXPECT_EQ(points, c.points);
        if (!std::isnan(c.x1)) {
            EXPECT_EQ(x1, c.x1);
        }
        EXPECT_EQ(x2, c.x2);
        EXPECT_EQ(dx, c.dx);
    }
}

TEST(ReadVars, ThePromptIsAFormatWithoutArguments) {
    double x1, x2, dx;
    EXPECT_EQ(with_input("1", [&] { read_vars("x / %% (%s%n): ", x1, x2, dx); }), "x / % (%s%n): ");
    EXPECT_EQ(with_input("1", [&] { read_vars(nullptr, x1, x2, dx); }), "");
}

TEST(Recognize, ComparesShortNamesExactlyUpToTheEmptyOne) {
    const prop_str table[] = {{"T", "temperature", "K", 0},
                              {"p", "pressure", "MPa", 1},
                              {"", "", "", 0},
                              {"H", "enthalpy", "J/mol", 2}};
    EXPECT_EQ(recognize("T", table), 0);
    EXPECT_EQ(recognize("p", table), 1);
    for (char const* unknown : {"P", "H", "", "Tp"}) EXPECT_EQ(recognize(unknown, table), -1);
    EXPECT_EQ(recognize("T", table + 2), -1);
}

TEST(MoleFraction, MapsToTheRealLineAndBack) {
    EXPECT_EQ(xtoz(0), -230);
    EXPECT_EQ(xtoz(-1e-300), -230);
    EXPECT_EQ(xtoz(1), 230);
    EXPECT_EQ(xtoz(0.5), 0);
    EXPECT_EQ(ztox(0), 0.5);
    EXPECT_EQ(ztox(231), 1);
    EXPECT_EQ(ztox(-231), 0);
    EXPECT_GT(ztox(-230), 0);  // the bound itself is not cut
    for (double x : {1e-90, 1e-9, 0.3, 0.999})
        EXPECT_NEAR(ztox(xtoz(x)) / x, 1, 1e-13);  // |z| = 207 magnifies rounding
}

TEST(AdjustX, KeepsOneFractionAndScalesTheOthers) {
    struct Case {
        int i;
        std::vector<double> before, after;
    };
    for (Case const& c :
         {Case{0, {0.5, 0, 0}, {0.5, 0.25, 0.25}}, Case{0, {0.2, 0.3, 0.5}, {0.2, 0.3, 0.5}},
          Case{2, {0.3, 0.6, 0.4}, {0.2, 0.4, 0.4}}, Case{1, {-1, 0.4, 0.5}, {0.3, 0.4, 0.3}},
          Case{0, {0.7}, {0.7}}}) {
        Vector<double> x = vector_of(c.before);
        adjust_x(c.i, x);
        expect_elements(x, c.after);
    }
}

struct Composition {
    char const* input;
    std::vector<double> x;  // on return, also after a throw
    int code;
};

TEST(ReadX, TakesTheLastFractionAsTheRest) {
    for (Composition const& c :
         {Composition{"0.2 0.3", {0.2, 0.3, 0.5}, -1}, Composition{"0.7 0.5", {0.7, 0.5, -0.2}, 5},
          Composition{"1.5 0.1", {1.5, 7, 1}, 5}, Composition{"0.3 -0.1", {0.3, -0.1, 0.7}, 5},
          Composition{"nan", {NAN, 7, 1}, 5}, Composition{"0.2 x", {0.2, 7, 0.8}, 5},
          Composition{"0.4", {0.4}, -1}}) {
        SCOPED_TRACE(c.input);
        Vector<double> x(static_cast<int>(c.x.size()));
        x.set(7);
        int code = -1;
        const std::string asked =
            with_input(c.input, [&] { code = th_code([&] { read_x("x?", x); }); });
        EXPECT_EQ(code, c.code);
        EXPECT_EQ(asked, x.n > 1 ? "x?\n" : "");
        if (std::isnan(c.x[0])) continue;
        expect_elements(x, x.n > 1 ? c.x : std::vector<double>{1});
    }
}

TEST(ReadR, TakesFractionsOrARatioFirst) {
    for (Composition const& c :
         {Composition{"0.2 0.3 0.9", {0.2, 0.3, 0.9}, -1},  // not normalised
          Composition{"1 0 5", {1, 0, 5}, -1}, Composition{"0.5 -0.1 0", {0.5, -0.1, 0}, 5},
          // A ratio of 2: the rest 1 − 0.25 − 0.5 is halved as well.
          Composition{"2 0.25 0.5", {0.125, 0.25, 0.125}, -1},
          Composition{"2 1.5 0.1", {1.5, 0.1, -0.6}, 5},
          Composition{"2 0.9 0.9", {0.45, 0.45, -0.8}, 5},  // partly scaled
          Composition{"x", {0, 0, 0}, -1}}) {
        SCOPED_TRACE(c.input);
        Vector<double> x(3);
        x.set(0);
        int code = -1;
        EXPECT_EQ(with_input(c.input, [&] { code = th_code([&] { read_r("x?", x); }); }), "x?\n");
        EXPECT_EQ(code, c.code);
        expect_elements(x, c.x);
    }
}
