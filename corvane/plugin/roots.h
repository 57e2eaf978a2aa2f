// Density roots of an isotherm, for any equation of state.
//
// An isotherm is a callable that returns IsothermPoint{P, dP} at a density, with P = rho·Z =
// p/(R·T) and dP its slope. Below the critical temperature it rises from zero to the dilute
// spinodal, falls (perhaps in several loops) and rises again from the dense spinodal to the largest
// density of the equation. Only roots on the first and on the last rising branch are states of the
// fluid.
#pragma once

#include <corvane/plugin/density_range.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {

/// The rising branches of an isotherm: [0, dilute] and [dense, top].
struct Branches {
    double dilute;  ///< mol/cm³, the dilute spinodal or a density in the falling part after it
    double dense;   ///< mol/cm³, the dense spinodal or a density in the falling part before it
    double top;     ///< mol/cm³, where the equation ends: on the last rising branch, before a pole
    bool loop;      ///< false: the isotherm rises from 0 to top; dilute and dense are not used
};

/// The densities of the fluid at a pressure; 0 where there is none.
struct StableRoots {
    double dilute, dense;
};

enum class RootSide { dilute, dense };

/// When stable_root takes a step for the last: after one of 2 ulp.
struct ToRounding {
    bool last(double, double, double) const { return false; }
    void passed(double, double) {}
};
/// Also after a step whose successor would be rounding, by the curvature between the slopes at this
/// density and at the one before; `rho` and `dP` may be set to a density and its slope beforehand.
struct ToCurvature {
    double rho = 0.0, dP = 0.0;

    bool last(double x, double slope, double step) const {
        if (!(rho > 0.0) || rho == x) return false;
        const double curvature = (slope - dP) / (x - rho);  // four times the next step, for safety
        return 2.0 * std::abs(step * step * curvature) <=
                   2 * std::numeric_limits<double>::epsilon() * x * slope &&
               std::abs(step) <= 1e-6 * x;
    }
    void passed(double x, double slope) {
        rho = x;
        dP = slope;
    }
};

/// Two roots closer than this, relative to the dense one, count as one: at the critical point p −
/// pc goes as the cube of the density difference, so rounding (a few eps) splits the threefold root
/// by a few cbrt(eps) = 6e-6. Saturation curves reach this width at 1 − T/Tc of about 1e-10.
inline constexpr double kSameRoot = 5e-5;

/// Whether P = p/(R·T) can be asked for: finite, and not so small that densities lose their digits.
inline bool is_pressure(double P) {
    return std::isfinite(P) && !(P > 0.0 && P < 1e-290);
}

/// Root of the isotherm at P on a rising branch between `anchor` and `wall`; 0 if it has none.
///
/// Newton's method inside a bracket. From the anchor's side it cannot overshoot, because isotherms
/// are concave before the dilute and convex after the dense spinodal; where the slope is not
/// positive, the wall moves in. It ends when a step is at most 2 ulp or when the residual stops
/// falling, so that `start` has no influence beyond rounding. Two to six evaluations as a rule, at
/// most 100; then the best point of a closed bracket, or 0, is returned. So is 0 where the best point
/// does not have the pressure P: beyond the end of the equation, or so close to a pole that no
/// density has it.
///
/// @param anchor   dilute branch: 0, or a density below the root; dense branch: a density above it
/// @param wall     the other end
/// @param crossed  true if a root between anchor and wall is certain; false if the wall lies at or
///                 past the spinodal
/// @param start    first trial; the middle of the interval if it lies outside
/// @param stop     when it ends: ToRounding or ToCurvature
template <class F, class Stop = ToRounding>
double stable_root(F const& isotherm, double P, RootSide branch, double start, double anchor,
                   double wall, bool crossed, Stop stop = {}) {
    const double side = branch == RootSide::dilute ? 1.0 : -1.0;
    constexpr double two_ulp = 2 * std::numeric_limits<double>::epsilon();
    auto inside = [&](double x) { return (x - anchor) * side > 0 && (wall - x) * side > 0; };
    double anchor_slope = 0.0;  // 0: not known
    double best = 0.0, least = std::numeric_limits<double>::infinity();
    auto root = [&](double at) {
        return least <= 1e-6 * std::abs(P) + 1e-9 * at ? at : 0.0;
    };
    double x = inside(start) ? start : 0.5 * (anchor + wall);
    for (int k = 0; k < 100; ++k) {
        const IsothermPoint at = isotherm(x);
        const double width = std::abs(wall - anchor);
        if (!(at.dP > 0.0) || !std::isfinite(at.P)) {  // past the spinodal, or past a pole
            if (width <= two_ulp * x) return crossed ? root(best) : 0.0;
            crossed = false;
            best = 0.0;
            least = std::numeric_limits<double>::infinity();
            // Short of the spinodal, which the secant of the slope shows.
            double part = 0.5;
            if (anchor_slope > 0.0 && at.dP < 0.0)
                part = std::clamp(0.9 * anchor_slope / (anchor_slope - at.dP), 0.1, 0.9);
            wall = x;
            x = anchor + part * (wall - anchor);
            continue;
        }
        const double missing = P - at.P, step = missing / at.dP;
        if (std::abs(missing) < least) {
            least = std::abs(missing);
            best = x;
        } else if (std::abs(step) <= 1e-8 * x) {
            return root(best);  // rounding decides from here on
        }
        if (stop.last(x, at.dP, step) && inside(x + step)) return x + step;
        if (std::abs(step) <= two_ulp * x) return root(x + step);
        stop.passed(x, at.dP);
        if (missing * side > 0.0) {
            anchor = x;
            anchor_slope = at.dP;
        } else {
            wall = x;
            crossed = true;
        }
        if (inside(x + step)) {
            x += step;
        } else {
            const double room = std::abs(wall - anchor);
            if (room <= two_ulp * x) return crossed ? root(best) : 0.0;
            // Before an open wall the tangent must reach P, were the branch quite concave or
            // convex; half of the distance will do, for equations that are not quite so.
            if (!crossed && (std::abs(step) > 2.0 * room || room <= 1e-12 * x)) return 0.0;
            x = 0.5 * (anchor + wall);
        }
    }
    return crossed ? root(best) : 0.0;
}

