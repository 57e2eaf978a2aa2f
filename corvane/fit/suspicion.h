// Data that look wrong: values in another unit, exchanged columns, single outliers. Internal.
#pragma once

#include <corvane/fit/residuals.h>

namespace corvane::fit {

/// Appends a sentence to result.warnings for every suspicion.
///
/// Units: where the model at the start of the fit gives all values of a set the same factor too
/// high or low, to a quarter of its logarithm, and that is the ratio of two units of the quantity
/// to 8 %. Exchanged columns of mixtures: where the deviations fall to a third with x and y
/// exchanged, or the first component taken for the second.
void suspect(Problem& problem, ResidualVector& vector, std::vector<Answer> const& before,
             Result& result);

}  // namespace corvane::fit
