// A pure cubic fluid to second order, four states at a time.
#pragma once

#include <corvane/core/lanes.h>
#include <plugins/common/alpha.h>
#include <corvane/plugin/cubic.h>

#include <cmath>

namespace corvane {

/// CubicFluid::deriv in lanes. q, Tq, TTq of the states stand in d[0 … 2].
template <class Form>
[[gnu::always_inline]] inline void cubic_second_in_lanes(double b, double c, int count,
                                                         double const* rho_, double* const* d) {
    using lanes::V4, lanes::get, lanes::put;
    V4 rho{}, q{}, Tq{}, TTq{};
    for (int i = 0; i < count; i += 4) {
        get(rho, rho_ + i), get(q, d[0] + i), get(Tq, d[1] + i), get(TTq, d[2] + i);
        const V4 c_rho = c * rho, t = 1.0 + c_rho, x = c_rho / t, y = b * rho / t;
        const V4 e1 = 1.0 / t, e2 = -2.0 * x * e1;
        const V4 D = 1.0 + y * (Form::u + Form::w * y), D1 = Form::u + 2.0 * Form::w * y;
        const V4 h = y / (1.0 - y), k = y / D, kD1 = k * D1;
        V4 repulsion = -y, integral = (Form::d1 - Form::d2) * y / (1.0 + Form::d2 * y),
           shift = c_rho;
        lanes::log_lanes<false>(repulsion);
        lanes::log_lanes<false>(integral);
        if (c != 0.0) lanes::log_lanes<false>(shift);
        integral /= Form::d1 - Form::d2;
        const V4 integral1 = k * e1, integral2 = -k * kD1 * e1 * e1 + k * e2;
        put(d[0] + i, -repulsion - q * integral - shift);
        put(d[1] + i, -Tq * integral);
        put(d[2] + i, -TTq * integral);
        put(d[3] + i, h * e1 - q * integral1 - x);
        put(d[4] + i, -Tq * integral1);
        put(d[5] + i, h * h * e1 * e1 + h * e2 - q * integral2 + x * x);
    }
}
template <class Form>
void cubic_second_narrow(double b, double c, int count, double const* rho, double* const* d) {
    cubic_second_in_lanes<Form>(b, c, count, rho, d);
}
#if defined(__x86_64__)
template <class Form>
[[gnu::target("avx2")]] void cubic_second_wide(double b, double c, int count, double const* rho,
                                               double* const* d) {
    cubic_second_in_lanes<Form>(b, c, count, rho, d);
}
#endif

/// ManyStates1::second; par as in CubicParameter.
template <class Form>
void cubic_second(double const* par, int count, double const* rho, double const* T,
                  double* const* d) {
    const int kind = alpha_kind(par);
    if (kind == alpha_standard || kind == alpha_graboski_daubert) {  // as attraction()
        const double m = alpha_slope<Form>(par[cubic_omega], kind), Ts = par[cubic_Ts];
        for (int i = 0; i < count; i += 2) {
            lanes::V2 root = lanes::load(T + i) / Ts;
            root[0] = std::sqrt(root[0]), root[1] = std::sqrt(root[1]);
            root = (1.0 + m) / root;
            const lanes::V2 s = root - m, Tr1 = -0.5 * root, TTr2 = 0.75 * root;
            lanes::store(d[0] + i, q_c<Form> * s * s);
            lanes::store(d[1] + i, q_c<Form> * 2.0 * s * Tr1);
            lanes::store(d[2] + i, q_c<Form> * 2.0 * (Tr1 * Tr1 + s * TTr2));
        }
    } else {
        for (int i = 0; i < count; ++i) {
            const Attraction a = attraction<Form>(par, T[i]);
            d[0][i] = a.q, d[1][i] = a.Tq, d[2][i] = a.TTq;
        }
    }
#if defined(__x86_64__)
    if (lanes::wide) return cubic_second_wide<Form>(par[cubic_vs], par[cubic_c], count, rho, d);
#endif
    cubic_second_narrow<Form>(par[cubic_vs], par[cubic_c], count, rho, d);
}

}  // namespace corvane
