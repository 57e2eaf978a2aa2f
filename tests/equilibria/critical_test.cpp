// Critical points and lines of mixtures: anchors in closed form, the critical conditions in another
// form, and the point where bubble and dew curves meet.
#include <corvane/core/numelo.h>
#include <corvane/equilibria/crit_slope.h>

#include "equilibria/phases.h"
#include "support/vdw_mixture.h"

#include <array>
#include <vector>

using corvane::LineEnd;

namespace {
struct Line {
    Matrix<double> rows{1, 4};
    Vector<double> x;
    double s;
    /// T and rho are start values unless 0.
    Line(ModelN const& m, double x0, double step, double T = 0, double rho = 0)
        : x(mix(x0)), s(step) {
        rows[0][1] = T;
        rows[0][2] = rho;
        crit_slope_x(&m, x, s, rows);
    }
    Vector<double> const& operator[](int k) const { return rows[k]; }
};

/// rho·(smallest eigenvalue), and rho²·Σ_ijk ∂³psi·u_i·u_j·u_k, which is its slope along u.
std::pair<double, double> conditions(ModelN const& m, double x0, double T, double rho) {
    const Vector<double> n = rho * mix(x0);
    Vector<double> values;
    Matrix<double> u;
    lin_jacobi(m.PsiH(n, T), values, u);
    const auto form = [&](double k) {  // u·H·u at a distance along u
        const Matrix<double> H = m.PsiH(n + k * 1e-4 * rho * u[0], T);
        return (u[0][0] * (u[0] * H[0]) + u[0][1] * (u[0] * H[1])) / 12e-4;
    };
    return {rho * values[0], rho * (8 * (form(1) - form(-1)) - (form(2) - form(-2)))};
}

TEST(Critical, PointsInClosedForm) {
    // Equal fluids with a12 = a(1 − k) are at x = 1/2 a pure one with a(1 − k/2).
    for (double k : {0.0, 0.1, 0.2}) {
        const VdwMixture m({{300, 40}, {300, 40}}, k);
        const Line line(m, 0.5, 0);
        ASSERT_EQ(line.rows.rows(), 1);
        EXPECT_NEAR(line[0][1] / (300 * (1 - k / 2)), 1, 1e-9);
        EXPECT_NEAR(line[0][2] * 120, 1, 1e-6);  // a root of order three in the density
        EXPECT_NEAR(line[0][3] / (0.375 * R * line[0][1] / 120), 1, 1e-8);
    }
    const VdwMixture twins({{300, 40}, {300, 40}}, 0);
    const Line whole(twins, 0, 0.1);  // identical components: one temperature
    EXPECT_EQ(corvane::critical_line_end(&twins, whole.rows), LineEnd::pure);
    for (int i = 0; i < whole.rows.rows(); ++i) EXPECT_NEAR(whole[i][1], 300, 3e-7);
    const VdwMixture one({{190, 40}}, 0);
    Vector<double> x(1);
    Matrix<double> rows;
    double s = 0.1;
    x[0] = 1;
    crit_slope_x(&one, x, s, rows);
    ASSERT_EQ(rows.rows(), 1);
    EXPECT_NEAR(rows[0][1] / 190, 1, 1e-9);
}

TEST(Critical, LinesOfSeveralTypes) {
    const VdwMixture::Component light{190, 40}, middle{370, 60}, heavy{600, 120};
    const struct {
        VdwMixture::Component first, second;
        double k, x0, s, T, rho;
        LineEnd end;
        double x_end;  // where the end is a pure component
    } rows[] = {{light, middle, 0.0, 0, 0.05, 0, 0, LineEnd::pure, 1},  // continuous
                {light, middle, 0.0, 0.5, -0.05, 0, 0, LineEnd::pure, 0},
                {light, heavy, 0.1, 0, 0.05, 0, 0, LineEnd::pure, 1},  // extrema of T and x
                {light, heavy, 0.1, 1, -0.2, 0, 0, LineEnd::pure, 0},
                {light, heavy, 0.2, 0, 0.05, 0, 0, LineEnd::dense, -1},  // interrupted
                {light, heavy, 0.2, 1, -0.05, 0, 0, LineEnd::tension, -1},
                {{300, 40}, {320, 60}, 0.3, 0, 0.05, 0, 0, LineEnd::pure, 1},  // two liquids apart
                {{300, 40}, {320, 60}, 0.3, 0.65, -0.01, 225, 0.0147, LineEnd::dense, -1},
                {{300, 40}, {320, 60}, 0.3, 0.65, 0.01, 225, 0.0147, LineEnd::tension, -1}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.second.Tc << " k " << row.k << " x0 " << row.x0);
        const VdwMixture m({row.first, row.second}, row.k);
        const Line line(m, row.x0, row.s, row.T, row.rho);
        const int last = line.rows.rows() - 1;
        EXPECT_EQ(corvane::critical_line_end(&m, line.rows), row.end);
        if (row.end == LineEnd::pure) {
            EXPECT_EQ(line[last][0], row.x_end);
        }
        EXPECT_EQ(line.x[0], line[last][0]);
        for (int i = 0; i <= last; ++i) {
            auto const& r = line[i];
            EXPECT_NEAR(pressure(m, mix(r[0]) * r[2], r[1]), r[3], 1e-9);
            if (!(r[0] > 0 && r[0] < 1)) continue;
            const auto [value, cubic] = conditions(m, r[0], r[1], r[2]);
            EXPECT_NEAR(value, 0, 1e-9) << i;  // 1e-10 in T, and slopes of up to 10
            // truncation of the stencils, as a shift in density: below 1e-6
            const double beside = conditions(m, r[0], r[1], 1.001 * r[2]).second;
            EXPECT_LT(std::fabs(cubic), 1e-3 * std::fabs(beside - cubic)) << i;
        }
    }
}

