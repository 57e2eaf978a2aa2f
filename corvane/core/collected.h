// Files of the data tree that are rows of a table. A folder may hold, besides files, a table
// collected.tsv whose rows stand for further small files, so that thousands of parameter sets take
// the room of one:
//
//     name;id         text=PC-SAFT, Esper2023  pc    Tc     …  dipole  source=Esper, Bauer, …
//     acetaldehyde;1                           6.35  474.2  …  2.75
//     acetone;3                                …
//
// The first column is the name of the file, its title how the file begins: "name;id" with these two
// lines, "name1+name2;id" with name1, id1 (a column), name2, id2 and id. Then every column is a
// line with its title as label. Those that are empty are left out; one with its value in the title
// has no cells. The value @1 is the first of the two names, or the only one. A cell under the title @ is text as it
// stands, with | for the ends of its lines; a first column without a title begins with nothing.
// Rows are sorted by their bytes, up to the tab. A file of the same name goes before a row.
#pragma once

#include <corvane/core/api.h>

#include <string>
#include <vector>

namespace corvane::inline detail {

/// The text of the file of this path, if it is a row of its folder's table; otherwise "".
CORVANE_API std::string collected_text(std::string const& path);

/// Names of the files that the table of a folder stands for.
CORVANE_API std::vector<std::string> collected_names(std::string const& folder);

/// Is there such a file, or such a row?
CORVANE_API bool has_data_file(std::string const& path);

}  // namespace corvane::inline detail
