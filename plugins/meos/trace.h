// The two rising branches of an isotherm below the critical temperature.
#pragma once

#include <plugins/meos/climb.h>

namespace corvane::meos {

/// Where the branches end at one temperature.
///
/// The dilute branch starts at zero density, the dense one at a liquid; loops in between are no
/// states of the fluid. A branch ends at a spinodal. Some equations have none at low temperature:
/// coming from the critical point, the spinodal meets that of an inner loop, both vanish, and the
/// isotherm goes on rising to pressures of a meaningless loop. From there on the branch ends at the
/// minimum of the slope that is left, an inflection ("soft" end).
struct LoopRow {
    IsothermState dilute, dense;
    IsothermState liquid;  // on the dense branch, at the pressure where the dilute branch ends
    double dilute_doubt = 0.0, dense_doubt = 0.0;  // bounds of the error of P at interpolated ends
    bool dilute_soft = false, dense_soft = false;
    bool known = false;  // all of the above; without a liquid only the ends are true
};

/// The row of an isotherm, from the one at the next higher temperature and, for extrapolation, the
/// one above that (or null). `width` is the distance of the first spinodals from rho_c when there
/// is none. `known` is false where no such row is found.
LoopRow trace_row(Isotherm<false> const& isotherm, LoopRow const& last, LoopRow const* before,
                  double rho_c, double width);

/// Is there a loop beyond the row's liquid? Then the branch taken for the dense one lies between two,
/// which a changed coefficient makes readily: the bells of the critical region are large and narrow.
/// Looks in steps; narrower loops may be missed.
bool loop_above(Isotherm<false> const& isotherm, LoopRow const& row, double rho_c);

/// Where the isotherm at some temperature near Tc has neither slope nor curvature at some density
/// near rho_c: the equation's own critical point, which may be given but roughly. Newton's method
/// for the density of the least slope, inside a secant for the temperature where that slope is zero.
/// T = 0 where none lies within a tenth of Tc and half of rho_c.
struct CriticalPoint {
    double T = 0.0, rho = 0.0;
};
CriticalPoint critical_near(Equation const& equation, double Tc, double rho_c);

}  // namespace corvane::meos
