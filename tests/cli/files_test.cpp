// Files of states: every dialect of separated values, kept columns, failing rows.
#include <cli/program.h>
#include <support/scratch.h>

#include <nlohmann/json.hpp>

namespace {
using Json = nlohmann::json;

std::vector<std::string> fields(std::string const& line, char separator) {
    std::vector<std::string> result(1);
    for (char c : line)
        if (c == separator)
            result.emplace_back();
        else
            result.back() += c == ',' ? '.' : c;
    return result;
}
}  // namespace

TEST(CliFiles, EveryDialectKeepsItsColumnsAndGetsTheSameResults) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    const struct {
        char const* text;
        char separator;
    } files[] = {
        {"name,T/K,p/MPa\nfirst,293.15,0.15\n", ','},
        {"\xef\xbb\xbfname;T [\xc2\xb0"
         "C];p [bar]\r\n\r\n# a remark\r\nfirst;20;1,5\r\n",
         ';'},
        {"name;T [\xb0"
         "C];p [bar]\nfirst;20;1,5\n",
         ';'},  // Latin-1
        {"name\tT/F\tp/mmHg\nfirst\t68\t1125,092370\n", '\t'},
        {"name,T,p\n\"first\",293.15,1.5e-1\n", ','},
    };
    const Json expected = Json::parse(
        run_corvane("state PR CO2 --T 293.15 --p 0.15 --json" + home).out)["rows"][0];
    for (auto const& f : files) {
        SCOPED_TRACE(f.text);
        scratch.write("points.csv", f.text);
        for (std::string const from : {"points.csv", "- < points.csv"}) {
            const Outcome run = run_corvane("state PR CO2 --full" + home + " --input " + from);
            EXPECT_EQ(run.code, 0) << run.err;
            const auto lines = lines_of(run.out);
            ASSERT_EQ(lines.size(), 2u) << run.out;
            const auto names = fields(lines[0], f.separator), row = fields(lines[1], f.separator);
            ASSERT_EQ(names.size(), row.size());
            EXPECT_EQ(names[0], "name");
            EXPECT_EQ(row[0], "first");
            EXPECT_EQ(row[3], "vapour");
            EXPECT_EQ(row.back(), "ok");
            for (std::size_t k = 5; k + 1 < row.size(); ++k) {
                const std::string name = names[k].substr(0, names[k].find('/'));
                EXPECT_NEAR(std::stod(row[k]) / expected[name].get<double>(), 1, 1e-8) << name;
            }
        }
    }
    // The same reader takes published points; the mark once hid the column T.
    scratch.write("published.csv", "\xef\xbb\xbfT/K;p/MPa\n280;4,1607\n");
    scratch.write("bare.csv", "T,p\n6.85,41.607\n");  // without units those of --units
    for (std::string const asked : {"published.csv", "bare.csv --units bar"}) {
        const Outcome run = run_corvane("saturation MEOS CO2 --json --compare " + asked + home);
        ASSERT_EQ(run.code, 0) << run.err;
        EXPECT_NEAR(Json::parse(run.out)["rows"][0]["d_p"].get<double>(), 0, 0.005);
    }
    scratch.write("isotherm.csv", "T,p,x_propane\n323.15,1,0.4\n");
    EXPECT_EQ(run_corvane("pxy PR+vdW1 propane butane --data isotherm.csv" + home).code, 0);
}

