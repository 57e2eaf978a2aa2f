// Bubble and dew points: what the direct solution, the search and the trace share. Internal to the
// library.
#pragma once

#include <corvane/phases/coexistence/pair.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/phase/fixed.h>
#include <corvane/phases/saturation/envelope.h>
#include <corvane/phases/saturation/kept_envelope.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/phases/stability/stability.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

namespace corvane::inline detail {

/// Of a mole fraction that is of no account to the other component of a binary.
inline constexpr double no_account = 1e-30;

/// Mole fractions of the components that are present, none below the least.
std::vector<double> present(FluidModel const& fluid, Vector<double> const& all);
/// Those at the least become 0.
void without_absent(std::vector<PhaseRecord>& phases);

/// The envelope, with shorter steps if it is lost before its end. False without one.
/// @param stuck  set where it is lost all the same
bool trace_envelope(FluidModel const& fluid, Envelope& curve, bool& stuck);

/// One bubble or dew point; the steps are those of saturation_T.
class SaturationSolver {
  public:
    SaturationSolver(ModelN const& model, Saturated kind, Fixed held, Vector<double> const& z);
    /// What run() returns, or a failure that says why not.
    SaturationPoint answer(SaturationOptions const& o);
    /// The direct solution from no start, if that converges and is of the kind, before any test: T,
    /// p, densities and compositions.
    bool untested(SaturationPoint& q);

  private:
    static constexpr int kNewton = 30;          // iterations
    static constexpr double kHighest = 1000.0;  // MPa, end of the search
    static constexpr double kLowest = 1e-288;   // its begin: densities below it lose their digits
    SaturationPoint run(SaturationOptions const& o);

    /// One state on the search's way.
    struct Node {
        double s = 0.0;  // ln p or ln T
        bool known = false, stable = true;
        bool thin = false;  ///< see thin()
        double rho = 0.0;
        StabilityResult r;
    };

    /// An accepted solution.
    struct Found {
        std::vector<double> u;
        double tpd = 0.0;
        Certificate bounds;
        double s = 0.0;  // ln p or ln T
    };

    /// A boundary of the other kind: ln p (or ln T), the slope of the tangent-plane distance of the
    /// incipient phase in it, 0 at a critical point (see lost_), and the density of the whole.
    struct Other {
        double s = 0.0, slope = 0.0, rho = 0.0;
    };

    // ---- the direct solution (saturation.cpp)

    bool warm(SaturationPoint const& start);
    bool cold();
    /// Compositions, and T (or p), by substitution from an incipient phase y, then solve().
    bool substitute(std::vector<double> y, double t, double q, int last);
    /// Where cold() does not converge, mostly some per cent below a critical temperature: from a lower T
    /// (or p), from which it does, along the curve of saturation in ln T, at most 16 steps.
    bool from_below();
    /// A pure fluid next to its critical point. complete_: at or above it.
    bool pure();
    /// A pure fluid as its component has it, with those bounds: equations that are not smooth at
    /// the critical point, where RegularPair loses its way.
    bool by_pure_fluid();
    /// The pair at T (or p) from the start in pair_, with its bounds. also_near: phases that are
    /// nearly alike, too; unless_above: not where above().
    bool solve(bool also_near = true, bool unless_above = false);
    bool within_bounds(bool known);
    /// Is the solution the answer? Leaves the tangent-plane distance in tpd_, of a dew point the liquid
    /// that is below its plane in below_.
    bool accept();
    Found take() const { return {pair_.u, tpd_, bounds_, found()}; }
    bool restore(Found const& found);
    SaturationPoint search(SaturationOptions const& o, std::optional<Found> const& direct,
                           std::optional<SaturationPoint> beside);
    SaturationPoint result(SaturationOptions const& o);

    // ---- next to a critical point (saturation_critical.cpp)

