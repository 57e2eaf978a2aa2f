// Is a result of the equilibrium solvers true? Nothing here calls them, nor the model that they
// used: phases, potentials and stability come from an equation written a second time.
#pragma once

#include "binary_scan.h"
#include "enclosure.h"
#include "pair.h"
#include "several.h"
#include "ternary_search.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

namespace judge {

enum class Fault {
    none,
    input,     ///< another T, p or composition than asked for, or not finite
    no_pair,   ///< no two different phases in equilibrium nearby: spinodal, trivial solution
    far,       ///< they exist, but p or T is off by more than kFar
    x_far,     ///< p and T are right, but a mole fraction is off by more, and no bound says so
    bound,     ///< p, T, a mole fraction or density nearer, but beyond the bound that is stated
    kind,      ///< bubble for dew or the reverse
    unstable,  ///< another phase lowers the Gibbs energy by more than 1e-8 RT
    slightly,  ///< by less than that, down to the noise of potentials (Precision)
    fraction,  ///< amounts of the phases
    stable,    ///< called unstable, but no trial phase lowers the energy
    missed     ///< refused for having no solution, but there is one
};
constexpr int kFaults = 12;
constexpr char const* kFaultNames[kFaults] = {"right",    "input",    "no pair",  "far",
                                              "x far",    "bound",    "kind",     "unstable",
                                              "slightly", "fraction", "stable",  "missed"};

/// A relative error of p or T, or error of a mole fraction, that nobody would call right.
constexpr double kFar = 1e-6;
constexpr double kBalance = 1e-9;  // of amounts times mole fractions against the whole
constexpr double kEps = std::numeric_limits<double>::epsilon();

struct Verdict {
    Fault fault = Fault::none;
    double error = 0;    ///< of p or T, relative
    double x_error = 0;  ///< largest of a mole fraction of the incipient or of both phases
    double tpd = 0;      ///< lowest tangent-plane distance to the true phases
    double ratio = 0;  ///< the largest of the errors over the bounds that the certificate states
    double truth = 0;  ///< p or T, where it was found
};

template <class Equation>
class Court {
  public:
    /// model: where its density solver leaves out roots that the equation has (inside loops), only
    /// those that it gives count as phases; or null.
    explicit Court(Equation const& equation, ModelN const* model = nullptr)
        : eq_(equation), model_(model), n_(equation.n) {}
    mutable long other_roots = 0;  ///< unstable only towards a root that the model does not give
    /// Planes of cubic mixtures below which nothing lies by more than 1e-8: by a proof; of those that
    /// the search calls so, without one.
    mutable long proven = 0, unproven = 0;
    mutable long unfollowed = 0;  ///< three phases and more, judged by their potentials alone

    /// Tangent-plane distance of the mixture z itself at (p, T); rho receives its stable density.
    Trial stability(double p, double T, Vector<double> const& z, Long* rho = nullptr) const {
        const typename Equation::template At<Long> at(eq_, Long(T));
        const Long P = Long(p) / (Long(R) * T);
        Values<Long> x = normal<Long>(z), h{}, mu{};
        Long r[2], best = 0;
        bool chosen = false;
        const int found = at.roots(P, x.data(), r);
        for (int k = 0; k < found; ++k) {
            at.state(r[k], x.data(), h.data());
            Long g = 0;
            for (int i = 0; i < n_; ++i) g += x[i] * h[i];
            if ((chosen && !(g < best)) || !given({0, r[k], x}, P, T)) continue;
            chosen = true;
            best = g;
            if (rho) *rho = r[k];
            for (int i = 0; i < n_; ++i) mu[i] = h[i] + std::log(x[i]);
        }
        if (!chosen) {
            ++other_roots;
            return {0};
        }
        return lowest(at, T, P, mu, {x});
    }

