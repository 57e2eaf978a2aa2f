#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/coexistence/pair.h>
#include <corvane/phases/continuation/continuation.h>
#include <corvane/phases/continuation/phase_curve.h>
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/envelope.h>
#include <corvane/phases/saturation/envelope_outline.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace corvane {
namespace {
constexpr double kCross = 0.04;     // a ratio ln(rho_i''/rho_i') below this steps through zero
constexpr double kPolish = 0.02;    // ratio of the two points that enclose the critical one
constexpr double kShortest = 1e-5;  // step at which the curve counts as lost
constexpr double kDistinct = 0.5;   // ratio of phases, rough solutions of which have a direction
constexpr double kReach = 3.0;      // of a cubic, in the length of the last step
constexpr double kSame = 1e-2;      // from the interpolated critical point to the solved one
constexpr int kNewton = 8, kWanted = 3;

/// What the curve is a curve of, made before it.
struct EnvelopePair {
    EnvelopePair(ModelN const& model, Vector<double> const& z) : fluid_(model, z), pair_(fluid_) {
        pair_.z = &fluid_.z();
    }
    const FluidModel fluid_;
    PairSolver pair_;
};

/// The coordinate of component k is its ratio, that of k = n is ln T. ln p counts, too, so that
/// steps stay short where only the pressure changes.
class Tracer : EnvelopePair, PhaseCurve {
  public:
    Tracer(ModelN const& model, Vector<double> const& z, EnvelopeOptions const& o)
        : EnvelopePair(model, z),
          PhaseCurve(pair_, false, {.ln_p = 0.5, .ratio = 1.0, .ln_T = 4.0}, 1.0),
          o_(o),
          n_(fluid_.size()),
          stability_(fluid_) {}

    Envelope run(SaturationPoint const& first) {
        begin(first);
        return follow();
    }
    /// From near a dew point in which component `trace` of the incipient phase is not known yet; no
    /// points if there is none with T as given.
    Envelope run_near(double T, double rho, std::vector<double> const& y, double rho_y, int trace) {
        pair_.start(fluid_.z(), rho, y, rho_y, T);
        if (!pair_.evaluate()) return {};
        for (int k = 0; k < n_; ++k)  // by equal potentials
            if (k == trace || y[k] < 1e-6) pair_.u[n_ + k] += pair_.a.m[k] - pair_.b.m[k];
        pair_.row.clear();
        pair_.p = o_.p_start;
        if (!solve(30) || !is_dew()) return {};
        fix(n_, pair_.u.back());
        if (!solve(kNewton) || !depart()) return {};
        return follow();
    }

    EnvelopeOutline outline(SaturationPoint const& first) {
        outlined_ = true;
        begin(first);
        outline_.whole = follow().end == EnvelopeEnd::closed && crossings_ == 1;
        return outline_;
    }

    // For continuation().
    int count() const { return static_cast<int>(envelope_.points.size()); }
    double growth() const {
        return pair_.iterations <= kWanted ? 1.5 : pair_.iterations > kWanted + 2 ? 0.6 : 1.0;
    }
    CurveEnd lost() const { return CurveEnd::stuck; }
    Trial attempt(double length, CurveEnd&) {
        variable_ = most(now_);
        // In the direction of travel, which now_.t has.
        const double from = at(now_.u, variable_), slope = at(now_.t, variable_);
        double to = from + length / weight(now_.u, variable_) * (slope > 0 ? 1 : -1);
        crossing_ = false;
        if (variable_ < n_ && from * slope < 0 && (from * to <= 0 || std::fabs(to) < kCross)) {
            to = std::fabs(from) > 3 * kCross ? std::copysign(kCross, from)
                                              : -std::copysign(kCross, from);
            crossing_ = from * to < 0;
        }
        pair_.iterations = 0;
        next_ = {};
        return reach(to, next_) && smooth(next_) ? Trial::taken : Trial::failed;
    }
    std::optional<CurveEnd> arrive() {
        const bool high = next_.ln_p > std::log(o_.p_max),
                   cold = !high && next_.u.back() < std::log(o_.T_min);
        if (high || cold) {
            shorten(high);
            crossing_ = crossing_ && at(now_.u, variable_) * at(next_.u, variable_) < 0.0;
        }
        if (outlined_) {
            if (crossing_) cross();
            reach_maxima();
        } else {
            if (crossing_) critical();
            extrema();
        }
        before_ = now_;
        now_ = std::move(next_);
        record(now_);
        if (high) return EnvelopeEnd::pressure;
        if (cold) return EnvelopeEnd::cold;
        const bool bubble = envelope_.points.back().bubble;
        beyond_ = beyond_ || (!envelope_.critical.empty() && bubble && before_.ln_p_t < 0.0 &&
                              now_.ln_p_t > 0.0);
        if (bubble && now_.ln_p < std::log(o_.p_start)) return EnvelopeEnd::closed;
        return {};
    }

