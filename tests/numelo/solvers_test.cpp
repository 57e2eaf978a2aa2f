// Root finder, minimiser and least-squares fit: published minima, counts of evaluations, failing
// trial points, codes.
#include <corvane/core/numelo.h>
#include <tests/numelo/values.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <vector>

namespace {

const double nan_value = std::numeric_limits<double>::quiet_NaN();

struct Scalar {
    std::function<double(double)> f;
    int calls = 0;
    double last = nan_value;
    static double call(double x, void* ctx) {
        Scalar& self = *static_cast<Scalar*>(ctx);
        ++self.calls;
        return self.f(self.last = x);
    }
    double root(double a, double b, double tol) {
        return eqn_regulafalsi(call, this, a, b, f(a), f(b), tol);
    }
};

TEST(RegulaFalsi, FindsRootsToRounding) {
    struct Row {
        char const* name;
        std::function<double(double)> f;
        double a, b, root;
        int calls;
    };
    // Exact roots; calls bound what such brackets need (bisection to 1e-10 alone takes 34).
    // clang-format off
    const Row rows[] = {
        {"square", [](double x) { return x * x - 0.5; }, 0, 1.2, std::numbers::sqrt2 / 2, 14},
        {"huge end", [](double x) { return std::expm1(30 * (x - 0.1)); }, -1, 1, 0.1, 26},
        {"pole", [](double x) { return 1 / (1 - x) - 1e3; }, 0, 1 - 1e-13, 1 - 1e-3, 40},
        {"step", [](double x) { return std::atan(1e6 * (x - 0.3)); }, -1, 5, 0.3, 40},
        {"vacuum", [](double x) { return x / (1 - x) * 1e4 - 1e-100; }, 0, 0.99, 1e-104, 30},
        {"thin gas", [](double x) { return x / (1 - x) * 1e4 * (1 - x / 2) - 1e-9; }, 0, 0.99, 1e-13, 30}};
    // clang-format on
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        Scalar s{row.f};
        const double x = s.root(row.a, row.b, 1e-10);
        // Relative: the thin gas shows that the absolute tolerance does not limit small roots. The
        // pole loses the digits of 1 − x.
        EXPECT_NEAR(x, row.root, 1e-12 * row.root);
        EXPECT_EQ(s.last, x) << "the last evaluation is at the root";
        EXPECT_LE(s.calls, row.calls);
    }
}

TEST(RegulaFalsi, EndsWhateverTheFunction) {
    Scalar triple{[](double x) { return std::pow(x - 0.3, 3); }};
    EXPECT_NEAR(triple.root(-1, 2, 1e-10), 0.3, 1e-9);
    EXPECT_LE(triple.calls, 70);  // twice a bisection
    Scalar jump{[](double x) { return x < 0.7 ? -1.0 : 2.0; }};
    EXPECT_NEAR(jump.root(0, 1, 1e-9), 0.7, 1e-9);
    Scalar end{[](double x) { return x; }};
    EXPECT_EQ(eqn_regulafalsi(Scalar::call, &end, 0, 1, 0.0, 1.0, 1e-9), 0.0);
    EXPECT_EQ(eqn_regulafalsi(Scalar::call, &end, -1, 0, -1.0, 0.0, 1e-9), 0.0);
    EXPECT_EQ(end.calls, 0) << "end values are not evaluated again";
    // End values that do not belong to the function: no root, the end within the tolerance.
    Scalar positive{[](double x) { return 1 + x; }};
    EXPECT_NEAR(eqn_regulafalsi(Scalar::call, &positive, 0, 1, -1e-6, 2.0, 1e-9), 0.0, 1e-9);
    EXPECT_LE(positive.calls, 80);
}

