// What the program says and how it ends: arguments, exit code, parts of both outputs.
#include <cli/program.h>
#include <support/scratch.h>

namespace {
struct Case {
    std::string arguments;
    int code;
    char const *out, *err;  // parts, with a '|' between them
};

void expect_parts(std::string const& text, std::string const& parts) {
    std::istringstream list(parts);
    for (std::string part; std::getline(list, part, '|');)
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
}

void expect_all(std::vector<Case> const& cases, std::string const& before = "") {
    for (Case const& c : cases) {
        SCOPED_TRACE(c.arguments);
        const Outcome run = run_corvane(c.arguments, before);
        EXPECT_EQ(run.code, c.code) << run.err;
        expect_parts(run.out, c.out);
        expect_parts(run.err, c.err);
        EXPECT_TRUE(c.code == 0 || *c.out || run.out.empty()) << run.out;
        EXPECT_EQ(run.err.rfind("corvane: ", 0), *c.err ? 0u : run.err.npos) << run.err;
        EXPECT_EQ(run.err.empty(), !*c.err) << run.err;
    }
}

/// Puts the plug-in into a data home of its own; returns the text of a set for it.
std::string propane_set(Scratch const& scratch) {
    const auto tree = scratch.home() / "CorvaneS";
    std::filesystem::create_directories("CorvaneS");
    std::filesystem::copy_file(tree / "libthPR.dll", "CorvaneS/libthPR.dll");
    return Scratch::read(tree / "parameters/PR/propane;1");
}
}  // namespace

TEST(Cli, SaysWhatItIsAndWhatItCan) {
    expect_all({{"--version", 0, "corvane 0.", ""},
                {"--help", 0, "saturation|corvane state PR propane", ""},
                {"state --help", 0, "--rho|--unit-p|--reference", ""},
                {"pxy --help", 0, "two components: all compositions are searched", ""},
                {"list", 0, "# equations: |PR (|propane|74-98-6", ""},
                {"list --eos PR --substance CO2", 0, "carbon_dioxide|PR ", ""},
                {"list 124-38-9", 0, "carbon_dioxide  CO2", ""},
                {"list C2H6O", 0, "ethanol|dimethyl_ether", ""},
                {"list methane --csv", 0, "omega,Tb/K", ""},
                {"bubble PR+vdW1 methane=0.25 propane --T 250 --json", 0,
                 "\"schema\": 1|\"composition\": {\n  \"methane\": 0.25", ""},
                {"saturation PR CO2 --T 250 --precision 3", 0, "\n250    1.77   0.0243", ""},
                {"list 'ethyl alcohol' --json", 0, "\"substance\": \"ethanol\"", ""}});
    // The heading: program, equation, substance, set and units.
    expect_all({{"saturation PR CO2 --T 280", 0,
                 "# corvane 0.|saturation  eos PR  substance carbon_dioxide  set 1 {|# "
                 "T/K|p/MPa|rhoL/(mol/cm3)",
                 ""},
                {"state PR propane --T 300 --p 1 --reference formation", 0,
                 "reference state: enthalpy of formation", ""},
                {"state PR propane --T 300 --p 1", 0, "reference state: u = 0 and s = 0", ""}});
}

TEST(Cli, UnitsAndMixturesAreUnderstoodAsTheyAreWritten) {
    expect_all({{"state PR propane --T 26.85 --p 1 --unit-T °C --unit-rho kg/m³ --unit-v m^3/kg", 0,
                 " C | kg/m3 | m3/kg ", ""},
                {"viscosity propane --T 300 --p 0.1 --unit-eta µPa·s", 0, "eta/(uPa s)", ""},
                {"state methane=0.6 propane --T 250 --p 2", 0,
                 "no model was named: MEOS+GERG|liquid|vapour", ""},
                {"flash C7+=0.3 methane --T 250 --p 2 --define C7+ Tc=540 pc=2.7 omega=0.35", 0,
                 "no model was named", ""}});
}

