// Bubble and dew points: what the direct solution, the search and the trace share. Internal to the
// library.
#pragma once

#include <corvane/phases/envelope.h>
#include <corvane/phases/pair.h>
#include <corvane/phases/saturation.h>
#include <corvane/phases/stability.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One bubble or dew point; the steps are those of saturation_T.
class SaturationSolver {
  public:
    SaturationSolver(ModelN const& model, Saturated kind, bool at_T, double value,
                     Vector<double> const& z);
    SaturationPoint run(SaturationOptions const& o);

  private:
    static constexpr double kTrivial = 1e-4;  // largest |ln(rho_i of a / rho_i of b)| of one phase
    static constexpr int kNewton = 30;        // iterations

    /// One state on the search's way.
    struct Node {
        double s = 0.0;  // ln p or ln T
        bool known = false, stable = true;
        double rho = 0.0;
        StabilityResult r;
    };

    // ---- the direct solution (saturation.cpp)

    bool warm(SaturationPoint const& start);
    bool cold();
    /// A pure fluid next to its critical point. complete_: at or above it.
    bool pure();
    /// Is the converged pair the answer? Leaves the tangent-plane distance in tpd_.
    bool accept();
    SaturationPoint result(SaturationOptions const& o);
    /// From the start in pair_: the ratio of a component between the phases takes the place of T
    /// (or p), which excludes the trivial solution next to a critical point, and Newton's method
    /// finds the ratio at which T (p) has its value; it keeps its sign. At most 20 ratios.
    bool by_ratio();
    /// By mass density: a compressed light gas may have more moles per volume than a heavy liquid.
    bool bubble() const;
    double apart() const;
    std::string name() const;
    std::string state() const;
    /// ln p (or ln T) of the solution, which is what was asked for.
    double found() const { return at_T_ ? pair_.ln_p() : pair_.u.back(); }
    double T(double s) const { return at_T_ ? value_ : std::exp(s); }
    double p(double s) const { return at_T_ ? std::exp(s) : value_; }

    // ---- search over all p or T (saturation_search.cpp)

    bool global(bool upper);
    Node node(double s);
    /// Between two stable states: an unstable one, if there are signs of it.
    std::optional<Node> hidden(Node lo, Node hi);
    std::optional<Node> dip(Node const& a, Node const& b, Node const& c);
    /// Solves the boundary between a stable and an unstable state. 1 an answer, 0 a boundary that
    /// is none, −1 not resolved.
    int boundary(Node stable, Node unstable);

    // ---- trace of the envelope (saturation_trace.cpp)

    bool ends(EnvelopePoint const& q);
    /// Solves all crossings of the envelope; keeps the lowest or highest, also of the one that is
    /// known already.
    bool traced(bool upper, bool known, std::vector<double>& best, double& tpd);

    const FluidModel fluid_;
    const Saturated kind_;
    const bool at_T_;
    const double value_;
    PairSolver pair_;
    Stability stability_;
    PhaseState a_, b_;
    double tpd_ = 0.0;
    bool complete_ = true;  // the search and the trace left nothing open
    bool unknown_ = false;  // states of the search without density, or without a complete test
    bool missed_ = false;   // a crossing of the envelope was not solved
};

}  // namespace corvane
