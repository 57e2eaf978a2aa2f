#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/coexistence/coexistence.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/flash/flash_parts.h>
#include <corvane/phases/flash/two_phases.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {
constexpr int kIterations = 60, kRestarts = 9;
constexpr double kNear = 1e-5;     // of the tangent-plane distance: a critical point may be near
constexpr double kPurest = 1e-12;  // of the others in one that is nearly pure
constexpr char kUntested[] = "the stability test did not converge from every start";

class Flash {
  public:
    Flash(ModelN const& model, Vector<double> const& z)
        : fluid_(model, z), n_(fluid_.size()), stability_(fluid_), two_(fluid_), bound_(fluid_, 2) {
        whole_.resize(n_);
    }
    /// The same work space for another call; false if that has another number of components.
    bool again(ModelN const& model, Vector<double> const& z) {
        fluid_.assign(model, z);
        stability_.forget();
        bounds_ = Certificate();
        tpd_ = 0.0;
        return fluid_.size() == n_;
    }
    void begin(double p, double T) {
        if (!(p > 0.0) || !(T > 0.0) || !std::isfinite(p) || !std::isfinite(T))
            throw ThException(th_out_of_range);
        p_ = p;
        T_ = T;
        two_.begin(p, T);
    }

    FlashResult run(FlashOptions const& o) {
        stability_.kind = o.test;
        if (n_ > 1 && o.start && o.start->phases.size() == 2 && start_from(*o.start) &&
            two_.solve() && certified(nullptr))
            return two_phases(o);
        FlashResult many = result();
        if (n_ > 2 && o.start && o.start->phases.size() > 2 && start_from(*o.start) &&
            flash_many(fluid_, stability_, start_, many))
            return finish(many, o);
        // Where Wilson's K-factors split the whole their split is tried first: if certified, that
        // is all that a test of the whole could have shown.
        if (n_ > 1 && two_.wilson() && certified(nullptr)) return two_phases(o);
        if (!fluid_.evaluate_at(whole_, p_, T_, fluid_.z(), Root::stable, phase_H | phase_p))
            throw ThException(th_no_density);
        if (n_ == 1) return one_phase(o, 0.0);  // a pure fluid does not split at (p, T)
        // The first negative distance will do. Where only the curvature told, a trial is looked
        // for: the lowest of simple ones, mostly, and only then that of all descents.
        FlashResult found;
        bool unstable = false, regular = false;
        StabilityResult r = stability_.test(whole_, p_, nullptr, true, true);
        if (!r.stable && !r.other) {
            if (n_ > 2 && (r = stability_.lowest_start(whole_, p_)).tpd < -kNear &&
                split_from(r.trial.w, 1, o, found, unstable))
                return found;
            r = stability_.test(whole_, p_, nullptr, false, true);
        }
        if (r.stable) {
            if (r.unconverged) fail(kUntested);
            return one_phase(o, std::min(r.tpd, 0.0));
        }
        if (std::fabs(r.tpd) < kNear && (regular = near())) return two_phases(o);
        if (r.other && split_from(r.trial.w, kRestarts, o, found, unstable)) return found;
        if (!regular && near()) return two_phases(o);
        if (flash_columns(fluid_, stability_, many)) return finish(many, o);
        fail(unstable ? n_ > 2 ? "every split found is unstable: probably more phases"
                               : "every split found is unstable: probably next to three phases"
                      : "the split did not converge; change p or T a little, or give a start");
    }

    /// What Wilson's K-factors lead to, or the whole: not certified, not even tested.
    bool guess(FlashResult& q) {
        if (n_ > 1 && two_.wilson()) {
            q = result();
            q.fraction = {1.0 - two_.beta, two_.beta};
            q.phases = {{two_.a.rho, fluid_.expand(two_.a.x)},
                        {two_.b.rho, fluid_.expand(two_.b.x)}};
        } else {
            if (!fluid_.evaluate_at(whole_, p_, T_, fluid_.z(), Root::stable, 0)) return false;
            q = result();
            q.fraction = {1.0};
            q.phases = {{whole_.rho, fluid_.expand(whole_.x)}};
        }
        q.certificate.evaluations = fluid_.evaluations;
        return true;
    }

