// Where the parameters of a loaded model are published to hold, from the data tree.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>

#include <utility>
#include <vector>

class ModelN;

namespace corvane {

/// Validity of a model whose components have their names and set numbers, for the options structs
/// of the equilibrium solvers.
///
/// T_min, T_max [K] and p_max [MPa] are what the ranges of all components have in common, from the
/// line "valid: Tmin Tmax pmax" of "./CorvaneS/parameters/<eos>/<name>;<set>"; ranges of pairs,
/// which are those of measurements, do not count. T_triple [K] comes from the column "Ttriple [K]"
/// of "./CorvaneS/substances.tsv", for all components, absent ones included.
///
/// estimated: the pairs that load_estimating returned; the model does not know them itself.
///
/// Nothing is thrown for data: a missing file, a line or number that is missing, "-", malformed or
/// not above zero means unknown. At most 1 MiB of a file is read. Numbers are read as in the C
/// locale.
CORVANE_API Validity validity(ModelN const& model,
                              std::vector<std::pair<int, int>> const& estimated = {});

}  // namespace corvane
