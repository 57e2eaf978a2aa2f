// Density roots of a multiparameter equation.
#pragma once

#include <plugins/meos/climb.h>
#include <plugins/meos/start_tables.h>

#include <optional>

namespace corvane::meos {

/// The stable densities at P = p/(RT), mol/cm³; 0 where there is none.
struct Roots {
    double dilute = 0.0, dense = 0.0;
};

/// Root on the first rising branch of the isotherm, from zero density, and on the last one, from
/// the dense side; loops between the two are never looked at. Where the isotherm has no loop, the
/// only root is `dense`, and `dilute` is 0. P <= 0 can have a dense root, a liquid under tension.
///
/// The tables give start values and say which branches reach P; where they leave that in doubt, the
/// spinodals of this temperature are worked out. Where coefficients have changed since the tables
/// were made, their row is made true and the isotherm above it looked through; where that fails, or
/// below the lowest temperature of the tables, a scan of the isotherm takes their place.
Roots density_roots(Equation const& equation, StartTables const& tables,
                    Isotherm<false> const& isotherm, double P);

/// The search for the only root, where the tables alone say that there is no other and where it is
/// looked for. They are those of the equation's present coefficients.
std::optional<Climb> search_by_tables(Equation const& equation, StartTables const& tables, double T,
                                      double P);

/// The density from which that search starts on the branch that the phase code names: 1 dense,
/// otherwise dilute. Without a known branch, an ideal gas or three times the critical density.
double start_density(Equation const& equation, StartTables const& tables, double T, double P,
                     int phase);

}  // namespace corvane::meos
