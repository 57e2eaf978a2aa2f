// One self-contained page: the picture to pan and zoom, and the table.
#pragma once

#include <tools/corvane/diagrams/picture.h>
#include <tools/corvane/output/table.h>

#include <string>

namespace cli {

/// The page, which is well-formed XML, too. Without a script it shows `svg` and the table; with it
/// the curves can be panned and zoomed, and tell their values. Names are text, whatever they hold,
/// and the page may load nothing.
std::string page(Picture const& picture, std::string const& svg, bool mono, Heading const& heading,
                 Table const& table, Style const& style);

/// What moves the picture; reads the element with the id "data".
extern char const* const kPageScript;

}  // namespace cli
