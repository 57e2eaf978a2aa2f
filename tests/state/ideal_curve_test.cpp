// Ideal curves: van der Waals' closed forms, the conditions by other functions, isenthalps.
#include "support/errors.h"
#include "support/vdw_model.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {
using corvane::ideal_curve;
using corvane::IdealCurve;
using corvane::IdealCurveEnd;

/// With its derivatives in closed form.
struct ExactVdw : VdwModel, corvane::Deriv1 {
    ExactVdw() { derivatives(this); }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        if (nrho > 2 || nT > 2) return 0;
        const double y = rho * par(2), a = 27.0 / 8.0 * Tcrit() / T * y;
        const double rows[3][3] = {{-std::log1p(-y) - a, a, -2 * a},
                                   {y / (1 - y) - a, a, -2 * a},
                                   {y * y / ((1 - y) * (1 - y)), 0, 0}};
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT; ++j)
                if (nT == 0 || i + j <= 2) d[i * (nT + 1) + j] = rows[i][j];
        return 1;
    }
    double par(int i) const { return const_cast<ExactVdw*>(this)->ppar(i)[0]; }
};

// With y = b·rho and T* = R·T·b/a = 8/27·T/Tc: Zeno T* = 1 − y, Boyle T* = (1 − y)², Joule–Thomson
// T* = 2·(1 − y)². The latter's highest pressure is 9·pc at T = 3·Tc; the Boyle curve's 27/8·pc at
// T* = 9/16.
TEST(IdealCurves, OfVanDerWaalsAreClosedForms) {
    const ExactVdw m;
    const double b = 32.0, unit = 27.0 / 8.0 * m.Tcrit();
    struct Row {
        IdealCurve which;
        double T_zero, T_highest, p_highest;  // T*, T/Tc, p/pc; highest 0: not of interest
        double (*T)(double y);
        IdealCurveEnd end;
    };
    const Row rows[] = {
        {IdealCurve::zeno, 1, 0.5 * 27 / 8, 27.0 / 4, [](double y) { return 1 - y; },
         IdealCurveEnd::cold},
        {IdealCurve::boyle, 1, 9.0 / 16 * 27 / 8, 27.0 / 8,
         [](double y) { return (1 - y) * (1 - y); }, IdealCurveEnd::saturation},
        {IdealCurve::joule_thomson, 2, 3, 9, [](double y) { return 2 * (1 - y) * (1 - y); },
         IdealCurveEnd::saturation}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.T_zero * row.p_highest);
        const auto q = ideal_curve(m, row.which);
        EXPECT_NEAR(q.T_zero, row.T_zero * unit, 1e-7 * unit);
        EXPECT_NEAR(q.highest.p / m.pcrit(), row.p_highest, 1e-9 * row.p_highest);
        EXPECT_NEAR(q.highest.T / m.Tcrit(), row.T_highest, 1e-4);  // flat there
        EXPECT_EQ(q.end, row.end);
        ASSERT_GT(q.points.size(), 30u);
        for (auto const& at : q.points)
            EXPECT_NEAR(at.T, row.T(at.rho * b) * unit, 1e-9 * unit) << at.rho * b;
        if (row.end != IdealCurveEnd::saturation) continue;
        EXPECT_NEAR(q.last.p / corvane::pure_saturation_T(m, q.last.T).p, 1.0, 1e-6);
        const double T = 0.8 * q.T_zero;
        const auto at = ideal_curve(m, row.which, {.T = {T}}).points;
        ASSERT_EQ(at.size(), 1u);
        EXPECT_NEAR(row.T(at[0].rho * b) * unit, T, 1e-9 * unit);
    }
    EXPECT_EQ(th_code([&] { ideal_curve(m, IdealCurve::joule); }), 0);  // there is none
    EXPECT_EQ(th_code([&] { ideal_curve(m, IdealCurve::zeno, {.T = {-1.0}}); }), 5);
    EXPECT_EQ(th_code([&] { ideal_curve(m, IdealCurve::zeno, {.T_min = std::nan("")}); }), 5);
    // Without its derivatives the same curve, as far as differences go.
    const auto plain = ideal_curve(VdwModel(), IdealCurve::joule_thomson);
    EXPECT_NEAR(plain.highest.p / m.pcrit(), 9.0, 1e-4);
}

