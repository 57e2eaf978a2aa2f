#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <vector>

namespace {
struct Row {
    double T, Cp, H, S;  // K, J/(mol K), kJ/mol above 298.15 K, J/(mol K)
};
struct Substance {
    char const* name;
    double Cp_error;        // how far the shipped table's source is from these tables, relative
    std::vector<Row> rows;  // the first row is the reference
};
// NIST-JANAF Thermochemical Tables, 4th ed. (Chase 1998): Cp°, H° − H°(298.15 K), S°.
const Substance kTables[] = {
    Substance{"nitrogen",
              5e-4,
              {Row{300, 29.125, 0.054, 191.789}, Row{500, 29.580, 5.911, 206.739},
               Row{700, 30.754, 11.937, 216.866}, Row{1000, 32.697, 21.463, 228.170}}},
    Substance{"water",
              2e-3,
              {Row{300, 33.596, 0.062, 189.042}, Row{500, 35.226, 6.925, 206.534},
               Row{1000, 41.268, 26.000, 232.738}}},
    Substance{"carbon_dioxide",
              1e-3,
              {Row{300, 37.221, 0.069, 214.025}, Row{500, 44.627, 8.305, 234.901},
               Row{1000, 54.308, 33.397, 269.299}}},
    // Setzmann & Wagner (1991) integrate newer spectroscopic levels; their cp rises to 0.5 % above
    // these tables at 600 K.
    Substance{"methane",
              5.5e-3,
              {Row{300, 35.708, 0.066, 186.472}, Row{500, 46.342, 8.200, 207.014},
               Row{600, 52.227, 13.130, 215.987}}},
};

TEST(Ideal, ShippedTablesReproduceThePublishedFunctions) {
    for (Substance const& s : kTables) {
        VdwModel model(s.name);
        model.ideal.load();
        const Ideal& gas = model.ideal;
        const Row& ref = s.rows.front();
        for (Row const& row : s.rows) {
            SCOPED_TRACE(testing::Message() << s.name << " T = " << row.T);
            EXPECT_NEAR(R * gas.Cpm(row.T), row.Cp, s.Cp_error * row.Cp);
            const double dH = R * (row.T * gas.Hm(row.T) - ref.T * gas.Hm(ref.T)) / 1000;
            const double dS = R * (gas.Sm(row.T) - gas.Sm(ref.T) + std::log(row.T / ref.T));
            // Two printed values, ±0.0005 each, beside the difference of the sources.
            EXPECT_NEAR(dH, row.H - ref.H, 1.1e-3 + s.Cp_error * (row.H - ref.H));
            EXPECT_NEAR(dS, row.S - ref.S, 1.1e-3 + s.Cp_error * (row.S - ref.S));
            EXPECT_NEAR(gas.Gm(row.T), gas.Hm(row.T) - gas.Sm(row.T), 1e-13 * 100);
            EXPECT_NEAR(gas.Am(row.T), gas.Um(row.T) - gas.Sm(row.T), 1e-13 * 100);
        }
    }
}

// A cubic heat capacity is reproduced exactly by the spline, so every integral has a closed form.
class CubicTable : public testing::Test {
  protected:
    CubicTable() : model_("cubic") {
        std::string text = "7\n";
        char line[64];
        for (int k = 0; k < 7; ++k) {
            const double T = 200 + 100 * k;
            std::snprintf(line, sizeof line, "%.17g %.17g\n", T, R * (1 + cv(T)));
            text += line;
        }
        scratch_.write("CorvaneS/ideal/cubic", text + "source: 1 2 3\n");
        model_.ideal.load();
    }
    static double cv(double T) { return 2.5 + 1e-3 * T + 2e-6 * T * T - 1e-9 * T * T * T; }
    static double U(double T) {
        return 2.5 * T + 5e-4 * T * T + 2e-6 / 3 * T * T * T - 2.5e-10 * T * T * T * T;
    }
    static double S(double T) {
        return 2.5 * std::log(T) + 1e-3 * T + 1e-6 * T * T - 1e-9 / 3 * T * T * T;
    }
    Scratch scratch_;
    VdwModel model_;
};

TEST_F(CubicTable, IntegralsAreExactInsideAndAboveTheTable) {
    Ideal const& gas = model_.ideal;
    for (double T : {200.0, 250.0, 300.0, 433.3, 799.9, 800.0, 950.0}) {
        SCOPED_TRACE(T);
        EXPECT_NEAR(gas.CVm(T), cv(T), 1e-12);
        EXPECT_NEAR(gas.Um(T), (U(T) - U(200)) / T, 1e-12);
        EXPECT_NEAR(gas.Sm(T), S(T) - S(200), 1e-12);
        EXPECT_NEAR(gas.Hm(T) - gas.Um(T), 1, 1e-14);
    }
    EXPECT_EQ(gas.Hm(200), 1);
    EXPECT_EQ(gas.Sm(200), 0);
}

TEST_F(CubicTable, BelowTheTableCvAndEnergyAreLinearAndTheEntropyTakesTheSecondRow) {
    Ideal const& gas = model_.ideal;
    const double b = 1e-3 + 4e-6 * 200 - 3e-9 * 4e4, c = 2e-6 - 3e-9 * 200, y = cv(200), T = 150;
    EXPECT_NEAR(gas.CVm(T), y - 50 * b, 1e-12);
    EXPECT_NEAR(gas.Um(T), (y - b / 2 * 50) * -50 / T, 1e-12);
    // Slope of the table times ln, plus the curvature coefficient where b would be expected.
    EXPECT_NEAR(gas.Sm(T), (y - b * 200) * std::log(T / 200) - 50 * c, 1e-12);
}

TEST_F(CubicTable, IntervalOffsetAndReset) {
    Ideal& gas = model_.ideal;
    const std::pair<double, int> segments[] = {{150, -1}, {200, 0}, {299, 0}, {300, 0},
                                               {301, 1},  {799, 5}, {800, 6}, {900, 6}};
    for (auto [T, k] : segments) EXPECT_EQ(gas.interval(T), k) << T;
    const double H = gas.Hm(400), S = gas.Sm(400), Cp = gas.Cpm(400);
    gas.offset(120, 0.7);
    EXPECT_NEAR(gas.Hm(400), H + 120.0 / 400, 1e-14);
    EXPECT_NEAR(gas.Sm(400), S + 0.7, 1e-14);
    EXPECT_EQ(gas.Cpm(400), Cp);
    testing::internal::CaptureStdout();
    gas.info();
    gas.reset();
    gas.info();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "ideal-gas data available: 200-800 K\n\nideal-gas data available: none\n\n");
    EXPECT_EQ(th_code([&] { gas.Hm(400); }), th_no_ideal);
    EXPECT_EQ(th_code([&] { gas.interval(400); }), th_no_ideal);
    EXPECT_EQ(th_code([&] { gas.offset(1, 1); }), th_no_ideal);
}