TEST(Cli, WrongUseExitsWith2) {
    expect_all({{"", 2, "", "a command is required"},
                {"sttae PR propane", 2, "", "sttae: did you mean state?"},
                {"state PR propane --p 1", 2, "", "give two of --T, --p, --rho"},
                {"state PR propane --T 300", 2, "", "give two of"},
                {"state PR propane --T 300 --p 1 --rho 1", 2, "", "give two of"},
                {"state PR propane --rho 1 --v 1", 2, "", "give two of"},
                {"state PR propane --h 1 --q 1", 2, "", "--q goes with --T or --p"},
                {"state PR propane --T 300 --q 1.1", 2, "", "between 0 and 1"},
                {"state PR propane gas --T 300 --p 1", 2, "", "there are 3 words"},
                {"state PR propane --T 300 --p 1 --basis mass", 2, "", "are of mixtures"},
                {"flash PR+vdW1 methane --u 1 --s 0", 2, "", "--u does not go with --s"},
                {"state PR propane --T 300 --p 1 --composition a.csv", 2, "", "are of mixtures"},
                {"state PR propane --T 300 --p 1 --vlome", 2, "", "unexpected --vlome"},
                {"state PR propane --T 300 --p 1 --mas", 2, "", "--mas: did you mean --mass?"},
                {"state PR propane --T 3oo --p 1", 2, "", "--T: '3oo' is not a number"},
                {"state PR propane --T nan --p 1", 2, "", "--T: 'nan' is not a number"},
                {"state PR propane --T -5 --p 1", 2, "", "--T -5 K is not above zero"},
                {"state PR propane --T 300 --p 1 --unit-p stone", 2, "", "stone"},
                {"bubble PR+vdW1 methane=30% propane=70 --basis mass --T 250", 2, "",
                 "in percent or in amounts, not both"},
                {"saturation PR propane", 2, "", "one of --T, --p, --compare and --input"},
                {"saturation PR propane --T 300:200:10", 2, "", "does not lead from 300 to 200"},
                {"saturation PR propane --T 300:200", 2, "",
                 "not a range first:last:step or first:last/steps"},
                {"saturation PR propane --T 1:2:1e-9", 2, "", "more than 100000 points"}});
}

TEST(Cli, FailuresExitWith1AndNameWhatWasAsked) {
    expect_all(
        {{"saturation PR carbon_dioxide --T 310", 1, "",
          "saturation: PR carbon_dioxide at T = 310 K is not below the critical temperature "
          "304.1|K of the equation"},
         {"state PR propane --T 300 --p 2 --phase vapour", 1, "",
          "PR propane at T = 300 K, p = 2 MPa: volume finder returned a liquid volume only "
          "(ThException 10)"},
         {"state PR carbon_dioxid --T 300 --p 1", 1, "", "did you mean carbon_dioxide (CO2)?"},
         {"state PR xyzzyx --T 300 --p 1", 1, "", "unknown substance 'xyzzyx'; all are in "},
         {"state PR ../PR/propane --T 300 --p 1", 1, "", "unknown substance"},
         {"state PR C2H6O --T 300 --p 1", 1, "", "not one substance: dimethyl_ether, ethanol"},
         {"state pr propane --T 300 --p 1", 1, "", "no equation pr in |CorvaneS: did you mean PR?"},
         {"saturation PR+vdW1 propane --T 300", 1, "",
          "PR+vdW1 is a model of mixtures|there are |MEOS, "},
         {"bubble PCSAFT+LB helium=0.5 chloroform --T 330", 1, "",
          "PCSAFT has no parameters for helium; equations that have: MEOS, PR"},
         {"state nothing propane --T 300 --p 1", 1, "", "there are |PR"},
         {"state PR propane --set 77 --T 300 --p 1", 1, "",
          "PR has no set 77 for propane; sets: 1"},
         {"list --substance xenonn", 1, "", "unknown substance xenonn: did you mean xenon (Xe)?"},
         {"saturation PR propane --T 300 --home /nowhere", 1, "",
          "--home /nowhere does not hold CorvaneS"},
         {"saturation PR propane --compare /nowhere.csv", 1, "", "/nowhere.csv: no such file"},
         {"state PR propane --T 300 --p 1 >/dev/full", 1, "", "standard output"}});
}

