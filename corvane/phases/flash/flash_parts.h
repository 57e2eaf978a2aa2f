// What the flashes share: start values, the certificate of a result, splits into three
// and more phases. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/coexistence.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/stability/stability.h>

#include <vector>

namespace corvane::inline detail {

/// The split at (p, T) that Wilson's K-factors lead to, or else the whole in its phase of lower
/// Gibbs energy: phases and fractions of a result that is not tested. False without a density root.
bool flash_guess(ModelN const& model, double p, double T, Vector<double> const& z,
                 FlashResult& result);

/// Fills phases (by falling mass density), fractions, rho and the certificate's dmu, dp and balance
/// of a result at (result.p, result.T) from final states, evaluated with phase_H and phase_p.
void flash_record(FluidModel const& fluid, std::vector<PhaseState const*> phases,
                  std::vector<double> const& amounts, FlashResult& result);

/// Bounds of the errors of two phases at (p, T) into the certificate. Phases nearer than
/// RegularPair::kNear are solved again by that class, with the amount beta of b. False where they
/// cannot be told apart, or are locally unstable. The states keep phase_H and phase_p. `two`: work
/// space for two phases of the fluid.
bool flash_bound(CoexistenceSolver& two, double T, double p, PhaseState& a, PhaseState& b,
                 double& beta, Certificate& c);

/// As flash_record, and tpd. False if the certificate does not hold, target included, if two phases
/// are alike, if a density is no root that the model reports, or if the state is unstable.
bool flash_certified(FluidModel const& fluid, Stability& stability,
                     std::vector<PhaseState> const& phases, std::vector<double> const& amounts,
                     FlashResult& result);

/// Three or more phases at (result.p, result.T) from compositions x, mole fractions over the
/// present components. Substitution with the fractions of the phases by Michelsen, Comput. Chem.
/// Eng. 18 (1994) 545, then Newton's method (SplitSolver). Phases that are not needed are left out;
/// where the result is unstable the phase found is added. With amounts of the phases in the whole,
/// Newton's method alone at first. True if the result is certified.
bool flash_many(FluidModel const& fluid, Stability& stability,
                std::vector<std::vector<double>> const& x,
                FlashResult& result, std::vector<double> const& amounts = {});

/// Two or more phases at (result.p, result.T) from nothing: the lower hull of the Gibbs energy by a
/// linear program whose columns are trial phases, then flash_many. True if the result is certified.
bool flash_columns(FluidModel const& fluid, Stability& stability, FlashResult& result);

}  // namespace corvane::inline detail
