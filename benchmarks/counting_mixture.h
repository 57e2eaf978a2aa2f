// A mixture that forwards to another one and counts what it is asked.
#pragma once

#include <corvane/mixture/modeln.h>

class CountingMixture final : public ModelN, public corvane::DerivN {
  public:
    /// exact: also Z, betaV, myr, PsiH and the derivatives are the model's own; otherwise the
    /// library's numerical forms are used, and only Ar and vcalc reach the model.
    CountingMixture(ModelN& model, bool exact) : model_(model), exact_(exact) {
        eos = model.eos;
        mth = model.mth;
        mdl1 = model.mdl1;
        if (exact) derivatives(this);
    }
    double* ppar(int k, int i, int j) override { return model_.ppar(k, i, j); }
    void par_alloc() override {}
    void par_in(FILE* f, int i, int j) override { model_.par_in(f, i, j); }
    void par_out(FILE* f, int i, int j) const override { model_.par_out(f, i, j); }
    Vector<double> mixpar(Vector<double> const& x) const override { return model_.mixpar(x); }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        ++densities;
        return model_.vcalc(p, T, x, mode, rho_a, rho_b);
    }
    double Ar(double rho, double T, Vector<double> const& x) const override {
        ++evaluations;
        return model_.Ar(rho, T, x);
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        return exact_ ? ++evaluations, model_.Z(rho, T, x) : ModelN::Z(rho, T, x);
    }
    double betaV(double rho, double T, Vector<double> const& x) const override {
        return exact_ ? ++evaluations, model_.betaV(rho, T, x) : ModelN::betaV(rho, T, x);
    }
    double myr(Vector<double> const& rho_i, double T, int i) const override {
        return exact_ ? ++evaluations, model_.myr(rho_i, T, i) : ModelN::myr(rho_i, T, i);
    }
    Matrix<double> PsiH(Vector<double> const& rho_i, double T) const override {
        return exact_ ? ++evaluations, model_.PsiH(rho_i, T) : ModelN::PsiH(rho_i, T);
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        ++evaluations;
        return model_.derivatives()->deriv(rho, T, x, nrho, nT, d);
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override {
        ++evaluations;
        model_.derivatives()->potentials(rho_i, T, mu, mu_T, mu_rho);
    }
    using ModelN::Ar;
    using ModelN::betaV;
    using ModelN::myr;
    using ModelN::PsiH;
    using ModelN::Z;

    mutable long evaluations = 0;  ///< Ar, or an exact form
    mutable long densities = 0;    ///< calls of vcalc

  private:
    ModelN& model_;
    bool exact_;
};
