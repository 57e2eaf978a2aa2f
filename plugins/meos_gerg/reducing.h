// The reducing temperature and volume of a mixture, and their derivatives in the amounts.
#pragma once

#include <corvane/plugin/small_array.h>

#include <array>
#include <vector>

namespace corvane::gerg {

inline constexpr int kPairParameters = 7;

/// Binary parameters, for the component of the smaller index as the first: exchanging the two
/// inverts beta.
struct Pair {
    /// 0 beta_T, 1 gamma_T, 2 beta_v, 3 gamma_v, 4 F, 5 xi [K], 6 zeta [cm³/mol]
    double value[kPairParameters] = {1.0, 1.0, 1.0, 1.0, 0.0, 0.0, 0.0};
    bool linear = false;  ///< mixing with xi and zeta instead of beta and gamma
};

/// Those of all pairs of n components, in columns. A row has the pairs i < j of one j and is filled
/// up to whole vectors with zeros.
class Pairs {
  public:
    void resize(int n);
    double* at(int k, int i, int j) { return &value_[index(k)][place(i, j)]; }
    double at(int k, int i, int j) const { return value_[index(k)][place(i, j)]; }
    Pair pair(int i, int j) const;
    void pair(int i, int j, Pair const& p);
    /// Column k from the pair (0, j) on.
    double const* row(int k, int j) const { return value_[index(k)].data() + place(0, j); }
    double const* linear(int j) const { return linear_.data() + place(0, j); }  ///< 1 or 0

  private:
    static unsigned index(int k) { return static_cast<unsigned>(k); }
    unsigned place(int i, int j) const {
        return row_[static_cast<unsigned>(i < j ? j : i)] + static_cast<unsigned>(i < j ? i : j);
    }
    std::array<std::vector<double>, kPairParameters> value_;
    std::vector<double> linear_;
    std::vector<unsigned> row_;
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
    /// @param own, root  the components' values and root() of them   @param x  mole fractions
    /// @param order  of derivatives: 0 … 2
    Reducing(Of of, double const* own, double const* root, double const* x, int n,
             Pairs const& pairs, int order);
    /// What the mean of two components is made of.
    static double root(Of of, double own);

    double value() const { return value_; }
    /// ∂Y/∂x_i, from order 1 on.
    double gradient(int i) const { return gradient_[i]; }
    /// ∂²Y/∂x_i∂x_j for j <= i, with order 2. Of two absent components, whose element depends on
    /// the direction in which they are added: that of equal amounts.
    double const* hessian(int i) const { return &hessian_[i * stride_]; }

  private:
    template <int order>
    void in_lanes(Of of, Pairs const& pairs);
    template <int order>
    void narrow(Of of, Pairs const& pairs);
    template <int order>
    void wide(Of of, Pairs const& pairs);
    template <int order>
    void fill(Of of, Pairs const& pairs);

    int n_, stride_;
    double value_ = 0.0;
    SmallArray<double> own_, root_, x_, gradient_;  // filled up with zeros
    SmallArray<double, 576> hessian_;               // rows
};

}  // namespace corvane::gerg
