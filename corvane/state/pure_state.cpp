#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/numerics/close_pair.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_expansion.h>
#include <corvane/pure/model1.h>
#include <corvane/state/pure_state.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kKnown = 1e-9;   // bound of a precomputed saturation that is used
constexpr int kMesh = 40;         // points of a branch between which crossings are looked for
constexpr int kLooks = 24;        // golden sections towards a minimum between two of them
constexpr int kRefinements = 80;  // Illinois steps; about ten are needed

bool is_caloric(Quantity what) {
    return what == Quantity::h || what == Quantity::s || what == Quantity::u;
}

double value(PhaseProperties const& q, Quantity what) {
    switch (what) {
        case Quantity::T: return q.T;
        case Quantity::p: return q.p;
        case Quantity::rho: return q.rho;
        case Quantity::h: return q.h;
        case Quantity::s: return q.s;
        case Quantity::u: return q.u;
        case Quantity::q: break;
    }
    return kNaN;
}

double value(PureState const& q, Quantity what) {
    return what == Quantity::h ? q.h : what == Quantity::s ? q.s : q.u;
}

class Solver {
  public:
    Solver(Model1 const& model, PureStateOptions const& options)
        : model_(model), curve_(options.saturation) {
        const double Tc = model.Tcrit();
        T_min_ = options.T_min > 0 ? options.T_min : 0.2 * Tc;
        T_max_ = options.T_max > 0 ? options.T_max : std::fmax(10 * Tc, 3000.0);
        p_max_ = options.p_max > 0 ? options.p_max : 1e4;
    }

    // ---- single states

    PureState one(double T, double rho) const {
        const PhaseProperties q = phase_properties(model_, T, rho);
        PureState state{T, q.p, rho, q.h, q.s, q.u, kNaN, q, {}, {}};
        return state;
    }

    PureState two(PureSaturation const& at, double q) const {
        PureState state;
        state.T = at.T;
        state.p = at.p;
        state.q = q;
        state.liquid = phase_properties(model_, at.T, at.rhoL);
        state.vapour = phase_properties(model_, at.T, at.rhoV);
        const auto mean = [&](double l, double v) { return l + q * (v - l); };
        state.rho = 1 / mean(1 / at.rhoL, 1 / at.rhoV);
        state.h = mean(state.liquid->h, state.vapour->h);
        state.s = mean(state.liquid->s, state.vapour->s);
        state.u = mean(state.liquid->u, state.vapour->u);
        return state;
    }

    /// On the density root that a phase code names.
    std::optional<PureState> at_p(double p, double T, int phase) const {
        const double rho = root(p, T, phase);
        if (!(rho > 0)) return std::nullopt;
        PureState state = one(T, rho);
        state.p = p;  // not what rounding of a liquid's density makes of it
        return state;
    }

    /// The density root that a phase code names; 0 if there is none.
    double root(double p, double T, int phase) const {
        double a = 0.0, b = 0.0;
        const int n = model_.vcalc(p, T, phase == 3 ? 3 : 1, a, b);
        if (n < 1) return 0.0;
        if (phase == 2 && n > 1 && second_is_stable(p, T, a, b)) return b;
        return a;
    }
    /// Of two density roots the dilute one: by the saturation pressure, if that is known well
    /// enough, else by the Gibbs energies.
    bool second_is_stable(double p, double T, double a, double b) const {
        const double saturated = curve_ ? curve_->p_at(T) : kNaN;
        if (std::fabs(p - saturated) > 1e-6 * saturated) return p < saturated;
        return model_.Ge(b, T) < model_.Ge(a, T);
    }

