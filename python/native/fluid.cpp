// Pure fluids.
#include "arrays.h"
#include "module.h"

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {
namespace {
using corvane::Fluid;
using corvane::PhaseProperties;
using corvane::PureState;
using corvane::Quantity;

/// In the order of Python's names of columns.
constexpr std::size_t kState = 7, kPhase = std::size_t(columns_of_phase), kBoth = kState + kPhase + 2;

void write(double* row, PureState const& s) {
    double const state[] = {s.T, s.p * kMega, s.rho * kMega, s.h, s.s, s.u, s.q};
    std::copy(std::begin(state), std::end(state), row);
    if (s.phase) write_phase(row + kState, *s.phase);
    if (s.liquid) {
        row[kState + kPhase] = s.liquid->rho * kMega;
        row[kState + kPhase + 1] = s.vapour->rho * kMega;
    }
}

corvane::PureStateOptions range(Fluid const& f) {
    corvane::PureStateOptions options;
    if (std::isfinite(f.notes.Tmin)) options.T_min = 0.9 * f.notes.Tmin;
    return options;
}

/// Elements where two quantities are given, as columns of a state; single: there is one, see result().
nb::tuple states(Fluid const& f, int first, Column a, int second, Column b, int threads, bool single) {
    same_length(a.shape(0), b.shape(0));
    const std::size_t n = a.shape(0);
    Out out({n, kBoth});
    Report report(n);
    const auto A = static_cast<Quantity>(first), B = static_cast<Quantity>(second);
    const auto options = range(f);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const auto all = corvane::pure_states(*f.model, {A, to_library(A, a(i))},
                                              {B, to_library(B, b(i))}, options);
        if (all.empty()) throw ThException(th_no_density);
        if (all.size() > 1) throw Several();
        write(row, all.front());
    });
    return result(out, report, finished, single);
}

/// Every state with two given values.
nb::tuple all_states(Fluid const& f, int first, double a, int second, double b) {
    const auto A = static_cast<Quantity>(first), B = static_cast<Quantity>(second);
    const auto all =
        corvane::pure_states(*f.model, {A, to_library(A, a)}, {B, to_library(B, b)}, range(f));
    Out out({all.size(), kBoth});
    Report report(all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        out.clear(i);
        write(out.row(i), all[i]);
        report.set(i, ok);
    }
    return result(out, report, true);
}

nb::tuple properties(Fluid const& f, Column T, Column rho, int threads, bool single) {
    same_length(T.shape(0), rho.shape(0));
    const std::size_t n = T.shape(0);
    Out out({n, kPhase});
    Report report(n);
    const bool finished = each<Rows_are::written_whole>(out, report, n, threads, [&](std::size_t i, double* row) {
        write_phase(row, corvane::phase_properties(*f.model, T(i), rho(i) / kMega));
    });
    return result(out, report, finished, single);
}

/// phase: 1 the densest root, 3 the thinnest
nb::tuple densities(Fluid const& f, Column T, Column p, int phase, int threads, bool single) {
    same_length(T.shape(0), p.shape(0));
    const std::size_t n = T.shape(0);
    Out out({n});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        if (!(T(i) > 0) || !(p(i) > 0) || !std::isfinite(T(i)) || !std::isfinite(p(i)))
            throw ThException(th_out_of_range);
        double rho = 0.0, other = 0.0;
        if (f.model->vcalc(p(i) / kMega, T(i), phase, rho, other) < 1)
            throw ThException(th_no_density);
        *row = rho * kMega;
    });
    return result(out, report, finished, single);
}

/// From this many points on the curve is precomputed, which costs as much as some hundred of them,
/// and read where its bound is below kPrecise.
constexpr std::size_t kMany = 1000;
constexpr double kPrecise = 1e-10;

std::optional<corvane::SaturationExpansion> precomputed(Model1 const& model, std::size_t n) {
    if (n < kMany) return {};
    try {
        return corvane::SaturationExpansion(model);
    } catch (corvane::EquilibriumFailure const&) {  // point by point, then, with a status for each
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return {};
}

/// T, p, densities of liquid and vapour.
nb::tuple saturation(Fluid const& f, bool at_T, Column x, int threads, bool single) {
    const std::size_t n = x.shape(0);
    const auto curve = precomputed(*f.model, n);
    Out out({n, 4});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Quantity what = at_T ? Quantity::T : Quantity::p;
        const double value = to_library(what, x(i));
        corvane::SaturationExpansion::Point s;
        if (curve && (at_T ? curve->at_T(value, s) : curve->at_p(value, s)) &&
            curve->within(kPrecise, s.T)) {
            row[0] = s.T;
            row[1] = s.p * kMega;
            row[2] = s.rhoL * kMega;
            row[3] = s.rhoV * kMega;
            return;
        }
        const auto found = corvane::pure_states(*f.model, {what, value}, {Quantity::q, 0.0});
        row[0] = found.front().T;
        row[1] = found.front().p * kMega;
        row[2] = found.front().liquid->rho * kMega;
        row[3] = found.front().vapour->rho * kMega;
    });
    return result(out, report, finished, single);
}

