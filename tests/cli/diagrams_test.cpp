// Diagrams of mixtures.
#include <cli/json.h>
#include <support/scratch.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

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
