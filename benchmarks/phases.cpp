// Mixture equilibria from the composition alone, certificate included: PR+vdW1, one core.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

Vector<double> equal_parts(int n) {
    Vector<double> z(n);
    z.set(1.0 / n);
    return z;
}

void report(benchmark::State& state, corvane::Certificate const& c) {
    state.counters["evaluations"] = static_cast<double>(c.evaluations);
}

void bubble_cold(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    corvane::SaturationPoint q;
    for (auto _ : state) q = corvane::bubble_T(*m, 250, z);
    report(state, q.certificate);
}
void bubble_warm(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    corvane::SaturationPoint q;
    const auto neighbour = corvane::bubble_T(*m, 251, z);
    corvane::SaturationOptions o;
    o.start = &neighbour;
    for (auto _ : state) q = corvane::bubble_T(*m, 250, z, o);
    report(state, q.certificate);
}
void dew_cold(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    corvane::SaturationPoint q;
    for (auto _ : state) q = corvane::dew_T(*m, 250, z);
    report(state, q.certificate);
}
/// The whole isotherm is searched before a refusal.
void bubble_refused(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    for (auto _ : state) try {
            corvane::bubble_T(*m, 500, z);
        } catch (corvane::EquilibriumFailure const&) {
        }
}
void flash(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    corvane::FlashResult q;
    for (auto _ : state) q = corvane::flash_pT(*m, 2, 250, z);
    report(state, q.certificate);
}
void flash_one_phase(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    corvane::FlashResult q;
    for (auto _ : state) q = corvane::flash_pT(*m, 2, 350, z);
    report(state, q.certificate);
}
void flash_six(benchmark::State& state) {
    const Mixture m = mixture_of({"nitrogen", "methane", "ethane", "propane", "butane", "decane"});
    const Vector<double> z = equal_parts(6);
    corvane::FlashResult q;
    for (auto _ : state) q = corvane::flash_pT(*m, 4, 300, z);
    report(state, q.certificate);
}

/// Back from the flash at (p, T): by h, s or rho, cold, or with a start 1 K away.
enum By { h, s, rho };
void flash_by(benchmark::State& state, By by, double T, int n, bool warm) {
    static std::vector<char const*> const names{"methane", "propane", "nitrogen",
                                                "ethane",  "butane",  "decane"};
    const Mixture m = mixture_of({names.begin(), names.begin() + n});
    const Vector<double> z = equal_parts(n);
    corvane::FlashResult q = corvane::flash_pT(*m, 2, T, z);
    corvane::add_caloric(*m, z, q);
    const corvane::FlashResult near = corvane::flash_pT(*m, 2, T + 1, z), in = q;
    corvane::FlashOptions o;
    if (warm) o.start = &near;
    for (auto _ : state)
        q = by == h   ? corvane::flash_ph(*m, 2, in.h, z, o)
            : by == s ? corvane::flash_ps(*m, 2, in.s, z, o)
                      : corvane::flash_Trho(*m, T, in.rho, z, o);
    report(state, q.certificate);
}

void envelope(benchmark::State& state) {
    const Mixture m = mixture_of({"methane", "propane"});
    const Vector<double> z = equal_parts(2);
    corvane::Envelope e;
    corvane::EnvelopeOptions o;
    o.step = 0.12;
    o.stability = state.range(0);
    for (auto _ : state) e = corvane::phase_envelope(*m, z, o);
    state.counters["points"] = static_cast<double>(e.points.size());
    state.counters["evaluations"] = static_cast<double>(e.evaluations);
}

BENCHMARK(envelope)->ArgName("stability")->Arg(0)->Arg(1);
BENCHMARK(bubble_cold);
BENCHMARK(bubble_warm);
BENCHMARK(dew_cold);
BENCHMARK(bubble_refused);
BENCHMARK(flash);
BENCHMARK(flash_one_phase);
BENCHMARK(flash_six);
BENCHMARK_CAPTURE(flash_by, h_two_phases, h, 250, 2, false);
BENCHMARK_CAPTURE(flash_by, h_two_phases_warm, h, 250, 2, true);
BENCHMARK_CAPTURE(flash_by, h_one_phase, h, 350, 2, false);
BENCHMARK_CAPTURE(flash_by, h_six, h, 280, 6, false);
BENCHMARK_CAPTURE(flash_by, s_two_phases, s, 250, 2, false);
BENCHMARK_CAPTURE(flash_by, rho_two_phases, rho, 250, 2, false);
BENCHMARK_CAPTURE(flash_by, rho_one_phase, rho, 350, 2, false);
}  // namespace
