// Components, pair files and reports of a mixture, on files written for the test.
#include "support/errors.h"
#include "support/mixtures.h"
#include "support/scratch.h"

#include <gtest/gtest.h>

namespace {
/// A working directory with the PR plug-ins and pure files of three substances.
class MixtureFiles : public testing::Test {
  protected:
    MixtureFiles() {
        std::filesystem::create_directories("CorvaneS/parameters/PR/vdW1");
        for (char const* file : {"libthPR.dll", "libthPR+vdW1.dll"})
            std::filesystem::create_symlink(scratch_.home() / "CorvaneS" / file,
                                            std::filesystem::path("CorvaneS") / file);
        for (char const* name : {"a", "b", "c"}) pure(name, 1, name[0]);
        pure("a", 2, 100);
    }
    void pure(std::string const& name, int id, double omega) const {
        scratch_.write(
            "CorvaneS/parameters/PR/" + name + ";" + std::to_string(id),
            "name:\t" + name + "\nid:\t" + std::to_string(id) +
                "\ntext:\ttest\npc:\t4\nTc:\t300\nvc:\t200\nM:\t30\nTs:\t300\nvs:\t50\nomega:\t" +
                std::to_string(omega / 1000) + "\n");
    }
    void pair(std::string const& a, int ida, std::string const& b, int idb, int id, double k,
              std::string const& of) const {
        scratch_.write("CorvaneS/parameters/PR/vdW1/" + a + "+" + b + ";" + std::to_string(id),
                       "name1:\t" + a + "\nid1:\t" + std::to_string(ida) + "\nname2:\t" + b +
                           "\nid2:\t" + std::to_string(idb) + "\nid:\t" + std::to_string(id) +
                           "\ntext:\tpair " + a + b + "\nof:\t" + of + "\nkij:\t" +
                           std::to_string(k) + "\n");
    }
    static Mixture make(std::vector<std::pair<std::string, int>> const& components) {
        Mixture m(attachN("PR", "vdW1"));
        m->alloc(static_cast<int>(components.size()), "PR");
        for (int i = 0; i < m->mdl1.size(); ++i) {
            m->mdl1[i]->name(components[static_cast<unsigned>(i)].first.c_str());
            m->mdl1[i]->id(components[static_cast<unsigned>(i)].second);
            for (int j = 0; j < i; ++j) m->id(i, j, 1);
        }
        return m;
    }
    static int load_code(Mixture const& m) {
        return th_code([&] { m->load("PR", "vdW1"); });
    }
    Scratch scratch_;
};

TEST_F(MixtureFiles, PairsAreFoundInEitherOrderAndFixTheNumbersOfTheirComponents) {
    pair("a", 2, "b", 1, 1, 0.1, "a");
    pair("c", 1, "a", 2, 1, 0.2, "c");
    pair("b", 1, "c", 1, 1, 0.3, "b");
    const Mixture m = make({{"a", -1}, {"b", -1}, {"c", 1}});
    EXPECT_EQ(load_code(m), -1);
    EXPECT_EQ(m->id(0, 0), 2);          // from the first pair file that names it
    EXPECT_EQ(m->param(3, 0, 0), 0.1);  // and so the second parameter set of a
    EXPECT_EQ(m->id(1, 1), 1);
    EXPECT_EQ(m->param(0, 0, 1), 0.1);
    EXPECT_EQ(m->param(0, 2, 0), 0.2);
    EXPECT_EQ(m->param(0, 1, 2), 0.3);
    EXPECT_STREQ(m->comment(0, 2), "pair ca");
    EXPECT_STREQ(m->mdl1[0]->name(), "a");
    EXPECT_STREQ(m->mdl1[2]->name(), "c");
    EXPECT_EQ(m->id(1, 0), 1);
    m->param(1, 0, 1, 0.05);
    EXPECT_EQ(*m->ppar(1, 1, 0), 0.05);
}

TEST_F(MixtureFiles, RefusesContradictionsAndWhatIsMissing) {
    pair("a", 2, "b", 1, 1, 0.1, "a");
    pair("a", 1, "c", 1, 1, 0.2, "a");
    pair("b", 1, "c", 1, 1, 0.3, "b");
    EXPECT_EQ(load_code(make({{"a", 1}, {"b", 1}})), th_id_mismatch);
    EXPECT_EQ(load_code(make({{"a", -1}, {"b", 1}, {"c", 1}})),
              th_id_mismatch);  // at the second pair
    Mixture other_set = make({{"a", -1}, {"b", 1}});
    other_set->id(0, 1, 7);
    EXPECT_EQ(load_code(other_set), th_cannot_open);
    EXPECT_EQ(load_code(make({{"a", 1}, {"x", 1}})), th_cannot_open);
    EXPECT_EQ(load_code(make({{"a", 1}})), -1);  // one component: no pair file
    std::filesystem::remove("CorvaneS/parameters/PR/c;1");
    testing::internal::CaptureStderr();
    EXPECT_EQ(load_code(make({{"b", 1}, {"c", 1}})), th_cannot_open);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "could not load parameters for c\n");
    pair("a", 2, "b", 1, 1, 0.1, "z");  // names neither component
    EXPECT_EQ(load_code(make({{"a", -1}, {"b", 1}})), th_cannot_open);
    for (char const* text :
         {"", "name1:\ta\nid1:\tx",
          "name1:\ta\nid1:\t2\nname2:\tb\nid2:\t1\nid:\t1\ntext:\tt\nof:\ta\nkij:\tnone\n"}) {
        scratch_.write("CorvaneS/parameters/PR/vdW1/a+b;1", text);
        EXPECT_EQ(load_code(make({{"a", -1}, {"b", 1}})), th_cannot_open) << text;
    }
}

