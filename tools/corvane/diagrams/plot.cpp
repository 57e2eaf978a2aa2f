// Gnuplot reads the script from a file without a name and writes the picture to its standard
// output, so that no path and no text of a user is ever part of a command.
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <set>

#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace cli {
namespace {
namespace fs = std::filesystem;
using File = std::unique_ptr<FILE, int (*)(FILE*)>;

char const* colour(Ink ink) {
    switch (ink) {
        case Ink::liquid:
            return "#1f5fa8";
        case Ink::vapour:
            return "#c8402a";
        case Ink::liquid2:
            return "#2e8b57";
        case Ink::azeotrope:
            return "#8e44ad";
        case Ink::solid:
            return "#8a6d1f";
        case Ink::grey:
            return "#808080";
        case Ink::black:
            break;
    }
    return "#202020";
}

char const* style(Stroke stroke) {
    switch (stroke) {
        case Stroke::dashed:
            return "lw 1.2 dt (6,5)";
        case Stroke::thin:
            return "lw 1";
        case Stroke::line:
            break;
    }
    return "lw 2";
}

char const* style(Symbol symbol) {
    switch (symbol) {
        case Symbol::critical:
            return "pt 7 ps 1.1";
        case Symbol::end_point:
            return "pt 9 ps 1.2";
        case Symbol::eutectic:
            return "pt 11 ps 1.2";
        case Symbol::extremum:
            return "pt 8 ps 1.1";
        case Symbol::azeotrope:
            return "pt 12 ps 1.2";
        case Symbol::three_phase:
            return "pt 5 ps 0.9";
        case Symbol::measured:
            return "pt 1 ps 0.9 lw 1.5";
        case Symbol::measured_open:
            break;
    }
    return "pt 6 ps 0.9 lw 1.5";
}

/// A text in single quotes, within which gnuplot replaces nothing; its own quotes become
/// typographic ones, since doubled ones mislead gnuplot's search for commands in backquotes.
std::string quoted(std::string const& text) {
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
    /// False: nothing to draw.
    bool finish(std::string& out) {
        out += text_ + "plot " + join(elements_, ", \\\n     ") + '\n';
        return !elements_.empty();
    }

  private:
    std::string key(std::string const& title) {
        return title.empty() || !seen_.insert(title).second ? "notitle" : "title " + quoted(title);
    }
    std::string text_;
    int blocks_ = 0;
    std::vector<std::string> elements_;
    std::set<std::string> seen_;
};

/// With y_top: that, and x from where curves begin to rise visibly; measured points are all seen.
std::string range(Picture const& picture) {
    double highest = 0.0, top = picture.y_top, left = std::numeric_limits<double>::infinity();
    for (Curve const& curve : picture.curves)
        for (auto const& [x, y] : curve.points) {
            highest = std::max(highest, y);
            if (picture.log_y || y > 2e-3 * picture.y_top) left = std::min(left, x);
        }
    for (Marks const& m : picture.marks)
        for (auto const& [x, y] : m.points)
            if (m.symbol == Symbol::measured_open) {
                top = std::max(top, 1.1 * y);
                left = std::min(left, x);
            }
    if (!(picture.y_top > 0.0) || !std::isfinite(left)) return "";
    std::string text;
    if (highest > top)
        text += fmt::format("set yrange [{}:{:.8g}]\n", picture.log_y ? "*" : "0", top);
    if (!picture.log_y) text += fmt::format("set xrange [{:.8g}<*:*]\n", left);
    return text;
}

/// Frame, grid and names of a triangle in place of axes.
std::string triangle(Picture const& picture) {
    std::string text =
        "set size ratio -1\nunset border\nunset xtics\nunset ytics\nunset grid\n"
        "unset xlabel\nunset ylabel\nset xrange [-0.12:1.12]\nset yrange [-0.09:0.93]\n"
        "set key at graph 1, graph 0.98 right top vertical Left reverse samplen 2 spacing 1.2\n";
    const auto line = [&](XY a, XY b, char const* how) {
        text += fmt::format("set arrow from {:.8g},{:.8g} to {:.8g},{:.8g} nohead {}\n", a[0], a[1],
                            b[0], b[1], how);
    };
    const auto name = [&](std::string const& words, XY at, char const* how) {
        text += fmt::format("set label {} at {:.8g},{:.8g} {}\n", quoted(words), at[0], at[1], how);
    };
    const auto at = Picture::in_triangle;
    char const* const thin = "back lc '#e4e4e4' lw 1";
    for (int k = 1; k < 10; ++k) {
        const double x = 0.1 * k;
        line(at(x, 0.0), at(x, 1.0 - x), thin);
        line(at(0.0, x), at(1.0 - x, x), thin);
        line(at(0.0, 1.0 - x), at(1.0 - x, 0.0), thin);
        if (k % 2 != 0) continue;
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
    name(picture.corners[1], at(0, 1), "center offset 0,-2");
    name(picture.corners[2], at(0, 0), "center offset 0,-2");
    return text;
}

std::string script(Picture const& picture, bool svg) {
    std::string text = "set encoding utf8\n";
    if (svg)
        text +=
            "set terminal svg size 900,600 noenhanced font 'sans-serif,15' background 'white'\n";
    else
        text +=
            "if (strstrt(GPVAL_TERMINALS, 'pngcairo') > 0) "
            "set terminal pngcairo size 1350,900 noenhanced font 'sans,18' linewidth 1.5 "
            "pointscale 1.5 background 'white'; else "
            "set terminal png size 1350,900 noenhanced\n";
    text += fmt::format("set title {}\nset xlabel {}\nset ylabel {}\n", quoted(picture.title),
                        quoted(picture.x_axis), quoted(picture.y_axis));
    text +=
        "set grid lt 1 lc '#e4e4e4' lw 1\nset border 3\nset tics nomirror out\n"
        "set key outside right top vertical Left reverse samplen 2 spacing 1.2\n";
    if (picture.fraction) text += "set xrange [0:1]\nset xtics 0.1\n";
    text += range(picture);
    if (!picture.corners[0].empty()) text += triangle(picture);
    if (picture.log_y) text += "set logscale y\nset format y '%g'\n";
    if (picture.log_x) text += "set logscale x\nset format x '%g'\n";
    for (Label const& label : picture.labels)
        text += fmt::format("set label {} at {:.8g},{:.8g} right offset -0.6,0.3 front\n",
                            quoted(label.text), label.at[0], label.at[1]);
    Script body;
    for (Curve const& c : picture.curves)
        body.add(c.points, c.title,
                 fmt::format("with lines lc '{}' {}", colour(c.ink), style(c.stroke)));
    for (Marks const& m : picture.marks)
        body.add(m.points, m.title,
                 fmt::format("with points lc '{}' {}", colour(m.ink), style(m.symbol)));
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
    const int failed =
        posix_spawn(&child, find_gnuplot().c_str(), &actions, nullptr, arguments, environ);
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
/// What gnuplot wrote, which must have its end: on a full disk it leaves out the rest and says
/// nothing. @throws Failure
std::string picture_of(FILE* file, bool svg) {
    std::string bytes;
    std::rewind(file);
    char block[1 << 16];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, file)) > 0;) bytes.append(block, n);
    const std::string_view end = svg ? std::string_view("</svg>") : "IEND";
    const std::size_t at = bytes.rfind(end);
    if (at == std::string::npos || bytes.size() - at - end.size() > 8)
        throw Failure("gnuplot wrote no whole picture: is the disk full that holds /tmp?");
    return bytes;
}

