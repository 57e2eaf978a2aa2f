// Diagrams beside measured points.
#include <cli/json.h>
#include <support/scratch.h>

#include <cstring>

TEST(CliMeasured, MeasuredPointsAreCompared) {
    const std::string folder = CORVANE_SOURCE "/examples/measured/";
    const std::string file = " --data " + folder + "propane_butane.csv";
    const Json near = json("pxy PR+vdW1 propane butane --T 323.15" + file);
    // Cubic equations with a fitted kij follow an alkane isotherm to about one percent.
    ASSERT_EQ(near["measured"].size(), 12u);
    EXPECT_LT(mean(near["measured"], "d_p_x"), 1.0);
    EXPECT_LT(mean(near["measured"], "d_p_y"), 2.0);
    // The components in the other order, and the other diagram at one of the pressures.
    const Json other = json("pxy PR+vdW1 butane propane --T 323.15" + file);
    EXPECT_NEAR(mean(other["measured"], "d_p_x"), mean(near["measured"], "d_p_x"), 1e-6);
    const Json txy = json("txy PR+vdW1 propane butane --p 1.101" + file);
    EXPECT_EQ(txy["measured"][0]["not_compared"], "at another pressure");
    // Clapeyron: T is too low by RT²/Δh·Δp/p; Δh of both alkanes is 12 to 22 kJ/mol at 323 K.
    const double slope =
        value(txy["measured"][5], "d_T_x") / value(near["measured"][5], "d_p_x") * -100.0;
    EXPECT_GT(slope, 8.314 * 323.15 * 323.15 / 22e3);
    EXPECT_LT(slope, 8.314 * 323.15 * 323.15 / 12e3);
    const Scratch scratch;
    scratch.write("bad.csv", "T/K,p/MPa,x_methane\n300,1,0.5\n");
    scratch.write("unit.csv", "T/K,p/stone,x\n300,1,0.5\n");
    const std::string pxy =
        "pxy PR+vdW1 propane butane --T 323.15 --home " + scratch.home().string() + " --data ";
    for (auto const& [name, words] :
         {std::pair("bad.csv", "methane is not a component"),
          std::pair("unit.csv", "unknown unit 'stone'"), std::pair("none.csv", "no such file"),
          std::pair("/", "the data home is --home")}) {
        const Outcome run = run_corvane(pxy + name);
        EXPECT_NE(run.code, 0);
        EXPECT_NE(run.err.find(words), std::string::npos) << run.err;
        EXPECT_TRUE(run.out.empty());
    }
}

// Without --T or --p the points tell them, one for each 0.1 K or 0.5 %; the traced curves as start
// lead where the search from nothing leads, by bubble and dew, also in a file of many temperatures.
TEST(CliMeasured, MeasuredPointsTellTheirTemperatures) {
    const std::string alcohol =
        "pxy PCSAFT+LB 2_propanol 2_2_4_trimethylpentane --kij 0.03 --data " CORVANE_SOURCE
        "/examples/measured/2_propanol_isooctane.csv";
    EXPECT_EQ(json(alcohol)["measured"], json(alcohol + " --T 330,340")["measured"]);
    const Scratch scratch;
    std::string csv = "T/K,p/MPa,x_propane,y_propane\n";
    for (int k = 0; k < 12; ++k)
        csv += std::to_string(280 + 5 * (k / 3)) + (k % 3 == 1 ? ".05," : ",") +
               std::to_string(0.3 + 0.05 * k) + ",0.2" + std::to_string(k % 3) + ",0.5\n";
    scratch.write("many.csv", csv);
    const std::string at = " --data many.csv --home " + scratch.home().string();
    const Json many = json("pxy PR+vdW1 propane butane" + at);
    EXPECT_EQ(many["certificates"].size(), 4u);
    ASSERT_EQ(many["measured"].size(), 12u);
    for (Json const& m : many["measured"]) {
        const std::string T = " --T " + m["T"].dump();
        const Json x = json("bubble PR+vdW1 butane propane=" + m["x"].dump() + T)["rows"][0];
        const Json y = json("dew PR+vdW1 butane propane=" + m["y"].dump() + T)["rows"][0];
        EXPECT_NEAR(value(m, "p_x") / value(x, "p"), 1, 1e-8);
        EXPECT_NEAR(value(m, "p_y") / value(y, "p"), 1, 1e-8);
    }
    EXPECT_EQ(json("txy PR+vdW1 propane butane" + at)["certificates"].size(), 12u);
    scratch.write("none.csv", "p/MPa,x_propane\n1,0.5\n");
    const std::string none = " --data none.csv --home " + scratch.home().string();
    EXPECT_NE(
        run_corvane("pxy PR+vdW1 propane butane" + none).err.find("--data tells no T: give --T"),
        std::string::npos);
    EXPECT_EQ(run_corvane("pxy PR+vdW1 propane butane").code, 2);
}

