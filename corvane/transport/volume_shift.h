// Densities of one equation of state made those of another.
#pragma once

#include <array>

class Model1;

namespace corvane::inline detail {

/// What the saturated liquid of a model has more in volume than that of a reference, cm³/mol, at T or, above,
/// at 0.8 of the lower critical temperature; below 0.3 of it as there. Taken off everywhere, it makes the
/// liquid that of the reference and leaves dilute gases alone (Péneloux's translation, with the temperature).
/// Tabulated, linear between its 33 temperatures.
class VolumeShift {
  public:
    VolumeShift() = default;  ///< none
    VolumeShift(Model1 const& model, Model1 const& reference);
    double operator()(double T) const;

  private:
    static constexpr int kNodes = 33;
    double first_ = 0.0, step_ = 0.0;  // K; 0: none
    std::array<double, kNodes> shift_{};
};

/// rho/(1 − rho·shift). @throws ThException 5 nothing is left of the volume
double shifted_density(double rho, double shift);

}  // namespace corvane::inline detail
