// Newton's method for phases that add up to a whole of given enthalpy, entropy or density.
// Internal to the library.
#pragma once

#include <corvane/phases/phase/caloric.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>

#include <vector>

namespace corvane::inline detail {

/// What a flash has to meet beside the equilibrium: at given p by changing T, at given T by
/// changing p; or nothing, at given p and T.
enum class Target { h_at_p, s_at_p, rho_at_T, none };

/// K phases of amounts n_ik and volumes V_k, all at T, with Σ_k n_ik = z_i. Equations: equal
/// potentials; the pressures equal p (or one another); the target. Unknowns: ln n_ik of every
/// component in all phases but the one that holds most of it, ln V_k, and ln T where p is given.
///
/// Michelsen, Fluid Phase Equilib. 33 (1987) 13, sets up such joint equations at fixed p in the
/// amounts and T; here the volumes are unknowns, too, so that no density root is searched, and the
/// matrix stays regular for a pure fluid, at an azeotrope and with as many phases as the phase rule
/// allows, where h jumps at one T. All derivatives are exact.
class SplitSolver {
  public:
    /// caloric may be null for Target::rho_at_T and none.
    SplitSolver(FluidModel const& fluid, Caloric* caloric, Target target);

    FluidModel const& fluid;
    std::vector<PhaseState> phase;
    std::vector<double> amount;  ///< of the phases, mole fractions of the whole
    double T = 0.0, p = 0.0;     ///< K, MPa; whichever the target leaves free is a result
    double given = 0.0;          ///< h/(R), s/R or 1/rho: K, -, cm³/mol
    int iterations = 0;
    double residual = 0.0;
    double first_step = 0.0;  ///< in ln T or ln p, of the first iteration

    /// Start values: phases (mole fractions over all components and densities) and their fractions.
    /// The amounts are scaled to z. False if some are not positive.
    bool start(double T, double p, std::vector<PhaseRecord> const& phases,
               std::vector<double> const& fractions);
    /// Evaluates all phases; false if that is not finite.
    bool evaluate();
    /// Distance of the present state to the target: (h − given)/RT, (s − given)/R, ln rho − ln of
    /// the given rho. Grows with T or p of a stable state.
    double distance() const;
    /// False without convergence in `limit` iterations, or when a phase vanishes.
    bool solve(int limit);
    /// Fills the bounds of the certificate, from an evaluated state of two phases or more. False if
    /// the Jacobian is singular.
    bool bound(Certificate& c);

  private:
    int row(int i, int k) const { return row_[i * count_ + k]; }
    /// Row of the pressure of phase k; −1: the one that the others are compared with.
    int pressure_row(int k) const { return (count_ - 1) * n_ + (p_free_ ? k - 1 : k); }
    void number();
    void keep_least();
    void assemble();
    std::vector<double> errors() const;
    void add(int column, int k, double const* dm, double dpi, double dtarget, double scale);
    bool advance();
    double change_of_unknown() const;

    Caloric* caloric_;
    const Target target_;
    const bool T_free_, p_free_;
    const int n_;
    int count_ = 0, size_ = 0, vanishing_ = 0;
    std::vector<double> n_ik_, V_, jacobian_, r_, dm_;
    std::vector<int> row_, most_;
};

}  // namespace corvane::inline detail
