// The certified interface: transport properties of pure fluids.
#include <corvane/binding/certified.h>

using namespace corvane::binding;

corvane::Transport const& CorvaneFluid::transport() const {
    std::call_once(opened_, [this] { transport_ = std::make_unique<corvane::Transport>(fluid); });
    return *transport_;
}

namespace {
corvane::TransportValue value_of(CorvaneFluid const* fluid, int property, double T, double rho) {
    corvane::Transport const& transport = fluid->transport();
    switch (property) {
        case CORVANE_VISCOSITY: return transport.viscosity(T, rho);
        case CORVANE_CONDUCTIVITY: return transport.thermal_conductivity(T, rho);
        case CORVANE_SURFACE_TENSION: return transport.surface_tension(T);
        default: throw BadArgument("no transport property " + std::to_string(property));
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
        return write(v.model + ": " + v.source, buffer, size);
    });
}
