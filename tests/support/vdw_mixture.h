// Van der Waals mixtures for tests: one-fluid rules a = ΣΣ x_i·x_j·a_ij, b = ΣΣ x_i·x_j·b_ij with
// a_ij = sqrt(a_i·a_j)·(1 − k), b_ij = (b_i + b_j)/2·(1 − l). Every derivative has a closed form.
#pragma once

#include "support/vdw_model.h"

#include <corvane/mixture/modeln.h>

#include <memory>
#include <vector>

/// Supplies Ar and vcalc alone; the library differentiates.
class VdwMixture : public ModelN {
  public:
    struct Component {
        double Tc, b;  // K, cm³/mol
    };
    VdwMixture(std::vector<Component> const& components, double k, double l = 0.0) : k_(k), l_(l) {
        eos = "vdw";
        mdl1.size(static_cast<int>(components.size()));
        for (int i = 0; i < mdl1.size(); ++i) {
            owned_.push_back(
                std::make_unique<VdwModel>("component", components[i].Tc, components[i].b));
            mdl1[i] = owned_.back().get();
        }
    }
    double* ppar(int k, int, int) override { return k ? &l_ : &k_; }
    void par_alloc() override {}
    void par_in(FILE*, int, int) override {}
    void par_out(FILE*, int, int) const override {}
    Vector<double> mixpar(Vector<double> const& x) const override { return x; }

    double a(int i, int j) const {  // MPa·cm⁶/mol²
        const auto pure = [&](int c) { return 27.0 / 8.0 * R * mdl1[c]->Ts() * mdl1[c]->vs(); };
        return std::sqrt(pure(i) * pure(j)) * (i == j ? 1 : 1 - k_);
    }
    double b(int i, int j) const {
        return 0.5 * (mdl1[i]->vs() + mdl1[j]->vs()) * (i == j ? 1 : 1 - l_);
    }
    double Ar(double rho, double T, Vector<double> const& x) const override {
        ++calls;
        const Mean m(*this, x);
        return -std::log1p(-rho * m.b) - m.a * rho / (R * T);
    }
    using ModelN::Ar;
    /// The one-fluid mixture has the roots of a pure fluid with its a and b.
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        const Mean m(*this, x);
        return VdwModel("mixture", 8 * m.a / (27 * R * m.b), m.b).vcalc(p, T, mode, rho_a, rho_b);
    }

    mutable long calls = 0;  ///< evaluations of Ar, or of a closed form below

  protected:
    /// Σ_ij n_i·n_j·q_ij over Σ n, and Σ_j n_j·q_ij.
    struct Mean {
        double a = 0.0, b = 0.0, n;
        Vector<double> ai, bi;
        Mean(VdwMixture const& m, Vector<double> const& x) : n(x.sum()), ai(x.n), bi(x.n) {
            for (int i = 0; i < x.n; ++i)
                for (int j = 0; j < x.n; ++j) {
                    ai[i] += x[j] * m.a(i, j);
                    bi[i] += x[j] * m.b(i, j);
                }
            a = x * ai / n;
            b = x * bi / n;
        }
    };

  private:
    double k_, l_;
    std::vector<std::unique_ptr<VdwModel>> owned_;
};

/// The same with closed forms in the slots Z, myr and PsiH.
class ExactVdwMixture : public VdwMixture {
  public:
    using ModelN::myr;
    using ModelN::PsiH;
    using ModelN::Z;
    using VdwMixture::VdwMixture;
    double Z(double rho, double T, Vector<double> const& x) const override {
        ++calls;
        const Mean m(*this, x);
        return 1 / (1 - rho * m.b) - m.a * rho / (R * T);
    }
    double myr(Vector<double> const& n, double T, int i) const override {
        ++calls;
        const Mean m(*this, n);
        return -std::log1p(-m.b) + m.n * slope(m, i) / (1 - m.b) - 2 * m.ai[i] / (R * T);
    }
    Matrix<double> PsiH(Vector<double> const& n, double T) const override {
        ++calls;
        const Mean m(*this, n);
        Matrix<double> H(n.n, n.n);
        const double g = 1 / (1 - m.b);
        for (int i = 0; i < n.n; ++i)
            for (int j = 0; j < n.n; ++j) {
                const double bi = slope(m, i), bj = slope(m, j);
                H[i][j] = g * (bi + bj + m.n * (g * bi * bj) + 2 * b(i, j) - bi - bj) -
                          2 * a(i, j) / (R * T);
                if (i == j) H[i][j] = n[i] > 0 ? H[i][j] + 1 / n[i] : 1e99;
            }
        return H;
    }

  private:
    /// ∂(rho·b)/∂rho_i, where m.b is rho·b.
    double slope(Mean const& m, int i) const { return (2 * m.bi[i] - m.b) / m.n; }
};
