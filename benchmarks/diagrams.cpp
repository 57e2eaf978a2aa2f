// Diagrams, three phases and azeotropes of binaries, certificates included: PR+vdW1, one core.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

void count(benchmark::State& state, std::size_t points, long evaluations) {
    state.counters["points"] = static_cast<double>(points);
    state.counters["evaluations"] = static_cast<double>(evaluations);
}

/// One curve; stability of every point or not.
void pxy(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    corvane::Diagram d;
    corvane::DiagramOptions o;
    o.step = 0.037;
    o.stability = state.range(0);
    for (auto _ : state) d = corvane::diagram_pxy(*m, 250, o);
    count(state, d.points.size(), d.evaluations);
}

/// At T if that is positive, else at p.
void complete(benchmark::State& state, char const* first, char const* second, double T, double p) {
    const Mixture m = mixture_of({first, second});
    corvane::BinaryDiagram d;
    for (auto _ : state) d = T > 0 ? corvane::complete_pxy(*m, T) : corvane::complete_Txy(*m, p);
    std::size_t points = 0;
    for (auto const& b : d.branches) points += b.points.size();
    count(state, points, d.evaluations);
}

void three_phase(benchmark::State& state, bool warm) {
    const Mixture m = mixture_of({"carbon_dioxide", "water"});
    corvane::ThreePhasePoint near = corvane::three_phase_T(*m, 291), q;
    corvane::ThreePhaseOptions o;
    if (warm) o.start = &near;
    for (auto _ : state) q = corvane::three_phase_T(*m, 290, o);
    count(state, 1, q.certificate.evaluations);
}
void three_phase_line(benchmark::State& state) {
    const Mixture m = mixture_of({"carbon_dioxide", "water"});
    const corvane::ThreePhasePoint start = corvane::three_phase_T(*m, 290);
    corvane::ThreePhaseLine line;
    for (auto _ : state) line = corvane::three_phase_line(*m, start);
    count(state, line.points.size(), line.points.back().certificate.evaluations);
}
void three_phase_lines(benchmark::State& state) {
    const Mixture m = mixture_of({"carbon_dioxide", "water"});
    for (auto _ : state) benchmark::DoNotOptimize(corvane::three_phase_lines(*m));
}

void azeotrope(benchmark::State& state, bool warm) {
    const Mixture m = mixture_of({"carbon_dioxide", "ethane"});
    corvane::AzeotropePoint near = corvane::azeotrope_T(*m, 251), q;
    corvane::AzeotropeOptions o;
    if (warm) o.start = &near;
    for (auto _ : state) q = corvane::azeotrope_T(*m, 250, o);
    count(state, 1, q.certificate.evaluations);
}
void azeotropic_line(benchmark::State& state) {
    const Mixture m = mixture_of({"carbon_dioxide", "ethane"});
    const corvane::AzeotropePoint start = corvane::azeotrope_T(*m, 250);
    corvane::AzeotropicLine line;
    for (auto _ : state) line = corvane::azeotropic_line(*m, start);
    count(state, line.points.size(), line.points.back().certificate.evaluations);
}

BENCHMARK(pxy)->ArgName("stability")->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(complete, pxy_one_branch, "methane", "propane", 250, 0);
BENCHMARK_CAPTURE(complete, pxy_azeotrope, "carbon_dioxide", "ethane", 250, 0);
BENCHMARK_CAPTURE(complete, pxy_three_phases, "carbon_dioxide", "water", 290, 0);
BENCHMARK_CAPTURE(complete, Txy_one_branch, "methane", "propane", 0, 3);
BENCHMARK_CAPTURE(complete, Txy_three_phases, "carbon_dioxide", "water", 0, 5);
BENCHMARK_CAPTURE(three_phase, cold, false);
BENCHMARK_CAPTURE(three_phase, warm, true);
BENCHMARK(three_phase_line);
BENCHMARK(three_phase_lines);
BENCHMARK_CAPTURE(azeotrope, cold, false);
BENCHMARK_CAPTURE(azeotrope, warm, true);
BENCHMARK(azeotropic_line);
}  // namespace
