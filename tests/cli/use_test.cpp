// What the program says and how it ends, whatever the command.
#include <cli/cases.h>

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
                {"mixture PR+vdW1 methane water=500ppm --T 300 --p 5", 0, "water 0.0005000000", ""},
                {"bubble PR+vdW1 methane=50% propane=5e5ppm --basis mass --T 250", 0, "mole fractions from those by mass", ""},
                {"property-diagram CO2 --kind tRHO --isobars 5", 0, "bubble", ""},
                {"state R134a --p 0.2 --h 25000", 0, "--reference IIR, ASHRAE, NBP, triple, formation takes another one", ""},
                {"solid ice --T 260", 0, "substance water", ""},
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
                 "in parts (percent, ppm) or in amounts, not both"},
                {"bubble PR+vdW1 propane=40 butane=60 --T 250", 2, "", "write propane=40% or, of amounts, --basis"},
                {"density PR+vdW1 propane=0.5 butane --T 300 --p 2", 2, "", "PR+vdW1 is a model of mixtures, for which there are"},
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

TEST(Cli, WhereNothingIsFoundTheStatedRangeComesFirst) {
    expect_all({{"state MEOS water --T=-40 --unit-T C --p 0.1", 1, "",
                 "outside the stated range of the set (below 0.01 C): |below the triple point (0.01 C) a solid may be "
                 "stable: corvane solid water"},
                {"state water --T=-1 --unit-T C --p 0.1", 0, "extrapolated: below 0.01 C|below the triple point (0.01 C) a solid may be stable", ""}});
}
