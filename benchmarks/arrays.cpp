// The loops that arrays of the Python package replace, in C++: benchmarks/arrays.py runs both in turns.
// Prints processor time in seconds: properties of 10^6 states of one phase, 10^5 certified flashes.
#include <corvane/corvane.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace {
/// Evenly spread over (0, 1), the same in Python: multiples of an irrational number, modulo 1.
double spread(int i, double irrational) {
    const double x = (i + 1) * irrational;
    return x - static_cast<long>(x);
}
constexpr double kGolden = 0.6180339887498949, kRoot2 = 0.4142135623730951;

template <class F>
void timed(char const* what, F const& f) {
    const std::clock_t start = std::clock();
    const double sum = f();
    std::printf("%s %.6f %.17g\n", what, double(std::clock() - start) / CLOCKS_PER_SEC, sum);
}

double properties(char const* equation, char const* substance, int n) {
    const auto f = corvane::open(equation, substance);
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        const auto q = corvane::phase_properties(*f.model, 300 + 600 * spread(i, kGolden),
                                                 1e-6 * (1 + 9999 * spread(i, kRoot2)));
        sum += q.p + q.h + q.s + q.cp;
    }
    return sum;
}

double flashes(int n) {
    const auto m = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
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

int main(int argc, char** argv) {
    const int part = argc > 1 ? std::atoi(argv[1]) : 1;  // 10: a tenth of everything
    timed("PR", [&] { return properties("PR", "propane", 1000000 / part); });
    timed("MEOS", [&] { return properties("MEOS", "water", 1000000 / part); });
    timed("flash", [&] { return flashes(100000 / part); });
}
