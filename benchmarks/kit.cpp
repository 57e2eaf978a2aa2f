// What equations on the authors' kit cost beside the same ones written by hand: nanoseconds of a
// call and their ratio, alternating in one run; under callgrind instructions of a call, which
// `benchmarks/counts PROGRAM --ratios` prints as a table.
#include <corvane/mixture/isotherm.h>
#include <tests/support/beside.h>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define RUNNING_ON_VALGRIND 0
#define CALLGRIND_ZERO_STATS
#define CALLGRIND_DUMP_STATS_AT(row) static_cast<void>(row)
#endif

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {
double sink = 0.0;
std::string subject;  // of the rows that follow

/// One dump of callgrind, whose trigger bears the row without spaces and the number of calls.
template <class F>
void count(std::string row, F const& f) {
    constexpr int calls = 16;
    f(0);  // what is bound or made at the first call
    CALLGRIND_ZERO_STATS;
    for (int k = 0; k < calls; ++k) f(k);
    std::ranges::replace(row, ' ', '_');
    const std::string trigger = row + ' ' + std::to_string(calls);
    CALLGRIND_DUMP_STATS_AT(trigger.c_str());
}

/// Least time of a call in ns, of nine turns for each, taken alternately.
template <class F, class G>
void compare(char const* what, F const& hand, G const& kit) {
    if (RUNNING_ON_VALGRIND) {
        count(subject + "; " + what + "; hand", hand);
        count(subject + "; " + what + "; kit", kit);
        return;
    }
    auto time = [](auto const& f, int calls) {
        const auto start = std::chrono::steady_clock::now();
        for (int k = 0; k < calls; ++k) f(k);
        return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start)
                   .count() /
               calls;
    };
    const int calls = static_cast<int>(2e6 / (time(hand, 100) + 1.0)) + 1;
    double a = 1e99, b = 1e99;
    for (int turn = 0; turn < 9; ++turn) {
        a = std::min(a, time(hand, calls));
        b = std::min(b, time(kit, calls));
    }
    std::printf("  %-44s %8.0f %8.0f   %5.2f\n", what, a, b, b / a);
}

void pure(KitEquation const& e, char const* name) {
    subject = std::string(e.by_hand) + ' ' + name;
    std::printf("%s, %s\n", e.by_hand, name);
    const PurePair m = pure_pair(e, name);
    Model1 const *h = m.hand.get(), *k = m.kit.get();
    const double Tc = h->Tcrit(), rho = 2.0 / h->vcrit();
    double d[9];
    auto both = [&](char const* what, auto const& f) {
        compare(
            what, [&](int n) { f(h, n); }, [&](int n) { f(k, n); });
    };
    both("Ar", [&](Model1 const* q, int n) { sink += q->Ar(rho + 1e-9 * n, 0.8 * Tc); });
    both("Z", [&](Model1 const* q, int n) { sink += q->Z(rho + 1e-9 * n, 0.8 * Tc); });
    both("derivatives in density, third order", [&](Model1 const* q, int n) {
        sink += q->derivatives()->deriv(rho + 1e-9 * n, 0.8 * Tc, 3, 0, d) + d[3];
    });
    both("derivatives, second order", [&](Model1 const* q, int n) {
        sink += q->derivatives()->deriv(rho + 1e-9 * n, 0.8 * Tc, 2, 2, d) + d[3];
    });
    for (auto [what, Tr, pr] :
         {std::tuple{"densities, two phases", 0.8, 0.2}, std::tuple{"densities, liquid", 0.7, 3.0},
          std::tuple{"densities, near critical", 0.99, 0.95},
          std::tuple{"densities, supercritical", 1.5, 3.0}})
        both(what, [&, tr = Tr, p = pr](Model1 const* q, int n) {
            double a = 0, b = 0;
            sink += q->vcalc(p * h->pcrit() * (1 + 1e-7 * n), tr * Tc, 1, a, b) + a;
        });
}

/// A mixture with its isotherm, if it offers one.
struct Isothermal {
    ModelN const* q;
    corvane::IsothermN const* iso;
    std::vector<double> work;

    Isothermal(ModelN const* model, double T, int n)
        : q(model), iso(dynamic_cast<corvane::IsothermN const*>(model)) {
        std::vector<int> present(static_cast<unsigned>(n));
        for (int i = 0; i < n; ++i) present[static_cast<unsigned>(i)] = i;
        if (!iso) return;
        work.resize(static_cast<unsigned>(iso->isotherm_size(n)));
        iso->isotherm(T, present.data(), n, true, work.data());
    }
};

