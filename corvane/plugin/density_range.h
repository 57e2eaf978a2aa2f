// What an equation says of its densities.
#pragma once

namespace corvane {

/// A point of an isotherm.
struct IsothermPoint {
    double P;   ///< rho·Z, mol/cm³
    double dP;  ///< ∂(rho·Z)/∂rho at constant T, dimensionless
};

/// Where the densities of a fluid lie at one temperature and composition, mol/cm³. What an author
/// knows makes the search short; only `top` is needed.
struct DensityRange {
    double top;           ///< the largest density that is looked at, short of any pole
    double loop = 0.0;    ///< near the critical density: tried first for the falling part
    double liquid = 0.0;  ///< first trial for the liquid; 0: a third of the way to the top
    /// The pressure is concave in density, then convex: one loop at most, found or excluded in a
    /// few evaluations. False: it is looked for in twelve steps.
    bool single = false;
    /// Beyond this density further loops are looked for, and the liquid ends where one begins; 0:
    /// there are none.
    double clear = 0.0;
};

}  // namespace corvane
