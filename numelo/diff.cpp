// Derivatives of functions of one and of two variables.
#include <corvane/core/numelo.h>
#include <numelo/ladder.h>

#include <cmath>

double diff_romberg(numelo_function f, void* ctx, int order, double x, double h, int level,
                    double xmin, double xmax) {
    return corvane::derivative([f, ctx](double t) { return f(t, ctx); }, order, x, h, level, xmin,
                               xmax);
}

double diff_x(numelo_function f, void* ctx, double x, double h) {
    if (!(h > 0.0) || !std::isfinite(h) || x + h == x) throw MthException(mth_bad_step);
    auto quotient = [&](double s) {
        const double up = x + s, down = x - s;
        return (f(up, ctx) - f(down, ctx)) / (up - down);
    };
    const double wide = quotient(h), narrow = quotient(0.5 * h);
    return narrow + (narrow - wide) / 3.0;
}

double diff_2all(numelo_function2 f, void* ctx, double x, double y, int nx, int ny, double hx,
                 double hy) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (nx < 0 || nx > 3 || ny < 0 || ny > 3) throw MthException(mth_no_option);
    auto inner = [&](double t) {
        return corvane::derivative([&](double u) { return f(t, u, ctx); }, ny, y, hy, 1, -infinity,
                                   infinity);
    };
    return corvane::derivative(inner, nx, x, hx, 1, -infinity, infinity);
}