/// While it lives, no signal that a person sends ends the program.
class Uninterrupted {
  public:
    Uninterrupted() {
        sigset_t signals;
        sigemptyset(&signals);
        for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    Uninterrupted(Uninterrupted const&) = delete;
    Uninterrupted& operator=(Uninterrupted const&) = delete;

  private:
    sigset_t before_;
};

/// Puts the bytes into the place of the file: all of them, or nothing changes. They go into a file
/// next to it, which takes its name once they are on the disk. @throws Failure
void write_whole(std::string const& bytes, fs::path const& path) {
    const auto fail = [&](int error) {
        throw Failure(fmt::format("--plot: cannot write {}: {}", path.string(),
                                  std::strerror(error)));
    };
    if (std::error_code error; fs::is_directory(path, error)) fail(EISDIR);
    const Uninterrupted uninterrupted;
    std::string name = path.string() + ".XXXXXX";
    const int file = mkstemp(name.data());
    if (file < 0) fail(errno);
    const mode_t mask = umask(0);
    umask(mask);
    int error = fchmod(file, 0666 & ~mask) == 0 ? 0 : errno;
    for (std::size_t done = 0; error == 0 && done < bytes.size();) {
        const ssize_t n = write(file, bytes.data() + done, bytes.size() - done);
        if (n > 0)
            done += static_cast<std::size_t>(n);
        else if (n == 0 || errno != EINTR)
            error = n == 0 ? ENOSPC : errno;
    }
    if (error == 0 && fsync(file) != 0) error = errno;
    if (close(file) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(name.c_str(), path.c_str()) != 0) error = errno;
    if (error != 0) {
        std::remove(name.c_str());
        fail(error);
    }
}
}  // namespace

