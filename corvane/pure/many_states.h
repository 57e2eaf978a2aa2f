// Optional extension of an equation of state: many states in one call.
#pragma once

#include <corvane/core/api.h>

namespace corvane {

/// Beside Deriv1, for an equation that evaluates several states at once.
struct CORVANE_API ManyStates1 {
    /// Writes Ar, T·Ar_T, T²·Ar_TT, rho·Ar_rho, rho·T·Ar_rhoT and rho²·Ar_rhorho of state i to
    /// d[0][i] … d[5][i]: the numbers of Deriv1::deriv to second order, within rounding. Not finite
    /// where the equation has no value; it does not throw.
    /// @param count  a multiple of four   @param rho, T  positive and finite
    virtual void second(int count, double const* rho, double const* T, double* const* d) const = 0;

  protected:
    ~ManyStates1() = default;
};

}  // namespace corvane
