// Least squares: the Levenberg–Marquardt method in Moré's form (Lecture Notes in Math. 630 (1978)
// 105): columns scaled, a trust region in scaled parameters, every step from a QR factorisation of
// the damped Jacobian. Between steps that go well the Jacobian is updated after Broyden (Math.
// Comp. 19 (1965) 577), which halves the evaluations of a fit that ends at zero.
#include <corvane/core/numelo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr int max_trials = 24;    // per iteration
constexpr int max_narrowing = 6;  // smaller difference steps where f throws
constexpr int max_damping = 10;   // trials to match the damping to the trust region
constexpr int max_slow = 20;      // iterations of a root search that hardly lower the sum
constexpr double difference_step = 3e-6;
constexpr double first_radius = 100.0;  // of the trust region, in units of the scaled parameters
constexpr double keep_jacobian = 0.01;  // the sum must fall to this part of the sum before
constexpr double small_step = 1e-11, last_digit = 4e-16;
// Out of iterations: a failure above this sum, or with steps above this, unless the sum is nothing.
constexpr double accepted_sum = 1e-8, accepted_step = 1e-6, vanished_sum = 1e-30;
// A square system is solved below this sum, or where its residuals are rounding: this part of the
// terms that they are the sum of, as steps of this size show them.
constexpr double solved_sum = 1e-10, rounding = 1e-12, wide_step = 1e-3;
// Where a parameter has no slope: how far off its influence is looked for, and how often a better
// point found in this way is the new start.
constexpr double far_off[] = {1e-4, 1e-2, 1.0};
constexpr int max_restarts = 20;

class Fit {
  public:
    Fit(numelo_residual f, void* ctx, Vector<double>& x, int n)
        : f_(f),
          ctx_(ctx),
          x_(x),
          trial_(x),
          r_(f(x, ctx)),
          n_(n),
          m_(x.n),
          jac_(n * m_),
          qr_((n + m_) * m_),
          rhs_(n + m_),
          diag_(m_),
          scale_(m_),
          step_(m_),
          work_(m_) {
        if (r_.n != n) throw MthException(mth_dimensions);
        sum_ = r_.sum2();
        if (!std::isfinite(sum_)) throw MthException(mth_out_of_range);
    }

    double run(int maxit, bool trace) {
        int small = 0, slow = 0;
        for (int it = 0; sum_ > 0.0 && m_ > 0; ++it) {
            if (it >= maxit || slow == max_slow) {
                if (sum_ > accepted_sum || (sum_ > vanished_sum && moved_ > accepted_step))
                    throw MthException(mth_iterations);
                break;
            }
            const double sum_before = sum_, moved_before = moved_;
            if ((!current_ && !jacobian()) || !improve()) break;
            if (trace)
                std::fprintf(stderr, "fit_marquardt %3d  sum %.6e  step %.1e  damping %.1e\n",
                             it + 1, sum_, moved_, damping_);
            slow = n_ == m_ && sum_ > 0.9 * sum_before ? slow + 1 : 0;
            small = moved_ < small_step ? small + 1 : 0;
            // The next step of a fast converging sequence would be about moved_²/moved_before.
            const bool settled =
                it > 0 && moved_ < 1e-7 && moved_ * moved_ < last_digit * moved_before;
            if (moved_ < last_digit || small == 2 || settled) {
                if (failure_ && !stationary()) give_up();  // steps have shrunk before a wall
                if (n_ == m_ || was_fresh_) break;
                current_ = false;  // a minimum above zero needs a true Jacobian
            }
        }
        const bool failed = n_ == m_ && !solved();
        if (!at_x_) f_(x_, ctx_);  // callers read what the last evaluation left in the context
        if (failed) throw MthException(mth_iterations);
        return sum_;
    }

  private:
    /// Residuals at trial_, or false where f throws or is not finite.
    bool evaluate(Vector<double>& r) {
        at_x_ = false;
        try {
            r = f_(trial_, ctx_);
        } catch (...) {
            failure_ = std::current_exception();
            return false;
        }
        if (r.n != n_) throw MthException(mth_dimensions);
        return std::isfinite(r.sum2());
    }

