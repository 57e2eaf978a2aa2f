// Optional extension of an equation of state: a sum of powers of density and temperature.
#pragma once

#include <corvane/core/api.h>

namespace corvane {

/// Beside Deriv1: an equation that is a sum of powers, Ar = Σ n_k·τ^t_k·δ^d_k·exp(−δ^l_k) with
/// τ = Ts/T (parameter 1) and δ = rho·vs (parameter 2), the last factor absent where l = 0.
/// Mixtures of such components, which share δ and τ, share the powers as well.
struct CORVANE_API PowerSeries1 {
    struct Power {
        int l, d;
    };
    struct Terms {
        int count = 0;  ///< 0: the equation has other terms
        Power const* powers = nullptr;
        double const *n = nullptr, *t = nullptr;  ///< where the parameters live
    };
    /// Valid until the parameters are read again; n and t may be written at any time.
    virtual Terms terms() const = 0;

  protected:
    ~PowerSeries1() = default;
};

}  // namespace corvane
