// Following a curve of coexisting phases of a binary. Internal to the library.
#pragma once

#include <corvane/phases/continuation/continuation.h>
#include <corvane/phases/continuation/phase_curve.h>

#include <utility>
#include <vector>

namespace corvane::inline detail {

/// A curve of a binary step by step, for advance() and continuation(). It ends, at
/// CurveEnd::critical, where two phases become alike within the next step or where that fails: see
/// critical().
class Path : public PhaseCurve {
  public:
    /// longest: the longest step in every mole fraction; others see moves().
    Path(CoexistenceSolver& solver, double longest);

    /// Starts at solver.u, solved with coordinate c kept as it is. False without a solution.
    bool begin(int c);
    /// Starts at solver.u, which is a solution.
    bool begin_at_solution();

    StepLength step;  ///< in the longest allowed
    Trial attempt(double& length, CurveEnd& end);
    double growth() const { return growth_; }
    CurveEnd lost();

    /// Solves at the part q of the way from before() to now().
    bool between(double q, Node& node);
    /// Replace the ends of the last step by what between() found.
    void set_before(Node const& node) { before_ = node; }
    void set_now(Node const& node) { now_ = node; }
    /// Shortens the last step to where T or p has the value; now() is there. Regula falsi along the step, until Newton's method at that T or p converges.
    bool stop_at(Fixed bound);
    /// u, which is a solution, with the tangent in the direction of now().
    bool evaluate(std::vector<double> const& u, Node& node);
    /// Is a mole fraction of now() below 1e-200?
    bool at_trace() const;
    /// Is u within the last step, in the coordinate that was specified in it?
    bool contains(std::vector<double> const& u) const;

    /// Where two phases become alike: the state where these phases, j and k, are the same, both at
    /// their mean. From ratios 0.06 and 0.03: with the tangents all even functions of the ratio are
    /// known to its sixth power. False if these points are not found; u is then extrapolated from
    /// now(). approach: takes the solutions on the way, from now() on.
    bool critical(std::vector<double>& u, std::vector<std::vector<double>>* approach = nullptr);
    /// After that without a critical point: the curve may pass a neck between two regions.
    /// From here on phases count as alike only much closer. False if that has been tried.
    bool narrow() { return std::exchange(alike_limit_, kNeck) > kNeck; }
    int alike_j() const { return alike_[0]; }
    int alike_k() const { return alike_[1]; }

  private:
    bool close(std::vector<double> const& u, double limit,
               std::vector<double> const* from = nullptr);
    bool solve_node(int limit, Node& node, std::vector<double> const* along);

    const double longest_;
    static constexpr double kAlike = 0.03, kNeck = 0.002;  // ratios: the phases are nearly one
    double alike_limit_ = kAlike;
    double growth_ = 1.0;
    int specified_ = 0, alike_[2] = {0, 1};
};

}  // namespace corvane::inline detail
