// Phases of a binary in tests: compositions, bubble points along them, conditions of equilibrium.
#pragma once

#include "support/errors.h"

#include <corvane/equilibria/ffe1core.h>
#include <corvane/equilibria/ffeNcore.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

#include <cmath>

inline Vector<double> pair(double a, double b) {
    Vector<double> x(2);
    x[0] = a;
    x[1] = b;
    return x;
}
inline Vector<double> mix(double x0) {
    return pair(x0, 1 - x0);
}
inline double pressure(ModelN const& m, Vector<double> const& rho_i, double T) {
    return m.Z(rho_i, T) * R * T * rho_i.sum();
}

struct Bubble {
    double p = 0, rho1 = 0;
    Vector<double> rho2{2};
};

/// Equal potentials and pressures, recomputed through the slots of a model.
inline void expect_equilibrium(ModelN const& m, double T, Vector<double> const& row1,
                               Vector<double> const& row2, double p) {
    for (int i = 0; i < 2; ++i) EXPECT_NEAR(m.my(row1, T, i), m.my(row2, T, i), 1e-9);
    EXPECT_NEAR(pressure(m, row1, T) / p, 1, 1e-9);
    EXPECT_NEAR(pressure(m, row2, T) / p, 1, 1e-9);
}

/// Bubble points at T from pure component 1 up to x0, each from the last; the first with the
/// K-factor of Wilson (Tech. Conf. API 1968).
template <class Visit>
void march(ModelN const& m, double T, double x0, double step, Visit visit) {
    Bubble s;
    corvane::Saturation().at_T(m.mdl1[1], T, 0, s.p, s.rho1, s.rho2[1]);
    Model1 const& light = *m.mdl1[0];
    const double K =
        light.pcrit() / s.p * std::exp(5.373 * (1 + light.omega()) * (1 - light.Tcrit() / T));
    for (double x = step; x < x0 + step / 2; x += step) {
        s.rho2[0] = x == step ? K * step * s.rho2[1] : s.rho2[0] * x / (x - step);
        vleN_T(&m, T, mix(x), s.p, s.rho1, s.rho2);
        visit(x, s);
    }
}
