// Round trips of flashes over random states: (p, T) -> h -> (p, h) -> T, the same with s, and
// (p, T) -> rho -> (T, rho) -> p. Prints how many come back, are refused, or come back wrong
// without saying so.
//
// Wrong: |ΔT| > 1e-6 K; or |Δp| > 1e-9·p + RT·rho·(residuals of the potentials) + K·(residual of
// the density + 16 roundings of a double), with K = dp/d ln rho of the state, from a flash at a
// density higher by 1e-6. Both T and p are compared with the state that went in, not with a
// certificate.
//
//     bench_round_trips [-v] [states per mixture, 1000] [PR|SRK vdW1 | PCSAFT LB | MEOS GERG]
#include "mixtures.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {
using Clock = std::chrono::steady_clock;
using corvane::EquilibriumFailure;
using corvane::FlashResult;

bool verbose = false;

Mixture make(char const* eos, char const* mth, std::vector<std::string> const& names) {
    // 8: the mixture's own set
    return mixture_of(names, eos, mth, std::strcmp(mth, "GERG") ? 1 : 8);
}

enum Trip { by_h, by_s, by_rho, trips };
struct Count {
    int ok = 0, no_solution = 0, gave_up = 0, wrong = 0, two = 0, three = 0;
    double worst = 0, us = 0;  ///< |ΔT| in K or |Δp|/p; mean time
    void add(Count const& c) {
        ok += c.ok, no_solution += c.no_solution, gave_up += c.gave_up, wrong += c.wrong;
        two += c.two, three += c.three, us += c.us, worst = std::max(worst, c.worst);
    }
    int all() const { return ok + no_solution + gave_up + wrong; }
};

struct State {
    double T, p;
    Vector<double> z;
};

/// What differs too much; the deviation goes to `off`.
bool wrong(ModelN const& m, Trip trip, State const& in, FlashResult const& from,
           FlashResult const& q, double& off) {
    if (trip != by_rho) return !((off = std::fabs(q.T - in.T)) <= 1e-6);
    off = std::fabs(q.p / in.p - 1);
    if (off <= 1e-9) return false;
    const FlashResult next = corvane::flash_Trho(m, in.T, q.rho * (1 + 1e-6), in.z);
    const double K = std::fabs(next.p - q.p) * 1e6;
    double rho = 0;
    for (auto const& phase : q.phases) rho = std::max(rho, phase.rho);
    const double potentials = (from.certificate.dmu + q.certificate.dmu) * R * in.T * rho;
    return !(std::fabs(q.p - in.p) <=
             1e-9 * in.p + potentials + K * (q.certificate.target + 16 * 2.2e-16));
}

void travel(ModelN const& m, Trip trip, State const& in, FlashResult const& from, Count& n) {
    static char const* const kName[] = {"h", "s", "rho"};
    const auto begin = Clock::now();
    auto took = [&] {
        n.us += std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
    };
    auto report = [&](char const* what) {
        std::printf("  %s by %s from T=%.17g p=%.17g phases %zu z", what, kName[trip], in.T, in.p,
                    from.phases.size());
        for (int i = 0; i < in.z.size(); ++i) std::printf(" %.17g", in.z[i]);
        std::printf("\n");
    };
    try {
        const FlashResult q = trip == by_h   ? corvane::flash_ph(m, in.p, from.h, in.z)
                              : trip == by_s ? corvane::flash_ps(m, in.p, from.s, in.z)
                                             : corvane::flash_Trho(m, in.T, from.rho, in.z);
        took();
        double off = 0;
        const bool bad = wrong(m, trip, in, from, q, off);
        ++(bad ? n.wrong : n.ok);
        n.two += q.phases.size() == 2;
        n.three += q.phases.size() > 2;
        n.worst = std::max(n.worst, off);
        if (bad) {
            report("wrong");
            std::printf("    T=%.12g p=%.12g; %s\n", q.T, q.p, q.certificate.line().c_str());
        }
    } catch (EquilibriumFailure const& e) {
        took();
        ++(e.kind() == EquilibriumFailure::Kind::gave_up ? n.gave_up : n.no_solution);
        if (verbose) {
            report("refused");
            std::printf("    %s\n", e.what());
        }
    }
}

