// The smallest eigenvalue by inverse iteration against all of them by Jacobi's rotations.
#include <corvane/core/numelo.h>
#include <corvane/phases/numerics/smallest_eigenpair.h>

#include <gtest/gtest.h>

#include <random>

namespace {
constexpr double kUnit = 2.3e-16;

struct Symmetric {
    Matrix<double> full;
    std::vector<double> rows;
};
/// Q·diag(values)·Qᵀ, Q a product of reflections of random vectors.
Symmetric symmetric(std::vector<double> const& values, std::mt19937_64& random) {
    const int n = static_cast<int>(values.size());
    std::uniform_real_distribution<double> part(-1, 1);
    Matrix<double> A(n, n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) A[i][j] = i == j ? values[static_cast<std::size_t>(i)] : 0.0;
    for (int reflection = 0; reflection < 2; ++reflection) {
        std::vector<double> v(values.size());
        double square = 0.0;
        for (double& x : v) {
            x = part(random);
            square += x * x;
        }
        for (int side = 0; side < 2; ++side)  // A·(1 − 2vvᵀ), then the transpose likewise
            for (int i = 0; i < n; ++i) {
                double dot = 0.0;
                for (int j = 0; j < n; ++j)
                    dot += (side == 0 ? A[i][j] : A[j][i]) * v[static_cast<std::size_t>(j)];
                for (int j = 0; j < n; ++j)
                    (side == 0 ? A[i][j] : A[j][i]) -=
                        2.0 * dot / square * v[static_cast<std::size_t>(j)];
            }
    }
    Symmetric s{Matrix<double>(n, n), {}};
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) s.rows.push_back(s.full[i][j] = 0.5 * (A[i][j] + A[j][i]));
    return s;
}
}  // namespace

TEST(SmallestEigenpair, AgreesWithJacobisMethodFromAnyStart) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> part(-1, 1);
    int cold = 0, found = 0;
    for (int n : {3, 4, 6, 12, 21})
        for (double first : {-0.3, 0.0, 1e-9, 0.5})
            for (double stiff : {1.5, 1e5})
                for (int start = 0; start < 3; ++start) {  // random, 0.1 and 1e-5 off
                    SCOPED_TRACE(testing::Message()
                                 << n << " " << first << " " << stiff << " " << start);
                    std::vector<double> values(static_cast<std::size_t>(n), stiff);
                    values[0] = first;
                    for (std::size_t k = 1; k + 1 < values.size(); ++k)
                        values[k] = 0.6 + 0.05 * static_cast<double>(k);
                    const Symmetric s = symmetric(values, random);
                    Matrix<double> vectors;
                    Vector<double> all;
                    lin_jacobi(s.full, all, vectors);
                    std::vector<double> v;
                    const double off[] = {0.0, 0.1, 1e-5};
                    for (int i = 0; i < n; ++i)
                        v.push_back(start == 0 ? part(random)
                                               : vectors[0][i] + off[start] * part(random));
                    corvane::SmallestEigenpair smallest;
                    const bool good = smallest.find(n, s.rows.data(), v);
                    EXPECT_TRUE(good || start == 0);
                    if (start == 0) ++cold, found += good;
                    if (!good) continue;
                    EXPECT_NEAR(smallest.value, all[0], 8 * n * kUnit * stiff);
                    double dot = 0.0;
                    for (int i = 0; i < n; ++i)
                        dot += v[static_cast<std::size_t>(i)] * vectors[0][i];
                    // Both vectors err by rounding over the gap to the next eigenvalue.
                    EXPECT_NEAR(std::fabs(dot), 1, 1e-13);
                    for (int i = 0; i < n; ++i)
                        EXPECT_NEAR(v[static_cast<std::size_t>(i)],
                                    std::copysign(1.0, dot) * vectors[0][i],
                                    64 * n * kUnit * stiff);
                    // Definite or not, but for rounding.
                    const double margin = 64 * n * kUnit * stiff;
                    EXPECT_TRUE(smallest.above(all[0] - margin, n, s.rows.data()));
                    EXPECT_FALSE(smallest.above(all[0] + margin, n, s.rows.data()));
                }
    EXPECT_GT(found, 0.7 * cold);
}

TEST(SmallestEigenpair, DoubleAndRefused) {
    std::mt19937_64 random(4);
    const Symmetric s = symmetric({0.2, 0.2, 0.7, 3.0}, random);
    corvane::SmallestEigenpair smallest;
    std::vector<double> v{1, 0.2, -0.4, 0.3};
    ASSERT_TRUE(smallest.find(4, s.rows.data(), v));
    EXPECT_NEAR(smallest.value, 0.2, 1e-14);  // any vector of the plane
    for (int i = 0; i < 4; ++i) {
        double row = 0.0;
        for (int j = 0; j < 4; ++j) row += s.full[i][j] * v[static_cast<std::size_t>(j)];
        EXPECT_NEAR(row, 0.2 * v[static_cast<std::size_t>(i)], 1e-14);
    }
    v = {0, 0, 0, 0};
    EXPECT_FALSE(smallest.find(4, s.rows.data(), v));
    v = {1, 0, std::nan(""), 0};
    EXPECT_FALSE(smallest.find(4, s.rows.data(), v));
}
