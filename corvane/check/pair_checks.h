// Parameters of the pairs of a mixture: numbers and addresses, their sections, values written
// behind the model's back, and all of them at work.
#pragma once

#include <corvane/check/rewritten_densities.h>
#include <corvane/check/survey.h>

#include <functional>

namespace corvane::inline detail {

/// @param x           composition
/// @param identities  makes the checks of derivatives, with every parameter at work
void check_pairs(Survey& survey, ModelN& mixture, std::vector<double> const& x,
                 DensityRange const& range, std::function<void()> const& identities);

}  // namespace corvane::inline detail
