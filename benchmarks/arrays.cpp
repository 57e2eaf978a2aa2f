// The loops that arrays of the Python package replace, in C++: benchmarks/arrays.py runs both in turns.
// Lines "PR 1000000" (states of one phase), "MEOS 1000000" and "flash 100000" on standard input are
// answered by processor time in seconds and a checksum; with "_kept" behind the name the loop keeps
// all properties.
#include <corvane/corvane.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <new>
#include <string>

#include <sys/mman.h>

namespace {
/// Evenly spread over (0, 1), the same in Python: multiples of an irrational number, modulo 1.
double spread(int i, double irrational) {
    const double x = (i + 1) * irrational;
    return x - static_cast<long>(x);
}
constexpr double kGolden = 0.6180339887498949, kRoot2 = 0.4142135623730951;

corvane::PhaseProperties state(corvane::Fluid const& f, int i) {
    return corvane::phase_properties(*f.model, 300 + 600 * spread(i, kGolden),
                                     1e-6 * (1 + 9999 * spread(i, kRoot2)));
}

/// Memory for n states in large pages, as the results of arrays have it.
struct Rows {
    static constexpr std::size_t kColumns = 17, kPage = 2u << 20;
    explicit Rows(std::size_t n) {
        const std::size_t bytes = (n * kColumns * sizeof(double) + kPage) / kPage * kPage;
        data = static_cast<double*>(std::aligned_alloc(kPage, bytes));
        if (!data) throw std::bad_alloc();
        madvise(data, bytes, MADV_HUGEPAGE);
    }
    ~Rows() { std::free(data); }
    Rows(Rows const&) = delete;
    Rows& operator=(Rows const&) = delete;
    double* data;
};

/// kept: all properties of all states, as Python hands them out.
double properties(corvane::Fluid const& f, int n, bool kept) {
    double sum = 0.0;
    const Rows rows(kept ? static_cast<std::size_t>(n) : 0);
    double* row = rows.data;
    for (int i = 0; i < n; ++i) {
        const auto q = state(f, i);
        sum += q.p + q.h + q.s + q.cp;
        if (!kept) continue;
        double const columns[] = {q.p,  q.Z, q.u,     q.h,       q.s,       q.g,     q.a,       q.cv, q.cp,
                                  q.w,  q.mu_JT, q.kappa_T, q.alpha_p, q.dp_dT, q.dp_drho, q.M,  q.n_s};
        row = std::copy(std::begin(columns), std::end(columns), row);
    }
    return sum;
}

double flashes(corvane::Mixture const& m, int n) {
    corvane::FlashOptions options;
    options.validity = &m.validity;
    Vector<double> z(2);
    z[0] = z[1] = 0.5;
    double phases = 0.0;
    for (int i = 0; i < n; ++i) {
        auto r = corvane::flash_pT(*m.model, 0.1 + 7.9 * spread(i, kGolden),
                                   200 + 150 * spread(i, kRoot2), z, options);
        corvane::add_caloric(*m.model, z, r);
        phases += static_cast<double>(r.phases.size());
    }
    return phases;
}
}  // namespace

int main() {
    const auto PR = corvane::open("PR", "propane"), MEOS = corvane::open("MEOS", "water");
    const auto gas = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    char name[16];
    for (int n; std::scanf("%15s %d", name, &n) == 2;) {
        const std::string what = name;
        const std::clock_t start = std::clock();
        const bool kept = what.ends_with("_kept");
        const double sum = what == "flash" ? flashes(gas, n) : properties(what.starts_with("PR") ? PR : MEOS, n, kept);
        std::printf("%.6f %.17g\n", double(std::clock() - start) / CLOCKS_PER_SEC, sum);
        std::fflush(stdout);
    }
}
