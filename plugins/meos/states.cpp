#include <corvane/core/lanes.h>
#include <plugins/meos/special_terms.h>
#include <plugins/meos/states.h>

#include <cmath>

namespace corvane::meos {

using lanes::get, lanes::put, lanes::V4;

namespace {

/// Four states: value and derivatives as Value has them, without the third.
struct Four {
    V4 a{}, d1{}, d2{}, t1{}, t2{}, dt{};
};

/// A group of powers P(δ)·exp(−δ^l), as Polynomial and Isotherm::add_powers.
struct Group {
    V4 p0{}, p1{}, p2{}, q0{}, q1{}, r0{};
};

/// Room for the functions of τ of all terms and of δ of groups and shaped terms.
struct Work {
    alignas(32) double tau[4 * kFactored], delta[8 * kFactored], powers[4 * (kMaxPower + 1)];
};

[[gnu::always_inline]] inline void functions_of_tau(Equation const& e, V4 const& tau,
                                                    V4 const& ln_tau, double* f) {
    for (int k = 0; k < e.shaped0; ++k) put(f + 4 * k, e.t[k] * ln_tau);
    for (int k = e.shaped0; k < e.factored; ++k) {
        const V4 offset = tau - e.gamma[k - e.shaped0];
        put(f + 4 * k, e.t[k] * ln_tau - e.beta[k - e.shaped0] * offset * offset);
    }
    lanes::exp_lanes<V4, lanes::I4>(f, 4 * e.factored);
    for (int k = 0; k < e.factored; ++k) {
        V4 c{};
        get(c, f + 4 * k);
        put(f + 4 * k, c * e.n[k]);
    }
}

[[gnu::always_inline]] inline void add_powers(Equation const& e, Work const& w,
                                              double const* damping, Four& v) {
    for (Equation::Group const& group : e.groups) {
        Group g;
        for (int s = group.first; s < group.last; ++s) {
            Equation::Slot const& slot = e.slots[static_cast<unsigned>(s)];
            V4 c{}, c1{}, c2{}, f{};
            for (int k = slot.first; k < slot.last; ++k) {
                get(f, w.tau + 4 * k);
                const double t = e.t[k];
                c += f, c1 += f * t, c2 += f * (t * (t - 1.0));
            }
            get(f, w.powers + 4 * slot.d);
            const double d = slot.d;
            c *= f, c1 *= f, c2 *= f;
            g.p0 += c, g.p1 += d * c, g.p2 += d * (d - 1) * c;
            g.q0 += c1, g.q1 += d * c1, g.r0 += c2;
        }
        V4 E{}, u{};
        get(E, damping), damping += 4;
        const double l = group.l;
        if (group.l > 0) {
            get(u, w.powers + 4 * group.l);
            u = l * u;
        }
        const V4 u2 = u * (u - (l - 1.0));
        v.a += g.p0 * E;
        v.d1 += (g.p1 - u * g.p0) * E;
        v.d2 += (g.p2 - 2.0 * u * g.p1 + u2 * g.p0) * E;
        v.t1 += g.q0 * E;
        v.t2 += g.r0 * E;
        v.dt += (g.q1 - u * g.q0) * E;
    }
}

[[gnu::always_inline]] inline void add_shaped(Equation const& e, Work const& w, V4 const& tau,
                                              V4 const& delta, double const* bells, Four& v) {
    Four sum[2];  // even and odd terms, as Isotherm adds them up
    for (int s = 0; s < e.level0 - e.shaped0; ++s) {
        const int k = e.shaped0 + s;
        V4 f{}, x{}, y{};
        get(f, w.tau + 4 * k), get(x, bells + 4 * s), get(y, w.powers + 4 * e.dpower[s]);
        f = f * x * y;
        const V4 twice = 2.0 * delta * e.sign[s] * e.eta[s];
        V4 h1 = twice * (delta - e.epsilon[s]), h2 = twice * delta;
        if (e.damping) {
            get(y, w.powers + 4 * e.lpower[s]);
            x = -e.g[s] * e.l[s] * y;
            h1 += x;
            h2 += (e.l[s] - 1.0) * x;
        }
        const double d = e.d[k], t = e.t[k];
        const V4 f1 = d + h1, hh = h1 * h1 + h2;
        const V4 strength = (-2.0 * tau) * e.beta[s], offset = strength * (tau - e.gamma[s]);
        const V4 w1 = t + offset,
                 w2 = t * (t - 1.0) + 2.0 * t * offset + offset * offset + strength * tau;
        Four& to = sum[s % 2];
        to.a += f;
        to.d1 += f * f1;
        to.d2 += f * (d * (d - 1.0) + 2.0 * d * h1 + hh);
        to.t1 += f * w1;
        to.t2 += f * w2;
        to.dt += f * w1 * f1;
    }
    v.a += sum[0].a + sum[1].a, v.d1 += sum[0].d1 + sum[1].d1, v.d2 += sum[0].d2 + sum[1].d2;
    v.t1 += sum[0].t1 + sum[1].t1, v.t2 += sum[0].t2 + sum[1].t2, v.dt += sum[0].dt + sum[1].dt;
}

[[gnu::always_inline]] inline void four_states(Equation const& e, V4 const& tau, V4 const& ln_tau,
                                               V4 const& delta, Work& w, Four& v) {
    functions_of_tau(e, tau, ln_tau, w.tau);
    put(w.powers, V4{} + 1.0);
    put(w.powers + 4, delta);
    for (int i = 2; i <= e.highest; ++i) {
        V4 x{}, y{};
        get(x, w.powers + 4 * (i / 2)), get(y, w.powers + 4 * (i - i / 2));
        put(w.powers + 4 * i, x * y);
    }
    const int groups = static_cast<int>(e.groups.size()), shaped = e.level0 - e.shaped0;
    double* const bells = w.delta + 4 * groups;
    V4 x{};
    for (int i = 0; i < groups; ++i) {
        const int l = e.groups[static_cast<unsigned>(i)].l;
        get(x, w.powers + 4 * l);
        put(w.delta + 4 * i, l == 0 ? V4{} : -x);
    }
    for (int s = 0; s < shaped; ++s) {
        const V4 offset = delta - e.epsilon[s];
        V4 h = e.sign[s] * e.eta[s] * (offset * offset);
        if (e.damping) {
            get(x, w.powers + 4 * e.lpower[s]);
            h -= e.g[s] * x;
        }
        put(bells + 4 * s, h);
    }
    lanes::exp_lanes<V4, lanes::I4>(w.delta, 4 * (groups + shaped));
    add_powers(e, w, w.delta, v);
    if (shaped > 0) add_shaped(e, w, tau, delta, bells, v);
}
void narrow(Equation const& e, V4 const& tau, V4 const& ln_tau, V4 const& delta, Work& w, Four& v) {
    four_states(e, tau, ln_tau, delta, w, v);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void wide(Equation const& e, V4 const& tau, V4 const& ln_tau,
                                  V4 const& delta, Work& w, Four& v) {
    four_states(e, tau, ln_tau, delta, w, v);
}
#endif

/// Each state by itself: most are too far from the critical point.
void add_non_analytic_each(Equation const& e, V4 const& delta, V4 const& tau, Four& v) {
    for (int i = 0; i < 4; ++i) {
        Value one{v.a[i], v.d1[i], v.d2[i], 0.0, v.t1[i], v.t2[i], v.dt[i]};
        for (auto const& term : e.nonanalytic)
            add_non_analytic(term, delta[i], tau[i], 2, true, one);
        v.a[i] = one.a, v.d1[i] = one.d1, v.d2[i] = one.d2;
        v.t1[i] = one.t1, v.t2[i] = one.t2, v.dt[i] = one.dt;
    }
}

}  // namespace

bool in_lanes(Equation const& e) {
    return e.extras.empty() && e.levels == 0 && e.association.empty();
}

void second(Equation const& e, int count, double const* rho, double const* T, double* const* d) {
    const double Ts = e.Ts(), vs = e.vs();
    Work w;
    for (int i = 0; i < count; i += 4) {
        V4 tau{}, ln_tau{}, delta{};
        for (int k = 0; k < 4; ++k) {
            tau[k] = Ts / T[i + k];
            ln_tau[k] = std::log(tau[k]);  // as Isotherm has it
            delta[k] = rho[i + k] * vs;
        }
        Four v;
#if defined(__x86_64__)
        if (lanes::wide)
            wide(e, tau, ln_tau, delta, w, v);
        else
#endif
            narrow(e, tau, ln_tau, delta, w, v);
        if (!e.nonanalytic.empty()) add_non_analytic_each(e, delta, tau, v);
        put(d[0] + i, v.a);
        put(d[1] + i, -v.t1);
        put(d[2] + i, v.t2 + 2.0 * v.t1);
        put(d[3] + i, v.d1);
        put(d[4] + i, -v.dt);
        put(d[5] + i, v.d2);
    }
}

}  // namespace corvane::meos
