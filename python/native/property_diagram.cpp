// Property diagrams of pure fluids and mixtures.
#include "module.h"

#include <corvane/state/property_diagram.h>

namespace py {
namespace {
using corvane::PropertyPoint;

Array rows(std::vector<PropertyPoint> const& points) {
    Out out({points.size(), 7});
    for (std::size_t k = 0; k < points.size(); ++k) {
        PropertyPoint const& q = points[k];
        double const values[] = {q.T, q.p * kMega, q.rho * kMega, q.h, q.s, q.u, q.q};
        std::copy(std::begin(values), std::end(values), out.row(k));
    }
    return out.array();
}

template <class Diagram>
nb::dict traced_diagram(std::vector<std::vector<double>> const& values, std::vector<double> const& range,
                        int points, Diagram const& diagram) {
    if (values.size() != 5 || range.size() != 4) throw nb::value_error("five lists and four numbers");
    Tracing tracing;
    corvane::PropertyDiagramOptions o{values[0], values[1], values[2], values[3], values[4]};
    for (double& p : o.p) p /= kMega;
    for (double& rho : o.rho) rho /= kMega;
    o.T_min = range[0];
    o.T_max = range[1];
    o.p_min = range[2] / kMega;
    o.p_max = range[3] / kMega;
    o.points = points;
    o.progress = tracing.progress;
    const corvane::PropertyDiagram d = traced(tracing, [&] { return diagram(o); });
    nb::list lines;
    for (corvane::Isoline const& line : d.lines) {
        const bool mega = line.what == corvane::Quantity::p || line.what == corvane::Quantity::rho;
        lines.append(nb::make_tuple(static_cast<int>(line.what), line.value * (mega ? kMega : 1.0), rows(line.points)));
    }
    nb::dict all;
    all["liquid"] = rows(d.liquid);
    all["vapour"] = rows(d.vapour);
    all["lines"] = lines;
    all["failures"] = d.failures;
    return all;
}
}  // namespace

nb::dict property_diagram_of_fluid(corvane::Fluid const& f, std::vector<std::vector<double>> const& values,
                                   std::vector<double> const& range, int points) {
    return traced_diagram(values, range, points,
                          [&](auto const& o) { return corvane::property_diagram(*f.model, o); });
}

nb::dict property_diagram_of_mixture(corvane::Mixture const& m, Column z,
                                     std::vector<std::vector<double>> const& values,
                                     std::vector<double> const& range, int points) {
    const Vector<double> x = vector_of(z);
    return traced_diagram(values, range, points,
                          [&](auto const& o) { return corvane::property_diagram(*m.model, x, o); });
}

}  // namespace py
