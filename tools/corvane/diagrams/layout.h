// What has room on the sheet of a picture.
#pragma once

#include <tools/corvane/diagrams/gnuplot.h>
#include <tools/corvane/diagrams/picture.h>

#include <array>
#include <string>
#include <vector>

namespace cli {

/// Sizes of a sheet in the units of its terminal, and what has room on it.
struct Layout {
    double width, height;    ///< pixels; of PDF and EPS 1/72 in
    double font;             ///< height of letters in them
    double scale;            ///< of lines and symbols
    double symbols = 1.0;    ///< of symbols alone
    bool narrow = false;     ///< the key stands below
    double letter, line;     ///< of a label, in parts of the axes
    std::vector<std::string> title_lines, x_axis, y_axis;

    int key_columns = 1;     ///< of a key below
    double x_step = 0.0, y_step = 0.0;  ///< between numbers, where an axis' own might meet; or 0
    double below = 1.0;      ///< lines of text below the axes; of others than triangles if narrow

    // Of triangles.
    std::array<std::array<double, 2>, 2> lower_names{};  ///< ends of the lower corners' names, in parts of the sheet
    bool names_meet = false;
    bool few_numbers = false;  ///< every second one

    Layout(Picture const& picture, Sheet const& sheet);

  private:
    double measure(Sheet const& sheet);
    void space_numbers(Picture const& picture, double wide, double axis_width, double axis_height);
    double lines_below(Picture const& picture, double wide, std::size_t entries) const;
    void place_triangle(Picture const& picture, double wide, std::size_t key, std::size_t entries);
};

}  // namespace cli
