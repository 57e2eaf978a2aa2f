// Certified flashes of ternaries drawn at random, far below the ranges of the equations too,
// against a fine mesh of trial compositions (judge/ternary_search.h), by the model's own published
// slots.
//
//     bench_mesh [--seed N] [--mixtures N] [--states N] [--steps N] [--limit SECONDS] MODEL ...
//     bench_mesh --again FILE         the calls that the lines of the file show
//
// MODEL: EOS+MIXING. Of each, N mixtures (default 40) of three of the substances below, those that
// have parameters, and N states (20) of each; N steps (48) on each side of the triangle. Every
// answer whose plane a trial undercuts by 1e-7 RT is printed as the call that shows it, every
// refusal likewise. The exit code is 1 if there was a false one.
#include "judge/ternary_search.h"
#include "mixtures.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {
using judge::Long;
constexpr char const* kSubstances[] = {
    "nitrogen", "methane",    "carbon_dioxide", "hydrogen_sulfide", "water",
    "hydrogen", "helium",     "argon",          "oxygen",           "carbon_monoxide",
    "ethane",   "propane",    "butane",         "hexane",           "octane",
    "decane",   "hexadecane", "eicosane",       "methanol",         "ethanol",
    "ammonia",  "benzene",    "mercury",        "acetone",          "neon"};
constexpr double kFalse = -1e-7;

struct Settings {
    unsigned seed = 1;
    int mixtures = 40, states = 20, steps = 48;
    double limit = 1e9;
};

/// A model at one temperature, as TernarySearch asks.
struct At {
    ModelN const& m;
    double T, p;
    static Vector<double> vector(Long const* x) {
        Vector<double> w(3);
        for (int i = 0; i < 3; ++i) w[i] = static_cast<double>(x[i]);
        return w;
    }
    int roots(Long, Long const* x, Long* rho) const {
        double r[2] = {0, 0};
        const int n = m.vcalc(p, T, vector(x), 1, r[0], r[1]);
        rho[0] = r[0];
        rho[1] = r[1];
        return n > 1 && r[1] != r[0] ? 2 : n > 0 ? 1 : 0;
    }
    void state(Long rho, Long const* x, Long* h) const {
        const Vector<double> r = vector(x) * static_cast<double>(rho);
        for (int i = 0; i < 3; ++i) try {
                h[i] = std::log(rho) + m.myr(r, T, i);
            } catch (MthException const&) {  // no number there
                h[i] = std::nan("");
            }
    }
};

class Hunt {
  public:
    Hunt(Settings const& s, std::string const& model)
        : settings_(s),
          model_(model),
          eos_(model.substr(0, model.find('+'))),
          mth_(model.substr(model.find('+') + 1)),
          random_(s.seed) {}

    long run() {
        using Clock = std::chrono::steady_clock;
        const auto begin = Clock::now();
        for (int drawn = 0, tries = 0;
             drawn < settings_.mixtures && tries < 50 * settings_.mixtures; ++tries) {
            std::vector<std::string> names(std::begin(kSubstances), std::end(kSubstances));
            std::shuffle(names.begin(), names.end(), random_);
            names.resize(3);
            try {
                Mixture const m = mixture(names);
                ++drawn;
                for (int k = 0; k < settings_.states; ++k) state(*m, names);
            } catch (ThException const&) {  // no parameters
            }
            if (std::chrono::duration<double>(Clock::now() - begin).count() > settings_.limit)
                break;
        }
        std::printf(
            "%s seed %u: %ld flashes, one phase %ld, more %ld, refused %ld, no density %ld, false "
            "%ld\n",
            model_.c_str(), settings_.seed, asked_, phases_[0], phases_[1], refused_, thrown_,
            false_);
        return false_;
    }

    /// A line as show() prints it.
    static long again(Settings const& s, std::string const& line) {
        char model[40], name[3][40];
        double z[2], T, p;
        if (std::sscanf(line.c_str(),
                        "%*s corvane flash %39s %39[^=]=%lf %39[^=]=%lf %39s --T %lf --p %lf", model,
                        name[0], &z[0], name[1], &z[1], name[2], &T, &p) != 8) {
            std::printf("no call of a flash: %s\n", line.c_str());
            return 0;
        }
        Hunt hunt(s, model);
        const std::vector<std::string> names(name, name + 3);
        Vector<double> all(3);
        all[0] = z[0], all[1] = z[1], all[2] = 1 - z[0] - z[1];
        hunt.ask(*hunt.mixture(names), names, all, T, p);
        return hunt.false_;
    }

