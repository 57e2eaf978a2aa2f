#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/envelope.h>
#include <corvane/phases/pair.h>
#include <corvane/phases/saturation.h>
#include <corvane/phases/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace corvane {
namespace {
constexpr double kTrivial = 1e-4;    // largest |ln(rho_i of a / rho_i of b)| of one phase
constexpr double kHighest = 1000.0;  // MPa, end of the search
constexpr int kNewton = 30, kSubstitutions = 3;
constexpr double kFactor = 3.0;  // largest change of p in a substitution

class Search {
  public:
    Search(ModelN const& model, Saturated kind, bool at_T, double value, Vector<double> const& z)
        : fluid_(model, z),
          kind_(kind),
          at_T_(at_T),
          value_(value),
          pair_(fluid_),
          stability_(fluid_) {
        if (!(value > 0.0) || !std::isfinite(value)) throw ThException(th_out_of_range);
        pair_.z = &fluid_.z();
        (at_T ? pair_.T : pair_.p) = value;
    }

    SaturationPoint run(SaturationOptions const& o) {
        if (o.branch == Branch::any) {
            if (o.start && warm(*o.start) && accept()) return result(o);
            if (cold() && accept()) return result(o);
        }
        const bool upper = o.branch == Branch::upper;
        bool found = global(upper);
        std::vector<double> best = pair_.u;
        double tpd = tpd_;
        if (o.trace && fluid_.size() > 1 && (!found || o.branch != Branch::any) &&
            traced(upper, found, best, tpd))
            found = true;
        if (found && !(missed_ && o.branch != Branch::any)) {
            pair_.u = best;
            tpd_ = tpd;
            if (pair_.solve(kNewton)) return result(o);
            complete_ = false;
        }
        const bool none = complete_;
        throw EquilibriumFailure(
            none ? EquilibriumFailure::Kind::no_solution : EquilibriumFailure::Kind::gave_up,
            state(), name(), pair_.iterations, none ? std::nan("") : pair_.residual,
            none ? "no stable boundary of this kind on the way or on the envelope"
                 : "start from a neighbouring solution, or trace the envelope");
    }

  private:
    /// One state on the search's way.
    struct Node {
        double s = 0.0;  // ln p or ln T
        bool known = false, stable = true;
        double rho = 0.0;
        StabilityResult r;
    };

    double T(double s) const { return at_T_ ? value_ : std::exp(s); }
    double p(double s) const { return at_T_ ? std::exp(s) : value_; }

    bool warm(SaturationPoint const& start) {
        const int n = fluid_.size();
        const Vector<double> all = fluid_.expand(fluid_.z());
        std::vector<double> y;
        for (int i = 0; i < std::min(start.incipient.x.size(), all.size()); ++i)
            if (all[i] > 0.0) y.push_back(start.incipient.x[i]);
        if (static_cast<int>(y.size()) != n ||
            !std::all_of(y.begin(), y.end(), [](double v) { return v > 0.0; }))
            return false;
        pair_.start(fluid_.z(), start.given.rho, y, start.incipient.rho, at_T_ ? value_ : start.T);
        return pair_.solve(kNewton);
    }

    bool cold() {
        const int n = fluid_.size();
        std::vector<double> const& z = fluid_.z();
        a_.resize(n);
        b_.resize(n);
        const bool bubble = kind_ == Saturated::bubble;
        const double sign = bubble ? 1.0 : -1.0;
        std::vector<double> y(z);
        double t = at_T_ ? value_ : 0.0, q = value_;
        auto wilson_sum = [&](double temperature, double& slope) {
            double sum = 0.0;
            slope = 0.0;
            for (int k = 0; k < n; ++k) {
                y[k] = z[k] * std::exp(sign * fluid_.wilson(k, temperature));
                sum += y[k];
                slope += y[k] * 5.373 * (1 + fluid_.pure(k).omega()) * fluid_.pure(k).Tcrit();
            }
            slope /= sum;
            return sum;
        };
        double slope = 0.0;
        if (at_T_) {
            q = std::pow(wilson_sum(t, slope), sign);
        } else {
            double tau = 0.0;  // 1/T
            for (int k = 0; k < n; ++k) tau += z[k] / fluid_.pure(k).Tcrit();
            for (int it = 0; it < 30; ++it) {
                const double f = std::log(wilson_sum(1 / tau, slope)) - sign * std::log(value_);
                const double d = std::clamp(sign * f / slope, -0.3 * tau, 0.5 * tau);
                tau += d;
                if (std::fabs(d) < 1e-3 * tau) break;
            }
            t = 1 / tau;
        }
        for (int it = 0; it < kSubstitutions; ++it) {
            double sum = 0.0;
            for (double v : y) sum += v;
            for (double& v : y) v /= sum;
            if (!fluid_.evaluate_at(a_, q, t, z, bubble ? Root::dense : Root::dilute, 0) ||
                !fluid_.evaluate_at(b_, q, t, y, bubble ? Root::dilute : Root::dense, 0))
                return false;
            if (it + 1 == kSubstitutions) break;
            sum = 0.0;
            for (int k = 0; k < n; ++k) sum += y[k] = std::exp(a_.m[k] - b_.m[k] + std::log(y[k]));
            if (!std::isfinite(sum)) return false;
            if (at_T_)
                q *= std::clamp(std::pow(sum, sign), 1 / kFactor, kFactor);
            else
                t = 1 / (1 / t + std::clamp(sign * std::log(sum) / slope, -0.1 / t, 0.1 / t));
        }
        pair_.start(z, a_.rho, b_.x, b_.rho, t);
        return pair_.solve(kNewton);
    }

