// From "PR+vdW1 methane=0.7 propane=0.3" to a loaded mixture.
#pragma once

#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>
#include <tools/corvane/text/text.h>
#include <tools/corvane/text/units.h>

#include <corvane/catalogue/open.h>

#include <string>
#include <utility>
#include <vector>

namespace cli {

/// The number of a parameter set. @throws Misuse
int set_number(std::string const& text);

struct MixtureRequest {
    std::string model;                    ///< "PR+vdW1"
    std::vector<std::string> components;  ///< "methane=0.7"; one may lack its fraction: the rest
    int pair_set = 0;                     ///< 0: the first with all pairs, else 1
    bool no_prediction = false;           ///< of MEOS+GERG: unknown reducing parameters are 1
    std::string kij;                      ///< "0.01", or "methane+propane=0.01,..."; may be empty
    bool fractions_optional = false;      ///< no component need have a fraction
    bool binary = false;                  ///< two components without: for open_binary
    bool ternary = false;                 ///< three of them: for open_ternary
    bool solute = false;                  ///< the first is one, of mole fraction 0
    /// Of the numbers: empty for mole fractions; "mole" or "mass" for amounts of any size.
    std::string basis;

    std::string composition;          ///< a file of components and amounts, in place of `components`
    std::string sets;                 ///< "3", or "methane=3,..."; may be empty
    std::vector<std::string> define;  ///< words of --define

    /// MODEL COMPONENT=FRACTION…, --composition, add_pairs, --set and --define
    void add_to(Command& command);
    void add_pairs(Command& command);  ///< --pair-set --kij --no-prediction --basis
};

/// A mixture with its composition.
struct MixtureFluid : corvane::Mixture {
    explicit MixtureFluid(corvane::Mixture&& opened) : corvane::Mixture(std::move(opened)) {}

    Vector<double> x;                        ///< mole fractions, sum 1
    std::vector<std::pair<int, int>> given;  ///< pairs with kij from the command line
    std::vector<corvane::PseudoComponent> defined;
    bool normalised = false;                 ///< the fractions given did not sum to 1
    bool by_mass = false;                    ///< the fractions given were by mass
    bool composed = true;                    ///< fractions were given; else x is even
    std::vector<std::string> asked;          ///< the names of the components as they were given

    char const* component(int i) const { return components[static_cast<unsigned>(i)].c_str(); }
    /// Its name in a picture: the formula if it was given so.
    std::string shown(int i) const {
        return name_in_picture(asked[static_cast<unsigned>(i)], component(i));
    }
    /// The number of the component that a person calls `text`, −1 if it is none of them.
    /// @throws corvane::OpenFailure no such substance
    int index(std::string const& text) const;
    double M() const { return M(x); }          ///< molar mass, g/mol; 0: that of a component is not known
    double M(Vector<double> const& at) const;  ///< of another composition
    double molar_mass(int i) const;            ///< of a component. @throws Failure it is not known
    /// Mass fractions of mole fractions, and back. @throws Failure as molar_mass
    Vector<double> mass_fractions(Vector<double> const& at) const;
    Vector<double> mole_fractions(Vector<double> const& w) const;
    /// What tells the denser phase: M, or the mean critical volume if a component's M is not known.
    double weight(Vector<double> const& at) const;
    std::string text() const;  ///< "PR+vdW1 methane(0.7) propane(0.3)"; fractions if composed
    std::string composition(Vector<double> const& at) const;  ///< " methane(0.7) propane(0.3)"
    /// Density of a phase of composition `at` in the chosen unit. @throws Failure as Units
    double density(Units units, Vector<double> const& at, double rho) const;
};

/// corvane::open_mixture from the data home that was entered, with composition and --kij.
/// @throws Misuse a composition that makes no sense; Failure; corvane::OpenFailure
MixtureFluid open_mixture(MixtureRequest const& request);

/// Which components' ideal-gas data do not reach T: "extrapolated: …"; "" if all do.
std::string ideal_extrapolated(MixtureFluid const& mixture, double T, Units const& units);

/// The same for two components without mole fractions. @throws Misuse others
MixtureFluid open_binary(MixtureRequest const& request);
MixtureFluid open_ternary(MixtureRequest const& request);  ///< three components

/// Heading with model, components, and a remark on every pair: its set, or that it is estimated.
Heading heading(std::string const& command, MixtureFluid const& mixture);

}  // namespace cli