  private:
    [[noreturn]] void fail(std::string const& advice) const {
        const std::string state = quantity("p", p_, "MPa") + ", " + quantity("T", T_, "K") + ", " +
                                  composition_text(fluid_.expand(fluid_.z()));
        throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, state, "flash_pT",
                                 two_.iterations, two_.residual,
                                 without_density().value_or(advice));
    }
    /// What no other start can change: far below its range an equation may have no liquid.
    std::optional<std::string> without_density() const {
        std::vector<double> x(fluid_.z());
        double rho[2], gibbs[2];
        for (int k = 0; n_ > 2 && k < n_; ++k) {
            for (int i = 0; i < n_; ++i) x[i] = i == k ? 1.0 : kPurest * fluid_.z()[i];
            if (fluid_.densities(p_, T_, x, rho, gibbs) == 0)
                return "the model has no density for " + std::string(fluid_.pure(k).name()) +
                       " when nearly pure, as a phase may be";
        }
        return {};
    }

    /// Compositions, and of two phases K-factors and fraction, of a neighbouring result.
    bool start_from(FlashResult const& start) {
        if (start.fraction.size() != start.phases.size()) return false;
        start_.assign(start.phases.size(), fluid_.z());
        for (std::size_t k = 0; k < start_.size(); ++k) {
            if (start.phases[k].x.size() != fluid_.model().mdl1.size()) return false;
            for (int i = 0; i < n_; ++i)
                if (!((start_[k][i] = start.phases[k].x[fluid_.index(i)]) > 0.0)) return false;
        }
        for (int i = 0; i < n_; ++i) two_.lnK[i] = std::log(start_[1][i] / start_[0][i]);
        two_.beta = start.fraction[1];
        return true;
    }

    /// Two phases next to a critical point, from the whole and the lowest trial phase: between them
    /// the tangent-plane distance is a quartic in the way s from one to the other, whose double
    /// tangent gives the start for RegularPair. Whether the whole splits is decided by where it
    /// lies between the two phases found, since the distance itself is of fourth order there.
    bool near() {
        const StabilityResult r = stability_.test(whole_, p_, nullptr, false, true);
        if (!r.other) return on_spinodal();
        std::vector<double> const &z = fluid_.z(), &w = r.trial.w;
        if (n_ == 2 && fluid_.evaluate_at(two_.b, p_, T_, w, Root::stable, 0)) {
            two_.a = whole_;  // whose distance to the trial may be rounding
            if (between(0.0)) return true;
        }
        std::vector<double> x(z), y(z), step(z);
        double curvature = 0.0, least = -1e300, most = 1e300;
        for (int i = 0; i < n_; ++i) {
            step[i] = w[i] - z[i];
            (step[i] > 0.0 ? least : most) =
                step[i] > 0.0 ? std::max(least, -z[i] / step[i]) : std::min(most, -z[i] / step[i]);
        }
        for (int i = 0; i < n_; ++i)
            for (int j = 0; j < n_; ++j) curvature += step[i] * step[j] * whole_.m_n(i, j);
        // t = s²·(A + B·s + C·s²) with t = tpd and t′ = 0 at s = 1
        const double A = 0.5 * curvature, C = A - 3.0 * r.tpd, B = 4.0 * r.tpd - 2.0 * A;
        const double middle = -B / (4.0 * C), square = (0.75 * B * B / C - 2.0 * A) / (4.0 * C);
        if (!(square > 0.0)) return false;
        const double lo = std::max(middle - std::sqrt(square), 0.9 * least),
                     hi = std::min(middle + std::sqrt(square), 0.9 * most);
        if (!(lo < 0.0) || !(hi > 0.0)) return false;
        for (int i = 0; i < n_; ++i) {
            x[i] = z[i] + lo * step[i];
            y[i] = z[i] + hi * step[i];
        }
        if (!fluid_.evaluate_at(two_.a, p_, T_, x, Root::stable, 0) ||
            !fluid_.evaluate_at(two_.b, p_, T_, y, Root::stable, 0))
            return false;
        const double in_b = -lo / two_.b.rho, in_a = hi / two_.a.rho;
        return between(in_b / (in_a + in_b));
    }
    /// So close that no distance is above rounding: starts from the curvature alone, along its
    /// eigenvector.
    bool on_spinodal() {
        CriticalConditions spinodal(fluid_);
        if (!spinodal.eigen({std::log(whole_.rho), std::log(T_)}, 2)) return false;
        RegularPair pair(fluid_);
        for (double width : {1.0, 0.3, 3.0, 0.1, 10.0}) {
            pair.start_critical(whole_.rho_i, spinodal.u, T_);
            pair.y[2 * n_] = width * std::sqrt(std::fabs(spinodal.lambda));
            pair.y.back() = 0.5;
            if (pair.distance() < RegularPair::kNear && between(pair)) return true;
        }
        return false;
    }
    /// The pair that both phases lead to, and the whole between them; fraction: of the volume.
    bool between(double fraction) {
        RegularPair pair(fluid_);
        pair.start(two_.a.rho_i, two_.b.rho_i, T_, fraction);
        return between(pair);
    }
    bool between(RegularPair& pair) {
        pair.T = T_;
        pair.p = p_;
        pair.fixed_fraction = false;
        const bool solved = pair.solve(kIterations);
        two_.iterations += pair.iterations;
        const double fraction = pair.y.back();
        if (!solved || !(fraction > 0.0) || !(fraction < 1.0) || !pair.locally_stable())
            return false;
        two_.a = pair.a;
        two_.b = pair.b;
        two_.beta = fraction * two_.b.rho / (fraction * two_.b.rho + (1.0 - fraction) * two_.a.rho);
        // By the lever if there is one: the pair's own fraction carries its residuals over its
        // distance.
        double along = 0.0, square = 0.0;
        for (int i = 0; i < n_; ++i) {
            const double way = two_.b.x[i] - two_.a.x[i];
            along += way * (fluid_.z()[i] - two_.a.x[i]);
            square += way * way;
        }
        if (along > 0.0 && along < square) two_.beta = along / square;
        if (!flash_bound(bound_, T_, p_, two_.a, two_.b, two_.beta, bounds_) || !bounds_.holds())
            return false;
        const StabilityResult r = stability_.test(two_.a, p_, &two_.b, true);
        tpd_ = std::min(0.0, r.tpd);
        return r.stable && !r.unconverged;
    }

    bool certified(StabilityResult* r) {
        if (!flash_bound(bound_, T_, p_, two_.a, two_.b, two_.beta, bounds_)) return false;
        StabilityResult found = stability_.test(two_.a, p_, &two_.b, true);
        if (r && !found.stable && n_ == 2) found = stability_.test(two_.a, p_, &two_.b, false);
        tpd_ = std::min(0.0, found.tpd);
        const bool stable = found.stable && !untested(found);
        if (r) *r = std::move(found);
        return stable && stability_.locally_stable(two_.b);
    }
    /// Certified phases from a trial below the plane of the whole; so many splits are tried.
    bool split_from(std::vector<double> const& trial, int splits, FlashOptions const& o,
                    FlashResult& q, bool& unstable) {
        FlashResult many = result();
        pairs_.assign(1, {fluid_.z(), trial});
        for (int k = 0; k < splits && !pairs_.empty(); ++k) {
            const Pair start = std::move(pairs_.back());
            pairs_.pop_back();
            for (int i = 0; i < n_; ++i) two_.lnK[i] = std::log(start.b[i] / start.a[i]);
            two_.beta = 0.5;
            // The whole's trial need not enclose a split, a pair of phases has to.
            if ((k > 0 && !two_.rachford_rice()) || !two_.solve()) continue;
            StabilityResult after;
            if (certified(&after)) return q = two_phases(o), true;
            if (after.stable && untested(after)) fail(kUntested);
            unstable = true;
            if (third_phase(after, many)) return q = finish(many, o), true;
            if (n_ > 2 && !after.stable) {
                // The first trial below does mostly; the lowest takes all descents to find.
                after = stability_.test(two_.a, p_, &two_.b, false);
                if (third_phase(after, many)) return q = finish(many, o), true;
            }
            if (!after.other) continue;
            pairs_.insert(pairs_.begin(), {fluid_.z(), after.trial.w});
            pairs_.push_back({two_.a.x, after.trial.w});
            pairs_.push_back({two_.b.x, after.trial.w});
        }
        return false;
    }
    /// Three phases from the split found and a trial below its tangent plane.
    bool third_phase(StabilityResult const& r, FlashResult& many) {
        return n_ > 2 && r.other &&
               flash_many(fluid_, stability_, {two_.a.x, two_.b.x, r.trial.w}, many);
    }
    /// The model has no density, or no liquid, somewhere. Of three components and more a start that
    /// is lost among traces is no sign of a further phase.
    bool untested(StabilityResult const& r) const { return r.unseen || (n_ == 2 && r.unconverged); }

    FlashResult result() const {
        FlashResult q;
        q.T = T_;
        q.p = p_;
        return q;
    }
    FlashResult one_phase(FlashOptions const& o, double tpd) {
        FlashResult q = result();
        flash_record(fluid_, {&whole_}, {1.0}, q);
        q.certificate.tpd = tpd;
        return finish(q, o);
    }
    FlashResult two_phases(FlashOptions const& o) {
        FlashResult q = result();
        q.certificate = bounds_;
        flash_record(fluid_, {&two_.a, &two_.b}, {1.0 - two_.beta, two_.beta}, q);
        q.certificate.tpd = tpd_;
        return finish(q, o);
    }
    FlashResult finish(FlashResult& q, FlashOptions const& o) {
        q.certificate.evaluations = fluid_.evaluations;
        q.certificate.test = stability_.kind;
        q.certificate.flag(o.validity, T_, p_, fluid_.expand(fluid_.z()));
        two_.residual = std::max(q.certificate.dmu, q.certificate.dp);
        if (!q.certificate.holds() || !(q.certificate.balance < 1e-12))
            fail("the result misses its tolerances: model without exact derivatives?");
        return std::move(q);
    }

    FluidModel fluid_;
    const int n_;
    double p_ = 0.0, T_ = 0.0;
    Stability stability_;
    PhaseState whole_;
    TwoPhases two_;
    CoexistenceSolver bound_;  // of flash_bound
    Certificate bounds_;       // of two_
    struct Pair {
        std::vector<double> a, b;  ///< mole fractions
    };
    std::vector<std::vector<double>> start_;
    std::vector<Pair> pairs_;  ///< starts for splits, the most promising last
    double tpd_ = 0.0;
};

/// A flash in the work space of the thread's last one: allocations were a sixth of its time.
template <class Call>
auto with_flash(ModelN const& model, double p, double T, Vector<double> const& z, Call call) {
    thread_local std::unique_ptr<Flash> spare;
    std::unique_ptr<Flash> flash = std::move(spare);  // a model may itself call for one meanwhile
    if (!flash || !flash->again(model, z)) flash = std::make_unique<Flash>(model, z);
    flash->begin(p, T);
    auto found = call(*flash);
    spare = std::move(flash);
    return found;
}
}  // namespace

bool detail::flash_guess(ModelN const& model, double p, double T, Vector<double> const& z,
                         FlashResult& result) {
    return with_flash(model, p, T, z, [&](Flash& flash) { return flash.guess(result); });
}

FlashResult flash_pT(ModelN const& model, double p, double T, Vector<double> const& z,
                     FlashOptions const& options) {
    return with_flash(model, p, T, z, [&](Flash& flash) { return flash.run(options); });
}

}  // namespace corvane
