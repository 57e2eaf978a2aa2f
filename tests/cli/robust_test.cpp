// Properties of the command line as a whole: every command, bad surroundings, hostile input.
#include <cli/program.h>
#include <support/scratch.h>

#include <nlohmann/json.hpp>

#include <map>
#include <regex>
#include <set>

namespace {
/// Of every command an invocation that answers, without the options that are tested.
struct Sample {
    char const *positionals, *options;
};
const std::map<std::string, Sample> kCommands = {
    {"list", {"propan", ""}},
    {"state", {"PR propane", "--T 300 --p 1"}},
    {"saturation", {"PR propane", "--T 300"}},
    {"density", {"PR propane", "--T 300 --p 1"}},
    {"critical", {"PR propane", ""}},
    {"solid", {"MEOS water", "--T 250"}},
    {"viscosity", {"MEOS CO2", "--T 300 --p 1"}},
    {"transport", {"MEOS propane", "--T 300 --p 1"}},
    {"surface-tension", {"MEOS ethanol", "--T 300"}},
    {"diffusion", {"MEOS propane", "--T 300 --p 1"}},
    {"interface", {"PR+vdW1 methane=0.3 propane", "--T 280"}},
    {"range", {"PR propane", ""}},
    {"mixture", {"PR+vdW1 methane=0.6 propane", "--T 300 --p 1"}},
    {"bubble", {"PR+vdW1 methane=0.3 propane", "--T 280"}},
    {"dew", {"PR+vdW1 methane=0.3 propane", "--T 280"}},
    {"flash", {"PR+vdW1 methane=0.5 propane", "--T 280 --p 2"}},
    {"pxy", {"PR+vdW1 propane butane", "--T 320"}},
    {"txy", {"PR+vdW1 propane butane", "--p 1"}},
    {"envelope", {"PR+vdW1 methane=0.5 propane", ""}},
    {"equilibrium", {"PR+vdW1 methane=0.3 propane", "--T 280"}},
    {"split", {"PR+vdW1 methane propane", "--T 280 --p 3"}},
    {"critical-line", {"PR+vdW1 methane propane", ""}},
    {"diagram", {"PR+vdW1 propane butane", ""}},
    {"three-phase", {"PR+vdW1 ethane methanol", "--T 290"}},
    {"azeotrope", {"PR+vdW1 CO2 ethane", "--T 250"}},
    {"property-diagram", {"PR propane", ""}},
    {"ternary", {"PR+vdW1 methane hydrogen_sulfide water", "--T 300 --p 5"}},
    {"excess", {"PR+vdW1 propane=0.4 butane", "--T 300 --p 1"}},
    {"henry", {"PR+vdW1 methane butane", "--T 300"}},
    {"virial", {"PR propane", "--T 300"}},
    {"ideal-curve", {"PR nitrogen", ""}},
    {"residue-curves", {"PR+vdW1 propane butane pentane", "--p 0.5 --mesh 3"}},
    {"reaction", {"'N2 + 3 H2 = 2 NH3'", "--T 300"}},
    {"check-equation", {"PR propane", ""}},
    {"new-equation", {"$(mktemp -d)/mine", ""}},
    {"solubility", {"PR+vdW1 methane CO2 --solid CO2", "--T 150 --p 5"}},
    {"fit", {"PR hexane", "--adjust omega --data " CORVANE_SOURCE "/examples/fit/hexane.csv"}},
};
/// What else an option needs, in place of the options above; "" if these remain.
const std::map<std::string, char const*> kWith = {
    {"state --rho", "--T 300"},     {"state --v", "--T 300"},
    {"state --h", "--p 1"},         {"state --s", "--p 1"},
    {"state --u", "--p 1"},         {"state --q", "--T 250"},
    {"flash --v", "--T 280"},        {"flash --u", "--rho 0.002"}, {"flash --q", "--T 280"},
    {"henry --p", "--T 300"},
    {"saturation --p", " "},        {"solid --melting", " "},
    {"mixture --rho", "--T 300"},   {"bubble --p", " "},            {"dew --p", " "},
    {"flash --h", "--p 2"},         {"flash --s", "--p 2"},         {"flash --rho", "--T 280"},
    {"equilibrium --p", " "},       {"critical-line --rho", "--T 300"},
    {"critical-line --T", "--rho 0.008"}, {"three-phase --p", " "}, {"azeotrope --p", " "},
    {"three-phase --T-min", " "}, {"azeotrope --T-min", " "}};
/// Two values at which it answers.
std::string two_values(std::string const& command, std::string const& option) {
    if (command == "solid") return option == "--melting" ? "1,2" : "250,260";
    if (command == "three-phase" && option == "--p") return "2,2.5";
    if (command == "solubility" && option == "--T") return "150,160";
    if (command == "azeotrope" || command == "solubility")
        return option == "--T" ? "250,255" : "2,3";
    if (option == "--rho") return "0.0001,0.0002";
    if (option == "--v") return "5000,6000";
    if (option == "--q") return "0.25,0.5";
    if (option == "--h" || option == "--u") return "4000,5000";
    if (option == "--s") return "80,90";
    if (option == "--at") return "0.4,0.5";
    return option == "--T" ? "280,290" : "1,1.5";
}

std::string input(std::string const& command) {
    return command == "range" ? "echo '300 1' |" : "";
}

/// Its options and what help calls their values.
std::map<std::string, std::string> options_of(std::string const& command) {
    const std::string help = run_corvane(command + " --help").out;
    const std::regex line(R"(\n +(?:-\w,)?(--[\w-]+) ([A-Z]+)\b)");
    std::map<std::string, std::string> result;
    for (std::sregex_iterator k(help.begin(), help.end(), line), end; k != end; ++k)
        result[(*k)[1]] = (*k)[2];
    return result;
}

/// The arguments with another value of the option.
std::string with(std::string const& command, std::string const& option, std::string const& value) {
    Sample const& sample = kCommands.at(command);
    const auto other = kWith.find(command + " " + option);
    std::string options = other != kWith.end() ? other->second : sample.options;
    options = std::regex_replace(options, std::regex(option + R"( \S+)"), "");
    return command + " " + sample.positionals + " " + options + " " + option + " " + value;
}

/// One sentence, on one line, without control characters; nothing but that.
void expect_one_sentence(Outcome const& run) {
    const auto lines = lines_of(run.err);
    ASSERT_EQ(lines.size(), 1u) << run.err;
    EXPECT_EQ(lines[0].rfind("corvane: ", 0), 0u) << run.err;
    EXPECT_TRUE(run.out.empty()) << run.out;
    for (char c : lines[0]) EXPECT_TRUE(static_cast<unsigned char>(c) >= 0x20) << run.err;
}
}  // namespace

