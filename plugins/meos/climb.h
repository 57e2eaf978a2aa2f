// States of an isotherm and the iteration that finds a density on one of its rising branches.
#pragma once

#include <plugins/meos/isotherm.h>

#include <limits>

namespace corvane::meos {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A density with what the isotherm does there: P = rho·Z = p/(RT), S = ∂P/∂rho, C = rho·∂²P/∂rho².
struct IsothermState {
    double rho = 0.0, P = 0.0, S = 0.0, C = 0.0;
};

inline IsothermState state_at(Isotherm<false> const& isotherm, double rho) {
    const Value v = isotherm.at<3>(rho);
    return {rho, rho * v.Z(), v.slope(), v.curvature()};
}

/// Relative change of density that leads to P if the modulus K = rho·S is linear in P (Murnaghan,
/// Proc. Natl. Acad. Sci. 30 (1944) 244): third-order convergence, exact for an ideal gas, and good
/// for a liquid over hundreds of MPa. Not-a-number where such a branch would not reach P.
double murnaghan_step(double q, double bend);

/// Where climb looks for a root: low < root < high, and `on` is a density of the rising branch. An
/// end that is not known to lie on the branch is open.
struct Bracket {
    double low, high, on;
    bool low_open, high_open;
};

/// The search for the root at P on the rising branch, from x on, one density after the other:
///
///     do s = the state at c.next(); while (!c.ends(s));
///     if (c.found()) … c.root() …
///
/// Steps of Murnaghan's form, or Newton's, or bisection where those leave the bracket; a density
/// where the isotherm falls moves the end on its side in. Ends when the error after the next step
/// is below rounding, three densities as a rule, at most 120.
class Climb {
  public:
    Climb(double P, double x, Bracket b) : P_(P), x_(x), b_(b), gas_(b.on == 0.0) {}
    double next();
    bool ends(IsothermState const& s);  ///< s: at that density
    bool found() const { return found_; }
    double root() const { return root_; }  ///< 0: no density has the pressure
    double P() const { return P_; }
    Bracket const& bracket() const { return b_; }

  private:
    double P_, x_;
    Bracket b_;
    bool gas_, found_ = false;
    double root_ = 0.0;
    int count_ = 0;
};

/// The root that Climb finds; 0 if the branch ends before it reaches P.
double climb(Isotherm<false> const& isotherm, Climb c);
inline double climb(Isotherm<false> const& isotherm, double P, double x, Bracket b) {
    return climb(isotherm, {P, x, b});
}

inline constexpr double kDense = 3.0;  // times the critical density: a liquid at low temperature

/// A density where the isotherm rises beyond all its loops: kDense times rho_c, or somewhat more
/// where it falls there; less for equations whose dense branch ends before.
double beyond_loops(Isotherm<false> const& isotherm, double rho_c);

/// Does the isotherm rise through P at x? With room for the rounding of P, which in a liquid at low
/// pressure is that of terms many times larger.
bool is_root(Isotherm<false> const& isotherm, double P, double x);

/// The zero of the slope next to x, by Newton's method with steps of at most a tenth of the
/// density; rho = 0 if that finds none between low and high.
IsothermState spinodal_near(Isotherm<false> const& isotherm, double x, double low, double high);

}  // namespace corvane::meos