/// Composition at which the bubble and dew curves of an isotherm meet, near x0: x is a smooth
/// function of the density difference of the phases, which a pair of phases gives at two points
/// with opposite signs. Lagrange's formula through five pairs.
double meeting(ModelN const& m, double T, double x0) {
    std::vector<std::array<double, 2>> points;  // difference, composition
    march(m, T, 0.96 * x0, 0.02 * x0, [&](double x, Bubble const& s) {
        const double rho2 = s.rho2.sum(), d = s.rho1 - rho2;
        if (x < 0.87 * x0) return;
        points.push_back({d, x});
        points.push_back({-d, s.rho2[0] / rho2});
    });
    double sum = 0.0;
    for (auto const& a : points) {
        double weight = 1.0;
        for (auto const& b : points)
            if (&a != &b) weight *= b[0] / (b[0] - a[0]);
        sum += weight * a[1];
    }
    return sum;
}

TEST(Critical, RepeatsFromOtherStartsAndByOtherMethods) {
    const VdwMixture m({{190, 40}, {370, 60}}, 0.01);
    const Line point(m, 0.45, 0);
    const double T = point[0][1], rho = point[0][2];
    for (double fT : {0.97, 1.03})
        for (double frho : {0.95, 1.05}) {
            const Line other(m, 0.45, 0, fT * T, frho * rho);
            EXPECT_NEAR(other[0][1] / T, 1, 1e-9);
            EXPECT_NEAR(other[0][2] / rho, 1, 1e-7);
        }
    EXPECT_NEAR(Line(m, meeting(m, T, 0.45), 0)[0][1], T, 1e-3);
    // A composition out of reach of the averages of the components; one on no line; bad input.
    const VdwMixture wide({{190, 40}, {600, 120}}, 0.2), three({{1, 1}, {1, 1}, {1, 1}}, 0);
    EXPECT_GT(Line(wide, 0.8, 0)[0][3], 100);
    EXPECT_EQ(th_code([&] { Line(wide, 0.9, 0); }), th_generic);
    EXPECT_EQ(th_code([&] { Line(wide, 0.1, -0.2); }), th_out_of_range);
    EXPECT_EQ(mth_code([&] { Line(three, 0.1, 0.1); }), mth_dimensions);
}
}  // namespace
