// Loading of a mixture whose pairs are not all published.
#pragma once

#include <corvane/core/api.h>

#include <utility>
#include <vector>

class ModelN;

namespace corvane {

/// As ModelN::load, but a pair without a file keeps what par_alloc gave it, the mixing theory's own
/// estimate (k_ij = 0 for the one-fluid theories). Returns those pairs, so that a caller can say
/// so. Pairs are loaded under the numbers set before; give 1 for the preferred set. A component
/// whose id is −1 and that no pair file names gets parameter set 1.
/// @throws ThException as ModelN::load, except for missing pair files
CORVANE_API std::vector<std::pair<int, int>> load_estimating(ModelN& model, char const* eos,
                                                             char const* mth);

/// What a caller knows of a component.
struct ComponentPlan {
    int set = 0;         ///< above 0: this one, whatever the pairs were made for
    bool ready = false;  ///< it has its parameters: no file of it is read
};
/// The same with a plan for every component. Pairs (a < b) that were made for other sets than
/// planned keep their parameters and are appended to `other_sets`.
CORVANE_API std::vector<std::pair<int, int>> load_estimating(
    ModelN& model, char const* eos, char const* mth, std::vector<ComponentPlan> const& plans,
    std::vector<std::pair<int, int>>& other_sets);

}  // namespace corvane
