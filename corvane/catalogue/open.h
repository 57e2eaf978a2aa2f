// Models opened by name: equation, substance, parameter set, from a data home, from any directory.
//
//     corvane::Fluid fluid = corvane::open("MEOS", "CO2");
//     corvane::Mixture gas = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
//
// Substances go by their name in the data tree, a synonym, CAS number or sum formula. A result owns
// everything it needs; nothing depends on the working directory, before or after. Every failure is
// an OpenFailure, which is a std::exception and says in one sentence what is there instead.
#pragma once

#include <corvane/catalogue/home.h>
#include <corvane/catalogue/parameter_sets.h>
#include <corvane/catalogue/pseudo_component.h>
#include <corvane/core/api.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// A pure substance: the model with its parameters and, where the tree has a table, its ideal-gas
/// part.
struct Fluid {
    std::unique_ptr<Model1, Detach> model;
    std::string equation;   ///< "MEOS"
    std::string substance;  ///< its name in the data tree
    int set = 1;
    ParameterNotes notes;  ///< stated range, source
    std::optional<IdealNotes> ideal;  ///< nothing: without table, h, s, cp … raise ThException 3
    DataHome home;                    ///< that it was read from
};

struct FluidOptions {
    int set = 0;  ///< 0: set 1, or the first there is
    std::optional<DataHome> home = {};
    std::vector<PseudoComponent> defined = {};  ///< go before what files hold; PR if none is named
};

/// @param equation  name of a plug-in, or "" for the best that the substance has: the reference
///                  equation (MEOS), else PCSAFT, else PR, else SRK; a doubtful one only where all are
/// @throws OpenFailure
CORVANE_API Fluid open(std::string const& equation, std::string const& substance,
                       FluidOptions const& options = {});

/// Is the equation's critical temperature more than 10 % below or 25 % above the measured one ("measured:"
/// in its file)? Published fits to few data are: their vapour pressures go wrong by factors. False where
/// nothing measured is known. Of 1,458 PC-SAFT sets, half lie between +1.4 and +3.4 %, 98 % between
/// −8 and +13 %.
CORVANE_API bool doubtful(Fluid const& fluid);

/// The equations that have parameters for a substance, best first: MEOS, PCSAFT, PR, SRK, then the
/// others in the order of their names. substance: its name in the data tree.
CORVANE_API std::vector<std::string> equations_for(DataHome const& home,
                                                   std::string const& substance);

/// The name in the data tree of a substance given in any way that the index knows; the text itself
/// if a parameter set of the equation goes by it. equation may be "".
/// @throws OpenFailure unknown, or more than one substance
CORVANE_API std::string substance_name(DataHome const& home, std::string const& equation,
                                       std::string const& text);

/// A pair of a multi-fluid mixture whose reducing parameters come from a predictive model.
struct PairEstimate {
    int i, j;
    std::string model;  ///< "PCSAFT+LB", "SRK+PSRK", "PR+vdW1"
    int pair_set;       ///< of that model
    double expected;    ///< mean deviation of bubble pressures, over published pairs so estimated
};

/// A mixture with its components and pairs.
struct Mixture {
    std::unique_ptr<std::string const> equation, theory;  ///< "PR", "vdW1"; the model points at them
    std::unique_ptr<ModelN, Detach> model;
    std::vector<std::string> components;  ///< names in the data tree
    /// Pairs (i < j) without published parameters: the mixing theory's own estimate stands in.
    std::vector<std::pair<int, int>> estimated;
    /// Those of them, of MEOS+GERG, that have their parameters from a predictive model.
    std::vector<PairEstimate> predicted;
    /// Pairs with parameters that were published for other sets of the components than were asked for.
    std::vector<std::pair<int, int>> other_sets;
    Validity validity;  ///< for the options of the equilibrium solvers
    bool ideal = true;              ///< every component has an ideal-gas table
    std::vector<IdealNotes> gases;  ///< of the tables that there are, in the order of components
    DataHome home;
    std::string chosen;  ///< why this model, where none was named; else ""

    int size() const { return static_cast<int>(components.size()); }
    std::string name() const { return *equation + "+" + *theory; }
};

struct MixtureOptions {
    /// Of the components; 0, or empty: those that the pairs were made for, else 1. A pair that was
    /// made for other sets keeps its parameters, and is named in other_sets.
    std::vector<int> sets = {};
    /// Of the pairs; 0: where no sets of the components are asked for, the first number under which
    /// all pairs are published, for the sets that the components have anyway; else 1.
    int pair_set = 0;
    bool estimate = true;  ///< false: a pair without a file is refused
    /// Of estimated pairs of MEOS+GERG: reducing parameters from a model that predicts the pair
    /// (Mixture::predicted); false: all of them 1.
    bool predict = true;
    std::optional<DataHome> home = {};
    std::vector<PseudoComponent> defined = {};  ///< go before what files hold
};

/// @param model       equation and mixing theory: "PR+vdW1", "PCSAFT+LB", "MEOS+GERG"; or "" for
///                    the first of MEOS+GERG and PCSAFT+LB (pairs 3, 1, 2, 4) under a number of
///                    which all pairs are published, of SRK+PSRK where the groups of all components
///                    and their interactions are, and of PR+vdW1. Options that name sets are
///                    refused then.
/// @param components  one or more substances, each once
/// @throws OpenFailure
CORVANE_API Mixture open_mixture(std::string const& model,
                                 std::vector<std::string> const& components,
                                 MixtureOptions const& options = {});

}  // namespace corvane
