// Two phases in equilibrium at a measured point, followed from one parameter vector to the next.
// Internal.
#pragma once

#include <corvane/fit/data.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/phase/phase.h>

#include <Eigen/Dense>

#include <vector>

namespace corvane::fit {

/// Partial densities of both phases, mol/cm³; a has the composition given (bubble and dew points).
struct Phases {
    std::vector<double> a, b;
    bool empty() const { return a.empty(); }
};

double total(std::vector<double> const& v);
/// A phase of these partial densities, not evaluated.
void fill(PhaseState& s, std::vector<double> const& rho_i);

class TwoPhase {
  public:
    using Numbers = std::vector<double>;

    TwoPhase(ModelN const& model, int n) : model_(model), n_(n) {}

    /// The bubble or dew point at T and composition, or both liquids at T and p: by Newton's method
    /// from `phases` if there are any, else near the measured state, else by the certified solvers.
    /// False, and no phases, without a solution.
    bool solve(Point const& point, Phases& phases) const {
        return point.kind == PointKind::liquid_liquid ? liquids(point, phases)
                                                      : saturation(point, phases);
    }
    /// Conditions F of the equilibrium for evaluated phases, and with J their derivatives in
    /// (ln rho of a at its composition; ln rho_i of b), of two liquids in (ln rho_i of a; of b).
    bool system(Point const& point, PhaseState const& a, PhaseState const& b, Eigen::MatrixXd* J,
                Eigen::VectorXd& F) const;

    static bool dew(Point const& point) { return point.kind == PointKind::dew; }
    /// The composition that is given.
    static Numbers const& given(Point const& point) { return dew(point) ? point.y : point.x; }
    static bool all_present(Numbers const& x);
    /// Composition of the second phase: as measured, or by Wilson's K-factors (not normalised).
    Numbers second_phase(FluidModel const& fluid, Point const& point,
                         Numbers const& measured) const;
    Vector<double> vector(Numbers const& x) const;

  private:
    bool saturation(Point const& point, Phases& phases) const;
    bool search(Point const& point, Phases& phases) const;
    bool near_measured(FluidModel const& fluid, Point const& point, Phases& phases) const;
    bool liquids(Point const& point, Phases& phases) const;
    bool newton(FluidModel const& fluid, Point const& point, Phases& phases) const;

    ModelN const& model_;
    int n_;
};

}  // namespace corvane::fit
