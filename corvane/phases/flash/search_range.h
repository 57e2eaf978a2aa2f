// Where a flash at given (p, h), (p, s) or (T, rho) looks for T or p. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/split.h>
#include <corvane/phases/phase/caloric.h>
#include <corvane/phases/phase/phase.h>

namespace corvane::inline detail {

/// Range and first guess of the outer variable, ln T or ln p; the range as flash.h states it.
class SearchRange {
  public:
    /// caloric may be null for Target::rho_at_T.
    SearchRange(FluidModel const& fluid, Caloric* caloric, Target target);

    double min() { return limits(), min_; }
    double max() { return limits(), max_; }
    /// The nearest value within the range; the ends of the tables are looked for only if needed.
    double clamped(double outer);
    /// Where Wilson's K-factors and the ideal gas, its liquid by Wilson's enthalpy of vaporisation,
    /// meet the target. fixed: p [MPa] or T [K]; given: as in SplitSolver.
    double guess(double fixed, double given);

  private:
    void limits();
    double guess_ln_p(double T, double given) const;
    double guess_ln_T(double p, double given) const;
    /// ln T of Wilson's bubble (sign 1) or dew point (−1).
    double wilson_ln_T(double p, double sign) const;

    FluidModel const& fluid_;
    Caloric* caloric_;
    const Target target_;
    const int n_;
    double min_ = 0.0, max_ = 0.0;
    double lowest_Tc_ = 1e300, highest_Tc_ = 0.0, mean_Tc_ = 0.0;
};

}  // namespace corvane::inline detail
