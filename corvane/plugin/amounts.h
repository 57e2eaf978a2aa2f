// Derivatives in the amounts of components, put together for the slots of a mixture.
//
// F = n·α(n/V, T, n_i/n) is differentiated in the amounts n_i at constant volume; an equation gives
// α with its derivatives in a few of them at a time.
#pragma once

#include <corvane/plugin/partials.h>
#include <corvane/plugin/small_array.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {

/// Total amount and mole fractions. An empty space gives equal traces, at which the limits of the
/// derivatives are taken.
struct Amounts {
    Amounts(double const* n_i, int size) : n(size), x(size) {
        for (int i = 0; i < size; ++i) total += n_i[i];
        empty = total == 0.0;
        if (empty) total = 1e-100;
        for (int i = 0; i < size; ++i) x[i] = empty ? 1.0 / size : n_i[i] / total;
    }
    int n;
    double total = 0.0;
    bool empty;
    SmallArray<double> x;
};

/// Directions first, first + 1 …, short of n; what is too many repeats the last.
template <int K>
std::array<int, K> block(int first, int n) {
    std::array<int, K> d;
    for (int k = 0; k < K; ++k) d[k] = std::min(first + k, n - 1);
    return d;
}

/// α, and its derivatives in all amounts over the total one, in blocks of four.
/// @param along  V(V(), std::array<int, K> directions): α with derivatives in these amounts
template <class B, class Along>
[[gnu::always_inline]] inline B gradient_in_blocks(int n, Along const& along, B* by) {
    B alpha = 0.0;
    auto write = [&](int first, auto const& a) {
        alpha = a.v;
        for (std::size_t k = 0; k < a.g.size(); ++k)
            by[std::min(first + static_cast<int>(k), n - 1)] = a.g[k];
    };
    if (n <= 2)
        write(0, along(Gradient<2, B>(), block<2>(0, n)));
    else
        for (int i = 0; i < n; i += 4) write(i, along(Gradient<4, B>(), block<4>(i, n)));
    return alpha;
}

/// The same with the second derivatives of pairs (i, j <= i), by blocks of two.
template <class Along>
double curvature_in_blocks(int n, Along const& along, double* by, double* by_two) {
    double alpha = 0.0;
    auto write = [&](auto const& a, auto const& d) {
        alpha = a.v;
        for (std::size_t k = 0; k < d.size(); ++k) {
            by[d[k]] = a.g[k];
            for (std::size_t l = 0; l <= k; ++l)
                by_two[std::max(d[k], d[l]) * n + std::min(d[k], d[l])] =
                    a.h[static_cast<std::size_t>(
                        a.index(static_cast<int>(k), static_cast<int>(l)))];
        }
    };
    if (n <= 2) {
        const auto d = block<2>(0, n);
        write(along(Curvature<2>(), d), d);
        return alpha;
    }
    for (int i = 0; i < n; i += 2)
        for (int j = i + 2; j < n; j += 2) {
            const auto a = block<2>(i, n), b = block<2>(j, n);
            const std::array<int, 4> d{a[0], a[1], b[0], b[1]};
            write(along(Curvature<4>(), d), d);
        }
    return alpha;
}

/// Residual potentials and what else IsothermN::potentials wants, from α and its derivatives.
/// @param slopes     whether those in T are wanted
/// @param gradient   double(double* by): α and its derivatives in all amounts
/// @param with_T     Jet<1>(Jet<1>* by): the same with slopes in T
/// @param curvature  double(double* by, double* by_two): with second derivatives (i, j <= i)
template <class First, class FirstT, class Second>
void write_potentials(Amounts const& n, bool slopes, First const& gradient, FirstT const& with_T,
                      Second const& curvature, double* mu, double* mu_T, double* mu_rho, double* P,
                      double* P_T) {
    const int N = n.n;
    SmallArray<Jet<1>> by(slopes ? N : 0);  // values and slopes in T, in one pass
    Jet<1> slope;
    if (slopes) slope = with_T(&by[0]);
    double alpha = slope(0);
    if (mu_rho)
        alpha = curvature(mu, mu_rho);
    else if (!slopes)
        alpha = gradient(mu);
    else
        for (int i = 0; i < N; ++i) mu[i] = by[i](0);
    if (mu_rho)
        for (int i = 0; i < N; ++i)
            for (int j = 0; j <= i; ++j)
                mu_rho[i * N + j] = mu_rho[j * N + i] =
                    (mu_rho[i * N + j] + (mu[i] + mu[j])) / n.total;
    double sum = 0.0;
    for (int i = 0; i < N; ++i) {
        sum += n.x[i] * mu[i];
        mu[i] = n.empty ? 0.0 : mu[i] + alpha;
    }
    if (P) *P = n.total * (1.0 + sum);  // n + Σ n_i·mu_i − F
    if (!slopes) return;
    sum = 0.0;
    for (int i = 0; i < N; ++i) {
        sum += n.x[i] * by[i](1);
        if (mu_T) mu_T[i] = n.empty ? 0.0 : slope(1) + by[i](1);
    }
    if (P_T) *P_T = n.total * sum;
}

}  // namespace corvane
