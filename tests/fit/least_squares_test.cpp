// The minimiser against certified values of NIST's Statistical Reference Datasets, on problems with
// known solutions that are hard for their scales or singular, at bounds, and with outliers.
#include <corvane/fit/least_squares.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <vector>

using namespace corvane::fit;

namespace {
using Complex = std::complex<double>;
using Numbers = std::vector<double>;

/// y = f(b; x) with its certified solution.
struct Regression {
    char const* name;
    Complex (*f)(Complex const* b, double x);
    Numbers x, y;
    std::vector<Numbers> starts;
    Numbers b, deviation;
    double squares;
};

/// Derivatives by the complex step, which has no error of truncation.
Residuals residuals(Regression const& c) {
    return [&c](Eigen::VectorXd const& b, Eigen::VectorXd& r, Eigen::MatrixXd* J) {
        const Eigen::Index n = b.size(), rows = static_cast<Eigen::Index>(c.x.size());
        std::vector<Complex> z(b.begin(), b.end());
        r.resize(rows);
        if (J) J->resize(rows, n);
        for (Eigen::Index i = 0; i < rows; ++i) {
            const auto k = static_cast<std::size_t>(i);
            r[i] = c.f(z.data(), c.x[k]).real() - c.y[k];
            for (Eigen::Index j = 0; J && j < n; ++j) {
                const double h = 1e-30 * (std::fabs(b[j]) + 1e-30);
                Complex& at = z[static_cast<std::size_t>(j)];
                at += Complex(0.0, h);
                (*J)(i, j) = c.f(z.data(), c.x[k]).imag() / h;
                at = b[j];
            }
        }
        return r.allFinite() && (!J || J->allFinite());
    };
}
Eigen::VectorXd vector(Numbers const& x) {
    return Eigen::Map<Eigen::VectorXd const>(x.data(), static_cast<Eigen::Index>(x.size()));
}
}  // namespace

