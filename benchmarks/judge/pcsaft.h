// PC-SAFT mixtures as printed by Gross & Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244 (appendix A)
// and 41 (2002) 5510, in any number type. Parameters and the 42 constants of the dispersion term
// come from the plug-in.
#pragma once

#include "energy.h"

#include <corvane/corvane.h>
#include <plugins/common/pcsaft/dispersion.h>

#include <stdexcept>
#include <string>

namespace judge {

/// Without polar terms. Lengths in units in which π/6·NA is 1.
struct PcSaft {
    static constexpr Precision kPrecision{};
    int n = 0;
    Values<double> M{}, Ts{}, vs{}, m{}, kappa{}, epsilon{}, donors{}, acceptors{};
    double k[kMax][kMax] = {}, l[kMax][kMax] = {};

    explicit PcSaft(ModelN const& model) : n(model.mdl1.size()) {
        if (n > kMax || std::string(model.eos) != "PCSAFT") throw std::runtime_error("not PC-SAFT");
        for (int i = 0; i < n; ++i) {
            Model1 const& c = *model.mdl1[i];
            M[i] = c.M(), Ts[i] = c.param(1), vs[i] = c.param(2), m[i] = c.param(3);
            kappa[i] = c.param(4), epsilon[i] = c.param(5);
            donors[i] = c.param(6), acceptors[i] = c.param(7);
            if (c.param(8) != 0 || c.param(9) != 0) throw ThException(th_no_option);  // polar terms
            for (int j = 0; j < i; ++j) {
                k[i][j] = k[j][i] = model.param(0, i, j);
                l[i][j] = l[j][i] = model.param(1, i, j);
            }
        }
    }

    template <class Real>
    class Psi {
      public:
        Psi(PcSaft const& c, Real T) : c_(&c) {
            using std::exp;
            using std::pow;
            using std::sqrt;
            for (int i = 0; i < c.n; ++i) {
                sigma_[i] = pow(Real(c.vs[i]), Real(1) / 3);
                d_[i] = sigma_[i] * (1 - Real(12) / 100 * exp(-3 * c.Ts[i] / T));
                associates_ = associates_ || (c.kappa[i] > 0 && c.donors[i] + c.acceptors[i] > 0);
            }
            const Real pi = atan1() * 4;
            for (int i = 0; i < c.n; ++i)
                for (int j = 0; j < c.n; ++j) {  // A.14, A.15
                    const Real off = i == j ? 0 : 1;
                    const Real s = (sigma_[i] + sigma_[j]) / 2 * (1 - off * c.l[i][j]);
                    const Real e = sqrt(Real(c.Ts[i]) * c.Ts[j]) * (1 - off * c.k[i][j]) / T;
                    first_[i][j] = Real(c.m[i]) * c.m[j] * e * s * s * s;
                    second_[i][j] = first_[i][j] * e;
                    const Real volume = sqrt(Real(c.kappa[i]) * c.vs[i] * c.kappa[j] * c.vs[j]);
                    bond_[i][j] = 6 / pi * volume *
                                  (exp((Real(c.epsilon[i]) + c.epsilon[j]) / 2 / T) - 1);
                }
        }
        int size() const { return c_->n; }
        double limit(Real const* x) const {  // η of the closest packing of equal spheres
            Real eta = 0;
            for (int i = 0; i < c_->n; ++i) eta += x[i] * c_->m[i] * d_[i] * d_[i] * d_[i];
            return 0.74 / static_cast<double>(eta);
        }
        void select(Real const*, std::vector<double>&, std::vector<int> const&) const {}
        auto pressure(Real const* x) const {
            Values<Real> w{};
            for (int i = 0; i < c_->n; ++i) w[i] = x[i];
            return [this, w](Real rho) {
                std::array<Dual<Real, 1>, kMax> r;
                for (int i = 0; i < c_->n; ++i) r[i] = Dual<Real, 1>(w[i] * rho), r[i].d[0] = w[i];
                const Dual<Real, 1> e = energy(r.data());
                return rho + rho * e.d[0] - e.v;
            };
        }

