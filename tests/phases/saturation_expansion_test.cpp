// The precomputed saturation curve of a pure fluid.
#include "support/shipped.h"
#include "support/vdw_model.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>
#include <quadmath.h>

using corvane::SaturationExpansion;

namespace {
using Quad = __float128;
using Point = SaturationExpansion::Point;

/// A cubic equation with 113 bits: Z = 1/(1 − y) − q·y/(1 + u·y + w·y²), y = b·rho.
struct Cubic {
    Quad u, w, q;

    Quad P(Quad y) const { return y / (1 - y) - q * y * y / D(y); }
    Quad slope(Quad y) const {
        return 1 / ((1 - y) * (1 - y)) - q * y * (2 + u * y) / (D(y) * D(y));
    }
    /// Ar + Z + ln y, whose slope in y is that of P over y.
    Quad potential(Quad y) const {
        const Quad s = sqrtq(u * u - 4 * w),
                   I = s > 0 ? log1pq(s * y / (1 + (u - s) / 2 * y)) / s : y;
        return -log1pq(-y) - q * I + P(y) / y + logq(y);
    }
    Quad D(Quad y) const { return 1 + u * y + w * y * y; }

    /// Newton's method for equal pressures and potentials from a start.
    void saturated(Quad& liquid, Quad& vapour) const {
        for (int k = 0; k < 60; ++k) {
            const Quad f = P(liquid) - P(vapour), g = potential(liquid) - potential(vapour);
            const Quad l = slope(liquid), v = slope(vapour),
                       det = l * v * (1 / liquid - 1 / vapour);
            const Quad x = v * (f / vapour - g) / det, y = l * (f / liquid - g) / det;
            liquid += x;
            vapour += y;
            if (fabsq(x / liquid) + fabsq(y / vapour) < 1e-22) return;
        }
        ADD_FAILURE() << "no solution in extended precision";
    }
};

/// q of Soave's equation (Chem. Eng. Sci. 27 (1972) 1197), Tc, pc and omega given.
Quad srk_q(Model1 const& m, Quad T) {
    const Quad c = cbrtq(2) - 1, omega = m.param(3), Tr = T / m.param(1);
    const Quad root = 1 + (0.48 + omega * (1.574 - omega * 0.176)) * (1 - sqrtq(Tr));
    return root * root / Tr / (3 * c * c);
}

/// q of Peng and Robinson's equation with its standard temperature function.
Quad pr_q(Model1 const& m, Quad T) {
    const Quad t = sqrtq(8), yc = 1 / (1 + cbrtq(4 - t) + cbrtq(4 + t));
    const Quad qc = (8 + 40 * yc) / (49 - 37 * yc) / (yc / (3 + yc)), omega = m.param(3);
    const Quad slope = 0.37464 + omega * (1.54226 - omega * 0.26992), Tr = T / m.param(1);
    const Quad root = 1 + slope * (1 - sqrtq(Tr));
    return qc * root * root / Tr;
}

// Every digit against the same equation in extended precision.
TEST(SaturationExpansion, IsTheEquationsCurve) {
    const Model propane = load_set("PR", "propane"), argon = load_set("PR", "argon");
    const VdwModel vdw;  // as somebody else's plug-in: without derivatives of its own
    for (Model1 const* m : std::initializer_list<Model1 const*>{propane.get(), argon.get(), &vdw}) {
        const bool pr = m != &vdw;
        const SaturationExpansion curve(*m);
        EXPECT_NEAR(curve.T_critical() / m->Tcrit(), 1, pr ? 1e-14 : 1e-7) << m->name();
        for (double Tr : {0.22, 0.3, 0.45, 0.6, 0.7312, 0.85, 0.93, 0.9701, 0.985, 0.995, 0.9987,
                          0.9996, 0.99989, 0.9999, 0.99999, 0.9999999}) {
            SCOPED_TRACE(testing::Message() << m->eos() << " " << m->name() << " " << Tr);
            const double T = Tr * m->Tcrit(), b = m->vs();
            Point s;
            if (!curve.at_T(T, s)) {
                EXPECT_FALSE(pr);
                continue;
            }
            const Cubic cubic =
                pr ? Cubic{2, -1, pr_q(*m, T)} : Cubic{0, 0, 27 * Quad(m->Ts()) / (8 * Quad(T))};
            Quad liquid = b * s.rhoL, vapour = b * s.rhoV;
            cubic.saturated(liquid, vapour);
            const double p = static_cast<double>(cubic.P(vapour) * R * T / b);
            const auto off = [](double x, Quad y) { return static_cast<double>(fabsq(x / y - 1)); };
            const auto bound = curve.bound(T);
            EXPECT_LE(off(s.rhoL, liquid / b), bound.rhoL);
            EXPECT_LE(off(s.rhoV, vapour / b), bound.rhoV);
            EXPECT_LE(off(s.p, p), bound.p);
            EXPECT_LE(off(curve.T_at(p), T), bound.T);
            if (!pr || Tr > 0.9999) continue;
            // The rest is rounding: of T, by the slope of ln p at the lowest temperatures, and of
            // what the model returns.
            const auto q = corvane::pure_saturation_T(*m, T);
            EXPECT_LE(std::max({off(q.p, p), off(q.rhoL, liquid / b), off(q.rhoV, vapour / b)}),
                      5e-14);
            EXPECT_LE(off(s.rhoL, liquid / b), 1e-13);
            EXPECT_LE(off(s.rhoV, vapour / b), 1e-13);
            EXPECT_LE(off(s.p, p), 1e-13);
        }
    }
}

// Against the solver without a start, within the bounds of both, for smooth equations and for those
// that are not analytic at their critical point; and T(p) back again, which rises with p.
TEST(SaturationExpansion, MeetsTheSolverWithinTheBounds) {
    const struct {
        char const *eos, *name;
        double T_min;  // of the critical temperature: what the curve has to reach down to
    } rows[] = {{"SRK", "methane", 0.21},    {"PR", "water", 0.21},
                {"PCSAFT", "propane", 0.21}, {"PCSAFT", "ethanol", 0.21},
                {"MEOS", "propane", 0.21},   {"MEOS", "carbon_dioxide", 0.7},
                {"MEOS", "water", 0.42},     {"MEOS", "nitrogen", 0.5}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.eos << " " << row.name);
        const Model m = load_set(row.eos, row.name);
        const SaturationExpansion curve(*m);
        const double Tc = curve.T_critical();
        EXPECT_LE(curve.T_min(), row.T_min * Tc);
        EXPECT_GE(curve.T_max(), Tc * (1 - 1e-9));
        double last = 0.0;
        for (int k = 0; k <= 80; ++k) {
            const double tau =
                k < 60 ? 1 - curve.T_min() / Tc - k / 60.0 * (1 - curve.T_min() / Tc) * 0.999
                       : std::pow(10.0, -3 - (k - 60) * 0.25);
            const double T = std::max(curve.T_min(), Tc * (1 - tau));
            Point s, back;
            ASSERT_TRUE(curve.at_T(T, s)) << tau;
            const auto q = corvane::pure_saturation_T(*m, T);
            const auto bound = curve.bound(T);
            EXPECT_NEAR(s.p / q.p, 1, bound.p + q.value_error) << tau;
            EXPECT_NEAR(s.rhoL / q.rhoL, 1, bound.rhoL + q.rho_error) << tau;
            EXPECT_NEAR(s.rhoV / q.rhoV, 1, bound.rhoV + q.rho_error) << tau;
            if (tau > 1e-4) {
                EXPECT_LE(bound.rhoV, 2e-8) << tau;
            }
            if (k > 0 && !curve.at_p(s.p, back)) continue;
            EXPECT_NEAR(back.T / T, 1, k > 0 ? 4e-15 : 1) << tau;
            EXPECT_GE(back.T, last);
            last = back.T;
            const auto sure = curve.certified_T(*m, T);
            EXPECT_NEAR(sure.rhoV / q.rhoV, 1, sure.rho_error + q.rho_error);
        }
        const double p = 0.4 * m->pcrit();
        const auto sure = curve.certified_p(*m, p), cold = corvane::pure_saturation_p(*m, p);
        EXPECT_NEAR(sure.T / cold.T, 1, sure.value_error + cold.value_error);
        EXPECT_LE(sure.value_error, 1e-11);
    }
}