// Between two liquids that a vapour stands beside no traced curve passes: the first vapour is that
// beside both, at the temperature that `bubble` finds.
TEST(CliMeasured, MeasuredPointsInAGapOfThreePhases) {
    const Scratch scratch;
    scratch.write("gap.csv",
                  "p/MPa,T/K,x_ethanol\n0.1013,350,0.02\n0.1013,350,0.1\n0.1013,350,0.3\n");
    const Json gap = json("txy PR+vdW1 ethanol water --kij 0 --p 0.1013 --data gap.csv --home " +
                          scratch.home().string())["measured"];
    ASSERT_EQ(gap.size(), 3u);
    for (Json const& m : gap) {
        const Json point = json("bubble PR+vdW1 water ethanol=" + m["x"].dump() +
                                " --kij 0 --p 0.1013")["rows"][0];
        EXPECT_NEAR(value(m, "T_x") / value(point, "T"), 1, 1e-9);
        EXPECT_NEAR(value(m, "T_x") / value(gap[0], "T_x"), 1, 1e-9);
    }
}

TEST(CliMeasured, MeasuredCriticalPointsAreCompared) {
    const std::string folder = " --data " CORVANE_SOURCE "/examples/measured/";
    for (char const* pair : {"ethane butane", "carbon_dioxide butane"}) {
        std::string file = pair;
        file.replace(file.find(' '), 1, "_");
        const Json points = json("critical-line PR+vdW1 " + std::string(pair) + folder + file +
                                 "_critical.csv")["measured"];
        // The measurements scatter by about 1 % in T and 3 % in p.
        EXPECT_GT(points.size(), 10u);
        EXPECT_LT(mean(points, "d_T_x"), 4.0) << pair;
        EXPECT_LT(mean(points, "d_p_x"), 3.0) << pair;
    }
    // The points of all three lines of a broken critical line are found again, though lines pass
    // the same composition; so are points of a bubble curve. Others are counted.
    const std::string lines = "critical-line PR+vdW1 CO2 decane --kij 0.1";
    const Scratch scratch;
    std::string csv = "T/K,p/MPa,x_decane\n,5,0.5\n300,5,1.5\n";
    const Json found = json(lines)["rows"];
    for (Json const& row : found)
        csv += row["T"].dump() + "," + row["p"].dump() + "," + row["x_decane"].dump() + "\n";
    scratch.write("lines.csv", csv);
    const std::string home = " --home " + scratch.home().string();
    const Json again = json(lines + home + " --data lines.csv")["measured"];
    ASSERT_GT(again.size(), 30u);
    EXPECT_EQ(again[0]["not_compared"], "no T or p");
    EXPECT_EQ(again[1]["not_compared"], "mole fraction not between 0 and 1");
    for (std::size_t k = 2; k < again.size(); ++k) {
        EXPECT_NEAR(value(again[k], "d_T_x"), 0, 1e-5) << again[k];
        EXPECT_NEAR(value(again[k], "d_p_x"), 0, 1e-4) << again[k];
    }
    EXPECT_EQ(run_corvane(lines + home + " --at 0.5 --data lines.csv").code, 2);
}

TEST(CliMeasured, MeasuredPointsOfACompositionAreCompared) {
    const std::string file = " --data " CORVANE_SOURCE "/examples/measured/propane_butane.csv";
    const Json pxy = json("pxy PR+vdW1 propane butane --T 323.15" + file)["measured"];
    // The third point is a bubble point of 0.226 and a dew point of 0.432 propane.
    for (auto const& [command, deviation] :
         {std::pair("bubble PR+vdW1 propane=0.226 butane --T 300", "d_p_x"),
          std::pair("dew PR+vdW1 butane propane=0.432 --T 300", "d_p_y"),
          std::pair("envelope PR+vdW1 propane=0.432 butane", "d_p_y")}) {
        const Json points = json(command + file)["measured"];
        EXPECT_NEAR(value(points[2], "d_p_T"), value(pxy[2], deviation), 1e-6) << command;
        EXPECT_EQ(points[0]["not_compared"], "of another composition");
    }
}

