// All residual chemical potentials of a mixture at once. Internal to the library.
#pragma once

#include <corvane/mixture/modeln.h>

#include <cmath>

namespace corvane::inline detail {

/// Phases nearer than this are one (code 8): of mole fractions, of densities over the larger one.
inline constexpr double trivial_distance = 1e-3;

/// myr_i at the partial densities rho_i: in one pass where the model offers exact derivatives that
/// are numbers for what is present, else component by component, which raises the error of the
/// state.
inline Vector<double> residual_potentials(ModelN const& model, Vector<double> const& rho_i,
                                          double T) {
    Vector<double> mu(rho_i.size());
    if (DerivN const* exact = model.derivatives()) {
        exact->potentials(rho_i, T, mu.data, nullptr, nullptr);
        bool finite = true;
        for (int i = 0; i < mu.size(); ++i) finite &= rho_i[i] == 0 || std::isfinite(mu[i]);
        if (finite) return mu;
    }
    for (int i = 0; i < mu.size(); ++i) mu[i] = model.myr(rho_i, T, i);
    return mu;
}

/// Throws ThException 4 unless the model is a binary.
inline void require_binary(ModelN const& model) {
    if (model.mdl1.size() != 2) throw ThException(th_no_option);
}

/// The composition (x, 1 − x).
inline Vector<double> binary(double x) {
    Vector<double> y(2);
    y[0] = x;
    y[1] = 1 - x;
    return y;
}

}  // namespace corvane::inline detail
