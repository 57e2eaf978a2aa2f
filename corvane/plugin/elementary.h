// Elementary functions of numbers that carry derivatives: of Jet, Gradient and Curvature alike.
//
// Such a type has a value(), an `order` and compose(), which takes the Taylor coefficients
// f⁽ⁿ⁾(v)/n! of a function of one variable; these are listed here, once. A formula writes log1p(y)
// with `using std::log1p` before it, and so holds for double, too.
#pragma once

#include <array>
#include <cmath>

namespace corvane {

/// A number with derivatives up to an order.
template <class J>
concept Differentiable = requires(J const& j) {
    j.value();
    J::order;
};

/// The plain number that a type stands for.
inline double value_of(double x) {
    return x;
}
template <Differentiable J>
double value_of(J const& x) {
    return value_of(x.value());
}

/// Taylor coefficients up to order N at v, a double or a number with derivatives of its own.
namespace taylor {

template <int N, class B>
[[gnu::always_inline]] inline std::array<B, N + 1> exp(B const& v, B const& value) {
    using std::exp;
    std::array<B, N + 1> c;
    const B f = exp(v);
    c[0] = value;
    double inverse = 1.0;
#pragma GCC unroll 8
    for (int n = 1; n <= N; ++n) c[n] = (inverse /= n) * f;
    return c;
}
/// Of ln(v + shift), whose value is given.
template <int N, class B>
[[gnu::always_inline]] inline std::array<B, N + 1> log(B const& v, B const& value) {
    std::array<B, N + 1> c;
    c[0] = value;
    const B r = 1.0 / v;
    B power = r;
#pragma GCC unroll 8
    for (int n = 1; n <= N; ++n) {
        c[n] = (n % 2 ? 1.0 : -1.0) / n * power;
        power = power * r;
    }
    return c;
}
/// Of v^p, whose value is given.
template <int N, class B>
[[gnu::always_inline]] inline std::array<B, N + 1> pow(B const& v, double p, B const& value) {
    std::array<B, N + 1> c;
    c[0] = value;
    const B r = 1.0 / v;
#pragma GCC unroll 8
    for (int n = 0; n < N; ++n) c[n + 1] = ((p - n) / (n + 1)) * (c[n] * r);
    return c;
}
/// From f' = 1 − f².
template <int N, class B>
[[gnu::always_inline]] inline std::array<B, N + 1> tanh(B const& value) {
    std::array<B, N + 1> c;
    c[0] = value;
    for (int n = 0; n < N; ++n) {
        B sum = n == 0 ? B(1.0) : B(0.0);
        for (int i = 0; i <= n; ++i) sum = sum - c[i] * c[n - i];
        c[n + 1] = (1.0 / (n + 1)) * sum;
    }
    return c;
}

}  // namespace taylor

template <Differentiable J>
[[gnu::always_inline]] inline J exp(J const& a) {
    using std::exp;
    return a.compose(taylor::exp<J::order>(a.value(), exp(a.value())));
}
template <Differentiable J>
[[gnu::always_inline]] inline J expm1(J const& a) {
    using std::expm1;
    return a.compose(taylor::exp<J::order>(a.value(), expm1(a.value())));
}
template <Differentiable J>
[[gnu::always_inline]] inline J log(J const& a) {
    using std::log;
    return a.compose(taylor::log<J::order>(a.value(), log(a.value())));
}
template <Differentiable J>
[[gnu::always_inline]] inline J log1p(J const& a) {
    using std::log1p;
    const auto v = a.value();
    return a.compose(taylor::log<J::order>(decltype(v + 1.0)(1.0 + v), log1p(v)));
}
template <Differentiable J>
[[gnu::always_inline]] inline J sqrt(J const& a) {
    using std::sqrt;
    return a.compose(taylor::pow<J::order>(a.value(), 0.5, sqrt(a.value())));
}
template <Differentiable J>
[[gnu::always_inline]] inline J cbrt(J const& a) {
    using std::cbrt;
    return a.compose(taylor::pow<J::order>(a.value(), 1.0 / 3.0, cbrt(a.value())));
}
template <Differentiable J>
[[gnu::always_inline]] inline J pow(J const& a, double p) {
    using std::pow;
    return a.compose(taylor::pow<J::order>(a.value(), p, pow(a.value(), p)));
}
template <Differentiable J>
[[gnu::always_inline]] inline J tanh(J const& a) {
    using std::tanh;
    return a.compose(taylor::tanh<J::order>(tanh(a.value())));
}
/// a^n by multiplication, for n >= 0: also at a = 0 and below.
template <class J>
J power(J a, int n) {
    J r(1.0);
    for (; n > 0; n >>= 1, a = a * a)
        if (n & 1) r = r * a;
    return r;
}

}  // namespace corvane
