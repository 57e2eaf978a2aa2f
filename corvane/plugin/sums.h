// Derivatives in many amounts at once.
//
// An equation depends on the composition through a few sums, such as Σ x_i·b_i. They and the
// density become the variables M_k of the numbers that go through its formula, while their own
// derivatives in the amounts are kept here; at the end
//
//     ∂α/∂n_i = Σ α_k·M_k,i,   ∂²α/∂n_i∂n_j = Σ α_k·M_k,ij + Σ Σ α_kl·M_k,i·M_l,j
//
// (the chain rule, as Michelsen & Mollerup, Thermodynamic Models (2007), ch. 3, do by hand). A sum
// whose terms depend on other sums is a variable of its own, too.
#pragma once

#include <corvane/plugin/partials.h>
#include <corvane/plugin/small_array.h>

#include <type_traits>

namespace corvane {

/// The variables of one evaluation. V is Gradient or Curvature with Variables::sums; amounts are
/// those of Fractions, with total 1 + Σ h.
template <class V>
class Sums;

template <class V>
requires is_by_sums<V>
class Sums<V> {
    using B = typename V::Base;
    static constexpr int K = V::variables;
    static constexpr bool second = V::order > 1;

  public:
    /// The density is the first variable: `total` times 1 + Σ h.
    Sums(int n, double total)
        : density_(total), n_(n), slope_(K * n), curvature_(second ? K * n * n : 0) {
        for (int i = 0; i < n; ++i) slope_[i] = total;
        for (int i = 0; second && i < n * n; ++i) curvature_[i] = 0.0;
        density_.g[0] = 1.0;
    }
    V const& density() const { return density_; }
    /// More sums than variables: the result is worth nothing.
    bool overflow() const { return overflow_; }

    /// Σ x_i·f(i).
    template <class F>
    V linear(double const* x, int n, F const& f) {
        const int q = next();
        using Value = std::decay_t<decltype(f(0))>;
        if constexpr (std::is_same_v<Value, V>) {
            return nested(q, x, f);
        } else {
            SmallArray<B> of(n);
            B total = 0.0;
            for (int i = 0; i < n; ++i) total += x[i] * (of[i] = f(i));
            for (int i = 0; i < n; ++i) slope_[q * n + i] = of[i] - total;
            if constexpr (second)
                for (int i = 0; i < n; ++i)
                    for (int j = 0; j <= i; ++j) curvature(q, i, j) = 2.0 * total - of[i] - of[j];
            return variable(q, total);
        }
    }
    /// Σ Σ x_i·x_j·f(i, j).
    template <class F>
    V quadratic(double const* x, int n, F const& f) {
        const int q = next();
        SmallArray<B> twice(n);
        B total = 0.0;
        for (int i = 0; i < n; ++i) twice[i] = 0.0;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j) {
                const B of = f(i, j);
                twice[i] += 2.0 * x[j] * of;
                if (i != j) twice[j] += 2.0 * x[i] * of;
                if constexpr (second) curvature(q, i, j) = 2.0 * of;
            }
        for (int i = 0; i < n; ++i) total += (0.5 * x[i]) * twice[i];
        for (int i = 0; i < n; ++i) slope_[q * n + i] = twice[i] - 2.0 * total;
        if constexpr (second)
            for (int i = 0; i < n; ++i)
                for (int j = 0; j <= i; ++j)
                    curvature(q, i, j) += 6.0 * total - 2.0 * (twice[i] + twice[j]);
        return variable(q, total);
    }

    /// ∂a/∂n_i of all components, and the second derivatives, row by row.
    void chain(V const& a, B* by_amount, double* by_amounts) const {
        for (int i = 0; i < n_; ++i) {
            B sum = 0.0;
            for (int k = 0; k < count_; ++k) sum += a.g[k] * slope_[k * n_ + i];
            by_amount[i] = sum;
        }
        if constexpr (second) {
            for (int i = 0; i < n_; ++i)
                for (int j = 0; j <= i; ++j) by_amounts[i * n_ + j] = 0.0;
            for (int k = 0; k < count_; ++k) add_second(k, a.g[k], a.h, by_amounts);
        }
    }

  private:
    int next() {
        if (count_ == K) overflow_ = true;
        return overflow_ ? K - 1 : count_++;
    }
    static V variable(int q, B const& value) {
        V v(value);
        v.g[q] = 1.0;
        return v;
    }
    double& curvature(int q, int i, int j) { return curvature_[(q * n_ + i) * n_ + j]; }
    /// `by_amounts` += slope·M_k,ij + Σ_l h_kl·M_k,i·M_l,j, for j <= i.
    template <class H>
    void add_second(int k, double slope, H const& h, double* by_amounts) const {
        SmallArray<double> w(n_);
        for (int j = 0; j < n_; ++j) {
            w[j] = 0.0;
            for (int l = 0; l < count_; ++l)
                w[j] += h[k > l ? V::index(k, l) : V::index(l, k)] * slope_[l * n_ + j];
        }
        for (int i = 0; i < n_; ++i)
            for (int j = 0; j <= i; ++j)
                by_amounts[i * n_ + j] +=
                    slope * curvature_[(k * n_ + i) * n_ + j] + slope_[k * n_ + i] * w[j];
    }
    /// Σ x_i·f(i) of terms that depend on the variables before q.
    template <class F>
    V nested(int q, double const* x, F const& f) {
        V total(B(0.0));
        SmallArray<B> value(n_), s(n_);
        SmallArray<B, 128> slope(q * n_);
        for (int i = 0; i < n_; ++i) {
            const V of = f(i);
            total += x[i] * of;
            value[i] = of.v;
            for (int k = 0; k < q; ++k) slope[k * n_ + i] = of.g[k];
        }
        SmallArray<double, 576> ss(second ? n_ * n_ : 0);
        const int before = count_;
        count_ = q;  // only those have slopes yet
        chain(total, &s[0], &ss[0]);
        for (int i = 0; i < n_; ++i) s[i] += value[i];
        if constexpr (second) {
            for (int i = 0; i < n_; ++i)
                for (int j = 0; j <= i; ++j) {
                    double cross = ss[i * n_ + j];
                    for (int k = 0; k < q; ++k)
                        cross += slope[k * n_ + i] * slope_[k * n_ + j] +
                                 slope[k * n_ + j] * slope_[k * n_ + i];
                    curvature(q, i, j) = cross + 2.0 * total.v - s[i] - s[j];
                }
        }
        count_ = before;
        for (int i = 0; i < n_; ++i) slope_[q * n_ + i] = s[i] - total.v;
        return variable(q, total.v);
    }

    V density_;
    int n_, count_ = 1;
    bool overflow_ = false;
    SmallArray<B, 128> slope_;           // M_k,i
    SmallArray<double, 512> curvature_;  // M_k,ij, j <= i
};
/// For types without: never made.
template <class V>
class Sums {};

}  // namespace corvane
