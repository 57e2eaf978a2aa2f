// The slots of a mixture model from its exact derivatives. Where those are no numbers, past a pole
// or at an impossible temperature, the library's own form of the slot answers instead, with the
// error that it raises for such a state.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/plugin/small_array.h>

#include <cmath>

namespace corvane {

/// ModelN::betaV by DerivN::deriv.
template <class Model>
double exact_betaV(Model const& m, double rho, double T, Vector<double> const& x) {
    double d[4];
    m.deriv(rho, T, x, 1, 1, d);
    const double beta = 1.0 + d[2] + d[3];
    return std::isfinite(T) && std::isfinite(d[0] + beta) ? beta : m.ModelN::betaV(rho, T, x);
}

/// ModelN::PsiH by DerivN::potentials.
template <class Model>
Matrix<double> exact_PsiH(Model const& m, Vector<double> const& rho_i, double T) {
    const int n = rho_i.size();
    SmallArray<double> mu(n);
    SmallArray<double, 576> residual(n * n);
    m.potentials(rho_i, T, &mu[0], nullptr, &residual[0]);
    Matrix<double> H(n, n);
    for (int i = 0; i < n; ++i) {
        const bool possible = rho_i[i] == 0.0 || (rho_i[i] > 0.0 && std::isfinite(mu[i]));
        if (!possible) return m.ModelN::PsiH(rho_i, T);
        for (int j = 0; j < n; ++j) H[i][j] = residual[i * n + j];
        H[i][i] = rho_i[i] > 0.0 ? H[i][i] + 1.0 / rho_i[i] : 1e99;  // absent: as the library's
    }
    return H;
}

}  // namespace corvane
