// Root of a function of one variable.
#include <corvane/core/numelo.h>

#include <cmath>

namespace {
constexpr int max_steps = 200;
constexpr int polish_steps = 4;
constexpr double last_digit = 4e-15;
}  // namespace

double eqn_regulafalsi(numelo_function f, void* ctx, double a, double b, double fa, double fb,
                       double tol) {
    if (!std::isfinite(a) || !std::isfinite(b) || std::isnan(fa) || std::isnan(fb))
        throw MthException(mth_out_of_range);
    if (a == b) throw MthException(mth_bad_interval);
    if (fa == 0.0) return a;
    if (fb == 0.0) return b;
    if (std::signbit(fa) == std::signbit(fb)) throw MthException(mth_same_sign);

    // wa and wb are the ordinates of the secant: the Illinois form halves that of an end that
    // stays.
    double wa = fa, wb = fb, x = b, checked = std::fabs(b - a);
    int kept = 0, polish = 0;
    bool converged = !(checked > tol);
    for (int step = 1; step <= max_steps; ++step) {
        x = b - wb * ((b - a) / (wb - wa));
        if (step % 4 == 0) {
            const double width = std::fabs(b - a);
            if (!converged && 16.0 * width > checked) x = a + 0.5 * (b - a);
            checked = width;
        }
        if (!(x > std::fmin(a, b) && x < std::fmax(a, b))) x = a + 0.5 * (b - a);
        const double fx = f(x, ctx);
        if (std::isnan(fx)) throw MthException(mth_out_of_range);
        if (fx == 0.0) return x;
        if (std::signbit(fx) == std::signbit(fb)) {
            b = x;
            fb = wb = fx;
            wa = kept == 1 ? 0.5 * wa : fa;
            kept = 1;
        } else {
            a = x;
            fa = wa = fx;
            wb = kept == 2 ? 0.5 * wb : fb;
            kept = 2;
        }
        // Judged by the bracket: steps are also small far from the root, where one ordinate is huge.
        const double width = std::fabs(b - a);
        if (width <= last_digit * std::fabs(x)) return x;
        converged = converged || width < tol;
        if (converged && ++polish > polish_steps) return x;
    }
    throw MthException(mth_iterations);
}
