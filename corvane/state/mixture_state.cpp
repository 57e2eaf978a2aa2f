#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/close_pair.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/state/mixture_state.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

namespace corvane {
namespace {
constexpr int kWalk = 40, kRefinements = 60, kLooks = 16;
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

double volume(FlashResult const& q) {
    double v = 0.0;
    for (std::size_t k = 0; k < q.phases.size(); ++k) v += q.fraction[k] / q.phases[k].rho;
    return v;
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
        r.rho = 1.0 / volume(r);
        // One phase next to an end of the bracket is what lies beyond that end.
        const double vapour = r.phases.size() > 1                     ? r.fraction.back()
                              : std::fabs(ln - a) < std::fabs(ln - b) ? 0.0
                                                                      : 1.0;
        return Search::Tried{std::move(r), vapour - q};
    });
}

/// All crossings of zero among given places, and in the pieces between them.
class Crossings {
  public:
    /// What is off, for a bracket in which f jumps; empty: nothing helps there.
    using Across = std::function<FlashResult(IllinoisBracket const&)>;

    Crossings(Search const& search, Search::Try f, Across across = {})
        : search_(search), f_(std::move(f)), across_(std::move(across)) {}

    MixtureStates run(std::vector<double> const& places, double dense, double p_max) {
        for (double at : places) {
            if (!step(at) && at > dense) break;  // no such density
            if (last_p_ > p_max) break;
        }
        if (found_.states.empty())
            throw Search::failure(found_.complete ? EquilibriumFailure::Kind::no_solution
                                                  : EquilibriumFailure::Kind::gave_up,
                                  "no state has these values where it was searched");
        return std::move(found_);
    }

  private:
    /// False where there is no state.
    bool step(double at) {
        const auto off = tried(at);
        if (!off) {
            failed_ = true;
            return false;
        }
        found_.complete = found_.complete && !failed_;  // what follows a gap does not end the search
        failed_ = false;
        seen_.push_back({at, *off});
        const std::size_t n = seen_.size();
        if (n > 2)
            if (const auto two = close_pair([&](double t) { return tried(t).value_or(std::nan("")); },
                                            seen_[n - 3], seen_[n - 2], seen_[n - 1], kLooks)) {
                piece(two->left, two->middle);
                piece(two->middle, two->right);
            }
        if (n > 1) piece(seen_[n - 2], seen_[n - 1]);
        return true;
    }
    std::optional<double> tried(double at) {
        try {
            const auto t = search_.take(f_, at);
            last_p_ = t.state.p;
            return t.off;
        } catch (EquilibriumFailure const&) {
            return {};
        }
    }
    void piece(MeshPoint const& a, MeshPoint const& b) {
        if (b.value == 0.0) return found_.states.push_back(search_.take(f_, b.at).state);
        if (!(a.value * b.value < 0.0)) return;
        const IllinoisBracket bracket{a.at, a.value, b.at, b.value};
        try {
            found_.states.push_back(search_.narrow(bracket, f_));
        } catch (EquilibriumFailure const&) {
            try {
                if (across_) return found_.states.push_back(across_(bracket));
            } catch (EquilibriumFailure const&) {
            } catch (ThException const&) {  // no enthalpies
            }
            found_.complete = false;
        }
    }
    Search const& search_;
    Search::Try f_;
    Across across_;
    std::vector<MeshPoint> seen_;
    MixtureStates found_;
    double last_p_ = 0.0;
    bool failed_ = false;
};

/// h, u (in RT) or ln rho of a state, less the value. @throws ThException 3 unknown
double off_from(FlashResult const& q, Given given) {
    const double v = volume(q);
    if (given.what == Quantity::rho) return -std::log(v * given.value);
    const double energy = given.what == Quantity::h ? q.h : q.h - q.p * v;
    return (known(energy) - given.value) / (R * q.T);
}

/// From first to last in equal steps no longer than `step`, the first left out.
void steps(std::vector<double>& places, double last, double step) {
    const double first = places.back();
    const int n = static_cast<int>(std::ceil((last - first) / step));
    for (int k = 1; k <= n; ++k) places.push_back(first + (last - first) * k / n);
}
std::vector<double> temperatures(Search const& search) {
    std::vector<double> places{std::log(mean_critical_T(search) / 3.0)};
    steps(places, places[0] + std::log(12.0), 0.05);
    return places;
}

MixtureStates along_isotherm(Search const& s, double T, Given other) {
    double v = 0.0;
    for (int i = 0; i < s.z_.size(); ++i) v += s.z_[i] * s.model_.mdl1[i]->vcrit();
    std::vector<double> places{std::log(1e-8)};
    steps(places, std::log(0.02 / v), 1.5);
    steps(places, std::log(1.5 / v), 0.2);
    steps(places, std::log(5.0 / v), 0.05);
    return Crossings(s, [&](double ln_rho) {
        FlashResult q = flash_Trho(s.model_, T, std::exp(ln_rho), s.z_, s.from_last());
        const double off = off_from(q, other);
        return Search::Tried{std::move(q), off};
    }).run(places, std::log(1.5 / v), 1000.0);
}