    Verdict saturation(corvane::Saturated kind, bool at_T, double given, Vector<double> const& z,
                       corvane::SaturationPoint const& q) const {
        Verdict v;
        const Values<Quad> x = normal<Quad>(z);
        bool echo = (at_T ? q.T : q.p) == given && q.T > 0 && q.p > 0;
        for (int i = 0; i < n_ && echo; ++i)
            echo = std::fabs(q.given.x[i] - double(x[i])) <= 1e-14;
        if (!echo) return v.fault = Fault::input, v;
        if (!q.split.empty()) {  // the first vapour beside two liquids
            auto all = q.split;
            all.push_back(q.incipient);
            SeveralNewton<Equation> solver(eq_, at_T, !at_T, true, q.p, q.T, x);
            return many(q.p, q.T, all, q.fraction, q.certificate, solver);
        }
        Phase<Quad> incipient = phase(q.incipient);
        complete(q.T, incipient, phase(q.given));
        const Given held = at_T ? Given::T_and_x : Given::p_and_x;
        const auto judged = [&](auto const& pair) { of_pair(kind, at_T, q, pair, v); };
        if (with_pair(held, q.p, q.T, x, phase(q.given), incipient, judged)) return v;
        v.truth = boundary(at_T, q.p, q.T, z);
        v.error = std::fabs((at_T ? q.p : q.T) / v.truth - 1);
        // In double two near phases are lost to rounding; the boundary is not.
        const bool clear = Equation::kPrecision.bounds || !(v.error < 10 * kFar);
        return v.fault = clear ? Fault::no_pair : Fault::none, v;
    }

    /// Where the mixture becomes stable or unstable, next to (p, T) along p (at T) or along T: the
    /// boundary itself, found without any phase of a result. Looked for from 1e-9 to 0.5 away in
    /// steps of a factor 2, then halved. 0 if there is none.
    double boundary(bool at_T, double p, double T, Vector<double> const& z) const {
        const double middle = at_T ? p : T;
        auto stable = [&](double q) {
            const Trial t = at_T ? stability(q, T, z) : stability(p, q, z);
            return t.tpd > -t.noise;
        };
        const bool here = stable(middle);
        double inner = 0;
        for (double off = 1e-9; off < 0.5; inner = off, off *= 2)
            for (int sign : {-1, 1}) {
                if (stable(middle * (1 + sign * off)) == here) continue;
                double a = middle * (1 + sign * inner), b = middle * (1 + sign * off);
                while (std::fabs(a / b - 1) > 1e-12) {
                    const double m = (a + b) / 2;
                    (stable(m) == here ? a : b) = m;
                }
                return b;
            }
        return 0;
    }

