// Optional extension of an equation of state: a sum of powers of the density.
#pragma once

#include <corvane/core/api.h>

#include <vector>

namespace corvane {

/// Beside Deriv1: an equation that is a sum of powers, Ar = Σ c_k(T)·δ^d·exp(−δ^l) with δ = rho·vs
/// (parameter 2), the last factor absent where l = 0. Mixtures of such components, which share δ,
/// are one such sum.
struct CORVANE_API PowerSeries1 {
    struct Power {
        int l, d;
    };
    /// The powers, sorted by l and d, each once; empty if the equation has other terms. Valid until
    /// the parameters are read again.
    virtual std::vector<Power> const& powers() const = 0;
    /// c[k] at T, as many as there are powers.
    virtual void factors(double T, double* c) const = 0;

  protected:
    ~PowerSeries1() = default;
};

}  // namespace corvane
