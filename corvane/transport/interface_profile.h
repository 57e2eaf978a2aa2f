// The interface between two fluid phases by density-gradient theory on the model of the phases.
//
//     corvane::MixtureTransport transport(mixture);
//     corvane::InterfaceProfile p = transport.interface_profile(T, rhoL, x, rhoV, y);
//     p.tension, p.z, p.rho_i      // N/m, nm, mol/cm³
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

#include <string>
#include <vector>

class ModelN;

namespace corvane {

/// Partial densities through a plane interface. With w_i = √c_i (influence parameters; c_ij = √(c_i·c_j)) and
/// q = Σ w_i·rho_i the gradient's energy is ½·(dq/dz)², the densities at q are those that make the grand potential
/// Ω least, and σ = ∫ √(2·(Ω + p)) dq: Cahn, Hilliard, J. Chem. Phys. 28 (1958) 258; Miqueu et al., Fluid Phase
/// Equilib. 207 (2003) 225; q as the path: Liang, Michelsen, Kontogeorgis, ibid. 428 (2016) 153.
struct InterfaceProfile {
    double tension = 0.0;        ///< N/m
    double tension_error = 0.0;  ///< relative, from half the nodes
    double thickness = 0.0;      ///< nm, from 10 to 90 % of the way in q
    std::vector<double> z;       ///< nm, ascending into the denser phase, 0 half-way in q
    std::vector<std::vector<double>> rho_i;  ///< mol/cm³ at z, all components
    std::vector<double> excess;  ///< Ω + p at z, MPa
    std::vector<double> influence;  ///< c_i, J·m⁵/mol²; 0 of absent components
};

/// Between the phases of partial densities vapour and liquid [mol/cm³] in equilibrium at T [K].
/// @param influence  c_i > 0 of the components that are present, J·m⁵/mol²
/// Newton's method at 65 nodes of q from phase to phase, at most 60 iterations and eight halvings of a step each;
/// quadrature by the trapezoidal rule in the angle of Chebyshev's nodes, which is spectral here.
/// @throws EquilibriumFailure no_solution: the phases are not in equilibrium (potentials differ by 1e-5), or alike;
///     gave_up: no path of least potentials, or a potential below that of the phases; ThException 5 arguments
CORVANE_API InterfaceProfile interface_profile(ModelN const& model, double T,
                                               Vector<double> const& vapour,
                                               Vector<double> const& liquid,
                                               Vector<double> const& influence);

}  // namespace corvane
