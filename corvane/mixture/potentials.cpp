// Chemical potentials of a mixture, and the Helmholtz energy density with its gradient and Hessian
// in the partial densities.
#include <corvane/core/numelo.h>
#include <corvane/mixture/modeln.h>
#include <corvane/mixture/state.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

using corvane::find_density;
using corvane::Partial;

namespace {
constexpr double kAbsent = 1e99;  // stands for infinity where a component is absent

/// n·Ar per initial volume when d moles of component i join one mole at fixed volume 1/rho.
double ar_ni(double d, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    Vector<double> x(*s.x);
    x[s.i] += d;
    for (int k = 0; k < x.size(); ++k) x[k] /= 1 + d;
    const double rho = s.rho * (1 + d);
    return rho * s.mdlN->Ar(rho, s.T, x);
}

/// Residual Helmholtz energy density rho·Ar.
double ar_rho(Vector<double> const& rho_i, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    return rho_i.sum() * s.mdlN->Ar(rho_i, s.T);
}

double myr_rho(Vector<double> const& rho_i, void* ctx) {
    auto const& s = *static_cast<passN const*>(ctx);
    return s.mdlN->myr(rho_i, s.T, s.i);
}
}  // namespace

double ModelN::myr(Vector<double> const& rho_i, double T, int i) const {
    const Partial state(rho_i);
    if (state.rho == 0) return 0.0;
    if (mdl1.size() == 1) return mdl1[0]->Gr(state.rho, T);
    passN context{this, i, 0.0, state.rho, T, 0.0, &state.y};
    // intended: an absolute step of 0.001 mol; the bound keeps the amount of i from going negative
    return diff_romberg(ar_ni, &context, 1, 0.0, th_inc1, 1, std::min(0.0, -state.y[i]), 1e99) /
           state.rho;
}
double ModelN::myr(double rho, double T, Vector<double> const& x, int i) const {
    return myr(x * rho, T, i);
}
double ModelN::myr(double p, double T, Vector<double> const& x, int i, int phase,
                   double& rho) const {
    find_density(*this, p, T, x, phase, rho);
    return myr(x * rho, T, i);
}

double ModelN::my(Vector<double> const& rho_i, double T, int i) const {
    if (!(rho_i.sum() > 0)) throw ThException(th_out_of_range);
    if (rho_i[i] <= 0) return -kAbsent;
    return myr(rho_i, T, i) + std::log(rho_i[i]);
}
double ModelN::my(double rho, double T, Vector<double> const& x, int i) const {
    return my(x * rho, T, i);
}
double ModelN::my(double p, double T, Vector<double> const& x, int i, int phase,
                  double& rho) const {
    find_density(*this, p, T, x, phase, rho);
    return my(x * rho, T, i);
}

double ModelN::Psi(Vector<double> const& rho_i, double T) const {
    return rho_i.sum() * Ak(rho_i, T);
}
double ModelN::Psi(double rho, double T, Vector<double> const& x) const {
    return Psi(x * rho, T);
}

Vector<double> ModelN::PsiG(Vector<double> const& rho_i, double T) const {
    Vector<double> h = rho_i * th_inc1;
    for (int k = 0; k < h.size(); ++k)
        if (h[k] == 0) h[k] = th_veps;
    passN context{this, 0, 0.0, 0.0, T, 0.0, nullptr};
    Vector<double> g = diff_gradient(ar_rho, &context, rho_i, 2, h);
    for (int k = 0; k < g.size(); ++k) g[k] += rho_i[k] > 0 ? std::log(rho_i[k]) + 1 : -kAbsent;
    return g;
}
Vector<double> ModelN::PsiG(double rho, double T, Vector<double> const& x) const {
    return PsiG(x * rho, T);
}

Matrix<double> ModelN::PsiH(Vector<double> const& rho_i, double T) const {
    const int n = rho_i.size();
    Vector<double> h = rho_i * th_inc1;
    for (int k = 0; k < n; ++k)
        if (h[k] == 0) h[k] = th_inc1 * rho_i.sum();
    passN context{this, 0, 0.0, 0.0, T, 0.0, nullptr};
    Matrix<double> H(n, n);
    if (hess_myr_)
        for (context.i = 0; context.i < n; ++context.i)
            H[context.i] = diff_gradient(myr_rho, &context, rho_i, 2, h);
    else
        H = diff_hessian(ar_rho, &context, rho_i, 2, h);
    for (int k = 0; k < n; ++k)
        if (rho_i[k] > 0)
            H[k][k] += 1 / rho_i[k];
        else
            H[k][k] = kAbsent;  // intended: overwritten, not added
    return H;
}
Matrix<double> ModelN::PsiH(double rho, double T, Vector<double> const& x) const {
    return PsiH(x * rho, T);
}
