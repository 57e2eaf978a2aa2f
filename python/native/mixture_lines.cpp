// Critical points and lines of binaries: critical, of three phases, azeotropic.
#include "mixture.h"

#include <nanobind/stl/string.h>

namespace py {

Array critical_points(std::vector<corvane::CriticalPoint> const& points, int n) {
    const std::size_t width = 6 + static_cast<std::size_t>(n);
    Out out({points.size(), width});
    double* row = out.data();
    for (auto const& q : points) {
        double const head[] = {q.T, q.p * kMega, q.rho * kMega, q.stable ? 1.0 : 0.0,
                               q.certificate.conditions, q.certificate.tpd};
        std::copy(std::begin(head), std::end(head), row);
        write(row + 6, q.x);
        row += width;
    }
    return out.array();
}

constexpr std::size_t kThreePhases = 11;
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
nb::dict ended(Array points, corvane::CurveEnd begin, corvane::CurveEnd end,
               corvane::CurveKind kind = corvane::CurveKind::any) {
    nb::dict one;
    one["points"] = std::move(points);
    one["begin"] = corvane::in_words(begin, kind);
    one["end"] = corvane::in_words(end, kind);
    return one;
}

nb::list critical_lines(Mixture const& m, double p_max) {
    Tracing tracing;
    corvane::CriticalLineOptions options;
    options.p_max = p_max / kMega;
    options.progress = tracing.progress;
    options.validity = &m.validity;
    const auto lines = traced(tracing, [&] { return corvane::critical_lines(*m.model, options); });
    nb::list all;
    for (auto const& line : lines)
        all.append(ended(critical_points(line.points, m.size()), line.begin, line.end));
    return all;
}

corvane::PhaseLineOptions line_options(Mixture const& m, Tracing& tracing, double p_max) {
    corvane::PhaseLineOptions options;
    options.p_max = p_max / kMega;
    options.progress = tracing.progress;
    options.validity = &m.validity;
    return options;
}

nb::list three_phase_lines(Mixture const& m, double p_max) {
    Tracing tracing;
    const auto options = line_options(m, tracing, p_max);
    nb::list all;
    for (auto const& line :
         traced(tracing, [&] { return corvane::three_phase_lines(*m.model, options); }))
        all.append(ended(phases_of(line.points), line.begin, line.end, corvane::CurveKind::phase_line));
    return all;
}

/// Columns: T, p, x, both densities, dmu, dp, tpd.
nb::list azeotropic_lines(Mixture const& m, double p_max) {
    Tracing tracing;
    const auto options = line_options(m, tracing, p_max);
    nb::list all;
    for (auto const& line :
         traced(tracing, [&] { return corvane::azeotropic_lines(*m.model, options); })) {
        Out out({line.points.size(), 8});
        double* row = out.data();
        for (auto const& q : line.points) {
            double const values[] = {q.T, q.p * kMega, q.x, q.dense.rho * kMega,
                                     q.light.rho * kMega, q.certificate.dmu, q.certificate.dp,
                                     q.certificate.tpd};
            std::copy(std::begin(values), std::end(values), row);
            row += 8;
        }
        all.append(ended(out.array(), line.begin, line.end, corvane::CurveKind::azeotrope));
    }
    return all;
}
}  // namespace

void add_mixture_lines(MixtureClass& of) {
    of.def("critical_points",
             [](Mixture const& x, Column z, bool all) {
                 const Vector<double> v = vector_of(z);
                 corvane::CriticalOptions options;
                 options.validity = &x.validity;
                 const auto points = [&] {
                     const nb::gil_scoped_release released;
                     return all ? corvane::critical_points(*x.model, v, options)
                                : std::vector{corvane::critical_point(*x.model, v, options)};
                 }();
                 return critical_points(points, x.size());
             },
             "Certified critical points of composition z: the stable one, or all.")
        .def("critical_lines", &critical_lines, "Certified critical lines of a binary.")
        .def("three_phase_lines", &three_phase_lines, "Lines of three phases of a binary.")
        .def("azeotropic_lines", &azeotropic_lines, "Lines of azeotropes of a binary.");
}

}  // namespace py
