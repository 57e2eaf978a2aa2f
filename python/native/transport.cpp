// Viscosity, thermal conductivity and surface tension of pure fluids and of mixtures.
#include "mixture.h"

#include <corvane/transport/mixture_transport.h>
#include <corvane/transport/transport.h>

#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {
namespace {
/// Rows are value, in range, deviation of a second source, uncertainty, metastable; beside them the models that the values
/// came from.
template <class F>
nb::tuple values(std::size_t n, int threads, bool single, F const& value) {
    Out out({n, 5});
    Report report(n);
    std::mutex mutex;
    std::vector<std::pair<std::string, std::string>> models;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const corvane::TransportValue v = value(i);
        row[0] = v.value, row[1] = v.in_range, row[2] = v.second_source;
        row[3] = v.uncertainty, row[4] = v.metastable;
        const std::pair model(v.model, v.source);
        const std::lock_guard lock(mutex);
        if (std::find(models.begin(), models.end(), model) == models.end()) models.push_back(model);
    });
    return nb::make_tuple(result(out, report, finished, single), models);
}

/// what: 0 viscosity, 1 thermal conductivity, 2 surface tension, 3 self-diffusion.
nb::tuple of_fluid(corvane::Transport const& transport, int what, Column T, Column rho, int threads, bool single) {
    same_length(T.shape(0), rho.shape(0));
    return values(T.shape(0), threads, single, [&](std::size_t i) {
        return what == 0   ? transport.viscosity(T(i), rho(i) / kMega)
               : what == 1 ? transport.thermal_conductivity(T(i), rho(i) / kMega)
               : what == 2 ? transport.surface_tension(T(i))
                           : transport.diffusion(T(i), rho(i) / kMega);
    });
}

nb::tuple of_phase(corvane::MixtureTransport const& transport, int what, Column T, Column rho, Rows x, int threads) {
    same_length(T.shape(0), rho.shape(0));
    same_length(T.shape(0), x.shape(0));
    return values(T.shape(0), threads, false, [&](std::size_t i) {
        const Vector<double> of = row_of(x, i);
        const double r = rho(i) / kMega;
        if (what == 0) return transport.viscosity(T(i), r, of);
        if (what == 1) return transport.thermal_conductivity(T(i), r, of);
        const corvane::MixtureDiffusion d = transport.diffusion(T(i), r, of);
        corvane::TransportValue v = d.stefan;
        if (what == 3) v.value = d.fick();
        return v;
    });
}

/// z (m), excess potential (Pa), partial densities (mol/m3), tension (N/m), its relative error.
nb::tuple profile(corvane::MixtureTransport const& transport, double T, double rhoL, Rows x, double rhoV, Rows y) {
    const corvane::InterfaceProfile p = [&] {
        nb::gil_scoped_release release;
        return transport.interface_profile(T, rhoL / kMega, row_of(x, 0), rhoV / kMega, row_of(y, 0));
    }();
    const std::size_t n = p.rho_i.front().size();
    Out out({p.z.size(), n + 2});
    for (std::size_t k = 0; k < p.z.size(); ++k) {
        double* row = out.data() + k * (n + 2);
        row[0] = 1e-9 * p.z[k], row[1] = 1e6 * p.excess[k];
        for (std::size_t i = 0; i < n; ++i) row[2 + i] = kMega * p.rho_i[k][i];
    }
    return nb::make_tuple(out.array(), p.tension, p.tension_error);
}

nb::tuple between_phases(corvane::MixtureTransport const& transport, Column T, Column rhoL, Rows x, Column rhoV, Rows y,
                         int threads) {
    for (std::size_t n : {rhoL.shape(0), x.shape(0), rhoV.shape(0), y.shape(0)}) same_length(T.shape(0), n);
    return values(T.shape(0), threads, false, [&](std::size_t i) {
        return transport.surface_tension(T(i), rhoL(i) / kMega, row_of(x, i), rhoV(i) / kMega, row_of(y, i));
    });
}
}  // namespace

void add_transport(nb::module_& m) {
    nb::class_<corvane::Transport>(m, "Transport", "Transport properties of a fluid; corvane.Fluid is for people.")
        .def(nb::init<corvane::Fluid const&>(), nb::arg("fluid"), nb::keep_alive<1, 2>())
        .def("values", &of_fluid, nb::arg("what"), nb::arg("T"), nb::arg("rho"), nb::arg("threads"), nb::arg("single"),
             "Viscosity (what = 0, Pa s), thermal conductivity (1, W/(m K)), surface tension (2, N/m) or self-diffusion (3, m2/s) at T (K), rho "
             "(mol/m3): rows of value, in range, deviation of a second source, uncertainty, metastable, and the models.");
    nb::class_<corvane::MixtureTransport>(m, "MixtureTransport",
                                          "Transport properties of a mixture; corvane.Mixture is for people.")
        .def(nb::init<Mixture const&>(), nb::arg("mixture"), nb::keep_alive<1, 2>())
        .def("values", &of_phase, nb::arg("what"), nb::arg("T"), nb::arg("rho"), nb::arg("x"), nb::arg("threads"),
             "As of a fluid, viscosity (what = 0), conductivity (1), diffusion by Maxwell and Stefan (2) or Fick (3) of the phase x.")
        .def("profile", &profile, nb::arg("T"), nb::arg("rho_liquid"), nb::arg("x"), nb::arg("rho_vapour"), nb::arg("y"),
             "Rows of place, excess potential, partial densities through an interface; tension, its error.")
        .def("tension", &between_phases, nb::arg("T"), nb::arg("rho_liquid"), nb::arg("x"), nb::arg("rho_vapour"),
             nb::arg("y"), nb::arg("threads"), "Surface tension (N/m) of a liquid x beside a vapour y.");
}

}  // namespace py