TEST(RegulaFalsi, RefusesBadBrackets) {
    Scalar s{[](double x) { return x > 0.5 ? nan_value : x - 1; }};
    auto code = [&](double a, double b, double fa, double fb) {
        return mth_code([&] { eqn_regulafalsi(Scalar::call, &s, a, b, fa, fb, 1e-9); });
    };
    EXPECT_EQ(code(0, 1, 1, 2), 12);
    EXPECT_EQ(code(1, 1, -1, 2), 11);
    EXPECT_EQ(code(0, 1, nan_value, 2), 10);
    EXPECT_EQ(code(0, 1, -1, 1e-3), 10);  // met on the way
}

using Point = std::vector<double>;

/// Objective of min_powell and residuals of fit_marquardt with what they saw.
template <class Result>
struct Field {
    std::function<Result(Vector<double> const&)> f;
    int calls = 0;
    Vector<double> last{};
    static Result call(Vector<double> const& x, void* ctx) {
        Field& self = *static_cast<Field*>(ctx);
        ++self.calls;
        self.last = x;
        return self.f(x);
    }
};
using Objective = Field<double>;
using Residuals = Field<Vector<double>>;

/// Gibbs energy of two phases of a regular solution under the lever rule; compositions outside
/// [0, 1] throw.
double two_phases(Vector<double> const& y, double W) {
    const double z = 0.5;
    double g[2];
    for (int k = 0; k < 2; ++k) {
        if (!(y[k] >= 0 && y[k] <= 1)) throw ThException(th_out_of_range);
        g[k] = W * y[k] * (1 - y[k]);
        if (y[k] > 0 && y[k] < 1) g[k] += y[k] * std::log(y[k]) + (1 - y[k]) * std::log1p(-y[k]);
    }
    return ((z - y[1]) * g[0] + (y[0] - z) * g[1]) / (y[0] - y[1]);
}

TEST(Powell, FindsSplitsNearTheEdge) {
    for (double W : {2.2, 2.6, 3.5, 6.0, 8.0}) {
        // Binodal: ln(x/(1 − x)) + W·(1 − 2x) = 0, by fixed-point iteration.
        double x = 1e-3;
        for (int k = 0; k < 2000; ++k) x = 1 / (1 + std::exp(W * (1 - 2 * x)));
        for (double off : {-0.4, -0.1, 0.3}) {
            SCOPED_TRACE(testing::Message() << "W " << W << " start off by " << off);
            Objective g{[W](Vector<double> const& y) { return two_phases(y, W); }};
            Vector<double> y = vector_of({x * (1 + off), 1 - x * (1 - 0.5 * off)});
            min_powell(Objective::call, y, &g, 20, 0);
            EXPECT_NEAR(y[0], x, 1e-7);  // sqrt(eps) times the curvature's inverse root
            EXPECT_NEAR(y[1], 1 - x, 1e-7);
            EXPECT_LE(g.calls, 150);
        }
    }
    // No split: the objective falls up to the wall, whose exception is the answer; x stays.
    Objective mixed{[](Vector<double> const& y) { return two_phases(y, 1.2); }};
    Vector<double> y = vector_of({0.2, 0.7});
    EXPECT_EQ(th_code([&] { min_powell(Objective::call, y, &mixed, 20, 0); }), th_out_of_range);
    EXPECT_EQ(y[0], 0.2);
    EXPECT_EQ(y[1], 0.7);
}

TEST(Powell, MinimisesPublishedFunctions) {
    // Moré, Garbow & Hillstrom, ACM Trans. Math. Softw. 7 (1981) 17, no. 1: minimum 0 at (1, 1).
    Objective rosenbrock{[](Vector<double> const& x) {
        return 100 * std::pow(x[1] - x[0] * x[0], 2) + std::pow(1 - x[0], 2);
    }};
    Vector<double> x = vector_of({-1.2, 1});
    EXPECT_LT(min_powell(Objective::call, x, &rosenbrock, 100, 0), 1e-14);
    EXPECT_NEAR(x[0], 1.0, 1e-6);
    x = vector_of({-1.2, 1});
    EXPECT_EQ(mth_code([&] { min_powell(Objective::call, x, &rosenbrock, 3, 0); }), 1);
    EXPECT_EQ(x[0], -1.2) << "written on success only";
    Objective cage{[&](Vector<double> const& v) { return v[0] == 0.5 ? 1.0 : throw 7; }};
    x = vector_of({0.5});
    EXPECT_THROW(min_powell(Objective::call, x, &cage, 20, 0), int);
    Objective endless{[](Vector<double> const& v) { return -v[0]; }};
    EXPECT_EQ(mth_code([&] { min_powell(Objective::call, x, &endless, 20, 0); }), 1);
}

