// Fits, from opened models and points in memory to parameters with their errors.
#include <corvane/fit/fit.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation.h>

#include <benchmark/benchmark.h>

#include <map>

using namespace corvane::fit;

namespace {
/// Vapour pressures and liquid densities of the reference equation.
DataSet saturation(char const* substance, double first, double last, int count) {
    const corvane::Fluid source = corvane::open("MEOS", substance);
    DataSet set;
    for (int k = 0; k < count; ++k) {
        Point p;
        p.T = first + (last - first) * k / (count - 1);
        const auto s = corvane::pure_saturation_T(*source.model, p.T);
        p.p = s.p;
        p.observed = {{Observable::p, s.p}, {Observable::rhoL, s.rhoL}};
        set.points.push_back(p);
    }
    return set;
}

/// Bubble points of the multi-fluid model: 5 isotherms of 8 compositions.
DataSet bubbles(char const* first, char const* second) {
    const corvane::Mixture source = corvane::open_mixture("MEOS+GERG", {first, second});
    const double Tc = source.model->mdl1[1]->Tcrit();
    DataSet set;
    for (int i = 0; i < 5; ++i)
        for (int k = 1; k <= 8; ++k) {
            Vector<double> x(2);
            x[0] = 0.05 * k;
            x[1] = 1.0 - x[0];
            try {
                const auto s = corvane::bubble_T(*source.model, (0.6 + 0.05 * i) * Tc, x);
                Point p;
                p.kind = PointKind::bubble;
                p.T = s.T;
                p.p = s.p;
                p.x = {x[0], x[1]};
                p.y = {s.incipient.x[0], s.incipient.x[1]};
                p.observed = {{Observable::p, p.p}, {Observable::y, p.y[0], kUnknown, 0}};
                set.points.push_back(p);
            } catch (corvane::EquilibriumFailure const&) {  // above the critical pressure
            }
        }
    return set;
}

/// The fit of a problem that was opened anew.
template <class Make>
void time(benchmark::State& state, bool first_stage, Make make) {
    Result r;
    for (auto _ : state) {
        state.PauseTiming();
        Problem problem = make();
        state.ResumeTiming();
        benchmark::DoNotOptimize(r = solve(problem, {.first_stage = first_stage}));
    }
    double values = 0.0;
    for (SetReport const& s : r.sets) values += s.points;
    state.counters["values"] = values;
    state.counters["iterations"] = r.iterations;
    state.counters["evaluations"] = static_cast<double>(r.evaluations);
    state.counters["value"] = r.parameters[0].value;
}

void pure(benchmark::State& state, char const* substance, double first, double last, int count,
          std::vector<std::string> const& names, bool first_stage) {
    const DataSet data = saturation(substance, first, last, count);
    time(state, first_stage, [&] {
        Problem problem;
        problem.add(corvane::open("PCSAFT", substance), {data});
        for (auto const& name : names) problem.adjust(name);
        return problem;
    });
}

/// The pair from a k_ij of 0, or from far away.
void pair(benchmark::State& state, char const* model, double start, bool first_stage) {
    const DataSet data = bubbles("methane", "propane");
    time(state, first_stage, [&] {
        Problem problem;
        problem.add(corvane::open_mixture(model, {"methane", "propane"}), {data});
        problem.adjust_pair("kij").start = start;
        return problem;
    });
}

/// 500 pairs (25 times 20), models opened by each fit, on two threads.
void batch(benchmark::State& state) {
    const char* pairs[][2] = {
        {"methane", "ethane"},         {"methane", "propane"},       {"methane", "butane"},
        {"methane", "pentane"},        {"methane", "nitrogen"},      {"ethane", "propane"},
        {"ethane", "butane"},          {"ethane", "pentane"},        {"propane", "butane"},
        {"propane", "pentane"},        {"butane", "pentane"},        {"butane", "hexane"},
        {"carbon_dioxide", "propane"}, {"carbon_dioxide", "butane"}, {"nitrogen", "ethane"},
        {"nitrogen", "propane"},       {"pentane", "hexane"},        {"propane", "hexane"},
        {"isobutane", "pentane"},      {"ethane", "hexane"}};
    std::vector<Job> jobs;
    std::map<int, DataSet> data;
    for (int k = 0; k < 20; ++k) data[k] = bubbles(pairs[k][0], pairs[k][1]);
    for (int k = 0; k < 500; ++k)
        jobs.push_back({[&, k] {
            Problem one;
            one.add(corvane::open_mixture("PR+vdW1", {pairs[k % 20][0], pairs[k % 20][1]}),
                    {data.at(k % 20)});
            one.adjust_pair("kij");
            return one;
        }});
    int done = 0;
    double values = 0.0;
    for (auto _ : state)
        for (Outcome const& o : solve_all(jobs, 2)) {
            done += o.done && o.result.converged ? 1 : 0;
            for (SetReport const& s : o.result.sets) values += s.points;
        }
    state.counters["converged"] = done / static_cast<double>(state.iterations());
    state.counters["values"] = values / static_cast<double>(state.iterations());
}
}  // namespace

BENCHMARK_CAPTURE(pair, PR_kij, "PR+vdW1", 0.0, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pair, PR_kij_last_stage_alone, "PR+vdW1", 0.0, false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pair, PR_kij_far, "PR+vdW1", 0.5, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pair, PR_kij_far_last_stage_alone, "PR+vdW1", 0.5, false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pair, PCSAFT_kij, "PCSAFT+LB", 0.0, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pair, PCSAFT_kij_last_stage_alone, "PCSAFT+LB", 0.0, false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pure, PCSAFT_propane, "propane", 90.0, 365.0, 60, {"m", "Ts", "vs"}, true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pure, PCSAFT_propane_last_stage_alone, "propane", 90.0, 365.0, 60,
                  {"m", "Ts", "vs"}, false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pure, PCSAFT_ethanol, "ethanol", 230.0, 510.0, 60,
                  {"m", "Ts", "vs", "kappaAB", "epsAB"}, true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(batch)->Unit(benchmark::kSecond)->Iterations(1)->MeasureProcessCPUTime()->UseRealTime();
