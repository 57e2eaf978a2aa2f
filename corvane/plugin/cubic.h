// Two-parameter cubic equations of state in reduced form.
//
// With y = b·rho, q = a/(b·R·T) and D = 1 + u·y + w·y² = (1 + d1·y)(1 + d2·y):
//
//     Z  = 1/(1 − y) − q·y/D
//     Ar = −ln(1 − y) − q·I,   I = ln[(1 + d1·y)/(1 + d2·y)]/(d1 − d2)
//
// The critical point has y = y_c, a/(b·R·Tc) = q_c = Omega_a/Omega_b and Zc = Omega_b/y_c. `Form`
// below is one of the structures here, or an author's own with the same members.
#pragma once

#include <corvane/plugin/roots.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace corvane {

/// Peng & Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59. y_c solves the critical conditions:
/// 1/y_c = 1 + cbrt(4 − √8) + cbrt(4 + √8), Omega_a = (8 + 40·y_c)/(49 − 37·y_c),
/// Omega_b = y_c/(3 + y_c).
struct PengRobinson {
    static constexpr char const* name = "PR";
    static constexpr double u = 2.0, w = -1.0;
    static constexpr double d1 = 1.0 + std::numbers::sqrt2, d2 = 1.0 - std::numbers::sqrt2;
    static constexpr double y_c = 0.25307658654159946;
    static constexpr double Omega_a = 0.45723552892138219, Omega_b = 0.077796073903888456;
};

/// Soave, Chem. Eng. Sci. 27 (1972) 1197. y_c = cbrt(2) − 1, Omega_a = 1/(9·y_c), Omega_b = y_c/3.
struct SoaveRedlichKwong {
    static constexpr char const* name = "SRK";
    static constexpr double u = 1.0, w = 0.0;
    static constexpr double d1 = 1.0, d2 = 0.0;
    static constexpr double y_c = 0.25992104989487316;
    static constexpr double Omega_a = 0.42748023354034140, Omega_b = 0.086640349964957722;
};

template <class Form>
inline constexpr double q_c = Form::Omega_a / Form::Omega_b;

/// I, relatively accurate as y → 0. Not-a-number or infinite from y = 1 on.
template <class Form>
double attraction_integral(double y) noexcept {
    return std::log1p((Form::d1 - Form::d2) * y / (1.0 + Form::d2 * y)) / (Form::d1 - Form::d2);
}

template <class Form>
double cubic_ar(double y, double q) noexcept {
    return -std::log1p(-y) - q * attraction_integral<Form>(y);
}

/// Not-a-number past the poles at y = 1 and y = −1/d1, like Ar.
template <class Form>
double cubic_Z(double y, double q) noexcept {
    if (!(y <= 1.0 && Form::d1 * y > -1.0)) return std::numeric_limits<double>::quiet_NaN();
    return 1.0 / (1.0 - y) - q * y / (1.0 + y * (Form::u + Form::w * y));
}

/// The isotherm in reduced density: P = y·Z = p·b/(R·T) and its slope by y.
template <class Form>
IsothermPoint cubic_isotherm(double y, double q) noexcept {
    const double inverse = 1.0 / (1.0 - y), D = 1.0 + y * (Form::u + Form::w * y), qy = q * y / D;
    return {y * (inverse - qy), inverse * inverse - qy * (2.0 + Form::u * y) / D};
}

/// y^i·d^i/dy^i, i = 0 … 3, of the repulsive part −ln(1 − y) and of I.
struct CubicTerms {
    std::array<double, 4> repulsion, integral;
};
template <class Form>
CubicTerms cubic_terms(double y) noexcept {
    const double D = 1.0 + y * (Form::u + Form::w * y), D1 = Form::u + 2.0 * Form::w * y;
    const double h = y / (1.0 - y), k = y / D, kD1 = k * D1;
    return {{-std::log1p(-y), h, h * h, 2.0 * h * h * h},
            {attraction_integral<Form>(y), k, -k * kD1,
             2.0 * k * kD1 * kD1 - 2.0 * Form::w * y * k * k}};
}

