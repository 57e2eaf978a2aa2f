// Densities of a live model whose parameters were written behind its back: they must be those of
// the slow scan, and those of a model that has read the same parameters. What was kept when the
// model was read (tables, starts, sums) is out of date then.
#pragma once

#include <corvane/check/survey.h>

class Model1;
class ModelN;

namespace corvane::inline detail {

/// Where densities are looked for.
struct DensityRange {
    double T_low, T_high;  ///< K
    double top;            ///< densest state of the scan, mol/cm³
    double P_high = std::numeric_limits<double>::infinity();  ///< see IsothermScan
};

/// Scales and, of many other parameters, a few.
void rewritten_densities(Survey& survey, Model1& model, DensityRange const& range);

/// Each parameter of each pair, and the scales of each component.
void rewritten_densities(Survey& survey, ModelN& mixture, std::vector<double> const& fractions,
                         DensityRange const& range);

}  // namespace corvane::inline detail
