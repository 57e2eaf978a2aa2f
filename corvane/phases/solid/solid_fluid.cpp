#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/continuation/continuation.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/solid/solid_fluid.h>
#include <corvane/phases/solid/solid_fluid_states.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace corvane {
namespace {
using End = SolidFluidEnd;

constexpr double kTrace = 1e-4;  // mole fraction of the first point beside a pure component
constexpr double kLeastTrace = 1e-13;
constexpr double kShortest = 1e-6;  // step at which a line counts as lost
constexpr double kTurn = 0.5;       // of the direction per step, in units of the longest step
constexpr double kApart = 1e-4;     // ln of the ratio of densities of different fluids
constexpr double kFirst = 1e-3;     // first step beside a second fluid
// Longest steps: in either mole fraction, ln x of the solid's component and of the other one, ln
// rho, ln T or ln p.
constexpr double kStepX = 0.05, kStepLnX = 0.5, kStepOther = 1.0, kStepRho = 0.15, kStepT = 0.02,
                 kStepP = 0.3;
constexpr int kNewton = 12, kSearchNewton = 30, kLines = 4, kSubstitutions = 6;

using Node = SolidFluidNode;

class Tracer : SolidFluidStates {
  public:
    Tracer(ModelN const& model, int solid, Fixed held, SolidFluidOptions const& o)
        : SolidFluidStates(model, solid, held, o), joint_(fluid_, o.anchored, held) {}

    SolidFluidPoint one(double T) {
        if (!(T > 0.0) || T > hottest_ * (1.0 + 1e-9)) throw ThException(th_out_of_range);
        const std::vector<Node> found = crossings(std::min(T, hottest_));
        for (Node const& q : found)
            if (q.point.stable) return q.point;
        if (missed())
            fail(T,
                 "a fluid with the potential of the solid was not solved for, or the model has no "
                 "density for some compositions",
                 EquilibriumFailure::Kind::gave_up);
        if (found.empty())
            fail(T, "no fluid has the potential of the solid: above melting, or below sublimation?");
        fail(T, "the fluid of x = " + shortest(found.front().point.x[s_]) + " is not stable");
    }

    std::vector<SolidFluidLine> lines() {
        for (PureSolidPoint const& q : pure_points()) {
            if (done_ || reached(q)) continue;
            begin_at_pure(q);
        }
        if (lines_.empty() && !held_.at_T)
            for (Node const& q : crossings(hottest_))
                if (q.point.stable && !done_ && !ended_at(q.point)) {
                    SolidFluidLine line;
                    line.begin = End::solid_range;
                    Node first = q;
                    if (first.t.back() > 0.0)
                        for (double& v : first.t) v = -v;
                    follow(std::move(line), first);
                }
        if (lines_.empty())
            fail(held_.at_T ? held_.value : hottest_,
                 "no melting or sublimation point within the solid's data, and no stable fluid "
                 "at their end");
        return std::move(lines_);
    }

