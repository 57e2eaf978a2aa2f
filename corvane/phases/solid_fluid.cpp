#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/solid_fluid.h>
#include <corvane/phases/solid_fluid_solver.h>
#include <corvane/phases/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
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
constexpr double kLogit = 30.0, kLogitEnd = 16.0;  // of the search: x from 1e-13 on

Vector<double> pure_composition(int component) {
    Vector<double> z(2);
    z[component] = 1.0;
    z[1 - component] = 0.0;
    return z;
}
Vector<double> middle() {
    Vector<double> z(2);
    z.set(0.5);
    return z;
}

class SolidFluid {
  public:
    SolidFluid(ModelN const& model, int solid, bool at_T, double value, SolidFluidOptions const& o)
        : model_(model),
          fluid_(checked(model, solid), middle()),
          pure_(model, pure_composition(solid)),
          o_(o),
          s_(solid),
          at_T_(at_T),
          value_(value),
          solver_(fluid_, at_T, value),
          joint_(fluid_, at_T, value),
          stability_(fluid_) {
        Solid const& data = pure_.pure(0).solid;
        if (data.sg.size() < 1) throw ThException(th_no_solid);
        if (!(value > 0.0) || !std::isfinite(value) || (at_T && value > data.Tmax()) ||
            !(o.step > 0.0) || !(o.x_min > 0.0) || !(o.p_max > 0.0) || o.points < 2)
            throw ThException(th_out_of_range);
        solver_.solids = {s_};
        hottest_ = data.Tmax() * (1.0 - 1e-12);  // its logarithm rounds
        coldest_ = 0.3 * hottest_;
        auto const& last = data.sg[data.sg.size() - 1].x;
        if (last.size() > 0) coldest_ = std::min(1.0 / last[last.size() - 1], 0.99 * hottest_);
        at_pure_.resize(1);
    }

    SolidFluidPoint one(double T) {
        if (!(T > 0.0) || T > hottest_) throw ThException(th_out_of_range);
        const std::vector<Node> found = crossings(T);
        for (Node const& q : found)
            if (q.point.stable) return q.point;
        char text[80];
        if (!found.empty())
            std::snprintf(text, sizeof text, "the fluid of x = %.6g is not stable",
                          found.front().point.x[s_]);
        fail(T, found.empty() ? "no fluid has the potential of the solid: above melting, or "
                                "below sublimation?"
                              : text);
    }

    std::vector<SolidFluidLine> lines() {
        for (PurePoint const& q : pure_points()) {
            if (done_ || reached(q)) continue;
            begin_at_pure(q);
        }
        if (lines_.empty() && !at_T_)
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
            fail(at_T_ ? value_ : hottest_,
                 "no melting or sublimation point within the solid's data, and no stable fluid "
                 "at their end");
        return std::move(lines_);
    }

  private:
    struct Node {
        std::vector<double> u, t;
        SolidFluidPoint point;
        bool freezing = false;  // the other component
    };
    struct PurePoint {
        double variable = 0.0, rho = 0.0;
        SolidFluidPoint point;
    };

    static ModelN const& checked(ModelN const& model, int solid) {
        if (model.mdl1.size() != 2) throw ThException(th_no_option);
        if (solid != 0 && solid != 1) throw ThException(th_out_of_range);
        return model;
    }
    [[noreturn]] void fail(double T, std::string const& advice) const {
        char state[80];
        if (at_T_)
            std::snprintf(state, sizeof state, "T = %g K, solid component %d", value_, s_);
        else
            std::snprintf(state, sizeof state, "p = %g MPa, T = %g K, solid component %d", value_,
                          T, s_);
        throw EquilibriumFailure(EquilibriumFailure::Kind::no_solution, state, "solid_fluid",
                                 solver_.iterations, std::nan(""), advice);
    }
    double p(double variable) const { return at_T_ ? variable : value_; }
    double T(double variable) const { return at_T_ ? value_ : variable; }

