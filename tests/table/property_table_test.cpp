// Tables against the functions that they are of: known ones, and the equation of state.
#include "support/errors.h"
#include "support/scratch.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace {
using corvane::PropertyTable;
using corvane::TableDesign;
using corvane::TableInputs;
using corvane::TableStates;

/// Two smooth functions with a step along a curve, another kind of state in a corner, and no state in
/// a disc.
int stepped(double a, double b, double* values) {
    const double edge = 0.3 + 0.2 * std::sin(3 * std::log(a));
    if (std::hypot(std::log(a) - 1, b - 0.8) < 0.1) return 0;
    values[0] = std::exp(b * std::log(a)) * (b < edge ? 1 : 3);
    values[1] = std::sin(5 * b) + (b < edge ? 0 : 1e-3);
    values[2] = a > 5 && b > 0.5 ? std::numeric_limits<double>::quiet_NaN() : a * b - 1;
    return std::isnan(values[2]) ? 2 : 1;
}
TableDesign of_steps(int halvings) {
    TableDesign d;
    d.a = {"a", 1, 9, true};
    d.b = {"b", 0, 1, false};
    d.columns = {{"x"}, {"y", 1}, {"z", 2}};
    d.tolerance = 1e-7;
    d.halvings = halvings;
    d.note = "made up";
    return d;
}

TEST(PropertyTable, KnowsWhereItDoesNotKnow) {
    const auto table = PropertyTable::build(of_steps(7), stepped);
    const auto c = table.check(stepped, 40000, 1);
    EXPECT_EQ(c.other, 0);
    for (double worst : c.worst) EXPECT_LE(worst, 1e-7);
    // The step is 1.2 long, the edges of the corner 0.5 and 0.3, the disc has a circumference of 0.4 in
    // these units; a gap is one or two of 128 wide.
    const double disc = M_PI * 0.01 / std::log(9);
    EXPECT_GT(table.coverage(), 1 - disc - 2.4 * 3 / 128);
    EXPECT_LT(table.coverage(), 1 - disc);
    EXPECT_NEAR(c.answered / 40000.0, table.coverage(), 0.005);
    double q[3] = {7, 7, 7};
    for (auto [a, b] : {std::pair(0.99, 0.5), {9.01, 0.5}, {2.0, -1e-9}, {2.0, 1 + 1e-9}, {NAN, 0.5},
                        {2.0, NAN}, {std::exp(1), 0.8}})
        EXPECT_FALSE(table.at(a, b, q)) << a << ' ' << b;
    EXPECT_EQ(q[0], 7);
    for (auto [a, b] : {std::pair(1.0, 0.0), {9.0, 0.0}, {1.0, 1.0}, {9.0, 1.0}})
        EXPECT_TRUE(table.at(a, b, q)) << a << ' ' << b;
}

TEST(PropertyTable, OfAFluidIsWithinItsToleranceAtRandomPoints) {
    struct Made {
        char const *equation, *substance;
        TableInputs inputs;
        double a[2], b[2];
    };
    constexpr Made kMade[] = {{"PR", "propane", TableInputs::pT, {0.1, 10}, {250, 500}},
                              {"PR", "propane", TableInputs::ph, {0.1, 10}, {-1e4, 4e4}},
                              {"SRK", "carbon_dioxide", TableInputs::rhou, {1e-4, 0.02}, {-1e4, 2e4}}};
    for (Made const& m : kMade) {
        SCOPED_TRACE(static_cast<int>(m.inputs));
        const corvane::Fluid fluid = corvane::open(m.equation, m.substance);
        const TableStates states(*fluid.model, m.inputs);
        TableDesign d = states.design(m.a[0], m.a[1], m.b[0], m.b[1]);
        d.tolerance = 1e-5;
        d.halvings = 5;
        const auto table = PropertyTable::build(d, states.sample());
        const auto c = table.check(states.sample(), 4000, 11);
        EXPECT_EQ(c.other, 0);
        EXPECT_GT(c.answered, 0.85 * c.points);
        for (double worst : c.worst) EXPECT_LE(worst, d.tolerance);
    }
}

// States a little beside the saturation: a cell that reaches over it would give those of the other side.
TEST(PropertyTable, DoesNotReachOverTheSaturation) {
    const corvane::Fluid fluid = corvane::open("PR", "propane");
    const TableStates states(*fluid.model, TableInputs::pT);
    TableDesign d = states.design(0.1, 10, 250, 500);
    d.tolerance = 1e-5;
    d.halvings = 6;
    const auto table = PropertyTable::build(d, states.sample());
    int answered = 0;
    std::vector<double> q(d.columns.size()), is(q);
    for (int k = 0; k < 400; ++k) {
        const double T = 250 + 119.8 * (k + 0.5) / 400;
        const auto s = corvane::pure_saturation_T(*fluid.model, T);
        for (double off : {1e-7, 1e-4, 1e-3, 1e-2, 0.1})
            for (int sign : {-1, 1}) {
                const double p = s.p * (1 + sign * off);
                if (!table.at(p, T, q.data())) continue;
                ++answered;
                states.sample()(p, T, is.data());
                EXPECT_NEAR(q[0] / is[0], 1, d.tolerance) << p << ' ' << T;
            }
    }
    EXPECT_GT(answered, 400);  // mostly a tenth away
}