    /// Is the converged pair the answer? Leaves the tangent-plane distance in tpd_.
    bool accept() {
        if (apart() < kTrivial) return false;
        const double pressure = pair_.pressure();
        if (!(pressure > 0.0) || !(pair_.a.S > 0.0) || !(pair_.b.S > 0.0)) return false;
        if (bubble() != (kind_ == Saturated::bubble)) return false;
        const StabilityResult r =
            stability_.test(pair_.a, pressure, fluid_.size() > 1 ? &pair_.b : nullptr, true);
        tpd_ = r.stable ? std::min(0.0, r.tpd) : r.tpd;
        return r.stable && r.unconverged == 0;
    }

    SaturationPoint result(SaturationOptions const& o) {
        SaturationPoint q;
        q.T = at_T_ ? value_ : pair_.a.T;
        q.p = at_T_ ? pair_.pressure() : value_;
        certify(fluid_, q.p, {&pair_.a, &pair_.b}, q.certificate);
        q.certificate.tpd = tpd_;
        q.certificate.evaluations = fluid_.evaluations;
        if (o.validity) q.certificate.flag(o.validity, q.T, q.p, fluid_.expand(fluid_.z()));
        q.given = q.certificate.phases[0];
        q.incipient = q.certificate.phases[1];
        if (!q.certificate.holds())
            throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, state(), name(),
                                     pair_.iterations,
                                     std::max(q.certificate.dmu, q.certificate.dp),
                                     "the solution misses its tolerances: model without exact "
                                     "derivatives?");
        return q;
    }

    Node node(double s) {
        Node q;
        q.s = s;
        a_.resize(fluid_.size());
        if (!fluid_.evaluate_at(a_, p(s), T(s), fluid_.z(), Root::stable, phase_H)) return q;
        q.known = true;
        q.rho = a_.rho;
        q.r = stability_.test(a_, p(s), nullptr, false);
        q.stable = q.r.stable;
        return q;
    }

    /// Between two stable states: an unstable one, if there are signs of it.
    std::optional<Node> hidden(Node lo, Node hi) {
        for (int k = 0; k < 14; ++k) {
            const double jump = std::fabs(std::log(hi.rho / lo.rho));
            if (jump < 0.1 + 1.3 * (hi.s - lo.s) * (at_T_ ? 1.0 : 4.0)) return {};
            const Node mid = node(0.5 * (lo.s + hi.s));
            if (!mid.known) return {};
            if (!mid.stable) return mid;
            (std::fabs(std::log(mid.rho / lo.rho)) > std::fabs(std::log(hi.rho / mid.rho)) ? hi
                                                                                           : lo) =
                mid;
        }
        return {};
    }
    std::optional<Node> dip(Node const& a, Node const& b, Node const& c) {
        if (!b.r.other || !(b.r.tpd < (a.r.other ? a.r.tpd : 1e9)) ||
            !(b.r.tpd <= (c.r.other ? c.r.tpd : 1e9)))
            return {};
        constexpr double golden = 0.381966;
        double lo = a.s, hi = c.s;
        Node best = b;
        for (int k = 0; k < 16; ++k) {
            const bool right = hi - best.s > best.s - lo;
            const Node q = node(best.s + golden * (right ? hi - best.s : lo - best.s));
            if (!q.known) return {};
            if (!q.stable) return q;
            if (q.r.other && q.r.tpd < best.r.tpd) {
                (right ? lo : hi) = best.s;
                best = q;
            } else {
                (right ? hi : lo) = q.s;
            }
        }
        return {};
    }