    /// Nothing at and above the critical point, nor where it is too near to tell the phases apart:
    /// a state between them then shows as a jump, which no crossing is taken for.
    std::optional<PureSaturation> at_T(double T) const {
        if (SaturationExpansion::Point s;
            curve_ && curve_->at_T(T, s) && curve_->within(kKnown, T))
            return of(s);
        return below_critical(T / model_.Tcrit(), [&] { return pure_saturation_T(model_, T); });
    }
    std::optional<PureSaturation> at_p(double p) const {
        if (SaturationExpansion::Point s;
            curve_ && curve_->at_p(p, s) && curve_->within(kKnown, s.T))
            return of(s);
        return below_critical(p / model_.pcrit(), [&] { return pure_saturation_p(model_, p); });
    }
    static PureSaturation of(SaturationExpansion::Point const& s) {
        return {s.T, s.p, s.rhoL, s.rhoV, kNaN, kNaN, kNaN};
    }
    template <class F>
    static std::optional<PureSaturation> below_critical(double reduced, F const& f) {
        try {
            return f();
        } catch (EquilibriumFailure const& e) {
            const bool near = std::fabs(reduced - 1) < 1e-9;
            if (e.kind() == EquilibriumFailure::Kind::gave_up && !near) throw;
            return std::nullopt;
        }
    }

    /// The stable state at T and overall density.
    PureState at_Trho(double T, double rho) const {
        if (const auto s = at_T(T); s && rho > s->rhoV && rho < s->rhoL)
            return two(*s, (1 / rho - 1 / s->rhoL) / (1 / s->rhoV - 1 / s->rhoL));
        return one(T, rho);
    }

    // ---- lists of states

    /// The two phases of `s`, if the target lies between their values.
    void between(PureSaturation const& s, Given target, std::vector<PureState>& found) const {
        const double l = value(phase_properties(model_, s.T, s.rhoL), target.what),
                     v = value(phase_properties(model_, s.T, s.rhoV), target.what);
        // densities mix by volume
        const bool density = target.what == Quantity::rho;
        const double x = density ? 1 / target.value : target.value;
        const double q = (x - (density ? 1 / l : l)) / (density ? 1 / v - 1 / l : v - l);
        if (q >= 0 && q <= 1) found.push_back(two(s, q));
    }

    /// All t between a and b with f(t) = 0, where f gives a state's value less its target;
    /// not-a-number where there is no state.
    static void crossings(std::function<double(double)> const& f, double a, double b,
                          std::function<void(double)> const& use) {
        const auto piece = [&](MeshPoint const& from, MeshPoint const& to) {
            if (to.value == 0)
                use(to.at);
            else if (from.value * to.value < 0)
                if (const double zero = refine(f, from.at, from.value, to.at, to.value); std::isfinite(zero))
                    use(zero);
        };
        MeshPoint before{a, kNaN}, last{a, f(a)};
        if (last.value == 0) use(a);
        for (int k = 1; k <= kMesh; ++k) {
            const double t = a + (b - a) * k / kMesh;
            const MeshPoint here{t, f(t)};
            if (const auto two = close_pair(f, before, last, here, kLooks)) {
                piece(two->left, two->middle);
                piece(two->middle, two->right);
            }
            piece(last, here);
            before = last;
            last = here;
        }
    }

    /// The zero of a rising f between a and b, from `start` (one of them, or between) in steps that
    /// double; a step to where f is not-a-number is halved. −∞ or ∞: f has no zero, all of it lies
    /// above or below zero. Not-a-number: f ends before it has changed its sign.
    static double rising(std::function<double(double)> const& f, double a, double b, double start) {
        double t = std::clamp(start, a, b), y = f(t), step = 0.02;
        const bool up = y < 0;
        if (y == 0 || std::isnan(y)) return y == 0 ? t : kNaN;
        for (int k = 0; k < 100; ++k) {
            const double next = up ? std::fmin(b, t + step) : std::fmax(a, t - step);
            if (next == t) return up ? kInfinite : -kInfinite;
            const double z = f(next);
            if (std::isnan(z)) {
                step *= 0.25;
                if (step < 1e-9) return kNaN;
                continue;
            }
            if (z == 0) return next;
            if ((z < 0) != up) return refine(f, t, y, next, z);
            t = next;
            y = z;
            step *= 2;
        }
        return kNaN;
    }