void Picture::add(std::string const& name, Ink ink, std::vector<XY> const& points,
                  std::vector<bool> const& stable) {
    for (std::size_t first = 0, k = 1; k <= points.size(); ++k) {
        if (k < points.size() && stable[k] == stable[first]) continue;
        // The dashed stretch is the one that reaches over to the other.
        const bool more = !stable[first];
        const std::size_t begin = more && first > 0 ? first - 1 : first;
        const std::size_t end = more && k < points.size() ? k + 1 : k;
        const auto from = points.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto to = points.begin() + static_cast<std::ptrdiff_t>(end);
        curves.push_back({stable[first] ? name : "not stable",
                          stable[first] ? ink : Ink::grey,
                          stable[first] ? Stroke::line : Stroke::dashed,
                          {from, to}});
        first = k;
    }
}

void Picture::label(std::string const& text, std::vector<XY> const& curve) {
    // Half-way along the curve as it is seen, that is in units of its own extent.
    XY low = curve.front(), high = curve.front();
    for (XY const& point : curve)
        for (std::size_t i : {0, 1}) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    const auto length = [&](std::size_t k) {
        double square = 0.0;
        for (std::size_t i : {0, 1})
            if (high[i] > low[i])
                square += std::pow((curve[k][i] - curve[k - 1][i]) / (high[i] - low[i]), 2);
        return std::sqrt(square);
    };
    double whole = 0.0, part = 0.0;
    for (std::size_t k = 1; k < curve.size(); ++k) whole += length(k);
    std::size_t middle = 0;
    while (middle + 1 < curve.size() && part < 0.5 * whole) part += length(++middle);
    labels.push_back({text, curve[middle]});
}

void Picture::thin_labels() {
    constexpr double wide = 0.014, high = 0.035;  // of a letter and a line, in parts of the axes
    const bool logarithmic[] = {log_x, log_y};
    const auto shown = [&](double v, std::size_t i) { return logarithmic[i] ? std::log(v) : v; };
    XY low{1e300, 1e300}, top{-1e300, -1e300};
    for (Curve const& curve : curves)
        for (XY const& point : curve.points)
            for (std::size_t i : {0, 1}) {
                if (!std::isfinite(shown(point[i], i))) continue;
                low[i] = std::min(low[i], shown(point[i], i));
                top[i] = std::max(top[i], shown(point[i], i));
            }
    std::vector<Label> kept;
    const auto part = [&](Label const& l, std::size_t i) {
        return (shown(l.at[i], i) - low[i]) / std::max(1e-300, top[i] - low[i]);
    };
    for (Label const& l : labels) {
        // Texts end at their points.
        const bool free = std::all_of(kept.begin(), kept.end(), [&](Label const& k) {
            const double x = part(l, 0), other = part(k, 0);
            return std::fabs(part(l, 1) - part(k, 1)) > high ||
                   std::fabs(x - other) >
                       wide * static_cast<double>((x > other ? l : k).text.size() + 1);
        });
        if (free) kept.push_back(l);
    }
    labels = std::move(kept);
}

XY Picture::in_triangle(double top, double left) {
    return {1.0 - left - 0.5 * top, 0.5 * std::sqrt(3.0) * top};
}

void Picture::mark(std::string const& name, Symbol symbol, Ink ink, XY at) {
    for (Marks& known : marks)
        if (known.title == name) {
            known.points.push_back(at);
            return;
        }
    marks.push_back({name, symbol, ink, {at}});
}

void PlotFile::add_to(Command& command) {
    command.value("--plot", given_, "draws a picture of the result: FILE.svg or FILE.png",
                  {.type = "FILE"});
}

void PlotFile::begin() {
    if (given_.empty()) return;
    const std::string suffix = lower(fs::path(given_).extension().string());
    if (suffix != ".svg" && suffix != ".png")
        throw Misuse(fmt::format("--plot {}: the name must end in .svg or .png", given_));
    if (find_gnuplot().empty())
        throw Failure(
            "--plot needs the program gnuplot, which is not installed (Debian: apt-get install "
            "gnuplot-nox)");
    path_ = fs::absolute(given_);
}

void PlotFile::draw(Picture const& picture) const {
    if (given_.empty()) return;
    const bool svg = lower(path_.extension().string()) == ".svg";
    const File output = nameless("the picture");
    run_gnuplot(script(picture, svg), fileno(output.get()));
    write_whole(picture_of(output.get(), svg), path_);
}

}  // namespace cli
