// The minimiser against certified values of NIST's Statistical Reference Datasets, and its bounds.
#include <corvane/fit/least_squares.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace corvane::fit;

TEST(LeastSquares, Misra1aHasItsCertifiedParametersAndStandardDeviations) {
    // NIST StRD nonlinear regression, Misra1a: y = b1·(1 − exp(−b2·x)), 14 observations.
    constexpr double x[] = {77.6,  114.9, 141.1, 190.8, 239.9, 289.0, 332.8,
                            378.4, 434.8, 477.3, 536.8, 593.1, 689.1, 760.0};
    constexpr double y[] = {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02,
                            44.82, 50.76, 55.05, 61.01, 66.40, 75.47, 81.78};
    const Residuals f = [&](Eigen::VectorXd const& b, Eigen::VectorXd& r, Eigen::MatrixXd* J) {
        r.resize(14);
        if (J) J->resize(14, 2);
        for (int i = 0; i < 14; ++i) {
            const double e = std::exp(-b[1] * x[i]);
            r[i] = b[0] * (1.0 - e) - y[i];
            if (J) J->row(i) << 1.0 - e, b[0] * x[i] * e;
        }
        return r.allFinite();
    };
    for (Eigen::Vector2d const& start :
         {Eigen::Vector2d(500.0, 1e-4), Eigen::Vector2d(250.0, 5e-4)}) {
        const Minimum m = minimise(f, start, {});
        EXPECT_TRUE(m.converged);
        EXPECT_NEAR(m.x[0] / 2.3894212918e+02, 1.0, 1e-8);
        EXPECT_NEAR(m.x[1] / 5.5015643181e-04, 1.0, 1e-8);
        EXPECT_NEAR(2.0 * m.cost / 1.2455138894e-01, 1.0, 1e-9);
        const Uncertainty u = uncertainty(m.J, m.r);
        EXPECT_NEAR(u.error[0] / 2.7070075241e+00, 1.0, 1e-6);
        EXPECT_NEAR(u.error[1] / 7.2668688436e-06, 1.0, 1e-6);
        EXPECT_NEAR(u.spread / 1.0187876330e-01, 1.0, 1e-8);
        EXPECT_NEAR(u.leverage.sum(), 2.0, 1e-10);  // the trace of a projection
    }
}

TEST(LeastSquares, HoldsBoundsAndDownweightsOutliers) {
    // Rosenbrock's function; with x2 <= 0.5 its minimum is where 10·(x2 − x1²) and 1 − x1 balance.
    const Residuals rosenbrock = [](Eigen::VectorXd const& x, Eigen::VectorXd& r,
                                    Eigen::MatrixXd* J) {
        r = Eigen::Vector2d(10.0 * (x[1] - x[0] * x[0]), 1.0 - x[0]);
        if (J) *J = (Eigen::Matrix2d() << -20.0 * x[0], 10.0, -1.0, 0.0).finished();
        return true;
    };
    LeastSquares how;
    how.lower = Eigen::Vector2d(-5.0, -5.0);
    how.upper = Eigen::Vector2d(5.0, 0.5);
    const Minimum bounded = minimise(rosenbrock, Eigen::Vector2d(-1.2, 0.4), how);
    EXPECT_TRUE(bounded.converged);
    EXPECT_EQ(bounded.x[1], 0.5);
    const double x = bounded.x[0];  // stationary: 200·(x² − 0.5)·x = 1 − x
    EXPECT_NEAR(200.0 * (x * x - 0.5) * x, 1.0 - x, 1e-6);
    how.upper[1] = 5.0;
    EXPECT_NEAR(
        (minimise(rosenbrock, Eigen::Vector2d(-1.2, 1.0), how).x - Eigen::Vector2d(1, 1)).norm(),
        0.0, 1e-8);

    // A mean: nine times 1 and once 101. Huber's is 1 + k/9 exactly.
    const Residuals mean = [](Eigen::VectorXd const& at, Eigen::VectorXd& r, Eigen::MatrixXd* J) {
        r = Eigen::VectorXd::Constant(10, at[0] - 1.0);
        r[9] = at[0] - 101.0;
        if (J) *J = Eigen::MatrixXd::Ones(10, 1);
        return true;
    };
    LeastSquares robust;
    robust.loss = Loss::huber;
    robust.width = 0.9;
    EXPECT_NEAR(minimise(mean, Eigen::VectorXd::Constant(1, 50.0), robust).x[0], 1.1, 1e-7);
    robust.loss = Loss::squares;
    EXPECT_NEAR(minimise(mean, Eigen::VectorXd::Constant(1, 50.0), robust).x[0], 11.0, 1e-7);
}
