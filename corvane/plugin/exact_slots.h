// What mixture plug-ins share that have exact derivatives: slots that follow from these, and the
// pairs' parameters. Where derivatives are no numbers, past a pole or at an impossible temperature,
// the library's own form of a slot answers instead, with the error that it raises for such a state.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/plugin/pair_table.h>
#include <corvane/plugin/small_array.h>

#include <cmath>

namespace corvane {

class ExactMixture : public ModelN, public DerivN {
  public:
    using ModelN::Ar;
    using ModelN::betaV;
    using ModelN::myr;
    using ModelN::PsiH;
    using ModelN::Z;

    /// By deriv.
    double betaV(double rho, double T, Vector<double> const& x) const override {
        double d[4];
        deriv(rho, T, x, 1, 1, d);
        const double beta = 1.0 + d[2] + d[3];
        return std::isfinite(T) && std::isfinite(d[0] + beta) ? beta : ModelN::betaV(rho, T, x);
    }
    /// By potentials.
    Matrix<double> PsiH(Vector<double> const& rho_i, double T) const override {
        const int n = rho_i.size();
        SmallArray<double> mu(n);
        SmallArray<double, 576> residual(n * n);
        potentials(rho_i, T, &mu[0], nullptr, &residual[0]);
        Matrix<double> H(n, n);
        for (int i = 0; i < n; ++i) {
            const bool possible = rho_i[i] == 0.0 || (rho_i[i] > 0.0 && std::isfinite(mu[i]));
            if (!possible) return ModelN::PsiH(rho_i, T);
            for (int j = 0; j < n; ++j) H[i][j] = residual[i * n + j];
            H[i][i] = rho_i[i] > 0.0 ? H[i][i] + 1.0 / rho_i[i] : 1e99;  // absent: as the library's
        }
        return H;
    }

  protected:
    /// As in attachN(equation, rule).
    ExactMixture(char const* equation, char const* rule) {
        eos = equation;
        mth = rule;
        hess_myr_ = 1;  // myr is exact
    }
    /// IsothermN::densities from what vcalc finds in mode 1, in rho[0] and dilute.
    static int stable_roots(int found, double* rho, double dilute) {
        if (found == 3) rho[1] = dilute;
        return found == 3 ? 2 : found;
    }
};

/// With a table of `count` parameters of every pair, zero until they are read.
class PairTableMixture : public ExactMixture, public PairParameters {
  public:
    int pair_parameters() const override { return count_; }
    /// Null where pairs have no parameters.
    double* ppar(int k, int i, int j) override {
        return count_ > 0 ? pairs_.at(i, j) + k : nullptr;
    }
    void par_alloc() override { pairs_.resize(mdl1.size()); }

  protected:
    PairTableMixture(char const* equation, char const* rule, int count)
        : ExactMixture(equation, rule), pairs_(count > 0 ? count : 1), count_(count) {}
    PairTable pairs_;

  private:
    const int count_;
};

}  // namespace corvane
