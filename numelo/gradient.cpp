// Gradient and matrix of second derivatives of a function of several variables.
#include <corvane/core/numelo.h>
#include <numelo/ladder.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

void check(Vector<double> const& x, int order, Vector<double> const& h) {
    if (order != 2) throw MthException(mth_no_option);
    if (x.n != h.n) throw MthException(mth_dimensions);
    for (int i = 0; i < x.n; ++i)
        if (!(h[i] > 0.0) || !std::isfinite(h[i]) || x[i] + h[i] == x[i])
            throw MthException(mth_bad_step, i);
}

/// Derivative of order m along component i; an absent component (exactly 0) is only increased.
double along(numelo_functionv f, void* ctx, Vector<double> const& x, Vector<double>& point, int i,
             int m, double h) {
    auto line = [&](double t) {
        point[i] = t;
        return f(point, ctx);
    };
    const double low = x[i] == 0.0 ? 0.0 : -infinity;
    const double value = corvane::derivative(line, m, x[i], h, 1, low, infinity);
    point[i] = x[i];
    return value;
}

}  // namespace

Vector<double> diff_gradient(numelo_functionv f, void* ctx, Vector<double> const& x, int order,
                             Vector<double> const& h) {
    check(x, order, h);
    Vector<double> gradient(x.n), point(x);
    for (int i = 0; i < x.n; ++i) gradient[i] = along(f, ctx, x, point, i, 1, h[i]);
    return gradient;
}

Matrix<double> diff_hessian(numelo_functionv f, void* ctx, Vector<double> const& x, int order,
                            Vector<double> const& h) {
    check(x, order, h);
    const int n = x.n;
    Matrix<double> hessian(n, n);
    Vector<double> point(x);
    for (int i = 0; i < n; ++i) {
        hessian[i][i] = along(f, ctx, x, point, i, 2, h[i]);
        for (int j = 0; j < i; ++j) {
            auto slope = [&](double t) {
                point[i] = t;
                return along(f, ctx, x, point, j, 1, h[j]);
            };
            const double low = x[i] == 0.0 ? 0.0 : -infinity;
            hessian[i][j] = hessian[j][i] =
                corvane::derivative(slope, 1, x[i], h[i], 1, low, infinity);
            point[i] = x[i];
        }
    }
    return hessian;
}