// At given p the error of T moves the densities, next to the critical point by many times itself.
TEST(SaturationExpansion, BoundsAtGivenPressureHold) {
    const auto check = [&](Model1 const& m, double p, corvane::PureSaturation const& q) {
        SCOPED_TRACE(testing::Message() << m.eos() << " " << m.name() << " " << q.T);
        const bool pr = std::string_view(m.eos()) == "PR";
        const double b = m.vs();
        Quad T = q.T, liquid = b * Quad(q.rhoL), vapour = b * Quad(q.rhoV);
        const auto p_at = [&](Quad t) {
            const Cubic cubic = pr ? Cubic{2, -1, pr_q(m, t)} : Cubic{1, 0, srk_q(m, t)};
            cubic.saturated(liquid, vapour);
            return cubic.P(vapour) * R * t / b;
        };
        const Quad h = T * 1e-10, slope = (p_at(T) - p_at(T - h)) / h;
        for (int it = 0; it < 3; ++it) T += (p - p_at(T)) / slope;
        ASSERT_LT(double(fabsq(p_at(T) / p - 1)), 1e-20);
        const auto off = [](Quad x, Quad y) { return double(fabsq(x / y - 1)); };
        EXPECT_LE(off(q.T, T), q.value_error);
        EXPECT_LE(std::max(off(q.rhoL, liquid / b), off(q.rhoV, vapour / b)), q.rho_error);
        EXPECT_LE(off(logq(Quad(q.rhoL) / q.rhoV), logq(liquid / vapour)), q.apart_error);
    };
    const Model propane = load_set("PR", "propane"), helium = load_set("SRK", "helium");
    for (Model1 const* m : {propane.get(), helium.get()}) {
        const SaturationExpansion curve(*m);
        for (double Tr : {0.6, 0.9, 0.99, 0.995, 0.999, 0.9999, 0.99999, 0.999999})
            for (int k = 0; k < 40; ++k) {
                const double p = curve.p_at(Tr * curve.T_critical()) * (1 - 1e-4 * k * (1 - Tr));
                check(*m, p, corvane::pure_saturation_p(*m, p));
                check(*m, p, curve.certified_p(*m, p));
            }
    }
    const double soft = 0.22428875537677523;  // where T is off by a third of its bound
    check(*helium, soft, corvane::pure_saturation_p(*helium, soft));
}

