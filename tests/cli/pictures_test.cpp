// Pictures of diagrams, and pages that have them.
#include <cli/json.h>
#include <support/scratch.h>

#include <algorithm>
#include <cstring>
#include <regex>

namespace {
/// What the script of a page draws.
Json drawn(std::string const& page) {
    const std::string mark = "id=\"data\">";
    const std::size_t data = page.find(mark) + mark.size();
    return Json::parse(page.substr(data, page.find("</script>", data) - data));
}
}  // namespace

TEST(CliPictures, PicturesShowWhatMatters) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    struct {
        char const* arguments;
        double low, least, most;  // the ordinate begins at or above low, and ends between
    } const cases[] = {
        {"pxy PR+vdW1 ethanol water --T 350", 0, 0.1, 0.3},    // not the liquids up to 100 MPa
        {"txy PR+vdW1 ethanol water --p 0.1", 320, 370, 400},  // not the cold liquids
        {"diagram PR+vdW1 CO2 decane --kij 0.1", 0, 19, 40},   // the maximum of the critical line
        {"diagram PR+vdW1 CO2 decane --kij 0.1 --p-max 15", 0, 15, 16},  // to the next round value
        {"envelope MEOS+GERG methane=0.85 ethane=0.1 propane=0.049 helium=0.001", 0, 8, 25}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.arguments);
        run_corvane(c.arguments + std::string(" --html a.html --home ") + scratch.home().string());
        Json const axis = drawn(Scratch::read("a.html"))["axes"][1];
        EXPECT_GE(value(axis, "low"), c.low);
        EXPECT_GE(value(axis, "high"), c.least);
        EXPECT_LE(value(axis, "high"), c.most);
    }
}

// Two critical end points 0.3 K apart: an inset, whose numbers lie next to them on either side
// (those of the axis are a hundred kelvins apart).
TEST(CliPictures, PointsThatHideEachOtherHaveAnInset) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    ASSERT_EQ(run_corvane("diagram PR+vdW1 CO2 decane --kij 0.1 --plot a.svg --home " +
                          scratch.home().string())
                  .code,
              0);
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
    // Two corners of triangles of three phases, 0.006 apart, at water; in the other triangle
    // nothing is hidden.
    const std::regex larger(">\\s*\u00d7\\d+\\s*<");
    for (auto const& [arguments, inset] :
         {std::pair("PR+vdW1 ethanol water hexane --T 332 --p 0.1", true),
          {"PCSAFT+LB CO2 methanol water --T 300 --p 7", false}}) {
        run_corvane("ternary " + std::string(arguments) + " --plot b.svg --home " +
                    scratch.home().string());
        EXPECT_EQ(std::regex_search(Scratch::read("b.svg"), larger), inset) << arguments;
    }
}

// The same model twice, whose curves coincide: without colours the second one has marks along its curves, in colours
// the first one is wider.
TEST(CliPictures, ModelsThatCoincideCanBeToldApart) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string both = "pxy propane butane --T 320 --model PR+vdW1 --model PR+vdW1 --html a.html --plot a.svg --home " +
                             scratch.home().string();
    ASSERT_EQ(run_corvane(both + " --mono").code, 0);
    Json const mono = drawn(Scratch::read("a.html"));
    int along = 0, with = 0, without = 0;
    for (Json const& m : mono["marks"])
        if (m["symbol"] == "square-open") along += static_cast<int>(m["points"].size());
    for (Json const& c : mono["curves"]) ++(c.contains("symbol") ? with : without);
    EXPECT_GE(along, 6);
    EXPECT_EQ(with, without);
    const std::string svg = Scratch::read("a.svg");  // gnuplot's point 4 is its third definition
    const std::regex square("xlink:href='#gpPt3'");
    EXPECT_GE(std::distance(std::sregex_iterator(svg.begin(), svg.end(), square), std::sregex_iterator()), along);
    ASSERT_EQ(run_corvane(both).code, 0);
    Json const colours = drawn(Scratch::read("a.html"));
    EXPECT_GT(value(colours["curves"].front(), "width"), value(colours["curves"].back(), "width") + 1);
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
    const std::string body =
        page.substr(page.find("<tbody>"), page.find("</tbody>") - page.find("<tbody>"));
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

