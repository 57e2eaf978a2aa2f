#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/state/ideal_curve.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargestStep = 0.05, kFirstStep = 0.01, kSmallestStep = 1e-6;
constexpr double kTurn = 0.15;  // radians between two steps
constexpr int kMostPoints = 3000;
constexpr int kRefinements = 80;  // Illinois steps; about eight are needed
// Zero density, in critical densities: with exact derivatives, and where rounding of Z counts.
constexpr double kDilute = 1e-10, kDiluteByDifferences = 1e-4;
constexpr double kDensest = 6.0;  // critical densities: beyond any liquid

/// rho·∂Ar/∂rho, rho·T·∂²Ar/∂rho∂T, rho²·∂²Ar/∂rho².
struct Slopes {
    double r, rT, rr;
};

/// Where a fluid is in the plane of the search, and what the search asks of it.
struct Sheet {
    double Tc, rho_c, dilute;
    std::function<Slopes(double T, double rho)> slopes;
    std::function<bool(double T, double rho)> stable;
};

/// Coordinates ln(T/Tc), rho/rho_c.
struct Place {
    double u, w;
};
Place between(Place a, Place b, double t) {
    return {a.u + t * (b.u - a.u), a.w + t * (b.w - a.w)};
}

/// A root of f in [a, b], where it has different signs.
std::optional<double> refine(std::function<double(double)> const& f, double a, double fa, double b,
                             double fb) {
    IllinoisBracket r{a, fa, b, fb};
    for (int k = 0; k < kRefinements && r.fb != 0.0; ++k) {
        if (std::fabs(r.b - r.a) <= 4e-16 * (1.0 + std::fabs(r.b))) break;
        double at = (r.a * r.fb - r.b * r.fa) / (r.fb - r.fa);
        if (!std::isfinite(at)) return std::nullopt;
        at = std::clamp(at, std::min(r.a, r.b), std::max(r.a, r.b));
        if (at == r.b) break;
        const double y = f(at);
        if (!std::isfinite(y)) return std::nullopt;
        r.take(at, y);
    }
    return r.b;
}

class Tracer {
  public:
    Tracer(Sheet sheet, IdealCurve which, IdealCurveOptions const& options)
        : sheet_(std::move(sheet)), which_(which), options_(options) {
        for (double* x : {&options_.T_min, &options_.T_max, &options_.p_max})
            if (!(*x >= 0.0) || !std::isfinite(*x)) throw ThException(th_out_of_range);
        for (double T : options_.T)
            if (!(T > 0.0) || !std::isfinite(T)) throw ThException(th_out_of_range);
        if (options_.T_min == 0.0) options_.T_min = 0.4 * sheet_.Tc;
        if (options_.T_max == 0.0) options_.T_max = 50.0 * sheet_.Tc;
        if (options_.p_max == 0.0) options_.p_max = 1e4;
    }

    IdealCurveResult run() {
        result_.T_zero = start();
        before_ = last_ = {std::log(result_.T_zero / sheet_.Tc), 0.0};
        result_.highest = point(last_);
        store(last_);
        Place direction{0.0, 1.0};
        double step = kFirstStep;
        for (int k = 0; k < kMostPoints && step >= kSmallestStep; ++k) {
            const auto next = correct(last_, direction, step);
            Place turned{0.0, 0.0};
            if (next) turned = unit(last_, *next);
            if (!next ||
                (k > 0 && turned.u * direction.u + turned.w * direction.w < std::cos(kTurn))) {
                step *= 0.5;
                continue;
            }
            if (const auto why = beyond(*next)) {
                finish(direction, step, *why);
                return result_;
            }
            advance(*next);
            direction = turned;
            step = std::min(1.3 * step, kLargestStep);
        }
        result_.last = point(last_);
        return result_;
    }

