// Molar enthalpy and entropy of a phase, ideal-gas parts included. Internal to the library.
#pragma once

#include <corvane/phases/phase/phase.h>

#include <vector>

namespace corvane::inline detail {

/// Caloric properties of phases at one temperature, in the reference states of ModelN::Hm and Sm.
///
/// Nothing is evaluated beside the potentials. With Ta = T·∂Ar/∂T = Σ x_i·m_iT − p_T/rho,
///
///     H/(RT) = p/(rho·RT) + Σ x_i·U°_i/(RT) − Ta,   S/R = H/(RT) − Σ x_i·μ_i/(RT),
///
/// and at constant T and V, per mole of component j,
///
///     ∂U/∂n_j/(RT) = U°_j/(RT) − m_jT,   ∂S/∂n_j/R = S°_j/R − 1 − m_j − m_jT.
class Caloric {
  public:
    /// @throws ThException 3 when a present component has no ideal-gas table
    explicit Caloric(FluidModel const& fluid);

    /// Sets T and with it the ideal-gas parts.
    void at(double T);
    double U(int i) const { return U_[i]; }  ///< U°_i/(RT)
    double S(int i) const { return S_[i]; }  ///< S°_i/R at unit density

    // Of a phase evaluated at T with phase_T and phase_p, per mole.
    double h(PhaseState const& s) const;   ///< H/(RT)
    double s(PhaseState const& s) const;   ///< S/R
    double cv(PhaseState const& s) const;  ///< CV/R; evaluates ∂²Ar/∂T²

    /// Enthalpy over RT and entropy over R of the ideal gas of composition z at p [MPa] and T.
    double ideal_h() const;
    double ideal_s(double p) const;
    /// cp/R of the ideal gas of composition z.
    double ideal_cp() const;

    bool covers(double T) const;  ///< is T at or above the first temperature of every table?
    double T_first() const;       ///< K: highest first temperature of the tables
    double T_last() const;        ///< K: lowest last temperature of the tables

  private:
    FluidModel const& fluid_;
    double T_ = 0.0;
    std::vector<double> U_, S_, cv_;
};

}  // namespace corvane::inline detail
