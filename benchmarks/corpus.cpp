// Bubble and dew points of binaries, cold, over compositions and temperatures: how many are solved,
// have no solution, are given up (counted apart where the model has no density at some
// composition), or are wrong without saying so. Every result is checked as in corpus_check.h;
// --scan checks the refusals, too.
//
//     bench_corpus [-v] [--scan] [--limit SECONDS] [EOS ...]      default: PR SRK
//     bench_corpus --flashes [-v] [--seed N] [--states N] [--judge K] [--limit SECONDS] [EOS ...]
//
// A row that has taken SECONDS (default 120) ends; the columns then count fewer points.
//
// --flashes: N random flashes of each of 25 mixtures of three to seven components (flash_corpus.h);
// of every K-th answer a phase below the tangent plane is looked for. The exit code is 1 if
// something was wrong.
#include "corpus_check.h"
#include "flash_corpus.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace {
using Clock = std::chrono::steady_clock;
using corvane::Saturated;

struct Equation {
    char const *eos, *mth;
    int set;  ///< of the components; −1: what the pair's file names
};
constexpr Equation kEquations[] = {
    {"PR", "vdW1", 1}, {"SRK", "vdW1", 1}, {"PCSAFT", "LB", -1}, {"MEOS", "GERG", -1}};
constexpr char const* kPairs[][2] = {{"methane", "ethane"},         {"methane", "decane"},
                                     {"carbon_dioxide", "methane"}, {"nitrogen", "ethane"},
                                     {"water", "methane"},          {"carbon_dioxide", "water"}};

struct Loaded {
    Mixture model;
    bool estimated;
};
Loaded make(Equation const& e, char const* const* pair) {
    Loaded m{Mixture(attachN(e.eos, e.mth)), false};
    m.model->alloc(2, e.eos);
    m.model->mth = e.mth;
    for (int i = 0; i < 2; ++i) {
        m.model->mdl1[i]->name(pair[i]);
        m.model->mdl1[i]->id(e.set);
    }
    m.model->id(0, 1, 1);
    m.estimated = !corvane::load_estimating(*m.model, e.eos, e.mth).empty();
    return m;
}

double microseconds(Clock::time_point since) {
    return std::chrono::duration<double, std::micro>(Clock::now() - since).count();
}

enum Outcome { solved, none, gave_up, no_density, wrong };
constexpr int kOutcomes = 5;
struct Row {
    int count[kOutcomes] = {};
    double sum = 0, worst = 0;
    void print(char const* name) const {
        const int n = std::accumulate(count, count + kOutcomes, 0);
        std::printf("%-40s%8d%10d%9d%12d%8d%12.1f%12.1f\n", name, count[solved], count[none],
                    count[gave_up], count[no_density], count[wrong], sum / n, worst);
        std::fflush(stdout);
    }
};

class Corpus {
  public:
    bool verbose = false, scan = false;
    double limit = 120;

    void point(ModelN const& m, Saturated kind, double T, double x, Row& row) const {
        const auto begin = Clock::now();
        auto took = [&] {
            const double us = microseconds(begin);
            row.sum += us;
            row.worst = std::max(row.worst, us);
        };
        try {
            const auto q = corvane::saturation_T(m, kind, T, check::binary(x));
            took();
            char const* what = check::fault(m, kind, T, x, q);
            ++row.count[what ? wrong : solved];
            if (what)
                std::printf("  wrong (%s): x=%.2f T=%.3f p=%.6g rho %.4g %.4g y %.6g; %s\n", what,
                            x, T, q.p, q.given.rho, q.incipient.rho, q.incipient.x[0],
                            q.certificate.line().c_str());
        } catch (corvane::EquilibriumFailure const& e) {
            took();
            Outcome o = e.kind() == corvane::EquilibriumFailure::Kind::no_solution ? none : gave_up;
            const double at = scan && o == none ? check::overlooked(m, kind, T, x) : 0;
            if (at > 0) {
                o = wrong;
                std::printf("  overlooked near p=%.6g: %s\n", at, e.what());
            }
            if (o == gave_up && !check::has_densities(m, T)) o = no_density;
            ++row.count[o];
            if (verbose || o == gave_up) std::printf("  %s\n", e.what());
        } catch (ThException const& e) {
            took();
            ++row.count[wrong];
            std::printf("  wrong (thrown): x=%.2f T=%.3f code %d\n", x, T, e.number);
        }
    }

    Row pair(ModelN const& m, Saturated kind) const {
        Row row;
        const auto begin = Clock::now();
        for (int k = 0; k < 120; ++k) {
            // every seventh point, so that a row cut short still covers the whole field
            const int at = 7 * k % 120;
            const double x = 0.05 + 0.1 * (at / 12), f = 0.5 + 0.43 * (at % 12) / 11;
            point(m, kind, f * (x * m.mdl1[0]->Tcrit() + (1 - x) * m.mdl1[1]->Tcrit()), x, row);
            if (microseconds(begin) > 1e6 * limit) break;
        }
        return row;
    }
};
}  // namespace

int main(int argc, char** argv) {
    Corpus corpus;
    FlashCorpus flashes;
    bool of_flashes = false;
    std::vector<std::string> asked;
    for (int k = 1; k < argc; ++k) {
        const std::string word = argv[k];
        const bool more = k + 1 < argc;
        if (word == "-v")
            corpus.verbose = flashes.verbose = true;
        else if (word == "--flashes")
            of_flashes = true;
        else if (word == "--seed" && more)
            flashes.seed = static_cast<unsigned>(std::atol(argv[++k]));
        else if (word == "--states" && more)
            flashes.states = std::atoi(argv[++k]);
        else if (word == "--judge" && more)
            flashes.judge = std::atoi(argv[++k]);
        else if (word == "--scan")
            corpus.scan = true;
        else if (word == "--limit" && more)
            corpus.limit = flashes.limit = std::atof(argv[++k]);
        else
            asked.push_back(word);
    }
    if (asked.empty()) asked = {"PR", "SRK"};
    const auto is_asked = [&](Equation const& e) {
        return std::find(asked.begin(), asked.end(), e.eos) != asked.end();
    };
    bool sound = true;
    if (of_flashes) {
        for (Equation const& e : kEquations)
            if (is_asked(e)) sound = flashes.run(e.eos, e.mth, e.set) && sound;
        return sound ? 0 : 1;
    }
    std::printf("%-40s%8s%10s%9s%12s%8s%12s%12s\n", "", "solved", "no such", "gave up",
                "no density", "wrong", "mean us", "worst us");
    for (Equation const& e : kEquations) {
        if (!is_asked(e)) continue;
        Row all;
        for (auto const& pair : kPairs) {
            const Loaded m = make(e, pair);
            for (Saturated kind : {Saturated::bubble, Saturated::dew}) {
                const Row row = corpus.pair(*m.model, kind);
                row.print((std::string(e.eos) + ' ' + pair[0] + '/' + pair[1] +
                           (kind == Saturated::bubble ? " bubble" : " dew") +
                           (m.estimated ? " (est.)" : ""))
                              .c_str());
                for (int k = 0; k < kOutcomes; ++k) all.count[k] += row.count[k];
                all.sum += row.sum;
                all.worst = std::max(all.worst, row.worst);
            }
        }
        all.print((std::string(e.eos) + " all").c_str());
        sound = sound && all.count[wrong] == 0;
    }
    return sound ? 0 : 1;
}
