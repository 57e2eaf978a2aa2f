// Core rows: processor time, evaluations of the model and, under callgrind, instructions of one
// call.
//
//     cd build/home && ../benchmarks/bench_counts             a table of times and evaluations
// benchmarks/counts runs it under callgrind and compares its instructions with those of counts.tsv.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <valgrind/callgrind.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace {

/// A model with its exact derivatives that counts its evaluations, density searches as one.
class Counting final : public Model1, public corvane::Deriv1 {
  public:
    explicit Counting(Model1& model) : model_(model) {
        eos_ = model.eos();
        mpar_ = model.mpar();
        madj_ = model.madj();
        name(model.name());
        pcrit(model.pcrit());
        Tcrit(model.Tcrit());
        vcrit(model.vcrit());
        omega(model.omega());
        derivatives(this);
    }
    using Model1::ppar;
    double* ppar(int i) override { return model_.ppar(i); }
    void par_in(FILE* f, int mode) override { model_.par_in(f, mode); }
    void par_out(FILE* f) const override { model_.par_out(f); }
    double Ar(double rho, double T) const override { return ++count, model_.Ar(rho, T); }
    double Z(double rho, double T) const override { return ++count, model_.Z(rho, T); }
    int vcalc(double p, double T, int phase, double& a, double& b) const override {
        return ++count, model_.vcalc(p, T, phase, a, b);
    }
    double xinit(double p, double T, int phase) const override { return model_.xinit(p, T, phase); }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        return ++count, model_.derivatives()->deriv(rho, T, nrho, nT, d);
    }
    mutable long count = 0;

  private:
    Model1& model_;
};

struct Row {
    char const* name;
    int calls;  // of one measurement
    std::function<void()> call;
    std::function<long()> evaluations;  // of one call; −1: not counted
};

/// What the rows work on. Every row is a call that a user makes.
struct Subjects {
    corvane::Fluid pr = corvane::open("PR", "propane"), water = corvane::open("MEOS", "water"),
                   saft = corvane::open("PCSAFT", "propane");
    Mixture binary = mixture_of({"methane", "propane"});
    Mixture gas = mixture_of({"methane", "ethane", "nitrogen", "carbon_dioxide"}, "MEOS", "GERG", -1);
    Mixture alkanes = mixture_of({"methane", "ethane", "propane", "butane", "pentane"});
    Mixture light = mixture_of({"methane", "ethane", "propane", "nitrogen", "carbon_dioxide"});
    corvane::SaturationExpansion curve{*pr.model};
    Vector<double> half, heavy, some;  // 1 : 1; five components
    double sum = 0.0;  // keeps results from being optimised away

    Subjects() : half(2), heavy(5), some(5) {
        half.set(0.5);
        for (int i = 0; double x : {0.6, 0.15, 0.1, 0.1, 0.05}) heavy[i++] = x;
        for (int i = 0; double x : {0.7, 0.1, 0.1, 0.05, 0.05}) some[i++] = x;
    }

