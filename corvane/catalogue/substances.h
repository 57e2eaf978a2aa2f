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
    /// Reads the index of every directory of the home, a substance's first line; an absent file gives an empty one. Lines without a name are skipped.
    explicit Substances(DataHome const& home);

    std::vector<Substance> const& all() const { return all_; }

    /// Substances that a person means with this text: that of this name; else those with this CAS
    /// number or synonym; else those with this sum formula, in any order of the elements ("H2O",
    /// "CH3OH", also with subscripts). Names and synonyms without regard to case and to what parts
    /// their words; refrigerants as R134a or with the family's letters, HFC-134a.
    std::vector<Substance const*> find(std::string const& text) const;

    /// Substances with the text within their name, CAS number or a synonym, or with this formula.
    std::vector<Substance const*> search(std::string const& text) const;

    /// ": did you mean octane (C8H18)?" for a text that find does not know; "" if nothing is near.
    /// Isomers, if the text leaves open which ("butanol"); else what a slip of the hand can have
    /// been. Names that look alike but are other substances by a number, an isomer's prefix or the
    /// ending (butanal) are not offered, and the formula is told. others: further names.
    std::string suggestion(std::string const& asked, std::vector<std::string> const& others) const;

  private:
    std::vector<Substance> all_;
};

/// Sum formula in a fixed order ("CH3OH" → "C1H4O1"); "" for a text that is no formula.
CORVANE_API std::string sum_formula(std::string const& text);

}  // namespace corvane