    [[noreturn]] void fail(char const* advice) const {
        throw EquilibriumFailure(
            EquilibriumFailure::Kind::gave_up,
            T_or_p({false, o_.p_start}) + ", " + composition_text(fluid_.expand(fluid_.z())),
            "phase_envelope", pair_.iterations, pair_.residual, advice);
    }
    bool pure() const { return n_ == 1; }
    FluidModel const& fluid() const { return fluid_; }

  private:
    /// The phases differ, and the incipient one is the denser by mass.
    bool is_dew() const {
        return apart(pair_.u, 0, 1) > 0.1 && !point().bubble;
    }

    Envelope follow() {
        StepLength step{o_.step, o_.step, kShortest, 0.4};
        envelope_.end = continuation(*this, step, o_.points, o_.progress);
        envelope_.evaluations = fluid_.evaluations;
        return std::move(envelope_);
    }

    /// The step that goes beyond p_max (or T_min) ends there: regula falsi in its variable, every
    /// trial a solution.
    void shorten(bool of_p) {
        const double limit = std::log(of_p ? o_.p_max : o_.T_min);
        const auto off = [&](Node const& q) { return (of_p ? q.ln_p : q.u.back()) - limit; };
        IllinoisBracket r{at(now_.u, variable_), off(now_), at(next_.u, variable_), off(next_)};
        for (int it = 0; it < 40 && std::fabs(off(next_)) > 1e-13; ++it) {
            Node q;
            if (!(r.fa * r.fb < 0.0) || !reach((r.fa * r.b - r.fb * r.a) / (r.fa - r.fb), q))
                return;
            r.take(at(q.u, variable_), off(q));
            next_ = q;
        }
    }

    /// What the solver holds fixed beside the composition: coordinate c.
    void fix(int c, double value) {
        pair_.release();
        specify(c);
        pair_.value = value;
    }
    /// The solution in pair_ as the first point, p rising from there on.
    bool depart() {
        if (!finish(now_, nullptr)) return false;
        if (now_.ln_p_t < 0.0) reverse();
        before_ = now_;
        record(now_);
        return true;
    }
    /// Solves with variable_ at `to`, from the cubic through the last two points or the tangent.
    bool reach(double to, Node& q) {
        fix(variable_, to);
        pair_.rough = outlined_ && apart(now_.u, 0, 1) > kDistinct;
        const double length = (to - at(now_.u, variable_)) / at(now_.t, variable_);
        if (cubic_serves(before_, now_, variable_, length, kReach)) {
            pair_.u = cubic(before_, now_, variable_, length);
            if (solve(kNewton)) return finish(q, &now_.t, true);
        }
        for (std::size_t i = 0; i < pair_.u.size(); ++i)
            pair_.u[i] = now_.u[i] + length * now_.t[i];
        return solve(kNewton, q, &now_.t);
    }
    /// Of the cubic through a and b, the point where coordinate c is `to`.
    std::vector<double> between(Node const& a, Node const& b, int c, double to) const {
        return cubic(a, b, c, (to - at(b.u, c)) / at(b.t, c));
    }
    /// That point, solved.
    bool solve_between(Node const& a, Node const& b, int c, double to, Node& q) {
        fix(c, to);
        pair_.u = between(a, b, c, to);
        return solve(kNewton, q, &now_.t);
    }

    /// Against jumps to another branch: the direction must not turn by more than about 45 degrees.
    bool smooth(Node const& q) const {
        double moved = 0.0;
        for (std::size_t i = 0; i < q.t.size(); ++i)
            moved = std::max(moved, std::fabs(q.u[i] - now_.u[i]));
        return dot(q.t, now_.t) > 0.7 * std::sqrt(dot(q.t, q.t) * dot(now_.t, now_.t)) &&
               moved < 1.0;
    }