TEST(Marquardt, SolvesPublishedProblems) {
    struct Row {
        char const* name;
        int residuals;
        std::function<Vector<double>(Vector<double> const&)> f;
        Point start, solution;
        double sum, tolerance;  // of the solution
        int calls;
    };
    // Moré, Garbow & Hillstrom (1981), nos. 1, 15, 4: starts, minima as printed there.
    // clang-format off
    const double y[] = {.1957, .1947, .1735, .16, .0844, .0627, .0456, .0342, .0323, .0235, .0246};
    const double u[] = {4, 2, 1, .5, .25, .167, .125, .1, .0833, .0714, .0625};
    using X = Vector<double> const&;
    const Row rows[] = {
        {"Rosenbrock", 2, [](X x) { return vector_of({10 * (x[1] - x[0] * x[0]), 1 - x[0]}); },
         {-1.2, 1}, {1, 1}, 0, 1e-14, 40},
        {"Kowalik and Osborne", 11, [&](X x) {
             Vector<double> r(11);
             for (int i = 0; i < 11; ++i)
                 r[i] = y[i] - x[0] * u[i] * (u[i] + x[1]) / (u[i] * (u[i] + x[2]) + x[3]);
             return r;
         }, {.25, .39, .415, .39}, {0.1928, 0.1913, 0.1231, 0.1361}, 3.07505e-4, 1e-3, 200},
        {"Brown badly scaled", 3, [](X x) { return vector_of({x[0] - 1e6, x[1] - 2e-6, x[0] * x[1] - 2}); },
         {1, 1}, {1e6, 2e-6}, 0, 1e-6, 80}};
    // clang-format on
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        Residuals r{row.f};
        Vector<double> x = vector_of(row.start);
        const double sum = fit_marquardt(Residuals::call, x, row.residuals, &r, 300, 0);
        EXPECT_NEAR(sum, row.sum, 1e-5 * row.sum + 1e-20);  // printed digits
        for (int i = 0; i < x.n; ++i) {
            EXPECT_NEAR(x[i], row.solution[i],
                        row.tolerance * std::max(1.0, std::fabs(row.solution[i])));
            EXPECT_EQ(r.last[i], x[i]) << "the last evaluation is at the solution";
        }
        EXPECT_LE(r.calls, row.calls);
    }
}

TEST(Marquardt, OneEquationBetweenWalls) {
    // x + ln x = 2 at W(e²) = 1.5571455989976114 (Corless et al., Adv. Comput. Math. 5 (1996) 329);
    // outside (0, 5) the residual throws or is not a number.
    for (double start : {0.001, 1.0, 4.999999})
        for (bool throws : {true, false}) {
            Residuals r{[&](Vector<double> const& x) {
                if (x[0] > 0 && x[0] < 5) return vector_of({x[0] + std::log(x[0]) - 2});
                if (throws) throw ThException(th_liquid_only);
                return vector_of({nan_value});
            }};
            Vector<double> x = vector_of({start});
            EXPECT_LT(fit_marquardt(Residuals::call, x, 1, &r, 40, 0), 1e-28);
            EXPECT_NEAR(x[0], 1.5571455989976114, 1e-15 * 4);
            EXPECT_EQ(r.last[0], x[0]);
            EXPECT_LE(r.calls, start < 0.01 ? 20 : 12);
        }
}

