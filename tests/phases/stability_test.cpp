// The tangent-plane test: phases that hide between or beyond any grid of compositions, next to
// critical points, on the other density root; checked by scans of the potentials through the
// published slots.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

#include <iomanip>
#include <random>

using corvane::EquilibriumFailure;
using corvane::StabilityTest;

namespace {
struct Case {
    char const *eos, *rule, *first, *second;
    double kij, x, T, p;
};
Mixture mixture(Case const& c) {
    Mixture m = mixture_of(c.eos, c.rule, {c.first, c.second});
    m->param(0, 0, 1, c.kij);
    return m;
}

// Each was one certified phase when 15 compositions were scanned: a neck between them, a trace
// beyond them, the other density root, an azeotrope beside, a value that a descent then left.
TEST(Stability, NoPhaseHidesBetweenCompositions) {
    for (Case const& c : std::initializer_list<Case>{
             {"PR", "vdW1", "nitrogen", "octane", -0.4, 0.0247, 566.57, 2.6906},
             {"SRK", "vdW1", "hydrogen_sulfide", "water", 0.0074, 0.19163, 592.7875, 23.537},
             {"SRK", "vdW1", "decane", "mercury", -0.0599, 0.0108, 1145.59, 18.88},
             {"PCSAFT", "LB", "methane", "pentane", 0.024, 0.993, 181.6, 3.4},
             {"PR", "vdW1", "carbon_dioxide", "ethane", 0.13, 0.2507580087, 288.9435977,
              4.557377399},
             {"PR", "vdW1", "carbon_dioxide", "ethane", 0.13, 0.1203299855, 299.4686472,
              4.953771}}) {
        SCOPED_TRACE(std::string(c.first) + " " + c.second);
        const Mixture m = mixture(c);
        EXPECT_FALSE(corvane::stability(*m, c.p, c.T, mix(c.x)).stable);
        const auto q = corvane::flash_pT(*m, c.p, c.T, mix(c.x));
        EXPECT_EQ(q.phases.size(), 2u);
        EXPECT_EQ(q.certificate.test, StabilityTest::complete);
    }
    // The dew point was a pair that is not stable; right is 4.9116 MPa.
    const Mixture m = peng_robinson("carbon_dioxide", "ethane", 0.13);
    EXPECT_NEAR(corvane::dew_T(*m, 299.4686472, mix(0.1203299855)).p, 4.9116, 1e-4);
    corvane::FlashOptions quick;
    quick.test = StabilityTest::quick;
    EXPECT_EQ(corvane::flash_pT(*m, 5, 320, mix(0.5), quick).certificate.test, quick.test);
}

/// Potentials over RT by the slots of the model.
struct Potentials {
    double first, second;
};
Potentials potentials(ModelN const& m, double T, double x, double rho) {
    const Vector<double> rho_i = mix(x) * rho;
    return {m.my(rho_i, T, 0), m.my(rho_i, T, 1)};
}

// Phases that have less of a component than doubles can tell from one part of the other, in either
// order of the components. Of the sites of cold water exp(−ε/2kT) are free, 1e-9 at 60 K.
TEST(Stability, TracesBelowOneUlpOfTheOtherComponent) {
    for (auto [T, p] : {std::pair(12.0, 78.9), {22.0, 0.5}, {40.0, 5.0}, {60.0, 78.9}}) {
        corvane::FlashResult q[2];
        for (int k : {0, 1}) {
            const auto m = corvane::open_mixture(
                "PCSAFT+LB", k == 0 ? std::vector<std::string>{"hydrogen", "water"}
                                    : std::vector<std::string>{"water", "hydrogen"});
            q[k] = corvane::flash_pT(*m.model, p, T, k == 0 ? vec({0.3, 0.7}) : vec({0.7, 0.3}));
            ASSERT_EQ(q[k].phases.size(), 2u) << T;
            EXPECT_TRUE(q[k].certificate.holds()) << T;
        }
        for (int f : {0, 1})
            for (int i : {0, 1}) {
                const double x = q[0].phases[f].x[i];
                EXPECT_NEAR(q[1].phases[f].x[1 - i], x, 1e-9 * x) << T << " " << f << " " << i;
            }
        EXPECT_LT(q[0].phases[1].x[1], 1e-17);  // water in hydrogen
    }
}

// Random states, half of them next to the critical point of a composition: of one phase no
// composition lies below the tangent plane; between two phases every one is unstable.
TEST(Stability, OnePhaseHasNothingBelowAndTwoHaveNothingBetween) {
    std::mt19937_64 random(14);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    int one = 0, two = 0, refused = 0;
    for (Case const& c : std::initializer_list<Case>{
             {"PR", "vdW1", "carbon_dioxide", "ethane", 0.13, 0, 0, 0},
             {"PR", "vdW1", "nitrogen", "octane", -0.4, 0, 0, 0},
             {"SRK", "vdW1", "heptane", "pentane", 0.0019, 0, 0, 0},
             {"SRK", "vdW1", "hydrogen_sulfide", "water", 0.0074, 0, 0, 0},
             {"SRK", "vdW1", "decane", "mercury", -0.0599, 0, 0, 0},
             {"PCSAFT", "LB", "methane", "pentane", 0.024, 0, 0, 0}}) {
        const Mixture m = mixture(c);
        for (int k = 0; k < 120; ++k) {
            double x = u(random), T = 0, p = 0;
            const double off = std::pow(10, -6 + 4.7 * u(random));
            const double a = u(random), b = u(random), side = 2 * u(random) - 1;
            try {
                const auto critical = corvane::critical_point(*m, mix(x));
                T = k % 2 ? critical.T * (1 - off * (2 * a - 0.7)) : critical.T * (0.5 + 0.8 * a);
                p = k % 2 ? critical.p * (1 + 8 * off * (2 * b - 1.3)) : std::pow(10, -2 + 3 * b);
                if (k % 2) x += side * std::sqrt(off) * x * (1 - x);
            } catch (EquilibriumFailure const&) {
                continue;
            }
            SCOPED_TRACE(testing::Message() << c.first << " " << c.second << std::setprecision(17)
                                            << " x " << x << " T " << T << " p " << p);
            corvane::FlashResult q;
            try {
                q = corvane::flash_pT(*m, p, T, mix(x));
            } catch (EquilibriumFailure const&) {
                ++refused;
                continue;
            }
            if (q.phases.size() == 2) {
                two += k % 2;
                // Closer pairs have distances between them that are rounding.
                if (std::fabs(q.phases[0].rho / q.phases[1].rho - 1) < 5e-3) continue;
                const double lo = q.phases[0].x[0], hi = q.phases[1].x[0];
                for (double part : {0.1, 0.5, 0.9})
                    EXPECT_FALSE(
                        corvane::stability(*m, p, T, mix(lo + part * (hi - lo))).stable);
                continue;
            }
            one += k % 2;
            const Potentials mu = potentials(*m, T, x, q.rho);
            double least = 0;
            auto look = [&](double w) {
                double r1 = 0, r2 = 0;
                const int roots = m->vcalc(p, T, mix(w), 1, r1, r2);
                for (int root = 0; root < roots; ++root) {
                    const Potentials at = potentials(*m, T, w, root ? r2 : r1);
                    least = std::min(least, w * (at.first - mu.first) +
                                                (1 - w) * (at.second - mu.second));
                }
            };
            for (double d = 1; d > 1e-6; d *= 0.8)
                for (double w : {x + (1 - x) * 0.9999 * d, x * (1 - 0.9999 * d)}) look(w);
            for (double w = 0.01; w < 1; w += 0.02) look(w);
            // by what p/RT over rho adds to the potentials' rounding
            EXPECT_GT(least, -3e-12 * (10 + p / (R * T * q.rho)));
        }
    }
    EXPECT_GT(one, 100);
    EXPECT_GT(two, 50);
    EXPECT_LE(refused, 1);
}

// Trials that crept along flat valleys of the distance, or jumped to and fro, ended after 60
// iterations, and the flash was refused.
TEST(Stability, EveryTrialOfManyComponentsConverges) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z;
        double T, p;
    } cases[] = {
        {{"methane", "ethane", "propane", "butane", "nitrogen", "carbon_dioxide"},
         vec({.00199, .16493, .11602, .11676, .00170, .59860}), 202, 4.547389},
        {{"methane", "ethane", "propane", "butane", "nitrogen", "carbon_dioxide"},
         vec({.00199, .16493, .11602, .11676, .00170, .59860}), 203, 4.547389},
        {{"methane", "ethane", "propane", "butane", "nitrogen", "carbon_dioxide"},
         vec({5.02e-5, 8.0543e-4, .42506909, .00181658, .00445253, .56780617}), 202.59473,
         3.6847155},
        {{"methane", "ethane", "propane"}, vec({.8, .15, .05}), 240, 7.6},
        {{"carbon_dioxide", "methane", "hexadecane"}, vec({.8297795, .1668944, .0033261}), 179.14033,
         3.6529342}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.names[0] << " " << c.T);
        Mixture m = mixture_of("PR", "vdW1", c.names);
        for (int i = 0; i < c.z.size(); ++i)
            for (int j = 0; j < i; ++j) m->id(i, j, 1);
        corvane::load_estimating(*m, "PR", "vdW1");
        EXPECT_EQ(corvane::stability(*m, c.p, c.T, c.z).unconverged, 0);
        EXPECT_LE(corvane::flash_pT(*m, c.p, c.T, c.z).phases.size(), 2u);
    }
}

