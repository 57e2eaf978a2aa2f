#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/state/mixture_state.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace corvane {
namespace {
constexpr int kWalk = 40, kRefinements = 60;
constexpr double kRounding = 1e-13;
constexpr double kShortest = 1e-3;  // step of ln p, ln T, ln rho

class Search {
  public:
    Search(ModelN const& model, Vector<double> const& z, FlashOptions const& options)
        : model_(model), z_(z), options_(options) {}

    /// What is off at ln of p, T or rho, and the state there.
    struct Tried {
        FlashResult state;
        double off;
    };
    using Try = std::function<Tried(double at)>;

    /// Steps from a start until `off` changes its sign, against `slope`, then the bracket. Where
    /// there is no state (a density that the model does not reach) the steps get shorter.
    FlashResult walk(double start, double step, double low, double high, int slope,
                     Try const& f) const {
        double a = start, fa = take(f, a).off;
        for (int k = 0; k < kWalk && fa != 0.0; ++k) {
            const double b = std::clamp(a + (fa * slope > 0.0 ? -step : step), low, high);
            if (b == a)
                throw failure(EquilibriumFailure::Kind::no_solution,
                              "outside the range that is searched");
            double fb = 0.0;
            try {
                fb = take(f, b).off;
            } catch (EquilibriumFailure const&) {
                if (step < kShortest) throw;
                step *= 0.5;
                continue;
            }
            if (fa * fb <= 0.0) return narrow({a, fa, b, fb}, f);
            a = b;
            fa = fb;
        }
        if (fa == 0.0) return take(f, a).state;
        throw failure(EquilibriumFailure::Kind::gave_up, "no bracket");
    }

    /// To rounding; what meets the tolerance is taken where rounding stops before.
    FlashResult narrow(IllinoisBracket r, Try const& f) const {
        Tried best{{}, 1.0};
        for (int k = 0; k < kRefinements && std::fabs(best.off) > kRounding; ++k) {
            double at = (r.a * r.fb - r.b * r.fa) / (r.fb - r.fa);
            // A bisection now and then: where the value jumps or bends sharply, secants are slow.
            if (!std::isfinite(at) || k % 4 == 3) at = 0.5 * (r.a + r.b);
            Tried tried = take(f, at);
            r.take(at, tried.off);
            if (std::fabs(tried.off) < std::fabs(best.off)) best = std::move(tried);
            if (std::fabs(r.b - r.a) < 1e-14 * (1.0 + std::fabs(at))) break;
        }
        const double off = std::fabs(best.off);
        if (off > Certificate::tolerance)
            throw failure(EquilibriumFailure::Kind::gave_up,
                          "the value lies in a jump, where three phases coexist, or is not met to "
                          "1e-9");
        best.state.certificate.target = std::max(best.state.certificate.target, off);
        return best.state;
    }

    /// Remembers the state as the start of the next flash.
    Tried take(Try const& f, double at) const {
        Tried tried = f(at);
        last_ = tried.state;
        return tried;
    }
    FlashOptions from_last() const {
        FlashOptions how = options_;
        if (!last_.phases.empty()) how.start = &last_;
        return how;
    }

    static EquilibriumFailure failure(EquilibriumFailure::Kind kind, std::string const& why) {
        return {kind,         "the two given quantities", "mixture_state",
                kRefinements, Certificate::unknown,       why};
    }

    ModelN const& model_;
    Vector<double> const& z_;
    FlashOptions const& options_;

