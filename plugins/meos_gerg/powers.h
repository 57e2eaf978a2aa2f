// The components of a mixture that are sums of powers of the same δ, as one sum.
#pragma once

#include <corvane/pure/model1.h>
#include <corvane/pure/power_series.h>
#include <plugins/common/power_sum.h>
#include <plugins/common/vector_exp.h>
#include <plugins/meos_gerg/departure.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace corvane::gerg {

/// Σ over l of P_l(δ)·exp(−δ^l) at one temperature and composition.
class Powers {
  public:
    /// Adds x times the component at T; false if it is no such sum, or one of higher powers.
    bool add(Model1 const& component, double T, double x) {
        auto const* const series = dynamic_cast<PowerSeries1 const*>(&component);
        if (!series) return false;
        auto const& powers = series->powers();
        double c[kL * kD];
        if (powers.empty() || powers.size() > std::size(c)) return false;
        for (PowerSeries1::Power const& p : powers)
            if (p.l >= kL || p.d >= kD) return false;
        series->factors(T, c);
        for (std::size_t k = 0; k < powers.size(); ++k) {
            const auto [l, d] = powers[k];
            c_[l][d] += x * c[k];
            top_[l] = std::max(top_[l], d);
        }
        any_ = true;
        return true;
    }
    /// Numbers that `exponents` writes, whole vectors; 0 without components.
    int size() const { return any_ ? lanes::padded(kL) : 0; }
    /// Exponents of exp(−δ^l), of which the caller takes the exponentials.
    void exponents(double const* delta, double* exponent) const {
        if (!any_) return;
        exponent[0] = 0.0;
        for (int l = 1; l < kL; ++l) exponent[l] = top_[l] > 0 ? -delta[l] : 0.0;
    }
    /// Adds δ^i·∂^i/∂δ^i, i = 0 … order, as Departure::add.
    /// @param delta  its powers  @param E  exp of what `exponents` wrote
    template <int order>
    void add_to(double const* delta, double const* E, Sums& sums) const {
        if (!any_) return;
        for (int l = 0; l < kL; ++l) {
            if (top_[l] == 0) continue;
            Polynomial p;
            for (int d = 1; d <= top_[l]; ++d) p.add<order>(d, c_[l][d] * delta[d]);
            p.add_damped<order>(l, delta[l], E[l], sums.d[0], sums.d[3], sums.d[6], sums.third);
        }
    }

  private:
    static constexpr int kL = 8, kD = 16;
    double c_[kL][kD] = {};
    int top_[kL] = {};  // highest d
    bool any_ = false;
};

}  // namespace corvane::gerg
