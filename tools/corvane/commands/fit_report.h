// What the command fit tells of a result: heading, tables, picture.
#pragma once

#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/output/rows.h>

#include <corvane/fit/fit.h>

namespace cli {

/// Model and substances, the source of the data, then per data set what is left of the deviations,
/// correlations, warnings.
void tell_of_fit(corvane::fit::Problem const& problem, corvane::fit::Result const& result,
                 Heading& heading);
Table fitted_parameters(corvane::fit::Result const& result);
/// A row for every measured value.
Table fitted_points(corvane::fit::Problem const& problem, corvane::fit::Result const& result);
/// Deviations by temperature; before the fit as open symbols.
Picture fit_picture(corvane::fit::Problem const& problem, corvane::fit::Result const& result);

}  // namespace cli
