// Curves and diagrams of mixtures: one call, many points; columns as described at each.
#include "mixture.h"

#include <nanobind/stl/string.h>

namespace py {
namespace {
/// Columns: T, p, both densities, bubble, unstable, value_error, x_error, y.
Array points_of(std::vector<corvane::EnvelopePoint> const& points, int n) {
    const std::size_t width = 8 + static_cast<std::size_t>(n);
    Out out({points.size(), width});
    double* row = out.data();
    for (auto const& q : points) {
        double const head[] = {q.T, q.p * kMega, q.rho * kMega, q.rho2 * kMega,
                               q.bubble ? 1.0 : 0.0, q.unstable ? 1.0 : 0.0, q.value_error, q.x_error};
        std::copy(std::begin(head), std::end(head), row);
        for (int k = 0; k < q.y.size(); ++k) row[8 + k] = q.y[k];
        row += width;
    }
    return out.array();
}

nb::dict envelope(Mixture const& m, Column z, double p_start, double p_max, bool stability) {
    Tracing tracing;
    auto options = tracing.options<corvane::EnvelopeOptions>(m);
    options.p_start = p_start / kMega;
    options.p_max = p_max / kMega;
    options.stability = stability;
    const Vector<double> x = vector_of(z);
    const auto e = traced(tracing, [&] { return corvane::phase_envelope(*m.model, x, options); });
    nb::dict d;
    d["points"] = points_of(e.points, m.size());
    d["critical"] = points_of(e.critical, m.size());
    d["cricondentherm"] = points_of(e.cricondentherm, m.size());
    d["cricondenbar"] = points_of(e.cricondenbar, m.size());
    d["closed"] = e.end == corvane::EnvelopeEnd::closed;
    d["unstable"] = e.unstable;
    return d;
}

constexpr std::size_t kTieLine = 9;  // T, p, x, y, both densities, stable, value_error, x_error

Array tie_lines(std::vector<corvane::TieLine> const& lines) {
    Out out({lines.size(), kTieLine});
    double* row = out.data();
    for (auto const& q : lines) {
        double const values[] = {q.T, q.p * kMega, q.x, q.y, q.rho_x * kMega, q.rho_y * kMega,
                                 q.stable ? 1.0 : 0.0, q.value_error, q.x_error};
        std::copy(std::begin(values), std::end(values), row);
        row += kTieLine;
    }
    return out.array();
}

char const* diagram_end(corvane::CurveEnd end) {
    using E = corvane::CurveEnd;
    return end == E::pure          ? "pure"
           : end == E::critical    ? "critical"
           : end == E::three_phase ? "three_phase"
           : end == E::pressure    ? "limit"
           : end == E::cold        ? "coldest"
           : end == E::full        ? "full"
           : end == E::interrupted ? "interrupted"
                                   : "stuck";
}
char const* const kPairs[] = {"vapour_liquid", "liquid_liquid", "fluid_fluid"};

nb::dict diagram(Mixture const& m, bool at_T, double value, double limit) {
    Tracing tracing;
    auto options = tracing.options<corvane::DiagramOptions>(m);
    if (limit > 0 && at_T) options.p_max = limit / kMega;
    if (limit > 0 && !at_T) options.T_min = limit;
    const auto d = traced(tracing, [&] {
        return at_T ? corvane::complete_pxy(*m.model, value, options)
                    : corvane::complete_Txy(*m.model, value / kMega, options);
    });
    nb::list branches;
    for (auto const& b : d.branches) {
        nb::dict one;
        one["points"] = tie_lines(b.points);
        one["azeotropes"] = tie_lines(b.azeotropes);
        one["begin"] = diagram_end(b.begin);
        one["end"] = diagram_end(b.end);
        one["kind"] = kPairs[static_cast<int>(b.kind)];
        branches.append(one);
    }
    nb::dict all;
    all["branches"] = branches;
    all["three_phase"] = phases_of(d.three_phase);
    all["complete"] = d.complete();
    return all;
}

/// Of a region, columns: x and y of three components, both densities, dmu, dp, tpd, x_error.
Array tie_lines(std::vector<corvane::TernaryTieLine> const& lines) {
    Out out({lines.size(), 12});
    for (std::size_t k = 0; k < lines.size(); ++k) {
        auto const& q = lines[k];
        double* row = out.row(k);
        for (std::size_t phase = 0; phase < 2; ++phase) {
            write(row + 3 * phase, q.phases[phase].x);
            row[6 + phase] = q.phases[phase].rho * kMega;
        }
        double const evidence[] = {q.dmu, q.dp, q.tpd, q.x_error};
        std::copy(std::begin(evidence), std::end(evidence), row + 8);
    }
    return out.array();
}

nb::dict ternary(Mixture const& m, double T, double p, double step, int mesh) {
    if (m.size() != 3) throw nb::value_error("ternary diagrams are for three components");
    Tracing tracing;
    auto options = tracing.options<corvane::TernaryOptions>(m);
    options.step = step;
    options.mesh = mesh;
    const auto d = traced(
        tracing, [&] { return corvane::ternary_diagram(*m.model, T, p / kMega, options); });
    nb::list regions;
    for (auto const& r : d.regions) {
        nb::dict one;
        one["points"] = tie_lines(r.tie_lines);
        one["kind"] = kPairs[static_cast<int>(r.kind)];
        one["begin"] = corvane::in_words(r.begin, corvane::CurveKind::ternary);
        one["end"] = corvane::in_words(r.end, corvane::CurveKind::ternary);
        regions.append(one);
    }
    Out corners({d.three_phase.size(), 3, 4}), open({d.open.size(), 3});
    double* row = corners.data();
    for (auto const& t : d.three_phase)
        for (auto const& phase : t.phases) {
            write(row, phase.x);
            row[3] = phase.rho * kMega;
            row += 4;
        }
    for (std::size_t k = 0; k < d.open.size(); ++k) write(open.row(k), d.open[k]);
    nb::dict all;
    all["regions"] = regions;
    all["three_phase"] = corners.array();
    all["plait"] = critical_points(d.plait, 3);
    all["open"] = open.array();
    all["complete"] = d.complete();
    return all;
}
}  // namespace

void add_mixture_curves(MixtureClass& of) {
    of.def("envelope", &envelope, nb::arg("z"), nb::arg("p_start"), nb::arg("p_max"), nb::arg("stability"),
           "A phase envelope of composition z: rows T (K), p (Pa), rho, rho_incipient (mol/m3), bubble, unstable, bounds, y.")
        .def("diagram", &diagram, nb::arg("at_T"), nb::arg("value"), nb::arg("limit"),
             "The complete diagram of a binary at T (K) or p (Pa).")
        .def("ternary", &ternary, nb::arg("T"), nb::arg("p"), nb::arg("step"), nb::arg("mesh"),
             "The complete diagram of a ternary at T (K) and p (Pa).")
        .def("residue_map", &residue_map, nb::arg("p"), nb::arg("step"), nb::arg("tolerance"), nb::arg("mesh"),
             "Residue curves of a ternary at p (Pa): curves with rows T, xi, x, y; singular points.")
        .def_prop_ro("critical_constants",
                     [](Mixture const& x) {
                         std::vector<std::vector<double>> all;
                         for (int i = 0; i < x.size(); ++i)
                             all.push_back({x.model->mdl1[i]->Tcrit(), kMega * x.model->mdl1[i]->pcrit()});
                         return all;
                     },
                     "Critical temperature (K) and pressure (Pa) of every component.")
        .def("property_diagram", &property_diagram_of_mixture, nb::arg("z"), nb::arg("values"), nb::arg("range"), nb::arg("points"),
             "Saturation and isolines of composition z, as of a fluid.");
}

}  // namespace py
