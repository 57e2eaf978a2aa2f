// The numbers the program prints: against the library, against published values, against each
// other.
#include <cli/program.h>
#include <corvane/corvane.h>
#include <support/scratch.h>

#include <nlohmann/json.hpp>

#include <memory>
#include <regex>

namespace {
using Json = nlohmann::json;

Json rows(std::string const& arguments) {
    const Outcome run = run_corvane(arguments + " --json", "LC_ALL=de_DE.UTF-8");
    EXPECT_EQ(run.code, 0) << run.err;
    return Json::parse(run.out).at("rows");
}
Json row(std::string const& arguments) {
    return rows(arguments).at(0);
}

std::unique_ptr<Model1, corvane::Detach> loaded(char const* substance) {
    std::unique_ptr<Model1, corvane::Detach> model(attach1("PR"));
    model->name(substance);
    model->id(1);
    model->load("PR");
    model->ideal.load();
    return model;
}

void expect_rel(double x, double expected, double relative, char const* what) {
    EXPECT_NEAR(x, expected, relative * std::fabs(expected)) << what;
}
}  // namespace

TEST(CliNumbers, StateIsWhatTheLibraryGives) {
    const double T = 300.0, p = 1.0;
    const auto model = loaded("carbon_dioxide");
    double rho = 0.0;
    const double Gm = model->Gm(p, T, 2, rho);
    const Json s = row("state PR carbon_dioxide --T 300 --p 1");
    const double RT = R * T;
    // JSON carries every digit; the products are formed in the same order.
    EXPECT_EQ(s["rho"], rho);
    EXPECT_EQ(s["g"], RT * Gm);
    EXPECT_EQ(s["h"], RT * model->Hm(rho, T));
    EXPECT_EQ(s["s"], R * model->Sm(rho, T));
    EXPECT_EQ(s["cp_res"], R * model->Cpr(rho, T));
    EXPECT_EQ(s["B"], model->B(T, 2));
}

TEST(CliNumbers, StateObeysThermodynamics) {
    // Each right-hand side is formed from other printed values, so the bound is rounding, grown by
    // the differences (1e-10), or, for the differenced coefficient, the step squared (1e-7).
    for (char const* at : {"--T 300 --p 1", "--T 250 --p 30", "--T 320 --p 9"}) {
        SCOPED_TRACE(at);
        const Json s = row(std::string("state PR CO2 ") + at);
        const auto v = [&](char const* name) { return s[name].get<double>(); };
        const double T = v("T"), M = 0.0440098;  // kg/mol
        EXPECT_NEAR(v("u") - v("a"), T * v("s"), 1e-10 * std::fabs(v("u")));
        expect_rel(v("cp") - v("cv"), T * v("v") * std::pow(v("alpha"), 2) / v("kappaT"), 1e-10,
                   "cp − cv = T·v·α²/κ");
        expect_rel(std::pow(v("w"), 2), v("cp") / v("cv") * v("v") / (v("kappaT") * M), 1e-10,
                   "w² = (cp/cv)/(ρ·κ)");
    }
    const double dp = 1e-3, dh = row("state PR CO2 --T 300 --p 1.001")["h"].get<double>() -
                                 row("state PR CO2 --T 300 --p 0.999")["h"].get<double>();
    const Json s = row("state PR CO2 --T 300 --p 1");
    expect_rel(s["muJT"], -dh / (2 * dp) / s["cp"].get<double>(), 1e-6, "μ = −(∂h/∂p)/cp");
    // A thin gas: φ = 1 + B·p/(RT).
    const Json gas = row("state PR CO2 --T 300 --p 1e-4");
    expect_rel(gas["phi"].get<double>() - 1.0, gas["B"].get<double>() * 1e-4 / (R * 300), 1e-4,
               "φ");
}

