#include <corvane/classic/volume/fluid.h>
#include <corvane/classic/volume/volume.h>
#include <corvane/core/numelo.h>

#include <cmath>

namespace {
using corvane::pass_vol;

constexpr int kIterations = 20;
constexpr int kRangeChecks = 4;

/// Pressure less the target; the model is not asked at zero density.
double pdiff0(double y, void* ctx) {
    auto const& fluid = *static_cast<pass_vol const*>(ctx);
    return y == 0.0 ? -fluid.p : fluid.excess(y);
}

bool off(pass_vol const& fluid, double rho) {
    return fluid.kind == 0 && static_cast<Model1 const*>(fluid.model)->off(rho, fluid.T);
}

bool iterate(pass_vol& fluid, double& rho) {
    if (!corvane::is_state(fluid.p, fluid.T) || !(fluid.d > 0.0)) return false;
    double y = rho * fluid.d;
    double retreat = y < 0.5 ? -y : 1.0 - y;
    for (int k = 0; k < kIterations; ++k) {
        // Intended: the check sees the density on entry, not the iterate, so that a start outside
        // the range of the model fails, after the retreats.
        for (int checks = 1; off(fluid, rho); ++checks) {
            if (checks == kRangeChecks) return false;
            retreat /= 2.0;
            y += retreat;
        }
        const double f = pdiff0(y, &fluid);
        const double slope = diff_x(pdiff0, &fluid, y, th_inc0);
        if (slope < 0.0) {
            retreat /= 2.0;
            y += retreat;
            continue;
        }
        const double step = f / slope;
        y -= step;
        retreat = step;
        if (!(y > 0.0 && y < 1.0)) return false;
        if (std::fabs(step) <= th_veps * y) {
            if (!corvane::is_root(fluid, y)) return false;  // short by a slope taken across a pole
            rho = y / fluid.d;
            return true;
        }
    }
    return false;
}
}  // namespace

bool volnewt(void const* model, int kind, double p, double T, Vector<double> const* x, double d,
             double& rho) {
    pass_vol fluid{kind, p, T, d, x, model};
    try {
        return iterate(fluid, rho);
    } catch (...) {
        return false;
    }
}
