// Critical points and lines, solid-fluid lines, certificate included: PR+vdW1, one core.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

/// The arguments: mole fraction of the first component in percent.
void point(benchmark::State& state, std::vector<std::string> const& names, bool warm) {
    const Mixture m = mixture_of(names);
    const int n = m->mdl1.size();
    Vector<double> z(n);
    z[0] = static_cast<double>(state.range(0)) / 100;
    for (int i = 1; i < n; ++i) z[i] = (1 - z[0]) / (n - 1);
    corvane::CriticalPoint q, near = corvane::critical_point(*m, z);
    near.T *= 1.01;
    near.rho *= 0.98;
    corvane::CriticalOptions o;
    if (warm) o.start = &near;
    for (auto _ : state) q = corvane::critical_point(*m, z, o);
    state.counters["evaluations"] = static_cast<double>(q.certificate.evaluations);
}
void point_refused(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "water"});
    Vector<double> z(2);
    z[0] = 0.8;
    z[1] = 0.2;
    for (auto _ : state) try {
            corvane::critical_point(*m, z);
        } catch (corvane::EquilibriumFailure const&) {
        }
}

/// Arguments: step in thousandths; search for detached lines.
void lines(benchmark::State& state, std::vector<std::string> const& names) {
    const Mixture m = mixture_of(names);
    corvane::CriticalLineOptions o;
    o.step = static_cast<double>(state.range(0)) / 1000;
    o.detached = state.range(1);
    std::vector<corvane::CriticalLine> found;
    for (auto _ : state) found = corvane::critical_lines(*m, o);
    std::size_t points = 0;
    long evaluations = 0;
    for (auto const& l : found) {
        points += l.points.size();
        evaluations += l.evaluations;
    }
    state.counters["lines"] = static_cast<double>(found.size());
    state.counters["points"] = static_cast<double>(points);
    state.counters["evaluations"] = static_cast<double>(evaluations);
}

Mixture freezing() {
    Mixture m = mixture_of({"methane", "carbon_dioxide"});
    for (int i = 0; i < 2; ++i) m->mdl1[i]->solid.load();
    return m;
}
void solid_solubility(benchmark::State& state) {
    const Mixture m = freezing();
    corvane::SolidFluidPoint q;
    for (auto _ : state) q = corvane::solubility(*m, 1, 3, 160);
    state.counters["evaluations"] = static_cast<double>(q.certificate.evaluations);
}
/// The argument: 1 an isotherm (180 K), 0 an isobar (3 MPa).
void solid_lines(benchmark::State& state) {
    const Mixture m = freezing();
    std::vector<corvane::SolidFluidLine> found;
    for (auto _ : state)
        found = state.range(0) ? corvane::solid_fluid_isotherm(*m, 1, 180)
                               : corvane::solid_fluid_isobar(*m, 1, 3);
    std::size_t points = 0;
    for (auto const& l : found) points += l.points.size();
    state.counters["lines"] = static_cast<double>(found.size());
    state.counters["points"] = static_cast<double>(points);
}
void eutectic(benchmark::State& state) {
    const Mixture m = freezing();
    for (auto _ : state) benchmark::DoNotOptimize(corvane::eutectic(*m, 3));
}

const std::vector<std::string> kLight{"methane", "propane"}, kWide{"methane", "decane"},
    kSix{"methane", "nitrogen", "ethane", "propane", "butane", "decane"};
BENCHMARK_CAPTURE(point, methane_propane, kLight, false)->ArgName("x")->Arg(10)->Arg(50)->Arg(90);
BENCHMARK_CAPTURE(point, methane_propane_warm, kLight, true)->ArgName("x")->Arg(50);
BENCHMARK_CAPTURE(point, methane_decane, kWide, false)->ArgName("x")->Arg(50)->Arg(90);
BENCHMARK_CAPTURE(point, six_components, kSix, false)->ArgName("x")->Arg(50);
BENCHMARK(point_refused);
BENCHMARK(solid_solubility);
BENCHMARK(solid_lines)->ArgName("isotherm")->Arg(0)->Arg(1);
BENCHMARK(eutectic);
BENCHMARK_CAPTURE(lines, methane_propane, kLight)
    ->ArgNames({"step", "detached"})
    ->Args({50, 0})
    ->Args({50, 1})
    ->Args({20, 1});
BENCHMARK_CAPTURE(lines, methane_decane, kWide)
    ->ArgNames({"step", "detached"})
    ->Args({50, 0})
    ->Args({50, 1});
}  // namespace
