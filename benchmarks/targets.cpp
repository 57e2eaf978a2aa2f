// The rows that the library is measured by, each beside its target: processor time, evaluations,
// ratio.
//
//     cd build/home && ../benchmarks/bench_targets [--long] [WORD…]
//
// prints those rows whose name holds one of the words, or all. --long adds what takes minutes: 10^4
// random bubble points of natural gases and how the cost grows.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

double now() {
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return 1e6 * static_cast<double>(t.tv_sec) + 1e-3 * static_cast<double>(t.tv_nsec);
}

/// Processor time of one call, µs: the median of eleven measurements, each of 2 ms or one call.
double time_of(std::function<void()> const& f) {
    f();
    const double start = now();
    f();
    const int calls = std::clamp(static_cast<int>(2000 / std::max(now() - start, 1e-3)), 1, 100000);
    std::vector<double> times;
    for (int k = 0; k < 11; ++k) {
        const double begin = now();
        for (int i = 0; i < calls; ++i) f();
        times.push_back((now() - begin) / calls);
    }
    std::nth_element(times.begin(), times.begin() + 5, times.end());
    return times[5];
}

std::vector<std::string> words;
double sum = 0.0;  // keeps results from being optimised away

bool wanted(std::string const& name) {
    return words.empty() || std::any_of(words.begin(), words.end(), [&](std::string const& w) {
               return name.find(w) != std::string::npos;
           });
}
/// Of rows whose names begin so.
bool group_wanted(std::string const& begin) {
    return wanted(begin) || std::any_of(words.begin(), words.end(),
                                        [&](std::string const& w) { return w.starts_with(begin); });
}
void line(std::string const& name, double time, double target, char const* unit,
          long evaluations = -1) {
    std::printf("%-52s %12.4g %10.4g %-6s %s %s\n", name.c_str(), time, target, unit,
                target == 0.0    ? "      "
                : time <= target ? "met   "
                                 : "NOT   ",
                evaluations < 0 ? "" : std::to_string(evaluations).c_str());
    std::fflush(stdout);
}
/// f returns its evaluations, or −1.
double row(std::string const& name, double target, std::function<long()> const& f) {
    if (!wanted(name)) return 0.0;
    const double t = time_of([&] { f(); });
    line(name, t, target, "us", f());
    return t;
}

Vector<double> fractions(std::vector<double> const& z) {
    Vector<double> x(static_cast<int>(z.size()));
    for (int i = 0; i < x.size(); ++i) x[i] = z[static_cast<unsigned>(i)];
    return x;
}
Vector<double> equal_parts(int n) {
    Vector<double> x(n);
    x.set(1.0 / n);
    return x;
}
long refusal(ModelN const& m, bool bubble, double T, Vector<double> const& z,
             corvane::SaturationOptions const& o = {}) {
    try {
        sum += (bubble ? corvane::bubble_T(m, T, z, o) : corvane::dew_T(m, T, z, o)).p;
        return 0;
    } catch (corvane::EquilibriumFailure const& e) {
        return -1;
    }
}

void saturation() {
    struct Case {
        char const *equation, *substance;
        double precomputed, iterative;
    };
    for (Case const& c : {Case{"PR", "propane", 0.14, 1.5}, Case{"PCSAFT", "propane", 0.14, 0.0},
                          Case{"MEOS", "propane", 0.25, 0.0}, Case{"MEOS", "water", 0.25, 0.0}}) {
        const std::string of = std::string(" ") + c.equation + ' ' + c.substance;
        if (!group_wanted("saturation")) continue;
        const auto fluid = corvane::open(c.equation, c.substance);
        const corvane::SaturationExpansion curve(*fluid.model);
        const double Tc = curve.T_critical();
        double k = 0.0;
        const auto T = [&] {  // 0.4 to 0.9999 of the critical temperature
            k = std::fmod(k + 0.6180339887498949, 1.0);
            return (0.4 + 0.5999 * k) * Tc;
        };
        row("saturation precomputed" + of, c.precomputed, [&] {
            corvane::SaturationExpansion::Point s;
            curve.at_T(T(), s);
            sum += s.p;
            return -1L;
        });
        row("saturation iterative, cold" + of, c.iterative, [&] {
            sum += corvane::pure_saturation_T(*fluid.model, T()).p;
            return -1L;
        });
    }
}

