// States of mixtures from two quantities: back to the state that they were taken from.
#include "support/errors.h"
#include "support/mixtures.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace {
using corvane::Given;
using corvane::mixture_state;
using What = corvane::Quantity;

struct Case {
    char const *model, *a, *b;
    double x, T, p;
};

// One and two phases, liquids, vapours and gases.
TEST(MixtureState, ComesBackFromEveryPair) {
    for (Case const& c : {Case{"PR+vdW1", "methane", "propane", 0.5, 250, 2},
                          {"PR+vdW1", "methane", "propane", 0.5, 400, 8},
                          {"PR+vdW1", "propane", "butane", 0.3, 300, 3},
                          {"SRK+vdW1", "carbon_dioxide", "ethane", 0.4, 230, 1.2},
                          {"PCSAFT+LB", "ethanol", "hexane", 0.6, 350, 0.14},
                          {"MEOS+GERG", "methane", "ethane", 0.9, 200, 4}}) {
        const auto mixture = corvane::open_mixture(c.model, {c.a, c.b});
        ModelN const& m = *mixture.model;
        const auto z = vec({c.x, 1 - c.x});
        auto q = corvane::flash_pT(m, c.p, c.T, z);
        corvane::add_caloric(m, z, q);
        double v = 0;
        for (std::size_t k = 0; k < q.phases.size(); ++k) v += q.fraction[k] / q.phases[k].rho;
        const Given T{What::T, c.T}, p{What::p, c.p}, rho{What::rho, 1 / v}, h{What::h, q.h},
            s{What::s, q.s}, u{What::u, q.h - c.p * v}, part{What::q, q.fraction.back()};
        std::vector<std::pair<Given, Given>> pairs = {{p, T}, {p, h},   {s, p},   {T, rho},
                                                      {h, s}, {u, rho}, {rho, s}, {T, s}};
        if (q.phases.size() > 1) pairs.insert(pairs.end(), {{T, part}, {p, part}});
        for (auto const& [first, second] : pairs) {
            SCOPED_TRACE(testing::Message()
                         << c.model << " " << c.T << ": " << static_cast<int>(first.what) << " "
                         << static_cast<int>(second.what));
            const auto back = mixture_state(m, first, second, z);
            EXPECT_NEAR(back.T, c.T, 1e-6 * c.T);
            EXPECT_NEAR(back.p, c.p, 1e-5 * c.p);
            EXPECT_EQ(back.phases.size(), q.phases.size());
            EXPECT_TRUE(back.certificate.holds());
        }
        // What may have several states: it is among them, and each has the values.
        for (auto const& [first, second] : std::vector<std::pair<Given, Given>>{
                 {T, h}, {u, T}, {p, rho}, {p, u}, {h, rho}}) {
            SCOPED_TRACE(testing::Message()
                         << c.model << " " << c.T << ": " << static_cast<int>(first.what) << " "
                         << static_cast<int>(second.what));
            const auto all = corvane::mixture_states(m, first, second, z);
            EXPECT_TRUE(all.complete);
            int same = 0;
            for (auto const& one : all.states) {
                same += std::fabs(one.T - c.T) < 1e-6 * c.T && std::fabs(one.p - c.p) < 1e-5 * c.p;
                EXPECT_LE(one.certificate.target, 1e-9);
            }
            EXPECT_EQ(same, 1);
        }
    }
}

TEST(MixtureState, VapourContentsAreBetweenBubbleAndDewPoint) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    ModelN const& m = *mixture.model;
    const auto z = vec({0.4, 0.6});
    for (double q : {0.0, 1e-6, 0.5, 1 - 1e-6, 1.0}) {
        const auto r = mixture_state(m, {What::q, q}, {What::T, 260.0}, z);
        ASSERT_EQ(r.phases.size(), 2u);
        EXPECT_NEAR(r.fraction[1], q, 1e-9);
        EXPECT_NEAR(r.fraction[0] * r.phases[0].x[0] + q * r.phases[1].x[0], 0.4, 1e-9);
        const double end = q == 0.0   ? corvane::bubble_T(m, 260, z).p
                           : q == 1.0 ? corvane::dew_T(m, 260, z).p
                                      : r.p;
        EXPECT_NEAR(r.p, end, 1e-9 * end);
    }
    const auto pure = mixture_state(m, {What::T, 250.0}, {What::q, 0.25}, vec({0.0, 1.0}));
    EXPECT_NEAR(pure.fraction[1], 0.25, 0);
    EXPECT_NEAR(pure.p, corvane::pure_saturation_T(*m.mdl1[1], 250).p, 1e-9);
}

