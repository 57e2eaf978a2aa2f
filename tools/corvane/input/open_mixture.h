// From "PR+vdW1 methane=0.7 propane=0.3" to a loaded mixture.
#pragma once

#include <tools/corvane/input/parameter_file.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>
#include <tools/corvane/text/units.h>

#include <corvane/mixture/modeln.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cli {

struct MixtureRequest {
    std::string model;                    ///< "PR+vdW1"
    std::vector<std::string> components;  ///< "methane=0.7"; one may lack its fraction: the rest
    int pair_set = 0;                     ///< 0: set 1
    std::string kij;                      ///< "0.01", or "methane+propane=0.01,..."; may be empty
    bool fractions_optional = false;      ///< no component need have a fraction

    /// MODEL COMPONENT=FRACTION… --pair-set --kij
    void add_to(Command& command);
};

/// A mixture with its composition.
struct MixtureFluid {
    std::string eos, mth;  // before the model, which keeps pointers to them
    std::unique_ptr<ModelN, corvane::Detach> model;
    Vector<double> x;                            ///< mole fractions, sum 1
    std::vector<std::pair<int, int>> estimated;  ///< pairs without a file
    corvane::Validity validity;                  ///< for the flags of certificates
    bool ideal = false;                          ///< every component has an ideal-gas table
    std::vector<IdealNotes> gases;               ///< of the tables, if every component has one
    std::vector<std::pair<int, int>> given;      ///< pairs with kij from the command line
    bool normalised = false;                     ///< the fractions given did not sum to 1
    bool composed = true;                        ///< fractions were given; else x is even

    int size() const { return x.size(); }
    char const* component(int i) const { return model->mdl1[i]->name(); }
    double M() const { return M(x); }          ///< molar mass, g/mol
    double M(Vector<double> const& at) const;  ///< of another composition
    std::string name() const;  ///< "PR+vdW1 methane(0.7) propane(0.3)"; fractions if composed
    std::string composition(Vector<double> const& at) const;  ///< " methane(0.7) propane(0.3)"
    /// Density of a phase of composition `at` in the chosen unit. @throws Failure as Units
    double density(Units units, Vector<double> const& at, double rho) const;
};

/// Attaches the model and loads pairs and components from the data home; a pair without a file is
/// estimated by the mixing theory. @throws Misuse a composition that makes no sense; Failure
MixtureFluid open_mixture(MixtureRequest const& request);

/// Which components' ideal-gas data do not reach T: "extrapolated: …"; "" if all do.
std::string ideal_extrapolated(MixtureFluid const& mixture, double T, Units const& units);

/// The same for two components without mole fractions. @throws Misuse others
MixtureFluid open_binary(MixtureRequest const& request);

/// Heading with model, components, and a remark on every pair: its set, or that it is estimated.
Heading heading(std::string const& command, MixtureFluid const& mixture);

}  // namespace cli
