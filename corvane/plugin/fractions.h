// Mole fractions as an equation sees them, with the sums that mixing rules are made of.
#pragma once

#include <corvane/plugin/partials.h>

#include <array>
#include <type_traits>

namespace corvane {

template <class V>
class Sums;  // sums.h

/// Parameters as they stand in the model, for equations that are written in one function.
struct RawParameters {
    double const* of = nullptr;  ///< of component i from i·count on
    int count = 0;
    double const* pairs =
        nullptr;  ///< of the pair (i, j), i >= j, from (i(i+1)/2 + j)·pair_count on
    int pair_count = 0;
};

/// n mole fractions of type X: double, a Jet (constants then), or Gradient and Curvature, which
/// carry the derivatives in K amounts: with the total amount 1 + Σ h_k and the amount x_i + h_k of
/// component i = direction k, a fraction is (x_i + h_k)/(1 + Σ h). A pure fluid has one, 1.
///
/// The sums know that such numbers are sparse; they cost no more than their value and its
/// derivatives have terms. Write mixing rules with them, not with operator[].
template <class X>
class Fractions {
  public:
    static constexpr bool by_sums = is_by_sums<X>;
    static constexpr int directions = [] {
        if constexpr (Partials<X>)
            if (!by_sums) return X::variables;
        return 0;
    }();

    Fractions(double const* x, int n, RawParameters raw = {}) : x_(x), n_(n), raw_(raw) {}
    Fractions(double const* x, int n, std::array<int, directions> const& direction,
              RawParameters raw = {})
        : x_(x), n_(n), raw_(raw), direction_(direction) {}
    /// In many amounts at once, by way of the sums.
    Fractions(double const* x, int n, Sums<X>* sums, RawParameters raw = {})
        : x_(x), n_(n), raw_(raw), sums_(sums) {}
    /// The same with the parameters, or as another type.
    template <class Y>
    Fractions<Y> as(RawParameters raw) const {
        if constexpr (std::is_same_v<X, Y> && by_sums)
            return {x_, n_, sums_, raw};
        else if constexpr (std::is_same_v<X, Y> && directions > 0)
            return {x_, n_, direction_, raw};
        else
            return {x_, n_, raw};
    }

    int size() const { return n_; }
    X operator[](int i) const {
        if constexpr (directions == 0 && !by_sums)
            return X(x_[i]);
        else
            return sum([&](int j) { return j == i ? 1.0 : 0.0; });
    }
    /// Parameter k of component i, and of the pair (i, j).
    double par(int i, int k) const { return raw_.of[i * raw_.count + k]; }
    double pair(int i, int j, int k) const {
        return raw_
            .pairs[(i > j ? i * (i + 1) / 2 + j : j * (j + 1) / 2 + i) * raw_.pair_count + k];
    }

    /// Σ x_i·f(i). f returns what does not depend on the composition, or a number of type X.
    template <class F>
    auto sum(F const& f) const {
        using Value = std::decay_t<decltype(f(0))>;
        if constexpr (by_sums) {
            return sums_->linear(x_, n_, f);
        } else if constexpr (directions == 0) {
            Value s = x_[0] * f(0);
            for (int i = 1; i < n_; ++i) s += x_[i] * f(i);
            return s;
        } else {
            X s;
            if constexpr (std::is_same_v<Value, X>) {
                for (int i = 0; i < n_; ++i) add(s, i, f(i));
            } else {
                for (int i = 0; i < n_; ++i) s.v += x_[i] * f(i);
                for (int k = 0; k < directions; ++k) s.g[k] = f(direction_[k]);
            }
            return per_amount<1>(s);
        }
    }
    /// Σ Σ x_i·x_j·f(i, j) of a symmetric f that does not depend on the composition.
    template <class F>
    auto sum2(F const& f) const {
        using Value = std::decay_t<decltype(f(0, 0))>;
        if constexpr (by_sums) {
            return sums_->quadratic(x_, n_, f);
        } else if constexpr (directions == 0) {
            Value s = x_[0] * x_[0] * f(0, 0);
            for (int i = 1; i < n_; ++i) {
                Value row = (0.5 * x_[i]) * f(i, i);
                for (int j = 0; j < i; ++j) row += x_[j] * f(i, j);
                s += (2.0 * x_[i]) * row;
            }
            return s;
        } else {
            X s;
            for (int i = 0; i < n_; ++i) {
                typename X::Base row = x_[0] * f(i, 0);
                for (int j = 1; j < n_; ++j) row += x_[j] * f(i, j);
                s.v += x_[i] * row;
                for (int k = 0; k < directions; ++k)
                    if (direction_[k] == i) s.g[k] = 2.0 * row;
            }
            if constexpr (X::order > 1)
                for (int k = 0; k < directions; ++k)
                    for (int l = 0; l <= k; ++l)
                        s.h[X::index(k, l)] = 2.0 * f(direction_[k], direction_[l]);
            return per_amount<2>(s);
        }
    }

  private:
    /// s += (x_i + h_k)·f.
    void add(X& s, int i, X const& f) const {
        s += x_[i] * f;
        for (int k = 0; k < directions; ++k) {
            if (direction_[k] != i) continue;
            s.g[k] += f.v;
            if constexpr (X::order > 1) {
                for (int l = 0; l < directions; ++l)
                    s.h[k > l ? X::index(k, l) : X::index(l, k)] += (k == l ? 2.0 : 1.0) * f.g[l];
            }
        }
    }
    /// s·(1 + Σ h)^(−Power).
    template <int Power>
    static X per_amount(X const& s) {
        constexpr double p = Power, pp = Power * (Power + 1);
        X r(s.v);
        for (int k = 0; k < directions; ++k) r.g[k] = s.g[k] - p * s.v;
        if constexpr (X::order > 1)
            for (int k = 0; k < directions; ++k)
                for (int l = 0; l <= k; ++l)
                    r.h[X::index(k, l)] = s.h[X::index(k, l)] + pp * s.v - p * (s.g[k] + s.g[l]);
        return r;
    }

    double const* x_;
    int n_;
    RawParameters raw_;
    std::array<int, directions> direction_{};  // component of each; one may occur twice
    Sums<X>* sums_ = nullptr;
};

}  // namespace corvane