    // For continuation().
    int count() const { return count_; }
    double growth() const { return turn_ < 0.2 * kTurn ? 1.6 : 1.0; }
    End lost() const {
        const double t = std::exp(last_.u[2]), other = hottest(1 - s_);
        return held_.at_T                          ? End::stuck
               : t > (1 - 1e-4) * hottest_         ? End::solid_range
               : std::fabs(t / other - 1.0) < 1e-4 ? End::other_range
                                                   : End::stuck;
    }
    Trial attempt(double& length, End& end) {
        solver_.row = last_.t;
        const double size = length / measure(last_.t, state_of(last_));
        solver_.u = last_.u;
        for (int i = 0; i < 3; ++i) solver_.u[i] += size * last_.t[i];
        solver_.value = 0.0;
        for (int i = 0; i < 3; ++i) solver_.value += last_.t[i] * solver_.u[i];
        next_ = {};
        if (!solver_.solve(kNewton) || !(solver_.a.S > 0.0) || !solver_.tangent(next_.t))
            return Trial::failed;
        next_.u = solver_.u;
        std::vector<double> change(3);
        const double before = measure(last_.t, solver_.a), after = measure(next_.t, solver_.a);
        for (int i = 0; i < 3; ++i) change[i] = next_.t[i] / after - last_.t[i] / before;
        turn_ = measure(change, solver_.a);
        if (turn_ > kTurn && length > 1e-4) return Trial::failed;
        certify_point(solver_, nullptr, next_);
        if (next_.point.stable) return Trial::taken;
        return invariant(last_, next_, *line_, end) ? Trial::ended : Trial::failed;
    }
    std::optional<End> arrive() {
        End event = End::stuck;
        if (limit(next_, event)) {
            line_->points.push_back(next_.point);
            return event;
        }
        last_ = next_;
        line_->points.push_back(last_.point);
        if (last_.point.x[1 - s_] < 0.3 * kTrace && last_.t[1 - s_] < 0.0 && pure_again(*line_))
            return End::pure;
        ++count_;
        return {};
    }

  private:
    bool reached(PureSolidPoint const& q) const {
        for (SolidFluidLine const& l : lines_)
            if (l.points.back().x[1 - s_] == 0.0 &&
                std::fabs(l.points.back().T / q.point.T - 1) < 1e-6 &&
                std::fabs(l.points.back().p / q.point.p - 1) < 1e-6)
                return true;
        return false;
    }

    bool ended_at(SolidFluidPoint const& q) const {
        for (SolidFluidLine const& l : lines_)
            if (std::fabs(l.points.back().T / q.T - 1) < 1e-9 &&
                std::fabs(l.points.back().rho / q.rho - 1) < 1e-6)
                return true;
        return false;
    }

    /// The first point has so little of the other component that this neither freezes nor parts.
    void begin_at_pure(PureSolidPoint const& start) {
        Node first;
        for (double trace = kTrace; trace > kLeastTrace; trace *= 0.01) {
            std::vector<double> x(2);
            x[s_] = 1.0 - trace;
            x[1 - s_] = trace;
            solver_.start(x, start.rho, start.variable);
            solver_.row = {0.0, 0.0, 0.0};
            solver_.row[s_] = 1.0;
            solver_.row[1 - s_] = -1.0;
            solver_.value = std::log(x[s_] / x[1 - s_]);
            if (!solver_.solve(kSearchNewton) || !solver_.tangent(first.t)) return;
            for (double& v : first.t) v = -v;  // towards more of the other component
            first.u = solver_.u;
            certify_point(solver_, nullptr, first);
            if (!first.point.stable) continue;
            SolidFluidLine line;
            line.begin = End::pure;
            line.points.push_back(start.point);
            follow(std::move(line), first);
            return;
        }
        SolidState other;
        if (!first.freezing ||
            !other.evaluate(fluid_.pure(1 - s_), o_.anchored[1 - s_], start.point.p, start.point.T, false))
            return;
        SolidFluidLine line;  // the solid of the other component does not dissolve: one point
        line.solid = s_;
        line.begin = End::pure;
        line.end = End::eutectic;
        line.end_phase = {other.rho, pure_composition(1 - s_)};
        line.points.push_back(start.point);
        lines_.push_back(std::move(line));
    }