    /// "No solution": the changes of stability on the way from 1e-3 to 1000 MPa, or from 0.3 of the
    /// lowest to twice the highest critical temperature, none of which may be of this kind. What lies
    /// between two of the steps is not seen, nor is a vapour beside two liquids.
    Verdict absent(corvane::Saturated kind, bool at_T, double value, Vector<double> const& z,
                   double lowest_Tc, double highest_Tc) const {
        constexpr int steps = 60;
        Verdict v;
        const double lo = std::log(at_T ? 1e-3 : 0.3 * lowest_Tc),
                     hi = std::log(at_T ? 1e3 : 2 * highest_Tc);
        struct Side {
            double at;
            Long rho;
            Trial trial;
            bool stable;
        };
        auto side = [&](double s) {
            Side q{std::exp(s), 0, {}, true};
            q.trial = at_T ? stability(q.at, value, z, &q.rho) : stability(value, q.at, z, &q.rho);
            q.stable = q.trial.tpd > -q.trial.noise;
            return q;
        };
        Side last = side(lo);
        for (int k = 1; k <= steps; ++k) {
            const Side next = side(lo + (hi - lo) * k / steps);
            Side a = last, b = next;
            last = next;
            if (a.stable == b.stable || !(a.rho > 0) || !(b.rho > 0)) continue;
            if (!a.stable) std::swap(a, b);
            while (std::fabs(a.at / b.at - 1) > 1e-7) {
                const Side m = side(std::log(a.at * b.at) / 2);
                (m.stable ? a : b) = m;
            }
            // What appears is the trial phase, or the whole itself at another density.
            Phase<Quad> whole, other;
            const bool jumps = std::fabs(std::log(b.rho / a.rho)) > 0.05L;
            for (int i = 0; i < n_; ++i) {
                whole.rho[i] = Quad(z[i]) * Quad(a.rho);
                other.rho[i] =
                    jumps ? Quad(z[i]) * Quad(b.rho) : Quad(b.trial.w[i]) * Quad(b.trial.rho);
            }
            const double T = at_T ? value : b.at, p = at_T ? b.at : value;
            v.truth = b.at;
            double apart = double(mass(other) / mass(whole) - 1);
            // Next to a critical point the lowest trial phase may lie on either side of the whole:
            // what counts is the pair.
            const auto judged = [&](auto const& pair) {
                const double at = double(at_T ? pair.p() : pair.T());
                if (!(std::fabs(at / b.at - 1) < 1e-4)) return false;
                v.truth = at;
                apart = double(mass(pair.b()) / mass(pair.a()) - 1);
                return true;
            };
            bool near = false;
            for (double part : {1.0, 0.3, -0.3, 0.1, -0.1, 0.03, -0.03, 0.01, -0.01}) {
                if (near || !(std::fabs(apart) < 0.05)) break;
                Phase<Quad> nearer;
                for (int i = 0; i < n_; ++i)
                    nearer.rho[i] =
                        whole.rho[i] * pow(Quad(other.rho[i] / whole.rho[i]), Quad(part));
                with_pair(at_T ? Given::T_and_x : Given::p_and_x, p, T, normal<Quad>(z), whole,
                          nearer, [&](auto const& pair) { near = judged(pair); });
            }
            if (!near && !(std::fabs(apart) > 1e-3)) continue;
            if ((apart < 0) == (kind == corvane::Saturated::bubble)) {
                v.fault = Fault::missed;
                return v;
            }
        }
        return v;
    }

    Verdict flash(double p, double T, Vector<double> const& z,
                  corvane::FlashResult const& q) const {
        Verdict v;
        const std::size_t phases = q.phases.size();
        if (q.T != T || q.p != p || phases == 0) return v.fault = Fault::input, v;
        const Values<Quad> x = normal<Quad>(z);
        if (phases == 1) {
            Long rho = 0;
            const Trial t = stability(p, T, z, &rho);
            v.tpd = static_cast<double>(t.tpd);
            v.fault = depth(t);
            v.error = rho > 0 ? static_cast<double>(std::fabs(q.phases[0].rho / rho - 1)) : 0;
            if (v.fault == Fault::none && !(v.error <= kFar)) v.fault = Fault::far;
            return v;
        }
        if (phases > 2) {
            SeveralNewton<Equation> solver(eq_, true, true, false, p, T, x);
            return many(p, T, q.phases, q.fraction, q.certificate, solver);
        }
        Phase<Quad> a = phase(q.phases[0]), b = phase(q.phases[1]);
        complete(T, a, b);
        complete(T, b, a);
        const auto judged = [&](auto const& pair) { of_split(q, pair, v); };
        if (!with_pair(Given::p_and_T, p, T, x, a, b, judged)) v.fault = Fault::no_pair;
        return v;
    }

    Verdict tested(double p, double T, Vector<double> const& z,
                   corvane::StabilityResult const& q) const {
        Verdict v;
        const Trial t = stability(p, T, z);
        v.tpd = static_cast<double>(t.tpd);
        if (q.stable)
            v.fault = depth(t);
        else if (t.tpd > -t.noise / (Equation::kPrecision.bounds ? 500 : 20) &&
                 !(claimed(p, T, z, q.trial) < 0))  // between what doubles and what the scan sees: both
            v.fault = Fault::stable;
        return v;
    }

