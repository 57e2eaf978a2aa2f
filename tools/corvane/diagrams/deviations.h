// Pictures of deviations from measured points.
#pragma once

#include <tools/corvane/diagrams/picture.h>
#include <tools/corvane/output/table.h>

namespace cli {

/// The list "measured" of a heading, over x, or over T where no mole fractions were measured: of p in
/// percent, of T in K, of mole fractions in percent of the whole. The table has the unit of T.
Picture deviations(Heading const& heading, Table const& table, std::string const& title);

/// Marks of the k-th of several kinds of deviations.
Marks deviation_marks(std::size_t k, std::string title);
/// Zero, under all marks.
Curve zero_line(std::vector<Marks> const& marks);

}  // namespace cli