    /// Traces the line and those that it goes on with at second fluids.
    void follow(SolidFluidLine line, Node first) {
        for (int k = 0; k < kLines; ++k) {
            const long before = fluid_.evaluations;
            line.solid = s_;
            last_ = first;
            line.end = trace(line);
            line.evaluations = fluid_.evaluations - before;
            const bool on = line.end == End::split;
            SolidFluidLine next;
            next.begin = End::split;
            if (on) {
                auto const& c = line.points.back().certificate.phases;
                next.begin_phase = c[0];
                next.points.push_back(line.points.back());
                SolidFluidPoint& q = next.points[0];  // the same state, the other fluid first
                std::swap(q.certificate.phases[0], q.certificate.phases[1]);
                q.x = c[1].x;
                q.rho = c[1].rho;
            }
            lines_.push_back(std::move(line));
            if (!on || done_ || !other_side(last_, first)) return;
            line = std::move(next);
        }
    }
    /// From the second fluid of joint_: the direction in which it is stable, first that of the line
    /// that ended here.
    bool other_side(Node const& last, Node& first) {
        const double variable = std::exp(joint_.u.back());
        const std::vector<double> x = joint_.b.x;
        const double rho = joint_.b.rho;
        const double onwards = last.t.back() < 0.0 ? -1.0 : 1.0;
        for (double sign : {onwards, -onwards}) {
            solver_.start(x, rho, variable);
            solver_.row = {0.0, 0.0, 1.0};
            solver_.value = solver_.u[2] + sign * kFirst * (held_.at_T ? kStepP : kStepT);
            if (!solver_.solve(kNewton) || !solver_.tangent(first.t)) continue;
            first.u = solver_.u;
            certify_point(solver_, nullptr, first);
            if (!first.point.stable) continue;
            for (double& v : first.t) v *= sign;
            return true;
        }
        return false;
    }

    /// Size of a change of u in units of the longest steps.
    double measure(std::vector<double> const& du, PhaseState const& a) const {
        const double rho = a.x[0] * du[0] + a.x[1] * du[1];
        const double ln_s = du[s_] - rho, ln_o = du[1 - s_] - rho;
        return std::max({std::fabs(ln_s) * a.x[s_] / kStepX, std::fabs(ln_s) / kStepLnX,
                         std::fabs(ln_o) / kStepOther, std::fabs(rho) / kStepRho,
                         std::fabs(du[2]) / (held_.at_T ? kStepP : kStepT)}) /
               o_.step;
    }

    /// Extends the line from last_ on.
    End trace(SolidFluidLine& line) {
        if (!held_.at_T && last_.u[2] < std::log(coldest_))
            return End::solid_range;  // a second fluid
        line.points.push_back(last_.point);
        line_ = &line;
        ++count_;
        StepLength step{0.3, 1.0, kShortest, 0.5};
        const End why = continuation(*this, step, o_.points, o_.progress);
        done_ = done_ || why == End::full || why == End::interrupted;
        return why;
    }

    /// The fluid of a node, as far as measure needs it.
    PhaseState const& state_of(Node const& q) {
        scratch_.resize(2);
        for (int i = 0; i < 2; ++i) scratch_.x[i] = q.point.x[i];
        return scratch_;
    }

    /// Is a limit passed? Then next is moved there.
    bool limit(Node& next, End& event) {
        const double variable = std::exp(next.u[2]);
        if (next.point.x[s_] < o_.x_min) {
            event = End::dilute;
            return true;
        }
        double to = 0.0;
        if (held_.at_T && variable > o_.p_max) {
            to = o_.p_max;
            event = End::pressure;
        } else if (!held_.at_T && (variable < coldest_ || variable > hottest_)) {
            to = variable < coldest_ ? coldest_ : hottest_;
            event = End::solid_range;
        } else {
            return false;
        }
        solver_.row = {0.0, 0.0, 1.0};
        solver_.value = std::log(to);
        if (solver_.solve(kNewton)) certify_point(solver_, nullptr, next);
        return true;
    }

    /// The first negative trial may be far from its minimum: successive substitution.
    TrialPhase settled(TrialPhase trial) {
        PhaseState const& a = solver_.a;
        PhaseState& s = solver_.b;
        for (int it = 0; it < kSubstitutions && !trial.w.empty(); ++it) {
            if (!fluid_.evaluate_at(s, solver_.p, solver_.T, trial.w, Root::stable, 0)) break;
            double sum = 0.0;
            for (int i = 0; i < 2; ++i) sum += trial.w[i] *= std::exp(a.m[i] - s.m[i]);
            if (!(sum > 0.0) || !std::isfinite(sum)) return {};
            for (double& w : trial.w) w /= sum;
            trial.rho = s.rho;
        }
        return trial;
    }

