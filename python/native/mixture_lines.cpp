// Critical points and lines of binaries: critical, of three phases, azeotropic.
#include "mixture.h"

#include <nanobind/stl/string.h>

namespace py {

namespace {
constexpr std::size_t kCritical = 6;

void write_critical(double* row, corvane::CriticalPoint const& q) {
    double const head[kCritical] = {q.T, q.p * kMega, q.rho * kMega, q.stable ? 1.0 : 0.0,
                                    q.certificate.conditions, q.certificate.tpd};
    std::copy(std::begin(head), std::end(head), row);
    write(row + kCritical, q.x);
}
}  // namespace

Array critical_points(std::vector<corvane::CriticalPoint> const& points, int n) {
    Out out({points.size(), kCritical + static_cast<std::size_t>(n)});
    for (std::size_t i = 0; i < points.size(); ++i) write_critical(out.row(i), points[i]);
    return out.array();
}

constexpr std::size_t kThreePhases = 13;
Array phases_of(std::vector<corvane::ThreePhasePoint> const& points) {
    Out out({points.size(), kThreePhases});
    double* row = out.data();
    for (auto const& q : points) {
        std::fill_n(row, kThreePhases, kNaN);
        row[0] = q.T;
        row[1] = q.p * kMega;
        row[8] = q.certificate.dmu;
        row[9] = q.certificate.dp;
        row[10] = q.certificate.tpd;
        row[11] = q.certificate.value_error;
        row[12] = q.certificate.x_error;
        for (std::size_t k = 0; k < 3 && k < q.phases.size(); ++k) {
            row[2 + k] = q.phases[k].x[0];
            row[5 + k] = q.phases[k].rho * kMega;
        }
        row += kThreePhases;
    }
    return out.array();
}

namespace {
/// A line with its ends in words.
nb::dict ended(Array points, corvane::CurveEnd begin, corvane::CurveEnd end, corvane::CurveKind kind) {
    nb::dict one;
    one["points"] = std::move(points);
    one["begin"] = corvane::in_words(begin, kind);
    one["end"] = corvane::in_words(end, kind);
    return one;
}

/// Columns: T, p, x, both densities, dmu, dp, tpd, value_error, x_error.
Array azeotropes(std::vector<corvane::AzeotropePoint> const& points) {
    constexpr std::size_t columns = 10;
    Out out({points.size(), columns});
    double* row = out.data();
    for (auto const& q : points) {
        corvane::Certificate const& c = q.certificate;
        double const values[columns] = {q.T, q.p * kMega, q.x, q.dense.rho * kMega, q.light.rho * kMega,
                                        c.dmu, c.dp, c.tpd, c.value_error, c.x_error};
        row = std::copy(std::begin(values), std::end(values), row);
    }
    return out.array();
}

/// The lines that trace(model, options) finds up to p_max, their points as table(points) writes them.
template <class Options, class Trace, class Table>
nb::list lines(Mixture const& m, double p_max, corvane::CurveKind kind, Trace const& trace, Table const& table) {
    Tracing tracing;
    auto options = tracing.options<Options>(m);
    options.p_max = p_max / kMega;
    const auto found = traced(tracing, [&] { return trace(*m.model, options); });
    nb::list all;
    for (auto const& line : found) all.append(ended(table(line.points), line.begin, line.end, kind));
    return all;
}

nb::list critical_lines(Mixture const& m, double p_max) {
    return lines<corvane::CriticalLineOptions>(
        m, p_max, corvane::CurveKind::any, [](auto&... x) { return corvane::critical_lines(x...); },
        [&](auto const& points) { return critical_points(points, m.size()); });
}
nb::list three_phase_lines(Mixture const& m, double p_max) {
    return lines<corvane::PhaseLineOptions>(
        m, p_max, corvane::CurveKind::phase_line, [](auto&... x) { return corvane::three_phase_lines(x...); },
        phases_of);
}
nb::list azeotropic_lines(Mixture const& m, double p_max) {
    return lines<corvane::PhaseLineOptions>(
        m, p_max, corvane::CurveKind::azeotrope, [](auto&... x) { return corvane::azeotropic_lines(x...); },
        azeotropes);
}

/// Of every composition the stable critical point.
nb::tuple critical_point(Mixture const& m, Rows z, int threads) {
    check(m, z);
    const std::size_t n = z.shape(0);
    Out out({n, kCritical + z.shape(1)});
    Report report(n);
    corvane::CriticalOptions options;
    options.validity = &m.validity;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        write_critical(row, corvane::critical_point(*m.model, row_of(z, i), options));
    });
    return result(out, report, finished);
}
}  // namespace

void add_mixture_lines(MixtureClass& of) {
    of.def("critical_points",
             [](Mixture const& x, Column z) {
                 const Vector<double> v = vector_of(z);
                 corvane::CriticalOptions options;
                 options.validity = &x.validity;
                 const auto points = [&] {
                     const nb::gil_scoped_release released;
                     return corvane::critical_points(*x.model, v, options);
                 }();
                 return critical_points(points, x.size());
             },
             nb::arg("z"), "All critical points of composition z: rows T (K), p (Pa), rho (mol/m3), stable, residual, tpd, x.")
        .def("critical_point", &critical_point, nb::arg("z"), nb::arg("threads"),
             "The stable critical points of compositions (n, N), certified, in the columns of critical_points.")
        .def("critical_lines", &critical_lines, "Certified critical lines of a binary.")
        .def("three_phase_lines", &three_phase_lines, "Lines of three phases of a binary.")
        .def("azeotropic_lines", &azeotropic_lines, "Lines of azeotropes of a binary.");
}

}  // namespace py
