// All stable densities of any equation at a pressure, from its isotherm alone.
#pragma once

#include <corvane/plugin/roots.h>

#include <cmath>
#include <limits>

namespace corvane {

/// Slope of the isotherm, with rho and rho² times its derivatives.
struct SlopePoint {
    double slope, second, third;
};

/// A density at which a pressure that is concave first and convex afterwards does not rise, or 0 if
/// it rises up to `end`. Newton's method for the inflection, kept in a bracket; it is left as soon
/// as the answer is certain: one or two evaluations as a rule, at most 50.
template <class Curve>
double falling_density_of_single(Curve const& f, double guess, double end) {
    double low = 0.0, high = end;
    double rho = guess > 0.0 && guess < end ? guess : 0.25 * end;
    if (f(rho).dP <= 0.0) return rho;
    for (int k = 0; k < 50; ++k) {
        const SlopePoint at = f.slope(rho);
        if (at.slope <= 0.0) return rho;
        if (!std::isfinite(at.third)) return 0.0;
        // The parabola of the slope has its least value slope − second²/(2·third); a quarter of the
        // room that this leaves is certain enough.
        if (at.third > 0.0 && at.slope * at.third > 2.0 * at.second * at.second) return 0.0;
        (at.second < 0.0 ? low : high) = rho;
        const double next = rho * (1.0 - at.second / at.third), before = rho;
        rho = at.third > 0.0 && next > low && next < high ? next : 0.5 * (low + high);
        if (std::abs(rho - before) <= 1e-10 * before) return 0.0;
    }
    return 0.0;
}

/// A density between 0 and top at which the pressure rises through P, by bisection to the last
/// digit; 0 where the pressure at the top is lower.
template <class F>
double rising_crossing(F const& isotherm, double P, double top) {
    double low = 0.0, high = top;
    if (!(isotherm(high).P >= P)) return 0.0;
    for (int k = 0; k < 100; ++k) {
        const double rho = 0.5 * (low + high);
        if (rho == low || rho == high) break;
        (isotherm(rho).P < P ? low : high) = rho;
    }
    return std::abs(isotherm(high).P - P) <= 1e-6 * P ? high : 0.0;
}

/// A density in the falling part, or 0.
template <class Curve>
double loop_density(Curve const& f, DensityRange const& at) {
    const double end = at.clear > 0.0 ? at.clear : at.top;
    return at.single ? falling_density_of_single(f, at.loop, end)
                     : falling_density(f, at.loop, end);
}

/// A density closer to the one of pressure P, and the slope at the start: inverse interpolation
/// (Ostrowski, Solution of Equations and Systems of Equations (1966), ch. 13) from the start, with
/// the slope there, and pressures alone after it, which cost less. Seven evaluations at most; the
/// best density of them where the next one would lie outside what brackets the root.
/// @param wall  as in stable_root; moved to a start that is past the spinodal
template <class Curve>
double approach(Curve const& f, double P, double start, double anchor, double& wall,
                ToCurvature& known) {
    auto inside = [&](double x) { return (x - anchor) * (wall - x) > 0.0; };
    IsothermPoint first{};
    for (int k = 0; k < 3 && known.rho == 0.0; ++k) {
        if (!inside(start)) return start;
        first = f(start);
        if (!std::isfinite(first.P)) return start;
        if (first.dP > 0.0) {
            known.passed(start, first.dP);
        } else {
            wall = start;
            start += (anchor - start) / 3.0;
        }
    }
    if (known.rho == 0.0) return start;
    double low = std::min(anchor, wall), high = std::max(anchor, wall);
    // x(y) = start + c0·(y − y0) + (y − y0)²·[c1 + c2·(y − y1) + c3·(y − y1)·(y − y2) + …]
    constexpr int most = 4;
    double c[most + 1] = {1.0 / first.dP}, y[most + 1] = {first.P};
    double rho = start, best = start, least = std::abs(P - first.P);
    double weight = P - first.P, change = weight * c[0];
    for (int k = 1; k <= most; ++k) {
        (y[k - 1] < P ? low : high) = rho;
        const double next = rho + change;
        if (!(next > low && next < high)) break;
        if (std::abs(change) <= 1e-7 * next) return next;
        rho = next;
        y[k] = f.pressure(rho);
        if (!std::isfinite(y[k])) break;
        if (std::abs(P - y[k]) < least) {
            best = rho;
            least = std::abs(P - y[k]);
        }
        const double d = y[k] - y[0];  // the interpolant of before at y[k], and what it misses
        double sum = 0.0, product = d * d;
        for (int j = 1; j < k; ++j) {
            sum += c[j] * product;
            product *= y[k] - y[j];
        }
        c[k] = (rho - start - c[0] * d - sum) / product;
        weight *= P - y[k - 1];
        change = c[k] * weight;
    }
    return best;
}

/// Model1::vcalc: the stable roots at P = p/(R·T) [mol/cm³], in the order that `phase` asks for.
/// @param f  the isotherm: IsothermPoint(double rho), pressure(rho), which is its P alone,
///           slope(rho) where the range is `single`, and gibbs(rho) = Ar + Z − 1 + ln rho
template <class Curve>
int all_densities(Curve const& f, DensityRange const& at, double P, int phase, double& rho1,
                  double& rho2) {
    if (!(at.top > 0.0) || !std::isfinite(at.top) || !is_pressure(P)) return 0;
    const double loop = loop_density(f, at);
    double top = at.top, dilute = 0.0, dense = 0.0;
    auto root = [&](RootSide branch, double start, double anchor, double wall, bool crossed) {
        ToCurvature known;
        if constexpr (!Curve::closed)
            if (!crossed) start = approach(f, P, start, anchor, wall, known);
        return stable_root(f, P, branch, start, anchor, wall, crossed, known);
    };
    auto find_dense = [&] {
        if (loop > 0.0) {
            const double third = loop + (top - loop) / 3.0;
            const double start = at.liquid > loop && at.liquid < top ? at.liquid : third;
            return root(RootSide::dense, start, top, loop, false);
        }
        if (!(P > 0.0)) return 0.0;
        return root(RootSide::dilute, P / (1.0 + P / top), 0.0, top, true);
    };
    dense = find_dense();
    if (at.clear > 0.0 && !(dense > 0.0 && dense < at.clear)) {
        // Further loops lie beyond the liquid: it ends at the first spinodal on the way to the top.
        const double end = spinodal(f, 0.8 * at.clear, top, 24);
        if (end > 0.0) {
            top = end;
            dense = find_dense();
        }
    }
    if (loop > 0.0 && P > 0.0) dilute = root(RootSide::dilute, P, 0.0, loop, false);
    // At the critical temperature rounding makes a loop that holds the root itself.
    if (dilute == 0.0 && dense == 0.0 && P > 0.0) dense = rising_crossing(f, P, top);
    return order_roots(
        dilute, dense, phase, [&](double start) { return f(start).P > P; },
        [&](double rho) { return f.gibbs(rho); }, rho1, rho2);
}

}  // namespace corvane
