// Properties of a phase from one evaluation, against the functions that give them one by one.
#include "support/errors.h"
#include "support/mixtures.h"
#include "support/vdw_model.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
// Two orders of summation of the same exact derivatives.
constexpr double kRounding = 1e-11;

#define EXPECT_SAME(a, b) EXPECT_NEAR(a, b, kRounding*(1 + std::fabs(b)))

TEST(PhaseProperties, OfAPureFluidAreThoseOfItsFunctions) {
    for (char const* equation : {"PR", "SRK", "PCSAFT", "MEOS"}) {
        const corvane::Fluid fluid = corvane::open(equation, "propane");
        Model1 const& m = *fluid.model;
        for (double T : {200.0, 369.0, 600.0})
            for (double rho : {1e-8, 1e-4, 5e-3, 1.3e-2}) {
                SCOPED_TRACE(testing::Message() << equation << " T " << T << " rho " << rho);
                const auto q = corvane::phase_properties(m, T, rho);
                const double RT = R * T;
                EXPECT_SAME(q.p, m.Z(rho, T) * rho * RT);
                EXPECT_SAME(q.u / RT, m.Um(rho, T));
                EXPECT_SAME(q.h / RT, m.Hm(rho, T));
                EXPECT_SAME(q.s / R, m.Sm(rho, T));
                EXPECT_SAME(q.g / RT, m.Gm(rho, T));
                EXPECT_SAME(q.a / RT, m.Am(rho, T));
                EXPECT_SAME(q.cv / R, m.CVm(rho, T));
                EXPECT_SAME(q.cp / R, m.Cpm(rho, T));
                EXPECT_SAME(q.alpha_p * T, m.alphap(rho, T));
                EXPECT_SAME(q.kappa_T * rho * RT, m.kappaT(rho, T));
                EXPECT_SAME(q.dp_dT, rho * R * m.betaV(rho, T));
                EXPECT_SAME(q.s_res, m.Sr(rho, T));
                EXPECT_SAME(q.h_res, m.Hr(rho, T));
                if (q.n_s * q.p > 0) {  // else w is no number
                    EXPECT_SAME(q.n_s * q.p, 1e-3 * rho * q.w * q.w * q.M);  // MPa
                }
                if (rho < 1e-7) {
                    EXPECT_NEAR(q.n_s, q.cp / q.cv, 1e-3);
                }
            }
    }
}

// IAPWS-95 (2018), table 7: speed of sound in m/s at T [K] and rho [kg/m³]
TEST(PhaseProperties, SpeedOfSoundOfWaterIsThePrintedOne) {
    struct Row {
        double T, rho, w;
    };
    const corvane::Fluid water = corvane::open("MEOS", "water");
    const double M = water.model->M();
    // the equation has its own gas constant, 8.314371357587 J/(mol K)
    const double scale = std::sqrt(8.314371357587 / R);
    for (Row const& row : {Row{300, 0.9965560e3, 0.150151914e4}, Row{300, 0.1188202e4, 0.244357992e4},
                           Row{500, 0.435, 0.548314253e3}, Row{500, 0.838025e3, 0.127128441e4},
                           Row{647, 0.358e3, 0.252145078e3}, Row{900, 0.241, 0.724027147e3},
                           Row{900, 0.870769e3, 0.201933608e4}})
        EXPECT_NEAR(
            corvane::phase_properties(*water.model, row.T, row.rho / M * 1e-3).w * scale / row.w,
            1.0, 1.5e-5)  // the heat capacity of the ideal gas is a table
            << row.T;
}

TEST(PhaseProperties, OfAMixtureAreThoseOfItsFunctions) {
    for (auto const& [equation, theory] : {std::pair{"PR", "vdW1"}, {"PCSAFT", "LB"}}) {
        const Mixture m = mixture_of(equation, theory, {"methane", "propane", "nitrogen"});
        for (auto const& x : {vec({0.5, 0.3, 0.2}), vec({0.7, 0.3, 0.0})}) {
            const double T = 300, rho = 4e-3, RT = R * T;
            SCOPED_TRACE(equation);
            const auto q = corvane::phase_properties(*m, T, rho, x);
            EXPECT_SAME(q.h / RT, m->Hm(rho, T, x));
            EXPECT_SAME(q.s / R, m->Sm(rho, T, x));
            EXPECT_SAME(q.kappa_T * rho * RT, m->kappaT(rho, T, x));
            const auto c = corvane::heat_capacities(*m, rho, T, x);
            EXPECT_SAME(q.cv / R, c.CVm);
            EXPECT_SAME(q.cp / R, c.Cpm);
            double g = 0, M = 0;  // Σ x_i·μ_i, from the potentials
            for (int i = 0; i < 3; ++i) {
                M += x[i] * m->mdl1[i]->M();
                if (x[i] > 0)
                    g += x[i] * (m->my(x * rho, T, i) + m->mdl1[i]->ideal.Gm(T));
            }
            EXPECT_SAME(q.g / RT, g);
            EXPECT_SAME(q.M, M);
        }
    }
}

TEST(PhaseProperties, WithoutExtensionOrTableAndRefusals) {
    VdwModel m;  // no exact derivatives, no ideal-gas table
    const double T = 200, rho = 5e-3, y = rho * 32, alpha = 27.0 / 8 * 150 / T;
    const auto q = corvane::phase_properties(m, T, rho);
    EXPECT_NEAR(q.Z, 1 / (1 - y) - alpha * y, 1e-14);
    EXPECT_NEAR(q.h_res, q.Z - 1 - alpha * y, 1e-11);  // closed forms; numerical derivatives
    EXPECT_NEAR(q.cv_res, 0.0, 1e-9);
    EXPECT_NEAR(q.dp_drho / (R * T), 1 / ((1 - y) * (1 - y)) - 2 * alpha * y, 1e-11);
    EXPECT_TRUE(std::isnan(q.h) && std::isnan(q.s) && std::isnan(q.cp) && std::isnan(q.w));
    const double nan = std::nan("");
    const corvane::Fluid propane = corvane::open("PR", "propane");
    const double beyond = 1.2 / propane.model->vs();  // past the pole
    for (auto const& [T_, rho_] : {std::pair{-1.0, rho}, {0.0, rho}, {nan, rho}, {T, 0.0},
                                   {T, -rho}, {T, nan}, {T, 1e300 * 1e300}, {T, beyond}})
        EXPECT_EQ(th_code([&] { corvane::phase_properties(*propane.model, T_, rho_); }),
                  th_out_of_range)
            << T_ << " " << rho_;
}
}  // namespace
