// Newton's method for pure solids in equilibrium with fluids of two components. Internal.
#pragma once

#include <corvane/phases/phase/fixed.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/solid/anchored_solid.h>

#include <array>
#include <vector>

namespace corvane::inline detail {

/// A pure solid at (p, T).
struct SolidState {
    double g = 0.0;    ///< Gibbs energy over RT, comparable with the m_i of a fluid
    double g_T = 0.0;  ///< T·∂g/∂T at constant p
    double v = 0.0;    ///< R·T·∂g/∂p, cm³/mol
    double rho = 0.0;  ///< mol/cm³
    int form = 0;      ///< index of the phase
    /// False outside the range of the data, or without data. slope: g_T, too (six times the cost).
    /// From `anchored` if it is not null, else from component.solid.
    bool evaluate(Model1 const& component, AnchoredSolid const* anchored, double p, double T,
                  bool slope);
    /// What rounding may add to g.
    double rounding(double p, double T) const;
};

/// The solids of both components: null where Solid's own data count.
using AnchoredSolids = std::array<AnchoredSolid const*, 2>;

/// One or two fluids and one or two solids at a given p (or T). Variables u: ln rho_i of the first
/// fluid, ln rho_i of the second one if there are two, then ln T (or ln p). Equations: the fluid's
/// potential equals the solid's Gibbs energy, for every solid; pressures of the fluids equal p;
/// equal potentials in both fluids; and row·u = value, if row is not empty.
class SolidFluidSolver {
  public:
    SolidFluidSolver(FluidModel const& fluid, AnchoredSolids const& anchored, Fixed held);

    std::vector<int> solids;  ///< components that are solid
    bool two = false;         ///< two fluids
    std::vector<double> u, row;
    double value = 0.0;

    PhaseState a, b;      ///< the fluids
    SolidState solid[2];  ///< of the entries of `solids`
    double p = 0.0, T = 0.0;
    int iterations = 0;
    double residual = 0.0;

    int size() const { return two ? 5 : 3; }
    void start(std::vector<double> const& x, double rho, double variable);
    void start_second(std::vector<double> const& x, double rho);
    bool solve(int limit);
    /// ∂u/∂value at the solution (needs row).
    bool tangent(std::vector<double>& t);
    /// Bounds of the errors of the solution (see Certificate), the solids' Gibbs energies at (p, T)
    /// taken as given but for their rounding. Of a point of a line: at its value of row·u.
    bool bound(Certificate& c);

  private:
    bool evaluate();
    void assemble();

    FluidModel const& fluid_;
    const AnchoredSolids anchored_;
    const Fixed held_;
    std::vector<double> jacobian_, r_;
};

}  // namespace corvane::inline detail
