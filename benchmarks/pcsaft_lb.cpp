// PC-SAFT mixtures: what one call costs, without and with association.
#include <corvane/classic/equilibria/ffeNcore.h>
#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct System {
    char const* label;
    std::vector<char const*> names;
    double T, rho;  // a liquid
};
const std::vector<System> kSystems{
    {"methane+butane", {"methane", "butane"}, 310.0, 8e-3},
    {"ethanol+hexane", {"ethanol", "hexane"}, 330.0, 1e-2},
    {"ethanol+water", {"ethanol", "water"}, 350.0, 2.4e-2},
    {"8 alkanes",
     {"methane", "ethane", "propane", "butane", "pentane", "hexane", "heptane", "octane"},
     310.0,
     8e-3}};

struct Fluid {
    System const& system;
    std::unique_ptr<ModelN, corvane::Detach> model{attachN("PCSAFT", "LB")};
    Vector<double> x, rho_i;
    double T, rho;

    explicit Fluid(benchmark::State& run)
        : system(kSystems[static_cast<unsigned>(run.range(0))]), T(system.T), rho(system.rho) {
        const int n = static_cast<int>(system.names.size());
        run.SetLabel(system.label);
        model->alloc(n, "PCSAFT");
        x.size(n);
        for (int i = 0; i < n; ++i) {
            model->mdl1[i]->name(system.names[static_cast<unsigned>(i)]);
            model->mdl1[i]->id(1);
            for (int j = 0; j < i; ++j) model->id(i, j, 1);
            x[i] = 1.0 / n;
        }
        corvane::load_estimating(*model, "PCSAFT", "LB");
        rho_i = x * rho;
    }
};

template <class F>
void time(benchmark::State& run, F f) {
    const Fluid fluid(run);
    for (auto _ : run) benchmark::DoNotOptimize(f(fluid, *fluid.model));
}

void Ar(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) { return m.Ar(f.rho, f.T, f.x); });
}
void Z(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) { return m.Z(f.rho, f.T, f.x); });
}
void betaV(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) { return m.betaV(f.rho, f.T, f.x); });
}
void myr(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) { return m.myr(f.rho_i, f.T, 0); });
}
void all_myr(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) {
        double mu[8];
        m.derivatives()->potentials(f.rho_i, f.T, mu, nullptr, nullptr);
        return mu[0];
    });
}
void PsiH(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) { return m.PsiH(f.rho_i, f.T); });
}
void deriv_22(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) {
        double d[9];
        m.derivatives()->deriv(f.rho, f.T, f.x, 2, 2, d);
        return d[0];
    });
}
/// Both roots at 1 MPa, or the only one.
void density(benchmark::State& run) {
    time(run, [](Fluid const& f, ModelN const& m) {
        double a = 0.0, b = 0.0;
        return m.vcalc(1.0, f.T, f.x, 1, a, b);
    });
}
/// A bubble point of the binaries from a start 20 % off.
void bubble_point(benchmark::State& run) {
    const Fluid f(run);
    Vector<double> gas = f.x * (0.1 / (R * f.T));
    double p = 0.0, rho = f.rho;
    vleN_T(f.model.get(), f.T, f.x, p, rho, gas);
    for (auto _ : run) {
        double r = 1.02 * rho;
        Vector<double> g = gas * 1.2;
        vleN_T(f.model.get(), f.T, f.x, p, r, g);
        benchmark::DoNotOptimize(p);
    }
}

}  // namespace

BENCHMARK(Ar)->DenseRange(0, 3);
BENCHMARK(Z)->DenseRange(0, 3);
BENCHMARK(betaV)->DenseRange(0, 3);
BENCHMARK(myr)->DenseRange(0, 3);
BENCHMARK(all_myr)->DenseRange(0, 3);
BENCHMARK(PsiH)->DenseRange(0, 3);
BENCHMARK(deriv_22)->DenseRange(0, 3);
BENCHMARK(density)->DenseRange(0, 3);
BENCHMARK(bubble_point)->DenseRange(1, 2);