TEST(PropertyTable, OfAMixtureIsItsFlashes) {
    const corvane::Mixture gas = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    Vector<double> z(2);
    z[0] = 0.7, z[1] = 0.3;
    const TableStates states(*gas.model, z, TableInputs::ph);
    TableDesign d = states.design(0.5, 5, -5000, 15000);
    d.tolerance = 1e-4;
    d.halvings = 4;
    const auto table = PropertyTable::build(d, states.sample());
    const auto c = table.check(states.sample(), 300, 3);
    EXPECT_EQ(c.other, 0);
    EXPECT_GT(c.answered, 200);
    for (double worst : c.worst) EXPECT_LE(worst, d.tolerance);
    double q[8];
    ASSERT_TRUE(table.at(2, 5000, q));  // T, rho, s, u, q …
    const auto f = corvane::flash_ph(*gas.model, 2, 5000, z);
    EXPECT_NEAR(q[0], f.T, 1e-4 * f.T);
    EXPECT_NEAR(q[4], f.fraction.back(), 1e-4);
}

TEST(PropertyTable, FilesAreWholeOrRefused) {
    const Scratch scratch;
    const auto table = PropertyTable::build(of_steps(4), stepped);
    const std::string path = "made_up.table", other = "other.table";
    table.write(path);
    const auto read = PropertyTable::read(path);
    EXPECT_EQ(read.design().note, "made up");
    double p[3], q[3];
    for (int k = 0; k < 1000; ++k) {
        const double a = 1 + 8 * k / 999.0, b = std::fmod(0.37 * k, 1);
        ASSERT_EQ(table.at(a, b, p), read.at(a, b, q));
        if (table.at(a, b, p)) {
            EXPECT_EQ(p[0], q[0]);
            EXPECT_EQ(p[1], q[1]);
        }
    }
    const std::string good = Scratch::read(path);
    auto refused = [&](std::string const& text) {
        scratch.write(other, text);
        EXPECT_EQ(th_code([&] { PropertyTable::read(other); }), th_cannot_open);
    };
    for (std::size_t k = 0; k < good.size(); k += k < 400 ? 1 : 4999) {
        std::string bad = good;
        bad[k] = static_cast<char>(bad[k] ^ 0x10);
        refused(bad);
        refused(good.substr(0, k));
    }
    refused(good + '\0');
    EXPECT_EQ(th_code([&] { PropertyTable::read("none"); }), th_cannot_open);
    EXPECT_EQ(th_code([&] { table.write("no/folder"); }), th_cannot_open);
}

// Bytes that are wrong under a digest that is right: refused, or a table that can be asked.
TEST(PropertyTable, HostileFilesAreRefusedOrHarmless) {
    const Scratch scratch;
    const std::string path = "hostile.table";
    PropertyTable::build(of_steps(4), stepped).write(path);
    const std::string good = Scratch::read(path);
    int refused = 0;
    for (std::size_t k = 24; k + 8 < good.size(); k += k < 3000 ? 3 : 1999) {
        std::string bad = good;
        for (std::size_t j = k; j < std::min(k + 4, good.size() - 8); ++j) bad[j] = '\x7f';
        std::uint64_t digest = 0xcbf29ce484222325u;
        for (std::size_t j = 24; j + 8 < bad.size(); ++j)
            digest = (digest ^ static_cast<unsigned char>(bad[j])) * 0x100000001b3u;
        std::memcpy(bad.data() + bad.size() - 8, &digest, 8);
        scratch.write(path, bad);
        try {
            const auto table = PropertyTable::read(path);
            std::vector<double> q(table.columns().size());
            for (double a : {1.0, 2.0, 5.0, 9.0}) table.at(a, 0.5, q.data());
        } catch (ThException const&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 200);  // lengths and cells
}

TEST(PropertyTable, RefusesWhatItCannotBe) {
    auto code = [](auto change) {
        TableDesign d = of_steps(4);
        change(d);
        return th_code([&] { PropertyTable::build(d, stepped); });
    };
    EXPECT_EQ(code([](auto& d) { d.a.from = 0; }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.b.to = d.b.from; }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.b.to = NAN; }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.tolerance = 1e-11; }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.halvings = 17; }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.columns.clear(); }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.columns[0].name = "a b"; }), th_out_of_range);
    EXPECT_EQ(code([](auto& d) { d.note = "two\nlines"; }), th_out_of_range);
    EXPECT_EQ(th_code([] { PropertyTable::build(of_steps(4), stepped, [](int n) { return n < 9; }); }),
              th_no_option);
    for (char const* name : {"a", "z", "A", "Z", "0", "9", "_"})
        EXPECT_LT(code([&](auto& d) { d.columns[0].name = name, d.halvings = 0; }), 0) << name;
    for (char const* name : {"", "`", "{", "@", "[", "/", ":", "-", "a234567890123456789012345678901_"})
        EXPECT_EQ(code([&](auto& d) { d.columns[0].name = name; }), th_out_of_range) << name;
    const auto none = PropertyTable::build(of_steps(0), stepped);
    EXPECT_EQ(none.coverage(), 0);
    EXPECT_EQ(th_code([&] { none.check(stepped, 0, 1); }), th_out_of_range);
}
}  // namespace
