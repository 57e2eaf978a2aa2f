// Phase equilibria and critical points of binaries, Peng–Robinson: time by the plug-in's exact
// forms, and what the model is asked by both routes.
#include "counting_mixture.h"

#include <corvane/corvane.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {
ModelN& binary(char const* first, char const* second, double kij) {
    ModelN* m = attachN("PR", "vdW1");  // lives as long as the process
    m->alloc(2, "PR");
    for (int i = 0; i < 2; ++i) {
        m->mdl1[i]->name(i ? second : first);
        m->mdl1[i]->id(1);
        m->mdl1[i]->load("PR");
    }
    m->param(0, 0, 1, kij);
    return *m;
}
ModelN& methane_propane() {
    static ModelN& m = binary("methane", "propane", 0.01);
    return m;
}
ModelN& carbon_dioxide_methane() {
    static ModelN& m = []() -> ModelN& {
        ModelN& made = binary("carbon_dioxide", "methane", 0.0978);
        made.mdl1[0]->solid.load();
        return made;
    }();
    return m;
}
ModelN& carbon_dioxide_decane() {
    static ModelN& m = binary("carbon_dioxide", "decane", 0.1);
    return m;
}

Vector<double> two(double a, double b) {
    Vector<double> v(2);
    v[0] = a;
    v[1] = b;
    return v;
}

// One call of each function. Methane(0.3)/propane boils at 250 K and 3.75 MPa; the start values are
// those of a first guess (Wilson's K-factors).

void bubble_T(ModelN const& m) {
    double p = 0, rho1 = 0.0145;
    Vector<double> rho2 = two(1.6e-3, 1e-4);
    vleN_T(&m, 250, two(0.3, 0.7), p, rho1, rho2);
    benchmark::DoNotOptimize(p);
}
void bubble_p(ModelN const& m) {
    double T = 255, rho1 = 0.0145;
    Vector<double> rho2 = two(1.6e-3, 1e-4);
    vleN_p(&m, 3.75, two(0.3, 0.7), T, rho1, rho2);
    benchmark::DoNotOptimize(T);
}
void residuals(ModelN const& m) {
    const Vector<double> x = two(0.3, 0.7);
    pass_ffeN context{&m, 0, 0.0, 250, &x};
    Vector<double> u(3);
    u[0] = 1.55e-3;
    u[1] = 1.5e-4;
    u[2] = 0.0124;
    benchmark::DoNotOptimize(objffeN(u, &context).data);
}
void tangent(ModelN const& m) {
    benchmark::DoNotOptimize(ffinit(&m, 3, 250).data);
}
void flash_from_ffinit(ModelN const& m) {
    Vector<double> x = two(0, 0), rho(2);
    equil2(&m, 3, 250, x, rho);
    benchmark::DoNotOptimize(x.data);
}
void flash(ModelN const& m) {
    Vector<double> x = two(0.25, 0.9), rho(2);
    equil2(&m, 3, 250, x, rho);
    benchmark::DoNotOptimize(x.data);
}
void minimum(ModelN const& m) {
    Vector<double> x = two(0.3, 0.9);
    Vector<phdesc> ph(2);
    ph[0] = ph[1] = {0, -1};
    equil_min(&m, 3, 250, ph, x);
    benchmark::DoNotOptimize(x.data);
}
void freeze_out(ModelN const& m) {
    Vector<double> x = two(1, 0), rho(2);
    int i = 0;
    equil2s(&m, 5, 160, x, 1, 0.0, rho, i);
    benchmark::DoNotOptimize(x.data);
}
void critical_point(ModelN const& m) {
    Vector<double> x = two(0.45, 0.55);
    double s = 0;
    Matrix<double> line;
    crit_slope_x(&m, x, s, line);
    benchmark::DoNotOptimize(line.data);
}
void critical_line(ModelN const& m) {
    Vector<double> x = two(0, 1);
    double s = 0.05;
    Matrix<double> line;
    crit_slope_x(&m, x, s, line);
    benchmark::DoNotOptimize(line.data);
}
void distinct(benchmark::State& state) {
    Vector<double> a(100), list;
    Vector<int> idx(100);
    for (int i = 0; i < 100; ++i) a[i] = i % 10;
    for (auto _ : state) {
        int count = 0;
        list_different(a, 0.0, list, count, idx);
        benchmark::DoNotOptimize(count);
    }
}

/// exact: the time is that of the plug-in itself; the counts are taken in one more call.
void run(benchmark::State& state, ModelN& (*model)(), void (*call)(ModelN const&), bool exact) {
    const CountingMixture counting(model(), exact);
    for (auto _ : state) call(exact ? static_cast<ModelN const&>(model()) : counting);
    counting.evaluations = counting.densities = 0;
    call(counting);
    state.counters["evaluations"] = static_cast<double>(counting.evaluations);
    state.counters["densities"] = static_cast<double>(counting.densities);
}

#define BOTH_ROUTES(model, call)                             \
    BENCHMARK_CAPTURE(run, call / exact, model, call, true); \
    BENCHMARK_CAPTURE(run, call / numerical, model, call, false)->Unit(benchmark::kMicrosecond)
BOTH_ROUTES(methane_propane, residuals);
BOTH_ROUTES(methane_propane, bubble_T);
BOTH_ROUTES(methane_propane, bubble_p);
BOTH_ROUTES(methane_propane, tangent);
BOTH_ROUTES(methane_propane, flash);
BOTH_ROUTES(methane_propane, flash_from_ffinit);
BOTH_ROUTES(methane_propane, minimum);
BOTH_ROUTES(carbon_dioxide_methane, freeze_out);
BOTH_ROUTES(methane_propane, critical_point);
BOTH_ROUTES(methane_propane, critical_line);
BENCHMARK_CAPTURE(run, critical_line_CO2_decane / exact, carbon_dioxide_decane, critical_line, true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(distinct);
}  // namespace
