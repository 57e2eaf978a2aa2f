// Solid–fluid equilibrium of a binary: freeze-out of a pure solid.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class ModelN;

/// Composition of the fluid of a binary that coexists at p [MPa], T [K] with the pure solid of one
/// component: its chemical potential in the fluid equals the solid's Gibbs energy.
///
/// The root is bracketed from infinite dilution of the solid-forming component towards the solid
/// side (at 1, 3, 9, 27, 81 % of the way, then the solid side itself) and solved by
/// eqn_regulafalsi to 1e-9; where the fluid splits, the first root from the dilute side. No state;
/// re-entrant. x[1] is found to 4e-15, so that of a solid of component 1 that hardly dissolves, 1 −
/// x[1] has few digits or none: put it first, or use corvane::solubility.
///
/// @param[in,out] x  two mole fractions of component 0: x[0] that of the solid, which also selects
///     it (x[0] < 0.5: component 1, otherwise 0); x[1] receives the fluid's
/// @param phase  phase code of the fluid: 1 dense, 3 dilute root, 2 the stable one
/// @param d  not used
/// @param[out] rho  two densities, mol/cm³: rho[0] of the solid (written first, also where the
///     search then fails), rho[1] of the fluid
/// @param[out] i  index of the solid phase
/// @throws ThException 0 the pure fluid is more stable than the solid (T above melting), or the
///     component is above saturation even at infinite dilution, or the potentials still differ at
///     the point found (by more than 1e-6 RT; a jump between two density roots); 6 no solid data; 5 T above their
///     range; 4 not a binary; 9 and what the models and the root search throw; MthException 2
CORVANE_API void equil2s(ModelN const* m, double p, double T, Vector<double>& x, int phase,
                         double d, Vector<double>& rho, int& i);