    /// Whether the residuals of a square system are zero as far as anybody can tell: small, or
    /// rounding against the changes that steps of a thousandth make. (Not against the Jacobian, which
    /// is as large as one likes where f jumps.)
    bool solved() {
        if (sum_ <= solved_sum) return true;
        trial_ = x_;
        std::vector<double> terms(n_);
        Vector<double> r;
        for (int j = 0; j < m_; ++j) {
            trial_[j] = x_[j] * (1.0 + wide_step);
            if (!evaluate(r)) return false;
            for (int i = 0; i < n_; ++i) terms[i] += std::fabs(r[i] - r_[i]) / wide_step;
            trial_[j] = x_[j];
        }
        for (int i = 0; i < n_; ++i)
            if (!(std::fabs(r_[i]) <= rounding * terms[i])) return false;
        return true;
    }

    /// Whether r differs from the residuals at x by more than their rounding.
    bool differs(Vector<double> const& r) const {
        for (int i = 0; i < n_; ++i)
            if (std::fabs(r[i] - r_[i]) > 4e-16 * (std::fabs(r[i]) + std::fabs(r_[i]))) return true;
        return false;
    }

    /// A parameter without slope at x: an extremum, or no influence at all, which is MthException
    /// 16. Column j of jac_ becomes the central difference to the nearest points with other
    /// residuals; the result is the norm of the one-sided slope there. `best` and `best_sum` receive
    /// a point with a lower sum, if one is met.
    double chord(int j, Vector<double>& best, double& best_sum) {
        Vector<double> side[2];
        double norm = 0.0;
        for (double part : far_off) {
            double step[2] = {};
            bool seen = false;
            for (int k = 0; k < 2; ++k) {
                trial_[j] = x_[j] + (k ? -part : part) * std::max(std::fabs(x_[j]), 1.0);
                if (!evaluate(side[k])) continue;
                step[k] = trial_[j] - x_[j];
                seen = seen || differs(side[k]);
                if (side[k].sum2() < best_sum) {
                    best_sum = side[k].sum2();
                    best = trial_;
                }
            }
            if (!seen || norm > 0.0) continue;
            Vector<double> const& high = step[0] != 0.0 ? side[0] : r_;
            Vector<double> const& low = step[1] != 0.0 ? side[1] : r_;
            for (int i = 0; i < n_; ++i) {
                jac_[j * n_ + i] = (high[i] - low[i]) / (step[0] - step[1]);
                norm = std::max({norm, std::fabs(high[i] - r_[i]), std::fabs(low[i] - r_[i])});
            }
            norm /= step[0] != 0.0 ? step[0] : -step[1];
        }
        trial_[j] = x_[j];
        if (!(norm > 0.0)) throw MthException(mth_irrelevant, j);
        return norm;
    }

    /// Fills jac_ by columns. False (or the stored exception) if a parameter cannot be moved at
    /// all. Where one has no slope, x may move to a better point.
    bool jacobian() {
        while (true) {
            Vector<double> better;
            if (!differences(better)) return false;
            if (better.n == 0 || restarts_++ == max_restarts) return true;
            trial_ = x_ = better;
            if (!evaluate(r_)) throw MthException(mth_out_of_range);  // f is not a function
            sum_ = r_.sum2();
            at_x_ = true;
        }
    }

    /// The difference quotients at x; `better` receives what chord meets.
    bool differences(Vector<double>& better) {
        const bool central = n_ > m_ && sum_ < 1e-6;
        const std::exception_ptr before = failure_;
        double better_sum = sum_;
        Vector<double> up, down;
        for (int j = 0; j < m_; ++j) {
            const double least = m_ == 1 || x_[j] == 0.0 ? 1e-2 : 0.0;
            double h = difference_step * std::max(std::fabs(x_[j]), least);
            bool plus = false, minus = false;
            double hp = 0.0, hm = 0.0;
            for (int k = 0; !plus && !minus; ++k, h *= 0.03) {
                if (k > max_narrowing || x_[j] + h == x_[j]) return give_up();
                trial_[j] = x_[j] + h;
                hp = trial_[j] - x_[j];
                plus = evaluate(up);
                if (plus && !central) break;
                trial_[j] = x_[j] - h;
                hm = x_[j] - trial_[j];
                minus = evaluate(down);
            }
            trial_[j] = x_[j];
            Vector<double> const& high = plus ? up : r_;
            Vector<double> const& low = minus ? down : r_;
            const double width = (plus ? hp : 0.0) + (minus ? hm : 0.0);
            double norm = 0.0;
            for (int i = 0; i < n_; ++i) {
                jac_[j * n_ + i] = (high[i] - low[i]) / width;
                norm = std::hypot(norm, jac_[j * n_ + i]);
            }
            if (!differs(high) && !differs(low)) norm = chord(j, better, better_sum);
            scale_[j] = std::max(scale_[j], norm);
        }
        if (radius_ == 0.0) {
            radius_ = first_radius * scaled_norm(x_.data);
            if (radius_ == 0.0) radius_ = first_radius;
        }
        current_ = fresh_ = true;
        failure_ = before;  // where one side failed, the other served
        return true;
    }