    void pure(std::vector<Row>& rows, char const* name, int calls, Model1& model,
              std::function<void(Model1 const&)> const& f) {
        rows.push_back({name, calls, [&model, f] { f(model); },
                        [&model, f] {
                            Counting counting(model);
                            f(counting);
                            return counting.count;
                        }});
    }
    /// Chemical potentials with their derivatives, what the equilibrium solvers ask for.
    void potentials(std::vector<Row>& rows, char const* name, ModelN const& model) {
        const int n = model.mdl1.size();
        Vector<double> rho(n);
        rho.set(2e-3 / n);
        std::vector<double> mu(n), mu_T(n), mu_rho(n * n);
        rows.push_back({name, 100,
                        [=, this, &model]() mutable {
                            model.derivatives()->potentials(rho, 250, mu.data(), mu_T.data(),
                                                            mu_rho.data());
                            sum += std::fabs(mu[0]);
                        },
                        [] { return 1L; }});
    }
    std::vector<Row> rows() {
        std::vector<Row> r;
        const auto density = [this](Model1 const& m) {
            double a = 0.0, b = 0.0;
            m.vcalc(0.5, 0.85 * m.Tcrit(), 1, a, b);
            sum += a + b;
        };
        const auto properties = [this](Model1 const& m) {
            sum += corvane::phase_properties(m, 1.1 * m.Tcrit(), 0.5 / m.vcrit()).p;
        };
        const auto saturation = [this](Model1 const& m) {
            sum += corvane::pure_saturation_T(m, 0.7 * m.Tcrit()).p;
        };
        pure(r, "density_PR_propane", 400, *pr.model, density);
        pure(r, "density_PCSAFT_propane", 100, *saft.model, density);
        pure(r, "density_MEOS_water", 100, *water.model, density);
        r.push_back({"properties_PR_propane", 400, [=, this] { properties(*pr.model); }, {}});
        r.push_back({"properties_MEOS_water", 100, [=, this] { properties(*water.model); }, {}});
        pure(r, "saturation_PR_propane", 100, *pr.model, saturation);
        pure(r, "saturation_PCSAFT_propane", 40, *saft.model, saturation);
        pure(r, "saturation_MEOS_water", 40, *water.model, saturation);
        r.push_back({"saturation_precomputed", 1000,
                     [this] {
                         corvane::SaturationExpansion::Point s;
                         curve.at_T(258.9, s);
                         sum += s.p;
                     },
                     [] { return 0L; }});
        potentials(r, "potentials_PR_binary", *binary);
        potentials(r, "potentials_GERG_4", *gas);
        r.push_back(
            {"bubble_T_PR_binary", 10, [this] { sum += corvane::bubble_T(*binary, 250, half).p; },
             [this] { return corvane::bubble_T(*binary, 250, half).certificate.evaluations; }});
        r.push_back(
            {"flash_pT_PR_binary", 10,
             [this] { sum += corvane::flash_pT(*binary, 2, 250, half).p; },
             [this] { return corvane::flash_pT(*binary, 2, 250, half).certificate.evaluations; }});
        r.push_back({"flash_gas_alkanes",
                     10,
                     [this] { sum += corvane::flash_pT(*alkanes, 1, 300, heavy).p; },
                     {}});
        r.push_back({"flash_liquid_light",
                     10,
                     [this] { sum += corvane::flash_pT(*light, 5, 150, some).p; },
                     {}});
        r.push_back({"envelope_PR_binary",
                     2,
                     [this] { sum += corvane::phase_envelope(*binary, half).points[0].p; },
                     {}});
        return r;
    }
};

double now() {
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return 1e6 * static_cast<double>(t.tv_sec) + 1e-3 * static_cast<double>(t.tv_nsec);
}

/// Median of 15 measurements, µs per call.
double time_of(Row const& row) {
    std::vector<double> times;
    for (int k = 0; k < 15; ++k) {
        const double start = now();
        for (int i = 0; i < row.calls; ++i) row.call();
        times.push_back((now() - start) / row.calls);
    }
    std::nth_element(times.begin(), times.begin() + 7, times.end());
    return times[7];
}

/// One dump of callgrind for each row, whose trigger bears name and number of calls.
void count(Row const& row) {
    row.call();  // what is bound or made at the first call
    CALLGRIND_ZERO_STATS;
    for (int i = 0; i < row.calls; ++i) row.call();
    const std::string trigger = std::string(row.name) + ' ' + std::to_string(row.calls);
    CALLGRIND_DUMP_STATS_AT(trigger.c_str());
}
}  // namespace

int main() {
    Subjects subjects;
    const bool counting = RUNNING_ON_VALGRIND != 0;
    if (counting) {  // what decides how much there is to count
        const bool wide = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
        std::printf("compiler\tgcc %s, %s, %s\n", __VERSION__, CORVANE_BUILD_TYPE,
                    wide ? "AVX2" : "no AVX2");
    } else {
        std::printf("%-28s %12s %12s\n", "# call", "time/us", "evaluations");
    }
    for (Row const& row : subjects.rows()) {
        if (counting) {
            count(row);
            continue;
        }
        const long n = row.evaluations ? row.evaluations() : -1;
        std::printf("%-28s %12.4f %12s\n", row.name, time_of(row),
                    n < 0 ? "-" : std::to_string(n).c_str());
    }
    return subjects.sum > 0.0 ? 0 : 1;
}
