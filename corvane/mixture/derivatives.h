// Optional extension of a mixture model: exact derivatives of its residual Helmholtz energy.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

namespace corvane {

/// A plug-in class that derives from ModelN first and from this second offers exact derivatives.
struct CORVANE_API DerivN {
    /// As Deriv1::deriv, at constant mole fractions: d[i·(nT+1) + j] =
    /// rho^i·T^j·∂^(i+j)Ar/∂rho^i∂T^j. Available in every implementation: nrho <= 2 with nT <= 2,
    /// of which the elements of total order above 2 are not written, and nrho <= 3 with nT = 0.
    virtual int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
                      double* d) const = 0;

    /// All residual chemical potentials in one pass, with their derivatives; n = rho_i.size().
    ///
    /// @param[out] mu      n values myr_i
    /// @param[out] mu_T    n values T·∂myr_i/∂T at constant partial densities, or null
    /// @param[out] mu_rho  n×n values ∂myr_i/∂rho_j [cm³/mol], row by row (the residual part of
    /// PsiH),
    ///                     or null
    virtual void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                            double* mu_rho) const = 0;

  protected:
    ~DerivN() = default;
};

}  // namespace corvane