/// Writes the outcome of Model1::vcalc: the two stable roots in the order that the phase code asks
/// for.
///
/// @param dilute, dense  the roots, mol/cm³; 0 where there is none
/// @param phase   1 dense root first, 3 dilute root first, otherwise the root on the side of the
///                start value rho1 (finite and > 0), or the one of lower Gibbs energy without it
/// @param below   bool(double start): true if the start value, between the roots, lies on the
///                dilute side of the unstable root
/// @param gibbs   double(double rho): Ar + Z − 1 + ln(rho)
/// @return 0 no root, outputs untouched; 1 one root, in rho1; 3 two roots
template <class Below, class Gibbs>
int order_roots(double dilute, double dense, int phase, Below const& below, Gibbs const& gibbs,
                double& rho1, double& rho2) {
    const bool has_dilute = dilute > 0.0, has_dense = dense > 0.0;
    if (!has_dilute && !has_dense) return 0;
    if (!has_dilute || !has_dense || dense - dilute <= kSameRoot * dense) {
        rho1 = has_dense ? dense : dilute;
        return 1;
    }
    bool dense_first = phase == 1;
    if (phase != 1 && phase != 3) {
        const double start = rho1;
        if (!(start > 0.0) || !std::isfinite(start))
            dense_first = gibbs(dense) <= gibbs(dilute);
        else
            dense_first = start >= dense || (start > dilute && !below(start));
    }
    rho1 = dense_first ? dense : dilute;
    rho2 = dense_first ? dilute : dense;
    return 3;
}

/// Model1::vcalc for an isotherm whose branches are known: finds the roots at P = p/(R·T) and
/// writes them as order_roots does. The start value in rho1 counts for phase −1 alone. P <= 0 has a
/// root only where the dense branch is under tension; a P that is not finite has none.
///
/// @param dense_start  first trial on the dense branch, for instance a saturated liquid density; 0:
/// a
///                     third of the way from the spinodal to the top
template <class F, class Gibbs>
int density_roots(F const& isotherm, double P, Branches const& at, int phase, Gibbs const& gibbs,
                  double& rho1, double& rho2, double dense_start = 0.0) {
    if (!is_pressure(P)) return 0;
    double dilute = 0.0, dense = 0.0;
    if (!at.loop) {
        // Hard spheres of covolume 1/top without attraction give a start that is never past the
        // top.
        if (P > 0.0)
            dense =
                stable_root(isotherm, P, RootSide::dilute, P / (1.0 + P / at.top), 0.0, at.top,
                            true);
    } else {
        if (P > 0.0) dilute = stable_root(isotherm, P, RootSide::dilute, P, 0.0, at.dilute, false);
        if (!(dense_start > at.dense)) dense_start = at.dense + (at.top - at.dense) / 3.0;
        dense = stable_root(isotherm, P, RootSide::dense, dense_start, at.top, at.dense, false);
    }
    return order_roots(
        dilute, dense, phase, [&](double start) { return isotherm(start).P > P; }, gibbs, rho1,
        rho2);
}

