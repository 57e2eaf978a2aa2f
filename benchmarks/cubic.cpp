// Cubic equations through their plug-ins: what one property, one density, one derivative call
// costs. Run in the data home of the build tree.
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <benchmark/benchmark.h>

#include <array>
#include <memory>

namespace {
std::unique_ptr<Model1, corvane::Detach> propane(int set) {
    std::unique_ptr<Model1, corvane::Detach> model(attach1("PR"));
    model->name("propane");
    model->id(set);  // 1 standard alpha, 3 Twu's with volume translation
    model->load("PR");
    return model;
}

void BM_PR_Ar(benchmark::State& state) {
    auto model = propane(static_cast<int>(state.range(0)));
    double rho = 0.011;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rho);
        benchmark::DoNotOptimize(model->Ar(rho, 300.0));
    }
}
BENCHMARK(BM_PR_Ar)->Arg(1)->Arg(3);

void BM_PR_Z(benchmark::State& state) {
    auto model = propane(1);
    double rho = 0.011;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rho);
        benchmark::DoNotOptimize(model->Z(rho, 300.0));
    }
}
BENCHMARK(BM_PR_Z);

void BM_PR_deriv(benchmark::State& state) {
    auto model = propane(1);
    std::array<double, 9> d{};
    double rho = 0.011;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rho);
        model->derivatives()->deriv(rho, 300.0, 2, 2, d.data());
        benchmark::DoNotOptimize(d);
    }
}
BENCHMARK(BM_PR_deriv);

// T [K], p [kPa]: two roots; two roots of a very thin gas; gas alone; liquid alone; near the
// critical point; supercritical.
void BM_PR_vcalc(benchmark::State& state) {
    auto model = propane(1);
    const double T = static_cast<double>(state.range(0));
    double p = static_cast<double>(state.range(1)) / 1000.0;
    for (auto _ : state) {
        double rho1 = 0.0, rho2 = 0.0;
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(model->vcalc(p, T, 1, rho1, rho2));
    }
}
BENCHMARK(BM_PR_vcalc)
    ->Args({300, 997})
    ->Args({120, 1})
    ->Args({300, 10})
    ->Args({300, 50000})
    ->Args({369, 4185})
    ->Args({370, 4260})
    ->Args({500, 10000});

void BM_PR_load(benchmark::State& state) {
    auto model = propane(1);
    for (auto _ : state) model->load("PR");
}
BENCHMARK(BM_PR_load);
}  // namespace