TEST(CliNumbers, CarbonDioxideAsPublished) {
    // Span & Wagner (1996), table 35: MPa, kg/m³, kJ/(kg K), m/s, kJ/kg, kJ/(kg K). Their equation
    // gives the printed digits: at most half a unit of the last one, and for h and s, of which only
    // rises count, one unit.
    struct Point {
        char const* at;
        double rho, cv, cp, w, h, s;
    };
    const Point cases[] = {
        {"--T 240 --p 0.05", 1.1084, 0.59473, 0.78815, 243.88, -48.014, -0.04483},
        {"--T 1100 --p 0.1", 0.48109, 1.0702, 1.2593, 494.61, 883.69, 1.3827},
        {"--T 1100 --p 100", 371.36, 1.0931, 1.3544, 675.48, 887.14, 0.03152}};
    const Json first = row(std::string("state MEOS CO2 --mass ") + cases[0].at);
    for (Point const& c : cases) {
        SCOPED_TRACE(c.at);
        const Json s = row(std::string("state MEOS CO2 --mass ") + c.at);
        expect_rel(s["rho"], c.rho, 5e-5, "rho");
        expect_rel(s["cv"], c.cv, 5e-5, "cv");
        expect_rel(s["cp"], c.cp, 5e-5, "cp");
        expect_rel(s["w"], c.w, 3e-5, "w");
        const auto rise = [&](char const* name) {
            return s[name].get<double>() - first[name].get<double>();
        };
        EXPECT_NEAR(rise("h"), c.h - cases[0].h, 0.01);
        EXPECT_NEAR(rise("s"), c.s - cases[0].s, 1e-4);
    }
}

TEST(CliNumbers, FormationAsReference) {
    // CODATA (Cox, Wagman & Medvedev 1989): ΔfH° = −393.51 ± 0.13 kJ/mol, S° = 213.785 ± 0.010
    // J/(mol K) of the ideal gas; the gas at 0.1 MPa differs by its residual part (−41 J/mol).
    const Json s = row("state PR CO2 --T 298.15 --p 0.1 --reference formation");
    EXPECT_NEAR(s["h"], -393510.0, 130.0);
    EXPECT_NEAR(s["s"], 213.785, 0.11);
}

TEST(CliNumbers, UnitsChangeTheNumbersAndNotTheState) {
    const double M = 44.0098;
    const Json a = row("state PR CO2 --T 300 --p 2");
    const Json b = row("state PR CO2 --T 26.85 --p 20 --unit-T C --unit-p bar --mass");
    struct {
        char const* name;
        double factor;  // second over first
    } const cases[] = {{"p", 10.0},     {"rho", 1e3 * M}, {"v", 1.0 / M},  {"h", 1.0 / M},
                       {"cp", 1.0 / M}, {"B", 1.0 / M},   {"kappaT", 0.1}, {"alpha", 1.0},
                       {"muJT", 0.1},   {"w", 1.0},       {"Z", 1.0},      {"s", 1.0 / M}};
    EXPECT_NEAR(b["T"], 26.85, 1e-12);  // through K and back
    for (auto const& c : cases)         // 26.85 + 273.15 is 300 to rounding
        expect_rel(b[c.name], a[c.name].get<double>() * c.factor, 1e-12, c.name);
    // Output is input again: the density leads back to the pressure.
    const std::string rho = b["rho"].dump();
    const Json c = row("state PR CO2 --T 26.85 --unit-T C --unit-p kPa --mass --rho " + rho);
    expect_rel(c["p"], 2000.0, 1e-12, "p");
    EXPECT_EQ(row("state PR CO2 --T 300 --p 2 --unit-rho mol/dm3")["rho"],
              a["rho"].get<double>() / 1e-3);
    expect_rel(row("saturation PR CO2 --p 1 --unit-p atm")["T"],
               row("saturation PR CO2 --p 101325 --unit-p Pa")["T"], 1e-12, "T");
}

TEST(CliNumbers, SaturationIsAnEquilibriumAndFollowsClapeyron) {
    const Json t = rows("saturation PR propane --T 299.99:300.01:0.01");
    ASSERT_EQ(t.size(), 3u);
    const auto v = [&](int k, char const* name) { return t[k][name].get<double>(); };
    // dp/dT = Δh/(T·Δv); the difference quotient is good to (ΔT/T)² and the fit's rounding.
    expect_rel((v(2, "p") - v(0, "p")) / 0.02,
               v(1, "hvap") / (300.0 * (1 / v(1, "rhoV") - 1 / v(1, "rhoL"))), 1e-6, "slope");
    const std::string p = t[1]["p"].dump();
    EXPECT_NEAR(row("saturation PR propane --p " + p)["T"], 300.0, 1e-7);
    // Against the order of the curve, and with a jump: the march must not lose its way.
    const Json back = rows("saturation PR propane --T 360,150,300");
    expect_rel(back[2]["p"], t[1]["p"], 1e-9, "p after a jump");
}

