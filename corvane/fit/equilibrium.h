// Phases in equilibrium at a measured point, followed from one parameter vector to the next.
// Internal.
#pragma once

#include <corvane/fit/data.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/phase/phase.h>

#include <Eigen/Dense>

#include <utility>
#include <vector>

namespace corvane::fit {

/// Partial densities of every phase, mol/cm³. Bubble and dew points: the phase whose composition is
/// given, then the other; two liquids: that of x, of x2; azeotropes: liquid, vapour; three phases:
/// those of x, x2, y.
struct Phases {
    std::vector<std::vector<double>> rho_i;
    double share = 0.5;  ///< of the second liquid in the whole (two liquids)
    bool empty() const { return rho_i.empty(); }
    std::size_t lightest() const;  ///< by total density
};

double total(std::vector<double> const& v);

/// Newton's method in ln rho_i of all phases at the measured T. Equations: equal potentials and
/// pressures, and what the kind of the point adds: bubble and dew points the given composition,
/// azeotropes equal compositions; two liquids the pressure, and of more than two components, which
/// have many tie lines, that the mean of both measured compositions is a mixture of the two phases;
/// three phases of three components the pressure.
class Equilibrium {
  public:
    using Numbers = std::vector<double>;

    Equilibrium(ModelN const& model, int n) : model_(model), n_(n) {}

    static bool takes(PointKind kind);
    /// Whether no component is missing from the point. Where one is, `solve` asks the certified
    /// solvers, and there are no residuals.
    bool whole(Point const& point) const { return all_present(middle(point)); }

    /// From `phases` if there are any, else near the measured state, else by the certified solvers.
    /// False, and no phases, without a solution.
    bool solve(Point const& point, Phases& phases) const;
    /// The first two of these, which take no search. Not of points from which a component is
    /// missing.
    bool near(Point const& point, Phases& phases) const;
    /// Whether the phases are stable, by the complete test. They are a solution.
    bool stable(Point const& point, Phases const& phases) const;
    /// The phases with the compositions, T and p that were measured (potentials alone). False where
    /// not all is measured, or a phase has no density.
    bool at_measured(Point const& point, std::vector<PhaseState>& s) const;
    /// du/dθ of a parameter that is changed by set(±h): minus J⁻¹·∂F/∂θ at a solution.
    template <class Set>
    bool slope(Point const& point, Phases const& phases, Set set, double h,
               Eigen::PartialPivLU<Eigen::MatrixXd> const& lu, Eigen::VectorXd& du) const {
        Eigen::VectorXd up, down;
        set(h);
        bool met = residuals(point, phases, nullptr, up);
        set(-h);
        met = met && residuals(point, phases, nullptr, down);
        set(0.0);
        if (met) du = lu.solve((down - up) / (2.0 * h));
        return met && du.allFinite();
    }
    /// F at these phases, and with J its derivatives, with F_T that by ln T.
    bool residuals(Point const& point, Phases const& phases, Eigen::MatrixXd* J, Eigen::VectorXd& F,
                   Eigen::VectorXd* F_T = nullptr) const;
    /// Dew pressure by Raoult's law with Wilson's vapour pressures.
    double wilson_dew(Point const& point) const;
    /// Of a phase at the measured T, MPa.
    double pressure(Point const& point, Numbers const& rho_i) const;
    /// d ln p of the lightest phase by ln T where u = ln rho_i changes by du.
    double pressure_slope(Point const& point, Phases const& phases,
                          Eigen::VectorXd const& du) const;
    /// A solution's derivatives. Of bubble and dew points those by ln T, too, and d ln p/d ln T
    /// along the boundary of the given composition; else slope is 0.
    struct Linear {
        Eigen::PartialPivLU<Eigen::MatrixXd> J;
        double slope = 0.0;
    };
    bool linearise(Point const& point, Phases const& phases, Linear& linear) const;
    /// The phases h·du further.
    Phases moved(Phases const& phases, Eigen::VectorXd const& du, double h) const;
    /// How far the measured state is from an equilibrium, without a unit: ln Σ K_i·z_i with K from
    /// the fugacities of the measured (or Wilson's) second phase; where all phases are measured
    /// the root of the mean square of the differences of ln f_i (of two liquids the logarithm
    /// passes zero where they are no equilibrium, too).
    double distance(Point const& point) const;

    /// Bubble or dew point.
    static bool saturation(Point const& point) {
        return point.kind == PointKind::bubble || point.kind == PointKind::dew;
    }
    static bool dew(Point const& point) { return point.kind == PointKind::dew; }
    /// The composition that is given.
    static Numbers const& given(Point const& point) { return dew(point) ? point.y : point.x; }
    static bool all_present(Numbers const& x);

  private:
    using States = std::vector<PhaseState>;
    struct Rows;
    using Measured = std::vector<std::pair<Numbers const*, Root>>;

    Vector<double> vector(Numbers const& x) const;
    Numbers middle(Point const& point) const;
    Measured measured(Point const& point) const;
    bool states(FluidModel const& fluid, Point const& point, Phases const& phases, States& s,
                int order) const;
    bool system(Point const& point, Phases const& phases, States const& s, Eigen::MatrixXd* J,
                Eigen::VectorXd& F, Eigen::VectorXd* F_T = nullptr) const;
    Numbers second_phase(FluidModel const& fluid, Point const& point,
                         Numbers const& measured) const;
    double slope_of(PhaseState const& s, double const* du) const;
    bool acceptable(Point const& point, Phases const& phases, States const& s) const;
    bool in_order(Point const& point, Phases const& phases) const;
    bool newton(FluidModel const& fluid, Point const& point, Phases& phases) const;
    bool near_measured(FluidModel const& fluid, Point const& point, Phases& phases) const;
    bool substitute(FluidModel const& fluid, Point const& point, Phases& phases) const;
    bool approach(Point const& point, Phases& phases) const;
    bool search(Point const& point, Phases& phases) const;
    Phases found(Point const& point) const;

    ModelN const& model_;
    int n_;
};

}  // namespace corvane::fit
