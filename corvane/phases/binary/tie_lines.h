// One curve of tie lines of a binary at constant T or p. Internal to the library.
#pragma once

#include <corvane/phases/binary/diagram.h>
#include <corvane/phases/binary/path.h>
#include <corvane/phases/binary/pure_point.h>
#include <corvane/phases/binary/three_phase_point.h>
#include <corvane/phases/coexistence/pair.h>
#include <corvane/phases/stability/stability.h>

#include <optional>

namespace corvane::inline detail {

/// The phases 0 and 1 of the solver as a tie line.
TieLine tie_line(CoexistenceSolver const& solver);

/// Traces tie lines from a start on; one object per curve.
class TieLineTracer {
  public:
    /// cut: end the curve where a third phase appears.
    TieLineTracer(FluidModel const& fluid, Fixed constant, DiagramOptions const& options,
                  bool cut);

    /// From the saturation point of a pure component; where that lies beyond p_max or T_min, from
    /// the state on the curve at which it comes within them. False if none is found.
    bool begin_pure(int component);
    /// After begin_pure: does the saturation point lie beyond the bound?
    bool outside() const { return outside_; }
    TieLine const& first() const { return d_.points.front(); }
    /// From a solution u of the two-phase equations (five values), the first point, with p (or T)
    /// rising or falling from there on.
    bool begin_at(std::vector<double> const& u, bool rising, DiagramEnd why);

    /// Up to an end. `before` counts the points of other curves for the progress callback.
    Diagram run(int before = 0);

    /// After DiagramEnd::three_phase.
    ThreePhasePoint const& three_phase() const { return *three_; }
    /// After DiagramEnd::pure.
    int pure_end() const { return pure_; }
    /// Did p (or T) rise at the end?
    bool rising() const { return rising_; }

    // For continuation().
    Trial attempt(double& length, CurveEnd& end);
    double growth() const { return path_.growth(); }
    int count() const { return static_cast<int>(d_.points.size()); }
    CurveEnd lost();
    std::optional<CurveEnd> arrive();

    std::optional<PhasePair> kind;  ///< where it is known; otherwise run() sets it

  private:
    bool test(PairSolver const& pair, bool first);
    void push(PairSolver& pair, bool stable);
    void azeotrope(std::vector<double> const& from, std::vector<double> const& to);
    std::optional<DiagramEnd> bound();
    bool cut();
    bool leave_pure(int component);
    bool enter();
    bool within(double ln_p, double ln_T) const;
    DiagramEnd critical();
    bool at_pure();
    DiagramEnd end_at_three_phases();
    bool solve_three();
    Diagram finish(DiagramEnd why);

    FluidModel const& fluid_;
    const Fixed constant_;
    const DiagramOptions o_;
    const bool cut_;
    PairSolver pair_, azeotrope_;
    CoexistenceSolver solver3_;
    Path path_;
    Stability stability_;
    StabilityResult result_;
    double T_min_, T_max_;
    std::optional<ThreePhasePoint> three_;
    std::vector<double> end_;  // the pair that the curve has at three_
    int pure_ = -1;
    bool rising_ = false, stable_ = true, outside_ = false;
    long evaluations_;
    Diagram d_;
};

}  // namespace corvane::inline detail
