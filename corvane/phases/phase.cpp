#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/phase.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace corvane {

void PhaseState::resize(int n) {
    for (auto* v : {&x, &rho_i, &m, &m_T, &P}) v->resize(static_cast<std::size_t>(n));
    H.resize(static_cast<std::size_t>(n * n));
}
double PhaseState::m_p(int i) const {
    return v(i) / (R * T);
}
double PhaseState::m_T_at_p(int i) const {
    // At constant p the density gives way: ∂rho_j/∂T = −x_j·rho·(∂p/∂T)/(rho·∂p/∂rho).
    const double slope = p_T + p / (R * T);  // T·(∂p/∂T)/(RT)
    return (m_T[i] - v(i) * slope) / T;
}

FluidModel::FluidModel(ModelN const& model, Vector<double> const& z)
    : model_(model), full_(z.size()) {
    if (z.size() != model.mdl1.size() || z.size() < 1) throw MthException(mth_dimensions);
    double sum = 0.0;
    for (int i = 0; i < z.size(); ++i) {
        if (!(z[i] >= 0.0)) throw ThException(th_out_of_range);
        sum += z[i];
        if (z[i] > 0.0) {
            present_.push_back(i);
            z_.push_back(z[i]);
        }
    }
    if (!(std::fabs(sum - 1.0) <= 1e-6)) throw ThException(th_out_of_range);
    for (double& zi : z_) zi /= sum;
    const std::size_t n = static_cast<std::size_t>(z.size());
    mu_.resize(n);
    mu_T_.resize(n);
    mu_rho_.resize(n * n);
}
Model1 const& FluidModel::pure(int k) const {
    return *model_.mdl1[present_[k]];
}
Vector<double> FluidModel::expand(std::vector<double> const& x) const {
    Vector<double> all(full_.size());
    all.set(0.0);
    for (int k = 0; k < size(); ++k) all[present_[k]] = x[k];
    return all;
}
double FluidModel::molar_mass(int k) const {
    return pure(k).M();
}
double FluidModel::wilson(int k, double T) const {
    Model1 const& c = pure(k);
    return std::log(c.pcrit()) + 5.373 * (1.0 + c.omega()) * (1.0 - c.Tcrit() / T);
}

bool FluidModel::slots(PhaseState& s, double T, int order) const {
    const int all = full_.size();
    for (int i = 0; i < all; ++i) mu_[i] = model_.myr(full_, T, i);
    if (order & phase_T) {
        const double h = 1e-4;
        for (int i = 0; i < all; ++i)
            mu_T_[i] =
                (model_.myr(full_, T * (1 + h), i) - model_.myr(full_, T * (1 - h), i)) / (2 * h);
    }
    if (order & phase_H) {
        const Matrix<double> H = model_.PsiH(full_, T);
        for (int i = 0; i < all; ++i)
            for (int j = 0; j < all; ++j)
                mu_rho_[i * all + j] = H[i][j] - (i == j && full_[i] > 0 ? 1 / full_[i] : 0.0);
    }
    if (order & phase_p) {
        const double Z = model_.Z(full_, T);
        s.p = Z * R * T * s.rho;
        if (order & phase_T) s.p_T = s.rho * (model_.betaV(full_, T) - Z);
    }
    return true;
}

bool FluidModel::evaluate(PhaseState& s, double T, int order) const {
    ++evaluations;
    const int n = size(), all = full_.size();
    s.T = T;
    s.rho = 0.0;
    for (int k = 0; k < n; ++k) s.rho += s.rho_i[k];
    full_.set(0.0);
    for (int k = 0; k < n; ++k) {
        s.x[k] = s.rho_i[k] / s.rho;
        full_[present_[k]] = s.rho_i[k];
    }
    if (!(s.rho > 0.0) || !std::isfinite(s.rho) || !(T > 0.0)) return false;
    if (DerivN const* exact = model_.derivatives()) {
        exact->potentials(full_, T, mu_.data(), order & phase_T ? mu_T_.data() : nullptr,
                          order & phase_H ? mu_rho_.data() : nullptr);
        if (order & phase_p) {
            double d[4];
            for (int i = 0; i < all; ++i) full_[i] /= s.rho;
            const int nT = order & phase_T ? 1 : 0;
            exact->deriv(s.rho, T, full_, 1, nT, d);
            s.p = R * T * s.rho * (1.0 + d[1 + nT]);
            if (nT) s.p_T = s.rho * d[3];
        }
    } else {
        slots(s, T, order);
    }
    bool finite = true;
    for (int k = 0; k < n; ++k) {
        s.m[k] = mu_[present_[k]] + std::log(s.rho_i[k]);
        finite = finite && std::isfinite(s.m[k]);
        if (order & phase_T) s.m_T[k] = mu_T_[present_[k]];
    }
    if (order & phase_H) {
        s.S = 0.0;
        for (int k = 0; k < n; ++k) s.P[k] = 1.0;
        for (int k = 0; k < n; ++k)
            for (int l = 0; l < n; ++l) {
                const double h = mu_rho_[present_[k] * all + present_[l]];
                s.H[k * n + l] = h + (k == l ? 1.0 / s.rho_i[k] : 0.0);
                s.P[l] += s.rho_i[k] * h;
            }
        for (int k = 0; k < n; ++k) s.S += s.rho_i[k] * s.P[k];
        finite = finite && std::isfinite(s.S);
    }
    return finite && (!(order & phase_p) || std::isfinite(s.p));
}

void FluidModel::fill(std::vector<double> const& x) const {
    if (size() < full_.size()) full_.set(0.0);
    for (int k = 0; k < size(); ++k) full_[present_[k]] = x[k];
}

int FluidModel::densities(double p, double T, std::vector<double> const& x, double* rho) const {
    ++evaluations;
    fill(x);
    double a = 0.0, b = 0.0;
    const int n = model_.vcalc(p, T, full_, 1, a, b);
    if (n < 1 || !(a > 0.0)) return 0;
    rho[0] = a;
    if (n < 2 || !(b > 0.0) || b == a) return 1;
    rho[1] = b;
    return 2;
}

bool FluidModel::evaluate_at(PhaseState& s, double p, double T, std::vector<double> const& x,
                             Root root, int order) const {
    ++evaluations;
    fill(x);
    double a = 0.0, b = 0.0;
    const int mode = root == Root::stable ? -1 : root == Root::dense ? 1 : 3;
    if (model_.vcalc(p, T, full_, mode, a, b) < 1 || !(a > 0.0)) return false;
    for (int k = 0; k < size(); ++k) s.rho_i[k] = x[k] * a;
    if (!evaluate(s, T, order)) return false;
    if (!(order & phase_p)) s.p = p;
    return true;
}

}  // namespace corvane