    /// A zero between a and b, where f has different signs; either value may be infinite.
    /// Not-a-number if f jumps over zero there: another branch of the equation begins.
    static double refine(std::function<double(double)> const& f, double a, double fa, double b,
                         double fb) {
        IllinoisBracket at{a, fa, b, fb};
        double best = std::fabs(fa) < std::fabs(fb) ? a : b;
        double least = std::fmin(std::fabs(fa), std::fabs(fb));
        const double largest = std::fmax(std::fabs(fa), std::fabs(fb));
        const double small = 1e-9 * (std::isfinite(largest) ? largest : least);
        for (int k = 0; k < kRefinements; ++k) {
            double t = at.b - at.fb * (at.b - at.a) / (at.fb - at.fa);
            if (k % 8 == 7 || !std::isfinite(t)) t = 0.5 * (at.a + at.b);
            const double y = f(t);
            if (std::isnan(y)) break;
            if (std::fabs(y) < least) {
                least = std::fabs(y);
                best = t;
            }
            if (y == 0 || std::fabs(at.b - at.a) <= 4e-16 * std::fabs(t)) break;
            at.take(t, y);
        }
        return least <= small || least == 0 ? best : kNaN;
    }

    /// (T, rho), (T, s), (T, h), (T, u).
    std::vector<PureState> isotherm(double T, Given target) const {
        if (target.what == Quantity::rho) return {at_Trho(T, target.value)};
        std::vector<PureState> found;
        const auto branch = [&](double from, double to) {  // densities, by their logarithms
            const auto f = [&](double ln_rho) {
                return value(phase_properties(model_, T, std::exp(ln_rho)), target.what) -
                       target.value;
            };
            crossings(f, std::log(from), std::log(to),
                      [&](double t) { found.push_back(one(T, std::exp(t))); });
        };
        constexpr double thin = 1e-12;  // mol/cm³: an ideal gas
        double dense = 0.0;             // at p_max, or as far as the equation has densities
        for (double p = p_max_; !(dense > 0) && p > 1e-3; p *= 0.5) dense = root(p, T, 1);
        if (!(dense > thin)) return found;
        if (const auto s = at_T(T)) {
            branch(thin, s->rhoV);
            between(*s, target, found);
            branch(s->rhoL, dense);
        } else {
            branch(thin, dense);
        }
        return found;
    }

    /// (p, rho), (p, u): every crossing.
    std::vector<PureState> isobar(double p, Given target) const {
        std::vector<PureState> found;
        const auto branch = [&](double from, double to, int phase) {
            crossings(isobaric(p, target, phase), std::log(from), std::log(to), [&](double t) {
                if (const auto state = at_p(p, std::exp(t), phase)) found.push_back(*state);
            });
        };
        if (const auto s = at_p(p)) {
            branch(T_min_, s->T, 1);
            between(*s, target, found);
            branch(s->T, T_max_, 3);
        } else {
            branch(T_min_, T_max_, 2);
        }
        return found;
    }

    /// (p, h), (p, s), which grow with T. Nothing if there is no state; `beyond` is then ∞ if the
    /// target is more than the warmest state has, −∞ if less than the coldest.
    std::optional<PureState> rising_isobar(double p, Given target, double* beyond = nullptr) const {
        double from = T_min_, to = T_max_, start = model_.Tcrit();
        int phase = 2;
        if (const auto s = at_p(p)) {
            std::vector<PureState> found;
            between(*s, target, found);
            if (!found.empty()) return found.front();
            const bool liquid =
                value(phase_properties(model_, s->T, s->rhoL), target.what) > target.value;
            phase = liquid ? 1 : 3;
            (liquid ? to : from) = start = s->T;
        }
        const double t =
            rising(isobaric(p, target, phase), std::log(from), std::log(to), std::log(start));
        if (beyond) *beyond = t;
        if (!std::isfinite(t)) return std::nullopt;
        return at_p(p, std::exp(t), phase);
    }

    /// The value less the target on the root of `phase`, as a function of ln T.
    std::function<double(double)> isobaric(double p, Given target, int phase) const {
        return [this, p, target, phase](double ln_T) {
            const double T = std::exp(ln_T), rho = root(p, T, phase);
            if (!(rho > 0)) return kNaN;
            return value(phase_properties(model_, T, rho), target.what) - target.value;
        };
    }

