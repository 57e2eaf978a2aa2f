// Parts of the extension module.
#pragma once

#include "arrays.h"

#include <optional>
#include <string>

namespace py {

/// p, Z, u, h, s, g, a, cv, cp, w, mu_JT, kappa_T, alpha_p, dp_dT, dp_drho, M: in Python's order.
constexpr int columns_of_phase = 16;
inline void write_phase(double* row, corvane::PhaseProperties const& q) {
    double const values[] = {q.p * kMega, q.Z, q.u, q.h, q.s, q.g, q.a, q.cv, q.cp, q.w,
                             q.mu_JT / kMega, q.kappa_T / kMega, q.alpha_p, q.dp_dT * kMega,
                             q.dp_drho, 1e-3 * q.M};
    static_assert(std::size(values) == columns_of_phase);
    std::copy(std::begin(values), std::end(values), row);
}

/// A home that was named lies over the one that would be used without: it may hold a single plug-in
/// with its parameters.
inline corvane::DataHome home_of(std::optional<std::string> const& given) {
    if (!given) return corvane::DataHome::find();
    const corvane::DataHome named(*given);
    try {
        return named.over(corvane::DataHome::find());
    } catch (corvane::OpenFailure const&) {  // there is no other
        return named;
    }
}

void add_fluid(nb::module_& m);
void add_mixture(nb::module_& m);
void add_catalogue(nb::module_& m);
void add_equation(nb::module_& m);

}  // namespace py
