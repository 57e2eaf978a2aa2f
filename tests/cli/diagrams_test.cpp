// Diagrams of mixtures and their pictures.
#include <cli/program.h>
#include <support/scratch.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <regex>

namespace {
using Json = nlohmann::json;

Json json(std::string const& arguments) {
    const Outcome run = run_corvane(arguments + " --json");
    EXPECT_EQ(run.code, 0) << run.err;
    return Json::parse(run.out);
}
double value(Json const& row, std::string const& name) {
    return row.at(name).get<double>();
}
double mean(Json const& rows, char const* name) {
    double sum = 0.0;
    for (Json const& row : rows) sum += std::fabs(value(row, name));
    return sum / static_cast<double>(rows.size());
}
bool no_gnuplot() {
    return std::system("command -v gnuplot >/dev/null") != 0;
}
}  // namespace

TEST(CliDiagrams, PointsAreBubblePointsAndBothDiagramsMeet) {
    const Json pxy = json("pxy PR+vdW1 methane propane --T 250");
    EXPECT_EQ(pxy["certificates"][0]["complete"], 1);
    Json const& middle = pxy["rows"][pxy["rows"].size() / 2];
    const double x = value(middle, "x_methane");
    const Json bubble = json("bubble PR+vdW1 propane methane=" + Json(x).dump() + " --T 250");
    EXPECT_NEAR(value(bubble["rows"][0], "p") / value(middle, "p"), 1, 1e-8);
    EXPECT_NEAR(value(bubble["rows"][0], "y_methane"), value(middle, "y_methane"), 1e-8);
    EXPECT_EQ(pxy["rows"].front()["note"], "begins at pure propane");
    EXPECT_EQ(pxy["rows"].back()["note"], "ends at a critical point");
    const Json pure = json("saturation PR propane --T 250")["rows"][0];
    EXPECT_NEAR(value(pxy["rows"].front(), "p") / value(pure, "p"), 1, 1e-7);
}

TEST(CliDiagrams, EnvelopeMarksWhereTangentsStand) {
    const Json envelope = json("envelope PR+vdW1 methane=0.8 ethane=0.15 propane");
    double hottest = 0.0, highest = 0.0;
    Json critical;
    for (Json const& row : envelope["rows"]) {
        hottest = std::max(hottest, value(row, "T"));
        highest = std::max(highest, value(row, "p"));
        if (row.value("note", "") == "critical point") critical = row;
    }
    for (Json const& special : envelope["special"]) {
        if (special["name"] == "cricondentherm") {
            EXPECT_EQ(value(special, "T"), hottest);
        }
        if (special["name"] == "cricondenbar") {
            EXPECT_EQ(value(special, "p"), highest);
        }
    }
    // The other solver of critical points; the envelope interpolates.
    const Json point = json("critical-line PR+vdW1 methane=0.8 ethane=0.15 propane")["rows"][0];
    EXPECT_NEAR(value(critical, "T") / value(point, "T"), 1, 1e-5);
    EXPECT_NEAR(value(critical, "p") / value(point, "p"), 1, 1e-4);
}

TEST(CliDiagrams, AWetGasHasTwoEnvelopesAndHeliumNoSecondCricondentherm) {
    const Json wet = json("envelope PR+vdW1 methane=0.8 ethane=0.12 propane=0.0795 water=0.0005");
    const Json dry = json("envelope PR+vdW1 methane=0.8 ethane=0.12 propane=0.0795");
    std::map<long, Json> first;
    for (Json const& row : wet["rows"]) first.emplace(row["line"].get<long>(), row);
    ASSERT_EQ(first.size(), 2u);
    EXPECT_GT(value(first[1], "y_water"), 0.99);
    EXPECT_LT(value(first[2], "y_water"), 0.01);
    // 500 ppm of water, of which its liquid takes up next to nothing, move the envelope of the
    // hydrocarbons by their dilution: 5e-4 of the pressures, less of the temperatures.
    for (char const* name : {"cricondentherm", "cricondenbar"}) {
        std::vector<Json> found;
        for (Json const* which : {&wet, &dry})
            for (Json const& special : (*which)["special"])
                if (special["name"] == name) found.push_back(special);
        ASSERT_EQ(found.size(), 2u) << name << ": one of each";
        EXPECT_NEAR(value(found[0], "T") / value(found[1], "T"), 1, 2e-3);
        EXPECT_NEAR(value(found[0], "p") / value(found[1], "p"), 1, 5e-3);
    }
    // Helium does not dissolve: the curve goes on to dense states, whose extrema are others.
    const Json helium =
        json("envelope MEOS+GERG methane=0.85 ethane=0.1 propane=0.049 helium=0.001 --p-max 500");
    std::map<std::string, int> count;
    for (Json const& special : helium["special"]) ++count[special["name"]];
    EXPECT_EQ(count["cricondentherm"], 1);
    EXPECT_EQ(count["cricondenbar"], 1);
    EXPECT_GT(count["maximum of T, dense"], 0);
    EXPECT_NEAR(value(helium["rows"].back(), "p"), 500, 1e-9) << "ends where it was told to";
}

