// The four volume finders and the equation's own solver at the same states of propane: time and
// model evaluations. Arguments: T [K], p [kPa].
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
        return m;
    }();
    return *model;
}

/// Runs find(model, p, T, b) and reports the evaluations per call.
template <class F>
void run(benchmark::State& state, F find) {
    CountingModel m(propane());
    m.sample_limits();
    const double T = static_cast<double>(state.range(0));
    double p = static_cast<double>(state.range(1)) / 1000.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(find(m, p, T, m.vs()));
    }
    state.counters["evaluations"] =
        benchmark::Counter(static_cast<double>(m.evaluations), benchmark::Counter::kAvgIterations);
}

void states(benchmark::internal::Benchmark* b) {
    // Two roots; two roots, one of a thin gas; liquid alone; nearly critical; supercritical.
    b->Args({300, 900})->Args({300, 10})->Args({300, 50000})->Args({369, 4185})->Args({500, 10000});
}

/// Start values 5 % below the dense root.
double start(Model1 const& m, double p, double T) {
    double rho = 0.0, other = 0.0;
    m.vcalc(p, T, 1, rho, other);
    return 0.95 * rho;
}

void BM_volume(benchmark::State& state) {
    Vector<double> roots(3);
    run(state, [&](Model1 const& m, double p, double T, double b) {
        return volume(&m, 0, p, T, nullptr, b, roots);
    });
}
void BM_volf1(benchmark::State& state) {
    run(state, [](Model1 const& m, double p, double T, double b) {
        double rho1 = 0.0, rho2 = 0.0;
        return volf1(&m, p, T, 1.0001 * b, rho1, rho2);
    });
}
void BM_volav(benchmark::State& state) {
    const double rho0 = start(propane(), static_cast<double>(state.range(1)) / 1000.0,
                              static_cast<double>(state.range(0)));
    run(state, [&](Model1 const& m, double p, double T, double b) {
        double rho = rho0;
        return volav(&m, 0, p, T, nullptr, b, rho);
    });
}
void BM_volnewt(benchmark::State& state) {
    const double rho0 = start(propane(), static_cast<double>(state.range(1)) / 1000.0,
                              static_cast<double>(state.range(0)));
    run(state, [&](Model1 const& m, double p, double T, double b) {
        double rho = rho0;
        return volnewt(&m, 0, p, T, nullptr, b, rho);
    });
}
void BM_vcalc(benchmark::State& state) {
    run(state, [](Model1 const& m, double p, double T, double) {
        double rho1 = 0.0, rho2 = 0.0;
        return m.vcalc(p, T, 1, rho1, rho2);
    });
}
BENCHMARK(BM_volume)->Apply(states);
BENCHMARK(BM_volf1)->Apply(states);
BENCHMARK(BM_volav)->Apply(states);
BENCHMARK(BM_volnewt)->Apply(states);
BENCHMARK(BM_vcalc)->Apply(states);
}  // namespace
