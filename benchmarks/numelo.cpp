// Numerics on equations of state: time and evaluations of the objective per call.
#include <corvane/core/numelo.h>
#include <tests/numelo/equations.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

namespace {
using equations::Butene;
using equations::PengRobinson;

long calls = 0;

void report(benchmark::State& state) {
    state.counters["evaluations"] =
        benchmark::Counter(static_cast<double>(calls), benchmark::Counter::kAvgIterations);
}

/// One call of Ar, to compare with.
template <class Equation>
void ar(benchmark::State& state) {
    double T = 1.02 * Equation::Tcrit;
    for (auto _ : state) {
        benchmark::DoNotOptimize(T);
        benchmark::DoNotOptimize(Equation::ar(Equation::rhoc, T));
    }
}
BENCHMARK(ar<PengRobinson>);
BENCHMARK(ar<Butene>);

/// Temperature derivative of Ar of order range(0) at level range(1).
template <class Equation>
void derivative(benchmark::State& state) {
    auto f = [](double T, void* rho) {
        ++calls;
        return Equation::ar(*static_cast<double*>(rho), T);
    };
    double rho = Equation::rhoc;
    const double T = 1.02 * Equation::Tcrit;
    const int order = static_cast<int>(state.range(0)), level = static_cast<int>(state.range(1));
    calls = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(diff_romberg(f, &rho, order, T, 1e-3 * T, level, 0.0, 1e99));
    report(state);
}
BENCHMARK(derivative<PengRobinson>)->ArgsProduct({{1, 2, 3}, {1, 4}});
BENCHMARK(derivative<Butene>)->ArgsProduct({{1, 2, 3}, {1, 4}});

/// The ladder alone, on a function that costs nothing.
void ladder(benchmark::State& state) {
    auto f = [](double x, void*) { return x * (1 - x * x); };
    const int order = static_cast<int>(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(diff_romberg(f, nullptr, order, 2.0, 2e-3, 1, 0, 9));
}
BENCHMARK(ladder)->Arg(1)->Arg(2)->Arg(3);

struct Mixture {
    int n;
    double T;
    static double psi(Vector<double> const& r, void* ctx) {
        ++calls;
        Mixture const& mixture = *static_cast<Mixture*>(ctx);
        return PengRobinson::psi(r.data, mixture.n, mixture.T);
    }
};

/// Gradient (range(1) = 0) and Hessian (1) of the energy density of range(0) components.
void gradient_hessian(benchmark::State& state) {
    Mixture mixture{static_cast<int>(state.range(0)), 350.0};
    Vector<double> r(mixture.n), h(mixture.n);
    for (int i = 0; i < r.n; ++i) h[i] = 1e-3 * (r[i] = 1e-3 * (i + 1));
    calls = 0;
    for (auto _ : state)
        if (state.range(1) == 0)
            benchmark::DoNotOptimize(diff_gradient(Mixture::psi, &mixture, r, 2, h));
        else
            benchmark::DoNotOptimize(diff_hessian(Mixture::psi, &mixture, r, 2, h));
    report(state);
}
BENCHMARK(gradient_hessian)->ArgsProduct({{2, 3}, {0, 1}});

/// Density y = b·rho of the pressure 10^range(0) MPa on the isotherm 1.2·Tc of a van der Waals
/// fluid.
void regula_falsi(benchmark::State& state) {
    auto f = [](double y, void* p) {
        ++calls;
        return 1e3 * 8.0 / 27.0 * 3.375 * y * (1.2 / (1 - y) - 3.375 * y) -
               *static_cast<double*>(p);
    };
    double p = std::pow(10.0, static_cast<double>(state.range(0)));
    calls = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(eqn_regulafalsi(f, &p, 0.0, 0.99, -p, f(0.99, &p), 1e-9));
    calls -= state.iterations();
    report(state);
}
BENCHMARK(regula_falsi)->Arg(-9)->Arg(-3)->Arg(0)->Arg(2);

/// A scalar fit as in a saturation pressure, and Rosenbrock's two residuals.
void marquardt(benchmark::State& state) {
    auto scalar = [](Vector<double> const& x, void*) {
        ++calls;
        Vector<double> r(1);
        r[0] = std::exp(x[0]) - 2.0 * x[0] - 2.0;
        return r;
    };
    auto rosenbrock = [](Vector<double> const& x, void*) {
        ++calls;
        Vector<double> r(2);
        r[0] = 10 * (x[1] - x[0] * x[0]);
        r[1] = 1 - x[0];
        return r;
    };
    const int n = static_cast<int>(state.range(0));
    Vector<double> x(n);
    calls = 0;
    for (auto _ : state) {
        x.set(n == 1 ? 2.5 : -1.2);
        benchmark::DoNotOptimize(n == 1 ? fit_marquardt(scalar, x, 1, nullptr, 40, 0)
                                        : fit_marquardt(rosenbrock, x, 2, nullptr, 100, 0));
    }
    report(state);
}
BENCHMARK(marquardt)->Arg(1)->Arg(2);

/// Two compositions of a regular solution, W = 2.6.
void powell(benchmark::State& state) {
    auto f = [](Vector<double> const& y, void*) {
        ++calls;
        double g[2];
        for (int k = 0; k < 2; ++k) {
            if (!(y[k] > 0 && y[k] < 1)) throw MthException(mth_out_of_range);
            g[k] = 2.6 * y[k] * (1 - y[k]) + y[k] * std::log(y[k]) + (1 - y[k]) * std::log1p(-y[k]);
        }
        return ((0.5 - y[1]) * g[0] + (y[0] - 0.5) * g[1]) / (y[0] - y[1]);
    };
    Vector<double> y(2);
    calls = 0;
    for (auto _ : state) {
        y[0] = 0.1;
        y[1] = 0.85;
        benchmark::DoNotOptimize(min_powell(f, y, nullptr, 20, 0));
    }
    report(state);
}
BENCHMARK(powell);

void jacobi(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    Matrix<double> A(n, n), vectors;
    Vector<double> values;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) A[i][j] = 1.0 / (i + j + 1);
    for (auto _ : state) lin_jacobi(A, values, vectors);
}
BENCHMARK(jacobi)->Arg(2)->Arg(4)->Arg(8);

void spline(benchmark::State& state) {
    SortedVector<double> x(60);
    Vector<double> y(60);
    x.ramp(1.0, 0.25);
    for (int k = 0; k < x.n; ++k) y[k] = std::log(x[k]);
    Matrix<double> c;
    ipl_spline(x, y, c);
    double t = 7.3;
    for (auto _ : state) {
        benchmark::DoNotOptimize(t);
        benchmark::DoNotOptimize(ipl_eval(t, x, y, c, 0));
    }
}
BENCHMARK(spline);
}  // namespace