    /// Between a stable and an unstable node: the eutectic, or the point with a second fluid.
    bool invariant(Node const& last, Node const& next, SolidFluidLine& line, End& event) {
        const double slack = 0.2 * std::fabs(next.u[2] - last.u[2]) + 1e-9;
        for (const bool split : {false, true}) {
            TrialPhase trial;
            if (split) trial = settled(stability_.test(solver_.a, solver_.p, nullptr, true).trial);
            if (split ? trial.w.empty() : !next.freezing) continue;
            joint_.solids = {s_};
            joint_.row.clear();
            joint_.two = false;
            joint_.u = next.u;
            if (split)
                joint_.start_second(trial.w, trial.rho);
            else
                joint_.solids.push_back(1 - s_);
            if (!joint_.solve(kSearchNewton)) continue;
            const double v = joint_.u.back();
            if (v < std::min(last.u[2], next.u[2]) - slack ||
                v > std::max(last.u[2], next.u[2]) + slack)
                continue;
            if (split &&
                std::fabs(joint_.u[2] - joint_.u[0]) + std::fabs(joint_.u[3] - joint_.u[1]) <
                    kApart)
                continue;
            Node q;
            certify_point(joint_, split ? &joint_.b : nullptr, q);
            if (!q.point.stable || !q.point.certificate.holds()) continue;
            line.points.push_back(q.point);
            line.end_phase = split ? q.point.certificate.phases[1] : q.point.certificate.phases[2];
            event = split ? End::split : End::eutectic;
            return true;
        }
        return false;
    }

    /// Back at a pure component's point?
    bool pure_again(SolidFluidLine& line) {
        SolidFluidPoint const& at = line.points.back();
        for (PureSolidPoint const& q : pure_points())
            if (std::fabs(q.point.T / at.T - 1) < 1e-3 && std::fabs(q.point.p / at.p - 1) < 1e-2 &&
                std::fabs(q.rho / at.rho - 1) < 0.01) {
                line.points.push_back(q.point);
                return true;
            }
        return false;
    }

    SolidFluidSolver joint_;  // eutectics and points with two fluids
    PhaseState scratch_;
    // Of the line that is being traced.
    SolidFluidLine* line_ = nullptr;
    Node last_, next_;
    double turn_ = 0.0;  // of the direction in the last step
    bool done_ = false;
    int count_ = 0;
    std::vector<SolidFluidLine> lines_;
};
}  // namespace

SolidFluidPoint solubility(ModelN const& binary, int solid, double p, double T,
                           SolidFluidOptions const& options) {
    return Tracer(binary, solid, {false, p}, options).one(T);
}
std::vector<SolidFluidLine> solid_fluid_isobar(ModelN const& binary, int solid, double p,
                                               SolidFluidOptions const& options) {
    return Tracer(binary, solid, {false, p}, options).lines();
}
std::vector<SolidFluidLine> solid_fluid_isotherm(ModelN const& binary, int solid, double T,
                                                 SolidFluidOptions const& options) {
    return Tracer(binary, solid, {true, T}, options).lines();
}

SolidFluidPoint eutectic(ModelN const& binary, double p, SolidFluidOptions const& options) {
    for (int s : {0, 1})
        for (SolidFluidLine const& line : solid_fluid_isobar(binary, s, p, options)) {
            if (line.end != End::eutectic) continue;
            SolidFluidPoint q = line.points.back();
            if (s == 1) q.rho_solid = line.end_phase.rho;
            return q;
        }
    throw EquilibriumFailure(EquilibriumFailure::Kind::no_solution, T_or_p({false, p}), "eutectic",
                             0, std::nan(""), "neither solid's line ends in a eutectic");
}

}  // namespace corvane