void multi_fluid() {
    if (!group_wanted("GERG")) return;
    const Mixture m =
        mixture_of({"methane", "ethane", "nitrogen", "carbon_dioxide"}, "MEOS", "GERG", -1);
    const auto z = fractions({0.85, 0.08, 0.05, 0.02});
    double d[9];
    row("GERG 4, alpha_r", 1.0, [&] { return sum += m->Ar(5e-3, 300, z), -1L; });
    row("GERG 4, alpha_r and derivatives", 1.0, [&] {
        m->derivatives()->deriv(5e-3, 300, z, 2, 2, d);
        return sum += d[0], -1L;
    });
    row("GERG 4, p h s cp", 10,
        [&] { return sum += corvane::phase_properties(*m, 300, 5e-3, z).p, -1L; });
    for (auto const& [p, T, what] : {std::tuple{5.0, 300.0, "gas"},
                                     {5.0, 150.0, "liquid"},
                                     {1.0, 180.0, "both roots"},
                                     {5.0, 205.0, "near critical"}})
        row(std::string("GERG 4, density, ") + what, 8, [&, p = p, T = T] {
            double a = 0.0, b = 0.0;
            m->vcalc(p, T, z, 1, a, b);
            return sum += a, -1L;
        });
    for (double T : {180.0, 195.0})
        row("GERG 4, bubble point cold, " + std::to_string(static_cast<int>(T)) + " K",
            T < 190 ? 400 : 5000,
            [&] { return corvane::bubble_T(*m, T, z).certificate.evaluations; });
    if (group_wanted("GERG 21")) {
        const Mixture all = mixture_of(
            {"methane", "nitrogen",        "carbon_dioxide", "ethane",           "propane",
             "butane",  "isobutane",       "pentane",        "isopentane",       "hexane",
             "heptane", "octane",          "nonane",         "decane",           "hydrogen",
             "oxygen",  "carbon_monoxide", "water",          "hydrogen_sulfide", "helium",
             "argon"},
            "MEOS", "GERG", -1);
        Vector<double> x(21);
        double total = 0.0;
        for (int i = 0; i < 21; ++i) total += x[i] = i == 0 ? 0.8 : 0.01;
        for (int i = 0; i < 21; ++i) x[i] /= total;
        row("GERG 21, flash, two phases", 3000,
            [&] { return corvane::flash_pT(*all, 3, 230, x).certificate.evaluations; });
        row("GERG 21, flash, gas", 3000,
            [&] { return corvane::flash_pT(*all, 0.5, 420, x).certificate.evaluations; });
    }
}

/// T and rho or p of n states, evenly spread.
struct Grid {
    std::vector<double> T, y;
    Grid(int n, double T0, double dT, double y0, double dy) {
        double a = 0.0, b = 0.0;
        for (int i = 0; i < n; ++i) {
            a = std::fmod(a + 0.6180339887498949, 1.0), b = std::fmod(b + 0.4142135623730951, 1.0);
            T.push_back(T0 + dT * a), y.push_back(y0 + dy * b);
        }
    }
};