// Two published ternaries. Both models know what the pictures show: one region with a plait point,
// more acid in the water than in the solvent; of water and the ether alone what they dissolve of
// each other, to half a per cent. The middle neither knows better than to some per cent.
TEST(CliMeasured, TieLinesOfTernaries) {
    const Scratch scratch;
    const std::string folder = CORVANE_SOURCE "/examples/measured/";
    const struct {
        std::string model, solvent, at;
        std::size_t lines;
        double first, mean;  // of mass fractions: all of the first line, the mean of all
    } cases[] = {
        {"PCSAFT+LB --pair-set 3", "diisopropyl_ether", " --T 293.15 --p 0.101325", 9, 0.005, 0.05},
        {"SRK+PSRK", "chloroform", " --T 291.15 --p 0.101325", 7, 0.05, 0.06}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.solvent);
        const std::string file = folder + "water_acetic_acid_" + c.solvent + ".csv";
        const std::string command = "ternary " + c.model + " water acetic_acid " + c.solvent + c.at;
        const Json d =
            json(command + " --plot tie.svg --data " + file + " --home " + scratch.home().string());
        EXPECT_EQ(d["plait"].size(), 1u);
        EXPECT_EQ(value(d["rows"].back(), "region"), 1.0);
        ASSERT_EQ(d["measured"].size(), c.lines);
        double sum = 0.0, most = 0.0;
        for (Json const& m : d["measured"]) {
            ASSERT_FALSE(m.contains("not_compared")) << m;
            for (std::string const phase : {"w_", "w2_"}) {
                double whole = 0.0;
                for (std::string const& i :
                     {std::string("water"), std::string("acetic_acid"), c.solvent}) {
                    const double off =
                        std::fabs(value(m, phase + i) - value(m, "measured_" + phase + i));
                    whole += value(m, phase + i);
                    sum += off;
                    if (m == d["measured"][0]) most = std::fmax(most, off);
                }
                EXPECT_NEAR(whole, 1.0, 1e-12);
            }
            EXPECT_GE(value(m, "w_acetic_acid"), value(m, "w2_acetic_acid"));
        }
        EXPECT_LT(most, c.first);
        EXPECT_LT(sum / static_cast<double>(6 * c.lines), c.mean);
        const std::string svg = scratch.read("tie.svg");
        EXPECT_NE(svg.find("measured tie lines"), std::string::npos);
        // In another order of the components, and by mass, the same tie lines.
        const Json other = json("ternary " + c.model + " " + c.solvent + " water acetic_acid" +
                                c.at + " --basis mass --data " + file);
        for (std::size_t k = 0; k < c.lines; ++k)
            EXPECT_NEAR(value(other["measured"][k], "w2_water"),
                        value(d["measured"][k], "w2_water"), 1e-8);
        for (Json const& row : other["rows"])
            EXPECT_NEAR(value(row, "wx_water") + value(row, "wx_acetic_acid") +
                            value(row, "wx_" + c.solvent),
                        1.0, 1e-12);
        const double w = value(other["rows"][0], "wx_water"),
                     M = c.solvent[0] == 'c' ? 119.369 : 102.177;
        EXPECT_NEAR(w / 18.015268 / (w / 18.015268 + (1.0 - w) / M), value(d["rows"][0], "x_water"),
                    1e-6);
    }
    const std::string file = folder + "water_acetic_acid_chloroform.csv";
    EXPECT_NE(
        run_corvane("ternary SRK+PSRK water acetic_acid chloroform --T 300 --p 0.1 --data " + file)
            .err.find("no tie lines at 300 K"),
        std::string::npos);
    scratch.write("none.csv", "T/K,p/MPa,x_water,x_chloroform\n300,1,0.5,0.2\n");
    EXPECT_NE(run_corvane("ternary SRK+PSRK water acetic_acid chloroform --T 300 --p 0.1 --data "
                          "none.csv --home " +
                          scratch.home().string())
                  .err.find("no tie lines: name columns"),
              std::string::npos);
}
