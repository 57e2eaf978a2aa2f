// Newton's method for two phases in equilibrium. Internal to the library.
#pragma once

#include <corvane/phases/phase.h>

#include <vector>

namespace corvane {

/// Two phases a and b of the same T, in the 2n + 1 variables u = (ln rho_i of a, ln rho_i of b,
/// ln T). Equations: n equal potentials, equal pressures; then whatever fixes the composition of a,
/// T, p or a combination of the variables. All derivatives are exact.
///
/// In these isochoric variables (Bell & Deiters, AIChE J. 64 (2018) 2745) no density root is
/// searched, so that nothing jumps near a critical point.
class PairSolver {
  public:
    explicit PairSolver(FluidModel const& fluid);

    FluidModel const& fluid;
    PhaseState a, b;  ///< evaluated at the last u
    std::vector<double> u;
    int iterations = 0;
    double residual = 0.0;

    // What is fixed beside the equilibrium itself: 2n + 1 conditions in all.
    std::vector<double> const* z = nullptr;  ///< composition of a (n − 1 conditions)
    double T = 0.0;                          ///< > 0: temperature
    double p = 0.0;                          ///< > 0: pressure
    std::vector<double> row;                 ///< not empty: row·u = value
    double value = 0.0;

    int size() const { return 2 * n_ + 1; }
    void start(std::vector<double> const& x_a, double rho_a, std::vector<double> const& x_b,
               double rho_b, double T_);
    /// False when it does not converge within `limit` iterations. On success a and b are evaluated
    /// with all derivatives at u, which meets the equations to `tolerance` of the certificate.
    bool solve(int limit);
    /// ∂u/∂value at the solution (needs row). False if singular.
    bool tangent(std::vector<double>& t);
    /// ln p of the lighter phase and its slope along t.
    double ln_p() const;
    double ln_p(std::vector<double> const& t) const;
    PhaseState const& light() const { return a.rho < b.rho ? a : b; }
    PhaseState const& dense() const { return a.rho < b.rho ? b : a; }
    double pressure() const { return light().p; }

  private:
    bool evaluate();
    void assemble();

    int n_;
    std::vector<double> jacobian_, r_;
};

}  // namespace corvane
