// Following a curve of coexisting phases of a binary. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/coexistence.h>

#include <utility>
#include <vector>

namespace corvane {

/// Continuation along the one degree of freedom that the conditions of `solver` leave, its row
/// being set here. Specified is at each point whichever of these coordinates changes most: the
/// logit of the mole fraction in each phase, the logarithmic ratios of the partial densities
/// between every two phases (these alone where two phases become alike, which excludes the trivial
/// solution), and ln T. The predictor is a cubic; steps follow the number of Newton iterations.
class Path {
  public:
    /// A point and the tangent in the direction of travel, of the longest step allowed.
    struct Node {
        std::vector<double> u, t;
        double ln_p = 0.0, ln_p_t = 0.0;
    };
    enum class Step {
        done,
        alike,  ///< two phases become alike, within the next step or where it fails: critical()
        stuck   ///< no shorter step finds a further point
    };

    /// step: the longest in every mole fraction; others see moves().
    Path(CoexistenceSolver& solver, double step);

    /// Starts at solver.u, solved with coordinate c kept as it is. False without a solution.
    bool begin(int c);
    /// Starts at solver.u, which is a solution.
    bool begin_at_solution();
    void reverse();
    Step advance();
    /// Solves at the part q of the way from before() to now().
    bool between(double q, Node& node);
    Node const& before() const { return before_; }
    Node const& now() const { return now_; }
    /// Replace the ends of the last step by what between() found.
    void set_before(Node const& node) { before_ = node; }
    void set_now(Node const& node) { now_ = node; }
    /// Shortens the last step to where T or p (condition: the solver's) has the value; now() is
    /// there. Regula falsi along the step, until Newton's method at that T or p converges.
    bool stop_at(double& condition, double value);
    /// u, which is a solution, with the tangent in the direction of now().
    bool evaluate(std::vector<double> const& u, Node& node);
    /// Is a mole fraction of now() below 1e-200?
    bool at_trace() const;
    /// Is u within the last step, in the coordinate that was specified in it?
    bool contains(std::vector<double> const& u) const;

    /// After Step::alike: the state where the two phases j and k are the same, both at their mean.
    /// From ratios 0.06 and 0.03: with the tangents all even functions of the ratio are known to
    /// its sixth power. False if these points are not found; u is then extrapolated from now().
    /// approach: takes the solutions on the way, from now() on.
    bool critical(std::vector<double>& u, std::vector<std::vector<double>>* approach = nullptr);
    /// After Step::alike without a critical point: the curve may pass a neck between two regions.
    /// From here on phases count as alike only much closer. False if that has been tried.
    bool narrow() { return std::exchange(alike_limit_, kNeck) > kNeck; }
    int alike_j() const { return alike_[0]; }
    int alike_k() const { return alike_[1]; }

    /// Logit of component 0 in phase k.
    static double logit(std::vector<double> const& u, int k) { return u[2 * k] - u[2 * k + 1]; }
    /// Coordinates: 0 to M − 1 logits; the last one ln T.
    int last_coordinate() const { return static_cast<int>(coordinates_.size()) - 1; }
    /// Largest |ratio| between two phases.
    static double apart(std::vector<double> const& u, int j, int k);

  private:
    struct Coordinate {
        int i, j;    // value u[i] − u[j]; u[i] for j < 0
        bool ratio;  // between two phases
    };
    double at(std::vector<double> const& u, int c) const {
        Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
        return q.j < 0 ? u[q.i] : u[q.i] - u[q.j];
    }
    void specify(int c);
    bool predict(int c, double length, std::vector<double>& u) const;
    double weight(std::vector<double> const& u, int c) const;
    double moves(std::vector<double> const& u, std::vector<double> const& d, double ln_p) const;
    int most(Node const& node) const;
    bool close(std::vector<double> const& u, double limit,
               std::vector<double> const* from = nullptr);
    bool solve(int limit, Node& node, std::vector<double> const* along);
    bool finish(Node& node, std::vector<double> const* along);

    CoexistenceSolver& s_;
    const double step_;
    std::vector<Coordinate> coordinates_;
    Node before_, now_;
    static constexpr double kAlike = 0.03, kNeck = 0.002;  // ratios: the phases are nearly one
    double alike_limit_ = kAlike;
    double length_ = 1.0;  // of the next step, in the longest allowed
    int specified_ = 0, alike_[2] = {0, 1};
};

}  // namespace corvane
