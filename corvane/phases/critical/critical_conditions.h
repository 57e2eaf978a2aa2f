// The two conditions of a critical point and their derivatives. Internal to the library.
#pragma once

#include <corvane/phases/numerics/smallest_eigenpair.h>
#include <corvane/phases/phase/phase.h>

#include <array>
#include <optional>
#include <vector>

namespace corvane::inline detail {

/// Isochoric criterion of Heidemann & Khalil (AIChE J. 26 (1980) 769). Along a direction u of unit
/// length, rho_i(s) = rho·(x_i + s·√x_i·u_i), the Helmholtz energy density over rho·RT changes by
/// λ·s²/2 + C·s³/6 + D·s⁴/24 + …, at constant T and relative to its tangent plane. λ is the
/// smallest eigenvalue of B_ij = √(rho_i·rho_j)·∂m_i/∂rho_j and u its eigenvector; at a critical
/// point λ = C = 0, and D > 0 if it is locally stable. All three are dimensionless, and remain
/// finite where a component vanishes.
///
/// λ is exact if the model's derivatives are. C: the ideal part −Σ u_i³/√x_i exactly, the residual
/// part from two evaluations by a central difference of the Hessian along u; the step of 1e-5
/// leaves about 1e-10 of truncation and as much of rounding (numerical models: 1e-3 and 1e-6).
class CriticalConditions {
  public:
    explicit CriticalConditions(FluidModel const& fluid);

    /// Variables: ln rho, ln T at the composition of the FluidModel (m = 2), or of a binary with
    /// x_0 as the third (m = 3). Then the fourth element is x_1, so that traces of either component
    /// keep their digits; in a direction it is the negative of the third.
    using Variables = std::array<double, 4>;

    PhaseState s;           ///< the last state
    std::vector<double> u;  ///< eigenvector; keeps its orientation from call to call
    double lambda = 0.0, C = 0.0;
    double limit;  ///< of residual() at a solution: what rounding leaves, with a margin

    /// λ and u alone (one evaluation), or with C (three). False where the model fails.
    bool eigen(Variables const& y, int m, int order = 0);
    bool evaluate(Variables const& y, int m, int order = 0);
    /// Is λ positive? λ and u remain as they were.
    bool definite(Variables const& y, int m, bool& positive);
    /// Rows: gradients of λ and C at y, the last state, which stays; forward differences (about
    /// 1e-5 relative). Inward where y_2 is near 1.
    bool gradients(Variables const& y, int m, double* J);
    /// D, from the curvature of λ along u less the response of the other eigenvectors; about 1e-6.
    bool quartic(Variables const& y, int m, double& D);
    /// Newton's method; row (m = 3 only) fixes row·y = value. With exact derivatives its last step
    /// takes C by extrapolation, so that the solution is one to rounding, whatever it started from; C is
    /// then that before the step. Leaves s with phase_H and phase_p.
    bool solve(Variables& y, int m, Variables const* row, double value, int iterations);
    /// m = 3: direction of the critical line at the solution, of unit length, either sign. From the
    /// gradients of the last iteration (not evaluated again: about 1e-5).
    Variables tangent() const { return tangent(J_.data()); }
    static Variables tangent(double const* gradients);
    int iterations = 0;
    bool updates = false;  ///< solve() with m = 2 updates the gradients after short steps (Broyden)

    /// Bounds of what λ and C of a solution are off by, residual and rounding: C from wider steps,
    /// extrapolated twice to zero, where rounding is less. Leaves s with phase_all. False if the
    /// model fails, or has no exact derivatives.
    bool equations(Variables const& y, int m, double* e);
    /// What the exact solution is compared at (m = 3): where it meets the plane across the line, or at
    /// the same T or p.
    enum class Kept { across, T, p };
    /// Bounds of the errors of T, p and the density (relative) and of x_0.
    struct Errors {
        double T, p, rho, x;
        double value() const { return T > p ? T : p; }
    };
    /// Of the solution that solve() has just found; s is left with phase_all.
    std::optional<Errors> errors(Variables const& y, int m, Kept kept = Kept::across);

    /// The larger of |λ| and |C|, over the largest eigenvalue if that exceeds 1: the stiffness of a
    /// dense liquid, to which rounding and the slopes of C are proportional.
    double residual() const;

  private:
    bool possible(PhaseState& q, double T, int order);
    bool state(PhaseState& q, Variables const& y, int m, int order);
    void form_B();
    void smallest();
    double stiffness() const;
    double form(PhaseState const& q) const;  // residual part of the quadratic form along u
    bool shifted(double h);
    bool third(double h, double& C);
    double ideal_third() const;  // the ideal part of C
    struct Wide {
        double C, left, h;  // residual part, bound of its truncation, step
    };
    bool extrapolated(double first, Wide& w);
    void system(Variables const& y, int m, Variables const* row, double value, double* r,
                double* J) const;
    void update(double const* moved, double const* before);
    void polish(Variables& y, int m, Variables const* row, double value);

    FluidModel const& fluid_;
    const int n_;
    const bool exact_;
    PhaseState side_, kept_;
    std::vector<double> last_u_, root_, B_;
    SmallestEigenpair smallest_;
    std::array<double, 9> J_{};
};

}  // namespace corvane::inline detail