TEST(CliPictures, PagesHaveThePictureAndTheNumbersOfTheTable) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    for (char const* arguments :
         {"pxy PR+vdW1 methane propane --T 250", "envelope PR+vdW1 methane=0.8 propane",
          "diagram PR+vdW1 CO2 ethane", "critical-line PR+vdW1 methane propane",
          "azeotrope PR+vdW1 CO2 ethane", "bubble PR+vdW1 methane=0.3 propane --T 250:280:10",
          "property-diagram PR propane --kind Ts",
          "ternary PR+vdW1 nitrogen methane ethane --T 120 --p 3",
          "residue-curves PR+vdW1 propane butane pentane --p 0.5"}) {
        SCOPED_TRACE(arguments);
        const Outcome run =
            run_corvane(arguments + home + " --csv --no-heading --precision 9 --html a.html");
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
        Json const picture = drawn(page);
        EXPECT_FALSE(picture["curves"].empty());
        EXPECT_LT(value(picture["axes"][1], "low"), value(picture["axes"][1], "high"));
        EXPECT_EQ(page.find("src="), std::string::npos);
        EXPECT_NE(page.find("default-src 'none'"), std::string::npos);
    }
}

namespace {
struct Words {
    std::string text;
    double left, top, right, bottom;  // pixels
};
/// All texts of a picture with the room that they take, letters half as wide as high.
std::vector<Words> words_of(std::string const& svg) {
    static const std::regex form(
        "translate\\(([\\d.-]+),([\\d.-]+)\\)\"[^>]*font-size=\"([\\d.]+)\"\\s+text-anchor=\"(\\w+)\">\\s*<text>([^<]*)<");
    std::vector<Words> all;
    for (std::sregex_iterator t(svg.begin(), svg.end(), form), end; t != end; ++t) {
        const double x = std::stod((*t)[1]), y = std::stod((*t)[2]), size = std::stod((*t)[3]);
        const std::string text = (*t)[5], anchor = (*t)[4];
        const double wide = 0.5 * size * static_cast<double>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
        const double left = anchor == "start" ? x : anchor == "end" ? x - wide : x - 0.5 * wide;
        // gnuplot puts the base line a third of a letter below the middle.
        all.push_back({text, left, y - 0.7 * size, left + wide, y + 0.1 * size});
    }
    return all;
}
}  // namespace

// However small the sheet: no text is cut off or covers another one, the key below among them.
TEST(CliPictures, SmallSheetsHaveRoomForTheirWords) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const struct {
        std::string what;
        std::vector<char const*> sizes;
    } cases[] = {{"ternary PR+vdW1 ethanol water hexane --T 332 --p 0.1", {"60x60", "85x70", "110x85", "160x110"}},
                 {"ternary PCSAFT+LB CO2 methanol water --T 300 --p 7", {"60x60", "85x70", "110x85", "160x110"}},
                 {"residue-curves PR+vdW1 ethanol water hexane --p 0.1", {"60x60", "85x70", "110x85", "160x110"}},
                 {"pxy PR+vdW1 propane butane --T 323.15 --data " CORVANE_SOURCE "/examples/measured/propane_butane.csv",
                  {"60x45", "80x60", "100x75"}},
                 {"diagram PR+vdW1 CO2 ethane", {"80x60", "100x75"}},
                 {"property-diagram CO2 --kind ph", {"60x45", "80x60", "100x75"}},
                 {"envelope PR+vdW1 methane=0.8 propane", {"60x45", "80x60", "100x75"}}};
    for (auto const& [what, sizes] : cases)
        for (char const* size : sizes) {
            SCOPED_TRACE(what + " --size " + size);
            ASSERT_EQ(run_corvane(what + " --plot a.svg --size " + size + " --home " + scratch.home().string()).code, 0);
            const std::string svg = Scratch::read("a.svg");
            std::smatch sheet;
            ASSERT_TRUE(std::regex_search(svg, sheet, std::regex("viewBox=\"0 0 (\\d+) (\\d+)\"")));
            const double width = std::stod(sheet[1]), height = std::stod(sheet[2]);
            const auto all = words_of(svg);
            ASSERT_GT(all.size(), 10u);
            for (Words const& w : all) {
                EXPECT_TRUE(w.left > 0 && w.top > 0 && w.right < width && w.bottom < height) << w.text;
                for (Words const& other : all)
                    EXPECT_TRUE((w.text == other.text && w.left == other.left) || w.left > other.right || w.right < other.left || w.top > other.bottom ||
                                w.bottom < other.top)
                        << w.text << " over " << other.text;
            }
        }
}

