// A cubic equation of state with van der Waals one-fluid mixing as a mixture model.
//
// a = Σ x_i·x_j·√(a_i·a_j)·(1 − k_ij),  b = Σ x_i·x_j·(b_i + b_j)/2·(1 − l_ij),  c = Σ x_i·c_i.
//
// Composition derivatives follow Michelsen & Mollerup, Thermodynamic Models (2007), ch. 3: with V =
// 1 and the amounts n_i = rho_i the reduced residual Helmholtz energy is a function of n = Σ n_i
// and of
//
//     V' = 1 + Σ c_i·n_i,   B = n·b,   D = n²·a/(R·T),
//     F  = −n·ln(V' − B) − D·f(V', B),   f = ln[(V' + d1·B)/(V' + d2·B)]/[B·(d1 − d2)].
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/plugin/plugin.h>
#include <plugins/common/cubic_fluid.h>
#include <plugins/common/pair_table.h>
#include <plugins/common/small_array.h>

#include <cmath>

namespace corvane {

template <class Form>
class CubicMixture final : public ModelN, public DerivN {
  public:
    CubicMixture() {
        eos = Form::name;
        mth = "vdW1";
        hess_myr_ = 1;  // myr is exact
    }

    // ---- binary parameters: 0 = k_ij, 1 = l_ij
    // ------------------------------------------------------

    double* ppar(int k, int i, int j) override { return pairs_.at(i, j) + k; }
    void par_alloc() override { pairs_.resize(mdl1.size()); }
    void par_in(FILE* f, int i, int j) override {
        SectionReader section(f);
        pair_is_swapped(section, mdl1[i]->name(), mdl1[j]->name());  // both are symmetric
        const double k_ij = section.number("kij"), l_ij = section.number("lij", 0.0);
        double* pair = pairs_.at(i, j);
        pair[0] = k_ij;
        pair[1] = l_ij;
    }
    void par_out(FILE* f, int i, int j) const override {
        SectionWriter section(f);
        section.word("of", mdl1[i]->name());
        section.number("kij", pairs_.at(i, j)[0]);
        section.number("lij", pairs_.at(i, j)[1]);
    }
    /// a [MPa·(cm³/mol)²] at 298.15 K, b and c [cm³/mol] of the mixture.
    Vector<double> mixpar(Vector<double> const& x) const override {
        const CubicFluid<Form> m = fluid(298.15, x, 0);
        Vector<double> p(3);
        p[0] = m.a.q * m.b * R * 298.15;
        p[1] = m.b;
        p[2] = m.c;
        return p;
    }

    // ---- the mixture as one fluid
    // -------------------------------------------------------------------

    using ModelN::Ar;
    using ModelN::betaV;
    using ModelN::myr;
    using ModelN::PsiH;
    using ModelN::Z;

    double Ar(double rho, double T, Vector<double> const& x) const override {
        return fluid(T, x, 0).ar(rho);
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        return fluid(T, x, 0).Z(rho);
    }
    double betaV(double rho, double T, Vector<double> const& x) const override {
        double d[4];
        fluid(T, x, 1).deriv(rho, 1, 1, d);
        return 1.0 + d[2] + d[3];
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        if (!(T > 0.0)) return 0;
        return fluid(T, x, 0).density(p, T, mode, rho_a, rho_b);
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        return fluid(T, x, nT).deriv(rho, nrho, nT, d);
    }

    // ---- composition derivatives
    // --------------------------------------------------------------------

