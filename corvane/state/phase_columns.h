// All properties of many homogeneous states of a pure fluid, in columns.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/phase/phase.h>

#include <cstddef>

class Model1;

namespace corvane {

/// Where the properties go, as PhaseProperties has them: an array for each that is wanted, or null.
struct PropertyColumns {
    double *p = nullptr, *Z = nullptr, *u = nullptr, *h = nullptr, *g = nullptr, *a = nullptr,
           *s = nullptr, *cv = nullptr, *cp = nullptr, *w = nullptr, *mu_JT = nullptr,
           *kappa_T = nullptr, *alpha_p = nullptr, *dp_dT = nullptr, *dp_drho = nullptr,
           *n_s = nullptr;
};

/// phase_properties of n states. Models with the extension ManyStates1 (cubic and multiparameter
/// equations) calculate four states at once, on machines with AVX2 in one register; the results do
/// not depend on the machine, on n, on the order of the states or on the number of threads, and
/// differ from those one by one by rounding: by at most 2 ulp of the largest term of each sum, as
/// the functions exp, log and log1p that both use are within 1 ulp.
///
/// @param threads  at most 64; 0: as many as the machine has. The model is not written
/// @return how many states have no values, where phase_properties raises an error: not-a-number in
/// all
///     columns
CORVANE_API std::size_t phase_properties(Model1 const& model, std::size_t n, double const* T,
                                         double const* rho, PropertyColumns const& columns,
                                         int threads = 1);

/// Densities at p [MPa] and T [K] of n states, mol/cm³, as Model1::vcalc has them: the densest
/// root, the thinnest, or that of lower Gibbs energy. Not-a-number where there is none. Not
/// certified: a density may be that of a metastable state, but for Root::stable.
/// @return how many have none
CORVANE_API std::size_t densities(Model1 const& model, std::size_t n, double const* p,
                                  double const* T, double* rho, Root root = Root::stable,
                                  int threads = 1);

}  // namespace corvane
