// Where the density roots of an equation lie: spinodals and start values, tabulated when it is
// read.
#pragma once

#include <corvane/core/containers.h>
#include <plugins/meos/trace.h>

#include <cstring>
#include <vector>

namespace corvane::meos {

/// Numbers that were true when `fill` ran; they are start values and decide nothing by themselves
/// near a spinodal. Temperatures and densities count in units of the equation's Ts and 1/vs, so that
/// they stay true where these alone are changed; `matches` says whether all others are what they were.
class StartTables {
  public:
    static constexpr int kCount = 200;      // temperatures below Tc
    static constexpr double kLowest = 0.2;  // of Tc
    static constexpr int kRows = 25;        // temperatures above Tc, equal steps of 1/T
    static constexpr int kColumns = 16;     // densities, steps of rho_c/4

    /// Works everything out, from the equation's own critical point near the one given downwards until
    /// a temperature has no loop that continues the one above; nothing where there is no such point,
    /// as when coefficients were changed. Temperatures with a second loop at higher densities are
    /// left unknown. Also fills the three range tables of the model: T[0] = 1e5 K,
    /// T[1] = Tc, T[1+k] = Tc − (Tc − Tmin)·(k/200)²; below Tc the spinodals, from Tc on
    /// rho_c/0.999 and rho_c/1.001, so that no density is ruled out there.
    void fill(Equation const& equation, double Tc, double rho_c, Vector<double>& T,
              Vector<double>& dilute, Vector<double>& dense);

    /// Bit by bit.
    bool matches(Equation const& equation) const {
        std::vector<double> const& now = equation.pool();
        return now.size() == snapshot_.size() && now.size() > kScales &&
               std::memcmp(now.data() + kScales, snapshot_.data() + kScales,
                           (now.size() - kScales) * sizeof(double)) == 0;
    }
    bool known() const { return !snapshot_.empty(); }
    double Tc(Equation const& equation) const { return Tc_ * (equation.Ts() / Ts_); }
    double rho_c(Equation const& equation) const { return rho_c_ * (vs_ / equation.vs()); }
    /// Below Tc; not known below the last temperature.
    LoopRow loop(Equation const& equation, double T) const;
    /// Density at P on an isotherm above Tc, a few per cent off at worst; 0 where those of the table
    /// do not rise all the way to it, far outside the range of some equations.
    double supercritical(Equation const& equation, double T, double P) const;

  private:
    static constexpr int kScales = 3;  // M, Ts and vs lead the parameters

    void leave_out_inner_loops(Equation const& equation);
    void fill_supercritical(Equation const& equation);

    double Ts_ = 1.0, vs_ = 1.0;                  // of the equation when it was read
    double Tc_ = 0.0, rho_c_ = 0.0, step_ = 0.0;  // T_k = Tc − step·k²
    std::vector<LoopRow> rows_;                   // k = 0 (critical point), 1, 2 …
    struct Node {
        double F, S;  // P/rho_c and its slope in rho/rho_c
    };
    std::vector<Node> grid_;
    std::vector<double> snapshot_;
};

}  // namespace corvane::meos
