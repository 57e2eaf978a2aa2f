// Numbers that carry their partial derivatives in K variables: Gradient the first ones, Curvature
// the first and the second. A truncated series in many variables, as Jet is one in two (Griewank &
// Walther, Evaluating Derivatives, 2nd ed. (2008), chapters 3 and 13).
#pragma once

#include <corvane/plugin/elementary.h>
#include <corvane/plugin/jet.h>

#include <array>
#include <concepts>

namespace corvane {

/// What the variables are: amounts of components, or the sums over the composition (sums.h).
enum class Variables { amounts, sums };

/// A value of type B and its K first derivatives. B is double, or a Jet that carries derivatives in
/// another variable.
template <int K, class B = double, Variables Of = Variables::amounts>
struct Gradient {
    static constexpr int order = 1, variables = K;
    static constexpr Variables of = Of;
    using Base = B;

    B v;
    std::array<B, K> g;

    Gradient(B const& value = B(0.0)) : v(value) { g.fill(B(0.0)); }
    Gradient(double value) requires(!std::same_as<B, double>) : Gradient(B(value)) {}
    B const& value() const { return v; }
    [[gnu::always_inline]] Gradient compose(std::array<B, 2> const& f) const {
        Gradient r(f[0]);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) r.g[k] = f[1] * g[k];
        return r;
    }

    Gradient& operator+=(Gradient const& b) {
        v += b.v;
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) g[k] += b.g[k];
        return *this;
    }
    Gradient& operator-=(Gradient const& b) {
        v -= b.v;
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) g[k] -= b.g[k];
        return *this;
    }
    [[gnu::always_inline]] friend Gradient operator*(Gradient const& a, Gradient const& b) {
        Gradient r(a.v * b.v);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) r.g[k] = a.v * b.g[k] + a.g[k] * b.v;
        return r;
    }
    [[gnu::always_inline]] friend Gradient operator/(Gradient const& a, Gradient const& b) {
        const B inverse = 1.0 / b.v;
        Gradient r(a.v * inverse);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) r.g[k] = (a.g[k] - r.v * b.g[k]) * inverse;
        return r;
    }
    /// Every coefficient times the same number.
    template <class Number>
    Gradient scaled(Number const& s) const {
        Gradient r(v * s);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) r.g[k] = g[k] * s;
        return r;
    }
};

/// A value with its K first and K(K+1)/2 second derivatives.
template <int K, Variables Of = Variables::amounts>
struct Curvature {
    static constexpr int order = 2, variables = K;
    static constexpr Variables of = Of;
    using Base = double;
    static constexpr int index(int k, int l) { return k * (k + 1) / 2 + l; }  // l <= k

    double v;
    std::array<double, K> g{};
    std::array<double, K*(K + 1) / 2> h{};

    Curvature(double value = 0.0) : v(value) {}
    double value() const { return v; }
    [[gnu::always_inline]] Curvature compose(std::array<double, 3> const& f) const {
        Curvature r(f[0]);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) {
            r.g[k] = f[1] * g[k];
            const double twice = 2.0 * f[2] * g[k];
#pragma GCC unroll 4
            for (int l = 0; l <= k; ++l) r.h[index(k, l)] = f[1] * h[index(k, l)] + twice * g[l];
        }
        return r;
    }

    Curvature& operator+=(Curvature const& b) {
        return add(b, 1.0);
    }
    Curvature& operator-=(Curvature const& b) {
        return add(b, -1.0);
    }
    [[gnu::always_inline]] friend Curvature operator*(Curvature const& a, Curvature const& b) {
        Curvature r(a.v * b.v);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) {
            r.g[k] = a.v * b.g[k] + a.g[k] * b.v;
#pragma GCC unroll 4
            for (int l = 0; l <= k; ++l)
                r.h[index(k, l)] = a.v * b.h[index(k, l)] + a.h[index(k, l)] * b.v +
                                   a.g[k] * b.g[l] + a.g[l] * b.g[k];
        }
        return r;
    }
    [[gnu::always_inline]] friend Curvature operator/(Curvature const& a,
                                                      Curvature const& b) {  // from a = r·b
        const double inverse = 1.0 / b.v;
        Curvature r(a.v * inverse);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) {
            r.g[k] = (a.g[k] - r.v * b.g[k]) * inverse;
#pragma GCC unroll 4
            for (int l = 0; l <= k; ++l)
                r.h[index(k, l)] = (a.h[index(k, l)] - r.v * b.h[index(k, l)] - r.g[k] * b.g[l] -
                                    r.g[l] * b.g[k]) *
                                   inverse;
        }
        return r;
    }
    Curvature scaled(double s) const {
        Curvature r(v * s);
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) r.g[k] = g[k] * s;
#pragma GCC unroll 10
        for (int n = 0; n < K * (K + 1) / 2; ++n) r.h[n] = h[n] * s;
        return r;
    }

  private:
    Curvature& add(Curvature const& b, double sign) {
        v += sign * b.v;
#pragma GCC unroll 4
        for (int k = 0; k < K; ++k) g[k] += sign * b.g[k];
#pragma GCC unroll 10
        for (int n = 0; n < K * (K + 1) / 2; ++n) h[n] += sign * b.h[n];
        return *this;
    }
};

template <class P>
concept Partials = Differentiable<P> && requires {
    typename P::Base;
    P::variables;
};
template <class X>
inline constexpr bool is_by_sums = [] {
    if constexpr (Partials<X>) return X::of == Variables::sums;
    return false;
}();

/// What a partial may be combined with besides its like: its base type, and numbers.
template <class S, class P>
concept ScalarOf = std::convertible_to<S, double> || std::same_as<S, typename P::Base>;

template <Partials P>
P operator-(P const& a) {
    return a.scaled(-1.0);
}
template <Partials P>
P operator+(P a, P const& b) {
    return a += b;
}
template <Partials P>
P operator-(P a, P const& b) {
    return a -= b;
}
template <Partials P, ScalarOf<P> S>
P operator+(P a, S const& b) {
    return a.v += b, a;
}
template <Partials P, ScalarOf<P> S>
P operator+(S const& a, P b) {
    return b.v += a, b;
}
template <Partials P, ScalarOf<P> S>
P operator-(P a, S const& b) {
    return a.v -= b, a;
}
template <Partials P, ScalarOf<P> S>
P operator-(S const& a, P const& b) {
    return a + (-b);
}
template <Partials P, ScalarOf<P> S>
P operator*(P const& a, S const& b) {
    return a.scaled(b);
}
template <Partials P, ScalarOf<P> S>
P operator*(S const& a, P const& b) {
    return b.scaled(a);
}
template <Partials P, ScalarOf<P> S>
P operator/(P const& a, S const& b) {
    return a.scaled(1.0 / b);
}
template <Partials P, ScalarOf<P> S>
P operator/(S const& a, P const& b) {
    return P(typename P::Base(a)) / b;
}
template <Partials P>
P& operator*=(P& a, auto const& b) {
    return a = a * b;
}
template <Partials P>
P& operator/=(P& a, auto const& b) {
    return a = a / b;
}

}  // namespace corvane
