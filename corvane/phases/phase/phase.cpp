#include <corvane/core/constants.h>
#include <corvane/mixture/isotherm.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/pure/model1.h>

#include <cmath>
#include <limits>

namespace corvane {

void PhaseState::resize(int n) {
    for (auto* v : {&x, &rho_i, &m, &m_T, &P}) v->resize(static_cast<std::size_t>(n));
    H.resize(static_cast<std::size_t>(n * n));
}
namespace {
constexpr double kWilson = 5.373;  // ln 10·7/3: Wilson, Tech. Conf. API 1968
}  // namespace

double PhaseState::P_rounding() const {
    return 8 * std::numeric_limits<double>::epsilon() * std::fabs(S);
}
double PhaseState::m_p(int i) const {
    return v(i) / (R * T);
}
double PhaseState::m_T_at_p(int i) const {
    // At constant p the density gives way: ∂rho_j/∂T = −x_j·rho·(∂p/∂T)/(rho·∂p/∂rho).
    const double slope = p_T + p / (R * T);  // T·(∂p/∂T)/(RT)
    return (m_T[i] - v(i) * slope) / T;
}

FluidModel::FluidModel(ModelN const& model, Vector<double> const& z) {
    assign(model, z);
}
void FluidModel::assign(ModelN const& model, Vector<double> const& z) {
    if (z.size() != model.mdl1.size() || z.size() < 1) throw MthException(mth_dimensions);
    model_ = &model;
    isotherm_ = dynamic_cast<IsothermN const*>(&model);
    work_T_ = 0.0;
    evaluations = 0;
    if (full_.size() != z.size()) full_ = Vector<double>(z.size());
    double sum = 0.0;
    present_.clear();
    z_.clear();
    present_.reserve(static_cast<std::size_t>(z.size()));
    z_.reserve(static_cast<std::size_t>(z.size()));
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
    weights_.clear();
    bool by_mass = true;
    for (int k = 0; k < size(); ++k) by_mass = by_mass && pure(k).M() > 0.0;
    for (int k = 0; k < size(); ++k) weights_.push_back(by_mass ? pure(k).M() : pure(k).vcrit());
    const std::size_t n = static_cast<std::size_t>(z.size());
    if (isotherm_) {
        work_.resize(static_cast<std::size_t>(isotherm_->isotherm_size(size())));
        return;
    }
    mu_.resize(n);
    mu_T_.resize(n);
    mu_rho_.resize(n * n);
}
double const* FluidModel::isotherm(double T, bool slopes) const {
    if (T != work_T_ || (slopes && !work_slopes_)) {
        isotherm_->isotherm(T, present_.data(), size(), slopes, work_.data());
        work_T_ = T;
        work_slopes_ = slopes;
    }
    return work_.data();
}
bool FluidModel::exact() const {
    return isotherm_ || model_->derivatives();
}
Model1 const& FluidModel::pure(int k) const {
    return *model_->mdl1[present_[k]];
}
Vector<double> FluidModel::expand(std::vector<double> const& x) const {
    Vector<double> all(full_.size());
    all.set(0.0);
    for (int k = 0; k < size(); ++k) all[present_[k]] = x[k];
    return all;
}
double FluidModel::mass_density(PhaseState const& s) const {
    double sum = 0.0;
    for (int k = 0; k < size(); ++k) sum += s.rho_i[k] * weight(k);
    return sum;
}
double FluidModel::wilson(int k, double T) const {
    Model1 const& c = pure(k);
    return std::log(c.pcrit()) + kWilson * (1.0 + c.omega()) * (1.0 - c.Tcrit() / T);
}
double FluidModel::wilson_slope(int k) const {
    return kWilson * (1.0 + pure(k).omega()) * pure(k).Tcrit();
}

// Without DerivN; for all components.
void FluidModel::slots(PhaseState& s, double T, int order) const {
    const int all = full_.size();
    for (int i = 0; i < all; ++i) mu_[i] = model_->myr(full_, T, i);
    if (order & phase_T) {
        const double h = 1e-4;
        for (int i = 0; i < all; ++i)
            mu_T_[i] =
                (model_->myr(full_, T * (1 + h), i) - model_->myr(full_, T * (1 - h), i)) / (2 * h);
    }
    if (order & phase_H) {
        const Matrix<double> H = model_->PsiH(full_, T);
        for (int i = 0; i < all; ++i)
            for (int j = 0; j < all; ++j)
                mu_rho_[i * all + j] = H[i][j] - (i == j && full_[i] > 0 ? 1 / full_[i] : 0.0);
    }
    if (order & phase_p) {
        const double Z = model_->Z(full_, T);
        s.p = Z * R * T * s.rho;
        if (order & phase_T) s.p_T = s.rho * (model_->betaV(full_, T) - Z);
    }
}

// Residual potentials and what order asks for, in the places of m, m_T, H, p and p_T.
void FluidModel::potentials(PhaseState& s, double T, int order) const {
    const int n = size(), all = full_.size();
    const bool slopes = order & phase_T;
    if (isotherm_) {
        double P = 0.0;
        isotherm_->potentials(
            isotherm(T, slopes), n, s.rho_i.data(), s.m.data(), slopes ? s.m_T.data() : nullptr,
            order & phase_H ? s.H.data() : nullptr, order & phase_p ? &P : nullptr,
            slopes && (order & phase_p) ? &s.p_T : nullptr);
        if (order & phase_p) s.p = P * (R * T);
        return;
    }
    full_.set(0.0);
    for (int k = 0; k < n; ++k) full_[present_[k]] = s.rho_i[k];
    if (DerivN const* exact = model_->derivatives()) {
        exact->potentials(full_, T, mu_.data(), slopes ? mu_T_.data() : nullptr,
                          order & phase_H ? mu_rho_.data() : nullptr);
        if (order & phase_p) {
            double d[4];
            for (int i = 0; i < all; ++i) full_[i] /= s.rho;
            const int nT = slopes ? 1 : 0;
            exact->deriv(s.rho, T, full_, 1, nT, d);
            s.p = R * T * s.rho * (1.0 + d[1 + nT]);
            if (nT) s.p_T = s.rho * d[3];
        }
    } else {
        slots(s, T, order);
    }
    for (int k = 0; k < n; ++k) {
        s.m[k] = mu_[present_[k]];
        if (slopes) s.m_T[k] = mu_T_[present_[k]];
        for (int l = 0; order & phase_H && l < n; ++l)
            s.H[k * n + l] = mu_rho_[present_[k] * all + present_[l]];
    }
}

bool FluidModel::evaluate(PhaseState& s, double T, int order) const {
    ++evaluations;
    const int n = size();
    s.T = T;
    s.rho = 0.0;
    for (int k = 0; k < n; ++k) s.rho += s.rho_i[k];
    for (int k = 0; k < n; ++k) s.x[k] = s.rho_i[k] / s.rho;
    if (!(s.rho > 0.0) || !std::isfinite(s.rho) || !(T > 0.0)) return false;
    potentials(s, T, order);
    bool finite = true;
    for (int k = 0; k < n; ++k) {
        s.m[k] += std::log(s.rho_i[k]);
        finite = finite && std::isfinite(s.m[k]);
    }
    if (order & phase_H) {
        s.S = 0.0;
        for (int k = 0; k < n; ++k) s.P[k] = 1.0;
        for (int k = 0; k < n; ++k) {
            for (int l = 0; l < n; ++l) s.P[l] += s.rho_i[k] * s.H[k * n + l];
            s.H[k * n + k] += 1.0 / s.rho_i[k];
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

// At a density root; work_ or full_ belong to T and x.
double FluidModel::gibbs(double p, double T, std::vector<double> const& x, double rho) const {
    if (isotherm_) return isotherm_->gibbs(work_.data(), size(), x.data(), p, rho);
    return model_->Ar(rho, T, full_) + p / (R * T * rho) - 1.0 + std::log(rho);
}

int FluidModel::densities(double p, double T, std::vector<double> const& x, double* rho,
                          double* g) const {
    ++evaluations;
    int found = 0;
    if (isotherm_) {
        if (T > 0.0) found = isotherm_->densities(isotherm(T, false), size(), x.data(), p, rho);
    } else {
        fill(x);
        double a = 0.0, b = 0.0;
        const int n = model_->vcalc(p, T, full_, 1, a, b);
        if (n > 0 && a > 0.0) {
            rho[found++] = a;
            if (n > 1 && b > 0.0 && b != a) rho[found++] = b;
        }
    }
    for (int k = 0; g && k < found; ++k) g[k] = gibbs(p, T, x, rho[k]);
    return found;
}

bool FluidModel::evaluate_at(PhaseState& s, double p, double T, std::vector<double> const& x,
                             Root root, int order) const {
    double a = 0.0;
    if (isotherm_) {
        double rho[2];
        const int found = densities(p, T, x, rho);
        if (found == 0) return false;
        const bool first =
            found == 1 || root == Root::dense ||
            (root == Root::stable && gibbs(p, T, x, rho[0]) <= gibbs(p, T, x, rho[1]));
        a = rho[first ? 0 : 1];
    } else {
        ++evaluations;
        fill(x);
        double b = 0.0;
        const int mode = root == Root::stable ? -1 : root == Root::dense ? 1 : 3;
        if (model_->vcalc(p, T, full_, mode, a, b) < 1 || !(a > 0.0)) return false;
    }
    for (int k = 0; k < size(); ++k) s.rho_i[k] = x[k] * a;
    if (!evaluate(s, T, order)) return false;
    if (!(order & phase_p)) s.p = p;
    return true;
}

}  // namespace corvane