    template <class Real>
    Values<Real> normal(Vector<double> const& z) const {
        Values<Real> x{};
        Real sum = 0;
        for (int i = 0; i < n_; ++i) sum += x[i] = z[i];
        for (int i = 0; i < n_; ++i) x[i] /= sum;
        return x;
    }

  private:
    /// Calls `use` with the pair next to a and b, of cubics with 100 digits where 113 bits do not find
    /// it or know it less well than doubles could say; false where there is none.
    template <class Use>
    bool with_pair(Given held, double p, double T, Values<Quad> const& x, Phase<Quad> const& a,
                   Phase<Quad> const& b, Use const& use) const {
        PairNewton<Equation> pair(eq_, held, p, T, x);
        const bool found = pair.solve(a, b);
        if constexpr (std::is_same_v<Equation, Cubic>)
            if (!found || pair.uncertainty() > 0) {
                PairNewton<Equation, Wide> wide(eq_, held, p, T, x);
                if (wide.solve(a, b)) return use(wide), true;
            }
        if (found) use(pair);
        return found;
    }
    template <class Pair>
    void of_pair(corvane::Saturated kind, bool at_T, corvane::SaturationPoint const& q,
                 Pair const& pair, Verdict& v) const {
        v.truth = double(at_T ? pair.p() : pair.T());
        v.error = double(abs(at_T ? Quad(q.p / pair.p() - 1) : Quad(q.T / pair.T() - 1)));
        near_enough(pair, v, q.certificate, {&q.given, &q.incipient}, v.error);
        if (v.fault == Fault::far || v.fault == Fault::x_far) return;
        const Fault other = stable(pair, v);
        const bool bubble = mass(pair.b()) < mass(pair.a());
        if (other != Fault::none)
            v.fault = other;
        else if (bubble != (kind == corvane::Saturated::bubble))
            v.fault = Fault::kind;
    }
    template <class Pair>
    void of_split(corvane::FlashResult const& q, Pair const& pair, Verdict& v) const {
        v.error = double(abs(q.fraction[1] - pair.beta()));
        v.truth = double(pair.beta());
        near_enough(pair, v, q.certificate, {&q.phases[0], &q.phases[1]}, 0);
        if (v.fault == Fault::far || v.fault == Fault::x_far) return;
        const Fault other = stable(pair, v);
        if (other != Fault::none) {
            v.fault = other;
            return;
        }
        // The lever rule divides by the distance between the phases.
        const Phase<Quad> a = pair.a(), b = pair.b();
        Quad apart = 0;
        for (int i = 0; i < n_; ++i) apart = std::max(apart, Quad(abs(a.x(i, n_) - b.x(i, n_))));
        if (v.error > kFar + 4 * v.x_error / double(apart) || pair.beta() < -kFar ||
            pair.beta() > 1 + kFar)
            v.fault = Fault::fraction;
    }
    /// The tangent-plane distance of a trial phase at its density; 0 where that is no root.
    Long claimed(double p, double T, Vector<double> const& z, corvane::TrialPhase const& q) const {
        const typename Equation::template At<Long> at(eq_, Long(T));
        const Long P = Long(p) / (Long(R) * T);
        Values<Long> x = normal<Long>(z), w{}, h{}, g{};
        Long r[2], sum = 0;
        if (static_cast<int>(q.w.size()) != n_) return 0;
        for (int i = 0; i < n_; ++i) sum += w[i] = q.w[i];
        for (int i = 0; i < n_; ++i) w[i] /= sum;
        // The root that it means, by Newton's method: a stiff liquid's pressure is mostly rounding.
        Long rho = q.rho, slope = 0;
        for (int k = 0; k < 3; ++k) {
            const Long here = at.state(rho, w.data(), g.data()), step = 1e-7L * rho;
            slope = (at.state(rho + step, w.data(), g.data()) - here) / step;
            rho -= (here - P) / slope;
        }
        if (!(slope > 0) || !(std::fabs(rho / q.rho - 1) < 1e-9L) || !given({0, rho, w}, P, T))
            return 0;
        at.state(rho, w.data(), g.data());
        Long lowest = 1;
        const int found = at.roots(P, x.data(), r);
        for (int k = 0; k < found; ++k) {
            if (!given({0, r[k], x}, P, T)) continue;
            at.state(r[k], x.data(), h.data());
            Long t = 0;
            for (int i = 0; i < n_; ++i)
                if (w[i] > 0) t += w[i] * (g[i] + std::log(w[i]) - h[i] - std::log(x[i]));
            lowest = std::min(lowest, t);
        }
        return lowest;
    }
    static Fault depth(Trial const& t) {
        return t.tpd < -1e-8 ? Fault::unstable : t.tpd < -t.noise ? Fault::slightly : Fault::none;
    }
    Phase<Quad> phase(corvane::PhaseRecord const& r) const {
        Phase<Quad> f;
        for (int i = 0; i < n_; ++i) f.rho[i] = Quad(r.rho) * r.x[i];
        return f;
    }
    /// What a phase has less of than doubles can say, from its potentials in the other one.
    void complete(double T, Phase<Quad>& f, Phase<Quad> const& other) const {
        const typename Equation::template At<Quad> at(eq_, Quad(T));
        Values<Quad> x{}, y{}, h{}, g{};
        for (int i = 0; i < n_; ++i) x[i] = f.x(i, n_), y[i] = other.x(i, n_);
        const Quad rho = f.total(n_);
        at.state(rho, x.data(), h.data());
        at.state(other.total(n_), y.data(), g.data());
        for (int i = 0; i < n_; ++i)
            if (x[i] == 0) f.rho[i] = rho * y[i] * exp(g[i] - h[i]);
    }
    Quad mass(Phase<Quad> const& f) const {
        Quad s = 0;
        for (int i = 0; i < n_; ++i) s += f.rho[i] * eq_.M[i];
        return s;
    }
    using Said = std::vector<corvane::PhaseRecord const*>;
    /// Sets fault, x_error and ratio from the errors of a result of two phases.
    template <class Pair>
    void near_enough(Pair const& pair, Verdict& v, corvane::Certificate const& c, Said const& said,
                     double value) const {
        const std::vector<Phase<Quad>> truth{pair.a(), pair.b()};
        Phase<Quad> const &a = truth[0], &b = truth[1];
        Quad d = 0, off = 0;  // the phases' distance, and by what it is wrong
        for (int i = 0; i < n_; ++i) {
            const Quad is = log(a.rho[i] / b.rho[i]);
            d = std::max(d, Quad(abs(is)));
            if (!(said[0]->x[i] > 0 && said[1]->x[i] > 0)) continue;
            off = std::max(off, Quad(abs(is - log(Quad(said[0]->rho) * said[0]->x[i] /
                                                  (Quad(said[1]->rho) * said[1]->x[i])))));
        }
        const double u = pair.uncertainty();
        compare(truth, v, c, said, value, u);
        if (c.bounded() && Equation::kPrecision.bounds)
            within(double(off / d), c.apart_error, (4 * kEps + u) / double(d), v);
    }
    /// The same of any phases but for their distances. uncertainty: of the truth.
    void compare(std::vector<Phase<Quad>> const& truth, Verdict& v, corvane::Certificate const& c,
                 Said const& said, double value, double uncertainty) const {
        double rho = 0;
        for (std::size_t f = 0; f < truth.size(); ++f) {
            rho = std::max(rho, double(abs(said[f]->rho / truth[f].total(n_) - 1)));
            for (int i = 0; i < n_; ++i)
                v.x_error = std::max(v.x_error, double(abs(said[f]->x[i] - truth[f].x(i, n_))));
        }
        const bool bounded = c.bounded() && Equation::kPrecision.bounds;
        if (!(value <= kFar))
            v.fault = Fault::far;
        else if (!bounded && !(v.x_error <= kFar))
            v.fault = Fault::x_far;
        if (!bounded) return;
        // Beside the bound, every number of a result is rounded once to a double.
        const double rounding = kEps + uncertainty;
        within(value, c.value_error, rounding, v);
        within(v.x_error, c.x_error, rounding, v);
        within(rho, c.rho_error, rounding, v);
    }
    static void within(double error, double bound, double rounding, Verdict& v) {
        if (error > rounding) v.ratio = std::max(v.ratio, (error - rounding) / bound);
        if (v.fault == Fault::none && !(v.ratio <= 1)) v.fault = Fault::bound;
    }
    template <class At>
    Trial lowest(At const& at, double T, Long P, Values<Long> const& mu,
                 std::vector<Values<Long>> const& known) const {
        std::vector<Long> w;
        for (auto const& x : known) w.push_back(x[0]);
        Trial t = n_ == 3 ? TernarySearch<At>(at, P, mu.data(), known).lowest()
                          : BinaryScan<At>(at, P, mu.data(), w).lowest();
        constexpr double noise = Equation::kPrecision.noise;
        for (int i = 0; i < n_; ++i)
            t.noise = std::max({t.noise, Long(10 * noise), Long(noise) * std::fabs(mu[i])});
        if (t.tpd < -t.noise && !given(t, P, T)) {
            ++other_roots;
            t.tpd = 0;
        }
        if constexpr (std::is_same_v<Equation, Cubic>) enclose(at, P, mu, t);
        return t;
    }
    /// What the search says, against the enclosure, which proves it wrong where they differ.
    void enclose(Cubic::At<Long> const& at, Long P, Values<Long> const& mu, Trial& t) const {
        constexpr Long deep = corvane::Certificate::tpd_tolerance;
        if (!(t.tpd > -deep)) return;
        if (!Enclosure::serves(at)) {
            ++unproven;
            return;
        }
        switch (Enclosure(at, P, mu.data(), deep).answer()) {
            case Enclosure::Answer::above: ++proven; break;
            case Enclosure::Answer::open: ++unproven; break;
            case Enclosure::Answer::below: t.tpd = -2 * deep; break;
        }
    }
    bool given(Trial const& t, Long P, double T) const {
        if (!model_) return true;
        Vector<double> w(n_);
        for (int i = 0; i < n_; ++i) w[i] = static_cast<double>(t.w[i]);
        double r[2] = {0, 0};
        const int n = model_->vcalc(static_cast<double>(P) * R * T, T, w, 1, r[0], r[1]);
        for (int k = 0; k < std::min(n, 2); ++k)
            if (std::fabs(r[k] / static_cast<double>(t.rho) - 1) < 1e-5) return true;
        return false;
    }
    template <class Pair>
    Fault stable(Pair const& pair, Verdict& v) const {
        Values<Long> mu{}, xa{}, xb{};
        Phase<Quad> const a = pair.a(), b = pair.b();
        for (int i = 0; i < n_; ++i) {
            mu[i] = static_cast<Long>(pair.mu(i));
            xa[i] = static_cast<Long>(a.x(i, n_));
            xb[i] = static_cast<Long>(b.x(i, n_));
        }
        const typename Equation::template At<Long> at(eq_, static_cast<Long>(pair.T()));
        const Trial t =
            lowest(at, double(pair.T()), static_cast<Long>(pair.P()), mu, {xa, xb});
        v.tpd = static_cast<double>(t.tpd);
        return depth(t);
    }
    /// Three and more phases: potentials and pressures of the densities as given, with 113 bits,
    /// then the true ones next to them.
    Verdict many(double p, double T, std::vector<corvane::PhaseRecord> const& phases,
                 std::vector<double> const& amounts, corvane::Certificate const& c,
                 SeveralNewton<Equation>& solver) const {
        Verdict v;
        const typename Equation::template At<Quad> at(eq_, Quad(T));
        Values<Quad> mu{}, h{}, x{};
        std::array<bool, kMax> set{};
        std::vector<Values<Long>> known;
        std::vector<Phase<Quad>> from;
        Said said;
        double dmu = 0, dp = 0;
        for (corvane::PhaseRecord const& f : phases) {
            Values<Long> w{};
            for (int i = 0; i < n_; ++i) x[i] = w[i] = f.x[i];
            const Quad P = at.state(Quad(f.rho), x.data(), h.data());
            // rounding of a density by 1e-15 and what it does to the pressure of a liquid
            const Quad K = at.state(Quad(f.rho) * (1 + 1e-9), x.data(), h.data()) - P;
            at.state(Quad(f.rho), x.data(), h.data());
            const double off = double(abs(P * Quad(R) * T / p - 1)) -
                               double(abs(K) * Quad(R) * T / p) * 1e-6;
            dp = std::max(dp, off);
            for (int i = 0; i < n_; ++i) {
                w[i] = std::max(w[i], Long(1e-300));
                if (x[i] == 0) continue;  // less than doubles can say
                const Quad m = h[i] + log(x[i]);
                if (!set[i]) mu[i] = m;
                set[i] = true;
                dmu = std::max(dmu, double(abs(m - mu[i])));
            }
            known.push_back(w);
            from.push_back(phase(f));
            said.push_back(&f);
        }
        v.error = dp;
        v.x_error = dmu;
        if (!(dp <= 2e-9 && dmu <= 2e-9)) return v.fault = Fault::far, v;
        for (int i = 0; i < n_; ++i) {
            Quad left = solver.z(i);
            for (std::size_t f = 0; f < amounts.size(); ++f) left -= amounts[f] * phases[f].x[i];
            if (!(abs(left) <= kBalance)) return v.fault = Fault::fraction, v;
        }
        for (auto& f : from)
            for (auto const& other : from)
                if (&f != &other) complete(T, f, other);
        if (solver.solve(from, amounts)) {
            const double value = std::max(double(abs(T / solver.T() - 1)),
                                          solver.p_given() ? 0 : double(abs(p / solver.p() - 1)));
            v.error = value;
            v.x_error = 0;
            compare(solver.phase, v, c, said, value, 0);
            Quad apart = 1;
            for (auto const& a : solver.phase)
                for (auto const& b : solver.phase) {
                    Quad d = &a == &b ? 1 : 0;
                    for (int i = 0; i < n_; ++i)
                        d = std::max(d, Quad(abs(a.x(i, n_) - b.x(i, n_))));
                    apart = std::min(apart, d);
                }
            for (std::size_t f = 0; v.fault == Fault::none && f < amounts.size(); ++f)
                if (!(solver.part[f] > -kFar) ||
                    double(abs(amounts[f] - solver.part[f])) > kFar + 4 * v.x_error / double(apart))
                    v.fault = Fault::fraction;
            if (v.fault != Fault::none) return v;
        } else if (Equation::kPrecision.bounds) {
            ++unfollowed;
        }
        Values<Long> m{};
        for (int i = 0; i < n_; ++i) m[i] = static_cast<Long>(mu[i]);
        const typename Equation::template At<Long> fast(eq_, Long(T));
        v.tpd = static_cast<double>(lowest(fast, T, Long(p) / (Long(R) * T), m, known).tpd);
        // the potentials themselves carry dmu
        if (v.tpd < -1e-8) v.fault = Fault::unstable;
        return v;
    }

    Equation const& eq_;
    ModelN const* model_;
    int n_;
};

}  // namespace judge
