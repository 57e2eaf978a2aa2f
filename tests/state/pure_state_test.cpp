// States of pure fluids from any two quantities: what comes out has what was asked for, and the
// state from which the quantities were taken is found again.
#include "support/errors.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {
using corvane::Given;
using corvane::PureState;
using corvane::Quantity;

double value(PureState const& q, Quantity what) {
    switch (what) {
        case Quantity::T: return q.T;
        case Quantity::p: return q.p;
        case Quantity::rho: return q.rho;
        case Quantity::h: return q.h;
        case Quantity::s: return q.s;
        case Quantity::u: return q.u;
        case Quantity::q: return q.q;
    }
    return 0;
}

/// Scale of a quantity for comparisons.
double scale(PureState const& q, Quantity what) {
    const double RT = R * q.T;
    return what == Quantity::h || what == Quantity::u ? RT
           : what == Quantity::s                      ? R
                                                      : value(q, what);
}

constexpr std::pair<Quantity, Quantity> kPairs[] = {
    {Quantity::T, Quantity::p},   {Quantity::T, Quantity::rho}, {Quantity::T, Quantity::h},
    {Quantity::T, Quantity::s},   {Quantity::T, Quantity::u},   {Quantity::p, Quantity::rho},
    {Quantity::p, Quantity::h},   {Quantity::p, Quantity::s},   {Quantity::p, Quantity::u},
    {Quantity::rho, Quantity::h}, {Quantity::rho, Quantity::s}, {Quantity::rho, Quantity::u},
    {Quantity::h, Quantity::s}};

void expect_found_again(Model1 const& m, PureState const& at, std::vector<Quantity> const& without) {
    for (auto const& [a, b] : kPairs) {
        if (std::count(without.begin(), without.end(), a) ||
            std::count(without.begin(), without.end(), b))
            continue;
        SCOPED_TRACE(testing::Message() << "pair " << int(a) << int(b) << " T " << at.T << " p "
                                        << at.p << " q " << at.q);
        const auto all = corvane::pure_states(m, {a, value(at, a)}, {b, value(at, b)});
        bool again = false;
        for (PureState const& q : all) {
            for (Quantity what : {a, b})
                EXPECT_NEAR(value(q, what), value(at, what), 1e-9 * scale(at, what)) << int(what);
            again = again || (std::fabs(q.T / at.T - 1) < 1e-7 && std::fabs(q.p / at.p - 1) < 1e-5);
        }
        EXPECT_TRUE(again) << all.size() << " states";
    }
}

TEST(PureState, EveryPairLeadsBackToTheState) {
    for (auto const& [equation, name] : {std::pair{"PR", "propane"}, {"PCSAFT", "propane"},
                                         {"MEOS", "carbon_dioxide"}, {"MEOS", "water"}}) {
        SCOPED_TRACE(equation);
        const corvane::Fluid fluid = corvane::open(equation, name);
        Model1 const& m = *fluid.model;
        for (double Tr : {0.75, 0.97, 1.3, 2.5})
            for (double pr : {0.003, 0.6, 3.0}) {
                const auto at =
                    corvane::pure_states(m, {Quantity::T, Tr * m.Tcrit()}, {Quantity::p, pr * m.pcrit()});
                ASSERT_EQ(at.size(), 1u);
                ASSERT_TRUE(at.front().phase);
                expect_found_again(m, at.front(), {});
            }
        for (double Tr : {0.7, 0.95, 0.99999})
            for (double q : {0.1, 0.6}) {
                const auto at =
                    corvane::pure_states(m, {Quantity::T, Tr * m.Tcrit()}, {Quantity::q, q});
                ASSERT_EQ(at.size(), 1u);
                ASSERT_TRUE(at.front().liquid && at.front().vapour);
                EXPECT_NEAR(at.front().liquid->g, at.front().vapour->g, 1e-9 * R * 300);
                expect_found_again(m, at.front(), {Quantity::p});  // (p, T) is one phase
                // p with something that tells how much there is of each phase
                for (Quantity b : {Quantity::h, Quantity::s, Quantity::u, Quantity::rho}) {
                    const auto again = corvane::pure_states(m, {Quantity::p, at.front().p},
                                                            {b, value(at.front(), b)});
                    ASSERT_EQ(again.size(), 1u) << int(b);
                    // near the critical point the densities, and so q, turn with T that fast
                    EXPECT_NEAR(again.front().q, q, 1e-9 + 1e-12 / (1 - Tr)) << int(b);
                }
            }
    }
}

