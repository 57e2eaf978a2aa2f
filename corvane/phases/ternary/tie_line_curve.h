// A curve of tie lines of a ternary at constant T and p. Internal to the library.
#pragma once

#include <corvane/phases/coexistence/pair.h>
#include <corvane/phases/continuation/continuation.h>
#include <corvane/phases/flash/flash_parts.h>
#include <corvane/phases/ternary/ternary_diagram.h>

#include <optional>
#include <vector>

namespace corvane::inline detail {

/// f(), or false where the model refuses a state.
template <class F>
bool tolerated(F f) {
    try {
        return f();
    } catch (ThException const&) {
    } catch (MthException const&) {
    } catch (EquilibriumFailure const&) {
    }
    return false;
}

/// A tie line with the direction in which the curve goes on. Variables: ln rho_i of both phases,
/// ln T (7 values).
struct TieNode {
    std::vector<double> u, t;
    TernaryTieLine tie;
};

/// Mole fractions of component i in phase k of the variables.
double fraction_of(std::vector<double> const& u, int k, int i);
/// The variables of two phases.
std::vector<double> tie_variables(PhaseRecord const& a, PhaseRecord const& b, double T);
/// Mole fractions half-way between both phases.
std::vector<double> tie_middle(std::vector<double> const& u);
/// Product of two directions at u in the measure of the arc length.
double tie_product(std::vector<double> const& u, std::vector<double> const& a,
                   std::vector<double> const& b);
/// Three values.
Vector<double> three_of(double const* x);

/// Three phases of a triangle with their variables (10 values).
struct Triangle {
    std::vector<double> u;
    TernaryTriangle record;
};

/// The split of a whole at T and p, x over all three components.
using Split = std::vector<PhaseRecord>;

/// Traces tie lines from a start on; one object serves a whole diagram.
class TieLineCurve {
  public:
    TieLineCurve(ModelN const& model, FluidModel const& fluid, double T, double p,
                 TernaryOptions const& options);

    /// Prepares a trace from a split of a binary, `absent` being the component that is not there:
    /// the first tie line is that, the second has a trace of it.
    bool begin_edge(TernaryTieLine const& split, int absent);
    /// From a tie line inside. side: from its middle the curve goes to the side of the line on which
    /// that composition is not; or null: forwards, or backwards.
    bool begin_at(Split const& split, Vector<double> const* side, bool forwards);
    /// Up to an end. `before` counts the tie lines of other regions.
    TernaryEnd run(int before);

    // For continuation().
    Trial attempt(double& length, CurveEnd& end);
    double growth() const { return pair_.iterations <= 4 ? 1.6 : 1.0; }
    int count() const { return static_cast<int>(points.size()); }
    CurveEnd lost() const { return CurveEnd::stuck; }
    std::optional<CurveEnd> arrive();

    std::vector<TernaryTieLine> points;  ///< of the last run
    std::optional<Triangle> triangle;    ///< after TernaryEnd::three_phase
    std::optional<CriticalPoint> plait;  ///< after TernaryEnd::plait
    int edge = -1;                       ///< after TernaryEnd::edge: the component that is absent

    /// Newton's method for three phases at T and p from start values, certified.
    bool solve_triangle(std::vector<double> const& start, Triangle& found);
    long evaluations = 0;  ///< of helpers with a model of their own

  private:
    enum class Verdict { certified, unstable, no };
    bool solve(std::vector<double> const& u, std::vector<double> const& along, TieNode& next);
    bool tangent(TieNode& node, std::vector<double> const* along);
    Verdict certify(TieNode& node);
    TernaryEnd third_phase(TieNode const& before, TieNode& now, double length);
    bool side_of(Triangle const& found, TieNode const& before, double length);
    bool at_edge(TieNode const& node);
    bool at_plait(TieNode const& node);
    bool returned(TieNode const& before, TieNode const& now) const;

    ModelN const& model_;
    FluidModel const& fluid_;
    const double T_, p_;
    TernaryOptions const& o_;
    PairSolver pair_;
    TieNode now_, next_;
    Verdict verdict_ = Verdict::no;  // of next_
    double length_ = 0.0;            // of the step to it
    double tried_ = 0.0;             // distance of the phases at the last search for a plait point
    std::vector<double> first_;  // variables of a start inside
    double trial_rho_ = 0.0;     // of the third phase of the last verdict; 0: none
    std::vector<double> trial_;
};

}  // namespace corvane::inline detail