        template <class S>
        S energy(S const* rho) const {
            const int n = c_->n;
            S total(0), z[4] = {S(0), S(0), S(0), S(0)};
            for (int i = 0; i < n; ++i) {
                total += rho[i];
                S term = rho[i] * Real(c_->m[i]);
                for (int k = 0; k < 4; ++k) {
                    z[k] += term;
                    term = term * d_[i];
                }
            }
            const S m = z[0] / total, eta = z[3], free = Real(1) - eta, over = Real(1) / free;
            const S g1 = Real(3) * z[2] * over * over,
                    g2 = Real(2) * z[2] * z[2] * over * over * over;
            auto g = [&](int i, int j) {  // A.7
                const Real e = d_[i] * d_[j] / (d_[i] + d_[j]);
                return over + g1 * e + g2 * (e * e);
            };
            const S cube = z[2] * z[2] * z[2];
            S sum = Real(3) * z[1] * z[2] * over + cube * over * over / eta +
                    (cube / (eta * eta) - z[0]) * log1minus(eta);  // A.6, times ζ0
            for (int i = 0; i < n; ++i)
                if (c_->m[i] != 1) sum += -(rho[i] * Real(c_->m[i] - 1) * log(g(i, i)));
            S e1(0), e2(0);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) {
                    const S rr = rho[i] * rho[j];
                    e1 += rr * first_[i][j];
                    e2 += rr * second_[i][j];
                }
            const S m1 = Real(1) - Real(1) / m, m2 = m1 * (Real(1) - Real(2) / m);
            S i1(0), i2(0), power(1);
            for (int k = 0; k < 7; ++k) {  // A.16 to A.19
                auto const &a = corvane::pcsaft::kDispersionA, &b = corvane::pcsaft::kDispersionB;
                i1 += power * (Real(a[0][k]) + m1 * Real(a[1][k]) + m2 * Real(a[2][k]));
                i2 += power * (Real(b[0][k]) + m1 * Real(b[1][k]) + m2 * Real(b[2][k]));
                power = power * eta;
            }
            const S sq = eta * eta, f2 = free * free;
            const S chain = (Real(20) * eta - Real(27) * sq + Real(12) * sq * eta -
                             Real(2) * sq * sq) /
                            (f2 * (Real(2) - eta) * (Real(2) - eta));
            const S c1 = Real(1) / (Real(1) + m * (Real(8) * eta - Real(2) * sq) / (f2 * f2) +
                                    (Real(1) - m) * chain);  // A.11
            sum += -(Real(12) * i1 * e1 + Real(6) * m * c1 * i2 * e2);
            if (!associates_) return sum;

            // Σ rho·(ln X − X + 1) − Σ rho_i·rho_j·X_i·X_j·Δ_ij is stationary in the fractions X of
            // free sites (Michelsen & Hendriks, Fluid Phase Equilib. 180 (2001) 165): they may be
            // constants in its derivatives.
            Real delta[kMax][kMax] = {}, r[kMax] = {}, D[kMax] = {}, A[kMax] = {};
            S gij[kMax][kMax];
            for (int i = 0; i < n; ++i) {
                r[i] = rho[i].v;
                for (int j = 0; j < n; ++j) {
                    gij[i][j] = g(i, j);
                    delta[i][j] = gij[i][j].v * bond_[i][j];
                }
            }
            free_sites(r, delta, D, A);
            using std::log;
            for (int i = 0; i < n; ++i) {
                const Real sites = c_->donors[i] * (log(D[i]) - D[i] + 1) +
                                   c_->acceptors[i] * (log(A[i]) - A[i] + 1);
                sum += rho[i] * sites;
                for (int j = 0; j < n; ++j)
                    sum += -(rho[i] * rho[j] * gij[i][j] *
                             (bond_[i][j] * (c_->donors[i] * c_->acceptors[j]) * D[i] * A[j]));
            }
            return sum;
        }

      private:
        static Real atan1() {
            using std::atan;
            return atan(Real(1));
        }
        /// Newton's method on the acceptors, whose donors follow; from above it falls to the root.
        void free_sites(Real const* r, Real const (&delta)[kMax][kMax], Real* D, Real* A) const {
            using std::abs;
            const int n = c_->n;
            for (int j = 0; j < n; ++j) A[j] = 1;
            for (int step = 0; step < 80; ++step) {
                for (int i = 0; i < n; ++i) {
                    Real s = 1;
                    for (int j = 0; j < n; ++j) s += r[j] * c_->acceptors[j] * A[j] * delta[i][j];
                    D[i] = 1 / s;
                }
                Real J[kMax][kMax], F[kMax], change = 0;
                for (int j = 0; j < n; ++j) {
                    Real s = 1;
                    for (int i = 0; i < n; ++i) s += r[i] * c_->donors[i] * D[i] * delta[i][j];
                    F[j] = 1 - A[j] * s;
                    for (int k = 0; k < n; ++k) {
                        J[j][k] = j == k ? s : Real(0);
                        for (int i = 0; i < n; ++i)
                            J[j][k] -= A[j] * r[i] * c_->donors[i] * D[i] * D[i] * delta[i][j] *
                                       r[k] * c_->acceptors[k] * delta[i][k];
                    }
                }
                if (!eliminate(J, F, n)) return;
                for (int j = 0; j < n; ++j) {
                    const Real next = A[j] + F[j] > 0 ? Real(A[j] + F[j]) : Real(A[j] / 10);
                    change = std::max(change, Real(abs(next / A[j] - 1)));
                    A[j] = next < 1 ? next : Real(1);
                }
                // of second order: the error is the square of the last change
                if (change < (std::is_same_v<Real, Quad> ? 1e-17 : 1e-10)) break;
            }
            for (int i = 0; i < n; ++i) {
                Real s = 1;
                for (int j = 0; j < n; ++j) s += r[j] * c_->acceptors[j] * A[j] * delta[i][j];
                D[i] = 1 / s;
            }
        }

        PcSaft const* c_;
        Real sigma_[kMax], d_[kMax], first_[kMax][kMax], second_[kMax][kMax], bond_[kMax][kMax];
        bool associates_ = false;
    };
    /// Vapour and liquid are the first two rising branches; further ones have η > 0.6.
    template <class Real>
    using At = EnergyAt<Psi, PcSaft, Real, 2>;
};

}  // namespace judge
