#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/coexistence/pair.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/envelope.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr double kCross = 0.04;     // a ratio ln(rho_i''/rho_i') below this steps through zero
constexpr double kPolish = 0.02;    // ratio of the two points that enclose the critical one
constexpr double kShortest = 1e-5;  // step at which the curve counts as lost
constexpr int kNewton = 8, kWanted = 3;

/// A point with its tangent for the variable that led to it.
struct Node {
    std::vector<double> u, t;  // t: derivatives along the curve, largest weighted component ±1
    double ln_p = 0.0, ln_p_t = 0.0;
};

class Tracer {
  public:
    Tracer(ModelN const& model, Vector<double> const& z, EnvelopeOptions const& o)
        : fluid_(model, z), o_(o), n_(fluid_.size()), pair_(fluid_), stability_(fluid_) {
        pair_.z = &fluid_.z();
    }

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
        pair_.T = 0.0;
        pair_.row.clear();
        pair_.p = o_.p_start;
        if (!solve(30) || !is_dew()) return {};
        specify(n_);
        pair_.value = pair_.u.back();
        if (!solve(kNewton) || !finish(now_, nullptr)) return {};
        record(now_);
        return follow();
    }

    [[noreturn]] void fail(char const* advice) const {
        throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up,
                                 T_or_p(false, o_.p_start) + ", " +
                                     composition_text(fluid_.expand(fluid_.z())),
                                 "phase_envelope", pair_.iterations, pair_.residual, advice);
    }
    bool pure() const { return n_ == 1; }
    FluidModel const& fluid() const { return fluid_; }

  private:
    /// The phases differ, and the incipient one is the denser by mass.
    bool is_dew() const {
        double apart = 0.0;
        for (int k = 0; k < n_; ++k) apart = std::max(apart, std::fabs(at(pair_.u, k)));
        return apart > 0.1 && !point().bubble;
    }

    Envelope follow() {
        double step = o_.step;
        while (true) {
            const int count = static_cast<int>(envelope_.points.size());
            if (count >= o_.points) return end(EnvelopeEnd::full);
            if (o_.progress && !o_.progress(count)) return end(EnvelopeEnd::interrupted);
            Node next;
            const int variable = most(now_.t);
            int iterations = 0;
            bool crossing = false;
            for (;; step *= 0.4) {
                if (step < kShortest) return end(EnvelopeEnd::stuck);
                // In the direction of travel, which now_.t has.
                const double from = at(now_.u, variable), slope = at(now_.t, variable);
                double to = from + step / weight(variable) * (slope > 0 ? 1 : -1);
                crossing = false;
                if (variable < n_ && from * slope < 0 &&
                    (from * to <= 0 || std::fabs(to) < kCross)) {
                    to = std::fabs(from) > 3 * kCross ? std::copysign(kCross, from)
                                                      : -std::copysign(kCross, from);
                    crossing = from * to < 0;
                }
                pair_.iterations = 0;
                if (reach(variable, to, next) && smooth(next)) break;
            }
            iterations = pair_.iterations;
            const bool high = next.ln_p > std::log(o_.p_max),
                       cold = !high && next.u.back() < std::log(o_.T_min);
            if (high || cold) {
                shorten(next, variable, high);
                crossing = crossing && at(now_.u, variable) * at(next.u, variable) < 0.0;
            }
            if (crossing) critical(next, variable);
            extrema(next);
            last_ = now_;
            now_ = std::move(next);
            has_last_ = true;
            record(now_);
            if (high) return end(EnvelopeEnd::pressure);
            if (cold) return end(EnvelopeEnd::cold);
            beyond_ = beyond_ || (!envelope_.critical.empty() && envelope_.points.back().bubble &&
                                  last_.ln_p_t < 0.0 && now_.ln_p_t > 0.0);
            if (envelope_.points.back().bubble && now_.ln_p < std::log(o_.p_start))
                return end(EnvelopeEnd::closed);
            if (iterations <= kWanted)
                step = std::min(1.5 * step, o_.step);
            else if (iterations > kWanted + 2)
                step *= 0.6;
        }
    }

    /// The step that goes beyond p_max (or T_min) ends there: regula falsi in its variable (the
    /// Illinois form; Dowell & Jarratt, BIT 11 (1971) 168), every trial a solution.
    void shorten(Node& next, int variable, bool of_p) {
        const double limit = std::log(of_p ? o_.p_max : o_.T_min);
        const auto off = [&](Node const& q) { return (of_p ? q.ln_p : q.u.back()) - limit; };
        double lo = at(now_.u, variable), hi = at(next.u, variable), below = off(now_),
               above = off(next);
        for (int it = 0; it < 40 && std::fabs(off(next)) > 1e-13; ++it) {
            Node q;
            if (!(below * above < 0.0) ||
                !reach(variable, (below * hi - above * lo) / (below - above), q))
                return;
            const double f = off(q), s = at(q.u, variable);
            if (f * above > 0.0) {
                below *= 0.5;
            } else {
                lo = hi;
                below = above;
            }
            hi = s;
            above = f;
            next = q;
        }
    }

    /// Variable k: the ratio of component k, or ln T for k = n.
    double at(std::vector<double> const& u, int k) const {
        return k < n_ ? u[n_ + k] - u[k] : u[2 * n_];
    }
    double weight(int k) const { return k < n_ ? 1.0 : 4.0; }
    int most(std::vector<double> const& t) const {
        int best = 0;
        // Near a critical point ratios only: ln T would allow the trivial solution.
        double apart = 0.0;
        for (int k = 0; k < n_; ++k) apart = std::max(apart, std::fabs(at(now_.u, k)));
        double largest = 0.0;
        for (int k = 0; k < (apart < 1.0 ? n_ : n_ + 1); ++k) {
            const double size = weight(k) * std::fabs(at(t, k));
            if (size > largest) {
                largest = size;
                best = k;
            }
        }
        return best;
    }

    /// The tangent at the solution of pair_, in the direction of `along` (or increasing p).
    bool finish(Node& q, std::vector<double> const* along) {
        q.u = pair_.u;
        if (!pair_.tangent(q.t)) return false;
        q.ln_p = pair_.ln_p();
        q.ln_p_t = pair_.ln_p(q.t);
        double dot = 0.0, largest = 0.0;
        if (along)
            for (std::size_t i = 0; i < q.t.size(); ++i) dot += q.t[i] * (*along)[i];
        else
            dot = q.ln_p_t;
        // ln p counts, too, so that steps stay short where only the pressure changes
        for (int k = 0; k <= n_; ++k)
            largest = std::max(largest, weight(k) * std::fabs(at(q.t, k)));
        largest = std::max(largest, 0.5 * std::fabs(q.ln_p_t));
        const double scale = (dot < 0 ? -1.0 : 1.0) / largest;
        for (double& v : q.t) v *= scale;
        q.ln_p_t *= scale;
        return std::isfinite(scale);
    }

    void specify(int variable) {
        pair_.T = pair_.p = 0.0;
        pair_.row.assign(pair_.u.size(), 0.0);
        if (variable < n_) {
            pair_.row[n_ + variable] = 1.0;
            pair_.row[variable] = -1.0;
        } else {
            pair_.row[2 * n_] = 1.0;
        }
    }

    /// Solves with the variable at `to`, from the cubic through the last two points.
    bool reach(int variable, double to, Node& q) {
        specify(variable);
        pair_.value = to;
        const double s1 = at(now_.u, variable), t1 = at(now_.t, variable);
        if (has_last_) {
            const double s0 = at(last_.u, variable), t0 = at(last_.t, variable);
            if (t0 * t1 > 0 && (s1 - s0) * t1 > 0 && std::fabs(to - s1) < 3 * std::fabs(s1 - s0)) {
                hermite(last_, now_, variable, to, pair_.u);
                if (solve()) return finish(q, &now_.t);
            }
        }
        for (std::size_t i = 0; i < pair_.u.size(); ++i)
            pair_.u[i] = now_.u[i] + now_.t[i] / t1 * (to - s1);
        return solve() && finish(q, &now_.t);
    }
    bool solve(int limit = kNewton) {
        if (!pair_.solve(limit)) return false;
        return pair_.pressure() > 0.0 && pair_.a.S > 0.0 && pair_.b.S > 0.0;
    }
    /// Cubic in the variable through two points with tangents.
    void hermite(Node const& a, Node const& b, int variable, double to, std::vector<double>& u) {
        const double s0 = at(a.u, variable), h = at(b.u, variable) - s0, q = (to - s0) / h;
        const double ta = h / at(a.t, variable), tb = h / at(b.t, variable);
        for (std::size_t i = 0; i < u.size(); ++i)
            u[i] = value(a.u[i], b.u[i], ta * a.t[i], tb * b.t[i], q);
    }
    static double value(double y0, double y1, double d0, double d1, double q) {
        const double r = 1 - q;
        return y0 * r * r * (1 + 2 * q) + y1 * q * q * (3 - 2 * q) + q * r * (d0 * r - d1 * q);
    }

    /// Against jumps to another branch: the direction must not turn by more than about 45 degrees.
    bool smooth(Node const& q) const {
        double dot = 0.0, a = 0.0, b = 0.0, moved = 0.0;
        for (std::size_t i = 0; i < q.t.size(); ++i) {
            dot += q.t[i] * now_.t[i];
            a += q.t[i] * q.t[i];
            b += now_.t[i] * now_.t[i];
            moved = std::max(moved, std::fabs(q.u[i] - now_.u[i]));
        }
        return dot > 0.7 * std::sqrt(a * b) && moved < 1.0;
    }

    void begin(SaturationPoint const& first) {
        const Vector<double> z = fluid_.expand(fluid_.z());
        std::vector<double> y;
        for (int i = 0; i < z.size(); ++i)
            if (z[i] > 0.0) y.push_back(first.incipient.x[i]);
        pair_.start(fluid_.z(), first.given.rho, y, first.incipient.rho, first.T);
        specify(n_);
        pair_.value = std::log(first.T);
        if (!pair_.solve(20) || !finish(now_, nullptr)) fail("give another p_start");
        record(now_);
    }

    EnvelopePoint point() const {
        EnvelopePoint q;
        q.T = pair_.a.T;
        q.p = pair_.pressure();
        q.rho = pair_.a.rho;
        q.rho2 = pair_.b.rho;
        q.y = fluid_.expand(pair_.b.x);
        double mass = 0.0;
        for (int k = 0; k < n_; ++k)
            mass += (pair_.b.rho_i[k] - pair_.a.rho_i[k]) * fluid_.molar_mass(k);
        q.bubble = mass < 0.0;
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
        const double rounding = 2e-15 * R * pair_.a.T * std::max(pair_.a.S, pair_.b.S),
                     p = pair_.pressure();
        envelope_.dp =
            std::max(envelope_.dp, std::max(0.0, std::fabs(pair_.a.p - pair_.b.p) - rounding) / p);
        if (o_.stability && !stability_.test(pair_.a, p, &pair_.b, true).stable) {
            ++envelope_.unstable;
            envelope_.points.back().unstable = true;
        }
    }

    /// Between now_ and next the ratio passes zero.
    void critical(Node const& next, int variable) {
        Node below = now_, above = next, q;
        const double sign = at(now_.u, variable) < 0 ? -1.0 : 1.0;
        const Node from = now_, next_copy = next;
        for (double side : {1.0, -1.0}) {
            specify(variable);
            pair_.value = side * sign * kPolish;
            hermite(from, next_copy, variable, pair_.value, pair_.u);
            if (solve() && finish(q, &from.t)) (side > 0 ? below : above) = q;
        }
        std::vector<double> u(next.u.size());
        hermite(below, above, variable, 0.0, u);
        // both phases are the mean of the two
        for (int i = 0; i < n_; ++i) u[i] = u[n_ + i] = 0.5 * (u[i] + u[n_ + i]);
        Node c;
        c.u = u;
        load(c);
        EnvelopePoint found = point();
        found.bubble = false;
        found.y = fluid_.expand(fluid_.z());
        envelope_.critical.push_back(found);
    }

    /// Local maxima of T and p between now_ and next: the slope changes its sign.
    void extrema(Node const& next) {
        std::vector<Node> found;
        auto slope = [](Node const& q, bool of_T) { return of_T ? q.t.back() : q.ln_p_t; };
        for (bool of_T : {true, false}) {
            if (!(slope(now_, of_T) > 0 && slope(next, of_T) <= 0)) continue;
            // in the ratio that changes most there
            int variable = 0;
            for (int k = 1; k < n_; ++k)
                if (std::fabs(at(now_.t, k)) > std::fabs(at(now_.t, variable))) variable = k;
            Node a = now_, b = next, q;
            for (int it = 0; it < 12; ++it) {
                const double sa = slope(a, of_T) / std::fabs(at(a.t, variable)),
                             sb = slope(b, of_T) / std::fabs(at(b.t, variable));
                double part = sa / (sa - sb);
                part = std::clamp(part, 0.02, 0.98);
                const double va = at(a.u, variable), vb = at(b.u, variable);
                double to = va + part * (vb - va);
                if (std::fabs(to) < 1e-3) to = 1e-3;  // not the critical point itself
                specify(variable);
                pair_.value = to;
                hermite(a, b, variable, to, pair_.u);
                if (!solve() || !finish(q, &now_.t)) break;
                const double s = slope(q, of_T) / std::fabs(at(q.t, variable));
                (s > 0 ? a : b) = q;
                if (std::fabs(s) < 1e-9 || std::fabs(vb - va) < 1e-9) break;
            }
            if (q.u.empty()) continue;
            load(q);
            if (beyond_)
                (of_T ? envelope_.beyond_T : envelope_.beyond_p).push_back(point());
            else
                (of_T ? envelope_.cricondentherm : envelope_.cricondenbar).push_back(point());
            found.push_back(q);
        }
        // into the curve, in its order
        if (found.size() == 2 && at(found[0].u, most(now_.t)) != at(found[1].u, most(now_.t)) &&
            std::fabs(found[0].u.back() - now_.u.back()) >
                std::fabs(found[1].u.back() - now_.u.back()))
            std::swap(found[0], found[1]);
        for (Node const& q : found) record(q);
    }

    Envelope end(EnvelopeEnd why) {
        envelope_.end = why;
        envelope_.evaluations = fluid_.evaluations;
        return std::move(envelope_);
    }

    const FluidModel fluid_;
    const EnvelopeOptions o_;
    const int n_;
    PairSolver pair_;
    Stability stability_;
    Node last_, now_;
    bool has_last_ = false, beyond_ = false;
    Envelope envelope_;
};
}  // namespace

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
        if (fluid.size() > 2 && y[fluid.index(k)] > 0.9 && fluid.z()[k] < 0.5) add(without, k, false);
    for (int k = 0; hidden && k < fluid.size(); ++k) add(nearly_pure, k, true);
    return found;
}

}  // namespace corvane