// Columns of temperatures against one by one, on shipped tables and on such as no substance has
// (one point, two, points closer than the index tells apart, a range of 10^9): at and around every
// point, between, below and above.
TEST(Ideal, ColumnsAreTheTemperaturesOneByOne) {
    Scratch scratch;
    scratch.write("CorvaneS/ideal/one", "1\n300 20\n");
    scratch.write("CorvaneS/ideal/two", "2\n300 20\n400 33\n");
    scratch.write("CorvaneS/ideal/close",  // on a straight line: a spline through others swings
                  "8\n300 30\n300.1 30.01\n300.2 30.02\n300.3 30.03\n300.4 30.04\n300.5 30.05\n"
                  "300.6 30.06\n900 90\n");
    scratch.write("CorvaneS/ideal/wide", "4\n1e-3 20\n1 25\n1e3 40\n1e6 60\n");
    for (char const* name : {"water", "propane"}) {  // shipped
        const std::string file = std::string("CorvaneS/ideal/") + name;
        scratch.write(file, Scratch::read(scratch.home() / file));
    }
    for (char const* name : {"water", "propane", "one", "two", "close", "wide"}) {
        SCOPED_TRACE(name);
        VdwModel model(name);
        model.ideal.load();
        Ideal const& gas = model.ideal;
        std::vector<double> T{1e-4, 10, 299.999, 5000, 2e6};
        for (int k = 0; k < 2000; ++k) T.push_back(20 * std::pow(200, k / 2000.0));
        for (double at :
             {42.77, 50.0, 51.9, 300.0, 300.1, 300.5, 300.6, 400.0, 900.0, 1000.0, 2000.0})
            for (double x : {std::nextafter(at, 0), at, std::nextafter(at, 1e9)}) T.push_back(x);
        const int n = static_cast<int>(T.size());
        std::vector<double> U(T), S(T), cv(T);
        gas.parts(n, T.data(), U.data(), S.data(), cv.data());
        for (unsigned i = 0; i < T.size(); ++i) {
            SCOPED_TRACE(T[i]);
            const Ideal::Parts of = gas.parts(T[i]);
            EXPECT_EQ(of.U, gas.Um(T[i]));
            EXPECT_EQ(of.S, gas.Sm(T[i]));
            EXPECT_EQ(of.cv, gas.CVm(T[i]));
            EXPECT_EQ(U[i], of.U);
            EXPECT_EQ(cv[i], of.cv);
            // Beyond a table the terms of the entropy grow past their sum.
            const double terms =
                std::fabs(of.S) + std::fabs(of.cv) * (1 + std::fabs(std::log(T[i])));
            EXPECT_NEAR(S[i], of.S, 0x1p-51 * terms);
            double alone[3];
            gas.parts(1, &T[i], &alone[0], &alone[1], &alone[2]);
            EXPECT_EQ(alone[0], U[i]);
            EXPECT_EQ(alone[1], S[i]);
            EXPECT_EQ(alone[2], cv[i]);
        }
    }
    EXPECT_EQ(th_code([] { Ideal().parts(300); }), th_no_ideal);
    double T = 300, a, b, c;
    EXPECT_EQ(th_code([&] { Ideal().parts(1, &T, &a, &b, &c); }), th_no_ideal);
}

