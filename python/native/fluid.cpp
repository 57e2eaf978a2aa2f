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
/// That are calculated together, between two looks for Ctrl-C.
constexpr std::size_t kStates = 1024, kPoints = 64;

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

/// Properties of a block of states in columns from `first` on, in SI units and Python's order.
void phases(Fluid const& f, std::size_t count, double const* T, double const* rho, OutColumns& out,
            std::size_t first, std::size_t at) {
    corvane::PropertyColumns c;
    double** const to[] = {&c.p,       &c.Z,     &c.u,       &c.h,    &c.s,     &c.g,
                           &c.a,       &c.cv,    &c.cp,      &c.w,    &c.mu_JT, &c.kappa_T,
                           &c.alpha_p, &c.dp_dT, &c.dp_drho, nullptr, &c.n_s};
    static_assert(std::size(to) == kPhase);
    for (std::size_t k = 0; k < kPhase; ++k)
        if (to[k]) *to[k] = out.column(first + k) + at;
    corvane::phase_properties(*f.model, count, T, rho, c);
    for (std::size_t i = 0; i < count; ++i) {
        c.p[i] *= kMega;
        c.mu_JT[i] /= kMega;
        c.kappa_T[i] /= kMega;
        c.dp_dT[i] *= kMega;
    }
    const double M = f.model->M();
    std::fill_n(out.column(first + 15) + at, count, M > 0.0 ? 1e-3 * M : kNaN);
}

/// Density roots of a block, mol/cm³; not-a-number where p is not above zero, too.
void roots(Fluid const& f, Column const& p, Column const& T, std::size_t from, std::size_t to,
           corvane::Root root, double* rho) {
    std::vector<double> MPa(to - from);
    for (std::size_t i = from; i < to; ++i) MPa[i - from] = p(i) > 0.0 ? p(i) / kMega : kNaN;
    corvane::densities(*f.model, to - from, MPa.data(), T.data() + from, rho, root);
}

/// A block of stable states at p and T.
void at_p(Fluid const& f, Column const& p, Column const& T, OutColumns& out, std::size_t from,
          std::size_t to) {
    std::vector<double> rho(to - from);
    roots(f, p, T, from, to, corvane::Root::stable, rho.data());
    phases(f, to - from, T.data() + from, rho.data(), out, kState, from);
    double* const whole = out.column(0);
    std::size_t const n = static_cast<std::size_t>(out.column(1) - whole);
    constexpr int phase_of[] = {-1, -1, -1, 3, 4, 2};  // h, s and u are those of the phase
    for (std::size_t i = from; i < to; ++i) {
        double* const row = whole + i;
        row[0] = T(i);
        row[n] = p(i);
        row[2 * n] = rho[i - from] * kMega;
        for (std::size_t k = 3; k < 6; ++k) row[k * n] = row[(kState + phase_of[k]) * n];
        row[6 * n] = row[(kBoth - 2) * n] = row[(kBoth - 1) * n] = kNaN;
    }
}

/// Elements where two quantities are given, as columns of a state; single: there is one, see result().
nb::tuple states(Fluid const& f, int first, Column a, int second, Column b, int threads, bool single) {
    same_length(a.shape(0), b.shape(0));
    const std::size_t n = a.shape(0);
    Report report(n);
    const auto A = static_cast<Quantity>(first), B = static_cast<Quantity>(second);
    const auto options = range(f);
    const auto one = [&](std::size_t i, double* row) {
        const auto all = corvane::pure_states(*f.model, {A, to_library(A, a(i))},
                                              {B, to_library(B, b(i))}, options);
        if (all.empty()) throw ThException(th_no_density);
        if (all.size() > 1) throw Several();
        write(row, all.front());
    };
    const bool p_first = A == Quantity::p && B == Quantity::T;
    if (!single && (p_first || (A == Quantity::T && B == Quantity::p))) {
        OutColumns out(n, kBoth);
        Column const &p = p_first ? a : b, &T = p_first ? b : a;
        const bool finished = each_block<kBoth>(
            out, report, n, threads, kStates,
            [&](std::size_t from, std::size_t to) { at_p(f, p, T, out, from, to); },
            [&](std::size_t i) { return std::isnan(out.column(kState)[i]); }, one);
        return result(out, report, finished);
    }
    Out out({n, kBoth});
    const bool finished = each(out, report, n, threads, one);
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
    Report report(n);
    const auto one = [&](std::size_t i, double* row) {
        write_phase(row, corvane::phase_properties(*f.model, T(i), rho(i) / kMega));
    };
    if (single) {
        Out out({n, kPhase});
        const bool finished = each<Rows_are::written_whole>(out, report, n, threads, one);
        return result(out, report, finished, true);
    }
    OutColumns out(n, kPhase);
    const bool finished = each_block<kPhase>(
        out, report, n, threads, kStates,
        [&](std::size_t from, std::size_t to) {
            std::vector<double> cm3(to - from);
            for (std::size_t i = from; i < to; ++i) cm3[i - from] = rho(i) / kMega;
            phases(f, to - from, T.data() + from, cm3.data(), out, 0, from);
        },
        [&](std::size_t i) { return std::isnan(out.column(0)[i]); }, one);
    return result(out, report, finished);
}

