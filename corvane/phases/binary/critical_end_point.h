// A critical phase in equilibrium with another phase. Internal to the library.
#pragma once

#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/report/certificate.h>

#include <vector>

namespace corvane::inline detail {

/// Critical end point of a binary: λ = C = 0 in one phase, which has the potentials and the
/// pressure of a second one. Newton's method in (ln rho, ln T, x_0) of the critical phase and the
/// ln rho_i of the other; gradients of λ and C by differences, all others exact.
class CriticalEndPoint {
  public:
    CriticalEndPoint(FluidModel const& fluid, CriticalConditions& conditions);

    PhaseState other;  ///< the coexisting phase, with phase_all at the solution
    /// y: start and solution; rho and w: start of the other phase. The critical phase is left in
    /// conditions.s, with phase_all.
    bool solve(CriticalConditions::Variables& y, double rho, std::vector<double> const& w);
    /// Fills the bounds of the certificate at the solution y. False without exact derivatives, if the
    /// Jacobian is singular, or where they exceed the limit.
    bool bound(CriticalConditions::Variables const& y, Certificate& c);

  private:
    bool assemble(CriticalConditions::Variables const& y, double* J);

    FluidModel const& fluid_;
    CriticalConditions& conditions_;
};

}  // namespace corvane::inline detail
