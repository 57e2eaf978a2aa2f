// How many of the deviations of a fit are independent. Internal.
#pragma once

#include <corvane/fit/fit.h>

namespace corvane::fit {

/// Deviations of an equation that cannot follow the data are alike for neighbouring points, as
/// those of data that were smoothed before; each of them then says little that its neighbour did
/// not. Of the N used deviations of one quantity in one set, ordered by temperature, composition
/// and pressure, with the correlation c of neighbours, N·(1 − c)/(1 + c) count (Bayley &
/// Hammersley, Suppl. J. R. Stat. Soc. 8 (1946) 184), from 1 to N. @return the sum over all
double independent_deviations(Problem const& problem, Result const& result);

}  // namespace corvane::fit
