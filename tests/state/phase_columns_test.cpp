// Many states at once against the states one by one.
#include "support/errors.h"
#include "support/shipped.h"

#include <corvane/core/lanes.h>
#include <corvane/state/phase_columns.h>
#include <corvane/state/phase_properties.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using corvane::PhaseProperties;
using corvane::PropertyColumns;
constexpr double kUnit = 0x1p-52;

/// States in and around the two-phase region, close to the critical point, dilute and dense.
struct States {
    std::vector<double> T, rho;
    States(Model1 const& m, int n) {
        double a = 0, b = 0;
        for (int i = 0; i < n; ++i) {
            a = std::fmod(a + 0.6180339887498949, 1.0), b = std::fmod(b + 0.4142135623730951, 1.0);
            T.push_back((0.45 + 2.5 * a) * m.Tcrit());
            rho.push_back(std::pow(10.0, -6 + 6.4 * b) / m.vcrit());
        }
        for (double off : {1e-9, 1e-6, 1e-3, -1e-4}) {
            T.push_back((1 + off) * m.Tcrit());
            rho.push_back((1 + 2 * off) / m.vcrit());
        }
    }
    std::size_t size() const { return T.size(); }
};

using Table = std::array<std::vector<double>, 16>;
std::size_t calculate(Model1 const& m, States const& s, Table& t, int threads) {
    for (auto& column : t) column.assign(s.size(), -1);
    const PropertyColumns c{t[0].data(),  t[1].data(),  t[2].data(),  t[3].data(),
                            t[4].data(),  t[5].data(),  t[6].data(),  t[7].data(),
                            t[8].data(),  t[9].data(),  t[10].data(), t[11].data(),
                            t[12].data(), t[13].data(), t[14].data(), t[15].data()};
    return corvane::phase_properties(m, s.size(), s.T.data(), s.rho.data(), c, threads);
}
std::array<double, 16> values(PhaseProperties const& q) {
    return {q.p,  q.Z, q.u,     q.h,       q.g,       q.a,     q.s,       q.cv,
            q.cp, q.w, q.mu_JT, q.kappa_T, q.alpha_p, q.dp_dT, q.dp_drho, q.n_s};
}

// Cubic equations of each alpha function, with volume translation; reference equations with and
// without non-analytic terms, with terms that are not evaluated in lanes; a model without the
// extension. What divides by a small P_rho or cv is as uncertain as that is.
TEST(PhaseColumns, AreTheStatesOneByOne) {
    struct Case {
        char const *eos, *name;
        double units;  // of the largest term
    };
    for (Case const& c : {Case{"PR", "propane", 4},
                          {"SRK", "water", 4},
                          {"PR", "hydrogen", 4},
                          {"MEOS", "water", 2},
                          {"MEOS", "methane", 2},
                          {"MEOS", "carbon_dioxide", 2},
                          {"MEOS", "methanol", 2},
                          {"MEOS", "r125", 2},
                          {"PCSAFT", "propane", 0}}) {
        SCOPED_TRACE(std::string(c.eos) + ' ' + c.name);
        const Model m = load_set(c.eos, c.name);
        const bool caloric = [&] {
            try {
                return m->ideal.load(), true;
            } catch (ThException const&) {
                return false;
            }
        }();
        const States s(*m, 2001);
        Table t;
        std::size_t failed = 0;
        const std::size_t told = calculate(*m, s, t, 1);
        for (std::size_t i = 0; i < s.size(); ++i) {
            PhaseProperties q;
            try {
                q = corvane::phase_properties(*m, s.T[i], s.rho[i]);
            } catch (ThException const&) {
                ++failed;
                for (auto const& column : t) EXPECT_TRUE(std::isnan(column[i]));
                continue;
            }
            const auto expected = values(q);
            const double RT = R * q.T, P_rho = q.dp_drho / RT, P_T = q.dp_dT / (q.rho * R);
            // Rounding of Z, P_rho and P_T, of a, u and s, and what quotients make of them.
            const double Z = 1 + std::fabs(q.Z) + std::fabs(P_rho) + std::fabs(P_T);
            const double of_a =
                1 + std::fabs(q.a_res) + std::fabs(q.h_res) + std::fabs(q.s_res) +
                std::fabs(q.cv_res) +
                (caloric ? std::fabs(q.s / R) + std::fabs(q.u / RT) + std::fabs(std::log(q.rho))
                         : 0);
            const double slope = Z / std::fabs(P_rho), heat = of_a / std::fabs(q.cv / R),
                         both = slope + heat + Z;
            const double scale[16] = {Z * q.rho * RT,
                                      Z,
                                      RT * of_a,
                                      RT * (of_a + Z),
                                      RT * (2 * of_a + Z),
                                      RT * of_a * 2,
                                      R * of_a,
                                      R * of_a,
                                      R * (of_a + P_T * P_T / std::fabs(P_rho) * (1 + 2 * slope)),
                                      std::fabs(q.w) * both * both,
                                      std::fabs(q.mu_JT) * both * both * both + both / q.rho,
                                      std::fabs(q.kappa_T) * slope,
                                      std::fabs(q.alpha_p) * 2 * slope,
                                      q.rho * R * Z,
                                      RT * Z,
                                      std::fabs(q.n_s) * both * both * Z / std::fabs(q.Z)};
            for (unsigned k = 0; k < 16; ++k) {
                if (std::isnan(expected[k]))
                    EXPECT_TRUE(std::isnan(t[k][i])) << k;
                else
                    ASSERT_NEAR(t[k][i], expected[k],
                                (c.units + (c.units > 0 ? 2 : 0)) * kUnit * scale[k])
                        << "column " << k << ", T = " << q.T << ", rho = " << q.rho;
            }
        }
        EXPECT_EQ(told, failed);
        Table again;
        EXPECT_EQ(calculate(*m, s, again, 3), failed);
        for (unsigned k = 0; k < 16; ++k)
            for (std::size_t i = 0; i < s.size(); ++i)
                ASSERT_TRUE(again[k][i] == t[k][i] || std::isnan(t[k][i])) << k << ' ' << i;
    }
}