    double scaled_norm(double const* p) const {
        double s = 0.0;
        for (int j = 0; j < m_; ++j) s = std::hypot(s, scale_[j] * p[j]);
        return s;
    }

    /// step_ = the solution of [J; sqrt(damping)·D]·p = −[r; 0] by Householder's QR; leaves R in
    /// qr_ above diag_. False if the matrix is rank deficient.
    bool solve(double damping) {
        const int rows = damping > 0.0 ? n_ + m_ : n_;
        for (int j = 0; j < m_; ++j) {
            double* column = &qr_[j * (n_ + m_)];
            std::copy_n(&jac_[j * n_], n_, column);
            work_[j] = std::sqrt(std::inner_product(column, column + n_, column, 0.0));
            std::fill_n(column + n_, m_, 0.0);
            column[n_ + j] = std::sqrt(damping) * scale_[j];
        }
        for (int i = 0; i < n_ + m_; ++i) rhs_[i] = i < n_ ? -r_[i] : 0.0;
        for (int j = 0; j < m_; ++j) {
            double* v = &qr_[j * (n_ + m_)];
            double norm = 0.0;
            for (int i = j; i < rows; ++i) norm = std::hypot(norm, v[i]);
            if (!(norm > 1e-14 * work_[j])) return false;
            diag_[j] = v[j] > 0.0 ? -norm : norm;
            v[j] -= diag_[j];
            const double beta = 1.0 / (diag_[j] * v[j]);
            auto reflect = [&](double* column) {
                double dot = 0.0;
                for (int i = j; i < rows; ++i) dot += v[i] * column[i];
                for (int i = j; i < rows; ++i) column[i] += beta * dot * v[i];
            };
            for (int k = j + 1; k < m_; ++k) reflect(&qr_[k * (n_ + m_)]);
            reflect(rhs_.data());
        }
        for (int j = m_ - 1; j >= 0; --j) {
            double sum = rhs_[j];
            for (int k = j + 1; k < m_; ++k) sum -= qr_[k * (n_ + m_) + j] * step_[k];
            step_[j] = sum / diag_[j];
        }
        return true;
    }

    /// |R^−T·D²·p|² / |D·p|²: minus the slope of ln|D·p| with the damping (Moré, eq. 5.8).
    double slope(double length) {
        double sum = 0.0;
        for (int j = 0; j < m_; ++j) {
            double w = scale_[j] * scale_[j] * step_[j] / length;
            for (int k = 0; k < j; ++k) w -= qr_[j * (n_ + m_) + k] * work_[k];
            work_[j] = w / diag_[j];
            sum += work_[j] * work_[j];
        }
        return sum;
    }

    /// Step of scaled length radius_ (within a tenth), or the undamped step if that is shorter:
    /// Newton steps in the damping, between bounds (Moré, section 5).
    void bounded_step() {
        damping_ = 0.0;
        const bool full = solve(0.0);
        if (!full) std::fill(step_.begin(), step_.end(), 0.0);
        double length = full ? scaled_norm(step_.data()) : 0.0;
        if (full && length <= 1.1 * radius_) return;
        double steepest = 0.0;
        for (int j = 0; j < m_; ++j) {
            double const* column = &jac_[j * n_];
            const double g = std::inner_product(column, column + n_, r_.data, 0.0);
            steepest = std::hypot(steepest, g / scale_[j]);
        }
        double high = steepest / radius_;
        double low = full ? (length / radius_ - 1.0) / slope(length) : 0.0;
        damping_ = full ? std::clamp(steepest / length, low, std::max(low, high)) : 1e-3 * high;
        for (int k = 0; k < max_damping && damping_ > 0.0 && solve(damping_); ++k) {
            length = scaled_norm(step_.data());
            const double excess = length / radius_ - 1.0;
            if (std::fabs(excess) <= 0.1) break;
            (excess > 0.0 ? low : high) = damping_;
            const double next = damping_ + excess / slope(length);
            damping_ =
                next > low && next < high ? next : std::max(1e-3 * high, std::sqrt(low * high));
        }
    }

