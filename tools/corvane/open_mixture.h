// From "PR+vdW1 methane=0.7 propane=0.3" to a loaded mixture.
#pragma once

#include <tools/corvane/table.h>
#include <tools/corvane/units.h>

#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cli {

struct MixtureRequest {
    std::string model;                    ///< "PR+vdW1"
    std::vector<std::string> components;  ///< "methane=0.7"; one may lack its fraction: the rest
    int pair_set = 0;                     ///< 0: set 1
};

/// A mixture with its composition.
struct MixtureFluid {
    std::string eos, mth;  // before the model, which keeps pointers to them
    std::unique_ptr<ModelN, corvane::Detach> model;
    Vector<double> x;                            ///< mole fractions, sum 1
    std::vector<std::pair<int, int>> estimated;  ///< pairs without a file
    bool ideal = false;                          ///< every component has an ideal-gas table
    bool normalised = false;                     ///< the fractions given did not sum to 1

    int size() const { return x.size(); }
    char const* component(int i) const { return model->mdl1[i]->name(); }
    double M() const;          ///< molar mass, g/mol
    std::string name() const;  ///< "PR+vdW1 methane(0.7) propane(0.3)"
};

/// Attaches the model and loads pairs and components from the data home; a pair without a file is
/// estimated by the mixing theory. @throws Misuse a composition that makes no sense; Failure
MixtureFluid open_mixture(MixtureRequest const& request);

/// Heading with model, components, and a remark on every pair: its set, or that it is estimated.
Heading heading(std::string const& command, MixtureFluid const& mixture);

}  // namespace cli
