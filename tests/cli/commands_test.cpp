// What each command answers and what it refuses.
#include <cli/cases.h>

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
         {"transport argon --T 300", 1, "", "no liquid and vapour above the critical temperature: give --p"},
         {"transport propane --T 300,400 --csv", 1, "300,|300,|400,,,,,,,failed", "at T = 400 K: no liquid"},
         {"transport PR+vdW1 methane=0.3 propane --T 280", 2, "", "a mixture takes --T and --p"},
         {"transport PR+vdW1 methane=0.3 propane --T 280 --p 3", 0, "transport  model PR+vdW1|eta/(uPa s)  lambda|second source", ""},
         {"transport PR r1336mzz_z --T 300 --p 0.1", 0, "viscosity: an estimate, off by up to 80 %", ""},
         {"diffusion water", 2, "", "give --T"},
         {"diffusion water --T 700", 1, "", "above the critical temperature: give --p"},
         {"diffusion water --T 300 --kij 0.1", 2, "", "are of mixtures"},
         {"diffusion PR r1336mzz_z --T 300 --p 0.1", 0, "diffusion: an estimate, off by up to 80 %|extrapolated", ""},
         {"diffusion 1_2_pentanediol --T 400 --p 0.1", 0, "no viscosity of 1_2_pentanediol", ""},
         {"diffusion PR+vdW1 methane=0.5 propane=0.2 butane --T 300 --p 1", 1, "", "of two components, not of 3"},
         {"diffusion PR+vdW1 methane=0.5 propane --T 300", 2, "", "a mixture takes --T and --p"},
         {"interface PR+vdW1 methane=0.5 decane --T 311 --p 200", 1, "", "no liquid beside one vapour, but liquid"},
         {"interface PR+vdW1 methane=0.5 decane --T 900", 1, "", "bubble point: no solution"},
         {"interface PR+vdW1 methane decane --T 300", 2, "", "both lack a mole fraction"},
         {"interface PR+vdW1 methane=0.3 1_2_pentanediol --T 400", 1, "", "no surface tension of 1_2_pentanediol"},
         {"interface MEOS+GERG methane=0.3 propane --T 250", 1, "", "profile: gave up: the potential is below"},
         {"range PR propane --show rho,xyz", 2, "", "no property \"xyz\"; there are T p rho"}});
}

// One row is PR by its formula (scripts/cubic_values), the other has lost digits.
TEST(Cli, EquationsAreComparedWithPrintedValues) {
    const std::string titles = "printf 'substances,set,x,T,rho,quantity,value,within,R,source\\n";
    expect_all(
        {{"check-equation PR propane --values -", 1,
          "printed values: Ar|-2.706218773|, printed -2.7062 (a book)|1 of 39 checks failed", ""}},
        titles +
            "propane,1,,296,0.0124,Ar,-2.7062187736,1e-10,,\\npropane,1,,296,0.0124,Ar,-2.7062,1e-"
            "6,,a book\\n' |");
    expect_all({{"check-equation PR propane --values -", 1, "", "-:2: no quantity Az"}},
               titles + "propane,1,,296,0.0124,Az,-2.7,1e-6,,\\n' |");
    expect_all({{"check-equation PR+vdW1 methane propane --values -", 1, "", "x must have a number for each"}},
               titles + "methane+propane,1,0.5,296,0.0124,Ar,-2.7,1e-6,,\\n' |");
    expect_all({{"check-equation PR propane --values -", 1, "", "must be positive"}},
               titles + "propane,1,,296,,Ar,-2.7,1e-6,,\\n' |");
    expect_all({{"check-equation PR propane --values -", 1, "", "not a parameter: 3@0.1=2"}},
               "printf 'substances,set,x,T,rho,quantity,value,within,R,source,parameters\\n"
               "propane,1,,296,0.0124,Ar,-2.7,1e-6,,,3@0.1=2\\n' |");
    expect_all({{"check-equation PR propane --values -", 1, "", "the number of a parameter must be a whole"}},
               "printf 'substances,set,x,T,rho,quantity,value,within,R,source,parameters\\n"
               "propane,1,,296,0.0124,Ar,-2.7,1e-6,,,99999999999=2\\n' |");
    expect_all({{"check-equation PR propane --values -", 1, "", "set must be a whole number"}},
               titles + "propane,1e300,,296,0.0124,Ar,-2.7,1e-6,,\\n' |");
    expect_all(
        {{"check-equation PR propane --values none.tsv", 1, "", "none.tsv"},
         {"check-equation PR propane --pair-set 2", 2, "", "--pair-set is of mixtures"},
         {"check-equation MEOS+GERG carbon_dioxide water --pair-set 2", 0, "0 of 37 checks", ""},
         {"check-equation PR dodecane", 0, "printed values: Ar  ", ""},
         {"check-equation SRK methanol", 0, "printed values: Ar  ", ""},
         {"check-equation PR+vdW1 propane methane", 0, "printed values: Ar  ", ""},
         {"check-equation PR+vdW1 propane methane", 0, "printed values: mixture parameter  ", ""},
         {"check-equation PCSAFT hexane", 0, "printed values: Ar  ", ""},
         {"check-equation PCSAFT+LB ethane butane", 0, "printed values: Ar  ", ""},
         {"check-equation PCSAFT ethanol", 0, "printed values: saturation pressure  ", ""},
         {"check-equation PCSAFT+LB acetone chloroform", 0, "printed values: saturation pressure  ",
          ""},
         {"check-equation MEOS r152a", 0, "printed values: saturated density  ", ""},
         {"check-equation MEOS+GERG nonane argon", 0, "printed values: pressure  ", ""}});
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
