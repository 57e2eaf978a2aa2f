// What a picture shows: curves, marked points and labels, whatever draws it.
#pragma once

#include <array>
#include <optional>
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
    measured_open,
    square_open,  ///< this and the next: of models, see Curve::model
    down_open,
    cross,
    pentagon_open,
    star
};

using XY = std::array<double, 2>;

/// A curve; a point that is not finite interrupts it. Curves of the same title share a line of the
/// key, and so do marks.
struct Curve {
    std::string title;
    Ink ink = Ink::black;
    Stroke stroke = Stroke::line;
    std::vector<XY> points;
    int model = 0, models = 1;  ///< of several models in a picture: which, and how many
};

struct Marks {
    std::string title;
    Symbol symbol = Symbol::measured;
    Ink ink = Ink::black;
    std::vector<XY> points;
};

/// A text on one of the points of a curve, or, if it has none, near `at`. It is left out where there
/// is no room.
struct Label {
    std::string text;
    XY at = {};
    std::vector<XY> along = {};
    double where = 0.5;  ///< best place, as part of the visible way along the curve
    Ink ink = Ink::black;
    bool field = false;  ///< the name of a field: not beyond a curve from `at`
};

/// The ends of an axis, at round values.
struct Axis {
    double low = 0.0, high = 1.0;
    bool log = false;
    double part(double value) const;  ///< 0 at the low end, 1 at the high one
    double value(double part) const;
};

/// How a curve is drawn: width in pixels of a screen, dashes in its units, none for a full line.
struct Pen {
    char const* colour;
    double width;
    std::vector<int> dashes;
};
/// mono: dashes in place of colours, thick ones that show on a thin full line.
Pen pen(Ink ink, Stroke stroke, bool mono);
/// That of the curve; of several models the earlier ones are wider, to show beneath the others.
Pen pen(Curve const& curve, bool mono);
/// Of a model's curves in mono, beside its dashes; none for the first.
std::optional<Symbol> model_symbol(int model);

/// A rectangle in parts of the axes.
struct Box {
    double left, low, right, high;
    bool inside() const { return left > 0.0 && low > 0.0 && right < 1.0 && high < 1.0; }
    bool meets(Box const& other) const {
        return left < other.right && other.left < right && low < other.high && other.low < high;
    }
};

/// A part of the picture drawn larger where nothing else is. Its curves and marks are among those of the
/// picture, without titles.
struct Inset {
    Box part, place;
    Box around;                          ///< the place with its numbers
    std::array<std::string, 4> numbers;  ///< at its left, right, lower and upper end
};

struct Picture {
    std::string title = {}, x_axis = {}, y_axis = {};
    std::vector<Curve> curves = {};
    std::vector<Marks> marks = {};
    std::vector<Label> labels = {};
    std::vector<Inset> insets = {};
    std::vector<Axis> frame = {};  ///< not empty: the axes, whatever else is seen
    bool fraction = false;  ///< x is a mole fraction: 0 to 1
    bool log_x = false, log_y = false;
    bool data_alone = false;  ///< marks that are next to each other are no reason for an inset
    double y_top = 0.0;  ///< above 0: where the picture ends, if points are higher
    double y_bottom = -1e300;  ///< where it begins, if points are lower
    /// Not empty: an equilateral triangle, the names at its top, lower left and lower right corner.
    std::array<std::string, 3> corners = {};
    bool key_below = false;  ///< of a triangle: not beside its upper corner

    /// Where a ternary composition is drawn, from the mole fractions at the top and at the left.
    static XY in_triangle(double top, double left);

    /// A curve of which every point knows whether it is stable: full and dashed stretches, which
    /// share the points where they meet.
    void add(std::string const& name, Ink ink, std::vector<XY> const& points,
             std::vector<bool> const& stable);
    /// A mark; joins those of the same title.
    void mark(std::string const& name, Symbol symbol, Ink ink, XY at);

    /// What is seen of x and y: all curves and marks, up to y_top; with that, x from where curves begin
    /// to rise visibly.
    std::array<Axis, 2> axes() const;
    /// Adds an inset where marks of different points are next to each other, if it has room. letter, line:
    /// as of placed.
    void enlarge(double letter, double line);
    /// Marks along the curves of all models but the first, at other places for each, so that curves that
    /// coincide can be told apart without colours. After enlarge.
    void mark_models();
    /// Where a triangle has the names of its corners, its numbers, and the key if that is at the upper right.
    std::vector<Box> words_of_triangle(double letter, double line) const;
    /// Where labels have room: each on its curve, or near its place, over no other curve if that can
    /// be, never over a mark or another label, the first ones first. letter, line: width and height of
    /// a text, in parts of the axes.
    std::vector<Label> placed(double letter, double line) const;

    /// In a sentence, for those who do not see it.
    std::string description() const;
};

}  // namespace cli
