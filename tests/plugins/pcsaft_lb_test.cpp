// Mixtures of PC-SAFT against the printed formulas, and against measured bubble points.
#include "model_text.h"
#include "pcsaft_mixture_reference.h"

#include <corvane/equilibria/ffe1core.h>
#include <corvane/equilibria/ffeNcore.h>
#include <plugins/common/pcsaft/cross_association.h>
#include <tests/support/errors.h>
#include <tests/support/mixtures.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

TEST(PcSaftLB, TernariesAreThoseOfThePublishedForm) {
    struct Row {
        std::vector<std::string> names;
        std::vector<double> x;
        int water_sites;
    };
    const std::vector<Row> rows{{{"methane", "butane", "carbon_dioxide"}, {0.2, 0.5, 0.3}, 0},
                                {{"ethanol", "hexane", "carbon_dioxide"}, {0.6, 0.3, 0.1}, 0},
                                {{"methane", "ethanol", "water"}, {0.1, 0.3, 0.6}, 2},
                                {{"water", "methanol", "1_pentanol"}, {0.4, 1e-9, 0.6 - 1e-9}, 1}};
    for (Row const& row : rows) {
        const Mixture m = mixture_of("PCSAFT", "LB", row.names);
        reference::PcSaftMixture exact{{}, 0.04, -0.01};
        for (int i = 0; i < 3; ++i) {
            if (m->mdl1[i]->name() == std::string("water")) m->param(6, i, i, row.water_sites);
            double par[8];
            for (int k = 0; k < 8; ++k) par[k] = m->param(k, i, i);
            exact.par.push_back({par[0], par[1], par[2], par[3], par[4], par[5], par[6], par[7]});
            for (int j = 0; j < i; ++j) {
                m->param(0, i, j, exact.k);
                m->param(1, j, i, exact.l);
            }
        }
        for (auto [T, eta] :
             {std::pair(280.0, 1e-7), std::pair(450.0, 0.12), std::pair(300.0, 0.45)}) {
            double packing = 0;
            const Vector<double> x = vec({row.x[0], row.x[1], row.x[2]});
            for (int i = 0; i < 3; ++i) packing += x[i] * m->param(2, i, i) * m->param(3, i, i);
            const double rho = eta / packing;
            const Vector<double> rho_i = x * rho;
            const std::vector<double> n{rho_i[0], rho_i[1], rho_i[2]};
            SCOPED_TRACE(testing::Message() << row.names[0] << "+" << row.names[1] << " T = " << T
                                            << " eta = " << eta);
            const auto want = [&](std::vector<int> along) {
                return static_cast<double>(exact.derivative(n, T, along));
            };
            constexpr int all = reference::PcSaftMixture::all,
                          kT = reference::PcSaftMixture::temperature;
            double d[9], mu[3], mu_T[3], mu_rho[9];
            ASSERT_EQ(m->derivatives()->deriv(rho, T, x, 2, 2, d), 1);
            m->derivatives()->potentials(rho_i, T, mu, mu_T, mu_rho);
            // With F = rho·a: rho·∂F/∂rho = F + rho²·a_r and rho²·∂²F/∂rho² = 2·rho²·a_r +
            // rho³·a_rr.
            const double F = want({}) / rho, F_r = want({all}) / rho, F_T = want({kT}) / rho,
                         F_rT = want({all, kT}) / rho, F_TT = want({kT, kT}) / rho,
                         F_rr = want({all, all}) / rho;
            const double size = std::max({std::fabs(F), std::fabs(F_r), std::fabs(F_T),
                                          std::fabs(F_rT), std::fabs(F_TT), std::fabs(F_rr)});
            // Terms that cancel in part, and 1/(1 − eta) roundings of eta per order.
            const double tolerance = 4e-14 * size;
            EXPECT_NEAR(m->Ar(rho, T, x), F, tolerance);
            EXPECT_NEAR(d[0], F, tolerance);
            EXPECT_NEAR(d[3], F_r - F, tolerance);
            EXPECT_NEAR(m->Z(rho, T, x) - 1, F_r - F, tolerance + 4e-16);
            EXPECT_NEAR(d[1], F_T, tolerance);
            EXPECT_NEAR(d[2], F_TT, tolerance);
            EXPECT_NEAR(d[4], F_rT - F_T, tolerance);
            EXPECT_NEAR(d[6], F_rr - 2 * (F_r - F), 4 * tolerance);
            EXPECT_NEAR(m->betaV(rho, T, x), 1 + F_r - F + F_rT - F_T, tolerance + 4e-16);
            for (int i = 0; i < 3; ++i) {
                EXPECT_NEAR(mu[i], want({i}) / n[i], 10 * tolerance) << i;
                EXPECT_NEAR(mu_T[i], want({i, kT}) / n[i], 10 * tolerance) << i;
                EXPECT_NEAR(mu[i], m->myr(rho_i, T, i), 1e-15 * (size + std::fabs(mu[i])));
                for (int j = 0; j <= i; ++j) {
                    const double w = want({i, j}) / n[i] / n[j];
                    EXPECT_NEAR(mu_rho[3 * i + j], w, 1e-13 * (size / rho + std::fabs(w)))
                        << i << j;
                }
            }
        }
    }
}
}  // namespace
