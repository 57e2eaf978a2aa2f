// The tangent-plane distance along a straight way between two compositions. Internal to the
// library.
#pragma once

#include <corvane/phases/phase/phase.h>

#include <vector>

namespace corvane::inline detail {

/// Looks for minima of the distance from the plane of `phase` on the way from one composition to
/// another, or to a pure component, along the density root of lower Gibbs energy.
///
/// Three nodes (value and slope) are known before; between neighbours all but the ideal part, which
/// is known exactly, is a cubic of Hermite's. Where the middle one of three is not met by the cubic
/// through the others both sides are halved, at most kNodes times and to kNarrow of the way. Where
/// neighbours lie on different roots, each root is followed by its own cubic, and the way is halved
/// only if one of them may have a minimum where it is the lower. The minima of the cubics are what
/// is found: descents begin there.
class DistanceLine {
  public:
    /// Value and slope along the way.
    struct Slope {
        double t = 0.0, slope = 0.0;
    };
    /// Place on the way, 0 to 1, density, distance, and what is left of that without its ideal
    /// part.
    struct Node {
        double s = 0.0, rho = 0.0;
        Slope all, rest;
    };
    /// work, x: overwritten by every node.
    DistanceLine(FluidModel const& fluid, PhaseState const& phase, double p, PhaseState& work,
                 std::vector<double>& x)
        : fluid_(fluid), phase_(phase), p_(p), work_(work), x_(x) {}

    /// to: mole fractions, or null: pure component `pure`.
    void set(std::vector<double> const& from, double const* to, int pure);
    double fraction(double s, int k) const { return (1.0 - s) * (*from_)[k] + s * end(k); }
    /// Of an end that is the phase itself or one in equilibrium with it: distance and slope are 0.
    Node zero(double s, double rho) const { return complete({s, rho, {}, {}}); }
    /// From potentials over those of the phase.
    Node node(double s, double rho, double const* over) const;
    /// False without a density, or where the distance is negative: then `negative`, at `work`.
    bool evaluate(double s, Node& node);
    /// Of all ways. m lies between a and b.
    void search(Node const& a, Node const& m, Node const& b);

    bool negative = false;
    std::vector<double> minima;  ///< places on the way

  private:
    double end(int k) const { return to_ ? to_[k] : k == pure_ ? 1.0 : 0.0; }
    Slope ideal(double s) const;
    Node complete(Node q) const;
    bool may_dip(Node const& l, Node const* before, Node const& r, Node const* after) const;
    void between(Node const& a, Node const& b);

    FluidModel const& fluid_;
    PhaseState const& phase_;
    const double p_;
    PhaseState& work_;
    std::vector<double>& x_;
    std::vector<double> const* from_ = nullptr;
    double const* to_ = nullptr;
    int pure_ = -1, left_ = 0;  // left_: nodes that may be evaluated
};

}  // namespace corvane::inline detail