// IAPWS-95 (2018), table 8: enthalpy of vaporisation of water at 450 K, 749.161585 + 2025.30 kJ/kg,
// p 0.932203564 MPa
TEST(PureState, SteamAt450K) {
    const corvane::Fluid water = corvane::open("MEOS", "water");
    const auto wet = corvane::pure_states(*water.model, {Quantity::T, 450.0}, {Quantity::q, 0.25});
    ASSERT_EQ(wet.size(), 1u);
    const double hvap = (wet[0].vapour->h - wet[0].liquid->h) / water.model->M();  // kJ/kg
    EXPECT_NEAR(hvap * (8.314371357587 / R), 0.277441078e4 - 0.749161585e3, 0.01);
    EXPECT_NEAR(wet[0].p * (8.314371357587 / R), 0.932203564, 1e-8);
}

// Water is densest near 277 K at 0.1 MPa: two temperatures of one density, both are found.
TEST(PureState, AllCrossingsAreGiven) {
    const corvane::Fluid water = corvane::open("MEOS", "water");
    const auto at = corvane::pure_states(*water.model, {Quantity::p, 0.101325},
                                         {Quantity::rho, 999.9 * 1e-3 / water.model->M()});
    ASSERT_EQ(at.size(), 2u);
    EXPECT_LT(at[0].T, 277.13);
    EXPECT_GT(at[1].T, 277.13);
    for (PureState const& q : at) EXPECT_NEAR(q.phase->p, 0.101325, 1e-7);
}

TEST(PureState, Refusals) {
    const corvane::Fluid fluid = corvane::open("PR", "propane");
    Model1 const& m = *fluid.model;
    const double nan = std::nan("");
    const auto code = [&](Given a, Given b) {
        return th_code([&] { corvane::pure_states(m, a, b); });
    };
    for (double bad : {nan, 0.0, -1.0, 1e300 * 1e300})
        for (Quantity what : {Quantity::T, Quantity::p, Quantity::rho})
            EXPECT_EQ(code({what, bad}, {Quantity::h, 0.0}), th_out_of_range);
    EXPECT_EQ(code({Quantity::T, 300}, {Quantity::q, 1.1}), th_out_of_range);
    EXPECT_EQ(code({Quantity::T, 300}, {Quantity::T, 300}), th_out_of_range);
    EXPECT_EQ(code({Quantity::h, 300}, {Quantity::q, 0.5}), th_out_of_range);
    EXPECT_EQ(code({Quantity::u, 300}, {Quantity::s, 5}), th_out_of_range);
    EXPECT_THROW(corvane::pure_states(m, {Quantity::T, 380}, {Quantity::q, 0.5}),
                 corvane::EquilibriumFailure);  // above Tc
    EXPECT_TRUE(corvane::pure_states(m, {Quantity::p, 1}, {Quantity::h, 1e9}).empty());
    EXPECT_TRUE(corvane::pure_states(m, {Quantity::h, 0}, {Quantity::s, 1e5}).empty());
    fluid.model->ideal.reset();
    EXPECT_EQ(code({Quantity::p, 1}, {Quantity::h, 0}), th_no_ideal);
}

// With the curve precomputed: the same states, of one phase and of two, to its bound.
TEST(PureState, WithThePrecomputedSaturation) {
    for (char const* eos : {"PR", "MEOS"}) {
        const corvane::Fluid fluid = corvane::open(eos, "propane");
        const corvane::SaturationExpansion curve(*fluid.model);
        corvane::PureStateOptions options;
        options.saturation = &curve;
        const double p = curve.p_at(280);
        const std::pair<Given, Given> pairs[] = {
            {{Quantity::T, 280}, {Quantity::q, 0.3}},   {{Quantity::p, 1}, {Quantity::q, 0.7}},
            {{Quantity::T, 280}, {Quantity::rho, 3e-3}}, {{Quantity::T, 280}, {Quantity::p, 0.99 * p}},
            {{Quantity::T, 280}, {Quantity::p, 1.01 * p}}, {{Quantity::T, 420}, {Quantity::p, p}},
            {{Quantity::p, 1}, {Quantity::h, 1e4}}};
        for (auto const& [a, b] : pairs) {
            const auto with = corvane::pure_states(*fluid.model, a, b, options);
            const auto without = corvane::pure_states(*fluid.model, a, b);
            ASSERT_EQ(with.size(), 1u);
            ASSERT_EQ(without.size(), 1u);
            EXPECT_EQ(with[0].liquid.has_value(), without[0].liquid.has_value());
            EXPECT_NEAR(with[0].rho / without[0].rho, 1, 1e-11);
            EXPECT_NEAR(with[0].T / without[0].T, 1, 1e-11);
            EXPECT_NEAR(with[0].p / without[0].p, 1, 1e-11);
        }
    }
}
}  // namespace
