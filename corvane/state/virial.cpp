#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>
#include <corvane/state/virial.h>

#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace corvane {
namespace {
/// rho·(second and higher coefficients) is less than rounding, and rho² is far from underflow.
constexpr double kDilute = 1e-14;

void check(double T) {
    if (!(T > 0) || !std::isfinite(T)) throw ThException(th_out_of_range);
}
VirialCoefficients finite(VirialCoefficients const& q) {
    if (!std::isfinite(q.B) || !std::isfinite(q.C)) throw ThException(th_out_of_range);
    return q;
}
/// From d[3i + j] = rho^i·T^j·∂^(i+j)Ar: Ar = B·rho + C·rho²/2 + …
VirialCoefficients from(std::array<double, 9> const& d, double rho) {
    return finite({d[3] / rho, d[6] / (rho * rho), d[4] / rho});
}
/// Without exact derivatives, by the numerical coefficients B(T, k).
template <class B>
VirialCoefficients by_differences(double T, B const& coefficient) {
    constexpr double kStep = 1e-4;
    return finite(
        {coefficient(T, 2), coefficient(T, 3),
         (coefficient(T * (1 + kStep), 2) - coefficient(T * (1 - kStep), 2)) / (2 * kStep)});
}
}  // namespace

VirialCoefficients virial_coefficients(Model1 const& model, double T) {
    check(T);
    std::array<double, 9> d{};
    const double rho = kDilute / model.vcrit();
    if (Deriv1 const* exact = model.derivatives(); exact && exact->deriv(rho, T, 2, 2, d.data()))
        return from(d, rho);
    return by_differences(T, [&](double t, int k) { return model.B(t, k); });
}

MixtureVirial virial_coefficients(ModelN const& model, double T, Vector<double> const& x) {
    check(T);
    const int n = x.size();
    if (n != model.mdl1.size()) throw MthException(mth_dimensions);
    MixtureVirial q;
    q.B_ij = Matrix<double>(n, n);
    DerivN const* exact = model.derivatives();
    double v = 0.0;
    for (int i = 0; i < n; ++i) v += x[i] * model.mdl1[i]->vcrit();
    const double rho = kDilute / v;
    std::array<double, 9> d{};
    if (exact && exact->deriv(rho, T, x, 2, 2, d.data())) {
        static_cast<VirialCoefficients&>(q) = from(d, rho);
        std::vector<double> mu(static_cast<std::size_t>(n)),
            mu_rho(static_cast<std::size_t>(n * n));
        exact->potentials(x * rho, T, mu.data(), nullptr, mu_rho.data());
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                q.B_ij[i][j] = 0.5 * mu_rho[static_cast<std::size_t>(i * n + j)];
        return q;
    }
    static_cast<VirialCoefficients&>(q) =
        by_differences(T, [&](double t, int k) { return model.B(t, x, k); });
    Vector<double> at(n);
    const auto of = [&](int i, int j) {
        at.set(0.0);
        at[i] += 0.5;
        at[j] += 0.5;
        return model.B(T, at, 2);
    };
    for (int i = 0; i < n; ++i) q.B_ij[i][i] = of(i, i);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < i; ++j)
            q.B_ij[i][j] = q.B_ij[j][i] = 2.0 * of(i, j) - 0.5 * (q.B_ij[i][i] + q.B_ij[j][j]);
    return q;
}

}  // namespace corvane
