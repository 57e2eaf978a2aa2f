// Linear algebra, splines and random numbers.
#include <corvane/core/numelo.h>
#include <tests/numelo/values.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <thread>
#include <vector>

namespace {

Matrix<double> random_symmetric(int n, int rank) {
    Matrix<double> a(n, n);
    for (int k = 0; k < rank; ++k) {
        Vector<double> u(n);
        u.urand();
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) a[i][j] += (k % 2 ? -1.0 : 3.0) * u[i] * u[j];
    }
    return a;
}

TEST(Gauss, SolvesWhateverTheUnitsAndRefusesTheRest) {
    // Rows and columns in other units; zero first pivot; the solution is (1e9, 2, −3e-6).
    const Matrix<double> a = matrix_of({{0, 3, 1e6}, {2e3, 1e12, 4e18}, {1e-9, 1, 3e6}});
    const Vector<double> x = lin_gauss(a, vector_of({3, -8e12, -6}));
    const double exact[] = {1e9, 2, -3e-6};
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(x[i], exact[i], 1e-14 * std::fabs(exact[i]));
    const Vector<double> two = vector_of({1, 2});
    auto code = [](std::vector<std::vector<double>> const& rows, Vector<double> const& b) {
        return mth_code([&] { lin_gauss(matrix_of(rows), b); });
    };
    EXPECT_EQ(code({{1, 2, 3}, {4, 5, 6}}, two), 3);
    EXPECT_EQ(code({{1, 2}, {3, 5}}, vector_of({1})), 2);
    EXPECT_EQ(code({{0.1, 0.3}, {0.2, 0.6}}, two), 4);
    EXPECT_EQ(code({{1, 0}, {1, 0}}, two), 4);
    EXPECT_EQ(code({{std::nan(""), 1}, {1, 1}}, two), 4);
}

TEST(Jacobi, DecomposesWithADeterministicSign) {
    for (int n = 1; n <= 7; ++n)
        for (int rank = 0; rank <= n; ++rank)
            for (int trial = 0; trial < 20; ++trial) {
                const Matrix<double> a = random_symmetric(n, rank);
                Vector<double> value;
                Matrix<double> vector;
                lin_jacobi(a, value, vector);
                for (int k = 0; k < n; ++k) {
                    EXPECT_LE(value[std::max(k - 1, 0)], value[k]);
                    double largest = 0.0, positive = 0.0;
                    for (int i = 0; i < n; ++i) {
                        EXPECT_NEAR(a[i] * vector[k], value[k] * vector[k][i], 1e-14 * 3 * n);
                        EXPECT_NEAR(vector[i] * vector[k], i == k, 1e-14 * n);
                        largest = std::max(largest, std::fabs(vector[k][i]));
                        positive = std::max(positive, vector[k][i]);
                    }
                    EXPECT_GE(positive, (1 - 1e-5) * largest);  // equal but for rounding: the first
                }
            }
}

TEST(Jacobi, KeepsSmallBlocksBesideHugeEntries) {
    // Second differences: eigenvalues 2 − 2·cos(kπ/4), here beside an absent component's 1e99.
    Vector<double> value;
    Matrix<double> vector;
    lin_jacobi(matrix_of({{2, -1, 0, 3}, {-1, 2, -1, 5}, {0, -1, 2, 7}, {3, 5, 7, 1e99}}), value,
               vector);
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(value[k], 2 - 2 * std::cos((k + 1) * std::numbers::pi / 4), 1e-14);
    EXPECT_EQ(value[3], 1e99);
    const double half = 0.5, root = std::numbers::sqrt2 / 2;  // first vector: sin(iπ/4), normalised
    EXPECT_NEAR(vector[0][0], half, 1e-14);
    EXPECT_NEAR(vector[0][1], root, 1e-14);
    EXPECT_NEAR(vector[0][2], half, 1e-14);
    // Of components that are equal but for rounding the first is positive.
    lin_jacobi(matrix_of({{1, 2}, {2, 1}}), value, vector);
    EXPECT_NEAR(vector[0][0], root, 1e-15);
    EXPECT_NEAR(vector[0][1], -root, 1e-15);
    EXPECT_EQ(mth_code([&] { lin_jacobi(Matrix<double>(2, 3), value, vector); }), 3);
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(mth_code([&] { lin_jacobi(matrix_of({{1, 0}, {0, inf}}), value, vector); }), 10);
}

