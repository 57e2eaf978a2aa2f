// Small dense linear systems. Internal to the library.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

namespace corvane::inline detail {

/// Solution of A·x = b (n×n, row by row) by LU with partial pivoting of the rows scaled to their
/// largest element; A is overwritten, b receives x. False for a pivot within rounding of zero.
inline bool lu_solve(int n, double* a, double* b) {
    for (int i = 0; i < n; ++i) {
        double big = 0.0;
        for (int j = 0; j < n; ++j) big = std::max(big, std::fabs(a[i * n + j]));
        if (!(big > 0.0) || !std::isfinite(big)) return false;
        const double scale = 1.0 / big;
        for (int j = 0; j < n; ++j) a[i * n + j] *= scale;
        b[i] *= scale;
    }
    for (int k = 0; k < n; ++k) {
        int row = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[i * n + k]) > std::fabs(a[row * n + k])) row = i;
        if (!(std::fabs(a[row * n + k]) > 1e-15)) return false;
        if (row != k) {
            std::swap_ranges(a + k * n, a + (k + 1) * n, a + row * n);
            std::swap(b[k], b[row]);
        }
        const double pivot = 1.0 / a[k * n + k];
        for (int i = k + 1; i < n; ++i) {
            const double q = a[i * n + k] * pivot;
            if (q == 0.0) continue;
            for (int j = k + 1; j < n; ++j) a[i * n + j] -= q * a[k * n + j];
            b[i] -= q * b[k];
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int j = i + 1; j < n; ++j) b[i] -= a[i * n + j] * b[j];
        b[i] /= a[i * n + i];
        if (!std::isfinite(b[i])) return false;
    }
    return true;
}

/// Inverse of A (n×n, row by row) by Gauss–Jordan elimination with the same pivoting; A is
/// overwritten. False for a pivot within rounding of zero.
inline bool invert(int n, double* a, double* inverse) {
    std::fill(inverse, inverse + n * n, 0.0);
    for (int i = 0; i < n; ++i) {
        double big = 0.0;
        for (int j = 0; j < n; ++j) big = std::max(big, std::fabs(a[i * n + j]));
        if (!(big > 0.0) || !std::isfinite(big)) return false;
        for (int j = 0; j < n; ++j) a[i * n + j] /= big;
        inverse[i * n + i] = 1.0 / big;
    }
    for (int k = 0; k < n; ++k) {
        int row = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[i * n + k]) > std::fabs(a[row * n + k])) row = i;
        const double pivot = a[row * n + k];
        if (!(std::fabs(pivot) > 1e-15)) return false;
        if (row != k) {
            std::swap_ranges(a + k * n, a + (k + 1) * n, a + row * n);
            std::swap_ranges(inverse + k * n, inverse + (k + 1) * n, inverse + row * n);
        }
        for (int j = 0; j < n; ++j) {
            a[k * n + j] /= pivot;
            inverse[k * n + j] /= pivot;
        }
        for (int i = 0; i < n; ++i) {
            const double q = a[i * n + k];
            if (i == k || q == 0.0) continue;
            for (int j = k; j < n; ++j) a[i * n + j] -= q * a[k * n + j];
            for (int j = 0; j < n; ++j) inverse[i * n + j] -= q * inverse[k * n + j];
        }
    }
    return true;
}

/// Solution of A·x = b for a symmetric A by Cholesky's method; A is overwritten,
/// b receives x. False unless A is positive definite beyond rounding.
inline bool cholesky_solve(int n, double* a, double* b) {
    for (int i = 0; i < n; ++i) {
        const double whole = a[i * n + i];
        for (int j = 0; j <= i; ++j) {
            double sum = a[i * n + j];
            for (int k = 0; k < j; ++k) sum -= a[i * n + k] * a[j * n + k];
            if (j < i)
                a[i * n + j] = sum / a[j * n + j];
            else if (!(sum > 1e-14 * whole))
                return false;
            else
                a[i * n + i] = std::sqrt(sum);
        }
        for (int k = 0; k < i; ++k) b[i] -= a[i * n + k] * b[k];
        b[i] /= a[i * n + i];
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int k = i + 1; k < n; ++k) b[i] -= a[k * n + i] * b[k];
        b[i] /= a[i * n + i];
        if (!std::isfinite(b[i])) return false;
    }
    return true;
}

}  // namespace corvane::inline detail
