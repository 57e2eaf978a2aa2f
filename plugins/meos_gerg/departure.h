// Departure functions: what a pair adds to the linear mixture of its components' equations.
#pragma once

#include <corvane/plugin/section.h>

#include <cstdio>
#include <vector>

namespace corvane::gerg {

inline constexpr int kMaxPower = 32;  ///< largest exponent of the density

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

    std::vector<Term> const& terms() const { return terms_; }  ///< in the order of the file

  private:
    struct Block {
        int kind, count;
        bool operator==(Block const&) const = default;
    };

    std::vector<Block> blocks_;
    std::vector<Term> terms_;
};

}  // namespace corvane::gerg
