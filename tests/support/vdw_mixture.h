// Van der Waals mixtures for tests: one-fluid rules a = ΣΣ x_i·x_j·a_ij, b = Σ x_i·b_i with
// a_ij = sqrt(a_i·a_j)·(1 − k). Ar, vcalc and PsiH in closed form; the
// library differentiates for the rest.
#pragma once

#include "support/vdw_model.h"

#include <corvane/mixture/modeln.h>

#include <memory>
#include <vector>

class VdwMixture : public ModelN {
  public:
    struct Component {
        double Tc, b;  // K, cm³/mol
    };
    VdwMixture(std::vector<Component> const& components, double k) : k_(k) {
        eos = "vdw";
        for (auto const& c : components)
            owned_.push_back(std::make_unique<VdwModel>("component", c.Tc, c.b));
        mdl1.size(static_cast<int>(owned_.size()));
        for (int i = 0; i < mdl1.size(); ++i) mdl1[i] = owned_[i].get();
    }
    double a(int i, int j) const {  // MPa·cm⁶/mol²
        const double root =
            std::sqrt(mdl1[i]->Ts() * mdl1[i]->vs() * mdl1[j]->Ts() * mdl1[j]->vs());
        return 27.0 / 8.0 * R * root * (i == j ? 1 : 1 - k_);
    }

    double* ppar(int, int, int) override { return &k_; }
    void par_alloc() override {}
    void par_in(FILE*, int, int) override {}
    void par_out(FILE*, int, int) const override {}
    Vector<double> mixpar(Vector<double> const& x) const override { return x; }
    double Ar(double rho, double T, Vector<double> const& x) const override {
        const Sums s(*this, x);
        return -std::log1p(-rho * s.b) - s.a * rho / (R * T);
    }
    /// The one-fluid mixture has the roots of a pure fluid with its a and b.
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        const Sums s(*this, x);
        return VdwModel("", 8 * s.a / (27 * R * s.b), s.b).vcalc(p, T, mode, rho_a, rho_b);
    }
    Matrix<double> PsiH(Vector<double> const& n, double T) const override {
        Matrix<double> H(n.n, n.n);
        const double g = 1 / (1 - Sums(*this, n).b);
        for (int i = 0; i < n.n; ++i)
            for (int j = 0; j < n.n; ++j) {
                const double bi = mdl1[i]->vs(), bj = mdl1[j]->vs();
                H[i][j] = g * (bi + bj + n.sum() * g * bi * bj) - 2 * a(i, j) / (R * T);
                if (i == j) H[i][j] = n[i] > 0 ? H[i][j] + 1 / n[i] : 1e99;
            }
        return H;
    }
    using ModelN::Ar;
    using ModelN::PsiH;

  private:
    struct Sums {
        double a = 0.0, b = 0.0;
        Sums(VdwMixture const& m, Vector<double> const& x) {
            for (int i = 0; i < x.n; ++i) {
                for (int j = 0; j < x.n; ++j) a += x[i] * x[j] * m.a(i, j);
                b += x[i] * m.mdl1[i]->vs();
            }
        }
    };
    double k_;
    std::vector<std::unique_ptr<VdwModel>> owned_;
};
