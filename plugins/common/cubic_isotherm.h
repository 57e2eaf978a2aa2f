// A cubic equation of state with van der Waals one-fluid mixing at one temperature, as a function
// of the amounts of all components.
//
//     a = Σ x_i·x_j·a_ij,  b = Σ x_i·x_j·b_ij,  c = Σ x_i·c_i.
//
// Composition derivatives follow Michelsen & Mollerup, Thermodynamic Models (2007), ch. 3: with V =
// 1 and the amounts n_i = rho_i the reduced residual Helmholtz energy is a function of n = Σ n_i
// and of
//
//     V' = 1 + Σ c_i·n_i,   B = n·b,   D = n²·a/(R·T),
//     F  = −n·ln(V' − B) − D·f(V', B),   f = ln[(V' + d1·B)/(V' + d2·B)]/[B·(d1 − d2)].
#pragma once

#include <plugins/common/cubic_fluid.h>
#include <corvane/plugin/small_array.h>

#include <cmath>

namespace corvane {

/// View of the parameters at T, which the caller stores: c_i, then the symmetric n×n matrices b_ij,
/// a_ij/(R·T) [cm³/mol] and T times the slopes of the latter in T.
template <class Form>
class CubicIsotherm {
  public:
    static constexpr int size(int n) { return n + 3 * n * n; }
    CubicIsotherm(double const* values, int n)
        : n_(n), c_(values), b_(c_ + n), a_(b_ + n * n), Ta_(a_ + n * n) {}

    /// The one fluid at composition x, without derivatives in T.
    CubicFluid<Form> fluid(double const* x) const {
        double c = 0.0, b = 0.0, a = 0.0;
        for (int i = 0; i < n_; ++i) {
            double bi = 0.5 * x[i] * b_[i * n_ + i], ai = 0.5 * x[i] * a_[i * n_ + i];
            for (int j = 0; j < i; ++j) {
                bi += x[j] * b_[i * n_ + j];
                ai += x[j] * a_[i * n_ + j];
            }
            c += x[i] * c_[i];
            b += 2.0 * x[i] * bi;
            a += 2.0 * x[i] * ai;
        }
        return {b, c, {a / b, 0.0, 0.0}};
    }

    /// F and its derivatives in n, V', B and D at V = 1.
    class State {
      public:
        State(CubicIsotherm const& isotherm, double const* n_i)
            : iso(isotherm), n_i_(n_i), B_i(iso.n_), D_i(iso.n_) {
            const int N = iso.n_;
            double C = 0.0, nB = 0.0;
            for (int i = 0; i < N; ++i) n += n_i[i];
            for (int i = 0; i < N; ++i) {
                double b = 0.0, d = 0.0;
                for (int j = 0; j < N; ++j) {
                    b += n_i[j] * iso.b_[i * N + j];
                    d += n_i[j] * iso.a_[i * N + j];
                }
                C += n_i[i] * iso.c_[i];
                nB += n_i[i] * b;
                D += n_i[i] * d;
                B_i[i] = 2.0 * b;
                D_i[i] = 2.0 * d;
            }
            const double one_by_n = n == 0.0 ? 0.0 : 1.0 / n;
            B = nB * one_by_n;
            for (int i = 0; i < N; ++i)
                B_i[i] = n == 0.0 ? iso.b_[i * N + i] : (B_i[i] - B) * one_by_n;
            V = 1.0 + C;
            one_by_Q = 1.0 / (V * V + B * (Form::u * V + Form::w * B));
            f = B == 0.0 ? 1.0 / V : attraction_integral<Form>(B / V) / B;
            // f is homogeneous of degree −1, its first derivatives of degree −2. The differences
            // lose no more than what rounding f itself does to the sums they enter.
            f_B = B == 0.0 ? -0.5 * Form::u / (V * V) : -(f - V * one_by_Q) / B;
            log_free = std::log1p(C - B);
            free = 1.0 / (V - B);
        }
        double mu(int i) const {
            return -log_free + (D * one_by_Q - n * free) * iso.c_[i] +
                   (n * free - D * f_B) * B_i[i] - f * D_i[i];
        }
        /// T times the slopes of all mu in T, and of P.
        void slopes(double* mu_T, double* P_T) const {
            const int N = iso.n_;
            SmallArray<double> DT_i(N);
            double DT = 0.0;
            for (int i = 0; i < N; ++i) {
                double d = 0.0;
                for (int j = 0; j < N; ++j) d += n_i_[j] * iso.Ta_[i * N + j];
                DT += n_i_[i] * d;
                DT_i[i] = 2.0 * d;
            }
            for (int i = 0; i < N; ++i)
                mu_T[i] = DT * (one_by_Q * iso.c_[i] - f_B * B_i[i]) - f * DT_i[i];
            if (P_T) *P_T = -DT * one_by_Q;
        }
        /// p/(R·T).
        double P() const { return n * free - D * one_by_Q; }
        /// ∂mu_i/∂n_j, row by row.
        void slopes(double* mu_rho) const {
            const int N = iso.n_;
            const double f_V = -one_by_Q;
            const double f_VV = (2.0 * V + Form::u * B) * one_by_Q * one_by_Q;
            const double f_VB = (Form::u * V + 2.0 * Form::w * B) * one_by_Q * one_by_Q;
            const double f_BB = B == 0.0 ? 0.0 : -(2.0 * f_B + V * f_VB) / B;
            const double nff = n * free * free;
            const double cc = nff - D * f_VV, cB = nff + D * f_VB, BB = nff - D * f_BB;
            const double second = n == 0.0 ? 0.0 : (n * free - D * f_B) / n;
            for (int i = 0; i < N; ++i) {  // linear in c_j, B_j and D_j, beside b_ij and a_ij
                const double c = iso.c_[i], b = B_i[i], d = D_i[i];
                const double of_c = cc * c - free - cB * b - f_V * d;
                const double of_B = free - second - cB * c + BB * b - f_B * d;
                const double of_D = -f_V * c - f_B * b, rest = free * (b - c) - second * b;
                for (int j = 0; j <= i; ++j)
                    mu_rho[i * N + j] = mu_rho[j * N + i] =
                        rest + of_c * iso.c_[j] + of_B * B_i[j] + of_D * D_i[j] +
                        2.0 * (second * iso.b_[i * N + j] - f * iso.a_[i * N + j]);
            }
        }

      private:
        CubicIsotherm const& iso;
        double const* n_i_;
        SmallArray<double> B_i, D_i;  // ∂B/∂n_i, ∂D/∂n_i
        double n = 0.0, B = 0.0, D = 0.0, V = 1.0, one_by_Q = 1.0;
        double f = 0.0, f_B = 0.0, log_free = 0.0, free = 1.0;
    };

  private:
    int n_;
    double const *c_, *b_, *a_, *Ta_;
};

}  // namespace corvane
