// Root of a function of one variable: regula falsi with reduced end values.
//
// A plain secant through the ends of the bracket leaves one end in place. The value kept for an end
// that stays is therefore reduced, by the factor 1 − f_new/f_old of Anderson & Björck (BIT 13
// (1973) 253), but at least by the half of the Illinois form (Dowell & Jarratt, BIT 11 (1971) 168).
#include <corvane/core/numelo.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int max_steps = 200;
constexpr int review_steps = 5;         // after which the bracket must have shrunk
constexpr double review_shrink = 16.0;  // by this
constexpr int polish_steps = 4;         // below tol, once the step is below close·|x|
constexpr int approach_steps = 12;      // below tol until it is
constexpr double close = 1e-6, last_digit = 4e-15;

/// Counts out bisections: one where the secants have been slow, and more each time that they are
/// slow again, so that a multiple root costs little more than bisecting for it.
class Guard {
  public:
    explicit Guard(double width) : checked_(width) {}
    bool bisect(double width) {
        if (due_ > 0) {
            --due_;
            checked_ = 0.5 * width;
            return true;
        }
        if (++step_ < review_steps) return false;
        const bool slow = review_shrink * width > checked_;
        due_ = slow ? failures_++ : 0;
        if (!slow) failures_ = 0;
        checked_ = width;
        step_ = 0;
        return slow;
    }

  private:
    double checked_;
    int step_ = 0, failures_ = 0, due_ = 0;
};

/// x, moved to be at least `least` from either end: near a root the point lands behind it and
/// closes the bracket, near an end that is no root it shows that.
double off_the_ends(double x, double a, double b, double least) {
    const double inward = std::copysign(std::min(least, 0.5 * std::fabs(b - a)), b - a);
    if (std::fabs(x - a) < least) return a + inward;
    if (std::fabs(x - b) < least) return b - inward;
    return x;
}

/// By which the value kept at an end is reduced.
double factor(double now, double before) {
    const double m = 1.0 - now / before;
    return m > 0.0 && m < 0.5 ? m : 0.5;
}

}  // namespace

double eqn_regulafalsi(numelo_function f, void* ctx, double a, double b, double fa, double fb,
                       double tol) {
    if (!std::isfinite(a) || !std::isfinite(b) || std::isnan(fa) || std::isnan(fb))
        throw MthException(mth_out_of_range);
    if (a == b) throw MthException(mth_bad_interval);
    if (fa == 0.0) return a;
    if (fb == 0.0) return b;
    if (std::signbit(fa) == std::signbit(fb)) throw MthException(mth_same_sign);

    double wa = fa, wb = fb;  // wa, wb: the reduced end values
    enum class End { none, low, high } moved = End::none;
    Guard guard(std::fabs(b - a));
    int polish = 0, approach = 0;
    bool converged = false;
    for (int step = 1; step <= max_steps; ++step) {
        // In a bracket this narrow f is straight, and the plain secant is exact but for rounding.
        if (converged && std::fabs(b - a) < close * std::fabs(b)) {
            wa = fa;
            wb = fb;
        }
        // From the end that is nearer to the root, so that a root near zero keeps all its digits.
        const double inverse_slope = (b - a) / (wb - wa);
        double x =
            std::fabs(wa) < std::fabs(wb) ? a - wa * inverse_slope : b - wb * inverse_slope;
        if (!converged && guard.bisect(std::fabs(b - a))) x = a + 0.5 * (b - a);
        if (!converged) x = off_the_ends(x, a, b, 0.5 * tol);
        if (!(x > std::min(a, b) && x < std::max(a, b))) {
            if (converged) {  // an end is the root to rounding: the last evaluation is there
                x = std::fabs(fa) < std::fabs(fb) ? a : b;
                f(x, ctx);
                return x;
            }
            x = a + 0.5 * (b - a);
        }
        const double fx = f(x, ctx);
        if (std::isnan(fx)) throw MthException(mth_out_of_range);
        if (fx == 0.0) return x;
        if (std::signbit(fx) == std::signbit(fb)) {
            wa = moved == End::high ? wa * factor(fx, fb) : fa;
            moved = End::high;
            b = x;
            fb = wb = fx;
        } else {
            wb = moved == End::low ? wb * factor(fx, fa) : fb;
            moved = End::low;
            a = x;
            fa = wa = fx;
        }
        const double width = std::fabs(b - a);
        converged = converged || width <= std::max(tol, last_digit * std::fabs(x));
        if (!converged) continue;
        const double rest = std::fabs(fx * ((b - a) / (fb - fa)));
        if (rest <= last_digit * std::fabs(x)) return x;
        if (width < close * std::fabs(x) || ++approach > approach_steps) ++polish;
        if (polish > polish_steps) return x;
    }
    throw MthException(mth_iterations);
}
