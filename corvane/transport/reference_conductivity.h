// Reference correlations of the thermal conductivity: dilute gas, dense fluid, critical
// enhancement.
#pragma once

#include <corvane/transport/figures.h>

#include <functional>
#include <memory>

class Model1;

namespace corvane::inline detail {

/// λ(T, rho) in W/(m K); T in K, rho in mol/m³. The critical enhancement takes what it needs of the
/// fluid from its equation of state.
class ConductivityCorrelation {
  public:
    /// @param M     molar mass, g/mol
    /// @param eta0  viscosity of the dilute gas [Pa·s] of the fluid, or null; forms that need it
    /// are
    ///              refused without
    /// @throws OpenFailure an unknown form, or figures that do not fit it
    ConductivityCorrelation(Figures const& figures, double M, std::function<double(double)> eta0);

    double background(double T, double rho) const { return background_(T, rho); }
    bool enhanced() const { return enhancement_ != Enhancement::none; }
    /// @param eta  viscosity of the state, Pa·s
    double critical(Model1 const& model, double T, double rho, double eta) const;

  private:
    double water_enhancement(Model1 const& model, double T, double rho, double eta) const;

    std::function<double(double, double)> background_;
    enum class Enhancement {
        none,
        olchowy_sengers,
        water,
        gaussian
    } enhancement_ = Enhancement::none;
    std::vector<double> figures_;                             ///< of the enhancement
    double Tc_ = 0.0, pc_ = 0.0, rho_c_ = 0.0, T_ref_ = 0.0;  ///< K, Pa, mol/m³, K
};

/// Reduced susceptibility of IAPWS, from which the correlation length of water follows [nm].
double water_correlation_length(Model1 const& model, double T, double rho);

}  // namespace corvane::inline detail
