// The certified interface: transport properties.
#include <corvane/binding/certified.h>
#include <corvane/binding/certified_points.h>

#include <algorithm>
#include <cstdio>

using namespace corvane::binding;

corvane::Transport const& CorvaneFluid::transport() const {
    std::call_once(opened_, [this] { transport_ = std::make_unique<corvane::Transport>(fluid); });
    return *transport_;
}
corvane::MixtureTransport const& CorvaneMixture::transport() const {
    std::call_once(opened_,
                   [this] { transport_ = std::make_unique<corvane::MixtureTransport>(mixture); });
    return *transport_;
}

namespace {
std::string in_words(corvane::TransportValue const& v) {
    char within[64] = "";
    if (v.uncertainty > 0.0)
        std::snprintf(within, sizeof within, ", %.0f %% in nine cases of ten", 100.0 * v.uncertainty);
    return v.model + ": " + v.source + within + (v.metastable ? ", metastable" : "");
}

corvane::TransportValue value_of(CorvaneFluid const* fluid, int property, double T, double rho) {
    corvane::Transport const& transport = fluid->transport();
    switch (property) {
        case CORVANE_VISCOSITY: return transport.viscosity(T, rho);
        case CORVANE_CONDUCTIVITY: return transport.thermal_conductivity(T, rho);
        case CORVANE_SURFACE_TENSION: return transport.surface_tension(T);
        case CORVANE_DIFFUSION: return transport.diffusion(T, rho);
        default: throw BadArgument("no transport property " + std::to_string(property));
    }
}

corvane::TransportValue value_of(CorvaneMixture const* mixture, int property, double T, double rho,
                                 double const* z, int n) {
    const Vector<double> x = composition(mixture, z, n);
    switch (property) {
        case CORVANE_VISCOSITY: return mixture->transport().viscosity(T, rho, x);
        case CORVANE_CONDUCTIVITY: return mixture->transport().thermal_conductivity(T, rho, x);
        case CORVANE_DIFFUSION: return mixture->transport().diffusion(T, rho, x).stefan;
        case CORVANE_FICK_DIFFUSION: {
            const auto d = mixture->transport().diffusion(T, rho, x);
            corvane::TransportValue fick = d.stefan;
            fick.value = d.fick();
            return fick;
        }
        default: throw BadArgument("no transport property of one phase: " + std::to_string(property));
    }
}
}  // namespace

EXPORT double Corvane_transport(const CorvaneFluid* fluid, int property, double T, double rho,
                                double* evidence, CorvaneError* error) {
    return certified(error, "transport", fluid, [&] {
        const auto v = value_of(fluid, property, T, rho);
        if (evidence) evidence[0] = v.in_range ? 1.0 : 0.0, evidence[1] = v.second_source;
        return v.value;
    });
}

EXPORT int Corvane_transport_model(const CorvaneFluid* fluid, int property, double T, double rho,
                                   char* buffer, int size, CorvaneError* error) {
    return certified(error, "transport", fluid, [&] {
        const auto v = value_of(fluid, property, T, rho);
        return write(in_words(v), buffer, size);
    });
}

EXPORT double Corvane_mixture_transport(const CorvaneMixture* mixture, int property, double T,
                                        double rho, const double* z, int n, double* evidence,
                                        CorvaneError* error) {
    return certified(error, "mixture_transport", mixture, [&] {
        const auto v = value_of(mixture, property, T, rho, z, n);
        if (evidence) evidence[0] = v.in_range ? 1.0 : 0.0;
        return v.value;
    });
}

EXPORT int Corvane_mixture_transport_model(const CorvaneMixture* mixture, int property, double T,
                                           double rho, const double* z, int n, char* buffer,
                                           int size, CorvaneError* error) {
    return certified(error, "mixture_transport", mixture, [&] {
        const auto v = value_of(mixture, property, T, rho, z, n);
        return write(in_words(v), buffer, size);
    });
}

EXPORT double Corvane_mixture_tension(const CorvaneMixture* mixture, double T, double rho_liquid,
                                      const double* x, double rho_vapour, const double* y, int n,
                                      double* evidence, CorvaneError* error) {
    return certified(error, "mixture_tension", mixture, [&] {
        const auto v = mixture->transport().surface_tension(
            T, rho_liquid, composition(mixture, x, n), rho_vapour, composition(mixture, y, n));
        if (evidence) evidence[0] = v.in_range ? 1.0 : 0.0;
        return v.value;
    });
}

EXPORT int Corvane_mixture_interface(const CorvaneMixture* mixture, double T, double rho_liquid, const double* x,
                                     double rho_vapour, const double* y, int n, double* values, int points,
                                     double* summary, CorvaneError* error) {
    return certified(error, "mixture_interface", mixture, [&] {
        if (points < 0 || (points > 0 && !values)) throw BadArgument("no room for points");
        const auto p = mixture->transport().interface_profile(T, rho_liquid, composition(mixture, x, n), rho_vapour,
                                                              composition(mixture, y, n));
        const std::size_t count = std::min(static_cast<std::size_t>(points), p.z.size());
        for (std::size_t k = 0; k < count; ++k) {
            *values++ = p.z[k];
            *values++ = p.excess[k];
            values = std::copy(p.rho_i[k].begin(), p.rho_i[k].end(), values);
        }
        if (summary) summary[0] = p.tension, summary[1] = p.tension_error, summary[2] = p.thickness;
        return static_cast<int>(p.z.size());
    });
}
