// Mixtures for the benchmarks, from the data home.
#pragma once

#include <corvane/corvane.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using Mixture = std::unique_ptr<ModelN, corvane::Detach>;

/// With ideal-gas tables. Pairs without a file are estimated. eos and mth must outlive the mixture.
/// @param set  parameter set of the components, also where the pairs were made for others; −1: what the pairs' files name
inline Mixture mixture_of(std::vector<std::string> const& names, char const* eos = "PR",
                          char const* mth = "vdW1", int set = 1) {
    Mixture m(attachN(eos, mth));
    const int n = static_cast<int>(names.size());
    m->alloc(n, eos);
    for (int i = 0; i < n; ++i) {
        m->mdl1[i]->name(names[static_cast<unsigned>(i)].c_str());
        m->mdl1[i]->id(set);
        for (int j = 0; j < i; ++j) m->id(i, j, 1);
    }
    std::vector<std::pair<int, int>> others;
    corvane::load_estimating(*m, eos, mth,
                             std::vector<corvane::ComponentPlan>(names.size(), {set > 1 ? set : 0, false}), others);
    for (int i = 0; i < n; ++i) m->mdl1[i]->ideal.load();
    return m;
}
