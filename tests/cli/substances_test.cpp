// Data homes, substances of one's own, ranges that files state.
#include <cli/cases.h>
#include <support/scratch.h>

namespace {
/// Puts the plug-in into a data home of its own; returns the text of a set for it.
std::string propane_set(Scratch const& scratch) {
    const auto tree = scratch.home() / "CorvaneS";
    std::filesystem::create_directories("CorvaneS");
    std::filesystem::copy_file(tree / "libthPR.dll", "CorvaneS/libthPR.dll");
    return Scratch::read(tree / "parameters/PR/propane;1");
}
}  // namespace

TEST(Cli, FindsTheDataHomeInTheStatedOrder) {
    const Scratch scratch;
    const std::string home = scratch.home().string(), here = scratch.dir().string();
    const std::string state = "state PR propane --T 300 --p 1";
    // A checkout without plug-ins is passed over, the build tree's home found.
    scratch.write("CorvaneS/parameters/PR/propane;1", "damaged\n");
    EXPECT_EQ(run_corvane(state).code, 0);
    // With a plug-in the working directory comes first ...
    std::filesystem::copy_file(scratch.home() / "CorvaneS/libthPR.dll", "CorvaneS/libthPR.dll");
    const Outcome damaged = run_corvane(state);
    EXPECT_EQ(damaged.code, 1);
    EXPECT_NE(damaged.err.find("CorvaneS/parameters/PR/propane;1, line 2: "),
              std::string::npos)
        << damaged.err;
    // ... but after the environment, and that after the option.
    EXPECT_EQ(run_corvane(state, "CORVANE_DATA=" + home).code, 0);
    EXPECT_EQ(run_corvane(state, "CORVANE_DATA=/nowhere").code, 1);
    EXPECT_EQ(run_corvane(state + " --home " + home, "CORVANE_DATA=/nowhere").code, 0);
    // Nobody else's code is loaded from it, unless it is named.
    std::filesystem::permissions("CorvaneS", std::filesystem::perms::all);
    const Outcome passed = run_corvane(state);
    EXPECT_EQ(passed.code, 0);
    EXPECT_NE(passed.err.find("passed over, because others can write to " + here + "/CorvaneS;"),
              std::string::npos)
        << passed.err;
    EXPECT_EQ(run_corvane(state + " --home .").code, 1);
    // What a named home lacks is that of the build tree.
    scratch.write("mine/CorvaneS/substances.tsv", "name\tformula\tCAS\npropane\tC3H8\t1-2-3\n");
    for (char const* way : {" --home mine", ""})
        EXPECT_EQ(run_corvane("viscosity MEOS 1-2-3 --set 2 --T 300 --p 1" + std::string(way),
                              *way ? "" : "CORVANE_DATA=mine").code, 0);
    EXPECT_EQ(run_corvane("solid PR 1-2-3 --T 80 --home mine").code, 0);
    EXPECT_NE(run_corvane("list 1-2-3 --home mine").out.find("mine, /"), std::string::npos);
    // A relative name of a file with published points is one of the first working directory.
    scratch.write("points.csv", "T_K,p [bar]\n280,41.607\n");
    EXPECT_EQ(run_corvane("saturation PR CO2 --compare points.csv --home " + home).code, 0);
}

TEST(Cli, SubstanceWithoutIdealGasTableOrStandardSet) {
    const Scratch scratch;
    std::string set = propane_set(scratch);  // of a substance that no other home knows
    set.replace(set.find("propane"), 7, "unlisted");
    set.replace(set.find("id:\t1"), 5, "id:\t4");
    scratch.write("CorvaneS/parameters/PR/unlisted;4", set);
    expect_all({{"state PR unlisted --T 300 --p 1", 0, "set 4 {|left out|h_res", ""},
                {"state PR unlisted --T 300 --p 1 --reference formation", 1, "",
                 "no ideal-gas heat capacities available (ThException 3)"},
                {"state PR unlisted --T 300 --p 1 --set 1", 1, "", "no set 1 for unlisted; sets: 4"}});
    EXPECT_EQ(run_corvane("state PR unlisted --T 300 --p 1").out.find("\nh  "), std::string::npos);
    scratch.write("CorvaneS/ideal/unlisted", "2\n300 70\n300 71\n");
    expect_all({{"state PR unlisted --T 300 --p 1", 1, "",
                 "the ideal-gas table (|CorvaneS/ideal/unlisted): duplicate x data"}});
    set.replace(set.find("omega:\t0."), 9, "omega:\t0,");
    scratch.write("CorvaneS/parameters/PR/unlisted;4", set);
    expect_all({{"state PR unlisted --T 300 --p 1", 1, "",
                 "CorvaneS/parameters/PR/unlisted;4, line 10: "}});
}

