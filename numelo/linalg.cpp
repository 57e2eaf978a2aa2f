// Dense linear algebra of small order.
#include <corvane/core/numelo.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace {

constexpr double eps = std::numeric_limits<double>::epsilon();
constexpr int max_sweeps = 60;

void require_square(Matrix<double> const& A) {
    if (A.rows() != A.cols()) throw MthException(mth_not_square);
    for (int i = 0; i < A.n; ++i)
        if (A[i].n != A.n) throw MthException(mth_not_square);
}

/// One Jacobi rotation in the plane (p, q), which makes a[p][q] zero; the rows of v turn with it.
void rotate(Matrix<double>& a, Matrix<double>& v, int p, int q) {
    const double apq = a[p][q];
    const double theta = 0.5 * (a[q][q] / apq - a[p][p] / apq);
    // The smaller root of t² + 2·theta·t = 1; hypot cannot overflow.
    const double t = std::copysign(1.0, theta) / (std::fabs(theta) + std::hypot(theta, 1.0));
    const double c = 1.0 / std::sqrt(1.0 + t * t), s = t * c, tau = s / (1.0 + c);
    a[p][p] -= t * apq;
    a[q][q] += t * apq;
    a[p][q] = a[q][p] = 0.0;
    auto turn = [s, tau](double& x, double& y) {
        const double x0 = x, y0 = y;
        x = x0 - s * (y0 + tau * x0);
        y = y0 + s * (x0 - tau * y0);
    };
    for (int k = 0; k < a.n; ++k) {
        if (k != p && k != q) {
            turn(a[p][k], a[q][k]);
            a[k][p] = a[p][k];
            a[k][q] = a[q][k];
        }
        turn(v[p][k], v[q][k]);
    }
}

}  // namespace

Vector<double> lin_gauss(Matrix<double> const& A, Vector<double> const& b) {
    require_square(A);
    const int n = A.n;
    if (b.n != n) throw MthException(mth_dimensions);
    // Columns, then rows are scaled by their largest entries, so that a pivot can be told from
    // rounding whatever the units are.
    Matrix<double> a(A);
    Vector<double> x(b);
    std::vector<double> column(n), scale(n);
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) column[j] = std::max(column[j], std::fabs(a[i][j]));
        if (!(column[j] > 0.0)) throw MthException(mth_singular);
        for (int i = 0; i < n; ++i) a[i][j] /= column[j];
    }
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) scale[i] = std::max(scale[i], std::fabs(a[i][j]));
        if (!(scale[i] > 0.0)) throw MthException(mth_singular);
    }
    for (int k = 0; k < n; ++k) {
        int pivot = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(a[i][k]) / scale[i] > std::fabs(a[pivot][k]) / scale[pivot]) pivot = i;
        if (!(std::fabs(a[pivot][k]) > n * eps * scale[pivot])) throw MthException(mth_singular);
        std::swap(a[k], a[pivot]);
        std::swap(x[k], x[pivot]);
        std::swap(scale[k], scale[pivot]);
        for (int i = k + 1; i < n; ++i) {
            const double factor = a[i][k] / a[k][k];
            for (int j = k + 1; j < n; ++j) a[i][j] -= factor * a[k][j];
            x[i] -= factor * x[k];
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int j = i + 1; j < n; ++j) x[i] -= a[i][j] * x[j];
        x[i] /= a[i][i];
    }
    for (int i = 0; i < n; ++i) x[i] /= column[i];
    return x;
}

void lin_jacobi(Matrix<double> A, Vector<double>& eigenvalues, Matrix<double>& eigenvectors) {
    require_square(A);
    const int n = A.n;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            A[i][j] = A[j][i] = 0.5 * A[i][j] + 0.5 * A[j][i];
            if (!std::isfinite(A[i][j])) throw MthException(mth_out_of_range);
        }
    Matrix<double> v(n, n);
    v.I();
    // Element by element: a norm of the whole matrix would call small blocks diagonal beside an
    // entry of 1e99.
    auto negligible = [&A](int p, int q) {
        return std::fabs(A[p][q]) <=
               eps * std::sqrt(std::fabs(A[p][p])) * std::sqrt(std::fabs(A[q][q]));
    };
    for (int sweep = 0, rotations = 1; rotations > 0; ++sweep) {
        if (sweep == max_sweeps) throw MthException(mth_iterations);
        rotations = 0;
        for (int p = 0; p < n; ++p)
            for (int q = p + 1; q < n; ++q) {
                if (A[p][q] == 0.0 || negligible(p, q)) continue;
                rotate(A, v, p, q);
                ++rotations;
            }
    }

    std::vector<int> order(n);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&A](int i, int j) { return A[i][i] < A[j][j]; });
    eigenvalues.size(n);
    eigenvectors.size(n, n);
    for (int k = 0; k < n; ++k) {
        Vector<double> const& row = v[order[k]];
        eigenvalues[k] = A[order[k]][order[k]];
        // Of components that are as large but for rounding the first counts.
        int largest = 0;
        for (int j = 1; j < n; ++j)
            if (std::fabs(row[j]) > (1.0 + 1e-6) * std::fabs(row[largest])) largest = j;
        const double sign = n > 0 && row[largest] < 0.0 ? -1.0 : 1.0;
        for (int j = 0; j < n; ++j) eigenvectors[k][j] = sign * row[j];
    }
}
