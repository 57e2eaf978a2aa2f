// What the parts of mixtures share.
#pragma once

#include "arrays.h"
#include "module.h"

namespace py {

using corvane::Mixture;
using MixtureClass = nb::class_<Mixture>;

inline Vector<double> row_of(Rows const& x, std::size_t i) {
    Vector<double> v(static_cast<int>(x.shape(1)));
    for (int k = 0; k < v.size(); ++k) v[k] = x(i, static_cast<std::size_t>(k));
    return v;
}

inline void check(Mixture const& m, Rows const& x) {
    if (x.shape(1) != static_cast<std::size_t>(m.size()))
        throw nb::value_error("the last axis of a composition has one value for every component");
}

inline void write(double* to, Vector<double> const& x) {
    for (int k = 0; k < x.size(); ++k) to[k] = x[k];
}

/// Columns: T, p, rho, stable, residual of the critical conditions, tpd, composition.
Array critical_points(std::vector<corvane::CriticalPoint> const& points, int n);
/// Columns: T, p, x of the first component in three phases, their densities, dmu, dp, tpd.
Array phases_of(std::vector<corvane::ThreePhasePoint> const& points);

void add_mixture_states(MixtureClass& of);
void add_mixture_curves(MixtureClass& of);
void add_mixture_lines(MixtureClass& of);
void add_mixture_solids(MixtureClass& of);

}  // namespace py