  private:
    double T(Place at) const { return sheet_.Tc * std::exp(at.u); }
    double rho(Place at) const { return sheet_.rho_c * at.w; }
    IdealCurvePoint point(Place at) const {
        const double t = T(at), d = rho(at);
        return {t, d > 0.0 ? d * R * t * (1.0 + sheet_.slopes(t, d).r) : 0.0, d};
    }
    static Place unit(Place from, Place to) {
        const double length = std::hypot(to.u - from.u, to.w - from.w);
        return {(to.u - from.u) / length, (to.w - from.w) / length};
    }

    /// The condition over rho; it is smooth to zero density.
    double condition(double t, double d) const {
        const Slopes s = sheet_.slopes(t, d);
        switch (which_) {
            case IdealCurve::zeno:
                return s.r / d;
            case IdealCurve::boyle:
                return (s.r + s.rr) / d;
            case IdealCurve::joule_thomson:
                return (s.rT - s.r - s.rr) / d;
            case IdealCurve::joule:
                return s.rT / d;
        }
        return kNaN;
    }

    double start() const {
        const auto f = [&](double ln_T) {
            return condition(std::exp(ln_T), sheet_.dilute * sheet_.rho_c);
        };
        const double end = std::log(options_.T_max);
        double a = std::log(options_.T_min), fa = f(a);
        while (a < end) {
            const double b = std::min(a + 0.05, end), fb = f(b);
            if (fa * fb < 0.0)
                if (const auto root = refine(f, a, fa, b, fb)) return std::exp(*root);
            a = b;
            fa = fb;
        }
        throw ThException(th_generic);
    }

    /// The point of the curve on the normal at a step in a direction.
    std::optional<Place> correct(Place from, Place along, double step) const {
        const Place base{from.u + step * along.u, from.w + step * along.w};
        const auto at = [&](double side) {
            return Place{base.u - side * along.w, base.w + side * along.u};
        };
        const auto f = [&](double side) {
            const Place q = at(side);
            return q.w > 0.0 && q.w < kDensest ? condition(T(q), rho(q)) : kNaN;
        };
        for (double reach = 0.05 * step; reach < 5.0 * step; reach *= 3.0) {
            const double fa = f(-reach), fb = f(reach);
            if (!(fa * fb <= 0.0)) continue;
            const auto root = refine(f, -reach, fa, reach, fb);
            return root ? std::optional(at(*root)) : std::nullopt;
        }
        return std::nullopt;
    }

    std::optional<IdealCurveEnd> beyond(Place at) const {
        const IdealCurvePoint q = point(at);
        if (!(q.p > 0.0) || !sheet_.stable(q.T, q.rho)) return IdealCurveEnd::saturation;
        if (q.T < options_.T_min) return IdealCurveEnd::cold;
        if (q.p > options_.p_max) return IdealCurveEnd::pressure;
        return std::nullopt;
    }

    /// Bisection of the step that leads beyond an end.
    void finish(Place direction, double step, IdealCurveEnd why) {
        const Place from = last_;
        double inside = 0.0;
        Place end = from;
        for (int k = 0; k < 50 && step - inside > 1e-13; ++k) {
            const double half = 0.5 * (inside + step);
            const auto q = correct(from, direction, half);
            const auto out = q ? beyond(*q) : std::nullopt;
            if (!q || out) {
                step = half;
                if (out) why = *out;
            } else {
                inside = half;
                end = *q;
            }
        }
        if (end.w > from.w || end.u != from.u) advance(end);
        result_.end = why;
        result_.last = point(last_);
    }

    void advance(Place next) {
        for (double t : options_.T) {
            const double u = std::log(t / sheet_.Tc);
            if ((last_.u - u) * (next.u - u) > 0.0 || next.u == u || last_.u == next.u) continue;
            at_temperature(t, between(last_, next, (u - last_.u) / (next.u - last_.u)).w,
                           std::hypot(next.u - last_.u, next.w - last_.w));
        }
        const IdealCurvePoint a = point(before_), b = point(last_), c = point(next);
        if (c.p > result_.highest.p) result_.highest = c;
        if (b.p >= a.p && b.p > c.p) highest_between(before_, next);
        before_ = last_;
        last_ = next;
        store(next);
    }

