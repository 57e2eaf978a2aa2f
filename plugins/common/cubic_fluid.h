// A cubic equation of state at given parameters: covolume, attraction and volume translation. What
// a pure fluid and a one-fluid mixture share.
#pragma once

#include <plugins/common/alpha.h>
#include <corvane/plugin/cubic.h>

#include <array>
#include <cmath>
#include <limits>

namespace corvane {

/// Volume translation (Péneloux, Rauzy & Fréze, Fluid Phase Equilib. 8 (1982) 7): at v = v_eos − c
/// the pressure of the equation at v_eos. With r = rho/(1 + c·rho) that is Ar(rho) = Ar_eos(r) −
/// ln(1 + c·rho), Z = Z_eos(r)/(1 + c·rho); phase equilibria do not change.
template <class Form>
struct CubicFluid {
    double b, c;   ///< cm³/mol
    Attraction a;  ///< q = a/(b·R·T) and its derivatives in T, as far as they are needed

    /// b·r, the density in which the equation is written.
    double reduced(double rho) const { return b * rho / (1.0 + c * rho); }
    /// rho from y = b·r; 0 for no root, or where the translation leaves no volume.
    double translated(double y) const {
        const double rest = b - c * y;
        return rest > 0.0 ? y / rest : 0.0;
    }

    double ar(double rho) const {
        const double c_rho = c * rho;
        return cubic_ar<Form>(b * rho / (1.0 + c_rho), a.q) -
               (c_rho == 0.0 ? 0.0 : std::log1p(c_rho));
    }
    double Z(double rho) const {
        const double t = 1.0 + c * rho;
        if (!(t > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        return cubic_Z<Form>(b * rho / t, a.q) / t;
    }

    /// Ar + Z − 1 + ln rho where rho·Z = P. To rounding of its own size: in a dilute gas ln rho is
    /// large.
    double gibbs(double P, double rho) const {
        const double t = 1.0 + c * rho, y = b * rho / t;
        const double integral = std::log((1.0 + Form::d1 * y) / (1.0 + Form::d2 * y));
        return P / rho - 1.0 + std::log(rho / ((1.0 - y) * t)) -
               a.q / (Form::d1 - Form::d2) * integral;
    }

    /// Density roots by the contract of Model1::vcalc.
    int density(double p, double T, int phase, double& rho1, double& rho2) const {
        const double P = p * b / (R * T);
        if (!(T > 0.0) || !std::isfinite(T) || !is_pressure(P)) return 0;
        const StableRoots root = cubic_roots<Form>(P, a.q);
        return order_roots(
            translated(root.dilute), translated(root.dense), phase,
            [&](double start) { return cubic_isotherm<Form>(reduced(start), a.q).P > P; },
            [&](double rho) { return ar(rho) + Z(rho) - 1.0 + std::log(rho); }, rho1, rho2);
    }

    /// Derivatives of Ar in rho and T by the contract of Deriv1::deriv.
    int deriv(double rho, int nrho, int nT, double* d) const {
        if (nrho < 0 || nT < 0 || nrho > 3 || nT > 2 || (nrho == 3 && nT > 0)) return 0;
        // By r, then by rho: rho^i·d^i r/drho^i over r are e1, e2, e3.
        const double c_rho = c * rho, t = 1.0 + c_rho, x = c_rho / t;
        const double e1 = 1.0 / t, e2 = -2.0 * x * e1, e3 = 6.0 * x * x * e1;
        const CubicTerms y = cubic_terms<Form>(b * rho / t);
        auto by_rho = [&](std::array<double, 4> const& f, int i) {
            switch (i) {
                case 0:
                    return f[0];
                case 1:
                    return f[1] * e1;
                case 2:
                    return f[2] * e1 * e1 + f[1] * e2;
                default:
                    return f[3] * e1 * e1 * e1 + 3.0 * f[2] * e1 * e2 + f[1] * e3;
            }
        };
        const std::array<double, 4> shift{std::log1p(c_rho), x, -x * x, 2.0 * x * x * x};
        const std::array<double, 3> q_T{a.q, a.Tq, a.TTq};
        for (int i = 0; i <= nrho; ++i) {
            const double integral = by_rho(y.integral, i);
            d[i * (nT + 1)] = by_rho(y.repulsion, i) - q_T[0] * integral - shift[i];
            for (int j = 1; j <= nT && i + j <= 2; ++j) d[i * (nT + 1) + j] = -q_T[j] * integral;
        }
        return 1;
    }
};

}  // namespace corvane
