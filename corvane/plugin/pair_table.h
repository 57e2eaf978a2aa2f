// Binary parameters of a mixture: a few numbers per unordered pair.
#pragma once

#include <corvane/plugin/section.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace corvane {

/// Strict lower triangle of blocks of `count` parameters; the pair (j, i) is the pair (i, j).
class PairTable {
  public:
    explicit PairTable(int count) : count_(count) {}
    /// Makes room for n components, all parameters zero.
    void resize(int n) { values_.assign(static_cast<std::size_t>(n) * static_cast<std::size_t>(n > 0 ? n - 1 : 0) / 2 *
                           static_cast<std::size_t>(count_),
                       0.0); }
    double* at(int i, int j) {
        return values_.data() + std::ptrdiff_t{count_} *
                                    (i < j ? (j - 1) * j / 2 + i : (i - 1) * i / 2 + j);
    }
    double const* at(int i, int j) const { return const_cast<PairTable*>(this)->at(i, j); }

  private:
    int count_;
    std::vector<double> values_;
};

/// A pair's section begins with the name of its component "i": a file that is found under the names
/// in the other order gives its parameters for (j, i). True if `of` is the name of component j.
/// @throws ThException 1 if it is neither
inline bool pair_is_swapped(SectionReader& section, char const* name_i, char const* name_j) {
    char of[32];
    section.word("of", of);
    if (std::strcmp(of, name_i) == 0) return false;
    if (std::strcmp(of, name_j) == 0) return true;
    section.refuse("'" + std::string(of) + "' is none of the two components");
}

}  // namespace corvane
