// Virial coefficients: Z = 1 + B·rho + C·rho² + …
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

class Model1;
class ModelN;

namespace corvane {

struct VirialCoefficients {
    double B = 0.0, C = 0.0;  ///< cm³/mol, (cm³/mol)²
    double B_T = 0.0;  ///< T·∂B/∂T, cm³/mol; of the Joule–Thomson coefficient at zero
                       ///< density, (B_T − B)/cp°
};

struct MixtureVirial : VirialCoefficients {
    /// Cross coefficients, n×n: B_ij = ½·∂²(n²·B)/∂n_i∂n_j, so that B = Σ Σ x_i·x_j·B_ij for every
    /// model. Where the mixing rule makes B quadratic in x they do not depend on x, and B_ii is
    /// that of the pure component; otherwise they belong to this x.
    Matrix<double> B_ij;
};

/// At T [K], from the exact derivatives of the equation at a density of 1e-14 critical densities,
/// where what is left out is below rounding; without them by Model1::B, ModelN::B and differences
/// (B_ij then from B of the pure components and of the equimolar pairs, as of a quadratic rule).
/// x: mole fractions, zeros allowed.
/// @throws ThException 5 T not positive or not finite, or the equation has no values there;
///     MthException 2 x of a wrong length
CORVANE_API VirialCoefficients virial_coefficients(Model1 const& model, double T);
CORVANE_API MixtureVirial virial_coefficients(ModelN const& model, double T,
                                              Vector<double> const& x);

}  // namespace corvane