/// phase: 1 the densest root, 3 the thinnest
nb::tuple densities(Fluid const& f, Column T, Column p, int phase, int threads, bool single) {
    same_length(T.shape(0), p.shape(0));
    const std::size_t n = T.shape(0);
    Report report(n);
    const auto one = [&](std::size_t i, double* row) {
        if (!(T(i) > 0) || !(p(i) > 0) || !std::isfinite(T(i)) || !std::isfinite(p(i)))
            throw ThException(th_out_of_range);
        double rho = 0.0, other = 0.0;
        if (f.model->vcalc(p(i) / kMega, T(i), phase, rho, other) < 1)
            throw ThException(th_no_density);
        *row = rho * kMega;
    };
    if (single) {
        Out out({n});
        const bool finished = each(out, report, n, threads, one);
        return result(out, report, finished, true);
    }
    OutColumns out(n, 1);
    const bool finished = each_block<1>(
        out, report, n, threads, kStates,
        [&](std::size_t from, std::size_t to) {
            double* const rho = out.column(0) + from;
            roots(f, p, T, from, to, phase == 1 ? corvane::Root::dense : corvane::Root::dilute,
                  rho);
            for (std::size_t i = 0; i < to - from; ++i) rho[i] *= kMega;
        },
        [&](std::size_t i) { return std::isnan(out.column(0)[i]); }, one);
    return result(out, report, finished);
}

/// From this many points on the curve is precomputed, which costs as much as some hundred of them.
constexpr std::size_t kMany = 1000;

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