TEST_F(MixtureFiles, MissingPairsAreEstimatedOnlyWhenAskedFor) {
    pair("b", 1, "a", 1, 1, 0.1, "b");
    const Mixture m = make({{"a", 1}, {"b", 1}, {"c", 1}});
    EXPECT_EQ(load_code(m), th_cannot_open);
    const auto estimated = corvane::load_estimating(*m, "PR", "vdW1");
    EXPECT_EQ(estimated, (std::vector<std::pair<int, int>>{{0, 2}, {1, 2}}));
    EXPECT_EQ(m->param(0, 0, 1), 0.1);
    EXPECT_EQ(m->param(0, 0, 2), 0.0);
}

TEST_F(MixtureFiles, StoresTheFirstPairInATreeOfItsOwnAndReportsInTheStatedForm) {
    pair("a", 1, "b", 1, 1, 0.125, "a");
    pair("a", 1, "c", 1, 1, 0.25, "a");
    pair("b", 1, "c", 1, 1, 0.5, "b");
    const Mixture m = make({{"a", 1}, {"b", 1}, {"c", 1}});
    m->load("PR", "vdW1");
    EXPECT_EQ(th_code([&] { m->store2("PR", "vdW1"); }), th_cannot_open);
    std::filesystem::create_directories("CorvaneS/models/parameters/PR/vdW1");
    m->store2("PR", "vdW1");
    EXPECT_EQ(Scratch::read("CorvaneS/models/parameters/PR/vdW1/a+b;1"),
              "name1:\ta\nid1:\t1\nname2:\tb\nid2:\t1\nid:\t1\ntext:\tpair "
              "ab\nof:\ta\nkij:\t0.125\nlij:\t0\n");
    testing::internal::CaptureStdout();
    m->intro("title", 0);
    m->show2("vector", vec({9, 0.25, 0.5}));
    const std::string expected = std::string(75, '=') +
                                 "\ntitle\n\nequation of state: PR\nmixing theory:     vdW1\n"
                                 "\ncomponent 1:  a\nparameter set: 1 {test}\n\n"
                                 "\nbinary data 1+2:  a + b\nparameter set: 1 {pair ab}\n\n"
                                 "\nbinary data 1+3:  a + c\nparameter set: 1 {pair ac}\n\n"
                                 "\ncomponent 2:  b\nparameter set: 1 {test}\n\n"
                                 "\nbinary data 2+3:  b + c\nparameter set: 1 {pair bc}\n\n"
                                 "\ncomponent 3:  c\nparameter set: 1 {test}\n\n"
                                 "\nvector\n\n  0.2500  0.5000\nof:\ta\nkij:\t0.125\nlij:\t0\n\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
}

