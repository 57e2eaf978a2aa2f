// PC-SAFT: what one call costs, and how often saturation asks for densities.
#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

struct Substance {
    char const* name;
    int id;
};
constexpr Substance kSubstances[] = {{"propane", 1}, {"ethanol", 1}};  // without, with association

/// Forwards to the plug-in and counts.
class Counting final : public Model1 {
  public:
    explicit Counting(Model1 const& model) : model_(model) {
        Tcrit(model.Tcrit());
        pcrit(model.pcrit());
        vcrit(model.vcrit());
        derivatives(model.derivatives());
    }
    using Model1::ppar;
    double* ppar(int i) override { return const_cast<double*>(model_.ppar(i)); }
    void par_in(FILE*, int) override {}
    void par_out(FILE*) const override {}
    double Ar(double rho, double T) const override { return ++properties, model_.Ar(rho, T); }
    double Z(double rho, double T) const override { return ++properties, model_.Z(rho, T); }
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        return ++densities, model_.vcalc(p, T, phase, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override { return model_.xinit(p, T, phase); }

    mutable long properties = 0, densities = 0;

  private:
    Model1 const& model_;
};

struct State {
    std::unique_ptr<Model1, corvane::Detach> model{attach1("PCSAFT")};
    double T, p, rhoL, rhoV;
    explicit State(benchmark::State& run, double reduced = 0.7) {
        Substance const& s = kSubstances[run.range(0)];
        run.SetLabel(s.name);
        model->name(s.name);
        model->id(s.id);
        model->load("PCSAFT");
        T = reduced * model->Tcrit();
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
/// Second argument: 10·nrho + nT.
void Deriv1(benchmark::State& run) {
    const State s(run);
    const int nrho = static_cast<int>(run.range(1)) / 10, nT = static_cast<int>(run.range(1)) % 10;
    double d[9];
    for (auto _ : run) {
        s.model->derivatives()->deriv(s.rhoL, s.T, nrho, nT, d);
        benchmark::DoNotOptimize(d);
    }
}
/// Second argument: pressure in per cent of saturation; third: per cent of the critical
/// temperature.
void vcalc(benchmark::State& run) {
    const State s(run);
    const double p = s.p * static_cast<double>(run.range(1)) / 100;
    const double T = s.model->Tcrit() * static_cast<double>(run.range(2)) / 100;
    for (auto _ : run) {
        double rho1 = 0, rho2 = 0;
        benchmark::DoNotOptimize(s.model->vcalc(p, T, 1, rho1, rho2));
    }
}
void Cpr_pT(benchmark::State& run) {
    const State s(run);
    for (auto _ : run) {
        double rho = 0;
        benchmark::DoNotOptimize(s.model->Cpr(2 * s.p, s.T, 1, rho));
    }
}
/// Second argument: per mille of the critical temperature. Every call starts afresh.
void vle1_T_cold(benchmark::State& run) {
    const State s(run, static_cast<double>(run.range(1)) / 1000);
    const Counting model(*s.model);
    for (auto _ : run) {
        double p, rhoL, rhoV;
        vle1_T(&model, s.T, 0, p, rhoL, rhoV);
        benchmark::DoNotOptimize(p);
    }
    using benchmark::Counter;
    run.counters["vcalc"] = {static_cast<double>(model.densities), Counter::kAvgIterations};
    run.counters["Ar"] = {static_cast<double>(model.properties), Counter::kAvgIterations};
}
void load(benchmark::State& run) {
    const State s(run);
    for (auto _ : run) s.model->load("PCSAFT");
}

}  // namespace

BENCHMARK(Ar)->DenseRange(0, 1);
BENCHMARK(Z)->DenseRange(0, 1);
BENCHMARK(Deriv1)->ArgsProduct({{0, 1}, {1, 20, 22, 30}});
BENCHMARK(vcalc)->ArgsProduct({{0, 1}, {90, 1000}, {70}})->ArgsProduct({{0, 1}, {1000}, {130}});
BENCHMARK(Cpr_pT)->DenseRange(0, 1);
BENCHMARK(vle1_T_cold)->ArgsProduct({{0, 1}, {350, 700, 950, 999}});
BENCHMARK(load)->DenseRange(0, 1);