    /// The same by RegularPair, which admits no trivial solution, from the start in pair_.
    bool near();
    /// From the start in regular_: the distance at which T (or p) has its value, at most 25 of
    /// them.
    bool by_distance();
    /// The solution of regular_ into pair_. False without bounds, or if it is locally unstable.
    bool close();
    bool equal_potentials();  ///< of pair_, as the certificate asks for
    /// Along the pairs that begin at the critical point, as far as half a distance of 0.5.
    bool from_critical(CriticalPoint const& c);
    bool along_from_critical();  ///< from the critical point of the whole, if there is one
    bool follow(double side);
    struct Step;
    bool step_to(double d, Step const& from, Step& to);
    bool between(Step const& a, Step const& b);
    static bool too_near(Step const& critical, Step const& to);
    void unresolved(Step const& from);
    /// A solution without bounds: notes it if it is of the other kind.
    void note_loose();

    // ---- beyond the envelope (saturation_trace.cpp)

    /// Does T (or p) lie beyond all of the envelope? By the one that is kept, or, far from the
    /// spinodal and where all is quiet(), by its outline, which is traced here once.
    bool above();
    bool outlined();

    /// By mass density: a compressed light gas may have more moles per volume than a heavy liquid.
    bool bubble() const;
    /// A bubble point whose incipient phase is as dense as a liquid.
    bool second_liquid() const;
    double apart() const;  ///< half distance, as in RegularPair
    bool alike() const;    ///< so near that RegularPair is the system to solve
    std::string name() const;
    std::string state() const;
    Other other() const;  ///< the solution as one
    /// ln p (or ln T) of the solution, which is what was asked for.
    double found() const { return held_.at_T ? pair_.ln_p() : pair_.u.back(); }
    double T(double s) const { return held_.T(std::exp(s)); }
    double p(double s) const { return held_.p(std::exp(s)); }

    // ---- liquids that split (saturation_split.cpp, saturation_vanishing.cpp)

    /// From a neighbouring point whose given composition is split.
    std::optional<SaturationPoint> warm_split(SaturationPoint const& start,
                                              SaturationOptions const& o);
    /// From a bubble point of the whole that is not stable.
    std::optional<SaturationPoint> beside_liquids(SaturationOptions const& o);
    /// The same from flashes at all states of the search, where nothing else led to one: three
    /// components and more.
    std::optional<SaturationPoint> beside_liquids_at(std::vector<Node> const& nodes,
                                                     SaturationOptions const& o);
    struct Vanishing;
    std::optional<SaturationPoint> first_vapour(std::vector<PhaseRecord> const& liquids,
                                                std::vector<double> const& amounts,
                                                std::vector<double> const& y, double rho_vapour,
                                                double t, SaturationOptions const& o);
    /// The same where the vapour is nearly one of the liquids, next to a critical end point.
    /// rho, volumes: partial densities of all phases, the vapour last, and their volumes.
    std::optional<SaturationPoint> first_alike(std::vector<std::vector<double>> rho,
                                               std::vector<double> volumes, double t,
                                               SaturationOptions const& o);
    bool amounts_of(CoexistenceSolver const& s, std::vector<double>& amount) const;
    bool certified_beside(CoexistenceSolver const& all, SaturationPoint& point,
                          SaturationOptions const& o);
    void report_liquids(CoexistenceSolver const& all, std::vector<double> const& parts,
                        SaturationPoint& point) const;

    /// The same of a binary where one liquid and the vapour are component i to 1e-30, and one of
    /// them to 1e-280.
    std::optional<SaturationPoint> beside_pure(int i, PhaseRecord const& other,
                                               SaturationOptions const& o);

    // ---- search over all p or T (saturation_search.cpp)