TEST_F(MixtureFiles, CommentsKeepWithinTheirBuffers) {
    const Mixture m = make({{"a", 1}, {"b", 1}});
    m->comment(0, 1, std::string(200, 'c').c_str());
    EXPECT_EQ(std::string(m->comment(1, 0)), std::string(79, 'c'));
    m->comment(1, 0, "short");
    EXPECT_STREQ(m->comment(0, 1), "short");
    m->comment(1, 1, "pure");
    EXPECT_STREQ(m->mdl1[1]->comment(), "pure");
    m->id(0, 0, 5);
    EXPECT_EQ(m->mdl1[0]->id(), 5);
    m->comment(0, 1, m->comment(0, 1) + 2);  // from within itself
    EXPECT_STREQ(m->comment(0, 1), "ort");
}

TEST_F(MixtureFiles, WhatCannotBeReadOrHeldChangesNothing) {
    const Mixture m(attachN("PR", "vdW1"));
    for (int n : {10001, 46342, 65537, 2147483647})  // of the last three, n(n−1) overflows
        EXPECT_EQ(th_code([&] { m->alloc(n, "PR"); }), th_out_of_range);
    m->alloc(-3, "PR");
    EXPECT_EQ(m->mdl1.size(), 0);

    pair("a", 1, "b", 1, 1, 0.125, "a");
    const Mixture good = make({{"a", -1}, {"b", -1}});
    good->load("PR", "vdW1");
    const std::string file = Scratch::read("CorvaneS/parameters/PR/vdW1/a+b;1");
    for (char const* damage : {"kij:\t0,1", "kij:\tnan", "kij:\t0.1 25", "kij:\t0.125D0", "x:\t1"}) {
        std::string text = file;
        text.replace(text.find("kij:"), text.find('\n', text.find("kij:")) - text.find("kij:"),
                     damage);
        scratch_.write("CorvaneS/parameters/PR/vdW1/a+b;1", text.replace(text.find("pair"), 4, "new"));
        EXPECT_EQ(load_code(good), th_cannot_open) << damage;
        EXPECT_EQ(good->param(0, 0, 1), 0.125);
        EXPECT_STREQ(good->comment(0, 1), "pair ab");
    }
    for (char const* head :
         {"name1:\t../../a\nid1:\t1\n", "name1:\ta\nid1:\t99999999999999999999\n"}) {
        scratch_.write("CorvaneS/parameters/PR/vdW1/a+b;1", head + file.substr(file.find("name2")));
        EXPECT_EQ(load_code(good), th_cannot_open) << head;
        EXPECT_STREQ(good->mdl1[0]->name(), "a");
    }
    // Another equation or theory that has a plug-in, though its files could be read.
    for (char const* other : {"SRK/vdW1", "PR/LB"}) {
        const std::string name(other), plugin = std::string(name).replace(name.find('/'), 1, "+");
        const auto folder = "CorvaneS/parameters/" + name;
        std::filesystem::create_directories(folder);
        scratch_.write("CorvaneS/libth" + plugin + ".dll", "");
        scratch_.write(folder + "/a+b;1", std::string(file).replace(file.find("0.125"), 5, "0.5"));
        EXPECT_EQ(th_code([&] { good->load(name.substr(0, name.find('/')).c_str(),
                                           name.substr(name.find('/') + 1).c_str()); }),
                  th_cannot_open);
        EXPECT_EQ(good->param(0, 0, 1), 0.125) << other;
    }
    std::filesystem::create_directories("CorvaneS/models/parameters/PR/vdW1");
    good->mdl1[1]->name("two words");
    EXPECT_EQ(th_code([&] { good->store2("PR", "vdW1"); }), th_cannot_open);
    good->mdl1[1]->name("b");
    good->comment(0, 1, "two\nlines");
    EXPECT_EQ(th_code([&] { good->store2("PR", "vdW1"); }), th_cannot_open);
}
}  // namespace
