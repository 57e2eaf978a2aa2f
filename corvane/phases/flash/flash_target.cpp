// Flashes at given (p, h), (p, s) or (T, rho): a search in T or p around the flash at (p, T).
#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/coexistence/split.h>
#include <corvane/phases/flash/flash_parts.h>
#include <corvane/phases/flash/search_range.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace corvane {
namespace {
constexpr int kFlashes = 60, kRefused = 12, kNewton = 20;
constexpr double kClosed = 1e-13;  // width of the bracket in ln T or ln p
constexpr double kHit = 1e-10;     // distance at which the (p, T) flash itself is the answer

/// A flash at (p, T) on one side of the answer. The outer variable is ln T or ln p.
struct Side {
    bool known = false;
    double outer = 0.0, distance = 0.0;
    FlashResult result;
};

class TargetFlash {
  public:
    TargetFlash(ModelN const& model, Vector<double> const& z, Target target, double fixed,
                double given, FlashOptions const& o)
        : model_(model),
          z_(z),
          target_(target),
          at_T_(target == Target::rho_at_T),
          given_(given),
          o_(o),
          fluid_(model, z),
          n_(fluid_.size()),
          caloric_(tables(fluid_, at_T_)),
          stability_(fluid_, o.test),
          solver_(fluid_, caloric_.get(), target),
          range_(fluid_, caloric_.get(), target) {
        if (!(fixed > 0.0) || !std::isfinite(fixed) || !std::isfinite(given) ||
            (at_T_ && !(given > 0.0)))
            throw ThException(th_out_of_range);
        (at_T_ ? T_ : p_) = fixed;
        solver_.given = at_T_ ? 1.0 / given : given / R;
        best_ = std::numeric_limits<double>::infinity();
    }

    FlashResult run() {
        if (at_T_ && whole()) return std::move(answer_);
        if (o_.start && from(*o_.start)) return std::move(answer_);
        double next = range_.guess(at_T_ ? T_ : p_, solver_.given);
        if (tried(next)) return std::move(answer_);
        const double first = next;
        double last_width = std::numeric_limits<double>::infinity(), grow = at_T_ ? 1.0 : 0.2;
        int refused = 0, slow = 0;
        for (int k = 0; k < kFlashes; ++k) {
            Side here;
            if (!flash(next, here)) {
                if (++refused > kRefused) break;
                next = beside(next, first, refused);
                continue;
            }
            Side& side = here.distance < 0.0 ? lo_ : hi_;
            side = std::move(here);
            double step = 0.0;
            if (newton(side, step)) return std::move(answer_);
            const bool both = lo_.known && hi_.known;
            if (both && joined()) return std::move(answer_);
            if (std::fabs(side.distance) < kHit && take(side)) return std::move(answer_);
            if (!std::isfinite(step)) step = 0.0;
            next = side.outer + step;
            if (both) {
                const double width = hi_.outer - lo_.outer;
                if (width < kClosed) break;
                slow = width > 0.5 * last_width ? slow + 1 : 0;
                last_width = width;
                if (slow > 1 || !(next > lo_.outer) || !(next < hi_.outer)) {
                    next = 0.5 * (lo_.outer + hi_.outer);
                    slow = 0;
                }
                continue;
            }
            // Outwards, by growing steps, until the target is enclosed.
            const double sign = lo_.known ? 1.0 : -1.0;
            next = side.outer + sign * std::clamp(sign * step, 0.2 * grow, grow);
            grow *= 2.0;
            const double limit = lo_.known ? range_.max() : range_.min();
            if (sign * (side.outer - limit) >= 0.0) fail_outside();
            if (sign * (next - limit) > 0.0) next = limit;
        }
        fail(EquilibriumFailure::Kind::gave_up,
             refused > kRefused
                 ? "the flash at (p, T) is refused around the answer: probably more phases"
                 : "no certified state; change the values a little, or give a start");
    }

  private:
    static std::unique_ptr<Caloric> tables(FluidModel const& fluid, bool optional) {
        try {
            return std::make_unique<Caloric>(fluid);
        } catch (ThException const& e) {
            if (!optional || e.number != th_no_ideal) throw;
            return nullptr;
        }
    }

    [[noreturn]] void fail(EquilibriumFailure::Kind kind, std::string const& advice) const {
        static constexpr char const* kSolver[] = {"flash_ph", "flash_ps", "flash_Trho"};
        static constexpr char const* kGiven[] = {"h", "s", "rho"};
        static constexpr char const* kUnit[] = {"J/mol", "J/(mol K)", "mol/cm3"};
        const int which = static_cast<int>(target_);
        const std::string state = T_or_p({at_T_, at_T_ ? T_ : p_}) + ", " +
                                  quantity(kGiven[which], given_, kUnit[which], 8) + ", " +
                                  composition_text(z_);
        throw EquilibriumFailure(kind, state, kSolver[which], iterations_, best_, advice);
    }
    [[noreturn]] void fail_outside() {
        static constexpr char const* kGiven[] = {"enthalpy", "entropy", "density"};
        fail(EquilibriumFailure::Kind::no_solution,
             std::string("no such ") + kGiven[static_cast<int>(target_)] +
                 " is reached between " + (at_T_ ? "p" : "T") + " = " +
                 shortest(std::exp(range_.min())) + " and " +
                 shortest(std::exp(range_.max())) + (at_T_ ? " MPa" : " K"));
    }

