#include <tools/corvane/diagrams/deviations.h>
#include <tools/corvane/diagrams/page.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/output/whole_file.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <exception>

#include <signal.h>

namespace cli {
namespace {
namespace fs = std::filesystem;

PictureFormat format_of(std::string const& file) {
    const std::string suffix = lower(fs::path(file).extension().string());
    if (suffix == ".svg") return PictureFormat::svg;
    if (suffix == ".png") return PictureFormat::png;
    if (suffix == ".pdf") return PictureFormat::pdf;
    if (suffix == ".eps") return PictureFormat::eps;
    throw Misuse(fmt::format("{}: the name of a picture must end in .svg, .png, .pdf or .eps", file));
}

/// "160x100", "160x100mm" or "6.3x4in", in mm.
void read_size(std::string const& text, Sheet& sheet) {
    std::string numbers = lower(text);
    double unit = 1.0;
    for (auto const& [suffix, mm] : {std::pair("mm", 1.0), std::pair("cm", 10.0), std::pair("in", 25.4)})
        if (numbers.size() > 2 && numbers.compare(numbers.size() - 2, 2, suffix) == 0) {
            unit = mm;
            numbers.resize(numbers.size() - 2);
            break;
        }
    const auto parts = split(numbers, 'x');
    double value[2] = {};
    if (parts.size() == 2)
        for (std::size_t k : {0, 1})
            if (const auto read = to_number(trimmed(parts[k]))) value[k] = *read * unit;
    for (double v : value)
        if (!(v >= 30.0 && v <= 2000.0))
            throw Misuse(fmt::format("--size {}: width and height, 160x100mm or 6.3x4in, from 30 mm to 2 m", text));
    sheet.width = value[0];
    sheet.height = value[1];
}

/// "Times", "Times,10".
void read_font(std::string const& text, Sheet& sheet) {
    const auto parts = split(text, ',');
    const auto plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' || c == '-';
    };
    sheet.font = trimmed(parts[0]);
    bool good = parts.size() <= 2 && std::all_of(sheet.font.begin(), sheet.font.end(), plain);
    if (good && parts.size() == 2) {
        const auto points = to_number(trimmed(parts[1]));
        sheet.points = points ? *points : 0.0;
        good = sheet.points >= 3.0 && sheet.points <= 72.0;
    }
    if (!good)
        throw Misuse(fmt::format("--font {}: a name of letters, digits and blanks, and after a comma points "
                                 "from 3 to 72: Times,10", text));
}
}  // namespace

void PlotFile::add_to(Command& command) {
    command
        .value("--plot", plot_, "draws a picture of the result: FILE.svg, .png, .pdf or .eps", {.type = "FILE"})
        .value("--html", html_, "a page with the picture, to pan and zoom, and the table; it needs no network",
               {.type = "FILE"})
        .value("--size", size_, "of the picture on paper: 160x100mm, 6.3x4in", {.type = "WxH"})
        .value("--title", title_, "in place of the picture's own; '' for none", {.type = "TEXT"})
        .value("--font", font_, "of the picture, with its size in points: Times,10", {.type = "FONT"})
        .flag("--mono", mono_, "dashes and marks in place of colours");
}

void PlotFile::add_deviations(Command& command) {
    command.value("--plot-deviations", deviations_,
                  "draws the deviations from the points of --data, in a file as that of --plot", {.type = "FILE"});
}

void PlotFile::begin() {
    if (!*this) {
        if (!size_.empty() || title_ != kAsIs || !font_.empty() || mono_)
            throw Misuse("--size, --title, --font and --mono are of a picture: --plot FILE or --html FILE");
        return;
    }
    if (!plot_.empty()) sheet_.format = format_of(plot_);
    if (!deviations_.empty()) format_of(deviations_);
    if (!size_.empty()) read_size(size_, sheet_);
    if (!font_.empty()) read_font(font_, sheet_);
    sheet_.mono = mono_;
    if (!gnuplot_found())
        throw Failure(
            "--plot and --html need the program gnuplot, which is not installed (Debian: apt-get install "
            "gnuplot-nox)");
    if (!plot_.empty()) plot_path_ = fs::absolute(plot_);
    if (!html_.empty()) html_path_ = fs::absolute(html_);
    if (!deviations_.empty()) deviations_path_ = fs::absolute(deviations_);
}

void PlotFile::show(Picture const& picture, Heading const& heading, Table const& table,
                    Style const& style) const {
    if (!*this) return write(heading, table, style);
    const auto before = signal(SIGPIPE, SIG_IGN);
    std::exception_ptr refused;
    bool gone = false;
    try {
        write(heading, table, style);
    } catch (OutputRefused const& e) {
        refused = std::current_exception();
        gone = e.nobody_reads;
    }
    signal(SIGPIPE, before);
    draw(picture, heading, table, style);
    if (gone) raise(SIGPIPE);  // the end that it would have had at once
    if (refused) std::rethrow_exception(refused);
}

void PlotFile::draw(Picture picture, Heading const& heading, Table const& table, Style const& style) const {
    if (title_ != kAsIs) picture.title = title_;
    if (!plot_.empty()) write_whole(drawn(picture, sheet_), plot_path_, "--plot");
    if (!deviations_.empty()) {
        Sheet sheet = sheet_;
        sheet.format = format_of(deviations_);
        write_whole(drawn(deviations(heading, table, picture.title), sheet), deviations_path_, "--plot-deviations");
    }
    if (html_.empty()) return;
    Sheet screen = sheet_;
    screen.format = PictureFormat::svg;
    screen.insets = false;  // the page can be zoomed
    screen.width = screen.height = screen.points = 0.0;
    Picture untitled = picture;  // the page has the title above
    untitled.title.clear();
    write_whole(page(picture, drawn(untitled, screen), sheet_.mono, heading, table, style), html_path_, "--html");
}

}  // namespace cli