TEST(CliNumbers, MoreSaturationColumnsAgreeWithTheStates) {
    const Json t = row("saturation PR CO2 --T 260 --all");
    const Json s = rows("state PR CO2 --T 260 --phase both --p " + t["p"].dump());
    ASSERT_EQ(s.size(), 2u);
    for (char const* name : {"v", "Z", "h", "s", "cp"})
        for (int phase : {0, 1})  // the densities agree to the convergence of the saturation
            expect_rel(t[std::string(name) + "LV"[phase]], s[phase][name], 1e-8, name);
    expect_rel(t["hV"].get<double>() - t["hL"].get<double>(), t["hvap"], 1e-10, "hvap");
    expect_rel(t["hvap"], 260.0 * t["svap"].get<double>(), 1e-12, "equal Gibbs energies");
    EXPECT_FALSE(row("saturation PR CO2 --T 260").contains("hL"));
}

TEST(CliNumbers, PublishedPointsStandBesideTheResult) {
    // Largest deviations [%]: MEOS is the equation of the source: half a unit of the last printed
    // digit, two halves for hvap at 304 K, a difference.
    struct {
        char const* name;
        double limit;
    } const columns[] = {{"p", 0.005}, {"rhoL", 0.001}, {"rhoV", 0.004}, {"hvap", 0.035}};
    const std::string command =
        "saturation MEOS CO2 --compare " CORVANE_SOURCE "/examples/co2_saturation.csv";
    const Json all = Json::parse(run_corvane(command + " --json").out), table = all["rows"];
    ASSERT_EQ(table.size(), 6u);
    for (std::size_t k = 0; k < 4; ++k) {  // p and hvap deviate most downwards
        double mean = 0.0, largest = 0.0;
        for (Json const& point : table) {
            const double d = point[std::string("d_") + columns[k].name];
            mean += std::fabs(d) / 6.0;
            if (std::fabs(d) > std::fabs(largest)) largest = d;
        }
        char text[99];
        std::snprintf(text, sizeof text, "%s: mean deviation %.3g %%, largest %.3g %% at T",
                      columns[k].name, mean, largest);
        EXPECT_EQ(all["summary"][k].get<std::string>().rfind(text, 0), 0u) << all["summary"][k];
    }
    for (Json const& point : table)
        for (auto const& c : columns) {
            const std::string name = c.name;
            const double x = point[name], published = point[name + "_pub"];
            EXPECT_DOUBLE_EQ(point["d_" + name], 100.0 * (x / published - 1.0));
            EXPECT_LE(std::fabs(point["d_" + name].get<double>()), c.limit) << point;
        }
    const auto lines = lines_of(run_corvane(command + " --csv --full --no-heading").out);
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[0].rfind("T/K,p/MPa,p_pub/MPa,d_p/%,rhoL/(mol/cm3),", 0), 0u) << lines[0];
    EXPECT_NE(lines[4].find(",4.1607,"), std::string::npos) << "as in the file";
}

/// The saturation of carbon dioxide beside published points.
Outcome compare(std::string const& points) {
    const Scratch scratch;
    scratch.write("points.csv", points);
    return run_corvane("saturation PR CO2 --compare points.csv --json --home " +
                       scratch.home().string());
}

