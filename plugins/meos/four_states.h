// A multiparameter equation at four states at once: what `second` and the densities of many states
// share. For inclusion into their sources: all of it is inlined into a function for every machine
// and into one for those with AVX2.
#pragma once

#include <corvane/core/lanes.h>
#include <plugins/meos/special_terms.h>

#include <cmath>

namespace corvane::meos {

using lanes::get, lanes::put, lanes::V4;

/// Four states: value and derivatives as Value has them. Those in τ, or the third in δ.
struct Four {
    V4 a{}, d1{}, d2{}, d3{}, t1{}, t2{}, dt{};
};

/// A group of powers P(δ)·exp(−δ^l), as Polynomial and Isotherm::add_powers.
struct Group {
    V4 p0{}, p1{}, p2{}, p3{}, q0{}, q1{}, r0{};
};

/// What the states have in common. Terms with the same exponent share one power of τ: half of
/// water's do.
struct Plan {
    int exponents = 0;  // different ones of the power terms
    double exponent[kMaxTerms];
    int power[kMaxTerms];  // of a power term: where its power of τ stands in Work
    double tt[kFactored];  // t·(t − 1)
    struct Slot {          // as the equation's, with the place of δ^d in Work
        int last, power;
        double d, dd, ddd;  // d·(d − 1), and times (d − 2)
    };
    Slot slots[kMaxTerms];
    int shaped = 0;  // shaped terms, without those of n = 0 that fill up
    short term[kFactored];

