// Viscosity, thermal conductivity and surface tension of pure fluids.
#include "module.h"

#include <corvane/transport/transport.h>

#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {

nb::tuple transport_of_fluid(corvane::Fluid const& f, int what, Column T, Column rho, int threads, bool single) {
    same_length(T.shape(0), rho.shape(0));
    const std::size_t n = T.shape(0);
    const corvane::Transport transport(f);
    Out out({n, 3});
    Report report(n);
    std::mutex mutex;
    std::vector<std::pair<std::string, std::string>> models;  // that the values came from
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const corvane::TransportValue v =
            what == 0   ? transport.viscosity(T(i), rho(i) / kMega)
            : what == 1 ? transport.thermal_conductivity(T(i), rho(i) / kMega)
                        : transport.surface_tension(T(i));
        row[0] = v.value, row[1] = v.in_range, row[2] = v.second_source;
        const std::pair model(v.model, v.source);
        const std::lock_guard lock(mutex);
        if (std::find(models.begin(), models.end(), model) == models.end()) models.push_back(model);
    });
    return nb::make_tuple(result(out, report, finished, single), models);
}

}  // namespace py