// A component whose potential, by the published functions, is above that of the pure substance
// separates: no composition in which that is so may pass, alone or as a phase of a flash.
TEST(Stability, NoComponentIsBeyondItsPureSelf) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z;
        double T, p;
    } cases[] = {
        {{"decane", "mercury", "methane"}, vec({1.0971643e-6, 1.9694292e-8, 0}), 165.80386, 2.01103},
        {{"decane", "mercury", "methane"}, vec({1.6844288e-9, 1.4206e-11, 0}), 118.967588, 0.116571},
        {{"decane", "mercury", "methane"}, vec({0.13490702, 0.02748893, 0}), 175.924944, 0.286463},
        {{"helium", "decane", "methane"}, vec({0.5, 3.375405e-8, 0}), 20.0, 0.185523},
        {{"nitrogen", "water", "methane"}, vec({0.3, 1e-5, 0}), 180.0, 1.0},
        {{"propane", "benzene", "mercury"}, vec({0.9, 0.09, 0}), 250.0, 0.3}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.names[0] << " " << c.names[1] << " " << c.T);
        const Mixture m = mixture_of("PR", "vdW1", c.names);
        const auto pure = [&](int i) {
            double rho = 0;
            return m->mdl1[i]->Ge(c.p, c.T, 2, rho);
        };
        const auto beyond = [&](Vector<double> const& x, double rho) {
            double most = -1e300;
            for (int i = 0; i < x.size(); ++i) {
                if (!(x[i] > 0)) continue;  // nowhere near dissolving
                double w = rho;
                const double mu = rho > 0 ? m->my(x * w, c.T, i) : m->my(c.p, c.T, x, i, 2, w);
                most = std::max(most, mu - pure(i));
            }
            return most;
        };
        Vector<double> z = c.z;
        z[2] = 1 - z[0] - z[1];
        ASSERT_GT(beyond(z, 0), 1e-3) << "the case is none";
        EXPECT_FALSE(corvane::stability(*m, c.p, c.T, z).stable);
        try {
            for (auto const& phase : corvane::flash_pT(*m, c.p, c.T, z).phases)
                EXPECT_LT(beyond(phase.x, phase.rho), 1e-8);
        } catch (corvane::EquilibriumFailure const& e) {
            EXPECT_EQ(e.kind(), corvane::EquilibriumFailure::Kind::gave_up);
        }
    }
}

