#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/state/component_properties.h>
#include <corvane/state/excess.h>
#include <corvane/state/phase_properties.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void check(ModelN const& model, double T, double p, Vector<double> const& x) {
    if (x.size() != model.mdl1.size()) throw MthException(mth_dimensions);
    if (!(T > 0) || !(p > 0) || !std::isfinite(T) || !std::isfinite(p))
        throw ThException(th_out_of_range);
    double sum = 0.0;
    for (int i = 0; i < x.size(); ++i) {
        if (!(x[i] >= 0.0)) throw ThException(th_out_of_range);
        sum += x[i];
    }
    if (!(std::fabs(sum - 1.0) <= 1e-6)) throw ThException(th_out_of_range);
}

/// Density roots at (p, T), the densest first; the one asked for, and whether it is alone and the
/// one of lower Gibbs energy.
struct Chosen {
    double rho = 0.0;
    bool alone = false, stable = true;
};
Chosen choose(ModelN const& model, double T, double p, Vector<double> const& x, Root root) {
    const FluidModel fluid(model, x);
    double rho[2] = {0.0, 0.0}, g[2] = {0.0, 0.0};
    const int found = fluid.densities(p, T, fluid.z(), rho, g);
    if (found < 1) return {};
    if (found == 1) return {rho[0], true, true};
    const int lower = g[0] <= g[1] ? 0 : 1;
    const int taken = root == Root::dense ? 0 : root == Root::dilute ? 1 : lower;
    return {rho[taken], false, taken == lower};
}

Vector<double> only(int i, int n) {
    Vector<double> x(n);
    x.set(0.0);
    x[i] = 1.0;
    return x;
}

/// The reference and, if `properties` is given and there is a root, all of its properties.
PureReference reference(ModelN const& model, int i, double T, double p, Root root,
                        PhaseProperties* properties = nullptr) {
    const Vector<double> x = only(i, model.mdl1.size());
    const Chosen at = choose(model, T, p, x, root);
    PureReference pure{at.rho, kNaN, at.alone, at.stable, false};
    if (!(at.rho > 0.0)) return pure;
    Model1 const& component = *model.mdl1[i];
    pure.liquid = T < component.Tcrit() && at.rho * component.vcrit() > 1.0;
    pure.ln_phi = component_properties(model, T, at.rho, x).ln_fx[i] - std::log(p);
    if (properties) *properties = phase_properties(model, T, at.rho, x);
    return pure;
}

/// Residual isobaric heat capacity at p and T over R.
double cp_res(PhaseProperties const& q) {
    const double P_T = q.dp_dT / (q.rho * R), P_rho = q.dp_drho / (R * q.T);
    return q.cv_res + P_T * P_T / P_rho - 1.0;
}
}  // namespace

ExcessProperties excess_properties(ModelN const& model, double T, double p, Vector<double> const& x,
                                   Root root) {
    check(model, T, p, x);
    const int n = x.size();
    const Chosen at = choose(model, T, p, x, root);
    if (!(at.rho > 0.0)) throw ThException(th_no_density);
    const ComponentProperties each = component_properties(model, T, at.rho, x);
    const PhaseProperties whole = phase_properties(model, T, at.rho, x);
    ExcessProperties q;
    q.T = T;
    q.p = p;
    q.rho = at.rho;
    q.ln_gamma = q.ln_phi = Vector<double>(n);
    q.h = whole.h_res;
    q.cp = cp_res(whole);
    q.v = 1.0 / at.rho;
    for (int i = 0; i < n; ++i) {
        PhaseProperties alone;
        q.pure.push_back(reference(model, i, T, p, root, &alone));
        q.ln_phi[i] = each.ln_fx[i] - std::log(p);
        q.ln_gamma[i] = q.ln_phi[i] - q.pure.back().ln_phi;
        if (x[i] == 0.0) continue;
        const bool known = q.pure.back().rho > 0.0;
        q.g += x[i] * q.ln_gamma[i];
        q.h -= known ? x[i] * alone.h_res : kNaN;
        q.cp -= known ? x[i] * cp_res(alone) : kNaN;
        q.v -= known ? x[i] / q.pure.back().rho : kNaN;
    }
    q.g *= R * T;
    q.h *= R * T;
    q.cp *= R;
    q.s = (q.h - q.g) / T;
    return q;
}

HenryConstant henry_constant(ModelN const& model, int solute, double T, double p,
                             Vector<double> const& x) {
    check(model, T, p, x);
    if (solute < 0 || solute >= x.size() || x[solute] != 0.0) throw ThException(th_out_of_range);
    const Chosen at = choose(model, T, p, x, Root::dense);
    if (!(at.rho > 0.0)) throw ThException(th_no_density);
    const ComponentProperties each = component_properties(model, T, at.rho, x);
    HenryConstant q;
    q.T = T;
    q.p = p;
    q.rho = at.rho;
    q.stable = at.stable;
    q.ln_H = each.ln_fx[solute];
    q.H = std::exp(q.ln_H);
    q.ln_phi = q.ln_H - std::log(p);
    q.pure = reference(model, solute, T, p, Root::dense);
    q.ln_gamma = q.ln_phi - q.pure.ln_phi;
    q.v = each.v[solute];
    q.h_solution = each.h_res[solute];
    return q;
}

HenryConstant henry_constant(ModelN const& model, int solute, double T, Vector<double> const& x) {
    check(model, T, 1.0, x);
    if (solute < 0 || solute >= x.size() || x[solute] != 0.0) throw ThException(th_out_of_range);
    return henry_constant(model, solute, T, bubble_T(model, T, x).p, x);
}

}  // namespace corvane
