// Viscosity, thermal conductivity, self-diffusion and surface tension of pure fluids, each by the best model that
// the data tree has for the substance.
//
//     corvane::Fluid water = corvane::open("MEOS", "water");
//     corvane::Transport transport(water);
//     corvane::TransportValue eta = transport.viscosity(300.0, 0.0554);   // K, mol/cm³
//
// Models, best first: a published reference correlation; friction theory (viscosity); correlations of the saturated liquid
// and of the dilute gas, joined along the density; entropy scaling (viscosity); an estimate. The result names what it is from and says when it lies outside the range of
// the source.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/core/api.h>
#include <corvane/state/phase_properties.h>

#include <limits>
#include <memory>
#include <string>

namespace corvane {

struct TransportValue {
    double value = 0.0;    ///< Pa·s, W/(m K), N/m or m²/s
    std::string model;     ///< what it was computed by: "reference correlation", "liquid and gas
                           ///< correlations", …
    std::string source;    ///< publication
    bool in_range = true;  ///< within the temperatures that the sources state
    /// Relative deviation of a second source of this property at this temperature; not-a-number
    /// where there is none, and for reference correlations.
    double second_source;
    /// What nine of ten values of this model stay below, relative, as docs/transport.md measures it;
    /// not-a-number for reference correlations and surface tensions, whose publications state theirs.
    double uncertainty = std::numeric_limits<double>::quiet_NaN();
    /// Between the densities of saturated vapour and liquid: a metastable state, or one that is none. Told by the
    /// functions of T and rho of a pure fluid. Of a mixture: one that no phase can be in (∂μ_i/∂rho_j is not positive
    /// definite); whether another phase would appear beside it a flash tells, and not these.
    bool metastable = false;
};

/// Transport properties of one fluid. Not copied; const functions may be called by several threads.
class CORVANE_API Transport {
  public:
    /// Reads what there is for the substance. The fluid must outlive this and keep its parameters:
    /// densities of saturation and the critical enhancement come from its model.
    /// @throws OpenFailure a malformed data file
    explicit Transport(Fluid const& fluid);
    ~Transport();
    Transport(Transport const&) = delete;
    Transport& operator=(Transport const&) = delete;

    /// Viscosity in Pa·s at T [K] and rho [mol/cm³]; rho = 0 is the dilute gas.
    /// Reference correlations with all their parts (for water with the critical factor).
    /// Friction theory where a set for the reference equation is there, with the densities of that.
    /// Elsewhere η = η0(T) + c·Δη(T/Tc, rho/rho_c): Δη is what the dense fluid adds in propane (corresponding
    /// states), c gives the saturated liquid its own correlation's value; above 0.75 Tc, and beyond
    /// the correlation's range, c is that of the end. There is no step anywhere. Where no liquid is
    /// correlated: entropy scaling; last the estimate of Chung et al. (1988), where the acentric factor is −0.1
    /// to 0.5 (gas: 0.7) and the reduced dipole moment at most 0.6 (gas: 1). Reference correlations and entropy
    /// scaling take the density of their own equation: the model's, less what its saturated liquid has more
    /// in volume at T.
    /// @throws OpenFailure the data tree has no model of it for the substance; ThException 5 T not
    ///     positive, rho negative, not finite; a state where the correlation has no positive value, such
    ///     as behind the pole of a free volume
    TransportValue viscosity(double T, double rho) const;

    /// The same of a state whose properties are known, as of a flash: without an evaluation of the
    /// equation of state, where there is a reference correlation, and without a look at its stability.
    TransportValue viscosity(PhaseProperties const& state) const;

    /// Thermal conductivity in W/(m K), likewise. Reference correlations with their critical
    /// enhancement, which needs the ideal-gas table and a viscosity; where there is none, `model`
    /// says so. The others have no enhancement.
    /// @throws OpenFailure as above; ThException 5; ThException 3 no ideal-gas table
    TransportValue thermal_conductivity(double T, double rho) const;
    TransportValue thermal_conductivity(PhaseProperties const& state) const;

    /// Coefficient of self-diffusion in m²/s at T and rho > 0, from the viscosities η0 and η there:
    ///     D = √[(D_gas·η0/η)² + (kT·n^(1/3)/(2π·η))²]
    /// D_gas: Chapman and Enskog, which is (6/5)·A*·η0/(rho·M) with the Lennard-Jones A* at kT/ε; the second is the
    /// relation of Li and Chang (J. Chem. Phys. 23 (1955) 518) of liquids.
    /// @throws as viscosity; ThException 5 rho = 0, where it is infinite
    TransportValue diffusion(double T, double rho) const;

    /// Both without what a critical point adds, for states of a component in a mixture: it need not be
    /// stable there. @throws as above
    TransportValue viscosity_background(double T, double rho) const;
    TransportValue conductivity_background(double T, double rho) const;

    /// Surface tension of liquid and vapour in N/m at T [K]; zero from the critical temperature of
    /// the correlation on. @throws OpenFailure no correlation; ThException 5
    TransportValue surface_tension(double T) const;

    /// Is there any model of it for the substance, of the dense fluid too?
    bool has_viscosity() const;
    bool has_conductivity() const;
    bool has_surface_tension() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace corvane
