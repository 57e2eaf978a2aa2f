#include <corvane/core/errors.h>
#include <corvane/mixture/heat_capacity.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>
#include <corvane/state/phase_formulas.h>
#include <corvane/state/phase_properties.h>

#include <array>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// From d[3i + j] = rho^i·T^j·∂^(i+j)Ar.
ResidualPart<double> residual(std::array<double, 9> const& d) {
    return {d[0], d[1], d[2], 1 + d[3], 1 + d[3] + d[4], 1 + 2 * d[3] + d[6]};
}

/// A molar mass that is not known is 0.
double known(double M) {
    return M > 0.0 ? M : kNaN;
}

PhaseProperties assemble(double T, double rho, double M, ResidualPart<double> const& r,
                         IdealPart<double> const& gas) {
    if (!std::isfinite(r.a) || !std::isfinite(r.P_rho)) throw ThException(th_out_of_range);
    PhaseValues<double> d;
    derive(T, rho, std::log(rho), M, r, gas, d);
    PhaseProperties q;
    q.T = T, q.rho = rho, q.M = M;
    q.p = d.p, q.Z = d.Z;
    q.u = d.u, q.h = d.h, q.g = d.g, q.a = d.a;
    q.s = d.s, q.cv = d.cv, q.cp = d.cp;
    q.w = d.w, q.mu_JT = d.mu_JT, q.kappa_T = d.kappa_T, q.alpha_p = d.alpha_p;
    q.dp_dT = d.dp_dT, q.dp_drho = d.dp_drho, q.n_s = d.n_s;
    q.a_res = r.a;
    q.h_res = r.Z - 1 - r.Ta;
    q.s_res = -r.Ta - r.a;
    q.cv_res = -2 * r.Ta - r.TTa;
    return q;
}

void check(double T, double rho) {
    if (!(T > 0) || !(rho > 0) || !std::isfinite(T) || !std::isfinite(rho))
        throw ThException(th_out_of_range);
}

/// False without a table.
bool add_ideal(Ideal const& table, double T, double x, IdealPart<double>& sum) {
    try {
        const Ideal::Parts of = table.parts(T);
        sum.U += x * of.U;
        sum.S += x * of.S;
        sum.cv += x * of.cv;
        return true;
    } catch (ThException const&) {
        return false;
    }
}
}  // namespace

PhaseProperties phase_properties(Model1 const& model, double T, double rho) {
    check(T, rho);
    std::array<double, 9> d{};
    ResidualPart<double> r;
    if (Deriv1 const* exact = model.derivatives(); exact && exact->deriv(rho, T, 2, 2, d.data()))
        r = residual(d);
    else {
        const double Ta = -model.Ur(rho, T);
        r = {
            model.Ar(rho, T), Ta, -model.CVr(rho, T) - 2 * Ta, model.Z(rho, T), model.betaV(rho, T),
            model.pV(rho, T)};
    }
    IdealPart<double> gas{0, 0, 0};
    if (!add_ideal(model.ideal, T, 1.0, gas)) gas = {kNaN, kNaN, kNaN};
    return assemble(T, rho, known(model.M()), r, gas);
}

PhaseProperties phase_properties(ModelN const& model, double T, double rho,
                                 Vector<double> const& x) {
    check(T, rho);
    if (x.size() != model.mdl1.size()) throw MthException(mth_dimensions);
    std::array<double, 9> d{};
    ResidualPart<double> r;
    if (DerivN const* exact = model.derivatives(); exact && exact->deriv(rho, T, x, 2, 2, d.data()))
        r = residual(d);
    else {
        const double Ta = -model.Ur(rho, T, x);
        // ModelN::CVr lacks the factor T
        r = {model.Ar(rho, T, x),
             Ta,
             -T * model.CVr(rho, T, x) - 2 * Ta,
             model.Z(rho, T, x),
             model.betaV(rho, T, x),
             model.pV(rho, T, x)};
    }
    IdealPart<double> gas{0, 0, 0};
    double M = 0.0;
    for (int i = 0; i < x.size(); ++i) {
        if (x[i] == 0.0) continue;
        M += x[i] * known(model.mdl1[i]->M());
        if (!add_ideal(model.mdl1[i]->ideal, T, x[i], gas)) gas = {kNaN, kNaN, kNaN};
        gas.S -= x[i] * std::log(x[i]);
    }
    return assemble(T, rho, M, r, gas);
}

}  // namespace corvane
