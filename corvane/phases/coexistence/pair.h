// Newton's method for two phases in equilibrium. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/coexistence.h>

#include <cmath>
#include <vector>

namespace corvane::inline detail {

/// Two phases a and b: 2n + 1 variables, n + 1 equations of equilibrium.
class PairSolver : public CoexistenceSolver {
  public:
    explicit PairSolver(FluidModel const& f) : CoexistenceSolver(f, 2), a(phase[0]), b(phase[1]) {}
    PairSolver(PairSolver const&) = delete;
    PairSolver& operator=(PairSolver const&) = delete;

    PhaseState &a, &b;

    void start(std::vector<double> const& x_a, double rho_a, std::vector<double> const& x_b,
               double rho_b, double T_) {
        CoexistenceSolver::start(0, x_a, rho_a);
        CoexistenceSolver::start(1, x_b, rho_b);
        u.back() = std::log(T_);
    }
    PhaseState const& light() const { return a.rho < b.rho ? a : b; }
};

}  // namespace corvane::inline detail