// Pressures of water are bit by bit the same: every function of T and rho is.
TEST(PhaseColumns, PressuresOfReferenceEquationsAreTheSame) {
    for (char const* name : {"water", "carbon_dioxide", "methane", "propane"}) {
        const Model m = load_set("MEOS", name);
        States s(*m, 501);
        for (double of_Tc : {1.0, 1.001, 0.98}) {  // the middle of non-analytic terms
            s.T.push_back(of_Tc * m->Tcrit());
            s.rho.push_back(1 / m->vcrit());
        }
        std::vector<double> p(s.size());
        PropertyColumns c;
        c.p = p.data();
        EXPECT_EQ(corvane::phase_properties(*m, s.size(), s.T.data(), s.rho.data(), c), 0u);
        for (std::size_t i = 0; i < s.size(); ++i)
            EXPECT_EQ(p[i], corvane::phase_properties(*m, s.T[i], s.rho[i]).p)
                << name << ' ' << s.T[i] << ' ' << s.rho[i];
    }
}

TEST(PhaseColumns, StatesThatAreNone) {
    const Model m = load_set("PR", "propane");
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 inf = std::numeric_limits<double>::infinity();
    const std::vector<double> T{300, -1, 300, nan, inf, 300, 300},
        rho{1e-3, 1e-3, 0, 1e-3, 1e-3, 1.0, 2e-3};
    std::vector<double> p(T.size()), h(T.size());
    PropertyColumns c;
    c.p = p.data(), c.h = h.data();
    EXPECT_EQ(corvane::phase_properties(*m, T.size(), T.data(), rho.data(), c),
              5u);  // 1 mol/cm³ is past the pole
    for (std::size_t i : {1, 2, 3, 4, 5}) EXPECT_TRUE(std::isnan(p[i]) && std::isnan(h[i])) << i;
    EXPECT_NEAR(p[0], corvane::phase_properties(*m, 300, 1e-3).p, 1e-15);
    EXPECT_NEAR(p[6], corvane::phase_properties(*m, 300, 2e-3).p, 1e-14);
    EXPECT_TRUE(std::isnan(h[0]));  // no ideal-gas table was read
    EXPECT_EQ(corvane::phase_properties(*m, 0, nullptr, nullptr, c), 0u);
    EXPECT_EQ(corvane::phase_properties(*m, 4, T.data() + 1, rho.data() + 1, c), 4u);
}

