// Dispersion between chains in PC-SAFT: second-order perturbation theory of Barker and Henderson
// with integrals fitted to the n-alkanes (Gross & Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244).
//
//     a_disp = −2π·rho·I1(eta, m)·[m²εσ³] − π·rho·m·C1(eta, m)·I2(eta, m)·[m²ε²σ³]      (eq. 10,
//     A.10)
//
// with rho the number density of molecules, ε in units of kT, and the brackets averaged over pairs
// in a mixture, where m is the mean segment number.
#pragma once

#include <array>

namespace corvane::pcsaft {

// Universal constants a[k][i], b[k][i] of the integrals (ibid., Table 1).
inline constexpr double kDispersionA[3][7] = {
    {0.9105631445, 0.6361281449, 2.6861347891, -26.547362491, 97.759208784, -159.59154087,
     91.297774084},
    {-0.3084016918, 0.1860531159, -2.5030047259, 21.419793629, -65.255885330, 83.318680481,
     -33.746922930},
    {-0.0906148351, 0.4527842806, 0.5962700728, -1.7241829131, -4.1302112531, 13.776631870,
     -8.6728470368}};
inline constexpr double kDispersionB[3][7] = {
    {0.7240946941, 2.2382791861, -4.0025849485, -21.003576815, 26.855641363, 206.55133841,
     -355.60235612},
    {-0.5755498075, 0.6995095521, 3.8925673390, -17.215471648, 192.67226447, -161.82646165,
     -165.20769346},
    {0.0976883116, -0.2557574982, -9.1558561530, 20.642075974, -38.804430052, 93.626774077,
     -29.666905585}};

/// The integrals for one segment number m > 0. C is double, or a type that carries derivatives
/// where m depends on the composition; S is the type of the packing fraction.
template <class C>
class Dispersion {
  public:
    explicit Dispersion(C const& m) : m_(m) {
        const C s = (m - 1.0) / m, t = s * ((m - 2.0) / m);
        for (int i = 0; i < 7; ++i) {  // eqs. 18, 19
            a_[i] = kDispersionA[0][i] + s * kDispersionA[1][i] + t * kDispersionA[2][i];
            b_[i] = kDispersionB[0][i] + s * kDispersionB[1][i] + t * kDispersionB[2][i];
        }
    }
    /// I1 and I2 (eqs. 16, 17).
    template <class S>
    auto i1(S const& eta) const {
        return polynomial(a_, eta);
    }
    template <class S>
    auto i2(S const& eta) const {
        return polynomial(b_, eta);
    }
    /// C1 = 1/(1 + Z_hc + rho·∂Z_hc/∂rho) (eq. A.11).
    template <class S>
    auto c1(S const& eta) const {
        const S free = 1.0 - eta, both = free * (2.0 - eta), free2 = free * free;
        const S sphere = eta * (8.0 - 2.0 * eta) / (free2 * free2);
        const S chain = eta * (20.0 + eta * (-27.0 + eta * (12.0 - 2.0 * eta))) / (both * both);
        return 1.0 / (1.0 + m_ * sphere + (1.0 - m_) * chain);
    }

    /// ∂(eta·I1)/∂eta (eq. A.29).
    template <class S>
    auto i1_slope(S const& eta) const {
        return slope(a_, eta);
    }
    /// ∂(eta·C1·I2)/∂eta = C1·∂(eta·I2)/∂eta + eta·C2·I2 with C2 = ∂C1/∂eta (eqs. A.30, A.31).
    template <class S>
    auto c1i2_slope(S const& eta) const {
        const S free = 1.0 - eta, both = free * (2.0 - eta), free2 = free * free;
        const S sphere = (8.0 + eta * (20.0 - 4.0 * eta)) / (free2 * free2 * free);
        const S chain = (40.0 + eta * (-48.0 + eta * (12.0 + 2.0 * eta))) / (both * both * both);
        const auto C1 = c1(eta);
        return C1 * (slope(b_, eta) -
                     eta * C1 * (m_ * sphere + (1.0 - m_) * chain) * polynomial(b_, eta));
    }

  private:
    template <class S>
    static auto polynomial(std::array<C, 7> const& c, S const& x) {
        return ((((((c[6] * x + c[5]) * x + c[4]) * x + c[3]) * x + c[2]) * x + c[1]) * x + c[0]);
    }
    template <class S>
    static auto slope(std::array<C, 7> const& c, S const& x) {
        return ((((((7.0 * c[6] * x + 6.0 * c[5]) * x + 5.0 * c[4]) * x + 4.0 * c[3]) * x +
                  3.0 * c[2]) *
                     x +
                 2.0 * c[1]) *
                    x +
                c[0]);
    }

    C m_;
    std::array<C, 7> a_, b_;
};

}  // namespace corvane::pcsaft
