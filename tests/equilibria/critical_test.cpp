// Critical points and lines of mixtures: anchors in closed form, measured points, the critical
// conditions in another form, and the point where bubble and dew curves meet.
#include "equilibria/phases.h"

#include <corvane/classic/equilibria/crit_slope.h>
#include <corvane/core/numelo.h>

#include <array>

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

TEST(Critical, PointsInClosedForm) {
    for (double k : {0.0, 0.1, 0.2}) {  // twins are a pure fluid at x = 1/2
        const VdwTwins m(k);
        const Line line(m, 0.5, 0);
        ASSERT_EQ(line.rows.rows(), 1);
        EXPECT_NEAR(line[0][1] / m.Tc(mix(0.5)), 1, 1e-8);  // noise of numerical second
        EXPECT_NEAR(line[0][2] * 120, 1, 1e-4);             // differences; rho: a triple root
        EXPECT_NEAR(line[0][3] / (0.375 * R * line[0][1] / 120), 1, 1e-4);
    }
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    for (int i = 0; i < 2; ++i)
        EXPECT_NEAR(Line(*m, 1 - i, 0)[0][1] / m->mdl1[i]->Tcrit(), 1, 1e-8);
    const Mixture one = mixture_of("PR", "vdW1", {"propane"});
    Vector<double> x = vec({1});
    Matrix<double> rows;
    double s = 0.1;
    crit_slope_x(one.get(), x, s, rows);
    ASSERT_EQ(rows.rows(), 1);
    EXPECT_NEAR(rows[0][1] / one->mdl1[0]->Tcrit(), 1, 1e-8);
}

// Hicks & Young, Chem. Rev. 75 (1975) 119: measured points, scatter 1 % in T and 3 % in p; pair
// parameters of Knapp et al. (DECHEMA Chem. Data Ser. VI, 1982), fitted to other data. The equation
// adds up to 2 % in each.
TEST(Critical, MeasuredPoints) {
    const struct {
        char const *first, *second;
        double k, x, T, p;
    } rows[] = {{"methane", "propane", 0.0119, 0.14, 360.9, 5.3},
                {"methane", "propane", 0.0119, 0.4, 332.5, 7.98},
                {"methane", "propane", 0.0119, 0.6772, 294.3, 10.09},
                {"methane", "propane", 0.0119, 0.8, 256.5, 9.51},
                {"methane", "ethane", -0.0059, 0.3002, 282.9, 6.18},
                {"methane", "ethane", -0.0059, 0.7, 238, 6.73},
                {"butane", "carbon_dioxide", 0.1352, 0.1391, 321.8, 7.736},
                {"butane", "carbon_dioxide", 0.1352, 0.674, 398.76, 6.281}};
    for (auto const& row : rows) {
        const Line line(*peng_robinson(row.first, row.second, row.k), row.x, 0);
        EXPECT_NEAR(line[0][1] / row.T, 1, 0.03) << row.first << " " << row.x;
        EXPECT_NEAR(line[0][3] / row.p, 1, 0.05) << row.first << " " << row.x;
    }
}

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

TEST(Critical, LinesOfSeveralTypes) {
    const struct {
        char const *first, *second;
        double k, x0, s;
        LineEnd end;
        double x_end;  // where the end is a pure component
    } rows[] = {{"nitrogen", "methane", 0.03, 0, 0.05, LineEnd::pure, 1},  // continuous
                {"methane", "propane", 0.01, 0.5, -0.05, LineEnd::pure, 0},
                {"methane", "propane", 0.01, 1, -0.2, LineEnd::pure, 0},
                // extrema of T and p, and a line of two liquids apart
                {"carbon_dioxide", "decane", 0.1, 0, 0.05, LineEnd::pure, 1},
                // the two lines joined otherwise
                {"carbon_dioxide", "decane", 0.1141, 0, 0.05, LineEnd::dense, -1},
                {"carbon_dioxide", "decane", 0.1141, 1, -0.05, LineEnd::tension, -1},
                {"methane", "water", 0.5, 0, 0.05, LineEnd::dense, -1}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.first << " k " << row.k << " x0 " << row.x0);
        const Mixture m = peng_robinson(row.first, row.second, row.k);
        const Line line(*m, row.x0, row.s);
        const int last = line.rows.rows() - 1;
        EXPECT_EQ(corvane::critical_line_end(m.get(), line.rows), row.end);
        if (row.end == LineEnd::pure) {
            EXPECT_EQ(line[last][0], row.x_end);
        }
        EXPECT_EQ(line.x[0], line[last][0]);
        for (int i = 0; i <= last; ++i) {
            auto const& r = line[i];
            EXPECT_NEAR(pressure(*m, mix(r[0]) * r[2], r[1]), r[3], 1e-9);
            if (!(r[0] > 0 && r[0] < 1)) continue;
            const auto [value, cubic] = conditions(*m, r[0], r[1], r[2]);
            EXPECT_NEAR(value, 0, 1e-9) << i;  // 1e-10 in T, and slopes of up to 10
            // truncation of the solver's stencil, as a shift in density: 3e-6 next to pure light
            // components, where a trace of the heavy one turns u
            const double beside = conditions(*m, r[0], r[1], 1.001 * r[2]).second;
            EXPECT_LT(std::fabs(cubic), 4e-3 * std::fabs(beside - cubic)) << i;
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

TEST(Critical, RepeatsFromOtherStartsAndByAnotherMethod) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    // Published: 328.4901 K, 6.972e-3 mol/cm³, without the constants of the components. Those used
    // here, the shipped ones of methane and for propane Tc 369.825 K, pc 4.248 MPa, ω 0.1524, were
    // chosen among sets in common use because they give these digits; others are up to 0.04 K off.
    // So this holds the solver to the figure, but does not prove the constants.
    Model1& propane = *m->mdl1[1];
    propane.Ts(369.825);
    propane.vs(0.077796073903888456 * R * 369.825 / 4.248);
    propane.param(3, 0.1524);
    const Line point(*m, 0.45, 0);
    const double T = point[0][1], rho = point[0][2];
    EXPECT_NEAR(T, 328.4901, 5e-5);
    EXPECT_NEAR(rho, 0.006972, 6e-7);
    for (double fT : {0.97, 1.03})
        for (double frho : {0.95, 1.05}) {
            const Line other(*m, 0.45, 0, fT * T, frho * rho);
            EXPECT_NEAR(other[0][1] / T, 1, 1e-9);
            EXPECT_NEAR(other[0][2] / rho, 1, 1e-7);
        }
    EXPECT_NEAR(Line(*m, meeting(*m, T, 0.45), 0)[0][1], T, 1e-3);
    // A composition out of reach of the averages of the components; one on no line; bad input.
    const Mixture wide = peng_robinson("methane", "water", 0.5);
    EXPECT_GT(Line(*wide, 0.3, 0)[0][3], 100);
    EXPECT_EQ(th_code([&] { Line(*wide, 0.8, 0); }), th_generic);
    EXPECT_EQ(th_code([&] { Line(*wide, 0.1, -0.2); }), th_out_of_range);
    const Mixture three = mixture_of("PR", "vdW1", {"methane", "ethane", "propane"});
    EXPECT_EQ(mth_code([&] { Line(*three, 0.1, 0); }), mth_dimensions);
}
}  // namespace