    /// Newton from an untested guess at ln T or ln p. If its result is not the answer, the search
    /// begins where that is.
    bool tried(double& outer) {
        (at_T_ ? p_ : T_) = std::exp(outer);
        Side s;
        if (!flash_guess(model_, p_, T_, z_, s.result)) return false;
        evaluations_ += s.result.certificate.evaluations;
        s.outer = outer;
        double step = 0.0;
        if (start(s.result) && newton(s, step)) return true;
        if (std::fabs(step) < 0.5) outer = range_.clamped(outer + step);
        return false;
    }

    /// The flash at ln T or ln p, and its distance to the target.
    bool flash(double outer, Side& to) {
        (at_T_ ? p_ : T_) = std::exp(outer);
        FlashOptions o;
        o.test = o_.test;
        for (Side const* s : {&lo_, &hi_})
            if (s->known && s->result.phases.size() > 1) o.start = &s->result;
        try {
            to.result = flash_pT(model_, p_, T_, z_, o);
        } catch (EquilibriumFailure const&) {
            return false;
        } catch (ThException const& e) {
            if (e.number != th_no_density) throw;
            return false;
        }
        ++iterations_;
        evaluations_ += to.result.certificate.evaluations;
        to.outer = outer;
        to.known = start(to.result) && solver_.evaluate();
        if (!to.known) return false;
        to.distance = solver_.distance();
        best_ = std::min(best_, std::fabs(to.distance));
        return std::isfinite(to.distance);
    }

    /// A place besides one where the flash was refused: within the bracket; back towards the known
    /// end; or, from a first guess, up and down by growing steps.
    double beside(double at, double first, int times) {
        static constexpr double kPart[] = {0.5, 0.25, 0.75, 0.1, 0.9, 0.6, 0.4};
        if (lo_.known && hi_.known) return lo_.outer + (hi_.outer - lo_.outer) * kPart[times % 7];
        if (lo_.known || hi_.known) return 0.5 * (at + (lo_.known ? lo_ : hi_).outer);
        const double step = 0.02 * (times + 1) * (times + 1) / 4 * (at_T_ ? 5.0 : 1.0);
        return range_.clamped(first + (times % 2 ? step : -step));
    }

    bool start(FlashResult const& q) { return solver_.start(q.T, q.p, q.phases, q.fraction); }

    /// Newton from a side, already set up in the solver; if it does not lead to the answer, `step`
    /// is where to look next.
    bool newton(Side const& side, double& step) {
        const bool converged = solver_.solve(kNewton);
        iterations_ += solver_.iterations;
        step = solver_.first_step;  // zero if not even one step was possible
        if (!converged) return false;
        if (accept()) return true;
        const double found = at_T_ ? solver_.p : solver_.T;
        if (found > 0.0) step = std::log(found) - side.outer;
        return false;
    }

