// Estimates of viscosity and thermal conductivity from critical constants: Chung, Ajlan, Lee, Starling, Ind. Eng.
// Chem. Res. 27 (1988) 671; figures as in Poling, Prausnitz, O'Connell, The Properties of Gases and Liquids, 5th
// ed. (2001), chapters 9 and 10. Without their constants of association.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/core/api.h>

#include <array>

namespace corvane::inline detail {

/// Of one substance; T in K, rho in mol/cm³, at any density.
class CORVANE_API ChungEstimate {
  public:
    /// Constants from the parameter file (measured critical point, else that of the equation), the acentric
    /// factor from the equation's vapour pressure at 0.7 Tc, the dipole moment from
    /// "<home>/CorvaneS/transport/dipole.tsv", zero where it is not there.
    /// @throws OpenFailure a malformed row; EquilibriumFailure no vapour pressure at 0.7 Tc
    explicit ChungEstimate(Fluid const& fluid);
    /// g/mol, K, cm³/mol, –, debye.
    ChungEstimate(double M, double Tc, double vc, double omega, double dipole);

    // Where nine of ten values stay within what docs/transport.md says, measured against correlations:
    // not for quantum fluids, long molecules, strong dipoles, bonds of hydrogen, cold liquids.
    bool holds_for_gas() const { return omega_ >= -0.1 && omega_ <= 0.7 && dipole_ <= 1.0; }
    bool holds() const { return omega_ >= -0.1 && omega_ <= 0.5 && dipole_ <= 0.6; }
    double lowest() const { return 0.6 * Tc_; }   ///< K, of the liquid
    bool informed() const { return informed_; }   ///< the dipole moment is known, not taken to be zero

    double viscosity(double T, double rho) const;  ///< Pa·s
    /// W/(m K). @param cv  heat capacity of the ideal gas over R at constant volume
    double conductivity(double T, double rho, double cv) const;

    static constexpr char const* source =
        "Chung, Ajlan, Lee, Starling (1988), Ind. Eng. Chem. Res. 27, 671";

  private:
    void set_up(double M, double Tc, double vc, double omega, double dipole);
    double dilute(double T) const;  ///< µP

    double M_ = 0.0, Tc_ = 0.0, vc_ = 0.0, omega_ = 0.0, shape_ = 1.0;
    double dipole_ = 0.0;  // reduced
    bool informed_ = true;
    std::array<double, 10> E_{};
    std::array<double, 7> B_{};
};

}  // namespace corvane::inline detail
