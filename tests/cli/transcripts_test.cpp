// What the documentation shows of the command is what it prints: every line "$ corvane ..." of a
// fenced block and what follows it, up to the next command or the end of the block. Words must
// agree, numbers within the last digit shown; what is rounding (below 1e-9) and counts of
// evaluations are not compared.
#include <cli/program.h>
#include <support/scratch.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <regex>

namespace {
/// Residuals and bounds of errors, which change with every rounding, are below this; no result is.
constexpr double kRounding = 1e-9;

struct Transcript {
    std::string command;
    std::vector<std::string> lines;
};

std::vector<Transcript> transcripts(std::filesystem::path const& page) {
    std::vector<Transcript> all;
    std::ifstream file(page);
    bool fenced = false, open = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("```")) {
            fenced = !fenced;
            open = false;
        } else if (fenced && line.starts_with("$ ")) {
            open = line.starts_with("$ corvane ");
            if (open) all.push_back({line.substr(10), {}});
        } else if (open) {
            all.back().lines.push_back(line);
        }
    }
    // A command alone is an instruction, not a transcript.
    std::erase_if(all, [](Transcript const& t) { return t.lines.empty(); });
    return all;
}

/// The number that `word` is as a whole, and the size of its last digit. False: it is none.
bool number(std::string const& word, double& value, double& digit) {
    static const std::regex form("-?\\d+(\\.(\\d+))?(e([-+]\\d+))?");
    std::smatch match;
    if (!std::regex_match(word, match, form)) return false;
    value = std::stod(word);
    digit = std::pow(10.0, (match[4].matched ? std::stoi(match[4]) : 0) - match.length(2));
    return true;
}

std::vector<std::string> words(std::string line) {
    line = std::regex_replace(line, std::regex("\\d+ evaluations"), "evaluations");
    line = std::regex_replace(line, std::regex("([(),;])"), " $1 ");
    std::istringstream stream(line);
    std::vector<std::string> list;
    for (std::string word; stream >> word;) list.push_back(word);
    return list;
}

void expect_same(std::string const& shown, std::string const& printed) {
    const auto expected = words(shown), found = words(printed);
    ASSERT_EQ(expected.size(), found.size()) << "shown:   " << shown << "\nprinted: " << printed;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        double a = 0.0, b = 0.0, digit = 0.0, other = 0.0;
        if (number(expected[i], a, digit) && number(found[i], b, other)) {
            const bool rounding = std::fabs(a) < kRounding && std::fabs(b) < kRounding;
            EXPECT_NEAR(a, b, rounding ? kRounding : 1.01 * digit)
                << "shown:   " << shown << "\nprinted: " << printed;
        } else {
            EXPECT_EQ(expected[i], found[i]) << "shown:   " << shown << "\nprinted: " << printed;
        }
    }
}
}  // namespace

TEST(CliTranscripts, AreWhatTheProgramPrints) {
    const std::filesystem::path source = CORVANE_SOURCE;
    std::vector<std::filesystem::path> pages{source / "README.md"};
    for (auto const& entry : std::filesystem::directory_iterator(source / "docs"))
        if (entry.path().extension() == ".md") pages.push_back(entry.path());
    std::size_t count = 0;
    for (auto const& page : pages)
        for (Transcript const& t : transcripts(page)) {
            SCOPED_TRACE(page.filename().string() + ": corvane " + t.command);
            const std::regex example(" examples/");
            const Outcome run = run_corvane(std::regex_replace(t.command, example, " " CORVANE_SOURCE "/examples/"));
            // A terminal shows messages, too; below the rest, if any is shown.
            const bool messages = std::any_of(t.lines.begin(), t.lines.end(),
                                              [](std::string const& line) { return line.starts_with("corvane: "); });
            const auto printed = lines_of(messages ? run.out + run.err : run.out);
            ++count;
            EXPECT_EQ(printed.size(), t.lines.size());
            for (std::size_t i = 0; i < std::min(printed.size(), t.lines.size()); ++i) {
                expect_same(t.lines[i], printed[i]);
                if (HasFailure()) break;  // the first difference tells enough
            }
        }
    EXPECT_GE(count, 6u);
}

// Pictures say what they show: the commands that draw, and those that look into the files, of one page.
TEST(CliTranscripts, PicturesShowWhatTheirPageSays) {
    if (std::system("gnuplot --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    std::ifstream page(CORVANE_SOURCE "/docs/everyday_pictures.md");
    std::string printed, shown, command;
    int drawn = 0, looked = 0;
    const auto compare = [&] {
        EXPECT_EQ(shown, printed) << command;
        shown.clear();
        printed.clear();
    };
    bool fenced = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("```")) {
            fenced = !fenced;
            compare();
        } else if (fenced && line.starts_with("$ corvane ")) {
            compare();
            command = line.substr(10);
            const std::string found = std::regex_replace(command, std::regex(" examples/"), " " CORVANE_SOURCE "/examples/");
            EXPECT_EQ(run_corvane(found + " --home " + scratch.home().string()).code, 0) << command;
            ++drawn;
        } else if (fenced && line.starts_with("$ ")) {
            compare();
            command = line.substr(2);
            ASSERT_TRUE(command.starts_with("grep ") || command.starts_with("head ")) << command;
            std::FILE* pipe = popen(command.c_str(), "r");
            ASSERT_NE(pipe, nullptr);
            for (int c; (c = std::fgetc(pipe)) != EOF;) printed += static_cast<char>(c);
            EXPECT_EQ(pclose(pipe), 0) << command;
            if (!printed.empty() && printed.back() != '\n') printed += '\n';
            ++looked;
        } else if (fenced) {
            shown += line + '\n';
        }
    }
    EXPECT_GE(drawn, 9);
    EXPECT_GE(looked, drawn);
}
