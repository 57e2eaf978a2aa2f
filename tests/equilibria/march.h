// Bubble points along the composition of a binary.
#pragma once

#include <corvane/equilibria/ffe1core.h>
#include <corvane/equilibria/ffeNcore.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

#include <cmath>

struct State {
    double p = 0, rho1 = 0;
    Vector<double> rho2{2};
};

inline Vector<double> mix(double x0) {
    Vector<double> x(2);
    x[0] = x0;
    x[1] = 1 - x0;
    return x;
}

/// Bubble points at T from pure component 1 up to x0, each from the last; the first from the
/// K-factor of Wilson (Tech. Conf. API 1968) with acentric factor 0.
template <class Visit>
State march(ModelN const& m, double T, double x0, double step, Visit visit) {
    State s;
    double rhoV;
    corvane::Saturation().at_T(m.mdl1[1], T, 0, s.p, s.rho1, rhoV);
    const Model1& light = *m.mdl1[0];
    const double K = light.pcrit() / s.p * std::exp(5.373 * (1 - light.Tcrit() / T));
    s.rho2[1] = rhoV;
    s.rho2[0] = 0.0;
    for (double x = step; x < x0 + step / 2; x += step) {
        const double grow = x / (x - step);
        s.rho2[0] = x == step ? K * step * rhoV : s.rho2[0] * grow;
        vleN_T(&m, T, mix(x), s.p, s.rho1, s.rho2);
        visit(x, s);
    }
    return s;
}
