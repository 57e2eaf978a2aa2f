#include <corvane/classic/volume/fluid.h>
#include <corvane/classic/volume/volume.h>
#include <corvane/core/numelo.h>

#include <algorithm>
#include <cmath>

namespace {
using corvane::pass_vol;

constexpr int kNewtonSteps = 20;
constexpr int kIllinoisSteps = 200;        // sound models take less than 30
constexpr double kDilute = 2.0 * th_inc0;  // below: ideal gas

double ar(double y, void* ctx) {
    auto const& fluid = *static_cast<pass_vol const*>(ctx);
    return fluid.Ar(y / fluid.d);
}

double ar_slope(pass_vol& fluid, int order, double y) {
    return diff_romberg(ar, &fluid, order, y, th_inc1 * y, 1, 0.0, 1.0);
}

double excess(pass_vol& fluid, double y, double target) {
    return y < kDilute ? y - target : (ar_slope(fluid, 1, y) * y + 1.0) * y - target;
}

/// Whether a short step, from where the function is f, led to a root. Next to a pole any step is
/// short, and a change of sign is no root.
bool is_close(pass_vol& fluid, double y, double target, double f) {
    const auto small = [&](double rest) {
        return std::fabs(rest) <= 1e-6 * (std::fabs(target) + y);
    };
    return y > 0.0 && y < 1.0 && (small(f) || small(excess(fluid, y, target)));
}
}  // namespace

int volav(void const* model, int kind, double p, double T, Vector<double> const* x, double d,
          double& rho) {
    pass_vol fluid{kind, p, T, d, x, model};
    double y = rho * d;
    if (!(y < 1.0) || !(d > 0.0) || !corvane::is_state(p, T)) return 0;
    const double target = p * d / (R * T);

    bool illinois = false;
    int newton_steps = 0, illinois_steps = 0;
    double y_before = y, f_before = 0.0;      // the previous iterate
    double y_retained = y, f_retained = 0.0;  // the other end of the secant
    while (newton_steps < kNewtonSteps && illinois_steps < kIllinoisSteps) {
        const bool dilute = y < kDilute;
        const double a1 = dilute ? 0.0 : ar_slope(fluid, 1, y);
        const double f = dilute ? y - target : (a1 * y + 1.0) * y - target;
        const bool sign_change = f * f_before < 0.0;
        if (!dilute && newton_steps >= 2 && sign_change) illinois = true;

        double step, y_new;
        if (illinois) {  // intended: neither clamped nor counted as a Newton step
            if (sign_change) {
                y_retained = y_before;
                f_retained = f_before;
            } else {
                f_retained *= 0.5;
            }
            step = (y - y_retained) * f / (f - f_retained);
            y_new = y - step;
            ++illinois_steps;
        } else {
            const double a2 = dilute ? 0.0 : ar_slope(fluid, 2, y);
            const double slope = dilute ? 1.0 : (2.0 * a1 + a2 * y) * y + 1.0;
            if (slope > 0.0)
                step = f / slope;
            else  // mechanically unstable: half the way to zero density or to y = 1
                step = f > 0.0 ? y / 2.0 : -(1.0 - y) / 2.0;
            y_new = std::min(1.0 - 4.0 * th_inc0, std::max(th_veps, y - step));
            ++newton_steps;
        }
        if (!std::isfinite(step)) return 0;
        y_before = y;
        f_before = f;
        y = y_new;
        rho = y / d;
        if (std::fabs(step) <= th_veps && (dilute || is_close(fluid, y, target, f))) return 1;
    }
    return 0;
}

namespace corvane {

bool is_density(void const* model, int kind, double p, double T, Vector<double> const* x,
                double rho) {
    const pass_vol fluid{kind, p, T, 1.0, x, model};
    return is_state(p, T) && rho > 0 &&
           std::fabs(fluid.excess(rho)) <= 1e-3 * std::fabs(p) + 1e-8 * R * T * rho;
}

}  // namespace corvane
