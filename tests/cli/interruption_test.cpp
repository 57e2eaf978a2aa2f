// Ctrl-C: the calculation ends, and what is finished is printed and drawn.
#include <cli/cases.h>
#include <cli/json.h>
#include <cli/running.h>
#include <support/scratch.h>

TEST(CliInterruption, AListKeepsItsPoints) {
    Running list("bubble PR+vdW1 methane=0.3 propane=0.7 --T 200:300:0.002 --branch upper --csv");
    ASSERT_TRUE(list.has_points(9));
    list.interrupt();
    const Outcome run = list.end();
    EXPECT_EQ(run.code, 130);
    const auto lines = lines_of(run.out);
    ASSERT_GT(lines.size(), 8u) << run.out;
    EXPECT_NE(lines.back().find("# interrupted: "), std::string::npos) << lines.back();
    EXPECT_NE(lines.back().find(" of 50001 points"), std::string::npos) << lines.back();
}

// timeout and some shells send it to the program and to its group: the second one once left nothing
// at all. One that comes half a second later or more is meant to end the program; where the machine is so busy
// that this cannot be excluded the run says nothing, and another one is made.
TEST(CliInterruption, OneThatComesTwiceKeepsWhatThereIs) {
    using Clock = std::chrono::steady_clock;
    for (int attempt = 0; attempt < 20; ++attempt) {
        Running curves("residue-curves PR+vdW1 ethanol water hexane --p 0.1 --mesh 30 --csv");
        ASSERT_TRUE(curves.has_points(1));
        const auto first = Clock::now();
        curves.interrupt();
        curves.interrupt();
        if (Clock::now() - first > std::chrono::milliseconds(200)) continue;
        const Outcome run = curves.end();
        EXPECT_EQ(run.code, 130);
        expect_parts(run.out, "curve,T/K,xi|# interrupted: curves are missing");
        return;
    }
    GTEST_SKIP() << "two signals never came within 0.2 s";
}

// A writer that keeps the pipe open: the row is answered before another one comes, and waiting can
// be interrupted.
TEST(CliInterruption, RowsOfAPipeAreAnsweredAsTheyCome) {
    const Scratch scratch;
    Running rows("state PR propane --input rows --home " + scratch.home().string(),
                 "mkfifo rows; exec 3<>rows; printf 'T/K,p/MPa\\n300,0.5\\n' >&3;");
    ASSERT_TRUE(rows.has_printed(",ok\n"));
    rows.interrupt();
    const Outcome run = rows.end();
    EXPECT_EQ(run.code, 130);
    expect_parts(run.out, "T/K,p/MPa,|\n300,0.5,");
    expect_parts(run.err, "interrupted after 1 rows");
}

// Half a diagram is drawn and said to be one; while it is written or drawn nothing is lost.
TEST(CliInterruption, ADiagramIsAWholeFile) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string to = " --csv --plot a.svg --home " + scratch.home().string();
    const auto whole = [] {
        const std::string svg = Scratch::read("a.svg");
        return svg.ends_with("</svg>\n") || svg.ends_with("</svg>\n\n");
    };
    struct {
        char const* arguments;
        long points;
        char const* words;
    } const cases[] = {
        {"envelope SAFTVRMIE+LB methane=0.5 ethane=0.2 propane=0.2 butane=0.1", 5, "interrupted"},
        {"txy PCSAFT+LB ethanol heptane --p 0.1:2:0.001", 50, " of 1901 diagrams"},
        {"txy SAFTVRMIE+LB methane propane --p 1 --step 0.0005", 10, "interrupted: 0 of 1 diagrams, the last one in part"},
        {"critical-line SAFTVRMIE+LB methane propane --step 0.0005", 10, "interrupted: lines are missing"},
        {"azeotrope SAFTVRMIE+LB CO2 ethane", 10, "interrupted: lines are missing"},
        {"ternary PCSAFT+LB CO2 methanol water --T 300 --p 7 --step 0.0005", 50, "interrupted: regions are missing"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        std::filesystem::remove("a.svg");
        Running diagram(c.arguments + to);
        ASSERT_TRUE(diagram.has_points(c.points));
        diagram.interrupt();
        const Outcome run = diagram.end();
        EXPECT_EQ(run.code, 130);
        EXPECT_GT(lines_of(run.out).size(), 5u) << run.err;
        EXPECT_NE(run.out.find(c.words), std::string::npos) << lines_of(run.out).back();
        EXPECT_TRUE(whole());
    }
    // All is computed, and waits for its reader.
    std::filesystem::remove("a.svg");
    Running computed("pxy PR+vdW1 ethanol water --T 350 --step 0.001" + to);
    ASSERT_TRUE(computed.waits_for_a_reader());
    computed.interrupt();
    const Outcome run = computed.end();
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("# T = 350 K: complete"), std::string::npos);
    EXPECT_TRUE(whole());
}
