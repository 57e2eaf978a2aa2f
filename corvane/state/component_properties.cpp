#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/state/component_properties.h>

#include <cmath>
#include <limits>
#include <vector>

namespace corvane {
namespace {
/// μ_i^r/(RT), T times its slope at constant densities, and its slopes in the densities.
struct Potentials {
    std::vector<double> mu, mu_T, mu_rho;

    explicit Potentials(std::size_t n) : mu(n), mu_T(n), mu_rho(n * n) {}
};

Potentials potentials(ModelN const& model, double T, Vector<double> const& rho_i) {
    const int n = rho_i.size();
    Potentials q(static_cast<std::size_t>(n));
    if (DerivN const* exact = model.derivatives()) {
        exact->potentials(rho_i, T, q.mu.data(), q.mu_T.data(), q.mu_rho.data());
        return q;
    }
    constexpr double kStep = 1e-4;  // error and rounding of the difference are both about 1e-9
    const Matrix<double> H = model.PsiH(rho_i, T);
    for (int i = 0; i < n; ++i) {
        const auto at = static_cast<std::size_t>(i);
        q.mu[at] = model.myr(rho_i, T, i);
        q.mu_T[at] = (model.myr(rho_i, T * (1 + kStep), i) - model.myr(rho_i, T * (1 - kStep), i)) /
                     (2 * kStep);
        // The diagonal of an absent component is no number there, and is multiplied by its density
        // 0.
        for (int j = 0; j < n; ++j)
            q.mu_rho[at * static_cast<std::size_t>(n) + static_cast<std::size_t>(j)] =
                i != j           ? H[i][j]
                : rho_i[i] > 0.0 ? H[i][i] - 1.0 / rho_i[i]
                                 : 0.0;
    }
    return q;
}
}  // namespace

ComponentProperties component_properties(ModelN const& model, double T, double rho,
                                         Vector<double> const& x) {
    const int n = x.size();
    if (n != model.mdl1.size()) throw MthException(mth_dimensions);
    if (!(T > 0) || !(rho > 0) || !std::isfinite(T) || !std::isfinite(rho))
        throw ThException(th_out_of_range);
    const Vector<double> rho_i = x * rho;
    const Potentials q = potentials(model, T, rho_i);
    const double RT = R * T, beta = model.betaV(rho, T, x);
    ComponentProperties result{model.Z(rho, T, x) * rho * RT, Vector<double>(n), Vector<double>(n),
                               Vector<double>(n), Vector<double>(n)};
    double S = 0.0;  // rho·∂(p/RT)/∂rho
    for (int j = 0; j < n; ++j) {
        double P = 1.0;
        for (int i = 0; i < n; ++i) P += rho_i[i] * q.mu_rho[static_cast<std::size_t>(i * n + j)];
        result.v[j] = P;
        S += rho_i[j] * P;
    }
    for (int i = 0; i < n; ++i) {
        const auto at = static_cast<std::size_t>(i);
        result.v[i] /= S;
        result.ln_fx[i] = q.mu[at] + std::log(rho * RT);
        result.ln_phi[i] = result.p > 0.0 ? result.ln_fx[i] - std::log(result.p)
                                          : std::numeric_limits<double>::quiet_NaN();
        // At constant p the density gives way: ∂ln rho/∂T = −rho·beta/(T·S).
        result.h_res[i] = RT * (result.v[i] * rho * beta - q.mu_T[at] - 1.0);
        if (!std::isfinite(result.ln_fx[i])) throw ThException(th_out_of_range);
    }
    return result;
}

}  // namespace corvane