// NIST StRD, nonlinear regression: certified to eleven digits; "higher" difficulty but for the
// first. Both starts of each, but for MGH10.
TEST(LeastSquares, HasTheCertifiedParametersOfReferenceDatasets) {
    const Regression all[] = {
        {"Misra1a",
         [](Complex const* b, double x) { return b[0] * (1.0 - std::exp(-b[1] * x)); },
         {77.6, 114.9, 141.1, 190.8, 239.9, 289.0, 332.8, 378.4, 434.8, 477.3, 536.8, 593.1, 689.1,
          760.0},
         {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02, 44.82, 50.76, 55.05, 61.01, 66.40, 75.47,
          81.78},
         {{500.0, 1e-4}, {250.0, 5e-4}},
         {2.3894212918e+02, 5.5015643181e-04},
         {2.7070075241e+00, 7.2668688436e-06},
         1.2455138894e-01},
        {"MGH09",
         [](Complex const* b, double x) {
             return b[0] * (x * x + x * b[1]) / (x * x + x * b[2] + b[3]);
         },
         {4.0, 2.0, 1.0, 0.5, 0.25, 0.167, 0.125, 0.1, 0.0833, 0.0714, 0.0625},
         {0.1957, 0.1947, 0.1735, 0.1600, 0.0844, 0.0627, 0.0456, 0.0342, 0.0323, 0.0235, 0.0246},
         {{25.0, 39.0, 41.5, 39.0}, {0.25, 0.39, 0.415, 0.39}},
         {1.9280693458e-01, 1.9128232873e-01, 1.2305650693e-01, 1.3606233068e-01},
         {1.1435312227e-02, 1.9633220911e-01, 8.0842031232e-02, 9.0025542308e-02},
         3.0750560385e-04},
        {"MGH10",
         [](Complex const* b, double x) { return b[0] * std::exp(b[1] / (x + b[2])); },
         {50, 55, 60, 65, 70, 75, 80, 85, 90, 95, 100, 105, 110, 115, 120, 125},
         {34780, 28610, 23650, 19630, 16370, 13720, 11540, 9744, 8261, 7030, 6005, 5147, 4427, 3820,
          3307, 2872},
         {{0.02, 4000.0, 250.0}},  // from (2, 4e5, 2.5e4) a thousand steps do not arrive
         {5.6096364710e-03, 6.1813463463e+03, 3.4522363462e+02},
         {1.5687892471e-04, 2.3309021107e+01, 7.8486103508e-01},
         8.7945855171e+01},
        {"BoxBOD",
         [](Complex const* b, double x) { return b[0] * (1.0 - std::exp(-b[1] * x)); },
         {1, 2, 3, 5, 7, 10},
         {109, 149, 149, 191, 213, 224},
         {{1.0, 1.0}, {100.0, 0.75}},
         {2.1380940889e+02, 5.4723748542e-01},
         {1.2354515176e+01, 1.0455993237e-01},
         1.1680088766e+03},
        {"Thurber",
         [](Complex const* b, double x) {
             return (b[0] + x * (b[1] + x * (b[2] + x * b[3]))) /
                    (1.0 + x * (b[4] + x * (b[5] + x * b[6])));
         },
         {-3.067, -2.981, -2.921, -2.912, -2.840, -2.797, -2.702, -2.699, -2.633, -2.481,
          -2.363, -2.322, -1.501, -1.460, -1.274, -1.212, -1.100, -1.046, -0.915, -0.714,
          -0.566, -0.545, -0.400, -0.309, -0.109, -0.103, 0.010,  0.119,  0.377,  0.790,
          0.963,  1.006,  1.115,  1.572,  1.841,  2.047,  2.200},
         {80.574,   84.248,   87.264,   87.195,   89.076,   89.608,   89.868,   90.101,
          92.405,   95.854,   100.696,  101.060,  401.672,  390.724,  567.534,  635.316,
          733.054,  759.087,  894.206,  990.785,  1090.109, 1080.914, 1122.643, 1178.351,
          1260.531, 1273.514, 1288.339, 1327.543, 1353.863, 1414.509, 1425.208, 1421.384,
          1442.962, 1464.350, 1468.705, 1447.894, 1457.628},
         {{1000, 1000, 400, 40, 0.7, 0.3, 0.03}, {1300, 1500, 500, 75, 1, 0.4, 0.05}},
         {1.2881396800e+03, 1.4910792535e+03, 5.8323836877e+02, 7.5416644291e+01, 9.6629502864e-01,
          3.9797285797e-01, 4.9727297349e-02},
         {},
         5.6427082397e+03}};
    for (Regression const& c : all)
        for (Numbers const& start : c.starts) {
            SCOPED_TRACE(std::string(c.name) + " from " + std::to_string(start[0]));
            LeastSquares how;
            how.limit = 1000;
            const Minimum m = minimise(residuals(c), vector(start), how);
            EXPECT_TRUE(m.converged);
            EXPECT_NEAR(2.0 * m.cost / c.squares, 1.0, 1e-9);
            const Uncertainty u = uncertainty(m.J, m.r);
            const auto n = static_cast<Eigen::Index>(c.b.size());
            for (Eigen::Index j = 0; j < n; ++j) {
                const auto k = static_cast<std::size_t>(j);
                EXPECT_NEAR(m.x[j] / c.b[k], 1.0, 1e-6) << j;
                if (!c.deviation.empty()) {
                    EXPECT_NEAR(u.error[j] / c.deviation[k], 1.0, 1e-5) << j;
                }
            }
            EXPECT_NEAR(u.leverage.sum(), static_cast<double>(n), 1e-9);  // trace of a projection
        }
}

