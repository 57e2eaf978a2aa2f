// Reference correlations of the thermal conductivity: dilute gas, dense fluid, critical
// enhancement.
#pragma once

#include <corvane/transport/figures.h>

#include <functional>
#include <memory>
#include <vector>

class Model1;

namespace corvane {
struct PhaseProperties;
}

namespace corvane::inline detail {

/// ∂rho/∂p in mol/(m³·Pa) along an isotherm so far above the critical one that it is taken to have no
/// critical part. Up to 3.6 critical densities it comes from a table by interpolation of fifth degree
/// (Lagrange), if that meets the equation to 1e-9 between the nodes; else, and beyond, from the
/// equation.
class ReferenceSlope {
  public:
    ReferenceSlope(Model1 const& model, double T);
    double operator()(double rho) const;  ///< mol/m³
    double T() const { return T_; }

  private:
    double interpolated(double rho) const;

    Model1 const* model_;
    double T_, step_ = 0.0, last_ = 0.0;  ///< K; mol/m³; end of the table, 0: none
    std::vector<double> dp_drho_;         ///< J/mol
};

/// λ(T, rho) in W/(m K); T in K, rho in mol/m³. The critical enhancement takes what it needs of the
/// fluid from its equation of state.
class ConductivityCorrelation {
  public:
    /// @param M     molar mass, g/mol
    /// @param eta0  viscosity of the dilute gas [Pa·s] of the fluid, or null; forms that need it
    /// are
    ///              refused without
    /// @param cv0   heat capacity of the ideal gas at constant volume over R, likewise
    /// @throws OpenFailure an unknown form, or figures that do not fit it
    ConductivityCorrelation(Figures const& figures, double M,
                            std::function<double(double)> const& eta0,
                            std::function<double(double)> const& cv0 = {});

    double background(double T, double rho) const { return background_(T, rho); }
    bool enhanced() const { return enhancement_ != Enhancement::none; }
    /// Of the isotherm without critical part, K; 0 where the enhancement does without.
    double reference_temperature() const { return T_ref_; }
    /// @param slope  of that isotherm; may be null where there is none
    /// @param eta    viscosity of the state, Pa·s
    /// @throws ThException 3 no heat capacities in s
    double critical(PhaseProperties const& s, ReferenceSlope const* slope, double eta) const;

  private:
    double water_enhancement(PhaseProperties const& s, ReferenceSlope const& slope, double eta) const;

    std::function<double(double, double)> background_;
    enum class Enhancement {
        none,
        olchowy_sengers,
        water,
        gaussian
    } enhancement_ = Enhancement::none;
    std::vector<double> figures_;                             ///< of the enhancement
    double most_ = 0.0;                                       ///< largest reduced susceptibility
    double Tc_ = 0.0, pc_ = 0.0, rho_c_ = 0.0, T_ref_ = 0.0;  ///< K, Pa, mol/m³, K
};

/// 1.5 critical temperatures of water, K.
inline constexpr double water_reference_temperature = 1.5 * 647.096;
/// Correlation length of water [nm] from the reduced susceptibility of IAPWS.
double water_correlation_length(PhaseProperties const& s, ReferenceSlope const& slope);

}  // namespace corvane::inline detail
