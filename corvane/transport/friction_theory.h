// Published friction-theory sets as viscosities of the reference equation that they were made with.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/transport/reference_viscosity.h>

#include <optional>
#include <string>

namespace corvane::inline detail {

/// η(T, rho) by friction theory (Visco) with the set of a substance for the reference equation (MEOS), which it brings
/// along. One function of density and temperature; rho = 0 is its dilute gas.
class FrictionTheory final : public ViscosityCorrelation {
  public:
    /// The first of "<home>/models/viscosity/friction_theory/MEOS/<substance>;<n>"; null where there is none.
    /// @throws OpenFailure its dilute gas or its parameter set is missing
    static std::unique_ptr<FrictionTheory> find(DataHome const& home, std::string const& substance);

    double dilute(double T) const override { return 1e-6 * fluid_.model->visco.eta0(T); }
    double background(double T, double rho) const override;
    Fluid const& fluid() const { return fluid_; }  ///< whose densities it wants
    ParameterNotes const& notes() const { return notes_; }
    std::string const& source() const { return notes_.source; }

  private:
    FrictionTheory(Fluid fluid, ParameterNotes notes);
    Fluid fluid_;
    ParameterNotes notes_;
};

}  // namespace corvane::inline detail
