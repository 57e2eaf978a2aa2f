// Derivatives: accuracy and evaluation counts over grids of states, bounds, failing points, codes.
#include <corvane/core/numelo.h>
#include <tests/numelo/equations.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/multiprecision/float128.hpp>
#include <functional>
#include <limits>
#include <vector>

namespace {

using equations::Butene;
using equations::PengRobinson;
using Quad = boost::multiprecision::float128;
constexpr double huge = 1e99;
const double nan_value = std::numeric_limits<double>::quiet_NaN();

/// A function with what it saw: number of calls, lowest and highest abscissa.
struct Watch {
    std::function<double(double)> f;
    int calls = 0;
    double low = huge, high = -huge;
    static double call(double x, void* ctx) {
        Watch& self = *static_cast<Watch*>(ctx);
        ++self.calls;
        self.low = std::min(self.low, x);
        self.high = std::max(self.high, x);
        return self.f(x);
    }
};

/// Derivative of order 1 … 3 in 113-bit arithmetic, steps s … s/8: truncation and rounding together
/// stay below 1e-18 of the scale.
template <class F>
Quad wide_derivative(F f, int order, Quad x, Quad s) {
    std::array<Quad, 4> d;
    for (Quad& q : d) {
        const Quad one = f(x + s) - f(x - s), two = f(x + 2 * s) - f(x - 2 * s);
        if (order == 1) q = one / (2 * s);
        if (order == 2) q = (f(x + s) + f(x - s) - 2 * f(x)) / (s * s);
        if (order == 3) q = (two - 2 * one) / (2 * s * s * s);
        s /= 2;
    }
    Quad weight = 1;
    for (int j = 1; j < 4; ++j) {
        weight *= 4;
        for (int k = 3; k >= j; --k) d[k] += (d[k] - d[k - 1]) / (weight - 1);
    }
    return d[3];
}

// What users of the property calculus need, and at which cost; scaled by max(|f|, |x^m f^(m)|).
struct Target {
    int order, level;
    double median, worst;
    int calls;
} constexpr targets[] = {  // clang-format off
    {1, 1, 1e-12, 1e-10, 8}, {1, 4, 1e-12, 1e-10, 10}, {2, 1, 1e-10, 1e-8, 10},
    {2, 4, 1e-10, 1e-8, 12}, {3, 1, 1e-8, 1e-5, 12}};  // clang-format on

template <class Equation>
void expect_accuracy(bool in_temperature) {
    for (Target const& target : targets) {
        SCOPED_TRACE(testing::Message() << "order " << target.order << " level " << target.level
                                        << (in_temperature ? " in T" : " in rho"));
        std::vector<double> errors;
        for (double Tr : {0.45, 0.6, 0.75, 0.9, 0.98, 1.02, 1.1, 1.3, 1.8, 2.5})
            for (double delta : {0.001, 0.01, 0.1, 0.4, 0.8, 1.2, 1.8, 2.2, 2.6}) {
                const double T = Tr * Equation::Tcrit, rho = delta * Equation::rhoc;
                const double x = in_temperature ? T : rho;
                auto ar = [&](auto v) {
                    using V = decltype(v);
                    return in_temperature ? Equation::ar(V(rho), v) : Equation::ar(v, V(T));
                };
                Watch watch{[&](double v) { return ar(v); }};
                const double got = diff_romberg(Watch::call, &watch, target.order, x, 1e-3 * x,
                                                target.level, 0.0, huge);
                const Quad exact = wide_derivative([&](Quad v) { return ar(v); }, target.order,
                                                   Quad(x), Quad(x) * 2e-5);
                const double power = std::pow(x, target.order), true_value = double(exact) * power;
                const double scale = std::max(std::fabs(ar(x)), std::fabs(true_value));
                errors.push_back(std::fabs(double(got - exact)) * power / scale);
                EXPECT_LE(watch.calls, target.calls) << "Tr " << Tr << " rho_r " << delta;
            }
        std::sort(errors.begin(), errors.end());
        EXPECT_LE(errors[errors.size() / 2], target.median);
        EXPECT_LE(errors.back(), target.worst);
    }
}

TEST(DiffRomberg, IsAccurateOnEquationsOfState) {
    for (bool in_temperature : {true, false}) {
        expect_accuracy<PengRobinson>(in_temperature);
        expect_accuracy<Butene>(in_temperature);
    }
}

TEST(DiffRomberg, KeepsToItsBounds) {
    // exp(2x)/(1.5 − x): derivatives from the series of both factors, pole beyond every bound.
    auto f = [](double x) { return std::exp(2 * x) / (1.5 - x); };
    auto derivative = [](int m, double x) {
        double sum = 0.0, term = 1.0;  // Σ binomial(m,k)·2^(m−k)·k!/(1.5−x)^(k+1)
        for (int k = 0; k <= m; ++k, term *= m - k + 1)
            sum += term * std::pow(2, m - k) / std::pow(1.5 - x, k + 1);
        return std::exp(2 * x) * sum;
    };
    struct Row {
        double x, h, low, high;
        int level;
        double tolerance[3];  // of orders 1 … 3, relative
    };
    // One-sided quotients lose about two digits against central ones at orders 2 and 3.
    // clang-format off
    const Row rows[] = {
        {0.4, 1e-3, 0, 1, 1, {1e-11, 1e-9, 1e-6}}, {0, 1e-3, -huge, huge, 4, {1e-12, 1e-10, 1e-8}},
        {0, 1e-3, 0, huge, 4, {1e-11, 1e-8, 1e-6}}, {1, 1e-3, 0, 1, 1, {1e-11, 1e-8, 1e-5}},
        {0.99992, 1e-3, 0, 1, 1, {1e-11, 1e-8, 1e-5}}, {0, 1e-3, -1e-13, huge, 1, {1e-11, 1e-8, 1e-5}},
        {0, 1e-3, -1e-6, huge, 1, {1e-11, 1e-8, 1e-5}}, {0, 1e-3, -1e-3, huge, 1, {1e-11, 1e-7, 1e-3}},
        {0.3, 1e-3, 0.2999, 0.3002, 1, {1e-10, 1e-5, 1e0}}};
    // clang-format on
    for (Row const& row : rows)
        for (int order = 1; order <= 3; ++order) {
            SCOPED_TRACE(testing::Message() << "x " << row.x << " in [" << row.low << ", "
                                            << row.high << "] order " << order);
            Watch watch{f};
            const double got = diff_romberg(Watch::call, &watch, order, row.x, row.h, row.level,
                                            row.low, row.high);
            const double exact = derivative(order, row.x);
            EXPECT_NEAR(got, exact, row.tolerance[order - 1] * exact);
            EXPECT_GE(watch.low, row.low);
            EXPECT_LE(watch.high, row.high);
        }
}

TEST(DiffRomberg, PointsBeyondTheStepMayFail) {
    // A table that ends just beyond x ± h, by exception or by NaN.
    for (bool throws : {true, false})
        for (int order = 1; order <= 3; ++order) {
            Watch watch{[&](double x) {
                if (std::fabs(x - 2.0) <= 2.1e-3) return std::log(x);
                if (throws) throw 1;
                return nan_value;
            }};
            const double exact[] = {0.5, -0.25, 0.25};
            // Rounding eps/s^m with s = h/2 at the least.
            EXPECT_NEAR(diff_romberg(Watch::call, &watch, order, 2.0, 2e-3, 1, 0, huge),
                        exact[order - 1], 20 * 2.2e-16 / std::pow(5e-4, order));
            EXPECT_LE(watch.calls, 24);
        }
    Watch inside{[](double x) { return x > 2.001 ? throw 1 : x; }};
    EXPECT_THROW(diff_romberg(Watch::call, &inside, 1, 2.0, 2e-3, 1, 0, huge), int);
    Watch nowhere{[](double) { return nan_value; }};
    EXPECT_EQ(mth_code([&] { diff_romberg(Watch::call, &nowhere, 1, 2.0, 2e-3, 1, 0, huge); }), 10);
}

TEST(Derivatives, RefuseBadArguments) {
    Watch w{[](double x) { return x; }};
    struct Row {
        int order, level;
        double x, h, low, high;
        int code;
    } const rows[] = {// clang-format off
        {-1, 1, 1, 1e-3, 0, 2, 8}, {9, 1, 1, 1e-3, 0, 2, 8}, {1, 0, 1, 1e-3, 0, 2, 8},
        {1, 1, 1, 0, 0, 2, 9}, {1, 1, 1, -1e-3, 0, 2, 9}, {1, 1, 1, 1e-17, 0, 2, 9},
        {1, 1, 1, INFINITY, 0, 2, 9}, {1, 1, 1, nan_value, 0, 2, 9}, {1, 1, 3, 1e-3, 0, 2, 10},
        {1, 1, nan_value, 1e-3, 0, 2, 10}, {1, 1, 1, 1e-3, 2, 2, 11}, {1, 1, 1, 1e-3, 2, 0, 11},
        {1, 1, 1, 1e-3, nan_value, 2, 11}};  // clang-format on
    for (Row const& r : rows) {
        auto call = [&] {
            diff_romberg(Watch::call, &w, r.order, r.x, r.h, r.level, r.low, r.high);
        };
        EXPECT_EQ(mth_code(call), r.code) << "row " << &r - rows;
    }
    EXPECT_EQ(mth_code([&] { diff_x(Watch::call, &w, 1.0, 0.0); }), 9);
    auto xy = [](double, double, void*) { return 1.0; };
    EXPECT_EQ(mth_code([&] { diff_2all(xy, nullptr, 1, 1, 4, 0, 1, 1); }), 8);
    EXPECT_EQ(mth_code([&] { diff_2all(xy, nullptr, 1, 1, 1, 1, 1e-3, 0); }), 9);
    auto of_vector = [](Vector<double> const& x, void*) { return x.sum(); };
    Vector<double> x(2), h(2), three(3);
    x.set(1.0);
    h.set(1e-3);
    three.set(1e-3);
    EXPECT_EQ(mth_code([&] { diff_gradient(of_vector, nullptr, x, 2, three); }), 2);
    EXPECT_EQ(mth_code([&] { diff_gradient(of_vector, nullptr, x, 1, h); }), 8);
    h[1] = 0.0;
    EXPECT_EQ(mth_code([&] { diff_gradient(of_vector, nullptr, x, 2, h); }), 9);
    EXPECT_EQ(mth_code([&] { diff_hessian(of_vector, nullptr, x, 2, h); }), 9);
}

TEST(Derivatives, SimpleAndMixed) {
    Watch watch{[](double x) { return std::exp(x); }};
    // Step 2e-5: rounding 2·eps·|f|/h = 5e-11 at most, truncation h⁴ is nothing.
    EXPECT_NEAR(diff_x(Watch::call, &watch, 0.5, 2e-5), std::exp(0.5), 5e-11);
    EXPECT_EQ(watch.calls, 4);
    auto f = [](double x, double y, void*) { return std::sin(x) * std::exp(2 * y); };
    const double sines[] = {std::sin(1.0), std::cos(1.0), -std::sin(1.0), -std::cos(1.0)};
    // Inner noise goes through the outer ladder: about two digits per order, from 1e-14.
    for (int nx = 0; nx <= 3; ++nx)
        for (int ny = 0; ny <= 3; ++ny) {
            const double exact = sines[nx] * std::pow(2.0, ny) * std::exp(1.0);
            EXPECT_NEAR(diff_2all(f, nullptr, 1.0, 0.5, nx, ny, 3e-3, 3e-3), exact,
                        std::fabs(exact) * std::pow(10.0, -14 + 2.2 * (nx + ny)))
                << nx << ny;
        }
}

struct Mixture {
    int n;
    double T;
    int calls = 0;
    static double psi(Vector<double> const& r, void* ctx) {
        Mixture& self = *static_cast<Mixture*>(ctx);
        ++self.calls;
        for (int i = 0; i < r.n; ++i)
            if (r[i] < 0.0) throw ThException(th_out_of_range);
        return PengRobinson::psi(r.data, self.n, self.T);
    }
};

/// ∂psi/∂r_i or ∂²psi/∂r_i∂r_j in 113-bit arithmetic.
Quad wide_psi(Mixture const& mixture, Vector<double> const& r, int i, int j, bool second) {
    auto at = [&](Quad si, Quad sj) {
        std::array<Quad, 3> point{};
        for (int k = 0; k < r.n; ++k) point[k] = r[k];
        point[i] += si;
        point[j] += sj;
        return PengRobinson::psi(point.data(), mixture.n, Quad(mixture.T));
    };
    // psi goes on analytically where a component is absent.
    const Quad least = 1e-3 * r.sum(), ri = 2e-5 * std::max(Quad(r[i]), least),
               rj = 2e-5 * std::max(Quad(r[j]), least);
    if (!second) return wide_derivative([&](Quad s) { return at(s * ri, 0); }, 1, 0, 1) / ri;
    if (i == j) return wide_derivative([&](Quad s) { return at(s * ri, 0); }, 2, 0, 1) / (ri * ri);
    auto plus = [&](Quad s) { return at(s * ri, s * rj); };
    auto minus = [&](Quad s) { return at(s * ri, -s * rj); };
    return (wide_derivative(plus, 2, 0, 1) - wide_derivative(minus, 2, 0, 1)) / (4 * ri * rj);
}

TEST(GradientAndHessian, OfAMixture) {
    struct Row {
        int n;
        std::array<double, 3> x;
        double gradient, hessian;  // worst error; the Hessian scaled by sqrt(r_i·r_j)
    };
    // A trace component is noisier: its step is a thousandth, rounding that of the whole.
    // clang-format off
    const Row rows[] = {
        {2, {0.1, 0.9, 0}, 1e-10, 1e-8}, {2, {0.6, 0.4, 0}, 1e-10, 1e-8},
        {3, {0.3, 0.42, 0.28}, 1e-10, 1e-8}, {2, {1e-3, 0.999, 0}, 1e-8, 1e-6}};
    // clang-format on
    for (Row const& row : rows)
        for (double T : {250.0, 350.0, 450.0})
            for (double packing : {0.01, 0.1, 0.4, 0.8}) {
                double b = 0.0;
                for (int i = 0; i < row.n; ++i) b += row.x[i] * PengRobinson::b(i);
                Vector<double> r(row.n), h(row.n);
                for (int i = 0; i < row.n; ++i) h[i] = 1e-3 * (r[i] = row.x[i] * packing / b);
                SCOPED_TRACE(testing::Message() << row.n << " components, x0 " << row.x[0] << " T "
                                                << T << " packing " << packing);
                Mixture mixture{row.n, T};
                const Vector<double> g = diff_gradient(Mixture::psi, &mixture, r, 2, h);
                EXPECT_LE(mixture.calls, 8 * row.n);
                mixture.calls = 0;
                const Matrix<double> H = diff_hessian(Mixture::psi, &mixture, r, 2, h);
                EXPECT_LE(mixture.calls, row.n == 2 ? 25 : 49);  // four rungs
                for (int i = 0; i < row.n; ++i) {
                    const double exact = double(wide_psi(mixture, r, i, i, false));
                    EXPECT_NEAR(g[i], exact, row.gradient * std::max(1.0, std::fabs(exact)));
                    for (int j = 0; j <= i; ++j) {
                        EXPECT_NEAR(H[i][j], double(wide_psi(mixture, r, i, j, true)),
                                    row.hessian / std::sqrt(r[i] * r[j]));
                        EXPECT_EQ(H[i][j], H[j][i]);
                    }
                }
            }
}

TEST(GradientAndHessian, AbsentComponentsAreOnlyIncreased) {
    // psi is analytic in all partial densities: at r_1 = 0 its derivatives are the limits from r_1
    // > 0.
    for (int absent : {0, 1, 2}) {
        Vector<double> r(3), h(3);
        for (int i = 0; i < 3; ++i) r[i] = i == absent ? 0.0 : 2e-3;
        for (int i = 0; i < 3; ++i) h[i] = i == absent ? 1e-3 * 4e-3 : 1e-3 * r[i];
        if (absent == 2) h[1] = 1e-3 * 2e-3, r[1] = 0.0;  // two absent
        Mixture mixture{3, 400.0};
        const Vector<double> g = diff_gradient(Mixture::psi, &mixture, r, 2, h);
        const Matrix<double> H = diff_hessian(Mixture::psi, &mixture, r, 2, h);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(g[i], double(wide_psi(mixture, r, i, i, false)), 1e-8);
            for (int j = 0; j <= i; ++j)
                EXPECT_NEAR(H[i][j], double(wide_psi(mixture, r, i, j, true)), 1e-4) << i << j;
        }
    }
}

}  // namespace
