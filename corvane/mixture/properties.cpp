// Residual and total properties of a mixture, built on Ar and vcalc of the model.
#include <corvane/core/numelo.h>
#include <corvane/mixture/modeln.h>
#include <corvane/mixture/state.h>
#include <corvane/pure/model1.h>

#include <cmath>

using corvane::checked_log;
using corvane::find_density;
using corvane::Partial;

namespace {
constexpr double kNoBound = 1e99;

// Objective functions of the numerical derivatives; the context is a passN record.
double ar_T(double T, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    return s.mdlN->Ar(s.rho, T, *s.x);
}
double ar_rho1(double rho, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    return s.mdlN->Ar(rho, s.T, *s.x);
}
double Z_rho(double rho, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    return s.mdlN->Z(rho, s.T, *s.x);
}
double p_rho(double rho, void* ctx) {
    return rho * Z_rho(rho, ctx);
}
double p_T(double T, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    return T * s.mdlN->Z(s.rho, T, *s.x);
}

double by_T(numelo_function f, ModelN const& m, int order, double rho, double T,
            Vector<double> const& x) {
    passN state{&m, 0, 0.0, rho, T, 0.0, &x};
    return diff_romberg(f, &state, order, T, th_inc1 * T, 1, 0.0, kNoBound);
}

double by_rho(numelo_function f, ModelN const& m, double rho, double T, Vector<double> const& x) {
    passN state{&m, 0, 0.0, rho, T, 0.0, &x};
    return diff_romberg(f, &state, 1, rho, th_inc1 * rho, 1, 0.0, kNoBound);
}

bool exact(ModelN const& m, double rho, double T, Vector<double> const& x, int nrho, int nT,
           double* d) {
    corvane::DerivN const* extension = m.derivatives();
    return extension && T > 0 && T <= kNoBound && extension->deriv(rho, T, x, nrho, nT, d) != 0;
}
/// Otherwise the numerical route answers, with its error, as in the pure fluid's calculus.
bool finite(double Ar, double result) {
    return std::isfinite(Ar + result);
}

/// T·∂Ar/∂T at constant density and composition.
double Ta(ModelN const& m, double rho, double T, Vector<double> const& x) {
    double d[2];
    if (exact(m, rho, T, x, 0, 1, d) && finite(d[0], d[1])) return d[1];
    return T * by_T(ar_T, m, 1, rho, T, x);
}

/// Σ y_i·ln rho_i over the components that are present.
double mixing_log(Vector<double> const& rho_i, Vector<double> const& y) {
    double sum = 0.0;
    for (int i = 0; i < y.size(); ++i)
        if (y[i] > 0) sum += y[i] * std::log(rho_i[i]);
    return sum;
}

/// Σ x_i·(property of component i's ideal gas).
double ideal_sum(ModelN const& m, Vector<double> const& x, double (Ideal::*property)(double) const,
                 double T) {
    double sum = 0.0;
    for (int i = 0; i < x.size(); ++i) sum += x[i] * (m.mdl1[i]->ideal.*property)(T);
    return sum;
}

double require_positive(double rho) {
    if (!(rho > 0)) throw ThException(th_out_of_range);
    return rho;
}
}  // namespace

// The library's forms of the slots that a plug-in may override.

double ModelN::Z(double rho, double T, Vector<double> const& x) const {
    if (rho == 0) return 1.0;
    return 1 + rho * by_rho(ar_rho1, *this, rho, T, x);
}
double ModelN::betaV(double rho, double T, Vector<double> const& x) const {
    return by_T(p_T, *this, 1, rho, T, x);
}

