// Densities of many states of a multiparameter equation, four at a time.
#pragma once

#include <plugins/meos/density_solver.h>

namespace corvane::meos {

/// Densities at p, T where search_by_tables knows the way to the only root: those of density_roots,
/// bit by bit. Leaves rho as it is for all other states, and for the last three at most. For an
/// equation that is in_lanes() and tables that match it.
void densities(Equation const& equation, StartTables const& tables, int count, double const* p,
               double const* T, double* rho);

}  // namespace corvane::meos
