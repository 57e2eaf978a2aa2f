// Parts of the extension module.
#pragma once

#include "arrays.h"

#include <nanobind/stl/vector.h>

#include <optional>
#include <string>

namespace py {

/// A value in the library's unit.
inline double to_library(corvane::Quantity what, double x) {
    return what == corvane::Quantity::p || what == corvane::Quantity::rho ? x / kMega : x;
}

/// p, Z, u, h, s, g, a, cv, cp, w, mu_JT, kappa_T, alpha_p, dp_dT, dp_drho, M, n_s: in Python's order.
constexpr int columns_of_phase = 17;
inline void write_phase(double* row, corvane::PhaseProperties const& q) {
    double const SI = kMega;
    row[0] = q.p * SI, row[1] = q.Z, row[2] = q.u, row[3] = q.h, row[4] = q.s, row[5] = q.g, row[6] = q.a;
    row[7] = q.cv, row[8] = q.cp, row[9] = q.w, row[10] = q.mu_JT / SI, row[11] = q.kappa_T / SI;
    row[12] = q.alpha_p, row[13] = q.dp_dT * SI, row[14] = q.dp_drho, row[15] = 1e-3 * q.M, row[16] = q.n_s;
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

inline Vector<double> vector_of(Column const& x) {
    Vector<double> v(static_cast<int>(x.shape(0)));
    for (int k = 0; k < v.size(); ++k) v[k] = x(static_cast<std::size_t>(k));
    return v;
}

/// While it lives, no interpreter lock; between points Ctrl-C is looked for, and ends the trace.
struct Tracing {
    bool interrupted = false;
    corvane::Progress progress = [this](int) {
        const nb::gil_scoped_acquire held;
        if (PyErr_CheckSignals() == 0) return true;
        PyErr_Clear();
        interrupted = true;
        return false;
    };
    /// Of a curve that this follows.
    template <class Options>
    Options options(corvane::Mixture const& m) const {
        Options o;
        o.validity = &m.validity;
        o.progress = progress;
        return o;
    }
};

template <class F>
auto traced(Tracing& tracing, F const& f) {
    auto value = [&] {
        const nb::gil_scoped_release released;
        return f();
    }();
    if (tracing.interrupted) {
        PyErr_SetNone(PyExc_KeyboardInterrupt);
        throw nb::python_error();
    }
    return value;
}

/// values: lists of T, p, q, s, rho of the isolines; range: T_min, T_max, p_min, p_max (SI). Rows are
/// T, p, rho, h, s, u, q.
nb::dict property_diagram_of_fluid(corvane::Fluid const& f, std::vector<std::vector<double>> const& values,
                                   std::vector<double> const& range, int points);
nb::dict property_diagram_of_mixture(corvane::Mixture const& m, Column z,
                                     std::vector<std::vector<double>> const& values,
                                     std::vector<double> const& range, int points);

nb::dict residue_map(corvane::Mixture const& m, double p, double step, double tolerance, int mesh);

void add_table(nb::module_& m);
void add_fluid(nb::module_& m);
void add_mixture(nb::module_& m);
void add_catalogue(nb::module_& m);
void add_equation(nb::module_& m);
void add_outputs(nb::module_& m);
void add_transport(nb::module_& m);
void add_fit(nb::module_& m);

}  // namespace py