double spline(std::vector<double> const& xs, std::vector<double> const& ys, double t, int deriv) {
    const auto x = vector_of<SortedVector<double>>(xs);
    const Vector<double> y = vector_of(ys);
    Matrix<double> c;
    ipl_spline(x, y, c);
    EXPECT_EQ(c.rows(), 3);
    EXPECT_EQ(c.cols(), x.n);
    return ipl_eval(t, x, y, c, deriv);
}

TEST(Spline, ReproducesPolynomials) {
    const std::vector<double> knots{-1, 0.5, 2, 2.25, 3, 5};
    // With n points not-a-knot gives the polynomial of degree n − 1, at most 3, also outside.
    for (int n = 1; n <= 6; ++n) {
        auto f = [n](double x) {
            return 2 + (n > 1 ? x * (3 + (n > 2 ? x * (-4 + (n > 3 ? x : 0)) : 0)) : 0);
        };
        auto df = [n](double x) {
            return n > 1 ? 3 + (n > 2 ? x * (-8 + (n > 3 ? 3 * x : 0)) : 0) : 0;
        };
        const std::vector<double> xs(knots.begin(), knots.begin() + n);
        std::vector<double> ys;
        for (double x : xs) ys.push_back(f(x));
        for (double t : {-2.0, -1.0, 0.1, 0.5, 2.1, 2.6, 5.0, 7.0}) {
            EXPECT_NEAR(spline(xs, ys, t, 0), f(t), 1e-12) << n << " points at " << t;
            EXPECT_NEAR(spline(xs, ys, t, 1), df(t), 1e-12) << n << " points at " << t;
        }
    }
}

TEST(Spline, FailuresByCode) {
    Matrix<double> c;
    auto build = [&](std::vector<double> const& x, int ny) {
        ipl_spline(vector_of<SortedVector<double>>(x), Vector<double>(ny), c);
    };
    EXPECT_EQ(mth_code([&] { build({1, 2}, 3); }), 2);
    EXPECT_EQ(mth_code([&] { build({1, 2, 2}, 3); }), 5);
    EXPECT_EQ(mth_code([&] { build({1, 3, 2}, 3); }), 6);
    EXPECT_EQ(mth_code([&] { build({1, std::nan(""), 2}, 3); }), 6);
    build({}, 0);
    EXPECT_EQ(c.rows(), 3);
    EXPECT_EQ(c.cols(), 0);
    const SortedVector<double> none;
    EXPECT_EQ(mth_code([&] { ipl_eval(1.0, none, Vector<double>(), c, 0); }), 7);
    EXPECT_EQ(mth_code([&] { spline({1, 2, 3}, {1, 2, 3}, 2.0, 2); }), 8);
}

TEST(Random, IsUniformAndDifferentInEveryThread) {
    std::vector<double> first, second;
    auto draw = [](std::vector<double>& to) {
        for (int k = 0; k < 100000; ++k) to.push_back(ran_shuffle());
    };
    std::thread a(draw, std::ref(first)), b(draw, std::ref(second));
    a.join();
    b.join();
    std::vector<double> both(first);
    both.insert(both.end(), second.begin(), second.end());
    std::sort(both.begin(), both.end());
    EXPECT_EQ(std::adjacent_find(both.begin(), both.end()), both.end());  // 2e10/2^52 by chance
    double mean = 0, square = 0, lag = 0;
    for (std::size_t k = 0; k < first.size(); ++k) {
        ASSERT_TRUE(first[k] > 0.0 && first[k] < 1.0);
        mean += first[k] - 0.5;
        square += std::pow(first[k] - 0.5, 2);
        lag += (first[k] - 0.5) * (first[k > 0 ? k - 1 : 0] - 0.5);
    }
    // Five standard deviations of each statistic of independent uniform numbers.
    const double n = static_cast<double>(first.size());
    EXPECT_NEAR(mean / n, 0.0, 5 * std::sqrt(1 / 12.0 / n));
    EXPECT_NEAR(square / n, 1 / 12.0, 5 * std::sqrt(1 / 180.0 / n));
    EXPECT_NEAR(lag / n, 0.0, 5 * std::sqrt(1 / 144.0 / n));
}

}  // namespace
