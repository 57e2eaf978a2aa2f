// Density roots of a mixture whose components share a reduced state.
#pragma once

#include <corvane/plugin/roots.h>

#include <algorithm>
#include <cmath>

namespace corvane::gerg {

struct Slope {
    double S, C;  ///< ∂P/∂rho and rho·∂²P/∂rho²
};

/// A density where the isotherm falls, or 0. At δ = τ = 1 every component is at its critical point,
/// so that but for the departure functions this is where the loop of the mixture begins: below T_r,
/// δ = 1 lies in the loop, and one evaluation will do. Near T_r the smallest slope is looked for by
/// the secant method on its derivative; far below, where the equations of the components may have
/// several loops, all densities are scanned.
template <class Isotherm>
double falling(Isotherm const& isotherm, double Tr, double rho_r, double top) {
    if (Tr < 0.85 && isotherm(rho_r).dP <= 0.0) return rho_r;
    double x = rho_r, x0 = 0.0, C0 = 0.0;
    for (int k = 0; k < 10; ++k) {
        const auto [S, C] = isotherm.slope(x);
        if (S <= 0.0) return x;
        // Well above the critical temperature the smallest slope is that of δ near 1.
        if (Tr > 1.0 && S > 0.25) return 0.0;
        if (Tr < 0.85) break;
        double step = (C > 0.0 ? -0.05 : 0.05) * rho_r;
        if (k > 0 && (C - C0) * (x - x0) > 0.0) {
            step = std::clamp(-C * (x - x0) / (C - C0), -0.2 * rho_r, 0.2 * rho_r);
            // Near the minimum, and four times what is left to fall is less than the slope.
            if (2.0 * std::abs(C * step) < S * x && std::abs(step) < 0.1 * rho_r) return 0.0;
        }
        x0 = x;
        C0 = C;
        x = std::clamp(x + step, 0.3 * rho_r, 2.0 * rho_r);
    }
    return falling_density(isotherm, rho_r, top, 24);
}

struct Kept {
    bool dilute = true, dense = true;
    bool all() const { return dilute && dense; }
};

/// Do these roots look like those of a gas and of a liquid? Reference equations have spikes between
/// the branches (nitrogen's reaches Z = 3000 at 108 K), which mixtures inherit, and which the
/// search may run into. On the dilute branch, Z lies below 1 and the isotherm is concave; the dense
/// branch begins at δ = 1 + 1.2·√(1 − T/T_r) in van der Waals' equation, and further out in others.
template <class Isotherm>
Kept plausible(int kind, double r1, double r2, double middle, double P, Isotherm const& isotherm,
               double Tr, double rho_r) {
    Kept keep;
    if (kind == 0 || middle == 0.0) return keep;
    const double dilute = kind == 3 ? std::min(r1, r2) : r1 < middle ? r1 : 0.0;
    const double dense = kind == 3 ? std::max(r1, r2) : r1 < middle ? 0.0 : r1;
    if (Tr < 0.97 && dilute > 0.1 * rho_r)
        keep.dilute = P < dilute && isotherm(dilute).dP * dilute < P;
    if (dense > 0.0 && Tr < 1.0) keep.dense = dense > (1.0 + 0.4 * std::sqrt(1.0 - Tr)) * rho_r;
    return keep;
}

/// The branches by a scan of the isotherm.
template <class Isotherm>
Branches scanned(Isotherm const& isotherm, double top) {
    constexpr int steps = 300;
    Branches at{0.0, 0.0, top, false};
    for (int k = 1; k < steps; ++k) {
        const double rho = top * k / steps;
        if (isotherm(rho).dP > 0.0) continue;
        if (!at.loop) at.dilute = rho;
        at.dense = rho;
        at.loop = true;
    }
    return at;
}

/// For a pressure that neither outer branch reaches: a root on a rising branch between them, or 0.
template <class Isotherm>
double root_between(Isotherm const& isotherm, double P, double top) {
    constexpr int steps = 300;
    double low = 0.0, P_low = 0.0;
    for (int k = 1; k <= steps; ++k) {
        const double high = top * k / steps, P_high = isotherm(high).P;
        if (P_low <= P && P_high > P) {
            const double root =
                stable_root(isotherm, P, RootSide::dilute, 0.5 * (low + high), low, high, true);
            if (root > 0.0) return root;
        }
        low = high;
        P_low = P_high;
    }
    return 0.0;
}

/// Model1::vcalc.
///
/// @param isotherm  IsothermPoint operator()(rho), Slope slope(rho), double gibbs(rho)
/// @param P      p/(R·T), mol/cm³
/// @param Tr     T over the reducing temperature
/// @param rho_r  reducing density, mol/cm³
template <class Isotherm>
int density(Isotherm const& isotherm, double P, double Tr, double rho_r, int mode, double& rho_a,
            double& rho_b) {
    // A saturated liquid (Guggenheim, J. Chem. Phys. 13 (1945) 253) to start from.
    const double cold = std::max(1.0 - Tr, 0.0);
    const double liquid = (1.0 + 0.75 * cold + 1.75 * std::cbrt(cold)) * rho_r;
    // No equation ends at a pole; three times the critical density has a pressure of 15 rho_r·R·T
    // and more above T_r.
    double top = 3.3 * rho_r;
    for (int k = 0; k < 24 && !(Tr > 1.0 && P < 5.0 * rho_r); ++k, top *= 1.15) {
        const IsothermPoint end = isotherm(top);
        if (end.dP > 0.0 && end.P > P) break;
    }
    const auto gibbs = [&](double rho) { return isotherm.gibbs(rho); };
    const auto roots = [&](Branches const& at, double& r1, double& r2) {
        return density_roots(isotherm, P, at, mode, gibbs, r1, r2, liquid);
    };
    const double middle = falling(isotherm, Tr, rho_r, top);
    double r1 = rho_a, r2 = rho_b;
    int kind = roots({middle, middle, top, middle > 0.0}, r1, r2);
    if (kind == 0 && !(P > 0.0)) return 0;
    Kept keep = plausible(kind, r1, r2, middle, P, isotherm, Tr, rho_r);
    if (kind == 0 || !keep.all()) {
        r1 = rho_a;
        const Branches at = scanned(isotherm, top);
        kind = roots(at, r1, r2);
        keep = plausible(kind, r1, r2, at.dense, P, isotherm, Tr, rho_r);
        if (kind == 3 && !keep.dilute) {
            r1 = std::max(r1, r2);
            kind = 1;
        } else if (kind == 0 && Tr > 0.9) {
            r1 = root_between(isotherm, P, top);
            kind = r1 > 0.0 ? 1 : 0;
        }
    }
    if (kind > 0) rho_a = r1;
    if (kind > 1) rho_b = r2;
    return kind;
}

}  // namespace corvane::gerg
