// Chemical equilibrium constants of reactions among ideal gases, from enthalpies of formation,
// standard entropies and ideal-gas heat capacities.
//
//     corvane::Reaction synthesis("N2 + 3 H2 = 2 NH3");
//     double K = std::exp(synthesis.at(700.0).lnK);  // p(NH3)²·p0²/(p(N2)·p(H2)³) = K, p0 = 0.1 MPa
#pragma once

#include <corvane/catalogue/home.h>
#include <corvane/core/api.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A substance that takes part.
struct ReactionSpecies {
    std::string substance, formula;  ///< as in the index
    double nu;                       ///< above zero for what is formed
    double H0, S0;     ///< of the ideal gas at 298.15 K and 0.1 MPa, J/mol, J/(mol K)
    bool estimated;    ///< they are those of the liquid, turned into gas by an equation of state
    std::string equation;  ///< that equation
    double T_min, T_max;   ///< range of the ideal-gas heat capacities, K
};

/// Of the reaction as it is written, every substance an ideal gas at 0.1 MPa.
struct ReactionState {
    double T;               ///< K
    double dH, dG;          ///< J/mol
    double dS, dcp;         ///< J/(mol K)
    double lnK;             ///< -dG/(RT)
    bool extrapolated;      ///< T is outside a range of heat capacities
};

/// With the reaction's stoichiometric numbers nu_i (Smith, Van Ness & Abbott, Introduction to
/// Chemical Engineering Thermodynamics, ch. 13):
///     H_i(T) = H0_i + ∫cp_i dT,  S_i(T) = S0_i + ∫cp_i/T dT,  ln K = -Σ nu_i·(H_i - T·S_i)/(RT).
class CORVANE_API Reaction {
  public:
    /// @param text  "N2 + 3 H2 = 2 NH3": names, formulas or CAS numbers with numbers before them
    ///     ("3 H2", "0.5*O2", "3H2"); the sides parted by "=", "=>", "->", "<->" or "<=>"
    /// @throws OpenFailure no such text, substances or data; elements that are not balanced
    explicit Reaction(std::string const& text, std::optional<DataHome> const& home = {});
    Reaction(Reaction&&) noexcept;
    Reaction& operator=(Reaction&&) noexcept;
    ~Reaction();

    /// What is used up first, as written; a substance of both sides once, with its net number.
    std::vector<ReactionSpecies> const& species() const { return species_; }
    /// @param T  above zero, K @throws ThException 5
    ReactionState at(double T) const;

  private:
    struct Gases;  // the models that hold the heat capacities
    std::vector<ReactionSpecies> species_;
    std::unique_ptr<Gases> gases_;
};

}  // namespace corvane