TEST(CliEveryCommand, AnswersForEachValueOfAListOrRefusesIt) {
    std::string text = run_corvane("").err;
    text = text.substr(text.find("required: ") + 10);
    std::istringstream names(text.substr(0, text.find(" (see")));
    int commands = 0;
    for (std::string name; std::getline(names >> std::ws, name, ','); ++commands) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(kCommands.count(name)) << "a new command: give it a row above";
        Sample const& sample = kCommands.at(name);
        const std::string good = name + " " + sample.positionals + " " + sample.options;
        EXPECT_EQ(run_corvane(good, input(name)).code, 0) << good;
        for (auto const& [option, type] : options_of(name)) {
            if (type != "VALUES" && type != "VALUE") continue;
            const std::string values = two_values(name, option),
                              arguments = with(name, option, values);
            SCOPED_TRACE(arguments);
            const Outcome run = run_corvane(arguments + " --json", input(name));
            if (type == "VALUE") {
                EXPECT_EQ(run.code, 2);
                EXPECT_NE(run.err.find("neither lists nor ranges"), std::string::npos) << run.err;
                expect_one_sentence(run);
                continue;
            }
            ASSERT_EQ(run.code, 0) << run.err;
            const auto result = nlohmann::json::parse(run.out);
            std::set<double> found;  // of the rows; within rounding, by ten digits
            for (auto const& row : result["rows"]) {
                std::string column = option == "--melting" ? "p"
                                     : option == "--at"    ? "x_methane"
                                     : option == "--q" && name == "state" ? "amount"
                                                           : option.substr(2);
                if (row.contains(column + "_all")) column += "_all";
                if (row[column].is_number())
                    found.insert(std::stod(std::to_string(row[column].get<double>())));
            }
            const std::size_t comma = values.find(',');
            for (std::string const& one : {values.substr(0, comma), values.substr(comma + 1)})
                EXPECT_TRUE(found.count(std::stod(std::to_string(std::stod(one))))) << one;
        }
    }
    EXPECT_EQ(commands, static_cast<int>(kCommands.size()));
}

