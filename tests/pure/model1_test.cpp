#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace {
constexpr char kFile[] =
    "name:\targon\nid:\t2\ntext:\ttwo words\npc:\t 4.8e0\nTc:\t1.5e2\nvc:\t7.5e1\n"
    "M:\t39.948\nTs:\t150.5\nvs:\t31.5\n";

TEST(Model1, SettersKeepToTheirBuffers) {
    VdwModel m;
    m.name(std::string(40, 'n').c_str());
    EXPECT_EQ(std::string(m.name()), std::string(31, 'n'));
    m.comment(std::string(100, 'c').c_str());
    EXPECT_EQ(std::string(m.comment()), std::string(79, 'c'));
    m.name(nullptr);
    EXPECT_STREQ(m.name(), "");
    Vector<double> v(2);
    v.ramp(40, 100);
    m.params(v);
    EXPECT_EQ(m.M(), 40);
    EXPECT_EQ(m.Ts(), 140);
    m.vs(33);
    EXPECT_EQ(m.param(2), 33);
    m.param(2, 34);
    EXPECT_EQ(m.vs(), 34);
}

TEST(Model1, LoadsAFileAndStoresItIntoAnotherTree) {
    Scratch scratch;
    scratch.write("CorvaneS/parameters/vdw/argon;1", kFile);
    VdwModel m("argon");
    EXPECT_EQ(m.load("vdw"), 0);
    EXPECT_EQ(m.id(), 2);  // the file's own number replaces the one that was asked for
    EXPECT_STREQ(m.comment(), "two words");
    EXPECT_EQ(m.pcrit(), 4.8);
    EXPECT_EQ(m.Tcrit(), 150);
    EXPECT_EQ(m.vcrit(), 75);
    EXPECT_EQ(m.vs(), 31.5);

    EXPECT_EQ(th_code([&] { m.store("vdw"); }), th_cannot_open);  // folders are not made
    std::filesystem::create_directories("models/parameters/vdw");
    m.vs(31.625);
    m.store("vdw");
    EXPECT_EQ(th_code([&] { m.load("vdw"); }), th_cannot_open);  // there is no argon;2 to read
    std::filesystem::copy_file("models/parameters/vdw/argon;2", "CorvaneS/parameters/vdw/argon;2");
    VdwModel again("argon");
    again.id(2);
    again.load("vdw");
    EXPECT_EQ(again.vs(), 31.625);
    EXPECT_EQ(Scratch::read("models/parameters/vdw/argon;2").substr(0, 54),
              "name:\targon\nid:\t2\ntext:\ttwo words\npc:\t 4.80000000e+00\n");
    again.name("absent");
    EXPECT_EQ(th_code([&] { again.load("vdw"); }), th_cannot_open);
    EXPECT_EQ(th_code([&] { again.load(nullptr); }), th_cannot_open);
    EXPECT_EQ(th_code([&] { again.load(std::string(150, 'x').c_str()); }), th_cannot_open);
}

TEST(Model1, CommentsAndMalformedFiles) {
    Scratch scratch;
    const std::string head = "name:\targon\nid:\t1\ntext:\t",
                      tail = "\npc:\t4.8\nTc:\t150\nvc:\t75\n";
    const std::string section = "M:\t1\nTs:\t2\nvs:\t3\n", file = "CorvaneS/parameters/vdw/argon;1";
    const auto load = [&](std::string const& text) {
        scratch.write(file, text);
        VdwModel m("argon");
        const int code = th_code([&] { m.load("vdw"); });
        return std::pair(code, std::string(m.comment()) + "|" + std::to_string(m.pcrit()));
    };
    const std::string whole = std::to_string(4.8), kept = std::to_string(VdwModel().pcrit());
    EXPECT_EQ(load(head + tail + section), std::pair(-1, "|" + whole));  // empty, the line kept
    EXPECT_EQ(load(head + std::string(78, 'c') + tail + section),
              std::pair(-1, std::string(78, 'c') + "|" + whole));
    // intended: what is beyond 78 characters disturbs the fields that follow
    EXPECT_EQ(load(head + std::string(79, 'c') + tail + section).second,
              std::string(78, 'c') + "|" + kept);
    EXPECT_EQ(load(head + "x" + tail + "M:\t1\nTs:\t2\n").first, th_cannot_open);  // short section
    EXPECT_EQ(load("").first, th_cannot_open);
    EXPECT_EQ(load(std::string(5000, 'n')).first, th_cannot_open);
    VdwModel overlong("argon");
    scratch.write(file, "name:\t" + std::string(5000, 'n') + "\n" + tail + section);
    th_code([&] { overlong.load("vdw"); });
    EXPECT_EQ(std::string(overlong.name()), std::string(31, 'n'));  // no more than its buffer holds
}

TEST(Model1, ReportsInTheStatedForm) {
    Scratch scratch;
    VdwModel m("argon");
    m.comment("text");
    testing::internal::CaptureStdout();
    m.intro("title", 7);
    m.show1("list");
    // 39.948 is not a binary fraction, so par_out shows all its digits.
    const std::string out = testing::internal::GetCapturedStdout();
    const std::string expected = std::string(75, '=') +
                                 "\ntitle argon\n\nequation of state: vdw\nparameter set:     1 "
                                 "{text}\n\nM:\t39.948";
    EXPECT_EQ(out.substr(0, expected.size()), expected);
    EXPECT_NE(out.find("\nvs:\t32\n\nideal-gas data available: none\n\nsublimation data available: "
                       "none\n\n\nlist\n\nM:\t39.948"),
              std::string::npos);
}

TEST(Model1, DensityLimitsAreInterpolatedAndExtrapolated) {
    struct Tables : VdwModel {
        using Rows = std::vector<std::array<double, 3>>;
        explicit Tables(Rows const& rows) {
            for (Vector<double>* v : {&Ttable_, &dilute_, &dense_})
                v->size(static_cast<int>(rows.size()));
            for (std::size_t k = 0; k < rows.size(); ++k) {
                const int i = static_cast<int>(k);
                Ttable_[i] = rows[k][0];
                dilute_[i] = rows[k][1];
                dense_[i] = rows[k][2];
            }
        }
    };
    const Tables t(Tables::Rows{{400, 8, 9}, {300, 6, 10}, {200, 3, 20}, {100, 1, 30}});
    struct Row {
        double T, dilute, dense;
    };
    for (Row const& r : {Row{400, 8, 9}, Row{350, 7, 9.5}, Row{300, 6, 10}, Row{250, 4.5, 15},
                         Row{200, 3, 20}, Row{150, 2, 25}, Row{100, 1, 30}, Row{50, 0, 35}}) {
        EXPECT_NEAR(t.xrho(r.T, 1), r.dense, 1e-12) << r.T;
        for (int phase : {3, 0, 2, -1}) EXPECT_NEAR(t.xrho(r.T, phase), r.dilute, 1e-12) << r.T;
    }
    EXPECT_EQ(th_code([&] { t.xrho(400.001, 1); }), th_generic);
    EXPECT_EQ(th_code([] { VdwModel().off(1, 100); }), th_generic);
    EXPECT_TRUE(t.off(5, 250));
    for (double outside : {4.5, 15.0, 1.0, 20.0}) EXPECT_FALSE(t.off(outside, 250)) << outside;
    EXPECT_EQ(Tables(Tables::Rows{{300, 6, 10}}).xrho(200, 1), 10);
    EXPECT_EQ(Tables(Tables::Rows{{300, 6, 10}, {300, 7, 11}}).xrho(200, 1), 11);
}
}  // namespace