    /// Potential of the pure fluid less that of the solid. False where one of them fails.
    bool gap(double variable, double& value) {
        SolidState solid;
        if (!solid.evaluate(pure_.pure(0), p(variable), T(variable), false) ||
            !pure_.evaluate_at(at_pure_, p(variable), T(variable), {1.0}, Root::stable, phase_H))
            return false;
        solid_ = solid;
        value = at_pure_.m[0] - solid.g;
        return true;
    }
    /// Where the pure component melts or sublimes: all changes of sign of the gap.
    std::vector<PurePoint> pure_points() {
        std::vector<PurePoint> found;
        double low = coldest_, high = hottest_, factor = 1.02;
        if (at_T_) {
            double psub = 0.0, v = 0.0, kappa = 0.0;
            if (pure_.pure(0).solid.sge(value_, -1, psub, v, kappa) < 0) return found;
            low = 0.5 * psub;
            high = o_.p_max;
            factor = 1.3;
        }
        double last = 0.0, at = 0.0;
        for (double w = low;; w = std::min(w * factor, high)) {
            double here = 0.0;
            const bool known = gap(w, here);
            if (known && at > 0.0 && last * here < 0.0) {
                PurePoint q;
                if (pure_point(at, last, w, here, q)) found.push_back(q);
            }
            at = known ? w : 0.0;
            last = here;
            if (!(w < high)) break;
        }
        if (!at_T_) std::reverse(found.begin(), found.end());  // the hottest first
        return found;
    }
    /// Illinois method in the logarithm.
    bool pure_point(double a, double fa, double b, double fb, PurePoint& q) {
        double f = fb;
        for (int it = 0; it < 60 && std::fabs(f) > 1e-12; ++it) {
            const double w = a * std::exp(std::log(b / a) * fa / (fa - fb));
            if (!gap(w, f)) return false;
            if (f * fb < 0.0) {
                a = b;
                fa = fb;
            } else {
                fa *= 0.5;
            }
            b = w;
            fb = f;
            if (std::fabs(b / a - 1.0) < 1e-15) break;
        }
        at_pure_.p = p(b);
        q.variable = b;
        q.rho = at_pure_.rho;
        q.point.T = T(b);
        q.point.p = p(b);
        q.point.x = pure_composition(s_);
        q.point.rho = at_pure_.rho;
        q.point.rho_solid = solid_.rho;
        q.point.form = solid_.form;
        certify(pure_, q.point.p, {&at_pure_}, q.point.certificate);
        q.point.certificate.dmu = std::fabs(f);
        q.point.certificate.phases.push_back({solid_.rho, q.point.x});
        q.point.certificate.flag(o_.validity, q.point.T, q.point.p, q.point.x);
        return q.point.certificate.holds();
    }
    bool reached(PurePoint const& q) const {
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

    /// The solution of `solver` as a point, with its certificate; second: a fluid that is known to
    /// coexist.
    void certify_point(SolidFluidSolver const& solver, PhaseState const* second, Node& q) {
        PhaseState const& a = solver.a;
        SolidFluidPoint& r = q.point;
        r.T = solver.T;
        r.p = solver.p;
        r.x = fluid_.expand(a.x);
        r.rho = a.rho;
        r.rho_solid = solver.solid[0].rho;
        r.form = solver.solid[0].form;
        Certificate& c = r.certificate;
        std::vector<PhaseState const*> fluids{&a};
        if (second) fluids.push_back(second);
        certify(fluid_, r.p, fluids, c);
        c.near_trivial = c.near_trivial && second;
        for (std::size_t k = 0; k < solver.solids.size(); ++k) {
            c.dmu = std::max(c.dmu, std::fabs(a.m[solver.solids[k]] - solver.solid[k].g));
            c.phases.push_back({solver.solid[k].rho, pure_composition(solver.solids[k])});
        }
        const StabilityResult result = stability_.test(a, r.p, second, true);
        c.tpd = result.stable ? std::min(0.0, result.tpd) : result.tpd;
        q.freezing = false;
        SolidState other;
        if (solver.solids.size() < 2 && other.evaluate(fluid_.pure(1 - s_), r.p, r.T, false)) {
            const double excess = other.g - a.m[1 - s_];
            q.freezing = excess < -Certificate::tpd_tolerance;
            if (q.freezing) c.tpd = std::min(c.tpd, excess);
        }
        r.stable = result.stable && !q.freezing;
        c.evaluations = fluid_.evaluations;
        c.flag(o_.validity, r.T, r.p, r.x);
    }

    /// All fluids at T (and the pressure of the isobar) that have the potential of the solid.
    std::vector<Node> crossings(double temperature) {
        std::vector<Node> found;
        SolidState solid;
        if (!solid.evaluate(fluid_.pure(s_), value_, temperature, false)) return found;
        struct {
            bool known = false;
            double h = 0.0, z = 0.0, rho = 0.0;
        } last[2];
        for (double z = -kLogit; z <= kLogitEnd; z += 1.0) {
            std::vector<double> x(2);
            x[s_] = 1.0 / (1.0 + std::exp(-z));
            x[1 - s_] = 1.0 / (1.0 + std::exp(z));
            double rho[2];
            const int roots = fluid_.densities(value_, temperature, x, rho);
            for (int k = 0; k < 2; ++k) {  // the dense root, the dilute one
                const int root = roots == 2 ? k : 0;
                auto& before = last[k];
                PhaseState& state = solver_.a;
                if (roots < 1) {
                    before.known = false;
                    continue;
                }
                for (int i = 0; i < 2; ++i) state.rho_i[i] = x[i] * rho[root];
                if (!fluid_.evaluate(state, temperature, 0)) continue;
                const double h = state.m[s_] - solid.g;
                if (before.known && before.h * h <= 0.0)
                    cross(before.h, h, z, x, rho[root], temperature, found);
                before = {true, h, z, rho[root]};
            }
        }
        return found;
    }
    void cross(double before, double h, double z, std::vector<double> const& x, double rho,
               double temperature, std::vector<Node>& found) {
        std::vector<double> start(x);
        const double at = z - h / (h - before);
        start[s_] = 1.0 / (1.0 + std::exp(-at));
        start[1 - s_] = 1.0 / (1.0 + std::exp(at));
        solver_.start(start, rho, temperature);
        solver_.row = {0.0, 0.0, 1.0};
        solver_.value = std::log(temperature);
        Node q;
        if (!solver_.solve(kSearchNewton) || !solver_.tangent(q.t)) return;
        q.u = solver_.u;
        for (Node const& other : found)
            if (std::fabs(other.u[0] - q.u[0]) + std::fabs(other.u[1] - q.u[1]) < 1e-6) return;
        certify_point(solver_, nullptr, q);
        if (q.point.certificate.dmu <= Certificate::tolerance &&
            q.point.certificate.dp <= Certificate::tolerance)
            found.push_back(q);
    }

    /// The first point has so little of the other component that this neither freezes nor parts.
    void begin_at_pure(PurePoint const& start) {
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
            !other.evaluate(fluid_.pure(1 - s_), start.point.p, start.point.T, false))
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
            Node last = trace(line, first);
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
            if (!on || done_ || !other_side(last, first)) return;
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
            solver_.value = solver_.u[2] + sign * kFirst * (at_T_ ? kStepP : kStepT);
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
                         std::fabs(du[2]) / (at_T_ ? kStepP : kStepT)}) /
               o_.step;
    }

    /// Extends the line from `first` on. Returns the last node.
    Node trace(SolidFluidLine& line, Node first) {
        Node last = std::move(first);
        if (!at_T_ && last.u[2] < std::log(coldest_)) {  // a second fluid below the range
            line.end = End::solid_range;
            return last;
        }
        line.points.push_back(last.point);
        double step = 0.3;
        const auto finish = [&](End why) {
            line.end = why;
            return last;
        };
        while (true) {
            ++count_;
            if (count_ >= o_.points || (o_.progress && !o_.progress(count_))) {
                done_ = true;
                return finish(count_ >= o_.points ? End::full : End::interrupted);
            }
            Node next;
            double turn = 0.0;
            End event = End::stuck;
            for (;; step *= 0.5) {
                if (step < kShortest) {
                    const double t = std::exp(last.u[2]), other = fluid_.pure(1 - s_).solid.Tmax();
                    return finish(at_T_                               ? End::stuck
                                  : t > (1 - 1e-4) * hottest_         ? End::solid_range
                                  : std::fabs(t / other - 1.0) < 1e-4 ? End::other_range
                                                                      : End::stuck);
                }
                solver_.row = last.t;
                const double size = step / measure(last.t, state_of(last));
                solver_.u = last.u;
                for (int i = 0; i < 3; ++i) solver_.u[i] += size * last.t[i];
                solver_.value = 0.0;
                for (int i = 0; i < 3; ++i) solver_.value += last.t[i] * solver_.u[i];
                if (!solver_.solve(kNewton) || !(solver_.a.S > 0.0) || !solver_.tangent(next.t))
                    continue;
                next.u = solver_.u;
                std::vector<double> change(3);
                const double before = measure(last.t, solver_.a),
                             after = measure(next.t, solver_.a);
                for (int i = 0; i < 3; ++i) change[i] = next.t[i] / after - last.t[i] / before;
                turn = measure(change, solver_.a);
                if (turn > kTurn && step > 1e-4) continue;
                certify_point(solver_, nullptr, next);
                if (!next.point.stable && !invariant(last, next, line, event)) continue;
                break;
            }
            if (event != End::stuck) return finish(event);
            if (limit(next, event)) {
                line.points.push_back(next.point);
                return finish(event);
            }
            last = next;
            line.points.push_back(last.point);
            if (last.point.x[1 - s_] < 0.3 * kTrace && last.t[1 - s_] < 0.0 && pure_again(line))
                return finish(End::pure);
            step = std::min(1.0, turn < 0.2 * kTurn ? 1.6 * step : step);
        }
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
        if (at_T_ && variable > o_.p_max) {
            to = o_.p_max;
            event = End::pressure;
        } else if (!at_T_ && (variable < coldest_ || variable > hottest_)) {
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
        for (PurePoint const& q : pure_points())
            if (std::fabs(q.point.T / at.T - 1) < 1e-3 && std::fabs(q.point.p / at.p - 1) < 1e-2 &&
                std::fabs(q.rho / at.rho - 1) < 0.01) {
                line.points.push_back(q.point);
                return true;
            }
        return false;
    }

    ModelN const& model_;
    const FluidModel fluid_, pure_;
    const SolidFluidOptions o_;
    const int s_;
    const bool at_T_;
    const double value_;
    SolidFluidSolver solver_, joint_;
    Stability stability_;
    PhaseState at_pure_, scratch_;
    SolidState solid_;
    double hottest_ = 0.0, coldest_ = 0.0;
    bool done_ = false;
    int count_ = 0;
    std::vector<SolidFluidLine> lines_;
};
}  // namespace

