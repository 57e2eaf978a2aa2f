// A multiparameter equation at many states, four at a time.
#pragma once

#include <plugins/meos/equation.h>

namespace corvane::meos {

/// Has the equation no terms but factored ones, without a further function of τ and with a power of
/// δ, and non-analytic ones? Others are evaluated one by one.
bool in_lanes(Equation const& equation);

/// ManyStates1::second. The numbers are those of Isotherm<true>, bit by bit.
void second(Equation const& equation, int count, double const* rho, double const* T,
            double* const* d);

}  // namespace corvane::meos
