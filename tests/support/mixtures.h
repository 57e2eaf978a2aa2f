// Mixtures of shipped substances for tests.
#pragma once

#include "support/shipped.h"

#include <corvane/mixture/loading.h>
#include <corvane/mixture/modeln.h>

#include <initializer_list>

using Mixture = std::unique_ptr<ModelN, corvane::Detach>;

inline Vector<double> vec(std::initializer_list<double> values) {
    Vector<double> v(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), v.data);
    return v;
}

/// Components of parameter set 1, with their ideal-gas tables; every binary parameter is zero.
inline Mixture mixture_of(char const* eos, char const* mth, std::vector<std::string> const& names) {
    Mixture m(attachN(eos, mth));
    m->alloc(static_cast<int>(names.size()), eos);
    for (int i = 0; i < m->mdl1.size(); ++i) {
        m->mdl1[i]->name(names[static_cast<unsigned>(i)].c_str());
        m->mdl1[i]->id(1);
        m->mdl1[i]->load(eos);
        m->mdl1[i]->ideal.load();
    }
    return m;
}

/// Pairs as shipped (set 1) or estimated; set: of the components, −1 what the pairs name.
inline Mixture estimated_mixture(char const* eos, char const* mth,
                                 std::vector<std::string> const& names, int set = 1) {
    Mixture m(attachN(eos, mth));
    m->alloc(static_cast<int>(names.size()), eos);
    for (int i = 0; i < m->mdl1.size(); ++i) {
        m->mdl1[i]->name(names[static_cast<unsigned>(i)].c_str());
        m->mdl1[i]->id(set);
        for (int j = 0; j < i; ++j) m->id(j, i, 1);
    }
    corvane::load_estimating(*m, eos, mth);
    return m;
}
