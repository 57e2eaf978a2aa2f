// States of mixtures: properties of a phase, flashes, bubble and dew points.
#include "mixture.h"

#include <nanobind/stl/string.h>

namespace py {
namespace {
nb::tuple properties(Mixture const& m, Column T, Column rho, Rows x, int threads) {
    check(m, x);
    const std::size_t n = T.shape(0), width = std::size_t(columns_of_phase);
    same_length(n, rho.shape(0));
    same_length(n, x.shape(0));
    Out out({n, width});
    Report report(n);
    const bool finished = each<Rows_are::written_whole>(out, report, n, threads, [&](std::size_t i, double* row) {
        write_phase(row, corvane::phase_properties(*m.model, T(i), rho(i) / kMega, row_of(x, i)));
    });
    return result(out, report, finished);
}

/// phase: 1 the densest root, 2 that of lower Gibbs energy, 3 the thinnest. Not certified.
nb::tuple densities(Mixture const& m, Column T, Column p, Rows x, int phase, int threads) {
    check(m, x);
    const std::size_t n = T.shape(0);
    same_length(n, p.shape(0));
    same_length(n, x.shape(0));
    Out out({n});
    Report report(n);
    const auto root = phase == 1   ? corvane::Root::dense
                      : phase == 3 ? corvane::Root::dilute
                                   : corvane::Root::stable;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        if (!(T(i) > 0) || !(p(i) > 0) || !std::isfinite(T(i)) || !std::isfinite(p(i)))
            throw ThException(th_out_of_range);
        const corvane::FluidModel fluid(*m.model, row_of(x, i));
        corvane::PhaseState s;
        s.resize(fluid.size());
        if (!fluid.evaluate_at(s, p(i) / kMega, T(i), fluid.z(), root, 0))
            throw ThException(th_no_density);
        *row = s.rho * kMega;
    });
    return result(out, report, finished);
}

/// ln of the fugacity coefficients at T and density.
nb::tuple ln_phi(Mixture const& m, Column T, Column rho, Rows x, int threads) {
    check(m, x);
    const std::size_t n = T.shape(0), N = x.shape(1);
    same_length(n, rho.shape(0));
    same_length(n, x.shape(0));
    Out out({n, N});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Vector<double> rho_i = row_of(x, i) * (rho(i) / kMega);
        const double ln_Z = std::log(m.model->Z(rho_i, T(i)));
        if (!std::isfinite(ln_Z)) throw ThException(th_out_of_range);
        for (std::size_t k = 0; k < N; ++k)
            row[k] = m.model->myr(rho_i, T(i), static_cast<int>(k)) - ln_Z;
    });
    return result(out, report, finished);
}

constexpr std::size_t kFlashHead = 12;

/// Columns: T, p, rho, h, s, u, number of phases, tpd, x_error, rho_error, dmu, dp; then N + 1 slots for
/// phases, each of fraction, rho, x.
std::size_t width_of_flash(std::size_t N) {
    return kFlashHead + (N + 1) * (N + 2);
}

void write_flash(Mixture const& m, Vector<double> const& z, corvane::FlashResult& r, double* row) {
    if (m.ideal && !std::isfinite(r.h)) corvane::add_caloric(*m.model, z, r);
    double volume = 0.0;
    for (std::size_t k = 0; k < r.phases.size(); ++k) volume += r.fraction[k] / r.phases[k].rho;
    corvane::Certificate const& c = r.certificate;
    double const head[kFlashHead] = {r.T,
                                     r.p * kMega,
                                     kMega / volume,
                                     r.h,
                                     r.s,
                                     r.h - r.p * volume,
                                     static_cast<double>(r.phases.size()),
                                     c.tpd,
                                     c.x_error,
                                     c.rho_error,
                                     c.dmu,
                                     c.dp};
    std::copy(std::begin(head), std::end(head), row);
    const std::size_t N = static_cast<std::size_t>(z.size());
    for (std::size_t k = 0; k < r.phases.size() && k <= N; ++k) {
        double* at = row + kFlashHead + k * (N + 2);
        at[0] = r.fraction[k];
        at[1] = r.phases[k].rho * kMega;
        write(at + 2, r.phases[k].x);
    }
}

corvane::FlashOptions options_of(Mixture const& m) {
    corvane::FlashOptions options;
    options.validity = &m.validity;
    return options;
}

