// The regions and triangles of a ternary diagram, as they are found. Internal to the library.
#pragma once

#include <corvane/phases/flash/flash.h>
#include <corvane/phases/ternary/ternary_diagram.h>
#include <corvane/phases/ternary/tie_line_curve.h>

#include <array>
#include <vector>

namespace corvane::inline detail {

/// Mole fractions of the first two components.
using TernaryPoint = std::array<double, 2>;

/// Grows from splits: each is followed to its ends, each end (an edge, a side of a triangle) to
/// what begins there.
class TernaryRegions {
  public:
    TernaryRegions(ModelN const& model, double T, double p, TernaryOptions const& options);

  protected:
    /// A split of the binary without a component.
    struct EdgeSplit {
        TernaryTieLine tie;
        int absent;
        bool done;  ///< followed into the triangle
    };

    /// Follows all splits of edges that are not done.
    void leave_edges();
    /// The regions of a split inside the triangle, the result of a flash of z.
    void seed(Vector<double> const& z, FlashResult& q);
    /// Is the whole in a region, a triangle, or a split of an edge that is known?
    bool known(Vector<double> const& z) const;
    /// Two tie lines that cross contradict each other, at most one is stable: those into `open`.
    void crossings();

    ModelN const& model_;
    const TernaryOptions o_;
    const FluidModel fluid_;
    TieLineCurve curve_;
    std::vector<EdgeSplit> edges_;
    bool interrupted_ = false;
    TernaryDiagram d_;

  private:
    void follow(TernaryRegion& region);
    std::size_t add(Triangle const& triangle);
    void arrive(Triangle const& triangle, TernaryTieLine const& side);
    TernaryTieLine side_of(std::size_t at, std::size_t k) const;
    void triangles();
    void finish(TernaryRegion&& region);
    double mass(PhaseRecord const& q) const;
    double reduced(PhaseRecord const& q) const;
    bool covered(TernaryPoint const& z) const;

    std::vector<std::array<bool, 3>> sides_;  // of the triangles: opposite to each phase
    int points_ = 0;
};

}  // namespace corvane::inline detail
