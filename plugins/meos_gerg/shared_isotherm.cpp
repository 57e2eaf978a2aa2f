// The terms at one temperature: polynomials of δ by groups, and the terms with a shape one by one.
#include <corvane/core/lanes.h>
#include <plugins/common/power_sum.h>
#include <plugins/meos_gerg/shared_terms.h>

#include <algorithm>
#include <cmath>

namespace corvane::gerg {

using lanes::gather, lanes::get, lanes::put, lanes::total;
using lanes::padded;
using lanes::V4;

SharedTerms::Isotherm::Isotherm(SharedTerms const& terms, double const* c, double tau)
    : s_(terms),
      c_(c),
      tau_(tau),
      room_(s_.terms() - s_.series_ + 4),
      slot_(s_.slots_),
      shape_(columns * room_),
      power_(room_) {
    const int size = s_.terms();
    const double ln_tau = std::log(tau);
    SmallArray<double, 400> factors(size + 4);
    double* const E = &factors[0];
    for (int k = 0; k < size; k += 2) {
        const lanes::V2 offset = tau - lanes::load(s_.c_.data() + k);
        lanes::store(E + k, lanes::load(s_.t_.data() + k) * ln_tau -
                                lanes::load(s_.b_.data() + k) * offset * offset);
    }
    lanes::exp_in_place(E, size);
    for (int s = 0; s < s_.slots_; ++s) slot_[s] = 0.0;
    for (int k = 0; k < s_.series_; ++k)
        if (c[k] != 0.0) slot_[s_.slot_of_[static_cast<unsigned>(k)]] += c[k] * E[k];
    for (int k = s_.series_; k < size; ++k) {
        if (c[k] == 0.0) continue;
        const unsigned i = static_cast<unsigned>(k);
        const int to = shaped_++;
        column(factor)[to] = c[k] * E[k];
        column(power)[to] = s_.d_[i], power_[to] = s_.dpower_[i];
        column(eta)[to] = s_.eta_[i], column(epsilon)[to] = s_.epsilon_[i];
        column(beta)[to] = s_.beta_[i], column(gamma)[to] = s_.gamma_[i];
    }
    for (; shaped_ != padded(shaped_); ++shaped_) {
        for (int k = 0; k < columns; ++k) column(k)[shaped_] = 0.0;
        power_[shaped_] = 0;
    }
}

/// Polynomials of δ by degrees, four of them at once.
template <int order>
[[gnu::always_inline]] inline void SharedTerms::Isotherm::powers_in_lanes(double const* powers,
                                                                          double const* decay,
                                                                          Sums& sums) const {
    for (Group const& group : s_.groups_) {
        V4 p0{}, p1{}, p2{}, p3{}, c{}, x{}, d{1.0, 2.0, 3.0, 4.0};
        double const* const factors = &slot_[group.first];
        for (int k = 0; k < group.size; k += 4, d += 4.0) {
            get(c, factors + k), get(x, powers + 1 + k);
            c *= x;
            p0 += c;
            if constexpr (order >= 1) c *= d, p1 += c;
            if constexpr (order >= 2) c *= d - 1.0, p2 += c;
            if constexpr (order >= 3) c *= d - 2.0, p3 += c;
        }
        Polynomial p;
        p.p0 = total(p0), p.p1 = total(p1), p.p2 = total(p2), p.p3 = total(p3);
        p.add_damped<order>(group.l, powers[group.l], *decay++, sums.d[0], sums.d[3], sums.d[6],
                            sums.third);
    }
}
/// @param E  exp of the shaped terms
template <int order>
[[gnu::always_inline]] inline void SharedTerms::Isotherm::shapes_in_lanes(double delta,
                                                                          double const* powers,
                                                                          double const* E,
                                                                          Sums& sums) const {
    V4 x{}, y{}, e{}, f{}, d{};
    V4 a{}, d1{}, d2{}, d3{};
    for (int k = 0; k < shaped_; k += 4) {
        get(f, column(factor) + k), get(e, E + k), gather(x, powers, &power_[k]);
        f = f * e * x;
        a += f;
        if constexpr (order >= 1) {
            get(d, column(power) + k), get(x, column(eta) + k), get(y, column(epsilon) + k);
            const V4 h2 = -2.0 * delta * delta * x;
            V4 h = 2.0 * x * y;
            get(y, column(beta) + k);
            h = h2 + (h - y) * delta;
            d1 += f * (d + h);
            const V4 dd = d * (d - 1.0), hh = h * h + h2;
            if constexpr (order >= 2) d2 += f * (dd + 2.0 * d * h + hh);
            if constexpr (order >= 3)
                d3 += f * (dd * (d - 2.0) + 3.0 * (dd * h + d * hh) + h * (h * h + 3.0 * h2));
        }
    }
    sums.d[0] += total(a), sums.d[3] += total(d1), sums.d[6] += total(d2), sums.third += total(d3);
}
/// All exponentials of the density together.
template <int order>
[[gnu::always_inline]] inline void SharedTerms::Isotherm::add_in_lanes(double delta,
                                                                       Sums& sums) const {
    double powers[kMaxPower + 1];
    powers_of(delta, s_.top_, powers);
    const int groups = static_cast<int>(s_.groups_.size());
    SmallArray<double, 192> E(padded(groups) + shaped_);
    for (int g = 0; g < padded(groups); ++g) {
        const int l = g < groups ? s_.groups_[static_cast<unsigned>(g)].l : 0;
        E[g] = l > 0 ? -powers[l] : 0.0;
    }
    V4 x{}, y{}, e{};
    double* const shapes = &E[0] + padded(groups);
    for (int k = 0; k < shaped_; k += 4) {
        get(x, column(epsilon) + k), get(y, column(eta) + k);
        e = -y * (delta - x) * (delta - x);
        get(x, column(gamma) + k), get(y, column(beta) + k);
        put(shapes + k, e - y * (delta - x));
    }
    lanes::exp_lanes<V4, lanes::I4>(&E[0], padded(groups) + shaped_);
    powers_in_lanes<order>(powers, &E[0], sums);
    if (shaped_ > 0) shapes_in_lanes<order>(delta, powers, shapes, sums);
}
template <int order>
void SharedTerms::Isotherm::add_narrow(double delta, Sums& sums) const {
    add_in_lanes<order>(delta, sums);
}
#if defined(__x86_64__)
template <int order>
[[gnu::target("avx2")]] void SharedTerms::Isotherm::add_wide(double delta, Sums& sums) const {
    add_in_lanes<order>(delta, sums);
}
#endif

template <int order>
void SharedTerms::Isotherm::add(double delta, Sums& sums) const {
#if defined(__x86_64__)
    if (lanes::wide)
        add_wide<order>(delta, sums);
    else
#endif
        add_narrow<order>(delta, sums);
    for (unsigned k = 0; k < s_.levels_.size(); ++k)
        s_.levels_[k].add(c_[static_cast<unsigned>(s_.terms()) + k], delta, tau_,
                          std::max(order, 1), sums);
}
template void SharedTerms::Isotherm::add<0>(double, Sums&) const;
template void SharedTerms::Isotherm::add<1>(double, Sums&) const;
template void SharedTerms::Isotherm::add<2>(double, Sums&) const;
template void SharedTerms::Isotherm::add<3>(double, Sums&) const;

}  // namespace corvane::gerg