// With one component the same states as of the pure fluid, which are found along branches of the equation.
TEST(MixtureState, SeveralStatesAreThoseOfThePureFluid) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    ModelN const& m = *mixture.model;
    Model1 const& propane = *m.mdl1[1];
    const auto z = vec({0.0, 1.0});
    const auto dense = corvane::pure_states(propane, {What::T, 420.0}, {What::p, 30.0}).at(0),
               two = corvane::pure_states(propane, {What::T, 300.0}, {What::q, 0.4}).at(0);
    const std::pair<Given, Given> asked[] = {{{What::T, 420.0}, {What::h, dense.h}},
                                             {{What::T, 420.0}, {What::u, dense.u}},
                                             {{What::p, two.p}, {What::rho, two.rho}},
                                             {{What::p, two.p}, {What::u, two.u}},
                                             {{What::rho, two.rho}, {What::h, two.h}}};
    int several = 0;
    for (auto const& [a, b] : asked) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(a.what) << " " << static_cast<int>(b.what));
        auto pure = corvane::pure_states(propane, a, b);
        std::erase_if(pure, [](auto const& q) { return !(q.p > 0.0) || q.p > 1000.0 || q.T > 1400.0; });
        // Where h has its minimum, two states lie between neighbours of a coarse mesh.
        if (b.what == What::h && a.what == What::T) {
            EXPECT_NEAR(pure.at(0).p, 30.0, 1e-5);
        }
        const auto all = corvane::mixture_states(m, a, b, z).states;
        ASSERT_EQ(all.size(), pure.size());
        several += pure.size() > 1;
        for (std::size_t k = 0; k < all.size(); ++k) {
            EXPECT_NEAR(all[k].T, pure[k].T, 1e-6 * pure[k].T);
            EXPECT_NEAR(all[k].p, pure[k].p, 1e-5 * pure[k].p);
            EXPECT_EQ(all[k].phases.size(), pure[k].phase ? 1u : 2u);
        }
        if (all.size() > 1) {
            EXPECT_THROW(mixture_state(m, a, b, z), corvane::EquilibriumFailure);
        }
    }
    EXPECT_GT(several, 0);
}

TEST(MixtureState, WhatIsNoPairIsRefused) {
    const auto mixture = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    ModelN const& m = *mixture.model;
    const auto z = vec({0.4, 0.6});
    const double nan = std::nan("");
    const std::pair<Given, Given> refused[] = {
        {{What::s, 1}, {What::u, 0}},      {{What::T, 300}, {What::T, 300}},
        {{What::h, 1}, {What::u, 0}},      {{What::T, nan}, {What::q, 0.5}},
        {{What::T, 300}, {What::q, 1.5}},  {{What::p, -1}, {What::q, 0.5}},
        {{What::T, -300}, {What::rho, 1}}, {{What::p, 1}, {What::h, nan}},
        {{What::p, 1}, {What::T, HUGE_VAL}}};
    for (auto const& [a, b] : refused)
        EXPECT_EQ(th_code([&, a = a, b = b] { mixture_state(m, a, b, z); }), 5);
    EXPECT_THROW(mixture_state(m, {What::T, 500}, {What::q, 0.5}, z), corvane::EquilibriumFailure);
    EXPECT_THROW(corvane::mixture_states(m, {What::T, 300}, {What::h, -1e9}, z), corvane::EquilibriumFailure);
    EXPECT_THROW(mixture_state(m, {What::h, 1e9}, {What::s, 100}, z), corvane::EquilibriumFailure);
}
}  // namespace
