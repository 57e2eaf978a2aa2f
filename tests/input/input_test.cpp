// Console helpers, driven through a redirected standard input, and transforms of mole fractions.
#include <corvane/classic/input/input.h>
#include <support/errors.h>
#include <support/scratch.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
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

using List = std::vector<double>;

/// Applies f to a vector of those elements; returns the elements, rounded to 1e-14.
template <class F>
List changed(List const& before, F f) {
    Vector<double> x(static_cast<int>(before.size()));
    for (int i = 0; i < x.n; ++i) x[i] = before[static_cast<std::size_t>(i)];
    f(x);
    List after;
    for (int i = 0; i < x.n; ++i) after.push_back(std::round(x[i] * 1e14) / 1e14);
    return after;
}
}  // namespace

TEST(ReadVars, TakesAValueOrARange) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        char const* input;
        int points;
        double x1, x2, dx;
    };
    // The last ones have no count: dx = 0, more points than an int holds, too few numbers, no
    // number.
    for (Case const& c :
         {Case{"300\n", 1, 300, 300, 1}, Case{" -1e-3 ", 1, -1e-3, -1e-3, 1},
          Case{"(300 400 25)", 5, 300, 400, 25}, Case{"\n (300 400 30)", 4, 300, 400, 30},
          Case{"(400 300 -25)", 5, 400, 300, -25}, Case{"(300 400 0)", 0, 300, 400, 0},
          Case{"(0 1e300 1e-9)", 0, 0, 1e300, 1e-9}, Case{"(nan 1 1)", 0, nan, 1, 1},
          Case{"(300 400)", 0, 300, 400, 7}, Case{"abc", 0, 7, 7, 7}, Case{"", 0, 7, 7, 7}}) {
        SCOPED_TRACE(c.input);
        double x1 = 7, x2 = 7, dx = 7;
        int points = -1;
        // The prompt is a format text without arguments.
        EXPECT_EQ(with_input(c.input, [&] { points = read_vars("x / %% (%s%n): ", x1, x2, dx); }),
                  "x / % (%s%n): ");
        EXPECT_EQ(points, c.points);
        EXPECT_TRUE(x1 == c.x1 || std::isnan(c.x1));
        EXPECT_EQ(x2, c.x2);
        EXPECT_EQ(dx, c.dx);
    }
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
    for (auto const& [x, z] : {std::pair{0.0, -230.0}, {-1e-300, -230}, {1, 230}, {0.5, 0}})
        EXPECT_EQ(xtoz(x), z);
    for (auto const& [z, x] : {std::pair{0.0, 0.5}, {231, 1}, {-231, 0}}) EXPECT_EQ(ztox(z), x);
    EXPECT_GT(ztox(-230), 0);  // the bound itself is not cut
    for (double x : {1e-90, 1e-9, 0.3, 0.999})
        EXPECT_NEAR(ztox(xtoz(x)) / x, 1, 1e-13);  // |z| = 207 magnifies rounding
    const auto adjust = [](int i) { return [i](Vector<double>& x) { adjust_x(i, x); }; };
    EXPECT_EQ(changed({0.5, 0, 0}, adjust(0)), List({0.5, 0.25, 0.25}));
    EXPECT_EQ(changed({0.2, 0.3, 0.5}, adjust(0)), List({0.2, 0.3, 0.5}));
    EXPECT_EQ(changed({0.3, 0.6, 0.4}, adjust(2)), List({0.2, 0.4, 0.4}));
    EXPECT_EQ(changed({-1, 0.4, 0.5}, adjust(1)), List({0.3, 0.4, 0.3}));
    EXPECT_EQ(changed({0.7}, adjust(0)), List({0.7}));
}

TEST(Compositions, AreReadWithTheirRest) {
    struct Case {
        void (*read)(char const*, Vector<double>&);
        char const* input;
        int code;
        List x;  // on return, also after a throw; 7 is what was there before
    };
    for (Case const& c :
         {Case{read_x, "0.2 0.3", -1, {0.2, 0.3, 0.5}},
          Case{read_x, "0.7 0.5", 5, {0.7, 0.5, -0.2}}, Case{read_x, "1.5 0.1", 5, {1.5, 7, 1}},
          Case{read_x, "0.3 -0.1", 5, {0.3, -0.1, 0.7}}, Case{read_x, "nan", 5, {0, 7, 1}},
          Case{read_x, "0.2 x", 5, {0.2, 7, 0.8}}, Case{read_x, "0.4", -1, {1}},
          Case{read_r, "0.2 0.3 0.9", -1, {0.2, 0.3, 0.9}}, Case{read_r, "1 0 5", -1, {1, 0, 5}},
          Case{read_r, "0.5 -0.1 0", 5, {0.5, -0.1, 0}},
          // A ratio of 2: the rest 1 − 0.25 − 0.5 is halved as well.
          Case{read_r, "2 0.25 0.5", -1, {0.125, 0.25, 0.125}},
          Case{read_r, "2 1.5 0.1", 5, {1.5, 0.1, -0.6}},
          Case{read_r, "2 0.9 0.9", 5, {0.45, 0.45, -0.8}},  // partly scaled
          Case{read_r, "x", 5, {7, 7, -13}}}) {
        SCOPED_TRACE(c.input);
        int code = -1;
        std::string asked;
        const List after = changed(List(c.x.size(), 7), [&](Vector<double>& x) {
            asked = with_input(c.input, [&] { code = th_code([&] { c.read("x?", x); }); });
            if (std::isnan(x[0])) x[0] = 0;
        });
        EXPECT_EQ(code, c.code);
        EXPECT_EQ(after, c.x);
        EXPECT_EQ(asked, c.x.size() > 1 ? "x?\n" : "");  // one component asks nothing
    }
}
