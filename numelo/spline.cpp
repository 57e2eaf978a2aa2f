// Cubic spline interpolation (de Boor, A Practical Guide to Splines, 2001, ch. IV).
#include <corvane/core/numelo.h>

#include <algorithm>
#include <vector>

namespace {

/// Slopes at the points of the not-a-knot spline through n >= 3 points: the derivatives agree at
/// the inner points, and the third derivative is continuous at the second and the last but one
/// point (de Boor 2001, eqs. IV.8 and IV.17). With three points both end conditions are the same,
/// and the spline is a parabola.
std::vector<double> slopes(SortedVector<double> const& x, Vector<double> const& y) {
    const int n = x.n;
    std::vector<double> step(n - 1), secant(n - 1), s(n);
    for (int k = 0; k < n - 1; ++k) {
        step[k] = x[k + 1] - x[k];
        secant[k] = (y[k + 1] - y[k]) / step[k];
    }
    if (n == 3) {
        const double c = (secant[1] - secant[0]) / (step[0] + step[1]);
        s[0] = secant[0] - c * step[0];
        s[1] = secant[0] + c * step[0];
        s[2] = secant[1] + c * step[1];
        return s;
    }
    // Tridiagonal system; row k: below·s[k−1] + diag[k]·s[k] + above[k]·s[k+1] = s[k] (right side).
    std::vector<double> diag(n), above(n);
    double span = step[0] + step[1];
    diag[0] = step[1];
    above[0] = span;
    s[0] = ((step[0] + 2 * span) * step[1] * secant[0] + step[0] * step[0] * secant[1]) / span;
    for (int k = 1; k < n - 1; ++k) {
        const double factor = step[k] / diag[k - 1];
        diag[k] = 2 * (step[k - 1] + step[k]) - factor * above[k - 1];
        above[k] = step[k - 1];
        s[k] = 3 * (step[k] * secant[k - 1] + step[k - 1] * secant[k]) - factor * s[k - 1];
    }
    const double last = step[n - 2], before = step[n - 3];
    span = last + before;
    const double factor = span / diag[n - 2];
    s[n - 1] = (last * last * secant[n - 3] + (2 * span + last) * before * secant[n - 2]) / span;
    s[n - 1] = (s[n - 1] - factor * s[n - 2]) / (before - factor * above[n - 2]);
    for (int k = n - 2; k >= 0; --k) s[k] = (s[k] - above[k] * s[k + 1]) / diag[k];
    return s;
}

}  // namespace

void ipl_spline(SortedVector<double> const& x, Vector<double> const& y, Matrix<double>& c) {
    const int n = std::max(x.n, 0);
    if (n != std::max(y.n, 0)) throw MthException(mth_dimensions);
    for (int k = 1; k < n; ++k) {
        if (x[k] == x[k - 1]) throw MthException(mth_duplicate);
        if (!(x[k] > x[k - 1])) throw MthException(mth_unordered);
    }
    c.size(3, n);
    for (int i = 0; i < 3; ++i) c[i].set(0.0);
    if (n < 2) return;
    if (n == 2) {
        c[0].set((y[1] - y[0]) / (x[1] - x[0]));
        return;
    }
    const std::vector<double> s = slopes(x, y);
    for (int k = 0; k < n - 1; ++k) {
        const double dx = x[k + 1] - x[k], secant = (y[k + 1] - y[k]) / dx;
        c[0][k] = s[k];
        c[1][k] = (3 * secant - 2 * s[k] - s[k + 1]) / dx;
        c[2][k] = (s[k] + s[k + 1] - 2 * secant) / (dx * dx);
    }
    // The last row continues the last cubic from its right end.
    const double dx = x[n - 1] - x[n - 2];
    c[0][n - 1] = s[n - 1];
    c[1][n - 1] = c[1][n - 2] + 3 * c[2][n - 2] * dx;
    c[2][n - 1] = c[2][n - 2];
}

double ipl_eval(double x, SortedVector<double> const& xs, Vector<double> const& ys,
                Matrix<double> const& c, int deriv) {
    if (deriv != 0 && deriv != 1) throw MthException(mth_no_option);
    if (xs.n < 1) throw MthException(mth_too_few);
    double const* const begin = xs.data;
    const auto above = std::upper_bound(begin, begin + xs.n, x) - begin;
    const int k = std::max(0, static_cast<int>(above) - 1);
    const double dx = x - xs[k];
    if (deriv == 1) return c[0][k] + dx * (2 * c[1][k] + dx * 3 * c[2][k]);
    return ys[k] + dx * (c[0][k] + dx * (c[1][k] + dx * c[2][k]));
}
