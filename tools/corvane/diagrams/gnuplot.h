// Pictures drawn by gnuplot.
#pragma once

#include <tools/corvane/diagrams/picture.h>

#include <string>

namespace cli {

enum class PictureFormat { svg, png, pdf, eps };

/// What a picture is drawn on.
struct Sheet {
    PictureFormat format = PictureFormat::svg;
    double width = 0.0, height = 0.0;  ///< mm; 0: for screens, 900 by 600 pixels
    std::string font;                  ///< letters, digits and blanks alone; empty: sans
    double points = 0.0;               ///< size of letters, 1/72 in; 0: 8 on paper, in narrow triangles 7
    bool mono = false;                 ///< dashes and marks in place of colours
    bool insets = true;                ///< points next to each other are drawn larger in a corner
};

bool gnuplot_found();

/// The whole file. @throws Failure gnuplot fails; nothing to draw
std::string drawn(Picture const& picture, Sheet const& sheet);

/// Text for XML and HTML: no character that has a meaning there, no control characters.
std::string escaped(std::string const& text);

}  // namespace cli