TEST(Ideal, KeepsOneHandleOfEachFile) {
    const auto handles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    Scratch scratch;
    for (char const* name : {"gas", "other"}) {
        scratch.write(std::string("CorvaneS/ideal/") + name, "2\n300 20\n400 21\n");
        const auto before = handles();
        for (int k = 0; k < 20; ++k) VdwModel(name).ideal.load();
        EXPECT_EQ(handles() - before, 1);  // intended: the first stays open
    }
}

TEST(Ideal, AssignmentOfAPartLeavesItToItsModel) {
    VdwModel a, b;
    a.ideal = b.ideal;
    a.solid = b.solid;
    a.visco = b.visco;
    EXPECT_TRUE(a.ideal.model() == &a && a.solid.model() == &a && a.visco.model() == &a);
    Ideal free;
    free = b.ideal;
    EXPECT_EQ(free.model(), &b);
    EXPECT_EQ(Ideal(b.ideal).model(), &b);
}

TEST(Ideal, TablesOfOnePointAndMalformedTables) {
    Scratch scratch;
    VdwModel model("gas");
    scratch.write("CorvaneS/ideal/gas", "1\n300 20.78615525\n");
    model.ideal.load();
    for (double T : {100.0, 300.0, 900.0}) EXPECT_NEAR(model.ideal.Cpm(T), 2.5, 1e-12);
    EXPECT_NEAR(model.ideal.Sm(600), 1.5 * std::log(2), 1e-12);

    struct Case {
        char const* text;
        int th, mth;
    };
    for (Case const& c :
         {Case{"3\n300 20\n310 21\n305 22", -2, mth_unordered},
          Case{"2\n300 20\n300 20", -2, mth_duplicate}, Case{"3\n300 20\n310", th_cannot_open, -2},
          Case{"2\n300 20\n310 29,1", th_cannot_open, -2},
          Case{"2\n300 nan\n310 20", th_cannot_open, -2},
          Case{"2000000000\n300 20", th_cannot_open, -2}}) {
        SCOPED_TRACE(c.text);
        scratch.write("CorvaneS/ideal/gas", c.text);
        EXPECT_EQ(th_code([&] { model.ideal.load(); }), c.th);
        EXPECT_EQ(mth_code([&] { model.ideal.load(); }), c.mth);
        EXPECT_NEAR(model.ideal.Cpm(300), 2.5, 1e-12);  // the old table is still whole
    }
    for (char const* text : {"", "abc", "-5\n"}) {
        scratch.write("CorvaneS/ideal/gas", text);
        model.ideal.load();
        EXPECT_EQ(th_code([&] { model.ideal.Hm(300); }), th_no_ideal) << text;
    }
    model.name("absent");
    EXPECT_EQ(th_code([&] { model.ideal.load(); }), th_cannot_open);
    EXPECT_EQ(th_code([] { Ideal().load(); }), th_cannot_open);
}
}  // namespace