TEST(CliNumbers, PublishedTemperaturesAreComparedByDifference) {
    // With a column T the temperatures are the points; a row without one fails alone.
    const Outcome by_T = compare("# a source\np/bar,T/C\n10,-40\n20,\n90,30\n");
    EXPECT_EQ(by_T.code, 1);
    EXPECT_NE(by_T.err.find("a published point without T"), std::string::npos) << by_T.err;
    const Json rows = Json::parse(by_T.out)["rows"];
    ASSERT_EQ(rows.size(), 3u);
    expect_rel(rows[0]["p_pub"], 1.0, 1e-12, "10 bar in MPa");
    EXPECT_TRUE(rows[1]["p"].is_null());
    const Outcome by_p = compare("p/bar,t,rhoV/(kg/m3)\n10,1,26.01\n20,2,\n");
    EXPECT_EQ(by_p.code, 0) << by_p.err;
    EXPECT_EQ(Json::parse(by_p.out)["rows"][1]["T"],
              ::rows("saturation PR CO2 --unit-p bar --p 10,20")[1]["T"])
        << "t is no known column";
    EXPECT_TRUE(Json::parse(by_p.out)["rows"][1]["d_rhoV"].is_null());
}

TEST(CliNumbers, PublishedPointsThatCannotBeRead) {
    struct {
        char const *text, *message;
    } const cases[] = {{"T/K,p/MPa\n280,4.1\n290,abc\n", "points.csv:3: 'abc' is not a number"},
                       {"T/K,p/stone\n280,4\n", "unknown unit 'stone'"},
                       {"T/K,p/MPa\n280,4,5\n", "more fields than columns"},
                       {"a,b\n1,2\n", "name columns like"},
                       {"", "points.csv: the file is empty"},
                       {"T/K,p/MPa\n280,\"4\n", "points.csv:2: a quotation is not closed"},
                       {"rhoL/(kg/m3)\n900\n", "neither a column T nor a column p"}};
    for (auto const& c : cases) {
        const Outcome run = compare(c.text);
        EXPECT_EQ(run.code, 1);
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
    }
}

TEST(CliNumbers, CsvQuotesWhatHoldsCommas) {
    const std::string out = run_corvane("list 2_2_4_trimethylpentane --csv --no-heading").out;
    EXPECT_TRUE(std::regex_search(out, std::regex("\"[^\"]*PR:1,[^\"]*\""))) << out;
}

TEST(CliNumbers, MeltingMeetsTheTriplePoint) {
    // At the triple pressure the melting point is the triple point, which 1 MPa raises by 0.3 K at
    // most (melting slopes of organic substances, Babb 1963) and lowers by 0.075 K for water.
    const struct {
        char const* arguments;
        double T, tolerance;
    } rows[] = {{"PR CO2 --melting 0.518", 216.592, 1e-3},
                {"PR water --melting 1", 273.086, 1e-3},
                {"PR hydrogen_cyanide --melting 1", 260.0, 0.15},
                {"PR phenanthrene --melting 1", 372.6, 0.35},
                {"SRK naphthalene --melting 1", 353.6, 0.25}};
    for (auto const& r : rows)
        EXPECT_NEAR(row(std::string("solid ") + r.arguments)["T"].get<double>(), r.T, r.tolerance)
            << r.arguments;
}

TEST(CliNumbers, MixtureValuesFitTogether) {
    for (char const* at : {"--T 300 --p 5", "--T 200 --p 8", "--T 350 --rho 1e-4"}) {
        SCOPED_TRACE(at);
        const Json s = row(std::string("mixture PR+vdW1 methane=0.6 propane=0.4 ") + at);
        const auto v = [&](char const* name) { return s[name].get<double>(); };
        const double T = v("T");
        expect_rel(0.6 * v("v_methane") + 0.4 * v("v_propane"), v("v"), 1e-12, "Euler");
        expect_rel(0.6 * v("h_methane") + 0.4 * v("h_propane"), v("h"), 1e-10, "Euler");
        const double ln_phi = 0.6 * std::log(v("phi_methane")) + 0.4 * std::log(v("phi_propane"));
        EXPECT_NEAR(v("g_res") / (R * T) - std::log(v("Z")), ln_phi, 1e-12);
        // The heat capacities are the physical ones: cp − cv = T·v·α²/κ.
        expect_rel(v("cp") - v("cv"), T * v("v") * v("alpha") * v("alpha") / v("kappaT"), 1e-9,
                   "cp - cv");
    }
}