TEST(Cli, OneFailingPointOfManyIsMarkedAndDoesNotEndTheRun) {
    const Outcome run =
        run_corvane("saturation PR carbon_dioxide --T 290,310,300 --csv --no-heading");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("T = 310 K is not below the critical"), std::string::npos);
    const auto lines = lines_of(run.out);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[2].rfind("310,,,,,,failed: ", 0), 0u) << lines[2];
    EXPECT_EQ(lines[3].rfind("300,6.", 0), 0u) << "Span & Wagner (1996): 6.7131 MPa";
}

TEST(Cli, NotesTellExtrapolatedMetastableAndUnstableStates) {
    expect_all({{"state PR CO2 --T 200 --p 0.01", 0, "extrapolated: below 216.592 K", ""},
                {"saturation PR CO2 --T 200,220", 0, "# extrapolated: below 216.592 K\n", ""},
                {"state PR propane --T 300 --p 0.9 --phase liquid", 0,
                 "metastable: the stable phase is vapour", ""},
                {"state PR propane --T 300 --p 2 --phase both", 0, "the only phase", ""},
                {"state PR propane --T 300 --rho 0.004 --phase single", 0,
                 "# phase  unstable|mechanically unstable, between vapour of", ""},
                {"state PR propane --T 300 --rho 0.004", 0, "# phase  liquid|vapour|amount", ""},
                {"mixture PR+vdW1 methane=0.5 propane --T 200 --rho 0.008", 1, "",
                 "no single phase has this density: its pressure falls|flash --rho"},
                {"dew PR+vdW1 CO2=0.3 decane --T 220 --branch upper", 0, "y is no vapour", ""},
                {"dew PR+vdW1 CO2=0.3 decane --T 220 --branch lower", 0, "dew", ""},
                {"state PR propane --T 400 --p 5", 0, "# phase  fluid", ""}});
}

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

TEST(Cli, WhereNothingIsFoundTheStatedRangeComesFirst) {
    expect_all({{"state MEOS water --T=-40 --unit-T C --p 0.1", 1, "",
                 "outside the stated range of the set (below 0.01 C): "}});
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
         {"state PR propane --T 300 --p 1 --set 0", 2, "", "0 is not the number of a set"},
         {"mixture PR+vdW1 methane=0.5 propane --T 200 --p 2 --set argon=3", 2, "", "argon is not a comp"},
         {"state PR x --T 300 --p 1 --define x Tc=540 pc=2.7", 2, "", "--define x: Tc, pc and omega are needed"},
         {"state PR x --T 300 --p 1 --define x Tc=54o", 2, "", "'Tc=54o' is not a number with a unit"},
         {"state PR x --T 300 --p 1 --define Tc=540", 2, "", "begins with a name"},
         {"state PCSAFT x --T 300 --p 1 --define x Tc=540 pc=2.7 omega=0.3", 1, "", "for PR and SRK alone"}});
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