namespace cubic_detail {

/// First trial for the dense root: the root at zero pressure of (q + w)·y² + (u − q)·y + 1 = 0,
/// moved to the pressure by one Newton step; 0 if the isotherm stays above zero.
template <class Form>
double dense_trial(double P, double q) noexcept {
    const double half = 0.5 * (q - Form::u), D = half * half - (q + Form::w);
    if (!(D > 0.0)) return 0.0;
    const double y = (half + std::sqrt(D)) / (q + Form::w);
    const double slope = cubic_isotherm<Form>(y, q).dP;
    return slope > 0.0 ? std::clamp(y + P / slope, y, 0.5 * (1.0 + y)) : 0.0;
}

/// The roots y in (0, 1) at P > 0 by the trigonometric and hyperbolic formulas for the cubic in
/// Z = P/y (Viète; Cardano), whose largest root is the dilute one. Good to about 1e-16/P. Equal
/// values where there is one root.
template <class Form>
StableRoots closed_form(double P, double q) noexcept {
    const double c2 = P * (Form::u - 1.0) - 1.0;
    const double c1 = -P * (Form::u - q - P * (Form::w - Form::u));
    const double c0 = -P * P * (Form::w + q + P * Form::w);
    const double shift = c2 / 3.0, Q = shift * shift - c1 / 3.0;
    const double S = shift * (shift * shift - 0.5 * c1) + 0.5 * c0, D = S * S - Q * Q * Q;
    if (D > 0.0) {
        const double A = -std::copysign(std::cbrt(std::abs(S) + std::sqrt(D)), S);
        const double y = P / (A + Q / A - shift);
        return {y, y};
    }
    const double r = std::sqrt(std::max(Q, 0.0)), r3 = r * r * r;
    const double angle = r3 > 0.0 ? std::acos(std::clamp(S / r3, -1.0, 1.0)) / 3.0 : 0.0;
    constexpr double third = 2.0 * std::numbers::pi / 3.0;
    const double largest = -2.0 * r * std::cos(angle + third) - shift;
    const double smallest = -2.0 * r * std::cos(angle) - shift;
    // Z <= P is y >= 1, Z <= 0 is y <= 0: then the dilute root stands alone.
    return {P / largest, smallest > P ? P / smallest : P / largest};
}

}  // namespace cubic_detail

/// Largest reduced density that is tried: Z of 1e9.
inline constexpr double kCubicTop = 1.0 - 1e-9;

/// Stable roots at P = p·b/(R·T), converged to rounding. A loop exists for q > q_c, and y_c lies in
/// its falling part then. P <= 0 has the dense root alone, as long as it is stable. The closed form
/// loses digits as P → 0, where the ideal gas and the liquid at zero pressure start Newton's
/// method.
template <class Form>
StableRoots cubic_roots(double P, double q) noexcept {
    auto f = [q](double y) { return cubic_isotherm<Form>(y, q); };
    auto dilute = [&](double start) {
        return P > 0.0 ? stable_root(f, P, RootSide::dilute, start, 0.0, Form::y_c, false) : 0.0;
    };
    auto dense = [&](double start) {
        return stable_root(f, P, RootSide::dense, start, kCubicTop, Form::y_c, false);
    };
    if (!(q > q_c<Form>)) {
        if (!(P > 0.0)) return {0.0, 0.0};
        const double start = P < 1e-3 ? P : cubic_detail::closed_form<Form>(P, q).dilute;
        return {0.0, stable_root(f, P, RootSide::dilute, start, 0.0, kCubicTop, true)};
    }
    if (P < 1e-3) return {dilute(P), dense(cubic_detail::dense_trial<Form>(P, q))};
    const StableRoots start = cubic_detail::closed_form<Form>(P, q);
    if (start.dilute != start.dense) return {dilute(start.dilute), dense(start.dense)};
    StableRoots root{0.0, 0.0};
    (start.dilute < Form::y_c ? root.dilute : root.dense) =
        start.dilute < Form::y_c ? dilute(start.dilute) : dense(start.dense);
    if (root.dilute > 0.0 || root.dense > 0.0) return root;
    return {dilute(P), dense(0.0)};  // the formula chose wrongly, next to a spinodal
}

}  // namespace corvane