// A parameter without slope is irrelevant only if nothing changes further off either.
TEST(Marquardt, ParametersWithoutSlope) {
    using X = Vector<double> const&;
    const struct {
        char const* name;
        int residuals;
        std::function<Vector<double>(X)> f;
        Point start, solution;
        double sum;
        int code;  // of the MthException, or -1
    } rows[] = {
        {"minimum above zero, square", 1, [](X x) { return vector_of({x[0] * x[0] + 1}); }, {3}, {0}, 1, 1},
        {"the same, as a fit", 2, [](X x) { return vector_of({x[0] * x[0] + 1, 2}); }, {3}, {0}, 5, -1},
        {"start at a maximum", 1, [](X x) { return vector_of({x[0] * x[0] - 4}); }, {0}, {2}, 0, -1},
        {"start at two", 2, [](X x) { return vector_of({std::cos(x[0]), x[1] * x[1] - 1}); }, {0, 0},
         {std::numbers::pi / 2, 1}, 0, -1},
        {"at the minimum", 2, [](X x) { return vector_of({x[0] * x[0], x[0] * x[0] + 1}); }, {0}, {0}, 1, -1},
        {"jump", 1, [](X x) { return vector_of({x[0] < 0.7 ? -5 - x[0] * x[0] : 5 + x[0] * x[0]}); }, {1}, {0.7}, 32.5, 1},
        {"rounding alone", 1, [](X x) { return vector_of({1e14 * (x[0] * x[0] * x[0] - 2)}); }, {1}, {std::cbrt(2)},
         0, -1},
        {"no influence", 2, [](X x) { return vector_of({x[0], x[0] + 1}); }, {1, 1}, {1, 1}, 0, 16}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.name);
        Residuals r{row.f};
        Vector<double> x = vector_of(row.start);
        double sum = row.sum;
        EXPECT_EQ(mth_code([&] {
                      sum = fit_marquardt(Residuals::call, x, row.residuals, &r, 100, 0);
                  }),
                  row.code);
        if (row.code == 16 || row.name[0] == 'j') continue;
        EXPECT_NEAR(sum, row.sum, row.name[0] == 'r' ? 1e-2 : 1e-10);
        for (int i = 0; i < x.n; ++i) EXPECT_NEAR(std::fabs(x[i]), row.solution[i], 1e-4);
        EXPECT_LE(r.calls, 200);
    }
}

TEST(Marquardt, FailuresByCode) {
    Residuals r{[](Vector<double> const& x) {
        if (x[0] >= 1.5) throw ThException(th_gas_only);
        return vector_of({x[0] - 2, 0.0 * x[0]});
    }};
    Vector<double> x = vector_of({3});
    auto fit = [&](int n, int maxit) { fit_marquardt(Residuals::call, x, n, &r, maxit, 0); };
    EXPECT_EQ(th_code([&] { fit(2, 40); }), th_gas_only) << "at the start";
    x = vector_of({1});
    EXPECT_EQ(th_code([&] { fit(2, 400); }), th_gas_only) << "the solution lies beyond the wall";
    EXPECT_EQ(mth_code([&] { fit(3, 40); }), 2);
    EXPECT_EQ(mth_code([&] { fit(0, 40); }), 7);
    r.f = [](Vector<double> const& v) { return vector_of({std::atan(v[0]) + 2}); };  // no root
    x = vector_of({1});
    EXPECT_EQ(mth_code([&] { fit(1, 8); }), 1);
    r.f = [](Vector<double> const& v) { return vector_of({v[0] - 1, v[0] + v[2], v[2] - 2}); };
    x = vector_of({2, 3, 4});
    try {
        fit(3, 40);
        FAIL() << "the second parameter has no influence";
    } catch (MthException const& e) {
        EXPECT_TRUE(e.number == 16 && e.info == 1);
    }
    r.f = [](Vector<double> const&) { return vector_of({nan_value}); };
    x = vector_of({1});
    EXPECT_EQ(mth_code([&] { fit(1, 40); }), 10);
}

}  // namespace