TEST(CliDiagrams, CutThroughTheLensTheyKeepTheirMeaning) {
    struct {
        char const *arguments, *open;  // what may not be there
        double bound;
        char const* column;
    } const cases[] = {{"pxy PR+vdW1 propane butane --T 320 --p-max 1", "open", 1, "p"},
                       {"txy PR+vdW1 propane butane --p 1 --T-min 310", "open", 310, "T"},
                       {"pxy PR+vdW1 CO2 ethane --T 250 --p-max 2.1", "open", 2.1, "p"},
                       {"txy PR+vdW1 CO2 ethane --p 2 --T-min 255", "open", 255, "T"},
                       {"pxy PR+vdW1 CO2 decane --T 235 --p-max 1.063", "open", 1.063, "p"},
                       {"txy MEOS+GERG methane propane --p 1", "liquid-liquid", 85.525, "T"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        const Json diagram = json(c.arguments);
        EXPECT_EQ(diagram["certificates"][0]["complete"], 1);
        const bool upper = c.column[0] == 'p';
        std::map<std::pair<double, double>, int> seen;
        for (Json const& row : diagram["rows"]) {
            const double v = value(row, c.column) / c.bound;
            EXPECT_TRUE(upper ? v <= 1 + 1e-12 : v >= 1 - 1e-12) << row;
            EXPECT_EQ(row.value("note", "").find(c.open), std::string::npos) << row;
            EXPECT_NE(row["phases"], c.open);
            // No curve is there twice.
            const double x = value(row, diagram["columns"][3]["name"]);
            const bool junction = row.value("note", "").find("three phases") != std::string::npos;
            const int times = ++seen[{std::round(1e9 * std::log(v)), std::round(1e7 * x)}];
            EXPECT_TRUE(junction || times == 1) << row;
        }
    }
}

TEST(CliDiagrams, LinesOfABinaryMeet) {
    const Json diagram = json("diagram PR+vdW1 CO2 decane --kij 0.1");
    std::map<std::string, std::vector<Json>> curves;
    for (Json const& row : diagram["rows"]) curves[row["curve"]].push_back(row);
    // The line of three phases ends where a critical line does; both solve for it their own way.
    Json const& end = curves["three phases"].back();
    EXPECT_EQ(end["note"], "ends at a critical end point");
    EXPECT_NEAR(value(end, "x1_carbon_dioxide"), value(end, "x2_carbon_dioxide"), 1e-12);
    Json const& critical = curves["critical"].back();
    for (char const* name : {"T", "p"})
        EXPECT_NEAR(value(end, name) / value(critical, name), 1, 1e-6) << name;
    // A pure component is the same in the command for pure components.
    Json const& pure = curves["pure decane"][20];
    const Json saturation = json("saturation PR decane --T " + pure["T"].dump())["rows"][0];
    EXPECT_NEAR(value(pure, "p") / value(saturation, "p"), 1, 1e-7);
    // CO2 + ethane: a critical azeotrope lies on the critical line.
    const Json azeotropes = json("diagram PR+vdW1 CO2 ethane");
    Json last;
    for (Json const& row : azeotropes["rows"])
        if (row["curve"] == "azeotrope") last = row;
    const Json point =
        json("critical-line PR+vdW1 CO2 ethane --at " + last["x1_carbon_dioxide"].dump());
    EXPECT_NEAR(value(last, "T") / value(point["rows"][0], "T"), 1, 1e-5);
}

TEST(CliDiagrams, PointsOfLinesAreThoseOfDiagrams) {
    // The vapour over an azeotrope has its composition.
    const Json azeotrope = json("azeotrope PR+vdW1 CO2 ethane --T 240,260")["rows"][1];
    const Json bubble = json("bubble PR+vdW1 ethane CO2=" + azeotrope["x1_carbon_dioxide"].dump() +
                             " --T 260")["rows"][0];
    EXPECT_NEAR(value(bubble, "p") / value(azeotrope, "p"), 1, 1e-10);
    EXPECT_NEAR(value(bubble, "y_carbon_dioxide"), value(azeotrope, "x1_carbon_dioxide"), 1e-8);
    const Json three = json("three-phase PR+vdW1 ethanol water --p 0.1")["rows"][0];
    const Json diagram = json("txy PR+vdW1 ethanol water --p 0.1")["three_phase"][0];
    EXPECT_NEAR(value(three, "T") / value(diagram, "T"), 1, 1e-10);
}

TEST(CliDiagrams, FreezingMeetsTheSolubilityOfTheOtherSolver) {
    const Json diagram = json("txy PR+vdW1 methane CO2 --p 1 --T-min 100 --solid --solid-data sublimation");
    int compared = 0, frozen = 0;
    for (Json const& row : diagram["rows"]) {
        frozen += row.value("note", "").rfind("not stable", 0) == 0 ? 1 : 0;
        const double T = value(row, "T"), x = value(row, "x_methane");
        if (row["phases"] != "solid carbon_dioxide" || T < 160 || T > 200 || x < 0.5) continue;
        const Json other = json(
            "solubility PR+vdW1 methane CO2 --solid CO2 --p 1 --phase vapour "
            "--T " +
            row["T"].dump())["rows"][0];
        EXPECT_NEAR(value(other, "x_methane"), x, 1e-7) << T;
        ++compared;
    }
    EXPECT_GT(compared, 3);
    EXPECT_GT(frozen, 20);  // the miscibility gap of the liquids lies below the freezing line
}

TEST(CliDiagrams, MeasuredPointsAreCompared) {
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

// Without --T or --p the points tell them, one for each 0.1 K or 0.5 %; the traced curves as start lead
// where the search from nothing leads, by bubble and dew, also in a file of many temperatures.
TEST(CliDiagrams, MeasuredPointsTellTheirTemperatures) {
    const std::string alcohol = "pxy PCSAFT+LB 2_propanol 2_2_4_trimethylpentane --kij 0.03 --data " CORVANE_SOURCE
                                "/examples/measured/2_propanol_isooctane.csv";
    EXPECT_EQ(json(alcohol)["measured"], json(alcohol + " --T 330,340")["measured"]);
    const Scratch scratch;
    std::string csv = "T/K,p/MPa,x_propane,y_propane\n";
    for (int k = 0; k < 12; ++k)
        csv += std::to_string(280 + 5 * (k / 3)) + (k % 3 == 1 ? ".05," : ",") + std::to_string(0.3 + 0.05 * k) +
               ",0.2" + std::to_string(k % 3) + ",0.5\n";
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
    EXPECT_NE(run_corvane("pxy PR+vdW1 propane butane" + none).err.find("--data tells no T: give --T"), std::string::npos);
    EXPECT_EQ(run_corvane("pxy PR+vdW1 propane butane").code, 2);
}

// Between two liquids that a vapour stands beside no traced curve passes: the first vapour is that
// beside both, at the temperature that `bubble` finds.
TEST(CliDiagrams, MeasuredPointsInAGapOfThreePhases) {
    const Scratch scratch;
    scratch.write("gap.csv", "p/MPa,T/K,x_ethanol\n0.1013,350,0.02\n0.1013,350,0.1\n0.1013,350,0.3\n");
    const Json gap = json("txy PR+vdW1 ethanol water --kij 0 --p 0.1013 --data gap.csv --home " +
                          scratch.home().string())["measured"];
    ASSERT_EQ(gap.size(), 3u);
    for (Json const& m : gap) {
        const Json point = json("bubble PR+vdW1 water ethanol=" + m["x"].dump() + " --kij 0 --p 0.1013")["rows"][0];
        EXPECT_NEAR(value(m, "T_x") / value(point, "T"), 1, 1e-9);
        EXPECT_NEAR(value(m, "T_x") / value(gap[0], "T_x"), 1, 1e-9);
    }
}

TEST(CliDiagrams, MeasuredCriticalPointsAreCompared) {
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

TEST(CliDiagrams, MeasuredPointsOfACompositionAreCompared) {
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

TEST(CliDiagrams, ATernaryIsThatOfTheFlash) {
    const std::string mixture = "PCSAFT+LB CO2 methanol water";
    const Json d = json("ternary " + mixture + " --T 300 --p 70 --unit-p bar");
    EXPECT_EQ(d["certificates"][0]["complete"], 1);
    EXPECT_EQ(d["plait"].size(), 2u);
    ASSERT_EQ(d["three_phase"].size(), 1u);
    char const* const names[] = {"carbon_dioxide", "methanol", "water"};
    const auto flash = [&](auto whole) {
        std::string text = "flash PCSAFT+LB";
        for (char const* name : names)
            text += std::string(" ") + name + "=" + Json(whole(name)).dump();
        return json(text + " --T 300 --p 70 --unit-p bar --basis mole")["rows"];
    };
    // Half-way of a tie line there are its two phases, within the triangle three.
    Json const& tie = d["rows"][8];
    const Json two = flash([&](std::string const& n) {
        return 0.5 * (value(tie, "x_" + n) + value(tie, "y_" + n));
    });
    ASSERT_EQ(two.size(), 2u);
    Json const& t = d["three_phase"][0];
    const Json three = flash([&](std::string const& n) {
        return (value(t, "x1_" + n) + value(t, "x2_" + n) + value(t, "x3_" + n)) / 3;
    });
    ASSERT_EQ(three.size(), 3u);
    for (std::string const n : names) {
        EXPECT_NEAR(value(two[0], "x_" + n), value(tie, "x_" + n), 1e-8);
        EXPECT_NEAR(value(two[1], "x_" + n), value(tie, "y_" + n), 1e-8);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(value(three[k], "x_" + n), value(t, "x" + std::to_string(k + 1) + "_" + n),
                        1e-8);
    }
    for (char const* wrong : {"CO2 methanol --T 300 --p 7", "CO2 methanol water --T 300 --p -7",
                              "CO2=0.2 methanol water --T 300 --p 7", "CO2 methanol water --T 300",
                              "CO2 methanol water --T 300 --p 7 --mesh 1",
                              "CO2 methanol water --T 300 --p 7 --step 2"})
        EXPECT_EQ(run_corvane(std::string("ternary PCSAFT+LB ") + wrong).code, 2) << wrong;
}

TEST(CliDiagrams, SeveralModelsShareATable) {
    const std::string pair = "propane butane --T 323.15";
    const Json both = json("pxy " + pair + " --model PR+vdW1 --model PCSAFT+LB");
    std::map<std::string, std::vector<Json>> rows;
    for (Json row : both["rows"]) {
        const std::string model = row["model"];
        row.erase("model");
        rows[model].push_back(row);
    }
    ASSERT_EQ(rows.size(), 2u);
    for (auto const& [model, of] : rows) EXPECT_EQ(json("pxy " + model + " " + pair)["rows"], Json(of)) << model;
    // With a model in its place the option names further ones; each has its envelope.
    const Json envelopes = json("envelope PR+vdW1 methane=0.7 propane --model SRK+vdW1");
    EXPECT_EQ(envelopes["special"][0]["model"], "PR+vdW1");
    EXPECT_EQ(envelopes["special"].back()["model"], "SRK+vdW1");
    EXPECT_EQ(run_corvane("pxy PR+vdW1 " + pair + " --model SRK+vdW1 --kij 0.1").code, 2);
    if (no_gnuplot()) return;
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    ASSERT_EQ(run_corvane("pxy " + pair + " --model PR+vdW1 --model PCSAFT+LB --plot a.svg" + home).code, 0);
    const std::string svg = Scratch::read("a.svg");
    for (char const* word : {"<title>propane + butane, 323.15 K</title>", "PR+vdW1, k\u2081\u2082 0.0033", "PCSAFT+LB, k\u2081\u2082"})
        EXPECT_NE(svg.find(word), std::string::npos) << word;
    // Deviations from measured and published values, in pictures.
    ASSERT_EQ(run_corvane("pxy PR+vdW1 " + pair + " --plot-deviations e.svg --data " CORVANE_SOURCE
                          "/examples/measured/propane_butane.csv" + home).code, 0);
    EXPECT_NE(Scratch::read("e.svg").find("p at x, %"), std::string::npos);
    scratch.write("points.csv", "T/K,p/MPa,rhoL/(kg/m3)\n280,4.16,884\n290,5.32,804\n");
    ASSERT_EQ(run_corvane("saturation PR CO2 --compare points.csv --plot d.svg" + home).code, 0);
    const std::string deviations = Scratch::read("d.svg");
    for (char const* word : {"deviation: calculated/published - 1, %", "rhoL", "T / K"})
        EXPECT_NE(deviations.find(word), std::string::npos) << word;
}

TEST(CliDiagrams, PicturesShowWhatMatters) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    struct {
        char const* arguments;
        double low, least, most;  // the ordinate begins at or above low, and ends between
    } const cases[] = {
        {"pxy PR+vdW1 ethanol water --T 350", 0, 0.1, 0.3},        // not the liquids up to 100 MPa
        {"txy PR+vdW1 ethanol water --p 0.1", 320, 370, 400},      // not the cold liquids
        {"diagram PR+vdW1 CO2 decane --kij 0.1", 0, 19, 40},       // the maximum of the critical line
        {"diagram PR+vdW1 CO2 decane --kij 0.1 --p-max 15", 0, 15, 16},         // to the next round value
        {"envelope MEOS+GERG methane=0.85 ethane=0.1 propane=0.049 helium=0.001", 0, 8, 25}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        run_corvane(c.arguments + std::string(" --html a.html --home ") + scratch.home().string());
        const std::string page = Scratch::read("a.html"), mark = "id=\"data\">";
        const std::size_t data = page.find(mark) + mark.size();
        const Json axis = Json::parse(page.substr(data, page.find("</script>", data) - data))["axes"][1];
        EXPECT_GE(value(axis, "low"), c.low);
        EXPECT_GE(value(axis, "high"), c.least);
        EXPECT_LE(value(axis, "high"), c.most);
    }
}

// Two critical end points 0.3 K apart: an inset, whose numbers lie next to them on either side (those of the axis are
// a hundred kelvins apart).
TEST(CliDiagrams, PointsThatHideEachOtherHaveAnInset) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    ASSERT_EQ(run_corvane("diagram PR+vdW1 CO2 decane --kij 0.1 --plot a.svg --home " + scratch.home().string()).code, 0);
    const std::string svg = Scratch::read("a.svg");
    const std::regex number(">\\s*(\\d+\\.\\d+)\\s*<");
    int below = 0, above = 0;
    for (std::sregex_iterator n(svg.begin(), svg.end(), number), end; n != end; ++n) {
        const double v = std::stod((*n)[1]);
        below += v > 318 && v < 324.3;  // the end points: 324.3 and 324.6 K
        above += v > 324.6 && v < 331;
    }
    EXPECT_EQ(below, 1);
    EXPECT_EQ(above, 1);
}

TEST(CliDiagrams, IsolinesAreStates) {
    const Json d = json("property-diagram CO2 --kind ph --isotherms 0,50 --qualities 0.5 --isentropes 1.5 --isochores 50 "
                        "--units bar --reference IIR");
    std::map<std::string, std::pair<int, Json>> middle;  // of each line
    for (Json const& row : d["rows"]) ++middle[row["line"]].first;
    std::map<std::string, int> seen;
    for (Json const& row : d["rows"])
        if (++seen[row["line"]] == middle[row["line"]].first / 3) middle[row["line"]].second = row;
    ASSERT_EQ(middle.size(), 6u);  // bubble, dew, T, q, s, rho
    for (auto const& [line, entry] : middle) {
        SCOPED_TRACE(line);
        Json const& row = entry.second;
        const bool two = row.contains("q") && !row["q"].is_null();
        const std::string by = two && line != "s" ? "q" : "p";
        const std::string other = line == "s" ? "s" : "T";
        const Json state = json("state CO2 --units bar --reference IIR --" + by + " " +
                                Json(row.at(by)).dump() + " --" + other + " " +
                                Json(row.at(other)).dump())["rows"];
        double h = 0.0;  // of the whole, from its phases
        for (Json const& phase : state)
            if (state.size() == 1 || phase["phase"] == "liquid" || phase["phase"] == "vapour")
                h += value(phase, "h") * (state.size() == 1 ? 1.0 : value(phase, "amount"));
        EXPECT_NEAR(h, value(row, "h"), 1e-6 * std::fabs(h));
    }
    for (char const* wrong : {"CO2 --kind pq", "CO2 --qualities 2", "CO2 --T-min 400 --T-max 300",
                              "CO2 --isobars -1", "CO2 --kij 0.1"})
        EXPECT_EQ(run_corvane(std::string("property-diagram ") + wrong).code, 2) << wrong;
}

namespace {
/// Every element ends where it should, and no text has a character that begins one.
void expect_well_formed(std::string const& page) {
    static const std::regex token(
        "<!DOCTYPE html>|<!--[^]*?-->|//<!\\[CDATA\\[[^]*?//\\]\\]>|<(/?)([A-Za-z][\\w-]*)"
        "((?:\\s+[\\w:-]+\\s*=\\s*(?:\"[^\"<]*\"|'[^'<]*'))*)\\s*(/?)>|<|&(?!(?:\\w+|#\\d+);)",
        std::regex::optimize);
    // The script is long for a recursive matcher; nothing in it can be an end.
    const std::size_t begin = page.find("//<![CDATA["), end = page.find("//]]>", begin);
    ASSERT_NE(end, std::string::npos);
    const std::string text = page.substr(0, begin) + page.substr(end + 5);
    std::vector<std::string> open;
    for (std::sregex_iterator t(text.begin(), text.end(), token), none; t != none; ++t) {
        if (t->str() == "<!DOCTYPE html>" || t->str().compare(0, 4, "<!--") == 0) continue;
        ASSERT_TRUE((*t)[2].matched) << text.substr(static_cast<std::size_t>(t->position()), 60);
        if ((*t)[1].length() > 0) {
            ASSERT_FALSE(open.empty());
            ASSERT_EQ((*t)[2].str(), open.back());
            open.pop_back();
        } else if ((*t)[4].length() == 0) {
            open.push_back((*t)[2]);
        }
    }
    EXPECT_TRUE(open.empty());
}

/// The cells of the table's body, row by row.
std::vector<std::string> table_of(std::string const& page) {
    const std::string body = page.substr(page.find("<tbody>"), page.find("</tbody>") - page.find("<tbody>"));
    static const std::regex cell("<td>([^<]*)</td>|</tr>");
    std::vector<std::string> rows(1);
    for (std::sregex_iterator c(body.begin(), body.end(), cell), none; c != none; ++c)
        if (c->str() == "</tr>")
            rows.emplace_back();
        else
            rows.back() += (rows.back().empty() ? "" : ",") + (*c)[1].str();
    rows.pop_back();
    return rows;
}
}  // namespace

TEST(CliDiagrams, PagesHaveThePictureAndTheNumbersOfTheTable) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    for (char const* arguments :
         {"pxy PR+vdW1 methane propane --T 250", "envelope PR+vdW1 methane=0.8 propane",
          "diagram PR+vdW1 CO2 ethane", "critical-line PR+vdW1 methane propane", "azeotrope PR+vdW1 CO2 ethane",
          "bubble PR+vdW1 methane=0.3 propane --T 250:280:10", "property-diagram PR propane --kind Ts",
          "ternary PR+vdW1 nitrogen methane ethane --T 120 --p 3",
          "residue-curves PR+vdW1 propane butane pentane --p 0.5"}) {
        SCOPED_TRACE(arguments);
        const Outcome run = run_corvane(arguments + home + " --csv --no-heading --precision 9 --html a.html");
        ASSERT_EQ(run.code, 0) << run.err;
        const std::string page = Scratch::read("a.html");
        expect_well_formed(page);
        std::vector<std::string> csv = lines_of(run.out), rows = table_of(page);
        csv.erase(csv.begin());
        ASSERT_EQ(csv.size(), rows.size());
        const bool notes = page.find(">note</th>") != std::string::npos;
        for (std::size_t k = 0; k < rows.size(); ++k) {
            csv[k].erase(std::remove(csv[k].begin(), csv[k].end(), '"'), csv[k].end());
            EXPECT_EQ(rows[k] + (notes ? "" : ","), csv[k]);
        }
        EXPECT_NE(page.find("<svg"), std::string::npos);
        // What the script draws, one object; and nothing comes from elsewhere.
        const std::string mark = "id=\"data\">";
        const std::size_t data = page.find(mark) + mark.size();
        const Json drawn = Json::parse(page.substr(data, page.find("</script>", data) - data));
        EXPECT_FALSE(drawn["curves"].empty());
        EXPECT_LT(value(drawn["axes"][1], "low"), value(drawn["axes"][1], "high"));
        EXPECT_EQ(page.find("src="), std::string::npos);
        EXPECT_NE(page.find("default-src 'none'"), std::string::npos);
    }
}

TEST(CliDiagrams, Pictures) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    struct {
        char const* arguments;
        std::vector<std::string> words;
    } const cases[] = {
        {"pxy PR+vdW1 methane propane --T 250 --unit-p bar",
         {"methane + propane, PR+vdW1, k\u2081\u2082 0.0119, 250 K", "mole fraction of methane", "p / bar", "liquid",
          "vapour", "critical point"}},
        {"txy PR+vdW1 1_butene butane --p 1", {"1-butene + butane, PR+vdW1, k\u2081\u2082 0.0007", "T / K"}},
        {"txy PR+vdW1 ethanol water --p 0.1", {"three phases", "second liquid"}},
        {"pxy PR+vdW1 CH4 propane --T 250", {"CH\u2084 + propane", "mole fraction of CH\u2084"}},  // as it was named
        {"bubble PR+vdW1 methane=0.5 C7+ --T 300 --define C7+ Tc=540 pc=2.7 omega=0.35", {"0.5 C\u2087\u208a"}},
        {"diagram PR+vdW1 CO2 ethane",
         {"pure CO\u2082", "critical line", "critical end point", "azeotropes"}},
        {"envelope PR+vdW1 methane=0.8 propane", {"T / K", "bubble points", "cricondenbar"}},
        {"property-diagram PR+vdW1 methane=0.7 propane --kind Ts",
         {"0.7 methane + 0.3 propane", "s / (J/(mol K))", "isobars", "dew points"}},
        {"txy PR+vdW1 propane butane --p 1", {">L<", ">V<", ">L + V<"}},  // fields by their names
        {"pxy PR+vdW1 methane CO2 --T 250", {">F<", ">L + V<"}},
        {"ternary PR+vdW1 nitrogen methane ethane --T 120 --p 3",
         {"120 K, 3 MPa", "plait point", "tie lines", ">L<"}}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        ASSERT_EQ(run_corvane(c.arguments + home + " --plot a.svg").code, 0);
        const std::string svg = Scratch::read("a.svg");
        EXPECT_EQ(svg.rfind("<?xml", 0), 0u);
        for (std::string const& word : c.words)
            EXPECT_NE(svg.find(word), std::string::npos) << word;
        EXPECT_EQ(svg.find("not stable"), std::string::npos);
    }
    for (auto const& [name, begin] : {std::pair("b.png", "\x89PNG"), {"b.pdf", "%PDF-"}, {"b.eps", "%!PS-Adobe"}}) {
        ASSERT_EQ(run_corvane(cases[0].arguments + home + " --size 3.2x2.4in --plot " + name).code, 0);
        EXPECT_EQ(Scratch::read(name).substr(0, std::strlen(begin)), begin);
        std::filesystem::remove(name);
    }
    // A long title in lines, as text; its size on paper; no colour but grey.
    std::string title = "<b>&amp; ";
    for (int k = 0; k < 30; ++k) title += "word" + std::to_string(k) + " ";
    ASSERT_EQ(run_corvane(cases[0].arguments + home + " --mono --font Times,9 --size 80x60 --plot b.svg --title '" + title + "'").code, 0);
    const std::string mono = Scratch::read("b.svg");
    EXPECT_NE(mono.find("<title>&lt;b&gt;&amp;amp; word0"), std::string::npos);
    EXPECT_NE(mono.find("width=\"80mm\" height=\"60mm\""), std::string::npos);
    EXPECT_NE(mono.find("<desc>p / bar over mole fraction of methane. Curves: liquid, vapour."), std::string::npos);
    EXPECT_EQ(mono.find("word5 word6 word7 word8 word9 word10 word11 word12</"), std::string::npos) << "not in a line";
    const std::regex colour("(?:rgb\\( *(\\d+), *(\\d+), *(\\d+)\\)|#([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})\\b)");
    for (std::sregex_iterator c(mono.begin(), mono.end(), colour), end; c != end; ++c)
        EXPECT_TRUE((*c)[1] == (*c)[2] && (*c)[2] == (*c)[3] && (*c)[4] == (*c)[5] && (*c)[5] == (*c)[6]) << c->str();
    std::filesystem::remove("b.svg");
    // What goes wrong leaves no file behind, and says why.
    for (auto const& [wrong, words] :
         {std::pair("--plot c.gif", ".svg, .png, .pdf or .eps"), {"--plot c.svg --size 80", "width and height"},
          {"--plot c.svg --size 1x1mm", "30 mm to 2 m"}, {"--plot c.svg --font \"a';!id\"", "letters, digits"},
          {"--mono", "of a picture"}}) {
        const Outcome run = run_corvane(std::string(cases[0].arguments) + home + " " + wrong);
        EXPECT_EQ(run.code, 2) << wrong;
        EXPECT_NE(run.err.find(words), std::string::npos) << run.err;
    }
    const Outcome none = run_corvane(cases[0].arguments + home + " --plot c.svg", "PATH=/nowhere");
    EXPECT_EQ(none.code, 1);
    EXPECT_NE(none.err.find("apt-get install gnuplot-nox"), std::string::npos) << none.err;
    EXPECT_EQ(run_corvane(cases[0].arguments + home + " --plot no/c.svg").code, 1);
    // The name of a data file and of its substance is text, whatever it looks like.
    std::string set = Scratch::read(scratch.home() / "CorvaneS/parameters/PR/propane;1");
    const std::string hostile = "'.system(\"id>x\").'`id>x`";
    set.replace(set.find("propane"), 7, hostile);
    scratch.write("CorvaneS/parameters/PR/" + hostile + ";1", set);
    for (char const* name : {"libthPR.dll", "libthPR+vdW1.dll", "parameters/PR/methane;1"})
        std::filesystem::copy_file(scratch.home() / "CorvaneS" / name,
                                   std::filesystem::path("CorvaneS") / name);
    const Outcome run = run_corvane(
        "pxy PR+vdW1 \"$(ls CorvaneS/parameters/PR | sed -n '/id/s/;1//p')\" methane --T 250 --plot "
        "d.svg --html d.html");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(Scratch::read("d.svg").find("system("), std::string::npos);
    const std::string page = Scratch::read("d.html");
    expect_well_formed(page);
    EXPECT_EQ(page.find("<id"), std::string::npos);
    for (auto const& file : std::filesystem::directory_iterator("."))
        EXPECT_TRUE(file.path() == "./a.svg" || file.path() == "./d.html" ||
                    file.path() == "./d.svg" || file.path() == "./CorvaneS")
            << file.path();
}
