// Points of a curve of coexisting phases, in a local parameter. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/coexistence.h>

#include <cmath>
#include <vector>

namespace corvane::inline detail {

/// Along the one degree of freedom that the conditions of `solver` leave, its row being set here.
/// Specified is at each point whichever coordinate changes most (Rheinboldt & Burkardt, ACM Trans.
/// Math. Softw. 9 (1983) 215; Michelsen, Fluid Phase Equilib. 4 (1980) 1): the logarithmic ratios
/// of the partial densities between every two phases (these alone where two phases become alike,
/// which excludes the trivial solution), ln T, and for binaries the logit of the mole fraction in
/// each phase. The predictor is the cubic through two points with their tangents, or the tangent.
class PhaseCurve {
  public:
    /// A point and the tangent in the direction of travel, of the longest step allowed.
    struct Node {
        std::vector<double> u, t;
        double ln_p = 0.0, ln_p_t = 0.0;
    };

    Node const& before() const { return before_; }
    Node const& now() const { return now_; }
    void reverse();

    /// Logit of component 0 of a binary in phase k.
    static double logit(std::vector<double> const& u, int k) { return u[2 * k] - u[2 * k + 1]; }
    /// Coordinates: logits first; the last one ln T.
    int last_coordinate() const { return static_cast<int>(coordinates_.size()) - 1; }
    /// Largest |ratio| between two phases.
    double apart(std::vector<double> const& u, int j, int k) const;

  protected:
    /// What a change of a coordinate counts: of ln p, of a ratio, of ln T. That of a mole fraction
    /// counts by itself, but at least a thirtieth of its logit. Of traces below 1e-17 the logarithms
    /// count less.
    struct Measure {
        double ln_p, ratio, ln_T;
    };
    /// step: the longest, in that measure.
    PhaseCurve(CoexistenceSolver& solver, bool logits, Measure measure, double step);

    double at(std::vector<double> const& u, int c) const {
        Coordinate const& q = coordinates_[static_cast<std::size_t>(c)];
        return q.j < 0 ? u[q.i] : u[q.i] - u[q.j];
    }
    double weight(std::vector<double> const& u, int c) const;
    /// The largest change along d at u, in the longest steps.
    double moves(std::vector<double> const& u, std::vector<double> const& d, double ln_p) const;
    /// The coordinate that changes most, of those that do not depend on a component that is absent
    /// from a phase or will be after a step of this length.
    int most(Node const& node, double length = 0.0) const;
    /// Binaries: is u[i] that of a component which is absent from its phase?
    bool absent_at(std::vector<double> const& u, int i) const {
        return n_ == 2 && u[i] - u[i ^ 1] < kAbsent;
    }
    static constexpr double kAbsent = -640.0;  // ln of a ratio of mole fractions
    bool is_ratio(int c) const { return coordinates_[static_cast<std::size_t>(c)].ratio; }
    /// The larger of the ratios between two phases, as a coordinate.
    int largest_ratio(std::vector<double> const& u, int j, int k) const;

    void specify(int c);
    /// The solution in the solver as a node, in the direction of `along` if that is given. solved:
    /// as CoexistenceSolver::tangent has it.
    bool finish(Node& node, std::vector<double> const* along, bool solved = false);
    /// Solves, and the node of the solution.
    bool solve(int limit, Node& node, std::vector<double> const* along) {
        return solve(limit) && finish(node, along, true);
    }
    /// Newton's method from the solver's u. False without phases that are mechanically stable at
    /// positive pressure.
    bool solve(int limit);

    /// Does the cubic through a and b in coordinate c serve a step of this length along b.t? As
    /// long as c is monotonic and the step not longer than `reach` times that from a to b.
    bool cubic_serves(Node const& a, Node const& b, int c, double length, double reach) const;
    std::vector<double> cubic(Node const& a, Node const& b, int c, double length) const;

    CoexistenceSolver& s_;
    Node before_, now_;

  private:
    struct Coordinate {
        int i, j;    // value u[i] − u[j]; u[i] for j < 0
        bool ratio;  // between two phases
    };
    const int n_;
    const Measure measure_;
    const double step_;
    std::vector<Coordinate> coordinates_;
    int first_ratio_;
};

double dot(std::vector<double> const& a, std::vector<double> const& b);

}  // namespace corvane::inline detail
