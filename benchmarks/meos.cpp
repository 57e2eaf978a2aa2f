// Reference equations: what one call costs, and how many evaluations of the isotherm a density
// takes.
#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <plugins/meos/density_solver.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>

namespace {

struct Substance {
    char const* name;
    int terms;
};
// 12 terms of powers; 18 with bells; damped; 40 with bells; 56 with non-analytic ones.
constexpr Substance kSubstances[] = {
    {"1_butene", 12}, {"propane", 18}, {"r14", 22}, {"methane", 40}, {"water", 56}};

struct State {
    std::unique_ptr<Model1, corvane::Detach> model{attach1("MEOS")};
    double T, p, rhoL, rhoV;
    explicit State(benchmark::State& run) {
        Substance const& s = kSubstances[run.range(0)];
        run.SetLabel(s.name);
        model->name(s.name);
        model->id(1);
        model->load("MEOS");
        T = 0.8 * model->Tcrit();
        corvane::SaturationMarch().at_T(model.get(), T, 0, p, rhoL, rhoV);
    }
};

void Ar(benchmark::State& run) {
    const State s(run);
    for (auto _ : run) benchmark::DoNotOptimize(s.model->Ar(s.rhoL, s.T));
}
void Z(benchmark::State& run) {
    const State s(run);
    for (auto _ : run) benchmark::DoNotOptimize(s.model->Z(s.rhoL, s.T));
}
/// Value, first and second derivatives in density and temperature.
void Deriv1(benchmark::State& run) {
    const State s(run);
    double d[4];
    for (auto _ : run) {
        s.model->derivatives()->deriv(s.rhoL, s.T, 1, 1, d);
        benchmark::DoNotOptimize(d);
    }
}
/// Second argument: pressure in per cent of saturation; third: temperature in per cent of Tc. The
/// counter is for all roots of a call together.
void vcalc(benchmark::State& run) {
    const State s(run);
    const double p = s.p * static_cast<double>(run.range(1)) / 100;
    const double T = s.model->Tcrit() * static_cast<double>(run.range(2)) / 100;
    double rho1 = 0.0, rho2 = 0.0;
    int roots = 0;
    for (auto _ : run) {
        rho1 = 0.0;
        roots = s.model->vcalc(p, T, 1, rho1, rho2);
        benchmark::DoNotOptimize(roots);
    }
    // The same search on a copy of the equation that can be asked how often it was evaluated.
    corvane::meos::Equation equation;
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::tmpfile(), std::fclose);
    s.model->par_out(file.get());
    std::rewind(file.get());
    equation.read(file.get());
    corvane::meos::StartTables tables;
    Vector<double> t, dilute, dense;
    tables.fill(equation, s.model->Tcrit(), 1 / s.model->vcrit(), t, dilute, dense);
    const corvane::meos::Isotherm<false> isotherm(equation, T);
    density_roots(equation, tables, isotherm, p / (R * T));
    run.counters["evaluations"] = isotherm.evaluations();
    run.counters["roots"] = roots;
}
/// Second argument: 0 from the critical point, 1 a march.
void vle1_T(benchmark::State& run) {
    const State s(run);
    const int cont = static_cast<int>(run.range(1));
    corvane::SaturationMarch curve;
    double T = s.T, p, rhoL, rhoV;
    for (auto _ : run) {
        T = T > 0.9 * s.model->Tcrit() ? s.T : T + 1e-4 * s.T;
        curve.at_T(s.model.get(), T, cont, p, rhoL, rhoV);
        benchmark::DoNotOptimize(p);
    }
}
void load(benchmark::State& run) {
    const State s(run);
    for (auto _ : run) s.model->load("MEOS");
}

void each(benchmark::internal::Benchmark* b) {
    b->DenseRange(0, 4);
}
BENCHMARK(Ar)->Apply(each);
BENCHMARK(Z)->Apply(each);
BENCHMARK(Deriv1)->Apply(each);
BENCHMARK(vcalc)->ArgsProduct({{0, 3, 4}, {30, 100, 1000}, {80, 150}});
BENCHMARK(vle1_T)->ArgsProduct({{0, 3, 4}, {0, 1}})->Unit(benchmark::kMicrosecond);
BENCHMARK(load)->Apply(each)->Unit(benchmark::kMicrosecond);

}  // namespace