/// The flash at (p, T) of the state; for pure fluids, half of the states are split in two at their
/// saturation by a density between the phases' (there p of the state is set).
bool prepare(ModelN const& m, State& in, bool pure, double between, FlashResult& q) {
    try {
        q = corvane::flash_pT(m, in.p, in.T, in.z);
        if (pure && between < 0.5) {
            const auto sat = corvane::bubble_T(m, in.T, in.z);
            in.p = sat.p;
            const double f = 2 * between, v = f / sat.given.rho + (1 - f) / sat.incipient.rho;
            q.T = in.T;
            q.p = sat.p;
            q.phases = {sat.given, sat.incipient};
            q.fraction = {f, 1 - f};
            q.rho = 1 / v;
        }
        corvane::add_caloric(m, in.z, q);
        return true;
    } catch (EquilibriumFailure const& e) {
        if (verbose) std::printf("  no state: %s\n", e.what());
    } catch (ThException const& e) {
        if (verbose) std::printf("  no state: %s\n", e.message());
    }
    return false;
}

void print(char const* name, Trip trip, Count const& c) {
    static char const* const kTrip[] = {"(p,h) -> T", "(p,s) -> T", "(T,rho) -> p"};
    std::printf("%-42s%-14s%7d%7d%7d%9d%9d%7d%11.1e%9.1f\n", name, kTrip[trip], c.ok, c.two,
                c.three, c.no_solution, c.gave_up, c.wrong, c.worst, c.us / std::max(1, c.all()));
}

const std::vector<std::vector<std::string>> kMixtures = {
    {"methane", "propane"},
    {"methane", "decane"},
    {"carbon_dioxide", "methane"},
    {"carbon_dioxide", "ethane"},
    {"nitrogen", "ethane"},
    {"water", "methane"},
    {"carbon_dioxide", "water"},
    {"nitrogen", "methane", "propane"},
    {"methane", "decane", "water"},
    {"carbon_dioxide", "hydrogen_sulfide", "methane"},
    {"nitrogen", "methane", "ethane", "propane", "butane"},
    {"nitrogen", "methane", "ethane", "propane", "butane", "decane"},
    {"methane", "carbon_dioxide", "propane", "decane", "water"},
    {"methane"},
    {"carbon_dioxide"},
    {"water"}};
}  // namespace

int main(int argc, char** argv) {
    int states = 1000;
    std::vector<char const*> model;
    for (int k = 1; k < argc; ++k)
        if (!std::strcmp(argv[k], "-v"))
            verbose = true;
        else if (std::atoi(argv[k]) > 0)
            states = std::atoi(argv[k]);
        else
            model.push_back(argv[k]);
    if (model.size() < 2) model = {"PR", "vdW1"};
    std::mt19937 generator(20261121);
    std::uniform_real_distribution<double> uniform(0, 1);
    std::printf("%-42s%-14s%7s%7s%7s%9s%9s%7s%11s%9s\n", "", "", "ok", "two", "three", "no such",
                "gave up", "wrong", "worst", "us");
    Count all[trips];
    int without = 0;
    for (auto const& names : kMixtures) {
        const Mixture m = make(model[0], model[1], names);
        const int n = m->mdl1.size();
        Count count[trips];
        std::string title;
        for (auto const& name : names) title += (title.empty() ? "" : "/") + name;
        if (title.size() > 40) title = names.front() + " … " + names.back();
        for (int k = 0; k < states; ++k) {
            State in{0, 0, Vector<double>(n)};
            double sum = 0, Tc = 0;
            for (int i = 0; i < n; ++i) sum += in.z[i] = -std::log(1 - uniform(generator));
            for (int i = 0; i < n; ++i) Tc += (in.z[i] /= sum) * m->mdl1[i]->Tcrit();
            in.T = Tc * (0.5 + (n == 1 ? 0.7 : 1.0) * uniform(generator));
            in.p = 0.01 * std::pow(3000.0, uniform(generator));
            const double between = uniform(generator);
            FlashResult q;
            if (!prepare(*m, in, n == 1 && in.T < 0.995 * Tc, between, q)) {
                ++without;
                continue;
            }
            bool tables = true;  // below their first temperature there is no flash by s
            for (int i = 0; i < n; ++i) tables = tables && m->mdl1[i]->ideal.interval(in.T) >= 0;
            for (Trip trip : {by_h, by_s, by_rho})
                if (tables || trip != by_s) travel(*m, trip, in, q, count[trip]);
        }
        for (Trip trip : {by_h, by_s, by_rho}) {
            print(trip == by_h ? title.c_str() : "", trip, count[trip]);
            all[trip].add(count[trip]);
        }
    }
    int silent = 0;
    for (Trip trip : {by_h, by_s, by_rho}) {
        print(trip == by_h ? "all" : "", trip, all[trip]);
        silent += all[trip].wrong;
    }
    std::printf("%d states without a flash at (p, T)\n", without);
    return silent ? 1 : 0;
}
