// Cubic equations of state, written from the papers (Peng & Robinson, Ind. Eng. Chem. Fundam. 15
// (1976) 59; Soave, Chem. Eng. Sci. 27 (1972) 1197; alpha of Twu et al., Fluid Phase Equilib. 69 (1991)
// 33; volume translation of Péneloux et al., ibid. 8 (1982) 7) with van der Waals one-fluid mixing or
// that of Huron & Vidal (ibid. 3 (1979) 255), in p of v and x and in any number type. Only the
// parameters come from the library's model.
#pragma once

#include "real.h"

#include <corvane/corvane.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace judge {

/// p/(RT) = 1/(v − B) − A/((v + d1·B)(v + d2·B)), A = a/(RT), at v + Σ x_i·c_i in place of v.
struct Cubic {
    static constexpr Precision kPrecision{};
    int n = 0;
    bool pr = false;
    Values<double> Tc{}, b{}, omega{}, M{};
    struct {
        bool used = false;
        double L = 0, M = 0, N = 0;
    } twu[kMax];
    double k[kMax][kMax] = {}, l[kMax][kMax] = {};
    Values<double> shift{};  ///< of the volume
    /// Of Huron & Vidal: τ_ij = C_ij/T + D_ij, C_ij of alpha = 0 is 0.
    bool excess = false;
    double alpha[kMax][kMax] = {}, C[kMax][kMax] = {}, D[kMax][kMax] = {};

    Cubic() = default;
    /// @throws std::runtime_error where the model is none of these
    explicit Cubic(ModelN const& m) : n(m.mdl1.size()), pr(std::string(m.eos) == "PR") {
        const bool hv = std::string(m.mth) == "HV";
        if (n > kMax || !(hv || std::string(m.mth) == "vdW1"))
            throw std::runtime_error("not a cubic");
        for (int i = 0; i < n; ++i) {
            Model1 const& c = *m.mdl1[i];
            M[i] = c.M();
            Tc[i] = c.param(1);
            b[i] = c.param(2);
            omega[i] = c.param(3);
            if (!(c.param(4) == 0 || c.param(4) == 1))
                throw std::runtime_error("neither the standard alpha nor Twu's");
            twu[i] = {c.param(4) == 1, c.param(5), c.param(6), c.param(7)};
            shift[i] = c.param(8);
            for (int j = 0; j < i; ++j) {
                k[i][j] = k[j][i] = m.param(0, i, j);
                if (!hv) {
                    l[i][j] = l[j][i] = m.param(1, i, j);
                    continue;
                }
                excess = excess || m.param(1, i, j) != 0;
                alpha[i][j] = alpha[j][i] = m.param(1, i, j);
                for (int other : {0, 1}) {  // of 1, 2 and of 2, 1; 1 is the first component
                    C[other ? i : j][other ? j : i] = m.param(2 + other, i, j);
                    D[other ? i : j][other ? j : i] = m.param(4 + other, i, j);
                }
            }
        }
    }