TEST(Cli, SubstancesDefinedOnTheCommandLine) {
    const std::string c7 = "--define C7+ Tc=540 pc=27bar omega=0.35 M=96";
    expect_all(
        {{"state PR C7+ --T 300 --p 1 " + c7, 0, "C7+ is defined here: Tc 540 K, pc 2.7 MPa|left out", ""},
         {"saturation SRK C7+ --T 100 --units bar " + c7, 0, "rhoL/(kg/m3)", ""},
         {"bubble PR+vdW1 methane=0.3 propane=0.4 C7+ --T 300 --define 'C7+ Tc=540 pc=2.7 omega=0.35'",
          0, "pair methane + C7+: no published parameters, kij estimated: 0", ""},
         {"flash PR+vdW1 C7+=50% methane --T 300 --p 2 --kij C7++methane=0.03 " + c7, 0, "kij given: 0.03|liquid", ""},
         {"flash PR+vdW1 methane=50% C7+ --h 300 --p 2 " + c7, 1, "", "ideal"},
         {"mixture PR+vdW1 methane=0.5 propane --T 200 --p 2 --set methane=3", 0,
          "component methane: set 3|component propane: set 1|made for other sets", ""},
         {"bubble PR+HV ethanol=0.4 water --T 350", 0,
          "kij estimated: 0, as PR+vdW1; the rule wants alpha, C12 and C21 of the pair: corvane fit PR+HV", ""},
         {"bubble MEOS+GERG propane=0.3 dodecane --T 400", 0,
          "no published parameters, reducing parameters from PCSAFT+LB (pair set 3), bubble pressures off by some", ""},
         {"bubble MEOS+GERG propane=0.3 dodecane --T 400 --no-prediction", 0, "all reducing parameters 1", ""},
         {"state PR propane --T 300 --p 1 --set 0", 2, "", "0 is not the number of a set"},
         {"mixture PR+vdW1 methane=0.5 propane --T 200 --p 2 --set argon=3", 2, "", "argon is not a comp"},
         {"state PR x --T 300 --p 1 --define x Tc=540 pc=2.7", 2, "", "--define x: Tc, pc and omega are needed"},
         {"state PR x --T 300 --p 1 --define x Tc=54o", 2, "", "'Tc=54o' is not a number with a unit"},
         {"state PR propane --T 300 --p 1 " + c7, 2, "", "--define C7+: there is no component of this name"},
         {"bubble PR+vdW1 methane=0.3 propane --T 300 " + c7, 2, "", "--define C7+: there is no component of this name"},
         {"state PR x --T 300 --p 1 --define Tc=540", 2, "", "begins with a name"},
         {"state PCSAFT x --T 300 --p 1 --define x Tc=540 pc=2.7 omega=0.3", 1, "", "for PR and SRK alone"}});
}

// What tells a liquid from a vapour is not the mass of those components alone whose molar mass is known: without
// M everything molar is as with it, and what is per mass is refused.
TEST(Cli, ASubstanceWithoutMolarMassChangesNothingButUnits) {
    const std::string c7 = " --no-heading --define C7+ Tc=540 pc=2.7 omega=0.35";
    for (std::string const asked : {"flash PR+vdW1 methane=0.5 C7+ --T 300 --p 5", "bubble PR+vdW1 methane=0.5 C7+ --T 300",
                                    "dew PR+vdW1 methane=0.5 C7+ --T 400", "pxy PR+vdW1 methane C7+ --T 400",
                                    "envelope PR+vdW1 methane=0.5 C7+", "ternary PR+vdW1 methane propane C7+ --T 300 --p 5"}) {
        SCOPED_TRACE(asked);
        const Outcome without = run_corvane(asked + c7), with = run_corvane(asked + c7 + " M=96");
        EXPECT_EQ(with.code, 0) << with.err;
        EXPECT_EQ(without.out, with.out);
    }
    expect_all({{"flash PR+vdW1 methane=0.5 C7+ --T 300 --p 5 --mass" + c7, 1, "", "needs the molar mass, which is not known"},
                {"flash PR+vdW1 methane=50 C7+=50 --basis mass --T 300 --p 5" + c7, 1, "", "the molar mass of C7+ is not known"}});
    const Outcome file = run_corvane("flash PR+vdW1 methane C7+ --input -" + c7, "printf 'T,p,w_methane\n300,5,0.5\n' |");
    EXPECT_EQ(file.code, 1);
    expect_parts(file.out, "the molar mass of C7+ is not known");
}

TEST(Cli, RangesThatFilesStateAreHeldAgainstTheState) {
    const Scratch scratch;
    std::string set = propane_set(scratch);
    set.resize(set.find("valid:"));
    scratch.write("CorvaneS/parameters/PR/propane;1", set + "valid:\t250 320 2\r\n");
    scratch.write("CorvaneS/ideal/propane", "3\n200 60\n300 74\n400 94\nvalid:\t- 310\n");
    expect_all(
        {{"state PR propane --T 300 --p 1", 0,
          "range of the set: from 250 K to 320 K and up to 2 MPa", ""},
         {"state PR propane --T 300 --p 1 --json --unit-T C", 0, "from -23.15 C to 46.85 C", ""},
         {"state PR propane --T 330 --p 3", 0,
          "# liquid: extrapolated: above 320 K, above 2 MPa, ideal-gas data above 310 K", ""},
         {"state PR propane --T 190 --p 1", 0, "below 250 K, ideal-gas data below 200", ""},
         {"saturation PR propane --T 315", 0, "\n315", ""}});
    EXPECT_EQ(run_corvane("state PR propane --T 310 --p 2").out.find("extrapolated"),
              std::string::npos);
    EXPECT_EQ(run_corvane("saturation PR propane --T 315").out.find("extrapolated"),
              std::string::npos)
        << "no ideal-gas data among these columns";
}