    double myr(Vector<double> const& rho_i, double T, int i) const override {
        const State s(*this, rho_i, T, 0);
        return s.n == 0.0 ? 0.0 : s.mu(i, s.B_i(i), s.D_i(i));
    }
    Matrix<double> PsiH(Vector<double> const& rho_i, double T) const override {
        const int n = rho_i.size();
        Matrix<double> H(n, n);
        SmallArray<double> mu(n);
        SmallArray<double, 64> residual(n * n);
        potentials(rho_i, T, &mu[0], nullptr, &residual[0]);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j) H[i][j] = residual[i * n + j];
            H[i][i] =
                rho_i[i] > 0.0 ? H[i][i] + 1.0 / rho_i[i] : 1e99;  // absent: as the library's form
        }
        return H;
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override {
        const int N = rho_i.size();
        const State s(*this, rho_i, T, mu_T ? 1 : 0);
        if (s.n == 0.0) {
            for (int i = 0; i < N; ++i) {
                mu[i] = 0.0;
                if (mu_T) mu_T[i] = 0.0;
            }
        }
        SmallArray<double> B(N), D(N);
        for (int i = 0; i < N; ++i) {
            B[i] = s.B_i(i);
            D[i] = s.D_i(i);
            if (s.n == 0.0) continue;
            mu[i] = s.mu(i, B[i], D[i]);
            if (mu_T) mu_T[i] = -s.D_T * (s.f_V * s.part[i].c + s.f_B * B[i]) - s.f * s.DT_i(i);
        }
        if (!mu_rho) return;
        for (int i = 0; i < N; ++i)
            for (int j = 0; j <= i; ++j)
                mu_rho[i * N + j] = mu_rho[j * N + i] = s.mu_ij(i, j, B[i], B[j], D[i], D[j]);
    }

  private:
    struct Part {                          // of a component
        double b, c, root, Troot, TTroot;  // root = √(a/(R·T)) with T and T² times its derivatives
    };

    /// Component i at T; `order` derivatives in T.
    Part part(int i, double T, int order) const {
        Model1 const& m = *mdl1[i];
        double copy[cubic_parameters];
        double const* par = m.ppar(0);
        if (m.ppar(cubic_parameters - 1) != par + (cubic_parameters - 1)) {  // not in one block
            for (int k = 0; k < cubic_parameters; ++k) copy[k] = *m.ppar(k);
            par = copy;
        }
        const Attraction a = attraction<Form>(par, T);
        const double b = par[cubic_vs], root = std::sqrt(a.q * b);
        Part p{b, par[cubic_c], root, 0.0, 0.0};
        if (order > 0 && root > 0.0) {
            p.Troot = 0.5 * a.Tq * b / root;
            p.TTroot = 0.5 * a.TTq * b / root - p.Troot * p.Troot / root;
        }
        return p;
    }

    /// The one fluid at composition x.
    CubicFluid<Form> fluid(double T, Vector<double> const& x, int order) const {
        const int N = x.size();
        SmallArray<Part> p(N);
        for (int i = 0; i < N; ++i) p[i] = part(i, T, order);
        double a = 0.0, Ta = 0.0, TTa = 0.0, b = 0.0, c = 0.0;
        for (int i = 0; i < N; ++i) {
            const double xi = x[i];
            a += xi * xi * p[i].root * p[i].root;
            Ta += 2.0 * xi * xi * p[i].root * p[i].Troot;
            TTa += 2.0 * xi * xi * (p[i].Troot * p[i].Troot + p[i].root * p[i].TTroot);
            b += xi * xi * p[i].b;
            c += xi * p[i].c;
            for (int j = 0; j < i; ++j) {
                double const* pair = pairs_.at(i, j);
                const double xx = xi * x[j], ax = 2.0 * xx * (1.0 - pair[0]);
                a += ax * p[i].root * p[j].root;
                b += xx * (p[i].b + p[j].b) * (1.0 - pair[1]);
                if (order == 0) continue;
                Ta += ax * (p[i].Troot * p[j].root + p[i].root * p[j].Troot);
                TTa += ax * (p[i].TTroot * p[j].root + 2.0 * p[i].Troot * p[j].Troot +
                             p[i].root * p[j].TTroot);
            }
        }
        // x may miss the sum of 1 by rounding; then b·rho is still n·b of the amounts rho·x.
        return {b, c, {a / b, Ta / b, TTa / b}};
    }

