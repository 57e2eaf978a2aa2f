#include <corvane/core/lanes.h>
#include <plugins/common/power_sum.h>
#include <plugins/meos/isotherm.h>
#include <plugins/meos/special_terms.h>

#include <cmath>

namespace corvane::meos {

using namespace lanes;

template <bool Tau>
Isotherm<Tau>::Isotherm(Equation const& equation, double T)
    : equation_(equation), T_(T), tau_(equation.Ts() / T), vs_(equation.vs()) {
    Equation const& e = equation;
    const double tau = tau_, ln_tau = std::log(tau);
    double const* const t = e.t;
    double const* const n = e.n;
    // Logarithm of the function of τ, and with Tau x = τh' and y = τ²h'' of what stands beside τ^t.
    for (int k = 0; k < e.shaped0; k += 2) store(c_ + k, load(t + k) * ln_tau);
    for (int k = e.shaped0; k < e.factored; k += 2) {
        const V2 offset = tau - load(e.gamma + k - e.shaped0);
        const V2 strength = load(e.beta + k - e.shaped0);
        store(c_ + k, load(t + k) * ln_tau - strength * offset * offset);
    }
    if constexpr (Tau) {
        for (int k = 0; k < e.shaped0; k += 2) {
            store(w1_ + k, load(t + k));
            store(w2_ + k, load(t + k) * (load(t + k) - 1.0));
        }
        for (int k = e.shaped0; k < e.factored; k += 2) {
            const V2 twice = (-2.0 * tau) * load(e.beta + k - e.shaped0);
            const V2 x = twice * (tau - load(e.gamma + k - e.shaped0)), y = twice * tau;
            const V2 tk = load(t + k);
            store(w1_ + k, tk + x);
            store(w2_ + k, tk * (tk - 1.0) + 2.0 * tk * x + x * x + y);
        }
    }
    for (Equation::Extra const& extra : e.extras) {
        const int k = extra.term;
        double h, x, y;
        if (extra.k) {  // −a τ^k
            h = -std::exp(*extra.k * ln_tau) * (extra.a ? *extra.a : 1.0);
            x = *extra.k * h;
            y = (*extra.k - 1.0) * x;
        } else {  // 1/(b + β(τ−γ)²), in place of −β(τ−γ)²
            const double offset = tau - e.gamma[k - e.shaped0], beta = e.beta[k - e.shaped0];
            h = 1.0 / (*extra.a + beta * offset * offset);
            x = -2.0 * beta * offset * tau * h * h;
            y = 2.0 * x * x / h - 2.0 * beta * tau * tau * h * h;
            c_[k] = t[k] * ln_tau;
        }
        c_[k] += h;
        if constexpr (Tau) {
            w1_[k] = t[k] + x;
            w2_[k] = t[k] * (t[k] - 1.0) + 2.0 * t[k] * x + x * x + y;
        }
    }
    exp_in_place(c_, e.factored);
    for (int k = 0; k < e.factored; k += 2) store(c_ + k, load(c_ + k) * load(n + k));
    const int slots = static_cast<int>(e.slots.size());
    for (int s = 0; s < slots; ++s) {
        double c = 0.0, c1 = 0.0, c2 = 0.0;
        for (int k = e.slots[s].first; k < e.slots[s].last; ++k) {
            c += c_[k];
            if constexpr (Tau) c1 += c_[k] * w1_[k], c2 += c_[k] * w2_[k];
        }
        slot_[s] = c;
        if constexpr (Tau) slot1_[s] = c1, slot2_[s] = c2;
    }
}

/// Σ over groups of P(δ)·exp(−δ^l), P a polynomial.
template <bool Tau>
template <int order>
void Isotherm<Tau>::add_powers(double const* powers, double const* damping, Value& v) const {
    for (Equation::Group const& group : equation_.groups) {
        V2 low{}, high{}, q{};  // values of Polynomial by pairs; the same for the τ-derivatives
        double r0 = 0.0;
        double const* factor = equation_.falling.data() + 4 * group.first;
        for (int s = group.first; s < group.last; ++s, factor += 4) {
            const double power = powers[equation_.slots[s].d], c = slot_[s] * power;
            const V2 one_d = load(factor);
            low += one_d * c;
            if constexpr (order >= 2) high += load(factor + 2) * c;
            if constexpr (Tau) {
                q += one_d * (slot1_[s] * power);
                r0 += slot2_[s] * power;
            }
        }
        const Polynomial p{low[0], low[1], high[0], high[1]};
        const double q0 = q[0], q1 = q[1];
        const double E = *damping++, power = powers[group.l];
        p.add_damped<order>(group.l, power, E, v.a, v.d1, v.d2, v.d3);
        if constexpr (Tau) {
            const double u = group.l == 0 ? 0.0 : group.l * power;
            v.t1 += q0 * E;
            v.t2 += r0 * E;
            v.dt += (q1 - u * q0) * E;
        }
    }
}

/// Σ c δ^d exp(h), h = ±η(δ−ε)² − g δ^l.
template <bool Tau>
template <int order>
void Isotherm<Tau>::add_shaped(double delta, double const* powers, double const* exponentials,
                               Value& v) const {
    Equation const& e = equation_;
    V2 a{}, d1{}, d2{}, d3{}, t1{}, t2{}, dt{};
    for (int s = 0; s < e.level0 - e.shaped0; s += 2) {
        const int k = e.shaped0 + s;
        const V2 power = {powers[e.dpower[s]], powers[e.dpower[s + 1]]};
        const V2 f = load(c_ + k) * load(exponentials + s) * power;
        a += f;
        V2 h1{}, h2{}, h3{};  // δ^k ∂^k h
        if constexpr (order >= 1) {
            const V2 twice = 2.0 * delta * load(e.sign.data() + s) * load(e.eta + s);
            h1 = twice * (delta - load(e.epsilon + s));
            if constexpr (order >= 2) h2 = twice * delta;
            if (e.damping) {
                const V2 l = load(e.l.data() + s);
                const V2 gl = {powers[e.lpower[s]], powers[e.lpower[s + 1]]};
                const V2 x = -load(e.g + s) * l * gl;
                h1 += x;
                if constexpr (order >= 2) h2 += (l - 1.0) * x;
                if constexpr (order >= 3) h3 = (l - 1.0) * (l - 2.0) * x;
            }
        }
        const V2 d = load(e.d.data() + k);
        const V2 f1 = d + h1, hh = h1 * h1 + h2, dd = d * (d - 1.0);
        if constexpr (order >= 1) d1 += f * f1;
        if constexpr (order >= 2) d2 += f * (dd + 2.0 * d * h1 + hh);
        if constexpr (order >= 3)
            d3 += f * (dd * (d - 2.0) + 3.0 * (dd * h1 + d * hh) + h1 * (h1 * h1 + 3.0 * h2) + h3);
        if constexpr (Tau) {
            const V2 w = f * load(w1_ + k);
            t1 += w;
            t2 += f * load(w2_ + k);
            dt += w * f1;
        }
    }
    v.a += sum(a);
    if constexpr (order >= 1) v.d1 += sum(d1);
    if constexpr (order >= 2) v.d2 += sum(d2);
    if constexpr (order >= 3) v.d3 += sum(d3);
    if constexpr (Tau) v.t1 += sum(t1), v.t2 += sum(t2), v.dt += sum(dt);
}

/// Σ c [exp(h(δ)) − exp(h(0))], h as before: zero density contributes nothing, so that α^r vanishes
/// there, and pairs n τ^t (exp(−g δ²) − 1), which publications print as two terms, do not cancel.
template <bool Tau>
template <int order>
void Isotherm<Tau>::add_level(double delta, double const* powers, Value& v) const {
    Equation const& e = equation_;
    for (int i = 0; i < e.levels; ++i) {
        const int k = e.level0 + i, s = k - e.shaped0;
        const double l = e.l[s], x = l == 0 ? 0.0 : e.g[s] * powers[e.lpower[s]];
        const double eta = -e.sign[s] * e.eta[s], epsilon = e.epsilon[s];
        double c = c_[k];
        if (eta != 0.0) c *= std::exp(-eta * epsilon * epsilon);
        const double rise = std::expm1(-eta * delta * (delta - 2.0 * epsilon) - x);
        v.a += c * rise;
        const double h1 = -2.0 * eta * delta * (delta - epsilon) - l * x;
        const double h2 = -2.0 * eta * delta * delta - l * (l - 1.0) * x;
        const double h3 = -l * (l - 1.0) * (l - 2.0) * x;
        const double f = c * (1.0 + rise);
        if constexpr (order >= 1) v.d1 += f * h1;
        if constexpr (order >= 2) v.d2 += f * (h1 * h1 + h2);
        if constexpr (order >= 3) v.d3 += f * (h1 * (h1 * h1 + 3.0 * h2) + h3);
        if constexpr (Tau) {
            v.t1 += c * rise * w1_[k];
            v.t2 += c * rise * w2_[k];
            v.dt += f * h1 * w1_[k];
        }
    }
}

template <bool Tau>
template <int order>
Value Isotherm<Tau>::at(double rho) const {
    Equation const& e = equation_;
    const double delta = rho * vs_;
    ++evaluations_;
    double powers[kMaxPower + 1];
    powers[0] = 1.0;
    powers[1] = delta;
    for (int i = 2; i <= e.highest; ++i) powers[i] = powers[i / 2] * powers[i - i / 2];

    // All exponentials of the density together: one per group of powers, one per shaped term.
    double exponential[2 * kFactored];
    const int groups = static_cast<int>(e.groups.size()), shaped = e.level0 - e.shaped0;
    double* const bell = exponential + padded(groups);
    for (int i = 0; i < groups; ++i)
        exponential[i] = e.groups[i].l == 0 ? 0.0 : -powers[e.groups[i].l];
    for (int i = groups; i < padded(groups); ++i) exponential[i] = 0.0;
    for (int s = 0; s < shaped; s += 2) {
        const V2 offset = delta - load(e.epsilon + s);
        V2 h = load(e.sign.data() + s) * load(e.eta + s) * (offset * offset);
        if (e.damping) {
            const V2 power = {powers[e.lpower[s]], powers[e.lpower[s + 1]]};
            h -= load(e.g + s) * power;
        }
        store(bell + s, h);
    }
    exp_in_place(exponential, padded(groups) + shaped);

    Value v;
    add_powers<order>(powers, exponential, v);
    if (shaped > 0) add_shaped<order>(delta, powers, bell, v);
    if (e.levels > 0) add_level<order>(delta, powers, v);
    for (auto const& term : e.nonanalytic) add_non_analytic(term, delta, tau_, order, Tau, v);
    for (auto const& term : e.association) add_association(term, delta, tau_, order, Tau, v);
    return v;
}

template class Isotherm<false>;
template class Isotherm<true>;
template Value Isotherm<false>::at<0>(double) const;
template Value Isotherm<false>::at<1>(double) const;
template Value Isotherm<false>::at<2>(double) const;
template Value Isotherm<false>::at<3>(double) const;
template Value Isotherm<true>::at<2>(double) const;

}  // namespace corvane::meos
