// Least squares: the Levenberg–Marquardt method in Moré's form (Lecture Notes in Math. 630 (1978)
// 105).
#include <corvane/core/numelo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <limits>
#include <vector>

namespace {

constexpr int max_damping = 16;   // trials per iteration
constexpr int max_narrowing = 6;  // smaller difference steps where f throws
constexpr double first_damping = 1e-3;
constexpr double difference_step = 3e-6;
constexpr double small_step = 1e-11, last_digit = 4e-16;
constexpr double accepted_sum = 1e-8;  // above it, running out of iterations is a failure

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
          work_((n + m_) * m_),
          rhs_(n + m_),
          scale_(m_),
          step_(m_) {
        if (r_.n != n) throw MthException(mth_dimensions);
        sum_ = r_.sum2();
        if (!std::isfinite(sum_)) throw MthException(mth_out_of_range);
    }

    double run(int maxit, bool trace) {
        int small = 0;
        for (int it = 0; sum_ > 0.0 && m_ > 0; ++it) {
            if (it >= maxit) {
                if (sum_ > accepted_sum) throw MthException(mth_iterations);
                break;
            }
            if (!jacobian() || !improve()) break;
            if (trace)
                std::fprintf(stderr, "fit_marquardt %3d  sum %.6e  step %.1e\n", it + 1, sum_,
                             moved_);
            small = moved_ < small_step ? small + 1 : 0;
            if (moved_ < last_digit || small == 2) break;
        }
        if (!at_x_) f_(x_, ctx_);  // callers read what the last evaluation left in the context
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

    /// Fills jac_ by columns. False (or the stored exception) if a parameter cannot be moved at
    /// all.
    bool jacobian() {
        const bool central = sum_ < 1e-6;
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
            if (!(norm > 0.0)) throw MthException(mth_irrelevant, j);
            scale_[j] = std::max(scale_[j], norm);
        }
        return true;
    }

    /// Solves [J; sqrt(damping)·D]·step = −[r; 0] by Householder's QR. False if it is rank
    /// deficient.
    bool solve(double damping) {
        const int rows = damping > 0.0 ? n_ + m_ : n_;
        for (int j = 0; j < m_; ++j) {
            double* column = &work_[j * rows];
            std::copy_n(&jac_[j * n_], n_, column);
            if (rows > n_) {
                std::fill_n(column + n_, m_, 0.0);
                column[n_ + j] = std::sqrt(damping) * scale_[j];
            }
        }
        for (int i = 0; i < rows; ++i) rhs_[i] = i < n_ ? -r_[i] : 0.0;
        for (int j = 0; j < m_; ++j) {
            double* v = &work_[j * rows];
            double norm = 0.0;
            for (int i = j; i < rows; ++i) norm = std::hypot(norm, v[i]);
            if (!(norm > 1e-14 * scale_[j])) return false;
            const double alpha = v[j] > 0.0 ? -norm : norm;
            v[j] -= alpha;
            const double beta = -1.0 / (alpha * v[j]);
            auto reflect = [&](double* column) {
                double dot = 0.0;
                for (int i = j; i < rows; ++i) dot += v[i] * column[i];
                for (int i = j; i < rows; ++i) column[i] -= beta * dot * v[i];
            };
            for (int k = j + 1; k < m_; ++k) reflect(&work_[k * rows]);
            reflect(rhs_.data());
            step_[j] = alpha;  // the diagonal of R
        }
        for (int j = m_ - 1; j >= 0; --j) {
            double sum = rhs_[j];
            for (int k = j + 1; k < m_; ++k) sum -= work_[k * rows + j] * step_[k];
            step_[j] = sum / step_[j];
        }
        return true;
    }

    /// Tries ever more damped steps until one lowers the sum. False if none does.
    bool improve() {
        Vector<double> r;
        for (int k = 0; k < max_damping; ++k) {
            if (solve(damping_)) {
                double moved = 0.0;
                for (int j = 0; j < m_; ++j) {
                    trial_[j] = x_[j] + step_[j];
                    const double size = std::max(std::fabs(x_[j]), std::fabs(trial_[j]));
                    if (size > 0.0) moved = std::max(moved, std::fabs(trial_[j] - x_[j]) / size);
                }
                const bool ok = evaluate(r);
                const double sum = ok ? r.sum2() : 0.0;
                if (ok && sum < sum_) {
                    x_ = trial_;
                    std::swap(r_, r);
                    sum_ = sum;
                    moved_ = moved;
                    at_x_ = true;
                    damping_ = damping_ > first_damping ? 0.1 * damping_ : 0.0;
                    failure_ = nullptr;
                    return true;
                }
                if (ok && moved < small_step) {  // no change left but rounding: not a failure
                    failure_ = nullptr;
                    break;
                }
            }
            damping_ = damping_ == 0.0 ? first_damping : 10.0 * damping_;
        }
        trial_ = x_;
        return give_up();
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
    std::vector<double> jac_, work_, rhs_, scale_, step_;
    double sum_ = 0.0, damping_ = 0.0, moved_ = 0.0;
    bool at_x_ = true;
    std::exception_ptr failure_;
};

}  // namespace

double fit_marquardt(numelo_residual f, Vector<double>& x, int n, void* ctx, int maxit, int trace) {
    if (n < x.n) throw MthException(mth_too_few);
    return Fit(f, ctx, x, n).run(maxit, trace != 0);
}