void mixture(KitEquation const& e, std::vector<char const*> const& names) {
    subject = std::string(e.by_hand) + '+' + e.mixing + ' ' + std::to_string(names.size()) + ' ' + names[0];
    std::printf("%s+%s, %zu components\n", e.by_hand, e.mixing, names.size());
    const MixturePair m = mixture_pair(e, names);
    const int n = static_cast<int>(names.size());
    Vector<double> x(n), rho_i(n);
    const double T = 300.0;
    for (int i = 0; i < n; ++i) x[i] = 1.0 / n;
    double rho = 0, other = 0;
    m.hand->vcalc(10.0, T, x, 1, rho, other);
    for (int i = 0; i < n; ++i) rho_i[i] = x[i] * rho;
    std::vector<double> mu(static_cast<unsigned>(n)), mu_T(mu), H(static_cast<unsigned>(n * n));
    double P = 0, P_T = 0, r[2];
    const Isothermal h(m.hand.get(), T, n), k(m.kit.get(), T, n);
    auto both = [&](char const* what, auto const& f) {
        compare(
            what, [&](int i) { f(h, i); }, [&](int i) { f(k, i); });
    };
    both("Ar", [&](Isothermal const& o, int) { sink += o.q->Ar(rho, T, x); });
    both("densities", [&](Isothermal const& o, int i) {
        double a = 0, b = 0;
        sink += o.q->vcalc(10.0 + 1e-6 * i, T, x, 1, a, b) + a;
    });
    both("derivatives, second order", [&](Isothermal const& o, int) {
        double d[9];
        sink += o.q->derivatives()->deriv(rho, T, x, 2, 2, d) + d[3];
    });
    both("potentials", [&](Isothermal const& o, int) {
        o.q->derivatives()->potentials(rho_i, T, mu.data(), nullptr, nullptr);
    });
    both("potentials and slopes in T", [&](Isothermal const& o, int) {
        o.q->derivatives()->potentials(rho_i, T, mu.data(), mu_T.data(), nullptr);
    });
    both("potentials and Hessian", [&](Isothermal const& o, int) {
        o.q->derivatives()->potentials(rho_i, T, mu.data(), nullptr, H.data());
    });
    // An equation without an isotherm pays for the whole call.
    both("isotherm, potentials", [&](Isothermal const& o, int) {
        if (o.iso)
            o.iso->potentials(o.work.data(), n, rho_i.data, mu.data(), nullptr, nullptr, &P,
                              nullptr);
        else
            o.q->derivatives()->potentials(rho_i, T, mu.data(), nullptr, nullptr);
    });
    both("isotherm, potentials, slopes, Hessian", [&](Isothermal const& o, int) {
        if (o.iso)
            o.iso->potentials(o.work.data(), n, rho_i.data, mu.data(), mu_T.data(), H.data(), &P,
                              &P_T);
        else
            o.q->derivatives()->potentials(rho_i, T, mu.data(), mu_T.data(), H.data());
    });
    both("isotherm, densities", [&](Isothermal const& o, int i) {
        double a = 0, b = 0;
        if (o.iso)
            sink += o.iso->densities(o.work.data(), n, x.data, 10.0 + 1e-6 * i, r);
        else
            sink += o.q->vcalc(10.0 + 1e-6 * i, T, x, 1, a, b);
    });
}
}  // namespace

int main() {
    // A folder of its own: one that an earlier run left may point to a build that is gone.
    namespace fs = std::filesystem;
    std::string name = fs::temp_directory_path() / "corvane-bench-kit-XXXXXX";
    const fs::path folder = ::mkdtemp(name.data()), home = fs::current_path();
    enter_with_plugins(folder, home, EQUATIONS);
    std::printf("%-46s %8s %8s   ratio\n", "", "by hand", "kit, ns");
    for (KitEquation const& e : kit_equations()) {
        pure(e, "propane");
        if (e.by_hand == std::string("PCSAFT")) pure(e, "water");
        mixture(e, {"propane"});
        mixture(e, {"methane", "propane"});
        mixture(e, {"methane", "ethane", "propane", "butane", "carbon_dioxide"});
        mixture(e, {"methane", "ethane", "propane", "butane", "carbon_dioxide", "pentane", "hexane",
                    "heptane", "octane", "nitrogen"});
        if (e.by_hand == std::string("PCSAFT")) mixture(e, {"ethanol", "water"});
    }
    fs::current_path(home);
    fs::remove_all(folder);
    return sink == 0.12345;
}