TEST(CliNumbers, AnyTwoQuantitiesInAnyUnitsLeadToTheState) {
    // Steam at 400 °C and 250 bar: 2578.7 kJ/kg by the steam tables (IAPWS-IF97, rounded).
    const std::string steam = "state water --units bar --reference triple ";
    const Json at = row(steam + "--T 400 --p 250");
    EXPECT_NEAR(at["h"], 2578.7, 0.05);
    for (char const* pair : {"T rho", "T v", "T s", "p rho", "p h", "p s", "p u", "h s", "v u"}) {
        SCOPED_TRACE(pair);
        const std::string a(1, pair[0]), b = pair + 2;
        const Json back = row(steam + "--" + a + " " + at[a].dump() + " --" + b + " " + at[b].dump());
        for (char const* name : {"T", "p", "rho", "h", "s"})
            expect_rel(back[name], at[name].get<double>(), 1e-8, name);
    }
    // Two phases and their whole; the equation is optional.
    const Json parts = rows("state R134a --T 0 --q 0.25:0.75/2 --units bar --reference IIR");
    ASSERT_EQ(parts.size(), 9u);
    EXPECT_EQ(parts[2]["phase"], "whole");
    EXPECT_NEAR(parts[2]["h"], 0.75 * 200.0 + 0.25 * parts[1]["h"].get<double>(), 1e-9);
}

TEST(CliNumbers, UnitsAreThoseOfTheirDefinitions) {
    // Of the library's value of the same state; mass: power of M in g/mol that divides it.
    const double M = 44.0098, lb = 0.45359237, ft3 = 28.316846592, psi = 6894.757293168;
    const struct {
        char const *at, *name;
        double factor;
        int mass;
    } units[] = {{"--T 80.33 --p 1 --unit-T F", "T", 80.33 / 300, 0},
                 {"--T 540 --p 1 --unit-T R", "muJT", 1.8, 0},
                 {"--T 300 --p 145.03773773 --unit-p psi", "p", 1e6 / psi, 0},
                 {"--T 300 --p 7500.6157985 --unit-p mmHg", "kappaT", 133.322387415e-6, 0},
                 {"--T 300 --p 7500.6168270 --unit-p torr", "p", 760 / 0.101325, 0},
                 {"--T 300 --p 1 --unit-v L/mol", "v", 1e-3, 0},
                 {"--T 300 --p 1 --unit-v ft3/lb", "v", 1e-3 / ft3 * lb * 1e3, 1},
                 {"--T 300 --p 1 --unit-v m3/kg", "v", 1e-3, 1},
                 {"--T 300 --p 1 --unit-h BTU/lb", "h", 1 / 2.326, 1},
                 {"--T 300 --p 1 --unit-h kcal/kg", "h", 1 / 4.184, 1},
                 {"--T 300 --p 1 --unit-s 'BTU/(lb R)'", "s", 1 / 4.1868, 1},
                 {"--T 80.33 --p 145.03773773 --units us", "rho", 1e3 * ft3 / (lb * 1e3), -1},
                 {"--T 80.33 --p 145.03773773 --units us", "w", 1 / 0.3048, 0},
                 {"--T 300 --p 1e6 --units si", "muJT", 1e-6, 0},
                 {"--T 26.85 --p 10 --units bar", "h", 1, 1}};
    const Json one = row("state PR CO2 --T 300 --p 1");
    for (auto const& u : units) {
        SCOPED_TRACE(u.at);
        expect_rel(row(std::string("state PR CO2 ") + u.at)[u.name],
                   one[u.name].get<double>() * u.factor * std::pow(M, -u.mass), 1e-8, u.name);
    }
    // Compositions: percent, amounts, masses.
    const std::string fractions = "mixture PR+vdW1 --T 300 --p 1 ";
    const double rho = row(fractions + "methane=0.25 propane=0.75")["rho"];
    for (char const* same : {"methane=25% propane", "methane=1 propane=3 --basis mole",
                             "methane=16.0428 propane=132.287865 --basis mass"})
        expect_rel(row(fractions + same)["rho"], rho, 1e-6, same);
}