/// Zero of the slope between a, where it is positive (fa), and b, where it is not (fb): Illinois
/// regula falsi (Dowell & Jarratt, BIT 11 (1971) 168) with a bisection in every fourth step, to
/// 1e-12 relative or 60 evaluations.
template <class F>
double slope_root(F const& isotherm, double a, double fa, double b, double fb) {
    int kept = 0;  // the end that the last step kept: +1 b, −1 a
    for (int k = 0; k < 60 && fb != 0.0 && std::abs(b - a) > 1e-12 * std::abs(b); ++k) {
        double x = b - fb * (b - a) / (fb - fa);
        if (k % 4 == 3 || !((x - a) * (b - x) > 0.0)) x = 0.5 * (a + b);
        const double fx = isotherm(x).dP;
        if (std::abs(fx) < 1e-14) return x;
        if (fx > 0.0) {
            a = x;
            fa = fx;
            if (kept == 1) fb *= 0.5;
            kept = 1;
        } else {
            b = x;
            fb = fx;
            if (kept == -1) fa *= 0.5;
            kept = -1;
        }
    }
    return b;
}

/// The spinodal next to `stable`, where the slope of the isotherm must be positive: the first
/// density on the way to `unstable` at which the slope is zero. It is looked for in `steps` equal
/// steps, so that an equation with several loops (steps > 1) is left at the first.
/// @return 0 if the slope is positive everywhere
template <class F>
double spinodal(F const& isotherm, double stable, double unstable, int steps = 1) {
    double a = stable, fa = isotherm(a).dP;
    if (!(fa > 0.0)) return 0.0;
    for (int k = 1; k <= steps; ++k) {
        const double b = k == steps ? unstable : stable + (unstable - stable) * k / steps;
        const double fb = isotherm(b).dP;
        if (fb <= 0.0) return slope_root(isotherm, a, fa, b, fb);
        a = b;
        fa = fb;
    }
    return 0.0;
}

/// The same from inside: the end of the falling part around `falling` on the side of `limit`, for
/// equations with a single loop. Steps from `step` on, doubled each time, lead out of it.
/// @return 0 if `falling` does not lie in a falling part
template <class F>
double spinodal_around(F const& isotherm, double falling, double limit, double step) {
    double b = falling, fb = isotherm(b).dP;
    if (!(fb <= 0.0)) return 0.0;
    for (int k = 0; k < 100 && b != limit; ++k, step *= 2.0) {
        const double a = std::abs(limit - b) <= step ? limit : b + (limit > b ? step : -step);
        const double fa = isotherm(a).dP;
        if (fa > 0.0) return slope_root(isotherm, a, fa, b, fb);
        b = a;
        fb = fa;
    }
    return 0.0;
}

/// A density at which the isotherm does not rise, or 0 if it rises everywhere. It is looked for
/// near `guess` (the critical density; one evaluation where the guess lies in the loop), then by
/// the smallest of `steps` slopes between 0 and top and a golden-section search beside it (Kiefer,
/// Proc. Am. Math. Soc. 4 (1953) 502), 40 evaluations at most. Loops narrower than 1e-4 of their
/// density may be missed. For equations whose parameters may have changed since their tables were
/// made.
template <class F>
double falling_density(F const& isotherm, double guess, double top, int steps = 12) {
    if (guess > 0.0 && guess < top && isotherm(guess).dP <= 0.0) return guess;
    const double h = top / steps;
    double x = 0.0, least = std::numeric_limits<double>::infinity();
    for (int k = 1; k < steps; ++k) {
        const double slope = isotherm(k * h).dP;
        if (slope <= 0.0) return k * h;
        if (slope < least) {
            least = slope;
            x = k * h;
        }
    }
    constexpr double golden = 0.6180339887498949;
    double a = x - h, b = x + h;
    double u = b - golden * (b - a), v = a + golden * (b - a);
    double fu = isotherm(u).dP, fv = isotherm(v).dP;
    for (int k = 0; k < 40 && b - a > 1e-5 * b; ++k) {
        if (fu <= 0.0) return u;
        if (fv <= 0.0) return v;
        if (fu < fv) {
            b = v;
            v = u;
            fv = fu;
            fu = isotherm(u = b - golden * (b - a)).dP;
        } else {
            a = u;
            u = v;
            fu = fv;
            fv = isotherm(v = a + golden * (b - a)).dP;
        }
    }
    return 0.0;
}

}  // namespace corvane
