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

/// For an equation that solves for several densities at once.
struct CORVANE_API ManyDensities1 {
    /// Writes the densities of `count` states, which Model1::vcalc would write to rho1, bit by bit;
    /// not-a-number where there is none. T and p need not be numbers; it does not throw.
    /// @param phase  1, 3 or −1, without a start value
    virtual void densities(int count, double const* p, double const* T, int phase,
                           double* rho) const = 0;

  protected:
    ~ManyDensities1() = default;
};

}  // namespace corvane