TEST(CliFiles, EveryCommandAnswersWithItsOwnNumbers) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    const struct {
        std::string command, input, options, column;
    } rows[] = {
        {"saturation PR CO2", "T/K\n250\n", "--T 250", "rhoV"},
        {"saturation PR CO2", "p/bar\n20\n", "--p 2", "T"},
        {"state R134a --reference IIR --mass", "p/MPa,h/(kJ/kg)\n1,300\n", "--p 1 --h 300", "T"},
        {"state water", "v/(cm3/mol),u/(J/mol)\n5000,20000\n", "--v 5000 --u 20000", "p"},
        {"density PR CO2", "T/K,p/MPa\n300,1\n", "--T 300 --p 1", "Z"},
        {"viscosity MEOS CO2", "T/K,p/MPa\n300,1\n", "--T 300 --p 1", "eta"},
        {"viscosity MEOS CO2", "T/K\n300\n", "--T 300", "eta0"},
        {"bubble PR+vdW1", "T/K,x_methane\n250,0.3\n", "methane=0.3 propane --T 250", "y_methane"},
        {"dew PR+vdW1", "p/MPa,w_propane,w_CH4\n1,30,70\n",
         "methane=70 propane=30 --basis mass --p 1", "T"},
        {"flash PR+vdW1", "T/K,p/MPa,z_propane\n250,2,0.4\n", "methane=0.6 propane --T 250 --p 2",
         "rhoL"},
        {"state PR+vdW1", "p/MPa,h/(J/mol),x_methane\n2,3000,0.6\n",
         "methane=0.6 propane --p 2 --h 3000", "T"}};
    for (auto const& r : rows) {
        SCOPED_TRACE(r.command + r.input);
        const bool mixture = r.command.find('+') != std::string::npos;
        scratch.write("points.csv", r.input);
        const Outcome file = run_corvane(r.command + (mixture ? " methane propane" : "") +
                                         " --full --input points.csv" + home);
        ASSERT_EQ(file.code, 0) << file.err << file.out;
        const auto lines = lines_of(file.out);
        const auto names = fields(lines[0], ','), row = fields(lines[1], ',');
        const std::string options = run_corvane(r.command + " " + r.options + " --json" + home).out;
        Json const one = Json::parse(options)["rows"][0];
        bool found = false;
        for (std::size_t k = 0; k < names.size(); ++k)
            if (names[k].substr(0, names[k].find('/')) == r.column) {
                found = true;
                const double x = one[r.column == "rhoL" ? "rho" : r.column];
                EXPECT_NEAR(std::stod(row[k]) / x, 1, 1e-9);
            }
        EXPECT_TRUE(found || r.column == "rhoL") << lines[0];
    }
}

TEST(CliFiles, ThreadsChangeNothing) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    std::string pure = "T;p\n", mixed = "T,p,x_propane\n";
    for (int k = 0; k < 700; ++k) {  // more than ten chunks; a number with a comma in the middle
        pure += std::to_string(200 + k) + (k == 300 ? ",5;1\n" : k % 97 == 0 ? ";x\n" : ";1\n");
        mixed += std::to_string(200 + k % 170) + ",2," + std::to_string(0.001 * (k % 990)) + '\n';
    }
    scratch.write("pure.csv", pure);
    scratch.write("mixed.csv", mixed);
    for (std::string const run : {"state PR CO2 --input pure.csv", "flash PR+vdW1 methane propane --input mixed.csv",
                                  "bubble PR+vdW1 methane propane --input mixed.csv"}) {
        SCOPED_TRACE(run);
        const std::string more = run[0] == 'b' ? "b.csv" : "";
        if (!more.empty()) scratch.write("mixed.csv", "T,x_propane\n210,0.5\n220,0.4\n2000,0.5\n230,0.6\n");
        const Outcome one = run_corvane(run + " --keep-going --full" + home);
        EXPECT_EQ(one.code, 0) << one.err;
        EXPECT_EQ(run_corvane(run + " --keep-going --full --threads 3" + home).out, one.out);
        EXPECT_EQ(lines_of(one.out).size(), run[0] == 'b' ? 5u : 701u);
    }
    // What is wrong with the last line does not cost the rows before it.
    scratch.write("pure.csv", pure + "1;2;3\n");
    const Outcome broken = run_corvane("state PR CO2 --input pure.csv --threads 2" + home);
    EXPECT_EQ(broken.code, 1);
    EXPECT_EQ(lines_of(broken.out).size(), 701u);
    EXPECT_NE(broken.err.find("pure.csv:702: more fields than columns"), std::string::npos) << broken.err;
}

