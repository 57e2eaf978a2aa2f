// Equilibria of many states against those one by one.
#include "support/errors.h"
#include "support/mixtures.h"
#include "support/shipped.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {
using corvane::Certificate;
using corvane::FlashGiven;
using corvane::RowStatus;
using corvane::Saturated;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
using Column = std::vector<double>;

/// Equal bit by bit, or both not-a-number.
bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}
void expect_same(Column const& a, Column const& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) EXPECT_TRUE(same(a[i], b[i])) << i;
}

/// Columns of certificates with room for n rows.
struct Told {
    Column dmu, dp, tpd, value, x, rho, apart;
    std::vector<std::uint8_t> flags;
    std::vector<RowStatus> status;
    explicit Told(std::size_t n)
        : dmu(n, 7),
          dp(n, 7),
          tpd(n, 7),
          value(n, 7),
          x(n, 7),
          rho(n, 7),
          apart(n, 7),
          flags(n, 99),
          status(n) {}
    void in(corvane::CertificateColumns& c) {
        c.dmu = dmu.data(), c.dp = dp.data(), c.tpd = tpd.data(), c.value_error = value.data();
        c.x_error = x.data(), c.rho_error = rho.data(), c.apart_error = apart.data();
        c.flags = flags.data(), c.status = status.data();
    }
    void expect(std::size_t i, Certificate const& c) const {
        EXPECT_EQ(status[i], RowStatus::solved);
        EXPECT_TRUE(same(dmu[i], c.dmu) && same(dp[i], c.dp) && same(tpd[i], c.tpd));
        EXPECT_TRUE(same(value[i], c.value_error) && same(x[i], c.x_error) &&
                    same(rho[i], c.rho_error) && same(apart[i], c.apart_error));
        EXPECT_EQ(flags[i], (c.estimated_pairs ? 1 : 0) | (c.extrapolated ? 2 : 0) |
                                (c.below_triple ? 4 : 0) | (c.near_trivial ? 8 : 0));
    }
    void expect_none(std::size_t i, RowStatus why) const {
        EXPECT_EQ(status[i], why) << i;
        for (Column const* c : {&dmu, &dp, &tpd, &value, &x, &rho, &apart})
            EXPECT_TRUE(std::isnan((*c)[i])) << i;
    }
};

TEST(EquilibriumColumns, PureSaturation) {
    for (auto const& [eos, name] : {std::pair{"PR", "propane"}, {"MEOS", "water"}}) {
        SCOPED_TRACE(eos);
        const Model m = load_set(eos, name);
        Column T, p;
        for (int k = 0; k < 150; ++k) {
            T.push_back(m->Tcrit() *
                        (0.4 + 0.0041 * k));  // the last ones are above the critical point
            p.push_back(corvane::pure_saturation_T(*m, m->Tcrit() * (0.5 + 0.003 * k)).p);
        }
        T.push_back(kNaN), T.push_back(-1), p.push_back(1e4), p.push_back(kNaN);
        const corvane::SaturationExpansion curve(*m);
        for (const bool at_T : {true, false}) {
            Column const& given = at_T ? T : p;
            const std::size_t n = given.size();
            const auto solve = [&](corvane::PureSaturationColumns const& to, int threads,
                                   corvane::SaturationExpansion const* with = nullptr) {
                return at_T ? corvane::pure_saturations_T(*m, n, given.data(), to, threads, with)
                            : corvane::pure_saturations_p(*m, n, given.data(), to, threads, with);
            };
            Told told(n);
            Column t(n), q(n), L(n), V(n), L2(n), V2(n);
            corvane::PureSaturationColumns to;
            told.in(to);
            to.T = t.data(), to.p = q.data(), to.rhoL = L.data(), to.rhoV = V.data();
            const std::size_t failed = solve(to, 1);
            std::size_t counted = 0;
            for (std::size_t i = 0; i < n; ++i) {
                SCOPED_TRACE(given[i]);
                try {
                    const auto s = at_T ? corvane::pure_saturation_T(*m, given[i])
                                        : corvane::pure_saturation_p(*m, given[i]);
                    EXPECT_TRUE(t[i] == s.T && q[i] == s.p && L[i] == s.rhoL && V[i] == s.rhoV);
                    EXPECT_TRUE(told.value[i] == s.value_error && told.rho[i] == s.rho_error &&
                                told.apart[i] == s.apart_error);
                    EXPECT_EQ(told.status[i], RowStatus::solved);
                } catch (corvane::EquilibriumFailure const& e) {
                    ++counted;
                    told.expect_none(i, e.kind() == corvane::EquilibriumFailure::Kind::no_solution
                                            ? RowStatus::no_solution
                                            : RowStatus::gave_up);
                    EXPECT_TRUE(std::isnan(q[i]) && std::isnan(L[i]) && std::isnan(t[i]));
                } catch (ThException const&) {
                    ++counted;
                    told.expect_none(i, RowStatus::invalid);
                }
            }
            EXPECT_EQ(failed, counted);
            corvane::PureSaturationColumns few;  // null columns are left alone
            few.rhoL = L2.data(), few.rhoV = V2.data();
            EXPECT_EQ(solve(few, 3), failed);
            expect_same(L, L2);
            expect_same(V, V2);
            EXPECT_EQ(solve(few, 2, &curve), failed);
            for (std::size_t i = 0; i < n; ++i) {  // both bounds, the curve's at most 1e-10
                if (std::isnan(L[i])) continue;
                EXPECT_NEAR(L2[i] / L[i], 1, 1e-10 + told.rho[i]);
                EXPECT_NEAR(V2[i] / V[i], 1, 1e-10 + told.rho[i]);
            }
        }
    }
}