SolidFluidPoint solubility(ModelN const& binary, int solid, double p, double T,
                           SolidFluidOptions const& options) {
    return SolidFluid(binary, solid, false, p, options).one(T);
}
std::vector<SolidFluidLine> solid_fluid_isobar(ModelN const& binary, int solid, double p,
                                               SolidFluidOptions const& options) {
    return SolidFluid(binary, solid, false, p, options).lines();
}
std::vector<SolidFluidLine> solid_fluid_isotherm(ModelN const& binary, int solid, double T,
                                                 SolidFluidOptions const& options) {
    return SolidFluid(binary, solid, true, T, options).lines();
}

SolidFluidPoint eutectic(ModelN const& binary, double p, SolidFluidOptions const& options) {
    for (int s : {0, 1})
        for (SolidFluidLine const& line : solid_fluid_isobar(binary, s, p, options)) {
            if (line.end != End::eutectic) continue;
            SolidFluidPoint q = line.points.back();
            if (s == 1) q.rho_solid = line.end_phase.rho;
            return q;
        }
    char state[40];
    std::snprintf(state, sizeof state, "p = %g MPa", p);
    throw EquilibriumFailure(EquilibriumFailure::Kind::no_solution, state, "eutectic", 0,
                             std::nan(""), "neither solid's line ends in a eutectic");
}

char const* in_words(SolidFluidEnd end) {
    switch (end) {
        case End::pure:
            return "the pure component's melting or sublimation point";
        case End::eutectic:
            return "a eutectic, where the other component freezes, too";
        case End::split:
            return "a split, where a second fluid coexists";
        case End::solid_range:
            return "the end of the solid's data";
        case End::other_range:
            return "the temperature where the data of the other solid begin, which is stable there";
        case End::dilute:
            return "the least mole fraction asked for";
        case End::pressure:
            return "the highest pressure asked for";
        case End::full:
            return "the largest number of points; it goes on";
        case End::interrupted:
            return "the caller's request";
        case End::stuck:
            break;
    }
    return "an open end: no further point was found";
}

}  // namespace corvane
