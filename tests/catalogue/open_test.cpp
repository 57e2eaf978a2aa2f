// Models opened by name, from any directory.
#include "support/scratch.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>

#include <sys/stat.h>

namespace {
using corvane::DataHome;
using corvane::OpenFailure;

TEST(Open, NamesSynonymsAndNumbersLeadToTheSameSubstanceFromAnyDirectory) {
    const Scratch elsewhere;  // the library finds the home of its build tree by itself
    struct Row {
        char const *equation, *text, *substance;
    };
    for (Row const& row : {Row{"MEOS", "CO2", "carbon_dioxide"}, Row{"PR", "74-98-6", "propane"},
                           Row{"PCSAFT", "n-butane", "butane"}, Row{"SRK", "H2O", "water"}, Row{"PR", "CO\u2082", "carbon_dioxide"},
                           Row{"PR", "HFC-134a", "r134a"}, Row{"PR", "iC4", "isobutane"},
                           Row{"MEOS", "Carbon Dioxide", "carbon_dioxide"}}) {
        SCOPED_TRACE(row.text);
        corvane::Fluid fluid = corvane::open(row.equation, row.text);
        EXPECT_EQ(fluid.substance, row.substance);
        EXPECT_STREQ(fluid.model->name(), row.substance);
        EXPECT_EQ(fluid.set, 1);
        double rho = 0.0;
        // the ideal-gas limit: everything was loaded
        EXPECT_NEAR(fluid.model->Z(1e-9, 400.0), 1.0, 1e-5);
        EXPECT_GT(fluid.model->Cpm(1e-4, 400.0, 3, rho), 2.5);
        EXPECT_TRUE(fluid.ideal);
    }
    EXPECT_TRUE(std::filesystem::is_empty(elsewhere.dir()));
}

TEST(Open, WithoutAnEquationTakesTheBestThatHasParameters) {
    EXPECT_EQ(corvane::open("", "water").equation, "MEOS");
    const DataHome home = DataHome::find();
    for (auto const& [substance, sets] : corvane::parameter_sets(home, "PR")) {
        const auto known = corvane::equations_for(home, substance);
        ASSERT_FALSE(known.empty());
        const bool saft = !corvane::parameter_sets(home, "PCSAFT", substance).empty();
        const bool reference = !corvane::parameter_sets(home, "MEOS", substance).empty();
        EXPECT_EQ(known.front(), reference ? "MEOS" : saft ? "PCSAFT" : "PR") << substance;
        if (!reference && !saft) break;  // reading every folder for each is slow
    }
}

// Published fits to few data, whose vapour pressures are off by factors.
TEST(Open, TakesNoEquationThatMissesTheCriticalPointIfThereIsABetterOne) {
    for (char const* name : {"2_methyl_2_pentenal", "2_methylhexanoic_acid", "2_3_dimethylbenzothiophene"}) {
        const corvane::Fluid best = corvane::open("", name), fitted = corvane::open("PCSAFT", name);
        EXPECT_EQ(best.equation, "PR") << name;
        EXPECT_NEAR(best.model->Tcrit() / fitted.notes.Tc, 1, 0.02) << name;
        EXPECT_LT(fitted.model->Tcrit() / fitted.notes.Tc, 0.9) << name;
        EXPECT_TRUE(corvane::doubtful(fitted) && !corvane::doubtful(best)) << name;
        corvane::FluidOptions first;
        first.set = 1;
        EXPECT_EQ(corvane::open("", name, first).equation, "PCSAFT") << name;  // asked for by its number
    }
    EXPECT_EQ(corvane::open("", "1_hexadecanol").equation, "PCSAFT");
}

TEST(Open, MixturesOwnWhatTheyPointAt) {
    const Scratch elsewhere;
    corvane::Mixture first = corvane::open_mixture("PR+vdW1", {"methane", "C3H8"});
    corvane::Mixture gas = std::move(first);  // the model points at the texts
    EXPECT_STREQ(gas.model->eos, "PR");
    EXPECT_STREQ(gas.model->mth, "vdW1");
    EXPECT_EQ(gas.components, (std::vector<std::string>{"methane", "propane"}));
    EXPECT_TRUE(gas.estimated.empty());
    EXPECT_TRUE(gas.ideal);
    ASSERT_EQ(gas.gases.size(), 2u);
    EXPECT_EQ(gas.gases[1].first, corvane::open("PR", "propane").ideal->first);
    EXPECT_GT(gas.validity.T_triple[1], 85.0);  // propane 85.5 K
    Vector<double> z(2);
    z[0] = 0.3;
    z[1] = 0.7;
    const auto q = corvane::bubble_T(*gas.model, 260.0, z);
    EXPECT_TRUE(q.certificate.holds());
    EXPECT_EQ(corvane::open_mixture("PR+vdW1", {"propane"}).size(), 1);
    const auto rare = corvane::open_mixture("PR+vdW1", {"mercury", "aniline"});
    EXPECT_EQ(rare.estimated.size(), 1u);
    EXPECT_TRUE(rare.validity.estimated_pairs);
}

// GERG-2008, a multi-fluid pair, Rehner et al. (2023), groups, nothing; a pseudo-component has no pairs.
TEST(Open, WithoutAModelTakesTheFirstWhosePairsArePublished) {
    struct Row {
        std::vector<std::string> names;
        char const* model;
        int pair_set;
    };
    for (Row const& row : {Row{{"methane", "ethane"}, "MEOS+GERG", 1},
                           {{"hexane", "ethanol"}, "MEOS+GERG", 2},
                           {{"methane", "hexane", "ethanol"}, "PCSAFT+LB", 3},
                           {{"propane", "dodecane"}, "PCSAFT+LB", 3},
                           {{"ethanol", "dodecane"}, "SRK+PSRK", 1},
                           {{"mercury", "ethanol"}, "PR+vdW1", 1}}) {
        const auto mixture = corvane::open_mixture("", row.names);
        EXPECT_EQ(mixture.name(), row.model) << row.names[0];
        EXPECT_EQ(mixture.model->id(0, 1), row.pair_set) << row.names[0];
        EXPECT_NE(mixture.chosen, "");
    }
    EXPECT_EQ(corvane::open_mixture("", {"methane", "C7+"}, {.defined = {{"C7+", 600, 2.5, 0.4}}}).name(),
              "PR+vdW1");
    EXPECT_THROW(corvane::open_mixture("", {"methane", "ethane"}, {.pair_set = 2}),
                 corvane::OpenFailure);
    EXPECT_EQ(corvane::open_mixture("PR+vdW1", {"methane", "ethane"}).chosen, "");
}

TEST(Open, TwoHomesAtATime) {
    const Scratch scratch;
    const DataHome standard = DataHome::find();
    std::filesystem::create_directories("mine/CorvaneS/parameters/PR");
    for (char const* entry : {"libthPR.dll", "ideal", "substances.tsv"})
        std::filesystem::create_symlink(std::filesystem::canonical(standard.tree() / entry),
                                        std::filesystem::path("mine/CorvaneS") / entry);
    std::string text = Scratch::read(standard.tree() / "parameters/PR/propane;1");
    text.replace(text.find("Tc:\t"), 4, "Tc:\t1");  // 369.89 becomes 1369.89
    scratch.write("mine/CorvaneS/parameters/PR/propane;1", text);
    const DataHome mine("mine");
    const auto fluid = corvane::open("PR", "propane", {0, mine});
    EXPECT_GT(fluid.model->Tcrit(), 1300.0);
    EXPECT_LT(corvane::open("PR", "propane").model->Tcrit(), 400.0);
    EXPECT_EQ(fluid.home.directory(), std::filesystem::absolute("mine"));
}

TEST(Open, WhatTheFirstHomeLacksIsThatOfTheSecond) {
    const Scratch scratch;
    const DataHome standard = DataHome::find();
    const auto edited = [&](char const* file, std::string const& from, std::string const& to) {
        std::string text = Scratch::read(standard.tree() / file);
        text.replace(text.find(from), from.size(), to);
        return text;
    };
    const std::string propane = edited("parameters/PR/propane;1", "Tc:\t", "Tc:\t1");
    scratch.write("mine/CorvaneS/parameters/PR/propane;1", propane);
    scratch.write("mine/CorvaneS/parameters/PR/propane;7", propane);
    std::string heavy = Scratch::read(standard.tree() / "parameters/PR/decane;1");
    heavy.replace(heavy.find("decane"), 6, "heavy");
    scratch.write("mine/CorvaneS/parameters/PR/heavy;1", heavy);
    scratch.write("mine/CorvaneS/substances.tsv",
                  "name\tformula\theavy\nheavy\tC40H82\t-\npropane\tC3H8\t1-2-3\n");
    // The pair in the other order of its names: of the first home all the same.
    scratch.write("mine/CorvaneS/parameters/PR/vdW1/propane+methane;1",
                  edited("parameters/PR/vdW1/methane+propane;1", "text:\t", "text:\tmine "));
    const DataHome both = DataHome("mine").over(standard).over(standard);
    ASSERT_EQ(both.directories().size(), 2u);
    EXPECT_GT(corvane::open("PR", "propane", {0, both}).model->Tcrit(), 1300.0);
    EXPECT_TRUE(corvane::open("PR", "1-2-3", {7, both}).ideal);
    EXPECT_EQ(corvane::open("", "heavy", {0, both}).equation, "PR");
    EXPECT_EQ(corvane::open("MEOS", "propane", {0, both}).substance, "propane");
    EXPECT_EQ(corvane::parameter_sets(both, "PR", "propane"), (std::vector{1, 2, 3, 4, 5, 7}));
    const auto gas = corvane::open_mixture("PR+vdW1", {"methane", "propane"}, {.home = both});
    EXPECT_TRUE(std::string(gas.model->comment(0, 1)).starts_with("mine"));
    EXPECT_GT(gas.validity.T_triple[1], 85.0);  // of the second home's index
    EXPECT_FALSE(corvane::equations_for(DataHome("mine"), "propane").empty());
    EXPECT_THROW(corvane::open("PR", "propane", {0, DataHome("mine")}), OpenFailure);
    // Plug-ins: of the first home that has one, even if it is damaged.
    scratch.write("mine/CorvaneS/libthPR.dll", "no library");
    EXPECT_THROW(corvane::open("PR", "propane", {0, both}), OpenFailure);
    setenv("CORVANE_DATA", "mine", 1);
    EXPECT_EQ(DataHome::find().directories(), both.directories());
    unsetenv("CORVANE_DATA");
}

TEST(Open, APseudoComponentIsTheSetWithTheSameConstants) {
    for (char const* equation : {"PR", "SRK"}) {
        SCOPED_TRACE(equation);
        const auto file = corvane::open(equation, "propane");
        Model1 const& a = *file.model;
        corvane::PseudoComponent like{"C7+", a.Tcrit(), a.pcrit(), a.omega(), a.M()};
        const auto fluid = corvane::open(equation, "C7+", {.defined = {like}});
        Model1 const& b = *fluid.model;
        EXPECT_NEAR(b.vcrit(), a.vcrit(), 1e-9 * a.vcrit());
        for (double rho : {1e-5, 0.004, 0.012})
            EXPECT_NEAR(b.Z(rho, 300.0), a.Z(rho, 300.0), 1e-12 * std::fabs(a.Z(rho, 300.0)) + 1e-12);
        EXPECT_FALSE(fluid.ideal);
        // Translated volumes at (T, p) differ by c, in a mixture by the mean of c; nothing else does.
        like.c = 4.0;
        const std::string model = std::string(equation) + "+vdW1";
        const auto plain = corvane::open_mixture(model, {"methane", "propane"});
        auto moved = corvane::open_mixture(model, {"methane", "C7+"}, {.defined = {like}});
        EXPECT_EQ(moved.estimated.size(), 1u);
        moved.model->param(0, 0, 1, plain.model->param(0, 0, 1));
        Vector<double> x(2);
        x[0] = 0.3;
        x[1] = 0.7;
        const auto p = corvane::bubble_T(*plain.model, 280.0, x), q = corvane::bubble_T(*moved.model, 280.0, x);
        EXPECT_NEAR(q.p, p.p, 1e-9 * p.p);
        EXPECT_NEAR(1.0 / q.given.rho, 1.0 / p.given.rho - 0.7 * 4.0, 1e-7);
    }
    const auto asked = corvane::open_mixture("PR+vdW1", {"methane", "propane"}, {.sets = {3, 0}});
    EXPECT_EQ(asked.model->id(0, 0), 3);
    EXPECT_EQ(asked.model->id(1, 1), 1);
    EXPECT_EQ(asked.other_sets, (std::vector{std::pair(0, 1)}));
    const auto refused = [](corvane::PseudoComponent const& s, char const* equation) {
        EXPECT_THROW(corvane::open(equation, s.name, {.defined = {s}}), OpenFailure);
    };
    refused({"a", 500.0, 3.0, 0.3}, "PCSAFT");
    refused({"a", 500.0, 3.0, 0.3, 100.0, 1000.0}, "PR");
    refused({"a", 500.0, -3.0, 0.3}, "PR");
    refused({"a", 500.0, 3.0, std::nan("")}, "PR");
    refused({"../a", 500.0, 3.0, 0.3}, "PR");
}

TEST(Open, RefusesInOneSentenceThatNamesTheCulprit) {
    const Scratch scratch;
    const DataHome standard = DataHome::find();
    std::filesystem::create_directories("bad/CorvaneS/parameters/PR");
    std::filesystem::create_symlink(std::filesystem::canonical(standard.tree() / "libthPR.dll"),
                                    "bad/CorvaneS/libthPR.dll");
    scratch.write("bad/CorvaneS/libthJUNK.dll", "no library");
    scratch.write("bad/CorvaneS/parameters/PR/propane;1", "name:\tpropane\nid:\t1\n");
    ASSERT_EQ(mkfifo("bad/CorvaneS/substances.tsv", 0600), 0);  // read, it would wait for ever
    const DataHome bad("bad");
    struct Row {
        char const* says;
        std::function<void()> open;
    };
    for (Row const& row : {
             Row{"CorvaneS: did you mean PR?", [] { corvane::open("pr", "propane"); }},
             Row{"PR+vdW1 is a model of mixtures", [] { corvane::open("PR+vdW1", "propane"); }},
             // A slip is told, and what only looks like one is not.
             Row{"did you mean octane (C8H18)?", [] { corvane::open("PR", "oktane"); }},
             Row{"1_butanol (C4H10O) or", [] { corvane::open_mixture("PR+vdW1", {"butanol"}); }},
             Row{"unknown substance 'R123x'; all are in", [] { corvane::open("PR", "R123x"); }},
             Row{"aaaaa...'", [] { corvane::open("PR", std::string(120000, 'a')); }},
             Row{"unknown substance 'unobtainium'", [] { corvane::open("PR", "unobtainium"); }},
             Row{"unknown substance ''", [] { corvane::open("PR", ""); }},
             Row{"unknown substance '../PR/propane'", [] { corvane::open("PR", "../PR/propane"); }},
             Row{"not one substance", [] { corvane::open("PR", "C4H10O"); }},
             Row{"no set 77 for propane; sets: 1", [] { corvane::open("PR", "propane", {77, {}}); }},
             Row{"no parameters for", [] { corvane::open("MEOS", "aniline"); }},
             Row{"PR/propane;1, line 3", [&] { corvane::open("PR", "propane", {0, bad}); }},
             Row{"libthJUNK.dll", [&] { corvane::open("JUNK", "propane", {0, bad}); }},
             Row{"nowhere does not hold CorvaneS", [] { DataHome("nowhere"); }},
             Row{"is not an equation with a mixing", [] { corvane::open_mixture("PR", {"argon"}); }},
             Row{"no equation PR+none", [] { corvane::open_mixture("PR+none", {"argon"}); }},
             Row{"propane is named twice",
                 [] { corvane::open_mixture("PR+vdW1", {"propane", "C3H8"}); }},
             Row{"needs components", [] { corvane::open_mixture("PR+vdW1", {}); }},
         }) {
        SCOPED_TRACE(row.says);
        try {
            row.open();
            ADD_FAILURE() << "opened";
        } catch (std::exception const& e) {
            EXPECT_NE(std::string(e.what()).find(row.says), std::string::npos) << e.what();
            EXPECT_EQ(std::string(e.what()).find('\n'), std::string::npos) << e.what();
        }
    }
}

}  // namespace
