// How far a solution of equilibrium equations may be from the exact one. Internal to the library.
#pragma once

#include <corvane/phases/phase/phase.h>

#include <vector>

namespace corvane::inline detail {

/// What rounding inside a model may add to the potentials of a phase and to p/RT [mol/cm³]. The
/// terms that cancel in them are not known; the sums |m_i| + Σ_j |∂m_i/∂ln rho_j| stand for their
/// size (a dense liquid's repulsion and attraction are as large as its stiffness), with a generous
/// factor. Models without exact derivatives: the error of the differences. phase_H and phase_p.
double rounding_of_m(FluidModel const& fluid, PhaseState const& s, int i);
double rounding_of_P(FluidModel const& fluid, PhaseState const& s);

/// Linear propagation: with e_k a bound of what the equation k is off by, residual and rounding,
/// and rows of the inverse Jacobian, a quantity is off by Σ_k |row_k|·e_k. That is first order; the
/// factor kMargin and the limits of the certificate keep the steps small against the distances over
/// which the Jacobian changes.
class ErrorBound {
  public:
    /// e: of m equations.
    explicit ErrorBound(std::vector<double> const& e) : e_(e) {}

    double operator()(double const* row) const;
    /// Rows of ∂ln rho_i/∂(equation): n of them. Bounds of the mole fractions (the largest) and of
    /// the density, which go into x and rho where they are larger; with the rounding of both.
    void phase(PhaseState const& s, double const* rows, double& x, double& rho) const;

    /// Of the distance of two phases, the largest |ln(rho_i of one/rho_i of the other)|, relative to
    /// it: no component is off by more. rows: of those n logarithms `ln`.
    double apart(std::vector<double> const& ln, double const* rows) const;

    static constexpr double kMargin = 2.0;

  private:
    std::vector<double> const& e_;
};

}  // namespace corvane::inline detail
