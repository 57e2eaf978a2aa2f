// Small dense linear systems. Internal to the library.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace corvane::inline detail {

/// to −= q·from for so many numbers, two at a time where the machine has such instructions: of each the
/// same operations as one by one.
inline void take_off(double* __restrict to, double const* __restrict from, double q, int count) {
    using Two [[gnu::vector_size(16)]] = double;
    int j = 0;
    for (; j + 2 <= count; j += 2) {
        Two a, b;
        std::memcpy(&a, to + j, sizeof a);
        std::memcpy(&b, from + j, sizeof b);
        a -= q * b;
        std::memcpy(to + j, &a, sizeof a);
    }
    if (j < count) to[j] -= q * from[j];
}

/// Solution of A·x = b (n×n, row by row) by LU with partial pivoting of the rows scaled to their
/// largest element; A is overwritten, b receives x. False for a pivot within rounding of zero.
inline bool lu_solve(int n, double* a, double* b) {
    for (int i = 0; i < n; ++i) {
        double* const row = a + i * n;
        double big = 0.0;
        for (int j = 0; j < n; ++j) big = std::max(big, std::fabs(row[j]));
        if (!(big > 0.0) || !std::isfinite(big)) return false;
        const double scale = 1.0 / big;
        for (int j = 0; j < n; ++j) row[j] *= scale;
        b[i] *= scale;
    }
    double* const end = a + n * n;
    for (int k = 0; k < n; ++k) {
        double* const own = a + k * n;
        double *best = own, most = std::fabs(own[k]);
        for (double* row = own + n; row < end; row += n)
            if (std::fabs(row[k]) > most) {
                best = row;
                most = std::fabs(row[k]);
            }
        if (!(most > 1e-15)) return false;
        if (best != own) {
            std::swap_ranges(own, own + n, best);
            std::swap(b[k], b[(best - a) / n]);
        }
        const double pivot = 1.0 / own[k], bk = b[k];
        double* bi = b + k + 1;
        for (double* row = own + n; row < end; row += n, ++bi) {
            const double q = row[k] * pivot;
            if (q == 0.0) continue;
            take_off(row + k + 1, own + k + 1, q, n - k - 1);
            *bi -= q * bk;
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        double const* const row = a + i * n;
        double x = b[i];
        for (int j = i + 1; j < n; ++j) x -= row[j] * b[j];
        b[i] = x / row[i];
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
            take_off(a + i * n + k, a + k * n + k, q, n - k);
            take_off(inverse + i * n, inverse + k * n, q, n);
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