// Z, the compressibility, the Joule–Thomson coefficient and ∂Z/∂T from the functions of the model.
TEST(IdealCurves, MeetTheirConditions) {
    for (char const* equation : {"PR", "SRK", "PCSAFT", "MEOS"})
        for (IdealCurve which :
             {IdealCurve::zeno, IdealCurve::boyle, IdealCurve::joule_thomson, IdealCurve::joule}) {
            SCOPED_TRACE(testing::Message() << equation << " " << static_cast<int>(which));
            const auto fluid = corvane::open(equation, "nitrogen");
            Model1 const& m = *fluid.model;
            if (which == IdealCurve::joule && std::string(equation) == "PCSAFT") {
                EXPECT_EQ(th_code([&] { ideal_curve(m, which); }), 0);  // its B grows for ever
                continue;
            }
            const auto q = ideal_curve(m, which);
            EXPECT_GT(q.points.size(), 20u);
            EXPECT_NE(q.end, IdealCurveEnd::stuck);
            for (std::size_t k = 1; k < q.points.size(); k += 10) {
                const auto& at = q.points[k];
                const double Z = m.Z(at.rho, at.T);
                const double off = which == IdealCurve::zeno    ? Z - 1
                                   : which == IdealCurve::boyle ? m.pV(at.rho, at.T) - Z
                                   : which == IdealCurve::joule ? m.betaV(at.rho, at.T) - Z
                                                                : m.alphap(at.rho, at.T) - 1;
                EXPECT_NEAR(off, 0.0, 1e-8) << at.T << " " << at.rho;
                EXPECT_NEAR(at.p, Z * at.rho * R * at.T, 1e-9 * at.p);
            }
            // Of a mixture of one component it is the same curve.
            if (which != IdealCurve::joule_thomson || std::string(equation) == "MEOS") continue;
            const auto alone = corvane::open_mixture(
                std::string(equation) + (std::string(equation) == "PCSAFT" ? "+LB" : "+vdW1"),
                {"nitrogen", "methane"});
            Vector<double> x(2);
            x.set(0.0);
            x[0] = 1.0;
            EXPECT_NEAR(ideal_curve(*alone.model, x, which).highest.p, q.highest.p,
                        1e-6 * q.highest.p);
        }
}

// On an isenthalp T(p) is highest where it crosses the inversion curve: by bisection of h(T) at three
// pressures, which uses neither the curve nor derivatives. The vertex of the parabola through them is
// off by about the square of their distance, 1e-5 of p.
TEST(IdealCurves, InversionIsTheHighestTemperatureOfAnIsenthalp) {
    for (char const* gas : {"nitrogen", "methane", "argon", "carbon_dioxide"}) {
        const auto fluid = corvane::open("MEOS", gas);
        Model1 const& m = *fluid.model;
        const auto h = [&](double p, double T) {
            const auto state = corvane::pure_states(m, {corvane::Quantity::T, T}, {corvane::Quantity::p, p});
            return state.at(0).h;
        };
        const auto q = ideal_curve(m, IdealCurve::joule_thomson);
        int tried = 0;
        for (auto const& at : q.points) {
            if (at.T < 1.05 * m.Tcrit() || at.p < 0.1 * q.highest.p || tried++ % 5 != 0) continue;
            const double value = h(at.p, at.T);
            double T[3];
            for (int k : {0, 1, 2}) {
                const double p = at.p * (1.0 + 0.005 * (k - 1));
                double low = 0.99 * at.T, high = 1.01 * at.T;
                while (high - low > 1e-14 * high && 0.5 * (low + high) > low && 0.5 * (low + high) < high) {
                    const double mid = 0.5 * (low + high);
                    (h(p, mid) < value ? low : high) = mid;
                }
                T[k] = low;
            }
            SCOPED_TRACE(testing::Message() << gas << " " << at.T << " K");
            EXPECT_GT(T[1], T[0]);
            EXPECT_GT(T[1], T[2]);
            EXPECT_NEAR(0.005 * 0.5 * (T[2] - T[0]) / (2 * T[1] - T[0] - T[2]), 0.0, 1e-3);
        }
        EXPECT_GT(tried, 10);
    }
}
}  // namespace