/// Many states: per state, one by one and together.
void batches(bool long_ones) {
    struct Case {
        char const *equation, *substance;
        double rho;
    };
    for (Case const& c : {Case{"PR", "propane", 0.01}, Case{"MEOS", "water", 0.05}}) {
        const std::string of = std::string(" ") + c.equation + ' ' + c.substance;
        if (!group_wanted("batch" + of)) continue;
        const auto fluid = corvane::open(c.equation, c.substance);
        for (int n : {1000, 10000, 100000, 1000000, 10000000}) {
            if (n > 10000 && !long_ones) continue;
            const Grid g(n, 300, 600, 1e-6, c.rho);
            std::vector<double> p(g.T.size()), h(p), s(p), cp(p);
            corvane::PropertyColumns out;
            out.p = p.data(), out.h = h.data(), out.s = s.data(), out.cp = cp.data();
            const auto per_state = [&](std::function<void()> const& f) {
                double least = 1e300;
                for (int k = 0; k < (n > 100000 ? 3 : 15); ++k) {
                    const double begin = now();
                    f();
                    least = std::min(least, (now() - begin) / n);
                }
                return least;
            };
            const double alone = per_state([&] {
                for (std::size_t i = 0; i < p.size(); ++i) {
                    const auto q = corvane::phase_properties(*fluid.model, g.T[i], g.y[i]);
                    p[i] = q.p, h[i] = q.h, s[i] = q.s, cp[i] = q.cp;
                }
            });
            const double many = per_state([&] {
                corvane::phase_properties(*fluid.model, p.size(), g.T.data(), g.y.data(), out);
            });
            sum += p[0];
            line("batch" + of + ", " + std::to_string(n) + " states, of one (a third)", many,
                 alone / 3, "us");
        }
    }
    if (group_wanted("batch 10^6 (p, T)")) {
        const auto water = corvane::open("MEOS", "water");
        const Grid g(20000, 280, 700, 0.05, 60);
        std::vector<double> rho(g.T.size()), h(rho);
        corvane::PropertyColumns out;
        out.h = h.data();
        const auto least = [&](std::function<void()> const& f) {
            double best = 1e300;
            for (int k = 0; k < 5; ++k) {
                const double begin = now();
                f();
                best = std::min(best, now() - begin);
            }
            sum += h[0];
            return best * 25e-6;
        };
        line("batch 10^6 (p, T) of water, two cores, by a loop", least([&] {
                 for (std::size_t i = 0; i < g.T.size(); ++i) {
                     double a = 0.0, b = 0.0;
                     water.model->vcalc(g.y[i], g.T[i], 1, a, b);
                     h[i] = corvane::phase_properties(*water.model, g.T[i], a).h;
                 }
             }),
             0.4, "s");
        line("batch 10^6 (p, T) of water, two cores", least([&] {
                 corvane::densities(*water.model, g.T.size(), g.y.data(), g.T.data(), rho.data(),
                                    corvane::Root::dense);
                 corvane::phase_properties(*water.model, g.T.size(), g.T.data(), rho.data(), out);
             }),
             0.4, "s");
    }
}

void others() {
    if (group_wanted("PC-SAFT")) {
        const Mixture m = mixture_of({"methane", "butane"}, "PCSAFT", "LB");
        const auto z = equal_parts(2);
        const auto near = corvane::bubble_T(*m, 311, z);
        corvane::SaturationOptions o;
        o.start = &near;
        row("PC-SAFT binary, bubble point, cold", 0,
            [&] { return corvane::bubble_T(*m, 310, z).certificate.evaluations; });
        row("PC-SAFT binary, bubble point, warm", 40,
            [&] { return corvane::bubble_T(*m, 310, z, o).certificate.evaluations; });
    }
    if (group_wanted("critical point")) {
        const Mixture six =
            mixture_of({"methane", "nitrogen", "ethane", "propane", "butane", "decane"});
        auto z = fractions({0.5, 0.1, 0.1, 0.1, 0.1, 0.1});
        row("critical point PR, 6 components", 140,
            [&] { return corvane::critical_point(*six, z).certificate.evaluations; });
        z = fractions({0.7, 0.05, 0.1, 0.08, 0.05, 0.02});
        row("critical point PR, 6 components, natural gas", 140,
            [&] { return corvane::critical_point(*six, z).certificate.evaluations; });
    }
    struct Refused {
        char const *eos, *mth;
        std::vector<std::string> names;
        int set;
        double T, beyond;  // answered, refused
        bool bubble;
    };
    for (Refused const& r : {Refused{"PR", "vdW1", {"methane", "propane"}, 1, 250, 500, true},
                             Refused{"PR", "vdW1", {"methane", "propane"}, 1, 250, 340, true},
                             Refused{"PR", "vdW1", {"methane", "propane"}, 1, 250, 400, false},
                             Refused{"PCSAFT", "LB", {"methane", "butane"}, 1, 310, 500, true},
                             Refused{"MEOS",
                                     "GERG",
                                     {"methane", "ethane", "nitrogen", "carbon_dioxide"},
                                     -1,
                                     180,
                                     300,
                                     true}}) {
        const std::string name = std::string("refusal ") + r.eos + '+' + r.mth +
                                 (r.bubble ? " bubble " : " dew ") +
                                 std::to_string(static_cast<int>(r.beyond)) + " K";
        if (!wanted(name)) continue;
        const Mixture m = mixture_of(r.names, r.eos, r.mth, r.set);
        const auto z = r.names.size() == 4 ? fractions({0.85, 0.08, 0.05, 0.02}) : equal_parts(2);
        const double t = time_of([&] { refusal(*m, r.bubble, r.T, z); });
        row(name + ", ten solutions", 10 * t, [&] { return refusal(*m, r.bubble, r.beyond, z); });
        const corvane::KeptEnvelope kept(*m, z);
        corvane::SaturationOptions o;
        o.envelope = &kept;
        row(name + ", envelope kept", 10 * t,
            [&] { return refusal(*m, r.bubble, r.beyond, z, o); });
    }
}

