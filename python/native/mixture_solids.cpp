// Solids beside the fluids of binaries.
#include "mixture.h"

#include <corvane/core/files.h>
#include <corvane/phases/solid/anchored_solid.h>
#include <corvane/phases/solid/solid_fluid.h>

#include <filesystem>
#include <optional>

namespace py {
namespace {
/// The solids of both components: anchored at their melting points where those are known, else from
/// their sublimation curves. One without data does not freeze.
struct Solids {
    Solids(Mixture const& m, int solid) {
        if (m.size() != 2) throw nb::value_error("solids are for binaries");
        if (solid < 0 || solid > 1) throw nb::index_error("no such component");
        const corvane::ReadingFrom from(m.home.names());
        for (int i = 0; i < 2; ++i) {
            Model1& model = *m.model->mdl1[i];
            const bool curve = std::filesystem::exists(m.home.file(std::string("CorvaneS/solid/") + model.name()));
            if (curve) model.solid.load();
            try {
                anchored[i].emplace(model, corvane::load_fusion(model.name()));
                options.anchored[i] = &*anchored[i];
            } catch (ThException const& e) {
                if (e.number != th_no_solid) throw;
                if (!curve && i == solid)
                    throw nb::value_error(("no solid data of " + std::string(model.name())).c_str());
            }
        }
        options.validity = &m.validity;
    }
    std::array<std::optional<corvane::AnchoredSolid>, 2> anchored;
    corvane::SolidFluidOptions options;
};

void write(double* row, corvane::SolidFluidPoint const& q) {
    double const values[] = {q.T, q.p * kMega, q.rho * kMega, q.rho_solid * kMega,
                             q.stable ? 1.0 : 0.0, q.x[0], q.x[1]};
    std::copy(std::begin(values), std::end(values), row);
}

/// The stable fluid above a solid. Columns: T, p, rho, rho of the solid, stable, x of both.
nb::tuple solubility(Mixture const& m, int solid, Column T, Column p, int threads) {
    same_length(T.shape(0), p.shape(0));
    const std::size_t n = T.shape(0);
    const Solids solids(m, solid);
    Out out({n, 7});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        write(row, corvane::solubility(*m.model, solid, p(i) / kMega, T(i), solids.options));
    });
    return result(out, report, finished);
}

/// The lines of fluids above a solid at one T or p, columns as of solubility.
nb::list solid_lines(Mixture const& m, int solid, bool at_T, double value, double p_max) {
    Tracing tracing;
    Solids solids(m, solid);
    solids.options.p_max = p_max / kMega;
    solids.options.progress = tracing.progress;
    const auto lines = traced(tracing, [&] {
        return at_T ? corvane::solid_fluid_isotherm(*m.model, solid, value, solids.options)
                    : corvane::solid_fluid_isobar(*m.model, solid, value / kMega, solids.options);
    });
    nb::list all;
    for (auto const& line : lines) {
        Out out({line.points.size(), 7});
        for (std::size_t i = 0; i < line.points.size(); ++i) write(out.row(i), line.points[i]);
        nb::dict one;
        one["points"] = out.array();
        one["begin"] = corvane::in_words(line.begin, corvane::CurveKind::solid);
        one["end"] = corvane::in_words(line.end, corvane::CurveKind::solid);
        all.append(one);
    }
    return all;
}
}  // namespace

void add_mixture_solids(MixtureClass& of) {
    of.def("solubility", &solubility, "The stable fluid above a pure solid.")
        .def("solid_lines", &solid_lines, "Lines of a fluid beside a pure solid.");
}

}  // namespace py