TEST(SaturationExpansion, AnswersWithinItsRangeOnly) {
    const Model m = load_set("PR", "propane");
    const SaturationExpansion curve(*m);
    Point s{1, 2, 3, 4};
    for (double T : {-1.0, 0.0, 0.99 * curve.T_min(), curve.T_critical(), 400.0, double(NAN),
                     double(INFINITY)}) {
        EXPECT_FALSE(curve.at_T(T, s)) << T;
        EXPECT_TRUE(std::isnan(curve.p_at(T)) && std::isnan(curve.bound(T).p)) << T;
    }
    for (double p :
         {-1.0, 0.0, 0.5 * curve.p_min(), 1.0001 * curve.p_max(), double(NAN), double(INFINITY)})
        EXPECT_FALSE(curve.at_p(p, s)) << p;
    EXPECT_EQ(s.T, 1);  // untouched
    EXPECT_TRUE(curve.at_T(curve.T_min(), s) && curve.at_p(curve.p_max(), s));
    // a certificate is to be had beyond, too, and a refusal as without the curve
    EXPECT_THROW(curve.certified_T(*m, 400), corvane::EquilibriumFailure);
    VdwModel none("none", 150, -1);
    EXPECT_THROW(SaturationExpansion{none}, ThException);
}

// Bytes come back as they were, or are refused; a changed parameter is seen.
TEST(SaturationExpansion, IsKeptAsBytes) {
    Model m = load_set("PR", "propane");
    const SaturationExpansion curve(*m);
    const std::string bytes = curve.bytes();
    const auto back = SaturationExpansion::from_bytes(bytes);
    ASSERT_TRUE(back);
    for (double T : {100.0, 200.0, 300.0, 369.0, 369.889}) {
        Point a, b;
        EXPECT_TRUE(curve.at_T(T, a) && back->at_T(T, b));
        EXPECT_TRUE(a.p == b.p && a.rhoL == b.rhoL && a.rhoV == b.rhoV);
        EXPECT_TRUE(back->at_p(a.p, b) && b.T == curve.T_at(a.p));
    }
    EXPECT_TRUE(back->same_as(*m));
    for (std::size_t i = 0; i < bytes.size(); i += i < 100 ? 1 : 97) {
        std::string damaged = bytes;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
        EXPECT_FALSE(SaturationExpansion::from_bytes(damaged)) << i;
        EXPECT_FALSE(SaturationExpansion::from_bytes(bytes.substr(0, i))) << i;
    }
    const double omega = m->param(3);
    m->param(3, omega * (1 + 1e-15));
    EXPECT_FALSE(curve.same_as(*m));
    m->param(3, omega);
    EXPECT_TRUE(curve.same_as(*m));
}
}  // namespace
