// Phase envelopes against points found one by one and the critical conditions in another form.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

using corvane::EnvelopeEnd;
using corvane::EquilibriumFailure;

namespace {
TEST(Envelope, ClosesThroughTheCriticalPoint) {
    const struct {
        char const *first, *second;
        double x;
    } cases[] = {{"methane", "propane", 0.45},
                 {"methane", "decane", 0.3},
                 {"methane", "ethane", 0.9},
                 {"carbon_dioxide", "methane", 0.3}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = peng_robinson(c.first, c.second, 0.02);
        Vector<double> z = mix(c.x);
        corvane::EnvelopeOptions o;
        o.stability = true;
        const corvane::Envelope e = corvane::phase_envelope(*m, z, o);
        EXPECT_EQ(e.end, EnvelopeEnd::closed);
        // a second liquid hides the cold end
        EXPECT_EQ(e.unstable > 0, std::string(c.first) == "carbon_dioxide");
        EXPECT_LE(e.dmu, 1e-9);
        EXPECT_GT(e.dmu, 0.0);  // of so many points rounding is not zero
        EXPECT_LE(e.dp, 1e-9);
        ASSERT_EQ(e.critical.size(), 1u);
        ASSERT_EQ(e.cricondentherm.size(), 1u);
        ASSERT_EQ(e.cricondenbar.size(), 1u);
        Matrix<double> line(1, 4);
        double s = 0;
        crit_slope_x(m.get(), z, s, line);
        EXPECT_NEAR(e.critical[0].T / line[0][1], 1, 1e-9);
        EXPECT_NEAR(e.critical[0].p / line[0][3], 1, 1e-8);
        EXPECT_NEAR(e.critical[0].rho / line[0][2], 1, 1e-7);
        // Every tenth point, found again from nothing: the isotherm has at most three boundaries.
        int found = 0;
        for (std::size_t k = 5; k < e.points.size(); k += 10) {
            auto const& q = e.points[k];
            EXPECT_LE(q.T, e.cricondentherm[0].T + 1e-9);
            EXPECT_LE(q.p, e.cricondenbar[0].p + 1e-9);
            if (q.T > e.cricondentherm[0].T - 1e-6) continue;  // a double root there
            EXPECT_LT(q.value_error, 1e-6);
            double nearest = 1e9, bound = 0;
            for (auto branch : {corvane::Branch::any, corvane::Branch::upper}) {
                corvane::SaturationOptions any;
                any.branch = branch;
                try {
                    const auto p = corvane::saturation_T(
                        *m, q.bubble ? corvane::Saturated::bubble : corvane::Saturated::dew, q.T, z,
                        any);
                    nearest = std::min(nearest, std::fabs(p.p / q.p - 1));
                    bound = p.certificate.value_error;
                } catch (EquilibriumFailure const&) {
                }
                if (nearest < 1e-8) break;
            }
            EXPECT_EQ(nearest < 1e-8, !q.unstable) << q.T << " K " << q.p << " MPa";
            // Off by the bounds of both T and p, where d ln p/d ln T is below 20.
            if (!q.unstable && q.T < 0.99 * e.cricondentherm[0].T) {
                EXPECT_LE(nearest, 20 * q.value_error + bound) << q.T;
            }
            ++found;
        }
        EXPECT_GT(found, 10);
        // The cricondentherm divides solved from refused. 0.02 K below it the two dew points are
        // about 1 % apart.
        const double top = e.cricondentherm[0].T;
        EXPECT_TRUE(corvane::dew_T(*m, top - 0.02, z).certificate.holds());
        try {
            corvane::dew_T(*m, top + 0.02, z);
            ADD_FAILURE() << "a dew point above the cricondentherm";
        } catch (EquilibriumFailure const& f) {
            EXPECT_EQ(f.kind(), EquilibriumFailure::Kind::no_solution);
        }
    }
}

TEST(Envelope, OpenAndRefused) {
    const Mixture m = peng_robinson("nitrogen", "ethane", 0.05);  // liquids part: no way back
    const corvane::Envelope e = corvane::phase_envelope(*m, mix(0.6));
    EXPECT_EQ(e.end, EnvelopeEnd::pressure);
    EXPECT_EQ(e.cricondentherm.size(), 1u);
    for (auto const& z : {mix(0), mix(1)}) try {
            corvane::phase_envelope(*m, z);
            ADD_FAILURE() << "an envelope of a pure fluid";
        } catch (EquilibriumFailure const& f) {
            EXPECT_NE(std::string(f.what()).find("pure"), std::string::npos);
        }
}
}  // namespace
