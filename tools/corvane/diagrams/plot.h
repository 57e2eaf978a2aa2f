// Pictures of results: curves and marked points, drawn by gnuplot.
#pragma once

#include <tools/corvane/program.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace cli {

/// What a curve or a point stands for; the same in every picture.
enum class Ink { liquid, vapour, liquid2, azeotrope, solid, black, grey };

enum class Stroke {
    line,
    dashed,  ///< not stable
    thin     ///< of less weight: pure substances, tie lines
};

enum class Symbol {
    critical,
    end_point,
    extremum,
    azeotrope,
    three_phase,
    eutectic,
    measured,
    measured_open
};

using XY = std::array<double, 2>;

/// A curve; a point that is not finite interrupts it. Curves of the same title share a line of the
/// key, and so do marks.
struct Curve {
    std::string title;
    Ink ink = Ink::black;
    Stroke stroke = Stroke::line;
    std::vector<XY> points;
};

struct Marks {
    std::string title;
    Symbol symbol = Symbol::measured;
    Ink ink = Ink::black;
    std::vector<XY> points;
};

struct Label {
    std::string text;
    XY at;
};

struct Picture {
    std::string title = {}, x_axis = {}, y_axis = {};
    std::vector<Curve> curves = {};
    std::vector<Marks> marks = {};
    std::vector<Label> labels = {};
    bool fraction = false;  ///< x is a mole fraction: 0 to 1
    bool log_x = false, log_y = false;
    double y_top = 0.0;  ///< above 0: where the picture ends, if points are higher
    /// Not empty: an equilateral triangle, the names at its top, lower left and lower right corner.
    std::array<std::string, 3> corners = {};

    /// Where a ternary composition is drawn, from the mole fractions at the top and at the left.
    static XY in_triangle(double top, double left);

    /// A curve of which every point knows whether it is stable: full and dashed stretches, which
    /// share the points where they meet.
    void add(std::string const& name, Ink ink, std::vector<XY> const& points,
             std::vector<bool> const& stable);
    /// A label half-way along a curve.
    void label(std::string const& text, std::vector<XY> const& curve);
    /// Leaves out labels that would lie over one that is kept, the first ones first.
    void thin_labels();
    /// A mark; joins those of the same title.
    void mark(std::string const& name, Symbol symbol, Ink ink, XY at);
};

/// The option --plot FILE.
class PlotFile {
  public:
    void add_to(Command& command);
    /// To call before the data home is entered. @throws Misuse a suffix other than .svg and .png;
    /// Failure gnuplot is not installed
    void begin();
    explicit operator bool() const { return !given_.empty(); }
    /// Writes the file: all of it, or nothing. @throws Failure
    void draw(Picture const& picture) const;

  private:
    std::string given_;
    std::filesystem::path path_;
};

}  // namespace cli
