// A critical line from start values, with the published routine: points are not certified.
#pragma once

#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/output/table.h>

#include <functional>
#include <optional>
#include <string>

namespace cli {

struct CriticalStart {
    double x0 = 1.0;               ///< mole fraction of the first component
    std::optional<double> T, rho;  ///< K, mol/cm³; both or none
    double step = 0.05;            ///< first step in x0; not 0, at most 0.5
};

/// Appends the line to the table, in rows (x, T, p, rho) that `row` makes, and tells in the heading
/// how it ends. @throws Failure no line; Misuse the step leads out of the compositions
void trace_slope(
    MixtureFluid const& mixture, CriticalStart const& start, Heading& heading, Table& table,
    std::function<Row(Vector<double> const& x, double T, double p, double rho)> const& row);

}  // namespace cli
