// Gnuplot reads the script from a file without a name and writes the picture to its standard
// output, so that no path and no text of a user is ever part of a command.
#include <tools/corvane/diagrams/gnuplot.h>
#include <tools/corvane/diagrams/layout.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace cli {
namespace {
using File = std::unique_ptr<FILE, int (*)(FILE*)>;

std::string style(Symbol symbol, double scale) {
    const auto of = [&](int type, double size, char const* more = "") {
        return fmt::format("pt {} ps {:.3g}{}", type, size * scale, more);
    };
    switch (symbol) {
        case Symbol::critical:
            return of(7, 1.1);
        case Symbol::end_point:
            return of(9, 1.2);
        case Symbol::eutectic:
            return of(11, 1.2);
        case Symbol::extremum:
            return of(8, 1.1);
        case Symbol::azeotrope:
            return of(12, 1.2);
        case Symbol::three_phase:
            return of(5, 0.9);
        case Symbol::measured:
            return of(1, 0.9, " lw 1.5");
        case Symbol::square_open:
            return of(4, 0.9, " lw 1.5");
        case Symbol::down_open:
            return of(10, 1.0, " lw 1.5");
        case Symbol::cross:
            return of(2, 0.9, " lw 1.5");
        case Symbol::pentagon_open:
            return of(14, 1.0, " lw 1.5");
        case Symbol::star:
            return of(3, 0.9, " lw 1.5");
        case Symbol::measured_open:
            break;
    }
    return of(6, 0.9, " lw 1.5");
}

/// A text in single quotes, within which gnuplot replaces nothing; its own quotes become
/// typographic ones, since doubled ones mislead gnuplot's search for commands in backquotes.
std::string in_quotes(std::string_view text) {
    std::string result = "'";
    for (char c : text)
        if (c == '\'' || c == '`')
            result += c == '`' ? "\u2018" : "\u2019";
        else if (static_cast<unsigned char>(c) >= ' ' && c != 0x7f)
            result += c;
    return result + '\'';
}

/// Data blocks, and the elements of the plot command that draw them.
class Script {
  public:
    void add(std::vector<XY> const& points, std::string const& title, std::string const& how) {
        text_ += fmt::format("$d{} << EOD\n", blocks_);
        std::size_t drawn = 0;
        for (auto const& [x, y] : points) {
            const bool finite = std::isfinite(x) && std::isfinite(y);
            text_ += finite ? fmt::format("{:.8g} {:.8g}\n", x, y) : "\n";
            drawn += finite ? 1 : 0;
        }
        text_ += "EOD\n";
        if (drawn > 0)
            elements_.push_back(fmt::format("$d{} using 1:2 {} {}", blocks_, how, key(title)));
        ++blocks_;
    }
    /// A line of the key for what is drawn without one.
    void add_key(std::string const& title, std::string const& how) {
        if (title.empty() || seen_.count(title) > 0) return;
        elements_.push_back(fmt::format("keyentry {} {}", how, key(title)));
    }
    /// False: nothing to draw.
    bool finish(std::string& out) {
        out += text_ + "plot " + join(elements_, ", \\\n     ") + '\n';
        return !elements_.empty();
    }

