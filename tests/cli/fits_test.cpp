// Fits of one system and of lists.
#include <cli/cases.h>
#include <support/scratch.h>

TEST(Cli, FitsRefuseWhatMakesNoSenseAndListsGiveTables) {
    const std::string file = " --data " CORVANE_SOURCE "/examples/fit/hexane.csv",
                      good = "fit PR hexane --adjust omega" + file;
    expect_all({{good + " --json", 0, "\"parameter\": \"omega\"|\"sets\"", ""},
                {good + " --points --folds 3", 0, "leverage|predicted in cross-validation", ""},
                {"fit PR hexane --adjust omega", 2, "", "give measured data"},
                {"fit PR" + file, 2, "", "an equation and a substance"},
                {"fit PR hexane" + file, 2, "", "of Ts, vs, omega"},
                {"fit PR hexane --adjust kappa" + file, 1, "", "there are Ts, vs, omega"},
                {good + " --start m=1", 2, "", "'m' is not adjusted"},
                {good + " --bounds omega=1", 2, "", "NAME=LOWER:UPPER"},
                {good + " --prior omega=0.3:0", 2, "", "above zero"},
                {good + " --quantities w", 2, "", "none of 'w'"},
                {good + " --weight a.csv=2", 2, "", "none of the files"},
                {good + " --new-set 9", 2, "", "go with --out"},
                {good + " --batch list.csv", 2, "", "takes models"},
                {good + " --out /dev/full", 1, "omega  ", "Not a directory"},  // the result is shown all the same
                {"fit PR hexane --adjust omega --data /nowhere.csv", 1, "", "no such file"}});
    const Scratch scratch;
    scratch.write("list.csv",
                  "model,first,data,adjust\nPR,hexane," CORVANE_SOURCE
                  "/examples/fit/hexane.csv,omega\nPR,nosuch," CORVANE_SOURCE
                  "/examples/fit/hexane.csv,omega\n");
    const Outcome run = run_corvane("fit --batch list.csv --threads 2 --home " + scratch.home().string());
    EXPECT_EQ(run.code, 1) << run.err;
    expect_parts(run.out, "PR hexane|omega=0.|failed: |2 fits, 1 failed");
    scratch.write("pair.csv",
                  "T/K,p/MPa,H_methane/MPa,gammainf_methane,hE/(kJ/mol),x_methane\n"
                  "250,,20,,,\n250,1,,1.1,,\n200,5,,,-0.1,0.5\n");
    const Outcome kinds =
        run_corvane("fit PR+vdW1 methane propane --data pair.csv --adjust kij --points --home " +
                    scratch.home().string());
    EXPECT_EQ(kinds.code, 0) << kinds.err;
    expect_parts(kinds.out, "H_methane|gammainf_methane|hE");
}

// Bubble points of two pairs with k_ij = 0.0123, in one fit with one value, which both files hold.
TEST(Cli, PairsOfAListShareParameters) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string(), list = "fit --batch list.csv" + home;
    for (char const* heavy : {"propane", "butane"})
        scratch.write(heavy + std::string(".csv"),
                      run_corvane("bubble PR+vdW1 methane " + std::string(heavy) + " --kij 0.0123 --input -" + home,
                                  "printf 'T/K,x_methane\\n260,0.1\\n260,0.2\\n260,0.3\\n' |")
                          .out);
    scratch.write("list.csv", "model,first,second,data,adjust\nPR+vdW1,methane,propane,propane.csv,kij\n"
                              "PR+vdW1,methane,butane,butane.csv,lij kij\n");
    const Outcome run = run_corvane(list + " --share kij --start kij=0.2 --out mine --new-set 9");
    EXPECT_EQ(run.code, 0) << run.err;
    expect_parts(run.out, "components methane + propane, methane + butane|kij          0.2000000  0.01230|"
                          "methane + butane butane.csv y: 3 points|methane+propane;9|methane+butane;9");
    for (char const* heavy : {"propane", "butane"})
        expect_parts(Scratch::read("mine/CorvaneS/parameters/PR/vdW1/methane+" + std::string(heavy) + ";9"),
                     "kij:\t0.0123|source:\tfitted to " + std::string(heavy) + ".csv");
    EXPECT_EQ(run_corvane(list + " --share kij --plot left.svg").code, 0);
    expect_parts(Scratch::read("left.svg"), "methane + propane p|methane + butane y, before|deviation / %");
    expect_all({{list + " --share kij --points", 0, "system|methane + propane  propane.csv", ""},
                {list + " --share kij --json", 0, "\"system\": \"methane + butane\"", ""},
                {list + " --share m", 2, "", "'m' is not adjusted"},
                {list + " --points", 2, "", "without --share"},
                {"fit PR+vdW1 methane propane --data propane.csv --adjust kij --share kij" + home, 2, "",
                 "goes with --batch"}});
}