// A few per cent of a heavy component in a light one, or of both in a third, between compositions
// from which substitution leaps to the phase itself. The witness, by the published functions, lies
// below the tangent plane of the whole, and above that of the answer.
TEST(Stability, NarrowMinimaBetweenStarts) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z, witness;
        double T, p;
        char const* eos = "PR+vdW1";
    } cases[] = {{{"carbon_dioxide", "octane", "nitrogen"},
                  vec({1.7145e-8, .00317508, 0}),
                  vec({2.2e-8, .0141, 0}),
                  106.663418,
                  1.206343},
                 {{"carbon_dioxide", "octane", "nitrogen"},
                  vec({4.02825e-11, 4.47231e-5, 0}),
                  vec({1.2e-10, .0416, 0}),
                  118.207695,
                  2.305077},
                 {{"carbon_dioxide", "octane", "nitrogen"},
                  vec({5.86205e-11, 3.86064e-4, 0}),
                  vec({1.4e-10, .0424, 0}),
                  114.713239,
                  1.918006},
                 {{"nitrogen", "octane", "methane"},
                  vec({.06416662, .00232356, 0}),
                  vec({.49, .26, 0}),
                  109.562157,
                  .219704},
                 {{"nitrogen", "ethane", "octane", "methane"},
                  vec({.22128938, 2.292449e-4, 7.935008e-4, 0}),
                  vec({.83, 1e-8, .168, 0}),
                  72.426739,
                  .024815},
                 {{"helium", "octane", "methane", "nitrogen"},
                  vec({.00149953, 4.396637e-4, 1.786e-11, 0}),
                  vec({1e-6, .0573, 1e-12, 0}),
                  121.097910,
                  4.028791},
                 {{"nitrogen", "methane", "octane"},
                  vec({.63159337, .36725260, 0}),
                  vec({.87543148, .091092945, 0}),
                  71.110884,
                  .034582957},
                 {{"methane", "hexane", "ethane"},
                  vec({.71628558, .15831262, 0}),
                  vec({.93628916, .008575728, 0}),
                  199.242129,
                  5.18433130},
                 {{"nitrogen", "methane", "octane"},
                  vec({.294366782419551, .705143890373755, 0}),
                  vec({.853025, .0281498, 0}),
                  74.8224591,
                  .0377609163},
                 {{"methane", "ammonia", "eicosane", "water"},
                  vec({2.422064108e-5, .082411122014, .917405503623, 0}),
                  vec({1e-10, .515, 1e-30, 0}),
                  235.949346926,
                  .024190141092},
                 {{"nitrogen", "octane", "decane"},
                  vec({.5102790567, .009291409005, 0}),
                  vec({.87, .13, 0}),
                  72.31639026597739,
                  .01730261069929101,
                  "SRK+vdW1"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.names[0] << " " << c.names[1] << " " << c.T);
        const auto open = corvane::open_mixture(c.eos, c.names);
        auto const& m = open.model;
        const int n = c.z.size();
        Vector<double> z = c.z, w = c.witness;
        z[n - 1] = 1 - z.sum(), w[n - 1] = 1 - w.sum();
        const auto above = [&](Vector<double> const& x, double rho) {
            double rho_w[2] = {0, 0}, least = 1e300;
            m->vcalc(c.p, c.T, w, 1, rho_w[0], rho_w[1]);
            for (double r : rho_w) {
                double d = 0;
                for (int i = 0; r > 0 && i < n; ++i) {
                    double whole = rho;
                    d += w[i] * (m->my(w * r, c.T, i) -
                                 (rho > 0 ? m->my(x * rho, c.T, i) : m->my(c.p, c.T, x, i, 2, whole)));
                }
                if (r > 0) least = std::min(least, d);
            }
            return least;
        };
        ASSERT_LT(above(z, 0), -1e-4) << "the case is none";
        EXPECT_FALSE(corvane::stability(*m, c.p, c.T, z).stable);
        auto const q = corvane::flash_pT(*m, c.p, c.T, z);
        EXPECT_GE(q.phases.size(), 2u);
        EXPECT_GT(above(q.phases[0].x, q.phases[0].rho), -1e-8);
    }
}

