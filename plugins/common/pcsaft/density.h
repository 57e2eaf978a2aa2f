// Density roots of PC-SAFT along an isotherm, in the packing fraction.
//
// A Fluid is one at fixed temperature and composition; its slope(eta) gives ∂(A^r/RT)/∂eta for the
// packing fraction as a double or a Jet, its ar(eta) the value.
//
// Between eta = 0 and 0.6 the pressure is concave first and convex afterwards, with one inflection,
// for every parameter set in the data: so there is at most one loop there, around the smallest
// slope. Further loops of the dispersion polynomials appear beyond eta = 0.65 at temperatures below
// 0.3 times the critical one (Yelash, Mueller, Paul & Binder, Phys. Chem. Chem. Phys. 7 (2005)
// 3728; Privat, Gani & Jaubert, Fluid Phase Equilib. 295 (2010) 76). The liquid is the branch next
// to the first loop; it ends where such a loop begins, or at close packing.
#pragma once

#include <corvane/plugin/density.h>
#include <corvane/plugin/roots.h>
#include <corvane/plugin/jet.h>

#include <algorithm>
#include <cmath>

namespace corvane::pcsaft {

/// Fraction of space that equal spheres fill when closest packed, π/√18.
inline constexpr double kClosePacking = 0.74048048969306104;
/// Liquid densities beyond this are checked for further loops.
inline constexpr double kDense = 0.62;
/// On the liquid branch at the temperatures that have further loops.
inline constexpr double kCold = 0.5;
/// Further loops lie around this packing fraction, and for the sets in the data only where the
/// slope of the pressure here is below 91.
inline constexpr double kFurtherLoop = 0.71, kSteep = 200.0;

/// rho·Z [mol/cm³] and its slope in rho, for the roots of the kit.
template <class Fluid>
struct PressureCurve {
    Fluid const& fluid;
    double packing;  // eta/rho, cm³/mol

    IsothermPoint operator()(double rho) const {
        const double eta = packing * rho;
        const auto s = fluid.slope(Jet<1>::along_h(eta));
        return {rho * (1.0 + eta * s(0)), 1.0 + eta * (2.0 * s(0) + s(1))};
    }
};

/// A packing fraction at which the pressure does not rise, or 0 if it rises up to the dense end.
/// Newton's method for the inflection, kept in a bracket, from the usual critical packing fraction;
/// it is left as soon as the answer is certain: one or two evaluations as a rule, at most 50.
template <class Fluid>
double falling_packing(Fluid const& fluid) {
    double low = 0.0, high = kDense, eta = 0.13;
    const auto first = fluid.slope(Jet<1>::along_h(eta));
    if (1.0 + eta * (2.0 * first(0) + first(1)) <= 0.0) return eta;
    for (int k = 0; k < 50; ++k) {
        const auto s = fluid.slope(Jet<3>::along_h(eta));  // P = eta + eta²·s
        const double slope = 1.0 + eta * (2.0 * s(0) + s(1));
        if (slope <= 0.0) return eta;
        const double second = 2.0 * (s(0) + 2.0 * s(1) + s(2));
        const double third = 6.0 * (s(1) + 2.0 * s(2) + s(3)) / eta;
        if (!std::isfinite(third)) return 0.0;
        // The parabola of the slope has its least value slope − second²/(2·third).
        if (third > 0.0 && slope * third > 2.0 * second * second) return 0.0;
        (second < 0.0 ? low : high) = eta;
        const double next = eta - second / third;
        const double before = eta;
        eta = third > 0.0 && next > low && next < high ? next : 0.5 * (low + high);
        if (std::abs(eta - before) <= 1e-10 * before) return 0.0;
    }
    return 0.0;
}

/// A start for the liquid. Packing fractions of saturated liquids against T/Tc differ little from
/// one substance to the next; the coefficients describe propane.
inline double liquid_packing(double reduced_temperature) {
    const double s = std::sqrt(std::clamp(1.0 - reduced_temperature, 0.0, 1.0));
    return 0.135 + (0.52 - 0.16 * s) * s;
}

/// A packing fraction closer to the root of pressure/(R·T) = P by secant steps, which need no slope
/// and cost a quarter of a Newton step; the start itself where they leave (low, high). At most
/// eight evaluations.
template <class Fluid>
double approach(Fluid const& fluid, double P, double start, double low, double high) {
    auto excess = [&](double eta) { return eta * (1.0 + eta * fluid.slope(eta)) - P; };
    double a = start, fa = excess(a), b = 0.99 * start;
    for (int k = 0; k < 7 && std::abs(b - a) > 1e-5 * b; ++k) {
        const double fb = excess(b), next = b - fb * (b - a) / (fb - fa);
        if (!(next > low && next < high)) return start;
        a = b;
        fa = fb;
        b = next;
    }
    return b;
}

/// Root on the liquid branch, or the only root where `loop` is 0; 0 if there is none.
/// @param loop   packing fraction in the loop, from falling_packing
/// @param start  packing fraction near which the liquid is looked for first
/// @param top    density at which the branch ends
template <class Fluid>
double dense_root(PressureCurve<Fluid> const& curve, double P, double loop, double start,
                  double top) {
    const double packing = curve.packing;
    double rho = 0.0;
    if (loop > 0.0) {
        const double near = approach(curve.fluid, P * packing, start, loop, kDense) / packing;
        rho = stable_root(curve, P, RootSide::dense, near, top, loop / packing, false);
    } else if (P > 0.0) {
        rho = stable_root(curve, P, RootSide::dilute, P / (1.0 + P / top), 0.0, top, true);
    }
    // A bracket that does not hold the root ends at the top.
    const bool beyond = rho >= 0.99 * top && std::abs(curve(rho).P - P) > 1e-9 * (P + rho);
    return beyond ? 0.0 : rho;
}

/// Model1::vcalc: the stable roots at P = p/(R·T) [mol/cm³], in the order that `phase` asks for.
/// @param packing  eta/rho, cm³/mol
/// @param start    packing fraction near which the liquid is looked for first
template <class Fluid>
int density_roots(Fluid const& fluid, double packing, double P, int phase, double start,
                  double& rho1, double& rho2) {
    if (!(packing > 0.0) || !std::isfinite(packing) || !is_pressure(P)) return 0;
    const PressureCurve<Fluid> curve{fluid, packing};
    const double loop = falling_packing(fluid);
    double top = kClosePacking / packing;
    double dilute = 0.0, dense = dense_root(curve, P, loop, start, top);
    if (!(dense > 0.0 && dense * packing < kDense) &&
        !(curve(kFurtherLoop / packing).dP > kSteep)) {
        const double end = spinodal(curve, kCold / packing, top, 24);
        if (end > 0.0) {
            top = end;
            dense = dense_root(curve, P, loop, start, top);
        }
    }
    if (loop > 0.0 && P > 0.0) {
        const double near = approach(fluid, P * packing, P * packing, 0.0, loop) / packing;
        dilute = stable_root(curve, P, RootSide::dilute, near, 0.0, loop / packing, false);
    }
    // At the critical temperature rounding makes a loop that holds the root itself.
    if (dilute == 0.0 && dense == 0.0 && P > 0.0) dense = rising_crossing(curve, P, top);
    auto below = [&](double rho) { return curve(rho).P > P; };
    auto gibbs = [&](double rho) {
        const double eta = packing * rho;
        return fluid.ar(eta) + eta * fluid.slope(eta) + std::log(rho);
    };
    return order_roots(dilute, dense, phase, below, gibbs, rho1, rho2);
}

}  // namespace corvane::pcsaft
