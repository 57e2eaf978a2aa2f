// Stability of a phase: the tangent-plane distance.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>

#include <memory>
#include <optional>
#include <vector>

class ModelN;

namespace corvane::inline detail {
class BinaryScan;
class StabilitySearch;
}

namespace corvane {

/// A trial phase where the tangent-plane distance is stationary, or negative.
struct TrialPhase {
    double tpd = 0.0;  ///< over RT and per mole
    double rho = 0.0;
    std::vector<double> w;  ///< mole fractions of the present components
};

struct StabilityResult {
    /// No trial with tpd < −1e-8 (binaries: see Stability); of a binary with `unconverged` not known.
    bool stable = true;
    double tpd = 0.0;    ///< smallest value found, 0 at most unless `other` is set
    bool other = false;  ///< a stationary point besides the phase itself (and the known one)
    TrialPhase trial;    ///< that of smallest tpd, if `other` or unstable
    int iterations = 0;
    int unconverged = 0;  ///< starts that used up their iterations or met no density
    /// Of three components and more: components whose equation has no liquid, and too much of which
    /// is here for a vapour, or of whose mixtures a stable one may be missed; counted by
    /// `unconverged`, too.
    int unseen = 0;
};

/// Tangent-plane test (Michelsen, Fluid Phase Equilib. 9 (1982) 1) with its work space.
///
/// A binary by the complete test: BinaryScan, whose header says what is proven. It takes a binary
/// for unstable below −1e-8, and a whole of given composition, whose potentials have no residuals,
/// below rounding (5e-14 of the terms of the distance). Where even that hides a pair next to a
/// critical point, the whole is decided by whether it lies between the two phases, or not at all
/// (`unconverged`) where it is nearer to one of them than their error.
///
/// Else, first the phase's own other density root, and whether it is a minimum at all (∂μ_i/∂n_j
/// positive definite). A binary by the quick test: every minimum of a scan over 15 compositions
/// along both density roots, and minima that hide beside the phase itself, each refined inside its
/// bracket. Otherwise the starts
/// are Wilson's vapour and liquid, every component nearly pure, and the middle between each and the
/// phase, at the density of lower Gibbs energy; from there three successive substitutions, then
/// Newton in 2·√W, its matrix shifted until it is definite and each step shortened until the
/// modified distance falls; then substitution from every component nearly pure at its other density
/// root. Descents end early where they enter the bowl of a phase or of a minimum that is known:
/// near it, where the distance rises as a parabola. The complete test of three and more components
/// looks at 5 % of every component beside the phase, too, and descends from there by Newton's
/// method alone where the distance is below 0.6 of that in an ideal mixture. If it is so low at any
/// start, the middles between every two components are looked at likewise, and two that attract
/// each other alone; descents from nearly pure components whose distance is above 1.1 of that are
/// repeated without substitutions, which leap over narrow minima. Then it descends from the middles
/// between all minima that were found, the phase and the known one, and from where the distance has
/// a minimum on the straight ways between the phases, from the phase to pure components of such
/// distances, and from the known one to all (DistanceLine); the quick one ends before. Components
/// that ought to be liquid when pure and have no such density are looked for along rays to them from
/// the phase, the known one and every other component; those without any density from mixtures of
/// these with the phase, too. Where densities end on a ray and the distance falls towards that edge it
/// is minimised within the compositions that have one; a phase for which it stays nearly zero there
/// is not told stable (`unseen`). None of this proves that
/// none is missed: docs/phases_measured.md, how often. At most 120 iterations per
/// start.
class CORVANE_API Stability {
  public:
    explicit Stability(FluidModel const& fluid, StabilityTest kind = StabilityTest::complete);
    ~Stability();
    /// For another fluid of as many components, by whose assignment this one went: as constructed.
    void forget();

    /// The kind of the tests that follow.
    StabilityTest kind;
    /// The phases under test are critical. The distance is of fourth order about them, so that a
    /// step of Newton's method covers a third of the way there: descents of three components and
    /// more end where three times the step ends at the phase.
    bool critical = false;

