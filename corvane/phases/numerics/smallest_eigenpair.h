// The smallest eigenvalue of a symmetric matrix, from a vector near its own. Internal to the
// library.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace corvane::inline detail {

/// Inverse iteration (Wielandt; Parlett, The Symmetric Eigenvalue Problem, 1998, 4.2) with a shift
/// that lies below the Rayleigh quotient by twice the residual. An eigenvalue is within the
/// residual of the quotient, so that the factors of Cholesky's method exist if that is the
/// smallest, and prove that none is below the shift; else it goes down until they do. Convergence
/// is quadratic in the end. Far less than the cost of all eigenvalues.
class SmallestEigenpair {
  public:
    double value = 0.0;

    /// Are all eigenvalues above the shift? B: n×n, row by row.
    bool above(double shift, int n, double const* B) {
        factor_.resize(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
        return factorise(n, B, shift);
    }

    /// v: a start, then the eigenvector of unit length, either sign. False without convergence, v
    /// then is of no use.
    bool find(int n, double const* B, std::vector<double>& v) {
        factor_.resize(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
        image_.resize(static_cast<std::size_t>(n));
        double last = std::numeric_limits<double>::infinity();
        for (int it = 0; it < kIterations; ++it) {
            double square = 0.0, residual = 0.0, norm = 0.0;
            for (int i = 0; i < n; ++i) square += v[i] * v[i];
            if (!(square > 0.0) || !std::isfinite(square)) return false;
            const double scale = 1.0 / std::sqrt(square);
            for (int i = 0; i < n; ++i) v[i] *= scale;
            value = 0.0;
            for (int i = 0; i < n; ++i) {
                double sum = 0.0;
                for (int j = 0; j < n; ++j) sum += B[i * n + j] * v[j];
                image_[i] = sum;
                value += sum * v[i];
                norm = std::max(norm, std::fabs(B[i * n + i]));
            }
            for (int i = 0; i < n; ++i) {
                image_[i] -= value * v[i];
                residual += image_[i] * image_[i];
            }
            residual = std::sqrt(residual);
            const double rounding = kUnits * std::max(norm, std::fabs(value));
            // The factors of the step before were those of a shift below this value.
            if (it > 0 &&
                (residual <= rounding || (last < kSettled * norm && residual > 0.5 * last)))
                return true;
            last = residual;
            double below = 2.0 * std::max(residual, rounding);
            int trial = 0;
            while (!factorise(n, B, value - below) && ++trial < kTrials) below *= 4.0;
            if (trial == kTrials) return false;
            solve(n, v);
        }
        return false;
    }

  private:
    static constexpr int kIterations = 20, kTrials = 5;
    static constexpr double kUnits = 8.0 * std::numeric_limits<double>::epsilon(), kSettled = 1e-12;

    /// L·D·Lᵀ of B less the shift, D inverted.
    bool factorise(int n, double const* B, double shift) {
        double* const a = factor_.data();
        for (int i = 0; i < n; ++i) {
            double pivot = B[i * n + i] - shift;
            for (int j = 0; j < i; ++j) {
                double sum = B[i * n + j];
                for (int k = 0; k < j; ++k) sum -= a[i * n + k] * a[j * n + k];
                a[i * n + j] = sum;  // L·D until the row is complete
            }
            for (int j = 0; j < i; ++j) {
                const double whole = a[i * n + j];
                a[i * n + j] = whole * a[j * n + j];
                pivot -= whole * a[i * n + j];
            }
            if (!(pivot > 0.0)) return false;
            a[i * n + i] = 1.0 / pivot;
        }
        return true;
    }
    void solve(int n, std::vector<double>& v) const {
        double const* const a = factor_.data();
        for (int i = 1; i < n; ++i)
            for (int k = 0; k < i; ++k) v[i] -= a[i * n + k] * v[k];
        for (int i = 0; i < n; ++i) v[i] *= a[i * n + i];
        for (int i = n - 2; i >= 0; --i)
            for (int k = i + 1; k < n; ++k) v[i] -= a[k * n + i] * v[k];
    }

    std::vector<double> factor_, image_;
};

}  // namespace corvane::inline detail
