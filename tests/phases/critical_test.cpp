// Critical points against exact ones, the published function and the phase envelope.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::CriticalPoint;
using corvane::EquilibriumFailure;

namespace {
void expect_certified(CriticalPoint const& q) {
    EXPECT_TRUE(q.stable);
    EXPECT_TRUE(q.certificate.holds());
    EXPECT_LE(q.certificate.conditions, 1e-9);
}

TEST(CriticalPoint, ExactOnes) {
    for (double k : {0.0, 0.1, 0.2}) {  // a pure van der Waals fluid at x = 1/2; no derivatives
        const VdwTwins m(k);
        const CriticalPoint q = corvane::critical_point(m, mix(0.5));
        EXPECT_LE(q.certificate.conditions, 1e-6);
        EXPECT_NEAR(q.T / m.Tc(mix(0.5)), 1, 1e-7);  // numerical second differences
        EXPECT_NEAR(q.rho * 120, 1, 1e-4);           // rho: a triple root
        EXPECT_NEAR(q.p / (0.375 * R * q.T / 120), 1, 1e-5);
    }
    // A pure component, absent ones beside it; the equation meets its own constants.
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane", "decane"});
    for (int i = 0; i < 3; ++i) {
        Vector<double> z = vec({0, 0, 0});
        z[i] = 1;
        const CriticalPoint q = corvane::critical_point(*m, z);
        expect_certified(q);
        EXPECT_NEAR(q.T / m->mdl1[i]->Tcrit(), 1, 1e-9);
        EXPECT_NEAR(q.p / m->mdl1[i]->pcrit(), 1, 1e-9);
    }
}

// The published function solves the same conditions by nested searches on numerical slopes.
TEST(CriticalPoint, AgreesWithTheNestedSearch) {
    const struct {
        char const *first, *second;
        double k, from, to;
    } rows[] = {{"methane", "ethane", 0, 0, 1},
                {"methane", "decane", 0.04, 0, 0.9},
                {"carbon_dioxide", "decane", 0.1141, 0, 0.9},  // two liquids at the end
                {"carbon_dioxide", "water", 0.19, 0, 0.3},
                {"water", "methane", 0.5, 0.7, 1}};
    for (auto const& row : rows)
        for (int k = 0; k <= 5; ++k) {
            const double x = row.from + k * (row.to - row.from) / 5;
            SCOPED_TRACE(testing::Message() << row.first << "/" << row.second << " " << x);
            const Mixture m = peng_robinson(row.first, row.second, row.k);
            const CriticalPoint q = corvane::critical_point(*m, mix(x));
            expect_certified(q);
            Vector<double> z = mix(x);
            Matrix<double> line(1, 4);
            line[0][1] = 1.01 * q.T;  // a start: it finds fewer of them alone
            line[0][2] = q.rho;
            double s = 0;
            crit_slope_x(m.get(), z, s, line);
            EXPECT_NEAR(line[0][1] / q.T, 1, 1e-8);
            EXPECT_NEAR(line[0][2] / q.rho, 1, 1e-7);
            EXPECT_NEAR(line[0][3] / q.p, 1, 1e-7);
            if (x == row.from) continue;
            corvane::CriticalOptions warm;  // from a neighbour
            CriticalPoint start = q;
            start.T *= 1.03;
            start.rho *= 0.95;
            warm.start = &start;
            const CriticalPoint again = corvane::critical_point(*m, mix(x), warm);
            // The last step leaves rounding alone, not a part of the way from the start.
            EXPECT_NEAR(again.T / q.T, 1, 1e-12);
            EXPECT_NEAR(again.rho / q.rho, 1, 1e-12);
        }
}

TEST(CriticalPoint, OnTheEnvelopeOfFiveComponents) {
    const Mixture m =
        mixture_of("PR", "vdW1", {"methane", "nitrogen", "ethane", "propane", "butane", "decane"});
    for (auto const& z : {vec({0.7, 0.1, 0.1, 0.06, 0.04, 0}), vec({0.5, 0, 0.2, 0.1, 0.1, 0.1})}) {
        const CriticalPoint q = corvane::critical_point(*m, z);
        expect_certified(q);
        const corvane::Envelope e = corvane::phase_envelope(*m, z);
        ASSERT_EQ(e.critical.size(), 1u);
        EXPECT_NEAR(e.critical[0].T / q.T, 1, 1e-6);  // interpolated there
        EXPECT_NEAR(e.critical[0].p / q.p, 1, 1e-5);
    }
}

TEST(CriticalPoint, RefusedHiddenOrSeveral) {
    const Mixture m = peng_robinson("carbon_dioxide", "decane", 0.1141);
    corvane::CriticalOptions o;
    try {  // the line from carbon dioxide under the split of the liquid
        corvane::critical_point(*m, mix(0.95));
        ADD_FAILURE() << "an unstable point";
    } catch (EquilibriumFailure const& f) {
        EXPECT_EQ(f.kind(), EquilibriumFailure::Kind::no_solution);
        EXPECT_NE(std::string(f.what()).find("1 unstable"), std::string::npos) << f.what();
    }
    o.unstable = true;
    const CriticalPoint hidden = corvane::critical_point(*m, mix(0.95), o);
    EXPECT_FALSE(hidden.stable);
    EXPECT_LT(hidden.certificate.tpd, -1e-4);
    EXPECT_FALSE(corvane::stability(*m, hidden.p, hidden.T, mix(0.95)).stable);
    const Mixture wide = peng_robinson("methane", "water", 0.5);
    EXPECT_THROW(corvane::critical_point(*wide, mix(0.8)), EquilibriumFailure);  // on no line
    EXPECT_EQ(th_code([&] { corvane::critical_point(*m, mix(1.1)); }), th_out_of_range);
    EXPECT_EQ(mth_code([&] { corvane::critical_point(*m, vec({1})); }), mth_dimensions);
}
}  // namespace