// The multi-fluid water has no liquid density here while it is nearly pure; mixtures with less of
// it do, and separate. (A vapour alone was certified.)
TEST(Stability, LiquidsOfComponentsThatHaveNoneWhenPure) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z, witness;
        double T, p;
    } cases[] = {{{"water", "butane", "propane"},
                  vec({.0691, .0185, .9124}),
                  vec({.9, .065, .035}),
                  213.44,
                  .0137},
                 {{"methane", "water", "helium"},
                  vec({.0579, .2703, .6718}),
                  vec({.133, .867, 1e-9}),
                  197.57,
                  .012}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.names[0]);
        const auto open = corvane::open_mixture("MEOS+GERG", c.names);
        auto const& m = open.model;
        double pure[2] = {0, 0}, rho[2] = {0, 0}, tpd = 0;
        Vector<double> almost = c.z;
        for (int i = 0; i < 3; ++i) almost[i] = c.names[i] == "water" ? 1 - 2e-12 : 1e-12;
        m->vcalc(c.p, c.T, almost, 1, pure[0], pure[1]);
        EXPECT_LT(std::max(pure[0], pure[1]), 1e-4) << "the case is none";
        m->vcalc(c.p, c.T, c.witness, 1, rho[0], rho[1]);
        for (int i = 0; i < 3; ++i) {
            double whole = 0;
            tpd += c.witness[i] * (m->my(c.witness * std::max(rho[0], rho[1]), c.T, i) -
                                   m->my(c.p, c.T, c.z, i, 2, whole));
        }
        ASSERT_LT(tpd, -1) << "the case is none";
        EXPECT_FALSE(corvane::stability(*m, c.p, c.T, c.z).stable);
        EXPECT_THROW(corvane::flash_pT(*m, c.p, c.T, c.z), EquilibriumFailure);
    }
}