TEST(CliEveryCommand, TakesWhateverIsWrittenAndSaysOneSentence) {
    char const* const words[] = {"nan", "''", "1e400", "-1", "1:2", "a\x1b[31mb", "1,,2", "0x10",
                                 "\"$(printf 'a\\nb')\"", "$(head -c 9000 /dev/zero | tr '\\0' 9)"};
    for (auto const& [name, sample] : kCommands) {
        const std::string good = name + " " + sample.positionals + " " + sample.options;
        for (std::string const& bad :
             {name, good + " --nosuch", good + " --home /nowhere",
              name + " nosuch propane --T 1"}) {
            SCOPED_TRACE(bad);
            const Outcome run = run_corvane(bad, input(name));
            if (bad == "list") continue;  // needs no arguments
            EXPECT_TRUE(run.code == 1 || run.code == 2) << run.code;
            expect_one_sentence(run);
        }
        for (auto const& [option, type] : options_of(name))
            if (type == "VALUES" || type == "VALUE") {
                // A word for each option, in turn: all with all would take minutes.
                static std::size_t turn = 0;
                std::string word = words[turn++ % std::size(words)];
                if (option == "--h" || option == "--s" || option == "--u")
                    if (word == "-1") word = "nan";  // these may be below zero
                const std::string bad = with(name, option, word);
                SCOPED_TRACE(bad);
                const Outcome run = run_corvane(bad, input(name));
                EXPECT_EQ(run.code, 2) << run.out;
                expect_one_sentence(run);
            }
    }
}

TEST(CliSurroundings, AnAnswerThatCannotBeWrittenIsAFailure) {
    for (auto const& [name, sample] : kCommands) {
        const std::string good = name + " " + sample.positionals + " " + sample.options;
        SCOPED_TRACE(good);
        for (std::string const& bad : {good + " >/dev/full", good + " >&-",
                                       name + " --help >/dev/full", name + " --help >&-"}) {
            const Outcome run = run_corvane(bad, input(name));
            EXPECT_EQ(run.code, 1) << bad;
            EXPECT_NE(run.err.find("standard output does not take"), std::string::npos) << run.err;
        }
    }
    EXPECT_EQ(run_corvane("--version >/dev/full").code, 1);
}

TEST(CliSurroundings, MessagesThatNobodyTakesDoNotChangeTheExitCode) {
    for (char const* where : {"2>/dev/full", "2>&-"})
        for (auto const& [arguments, code] :
             {std::pair{"state PR nosuch --T 300 --p 1", 1}, {"state PR propane", 2}, {"nosuch", 2},
              {"saturation PR CO2 --T 280,400", 1}, {"state PR propane --T 300 --p 1", 0}})
            EXPECT_EQ(run_corvane(std::string("") + arguments + " " + where + " #").code, code)
                << arguments << where;
    // A stream that is closed is not the next file that is opened.
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    run_corvane("pxy PR+vdW1 propane butane --T 320,400 --plot a.svg" + home + " 2>&- #");
    EXPECT_EQ(Scratch::read("a.svg").find("corvane"), std::string::npos);
}

