// Newton's methods for the saturation of a pure fluid, from starts that are given or found.
// Internal to the library.
#pragma once

#include <corvane/phases/phase/fixed.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/saturation/pure_saturation.h>

#include <limits>
#include <optional>

class Model1;

namespace corvane::inline detail {

/// A density at T: Ar, P = rho·Z = p/(RT), S = ∂P/∂rho, C = rho·∂²P/∂rho², with what rounding may
/// do to Ar + Z, S and C.
struct IsothermState {
    double rho = 0.0, Ar = 0.0, Z = 0.0, S = 0.0, C = 0.0;
    double m_noise = 0.0, S_noise = 0.0, C_noise = 0.0;
    double P() const { return rho * Z; }
};

class PureSaturationSolver {
  public:
    /// @throws ThException 5 the value or a critical constant is not positive or not finite
    PureSaturationSolver(Model1 const& model, Fixed held);

    PureSaturation at_T();
    PureSaturation at_p();

    /// Critical point of the parameter file; `exact`: of the equation, by Newton's method from
    /// that, which it stays where this finds none near.
    void critical(bool exact);
    double Tc() const { return Tc_; }
    double rho_c() const { return rho_c_; }
    double pc() const { return pc_; }
    /// At T from two densities near the solution, after critical().
    /// @throws EquilibriumFailure gave_up
    PureSaturation from(double T, double liquid, double vapour);
    /// Are its densities those of the model's own search? An equation with an inner loop has pairs
    /// that end on that.
    bool outermost(PureSaturation const& q) const;
    /// A temperature below critical, without a start. @throws EquilibriumFailure
    PureSaturation solve(double T);
    /// Adds to the bounds of the densities what the error of T, in q.value_error, makes of them, by
    /// their slopes along the curve, which grow without limit towards the critical point. rhoL, rhoV:
    /// at T·(1 − h), off by `noise` with those of q. They go by the square root of the distance from
    /// the critical point: with h a quarter of it, a slope is 16 % too small, against a margin of 2.
    static void add_error_of_T(PureSaturation& q, double h, double rhoL, double rhoV, double noise);

  private:
    /// A number with a bound of its error.
    struct Bounded {
        double value = 0.0, error = std::numeric_limits<double>::infinity();
    };
    /// The two equations next to the critical point, and the states that they are between.
    struct Conditions {
        Bounded potentials, pressures;
        IsothermState L, V;
    };
    /// Of potentials and pressures by ln u (first) and by q.
    struct Jacobian {
        double potentials_u, potentials_q, pressures_u, pressures_q;
    };

    static Bounded better(Bounded const& a, Bounded const& b) { return b.error < a.error ? b : a; }
    IsothermState state(double rho, double T) const;
    template <class Nodes>
    Conditions integrals(double u, double d, double T, Nodes const& nodes) const;
    Conditions conditions(double u, double q, double T) const;
    Jacobian jacobian(Conditions const& at, double u, double q, double T) const;
    PureSaturation near(double T, double u, double q);
    PureSaturation near_result(double T, double u, double q, Conditions const& at,
                               Bounded const& u_step, Bounded const& q_step) const;
    PureSaturation far(double T);
    PureSaturation far(double T, double liquid, double vapour);
    std::optional<PureSaturation> newton(double T, double liquid, double vapour, int steps);
    std::optional<PureSaturation> quick(double T);
    [[noreturn]] void fail(EquilibriumFailure::Kind kind, char const* advice) const;
    [[noreturn]] void no_solution() const {
        fail(EquilibriumFailure::Kind::no_solution, "at or above the critical point");
    }
    [[noreturn]] void gave_up(char const* advice) const {
        fail(EquilibriumFailure::Kind::gave_up, advice);
    }

    Model1 const& model_;
    Fixed held_;
    double Tc_ = 0.0, rho_c_ = 0.0, pc_ = 0.0;
    int iterations_ = 0;
    double least_ = 0.0;  // pressure of an ideal gas that Newton's method ended with
};

}  // namespace corvane::inline detail
