#include <corvane/classic/equilibria/equil2.h>
#include <corvane/classic/equilibria/ffinit.h>
#include <corvane/classic/equilibria/potentials.h>
#include <corvane/classic/input/input.h>
#include <corvane/classic/volume/volume.h>
#include <corvane/core/numelo.h>
#include <corvane/mixture/state.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr int kMaxIterations = 100;
constexpr double kLargestSum = 1e-12;
constexpr double kPurest = 12.0;  // a pure end of ffinit becomes x = 6e-6; the fit may go further

struct Split {
    ModelN const* model;
    double p, T;
    double rho[2];  // densities of the last evaluation
};

/// μ_i of phase 1 − μ_i of phase 0, over RT, at z_k = ln(x_k/(1 − x_k)).
Vector<double> difference(Vector<double> const& z, void* ctx) {
    auto& s = *static_cast<Split*>(ctx);
    Vector<double> r(2), x(2);
    for (int k = 0; k < 2; ++k) {
        x[0] = ztox(z[k]);
        x[1] = ztox(-z[k]);  // keeps its digits where x[0] is close to 1
        corvane::find_density(*s.model, s.p, s.T, x, 2, s.rho[k]);
        const Vector<double> rho_i = x * s.rho[k];
        const Vector<double> mu = corvane::residual_potentials(*s.model, rho_i, s.T);
        for (int i = 0; i < 2; ++i) {
            if (!(rho_i[i] > 0)) throw ThException(th_out_of_range);
            r[i] += (k ? 1 : -1) * (mu[i] + std::log(rho_i[i]));
        }
    }
    return r;
}
}  // namespace

void equil2(ModelN const* m, double p, double T, Vector<double>& x, Vector<double>& rho) {
    corvane::require_binary(*m);
    if (x.size() != 2 || rho.size() != 2) throw MthException(mth_dimensions);
    if (!(p > 0 && T > 0) || !std::isfinite(p) || !std::isfinite(T))
        throw ThException(th_no_density);
    const auto inside = [](double v) { return v > 0 && v < 1; };
    const bool given = inside(x[0]) && inside(x[1]) && x[0] != x[1];
    Vector<double> z = given ? x : ffinit(m, p, T);
    z.func(xtoz);
    if (!given)
        for (int k = 0; k < 2; ++k) z[k] = std::clamp(z[k], -kPurest, kPurest);
    Split context{m, p, T, {0.0, 0.0}};
    const double F = fit_marquardt(difference, z, 2, &context, kMaxIterations, 0);
    if (!(F < kLargestSum)) throw ThException(th_generic);
    if (std::fabs(ztox(z[0]) - ztox(z[1])) < corvane::trivial_distance) throw ThException(th_trivial);
    for (int k = 0; k < 2; ++k) {
        const Vector<double> phase = corvane::binary(ztox(z[k]));
        if (!corvane::is_density(m, 1, p, T, &phase, context.rho[k]))
            throw ThException(th_no_density);
    }
    for (int k = 0; k < 2; ++k) {
        x[k] = ztox(z[k]);
        rho[k] = context.rho[k];
    }
}