    explicit Plan(Equation const& e) {
        for (unsigned s = 0; s < e.slots.size(); ++s) {
            const int d = e.slots[s].d;
            slots[s] = {e.slots[s].last, 4 * d, static_cast<double>(d),
                        static_cast<double>(d * (d - 1)),
                        static_cast<double>(d * (d - 1) * (d - 2))};
            for (int k = e.slots[s].first; k < e.slots[s].last; ++k) {
                int j = 0;
                while (j < exponents && exponent[j] != e.t[k]) ++j;
                if (j == exponents) exponent[exponents++] = e.t[k];
                power[k] = 4 * j;
            }
        }
        for (int k = 0; k < e.factored; ++k) tt[k] = e.t[k] * (e.t[k] - 1.0);
        for (int k = e.shaped0; k < e.level0; ++k)
            if (e.n[k] != 0.0) term[shaped++] = static_cast<short>(k - e.shaped0);
    }
};

/// Room for the powers of τ, the sums of slots, the functions of τ of shaped terms and of δ of
/// groups and shaped terms.
struct Work {
    alignas(32) double tau[4 * kFactored], slots[4 * kMaxTerms], shaped[4 * kFactored],
        delta[8 * kFactored], powers[4 * (kMaxPower + 1)];
};

[[gnu::always_inline]] inline void functions_of_tau(Equation const& e, Plan const& plan,
                                                    V4 const& tau, V4 const& ln_tau, Work& w) {
    for (int k = 0; k < plan.exponents; ++k) put(w.tau + 4 * k, plan.exponent[k] * ln_tau);
    lanes::exp_lanes<V4, lanes::I4>(w.tau, 4 * plan.exponents);
    for (int i = 0; i < plan.shaped; ++i) {
        const int s = plan.term[i];
        const V4 offset = tau - e.gamma[s];
        put(w.shaped + 4 * i, e.t[e.shaped0 + s] * ln_tau - e.beta[s] * offset * offset);
    }
    lanes::exp_lanes<V4, lanes::I4>(w.shaped, 4 * plan.shaped);
}

/// Isotherm::slots.
[[gnu::always_inline]] inline void sum_slots(Equation const& e, Plan const& plan, Work& w) {
    int k = 0;  // the slots have the power terms in their order
    for (unsigned s = 0; s < e.slots.size(); ++s) {
        V4 c{}, f{};
        for (; k < plan.slots[s].last; ++k) {
            get(f, w.tau + plan.power[k]);
            c += f * e.n[k];
        }
        put(w.slots + 4 * s, c);
    }
}

/// With Tau from the powers of τ, else from the sums of slots.
template <bool Tau>
[[gnu::always_inline]] inline void add_powers(Equation const& e, Plan const& plan, Work const& w,
                                              double const* damping, Four& v) {
    int k = 0;
    for (Equation::Group const& group : e.groups) {
        Group g;
        for (int s = group.first; s < group.last; ++s) {
            Plan::Slot const& slot = plan.slots[s];
            V4 c{}, c1{}, c2{}, f{};
            if constexpr (Tau)
                for (; k < slot.last; ++k) {
                    get(f, w.tau + plan.power[k]);
                    f *= e.n[k];
                    c += f, c1 += f * e.t[k], c2 += f * plan.tt[k];
                }
            else
                get(c, w.slots + 4 * s);
            get(f, w.powers + slot.power);
            c *= f;
            g.p0 += c, g.p1 += slot.d * c, g.p2 += slot.dd * c;
            if constexpr (Tau) {
                c1 *= f, c2 *= f;
                g.q0 += c1, g.q1 += slot.d * c1, g.r0 += c2;
            } else {
                g.p3 += slot.ddd * c;
            }
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
        if constexpr (Tau) {
            v.t1 += g.q0 * E;
            v.t2 += g.r0 * E;
            v.dt += (g.q1 - u * g.q0) * E;
        } else {
            const V4 u3 = -u * (u * u - 3.0 * (l - 1.0) * u + (l - 1.0) * (l - 2.0));
            v.d3 += (g.p3 - 3.0 * u * g.p2 + 3.0 * u2 * g.p1 + u3 * g.p0) * E;
        }
    }
}

template <bool Tau>
[[gnu::always_inline]] inline void add_shaped(Equation const& e, Plan const& plan, Work const& w,
                                              V4 const& tau, V4 const& delta, double const* bells,
                                              Four& v) {
    Four sum[2];  // even and odd terms, as Isotherm adds them up
    for (int i = 0; i < plan.shaped; ++i) {
        const int s = plan.term[i], k = e.shaped0 + s;
        V4 f{}, x{}, y{};
        get(f, w.shaped + 4 * i), get(x, bells + 4 * i), get(y, w.powers + 4 * e.dpower[s]);
        f = f * e.n[k] * x * y;
        const V4 twice = 2.0 * delta * e.sign[s] * e.eta[s];
        V4 h1 = twice * (delta - e.epsilon[s]), h2 = twice * delta, h3{};
        if (e.damping) {
            get(y, w.powers + 4 * e.lpower[s]);
            x = -e.g[s] * e.l[s] * y;
            h1 += x;
            h2 += (e.l[s] - 1.0) * x;
            h3 = (e.l[s] - 1.0) * (e.l[s] - 2.0) * x;
        }
        const double d = e.d[k], t = e.t[k], dd = d * (d - 1.0);
        const V4 f1 = d + h1, hh = h1 * h1 + h2;
        Four& to = sum[s % 2];
        to.a += f;
        to.d1 += f * f1;
        to.d2 += f * (dd + 2.0 * d * h1 + hh);
        if constexpr (!Tau) {
            to.d3 +=
                f * (dd * (d - 2.0) + 3.0 * (dd * h1 + d * hh) + h1 * (h1 * h1 + 3.0 * h2) + h3);
            continue;
        }
        const V4 strength = (-2.0 * tau) * e.beta[s], offset = strength * (tau - e.gamma[s]);
        const V4 w1 = t + offset,
                 w2 = t * (t - 1.0) + 2.0 * t * offset + offset * offset + strength * tau;
        to.t1 += f * w1;
        to.t2 += f * w2;
        to.dt += f * w1 * f1;
    }
    v.a += sum[0].a + sum[1].a, v.d1 += sum[0].d1 + sum[1].d1, v.d2 += sum[0].d2 + sum[1].d2;
    v.d3 += sum[0].d3 + sum[1].d3;
    v.t1 += sum[0].t1 + sum[1].t1, v.t2 += sum[0].t2 + sum[1].t2, v.dt += sum[0].dt + sum[1].dt;
}

/// A state at the critical density or at a singularity of a term: one by one.
template <bool Tau>
[[gnu::noinline]] void add_non_analytic_each(Equation::NonAnalytic const& term, V4 const& delta,
                                             V4 const& tau, Four& v) {
    for (int i = 0; i < 4; ++i) {
        Value one{v.a[i], v.d1[i], v.d2[i], v.d3[i], v.t1[i], v.t2[i], v.dt[i]};
        add_non_analytic(term, delta[i], tau[i], Tau ? 2 : 3, Tau, one);
        v.a[i] = one.a, v.d1[i] = one.d1, v.d2[i] = one.d2, v.d3[i] = one.d3;
        v.t1[i] = one.t1, v.t2[i] = one.t2, v.dt[i] = one.dt;
    }
}

/// Δ of a non-analytic term and its derivatives, which terms that differ in b, C and D share.
struct Distance {
    double a = 0.0, beta = 0.0, A = 0.0, B = 0.0;
    V4 ln{}, r1{}, r2{}, r3{}, rt{}, rtt{}, mixed{};  // ln Δ, what its derivatives add
    int known = 0;                                    // bit i: of state i
    bool regular = true;

    bool is_of(Equation::NonAnalytic const& term) const {
        return a == *term.a && beta == *term.beta && A == *term.A && B == *term.B;
    }
    [[gnu::always_inline]] inline void calculate(Equation::NonAnalytic const& term, int states,
                                                 V4 const& ln_x, V4 const& rx, V4 const& y) {
        a = *term.a, beta = *term.beta, A = *term.A, B = *term.B, known = states, regular = true;
        const double q = 1.0 / beta, a2 = 2.0 * a;
        alignas(32) double power[8];
        put(power, q * ln_x), put(power + 4, a2 * ln_x);
        lanes::exp_lanes<V4, lanes::I4>(power, 8);
        V4 u{}, w{};
        get(u, power), get(w, power + 4);
        const V4 theta = -y + A * u, Delta = theta * theta + B * w;
        for (int i = 0; i < 4; ++i)
            if (states >> i & 1) regular = regular && Delta[i] > 0.0, ln[i] = std::log(Delta[i]);
        const V4 u1 = q * u * rx, w1 = a2 * w * rx;
        const V4 D1 = 2.0 * theta * A * u1 + B * w1, rDelta = 1.0 / Delta;
        const V4 u2 = (q - 1.0) * u1 * rx, w2 = (a2 - 1.0) * w1 * rx;
        const V4 D2 = 2.0 * A * (A * u1 * u1 + theta * u2) + B * w2;
        r1 = D1 * rDelta;
        r2 = D2 * rDelta;
        const V4 u3 = (q - 2.0) * u2 * rx, w3 = (a2 - 2.0) * w2 * rx;
        const V4 D3 = 2.0 * A * (3.0 * A * u1 * u2 + theta * u3) + B * w3;
        r3 = D3 * rDelta - 3.0 * D2 * rDelta * r1 + 2.0 * r1 * r1 * r1;
        rt = -2.0 * theta * rDelta;
        rtt = 2.0 * rDelta;
        mixed = -2.0 * A * u1 * rDelta;
    }
};

/// As add_non_analytic; most states are too far from the critical point.
template <bool Tau>
[[gnu::always_inline]] inline void add_non_analytic_terms(Equation const& e, V4 const& delta,
                                                          V4 const& tau, Four& v) {
    const V4 x = delta - 1.0, s = x * x, y = tau - 1.0, yy = y * y;
    V4 ln_x{};
    int known = 0;
    Distance distance;
    for (Equation::NonAnalytic const& term : e.nonanalytic) {
        const double C = *term.C, D = *term.D, b = *term.b;
        const V4 decay = -C * s - D * yy;
        int near = 0;
        for (int i = 0; i < 4; ++i)
            if (!(decay[i] < -80.0)) near |= 1 << i;
        if (near == 0) continue;
        for (int i = 0; i < 4; ++i)
            if (near >> i & ~known >> i & 1) ln_x[i] = 0.5 * std::log(s[i]);
        known |= near;
        if (!distance.is_of(term) || (near & ~distance.known) != 0)
            distance.calculate(term, near, ln_x, 1.0 / x, y);
        bool regular = distance.regular;
        for (int i = 0; i < 4; ++i) regular = regular && !((near >> i & 1) && x[i] == 0.0);
        if (!regular) {
            add_non_analytic_each<Tau>(term, delta, tau, v);
            continue;
        }
        V4 psi{}, F{};
        alignas(32) double power[4];
        put(power, decay);
        lanes::exp_lanes<V4, lanes::I4>(power, 4);
        get(psi, power);
        for (int i = 0; i < 4; ++i)
            if (near >> i & 1) F[i] = std::exp(b * distance.ln[i]);
        V4 const &r1 = distance.r1, &rt = distance.rt;
        const V4 weight = *term.n * F * psi * delta;
        const V4 f1 = b * r1 - 2.0 * C * x;
        const V4 f2 = b * (distance.r2 - r1 * r1) - 2.0 * C, E2 = f2 + f1 * f1;
        Four one;
        one.a = weight;
        one.d1 = weight * (delta * f1 + 1.0);
        one.d2 = weight * delta * (delta * E2 + 2.0 * f1);
        if constexpr (Tau) {
            const V4 g1 = b * rt - 2.0 * D * y, g2 = b * (distance.rtt - rt * rt) - 2.0 * D;
            const V4 mixed = b * (distance.mixed - r1 * rt);
            one.t1 = weight * tau * g1;
            one.t2 = weight * tau * tau * (g2 + g1 * g1);
            one.dt = weight * tau * (delta * (mixed + f1 * g1) + g1);
        } else {
            const V4 E3 = b * distance.r3 + 3.0 * f1 * f2 + f1 * f1 * f1;
            one.d3 = weight * delta * delta * (delta * E3 + 3.0 * E2);
        }
        V4* const to[] = {&v.a, &v.d1, &v.d2, &v.d3, &v.t1, &v.t2, &v.dt};
        V4 const* const from[] = {&one.a, &one.d1, &one.d2, &one.d3, &one.t1, &one.t2, &one.dt};
        const V4 taken{near & 1 ? 1.0 : 0.0, near & 2 ? 1.0 : 0.0, near & 4 ? 1.0 : 0.0,
                       near & 8 ? 1.0 : 0.0};
        for (int c = 0; c < 7; ++c) *to[c] = taken > 0.0 ? *to[c] + *from[c] : *to[c];
    }
}

/// From functions_of_tau, and without Tau sum_slots.
template <bool Tau>
[[gnu::always_inline]] inline void four_densities(Equation const& e, Plan const& plan,
                                                  V4 const& tau, V4 const& delta, Work& w,
                                                  Four& v) {
    put(w.powers, V4{} + 1.0);
    put(w.powers + 4, delta);
    for (int i = 2; i <= e.highest; ++i) {
        V4 x{}, y{};
        get(x, w.powers + 4 * (i / 2)), get(y, w.powers + 4 * (i - i / 2));
        put(w.powers + 4 * i, x * y);
    }
    // Groups are sorted: without an exponential the first, if any.
    const int groups = static_cast<int>(e.groups.size()), plain = groups > 0 && e.groups[0].l == 0;
    double* const bells = w.delta + 4 * groups;
    V4 x{};
    if (plain) put(w.delta, V4{} + 1.0);
    for (int i = plain; i < groups; ++i) {
        get(x, w.powers + 4 * e.groups[static_cast<unsigned>(i)].l);
        put(w.delta + 4 * i, -x);
    }
    for (int i = 0; i < plan.shaped; ++i) {
        const int s = plan.term[i];
        const V4 offset = delta - e.epsilon[s];
        V4 h = e.sign[s] * e.eta[s] * (offset * offset);
        if (e.damping) {
            get(x, w.powers + 4 * e.lpower[s]);
            h -= e.g[s] * x;
        }
        put(bells + 4 * i, h);
    }
    lanes::exp_lanes<V4, lanes::I4>(w.delta + 4 * plain, 4 * (groups - plain + plan.shaped));
    add_powers<Tau>(e, plan, w, w.delta, v);
    if (plan.shaped > 0) add_shaped<Tau>(e, plan, w, tau, delta, bells, v);
    if (!e.nonanalytic.empty()) add_non_analytic_terms<Tau>(e, delta, tau, v);
}

}  // namespace corvane::meos