nb::tuple virial(Fluid const& f, Column T, int order, int threads, bool single) {
    if (order < 2 || order > 9) throw nb::value_error("virial coefficients from 2 to 9");
    const std::size_t n = T.shape(0);
    Out out({n});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        if (!(T(i) > 0) || !std::isfinite(T(i))) throw ThException(th_out_of_range);
        *row = f.model->B(T(i), order) * std::pow(1e-6, order - 1);
    });
    return result(out, report, finished, single);
}
}  // namespace

void add_fluid(nb::module_& m) {
    nb::class_<Fluid>(m, "Fluid", "A pure substance with its model; corvane.Fluid is for people.")
        .def_static("open",
                    [](std::string const& equation, std::string const& substance, int set,
                       std::optional<std::string> const& home) {
                        corvane::FluidOptions options;
                        options.set = set;
                        options.home = home_of(home);
                        return corvane::open(equation, substance, options);
                    },
                    nb::arg("equation"), nb::arg("substance"), nb::arg("set"), nb::arg("home").none(),
                    "Opens a fluid by name; equation \"\" and set 0: the best there is.")
        .def_prop_ro("equation", [](Fluid const& f) { return f.equation; }, "Name of the equation.")
        .def_prop_ro("substance", [](Fluid const& f) { return f.substance; }, "Name in the data tree.")
        .def_prop_ro("set", [](Fluid const& f) { return f.set; }, "Number of the parameter set.")
        .def_prop_ro("comment", [](Fluid const& f) { return std::string(f.model->comment()); }, "Remark on the parameters.")
        .def_prop_ro("source", [](Fluid const& f) { return f.notes.source; }, "Where the parameters come from.")
        .def_prop_ro("home", [](Fluid const& f) { return f.home.directory().string(); }, "Directory that data are read from first.")
        .def_prop_ro("M", [](Fluid const& f) { return 1e-3 * f.model->M(); }, "Molar mass, kg/mol.")
        .def_prop_ro("T_critical", [](Fluid const& f) { return f.model->Tcrit(); }, "K")
        .def_prop_ro("p_critical", [](Fluid const& f) { return kMega * f.model->pcrit(); }, "Pa")
        .def_prop_ro("rho_critical", [](Fluid const& f) { return kMega / f.model->vcrit(); }, "mol/m3")
        .def_prop_ro("T_min", [](Fluid const& f) { return f.notes.Tmin; }, "End of the stated range, K; not-a-number: not stated.")
        .def_prop_ro("T_max", [](Fluid const& f) { return f.notes.Tmax; }, "End of the stated range, K.")
        .def_prop_ro("p_max", [](Fluid const& f) { return kMega * f.notes.pmax; }, "End of the stated range, Pa.")
        .def_prop_ro("has_ideal", [](Fluid const& f) { return f.ideal.has_value(); }, "Is there an ideal-gas table?")
        .def_prop_ro("parameters",
                     [](Fluid const& f) {
                         std::vector<double> p;
                         for (int i = 0; i < f.model->mpar(); ++i) p.push_back(f.model->param(i));
                         return p;
                     },
                     "Parameters of the equation, in its own units.")
        .def("set_parameter",
             [](Fluid& f, int i, double x) {
                 if (i < 0 || i >= f.model->mpar()) throw nb::index_error("no such parameter");
                 f.model->param(i, x);
             },
             nb::arg("i"), nb::arg("value"), "Changes a parameter of the equation, in its own unit.")
        .def("states", &states, nb::arg("first"), nb::arg("a"), nb::arg("second"), nb::arg("b"), nb::arg("threads"), nb::arg("single"),
             "Stable states (n, 26) from two quantities (codes 0 T, 1 p, 2 rho, 3 h, 4 s, 5 u, 6 q), SI: T, p, rho, h, s, u, q, properties of the phase, densities of both; status, words.")
        .def("all_states", &all_states, nb::arg("first"), nb::arg("a"), nb::arg("second"), nb::arg("b"),
             "Every state with two given values, in the columns of states.")
        .def("properties", &properties, nb::arg("T"), nb::arg("rho"), nb::arg("threads"), nb::arg("single"),
             "Properties (n, 17) of one phase at T (K) and rho (mol/m3): p, Z, u, h, s, g, a, cv, cp, w, mu_JT, kappa_T, alpha_p, dp_dT, dp_drho, M, n_s in SI.")
        .def("densities", &densities, nb::arg("T"), nb::arg("p"), nb::arg("phase"), nb::arg("threads"), nb::arg("single"),
             "Density roots (mol/m3) at T (K) and p (Pa); phase 1 the densest, 3 the thinnest.")
        .def("saturation", &saturation, nb::arg("at_T"), nb::arg("values"), nb::arg("threads"), nb::arg("single"),
             "T (K), p (Pa), densities of liquid and vapour (mol/m3) at temperatures, or at pressures.")
        .def("property_diagram", &property_diagram_of_fluid, nb::arg("values"), nb::arg("range"), nb::arg("points"),
             "Saturation and isolines (lists of T, p, q, s, rho; T_min, T_max, p_min, p_max; SI): rows T, p, rho, h, s, u, q.")
        .def("virial", &virial, nb::arg("T"), nb::arg("order"), nb::arg("threads"), nb::arg("single"),
             "Virial coefficients of an order from 2 to 9 at T (K), (m3/mol)**(order - 1).");
}

}  // namespace py
