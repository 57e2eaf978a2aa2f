// Viscosity, thermal conductivity and surface tension of mixtures, from those of their components.
//
//     corvane::Mixture gas = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
//     corvane::MixtureTransport transport(gas);
//     corvane::TransportValue eta = transport.viscosity(300.0, 0.0105, x);   // K, mol/cm³
//
// One formula serves gas, liquid and everything between: there is no step where phases are told
// apart. A pure component is what Transport gives, without its critical enhancement.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/transport/interface_profile.h>
#include <corvane/transport/transport.h>

#include <memory>

namespace corvane {

/// Diffusion in a phase of two components.
struct MixtureDiffusion {
    TransportValue stefan;  ///< coefficient of Maxwell and Stefan, m²/s
    /// Γ = x_1·∂(μ_1/RT)/∂x_1 at constant T and p of the mixture's model; 1 in a pure component, 0 on a spinodal.
    double thermodynamic_factor = 1.0;
    double fick() const { return stefan.value * thermodynamic_factor; }  ///< coefficient of Fick, m²/s
};

/// Not copied; const functions may be called by several threads.
class CORVANE_API MixtureTransport {
  public:
    /// Opens every component with the mixture's equation and parameter set, in its data home. The mixture must outlive this. @throws OpenFailure a component that the equation has not; a malformed data file
    explicit MixtureTransport(Mixture const& mixture);
    ~MixtureTransport();
    MixtureTransport(MixtureTransport const&) = delete;
    MixtureTransport& operator=(MixtureTransport const&) = delete;

    // `model` names the rules, `source` those of the components, each once. in_range: all components
    // are in the range of their sources at T; uncertainty: the largest of a component, to which that of the rule comes. second_source is not-a-number but for the viscosity of a dense
    // fluid whose components all have entropy scaling: the relative deviation of that.

    /// Viscosity in Pa·s at T [K], rho [mol/cm³] and mole fractions x.
    ///     ln η = ln η0 + Σ x_i·ln(η_i/η0_i)
    /// η0: dilute gas by Wilke (J. Chem. Phys. 18 (1950) 517); η_i: component i at T and at the
    /// mixture's reduced density, rho·Σ x_j·vc_j (corresponding states); η0_i: its dilute gas. The sum
    /// is the rule of Grunberg and Nissan (Nature 164 (1949) 799) without its binary constants. rho = 0
    /// is Wilke's mixture of gases exactly.
    /// @throws OpenFailure a component has no viscosity in the data tree; ThException 5 T, rho, x
    TransportValue viscosity(double T, double rho, Vector<double> const& x) const;

    /// The same by entropy scaling with PC-SAFT as published (Lötgering-Lin et al., Ind. Eng. Chem. Res. 57 (2018)
    /// 4095), at the mixture's density less what the saturated liquids of the components have more in volume at T
    /// than those of its PC-SAFT. @throws OpenFailure a component that it has not; ThException 5
    TransportValue viscosity_by_entropy_scaling(double T, double rho, Vector<double> const& x) const;

    /// Thermal conductivity in W/(m K), likewise, without critical enhancement.
    ///     λ = λ0 + Σ w_i·Δλ_i − 0.72·Σ_{i<j} w_i·w_j·|Δλ_i − Δλ_j|,   Δλ_i = λ_i − λ0_i
    /// λ0: dilute gas by Wassiljewa's equation with the coefficients of Mason and Saxena (Phys. Fluids 1
    /// (1958) 361); the rest: rule of Filippov (1955) in mass fractions w, for pairs.
    /// @throws as above; a component has no viscosity of the dilute gas
    TransportValue thermal_conductivity(double T, double rho, Vector<double> const& x) const;

    /// Diffusion of two components at T, rho > 0 and x, joined as self-diffusion is (Transport::diffusion).
    /// Dilute gas: Fuller et al. (1966) where both have a diffusion volume in the data tree; else Chapman and
    /// Enskog with the collision diameters that the components' own dilute viscosities have
    /// at T, arithmetic mean, and ε/k = Tc/1.2593, geometric mean. Liquid: D·η = (D_12·η_2)^x_2·(D_21·η_1)^x_1
    /// (Leffler, Cullinan, Ind. Eng. Chem. Fundam. 9 (1970) 84) with the dilute solutions of Wilke and Chang.
    /// @throws as viscosity; ThException 5 not two components, rho = 0
    MixtureDiffusion diffusion(double T, double rho, Vector<double> const& x) const;

    /// Surface tension in N/m of a liquid beside a vapour in equilibrium with it: by density-gradient theory
    /// (interface_profile), else, where the phases are not in equilibrium by the model or it has no smooth path
    /// between them, by parachors. `model` says which.
    /// @throws OpenFailure a component has no surface tension in the data tree; ThException 5
    TransportValue surface_tension(double T, double rhoL, Vector<double> const& x, double rhoV,
                                   Vector<double> const& y) const;

    /// The profile of the interface. The influence parameter of a component is the one that gives it its own
    /// surface tension at T, or at 0.85 of its critical temperature above that.
    /// @throws as surface_tension; EquilibriumFailure where there is no profile
    InterfaceProfile interface_profile(double T, double rhoL, Vector<double> const& x, double rhoV,
                                       Vector<double> const& y) const;

    /// σ = (Σ P_i·(x_i·rhoL − y_i·rhoV))⁴ (Weinaug, Katz, Ind. Eng. Chem. 35 (1943) 239), zero where the sum is
    /// not positive. The parachor P_i is that of the component's own surface tension and saturated
    /// densities at T, or at 0.9 of its critical temperature above that.
    TransportValue surface_tension_by_parachors(double T, double rhoL, Vector<double> const& x, double rhoV,
                                                Vector<double> const& y) const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace corvane
