// Start compositions of a two-phase split.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

/// Compositions of the two fluid phases into which a binary splits at p [MPa], T [K]: mole
/// fractions of component 0, the smaller one first.
///
/// Common tangent of the Gibbs energy of mixing on a grid of 257 compositions, even in ln(x/(1 −
/// x)) between 0.007 and 0.993, and the pure ends. Results are grid compositions: start values,
/// good to a grid step (at most 0.01), and exactly 0 or 1 where the phase is purer than the grid.
/// The first tangent counted from component 1 is found; a three-phase system has another one. One
/// density search and one value of Gr per composition. No state; re-entrant.
/// @throws ThException 0 convex everywhere: no split; 4 not a binary; 9 and what the models throw
CORVANE_API Vector<double> ffinit(ModelN const* model, double p, double T);
