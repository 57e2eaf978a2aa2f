// Optional extension of an equation of state: exact derivatives of its residual Helmholtz energy.
#pragma once

#include <corvane/core/api.h>

#include <memory>

namespace corvane {

/// An equation at one temperature, for who needs many densities of it: what depends on the
/// temperature alone is worked out once. Refers to its model; parameters that change end its use.
struct CORVANE_API Isotherm1 {
    virtual ~Isotherm1() = default;
    /// d[i] = rho^i·∂^iAr/∂rho^i for i = 0 … nrho <= 3: the numbers of Deriv1::deriv with nT = 0.
    virtual void at(double rho, int nrho, double* d) const = 0;
};

/// A plug-in class that derives from Model1 first and from this second offers exact derivatives.
/// The library then takes them wherever it would difference Ar or Z in rho or T; where the
/// extension is absent, or says that it has no such order, the numerical route stays.
struct CORVANE_API Deriv1 {
    /// Writes d[i·(nT+1) + j] = rho^i·T^j·∂^(i+j)Ar/∂rho^i∂T^j for i = 0 … nrho, j = 0 … nT, where
    /// Ar = A^r/(RT). Exact to rounding also as rho → 0. Returns 1, or 0 (d untouched) when the
    /// orders are not available. Available in every implementation: nrho <= 2 with nT <= 2, of
    /// which the elements of total order i + j > 2 are not written, and nrho <= 3 with nT = 0. So
    /// one call with (2, 2) gives the value and all first and second derivatives.
    virtual int deriv(double rho, double T, int nrho, int nT, double* d) const = 0;

    /// The equation at T, or null where it has nothing to keep (then `deriv` costs no more).
    virtual std::unique_ptr<Isotherm1> isotherm(double /*T*/) const { return nullptr; }

  protected:
    ~Deriv1() = default;
};

}  // namespace corvane