/// T, p, densities of liquid and vapour, bounds of the relative errors of T or p and of the
/// densities.
nb::tuple saturation(Fluid const& f, bool at_T, Column x, int threads, bool single) {
    constexpr std::size_t kColumns = 6;
    const std::size_t n = x.shape(0);
    const Quantity what = at_T ? Quantity::T : Quantity::p;
    Report report(n);
    const auto one = [&](std::size_t i, double* row) {
        // The state first: it says in words what is wrong.
        const auto found =
            corvane::pure_states(*f.model, {what, to_library(what, x(i))}, {Quantity::q, 0.0});
        double const state[] = {found.front().T, found.front().p * kMega,
                                found.front().liquid->rho * kMega,
                                found.front().vapour->rho * kMega};
        std::copy(std::begin(state), std::end(state), row);
        const auto certified = at_T ? corvane::pure_saturation_T(*f.model, x(i))
                                    : corvane::pure_saturation_p(*f.model, to_library(what, x(i)));
        row[4] = certified.value_error;
        row[5] = certified.rho_error;
    };
    if (single) {
        Out out({n, kColumns});
        const bool finished = each(out, report, n, threads, one);
        return result(out, report, finished, true);
    }
    const auto curve = precomputed(*f.model, n);
    OutColumns out(n, kColumns);
    const bool finished = each_block<kColumns>(
        out, report, n, threads, kPoints,
        [&](std::size_t from, std::size_t to) {
            std::vector<double> given(to - from);
            for (std::size_t i = from; i < to; ++i) given[i - from] = to_library(what, x(i));
            corvane::PureSaturationColumns c;
            double** const columns[] = {&c.T, &c.p, &c.rhoL, &c.rhoV, &c.value_error, &c.rho_error};
            for (std::size_t k = 0; k < kColumns; ++k) *columns[k] = out.column(k) + from;
            auto* const use = curve ? &*curve : nullptr;
            if (at_T)
                corvane::pure_saturations_T(*f.model, to - from, given.data(), c, 1, use);
            else
                corvane::pure_saturations_p(*f.model, to - from, given.data(), c, 1, use);
            for (double* column : {c.p, c.rhoL, c.rhoV})
                for (std::size_t i = 0; i < to - from; ++i) column[i] *= kMega;
        },
        [&](std::size_t i) { return std::isnan(out.column(2)[i]); }, one);
    return result(out, report, finished);
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
        .def_static(
            "open",
            [](std::string const& equation, std::string const& substance, int set,
               std::optional<std::string> const& home) {
                corvane::FluidOptions options;
                options.set = set;
                options.home = home_of(home);
                return corvane::open(equation, substance, options);
            },
            nb::arg("equation"), nb::arg("substance"), nb::arg("set"), nb::arg("home").none(),
            "Opens a fluid by name; equation \"\" and set 0: the best there is.")
        .def_prop_ro(
            "equation", [](Fluid const& f) { return f.equation; }, "Name of the equation.")
        .def_prop_ro(
            "substance", [](Fluid const& f) { return f.substance; }, "Name in the data tree.")
        .def_prop_ro(
            "set", [](Fluid const& f) { return f.set; }, "Number of the parameter set.")
        .def_prop_ro(
            "comment", [](Fluid const& f) { return std::string(f.model->comment()); },
            "Remark on the parameters.")
        .def_prop_ro(
            "source", [](Fluid const& f) { return f.notes.source; },
            "Where the parameters come from.")
        .def_prop_ro(
            "home", [](Fluid const& f) { return f.home.directory().string(); },
            "Directory that data are read from first.")
        .def_prop_ro(
            "M", [](Fluid const& f) { return 1e-3 * f.model->M(); }, "Molar mass, kg/mol.")
        .def_prop_ro(
            "T_critical", [](Fluid const& f) { return f.model->Tcrit(); }, "K")
        .def_prop_ro(
            "p_critical", [](Fluid const& f) { return kMega * f.model->pcrit(); }, "Pa")
        .def_prop_ro(
            "rho_critical", [](Fluid const& f) { return kMega / f.model->vcrit(); }, "mol/m3")
        .def_prop_ro(
            "T_min", [](Fluid const& f) { return f.notes.Tmin; },
            "End of the stated range, K; not-a-number: not stated.")
        .def_prop_ro(
            "T_max", [](Fluid const& f) { return f.notes.Tmax; }, "End of the stated range, K.")
        .def_prop_ro(
            "p_max", [](Fluid const& f) { return kMega * f.notes.pmax; },
            "End of the stated range, Pa.")
        .def_prop_ro(
            "has_ideal", [](Fluid const& f) { return f.ideal.has_value(); },
            "Is there an ideal-gas table?")
        .def_prop_ro(
            "parameters",
            [](Fluid const& f) {
                std::vector<double> p;
                for (int i = 0; i < f.model->mpar(); ++i) p.push_back(f.model->param(i));
                return p;
            },
            "Parameters of the equation, in its own units.")
        .def(
            "set_parameter",
            [](Fluid& f, int i, double x) {
                if (i < 0 || i >= f.model->mpar()) throw nb::index_error("no such parameter");
                f.model->param(i, x);
            },
            nb::arg("i"), nb::arg("value"), "Changes a parameter of the equation, in its own unit.")
        .def("states", &states, nb::arg("first"), nb::arg("a"), nb::arg("second"), nb::arg("b"),
             nb::arg("threads"), nb::arg("single"),
             "Stable states (n, 26) from two quantities (codes 0 T, 1 p, 2 rho, 3 h, 4 s, 5 u, 6 "
             "q), SI: T, p, rho, h, s, u, q, properties of the phase, densities of both; status, "
             "words.")
        .def("all_states", &all_states, nb::arg("first"), nb::arg("a"), nb::arg("second"),
             nb::arg("b"), "Every state with two given values, in the columns of states.")
        .def("properties", &properties, nb::arg("T"), nb::arg("rho"), nb::arg("threads"),
             nb::arg("single"),
             "Properties (n, 17) of one phase at T (K) and rho (mol/m3): p, Z, u, h, s, g, a, cv, "
             "cp, w, mu_JT, kappa_T, alpha_p, dp_dT, dp_drho, M, n_s in SI.")
        .def("densities", &densities, nb::arg("T"), nb::arg("p"), nb::arg("phase"),
             nb::arg("threads"), nb::arg("single"),
             "Density roots (mol/m3) at T (K) and p (Pa); phase 1 the densest, 3 the thinnest.")
        .def("saturation", &saturation, nb::arg("at_T"), nb::arg("values"), nb::arg("threads"),
             nb::arg("single"),
             "T (K), p (Pa), densities of liquid and vapour (mol/m3), bounds of relative errors, "
             "at temperatures, or at pressures.")
        .def("property_diagram", &property_diagram_of_fluid, nb::arg("values"), nb::arg("range"),
             nb::arg("points"),
             "Saturation and isolines (lists of T, p, q, s, rho; T_min, T_max, p_min, p_max; SI): "
             "rows T, p, rho, h, s, u, q.")
        .def("virial", &virial, nb::arg("T"), nb::arg("order"), nb::arg("threads"),
             nb::arg("single"),
             "Virial coefficients of an order from 2 to 9 at T (K), (m3/mol)**(order - 1).");
}

}  // namespace py