void random_gases() {
    const Mixture m =
        mixture_of({"methane", "ethane", "nitrogen", "carbon_dioxide"}, "MEOS", "GERG", -1);
    std::mt19937_64 random(20);
    const auto unit = [&] { return static_cast<double>(random() >> 11) * 0x1p-53; };
    std::vector<double> solved, refused;
    for (int k = 0; k < 10000; ++k) {
        Vector<double> z(4);
        z[1] = 0.15 * unit(), z[2] = 0.1 * unit(), z[3] = 0.1 * unit();
        z[0] = 1 - z[1] - z[2] - z[3];
        const double T = 120 + 100 * unit(), begin = now();
        const bool answered = refusal(*m, true, T, z) == 0;
        (answered ? solved : refused).push_back(now() - begin);
    }
    for (auto* t : {&solved, &refused}) {
        if (t->empty()) continue;
        std::sort(t->begin(), t->end());
        const std::string what = t == &solved ? "answered " : "refused ";
        std::printf("GERG 4, 10^4 random bubble points, %s%zu: median %.0f us, 99 %% %.0f us, ",
                    what.c_str(), t->size(), (*t)[t->size() / 2], (*t)[t->size() * 99 / 100]);
        std::printf("worst %.0f us (5000)\n", t->back());
    }
}

void growth() {
    const std::vector<std::string> names{
        "methane",    "ethane",          "propane",    "butane",      "pentane",
        "hexane",     "heptane",         "octane",     "nonane",      "decane",
        "undecane",   "dodecane",        "tridecane",  "tetradecane", "pentadecane",
        "hexadecane", "heptadecane",     "octadecane", "nonadecane",  "eicosane",
        "nitrogen",   "carbon_dioxide",  "isobutane",  "isopentane",  "ethylene",
        "propylene",  "benzene",         "toluene",    "cyclohexane", "argon",
        "oxygen",     "hydrogen_sulfide"};
    for (int n : {2, 4, 8, 16, 32}) {
        const Mixture m = mixture_of({names.begin(), names.begin() + n});
        Vector<double> z(n);
        for (int i = 0; i < n; ++i) z[i] = i == 0 ? 0.5 : 0.5 / (n - 1);
        const std::string of = " PR, " + std::to_string(n) + " components";
        row("growth flash" + of, 0, [&] {
            return corvane::flash_pT(*m, 2, n == 2 ? 250 : 300, z).certificate.evaluations;
        });
        row("growth bubble point" + of, 0,
            [&] { return corvane::bubble_T(*m, n == 2 ? 250 : 280, z).certificate.evaluations; });
    }
}

}  // namespace

int main(int argc, char** argv) {
    bool all = false;
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--long") == 0)
            all = true;
        else
            words.push_back(argv[i]);
    std::printf("%-52s %12s %10s %-6s %s %s\n", "# row", "measured", "target", "", "      ",
                "evaluations");
    saturation();
    multi_fluid();
    batches(all);
    others();
    if (all) {
        if (wanted("GERG 4, 10^4")) random_gases();
        if (wanted("growth")) growth();
    }
    return sum == sum ? 0 : 1;
}