    void store(Place at) {
        if (options_.T.empty()) result_.points.push_back(point(at));
    }

    /// The crossing of a temperature, near w.
    void at_temperature(double t, double w, double length) {
        const auto f = [&](double density) { return condition(t, density * sheet_.rho_c); };
        for (double reach = 0.02 * length; reach < 2.0 * length; reach *= 3.0) {
            const double a = std::max(w - reach, 1e-12), b = w + reach, fa = f(a), fb = f(b);
            if (!(fa * fb <= 0.0)) continue;
            if (const auto root = refine(f, a, fa, b, fb))
                result_.points.push_back(point({std::log(t / sheet_.Tc), *root}));
            return;
        }
    }

    /// The highest pressure between two points of the curve, by golden sections.
    void highest_between(Place a, Place b) {
        constexpr double kGolden = 0.6180339887498949;
        const Place direction = unit(a, b);
        double low = 0.0, high = std::hypot(b.u - a.u, b.w - a.w);
        for (int k = 0; k < 40 && high - low > 1e-9; ++k) {
            const double s1 = high - kGolden * (high - low), s2 = low + kGolden * (high - low);
            const auto q1 = correct(a, direction, s1), q2 = correct(a, direction, s2);
            if (!q1 || !q2) return;
            const IdealCurvePoint x1 = point(*q1), x2 = point(*q2);
            for (IdealCurvePoint const& x : {x1, x2})
                if (x.p > result_.highest.p) result_.highest = x;
            (x1.p < x2.p ? low : high) = x1.p < x2.p ? s1 : s2;
        }
    }

    Sheet sheet_;
    IdealCurve which_;
    IdealCurveOptions options_;
    IdealCurveResult result_;
    Place before_{}, last_{};
};

template <class Model>
double dilute(Model const& model) {
    return model.derivatives() ? kDilute : kDiluteByDifferences;
}

template <class Model, class... X>
Slopes slopes(Model const& model, double T, double rho, X const&... x) {
    std::array<double, 9> d{};
    if (auto const* exact = model.derivatives();
        exact && exact->deriv(rho, T, x..., 2, 2, d.data()))
        return {d[3], d[4], d[6]};
    const double r = model.Z(rho, T, x...) - 1.0;
    return {r, model.betaV(rho, T, x...) - 1.0 - r, model.pV(rho, T, x...) - 1.0 - 2.0 * r};
}
}  // namespace

IdealCurveResult ideal_curve(Model1 const& model, IdealCurve which,
                             IdealCurveOptions const& options) {
    const auto stable = [&](double T, double rho) {
        if (T >= model.Tcrit()) return true;
        try {
            const PureSaturation s = pure_saturation_T(model, T);
            return rho < s.rhoV || rho > s.rhoL;
        } catch (EquilibriumFailure const&) {  // next to the critical point, or far below it
            return model.pV(rho, T) > 0.0;
        }
    };
    return Tracer({model.Tcrit(), 1.0 / model.vcrit(), dilute(model),
                   [&](double T, double rho) { return slopes(model, T, rho); }, stable},
                  which, options)
        .run();
}

IdealCurveResult ideal_curve(ModelN const& model, Vector<double> const& x, IdealCurve which,
                             IdealCurveOptions const& options) {
    if (x.size() != model.mdl1.size()) throw MthException(mth_dimensions);
    double Tc = 0.0, vc = 0.0;
    for (int i = 0; i < x.size(); ++i) {
        if (!(x[i] >= 0.0)) throw ThException(th_out_of_range);
        Tc += x[i] * model.mdl1[i]->Tcrit();
        vc += x[i] * model.mdl1[i]->vcrit();
    }
    if (!(Tc > 0.0)) throw ThException(th_out_of_range);
    return Tracer({Tc, 1.0 / vc, dilute(model),
                   [&](double T, double rho) { return slopes(model, T, rho, x); },
                   [&](double T, double rho) { return model.pV(rho, T, x) > 0.0; }},
                  which, options)
        .run();
}

}  // namespace corvane
