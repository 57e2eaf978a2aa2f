// Multi-fluid mixtures: what one property, all chemical potentials and one density cost for a
// natural gas of ten components, and how many evaluations of the components a density takes. Run in
// the data home of the build tree.
#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

constexpr char const* kNames[] = {"methane",   "nitrogen", "carbon_dioxide", "ethane",  "propane",
                                  "isobutane", "butane",   "isopentane",     "pentane", "hexane"};
constexpr double kFractions[] = {0.90, 0.02, 0.02, 0.04, 0.01, 0.002, 0.003, 0.002, 0.002, 0.001};
constexpr int kCount = 10;

/// Counts the derivative calls that reach one component: one per evaluation of the mixture.
struct CountingDerivatives final : corvane::Deriv1 {
    corvane::Deriv1 const* model = nullptr;
    mutable long calls = 0;
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        return ++calls, model->deriv(rho, T, nrho, nT, d);
    }
};

struct Gas {
    std::unique_ptr<ModelN, corvane::Detach> model{attachN("MEOS", "GERG")};
    Vector<double> x{kCount};
    CountingDerivatives counter;
    Gas() {
        model->alloc(kCount, "MEOS");
        for (int j = 0; j < kCount; ++j) {
            model->mdl1[j]->name(kNames[j]);
            model->mdl1[j]->id(8);
            x[j] = kFractions[j];
            for (int i = 0; i < j; ++i) model->id(i, j, 1);
        }
        model->load("MEOS", "GERG");
        counter.model = model->mdl1[0]->derivatives();
        model->mdl1[0]->derivatives(&counter);
    }
    void report(benchmark::State& run) const {
        run.counters["evaluations"] = {static_cast<double>(counter.calls),
                                       benchmark::Counter::kAvgIterations};
    }
};
constexpr double kRho = 5e-3, kT = 300.0;

void Ar(benchmark::State& run) {
    const Gas g;
    for (auto _ : run) benchmark::DoNotOptimize(g.model->Ar(kRho, kT, g.x));
}
void Z(benchmark::State& run) {
    const Gas g;
    for (auto _ : run) benchmark::DoNotOptimize(g.model->Z(kRho, kT, g.x));
}
void second_derivatives(benchmark::State& run) {
    const Gas g;
    double d[9];
    for (auto _ : run) {
        g.model->derivatives()->deriv(kRho, kT, g.x, 2, 2, d);
        benchmark::DoNotOptimize(d);
    }
}
void all_potentials(benchmark::State& run) {
    const Gas g;
    const Vector<double> rho_i = g.x * kRho;
    double mu[kCount];
    for (auto _ : run) {
        g.model->derivatives()->potentials(rho_i, kT, mu, nullptr, nullptr);
        benchmark::DoNotOptimize(mu);
    }
}
void PsiH(benchmark::State& run) {
    const Gas g;
    const Vector<double> rho_i = g.x * kRho;
    for (auto _ : run) benchmark::DoNotOptimize(g.model->PsiH(rho_i, kT));
}
/// Arguments: p in kPa, T in K. The reducing temperature is 204 K.
void density(benchmark::State& run) {
    const Gas g;
    const double p = static_cast<double>(run.range(0)) / 1e3, T = static_cast<double>(run.range(1));
    double rho1 = 0.0, rho2 = 0.0;
    for (auto _ : run) benchmark::DoNotOptimize(g.model->vcalc(p, T, g.x, 1, rho1, rho2));
    g.report(run);
}

}  // namespace

BENCHMARK(Ar);
BENCHMARK(Z);
BENCHMARK(second_derivatives);
BENCHMARK(all_potentials);
BENCHMARK(PsiH);
BENCHMARK(density)
    ->Args({100, 300})
    ->Args({5000, 300})
    ->Args({30000, 300})
    ->Args({5000, 210})
    ->Args({1000, 180})
    ->Args({5000, 180})
    ->Args({500, 150});
