// Truncated Taylor series in two variables: a scalar that carries its exact derivatives through any
// formula written for a generic number type.
//
// Jet<N, M> holds the coefficients c(i, j) of h^i·k^j for i + j <= N, j <= M. Seeded with
// rho·(1 + h) and T·(1 + k), the coefficients of a result f are
//     c(i, j) = rho^i·T^j·∂^(i+j)f/∂rho^i∂T^j / (i!·j!),
// exact to rounding, also where rho is 0. M = 0 is the series in h alone, Jet<N, M, 0> the one in k
// alone; with one another they make the series in both, at the cost of the terms that are there.
// Arithmetic on truncated series: Griewank & Walther, Evaluating Derivatives, 2nd ed. (2008),
// chapter 13.
#pragma once

#include <corvane/plugin/elementary.h>

#include <array>

namespace corvane {

/// H: highest power of h, N or 0.
template <int N, int M = 0, int H = N>
class Jet {
    static_assert(0 <= M && M <= N && (H == N || H == 0));

  public:
    static constexpr int size = H == 0 ? M + 1 : (M + 1) * (N + 1) - M * (M + 1) / 2;
    static constexpr bool in_one_variable = M == 0 || H == 0;

    constexpr Jet(double value = 0.0) : c_{} { c_[0] = value; }
    /// What depends on one variable alone.
    template <int A, int B>
    constexpr Jet(Jet<N, A, B> const& one)
        requires(M > 0 && H > 0 && ((A == M && B == 0) || (A == 0 && B == N)))
        : c_{} {
#pragma GCC unroll 8
        for (int n = 0; n < Jet<N, A, B>::size; ++n)
            c_[A > 0 ? index(0, n) : index(n, 0)] = A > 0 ? one(0, n) : one(n);
    }
    /// value·(1 + h) and value·(1 + k).
    static constexpr Jet along_h(double value) { return seed(value, index(1, 0)); }
    static constexpr Jet along_k(double value) { return seed(value, index(0, 1)); }

    /// value + h.
    static constexpr Jet variable(double value) {
        Jet r(value);
        r.c_[index(1, 0)] = 1.0;
        return r;
    }

    static constexpr int index(int i, int j) {
        return H == 0 ? j : j * (N + 1) - j * (j - 1) / 2 + i;
    }
    constexpr double operator()(int i, int j = 0) const { return c_[index(i, j)]; }
    constexpr double value() const { return c_[0]; }

    constexpr Jet& operator+=(Jet const& b) {
#pragma GCC unroll 16
        for (int n = 0; n < size; ++n) c_[n] += b.c_[n];
        return *this;
    }
    constexpr Jet& operator-=(Jet const& b) {
#pragma GCC unroll 16
        for (int n = 0; n < size; ++n) c_[n] -= b.c_[n];
        return *this;
    }
    constexpr Jet& operator*=(double b) {
#pragma GCC unroll 16
        for (int n = 0; n < size; ++n) c_[n] *= b;
        return *this;
    }
    constexpr Jet operator-() const {
        return Jet(*this) *= -1.0;
    }

    friend constexpr Jet operator+(Jet a, Jet const& b) {
        return a += b;
    }
    friend constexpr Jet operator-(Jet a, Jet const& b) {
        return a -= b;
    }
    friend constexpr Jet operator+(Jet a, double b) {
        return a.c_[0] += b, a;
    }
    friend constexpr Jet operator+(double a, Jet b) {
        return b.c_[0] += a, b;
    }
    friend constexpr Jet operator-(Jet a, double b) {
        return a.c_[0] -= b, a;
    }
    friend constexpr Jet operator-(double a, Jet const& b) {
        return a + (-b);
    }
    friend constexpr Jet operator*(Jet a, double b) {
        return a *= b;
    }
    friend constexpr Jet operator*(double a, Jet b) {
        return b *= a;
    }
    friend constexpr Jet operator/(Jet a, double b) {
        return a *= 1.0 / b;
    }
    friend constexpr Jet operator/(double a, Jet const& b) {
        return Jet(a) / b;
    }

    [[gnu::always_inline]] friend constexpr Jet operator*(Jet const& a, Jet const& b) {
        Jet r;
        if constexpr (in_one_variable) {
#pragma GCC unroll 8
            for (int n = 0; n < size; ++n) r.c_[n] = product(a, b, n);
        } else {
#pragma GCC unroll 8
            for (int j = 0; j <= M; ++j)
#pragma GCC unroll 8
                for (int i = 0; i <= N - j; ++i) r.c_[index(i, j)] = product(a, b, i, j);
        }
        return r;
    }
    /// From a = r·b, coefficient by coefficient.
    [[gnu::always_inline]] friend constexpr Jet operator/(Jet const& a, Jet const& b) {
        Jet r;
        const double inverse = 1.0 / b.c_[0];
        if constexpr (in_one_variable) {  // r's coefficient is still 0 in the sum
#pragma GCC unroll 8
            for (int n = 0; n < size; ++n) r.c_[n] = (a.c_[n] - product(r, b, n)) * inverse;
        } else {
#pragma GCC unroll 8
            for (int j = 0; j <= M; ++j)
#pragma GCC unroll 8
                for (int i = 0; i <= N - j; ++i)
                    r.c_[index(i, j)] = (a(i, j) - product(r, b, i, j)) * inverse;
        }
        return r;
    }

    static constexpr int order = N;
    /// Coefficient (i, j), to be written.
    constexpr double& at(int i, int j) { return c_[index(i, j)]; }