    void begin(SaturationPoint const& first) {
        const Vector<double> z = fluid_.expand(fluid_.z());
        std::vector<double> y;
        for (int i = 0; i < z.size(); ++i)
            if (z[i] > 0.0) y.push_back(first.incipient.x[i]);
        pair_.start(fluid_.z(), first.given.rho, y, first.incipient.rho, first.T);
        fix(n_, std::log(first.T));
        if (!pair_.solve(20) || !depart()) fail("give another p_start");
    }

    EnvelopePoint point() const {
        EnvelopePoint q;
        q.T = pair_.a.T;
        q.p = pair_.pressure();
        q.rho = pair_.a.rho;
        q.rho2 = pair_.b.rho;
        q.y = fluid_.expand(pair_.b.x);
        q.bubble = fluid_.mass_density(pair_.b) < fluid_.mass_density(pair_.a);
        return q;
    }
    void load(Node const& q) {
        if (q.u == pair_.u) return;
        pair_.u = q.u;
        for (int i = 0; i < n_; ++i) {
            pair_.a.rho_i[i] = std::exp(q.u[i]);
            pair_.b.rho_i[i] = std::exp(q.u[n_ + i]);
        }
        fluid_.evaluate(pair_.a, std::exp(q.u.back()), phase_all);
        fluid_.evaluate(pair_.b, std::exp(q.u.back()), phase_all);
    }
    void record(Node const& q) {
        load(q);
        envelope_.points.push_back(point());
        for (int k = 0; k < n_; ++k)
            envelope_.dmu = std::max(envelope_.dmu, std::fabs(pair_.a.m[k] - pair_.b.m[k]));
        const double rounding =
                         R * pair_.a.T * std::max(pair_.a.P_rounding(), pair_.b.P_rounding()),
                     p = pair_.pressure();
        envelope_.dp =
            std::max(envelope_.dp, std::max(0.0, std::fabs(pair_.a.p - pair_.b.p) - rounding) / p);
        if (!o_.stability) return;
        EnvelopePoint& last = envelope_.points.back();
        last.unstable = !stability_.test(pair_.a, p, &pair_.b, true).stable;
        envelope_.unstable += last.unstable;
        fix(most(q), at(q.u, most(q)));
        Certificate c;
        if (!pair_.bound(c)) return;
        last.value_error = c.value_error;
        last.x_error = c.x_error;
    }

    /// Between now_ and next_ the ratio passes zero.
    void critical() {
        Node below = now_, above = next_, q;
        const double sign = at(now_.u, variable_) < 0 ? -1.0 : 1.0;
        for (double side : {1.0, -1.0})
            if (solve_between(now_, next_, variable_, side * sign * kPolish, q))
                (side > 0 ? below : above) = q;
        Node c;
        c.u = between(below, above, variable_, 0.0);
        // both phases are the mean of the two
        for (int i = 0; i < n_; ++i) c.u[i] = c.u[n_ + i] = 0.5 * (c.u[i] + c.u[n_ + i]);
        load(c);
        EnvelopePoint found = point();
        found.bubble = false;
        // Interpolated, it has the rounding of both points over the square of their ratio: solved.
        CriticalConditions conditions(fluid_);
        CriticalConditions::Variables y{std::log(found.rho), c.u.back(), 0.0, 0.0};
        if (conditions.solve(y, 2, nullptr, 0.0, kNewton) &&
            std::fabs(conditions.s.T / found.T - 1.0) +
                    std::fabs(conditions.s.rho / found.rho - 1.0) <
                kSame) {
            found.T = conditions.s.T;
            found.p = conditions.s.p;
            found.rho = found.rho2 = conditions.s.rho;
            if (const auto e = conditions.errors(y, 2)) {
                found.value_error = e->value();
                found.x_error = e->x;
            }
        }
        found.y = fluid_.expand(fluid_.z());
        envelope_.critical.push_back(found);
    }

