// Forward differentiation: a value with K partial derivatives.
#pragma once

#include "real.h"

namespace judge {

inline double log1minus(double x) { return std::log1p(-x); }
inline Long log1minus(Long x) { return std::log1p(-x); }
inline Quad log1minus(Quad x) { return log(1 - x); }

template <class Real, int K>
struct Dual {
    Real v = 0;
    std::array<Real, K> d{};

    Dual() = default;
    Dual(Real value) : v(value) {}
    Dual(int value) : v(value) {}

    /// f of value y, slope s.
    static Dual chain(Dual const& a, Real y, Real s) {
        Dual r(y);
        for (int k = 0; k < K; ++k) r.d[k] = s * a.d[k];
        return r;
    }
    static Dual chain(Dual const& a, Dual const& b, Real y, Real sa, Real sb) {
        Dual r(y);
        for (int k = 0; k < K; ++k) r.d[k] = sa * a.d[k] + sb * b.d[k];
        return r;
    }
    friend Dual operator+(Dual const& a, Dual const& b) { return chain(a, b, a.v + b.v, 1, 1); }
    friend Dual operator-(Dual const& a, Dual const& b) { return chain(a, b, a.v - b.v, 1, -1); }
    friend Dual operator*(Dual const& a, Dual const& b) {
        return chain(a, b, a.v * b.v, b.v, a.v);
    }
    friend Dual operator/(Dual const& a, Dual const& b) {
        return chain(a, b, a.v / b.v, 1 / b.v, -a.v / (b.v * b.v));
    }
    friend Dual operator+(Dual const& a, Real b) { return chain(a, a.v + b, 1); }
    friend Dual operator+(Real b, Dual const& a) { return chain(a, a.v + b, 1); }
    friend Dual operator-(Dual const& a, Real b) { return chain(a, a.v - b, 1); }
    friend Dual operator-(Real b, Dual const& a) { return chain(a, b - a.v, -1); }
    friend Dual operator*(Dual const& a, Real b) { return chain(a, a.v * b, b); }
    friend Dual operator*(Real b, Dual const& a) { return chain(a, a.v * b, b); }
    friend Dual operator/(Dual const& a, Real b) { return chain(a, a.v / b, 1 / b); }
    friend Dual operator/(Real b, Dual const& a) { return chain(a, b / a.v, -b / (a.v * a.v)); }
    Dual operator-() const { return chain(*this, -v, -1); }
    Dual& operator+=(Dual const& b) { return *this = *this + b; }
    friend Dual log(Dual const& a) {
        using std::log;
        return chain(a, log(a.v), 1 / a.v);
    }
    friend Dual log1minus(Dual const& a) { return chain(a, judge::log1minus(a.v), -1 / (1 - a.v)); }
};

}  // namespace judge
