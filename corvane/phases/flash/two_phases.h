// Two phases at given p and T from K-factors. Internal to the library.
#pragma once

#include <corvane/phases/phase/phase.h>

#include <vector>

namespace corvane::inline detail {

/// The amounts of the components in two phases a and b that add up to the composition of the fluid:
/// the equation of Rachford & Rice, Petrol. Trans. AIME 195 (1952) 327, with substitution from the
/// K-factors, then Newton's method on the Gibbs energy in the amounts of one phase (Michelsen,
/// Fluid Phase Equilib. 9 (1982) 21), each step shortened until the energy falls, its matrix
/// shifted where the energy is not convex. What it finds is tested for nothing.
class TwoPhases {
  public:
    explicit TwoPhases(FluidModel const& fluid);
    /// Before all else, and for every further state.
    void begin(double p, double T);

    PhaseState a, b;          ///< after solve(), with phase_H and phase_p
    std::vector<double> lnK;  ///< ln of the mole fractions in b over those in a: the start
    double beta = 0.5;        ///< amount of b; before solve() where rachford_rice() begins
    double residual = 0.0;    ///< largest difference of potentials
    int iterations = 0;

    /// From lnK. `guess`: give up where the phases vanish or grow alike, or no minimum of the energy
    /// is near. False if it does not converge, or to phases that are alike.
    bool solve(bool guess = false);
    /// The same from Wilson's K-factors, as a guess.
    bool wilson();
    /// beta for lnK by Newton's method kept in a bracket. False if the whole fraction 0 … 1 has no
    /// root.
    bool rachford_rice();

  private:
    bool fractions();
    bool evaluate(int order);
    bool substitute(int order);
    bool descended();
    bool at_fraction();
    void K_factors();
    void small_amount();
    bool newton();
    bool line_search();
    void lengthen();
    void restore();

    FluidModel const& fluid_;
    const int n_;
    double p_ = 0.0, T_ = 0.0;
    std::vector<double> l_, v_, K_, x_, y_, step_, hess_;  ///< amounts in a and b; mole fractions
    std::vector<double> from_l_, from_v_, second_, down_;  ///< of newton and line_search
    double gibbs_ = 0.0;
    bool guess_ = false;
};

}  // namespace corvane::inline detail