/// Bubble points with compositions that differ, and rows that have none.
TEST(EquilibriumColumns, SaturationOfMixtures) {
    for (auto const& [eos, mth] : {std::pair{"PR", "vdW1"}, {"PCSAFT", "LB"}}) {
        SCOPED_TRACE(eos);
        const Mixture m = mixture_of(eos, mth, {"methane", "propane"});
        Column T, z;
        for (int k = 0; k < 140; ++k) {
            T.push_back(200 + 0.5 * k), z.push_back(0.2 + 0.002 * k), z.push_back(1 - z.back());
        }
        T.insert(T.end(), {480, 250, 250, kNaN});
        z.insert(z.end(), {0.5, 0.5, -0.5, 1.5, kNaN, 0.5, 0.5, 0.5});
        const std::size_t n = T.size();
        corvane::Validity narrow;
        narrow.T_max = 230, narrow.estimated_pairs = true;
        for (const Saturated kind : {Saturated::bubble, Saturated::dew}) {
            corvane::BatchOptions options;
            options.validity = &narrow;
            corvane::SaturationOptions one;
            one.validity = &narrow;
            Told told(n), warm_told(n);
            Column t(n), p(n), rho(n), incipient(n), x(2 * n), p2(n), p3(n), back(n);
            std::vector<int> phases(n);
            corvane::SaturationColumns to;
            told.in(to);
            to.T = t.data(), to.p = p.data(), to.rho = rho.data();
            to.rho_incipient = incipient.data(), to.x_incipient = x.data();
            to.phases = phases.data();
            const std::size_t failed =
                corvane::saturations_T(*m, kind, n, T.data(), {z.data()}, to, options);
            std::size_t counted = 0;
            for (std::size_t i = 0; i < n; ++i) {
                SCOPED_TRACE(i);
                try {
                    const auto s =
                        corvane::saturation_T(*m, kind, T[i], vec({z[2 * i], z[2 * i + 1]}), one);
                    told.expect(i, s.certificate);
                    EXPECT_TRUE(t[i] == s.T && p[i] == s.p && rho[i] == s.given.rho &&
                                incipient[i] == s.incipient.rho);
                    EXPECT_TRUE(x[2 * i] == s.incipient.x[0] && x[2 * i + 1] == s.incipient.x[1]);
                    EXPECT_EQ(phases[i], 2);
                } catch (corvane::EquilibriumFailure const&) {
                    ++counted;
                    told.expect_none(i, RowStatus::no_solution);
                } catch (ThException const&) {
                    ++counted;
                    told.expect_none(i, RowStatus::invalid);
                    EXPECT_TRUE(std::isnan(p[i]) && std::isnan(x[2 * i]) && phases[i] == 0);
                }
            }
            EXPECT_EQ(failed, counted);
            EXPECT_GE(counted, 4u);
            // From neighbours: the same within both bounds, whatever the number of threads.
            options.neighbours = true, options.threads = 3;
            corvane::SaturationColumns warm;
            warm_told.in(warm);
            warm.p = p2.data();
            EXPECT_EQ(corvane::saturations_T(*m, kind, n, T.data(), {z.data()}, warm, options),
                      failed);
            options.threads = 1;
            corvane::SaturationColumns again;
            again.p = p3.data();
            EXPECT_EQ(corvane::saturations_T(*m, kind, n, T.data(), {z.data()}, again, options),
                      failed);
            expect_same(p2, p3);
            for (std::size_t i = 0; i < n; ++i) {
                if (told.status[i] != RowStatus::solved) continue;
                EXPECT_NEAR(p2[i] / p[i], 1, told.value[i] + warm_told.value[i]) << i;
            }
            // And back to T, of the rows that have a pressure.
            corvane::SaturationColumns T_of;
            T_of.T = back.data();
            EXPECT_EQ(corvane::saturations_p(*m, kind, 60, p.data(), {z.data()}, T_of), 0u);
            for (std::size_t i = 0; i < 60; ++i) EXPECT_NEAR(back[i] / T[i], 1, 1e-8);
        }
    }
}