    /// The same for the outline.
    void cross() {
        ++crossings_;
        Node c;
        c.u = between(now_, next_, variable_, 0.0);
        for (int i = 0; i < n_; ++i) c.u[i] = c.u[n_ + i] = 0.5 * (c.u[i] + c.u[n_ + i]);
        load(c);
        outline_.T_critical = pair_.a.T;
        outline_.p_critical = pair_.a.p;
        outline_.rho_critical = pair_.a.rho;
    }
    /// How far T and p may rise between now_ and next_, against what was specified.
    void reach_maxima() {
        const double h = std::fabs(at(next_.u, variable_) - at(now_.u, variable_));
        for (bool of_T : {true, false}) {
            const auto value = [&](Node const& q) { return of_T ? q.u.back() : q.ln_p; };
            const auto steep = [&](Node const& q) {
                return slope(q, of_T) / std::fabs(at(q.t, variable_));
            };
            const double d0 = steep(now_), d1 = steep(next_), f0 = value(now_), f1 = value(next_);
            double top = std::max(f0, f1);
            if (d0 > 0.0 && d1 < 0.0)
                top = std::max(top, f0 + d0 * std::clamp((f1 - f0 - d1 * h) / (d0 - d1), 0.0, h));
            double& most = of_T ? outline_.T_max : outline_.p_max;
            most = std::max(most, std::exp(top));
        }
    }

    static double slope(Node const& q, bool of_T) { return of_T ? q.t.back() : q.ln_p_t; }
    /// Local maxima of T and p between now_ and next_: the slope changes its sign.
    void extrema() {
        std::vector<Node> found;
        for (bool of_T : {true, false}) {
            Node q;
            if (!(slope(now_, of_T) > 0 && slope(next_, of_T) <= 0) || !maximum(of_T, q)) continue;
            load(q);
            if (beyond_)
                (of_T ? envelope_.beyond_T : envelope_.beyond_p).push_back(point());
            else
                (of_T ? envelope_.cricondentherm : envelope_.cricondenbar).push_back(point());
            found.push_back(q);
        }
        // into the curve, in its order
        if (found.size() == 2 && at(found[0].u, most(now_)) != at(found[1].u, most(now_)) &&
            std::fabs(found[0].u.back() - now_.u.back()) >
                std::fabs(found[1].u.back() - now_.u.back()))
            std::swap(found[0], found[1]);
        for (Node const& q : found) record(q);
    }
    /// By the secant method, in the ratio that changes most. False if no trial converges.
    bool maximum(bool of_T, Node& q) {
        int c = 0;
        for (int k = 1; k < n_; ++k)
            if (std::fabs(at(now_.t, k)) > std::fabs(at(now_.t, c))) c = k;
        const auto steep = [&](Node const& node) {
            return slope(node, of_T) / std::fabs(at(node.t, c));
        };
        Node a = now_, b = next_;
        bool any = false;
        for (int it = 0; it < 12; ++it) {
            const double part = std::clamp(steep(a) / (steep(a) - steep(b)), 0.02, 0.98),
                         va = at(a.u, c), vb = at(b.u, c);
            double to = va + part * (vb - va);
            if (std::fabs(to) < 1e-3) to = 1e-3;  // not the critical point itself
            Node trial;
            if (!solve_between(a, b, c, to, trial)) break;
            any = true;
            q = trial;
            (steep(q) > 0 ? a : b) = q;
            if (std::fabs(steep(q)) < 1e-9 || std::fabs(vb - va) < 1e-9) break;
        }
        return any;
    }

    const EnvelopeOptions o_;
    const int n_;
    Stability stability_;
    Node next_;              // the point that the last step led to
    int variable_ = 0;       // which was specified in it
    bool crossing_ = false;  // and passes zero
    bool beyond_ = false;
    Envelope envelope_;
    bool outlined_ = false;  // instead of that:
    EnvelopeOutline outline_;
    int crossings_ = 0;
};
constexpr double kOutline = 12.0;  // times the step
constexpr double kLow = 0.5;       // of the mean critical pressure
constexpr int kOutlinePoints = 300;
}  // namespace

EnvelopeOutline detail::envelope_outline(FluidModel const& fluid) {
    EnvelopeOptions o;
    o.step *= kOutline;
    o.points = kOutlinePoints;
    o.p_start = 0.0;
    for (int k = 0; k < fluid.size(); ++k) o.p_start += kLow * fluid.z()[k] * fluid.pure(k).pcrit();
    Vector<double> const z = fluid.expand(fluid.z());
    SaturationSolver dew(fluid.model(), Saturated::dew, {false, o.p_start}, z);
    SaturationPoint first;
    const bool begun = dew.untested(first);
    fluid.evaluations += first.certificate.evaluations;
    if (!begun) return {};
    Tracer tracer(fluid.model(), z, o);
    const EnvelopeOutline found = tracer.outline(first);
    fluid.evaluations += tracer.fluid().evaluations;
    return found;
}

