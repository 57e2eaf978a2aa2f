// The index of substances, CorvaneS/substances.tsv.
#pragma once

#include <corvane/catalogue/home.h>
#include <corvane/core/api.h>

#include <string>
#include <vector>

namespace corvane {

/// One line of the index. Numbers are not-a-number where the index has "-".
struct Substance {
    std::string name, formula, cas;
    double M, Tc, pc, vc, omega, Ttriple, ptriple, Tb;  ///< g/mol, K, MPa, cm³/mol, K, MPa, K
    std::vector<std::string> aliases;
};

class CORVANE_API Substances {
  public:
    /// Reads the index; an absent file gives an empty one. Lines without a name are skipped.
    explicit Substances(DataHome const& home);

    std::vector<Substance> const& all() const { return all_; }

    /// Substances that a person means with this text: that of this name; else those with this CAS
    /// number or synonym; else those with this sum formula, in any order of the elements ("H2O",
    /// "CH3OH"). Names and synonyms without regard to case, '_', '-' and blanks being the same.
    std::vector<Substance const*> find(std::string const& text) const;

    /// Substances with the text within their name, CAS number or a synonym, or with this formula.
    std::vector<Substance const*> search(std::string const& text) const;

    /// Names and synonyms, for suggestions.
    std::vector<std::string> names() const;

  private:
    std::vector<Substance> all_;
};

/// Sum formula in a fixed order ("CH3OH" → "C1H4O1"); "" for a text that is no formula.
CORVANE_API std::string sum_formula(std::string const& text);

}  // namespace corvane
