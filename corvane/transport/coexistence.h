// Whether a state lies between the saturated densities of its fluid.
#pragma once

#include <corvane/core/lazy.h>

#include <array>
#include <deque>
#include <optional>

class Model1;

namespace corvane::inline detail {

/// The saturated densities of a model for many states: polynomials of z = √(Tc/T − 1), in which they are regular up to the
/// critical point, in pieces that are solved when a temperature first falls into them (ten solutions each).
/// What they leave open, by their last coefficients, is solved. Several threads may ask.
class Coexistence {
  public:
    /// The model must outlive this and keep its parameters.
    explicit Coexistence(Model1 const& model);

    /// Is rho [mol/cm³] between the densities of saturated vapour and liquid at T [K], and not one of them to 1e-7?
    /// False where there is no saturation.
    bool parts(double T, double rho) const;

  private:
    static constexpr int kOrder = 10;
    struct Series {  ///< of Chebyshev, and what is left out, relative
        std::array<double, kOrder> c{};
        double error = 0.0;
    };
    struct Piece {
        Series liquid, vapour;  ///< ln rho
    };
    std::optional<Piece> solved(int piece) const;
    std::optional<bool> tabulated(double T, double rho) const;

    Model1 const& model_;
    std::deque<Lazy<std::optional<Piece>>> pieces_;  ///< nothing where the model has not all its states
};

}  // namespace corvane::inline detail
