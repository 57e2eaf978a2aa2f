// Departure functions: what a pair adds to the linear mixture of its components' equations.
#pragma once

#include <corvane/plugin/section.h>

#include <cstdio>
#include <vector>

namespace corvane::gerg {

inline constexpr int kMaxPower = 32;  ///< largest exponent of the density

/// A function of δ and τ and its derivatives d[i·3 + j] = δ^i·(T^j)·∂^(i+j)/∂δ^i∂T^j at constant
/// composition, as Deriv1 has them; third = δ³·∂³/∂δ³.
struct Sums {
    double d[9] = {};
    double third = 0.0;

    void add(double weight, Sums const& s) {
        for (int k = 0; k < 9; ++k) d[k] += weight * s.d[k];
        third += weight * s.third;
    }
};

/// One term n δ^d τ^t exp(−δ^l − η(δ−ε)² − β(δ−γ) − b(τ−c)²). The published kinds leave parts of it
/// out: "power" has l alone, "gerg" η and β (Kunz & Wagner, J. Chem. Eng. Data 57 (2012) 3032),
/// "gaussian" η and b. A factor exp(−δ^l) with l = 0 is absent.
/// A term without a power of δ (d = 0) is counted from its value at δ = 0, so that a gas of no
/// density is ideal.
struct Term {
    double n, d, t, l, eta, epsilon, beta, gamma, b, c;
    bool operator==(Term const&) const = default;
};

/// The terms of a function, in blocks of one kind: "power:\t<count>\tn d t l" and the rows.
class Departure {
  public:
    /// Reads the blocks that follow, if any. @throws ThException 1 malformed
    void read(SectionReader& section);
    void write(FILE* f) const;
    bool empty() const { return blocks_.empty(); }
    bool operator==(Departure const& other) const {
        return blocks_ == other.blocks_ && terms_ == other.terms_;
    }

    /// Numbers that `temperature` and `exponents` write: the terms, filled up to whole vectors.
    int size() const { return static_cast<int>(n_.size()); }
    /// Logarithms of the factors τ^t exp(−b(τ−c)²), of which the caller takes the exponentials.
    void temperature(double tau, double* logarithm) const;
    /// Exponents of exp(−δ^l − η(δ−ε)² − β(δ−γ)), of which the caller takes the exponentials.
    /// @param powers  δ^k, k = 0 … kMaxPower
    void exponents(double delta, double const* powers, double* exponent) const;
    /// Adds weight times the function: δ^i·∂^i/∂δ^i, i = 0 … order (at most 3), in s.d[0], [3], [6]
    /// and s.third; with Tau (order 2) all derivatives of total order up to 2.
    /// @param factors, exponentials  exp of what `temperature` and `exponents` wrote
    template <int order, bool Tau>
    void add(double weight, double delta, double const* powers, double tau, double const* factors,
             double const* exponentials, Sums& s) const;

  private:
    struct Block {
        int kind, count;
        bool operator==(Block const&) const = default;
    };
    void arrange();

    std::vector<Block> blocks_;
    std::vector<Term> terms_;  // in the order of the file
    // The terms for evaluation, a column each, those without a power of δ last; own_ is 0 for these.
    std::vector<double> n_, d_, t_, l_, damped_, eta_, epsilon_, beta_, gamma_, b_, c_, own_;
    std::vector<int> dpower_, lpower_;
    int level_ = 0;  // number of the first term without a power of δ
    int count_ = 0;
};

/// powers[k] = δ^k, k = 0 … kMaxPower.
void powers_of(double delta, double* powers);

}  // namespace corvane::gerg
