// Mixtures of 2, 5 and 20 components: what the calculus costs through the plug-in's exact forms,
// and by the library's numerical forms with counted evaluations.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {
Mixture make(int n) {
    static char const* const names[] = {
        "methane", "propane",         "ethane",           "carbon_dioxide", "nitrogen",
        "butane",  "isobutane",       "pentane",          "hexane",         "heptane",
        "octane",  "nonane",          "decane",           "water",          "oxygen",
        "argon",   "carbon_monoxide", "hydrogen_sulfide", "ethylene",       "benzene"};
    return mixture_of({names, names + n});
}

Vector<double> composition(int n) {
    Vector<double> x(n);
    for (int i = 0; i < n; ++i) x[i] = 2.0 * (n - i) / (n * (n + 1.0));
    return x;
}

/// Gas at 350 K and about 3 MPa.
constexpr double kT = 350.0, kRho = 1.1e-3;

template <class F>
void run(benchmark::State& state, F f) {
    const int n = static_cast<int>(state.range(0));
    const Mixture m = make(n);
    const Vector<double> x = composition(n);
    for (auto _ : state) benchmark::DoNotOptimize(f(*m, x));
}

void Ar(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) { return m.Ar(kRho, kT, x); });
}
void Z(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) { return m.Z(kRho, kT, x); });
}
void myr(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) { return m.myr(kRho, kT, x, 0); });
}
void PsiH(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) { return m.PsiH(kRho, kT, x); });
}
void density(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) {
        double a = 0.0, b = 0.0;
        return m.vcalc(3.0, kT, x, 3, a, b);
    });
}
/// All fugacity coefficients at (p, T): the density, then every myr in one pass.
void fugacities(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) {
        double mu[32], rho = 0.0, spare = 0.0;
        m.vcalc(3.0, kT, x, 3, rho, spare);
        m.derivatives()->potentials(x * rho, kT, mu, nullptr, nullptr);
        return mu[0];
    });
}
/// The same by the published operation, one component at a time.
void fugacities_one_by_one(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) {
        double rho = 0.0, spare = 0.0, sum = 0.0;
        m.vcalc(3.0, kT, x, 3, rho, spare);
        const Vector<double> rho_i = x * rho;
        for (int i = 0; i < x.size(); ++i) sum += m.myr(rho_i, kT, i);
        return sum;
    });
}
void Cpr_at_pressure(benchmark::State& state) {
    run(state, [](ModelN const& m, Vector<double> const& x) {
        double rho = 0.0;
        return m.Cpr(3.0, kT, x, 3, rho);
    });
}
/// The library's own forms, for comparison.
void myr_numerical(benchmark::State& state) {
    run(state,
        [](ModelN const& m, Vector<double> const& x) { return m.ModelN::myr(x * kRho, kT, 0); });
}
void PsiH_numerical(benchmark::State& state) {
    run(state,
        [](ModelN const& m, Vector<double> const& x) { return m.ModelN::PsiH(x * kRho, kT); });
}

BENCHMARK(Ar)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(Z)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(myr)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(PsiH)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(density)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(fugacities)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(fugacities_one_by_one)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(Cpr_at_pressure)->Arg(2)->Arg(5)->Arg(20);
BENCHMARK(myr_numerical)->Arg(2);
BENCHMARK(PsiH_numerical)->Arg(2);
}  // namespace
