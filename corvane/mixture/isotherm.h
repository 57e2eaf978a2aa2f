// Optional extension of a mixture model: what depends on temperature alone, computed once for many
// states.
#pragma once

#include <corvane/core/api.h>

namespace corvane {

/// A plug-in class that derives from ModelN first and from this and DerivN after it lets
/// equilibrium solvers, which evaluate hundreds of states at one temperature, keep its parameters
/// at that temperature. All arrays hold the n components that are present; the model itself keeps
/// nothing, so that threads with work spaces of their own may share it. Work spaces are void once a
/// parameter of the model changes.
struct CORVANE_API IsothermN {
    /// Number of values in the work space of n components.
    virtual int isotherm_size(int n) const = 0;
    /// Fills the work space at T > 0 [K].
    /// @param present  indices of the n components in the model, ascending
    /// @param slopes   whether mu_T and P_T will be asked for
    virtual void isotherm(double T, int const* present, int n, bool slopes, double* work) const = 0;

    /// Stable density roots at p [MPa] and x, the densest first, in rho [mol/cm³]. @return 0 to 2
    virtual int densities(double const* work, int n, double const* x, double p,
                          double* rho) const = 0;
    /// Ar + Z − 1 + ln rho at a root that densities gave for the same p and x.
    virtual double gibbs(double const* work, int n, double const* x, double p,
                         double rho) const = 0;
    /// Residual chemical potentials and their derivatives as DerivN::potentials, at rho > 0.
    /// @param[out] mu_T, mu_rho  or null
    /// @param[out] P    p/(R·T) [mol/cm³]; or null
    /// @param[out] P_T  T·∂P/∂T at constant densities; or null
    virtual void potentials(double const* work, int n, double const* rho_i, double* mu,
                            double* mu_T, double* mu_rho, double* P, double* P_T) const = 0;

  protected:
    ~IsothermN() = default;
};

}  // namespace corvane
