// Single states of a pure solid beside a fluid of two components, with their certificates.
// Internal.
#pragma once

#include <corvane/phases/solid/solid_fluid.h>
#include <corvane/phases/solid/solid_fluid_solver.h>
#include <corvane/phases/stability/stability.h>

#include <string>
#include <vector>

namespace corvane::inline detail {

/// A state with what continuation needs: the solver's variables and their derivatives for its row.
struct SolidFluidNode {
    std::vector<double> u, t;
    SolidFluidPoint point;
    bool freezing = false;  ///< the other component
};
/// The pure component at melting or sublimation.
struct PureSolidPoint {
    double variable = 0.0, rho = 0.0;  ///< T, or p of an isotherm; of the fluid
    SolidFluidPoint point;
};

/// At constant p (the variable is T) or constant T (the variable is p).
class SolidFluidStates {
  public:
    /// @throws ThException 4 not a binary, 5 arguments out of range, 6 no data of the solid
    SolidFluidStates(ModelN const& model, int solid, Fixed held, SolidFluidOptions const& options);

    /// Where the pure component melts or sublimes, within the solid's data: the hottest first, or
    /// the one of lowest pressure.
    std::vector<PureSolidPoint> pure_points();
    /// Isobars: all fluids at T that have the potential of the solid, stable or not. missed(): there
    /// may be one more, which Newton's method did not reach or the model has no density for.
    std::vector<SolidFluidNode> crossings(double T);
    bool missed() const { return missed_; }
    /// The solution of `solver` as a point, with its certificate; second: a fluid that is known to
    /// coexist.
    void certify_point(SolidFluidSolver& solver, PhaseState const* second,
                       SolidFluidNode& node);
    [[noreturn]] void fail(double T, std::string const& advice,
                           EquilibriumFailure::Kind kind = EquilibriumFailure::Kind::no_solution) const;

    static Vector<double> pure_composition(int component);

  protected:
    double p(double variable) const { return held_.p(variable); }
    double T(double variable) const { return held_.T(variable); }

    const FluidModel fluid_, pure_;
    const SolidFluidOptions o_;
    const int s_;  // component that forms the solid
    const Fixed held_;
    SolidFluidSolver solver_;
    Stability stability_;
    double hottest_ = 0.0, coldest_ = 0.0;  // K: range of the solid's data

    /// Highest temperature of a component's solid data, 0 without them.
    double hottest(int component) const;

  private:
    bool gap(double variable, double& value);
    bool pure_point(double a, double fa, double b, double fb, PureSolidPoint& q);
    void bound_pure(double gap, Certificate& c);
    /// A fluid of z = ln(x/(1 − x)) on the way of the search.
    struct Sample {
        double z = 0.0, rho = 0.0;
        double h = 0.0;       ///< potential of the solid's component less that of the solid
        double convex = 0.0;  ///< x·(1 − x)·∂²g/∂x²: 1 in an ideal mixture, 0 on the spinodal
        bool known = false;
        bool two = false;  ///< there are two roots
    };
    /// Of a density root: 0 the dense one, 1 the dilute one, or that nearest to rho.
    Sample sample(double z, int root, double rho);
    /// Looks for crossings between two compositions along one root.
    void between(Sample const& a, Sample const& b, int root, std::vector<SolidFluidNode>& found);
    void bracketed(Sample a, Sample b, std::vector<SolidFluidNode>& found);
    /// Solves from z on and adds what is new. False if it does not end between low and high.
    bool cross(double z, double rho, double low, double high, std::vector<SolidFluidNode>& found);

    PhaseState at_pure_;
    SolidState solid_;
    double at_ = 0.0, level_ = 0.0;  // of crossings: temperature, potential of the solid
    bool missed_ = false;
};

}  // namespace corvane::inline detail