TEST(Cli, PureSubstanceCommandsAnswerAndRefuse) {
    expect_all(
        {{"density PR propane --T 300 --p 1e-300 --strategy volav", 1, "", "no root: 1."},
         {"density PR propane --T 300 --p 1e-300", 1, "", "volume finder returned no solution"},
         {"density PR propane --T 300 --p 0.9 --strategy all", 0,
          "volav     liquid|volf1     vapour|volume    liquid", ""},
         {"density PR propane --T 300", 2, "", "give --T and --p, or --input"},
         {"critical PR CO2", 0, "solved|parameter-file|measured", ""},
         {"solid PR CO2 --T 200,300", 1, "failed: ", "T = 300 K: value out of range"},
         {"solid PR helium --T 1", 1, "", "no solid data of helium: no solid-state data available"},
         {"solid PR propane --T 80", 0, "solid propane: anchored at 85.525 K|volume of melting m", ""},
         {"solid PR CO2", 2, "", "either --T or --melting"},
         {"solid PR CO2 --melting 100 --solid-data sublimation", 1, "",
          "the solid is still stable at 216.602 K"},
         {"solid PR phenanthrene --melting 1 --solid-data sublimation", 1, "",
          "vapour pressure there does not fit the sublimation curve"},
         {"solid PR ethanol --melting 0.1,50", 0, "slope estimated: no volume of melting", ""},
         {"solid CO2 --melting 0.1", 0, "the solid sublimes", ""},
         {"viscosity PR nitrogen --T 300 --p 1", 1, "", "no friction-theory set of nitrogen"},
         {"viscosity propane --T 300 --p 0.1", 0, "set 2 of MEOS is the best that friction theory knows", ""},
         {"viscosity MEOS propane --T 300 --p 1", 1, "", "made with set 2 of MEOS: give --set 2"},
         {"viscosity MEOS heptane --T 300,254 --p 1", 0,
          "\n254 |# extrapolated: friction theory below 285 K", ""},
         {"viscosity MEOS heptane --T 1600", 0, "extrapolated: dilute gas above 1500 K", ""},
         {"viscosity MEOS octane --friction-set 2 --T 300 --p 0.1", 0,
          "# friction theory made with set 2 of the equation, not 1", ""},
         {"viscosity MEOS CO2 --T 300 --p 0.1,10", 0, "friction theory, set 1|pa/MPa", ""},
         {"range PR propane --show rho,xyz", 2, "", "no property \"xyz\"; there are T p rho"}});
}

TEST(Cli, RangeAsksOnStandardErrorAndAnswersOnStandardOutput) {
    const Outcome run =
        run_corvane("range PR propane --show Z --csv --no-heading", "echo '(300 400 50) 1' |");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "T/K: p/MPa: ");
    const auto lines = lines_of(run.out);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[3].rfind("400,1,fluid,0.92", 0), 0u) << lines[3];
    EXPECT_EQ(run_corvane("range PR propane", "echo what |").code, 1);
}

TEST(Cli, MixturesNameTheirPairsAndRefuseBadCompositions) {
    expect_all(
        {{"mixture PR+vdW1 methane=0.7 propane=0.3 --T 300 --p 5", 0,
          "pair methane + propane: set 1 {kij of Knapp|cp           66.", ""},
         {"mixture PR+vdW1 CO2=0.5 r134a --T 300 --p 1", 0, "kij estimated: 0", ""},
         {"mixture PR+vdW1 methane=7 propane=3 --T 300 --p 5", 2, "", "methane=7: a mole fraction"},
         {"mixture PR+vdW1 methane propane --T 300 --p 5", 2, "", "both lack a mole fraction"},
         {"mixture PR+vdW1 methane=0.5 CH4=0.5 --T 300 --p 5", 2, "", "methane is named twice"},
         {"mixture PR methane=1 --T 300 --p 5", 2, "",
          "PR is not an equation with a mixing theory"},
         {"mixture methane=0.7 propane --T 300 --p 5", 0,
          "no model was named: MEOS+GERG is taken, all pairs are published|cp ", ""},
         {"mixture methane=0.7 propane --T 300 --p 5 --set 1", 2, "", "--set: name the model"},
         {"mixture PR+vdW methane=1 --T 300 --p 5", 1, "", "did you mean PR+vdW1?"},
         {"mixture PR+vdW1 methane=0.5 propane=0.4 --T 300 --p 5", 0, "divided by their sum", ""}});
}