    /// Solves the boundary between a stable and an unstable state. 1 an answer, 0 a boundary that
    /// is none, −1 not resolved.
    int boundary(Node stable, Node unstable) {
        const double wide = at_T_ ? 0.02 : 0.004;
        int tries = 0;
        for (int k = 0; k < 45; ++k) {
            const double width = std::fabs(unstable.s - stable.s);
            if (width < wide * std::pow(0.1, tries)) {
                ++tries;
                const double at = 0.5 * (stable.s + unstable.s), margin = 0.55 * width + 1e-7;
                pair_.start(fluid_.z(), stable.rho, unstable.r.trial.w, unstable.r.trial.rho,
                            T(at));
                if (pair_.solve(kNewton)) {
                    const double s = at_T_ ? pair_.ln_p() : pair_.u.back();
                    if (std::fabs(s - at) < margin) {
                        if (accept()) return 1;
                        if (bubble() != (kind_ == Saturated::bubble) && apart() > kTrivial)
                            return 0;
                    }
                }
                if (tries > 5) return -1;
            }
            const Node mid = node(0.5 * (stable.s + unstable.s));
            if (!mid.known) return -1;
            (mid.stable ? stable : unstable) = mid;
        }
        return -1;
    }
    /// By mass density: a compressed light gas may have more moles per volume than a heavy liquid.
    bool bubble() const {
        double a = 0.0, b = 0.0;
        for (int k = 0; k < fluid_.size(); ++k) {
            a += pair_.a.rho_i[k] * fluid_.molar_mass(k);
            b += pair_.b.rho_i[k] * fluid_.molar_mass(k);
        }
        return b < a;
    }
    double apart() const {
        double d = 0.0;
        for (int k = 0; k < fluid_.size(); ++k)
            d = std::max(d, std::fabs(pair_.u[k] - pair_.u[fluid_.size() + k]));
        return d;
    }

    bool global(bool upper) {
        complete_ = true;
        std::vector<Node> nodes;
        double lo = 0.0, hi = 0.0, step = 0.0;
        if (at_T_) {
            double sum = 0.0;
            for (int k = 0; k < fluid_.size(); ++k)
                sum += fluid_.z()[k] * std::exp(-fluid_.wilson(k, value_));
            lo = std::min(-std::log(sum) - 4.0, std::log(kHighest) - 10.0);
            hi = std::log(kHighest);
            step = 0.4;
            for (int k = 0; k < 8; ++k, lo -= 4.0)
                if (const Node q = node(lo); q.known && q.stable) break;
        } else {
            double least = 1e300, most = 0.0;
            for (int k = 0; k < fluid_.size(); ++k) {
                least = std::min(least, fluid_.pure(k).Tcrit());
                most = std::max(most, fluid_.pure(k).Tcrit());
            }
            lo = std::log(0.3 * least);
            hi = std::log(2.0 * most);
            step = 0.03;
        }
        const int count = static_cast<int>(std::ceil((hi - lo) / step));
        for (int k = 0; k <= count; ++k) nodes.push_back(node(lo + (hi - lo) * k / count));
        // The changes, in ascending order.
        struct Change {
            Node stable, unstable;
        };
        std::vector<Change> changes;
        auto add = [&](Node const& a, Node const& b) {
            if (a.stable != b.stable) changes.push_back(a.stable ? Change{a, b} : Change{b, a});
        };
        for (std::size_t k = 0; k + 1 < nodes.size(); ++k) {
            Node const &a = nodes[k], &b = nodes[k + 1];
            if (!a.known || !b.known) {
                complete_ = false;
                continue;
            }
            if (a.stable != b.stable) {
                add(a, b);
                continue;
            }
            if (!a.stable) continue;
            std::optional<Node> q = hidden(a, b);
            if (!q && k > 0 && nodes[k - 1].known && nodes[k - 1].stable)
                q = dip(nodes[k - 1], a, b);
            if (q && q->s > a.s) {
                add(a, *q);
                add(*q, b);
            } else if (q) {
                add(nodes[k - 1], *q);
                add(*q, a);
            }
        }
        if (upper) std::reverse(changes.begin(), changes.end());
        for (Change const& c : changes) {
            const int r = boundary(c.stable, c.unstable);
            if (r > 0) return true;
            if (r < 0) complete_ = false;
        }
        return false;
    }

