// Departure functions: what a pair adds to the linear mixture of its components' equations.
#pragma once

#include <corvane/plugin/section.h>

#include <cstdio>
#include <vector>

namespace corvane::gerg {

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
    bool operator==(Departure const&) const = default;

    /// Appends the factors n τ^t exp(−b(τ−c)²) of all terms, for `at`.
    void isotherm(double tau, std::vector<double>& factors) const;
    /// Values in δ: i = 0 … order (1 to 3) of δ^i·∂^i/∂δ^i, in s.d[0], [3], [6] and s.third.
    void at(double delta, double const* factors, int order, Sums& s) const;
    /// All derivatives of total order up to 2.
    void second(double delta, double tau, Sums& s) const;
    int terms() const { return static_cast<int>(terms_.size()); }

  private:
    struct Block {
        int kind, count;
        bool operator==(Block const&) const = default;
    };
    std::vector<Block> blocks_;
    std::vector<Term> terms_;
};

}  // namespace corvane::gerg
