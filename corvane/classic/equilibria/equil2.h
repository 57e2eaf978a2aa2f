// Two fluid phases of a binary at given pressure and temperature.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

/// Compositions of the two coexisting fluid phases of a binary at p [MPa], T [K]: equal chemical
/// potentials of both components, in the variables ln(x/(1 − x)), by fit_marquardt (at most 100
/// iterations). At each composition the stable density root is taken (phase code 2). In a region
/// with more than one split the start values decide which one is found. No state; re-entrant.
///
/// @param[in,out] x  two mole fractions of component 0, start and result, one per phase. Equal
///     values, or any outside (0, 1): the start comes from ffinit
/// @param[out] rho  two densities, mol/cm³
/// @throws ThException 0 no split (from ffinit), or no solution: sum of squared differences not
///     below 1e-12; 8 trivial result: the compositions differ by less than 1e-3; 4 not a binary;
///     9 no densities, also for p or T that is not positive and finite; MthException 1, 2 and what
///     the model throws. x and rho are written on success only.
CORVANE_API void equil2(ModelN const* m, double p, double T, Vector<double>& x,
                        Vector<double>& rho);
