// Transport properties with the state given, and from T and density.
#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

namespace {

struct Case {
    corvane::Fluid fluid;
    corvane::Transport transport{fluid};
    corvane::PhaseProperties state;
    Case(char const* equation, char const* name, double T, double rho)
        : fluid(corvane::open(equation, name)), state(corvane::phase_properties(*fluid.model, T, rho)) {}
};

template <class F>
void run(benchmark::State& loop, char const* equation, char const* name, double T, double rho, F f) {
    Case c(equation, name, T, rho);
    for (auto _ : loop) benchmark::DoNotOptimize(f(c).value);
}

using corvane::TransportValue;
TransportValue eta_of_state(Case const& c) { return c.transport.viscosity(c.state); }
TransportValue eta(Case const& c) { return c.transport.viscosity(c.state.T, c.state.rho); }
TransportValue lambda_of_state(Case const& c) { return c.transport.thermal_conductivity(c.state); }
TransportValue lambda(Case const& c) {
    return c.transport.thermal_conductivity(c.state.T, c.state.rho);
}

// Liquid water, and near its critical point; carbon dioxide near its own; one without reference
// correlations.
BENCHMARK_CAPTURE(run, viscosity_water_state, "MEOS", "water", 300.0, 0.0554, eta_of_state);
BENCHMARK_CAPTURE(run, viscosity_water_critical_state, "MEOS", "water", 650.0, 0.018, eta_of_state);
BENCHMARK_CAPTURE(run, viscosity_water, "MEOS", "water", 300.0, 0.0554, eta);
BENCHMARK_CAPTURE(run, viscosity_propane, "MEOS", "propane", 300.0, 0.0111, eta);
BENCHMARK_CAPTURE(run, viscosity_joined, "PR", "acetone", 300.0, 0.0135, eta);
BENCHMARK_CAPTURE(run, conductivity_water_state, "MEOS", "water", 650.0, 0.018, lambda_of_state);
BENCHMARK_CAPTURE(run, conductivity_water, "MEOS", "water", 650.0, 0.018, lambda);
BENCHMARK_CAPTURE(run, conductivity_co2_state, "MEOS", "carbon_dioxide", 310.0, 0.0106, lambda_of_state);
BENCHMARK_CAPTURE(run, conductivity_co2, "MEOS", "carbon_dioxide", 310.0, 0.0106, lambda);

void open_transport(benchmark::State& loop) {
    const corvane::Fluid water = corvane::open("MEOS", "water");
    for (auto _ : loop) benchmark::DoNotOptimize(corvane::Transport(water).has_viscosity());
}
BENCHMARK(open_transport);

}  // namespace