/// The one state with two values.
corvane::FlashResult state(Mixture const& m, corvane::Given a, corvane::Given b, Vector<double> const& z,
                           corvane::FlashOptions const& options) {
    corvane::MixtureStates found = corvane::mixture_states(*m.model, a, b, z, options);
    if (found.states.size() > 1) throw Several();
    if (!found.complete) return corvane::mixture_state(*m.model, a, b, z, options);  // says why not
    return std::move(found.states[0]);
}

corvane::Given given(int what, double value) {
    const auto quantity = static_cast<corvane::Quantity>(what);
    return {quantity, to_library(quantity, value)};
}

nb::tuple flash(Mixture const& m, int first, Column a, int second, Column b, Rows z, int threads) {
    check(m, z);
    const std::size_t n = a.shape(0);
    same_length(n, b.shape(0));
    same_length(n, z.shape(0));
    Out out({n, width_of_flash(z.shape(1))});
    Report report(n);
    const auto options = options_of(m);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Vector<double> x = row_of(z, i);
        auto r = state(m, given(first, a(i)), given(second, b(i)), x, options);
        write_flash(m, x, r, row);
    });
    return result(out, report, finished);
}

/// All states with two values: rows as of flash, and whether nothing was left open.
nb::tuple flash_all(Mixture const& m, int first, double a, int second, double b, Column z) {
    const Vector<double> x = vector_of(z);
    auto found = [&] {
        const nb::gil_scoped_release released;
        return corvane::mixture_states(*m.model, given(first, a), given(second, b), x, options_of(m));
    }();
    Out out({found.states.size(), width_of_flash(z.shape(0))});
    for (std::size_t k = 0; k < found.states.size(); ++k) {
        out.clear(k);
        write_flash(m, x, found.states[k], out.row(k));
    }
    return nb::make_tuple(out.array(), found.complete);
}

/// Bubble or dew points. Columns: T, p, density given, density incipient, error of the value, error
/// of the compositions, largest difference of potentials, of pressures, lowest tangent-plane distance,
/// then the incipient composition.
nb::tuple saturation(Mixture const& m, bool bubble, bool at_T, Column values, Rows z, int branch,
                     int threads) {
    check(m, z);
    const std::size_t n = values.shape(0), N = z.shape(1), width = 9 + N;
    same_length(n, z.shape(0));
    Out out({n, width});
    Report report(n);
    corvane::SaturationOptions options;
    options.validity = &m.validity;
    options.branch = static_cast<corvane::Branch>(branch);
    const auto kind = bubble ? corvane::Saturated::bubble : corvane::Saturated::dew;
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        const Vector<double> x = row_of(z, i);
        const auto q = at_T ? corvane::saturation_T(*m.model, kind, values(i), x, options)
                            : corvane::saturation_p(*m.model, kind, values(i) / kMega, x, options);
        double const head[] = {q.T,
                               q.p * kMega,
                               q.given.rho * kMega,
                               q.incipient.rho * kMega,
                               q.certificate.value_error,
                               q.certificate.x_error,
                               q.certificate.dmu,
                               q.certificate.dp,
                               q.certificate.tpd};
        std::copy(std::begin(head), std::end(head), row);
        write(row + 9, q.incipient.x);
    });
    return result(out, report, finished);
}
}  // namespace

void add_mixture_states(MixtureClass& of) {
    of.def("properties", &properties,
             "Properties (n, 17) of one phase at T (K), rho (mol/m3) and x, in SI, as of a fluid.")
        .def("densities", &densities,
             "Density roots (mol/m3) at T (K), p (Pa) and x; phase 1 the densest, 3 the thinnest, else the stable one.")
        .def("ln_phi", &ln_phi,
             "Logarithms of the fugacity coefficients (n, N) at T (K), rho (mol/m3) and x.")
        .def("flash", &flash,
             "Certified flashes at two quantities, told by their codes. Columns: T, p, rho, h, s, u, number of phases, tpd, x_error, rho_error, dmu, dp, then slots of phases: fraction, rho, x.")
        .def("flash_all", &flash_all, "All states with two values: rows as of flash, and whether nothing was left open.")
        .def("saturation", &saturation,
             "Certified bubble or dew points at temperatures or pressures. Columns: T, p, rho given, rho incipient, value_error, x_error, dmu, dp, tpd, y.");
}

}  // namespace py