    /// Solves all crossings of the envelope; keeps the lowest or highest, also of the one that is
    /// known already.
    bool traced(bool upper, bool known, std::vector<double>& best, double& tpd) {
        Envelope e;
        try {
            e = phase_envelope(fluid_.model(), fluid_.expand(fluid_.z()));
        } catch (EquilibriumFailure const&) {
            complete_ = false;
            return false;
        }
        fluid_.evaluations += e.evaluations;
        if (e.end == EnvelopeEnd::stuck || e.end == EnvelopeEnd::full) complete_ = false;
        const double target = std::log(value_);
        auto fixed = [&](EnvelopePoint const& q) { return std::log(at_T_ ? q.T : q.p) - target; };
        auto running = [&](std::vector<double> const&) {
            return at_T_ ? pair_.ln_p() : pair_.u.back();
        };
        bool found = false;
        double s_best = 0.0;
        if (known) {
            pair_.u = best;
            if (pair_.solve(kNewton)) {
                found = true;
                s_best = running(pair_.u);
            }
        }
        for (std::size_t k = 0; k + 1 < e.points.size(); ++k) {
            EnvelopePoint const &a = e.points[k], &b = e.points[k + 1];
            const double fa = fixed(a), fb = fixed(b);
            if (!(fa * fb <= 0.0) || fa == fb) continue;
            if (a.bubble == b.bubble && a.bubble != (kind_ == Saturated::bubble)) continue;
            // Linear, or as next to an extremum at either end; the solution lies between the
            // points.
            const double linear = fa / (fa - fb);
            const double lo = std::log(at_T_ ? std::min(a.p, b.p) : std::min(a.T, b.T)) - 1e-7,
                         hi = std::log(at_T_ ? std::max(a.p, b.p) : std::max(a.T, b.T)) + 1e-7;
            bool solved = false;
            for (double w : {linear, std::sqrt(linear), 1 - std::sqrt(1 - linear)}) {
                auto mean = [w](double x, double y) { return std::pow(x, 1 - w) * std::pow(y, w); };
                std::vector<double> y;
                for (int i = 0; i < a.y.size(); ++i)
                    if (a.y[i] > 0.0) y.push_back(mean(a.y[i], b.y[i]));
                pair_.start(fluid_.z(), mean(a.rho, b.rho), y, mean(a.rho2, b.rho2),
                            mean(a.T, b.T));
                solved = pair_.solve(kNewton) && apart() > kTrivial && running(pair_.u) > lo &&
                         running(pair_.u) < hi;
                if (solved) break;
            }
            if (!solved) {
                missed_ = true;
                complete_ = false;
                continue;
            }
            if (!accept()) continue;
            const double s = running(pair_.u);
            if (found && (upper ? s <= s_best : s >= s_best)) continue;
            found = true;
            s_best = s;
            best = pair_.u;
            tpd = tpd_;
        }
        return found;
    }

    std::string name() const {
        return std::string(kind_ == Saturated::bubble ? "bubble_" : "dew_") + (at_T_ ? "T" : "p");
    }
    std::string state() const {
        char number[64];
        std::snprintf(number, sizeof number, at_T_ ? "T = %g K, z =" : "p = %g MPa, z =", value_);
        std::string s = number;
        const Vector<double> z = fluid_.expand(fluid_.z());
        for (int i = 0; i < z.size(); ++i) {
            std::snprintf(number, sizeof number, " %.4g", z[i]);
            s += number;
        }
        return s;
    }

    const FluidModel fluid_;
    const Saturated kind_;
    const bool at_T_;
    const double value_;
    PairSolver pair_;
    Stability stability_;
    PhaseState a_, b_;
    double tpd_ = 0.0;
    bool complete_ = true;  // the search and the trace left nothing open
    bool missed_ = false;   // a crossing of the envelope was not solved
};
}  // namespace

SaturationPoint saturation_T(ModelN const& model, Saturated kind, double T, Vector<double> const& z,
                             SaturationOptions const& options) {
    return Search(model, kind, true, T, z).run(options);
}
SaturationPoint saturation_p(ModelN const& model, Saturated kind, double p, Vector<double> const& z,
                             SaturationOptions const& options) {
    return Search(model, kind, false, p, z).run(options);
}

}  // namespace corvane
