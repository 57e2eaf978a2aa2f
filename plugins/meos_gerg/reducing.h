// The reducing temperature and volume of a mixture, and their derivatives in the amounts.
#pragma once

#include <corvane/plugin/small_array.h>

namespace corvane::gerg {

inline constexpr int kPairParameters = 7;

/// Binary parameters, for the component of the smaller index as the first: exchanging the two
/// inverts beta.
struct Pair {
    /// 0 beta_T, 1 gamma_T, 2 beta_v, 3 gamma_v, 4 F, 5 xi [K], 6 zeta [cm³/mol]
    double value[kPairParameters] = {1.0, 1.0, 1.0, 1.0, 0.0, 0.0, 0.0};
    bool linear = false;  ///< mixing with xi and zeta instead of beta and gamma
    int function = -1;    ///< number of the departure function, −1 none
};

/// One reducing quantity as a homogeneous function of the amounts: with mole fractions as amounts,
///
///     Y(x) = Σ x_i²·Y_i + Σ_{i<j} x_i·x_j·k_ij·(x_i + x_j)/(B_ij·x_i + x_j)
///
/// is the reducing temperature or volume. k = 2·β·γ·Y_ij and B = β² give the form of Kunz & Wagner,
/// J. Chem. Eng. Data 57 (2012) 3032, eqs. 10 and 11 (Klimeck 2000); B = 1 and k = Y_i + Y_j + ξ
/// that of Lemmon & Jacobsen, J. Phys. Chem. Ref. Data 33 (2004) 593, Σ x_i·Y_i + Σ x_i·x_j·ξ_ij.
class Reducing {
  public:
    enum class Of { temperature, volume };
    /// @param own  the components' values, n of them
    Reducing(Of of, double const* own, int n, Pair const* pairs);

    double value(double const* x) const;
    /// Y_i = ∂Y/∂x_i.
    void gradient(double const* x, double* Yi) const;
    /// Y_ij, n×n. Of two absent components, whose element depends on the direction in which they
    /// are added: that of equal amounts.
    void hessian(double const* x, double* Yij) const;

  private:
    struct Coefficients {
        double k, B;
    };
    Coefficients pair(int i, int j) const;

    Of of_;
    double const* own_;
    int n_;
    Pair const* pairs_;
    SmallArray<double> root_;  // cube roots of the volumes
};

}  // namespace corvane::gerg