    /// The equation at one temperature.
    template <class Real>
    class At {
      public:
        At(Cubic const& c, Real T) : n_(c.n), excess_(c.excess) {
            using std::exp;
            using std::log;
            using std::pow;
            using std::sqrt;
            const Real s2 = sqrt(Real(2));
            d1_ = c.pr ? 1 + s2 : Real(1);
            d2_ = c.pr ? 1 - s2 : Real(0);
            u_ = c.pr ? 2 : 1;
            w_ = c.pr ? -1 : 0;
            // a/(b·R·Tc) from ∂p/∂v = ∂²p/∂v² = 0 at y = b/v
            auto cbrt = [](Real t) { return pow(t, Real(1) / 3); };
            const Real y = c.pr ? 1 / (1 + cbrt(4 - 2 * s2) + cbrt(4 + 2 * s2)) : cbrt(2) - 1;
            const Real D = 1 + y * (u_ + w_ * y);
            const Real q = D * D / ((1 - y) * (1 - y) * y * (2 + u_ * y));
            Values<Real> root;
            for (int i = 0; i < n_; ++i) {
                const Real Tr = T / Real(c.Tc[i]), o = Real(c.omega[i]);
                // coefficients as the doubles that they are printed as
                const Real slope =
                    !c.pr ? 0.480 + o * (1.574 - 0.176 * o)
                    : c.omega[i] <= 0.491
                        ? 0.37464 + o * (1.54226 - 0.26992 * o)
                        : 0.379642 + o * (1.48503 + o * (-0.164423 + 0.016666 * o));
                // √α: of both signs, but α beyond its zero rises again
                root[i] = (1 + slope * (1 - sqrt(Tr)));
                root[i] = root[i] < 0 ? -root[i] : root[i];
                // α = Tr^(N(M−1))·exp(L(1 − Tr^(NM)))
                if (auto const& t = c.twu[i]; t.used)
                    root[i] = pow(Tr, Real(t.N) * (Real(t.M) - 1) / 2) *
                              exp(Real(t.L) * (1 - pow(Tr, Real(t.N) * t.M)) / 2);
                root[i] *= sqrt(q * c.b[i] / Tr);
            }
            for (int i = 0; i < n_; ++i)
                for (int j = 0; j < n_; ++j) {
                    a_[i][j] = root[i] * root[j] * (i == j ? Real(1) : 1 - Real(c.k[i][j]));
                    b_[i][j] =
                        (Real(c.b[i]) + c.b[j]) / 2 * (i == j ? Real(1) : 1 - Real(c.l[i][j]));
                }
            Lambda_ = log((1 + d1_) / (1 + d2_)) / (d1_ - d2_);
            for (int i = 0; i < n_; ++i) c_[i] = c.shift[i];
            for (int i = 0; i < n_ && excess_; ++i)
                for (int j = 0; j < n_; ++j) {
                    const Real t = Real(c.C[i][j]) / T + Real(c.D[i][j]);
                    G_[i][j] = b_[i][i];
                    Gt_[i][j] = 0;
                    if (i == j) continue;
                    if (c.alpha[i][j] != 0) {
                        G_[i][j] *= exp(-Real(c.alpha[i][j]) * t);
                        Gt_[i][j] = G_[i][j] * t;
                    } else {  // the energies with which this is the van der Waals rule
                        const Real b = (b_[i][i] + b_[j][j]) / 2;
                        Gt_[i][j] = Lambda_ * b_[i][i] *
                                    (a_[j][j] / b_[j][j] - a_[i][j] / b);
                    }
                }
        }
        int size() const { return n_; }
        Real a(int i, int j) const { return a_[i][j]; }  ///< a_ij/(RT)
        Real b(int i, int j) const { return b_[i][j]; }
        Real d1() const { return d1_; }
        Real d2() const { return d2_; }
        static constexpr Long kStep = 0.4L;  ///< of a first mesh in the logit of composition
        static constexpr Long kFlat = 1e-16L;