  private:
    mutable FlashResult last_;
};

double mean_critical_T(Search const& s) {
    double sum = 0.0;
    for (int i = 0; i < s.z_.size(); ++i) sum += s.z_[i] * s.model_.mdl1[i]->Tcrit();
    return sum;
}

double known(double x) {
    if (!std::isfinite(x)) throw ThException(th_no_ideal);
    return x;
}

FlashResult at_hs(Search const& search, double h, double s) {
    return search.walk(0.0, 1.5, std::log(1e-6), std::log(1e3), 1, [&](double ln_p) {
        FlashResult q = flash_ps(search.model_, std::exp(ln_p), s, search.z_, search.from_last());
        const double off = (known(q.h) - h) / (R * q.T);
        return Search::Tried{std::move(q), off};
    });
}

/// (rho, u), (rho, s)
FlashResult at_rho(Search const& search, double rho, Given other) {
    const double Tc = mean_critical_T(search);
    return search.walk(
        std::log(0.9 * Tc), 0.2, std::log(0.2 * Tc), std::log(12.0 * Tc), 1, [&](double ln_T) {
            FlashResult q =
                flash_Trho(search.model_, std::exp(ln_T), rho, search.z_, search.from_last());
            const double off = other.what == Quantity::s
                                   ? (known(q.s) - other.value) / R
                                   : (known(q.h) - q.p / rho - other.value) / (R * q.T);
            return Search::Tried{std::move(q), off};
        });
}

FlashResult at_Ts(Search const& search, double T, double s) {
    double v = 0.0;
    for (int i = 0; i < search.z_.size(); ++i) v += search.z_[i] * search.model_.mdl1[i]->vcrit();
    return search.walk(
        -std::log(10.0 * v), 1.0, std::log(1e-8), std::log(5.0 / v), -1, [&](double ln_rho) {
            FlashResult q =
                flash_Trho(search.model_, T, std::exp(ln_rho), search.z_, search.from_last());
            const double off = (known(q.s) - s) / R;
            return Search::Tried{std::move(q), off};
        });
}

/// A bubble or dew point as a flash: the incipient phase has no amount.
FlashResult saturated(SaturationPoint const& point, Saturated kind) {
    FlashResult q;
    q.T = point.T;
    q.p = point.p;
    q.rho = point.given.rho;
    q.certificate = point.certificate;
    q.phases = {point.given, point.incipient};
    q.fraction = {1.0, 0.0};
    if (kind == Saturated::dew) {
        std::swap(q.phases[0], q.phases[1]);
        std::swap(q.fraction[0], q.fraction[1]);
    }
    return q;
}

FlashResult at_q(Search const& search, bool at_T, double given, double q) {
    SaturationOptions how;
    how.validity = search.options_.validity;
    const auto point = [&](Saturated kind) {
        return at_T ? saturation_T(search.model_, kind, given, search.z_, how)
                    : saturation_p(search.model_, kind, given, search.z_, how);
    };
    if (q == 0.0) return saturated(point(Saturated::bubble), Saturated::bubble);
    if (q == 1.0) return saturated(point(Saturated::dew), Saturated::dew);
    const SaturationPoint bubble = point(Saturated::bubble), dew = point(Saturated::dew);
    const double a = std::log(at_T ? bubble.p : bubble.T), b = std::log(at_T ? dew.p : dew.T);
    if (std::fabs(b - a) < 1e-9) {  // a pure component or an azeotrope: p and T say nothing of q
        FlashResult r = saturated(bubble, Saturated::bubble);
        r.fraction = {1.0 - q, q};
        r.rho = 1.0 / ((1.0 - q) / r.phases[0].rho + q / r.phases[1].rho);
        return r;
    }
    const double outside = std::min(a, b), inside = std::max(a, b);
    return search.narrow({a, -q, b, 1.0 - q}, [&](double ln) {
        const double at = std::exp(std::clamp(ln, outside, inside));
        FlashResult r = at_T ? flash_pT(search.model_, at, given, search.z_, search.from_last())
                             : flash_pT(search.model_, given, at, search.z_, search.from_last());
        double v = 0.0;
        for (std::size_t k = 0; k < r.phases.size(); ++k) v += r.fraction[k] / r.phases[k].rho;
        r.rho = 1.0 / v;
        // One phase next to an end of the bracket is what lies beyond that end.
        const double vapour = r.phases.size() > 1                     ? r.fraction.back()
                              : std::fabs(ln - a) < std::fabs(ln - b) ? 0.0
                                                                      : 1.0;
        return Search::Tried{std::move(r), vapour - q};
    });
}

void check(Given one) {
    const bool positive =
        one.what == Quantity::T || one.what == Quantity::p || one.what == Quantity::rho;
    if (!std::isfinite(one.value) || (positive && !(one.value > 0.0)) ||
        (one.what == Quantity::q && !(one.value >= 0.0 && one.value <= 1.0)))
        throw ThException(th_out_of_range);
}
}  // namespace

FlashResult mixture_state(ModelN const& model, Given a, Given b, Vector<double> const& z,
                          FlashOptions const& options) {
    check(a);
    check(b);
    if (b.what < a.what) std::swap(a, b);
    const auto is = [&](Quantity first, Quantity second) {
        return a.what == first && b.what == second;
    };
    using enum Quantity;
    if (is(T, p)) return flash_pT(model, b.value, a.value, z, options);
    if (is(p, h)) return flash_ph(model, a.value, b.value, z, options);
    if (is(p, s)) return flash_ps(model, a.value, b.value, z, options);
    if (is(T, rho)) return flash_Trho(model, a.value, b.value, z, options);
    const Search search(model, z, options);
    if (is(T, q) || is(p, q)) return at_q(search, a.what == T, a.value, b.value);
    if (is(h, s)) return at_hs(search, a.value, b.value);
    if (is(rho, u) || is(rho, s)) return at_rho(search, a.value, b);
    if (is(T, s)) return at_Ts(search, a.value, b.value);
    throw ThException(th_out_of_range);
}

}  // namespace corvane