TEST(Cli, CertifiedEquilibriaAnswerAndRefuse) {
    expect_all(
        {{"bubble PR+vdW1 methane=0.3 propane --T 250:370:120 --csv", 1,
          "370,,0.3,0.7,,,,,,,,,,,,,,\"failed: no solution: |(bubble_T, |critical point at T = "
          "346.|"
          "# certified: potentials agree to ",
          "propane(0.7) at T = 370 K: bubble point: no solution: "},
         {"dew PR+vdW1 methane=0.7 propane --T 310", 1, "", "dew point: no solution"},
         {"dew PR+vdW1 methane=0.7 propane --T 300 --p 1", 2, "", "either --T or --p"},
         {"bubble PR+vdW1 methane=0.7 propane --T 300 --branch left", 2, "", "left"},
         {"bubble PR+vdW1 CO2=0.5 r134a --T 280 --json", 0, "\"flags\": \"estimated_pairs\"", ""},
         {"flash PR+vdW1 methane=0.2 propane --T 400 --h 14000", 0,
          "state 2 of 2 with these values", ""},
         {"flash PR+vdW1 methane=0.5 propane=0.5 --T 280", 2, "",
          "give two of --T, --p, --rho or --v"},
         {"flash PR+vdW1 methane=0.5 propane=0.5 --p 2 --h 1e9,4000 --csv", 1,
          ",2,,,,,,,,1000000000,,,,,,,,,|failed: no solution: ",
          "h = 1000000000 J/mol: no solution"},
         {"azeotrope PR+vdW1 methane propane --T 250", 1, "", "azeotrope: no solution"},
         {"three-phase PR+vdW1 methane=0.5 propane", 2, "", "without mole fractions"},
         {"diagram PR+vdW1 propane butane --unit-p bar", 0,
          "from pure propane (T = 369.89 K, p = 42.512 bar)", ""},
         {"three-phase PR+vdW1 ethanol water --T 300 --plot a.svg", 2, "", "whole lines"},
         {"flash PR+vdW1 methane=0.5 propane=0.5 --T 400,280 --p 2", 0,
          "400    2      vapour  1.0|280    2      liquid  0.2", ""}});
}

TEST(Cli, AnInterruptedListKeepsItsPoints) {
    // A search of every branch takes so long per point that the list cannot end before.
    const std::string list =
        "bubble PR+vdW1 methane=0.3 propane=0.7 --T 200:300:0.002 --branch upper --csv";
    const Outcome run = interrupt_corvane(list);
    EXPECT_EQ(run.code, 130);
    const auto lines = lines_of(run.out);
    ASSERT_GT(lines.size(), 8u) << run.out;
    EXPECT_NE(lines.back().find("# interrupted: "), std::string::npos) << lines.back();
    EXPECT_NE(lines.back().find(" of 50001 points"), std::string::npos) << lines.back();
}

// timeout and some shells send it to the program and to its group: the second one once left nothing
// at all.
TEST(Cli, AnInterruptionThatComesTwiceKeepsWhatThereIs) {
    const Outcome run = interrupt_corvane(
        "residue-curves PR+vdW1 ethanol water hexane --p 0.1 --mesh 20 --csv", kHasWorked, "",
        // when the first one has been handled
        "while read -r key mask; do [ $key = ShdPnd: ] && break; done </proc/$pid/status; kill "
        "-INT $pid; wait $pid");
    EXPECT_EQ(run.code, 130);
    expect_parts(run.out, "curve,T/K,xi|# interrupted: curves are missing");
}

// A writer that keeps the pipe open: the row is answered before another one comes, and waiting can
// be interrupted.
TEST(Cli, RowsOfAPipeAreAnsweredAsTheyCome) {
    const Scratch scratch;
    const Outcome run = interrupt_corvane(
        "state PR propane --input rows --home " + scratch.home().string() + " >answers",
        "grep -qs ^300,0.5, answers",
        "mkfifo rows; exec 3<>rows; printf 'T/K,p/MPa\\n300,0.5\\n' >&3;");
    EXPECT_EQ(run.code, 130);
    expect_parts(Scratch::read("answers"), "T/K,p/MPa,|\n300,0.5,");
    expect_parts(run.err, "interrupted after 1 rows");
}

