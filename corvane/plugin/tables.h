// The density-range tables of Model1 (xrho, off), which a plug-in fills at the end of par_in.
#pragma once

#include <corvane/core/containers.h>
#include <corvane/plugin/roots.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace corvane {

/// What the tables of an equation are made from.
struct TableRange {
    double Tc;        ///< critical temperature of the equation, K
    double rho_c;     ///< its critical density, mol/cm³
    double top;       ///< largest density, as in Branches
    double Tmin;      ///< lowest temperature: 0.25·Tc or the triple point, K
    int count = 200;  ///< temperatures below Tc
    int steps = 1;    ///< search steps of spinodal(): above 1 for equations with several loops
};

/// Fills temperatures and the dilute and dense limits: T[0] = 1e5 K, T[1] = Tc, then
/// Tc − (Tc − Tmin)·(k/count)² for k = 1/4, 1/2, 1, 3/2, 2, 3 … count. The spinodals part as the
/// square root of Tc − T, so equal steps in k keep linear interpolation good: 0.07 % where it is
/// worst, 0.02 % below 0.999·Tc (Peng–Robinson; the volume finders allow for 0.1 %).
///
/// Below Tc the limits are the spinodals; from Tc on they overlap (rho_c/0.999 and rho_c/1.001), so
/// that no density is ruled out. Temperatures at which the equation has no loop are treated like
/// those above Tc. Without a usable range (Tc, rho_c, top or Tmin not positive, or Tmin >= Tc) the
/// tables are emptied.
///
/// @param isotherm  IsothermPoint(double rho, double T); or a callable of T that returns the
/// isotherm,
///                  IsothermPoint(double rho), so that what depends on T alone is worked out once
template <class F>
void fill_density_tables(F const& isotherm, TableRange const& range, Vector<double>& T,
                         Vector<double>& dilute, Vector<double>& dense) {
    const bool usable = range.Tmin > 0 && range.Tc > range.Tmin && range.Tc < 1e5 &&
                        range.rho_c > 0 && range.top > range.rho_c && std::isfinite(range.top);
    const int n = usable ? range.count + 5 : 0;
    T.size(n);
    dilute.size(n);
    dense.size(n);
    constexpr double kFirst[] = {0.25, 0.5, 1.0, 1.5, 2.0};
    double middle = range.rho_c;  // a density in the falling part
    double low_before = range.rho_c, high_before = range.rho_c;
    for (int k = 0; k < n; ++k) {
        const double at = k < 2 ? 0.0 : k < 7 ? kFirst[k - 2] : k - 4.0;
        const double part = at / range.count;
        T[k] = k == 0 ? 1e5 : range.Tc - (range.Tc - range.Tmin) * part * part;
        dilute[k] = range.rho_c / 0.999;
        dense[k] = range.rho_c / 1.001;
        if (k < 2) continue;
        auto at_T = [&] {
            if constexpr (std::is_invocable_v<F const&, double>)
                return isotherm(T[k]);
            else
                return [&isotherm, t = T[k]](double rho) { return isotherm(rho, t); };
        }();
        if (!(at_T(middle).dP <= 0.0)) middle = falling_density(at_T, range.rho_c, range.top);
        if (!(middle > 0.0)) {
            middle = range.rho_c;
            continue;
        }
        double low, high;
        if (range.steps > 1) {
            low = spinodal(at_T, 0.0, middle, range.steps);
            high = spinodal(at_T, range.top, middle, range.steps);
        } else {  // the loop grows: the last spinodals, if there are any, lie in it
            const bool grown = at_T(low_before).dP <= 0.0 && at_T(high_before).dP <= 0.0;
            const double step = std::max((high_before - low_before) / k, 1e-3 * middle);
            low = spinodal_around(at_T, grown ? low_before : middle, 0.0, step);
            high = spinodal_around(at_T, grown ? high_before : middle, range.top, step);
        }
        if (!(low > 0.0) || !(high >= low)) continue;
        dilute[k] = low_before = low;
        dense[k] = high_before = high;
        middle = 0.5 * (low + high);
        if (!(at_T(middle).dP <= 0.0)) middle = range.rho_c;
    }
}

}  // namespace corvane