  private:
    std::string key(std::string const& title) {
        return title.empty() || !seen_.insert(title).second ? "notitle" : "title " + in_quotes(title);
    }
    std::string text_;
    int blocks_ = 0;
    std::vector<std::string> elements_;
    std::set<std::string> seen_;
};

std::string style(Pen const& pen) {
    std::vector<std::string> dashes;
    for (int length : pen.dashes) dashes.push_back(std::to_string(length));
    return fmt::format("lc '{}' lw {:g}{}", pen.colour, pen.width,
                       dashes.empty() ? "" : " dt (" + join(dashes, ",") + ")");
}

std::string in_quotes(std::vector<std::string> const& lines) {
    std::vector<std::string> parts;
    for (std::string const& line : lines) parts.push_back(in_quotes(line));
    return join(parts, ".\"\\n\".");
}

std::string terminal(Sheet const& sheet, Layout const& l) {
    const std::string name = sheet.font.empty() ? "sans" : sheet.font;
    switch (sheet.format) {
        case PictureFormat::svg:
            return fmt::format("set terminal svg size {:.0f},{:.0f} noenhanced font '{},{:.4g}' linewidth {:.4g} "
                               "background 'white'\n",
                               l.width, l.height, sheet.font.empty() ? "sans-serif" : name, l.font, l.scale);
        case PictureFormat::png:
            return fmt::format(
                "if (strstrt(GPVAL_TERMINALS, 'pngcairo') > 0) "
                "set terminal pngcairo size {0:.0f},{1:.0f} noenhanced font '{2},{3:.4g}' linewidth {4:.4g} "
                "pointscale {4:.4g} background 'white'; else "
                "set terminal png size {0:.0f},{1:.0f} noenhanced\n",
                l.width, l.height, name, 0.75 * l.font, l.scale);
        case PictureFormat::pdf:
        case PictureFormat::eps:
            break;
    }
    const bool pdf = sheet.format == PictureFormat::pdf;
    return fmt::format("set terminal {} size {:.5g}in,{:.5g}in noenhanced font '{},{:.4g}' fontscale 0.75 linewidth {:.4g} "
                       "pointscale {:.4g}{}\n",
                       pdf ? "pdfcairo" : "epscairo", l.width / 72.0, l.height / 72.0, name, l.font,
                       l.scale, l.scale, pdf ? " background 'white'" : "");
}

std::string range(char name, Axis const& axis) {
    std::string text = fmt::format("set {}range [{:.10g}:{:.10g}]\n", name, axis.low, axis.high);
    if (!axis.log) return text;
    text += fmt::format("set logscale {0}\nset format {0} '%g'\n", name);
    // Of few decades 1, 2 and 5 are written.
    if (axis.high / axis.low > 200.0) return text;
    std::vector<std::string> ends;
    for (double ten = std::pow(10.0, std::floor(std::log10(axis.low))); ten <= axis.high; ten *= 10.0)
        for (double digit : {1.0, 2.0, 5.0})
            if (digit * ten >= 0.999 * axis.low && digit * ten <= 1.001 * axis.high)
                ends.push_back(fmt::format("{:.10g}", digit * ten));
    return text + fmt::format("set {}tics ({})\n", name, join(ends, ", "));
}

/// Frame, grid and names of a triangle in place of axes.
std::string triangle(Picture const& picture, Layout const& l) {
    std::string text =
        "set size ratio -1\nunset border\nunset xtics\nunset ytics\nunset grid\n"
        "unset xlabel\nunset ylabel\nset xrange [-0.12:1.12]\nset yrange [-0.09:0.93]\nunset key\n";
    if (l.narrow)
        text += fmt::format("set key at screen 0.5, screen 0.015 center bottom horizontal maxcols {} Left "
                            "reverse samplen 1.5 spacing 1.1 width -2\n",
                            l.key_columns);
    else
        text += "set key at screen 0.985, graph 0.98 right top vertical Left reverse samplen 2 spacing 1.2\n";
    text += fmt::format("set lmargin 0\nset rmargin 0\nset bmargin {:.4g}\n", l.below);
    const auto line = [&](XY a, XY b, char const* how) {
        text += fmt::format("set arrow from {:.8g},{:.8g} to {:.8g},{:.8g} nohead {}\n", a[0], a[1],
                            b[0], b[1], how);
    };
    const auto name = [&](std::string const& words, XY at, char const* how) {
        text += fmt::format("set label {} at {:.8g},{:.8g} {}\n", in_quotes(words), at[0], at[1], how);
    };
    const auto at = Picture::in_triangle;
    char const* const thin = "back lc '#e4e4e4' lw 1";
    for (int k = 1; k < 10; ++k) {
        const double x = 0.1 * k;
        line(at(x, 0.0), at(x, 1.0 - x), thin);
        line(at(0.0, x), at(1.0 - x, x), thin);
        line(at(0.0, 1.0 - x), at(1.0 - x, 0.0), thin);
        if (k % 2 != 0 || (l.few_numbers && k % 4 != 0)) continue;
        const std::string number = fmt::format("{:.1f}", x);
        name(number, at(x, 0.0), "left offset 0.6,0.2 tc '#606060'");  // of the top, on the right
        name(number, at(1.0 - x, x), "right offset -0.6,0.2 tc '#606060'");  // of the left
        name(number, at(0.0, 1.0 - x), "center offset 0,-0.8 tc '#606060'");
    }
    char const* const frame = "back lc '#202020' lw 1.5";
    line(at(1, 0), at(0, 1), frame);
    line(at(0, 1), at(0, 0), frame);
    line(at(0, 0), at(1, 0), frame);
    name(picture.corners[0], at(1, 0), "center offset 0,0.8");
    // Below its corner, within the sheet; the right one a line lower where it would meet the left one.
    for (std::size_t k : {1, 2}) {
        double const* const ends = l.lower_names[k - 1].data();
        text += fmt::format("set label {} at screen {:.5g}, first 0 center offset 0,{}\n", in_quotes(picture.corners[k]),
                            0.5 * (ends[0] + ends[1]), k == 2 && l.names_meet ? -3.2 : -2.0);
    }
    return text;
}

/// Frame, title, axes and key.
std::string surroundings(Picture const& picture, Sheet const& sheet, Layout const& l) {
    std::string text = "set encoding utf8\n" + terminal(sheet, l);
    // The title stands in the middle of the sheet, wherever the axes are.
    if (!l.title_lines.empty()) {
        text += fmt::format("set label {} at screen 0.5, screen 1 center offset 0,-1 front\n",
                            in_quotes(l.title_lines));
        text += fmt::format("set tmargin {}\n", static_cast<double>(l.title_lines.size()) + 1.2);
    }
    text += fmt::format("set xlabel {}\nset ylabel {}\n", in_quotes(l.x_axis), in_quotes(l.y_axis));
    text += "set grid lt 1 lc '#e4e4e4' lw 1\nset border 3\nset tics nomirror out\n";
    if (l.narrow)
        text += fmt::format("set key at screen 0.5, screen 0.01 center bottom horizontal maxcols {} Left reverse samplen 1.5 "
                            "spacing 1.1 width -2\nset bmargin {:.4g}\nset xlabel offset 0,0.2\n",
                            l.key_columns, l.below);
    else
        text += "set key outside right top vertical Left reverse samplen 2 spacing 1.2\n";
    if (l.x_step > 0.0) text += fmt::format("set xtics {:.10g}\n", l.x_step);
    if (l.y_step > 0.0) text += fmt::format("set ytics {:.10g}\n", l.y_step);
    if (!picture.corners[0].empty()) return text + triangle(picture, l);
    const auto axes = picture.axes();
    if (picture.fraction) text += l.narrow ? "set xtics 0.2\n" : "set xtics 0.1\n";
    return text + range('x', axes[0]) + range('y', axes[1]);
}

/// The frame of an inset with its numbers, and lines to what it shows.
std::string frame_of(Inset const& inset, std::array<Axis, 2> const& axes, Layout const& l) {
    const auto at = [&](double x, double y) {
        return fmt::format("{:.10g},{:.10g}", axes[0].value(x), axes[1].value(y));
    };
    const auto rectangle = [&](Box const& b, char const* how) {
        return fmt::format("set object rectangle from {} to {} {}\n", at(b.left, b.low), at(b.right, b.high), how);
    };
    Box const& place = inset.place;
    std::string text = rectangle(place, "back fillcolor 'white' fillstyle solid border lc '#808080'") +
                       rectangle(inset.part, "front fillstyle empty border lc '#808080'");
    for (double x : {place.left, place.right})
        text += fmt::format("set arrow from {} to {} nohead back lc '#b0b0b0' lw 0.7\n",
                            at(x, inset.part.high < place.low ? place.low : place.high),
                            at(x == place.left ? inset.part.left : inset.part.right,
                               inset.part.high < place.low ? inset.part.high : inset.part.low));
    const double down = place.low - 0.7 * l.line, out = place.left - 0.4 * l.letter;
    struct {
        double x, y;
        char const* how;
    } const where[] = {{place.left, down, "left"}, {place.right, down, "right"}, {out, place.low, "right"},
                       {out, place.high, "right"}};
    for (std::size_t k = 0; k < 4; ++k)
        text += fmt::format("set label {} at {} {} tc '#606060'\n", in_quotes(inset.numbers[k]),
                            at(where[k].x, where[k].y), where[k].how);
    return text;
}

std::string script(Picture picture, Sheet const& sheet) {
    const Layout layout(picture, sheet);
    picture.key_below = layout.narrow;
    const auto axes = picture.axes();
    std::string text = surroundings(picture, sheet, layout);
    if (sheet.insets) picture.enlarge(layout.letter, layout.line);
    if (sheet.mono) picture.mark_models();
    for (Inset const& inset : picture.insets) text += frame_of(inset, axes, layout);
    text += "set style textbox opaque fillcolor 'white' noborder margins 0.3,0.3\n";
    for (Label const& label : picture.placed(layout.letter, layout.line))
        text += fmt::format("set label {} at {:.8g},{:.8g} center front boxed tc '{}'\n",
                            in_quotes(label.text), label.at[0], label.at[1],
                            pen(label.ink, Stroke::thin, sheet.mono).colour);
    Script body;
    for (Curve const& c : picture.curves) {
        const auto symbol = sheet.mono && c.stroke == Stroke::line ? model_symbol(c.model) : std::nullopt;
        const std::string how = style(pen(c, sheet.mono));
        if (symbol) {
            const std::string point = style(*symbol, layout.symbols);
            body.add_key(c.title, "with linespoints " + how + ' ' + point.substr(0, point.find(" lw ")));
        }
        body.add(c.points, symbol ? "" : c.title, "with lines " + how);
    }
    for (Marks const& m : picture.marks)
        body.add(m.points, m.title,
                 fmt::format("with points lc '{}' {}", pen(m.ink, Stroke::line, sheet.mono).colour,
                             style(m.symbol, layout.symbols)));
    if (!body.finish(text)) throw Failure("nothing to draw: no point was found");
    return text;
}

/// The program in the PATH, or "".
std::string find_gnuplot() {
    char const* const path = std::getenv("PATH");
    for (std::string const& folder : split(path ? path : "", ':')) {
        const std::string program = (folder.empty() ? "." : folder) + "/gnuplot";
        if (access(program.c_str(), X_OK) == 0) return program;
    }
    return "";
}

File nameless(char const* what) {
    File file(std::tmpfile(), std::fclose);
    if (!file) throw Failure(fmt::format("no temporary file for {}", what));
    return file;
}

/// Runs gnuplot on the script, its output into the open file. @throws Failure with its first words
void run_gnuplot(std::string const& text, int output) {
    const File input = nameless("gnuplot's script"), errors = nameless("gnuplot's messages");
    if (std::fwrite(text.data(), 1, text.size(), input.get()) != text.size() ||
        std::fflush(input.get()) != 0)
        throw Failure("no space for gnuplot's script");
    std::rewind(input.get());
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(input.get()), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(errors.get()), STDERR_FILENO);
    char name[] = "gnuplot", defaults[] = "-d";  // -d: no start-up files of a user
    char* arguments[] = {name, defaults, nullptr};
    pid_t child = 0;
    // Ctrl-C reaches it, too, but what is finished shall still be drawn.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t held;
    sigprocmask(SIG_SETMASK, nullptr, &held);
    sigaddset(&held, SIGINT);
    posix_spawnattr_setsigmask(&attributes, &held);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    const int failed =
        posix_spawn(&child, find_gnuplot().c_str(), &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (failed || waitpid(child, &status, 0) != child || status != 0) {
        char words[200] = "";
        std::rewind(errors.get());
        while (std::fgets(words, sizeof words, errors.get()) && trimmed(words).empty()) {
        }
        throw Failure("gnuplot failed: " + trimmed(words));
    }
}

std::string contents(FILE* file) {
    std::string bytes;
    std::rewind(file);
    char block[1 << 16];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, file)) > 0;) bytes.append(block, n);
    return bytes;
}

