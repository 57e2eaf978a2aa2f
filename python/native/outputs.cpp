// Activity coefficients, Henry's constants, virial coefficients of mixtures, ideal curves.
#include "arrays.h"
#include "module.h"

#include <nanobind/stl/vector.h>

namespace py {
namespace {
using corvane::Fluid;
using corvane::Mixture;

Vector<double> row_of(Rows const& x, std::size_t i) {
    Vector<double> v(static_cast<int>(x.shape(1)));
    for (int k = 0; k < v.size(); ++k) v[k] = x(i, static_cast<std::size_t>(k));
    return v;
}

void check(Mixture const& m, Column const& T, Rows const& x) {
    same_length(T.shape(0), x.shape(0));
    if (x.shape(1) != static_cast<std::size_t>(m.size()))
        throw nb::value_error("the last axis of a composition has one value for every component");
}

/// phase: 1 dense, 2 stable, 3 dilute root. Columns: rho, g, h, s, cp, v; then ln_gamma, ln_phi,
/// rho of the pure components and whether they are liquids.
nb::tuple excess(Mixture const& m, Column T, Column p, Rows x, int phase, int threads) {
    check(m, T, x);
    same_length(T.shape(0), p.shape(0));
    const std::size_t n = T.shape(0), N = x.shape(1);
    Out out({n, 6 + 4 * N});
    Report report(n);
    const auto root = phase == 1   ? corvane::Root::dense
                      : phase == 3 ? corvane::Root::dilute
                                   : corvane::Root::stable;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const auto q = corvane::excess_properties(*m.model, T(i), p(i) / kMega, row_of(x, i), root);
        double const values[] = {q.rho * kMega, q.g, q.h, q.s, q.cp, q.v / kMega};
        std::copy(std::begin(values), std::end(values), row);
        for (std::size_t k = 0; k < N; ++k) {
            row[6 + k] = q.ln_gamma[static_cast<int>(k)];
            row[6 + N + k] = q.ln_phi[static_cast<int>(k)];
            row[6 + 2 * N + k] = q.pure[k].rho > 0.0 ? q.pure[k].rho * kMega : kNaN;
            row[6 + 3 * N + k] = q.pure[k].liquid;
        }
    });
    return result(out, report, finished);
}

/// p not-a-number: the vapour pressure of the solvent x. Columns: p, H, gamma, phi, v, h_solution,
/// rho.
nb::tuple henry(Mixture const& m, int solute, Column T, Column p, Rows x, int threads) {
    check(m, T, x);
    same_length(T.shape(0), p.shape(0));
    const std::size_t n = T.shape(0);
    Out out({n, 7});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const auto q =
            std::isnan(p(i))
                ? corvane::henry_constant(*m.model, solute, T(i), row_of(x, i))
                : corvane::henry_constant(*m.model, solute, T(i), p(i) / kMega, row_of(x, i));
        double const values[] = {q.p * kMega,        q.H * kMega, std::exp(q.ln_gamma),
                                 std::exp(q.ln_phi), q.v / kMega, q.h_solution,
                                 q.rho * kMega};
        std::copy(std::begin(values), std::end(values), row);
    });
    return result(out, report, finished);
}

/// Columns: B, C, T·dB/dT; then B_ij.
nb::tuple virial(Mixture const& m, Column T, Rows x, int threads) {
    check(m, T, x);
    const std::size_t n = T.shape(0), N = x.shape(1);
    Out out({n, 3 + N * N});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const auto q = corvane::virial_coefficients(*m.model, T(i), row_of(x, i));
        row[0] = q.B / kMega;
        row[1] = q.C / (kMega * kMega);
        row[2] = q.B_T / kMega;
        for (int k = 0; k < m.size(); ++k)
            for (int l = 0; l < m.size(); ++l)
                row[3 + static_cast<std::size_t>(k * m.size() + l)] = q.B_ij[k][l] / kMega;
    });
    return result(out, report, finished);
}

/// Rows of T, p, rho; T at zero density, the highest point and the last one.
nb::dict in_words(corvane::IdealCurveResult const& q) {
    Out points({q.points.size(), 3});
    const auto write = [](double* row, corvane::IdealCurvePoint const& x) {
        row[0] = x.T;
        row[1] = x.p * kMega;
        row[2] = x.rho * kMega;
    };
    for (std::size_t k = 0; k < q.points.size(); ++k) write(points.row(k), q.points[k]);
    using E = corvane::IdealCurveEnd;
    nb::dict d;
    d["points"] = points.array();
    d["T_zero"] = q.T_zero;
    d["highest"] = nb::make_tuple(q.highest.T, q.highest.p * kMega, q.highest.rho * kMega);
    d["last"] = nb::make_tuple(q.last.T, q.last.p * kMega, q.last.rho * kMega);
    d["end"] = q.end == E::saturation ? "saturation"
               : q.end == E::cold     ? "temperature"
               : q.end == E::pressure ? "pressure"
                                      : "lost";
    return d;
}

corvane::IdealCurveOptions options(std::vector<double> const& T, double T_min, double p_max) {
    corvane::IdealCurveOptions how;
    how.T = T;
    how.T_min = T_min;
    how.p_max = p_max / kMega;
    return how;
}

template <class F>
auto existing(F const& f) {
    try {
        return f();
    } catch (ThException const& e) {
        if (e.number != th_generic) throw;
        throw corvane::EquilibriumFailure(
            corvane::EquilibriumFailure::Kind::no_solution, "ideal curve", "ideal_curve", 0, kNaN,
            "it does not begin between T_min and 50 critical temperatures");
    }
}
}  // namespace

void add_outputs(nb::module_& m) {
    m.def("excess", &excess, "Activity coefficients and excess functions (n, 6 + 4N), SI.");
    m.def("henry", &henry, "Henry's constants (n, 7), SI.");
    m.def("virial", &virial, "Virial coefficients of a mixture (n, 3 + N*N), SI.");
    m.def(
        "ideal_curve",
        [](Fluid const& f, int kind, std::vector<double> const& T, double T_min, double p_max) {
            return in_words(existing([&] {
                return corvane::ideal_curve(*f.model, static_cast<corvane::IdealCurve>(kind),
                                            options(T, T_min, p_max));
            }));
        },
        "An ideal curve of a fluid: 0 Zeno, 1 Boyle, 2 Joule-Thomson, 3 Joule.");
    m.def(
        "ideal_curve_of_mixture",
        [](Mixture const& f, Column x, int kind, std::vector<double> const& T, double T_min,
           double p_max) {
            Vector<double> z(static_cast<int>(x.shape(0)));
            for (int k = 0; k < z.size(); ++k) z[k] = x(static_cast<std::size_t>(k));
            return in_words(existing([&] {
                return corvane::ideal_curve(*f.model, z, static_cast<corvane::IdealCurve>(kind),
                                            options(T, T_min, p_max));
            }));
        },
        "The same of a mixture.");
}

}  // namespace py