    /// finer: divides the steps.
    bool global(bool upper, double finer);
    /// Are all its states stable, for steps as they are, without signs of others between them, or
    /// beyond the highest pressure or the lowest temperature?
    bool quiet();
    /// The states in ascending order. False where there is no range, or with only_stable from the
    /// first one that is not stable.
    bool lay(double finer, std::vector<Node>& nodes, bool only_stable = false);
    /// ln p (or ln T) from where to where, and its longest step.
    struct Range {
        double lo, hi, step;
    };
    Range searched() const;
    bool lower(Range& range);  ///< Of T: to where a stable gas is, in at most eight steps.
    struct Change {
        Node stable, unstable;
    };
    /// Between neighbours, in ascending order.
    std::vector<Change> changes(std::vector<Node> const& nodes);
    Node node(double s);
    /// Is the whole, stable in a_, so thin a gas that it is stable at all lower pressures, too?
    /// With p the distance of a trial changes by (v − Σ w_i·v_i)·dp/RT, v_i the partial molar
    /// volumes in the gas: where these are nearly RT/p that of every liquid rises as p falls, and
    /// two such gases mix.
    bool thin(double s) const;
    /// Between two stable states: an unstable one, if there are signs of it.
    std::optional<Node> hidden(Node lo, Node hi);
    /// Between two unstable states: a stable one, if there are signs of it.
    std::optional<Node> window(Node lo, Node hi);
    std::optional<Node> dip(Node const& a, Node const& b, Node const& c);
    /// Others between the ends of a step and the boundary that was met in it.
    std::vector<Change> also_in(Change const& step, Change const& met);
    /// Solves the boundary between a stable and an unstable state, which it moves together. 1 an
    /// answer, 0 a boundary that is none, −1 not resolved.
    int boundary(Node& stable, Node& unstable);
    /// Is it a known one of the other kind? Beyond a boundary the distance may be so small that the
    /// test of stability sees nothing yet: then what it is there, by its slope at the boundary and
    /// a square through an unstable state further off, tells.
    bool of_other_kind(Node const& stable, Node const& unstable, Node const& far) const;
    /// A start for it: the whole on either side, at its two densities. Where a trace is beyond its
    /// solubility the trial phase is rich in that, and not the one that appears here.
    bool other_root(double rho, double jumped, double s);

    // ---- trace of the envelope (saturation_trace.cpp)

    bool crossing(EnvelopePoint const& a, EnvelopePoint const& b, double part, double lo, double hi,
                  bool& unstable);
    /// Solves all crossings of the envelope; keeps the lowest or highest, also of the one that is
    /// known already.
    bool traced(bool upper, bool known, Found& best);
    bool within_unstable(double lo, double hi);

    const FluidModel fluid_;
    const Vector<double> asked_;
    const Saturated kind_;
    const Fixed held_;
    PairSolver pair_;
    RegularPair regular_;
    Certificate bounds_;
    Stability stability_;
    PhaseState a_, b_;
    double tpd_ = 0.0;
    std::optional<TrialPhase> below_;
    bool collect_ = false;       // accept() notes the boundaries of the other kind
    std::vector<Other> others_;  // seen by accept()
    KeptEnvelope const* kept_ = nullptr;
    bool beyond_ = false;       // all of the envelope: nothing next to the critical point
    bool may_outline_ = false;  // not asked yet; then beyond_ is by the outline, too
    bool by_outline_ = false;   // beyond_ is
    bool loose_ = false;   // the last pair converged, but its errors are not bounded
    bool lost_ = false;  // a solution that cannot be told from a critical point, or without bounds
    bool complete_ = true;   // the search and the trace left nothing open
    bool unknown_ = false;   // states of the search without density, or without a complete test
    bool open_ = false;      // whether a vapour appears beside two liquids
    bool unsolved_ = false;  // one seems to, in a bracket where Newton's method fails
    /// ln p (or ln T) of a bubble point of two phases that was bracketed, not solved.
    std::optional<double> bracketed_;
    bool stuck_ = false;       // the trace ended before its end
    bool missed_ = false;      // a boundary or a crossing of the envelope was not solved
    std::vector<Node> nodes_;  // of global(), in the order in which answers are wanted
    std::vector<Node> laid_;   // of quiet()
    std::optional<bool> quiet_;  // what it found
};

}  // namespace corvane::inline detail
