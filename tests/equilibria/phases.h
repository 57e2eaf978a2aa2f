// Binaries and their phases in tests.
#pragma once

#include "support/errors.h"
#include "support/mixtures.h"
#include "support/vdw_model.h"

#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/classic/equilibria/ffeNcore.h>

/// Peng–Robinson with the shipped components.
inline Mixture peng_robinson(char const* first, char const* second, double kij) {
    Mixture m = mixture_of("PR", "vdW1", {first, second});
    m->param(0, 0, 1, kij);
    return m;
}

/// Two equal van der Waals fluids, 300 K and 40 cm³/mol, with a12 = a·(1 − k): one fluid with
/// a·(1 − 2k·x0·x1). Ar and vcalc alone, so that the library differentiates.
class VdwTwins : public ModelN {
  public:
    explicit VdwTwins(double k) : k_(k) {
        mdl1.size(2);
        mdl1[0] = mdl1[1] = &fluid_;
    }
    double Tc(Vector<double> const& x) const { return 300 * (1 - 2 * k_ * x[0] * x[1]); }
    double Ar(double rho, double T, Vector<double> const& x) const override {
        return -std::log1p(-40 * rho) - 27.0 / 8.0 * Tc(x) / T * 40 * rho;
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        return VdwModel("", Tc(x), 40).vcalc(p, T, mode, rho_a, rho_b);
    }
    double* ppar(int, int, int) override { return &k_; }
    void par_alloc() override {}
    void par_in(FILE*, int, int) override {}
    void par_out(FILE*, int, int) const override {}
    Vector<double> mixpar(Vector<double> const& x) const override { return x; }

  private:
    double k_;
    VdwModel fluid_{"", 300, 40};
};

inline Vector<double> mix(double x0) {
    return vec({x0, 1 - x0});
}
inline double pressure(ModelN const& m, Vector<double> const& rho_i, double T) {
    return m.Z(rho_i, T) * R * T * rho_i.sum();
}
/// Equal potentials and pressures, recomputed through the slots of the model.
inline void expect_equilibrium(ModelN const& m, double T, Vector<double> const& row1,
                               Vector<double> const& row2, double p) {
    for (int i = 0; i < 2; ++i) EXPECT_NEAR(m.my(row1, T, i), m.my(row2, T, i), 1e-9);
    EXPECT_NEAR(pressure(m, row1, T) / p, 1, 1e-9);
    EXPECT_NEAR(pressure(m, row2, T) / p, 1, 1e-9);
}

struct Bubble {
    double p = 0, rho1 = 0;
    Vector<double> rho2{2};
};

/// Bubble points at T from pure component 1 up to x0, each from the last; the first with the
/// K-factor of Wilson (Tech. Conf. API 1968).
template <class Visit>
void march(ModelN const& m, double T, double x0, double step, Visit visit) {
    Bubble s;
    corvane::SaturationMarch().at_T(m.mdl1[1], T, 0, s.p, s.rho1, s.rho2[1]);
    Model1 const& light = *m.mdl1[0];
    const double K =
        light.pcrit() / s.p * std::exp(5.373 * (1 + light.omega()) * (1 - light.Tcrit() / T));
    for (double x = step; x < x0 + step / 2; x += step) {
        s.rho2[0] = x == step ? K * step * s.rho2[1] : s.rho2[0] * x / (x - step);
        vleN_T(&m, T, mix(x), s.p, s.rho1, s.rho2);
        visit(x, s);
    }
}