TEST(CliFiles, CompositionsComeFromFilesToo) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    scratch.write("feed.csv", "\xef\xbb\xbf" "component;m/(kg/h)\nCH4;30,0\npropane;70\n");
    scratch.write("two.csv", "component,x,w\nCH4,1,2\n");
    scratch.write("none.csv", "component,amount\nCH4,1\n");
    scratch.write("bad.csv", "component,n/(mol/s)\nCH4,1\npropane,\n");
    const std::string flash = "flash PR+vdW1 --T 250 --p 2 --no-heading" + home;
    const Outcome words = run_corvane(flash + " --basis mass methane=30 propane=70");
    EXPECT_EQ(words.code, 0) << words.err;
    scratch.write("percent.csv", "name;w\nCH4;30,0 %\npropane;70%\n");
    for (std::string const file : {"feed.csv", "percent.csv"})
        EXPECT_EQ(run_corvane(flash + " --composition " + file).out, words.out) << file;
    for (auto const& [file, why] : {std::pair("two.csv", "two columns with amounts, x and w"),
                                    {"none.csv", "no column with amounts"}, {"bad.csv", "bad.csv:3: "}})
        EXPECT_NE(run_corvane(flash + " --composition " + file).err.find(why), std::string::npos) << file;
    EXPECT_EQ(run_corvane(flash + " --composition feed.csv CH4=1").code, 2);
    EXPECT_EQ(run_corvane(flash).code, 2);
}

TEST(CliFiles, RowsThatFailAreMarkedAndFilesThatCannotBeReadRefused) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    scratch.write("points.csv", "T/K,p/MPa\n300,1\n,1\n300,x\n-3,1\n310,1\n");
    const Outcome run = run_corvane("state PR CO2 --input points.csv" + home);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "corvane: state: 3 of 5 rows failed: see the column status\n");
    const auto lines = lines_of(run.out);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_NE(lines[2].find("failed: T/K: nothing is given"), std::string::npos) << lines[2];
    EXPECT_NE(lines[3].find("failed: p/MPa: 'x' is not a number"), std::string::npos) << lines[3];
    EXPECT_NE(lines[4].find("failed: value out of range"), std::string::npos) << lines[4];
    EXPECT_EQ(lines[5].substr(lines[5].size() - 3), ",ok");
    EXPECT_EQ(run_corvane("state PR CO2 --keep-going --input points.csv" + home).code, 0);
    EXPECT_EQ(run_corvane("state PR CO2 --input points.csv >/dev/full" + home).code, 1);
    const struct {
        char const *arguments, *text;
        int code;
        char const* says;
    } bad[] = {{"state PR CO2", "", 1, "the file is empty"},
               {"state PR CO2", "T/K,p/stone\n1,1\n", 1, "unknown unit 'stone'"},
               {"state PR CO2", "T/K,T/C\n1,1\n", 1, "two columns T"},
               {"state PR CO2", "T/K\n1\n", 2, "give two of"},
               {"state PR CO2 --T 300", "T,p\n1,1\n", 2, "--input brings the values"},
               {"state PR CO2 --json", "T,p\n1,1\n", 2, "writes CSV"},
               {"saturation PR CO2", "x\n1\n", 1, "either a column T or a column p"},
               {"saturation PR CO2", "T/K,p/MPa\n250,1\n", 1, "either a column T or a column p"},
               {"flash PR+vdW1 methane propane", "T,p\n1,1\n", 1, "no composition"},
               {"flash PR+vdW1 methane propane", "T,p,x_water\n1,1,1\n", 1, "not a component"},
               {"flash PR+vdW1 methane propane", "T,p,x_methane,w_propane\n1,1,1,1\n", 1,
                "do not go together"}};
    for (auto const& b : bad) {
        SCOPED_TRACE(b.says);
        scratch.write("bad.csv", b.text);
        const Outcome refused = run_corvane(std::string(b.arguments) + " --input bad.csv" + home);
        EXPECT_EQ(refused.code, b.code);
        EXPECT_NE(refused.err.find(b.says), std::string::npos) << refused.err;
    }
}
