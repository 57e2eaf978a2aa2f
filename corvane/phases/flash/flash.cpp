#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/flash/flash_parts.h>
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/stability/stability.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr int kSubstitutions = 2, kIterations = 60, kRestarts = 9;
constexpr double kConverged = 1e-11;  // of the potentials
constexpr double kFar = 2.0;          // of the potentials: substitution before Newton's method
constexpr double kNear = 1e-5;  // of the tangent-plane distance: a critical point may be near
constexpr double kNothing = 1e-14;    // amount of a phase that is no start
constexpr double kRounding = 1e-9;    // what rounding may leave of them, see Certificate
constexpr char kUntested[] = "the stability test did not converge from every start";

class Flash {
  public:
    Flash(ModelN const& model, double p, double T, Vector<double> const& z)
        : fluid_(model, z), p_(p), T_(T), n_(fluid_.size()), stability_(fluid_) {
        if (!(p > 0.0) || !(T > 0.0) || !std::isfinite(p) || !std::isfinite(T))
            throw ThException(th_out_of_range);
        for (PhaseState* s : {&whole_, &a_, &b_}) s->resize(n_);
        const auto n = static_cast<std::size_t>(n_);
        for (auto* v : {&l_, &v_, &lnK_, &K_, &x_, &y_, &step_, &down_}) v->resize(n);
        hess_.resize(n * n);
    }

    FlashResult run(FlashOptions const& o) {
        stability_.kind = o.test;
        if (n_ > 1 && o.start && o.start->phases.size() == 2 && start_from(*o.start) && split() &&
            certified(nullptr))
            return two_phases(o);
        FlashResult many = result();
        if (n_ > 2 && o.start && o.start->phases.size() > 2 && start_from(*o.start) &&
            flash_many(fluid_, stability_, start_, many))
            return finish(many, o);
        // Where Wilson's K-factors split the whole their split is tried first: if certified, that
        // is all that a test of the whole could have shown.
        if (n_ > 1 && split_by_wilson() && certified(nullptr)) return two_phases(o);
        if (!fluid_.evaluate_at(whole_, p_, T_, fluid_.z(), Root::stable, phase_H | phase_p))
            throw ThException(th_no_density);
        if (n_ == 1) return one_phase(o, 0.0);  // a pure fluid does not split at (p, T)
        // The first negative distance will do; where only the curvature told, a trial is looked
        // for.
        StabilityResult r = stability_.test(whole_, p_, nullptr, true, true);
        if (!r.stable && !r.other) r = stability_.test(whole_, p_, nullptr, false, true);
        if (r.stable) {
            if (r.unconverged) fail(kUntested);
            return one_phase(o, std::min(r.tpd, 0.0));
        }
        bool unstable = false, regular = false;
        if (std::fabs(r.tpd) < kNear && (regular = near())) return two_phases(o);
        pairs_.assign(1, {fluid_.z(), r.trial.w});
        for (int k = 0; k < kRestarts && r.other && !pairs_.empty(); ++k) {
            const Pair start = std::move(pairs_.back());
            pairs_.pop_back();
            for (int i = 0; i < n_; ++i) lnK_[i] = std::log(start.b[i] / start.a[i]);
            beta_ = 0.5;
            // The whole's trial need not enclose a split, a pair of phases has to.
            if ((k > 0 && !rachford_rice()) || !split()) continue;
            StabilityResult after;
            if (certified(&after)) return two_phases(o);
            if (after.stable && untested(after)) fail(kUntested);
            unstable = true;
            if (!after.other) continue;
            if (n_ > 2 && flash_many(fluid_, stability_, {a_.x, b_.x, after.trial.w}, many))
                return finish(many, o);
            pairs_.insert(pairs_.begin(), {fluid_.z(), after.trial.w});
            pairs_.push_back({a_.x, after.trial.w});
            pairs_.push_back({b_.x, after.trial.w});
        }
        if (!regular && near()) return two_phases(o);
        if (flash_columns(fluid_, stability_, many)) return finish(many, o);
        fail(unstable ? n_ > 2 ? "every split found is unstable: probably more phases"
                               : "every split found is unstable: probably next to three phases"
                      : "the split did not converge; change p or T a little, or give a start");
    }