    /// (rho, h), (rho, s), (rho, u).
    std::vector<PureState> isochore(double rho, Given target) const {
        std::vector<PureState> found;
        const auto f = [&](double ln_T) {
            try {
                return value(at_Trho(std::exp(ln_T), rho), target.what) - target.value;
            } catch (EquilibriumFailure const&) {
                return kNaN;  // colder than the equation has a saturation for
            }
        };
        const auto use = [&](double t) { found.push_back(at_Trho(std::exp(t), rho)); };
        const double a = std::log(T_min_), b = std::log(T_max_);
        if (target.what == Quantity::h) {
            crossings(f, a, b, use);
        } else if (const double t = rising(f, a, b, std::log(model_.Tcrit())); std::isfinite(t)) {
            use(t);
        }
        return found;
    }

    /// (h, s)
    std::vector<PureState> isentrope(double h, double s) const {
        const Given entropy{Quantity::s, s};
        std::optional<PureState> last;
        const auto f = [&](double ln_p) {
            double beyond = kNaN;
            last = rising_isobar(std::exp(ln_p), entropy, &beyond);
            // More entropy than the warmest state has: the pressure is too high.
            return last ? last->h - h : beyond;
        };
        const double ln_p = rising(f, std::log(1e-9), std::log(p_max_), std::log(model_.pcrit()));
        if (!std::isfinite(ln_p)) return {};
        f(ln_p);
        if (!last) return {};
        return {*last};
    }

  private:
    Model1 const& model_;
    SaturationExpansion const* curve_;
    double T_min_, T_max_, p_max_;
};

void check(Given const& g) {
    const bool positive =
        g.what == Quantity::T || g.what == Quantity::p || g.what == Quantity::rho;
    if (!std::isfinite(g.value) || (positive && !(g.value > 0)) ||
        (g.what == Quantity::q && !(g.value >= 0 && g.value <= 1)))
        throw ThException(th_out_of_range);
}
}  // namespace

std::vector<PureState> pure_states(Model1 const& model, Given a, Given b,
                                   PureStateOptions const& options) {
    check(a);
    check(b);
    if (b.what < a.what) std::swap(a, b);
    if (is_caloric(a.what) || is_caloric(b.what)) model.ideal.CVm(300.0);  // throws 3
    const Solver solver(model, options);
    const auto saturated = [&](std::optional<PureSaturation> const& s, double q) {
        if (!s)
            throw EquilibriumFailure(EquilibriumFailure::Kind::no_solution,
                                     std::string(model.name()), "saturation", 0, kNaN,
                                     "it is at or above the critical point");
        return std::vector{solver.two(*s, q)};
    };
    if (a.what == b.what) throw ThException(th_out_of_range);
    std::vector<PureState> found;
    if (a.what == Quantity::T && b.what == Quantity::p) {
        if (auto state = solver.at_p(b.value, a.value, 2)) found.push_back(*state);
    } else if (b.what == Quantity::q) {
        if (a.what == Quantity::T)
            return saturated(solver.at_T(a.value), b.value);
        if (a.what != Quantity::p) throw ThException(th_out_of_range);
        return saturated(solver.at_p(a.value), b.value);
    } else if (a.what == Quantity::T) {
        found = solver.isotherm(a.value, b);
    } else if (a.what == Quantity::p) {
        if (b.what == Quantity::h || b.what == Quantity::s) {
            if (auto state = solver.rising_isobar(a.value, b)) found.push_back(*state);
        } else {
            found = solver.isobar(a.value, b);
        }
    } else if (a.what == Quantity::rho) {
        found = solver.isochore(a.value, b);
    } else if (a.what == Quantity::h && b.what == Quantity::s) {
        found = solver.isentrope(a.value, b.value);
    } else {
        throw ThException(th_out_of_range);
    }
    std::stable_sort(found.begin(), found.end(), [](PureState const& x, PureState const& y) {
        return std::pair(x.T, x.rho) < std::pair(y.T, y.rho);
    });
    return found;
}

}  // namespace corvane
