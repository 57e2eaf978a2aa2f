#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/heat_capacity.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>
#include <corvane/state/phase_properties.h>

#include <array>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The residual part: Ar, T·Ar_T, T²·Ar_TT, and the derivatives P_T = ∂(TZ)/∂T, P_rho = ∂(ρZ)/∂ρ.
struct Residual {
    double a, Ta, TTa, Z, P_T, P_rho;
};

/// From d[3i + j] = rho^i·T^j·∂^(i+j)Ar.
Residual residual(std::array<double, 9> const& d) {
    return {d[0], d[1], d[2], 1 + d[3], 1 + d[3] + d[4], 1 + 2 * d[3] + d[6]};
}

/// Ideal-gas parts over R: U/T, S at unit density, CV. With the terms of mixing for mixtures.
struct IdealGas {
    double U, S, cv;
};

/// A molar mass that is not known is 0.
double known(double M) {
    return M > 0.0 ? M : kNaN;
}

PhaseProperties assemble(double T, double rho, double M, Residual const& r, IdealGas const& gas) {
    if (!std::isfinite(r.a) || !std::isfinite(r.P_rho)) throw ThException(th_out_of_range);
    const double RT = R * T, ln_rho = std::log(rho);
    PhaseProperties q;
    q.T = T;
    q.rho = rho;
    q.M = M;
    q.Z = r.Z;
    q.p = r.Z * rho * RT;
    q.dp_dT = rho * R * r.P_T;
    q.dp_drho = RT * r.P_rho;
    q.kappa_T = 1 / (rho * q.dp_drho);
    q.alpha_p = r.P_T / (T * r.P_rho);
    q.a_res = r.a;
    q.h_res = r.Z - 1 - r.Ta;
    q.s_res = -r.Ta - r.a;
    q.cv_res = -2 * r.Ta - r.TTa;
    const double u = gas.U - r.Ta, s = gas.S + q.s_res - ln_rho, cv = gas.cv + q.cv_res,
                 cp = cv + r.P_T * r.P_T / r.P_rho;
    q.u = RT * u;
    q.h = RT * (u + r.Z);
    q.s = R * s;
    q.a = RT * (u - s);
    q.g = RT * (u + r.Z - s);
    q.cv = R * cv;
    q.cp = R * cp;
    const double P_rho_s = r.P_rho + r.P_T * r.P_T / cv;  // (∂p/∂rho at s)/(RT)
    q.w = std::sqrt(1e3 * RT / M * P_rho_s);              // J/g is 1e3 m²/s²
    q.n_s = P_rho_s / r.Z;
    q.mu_JT = (r.P_T / r.P_rho - 1) / (rho * q.cp);
    return q;
}

void check(double T, double rho) {
    if (!(T > 0) || !(rho > 0) || !std::isfinite(T) || !std::isfinite(rho))
        throw ThException(th_out_of_range);
}

/// False without a table.
bool add_ideal(Ideal const& table, double T, double x, IdealGas& sum) {
    try {
        sum.U += x * table.Um(T);
        sum.S += x * table.Sm(T);
        sum.cv += x * table.CVm(T);
        return true;
    } catch (ThException const&) {
        return false;
    }
}
}  // namespace

PhaseProperties phase_properties(Model1 const& model, double T, double rho) {
    check(T, rho);
    std::array<double, 9> d{};
    Residual r;
    if (Deriv1 const* exact = model.derivatives(); exact && exact->deriv(rho, T, 2, 2, d.data()))
        r = residual(d);
    else {
        const double Ta = -model.Ur(rho, T);
        r = {model.Ar(rho, T), Ta, -model.CVr(rho, T) - 2 * Ta, model.Z(rho, T),
             model.betaV(rho, T), model.pV(rho, T)};
    }
    IdealGas gas{0, 0, 0};
    if (!add_ideal(model.ideal, T, 1.0, gas)) gas = {kNaN, kNaN, kNaN};
    return assemble(T, rho, known(model.M()), r, gas);
}

PhaseProperties phase_properties(ModelN const& model, double T, double rho,
                                 Vector<double> const& x) {
    check(T, rho);
    if (x.size() != model.mdl1.size()) throw MthException(mth_dimensions);
    std::array<double, 9> d{};
    Residual r;
    if (DerivN const* exact = model.derivatives(); exact && exact->deriv(rho, T, x, 2, 2, d.data()))
        r = residual(d);
    else {
        const double Ta = -model.Ur(rho, T, x);
        // ModelN::CVr lacks the factor T
        r = {model.Ar(rho, T, x), Ta, -T * model.CVr(rho, T, x) - 2 * Ta, model.Z(rho, T, x),
             model.betaV(rho, T, x), model.pV(rho, T, x)};
    }
    IdealGas gas{0, 0, 0};
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
