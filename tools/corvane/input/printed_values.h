// Printed figures of equations, which check-equation compares with: CorvaneS/values/PLUGIN.tsv.
#pragma once

#include <corvane/check/check.h>

#include <string>
#include <vector>

namespace cli {

struct PrintedRow {
    std::vector<std::string> substances;  ///< as in the data tree; more than one: a mixture
    int set;                              ///< of the substance, or of the mixture's pairs
    corvane::PrintedValue value;
};

/// A row for each figure, under the titles
///
///     substances  names joined by +
///     set         of the substance, or of the pairs
///     x           mole fractions with commas; of a substance empty
///     T, rho      K and mol/cm³; no rho: at saturation; neither of mixpar
///     quantity    Ar, Z, p, ps, rhoL, rhoV (MPa, mol/cm³), mixpar0, mixpar1 … (ModelN::mixpar)
///     value, within, R, source
///     parameters  (may lack) that are not those of the set: "8=1.6 9=2.4", of a mixture with the
///                 components, "8@0.0=1.6 0@0.1=0.04"
///
/// as in corvane::PrintedValue. @throws Failure with the line at fault
std::vector<PrintedRow> read_printed_values(std::string const& path);

}  // namespace cli
