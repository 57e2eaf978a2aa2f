// Residue curve maps.
#include "module.h"

#include <corvane/phases/ternary/residue_curves.h>

namespace py {

/// Rows of curves are T, xi, x (3), y (3); singular points T, x (3).
nb::dict residue_map(corvane::Mixture const& m, double p, double step, double tolerance, int mesh) {
    if (m.size() != 3) throw nb::value_error("residue curve maps are for three components");
    Tracing tracing;
    auto o = tracing.options<corvane::ResidueOptions>(m);
    o.step = step;
    o.tolerance = tolerance;
    o.mesh = mesh;
    const auto map = traced(tracing, [&] { return corvane::residue_map(*m.model, p / kMega, o); });
    nb::list curves, kinds;
    for (corvane::ResidueCurve const& c : map.curves) {
        Out out({c.points.size(), 8});
        for (std::size_t k = 0; k < c.points.size(); ++k) {
            double* row = out.row(k);
            row[0] = c.points[k].T;
            row[1] = c.points[k].xi;
            for (int i = 0; i < 3; ++i) {
                row[2 + i] = c.points[k].x[i];
                row[5 + i] = c.points[k].y[i];
            }
        }
        curves.append(nb::make_tuple(out.array(), c.begin, c.end, c.boundary));
    }
    Out singular({map.singular.size(), 4});
    for (std::size_t k = 0; k < map.singular.size(); ++k) {
        singular.row(k)[0] = map.singular[k].T;
        for (int i = 0; i < 3; ++i) singular.row(k)[1 + i] = map.singular[k].x[i];
        kinds.append(corvane::in_words(map.singular[k].kind));
    }
    nb::dict all;
    all["curves"] = curves;
    all["singular"] = singular.array();
    all["kinds"] = kinds;
    all["consistent"] = map.consistent();
    all["failures"] = map.failures;
    return all;
}

}  // namespace py