// PC-SAFT's eicosane has no density here beyond two fifths, or a tenth, of a mixture, up to where
// the distance from the plane of two phases falls below zero. (They were certified.)
TEST(Stability, LiquidsNextToWhereDensitiesEnd) {
    struct Ternary {
        char const* third;
        double T, p;
        Vector<double> z, witness;
    };
    const Ternary cases[] = {{"propane", 88.378, 2.515656, vec({.395516, .000517073, .603966927}),
                              vec({.0333, .367, .5997})},
                             {"ethanol", 64.050391522, .23874480580,
                              vec({.500444, .0043925, .4951635}), vec({1e-9, .1, .9 - 1e-9})}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.third);
        auto const open = corvane::open_mixture("PCSAFT+LB", {"nitrogen", "eicosane", c.third});
        auto const& m = open.model;
        const auto below = [&](Vector<double> const& x, double rho) {
            double trial[2] = {0, 0}, d = 0;
            m->vcalc(c.p, c.T, c.witness, 1, trial[0], trial[1]);
            EXPECT_GT(std::max(trial[0], trial[1]), 0);
            const Vector<double> at = c.witness * std::max(trial[0], trial[1]);
            for (int i = 0; i < 3; ++i)
                d += c.witness[i] * (m->my(at, c.T, i) - m->my(x * rho, c.T, i));
            return d;
        };
        corvane::FlashOptions options;
        options.test = corvane::StabilityTest::quick;
        auto const two = corvane::flash_pT(*m, c.p, c.T, c.z, options);
        ASSERT_EQ(two.phases.size(), 2u);
        ASSERT_LT(below(two.phases[0].x, two.phases[0].rho), -.008) << "the case is none";
        try {
            corvane::flash_pT(*m, c.p, c.T, c.z);
            ADD_FAILURE() << "certified";
        } catch (EquilibriumFailure const& e) {
            EXPECT_NE(std::string(e.what()).find("no density for eicosane"), std::string::npos)
                << e.what();
        }
    }
}

/// An ideal gas of three components whose Gibbs energy (over RT) has narrow wells; or that and, a
/// hundred times as dense, a liquid whose Gibbs energy is `lift` higher, but for the wells.
struct Wells : ModelN {
    struct Well {
        Vector<double> at;
        double depth, width;
    };
    std::vector<Well> wells;
    Vector<double> lift;
    VdwModel pure[3]{VdwModel("", 200, 40), VdwModel("", 300, 40), VdwModel("", 500, 40)};
    Wells() {
        mdl1.size(3);
        for (int i : {0, 1, 2}) mdl1[i] = &pure[i];
    }
    /// Residual energy at x, and its slopes.
    double g(double rho, Vector<double> const& x, Vector<double>& slope) const {
        double sum = 0;
        if (lift.size() > 0) {
            if (rho < 4e-3) return 0;
            sum = lift * x - std::log(100);
            slope = lift;
        }
        for (Well const& well : wells) {
            const Vector<double> off = (x + well.at * -1.0) * (1 / well.width);
            double d = 0;
            for (int i : {0, 1, 2}) d += off[i] * off[i];
            const double e = well.depth * std::exp(-0.5 * d);
            sum -= e;
            slope = slope + off * (e / well.width);
        }
        return sum;
    }
    double Ar(double rho, double, Vector<double> const& x) const override {
        Vector<double> slope(3);
        return g(rho, x, slope);
    }
    double myr(Vector<double> const& rho_i, double, int i) const override {
        const Vector<double> x = rho_i * (1 / rho_i.sum());
        Vector<double> slope(3);
        double sum = g(rho_i.sum(), x, slope) + slope[i];
        for (int k : {0, 1, 2}) sum -= x[k] * slope[k];
        return sum;
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& a,
              double& b) const override {
        a = p / (R * T);
        if (lift.size() == 0) return 1;
        b = 100 * a;
        if (mode == 1 || (mode == -1 && Ar(b, T, x) + std::log(100) < 0)) std::swap(a, b);
        return 2;
    }
    double* ppar(int, int, int) override { return nullptr; }
    void par_alloc() override {}
    void par_in(FILE*, int, int) override {}
    void par_out(FILE*, int, int) const override {}
    Vector<double> mixpar(Vector<double> const& x) const override { return x; }
};

