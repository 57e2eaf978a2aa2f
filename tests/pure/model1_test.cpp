#include <corvane/core/file_error.h>
#include <corvane/pure/attach.h>

#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
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
    scratch.write(file, "name:\t" + std::string(5000, 'n') + "\nid:\t1\ntext:\tx" + tail + section);
    VdwModel overlong("argon");
    EXPECT_EQ(overlong.load("vdw"), 0);
    EXPECT_EQ(std::string(overlong.name()), std::string(31, 'n'));  // no more than its buffer holds
    overlong.name(overlong.name() + 3);                             // from within itself
    EXPECT_EQ(std::string(overlong.name()), std::string(28, 'n'));
}

/// What a model says of itself, to be compared.
std::string all_of(Model1 const& m) {
    char* text = nullptr;
    std::size_t size = 0;
    FILE* f = open_memstream(&text, &size);
    std::fprintf(f, "%s %d %s %a %a %a\n", m.name(), m.id(), m.comment(), m.pcrit(), m.Tcrit(),
                 m.vcrit());
    m.par_out(f);
    std::fclose(f);
    const std::string all(text, size);
    std::free(text);
    return all;
}

TEST(Model1, AFailedLoadSaysWhereAndChangesNothing) {
    Scratch scratch;
    for (char const* eos : {"PR", "SRK", "MEOS", "PCSAFT"}) {
        SCOPED_TRACE(eos);
        const std::string file = std::string("libth") + eos + ".dll",
                          data = std::string("CorvaneS/parameters/") + eos;
        std::filesystem::create_directories(data);
        std::filesystem::create_symlink(scratch.home() / "CorvaneS" / file, "CorvaneS/" + file);
        const std::string good = Scratch::read(scratch.home() / data / "carbon_dioxide;1");
        scratch.write(data + "/a;1", good);
        const std::unique_ptr<Model1, corvane::Detach> m(attach1(eos));
        m->name("a");
        m->id(1);
        m->load(eos);
        m->name("a");
        const std::string before = all_of(*m);
        const auto damaged = [&](std::string const& from, std::string const& to) {
            std::string text = good;
            const std::size_t at = text.find(from);
            EXPECT_NE(at, std::string::npos) << from;
            text.replace(at, from.size(), to);
            scratch.write(data + "/a;1", text);
            const int line = 1 + static_cast<int>(std::count(
                                     good.begin(),
                                     good.begin() + static_cast<std::ptrdiff_t>(at) + 1, '\n'));
            try {
                m->load(eos);
                ADD_FAILURE() << "loaded with " << to;
            } catch (corvane::FileError const& e) {
                EXPECT_EQ(e.path, "./" + data + "/a;1");
                EXPECT_TRUE(e.number == th_cannot_open || e.number == th_out_of_range) << to;
                if (e.number == th_cannot_open) {  // or the line after it
                    EXPECT_TRUE(e.line == line || e.line == line + 1) << to << e.what();
                }
            }
            EXPECT_EQ(all_of(*m), before) << to;
        };
        for (char const* key : {"pc:\t", "Tc:\t", "vc:\t"})
            for (char const* value : {"nan", "inf", "-7", "0"})
                damaged(key, std::string(key) + value + "\nx:\t");
        // Without a number a constant stays as it was: in a new model not known.
        for (char const* key : {"\npc:\t", "\nTc:\t", "\nvc:\t"}) {
            std::string text = good;
            const std::size_t at = text.find(key) + 5;
            scratch.write(data + "/a;1", text.erase(at, text.find('\n', at) - at));
            const std::unique_ptr<Model1, corvane::Detach> fresh(attach1(eos));
            fresh->name("a");
            fresh->id(1);
            EXPECT_EQ(th_code([&] { fresh->load(eos); }), th_cannot_open) << eos << key;
        }
        damaged("name:\t", "name:\t../../");
        const std::string Ts = good.substr(good.find("\nTs:\t") + 1);
        const std::string number = Ts.substr(4, Ts.find('\n') - 4), whole = "\nTs:\t" + number + "\n";
        for (std::string const& value :
             {number.substr(0, 2) + "," + number.substr(2), number + "D+00", number + " 6.25",
              number.substr(0, 1) + " " + number.substr(1), std::string("nan"), std::string(""),
              number + " K", std::string("-") + number})
            damaged(whole, "\nTs:\t" + value + "\n");
        damaged(whole, "\nT:\t" + number + "\n");
    }
    // The parameters of one cubic equation have the labels of the other.
    const std::unique_ptr<Model1, corvane::Detach> m(attach1("PR"));
    m->name("carbon_dioxide");
    m->id(1);
    scratch.write("CorvaneS/parameters/SRK/carbon_dioxide;1",
                  Scratch::read(scratch.home() / "CorvaneS/parameters/SRK/carbon_dioxide;1"));
    EXPECT_EQ(th_code([&] { m->load("SRK"); }), th_cannot_open);
    std::filesystem::rename("CorvaneS/parameters/PR", "CorvaneS/parameters/mine");
    m->name("a");
    EXPECT_EQ(th_code([&] { m->load("mine"); }), th_cannot_open);  // still damaged
    scratch.write("CorvaneS/parameters/mine/a;1",
                  Scratch::read(scratch.home() / "CorvaneS/parameters/PR/argon;1"));
    EXPECT_EQ(m->load("mine"), 0);  // a folder of any other name may hold sets of one's own
}

TEST(Model1, WhatStoreWritesLoadReads) {
    Scratch scratch;
    std::filesystem::create_directories("models/parameters/vdw");
    std::filesystem::create_directories("CorvaneS/parameters/vdw");
    struct Row {
        char const* name;
        std::string comment;
        double Ts;
        bool stored;
    };
    const std::string line(79, 'c');
    for (Row const& r : {Row{"argon", "", 150, true}, Row{"argon", line.substr(1), 1e-300, true},
                         Row{"argon", line, 150, false}, Row{"argon", "two\nlines", 150, false},
                         Row{"two words", "", 150, false}, Row{"", "", 150, false},
                         Row{"../../../argon", "", 150, false}, Row{"argon", "", NAN, false},
                         Row{"argon", "nan is not -inf", 150, true}}) {
        SCOPED_TRACE(std::string(r.name) + "|" + r.comment);
        VdwModel m(r.name);
        m.comment(r.comment.c_str());
        m.Ts(r.Ts);
        EXPECT_EQ(th_code([&] { m.store("vdw"); }), r.stored ? -1 : th_cannot_open);
        const std::string path = std::string("parameters/vdw/") + r.name + ";1";
        EXPECT_EQ(std::filesystem::exists("models/" + path), r.stored);
        if (!r.stored) continue;
        std::filesystem::rename("models/" + path, "CorvaneS/" + path);
        VdwModel again("argon");
        again.load("vdw");
        EXPECT_STREQ(again.comment(), m.comment());
        EXPECT_EQ(again.Ts(), r.Ts);
        EXPECT_NEAR(again.vcrit(), m.vcrit(), 1e-8 * m.vcrit());
    }
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