    /// phase: the phase to test, evaluated at (p, T) with phase_H.
    /// known: a phase in equilibrium with it, to which trials may converge; or null.
    /// first: end at the first negative value, which proves instability.
    /// whole: a phase of given composition, whose potentials have no residuals.
    StabilityResult test(PhaseState const& phase, double p, PhaseState const* known, bool first,
                         bool whole = false);

    /// Three and more components: the trial below the tangent plane to which the lowest of the
    /// nearly pure and half pure compositions leads. No test: `stable` where none of them is below.
    StabilityResult lowest_start(PhaseState const& phase, double p);

    /// Three and more components: the trials at which the starts of the test end, for any tangent
    /// plane. plane: T, p and potentials m; x the composition that starts are mixed with. from:
    /// further starts, of mole fractions above 0, for Newton's method alone.
    std::vector<TrialPhase> minima(PhaseState const& plane, double p,
                                   std::vector<std::vector<double>> const& from);

    /// Is the phase (with phase_H) a minimum of the tangent-plane distance in its surroundings?
    bool locally_stable(PhaseState const& phase);

  private:
    friend class detail::StabilitySearch;  // stability_search.h
    enum class End { stationary, trivial, negative, failed };
    /// Mole fractions of component 0 of a binary.
    struct Bracket {
        Root root;
        double lo, at, hi;
    };
    End descend(PhaseState const& phase, double p, PhaseState const* known, double const* lnW,
                int substitutions, bool first, double& tpd, int& iterations);
    End descend(PhaseState const& phase, double p, PhaseState const* known, Bracket const& bracket,
                bool first, double& tpd, int& iterations);
    std::optional<End> met(PhaseState const& phase, PhaseState const* known, bool first,
                           double worst, bool curved, double& tpd);
    /// Fills starts_.
    void many_starts(PhaseState const& phase, double p);
    bool leads_to(PhaseState const& phase, double times = 1.0);
    bool in_bowl(PhaseState const& phase) const;
    bool in_valley(PhaseState const& phase) const;
    bool in_bowl(PhaseState const& phase, PhaseState const* known) const;
    bool is_steep(PhaseState const& phase);
    void newton();
    bool traces();
    void along(double part);
    bool hidden_root(PhaseState const& phase, double p, double& tpd);
    StabilityResult complete(PhaseState const& phase, double p, PhaseState const* known,
                             bool first, bool whole);
    class Flat;  // stability_flat.cpp
    /// A whole that passes, next to a critical point.
    void flat(PhaseState const& whole, double p, double tolerance, StabilityResult& r);
    static double distance(PhaseState const& s, PhaseState const& phase);
    double distance_at(std::vector<double> const& x, PhaseState const& phase, double p);
    static double apart(PhaseState const& s, PhaseState const& phase);
    static bool meets(PhaseState const& s, PhaseState const& phase);
    static bool between(PhaseState const& s, PhaseState const& phase, PhaseState const& known);
    /// Fills brackets_. Returns the number of compositions without a density.
    int scan_binary(PhaseState const& phase, double p);
    void scan_root(PhaseState const& phase, Root root, bool own, double const* d,
                   double const* same);

    FluidModel const& fluid_;
    PhaseState s_;
    bool convex_ = false;   // at the last step of newton()
    bool steep_ = false;    // the phase under test is a distinct minimum, see in_bowl()
    // at the start of the last descent: distance, density, potentials over those of the phase
    double start_ = 0.0, start_rho_ = 0.0;
    std::vector<double> over_;
    std::vector<double> W_, g_, step_, hess_, root_, way_;
    std::vector<double> starts_;  // n values ln W of each
    std::vector<PhaseState> bowls_;  // of minima that descents have found
    std::vector<Bracket> brackets_;
    std::unique_ptr<BinaryScan> scan_;
};

/// Is the mixture of composition z stable at (p [MPa], T [K]) in its phase of lower Gibbs energy?
/// @throws ThException 9 no density root; as FluidModel
CORVANE_API StabilityResult stability(ModelN const& model, double p, double T,
                                      Vector<double> const& z);

}  // namespace corvane