double ModelN::pV(double rho, double T, Vector<double> const& x) const {
    double d[3];
    if (rho > 0 && exact(*this, rho, T, x, 2, 0, d) && finite(d[0], d[1] + d[2]))
        return 1 + 2 * d[1] + d[2];
    return by_rho(p_rho, *this, rho, T, x);
}
double ModelN::kappaT(double rho, double T, Vector<double> const& x) const {
    return 1 / pV(rho, T, x);
}
double ModelN::alphap(double rho, double T, Vector<double> const& x) const {
    return betaV(rho, T, x) / pV(rho, T, x);
}
double ModelN::Ur(double rho, double T, Vector<double> const& x) const {
    return -Ta(*this, rho, T, x);
}
double ModelN::Hr(double rho, double T, Vector<double> const& x) const {
    return Z(rho, T, x) - 1 - Ta(*this, rho, T, x);
}
double ModelN::Sr(double rho, double T, Vector<double> const& x) const {
    return -Ta(*this, rho, T, x) - Ar(rho, T, x);
}
double ModelN::Gr(double rho, double T, Vector<double> const& x) const {
    return Ar(rho, T, x) + Z(rho, T, x) - 1;
}
double ModelN::Ge(double rho, double T, Vector<double> const& x) const {
    const double ln_rho = checked_log(rho);
    return Gr(rho, T, x) + ln_rho;
}
double ModelN::CVr(double rho, double T, Vector<double> const& x) const {
    double d[3];
    if (exact(*this, rho, T, x, 0, 2, d) && finite(d[0], d[1] + d[2]))
        return (-2 * d[1] - d[2]) / T;
    return -2 * by_T(ar_T, *this, 1, rho, T, x) - T * by_T(ar_T, *this, 2, rho, T, x);
}
double ModelN::Cpr(double rho, double T, Vector<double> const& x) const {
    const double beta = betaV(rho, T, x);
    return CVr(rho, T, x) + beta * beta / pV(rho, T, x) - 1;
}
double ModelN::CVm(double rho, double T, Vector<double> const& x) const {
    return CVr(rho, T, x) + ideal_sum(*this, x, &Ideal::CVm, T);
}
double ModelN::Cpm(double rho, double T, Vector<double> const& x) const {
    return Cpr(rho, T, x) + ideal_sum(*this, x, &Ideal::Cpm, T);
}
double ModelN::Hm(double rho, double T, Vector<double> const& x) const {
    return Hr(rho, T, x) + ideal_sum(*this, x, &Ideal::Hm, T);
}
double ModelN::Um(double rho, double T, Vector<double> const& x) const {
    return ideal_sum(*this, x, &Ideal::Um, T) - Ta(*this, rho, T, x);
}
double ModelN::Am(double rho, double T, Vector<double> const& x) const {
    return Ak(x * rho, T) + 1 + ideal_sum(*this, x, &Ideal::Am, T);
}
double ModelN::Gm(double rho, double T, Vector<double> const& x) const {
    return Gk(x * rho, T) + ideal_sum(*this, x, &Ideal::Gm, T);
}
double ModelN::Sm(double rho, double T, Vector<double> const& x) const {
    require_positive(rho);
    return Sm(x * rho, T);
}

double ModelN::B(double T, Vector<double> const& x, int k) const {
    double d = 0.0;
    for (int i = 0; i < x.size(); ++i) d += x[i] * mdl1[i]->vcrit();
    passN state{this, 0, 0.0, 0.0, T, 0.0, &x};
    // intended: bounded below by zero density, unlike the pure fluid
    double b = diff_romberg(Z_rho, &state, k - 1, 0.0, th_inc1 / d, 4, 0.0, kNoBound);
    for (int j = 2; j < k; ++j) b *= 1.0 / j;
    return b;
}

// Partial densities. One component goes past the mixture's Ar and Z to its own (intended).

double ModelN::Ar(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    if (state.rho == 0) return 0.0;
    if (mdl1.size() == 1) return mdl1[0]->Ar(state.rho, T);
    return Ar(state.rho, T, state.y);
}
double ModelN::Z(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    if (state.rho == 0) return 1.0;
    if (mdl1.size() == 1) return mdl1[0]->Z(state.rho, T);
    return Z(state.rho, T, state.y);
}
double ModelN::Sr(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    if (state.rho == 0) return 0.0;
    if (mdl1.size() == 1) return mdl1[0]->Sr(state.rho, T);
    return Sr(state.rho, T, state.y);
}
double ModelN::betaV(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    return betaV(state.rho, T, state.y);
}
double ModelN::Ak(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    require_positive(state.rho);
    return Ar(rho_i, T) - 1 + mixing_log(rho_i, state.y);
}
double ModelN::Gk(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    require_positive(state.rho);
    return Gr(state.rho, T, state.y) + mixing_log(rho_i, state.y);
}
double ModelN::Sk(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    require_positive(state.rho);
    return Sr(state.rho, T, state.y) - mixing_log(rho_i, state.y);
}
double ModelN::Sm(Vector<double> const& rho_i, double T) const {
    const Partial state(rho_i);
    return Sk(rho_i, T) + ideal_sum(*this, state.y, &Ideal::Sm, T);
}

double ModelN::Vm(double p, double T, Vector<double> const& x, int phase) const {
    double rho = 0.0;
    find_density(*this, p, T, x, phase, rho);
    return 1 / rho;
}

// The (p, T) forms: the density first, then the (rho, T, x) form.
#define CORVANE_AT_P_T(property)                                                                 \
    double ModelN::property(double p, double T, Vector<double> const& x, int phase, double& rho) \
        const {                                                                                  \
        find_density(*this, p, T, x, phase, rho);                                                \
        return property(rho, T, x);                                                              \
    }
CORVANE_AT_P_T(CVr)
CORVANE_AT_P_T(Cpr)
CORVANE_AT_P_T(Gr)
CORVANE_AT_P_T(Ge)
CORVANE_AT_P_T(Hr)
CORVANE_AT_P_T(alphap)
CORVANE_AT_P_T(betaV)
CORVANE_AT_P_T(kappaT)
CORVANE_AT_P_T(CVm)
CORVANE_AT_P_T(Cpm)
CORVANE_AT_P_T(Hm)
CORVANE_AT_P_T(Gm)
CORVANE_AT_P_T(Sm)
#undef CORVANE_AT_P_T