TEST(Cli, MixtureEquilibriaAnswerAndRefuse) {
    expect_all(
        {{"equilibrium PR+vdW1 methane=0.3 propane --T 250:370:120 --csv", 1,
          "370,,0.3,0.7,,,,,,,,,,,,,,\"failed: no solution: |this composition has a critical",
          "T = 370 K: bubble point: no solution"},
         {"equilibrium PR+vdW1 methane=0.3 propane", 2, "", "either --T or --p"},
         {"equilibrium PR+vdW1 methane propane --T 250 --scan ethane=0:1:0.5", 2, "",
          "ethane is not a component"},
         {"equilibrium PR+vdW1 methane=0.5 propane --T 250 --scan methane=0:1:0.5", 2, "",
          "name components only"},
         {"equilibrium PR+vdW1 methane propane --T 250 --scan methane=0:2:1", 2, "",
          "between 0 and 1"},
         {"split PR+vdW1 methane=0.9 propane --T 300 --p 5", 0, "lies outside", ""},
         {"split PR+vdW1 methane propane --T 400 --p 5,6", 1, "failed: does not split",
          "at T = 400 K, p = 6 MPa: does not split into two fluid phases"},
         {"split PR+vdW1 methane=1 --T 400 --p 5", 2, "", "needs two components"},
         {"critical-line PR+vdW1 CO2 decane --kij 0.1141", 0,
          "ends at a critical end point, where another phase coexists|kij given: 0.1141|"
          "# line 1: |# line 2: |; the other phase has x_carbon_dioxide = 0.8|# certified: "
          "critical",
          ""},
         {"critical-line PR+vdW1 CO2 decane --kij 0.1141 --from 1", 0,
          "the line goes on under tension|not certified", ""},
         {"critical-line PR+vdW1 CO2 decane --at 0.5 --plot a.svg", 2, "", "--plot draws"},
         {"critical-line PR+vdW1 methane propane --from ethane", 2, "", "not a component"},
         {"critical-line PR+vdW1 methane propane --step 0", 2, "", "--step: from above 0"},
         {"critical-line PR+vdW1 methane propane --T 300", 2, "", "--T and --rho together"},
         {"critical-line PR+vdW1 methane propane --kij methane+ethane=0", 2, "",
          "ethane is not a component"},
         {"solubility PR+vdW1 methane CO2 --solid CO2 --T 150,350 --p 3", 1, "\n350 ",
          "T = 350 K, p = 3 MPa: the data of solid carbon_dioxide end at 346.5472 K"},
         {"solubility PR+vdW1 methane CO2=0.01 --solid CO2 --T 170 --p 3", 0, "not saturated", ""},
         {"solubility PR+vdW1 methane CO2 --solid CO2 --T 210 --p 0.001", 1, "",
          "the pure component is no solid"},
         {"solubility PR+vdW1 methane CO2 --solid methane --T 80 --p 1", 1, "", "is not stable"},
         {"solubility PR+vdW1 methane CO2 --solid methane --T 80 --p 1 --phase liquid", 0,
          "metastable: carbon_dioxide freezes, too", ""},
         {"solubility PR+vdW1 methane CO2 --solid CO2 --T 150 --p 3 --phase vapour --solid-data "
          "fusion",
          2, "", "--phase goes with --solid-data sublimation"},
         {"solubility PR+vdW1 methane helium --solid helium --T 80 --p 1", 1, "",
          "no solid data of helium"}});
}