  private:
    Mixture mixture(std::vector<std::string> const& names) const {
        return mixture_of(names, eos_.c_str(), mth_.c_str(), mth_ == "PSRK" ? 5 : -1);
    }
    double uniform(double a, double b) {
        return std::uniform_real_distribution<double>(a, b)(random_);
    }
    void show(char const* what, std::vector<std::string> const& names, Vector<double> const& z,
              double T, double p) const {
        std::printf("%s corvane flash %s %s=%.17g %s=%.17g %s --T %.17g --p %.17g #", what,
                    model_.c_str(), names[0].c_str(), z[0], names[1].c_str(), z[1],
                    names[2].c_str(), T, p);
    }
    void state(ModelN const& m, std::vector<std::string> const& names) {
        Vector<double> z(3);
        double sum = 0, T = 0;
        const double skew = uniform(0, 1) < 0.5 ? 1 : 4;
        for (int i = 0; i < 3; ++i) sum += z[i] = std::pow(-std::log(uniform(1e-9, 1)), skew);
        for (int i = 0; i < 3; ++i) T += (z[i] /= sum) * m.mdl1[i]->Tcrit();
        T *= uniform(0.35, 1.1);
        ask(m, names, z, T, std::pow(10, uniform(-2, 1.8)));
    }
    void ask(ModelN const& m, std::vector<std::string> const& names, Vector<double> const& z,
             double T, double p) {
        ++asked_;
        try {
            const auto q = corvane::flash_pT(m, p, T, z);
            ++phases_[q.phases.size() > 1];
            const At at{m, T, p};
            Long mu[3] = {1e300L, 1e300L, 1e300L};
            std::vector<judge::Values<Long>> known;
            for (auto const& phase : q.phases) {
                judge::Values<Long> x{};
                Long h[3];
                for (int i = 0; i < 3; ++i) x[static_cast<unsigned>(i)] = phase.x[i];
                at.state(phase.rho, x.data(), h);
                for (unsigned i = 0; i < 3; ++i)
                    if (x[i] > 0) mu[i] = std::min(mu[i], h[i] + std::log(x[i]));
                known.push_back(x);
            }
            const judge::TernarySearch<At> search(at, p / (R * T), mu, known, settings_.steps);
            judge::Trial const& low = search.lowest();
            if (!(low.tpd < kFalse)) return;
            ++false_;
            show("FALSE", names, z, T, p);
            std::printf(" %zu phases; at %.6Lg %.6Lg %.6Lg distance %.6Lg\n", q.phases.size(),
                        low.w[0], low.w[1], low.w[2], low.tpd);
        } catch (corvane::EquilibriumFailure const& e) {
            ++refused_;
            show("refused", names, z, T, p);
            std::printf(" %s\n", e.what());
        } catch (ThException const&) {
            ++thrown_;
        }
        std::fflush(stdout);
    }

    Settings const& settings_;
    std::string model_, eos_, mth_;
    std::mt19937_64 random_;
    long asked_ = 0, phases_[2] = {0, 0}, refused_ = 0, thrown_ = 0, false_ = 0;
};
}  // namespace

int main(int argc, char** argv) {
    Settings s;
    std::vector<std::string> models;
    std::string file;
    for (int k = 1; k < argc; ++k) {
        const std::string word = argv[k];
        const auto value = [&] { return k + 1 < argc ? std::atof(argv[++k]) : 0; };
        if (word == "--seed")
            s.seed = static_cast<unsigned>(value());
        else if (word == "--mixtures")
            s.mixtures = static_cast<int>(value());
        else if (word == "--states")
            s.states = static_cast<int>(value());
        else if (word == "--steps")
            s.steps = static_cast<int>(value());
        else if (word == "--limit")
            s.limit = value();
        else if (word == "--again" && k + 1 < argc)
            file = argv[++k];
        else
            models.push_back(word);
    }
    long wrong = 0;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) wrong += Hunt::again(s, line);
    for (auto const& model : models) wrong += Hunt(s, model).run();
    return wrong ? 1 : 0;
}