    /// F and its derivatives in n, V', B and D at V = 1.
    struct State {
        State(CubicMixture const& model, Vector<double> const& rho_i, double T, int order)
            : m(model), n_i(rho_i), N(rho_i.size()), n(rho_i.sum()), part(N) {
            for (int i = 0; i < N; ++i) part[i] = m.part(i, T, order);
            double C = 0.0;
            for (int i = 0; i < N; ++i) {
                C += n_i[i] * part[i].c;
                B += 0.5 * n_i[i] * B_sum(i);
                D += 0.5 * n_i[i] * D_i(i);
                if (order > 0) D_T += 0.5 * n_i[i] * DT_i(i);
            }
            if (n != 0.0) B /= n;
            V = 1.0 + C;
            Q = V * V + B * (Form::u * V + Form::w * B);
            f = B == 0.0 ? 1.0 / V : attraction_integral<Form>(B / V) / B;
            f_V = -1.0 / Q;
            // f is homogeneous of degree −1, its first derivatives of degree −2. The differences
            // lose no more than what rounding f itself does to the sums they enter.
            f_B = B == 0.0 ? -0.5 * Form::u / (V * V) : -(f + V * f_V) / B;
            log_free = std::log1p(C - B);
            free = 1.0 / (V - B);
        }
        /// 2·Σ_j n_j·b_ij, 2·Σ_j n_j·a_ij/(R·T) = ∂D/∂n_i and T times the latter's slope in T.
        double B_sum(int i) const {
            double s = 2.0 * n_i[i] * part[i].b;
            for (int j = 0; j < N; ++j)
                if (j != i) s += n_i[j] * (part[i].b + part[j].b) * (1.0 - m.pairs_.at(i, j)[1]);
            return s;
        }
        double D_i(int i) const {
            double s = n_i[i] * part[i].root;
            for (int j = 0; j < N; ++j)
                if (j != i) s += n_i[j] * part[j].root * (1.0 - m.pairs_.at(i, j)[0]);
            return 2.0 * part[i].root * s;
        }
        double DT_i(int i) const {
            double s = 2.0 * n_i[i] * part[i].root * part[i].Troot;
            for (int j = 0; j < N; ++j)
                if (j != i)
                    s += n_i[j] * (1.0 - m.pairs_.at(i, j)[0]) *
                         (part[i].root * part[j].Troot + part[i].Troot * part[j].root);
            return 2.0 * s;
        }
        double B_i(int i) const { return n == 0.0 ? part[i].b : (B_sum(i) - B) / n; }

        double mu(int i, double Bi, double Di) const {
            const double F_V = -n * free - D * f_V, F_B = n * free - D * f_B;
            return -log_free + F_V * part[i].c + F_B * Bi - f * Di;
        }
        double mu_ij(int i, int j, double Bi, double Bj, double Di, double Dj) const {
            const double f_VV = (2.0 * V + Form::u * B) / (Q * Q);
            const double f_VB = (Form::u * V + 2.0 * Form::w * B) / (Q * Q);
            const double f_BB = B == 0.0 ? 0.0 : -(2.0 * f_B + V * f_VB) / B;
            const double nff = n * free * free, ci = part[i].c, cj = part[j].c;
            double const* pair = i == j ? nullptr : m.pairs_.at(i, j);
            const double b_ij = pair ? 0.5 * (part[i].b + part[j].b) * (1.0 - pair[1]) : part[i].b;
            const double a_ij = part[i].root * part[j].root * (pair ? 1.0 - pair[0] : 1.0);
            const double B_ij = n == 0.0 ? 0.0 : (2.0 * b_ij - Bi - Bj) / n;
            return free * (Bi + Bj - ci - cj) + (nff - D * f_VV) * ci * cj -
                   (nff + D * f_VB) * (ci * Bj + cj * Bi) + (nff - D * f_BB) * Bi * Bj -
                   f_V * (ci * Dj + cj * Di) - f_B * (Bi * Dj + Bj * Di) +
                   (n * free - D * f_B) * B_ij - 2.0 * f * a_ij;
        }

        CubicMixture const& m;
        Vector<double> const& n_i;
        int N;
        double n;
        SmallArray<Part> part;
        double B = 0.0, D = 0.0, D_T = 0.0, V = 1.0, Q = 1.0;
        double f = 0.0, f_V = 0.0, f_B = 0.0, log_free = 0.0, free = 1.0;
    };

    PairTable pairs_{2};
};

}  // namespace corvane