/// The picture must have its end: on a full disk gnuplot leaves out the rest and says nothing.
/// @throws Failure
void check_end(std::string const& bytes, PictureFormat format) {
    const std::string_view end = format == PictureFormat::svg   ? "</svg>"
                                 : format == PictureFormat::png ? "IEND"
                                                                : "%%EOF";
    const std::size_t at = bytes.rfind(end);
    if (at == std::string::npos || bytes.size() - at - end.size() > 8)
        throw Failure("gnuplot wrote no whole picture: is the disk full that holds /tmp?");
}

/// Title and description of what is seen in place of the program's, and the size on paper.
std::string accessible(std::string svg, Picture const& picture, Sheet const& sheet) {
    const auto replace = [&](std::string const& from, std::string const& to, std::string const& by) {
        const std::size_t begin = svg.find(from), end = begin == std::string::npos ? begin : svg.find(to, begin);
        if (end != std::string::npos) svg.replace(begin, end + to.size() - begin, by);
    };
    replace("<title>", "</title>", "<title>" + escaped(picture.title) + "</title>");
    replace("<desc>", "</desc>", "<desc>" + escaped(picture.description()) + "</desc>");
    replace("<svg", "\n", fmt::format("<svg role=\"img\" aria-label=\"{}\"\n", escaped(picture.title)));
    if (sheet.width > 0.0)
        replace(" width=\"", "\n",
                fmt::format(" width=\"{:g}mm\" height=\"{:g}mm\"\n", sheet.width, sheet.height));
    return svg;
}
}  // namespace

bool gnuplot_found() {
    return !find_gnuplot().empty();
}

std::string drawn(Picture const& picture, Sheet const& sheet) {
    const File output = nameless("the picture");
    run_gnuplot(script(picture, sheet), fileno(output.get()));
    std::string bytes = contents(output.get());
    check_end(bytes, sheet.format);
    return sheet.format == PictureFormat::svg ? accessible(std::move(bytes), picture, sheet) : bytes;
}

std::string escaped(std::string const& text) {
    std::string result;
    for (char c : printable(text)) switch (c) {
            case '&': result += "&amp;"; break;
            case '<': result += "&lt;"; break;
            case '>': result += "&gt;"; break;
            case '"': result += "&quot;"; break;
            default: result += c;
        }
    return result;
}

}  // namespace cli
