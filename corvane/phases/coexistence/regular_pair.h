// Two phases of the same potentials and pressure in variables that are regular through a critical
// point and do not admit the trivial solution. Internal to the library.
#pragma once

#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>

#include <optional>
#include <vector>

namespace corvane::inline detail {

/// Phases a and b with ln rho_i = c_i + d·n_i and c_i − d·n_i: mean c, direction n with
/// Σ z_i·n_i² = 1, half distance d of either sign. On the way between them, ln rho_i(s) = c_i +
/// s·d·n_i, let q_i = Σ_j rho_j·(∂m_i/∂rho_j)·n_j. Equal potentials and equal pressures are
///
///     E_i = (m_i' − m_i'')/(2d) = ½ ∫ q_i ds = 0,        s from −1 to 1
///     F = [Δ(p/RT) − Σ rho_i(0)·Δm_i]/(2·d³·rho(0))
///       = 1/(2d²) ∫ Σ_i [rho_i(0)/rho(0)]·(e^{s·d·n_i} − 1)·q_i ds = 0.
///
/// Both are even functions of d with finite limits at d = 0, which are the conditions of a critical
/// point: n is in the kernel of the Hessian, and the third derivative along it vanishes. The ideal
/// part is in closed form; of the residual part, smooth on the way, the integrals are Gauss–Legendre
/// sums (4 to 16 nodes in pairs ± s). So potentials are never subtracted: residuals are accurate to
/// rounding in E and to rounding/d in F. Below |d| = h, h = 1e-3 or less where a component changes
/// faster, F is extrapolated from its values at h, 2h and 3h, a polynomial of second degree in d²:
/// rounding/h then, and a truncation of the order of what the second degree adds times (3h·n)², which
/// the bound includes. The Jacobian follows from the two ends alone, by the same difference
/// formulas: exact but for rounding/d³, so that below |d| = 3e-3 it is taken there.
///
/// Isochoric variables: Bell & Deiters, AIChE J. 64 (2018) 2745. The limit is Heidemann & Khalil's
/// criterion (AIChE J. 26 (1980) 769). Phase boundaries from the critical point in the distance along
/// its eigenvector: Michelsen, Fluid Phase Equilib. 16 (1984) 57, there as a series.
class RegularPair {
  public:
    explicit RegularPair(FluidModel const& fluid);
    RegularPair(RegularPair const&) = delete;
    RegularPair& operator=(RegularPair const&) = delete;

    /// Half distance below which this is the system to solve: beyond it the plain one is as accurate.
    static constexpr double kNear = 0.1;
    /// The same of a single component: beyond it phases are not alike, however near the others are.
    /// A gas may hold as much per volume of its main component as a drop that is rich in a trace.
    static constexpr double kNearEach = 0.5;

    FluidModel const& fluid;
    PhaseState a, b;        ///< evaluated at y with all derivatives, after solve()
    /// c (n), n (n), d, ln T, volume fraction of b in the whole; for every phase beside them
    /// ln rho_i (n) and its volume fraction.
    std::vector<double> y;
    std::vector<PhaseState> beside;  ///< see add()

    // Two of four are fixed: T, p, d (as it is in y), the fraction (as it is in y; at 0 phase
    // a has the composition z of the fluid).
    std::optional<double> T, p;
    bool fixed_distance = false, fixed_fraction = true;
    /// Three components: T, p, d and the fraction are all fixed, and no composition is. So tie lines
    /// at given T and p are found by their half distance, and with d = 0 the plait point.
    bool free_composition = false;
    int iterations = 0;

    /// Start values from two phases (partial densities), whose order and distance stay.
    void start(std::vector<double> const& rho_a, std::vector<double> const& rho_b, double t,
               double fraction = 0.0);
    /// One more phase of the same potentials and pressure, by its partial densities, and the part
    /// that it has of the volume of the whole. After start().
    void add(std::vector<double> const& rho, double part);
    /// At a critical phase; u as in CriticalConditions.
    void start_critical(std::vector<double> const& rho, std::vector<double> const& u, double t);
    /// Newton's method. False if it does not converge or d would change its sign.
    bool solve(int limit);
    /// ∂y/∂d at the solution, of fixed fraction. False if singular.
    bool tangent(std::vector<double>& t);
    /// Fills the bounds of the certificate. False if there are none.
    bool bound(Certificate& c);
    /// Are both phases minima of the energy? By the Hessian at the ends; where they are closer than
    /// 3e-3 at that distance, less what ½ ∫ q ds is there: so it is the sign of the fourth-order
    /// term that decides.
    bool locally_stable();

    double distance() const { return y[2 * n_]; }
    double ln_T() const { return y[2 * n_ + 1]; }
    double ln_p(std::vector<double> const& t) const;  ///< slope of ln p along t
    double part(int k) const { return y[of_beside(k) + n_]; }  ///< of beside[k], of the volume

  private:
    bool ends();
    bool integrals(int nodes);
    bool sums(int nodes, double half, double* E, double& F, double& rounding);
    int nodes() const;
    void assemble(bool tangent);
    void equilibrium(double* J, double* r) const;
    void equal(int k, double* J, double* r) const;
    int of_beside(int k) const { return 2 * n_ + 3 + k * (n_ + 1); }  ///< where it begins in y
    double first_part() const;                                        ///< volume fraction of a
    void resize();
    void compose(double* J, double* r) const;
    void fix(double* J, double* r, bool tangent) const;
    bool sides(PhaseState& first, PhaseState& second, double distance, int order);

    int n_, m_;
    PhaseState node_, other_, wide_a_, wide_b_;
    double h_ = 0.0;  // of wide_a_, wide_b_
    std::vector<double> jacobian_, r_, E_, E_d_, e_, q_, q2_;
    double F_ = 0.0, F_d_ = 0.0;  // F and its slope in d over d
};

}  // namespace corvane::inline detail
