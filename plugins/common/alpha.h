// Temperature functions of the cubic equations: q = a(T)/(b·R·T) = q_c·alpha(Tr)/Tr.
#pragma once

#include <corvane/plugin/cubic.h>

#include <cmath>
#include <limits>

namespace corvane {

/// Parameters of a pure cubic equation, in the order of ppar.
enum CubicParameter : int {
    cubic_M = 0,      ///< molar mass, g/mol
    cubic_Ts = 1,     ///< critical temperature, K
    cubic_vs = 2,     ///< covolume b, cm³/mol
    cubic_omega = 3,  ///< acentric factor
    cubic_alpha = 4,  ///< alpha function, an AlphaKind
    cubic_L = 5,      ///< L, M, N of Twu's function
    cubic_Mtwu = 6,
    cubic_Ntwu = 7,
    cubic_c = 8,   ///< volume translation, cm³/mol: v = v_eos − c
    cubic_c1 = 9,  ///< coefficients of Mathias and Copeman
    cubic_c2 = 10,
    cubic_c3 = 11,
    cubic_parameters = 12
};

enum AlphaKind : int {
    alpha_standard = 0,
    alpha_twu = 1,
    alpha_graboski_daubert = 2,
    alpha_mathias_copeman = 3
};

/// q with T·dq/dT and T²·d²q/dT².
struct Attraction {
    double q, Tq, TTq;
};

/// Slope m of alpha = [1 + m(1 − √Tr)]² from the acentric factor; not-a-number for a kind that the
/// equation does not have.
template <class Form>
double alpha_slope(double omega, int kind) noexcept;

/// Peng & Robinson (1976), above omega = 0.491 the polynomial of Robinson & Peng, GPA Research
/// Report RR-28 (1978).
template <>
inline double alpha_slope<PengRobinson>(double omega, int kind) noexcept {
    if (kind != alpha_standard) return std::numeric_limits<double>::quiet_NaN();
    if (omega <= 0.491) return 0.37464 + omega * (1.54226 - 0.26992 * omega);
    return 0.379642 + omega * (1.48503 + omega * (-0.164423 + 0.016666 * omega));
}

/// Soave (1972); Graboski & Daubert, Ind. Eng. Chem. Process Des. Dev. 17 (1978) 443.
template <>
inline double alpha_slope<SoaveRedlichKwong>(double omega, int kind) noexcept {
    if (kind == alpha_standard) return 0.480 + omega * (1.574 - 0.176 * omega);
    if (kind == alpha_graboski_daubert) return 0.48508 + omega * (1.55171 - 0.15613 * omega);
    return std::numeric_limits<double>::quiet_NaN();
}

/// The AlphaKind of a parameter set; -1 for a value that is none.
inline int alpha_kind(double const* par) noexcept {
    for (int kind : {alpha_standard, alpha_twu, alpha_graboski_daubert, alpha_mathias_copeman})
        if (par[cubic_alpha] == kind) return kind;
    return -1;
}

/// q and its first two derivatives at T > 0; par as in CubicParameter.
///
/// Twu, Bluck, Cunningham & Coon, Fluid Phase Equilib. 69 (1991) 33: alpha = Tr^(N(M−1))·
/// exp[L(1 − Tr^(N·M))].
///
/// Mathias & Copeman, Fluid Phase Equilib. 13 (1983) 91: alpha = (1 + c1·s + c2·s² + c3·s³)² with
/// s = 1 − √Tr; above Tc without c2 and c3, so that d²alpha/dT² jumps there by a small amount.
template <class Form>
Attraction attraction(double const* par, double T) noexcept {
    const double Tr = T / par[cubic_Ts];
    const int kind = alpha_kind(par);
    if (kind == alpha_twu) {
        const double lnT = std::log(Tr), N = par[cubic_Ntwu], NM = N * par[cubic_Mtwu];
        const double L = par[cubic_L], power = std::exp(NM * lnT);
        const double q = q_c<Form> * std::exp((NM - N - 1.0) * lnT + L * (1.0 - power));
        const double slope = NM - N - 1.0 - L * NM * power;  // dln q/dlnT
        return {q, q * slope, q * (slope * (slope - 1.0) - L * NM * NM * power)};
    }
    if (kind == alpha_mathias_copeman) {
        const double u = std::sqrt(Tr), s = 1.0 - u;
        const double c1 = par[cubic_c1], c2 = s > 0.0 ? par[cubic_c2] : 0.0;
        const double c3 = s > 0.0 ? par[cubic_c3] : 0.0;
        const double f = 1.0 + s * (c1 + s * (c2 + s * c3)),
                     f1 = c1 + s * (2.0 * c2 + 3.0 * s * c3);
        const double f2 = 2.0 * c2 + 6.0 * s * c3;
        const double r = f / u, Tr1 = -0.5 * (f1 + r), TTr2 = 0.25 * (u * f2 + 3.0 * (f1 + r));
        return {q_c<Form> * r * r, q_c<Form> * 2.0 * r * Tr1,
                q_c<Form> * 2.0 * (Tr1 * Tr1 + r * TTr2)};
    }
    const double m = alpha_slope<Form>(par[cubic_omega], kind);
    const double root = (1.0 + m) / std::sqrt(Tr), s = root - m;  // s² = alpha/Tr
    const double Ts = -0.5 * root, TTs = 0.75 * root;
    return {q_c<Form> * s * s, q_c<Form> * 2.0 * s * Ts, q_c<Form> * 2.0 * (Ts * Ts + s * TTs)};
}

/// True if the equation has the alpha function that a parameter set asks for.
template <class Form>
bool alpha_known(double const* par) noexcept {
    const int kind = alpha_kind(par);
    return kind == alpha_twu || kind == alpha_mathias_copeman ||
           !std::isnan(alpha_slope<Form>(0.0, kind));
}

}  // namespace corvane