    /// What Wilson's K-factors lead to, or the whole: not certified, not even tested.
    bool guess(FlashResult& q) {
        if (n_ > 1 && split_by_wilson()) {
            q = result();
            q.fraction = {1.0 - beta_, beta_};
            q.phases = {{a_.rho, fluid_.expand(a_.x)}, {b_.rho, fluid_.expand(b_.x)}};
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
    bool split_by_wilson() {
        for (int i = 0; i < n_; ++i) lnK_[i] = fluid_.wilson(i, T_) - std::log(p_);
        return rachford_rice() && split(true);
    }
    [[noreturn]] void fail(char const* advice) const {
        const std::string state = quantity("p", p_, "MPa") + ", " + quantity("T", T_, "K") + ", " +
                                  composition_text(fluid_.expand(fluid_.z()));
        throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, state, "flash_pT", iterations_,
                                 residual_, advice);
    }

    /// Compositions, and of two phases K-factors and fraction, of a neighbouring result.
    bool start_from(FlashResult const& start) {
        if (start.fraction.size() != start.phases.size()) return false;
        start_.assign(start.phases.size(), x_);
        for (std::size_t k = 0; k < start_.size(); ++k) {
            if (start.phases[k].x.size() != fluid_.model().mdl1.size()) return false;
            for (int i = 0; i < n_; ++i)
                if (!((start_[k][i] = start.phases[k].x[fluid_.index(i)]) > 0.0)) return false;
        }
        for (int i = 0; i < n_; ++i) lnK_[i] = std::log(start_[1][i] / start_[0][i]);
        beta_ = start.fraction[1];
        return true;
    }

    /// Fraction of phase b for lnK_ by Newton's method kept in a bracket; writes x_, y_ (sums 1).
    /// False if the whole fraction 0 … 1 has no root.
    bool rachford_rice() {
        std::vector<double> const& z = fluid_.z();
        double lo = 0.0, hi = 1.0, at0 = -1.0, at1 = 1.0;
        for (int i = 0; i < n_; ++i) {
            step_[i] = std::expm1(lnK_[i]);
            K_[i] = std::exp(lnK_[i]);  // which expm1 loses where it is small
            at0 += z[i] * K_[i];
            at1 -= z[i] / K_[i];
        }
        if (!(at0 > 0.0) || !(at1 < 0.0)) return false;
        double f = beta_ > 0.0 && beta_ < 1.0 ? beta_ : 0.5;
        for (int it = 0; it < 100; ++it) {
            double g = 0.0, d = 0.0;
            for (int i = 0; i < n_; ++i) {
                const double q = step_[i] / (1.0 + f * step_[i]);
                g += z[i] * q;
                d -= z[i] * q * q;
            }
            (g > 0.0 ? lo : hi) = f;
            double next = f - g / d;
            if (!(next > lo) || !(next < hi)) next = 0.5 * (lo + hi);
            const double moved = std::fabs(next - f);
            f = next;
            if (moved < 1e-14) break;
        }
        beta_ = f;
        // l is not z − v, which would lose a component of which phase a holds traces.
        double sum_x = 0.0, sum_y = 0.0;
        for (int i = 0; i < n_; ++i) {
            sum_x += x_[i] = z[i] / (1.0 + f * step_[i]);
            sum_y += y_[i] = x_[i] * K_[i];
        }
        for (int i = 0; i < n_; ++i) {
            v_[i] = f * y_[i];
            l_[i] = (1.0 - f) * x_[i];
            x_[i] /= sum_x;
            y_[i] /= sum_y;
        }
        return true;
    }

    /// Mole fractions from the amounts l_ in phase a and v_ in phase b; false if impossible.
    bool fractions() {
        double in_a = 0.0;
        beta_ = 0.0;
        for (int i = 0; i < n_; ++i) {
            if (!(v_[i] > 0.0) || !(l_[i] > 0.0)) return false;
            beta_ += v_[i];
            in_a += l_[i];
        }
        for (int i = 0; i < n_; ++i) {
            y_[i] = v_[i] / beta_;
            x_[i] = l_[i] / in_a;
        }
        return true;
    }
    /// Both phases at x_ and y_; sets gibbs_ and residual_.
    bool evaluate(int order) {
        if (order & phase_H) order |= phase_p;  // as the certificate asks for
        if (!fluid_.evaluate_at(a_, p_, T_, x_, Root::stable, order) ||
            !fluid_.evaluate_at(b_, p_, T_, y_, Root::stable, order))
            return false;
        gibbs_ = residual_ = 0.0;
        for (int i = 0; i < n_; ++i) {
            gibbs_ += l_[i] * a_.m[i] + v_[i] * b_.m[i];
            residual_ = std::max(residual_, std::fabs(b_.m[i] - a_.m[i]));
        }
        return std::isfinite(gibbs_);
    }

    /// Amounts from the K-factors of the present phases; the old ones where these enclose no split.
    bool substitute(int order) {
        K_factors();
        return rachford_rice() && evaluate(order);
    }
    /// A substitution, at the present fraction of phase b where the K-factors enclose no split;
    /// false and without effect if it does not lower the energy. Far from equilibrium it settles
    /// traces of any power of ten, of which a step in the amounts gains one.
    bool descended() {
        from_l_ = l_;
        from_v_ = v_;
        const double before = gibbs_;
        if ((substitute(phase_H) || at_fraction()) && gibbs_ < before) return true;
        restore();
        return false;
    }
    bool at_fraction() {
        for (int i = 0; i < n_; ++i) {
            const double in_b = beta_ * std::exp(lnK_[i]);
            l_[i] = fluid_.z()[i] * (1.0 - beta_) / (1.0 - beta_ + in_b);
            v_[i] = fluid_.z()[i] * in_b / (1.0 - beta_ + in_b);
        }
        return fractions() && evaluate(phase_H);
    }
    void K_factors() {
        for (int i = 0; i < n_; ++i)
            lnK_[i] = a_.m[i] - std::log(x_[i]) - (b_.m[i] - std::log(y_[i]));
        ++iterations_;
    }

    /// Two phases from lnK_. `guess`: give up where the phases vanish or grow alike.
    bool split(bool guess = false) {
        // The trial's K-factors need not enclose a split: then a little of b beside the whole. Those
        // of a trial beside the whole enclose one of no amount, or none, as their sum is rounded.
        if ((!rachford_rice() || (!guess && beta_ < kNothing)) && (small_amount(), !fractions()))
            return false;
        if (!evaluate(guess ? 0 : phase_H)) return false;
        for (int it = 1; it <= kSubstitutions; ++it) {
            if (!guess && !descended()) break;
            if (guess && !substitute(it < kSubstitutions ? 0 : phase_H)) return false;
        }
        for (int it = 0; it < kIterations && residual_ > kConverged; ++it) {
            ++iterations_;
            if ((residual_ > kFar && descended()) || newton()) continue;
            const double last = residual_;
            if (!substitute(phase_H) || (residual_ < kRounding / 10 && residual_ > 0.5 * last))
                break;
        }
        if (!(residual_ <= kRounding)) return false;
        double apart = 0.0;
        for (int i = 0; i < n_; ++i)
            apart = std::max(apart, std::fabs(std::log(a_.rho_i[i] / b_.rho_i[i])));
        return apart > 1e-4;
    }

    /// Two phases next to a critical point, from the whole and the lowest trial phase: between them
    /// the tangent-plane distance is a quartic in the way s from one to the other, whose double
    /// tangent gives the start for RegularPair. Whether the whole splits is decided by where it
    /// lies between the two phases found, since the distance itself is of fourth order there.
    bool near() {
        const StabilityResult r = stability_.test(whole_, p_, nullptr, false, true);
        if (!r.other) return n_ == 2 && on_spinodal();
        std::vector<double> const &z = fluid_.z(), &w = r.trial.w;
        if (n_ == 2 && fluid_.evaluate_at(b_, p_, T_, w, Root::stable, 0)) {
            a_ = whole_;  // whose distance to the trial may be rounding
            if (between(0.0)) return true;
        }
        double curvature = 0.0, least = -1e300, most = 1e300;
        for (int i = 0; i < n_; ++i) {
            step_[i] = w[i] - z[i];
            (step_[i] > 0.0 ? least : most) = step_[i] > 0.0 ? std::max(least, -z[i] / step_[i])
                                                             : std::min(most, -z[i] / step_[i]);
        }
        for (int i = 0; i < n_; ++i)
            for (int j = 0; j < n_; ++j) curvature += step_[i] * step_[j] * whole_.m_n(i, j);
        // t = s²·(A + B·s + C·s²) with t = tpd and t′ = 0 at s = 1
        const double A = 0.5 * curvature, C = A - 3.0 * r.tpd, B = 4.0 * r.tpd - 2.0 * A;
        const double middle = -B / (4.0 * C), square = (0.75 * B * B / C - 2.0 * A) / (4.0 * C);
        if (!(square > 0.0)) return false;
        const double lo = std::max(middle - std::sqrt(square), 0.9 * least),
                     hi = std::min(middle + std::sqrt(square), 0.9 * most);
        if (!(lo < 0.0) || !(hi > 0.0)) return false;
        for (int i = 0; i < n_; ++i) {
            x_[i] = z[i] + lo * step_[i];
            y_[i] = z[i] + hi * step_[i];
        }
        if (!fluid_.evaluate_at(a_, p_, T_, x_, Root::stable, 0) ||
            !fluid_.evaluate_at(b_, p_, T_, y_, Root::stable, 0))
            return false;
        const double in_b = -lo / b_.rho, in_a = hi / a_.rho;
        return between(in_b / (in_a + in_b));
    }
    /// So close that no distance is above rounding: starts from the curvature alone.
    bool on_spinodal() {
        std::vector<double> const& z = fluid_.z();
        const double room = z[0] * z[1];
        const double curvature = room * (whole_.m_n(0, 0) - whole_.m_n(0, 1) - whole_.m_n(1, 0) +
                                         whole_.m_n(1, 1));
        for (double width : {1.0, 0.3, 3.0, 0.1, 10.0}) {
            const double off = width * room * std::sqrt(std::fabs(curvature));
            if (!(off < 0.5 * std::min(z[0], z[1]))) continue;
            for (int i = 0; i < 2; ++i) {
                x_[i] = z[i] + (i == 0 ? off : -off);
                y_[i] = z[i] - (i == 0 ? off : -off);
            }
            if (fluid_.evaluate_at(a_, p_, T_, x_, Root::stable, 0) &&
                fluid_.evaluate_at(b_, p_, T_, y_, Root::stable, 0) && between(0.5))
                return true;
        }
        return false;
    }
    /// The pair that a_ and b_ lead to, and the whole between them; fraction: of the volume.
    bool between(double fraction) {
        RegularPair pair(fluid_);
        pair.T = T_;
        pair.p = p_;
        pair.fixed_fraction = false;
        pair.start(a_.rho_i, b_.rho_i, T_, fraction);
        const bool solved = pair.solve(kIterations);
        iterations_ += pair.iterations;
        fraction = pair.y.back();
        if (!solved || !(fraction > 0.0) || !(fraction < 1.0) || !pair.locally_stable())
            return false;
        a_ = pair.a;
        b_ = pair.b;
        beta_ = fraction * b_.rho / (fraction * b_.rho + (1.0 - fraction) * a_.rho);
        if (!flash_bound(fluid_, T_, p_, a_, b_, beta_, bounds_) || !bounds_.holds()) return false;
        const StabilityResult r = stability_.test(a_, p_, &b_, true);
        tpd_ = std::min(0.0, r.tpd);
        return r.stable && !r.unconverged;
    }

    /// A twentieth of what phase b could take of the limiting component.
    void small_amount() {
        double most = 1e300, sum = 0.0;
        for (int i = 0; i < n_; ++i) sum += y_[i] = fluid_.z()[i] * std::exp(lnK_[i]);
        for (int i = 0; i < n_; ++i) most = std::min(most, fluid_.z()[i] * sum / y_[i]);
        for (int i = 0; i < n_; ++i) l_[i] = fluid_.z()[i] - (v_[i] = 0.05 * most * y_[i] / sum);
    }

    /// One step of Newton's method on the Gibbs energy; false if no shorter step lowers it. Where
    /// the energy is not convex, multiples of the ideal part's diagonal make the matrix definite
    /// (Michelsen, 1982), which turns the step towards a substitution.
    bool newton() {
        for (int i = 0; i < n_; ++i)
            for (int j = 0; j < n_; ++j)
                hess_[i * n_ + j] = b_.m_n(i, j) / beta_ + a_.m_n(i, j) / (1.0 - beta_);
        from_l_ = l_;
        from_v_ = v_;
        second_ = hess_;
        for (int i = 0; i < n_; ++i) down_[i] = a_.m[i] - b_.m[i];
        for (double shift : {0.0, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 0.1, 1.0, 10.0}) {
            hess_ = second_;
            step_ = down_;
            for (int i = 0; i < n_; ++i)
                hess_[i * n_ + i] += shift * (1.0 / from_v_[i] + 1.0 / from_l_[i]);
            if (!cholesky_solve(n_, hess_.data(), step_.data()) || !line_search()) continue;
            if (shift > 0.0) lengthen();
            return true;
        }
        return false;
    }
    /// The longest of some steps along step_ that lowers the energy; else all is as it was.
    bool line_search() {
        const double before = gibbs_, last = residual_;
        double scale = 1.0;
        for (int i = 0; i < n_; ++i) {
            const double room = step_[i] > 0.0 ? l_[i] : v_[i];
            scale = std::min(scale, 0.9 * room / std::max(std::fabs(step_[i]), 1e-300));
        }
        for (int k = 0; k < 12; ++k, scale *= 0.4) {
            for (int i = 0; i < n_; ++i) {
                v_[i] = from_v_[i] + scale * step_[i];
                l_[i] = from_l_[i] - scale * step_[i];
            }
            if (!fractions() || !evaluate(phase_H)) continue;
            // Next to the solution the energy is flat to rounding, and the potentials tell.
            const double rounding = 1e-13 * std::fabs(before);
            if (gibbs_ < before - rounding ||
                (gibbs_ < before + rounding && residual_ < 0.9 * last))
                return true;
        }
        restore();
        return false;
    }
    /// A shift makes steps short where the energy is flat: longer ones while it falls.
    void lengthen() {
        for (double scale = 4.0; scale < 1e4; scale *= 4.0) {
            const double before = gibbs_;
            const std::vector<double> l = l_, v = v_;
            for (int i = 0; i < n_; ++i) {
                v_[i] = from_v_[i] + scale * step_[i];
                l_[i] = from_l_[i] - scale * step_[i];
            }
            if (fractions() && evaluate(phase_H) && gibbs_ < before) continue;
            from_l_ = l;
            from_v_ = v;
            return restore();
        }
    }
    void restore() {
        l_ = from_l_;
        v_ = from_v_;
        fractions();
        evaluate(phase_H);
    }

    bool certified(StabilityResult* r) {
        if (!flash_bound(fluid_, T_, p_, a_, b_, beta_, bounds_))
            return false;
        StabilityResult found = stability_.test(a_, p_, &b_, true);
        if (r && !found.stable) found = stability_.test(a_, p_, &b_, false);
        tpd_ = std::min(0.0, found.tpd);
        const bool stable = found.stable && !untested(found);
        if (r) *r = std::move(found);
        return stable && stability_.locally_stable(b_);
    }
    /// The complete test of a binary saw no density somewhere. Of three components and more a start
    /// that is lost among traces is no sign of a further phase.
    bool untested(StabilityResult const& r) const { return n_ == 2 && r.unconverged; }

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
        flash_record(fluid_, {&a_, &b_}, {1.0 - beta_, beta_}, q);
        q.certificate.tpd = tpd_;
        return finish(q, o);
    }
    FlashResult finish(FlashResult& q, FlashOptions const& o) {
        q.certificate.evaluations = fluid_.evaluations;
        q.certificate.test = stability_.kind;
        q.certificate.flag(o.validity, T_, p_, fluid_.expand(fluid_.z()));
        residual_ = std::max(q.certificate.dmu, q.certificate.dp);
        if (!q.certificate.holds() || !(q.certificate.balance < 1e-12))
            fail("the result misses its tolerances: model without exact derivatives?");
        return q;
    }

    const FluidModel fluid_;
    const double p_, T_;
    const int n_;
    Stability stability_;
    PhaseState whole_, a_, b_;
    Certificate bounds_;  // of a_ and b_
    struct Pair {
        std::vector<double> a, b;  ///< mole fractions
    };
    std::vector<std::vector<double>> start_;
    std::vector<Pair> pairs_;  ///< starts for splits, the most promising last
    std::vector<double> l_, v_, lnK_, K_, x_, y_, step_, hess_;
    std::vector<double> from_l_, from_v_, second_, down_;  // of newton and line_search
    double beta_ = 0.5, gibbs_ = 0.0, residual_ = 0.0, tpd_ = 0.0;
    int iterations_ = 0;
};
}  // namespace

bool detail::flash_guess(ModelN const& model, double p, double T, Vector<double> const& z,
                 FlashResult& result) {
    return Flash(model, p, T, z).guess(result);
}

FlashResult flash_pT(ModelN const& model, double p, double T, Vector<double> const& z,
                     FlashOptions const& options) {
    return Flash(model, p, T, z).run(options);
}

}  // namespace corvane
