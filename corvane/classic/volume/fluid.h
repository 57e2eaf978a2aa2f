// What the four volume finders know of a fluid, pure or mixed. Internal.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/containers.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace corvane::inline detail {

/// State and model of one call; lives on the caller's stack and owns nothing. Objective functions
/// get it as their context.
struct pass_vol {
    int kind;                 ///< 0: model is a Model1, else a ModelN
    double p;                 ///< MPa
    double T;                 ///< K
    double d;                 ///< reference molar volume, cm³/mol: y = rho·d
    Vector<double> const* x;  ///< mole fractions of a mixture
    void const* model;

    double Z(double rho) const {
        if (kind == 0) return static_cast<Model1 const*>(model)->Z(rho, T);
        return static_cast<ModelN const*>(model)->Z(rho, T, *x);
    }
    double Ar(double rho) const {
        if (kind == 0) return static_cast<Model1 const*>(model)->Ar(rho, T);
        return static_cast<ModelN const*>(model)->Ar(rho, T, *x);
    }
    /// Pressure at y less the target.
    double excess(double y) const {
        const double rho = y / d;
        return Z(rho) * R * T * rho - p;
    }
};

inline double pdiff(double y, void* ctx) {
    return static_cast<pass_vol const*>(ctx)->excess(y);
}

/// Whether T and p can be those of a fluid, at least under tension.
inline bool is_state(double p, double T) {
    return std::isfinite(p) && T > 0 && std::isfinite(R * T);
}

/// Whether the pressure at y is that asked for, to the rounding of a liquid's pressure. A search
/// between end values that are not those of its ends, or across a pole, comes back with a point that
/// is no root.
inline bool is_root(pass_vol const& fluid, double y) {
    const double rounding = 1e-8 * std::fabs(fluid.p) + 1e-10 * R * fluid.T * y / fluid.d;
    return y > 0 && std::fabs(fluid.excess(y)) <= rounding;
}

}  // namespace corvane::inline detail