    /// Tries steps in ever smaller trust regions until one lowers the sum. False if none does.
    bool improve() {
        Vector<double> r;
        for (int k = 0; k < max_trials; ++k) {
            bounded_step();
            double moved = 0.0;
            for (int j = 0; j < m_; ++j) {
                trial_[j] = x_[j] + step_[j];
                step_[j] = trial_[j] - x_[j];
                const double size = std::max(std::fabs(x_[j]), std::fabs(trial_[j]));
                if (size > 0.0) moved = std::max(moved, std::fabs(step_[j]) / size);
            }
            const double length = scaled_norm(step_.data());
            if (!(length > 0.0)) break;
            const bool ok = evaluate(r);
            const double sum = ok ? r.sum2() : sum_;
            const double gain = ok ? sum_ - sum : -sum_, expected = sum_ - predicted();
            if (gain > 0.75 * expected || (damping_ == 0.0 && gain > 0.25 * expected))
                radius_ = std::max(radius_, 2.0 * length);
            else if (!(gain > 0.25 * expected))
                radius_ = (ok && sum < 100.0 * sum_ ? 0.5 : 0.1) * std::min(radius_, length);
            if (ok && sum < sum_) {
                current_ = sum < keep_jacobian * sum_;
                if (current_) update(r);
                was_fresh_ = std::exchange(fresh_, false);
                x_ = trial_;
                std::swap(r_, r);
                sum_ = sum;
                moved_ = moved;
                at_x_ = true;
                if (damping_ == 0.0) failure_ = nullptr;
                return true;
            }
            if (ok && moved < small_step) {
                if (damping_ == 0.0) failure_ = nullptr;  // no change left but rounding
                break;
            }
            if (!fresh_) {
                trial_ = x_;
                if (!jacobian()) return false;
            }
        }
        return give_up();
    }

    /// Sum of squares that the linear model gives for step_.
    double predicted() const {
        double sum = 0.0;
        for (int i = 0; i < n_; ++i) {
            double r = r_[i];
            for (int j = 0; j < m_; ++j) r += jac_[j * n_ + i] * step_[j];
            sum += r * r;
        }
        return sum;
    }

    /// Broyden's update: J·step becomes the change of the residuals, and J stays as it is across
    /// the step. Lengths are scaled by the columns.
    void update(Vector<double> const& r) {
        double length = 0.0;
        for (int j = 0; j < m_; ++j) length += std::pow(scale_[j] * step_[j], 2);
        if (!(length > 0.0)) return;
        for (int i = 0; i < n_; ++i) {
            double rest = r[i] - r_[i];
            for (int j = 0; j < m_; ++j) rest -= jac_[j * n_ + i] * step_[j];
            for (int j = 0; j < m_; ++j)
                jac_[j * n_ + i] += rest * scale_[j] * scale_[j] * step_[j] / length;
        }
    }

    /// Whether the sum has no slope in any parameter.
    bool stationary() const {
        for (int j = 0; j < m_; ++j) {
            double const* column = &jac_[j * n_];
            const double g = std::inner_product(column, column + n_, r_.data, 0.0);
            if (!(std::fabs(g) <= 1e-6 * scale_[j] * std::sqrt(sum_))) return false;
        }
        return true;
    }

    /// The end without an acceptable step: the failure of f if there is one, else stagnation.
    bool give_up() {
        trial_ = x_;
        if (failure_) std::rethrow_exception(failure_);
        return false;
    }

    numelo_residual f_;
    void* ctx_;
    Vector<double>& x_;
    Vector<double> trial_, r_;
    int n_, m_;
    std::vector<double> jac_, qr_, rhs_, diag_, scale_, step_, work_;
    double sum_ = 0.0, damping_ = 0.0, radius_ = 0.0, moved_ = 0.0;
    int restarts_ = 0;
    bool at_x_ = true;
    bool current_ = false, fresh_ = false;  // jac_ is usable; is made of differences at x_
    bool was_fresh_ = false;                // so it was for the last step
    std::exception_ptr failure_;            // of a trial since the last undamped step
};

}  // namespace

double fit_marquardt(numelo_residual f, Vector<double>& x, int n, void* ctx, int maxit, int trace) {
    if (n < x.n) throw MthException(mth_too_few);
    return Fit(f, ctx, x, n).run(maxit, trace != 0);
}