// A well at each composition from which the test is said to descend is found, and seen from no other.
TEST(Stability, DescendsFromEveryStart) {
    const Vector<double> z = vec({0.5, 0.3, 0.2});
    const double T = 300, p = 1;
    const auto ideal = [&](Vector<double> const& w) {
        double sum = 0;
        for (int i : {0, 1, 2})
            if (w[i] > 0) sum += w[i] * std::log(w[i] / z[i]);
        return sum;
    };
    const auto toward = [&](int i, double part) {
        Vector<double> w = z * (1 - part);
        w[i] += part;
        return w;
    };
    Wells m;
    const auto stable = [&] {
        const corvane::FluidModel fluid(m, z);
        corvane::PhaseState phase;
        phase.resize(3);
        EXPECT_TRUE(fluid.evaluate_at(phase, p, T, fluid.z(), corvane::Root::stable, corvane::phase_H));
        return corvane::Stability(fluid).test(phase, p, nullptr, true).stable;
    };
    EXPECT_TRUE(stable());
    const auto found = [&](Vector<double> const& w, double width) {
        m.wells.push_back({w, ideal(w) + 0.5, width});
        const bool unstable = !stable();
        m.wells.pop_back();
        return unstable;
    };
    EXPECT_FALSE(found(vec({0.41, 0.13, 0.46}), 0.01));  // where nothing starts
    for (int i : {0, 1, 2}) {
        SCOPED_TRACE(i);
        for (double part : {1.0, 0.998, 0.5, 0.05})
            EXPECT_TRUE(found(toward(i, part), part > 0.9 ? 2e-4 : 0.01)) << part;
    }
    const corvane::FluidModel fluid(m, z);
    for (double sign : {1.0, -1.0}) {
        Vector<double> w = z;
        for (int i : {0, 1, 2}) w[i] *= std::exp(sign * fluid.wilson(i, T));
        EXPECT_TRUE(found(w * (1 / w.sum()), 0.01)) << sign;
    }
    // Between two minima, and where the distance is low somewhere between two components, too.
    m.wells = {{toward(0, 0.998), 0.7 * ideal(toward(0, 0.998)), 0.01},
               {toward(1, 0.998), 0.7 * ideal(toward(1, 0.998)), 0.01}};
    EXPECT_TRUE(stable());
    EXPECT_TRUE(found((toward(0, 0.998) + toward(1, 0.998)) * 0.5, 0.01));
    for (int i : {0, 1, 2}) {
        Vector<double> w = z * 0.1;
        for (int k : {0, 1, 2}) w[k] += k == i ? 0 : 0.45;
        EXPECT_TRUE(found(w, 0.01)) << i;
    }
    // Beside the phase, near enough for a trial to end there but for the slope: a wall stands between.
    m.wells.clear();
    for (int i : {0, 1, 2}) {
        const Vector<double> w = toward(i, 0.12), off = w + z * -1.0;
        const double away = std::hypot(off[0], off[1], off[2]);
        m.wells = {{w, 1.8 * ideal(w), 0.25 * away}};
        EXPECT_FALSE(stable()) << i;
    }
    // And where substitution leads from the pure components along the root of higher Gibbs energy.
    m.wells.clear();
    m.lift = vec({0.1, 1.5, 0.4});
    EXPECT_TRUE(stable());
    Vector<double> w = z;
    for (int i : {0, 1, 2}) w[i] *= std::exp(-m.lift[i]);
    w = w * (1 / w.sum());
    m.wells = {{w, ideal(w) + m.lift * w + 0.5, 0.01}};
    EXPECT_FALSE(stable());
}

// Two phases of nearly pure water that differ in density alone, by 1 %: a trial on its way to one of
// them must not be taken for the other because of its composition.
TEST(Stability, PhasesOfOneCompositionDiffer) {
    const auto open = corvane::open_mixture("PR+vdW1", {"carbon_dioxide", "methane", "water"});
    Vector<double> z = vec({1.4837083653171833e-10, .00023892131591077289, 0});
    z[2] = 1 - z.sum();
    const double p = 22.098062302477182, T = 647.10080658133631;
    const auto q = corvane::flash_pT(*open.model, p, T, z);
    ASSERT_EQ(q.phases.size(), 2u);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(open.model->my(q.phases[0].x * q.phases[0].rho, T, i),
                    open.model->my(q.phases[1].x * q.phases[1].rho, T, i), 1e-9);
    EXPECT_GT(q.phases[0].rho / q.phases[1].rho, 1.005);
}
}  // namespace