TEST(Cli, ActivityVirialAndIdealCurvesAnswerAndRefuse) {
    const std::string pair = "PR+vdW1 methane=0.1 butane --p 1 ";
    expect_all({{"activity PR+vdW1 propane=0.4 butane --T 300 --p 1", 0,
                 "gamma_propane|hE |all on the liquid density root", ""},
                {"excess " + pair + "--T 300", 0, "pure methane is supercritical there, and no liquid", ""},
                {"excess " + pair + "--T 420", 0, "pure butane is vapour there: it has no liquid", ""},
                {"excess " + pair + "--T 370 --phase stable --json", 0, "rho0_butane", ""},
                {"excess PR+vdW1 methane=0 butane --T 380 --p 1.4", 0, "pure butane is metastable there", ""},
                {"excess PR+vdW1 propane butane --scan propane=0:1/2 --T 300 --p 1,2 --csv --mass", 0,
                 "gE/(kJ/kg)|300,2,0.5,0.5,", ""},
                {"excess PR+vdW1 propane butane --T 300 --p 1", 2, "", "both lack a mole fraction"},
                {"excess PR+vdW1 propane=0.5 butane --T 300", 2, "", "give --T and --p, or --input"},
                {"excess PR+vdW1 propane butane --scan ethane=0:1/2 --T 300 --p 1", 2, "",
                 "ethane is not a component"},
                {"excess PR propane=0.5 butane --T 300 --p 1", 2, "", "PR is not an equation with a mixing"},
                {"henry PR+vdW1 methane butane --T 300", 0, "methane 0.000000  butane 1.000000|h_sol", ""},
                {"henry PR+vdW1 methane butane --T 300 --p 0.01", 0, "the liquid solvent is metastable there", ""},
                {"henry PR+vdW1 methane butane --T 420 --p 1", 0, "the solvent is no liquid at T and p", ""},
                {"henry PR+vdW1 methane butane --T 450", 1, "", "above the critical point"},
                {"henry PR+vdW1 methane=0.1 butane --T 300", 2, "", "the solute, and has no mole fraction"},
                {"henry PR+vdW1 methane --T 300", 2, "", "give the solute, then the solvent"},
                {"henry PR+vdW1 methane propane butane --T 300", 2, "", "both lack a mole fraction"},
                {"virial nitrogen --T 300,2500", 0, "B/(cm3/mol)|extrapolated", ""},
                {"virial PR+vdW1 methane butane --T 300", 0, "B_methane_butane|no mole fractions were given", ""},
                {"virial PR propane --T 300 --kij 0.1", 2, "", "are of mixtures"},
                {"virial PR propane", 2, "", "give --T, or --input"},
                {"ideal-curve nitrogen --T 300", 0, "joule-thomson  300|# joule-thomson (dT/dp = 0", ""},
                {"ideal-curve methane --kind joule", 1, "", "it does not begin between"},
                {"ideal-curve nitrogen --kind boyle --T 500", 1, "", "no point at these temperatures"},
                {"ideal-curve methane --kind all --T 300 --csv", 1, "boyle,300|joule,,,,,failed", "joule curve"},
                {"ideal-curve nitrogen --T 300 --plot a.svg", 2, "", "--plot draws curves"},
                {"ideal-curve PR nitrogen --kind inversion", 2, "", "inversion"}});
    const Outcome parts = run_corvane("flash PR+vdW1 methane propane --input -",
                                      "printf 'T/K,q,x_methane\\n260,0,0.4\\n250,0.5,0.5\\n' |");
    EXPECT_EQ(parts.code, 0) << parts.err;
    expect_parts(parts.out, "260,0,0.4,|,2,0,|,ok\n250,0.5,0.5,|,2,0.5,");
    const Outcome file = run_corvane("excess PR+vdW1 propane butane --input - --threads 2",
                                     "printf 'T;p/bar;x_propane\\n300;10;0,4\\n;1;0,5\\n' |");
    EXPECT_EQ(file.code, 1);
    expect_parts(file.out, "T;p/bar;x_propane;|gamma_propane|300;10;0,4;|;ok|failed: T: nothing is given");
}

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