    /// Σ f[n]·v^n with v = *this − value: a function of this series from its own Taylor
    /// coefficients. Horner's scheme, without the products with the value of v, which is zero.
    [[gnu::always_inline]] constexpr Jet compose(std::array<double, N + 1> const& f) const {
        Jet r(f[0]);
        if constexpr (N > 0) {
            r = *this * f[N];
            r.c_[0] = f[N - 1];
#pragma GCC unroll 8
            for (int n = N - 2; n >= 0; --n) {
                Jet next(f[n]);
                if constexpr (in_one_variable) {
#pragma GCC unroll 8
                    for (int m = 1; m < size; ++m) next.c_[m] = product(r, *this, m, true);
                } else {
#pragma GCC unroll 8
                    for (int j = 0; j <= M; ++j)
#pragma GCC unroll 8
                        for (int i = j == 0 ? 1 : 0; i <= N - j; ++i)
                            next.c_[index(i, j)] = product(r, *this, i, j, true);
                }
                r = next;
            }
        }
        return r;
    }

  private:
    static constexpr Jet seed(double value, int n) {
        Jet r(value);
        r.c_[n] = value;
        return r;
    }
    /// Coefficient (i, j), or the n-th, of a·b; or without the value of b.
    [[gnu::always_inline]] static constexpr double product(Jet const& a, Jet const& b, int i, int j,
                                                           bool valueless = false) {
        double sum = 0.0;
#pragma GCC unroll 8
        for (int l = 0; l <= j; ++l)
#pragma GCC unroll 8
            for (int k = 0; k <= i; ++k)
                if (!(valueless && k == i && l == j))
                    sum += a.c_[index(k, l)] * b.c_[index(i - k, j - l)];
        return sum;
    }
    [[gnu::always_inline]] static constexpr double product(Jet const& a, Jet const& b, int n,
                                                           bool valueless = false) {
        double sum = 0.0;
#pragma GCC unroll 8
        for (int k = 0; k <= n; ++k)
            if (!(valueless && k == n)) sum += a.c_[k] * b.c_[n - k];
        return sum;
    }

    std::array<double, size> c_;
};

/// The series in both variables from those in one and in both.
template <int N, int M>
[[gnu::always_inline]] constexpr Jet<N, M> operator*(Jet<N, M, 0> const& k, Jet<N> const& h)
    requires(M > 0) {
    Jet<N, M> r;
#pragma GCC unroll 8
    for (int j = 0; j <= M; ++j)
#pragma GCC unroll 8
        for (int i = 0; i <= N - j; ++i) r.at(i, j) = h(i) * k(0, j);
    return r;
}
template <int N, int M>
[[gnu::always_inline]] constexpr Jet<N, M> operator*(Jet<N, M> const& a, Jet<N> const& h)
    requires(M > 0) {
    Jet<N, M> r;
#pragma GCC unroll 8
    for (int j = 0; j <= M; ++j)
#pragma GCC unroll 8
        for (int i = 0; i <= N - j; ++i) {
            double sum = 0.0;
#pragma GCC unroll 8
            for (int n = 0; n <= i; ++n) sum += a(i - n, j) * h(n);
            r.at(i, j) = sum;
        }
    return r;
}
template <int N, int M>
[[gnu::always_inline]] constexpr Jet<N, M> operator*(Jet<N, M> const& a, Jet<N, M, 0> const& k)
    requires(M > 0) {
    Jet<N, M> r;
#pragma GCC unroll 8
    for (int j = 0; j <= M; ++j)
#pragma GCC unroll 8
        for (int i = 0; i <= N - j; ++i) {
            double sum = 0.0;
#pragma GCC unroll 8
            for (int n = 0; n <= j; ++n) sum += a(i, j - n) * k(0, n);
            r.at(i, j) = sum;
        }
    return r;
}

template <int N, int M>
constexpr Jet<N, M> operator*(Jet<N> const& h, Jet<N, M, 0> const& k) requires(M > 0) {
    return k * h;
}
template <int N, int M>
constexpr Jet<N, M> operator*(Jet<N> const& h, Jet<N, M> const& a) requires(M > 0) {
    return a * h;
}
template <int N, int M>
constexpr Jet<N, M> operator*(Jet<N, M, 0> const& k, Jet<N, M> const& a) requires(M > 0) {
    return a * k;
}
template <int N, int M>
constexpr Jet<N, M> operator/(Jet<N, M> const& a, Jet<N> const& h) requires(M > 0) {
    return a * (1.0 / h);
}
template <int N, int M>
constexpr Jet<N, M> operator/(Jet<N, M> const& a, Jet<N, M, 0> const& k) requires(M > 0) {
    return a * (1.0 / k);
}
template <int N, int M>
constexpr Jet<N, M> operator/(Jet<N, M, 0> const& k, Jet<N> const& h) requires(M > 0) {
    return k * (1.0 / h);
}
template <int N, int M>
constexpr Jet<N, M> operator/(Jet<N> const& h, Jet<N, M, 0> const& k) requires(M > 0) {
    return (1.0 / k) * h;
}
template <int N, int M>
constexpr Jet<N, M> operator+(Jet<N, M, 0> const& k, Jet<N> const& h) requires(M > 0) {
    return Jet<N, M>(k) + h;
}
template <int N, int M>
constexpr Jet<N, M> operator+(Jet<N> const& h, Jet<N, M, 0> const& k) requires(M > 0) {
    return Jet<N, M>(k) + h;
}
template <int N, int M>
constexpr Jet<N, M> operator-(Jet<N, M, 0> const& k, Jet<N> const& h) requires(M > 0) {
    return Jet<N, M>(k) - h;
}
template <int N, int M>
constexpr Jet<N, M> operator-(Jet<N> const& h, Jet<N, M, 0> const& k) requires(M > 0) {
    return Jet<N, M>(h) - k;
}

}  // namespace corvane
