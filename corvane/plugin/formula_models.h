// What the models of a formula share.
#pragma once

#include <corvane/plugin/density.h>
#include <corvane/plugin/formula.h>

#include <cmath>
#include <limits>

namespace corvane::inline detail {

/// The isotherm of a formula, for the searches of densities.
struct FormulaCurve {
    static constexpr bool closed = false;
    Formula const& formula;
    FormulaState const& at;

    IsothermPoint operator()(double rho) const { return formula.isotherm(at, rho); }
    double pressure(double rho) const { return rho * formula.Z(at, rho); }
    SlopePoint slope(double rho) const {
        const auto a = formula.fourth(at, rho);
        return {1.0 + 2.0 * (a(1) + a(2)), 2.0 * a(1) + 8.0 * a(2) + 6.0 * a(3),
                12.0 * a(2) + 36.0 * a(3) + 24.0 * a(4)};
    }
    double gibbs(double rho) const {
        const auto a = formula.second(at, rho);
        return a(0) + a(1) + std::log(rho);
    }
};

/// Z: not-a-number wherever Ar is no number, past a pole.
inline double formula_Z(Formula const& formula, FormulaState const& at, double rho) {
    if (rho > 0.0 && rho <= formula.range(at).top) return formula.Z(at, rho);
    const auto a = formula.second(at, rho);
    return std::isfinite(a(0)) ? 1.0 + a(1) : std::numeric_limits<double>::quiet_NaN();
}
/// Model1::vcalc.
inline int formula_densities(Formula const& formula, FormulaState const& at, double P, int phase,
                             double& rho1, double& rho2) {
    return all_densities(FormulaCurve{formula, at}, formula.range(at), P, phase, rho1, rho2);
}
/// Deriv1::deriv.
inline int formula_derivatives(Formula const& formula, FormulaState const& at, double rho, int nrho,
                               int nT, double* d) {
    const bool in_density = nT == 0 && nrho >= 0 && nrho <= 3;
    if (!in_density && !(nrho >= 0 && nrho <= 2 && nT >= 0 && nT <= 2)) return 0;
    constexpr double factorial[] = {1, 1, 2, 6};
    const double T = at.temperature;
    const bool possible = T > 0.0 && std::isfinite(T);
    auto write = [&](auto const& a) {
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT && i + j <= a.order; ++j)
                d[i * (nT + 1) + j] = possible ? factorial[i] * factorial[j] * a(i, j)
                                               : std::numeric_limits<double>::quiet_NaN();
    };
    if (!in_density)
        write(formula.both(at, rho));
    else if (nrho <= 2)
        write(formula.second(at, rho));
    else
        write(formula.fourth(at, rho));
    return 1;
}

}  // namespace corvane::inline detail