        /// h_i = ln(f_i/(x_i·RT)) = ln rho + μ_i^r/(RT). Returns p/(RT).
        Real state(Real rho, Real const* x, Real* h) const {
            using std::log;
            Values<Real> a, b;  // ½·∂A/∂x_i, ∂(n·B)/∂n_i
            const auto [A, B] = mix(x, a, b);
            const Real v = 1 / rho + shift(x), V1 = v + d1_ * B, V2 = v + d2_ * B;
            const Real P = 1 / (v - B) - A / (V1 * V2), Z = P * v;
            const Real free = log(v - B), part = log(V1 / V2) / ((d1_ - d2_) * B);
            for (int i = 0; i < n_; ++i)
                h[i] = b[i] / B * (Z - 1) - free - part * (2 * a[i] - A * b[i] / B) - c_[i] * P;
            return P;
        }
        /// Rising density roots at P = p/(RT), the densest first. `gap`, where there is one root:
        /// how far the cubic in Z is from having three, if it has extrema; else 1.
        int roots(Real P, Real const* x, Real* rho, Real* gap = nullptr) const {
            using std::abs;
            using std::sqrt;
            Values<Real> a, b;
            const auto [A0, B0] = mix(x, a, b);
            const Real A = A0 * P, B = B0 * P;
            const Real c2 = (u_ - 1) * B - 1, c1 = A - u_ * B + (w_ - u_) * B * B;
            const Real c0 = -B * (A + w_ * B * (1 + B));
            auto f = [&](Real Z) { return ((Z + c2) * Z + c1) * Z + c0; };
            auto newton = [&](Real Z) {  // monotonous from outside of all roots
                for (int k = 0; k < 200; ++k) {
                    const Real step = f(Z) / ((3 * Z + 2 * c2) * Z + c1);
                    Z -= step;
                    if (!(abs(step) > 0x1p-62L * Z)) break;
                }
                return Z;
            };
            // Cauchy's bound is above all roots; at Z = B the cubic is negative.
            const Real high = 1 + abs(c2) + abs(c1) + abs(c0);
            const Real disc = c2 * c2 - 3 * c1;
            bool dense = true, dilute = true;
            if (gap) *gap = 1;
            if (disc > 0) {
                const Real low = (-c2 - sqrt(disc)) / 3, up = (-c2 + sqrt(disc)) / 3;
                const Real top = f(low), bottom = f(up);
                dense = low > B && top >= 0;
                dilute = !(bottom > 0) || !dense;
                if (gap && dense != dilute) *gap = dense ? bottom : low > B ? -top : Real(1);
            } else {
                dense = f(-c2 / 3) > 0;
                dilute = !dense;
            }
            int found = 0;
            const Real shifted = P * shift(x);
            if (dense) rho[found++] = P / (newton(B) - shifted);
            if (dilute) rho[found++] = P / (newton(high) - shifted);
            return found;
        }

        Real c(int i) const { return c_[i]; }  ///< translation
        bool quadratic() const { return !excess_; }

      private:
        Real shift(Real const* x) const {
            Real sum = 0;
            for (int i = 0; i < n_; ++i) sum += x[i] * c_[i];
            return sum;
        }
        std::pair<Real, Real> mix(Real const* x, Values<Real>& a, Values<Real>& b) const {
            Real A = 0, B = 0;
            for (int i = 0; i < n_; ++i) {
                a[i] = b[i] = 0;
                for (int j = 0; j < n_; ++j) {
                    a[i] += x[j] * a_[i][j];
                    b[i] += x[j] * b_[i][j];
                }
                A += x[i] * a[i];
                B += x[i] * b[i];
            }
            for (int i = 0; i < n_; ++i) b[i] = 2 * b[i] - B;
            if (excess_) A = B * huron_vidal(x, B, a, b);
            return {A, B};
        }
        /// q = A/B = Σ x_i·a_ii/b_ii − gE/Λ; ½·∂(n²·A)/∂n_i/n into a.
        Real huron_vidal(Real const* x, Real B, Values<Real>& a, Values<Real> const& b) const {
            Values<Real> above{}, below{};
            Real q = 0;
            for (int i = 0; i < n_; ++i) {
                for (int j = 0; j < n_; ++j) {
                    above[i] += x[j] * Gt_[j][i];
                    below[i] += x[j] * G_[j][i];
                }
                q += x[i] * (a_[i][i] / b_[i][i] - above[i] / below[i] / Lambda_);
            }
            for (int i = 0; i < n_; ++i) {
                Real g = above[i] / below[i];  // ∂(n·gE)/∂n_i
                for (int j = 0; j < n_; ++j)
                    g += x[j] * (Gt_[i][j] - above[j] / below[j] * G_[i][j]) / below[j];
                a[i] = (b[i] * q + B * (a_[i][i] / b_[i][i] - g / Lambda_)) / 2;
            }
            return q;
        }
        int n_;
        bool excess_;
        Values<Real> c_{};
        Real d1_, d2_, u_, w_, Lambda_, a_[kMax][kMax], b_[kMax][kMax];
        Real G_[kMax][kMax], Gt_[kMax][kMax];  ///< b_i·G_ij, b_i·G_ij·τ_ij
    };
};

}  // namespace judge