// Moré, Garbow & Hillstrom, ACM Trans. Math. Software 7 (1981) 17: badly scaled, singular at the
// solution, curved; then cut by bounds, where the gradient must vanish in what is free and point
// outwards at the bounds.
TEST(LeastSquares, SolvesHardProblemsAndHoldsBounds) {
    using V = Eigen::VectorXd;
    using C = Eigen::VectorXcd;
    struct Case {
        char const* name;
        C (*r)(C const& x);
        Numbers start, solution, lower, upper;  // solution: without bounds
        double tolerance;
    };
    const auto rosenbrock = [](C const& x) -> C {
        return Eigen::Vector2cd(10.0 * (x[1] - x[0] * x[0]), 1.0 - x[0]);
    };
    const auto beale = [](C const& x) -> C {
        return Eigen::Vector3cd(1.5 - x[0] * (1.0 - x[1]), 2.25 - x[0] * (1.0 - x[1] * x[1]),
                                2.625 - x[0] * (1.0 - x[1] * x[1] * x[1]));
    };
    const auto powell = [](C const& x) -> C {
        const Complex a = x[1] - 2.0 * x[2], b = x[0] - x[3];
        return Eigen::Vector4cd(x[0] + 10.0 * x[1], std::sqrt(5.0) * (x[2] - x[3]), a * a,
                                std::sqrt(10.0) * b * b);
    };
    const auto brown = [](C const& x) -> C {
        return Eigen::Vector3cd(x[0] - 1e6, x[1] - 2e-6, x[0] * x[1] - 2.0);
    };
    const auto wood = [](C const& x) -> C {
        C r(6);
        r << 10.0 * (x[1] - x[0] * x[0]), 1.0 - x[0], std::sqrt(90.0) * (x[3] - x[2] * x[2]),
            1.0 - x[2], std::sqrt(10.0) * (x[1] + x[3] - 2.0), (x[1] - x[3]) / std::sqrt(10.0);
        return r;
    };
    const Case cases[] = {
        {"Rosenbrock", rosenbrock, {-1.2, 1.0}, {1.0, 1.0}, {-5, -5}, {5.0, 0.5}, 1e-8},
        {"Beale", beale, {1.0, 1.0}, {3.0, 0.5}, {-5, -5}, {2.0, 5.0}, 1e-8},
        // the Jacobian is singular at the solution: convergence is linear, and ends early
        {"Powell", powell, {3, -1, 0, 1}, {0, 0, 0, 0}, {0.2, -5, -5, -5}, {5, 5, 5, 5}, 1e-3},
        {"Brown", brown, {1.0, 1.0}, {1e6, 2e-6}, {0.0, 3e-6}, {1e7, 1.0}, 1e-8},
        {"Wood", wood, {-3, -1, -3, -1}, {1, 1, 1, 1}, {-10, -10, -10, 1.2}, {0.9, 9, 9, 9}, 1e-7}};
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        const Residuals f = [&](V const& x, V& r, Eigen::MatrixXd* J) {
            C z = x;
            r = c.r(z).real();
            if (J) J->resize(r.size(), x.size());
            for (Eigen::Index j = 0; J && j < x.size(); ++j) {
                z[j] = Complex(x[j], 1e-100);
                J->col(j) = c.r(z).imag() / 1e-100;
                z[j] = x[j];
            }
            return r.allFinite();
        };
        LeastSquares how;
        how.limit = 500;
        const Minimum free = minimise(f, vector(c.start), how);
        EXPECT_TRUE(free.converged);
        for (std::size_t k = 0; k < c.start.size(); ++k)
            EXPECT_NEAR(free.x[static_cast<Eigen::Index>(k)], c.solution[k],
                        c.tolerance * std::fmax(1.0, std::fabs(c.solution[k])));
        how.lower = vector(c.lower);
        how.upper = vector(c.upper);
        const Minimum held = minimise(f, vector(c.start), how);
        EXPECT_TRUE(held.converged);
        const V gradient = held.J.transpose() * held.r;
        int at_bound = 0;
        for (Eigen::Index j = 0; j < gradient.size(); ++j) {
            // orthogonal to the residuals, or less than 1e-8 of x from where it is
            const double slope = held.J.col(j).norm();
            const double scale = std::fmax(slope * held.r.norm(),
                                           0.01 * slope * slope * std::fabs(held.x[j]));
            const bool low = held.x[j] <= how.lower[j], high = held.x[j] >= how.upper[j];
            at_bound += low || high ? 1 : 0;
            EXPECT_GE(held.x[j], how.lower[j]);
            EXPECT_LE(held.x[j], how.upper[j]);
            EXPECT_TRUE(low || gradient[j] < 1e-6 * scale) << j;
            EXPECT_TRUE(high || gradient[j] > -1e-6 * scale) << j;
        }
        EXPECT_GE(at_bound, 1);
    }
}

TEST(LeastSquares, DownweightsOutliers) {
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
