// Reducing parameters of a multi-fluid pair for which none are published, from a model that
// predicts the pair. Internal to the library.
#pragma once

#include <corvane/catalogue/open.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace corvane::inline detail {

/// Gives the pair i < j of a multi-fluid mixture (reducing parameters 0 to 3 of ModelN::ppar, the
/// form of Kunz & Wagner, J. Chem. Eng. Data 57 (2012) 3032) the parameters with which it has the
/// bubble pressures and liquid volumes of a predictive model: the first of PCSAFT+LB where a k_ij
/// of the two is published (numbers 3, 1, 2, 4), SRK+PSRK, PR+vdW1 with k_ij = 0.
///
/// At two temperatures and mole fractions of 1/4, 1/2 and 3/4 the bubble points of the predictive
/// model, its pressures and volumes corrected by what it is off for the pure components, are the
/// states at which the multi-fluid mixture shall have equal potentials in both phases and that
/// volume: Levenberg and Marquardt's method, the parameters held near 1 by weak weights, from the
/// best of a few gamma_T. No equilibrium of the mixture itself is solved.
///
/// What was found is kept in "MEOS+GERG,<a>;<set>+<b>;<set>" of the first of `folders` that can be
/// written (empty: cache_folders(home, "pairs")), with a key of all parameters that it depends on;
/// what is damaged, foreign or made from others is made anew.
///
/// Nothing, and the pair as it was, where no predictive model has the components, or no two such
/// bubble points. The predictive model is opened in any case.
CORVANE_API std::optional<PairEstimate> estimate_reducing(
    DataHome const& home, ModelN& model, int i, int j,
    std::vector<std::filesystem::path> folders = {});

}  // namespace corvane::inline detail