// Both roots and the stable one, below and above the critical point, over threads; and the pressure
// of what comes out.
TEST(PhaseColumns, DensitiesAreThoseOfVcalc) {
    using corvane::Root;
    for (auto const& [eos, name] : {std::pair{"PR", "propane"},
                                    {"MEOS", "water"},
                                    {"MEOS", "carbon_dioxide"},
                                    {"MEOS", "methane"},
                                    {"MEOS", "methanol"}}) {
        SCOPED_TRACE(std::string(eos) + name);
        const Model m = load_set(eos, name);
        std::vector<double> T, p;
        double a = 0, b = 0;
        for (int i = 0; i < 9000; ++i) {
            a = std::fmod(a + 0.6180339887498949, 1.0), b = std::fmod(b + 0.4142135623730951, 1.0);
            T.push_back((0.6 + a) * m->Tcrit()), p.push_back(std::pow(10, 3 * b - 2));
        }
        const double nan = std::numeric_limits<double>::quiet_NaN();
        for (auto const& [t, q] : {std::pair{-1.0, 1.0}, {nan, 1.0}, {300.0, nan}, {300.0, -1e9}})
            T.push_back(t), p.push_back(q);
        for (const Root root : {Root::dense, Root::dilute, Root::stable}) {
            std::vector<double> rho(T.size()), again(T.size()), back(T.size());
            EXPECT_EQ(corvane::densities(*m, T.size(), p.data(), T.data(), rho.data(), root), 4u);
            EXPECT_EQ(corvane::densities(*m, T.size(), p.data(), T.data(), again.data(), root, 3),
                      4u);
            PropertyColumns c;
            c.p = back.data();
            EXPECT_EQ(corvane::phase_properties(*m, T.size(), T.data(), rho.data(), c), 4u);
            for (std::size_t i = 0; i < 9000; ++i) {
                double first = 0, second = 0;
                const int phase = root == Root::dense ? 1 : root == Root::dilute ? 3 : -1;
                ASSERT_GT(m->vcalc(p[i], T[i], phase, first, second), 0);
                ASSERT_TRUE(rho[i] == first && again[i] == first) << T[i] << ' ' << p[i];
                // Rounding of a dense liquid's pressure is that of its stiffness.
                ASSERT_NEAR(back[i], p[i], 1e-10 * (p[i] + rho[i] * R * T[i] * 100));
            }
            for (std::size_t i = 9000; i < T.size(); ++i) EXPECT_TRUE(std::isnan(rho[i]));
        }
    }
}

// log(1 + x) and log(x) against the long ones, over all magnitudes, and where they end.
TEST(PhaseColumns, LogarithmsAreGoodToOneUnit) {
    double worst[2] = {0, 0}, x = 0;
    for (int i = 0; i < 60000; ++i) {
        x = std::fmod(x + 0.6180339887498949, 1.0);
        const double size = std::pow(10.0, -18 + 24 * std::fmod(7 * x, 1.0));
        for (double at : {size, -std::min(size, 1 - 1e-3 * x), x - 0.5, 3 * x}) {
            corvane::lanes::V4 one{at, at, at, at}, two = one;
            corvane::lanes::log_lanes<false>(one);
            const long double exact = std::log1p(static_cast<long double>(at));
            if (exact != 0)
                worst[0] = std::max(worst[0], std::fabs(static_cast<double>(one[1] / exact - 1)));
            if (at <= 0) continue;
            corvane::lanes::log_lanes<true>(two);
            const long double log = std::log(static_cast<long double>(at));
            if (log != 0)
                worst[1] = std::max(worst[1], std::fabs(static_cast<double>(two[2] / log - 1)));
        }
    }
    EXPECT_LE(worst[0], kUnit);
    EXPECT_LE(worst[1], kUnit);
    const double inf = std::numeric_limits<double>::infinity();
    corvane::lanes::V4 ends{-1, -2, inf, 0};
    corvane::lanes::log_lanes<false>(ends);
    EXPECT_EQ(ends[0], -inf);
    EXPECT_TRUE(std::isnan(ends[1]));
    EXPECT_EQ(ends[2], inf);
    EXPECT_EQ(ends[3], 0);
}

}  // namespace