TEST(EquilibriumColumns, Flashes) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    ModelN const& m = *mixture.model;
    const double z[] = {0.45, 0.55};
    Column T, p;
    for (int k = 0; k < 130; ++k) T.push_back(210 + k), p.push_back(0.5 + 0.5 * (k % 20));
    T.push_back(-3), p.push_back(1);
    const std::size_t n = T.size();
    Told told(n);
    std::vector<int> phases(n);
    Column t(n), q(n), rho(n), h(n), s(n), part(3 * n), of(3 * n), x(6 * n), h2(n), x2(2 * n);
    corvane::FlashColumns to;
    told.in(to);
    to.T = t.data(), to.p = q.data(), to.rho = rho.data(), to.h = h.data(), to.s = s.data();
    to.phases = phases.data(), to.room = 3, to.fraction = part.data(), to.rho_phase = of.data();
    to.x = x.data();
    EXPECT_EQ(corvane::flashes(m, FlashGiven::pT, n, p.data(), T.data(), {z, true}, to), 1u);
    int counted[3] = {0, 0, 0};
    for (std::size_t i = 0; i + 1 < n; ++i) {
        SCOPED_TRACE(i);
        auto r = corvane::flash_pT(m, p[i], T[i], vec({z[0], z[1]}));
        corvane::add_caloric(m, vec({z[0], z[1]}), r);
        told.expect(i, r.certificate);
        ASSERT_EQ(phases[i], static_cast<int>(r.phases.size()));
        ++counted[phases[i]];
        EXPECT_TRUE(t[i] == T[i] && q[i] == p[i] && h[i] == r.h && s[i] == r.s);
        double v = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const bool there = k < r.phases.size();
            if (there) v += r.fraction[k] / r.phases[k].rho;
            EXPECT_TRUE(same(part[3 * i + k], there ? r.fraction[k] : kNaN));
            EXPECT_TRUE(same(of[3 * i + k], there ? r.phases[k].rho : kNaN));
            for (std::size_t c = 0; c < 2; ++c)
                EXPECT_TRUE(same(x[2 * (3 * i + k) + c],
                                 there ? r.phases[k].x[static_cast<int>(c)] : kNaN));
        }
        EXPECT_EQ(rho[i], 1 / v);
    }
    EXPECT_TRUE(counted[1] > 10 && counted[2] > 10);  // of both kinds
    told.expect_none(n - 1, RowStatus::invalid);
    EXPECT_TRUE(std::isnan(h[n - 1]) && std::isnan(x[6 * n - 6]) && phases[n - 1] == 0);

    // Back by other quantities, from neighbours, over threads, with room for one phase.
    corvane::BatchOptions options;
    options.neighbours = true, options.threads = 2;
    struct Way {
        FlashGiven given;
        Column const &a, &b;
    };
    for (Way const& way :
         {Way{FlashGiven::ph, p, h}, {FlashGiven::ps, p, s}, {FlashGiven::Trho, T, rho}}) {
        Told back(n);
        Column T2(n), p2(n);
        std::vector<int> many(n);
        corvane::FlashColumns one;
        back.in(one);
        one.T = T2.data(), one.p = p2.data(), one.h = h2.data(), one.x = x2.data(), one.room = 1;
        one.phases = many.data();
        EXPECT_EQ(
            corvane::flashes(m, way.given, n, way.a.data(), way.b.data(), {z, true}, one, options),
            1u);
        for (std::size_t i = 0; i + 1 < n; ++i) {
            EXPECT_NEAR(T2[i] / T[i], 1, 1e-6);  // what 1e-9 of h, s or rho leaves open
            EXPECT_NEAR(p2[i] / p[i], 1, 1e-6);
            EXPECT_EQ(many[i], phases[i]);
            EXPECT_NEAR(x2[2 * i], x[6 * i], 1e-6);
        }
        back.expect_none(n - 1, RowStatus::invalid);
    }
}

TEST(EquilibriumColumns, WhatIsMissing) {
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane"});
    m->mdl1[1]->ideal.reset();
    const double z[] = {0.5, 0.5}, p = 1, T = 250, h = -5000;
    double out = 0;
    RowStatus status{};
    corvane::FlashColumns to;
    to.h = &out, to.status = &status;
    EXPECT_EQ(corvane::flashes(*m, FlashGiven::pT, 1, &p, &T, {z, true}, to), 0u);
    EXPECT_TRUE(std::isnan(out));
    EXPECT_EQ(status, RowStatus::solved);
    EXPECT_EQ(corvane::flashes(*m, FlashGiven::ph, 1, &p, &h, {z, true}, to), 1u);
    EXPECT_EQ(status, RowStatus::no_ideal);
    EXPECT_EQ(corvane::flashes(*m, FlashGiven::pT, 0, nullptr, nullptr, {}, to), 0u);
    to.room = 0;
    EXPECT_EQ(mth_code([&] {
                  corvane::flashes(*m, FlashGiven::pT, 1, &p, &T, {z, true}, to);
              }),
              mth_dimensions);
}

}  // namespace