TEST(CliSurroundings, APictureIsWrittenWholeOrNotAtAll) {
    if (run_corvane("pxy PR+vdW1 propane butane --T 320 --plot /tmp/x.svg").err.find("gnuplot") !=
        std::string::npos)
        GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string command =
        "pxy PR+vdW1 propane butane --T 320 --home " + scratch.home().string() + " --plot ";
    for (std::string const name : {"a.svg", "a.png"}) {
        SCOPED_TRACE(name);
        scratch.write(name, "before");
        // No file may grow beyond so many KiB: the script, what gnuplot writes, the picture.
        int failed = 0;
        for (int most : {1, 4, 8, 12, 16, 20}) {
            const Outcome run =
                run_corvane(command + name + " >/dev/null",
                            "ulimit -f " + std::to_string(2 * most) + ";");  // blocks of 512
            if (run.code == 0) continue;
            ++failed;
            EXPECT_EQ(run.code, 1);
            EXPECT_EQ(Scratch::read(name), "before") << most;
            const auto files = std::distance(std::filesystem::directory_iterator("."), {});
            EXPECT_EQ(files, name == "a.svg" ? 1 : 2) << "nothing is left behind";
        }
        EXPECT_GT(failed, 2);
        EXPECT_EQ(run_corvane(command + name).code, 0);
        EXPECT_GT(Scratch::read(name).size(), 5000u);
    }
    // Nor does a reader who goes early cost it.
    std::filesystem::remove("a.svg");
    const Outcome early = run_corvane("property-diagram PR propane --plot a.svg --home " + scratch.home().string() +
                                      " | head -n 1");
    EXPECT_EQ(early.err, "");
    EXPECT_GT(Scratch::read("a.svg").size(), 5000u);
    std::filesystem::create_directory("folder.svg");
    // A device that is full, a pipe that nobody reads on; a link stays one.
    std::filesystem::create_symlink("/dev/full", "full.pdf");
    std::filesystem::create_symlink("a.svg", "link.svg");
    for (char const* bad : {"folder.svg", "full.pdf", "full.pdf --html /dev/full", "link.svg --html /dev/full",
                            "link.svg --html closed"}) {
        const bool pipe = std::string(bad).find("closed") != std::string::npos;
        const Outcome run = run_corvane(command + bad + " >/dev/null",
                                        pipe ? "mkfifo closed; (read line <closed) &" : "");
        EXPECT_EQ(run.code, 1) << bad;
        EXPECT_NE(run.err.find("cannot write"), std::string::npos) << run.err;
    }
    EXPECT_TRUE(std::filesystem::is_symlink("link.svg"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(CliSurroundings, FilesThatAreNoFilesAreRefusedOrRead) {
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    scratch.write("points.csv", "T/K,p/MPa\n280,4.16\n");
    // The first bytes of a picture, of which the first line has no control character; a
    // spreadsheet's "Unicode text".
    scratch.write("picture.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    scratch.write("wide.csv", std::string("\xff\xfeT\0/\0K\0\n\0", 10));
    scratch.write("name\x1b[31m.csv", "T/K,p/MPa\n\x1b[31m280,4.16\n");
    struct {
        char const *file, *message;
    } const cases[] = {{"/", "/: a folder, not a file"},
                       {"/dev/zero", "/dev/zero: not a text file"},
                       {"picture.png", "picture.png: not a text file"},
                       {"wide.csv", "wide.csv: a text in UTF-16; save it in UTF-8"},
                       {"/dev/null", "/dev/null: the file is empty"},
                       {"points.csv/x", "points.csv/x: Not a directory"},
                       {"name*.csv", "name?[31m.csv:2: '?[31m280' is not a number"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.file);
        const Outcome run =
            run_corvane("saturation PR CO2 --compare " + std::string(c.file) + home);
        EXPECT_EQ(run.code, 1);
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        expect_one_sentence(run);
    }
    const Outcome rows = run_corvane("state PR CO2 --input - <picture.png" + home);
    EXPECT_EQ(rows.code, 1);
    EXPECT_EQ(rows.err, "corvane: state: -: not a text file\n");
    const Outcome endless =
        run_corvane("saturation PR CO2 --compare /dev/stdin" + home, "yes 1 | tr -d '\\n' |");
    EXPECT_NE(endless.err.find("the file is too large"), std::string::npos) << endless.err;
    const Outcome pipe = run_corvane("saturation PR CO2 --compare /dev/stdin" + home,
                                     "cat points.csv |");
    EXPECT_EQ(pipe.code, 0) << pipe.err;
}

TEST(CliSurroundings, WithoutMemoryItSaysSo) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer reserves more address space than is left here";
#endif
    // Enough to start (the program and its libraries map some 20 MB), not for 100000 states.
    const Outcome run = run_corvane(
        "mixture PR+vdW1 methane=0.5 propane --T 300:400:0.0011 --p 1 >/dev/null",
        "ulimit -v 60000;");
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("not enough memory"), std::string::npos) << run.err;
}

TEST(CliNames, SynonymsLeadToTheSubstanceAndSlipsToASuggestion) {
    struct {
        char const *text, *name;
    } const synonyms[] = {
        {"iC4", "isobutane"},       {"nC5", "pentane"},         {"i-butane", "isobutane"},
        {"iso-pentane", "isopentane"}, {"EtOH", "ethanol"},     {"MeOH", "methanol"},
        {"DME", "dimethyl_ether"},  {"MEG", "ethylene_glycol"}, {"TEG", "triethylene_glycol"},
        {"R1234ze", "r1234ze_e"},   {"'R1234ze(E)'", "r1234ze_e"}, {"HFC-134a", "r134a"},
        {"R-134a", "r134a"},        {"steam", "water"},         {"CO\u2082", "carbon_dioxide"},
        {"C\u2083H\u2088", "propane"}, {"H2", "hydrogen"},      {"He", "helium"},
        {"p-H2", "parahydrogen"},   {"'hydrogen sulphide'", "hydrogen_sulfide"},
        {"n-propanol", "1_propanol"}, {"t-butanol", "2_methyl_2_propanol"}, {"C1", "methane"}};
    for (auto const& s : synonyms) {
        const Outcome run = run_corvane(std::string("critical PR ") + s.text);
        EXPECT_NE(run.out.find(std::string("substance ") + s.name + " "), std::string::npos)
            << s.text << run.err;
    }
    struct {
        char const *text, *message;
    } const slips[] = {
        {"butanol", "did you mean 1_butanol (C4H10O) or 2_butanol (C4H10O) or "},
        {"xylene", "did you mean m_xylene (C8H10) or o_xylene (C8H10) or p_xylene (C8H10)?"},
        {"oktane", "did you mean octane (C8H18)?"},
        {"mthane", "did you mean ethane (C2H6) or methane (CH4)?"},
        // One letter off, and another substance: nothing is offered.
        {"MEGA", "unknown substance 'MEGA'; all are in "},
        {"R123x", "unknown substance 'R123x'; all are in "},
        {"nonenal", "unknown substance 'nonenal'; all are in "},
        {"cis-butane", "unknown substance 'cis-butane'; all are in "},
        {"2-hexane", "unknown substance '2-hexane'; all are in "}};
    for (auto const& s : slips) {
        const Outcome run = run_corvane(std::string("critical PR ") + s.text);
        EXPECT_EQ(run.code, 1) << s.text;
        EXPECT_NE(run.err.find(s.message), std::string::npos) << run.err;
    }
}

TEST(CliNames, AreNoLongerThanASentence) {
    // Before names were bounded, this took four seconds and repeated them whole.
    for (char const* command : {"state PR %s --T 300 --p 1", "state %s propane --T 300 --p 1",
                                "mixture %s methane=1 --T 300 --p 1", "%s", "list --substance %s",
                                "mixture PR+vdW1 %s=1 --T 300 --p 1", "state PR propane --T %s"}) {
        std::string arguments = command;
        arguments.replace(arguments.find("%s"), 2, "$(head -c 120000 /dev/zero | tr '\\0' a)");
        const Outcome run = run_corvane(arguments);
        EXPECT_TRUE(run.code == 1 || run.code == 2) << command;
        EXPECT_LT(run.err.size(), 5000u) << command;
        expect_one_sentence(run);
    }
}
