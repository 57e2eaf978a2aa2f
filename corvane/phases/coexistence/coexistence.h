// Newton's method for phases in equilibrium. Internal to the library.
#pragma once

#include <corvane/phases/phase/fixed.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>

#include <optional>
#include <vector>

namespace corvane::inline detail {

/// Phases of the same T in the variables u = (ln rho_i of each phase, one phase after the other;
/// ln T). Equations: n equal potentials and equal pressures between the first phase and every
/// other; then whatever fixes a composition, T, p or combinations of the variables, so that there
/// are as many conditions as variables. All derivatives are exact.
///
/// In these isochoric variables (Bell & Deiters, AIChE J. 64 (2018) 2745) no density root is
/// searched, so that nothing jumps near a critical point. A component of which a phase other than the
/// first (of two phases: either) would hold less than least_fraction keeps what it starts with there.
class CoexistenceSolver {
  public:
    CoexistenceSolver(FluidModel const& fluid, int phases);

    FluidModel const& fluid;
    std::vector<PhaseState> phase;  ///< evaluated at the last u
    std::vector<double> u;
    int iterations = 0;
    double residual = 0.0;

    // What is fixed beside the equilibrium itself.
    /// Composition of the whole (n − 1 conditions), which is the first phase and one more for every
    /// entry of `fraction`.
    std::vector<double> const* z = nullptr;
    /// Volume fractions in the whole of the second phase and of those that follow: variables
    /// (instead of also and row). Without any the whole is the first phase.
    std::vector<double> fraction;
    std::optional<double> T, p;  ///< K, MPa
    std::vector<double> also;    ///< not empty: also·u = 0
    std::vector<double> row;     ///< not empty: row·u = value
    double value = 0.0;
    bool rough = false;  ///< a residual of 1e-5 will do, and no bounds

    int size() const { return count_ * n_ + 1 + static_cast<int>(fraction.size()); }
    int count() const { return count_; }
    /// Moles of every phase of the whole in a unit of volume.
    std::vector<double> amounts() const;
    void hold(Fixed at) { (at.at_T ? T : p) = at.value; }
    void release() { T = p = std::nullopt; }
    /// Start values of phase k; where a component is absent, of less than least_fraction.
    void start(int k, std::vector<double> const& x, double rho);
    /// False when it does not converge within `limit` iterations. On success all phases are
    /// evaluated with all derivatives at u, which meets the equations to `tolerance` of the
    /// certificate.
    bool solve(int limit);
    /// Takes the densities of all phases but the softest to its pressure, for certificates at low
    /// pressure, where rounding of a liquid's density moves its pressure more than solve() sees.
    void level();
    /// ∂u/∂value at the solution (needs row). False if singular. solved: solve() has just ended
    /// there, under these conditions, and its Jacobian serves.
    bool tangent(std::vector<double>& t, bool solved = false);
    /// Fills the bounds of the certificate from the evaluated phases, all differences against the
    /// first one. False if the Jacobian is singular.
    bool bound(Certificate& c);
    /// Are two phases one, all their ln rho_i within 1e-4?
    bool trivial() const;
    /// Evaluates the phases at u. False if that is not finite.
    bool evaluate();
    /// ln p of the softest phase and its slope along t.
    double ln_p() const;
    double ln_p(std::vector<double> const& t) const;
    double pressure() const;
    int softest() const;  ///< of smallest ∂p/∂ln rho, whose pressure rounding moves least

  private:
    void assemble();
    void equal(int k, double scale, double* J, double* r) const;
    void compose(double* J, double* r) const;
    double first_fraction() const;

    int n_, count_, p_row_ = 0;
    std::vector<double> jacobian_, r_;
    std::vector<double> equation_error_, inverse_, ln_, rows_;  // of bound()
};

}  // namespace corvane::inline detail