TEST(CliPictures, Pictures) {
    if (no_gnuplot()) GTEST_SKIP() << "gnuplot is not installed";
    const Scratch scratch;
    const std::string home = " --home " + scratch.home().string();
    struct {
        char const* arguments;
        std::vector<std::string> words;
    } const cases[] = {
        {"pxy PR+vdW1 methane propane --T 250 --unit-p bar",
         {"methane + propane, PR+vdW1, k\u2081\u2082 0.0119, 250 K", "mole fraction of methane",
          "p / bar", "liquid", "vapour", "critical point"}},
        {"txy PR+vdW1 1_butene butane --p 1",
         {"1-butene + butane, PR+vdW1, k\u2081\u2082 0.0007", "T / K"}},
        {"txy PR+vdW1 ethanol water --p 0.1", {"three phases", "second liquid"}},
        {"pxy PR+vdW1 CH4 propane --T 250",
         {"CH\u2084 + propane", "mole fraction of CH\u2084"}},  // as it was named
        {"bubble PR+vdW1 methane=0.5 C7+ --T 300 --define C7+ Tc=540 pc=2.7 omega=0.35",
         {"0.5 C\u2087\u208a"}},
        {"diagram PR+vdW1 CO2 ethane",
         {"pure CO\u2082", "critical line", "critical end point", "azeotropes"}},
        {"envelope PR+vdW1 methane=0.8 propane", {"T / K", "bubble points", "cricondenbar"}},
        {"property-diagram PR+vdW1 methane=0.7 propane --kind Ts",
         {"0.7 methane + 0.3 propane", "s / (J/(mol K))", "isobars", "dew points"}},
        {"txy PR+vdW1 propane butane --p 1", {">L<", ">V<", ">L + V<"}},  // fields by their names
        {"pxy PR+vdW1 methane CO2 --T 250", {">F<", ">L + V<"}},
        {"txy PCSAFT+LB benzene cyclohexane --p 0.1 --solid", {">L<", ">V<", ">benzene (s) + L<", ">benzene (s) + cyclohexane (s)<"}},
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
    for (auto const& [name, begin] :
         {std::pair("b.png", "\x89PNG"), {"b.pdf", "%PDF-"}, {"b.eps", "%!PS-Adobe"}}) {
        ASSERT_EQ(run_corvane(cases[0].arguments + home + " --size 3.2x2.4in --plot " + name).code,
                  0);
        EXPECT_EQ(Scratch::read(name).substr(0, std::strlen(begin)), begin);
        std::filesystem::remove(name);
    }
    // A long title in lines, as text; its size on paper; no colour but grey.
    std::string title = "<b>&amp; ";
    for (int k = 0; k < 30; ++k) title += "word" + std::to_string(k) + " ";
    ASSERT_EQ(
        run_corvane(cases[0].arguments + home +
                    " --mono --font Times,9 --size 80x60 --plot b.svg --title '" + title + "'")
            .code,
        0);
    const std::string mono = Scratch::read("b.svg");
    EXPECT_NE(mono.find("<title>&lt;b&gt;&amp;amp; word0"), std::string::npos);
    EXPECT_NE(mono.find("width=\"80mm\" height=\"60mm\""), std::string::npos);
    EXPECT_NE(mono.find("<desc>p / bar over mole fraction of methane. Curves: liquid, vapour."),
              std::string::npos);
    EXPECT_EQ(mono.find("word5 word6 word7 word8 word9 word10 word11 word12</"), std::string::npos)
        << "not in a line";
    const std::regex colour(
        "(?:rgb\\( *(\\d+), *(\\d+), "
        "*(\\d+)\\)|#([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})\\b)");
    for (std::sregex_iterator c(mono.begin(), mono.end(), colour), end; c != end; ++c)
        EXPECT_TRUE((*c)[1] == (*c)[2] && (*c)[2] == (*c)[3] && (*c)[4] == (*c)[5] &&
                    (*c)[5] == (*c)[6])
            << c->str();
    std::filesystem::remove("b.svg");
    // What goes wrong leaves no file behind, and says why.
    for (auto const& [wrong, words] : {std::pair("--plot c.gif", ".svg, .png, .pdf or .eps"),
                                       {"--plot c.svg --size 80", "width and height"},
                                       {"--plot c.svg --size 1x1mm", "30 mm to 2 m"},
                                       {"--plot c.svg --font \"a';!id\"", "letters, digits"},
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
        "pxy PR+vdW1 \"$(ls CorvaneS/parameters/PR | sed -n '/id/s/;1//p')\" methane --T 250 "
        "--plot "
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