TEST(CliNumbers, StatesAndSaturationHaveTransportPropertiesWhereThereAreModels) {
    // IAPWS R12-08, R15-11: 889.7 µPa s and 607.7 mW/(m K) at 298.15 K and 998 kg/m³.
    const Json liquid = row("state water --T 298.15 --rho 998 --unit-rho kg/m3 --phase single");
    expect_rel(liquid["eta"], 889.7351, 1e-6, "viscosity");
    expect_rel(liquid["lambda"], 0.607712868, 1e-6, "conductivity");
    const Json two = rows("state water --T 350 --q 0.5"), line = row("saturation MEOS water --T 350 --all");
    struct Shown {
        std::size_t phase;
        char const *here, *there;
    };
    for (Shown const& c : {Shown{0, "eta", "etaL"}, Shown{1, "eta", "etaV"}, Shown{0, "lambda", "lambdaL"},
                           Shown{1, "lambda", "lambdaV"}, Shown{2, "sigma", "sigma"}})
        expect_rel(two[c.phase][c.here], line[c.there], 1e-9, c.there);
    EXPECT_TRUE(two[2]["eta"].is_null() && two[0]["sigma"].is_null()) << two;
    // Another source's range, and a substance without models.
    const Json hot = row("state PR acetone --T 1900 --p 0.1");
    EXPECT_NE(hot.value("note", "").find("viscosity extrapolated"), std::string::npos) << hot;
    const Json none = row("state 1_10_dichlorodecane --T 400 --p 0.1");
    EXPECT_FALSE(none.contains("eta") || none.contains("lambda")) << none;
    // A flash has those of its phases on demand; the pure ends are those of the pure fluid.
    const Json split = rows("flash PR+vdW1 methane=0.3 propane=0.7 --T 280 --p 3 --transport");
    ASSERT_EQ(split.size(), 2u) << split;
    EXPECT_GT(split[0]["eta"], 5.0 * double(split[1]["eta"]));
    EXPECT_EQ(split[0]["sigma"], split[1]["sigma"]);
    const Json end = row("flash PR+vdW1 methane=0 propane=1 --T 280 --p 3 --transport"),
               pure = row("state PR propane --T 280 --p 3");
    expect_rel(end["eta"], pure["eta"], 1e-9, "viscosity of propane");
}

// Interface: its tension is that of the flash, its densities end in those of the phases; a pure fluid has its own tension.
// Diffusion: of Fick, that of Maxwell and Stefan times the factor, which is one at infinite dilution; water in itself
// at 298.15 K 2.299e-9 m2/s (Mills, J. Phys. Chem. 77 (1973) 685), docs/transport.md says 25 %.
TEST(Cli, InterfacesAndDiffusionAreThoseOfTheFlash) {
    const Json both = rows("flash PR+vdW1 methane=0.3 propane=0.7 --T 280 --p 3 --transport");
    const Json all = Json::parse(run_corvane("interface PR+vdW1 methane=0.3 propane --T 280 --p 3 --json").out);
    auto const& sum = all["interface"][0];
    expect_rel(1e3 * double(sum["sigma"]), both[0]["sigma"], 1e-9, "tension");
    EXPECT_GT(double(sum["thickness"]), 1e-9);
    auto const& profile = all["rows"];
    for (auto const& [row, phase] : {std::pair(profile.front(), both[1]), {profile.back(), both[0]}})
        for (char const* name : {"methane", "propane"})
            expect_rel(row[std::string("rho_") + name],
                       double(phase["rho"]) * double(phase[std::string("x_") + name]), 0.03, name);
    const Json pure = Json::parse(run_corvane("interface PCSAFT+LB hexane --T 300 --json").out)["interface"][0];
    expect_rel(1e3 * double(pure["sigma"]), row("surface-tension PCSAFT hexane --T 300")["sigma"], 1e-6, "hexane");

    expect_rel(row("diffusion water --T 298.15 --p 0.1")["D"], 2.299e-9, 0.25, "water");
    const Json two = row("diffusion PR+vdW1 methane=0.5 CO2 --T 300 --p 4");
    expect_rel(two["D"], double(two["D_MS"]) * double(two["Gamma"]), 1e-12, "Fick");
    EXPECT_LT(double(two["Gamma"]), 1.0);
    expect_rel(row("diffusion PR+vdW1 methane=1e-9 CO2 --T 300 --p 4")["Gamma"], 1.0, 1e-6, "dilute");
}