MixtureStates along_isobar(Search const& s, double p, Given other) {
    const bool energy = other.what == Quantity::u;
    const Search::Try at_T = [&](double ln_T) {
        FlashResult q = flash_pT(s.model_, p, std::exp(ln_T), s.z_, s.from_last());
        q.rho = 1.0 / volume(q);
        if (energy) add_caloric(s.model_, s.z_, q);
        const double off = off_from(q, other);
        return Search::Tried{std::move(q), off};
    };
    const Search::Try at_h = [&](double h) {
        FlashResult q = flash_ph(s.model_, p, h, s.z_, s.from_last());
        const double off = off_from(q, other);
        return Search::Tried{std::move(q), off};
    };
    const auto h_at = [&](double ln_T) {
        FlashResult q = s.take(at_T, ln_T).state;
        add_caloric(s.model_, s.z_, q);
        return q.h;
    };
    return Crossings(s, at_T, [&](IllinoisBracket const& r) {
        return s.narrow({h_at(r.a), r.fa, h_at(r.b), r.fb}, at_h);
    }).run(temperatures(s), 1e300, 1e300);
}

MixtureStates along_isochore(Search const& s, double rho, Given other) {
    return Crossings(s, [&](double ln_T) {
        FlashResult q = flash_Trho(s.model_, std::exp(ln_T), rho, s.z_, s.from_last());
        const double off = off_from(q, other);
        return Search::Tried{std::move(q), off};
    }).run(temperatures(s), 1e300, 1e300);
}

/// Two quantities, checked, in the order of their kinds.
struct Two {
    Given a, b;

    Two(Given one, Given other) : a(one), b(other) {
        check(a);
        check(b);
        if (b.what < a.what) std::swap(a, b);
    }
    bool are(Quantity first, Quantity second) const { return a.what == first && b.what == second; }

  private:
    static void check(Given one) {
        const bool positive =
            one.what == Quantity::T || one.what == Quantity::p || one.what == Quantity::rho;
        if (!std::isfinite(one.value) || (positive && !(one.value > 0.0)) ||
            (one.what == Quantity::q && !(one.value >= 0.0 && one.value <= 1.0)))
            throw ThException(th_out_of_range);
    }
};
}  // namespace

MixtureStates mixture_states(ModelN const& model, Given one, Given other, Vector<double> const& z,
                             FlashOptions const& options) {
    const Two given(one, other);
    auto const& [a, b] = given;
    using enum Quantity;
    const Search search(model, z, options);
    if (given.are(T, h) || given.are(T, u)) return along_isotherm(search, a.value, b);
    if (given.are(p, rho) || given.are(p, u)) return along_isobar(search, a.value, b);
    if (given.are(rho, h)) return along_isochore(search, a.value, b);
    return {{mixture_state(model, a, b, z, options)}};
}

FlashResult mixture_state(ModelN const& model, Given one, Given other, Vector<double> const& z,
                          FlashOptions const& options) {
    const Two given(one, other);
    auto const& [a, b] = given;
    using enum Quantity;
    if (given.are(T, p)) return flash_pT(model, b.value, a.value, z, options);
    if (given.are(p, h)) return flash_ph(model, a.value, b.value, z, options);
    if (given.are(p, s)) return flash_ps(model, a.value, b.value, z, options);
    if (given.are(T, rho)) return flash_Trho(model, a.value, b.value, z, options);
    const Search search(model, z, options);
    if (given.are(T, q) || given.are(p, q)) return at_q(search, a.what == T, a.value, b.value);
    if (given.are(h, s)) return at_hs(search, a.value, b.value);
    if (given.are(rho, u) || given.are(rho, s)) return at_rho(search, a.value, b);
    if (given.are(T, s)) return at_Ts(search, a.value, b.value);
    if (!given.are(T, h) && !given.are(T, u) && !given.are(p, rho) && !given.are(p, u) && !given.are(rho, h))
        throw ThException(th_out_of_range);
    MixtureStates all = mixture_states(model, a, b, z, options);
    if (all.states.size() > 1)
        throw Search::failure(EquilibriumFailure::Kind::gave_up,
                              "several states have these values: ask for all of them");
    if (!all.complete)
        throw Search::failure(EquilibriumFailure::Kind::gave_up,
                              "there may be more states: flashes failed where they would be");
    return std::move(all.states[0]);
}

}  // namespace corvane