    /// Newton from the phases of both ends together, mixed so that the target is met: where h or
    /// rho jumps these coexist. First without the one that both ends have in common.
    bool joined() {
        // linear in h, s and the volume
        const double below = at_T_ ? -std::expm1(-lo_.distance) : lo_.distance;
        const double above = at_T_ ? -std::expm1(-hi_.distance) : hi_.distance;
        const double part = below / (below - above);
        FlashResult q;
        const double outer = lo_.outer + part * (hi_.outer - lo_.outer);
        q.T = at_T_ ? T_ : std::exp(outer);
        q.p = at_T_ ? std::exp(outer) : p_;
        for (int end = 0; end < 2; ++end) {
            Side const& s = end ? hi_ : lo_;
            for (std::size_t k = 0; k < s.result.phases.size(); ++k) {
                q.phases.push_back(s.result.phases[k]);
                q.fraction.push_back((end ? part : 1.0 - part) * s.result.fraction[k]);
            }
        }
        const auto first = lo_.result.phases.size(), most = static_cast<std::size_t>(n_) + 1;
        if (q.phases.size() > 2) {
            std::size_t a = 0, b = first;
            double nearest = 1e300;
            for (std::size_t i = 0; i < first; ++i)
                for (std::size_t j = first; j < q.phases.size(); ++j) {
                    const double d = difference(q.phases[i], q.phases[j]);
                    if (d >= nearest) continue;
                    nearest = d;
                    a = i;
                    b = j;
                }
            FlashResult fewer = q;
            fewer.fraction[a] += fewer.fraction[b];
            fewer.fraction.erase(fewer.fraction.begin() + static_cast<std::ptrdiff_t>(b));
            fewer.phases.erase(fewer.phases.begin() + static_cast<std::ptrdiff_t>(b));
            if (fewer.phases.size() <= most && from(fewer)) return true;
        }
        return q.phases.size() <= most && from(q);
    }
    double difference(PhaseRecord const& a, PhaseRecord const& b) const {
        double d = 0.0;
        for (int i = 0; i < n_; ++i) {
            const int k = fluid_.index(i);
            d = std::max(d, std::fabs(std::log(a.x[k] * a.rho / (b.x[k] * b.rho))));
        }
        return d;
    }
    bool from(FlashResult const& q) {
        if (q.phases.empty() || q.phases.size() != q.fraction.size()) return false;
        for (PhaseRecord const& r : q.phases)
            if (r.x.size() != z_.size()) return false;
        FlashResult s;
        s.phases = q.phases;
        s.fraction = q.fraction;
        s.T = at_T_ ? T_ : q.T;
        s.p = at_T_ ? q.p : p_;
        if (!start(s)) return false;
        const bool converged = solver_.solve(kNewton);
        iterations_ += solver_.iterations;
        return converged && accept();
    }

    /// One phase at given T and rho, if that is stable.
    bool whole() {
        PhaseRecord r{given_, fluid_.expand(fluid_.z())};
        if (!solver_.start(T_, 1.0, {r}, {1.0}) || !solver_.evaluate()) return false;
        return solver_.phase[0].p > 0.0 && solver_.phase[0].S > 0.0 && accept();
    }

    /// The flash at (p, T) hit the target: its phases as they are.
    bool take(Side const& side) {
        (at_T_ ? p_ : T_) = std::exp(side.outer);
        return start(side.result) && solver_.evaluate() && accept();
    }

    /// Is the state in the solver a stable one, certified? Then it is the answer.
    bool accept() {
        std::vector<PhaseState>& s = solver_.phase;
        FlashResult q;
        q.T = at_T_ ? T_ : solver_.T;
        q.p = at_T_ ? solver_.p : p_;
        for (double a : {q.T, q.p})
            if (!(a > 0.0) || !std::isfinite(a)) return false;
        const double outer = std::log(at_T_ ? q.p : q.T);
        if ((lo_.known && outer < lo_.outer - 1e-9) || (hi_.known && outer > hi_.outer + 1e-9))
            return false;
        if (range_.clamped(outer) != outer) return false;
        q.certificate.target = std::fabs(solver_.distance());
        const bool certified = (s.size() < 2 || solver_.bound(q.certificate)) &&
                               flash_certified(fluid_, stability_, s, solver_.amount, q);
        Certificate& c = q.certificate;
        best_ = std::min(best_, std::max({c.target, c.dmu, c.dp}));
        if (!certified) return false;
        for (std::size_t k = 0; caloric_ && k < s.size(); ++k) {
            if (k == 0) q.h = q.s = 0.0;
            q.h += solver_.amount[k] * R * q.T * caloric_->h(s[k]);
            q.s += solver_.amount[k] * R * caloric_->s(s[k]);
        }
        c.evaluations = evaluations_ + fluid_.evaluations;
        c.test = stability_.kind;
        c.flag(o_.validity, q.T, q.p, fluid_.expand(fluid_.z()));
        answer_ = std::move(q);
        return true;
    }

    ModelN const& model_;
    Vector<double> const& z_;
    const Target target_;
    const bool at_T_;
    const double given_;
    FlashOptions const& o_;
    const FluidModel fluid_;
    const int n_;
    const std::unique_ptr<Caloric> caloric_;
    Stability stability_;
    SplitSolver solver_;
    SearchRange range_;
    Side lo_, hi_;
    FlashResult answer_;
    double T_ = 0.0, p_ = 0.0, best_ = 0.0;
    int iterations_ = 0;
    long evaluations_ = 0;
};
}  // namespace

FlashResult flash_ph(ModelN const& model, double p, double h, Vector<double> const& z,
                     FlashOptions const& options) {
    return TargetFlash(model, z, Target::h_at_p, p, h, options).run();
}
FlashResult flash_ps(ModelN const& model, double p, double s, Vector<double> const& z,
                     FlashOptions const& options) {
    return TargetFlash(model, z, Target::s_at_p, p, s, options).run();
}
FlashResult flash_Trho(ModelN const& model, double T, double rho, Vector<double> const& z,
                       FlashOptions const& options) {
    return TargetFlash(model, z, Target::rho_at_T, T, rho, options).run();
}

}  // namespace corvane
