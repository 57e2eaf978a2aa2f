// Polynomials of the pieces of a saturation curve. Internal to the library.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace corvane::inline detail {

/// √(Tc/T − 1), without cancellation next to Tc.
inline double saturation_z(double Tc, double T) noexcept {
    return std::sqrt((Tc - T) / T);
}

/// Two numbers for one instruction, where the machine has such.
using TwoDoubles [[gnu::vector_size(16)]] = double;

/// Values at x of the three polynomials whose coefficients stand in rows of four, by Horner's
/// scheme for even and odd powers apart.
template <std::size_t n>
void evaluate(std::array<std::array<double, 4>, n> const& a, double x, double* values) noexcept {
    static_assert(n % 2 == 0);
    const auto row = [&](std::size_t k, int i) { return TwoDoubles{a[k][i], a[k][i + 1]}; };
    const TwoDoubles s = {x * x, x * x}, xx = {x, x};
    TwoDoubles even = row(n - 2, 0), odd = row(n - 1, 0);
    TwoDoubles even_p = row(n - 2, 2), odd_p = row(n - 1, 2);
    for (std::size_t k = n - 2; k >= 2; k -= 2) {
        even = even * s + row(k - 2, 0);
        odd = odd * s + row(k - 1, 0);
        even_p = even_p * s + row(k - 2, 2);
        odd_p = odd_p * s + row(k - 1, 2);
    }
    const TwoDoubles densities = even + xx * odd, p = even_p + xx * odd_p;
    values[0] = densities[0];
    values[1] = densities[1];
    values[2] = p[0];
}

inline double polynomial(int n, double const* a, double x) noexcept {
    double sum = 0.0;
    for (int k = n - 1; k >= 0; --k) sum = sum * x + a[k];
    return sum;
}
inline double polynomial_slope(int n, double const* a, double x) noexcept {
    double sum = 0.0;
    for (int k = n - 1; k >= 1; --k) sum = sum * x + k * a[k];
    return sum;
}

/// cos(π·i/(2n)) for i = 0 … 4n − 1: all that the nodes and their polynomials need.
template <int n>
std::array<double, 4 * n> const& chebyshev_cosines() {
    static const std::array<double, 4 * n> table = [] {
        std::array<double, 4 * n> t;
        for (int i = 0; i < 4 * n; ++i)
            t[i] = static_cast<double>(std::cos(std::numbers::pi_v<long double> * i / (2 * n)));
        return t;
    }();
    return table;
}
/// The k-th of n nodes, cos(π(k + ½)/n).
template <int n>
double chebyshev_node(int k) {
    return chebyshev_cosines<n>()[2 * k + 1];
}
/// Lagrange's polynomials at x, the k-th of which is 1 at the k-th node and 0 at the others:
/// T_n(x)/[(x − x_k)·T_n'(x_k)].
template <int n>
std::array<double, n> chebyshev_cardinals(double x) {
    const double whole = std::cos(n * std::acos(x > 1.0 ? 1.0 : x < -1.0 ? -1.0 : x));
    std::array<double, n> l{};
    for (int k = 0; k < n; ++k) {
        const double at = chebyshev_node<n>(k), off = x - at;
        if (std::fabs(off) < 1e-9) {
            l.fill(0.0);
            l[k] = 1.0;
            return l;
        }
        l[k] = whole * std::sqrt(1.0 - at * at) / (off * (k % 2 ? -n : n));
    }
    return l;
}
/// Coefficients of the Chebyshev polynomials from values at the n nodes.
template <int n>
void chebyshev_coefficients(double const* f, double* c) {
    auto const& cosine = chebyshev_cosines<n>();
    for (int j = 0; j < n; ++j) {
        long double sum = 0.0L;
        for (int k = 0; k < n; ++k)
            sum += static_cast<long double>(f[k]) * cosine[j * (2 * k + 1) % (4 * n)];
        c[j] = static_cast<double>(sum * (j == 0 ? 1.0L : 2.0L) / n);
    }
}

/// The same polynomial by powers of x. n at most 16.
inline void monomials(int n, double const* c, double* a) {
    long double sum[16] = {}, last[16] = {1.0L}, now[16] = {0.0L, 1.0L};
    for (int j = 0; j < n; ++j) {  // `last` is the j-th Chebyshev polynomial
        for (int k = 0; k <= j; ++k) sum[k] += c[j] * last[k];
        long double next[16] = {};
        for (int k = 0; k < 16; ++k) next[k] = (k > 0 ? 2.0L * now[k - 1] : 0.0L) - last[k];
        for (int k = 0; k < 16; ++k) last[k] = now[k], now[k] = next[k];
    }
    for (int k = 0; k < n; ++k) a[k] = static_cast<double>(sum[k]);
}

/// Pressures between two ends by w in −1 … 1, in which the logarithm of p is nearly linear:
/// w ~ (p − m)/(p + m), m = √(p_from·p_to). w = −1 is p_from.
inline double pressure_w(double p_from, double p_to, double p) noexcept {
    const double m = std::sqrt(p_from * p_to);
    return (m - p) / (m + p) * (p_from + m) / (p_from - m);
}
inline double pressure_at(double p_from, double p_to, double w) noexcept {
    const double m = std::sqrt(p_from * p_to), v = w * (p_from - m) / (p_from + m);
    return m * (1.0 - v) / (1.0 + v);
}

}  // namespace corvane::inline detail