Envelope phase_envelope(ModelN const& model, Vector<double> const& z,
                        EnvelopeOptions const& options) {
    Tracer tracer(model, z, options);
    if (tracer.pure()) tracer.fail("a pure fluid has a saturation curve, no envelope");
    SaturationOptions start;
    start.trace = false;
    return tracer.run(dew_p(model, options.p_start, z, start));
}

namespace {
/// The curve that begins at the dew point without component k (of those present).
Envelope without(ModelN const& model, Vector<double> const& z, EnvelopeOptions const& options,
                 int k) {
    Tracer tracer(model, z, options);
    FluidModel const& fluid = tracer.fluid();
    Vector<double> rest(fluid.expand(fluid.z()));
    rest[fluid.index(k)] = 0.0;
    for (int i = 0; i < rest.size(); ++i) rest[i] /= 1.0 - fluid.z()[k];
    SaturationOptions start;
    start.trace = false;
    const SaturationPoint dew = dew_p(model, options.p_start, rest, start);
    std::vector<double> y;
    y.reserve(fluid.z().size());
    for (int i = 0; i < fluid.size(); ++i)
        y.push_back(i == k ? 1e-8 : dew.incipient.x[fluid.index(i)]);
    return tracer.run_near(dew.T, dew.given.rho, y, dew.incipient.rho, k);
}

/// The curve that begins at the dew point of a nearly pure liquid of component k, by Wilson's
/// vapour pressure at first.
Envelope nearly_pure(ModelN const& model, Vector<double> const& z, EnvelopeOptions const& options,
                     int k) {
    Tracer tracer(model, z, options);
    FluidModel const& fluid = tracer.fluid();
    const double p = options.p_start;
    double low = 0.2, high = 1.2;  // of the critical temperature
    for (int it = 0; it < 40; ++it) {
        const double middle = 0.5 * (low + high);
        const double vapour = fluid.wilson(k, middle * fluid.pure(k).Tcrit());
        (vapour < std::log(p * fluid.z()[k]) ? low : high) = middle;
    }
    const double T = low * fluid.pure(k).Tcrit();
    std::vector<double> y(fluid.z().size(), 1e-8);
    y[k] = 1.0 - 1e-8 * (fluid.size() - 1);
    PhaseState liquid, gas;
    liquid.resize(fluid.size());
    gas.resize(fluid.size());
    if (!fluid.evaluate_at(liquid, p, T, y, Root::dense, 0) ||
        !fluid.evaluate_at(gas, p, T, fluid.z(), Root::dilute, 0))
        return {};
    return tracer.run_near(T, gas.rho, y, liquid.rho, -1);
}
}  // namespace

std::vector<Envelope> phase_envelopes(ModelN const& model, Vector<double> const& z,
                                      EnvelopeOptions const& options) {
    EnvelopeOptions o = options;
    o.stability = true;
    std::vector<Envelope> found = {phase_envelope(model, z, o)};
    const auto add = [&](auto const& trace, int k, bool only_if_stable) {
        Envelope curve;
        try {
            curve = trace(model, z, o, k);
        } catch (EquilibriumFailure const&) {  // no such dew point
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
        if (curve.points.empty()) return;
        if (only_if_stable && curve.unstable == static_cast<int>(curve.points.size())) return;
        for (Envelope const& other : found)
            if (std::fabs(curve.points[0].T / other.points[0].T - 1.0) < 1e-6) return;
        found.push_back(std::move(curve));
    };
    FluidModel const fluid(model, z);
    Vector<double> const y = found[0].points[0].y;
    const bool hidden = found[0].unstable > 0;
    for (int k = 0; k < fluid.size(); ++k)
        if (fluid.size() > 2 && y[fluid.index(k)] > 0.9 && fluid.z()[k] < 0.5)
            add(without, k, false);
    for (int k = 0; hidden && k < fluid.size(); ++k) add(nearly_pure, k, true);
    return found;
}

}  // namespace corvane
