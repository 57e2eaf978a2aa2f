// Properties and saturation of a pure fluid: what a caller of the class interface waits for.
#include "counting.h"

#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

namespace {
using Model = std::unique_ptr<Model1, corvane::Detach>;

Model1& propane() {
    static const Model model = [] {
        Model m(attach1("PR"));
        m->name("propane");
        m->id(1);
        m->load("PR");
        m->ideal.load();
        return m;
    }();
    return *model;
}

void report(benchmark::State& state, CountingModel const& m) {
    using benchmark::Counter;
    state.counters["evaluations"] =
        Counter(static_cast<double>(m.evaluations), Counter::kAvgIterations);
    state.counters["densities"] =
        Counter(static_cast<double>(m.densities), Counter::kAvgIterations);
}

using AtRhoT = double (Model1::*)(double, double) const;
using AtPT = double (Model1::*)(double, double, int, double&) const;

/// A property at (rho, T): by the equation's own derivatives, then by the numerical route with
/// counts.
void exact(benchmark::State& state, AtRhoT property) {
    for (auto _ : state) benchmark::DoNotOptimize((propane().*property)(1e-3, 350.0));
}
void numerical(benchmark::State& state, AtRhoT property) {
    CountingModel m(propane());
    m.ideal = propane().ideal;
    m.ideal.model(&m);
    for (auto _ : state) benchmark::DoNotOptimize((m.*property)(1e-3, 350.0));
    report(state, m);
}
BENCHMARK_CAPTURE(exact, Ar, AtRhoT(&Model1::Ar));
BENCHMARK_CAPTURE(exact, Z, AtRhoT(&Model1::Z));
BENCHMARK_CAPTURE(exact, Gr, AtRhoT(&Model1::Gr));
BENCHMARK_CAPTURE(exact, Hr, AtRhoT(&Model1::Hr));
BENCHMARK_CAPTURE(exact, CVr, AtRhoT(&Model1::CVr));
BENCHMARK_CAPTURE(exact, Cpr, AtRhoT(&Model1::Cpr));
BENCHMARK_CAPTURE(exact, Cpm, AtRhoT(&Model1::Cpm));
BENCHMARK_CAPTURE(numerical, Hr, AtRhoT(&Model1::Hr));
BENCHMARK_CAPTURE(numerical, CVr, AtRhoT(&Model1::CVr));
BENCHMARK_CAPTURE(numerical, Cpr, AtRhoT(&Model1::Cpr));
BENCHMARK_CAPTURE(numerical, pV, AtRhoT(&Model1::pV));

void at_pressure(benchmark::State& state, AtPT property, int phase) {
    for (auto _ : state) {
        double rho = 0.0;
        benchmark::DoNotOptimize((propane().*property)(1.0, 300.0, phase, rho));
    }
}
BENCHMARK_CAPTURE(at_pressure, Cpm_liquid, AtPT(&Model1::Cpm), 1);
BENCHMARK_CAPTURE(at_pressure, Cpm_stable, AtPT(&Model1::Cpm), 2);

void density(benchmark::State& state) {
    double a = 0.0, b = 0.0;
    for (auto _ : state) benchmark::DoNotOptimize(propane().vcalc(0.5, 300.0, 1, a, b));
}
BENCHMARK(density);

void saturation_cold(benchmark::State& state) {
    const double T = static_cast<double>(state.range(0)) / 1000 * propane().Tcrit();
    CountingModel m(propane());
    double p = 0, rhoL = 0, rhoV = 0;
    for (auto _ : state) vle1_T(&m, T, 0, p, rhoL, rhoV);
    report(state, m);
}
BENCHMARK(saturation_cold)->ArgName("Tr/1000")->Arg(400)->Arg(700)->Arg(950)->Arg(999);

/// A march from 0.5 to 0.95 Tc and back in steps of 1 %; the time is that of one point.
void saturation_march(benchmark::State& state) {
    CountingModel m(propane());
    corvane::SaturationMarch curve;
    double p = 0, rhoL = 0, rhoV = 0, Tr = 0.5, step = 0.01;
    for (auto _ : state) {
        curve.at_T(&m, Tr * m.Tcrit(), 1, p, rhoL, rhoV);
        if (Tr + step > 0.95 || Tr + step < 0.499) step = -step;
        Tr += step;
    }
    report(state, m);
}
BENCHMARK(saturation_march);

/// Saturation temperature at a pressure.
void saturation_at_pressure(benchmark::State& state) {
    CountingModel m(propane());
    double T = 0, rhoL = 0, rhoV = 0;
    for (auto _ : state) vle1_p(&m, 1.0, 0, T, rhoL, rhoV);
    report(state, m);
}
BENCHMARK(saturation_at_pressure);

/// Making, loading and releasing a model, its plug-in being loaded.
void model_from_file(benchmark::State& state) {
    for (auto _ : state) {
        Model m(attach1("PR"));
        m->name("propane");
        m->id(1);
        benchmark::DoNotOptimize(m->load("PR"));
    }
}
BENCHMARK(model_from_file);
}  // namespace
