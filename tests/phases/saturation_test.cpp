// Phase evaluation, stability, bubble and dew points.
#include "equilibria/phases.h"

#include <benchmarks/counting_mixture.h>
#include <corvane/corvane.h>

#include <optional>

using corvane::EquilibriumFailure;
using corvane::FluidModel;
using corvane::PhaseState;
using corvane::Saturated;

namespace {
void expect_saturated(ModelN const& m, corvane::SaturationPoint const& q, Vector<double> const& z) {
    const Vector<double> a = q.given.x * q.given.rho, b = q.incipient.x * q.incipient.rho;
    double apart = 0;
    for (int i = 0; i < z.size(); ++i) EXPECT_NEAR(m.my(a, q.T, i), m.my(b, q.T, i), 1e-9);
    for (Vector<double> const* v : {&a, &b}) {
        // a liquid at low pressure: rounding its density alone changes p by more than 1e-9
        const double rounding =
            2e-15 * R * q.T * v->sum() * m.pV(v->sum(), q.T, *v * (1 / v->sum()));
        EXPECT_NEAR(pressure(m, *v, q.T), q.p, 1e-9 * q.p + rounding);
    }
    for (int i = 0; i < z.size(); ++i) {
        EXPECT_NEAR(q.given.x[i], z[i], 1e-14);
        apart = std::max(apart, std::fabs(q.incipient.x[i] * q.incipient.rho / q.given.rho - z[i]));
    }
    EXPECT_GT(apart, 1e-3);
    EXPECT_TRUE(q.certificate.holds());
}

// Derivatives at constant (T, p) against differences of the potentials at the density roots: step
// 1e-5, so that truncation and rounding are near 1e-9 of values of order 1 to 10.
TEST(Phase, DerivativesAtConstantPressure) {
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane", "butane"});
    const FluidModel fluid(*m, vec({0.5, 0.3, 0.2}));
    PhaseState s, t;
    s.resize(3);
    t.resize(3);
    const double T = 300, p = 3, h = 1e-5;
    ASSERT_TRUE(fluid.evaluate_at(s, p, T, fluid.z(), corvane::Root::stable, corvane::phase_all));
    auto potentials = [&](double pressure, double temperature, int j, double d) {
        std::vector<double> x = fluid.z();
        if (j >= 0) x[j] += d;
        for (double& v : x) v /= j >= 0 ? 1 + d : 1;
        fluid.evaluate_at(t, pressure, temperature, x, corvane::Root::stable, 0);
        return t.m;
    };
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(s.m_n(i, j),
                        (potentials(p, T, j, h)[i] - potentials(p, T, j, -h)[i]) / (2 * h), 1e-7);
        EXPECT_NEAR(s.m_p(i),
                    (potentials(p + h, T, -1, 0)[i] - potentials(p - h, T, -1, 0)[i]) / (2 * h),
                    1e-7);
        EXPECT_NEAR(s.m_T_at_p(i),
                    (potentials(p, T + h, -1, 0)[i] - potentials(p, T - h, -1, 0)[i]) / (2 * h),
                    1e-7);
    }
    EXPECT_NEAR(s.p / p, 1, 1e-12);
}

TEST(Saturation, MeetsTheConditionsAndItsInverse) {
    for (char const* eos : {"PR", "SRK"})
        for (auto const& names :
             {std::vector<std::string>{"methane", "propane"},
              std::vector<std::string>{"carbon_dioxide", "water"},
              std::vector<std::string>{"nitrogen", "methane", "ethane", "decane"}}) {
            const Mixture m = mixture_of(eos, "vdW1", names);
            const int n = m->mdl1.size();
            Vector<double> z(n);
            for (int i = 0; i < n; ++i) z[i] = 2.0 * (i + 1) / (n * (n + 1));
            for (Saturated kind : {Saturated::bubble, Saturated::dew}) {
                if (names[1] == "water" && kind == Saturated::bubble)
                    continue;  // none: two liquids
                SCOPED_TRACE(names[0] + (kind == Saturated::dew ? " dew" : " bubble"));
                const double T = 260;
                const auto q = corvane::saturation_T(*m, kind, T, z);
                expect_saturated(*m, q, z);
                const auto back = corvane::saturation_p(*m, kind, q.p, z);
                expect_saturated(*m, back, z);
                EXPECT_NEAR(back.T, T, 1e-7);  // the same branch: no retrograde one at this p
                corvane::SaturationOptions warm;
                warm.start = &q;
                const auto near = corvane::saturation_T(*m, kind, T + 1, z, warm);
                expect_saturated(*m, near, z);
                // Both search the whole isotherm; here it has one boundary of the kind.
                corvane::SaturationOptions searched;
                searched.branch = corvane::Branch::lower;
                EXPECT_NEAR(corvane::saturation_T(*m, kind, T, z, searched).p / q.p, 1, 1e-9);
            }
        }
}

TEST(Saturation, PureLimits) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    for (int i = 0; i < 2; ++i)
        for (double f : {0.6, 0.8, 0.95})
            for (Saturated kind : {Saturated::bubble, Saturated::dew}) {
                const double T = f * m->mdl1[i]->Tcrit();
                double p = 0, liquid = 0, vapour = 0;
                corvane::SaturationMarch().at_T(m->mdl1[i], T, 0, p, liquid, vapour);
                // the vle1 solver's accuracy; K-factors of 1e3 and 1/1e4 make 1e-12 matter less
                for (double trace : {0.0, 1e-12}) {
                    const auto q = corvane::saturation_T(*m, kind, T, mix(i ? trace : 1 - trace));
                    EXPECT_NEAR(q.p / p, 1, 2e-7);
                    EXPECT_NEAR((kind == Saturated::bubble ? q.given : q.incipient).rho / liquid, 1,
                                1e-6);
                }
            }
}

// A model of one component; next to its critical point the phases differ by √(1 − T/Tc), until they
// cannot be told apart.
TEST(Saturation, OfAPureFluid) {
    for (auto const& [eos, mth] : {std::pair{"PR", "vdW1"}, {"PCSAFT", "LB"}, {"MEOS", "GERG"}}) {
        SCOPED_TRACE(eos);
        const Mixture m = mixture_of(eos, mth, {"propane"});
        const double Tc = corvane::critical_point(*m, vec({1})).T;
        for (double off : {0.7, 0.3, 0.01, 1e-3, 1e-5, 1e-7}) {
            double p = 0, liquid = 0, vapour = 0;
            corvane::SaturationMarch().at_T(m->mdl1[0], Tc * (1 - off), 0, p, liquid, vapour);
            const auto q = corvane::bubble_T(*m, Tc * (1 - off), vec({1}));
            EXPECT_NEAR(q.p / p, 1, 1e-9);
            EXPECT_NEAR(q.given.rho / liquid, 1, 1e-5);
            EXPECT_NEAR(q.incipient.rho / vapour, 1, 1e-5);
            EXPECT_LE(std::fabs(q.certificate.tpd), 1e-10);  // the other density is as stable
            EXPECT_EQ(q.certificate.near_trivial, off < 1e-6);
            EXPECT_NEAR(corvane::dew_p(*m, q.p, vec({1})).T / q.T, 1, 1e-9);
        }
        for (double T : {Tc * (1 + 1e-9), 1.5 * Tc}) try {
                corvane::bubble_T(*m, T, vec({1}));
                ADD_FAILURE() << T;
            } catch (EquilibriumFailure const& e) {
                EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::no_solution);
            }
    }
}

// Where no start is near, the way from the critical point comes before flashes towards a vapour beside
// liquids: the same point as from a neighbour on the envelope, at a bounded cost.
TEST(Saturation, NextToTheCriticalPointOfAGas) {
    const Mixture m = mixture_of("MEOS", "GERG", {"methane", "ethane", "nitrogen", "carbon_dioxide"});
    const Vector<double> z = vec({0.85, 0.08, 0.05, 0.02});
    for (double T : {195.0, 203.0}) {
        SCOPED_TRACE(T);
        const auto q = corvane::bubble_T(*m, T, z);
        corvane::SaturationOptions o;
        const auto beside = corvane::bubble_T(*m, T - 5, z);
        o.start = &beside;
        EXPECT_NEAR(corvane::bubble_T(*m, T, z, o).p / q.p, 1, 1e-9);
        EXPECT_NEAR(corvane::bubble_p(*m, q.p, z).T / T, 1, 1e-9);
        EXPECT_LT(q.certificate.evaluations, 3000);
    }
    // From one to four per cent below it no start is near either, and none is needed: from 0.94 of T
    // along the curve. (Flashes on the way to a vapour beside liquids took 3,900 to 8,500 evaluations.)
    struct {
        double T;
        Vector<double> z;
    } const below[] = {{214.018018, vec({.696271, .270573, .025069, .008087})},
                       {204.643534, vec({.779981, .169169, .027437, .023413})},
                       {199.819005, vec({.862171, .126788, .008682, .002359})}};
    for (auto const& c : below) {
        SCOPED_TRACE(c.T);
        const auto q = corvane::bubble_T(*m, c.T, c.z);
        EXPECT_LT(q.certificate.evaluations, 400);
        EXPECT_EQ(corvane::flash_pT(*m, q.p * (1 + 1e-5), c.T, c.z).phases.size(), 1u);
        EXPECT_EQ(corvane::flash_pT(*m, q.p * (1 - 1e-5), c.T, c.z).phases.size(), 2u);
        EXPECT_LT(corvane::bubble_p(*m, q.p, c.z).certificate.evaluations, 700);
    }
}

// The first liquid of a cold gas is carbon dioxide, whose start is far from it (0.01 and 0.03 MPa), or
// comes before one of ethane (0.1 MPa). (13,700 to 14,500 evaluations of a search.)
TEST(Saturation, FirstLiquidsFarFromTheirStart) {
    auto const open =
        corvane::open_mixture("MEOS+GERG", {"methane", "ethane", "nitrogen", "carbon_dioxide"});
    auto const& m = open.model;
    const Vector<double> z = vec({.693, .08, .1655, .0615});
    for (double p : {.01, .03, .1}) {
        SCOPED_TRACE(p);
        const auto q = corvane::dew_p(*m, p, z);
        EXPECT_GT(q.incipient.x[3], .9);
        EXPECT_LT(q.certificate.evaluations, 800);
        EXPECT_EQ(corvane::flash_pT(*m, p, q.T * (1 + 1e-5), z).phases.size(), 1u);
        EXPECT_EQ(corvane::flash_pT(*m, p, q.T * (1 - 1e-5), z).phases.size(), 2u);
    }
}

// The ordinary boundary where the direct solution loses its way: the dew point of an oil (and no fluid
// next to liquids at 189 K), the bubble point of propane and ammonia (and none of ammonia at 59 K).
TEST(Saturation, OrdinaryBoundariesBeforeThoseFarBelowFreezing) {
    struct {
        char const *eos, *mth;
        std::vector<std::string> names;
        Vector<double> z;
        corvane::Saturated kind;
        double p, T, off;
    } const cases[] = {
        {"PR", "vdW1", {"pentane", "hexadecane", "methane", "toluene"},
         vec({.062649, .273392, .202965, .460994}), corvane::Saturated::dew, 2.555984, 640, 20},
        {"PCSAFT", "LB", {"butane", "propane", "carbon_monoxide", "toluene", "ammonia"},
         vec({.002135, .609476, 2.6257e-5, 6.967e-8, .3883626733}), corvane::Saturated::bubble, 4.104291,
         345, 10}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.eos);
        const Mixture m = mixture_of(c.eos, c.mth, c.names);
        const auto q = corvane::saturation_p(*m, c.kind, c.p, c.z);
        EXPECT_NEAR(q.T, c.T, c.off);
        const double more = c.kind == corvane::Saturated::dew ? 1e-5 : -1e-5;
        EXPECT_EQ(corvane::flash_pT(*m, c.p, q.T * (1 + more), c.z).phases.size(), 1u);
        EXPECT_EQ(corvane::flash_pT(*m, c.p, q.T * (1 - more), c.z).phases.size(), 2u);
    }
}

// Above the cricondentherm there is nothing; just below it there are two dew points. The critical
// temperature of the mixture is below the cricondentherm.
TEST(Saturation, RetrogradeAndRefusal) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    const Vector<double> z = mix(0.45);
    Vector<double> x = z;
    Matrix<double> line(1, 4);
    double s = 0;
    crit_slope_x(m.get(), x, s, line);
    const double T = line[0][1] + 2;
    corvane::SaturationOptions lower, upper;
    lower.branch = corvane::Branch::lower;
    upper.branch = corvane::Branch::upper;
    const auto a = corvane::dew_T(*m, T, z, lower), b = corvane::dew_T(*m, T, z, upper);
    expect_saturated(*m, a, z);
    expect_saturated(*m, b, z);
    EXPECT_GT(b.p, 1.2 * a.p);
    EXPECT_FALSE(corvane::stability(*m, 0.5 * (a.p + b.p), T, z).stable);
    EXPECT_TRUE(corvane::stability(*m, 1.001 * b.p, T, z).stable);
    EXPECT_TRUE(corvane::stability(*m, 0.999 * a.p, T, z).stable);
    const struct {
        Saturated kind;
        double T;
    } refused[] = {{Saturated::bubble, T}, {Saturated::bubble, 500}, {Saturated::dew, 500}};
    for (auto const& r : refused) try {
            corvane::saturation_T(*m, r.kind, r.T, z);
            ADD_FAILURE() << "solved at " << r.T;
        } catch (EquilibriumFailure const& e) {
            EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::no_solution);
            EXPECT_EQ(std::string(e.what()).find('\n'), std::string::npos);
            EXPECT_NE(e.state().find("0.45 0.55"), std::string::npos);
        }
    EXPECT_EQ(th_code([&] { corvane::bubble_T(*m, -1, z); }), 5);
    EXPECT_EQ(th_code([&] { corvane::bubble_T(*m, 200, vec({0.5, 0.6})); }), 5);
    EXPECT_EQ(mth_code([&] { corvane::bubble_T(*m, 200, vec({1})); }), 2);
}

// Wholes without a bubble point, of which the answer is that there is none: at every pressure (or
// temperature) a phase rich in the first component is a good part of the flash. Below 1e-288 MPa, where
// decane would be a vapour, densities are out of reach; at 407 K a heavy liquid vanishes beside both others.
TEST(Saturation, ThereIsNoneWhereTheLightPhaseNeverVanishes) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z;
        bool at_T;
        double value, lo, hi;
    } rows[] = {{{"helium", "decane"}, mix(0.99226), true, 7.40895520590, 1e-9, 1000},
                // the gas becomes denser than the water
                {{"nitrogen", "water"}, mix(0.48512330877155047), true, 299.90363272237306, 0.1, 1000},
                {{"helium", "nitrogen", "methane"}, vec({0.80256, 0.11337, 0.08407}), true,
                 24.85566, 1e-6, 1000},
                {{"hydrogen", "nitrogen", "water"}, vec({0.65462, 0.33054, 0.01484}), true,
                 45.99071, 1e-6, 1000},
                {{"methane", "decane", "water"},
                 vec({0.72167118207566228, 0.075241920496466816, 0.2030868974278709}), false,
                 33.432900705177538, 100, 500}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.names[0] << ' ' << row.names[1]);
        const Mixture m = estimated_mixture("PR", "vdW1", row.names);
        try {
            row.at_T ? corvane::saturation_T(*m, Saturated::bubble, row.value, row.z)
                     : corvane::saturation_p(*m, Saturated::bubble, row.value, row.z);
            ADD_FAILURE() << "a bubble point";
        } catch (EquilibriumFailure const& f) {
            EXPECT_EQ(f.kind(), EquilibriumFailure::Kind::no_solution) << f.what();
        }
        for (int k = 0; k <= 40; ++k) {
            const double other = row.lo * std::pow(row.hi / row.lo, k / 40.0);
            const auto q = row.at_T ? corvane::flash_pT(*m, other, row.value, row.z)
                                    : corvane::flash_pT(*m, row.value, other, row.z);
            std::size_t rich = 0;
            for (std::size_t i = 1; i < q.phases.size(); ++i)
                if (q.phases[i].x[0] > q.phases[rich].x[0]) rich = i;
            EXPECT_GT(q.fraction[rich], 0.3) << other;
            EXPECT_GT(q.phases.size(), 1u) << other;
        }
    }
}

// The light phase that appears beside two liquids is denser than its own critical point, and no phase of the
// whole shows it: on either side of the answer flashes have three phases and two. In the first the envelope
// of the whole turns within a step; in the others the search by strides passes both boundaries at once.
TEST(Saturation, ADenseVapourBesideTwoLiquids) {
    const struct {
        char const* eos;
        std::vector<std::string> names;
        Vector<double> z;
        bool at_T;
        double value;
    } rows[] = {
        {"PR", {"carbon_dioxide", "decane", "water"},
         vec({0.7278750829431332, 0.22743351107941748, 0.044691405949452721}), false, 16.975752454906758},
        {"PR", {"carbon_dioxide", "decane", "water"},
         vec({0.63183581896923424, 0.069517392575585618, 0.29864678756118013}), false, 14.07456282377872},
        {"SRK", {"hydrogen", "methane", "decane"},
         vec({0.45152306172274959, 0.5401798664840000, 0.00829707079325041}), false, 17.433744478156388},
        {"PR", {"hydrogen", "nitrogen", "water"},
         vec({0.39084355037385415, 0.593584332678525685, 0.015572116947620165}), false, 8.5695040399713562},
        {"PR", {"hydrogen_sulfide", "helium", "hexane"},
         vec({0.61888629998222366, 0.036437575341096491, 0.344676124676679849}), false, 45.967434388810318},
        // a flash of the search happens to see all three phases, or two, next to where one of them vanishes
        {"SRK", {"hydrogen", "nitrogen", "water"},
         vec({0.11248073068128771, 0.41804653799455377, 0.46947273132415852}), false, 9.5214578253715381},
        {"SRK", {"carbon_dioxide", "methane", "decane"},
         vec({0.23044676526688587, 0.20004515930303449, 0.56950807543007964}), false, 37.339241742853154},
        {"PR", {"benzene", "mercury", "decane"}, vec({0.53532647, 0.38297843, 0.0816951}), false, 4.80961195},
        {"PR", {"helium", "hexane", "methane"}, vec({0.18803815361854376, 0.026828365707733032, 0.785133480673723208}), true, 127.64136}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.names[0] << ' ' << row.names[1] << ' ' << row.value);
        const Mixture m = estimated_mixture(row.eos, "vdW1", row.names);
        const auto q = row.at_T ? corvane::bubble_T(*m, row.value, row.z)
                                : corvane::bubble_p(*m, row.value, row.z);
        EXPECT_EQ(q.split.size(), 2u);
        EXPECT_TRUE(q.certificate.holds());
        const auto beside = [&](double part) {
            return row.at_T ? corvane::flash_pT(*m, q.p * part, q.T, row.z)
                            : corvane::flash_pT(*m, q.p, q.T * part, row.z);
        };
        // Nearer than 2e-6 to the second, of phases alike, the third one is within the tolerance of the plane.
        auto with = beside(1 - 1e-5), without = beside(1 + 1e-5);
        if (with.phases.size() == 2) std::swap(with, without);
        EXPECT_EQ(without.phases.size(), 2u);
        ASSERT_EQ(with.phases.size(), 3u);
        EXPECT_LT(with.fraction[2], 0.01);
        EXPECT_NEAR(with.phases[2].rho / q.incipient.rho, 1, 2e-3);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(with.phases[2].x[i], q.incipient.x[i], 2e-3);
    }
}

// A liquid that is stable in half a kelvin alone, between its two liquids and its vapour.
TEST(Saturation, ALiquidThatSplitsAtOnce) {
    const Mixture m = estimated_mixture("PR", "vdW1", {"methanol", "hexane", "carbon_dioxide"});
    const Vector<double> z = vec({0.57252941374899682, 0.38733490738892901, 0.040135678862113174});
    const double p = 4.2237154716207801;
    const auto q = corvane::bubble_p(*m, p, z);
    EXPECT_TRUE(q.split.empty());
    EXPECT_EQ(corvane::flash_pT(*m, p, q.T * (1 - 1e-6), z).phases.size(), 1u);
    for (double off : {-0.5, 1e-6 * q.T}) {
        const auto f = corvane::flash_pT(*m, p, q.T + off, z);
        ASSERT_EQ(f.phases.size(), 2u);
        const bool vapour = f.phases[1].rho < 0.5 * f.phases[0].rho && f.phases[1].rho < 0.003;
        EXPECT_EQ(vapour, off > 0);
        if (vapour) {
            EXPECT_NEAR(f.phases[1].x[0], q.incipient.x[0], 1e-4);
        }
    }
}

// The lowest of several bubble points beside liquids, where the search by strides ends at a higher one:
// flashes have one phase less on one side of it, and as many as there all the way down.
TEST(Saturation, TheLowestBesideLiquids) {
    const struct {
        std::vector<std::string> names;
        Vector<double> z;
        double p;
    } rows[] = {{{"water", "ethane", "hydrogen_sulfide"},
                 vec({0.21849927808073538, 0.1691363185160453, 0.61236440340321932}), 1.9827272162082281},
                {{"helium", "water", "decane"},
                 vec({0.012888667259515962, 0.69180958294646056, 0.295301749794023478}), 44.394778345216693}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.names[0]);
        const Mixture m = estimated_mixture("PR", "vdW1", row.names);
        corvane::SaturationOptions lower;
        lower.branch = corvane::Branch::lower;
        const auto q = corvane::saturation_p(*m, Saturated::bubble, row.p, row.z, lower);
        const auto phases = [&](double part) {
            return corvane::flash_pT(*m, row.p, q.T * part, row.z).phases.size();
        };
        EXPECT_NE(phases(1 + 1e-6), phases(1 - 1e-6));
        for (double part : {0.98, 0.95, 0.9, 0.8, 0.7}) EXPECT_EQ(phases(part), phases(1 - 1e-6)) << part;
        EXPECT_LT(q.T, 0.8 * corvane::bubble_p(*m, row.p, row.z).T);
    }
}

// A liquid rich in methane, which is a gas when pure, beside its own vapour: a bubble point was certified
// 0.0117 RT above it, and just above that pressure the liquid was said to be the whole. On a mesh of
// compositions, along both roots, nothing is below the plane of the bubble point, and something below those
// of the others.
TEST(Saturation, ALiquidRichInWhatIsAGas) {
    const std::vector<std::string> names{"carbon_dioxide", "hydrogen_sulfide", "methane"};
    const auto of = [](double carbon_dioxide, double methane) {
        return vec({carbon_dioxide, 1 - carbon_dioxide - methane, methane});
    };
    const auto lowest = [](ModelN const& m, double T, double p, Vector<double> const& x,
                           double rho) {
        double mu[3], least = 0;
        for (int i = 0; i < 3; ++i) mu[i] = m.my(x * rho, T, i);
        for (int a = 1; a < 100; ++a)
            for (int b = 1; a + b < 100; ++b) {
                const Vector<double> w = vec({a / 100.0, b / 100.0, 1 - (a + b) / 100.0});
                double roots[2] = {0, 0};
                m.vcalc(p, T, w, 1, roots[0], roots[1]);
                for (double r : roots) {
                    double d = 0;
                    for (int i = 0; r > 0 && i < 3; ++i) d += w[i] * (m.my(w * r, T, i) - mu[i]);
                    least = std::min(least, d);
                }
            }
        return least;
    };
    // A liquid of 86 % methane beside one of a seventh that and its vapour.
    const struct {
        char const* eos;
        double T;
        Vector<double> z;
        std::vector<double> split;
    } cases[] = {
        {"SRK", 196.12687291069335, of(.073001731717822441, .15882357568459593), {4.57, 4.6, 4.65}},
        {"SRK",
         197.59678195415998,
         of(.075255574004487943, .1574593338975912),
         {4.5561950518425309}},
        {"SRK",
         200.60300716527317,
         of(.08325879846736392, .17039141684495429),
         {4.8894921926420629}},
        {"PR", 197.18115558345028, of(.073080277638304728, .13942071323547886), {}},
        {"PR", 198.46682190079628, of(.065569538333329194, .13942305338382022), {}},
        {"PR", 198.83827449097043, of(.071478859483247337, .14406003529421976), {}},
        {"PR", 199.38957716547517, of(.07984370278261374, .14838325703585625), {}}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.eos << " " << c.T);
        const Mixture m = estimated_mixture(c.eos, "vdW1", names);
        const auto q = corvane::bubble_T(*m, c.T, c.z);
        EXPECT_GT(lowest(*m, c.T, q.p, q.incipient.x, q.incipient.rho), -1e-8);
        for (double p : c.split) {
            double liquid = 0, other = 0;
            m->vcalc(p, c.T, c.z, 1, liquid, other);
            ASSERT_LT(lowest(*m, c.T, p, c.z, liquid), -1e-5) << p;
            EXPECT_FALSE(corvane::stability(*m, p, c.T, c.z).stable) << p;
            EXPECT_EQ(corvane::flash_pT(*m, p, c.T, c.z).phases.size(), 2u) << p;
        }
    }
}

// Where both dew points, or both bubble points, lie between two steps of the search, it finds what the
// trace of the envelope does: by the jump of the density, or by the dip of the distance.
TEST(Saturation, SearchAloneBetweenItsSteps) {
    int found = 0;
    for (auto [x, off] : {std::pair(0.1, 1e-3), {0.9, 1e-3}, {0.1, 5e-3}}) {
        const Mixture m = peng_robinson("methane", "propane", 0.01);
        double hottest = 0;
        for (auto const& q : corvane::phase_envelope(*m, mix(x)).cricondentherm)
            hottest = std::max(hottest, q.T);
        for (auto kind : {Saturated::dew, Saturated::bubble})
            for (auto branch : {corvane::Branch::lower, corvane::Branch::upper}) {
                const auto p = [&](bool trace) {
                    corvane::SaturationOptions o;
                    o.branch = branch;
                    o.trace = trace;
                    try {
                        const auto q =
                            corvane::saturation_T(*m, kind, hottest * (1 - off), mix(x), o);
                        EXPECT_TRUE(q.certificate.holds());
                        return q.p;
                    } catch (EquilibriumFailure const& e) {
                        EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::no_solution) << e.what();
                        return 1.0;
                    }
                };
                EXPECT_NEAR(p(false) / p(true), 1, 1e-9) << x << " " << off;
                found += p(true) != 1.0;
            }
    }
    EXPECT_GE(found, 8);
}

// Mercury with more benzene than it dissolves at any pressure: no bubble point, and the search says
// so, though the trial phase beside the boundary of the vapour is not the liquid that appears
// there.
TEST(Saturation, BeyondEverySolubility) {
    const auto open = corvane::open_mixture("PR+vdW1", {"benzene", "mercury"});
    const Vector<double> z = mix(3.1871848822166251e-12);
    const double T = 698.72065704007605, ps = corvane::pure_saturation_T(*open.model->mdl1[1], T).p;
    for (double p = 1.001 * ps; p < 1000; p *= 1.5)
        EXPECT_EQ(corvane::flash_pT(*open.model, p, T, z).phases.size(), 2u) << p;
    try {
        corvane::bubble_T(*open.model, T, z);
        ADD_FAILURE() << "an answer";
    } catch (EquilibriumFailure const& e) {
        EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::no_solution) << e.what();
    }
}

// A liquid split hides the bubble point of the whole: what solves the equations is refused.
TEST(Stability, FindsLiquidsInLiquids) {
    const Mixture m = peng_robinson("carbon_dioxide", "water", 0.19);
    EXPECT_FALSE(corvane::stability(*m, 10, 280, mix(0.5)).stable);
    EXPECT_TRUE(corvane::stability(*m, 10, 280, mix(1e-6)).stable);
    // Below the bubble point the gas has the only density of its composition, next to which the
    // liquid's root begins.
    const Mixture b = mixture_of("SRK", "vdW1", {"benzene", "ethane"});
    ASSERT_GT(corvane::bubble_T(*b, 277.425, mix(0.845)).p, 0.2);
    EXPECT_FALSE(corvane::stability(*b, 0.160289, 277.425, mix(0.845)).stable);
    const VdwTwins twins(0.4);  // symmetric: splits below Tc(x) far from the middle
    const auto r = corvane::stability(twins, 20, 150, mix(0.5));
    EXPECT_FALSE(r.stable);
}

// Next to a critical point of two liquids the second minimum hides beside the phase itself: here at
// w, where the distance, from the slots of the model, is below zero by 1e-5.
TEST(Stability, FindsMinimaBesideThePhase) {
    const struct {
        double x, T, p, w;
    } cases[] = {{0.55, 185.858, 4.7764, 0.46}, {0.45, 186.963, 3.7, 0.568}};
    for (auto const& c : cases) {
        const Mixture m = mixture_of("SRK", "vdW1", {"carbon_dioxide", "methane"});
        m->id(0, 1, 1);
        m->load("SRK", "vdW1");
        double d = 0;
        for (int i = 0; i < 2; ++i) {
            double a = 0, b = 0;
            d += mix(c.w)[i] *
                 (m->my(c.p, c.T, mix(c.w), i, 1, a) - m->my(c.p, c.T, mix(c.x), i, 1, b));
        }
        EXPECT_LT(d, -5e-6);
        const auto r = corvane::stability(*m, c.p, c.T, mix(c.x));
        EXPECT_FALSE(r.stable);
        EXPECT_LE(r.tpd, d * (1 - 1e-6));
    }
}

// A model without DerivN: equal in its pure limit to the exact van der Waals fluid.
TEST(Saturation, WithoutExactDerivatives) {
    const VdwTwins m(0.05);
    try {
        const auto q = corvane::bubble_T(m, 220, mix(0.3));
        EXPECT_TRUE(q.certificate.holds());
        EXPECT_LE(q.certificate.dmu, 1e-9);
    } catch (EquilibriumFailure const& e) {
        EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::gave_up);
    }
}

// A model without densities in a range of states: the search meets it on the way, and says so.
TEST(Saturation, OfAModelWithHoles) {
    struct Holes : VdwTwins {
        double T, low, high;
        Holes(double T_, double low_, double high_)
            : VdwTwins(0.3), T(T_), low(low_), high(high_) {}
        int vcalc(double p, double at, Vector<double> const& x, int mode, double& a,
                  double& b) const override {
            return at < T && x[0] > low && x[0] < high ? 0 : VdwTwins::vcalc(p, at, x, mode, a, b);
        }
    };
    const struct {
        double hole, low, high, T;
    } rows[] = {{60, -1, 2, 30},       {400, 0.31, 0.9, 200}, {400, 0.31, 2, 200},
                {400, 0.85, 0.9, 200}, {400, 0.85, 0.9, 350},  // above all boundaries: whether
                                                               // there are none is open
                {400, 0.6, 0.8, 150}};                         // a vapour beside two liquids
    const auto expect_gave_up = [](auto const& call) {
        try {
            call();
            ADD_FAILURE() << "an answer";
        } catch (EquilibriumFailure const& e) {
            EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::gave_up);
        }
    };
    for (auto const& r : rows) {
        SCOPED_TRACE(r.low);
        const Holes m(r.hole, r.low, r.high);
        expect_gave_up([&] { corvane::bubble_T(m, r.T, mix(0.3)); });
        if (r.T < 100) continue;
        if (r.T > 300) expect_gave_up([&] { corvane::dew_T(m, r.T, mix(0.3)); });
        if (r.T < 200) {  // from a neighbour without the hole, and no flash
            const auto near = corvane::bubble_T(VdwTwins(0.3), r.T + 0.1, mix(0.3));
            ASSERT_EQ(near.split.size(), 2u);
            corvane::SaturationOptions o;
            o.start = &near;
            EXPECT_NO_THROW(corvane::bubble_T(VdwTwins(0.3), r.T, mix(0.3), o));
            expect_gave_up([&] { corvane::bubble_T(m, r.T, mix(0.3), o); });
        }
        // One phase, and two: whether there are others is open.
        ASSERT_EQ(corvane::flash_pT(VdwTwins(0.3), 5, 200, mix(0.3)).phases.size(), 1u);
        expect_gave_up([&] { corvane::flash_pT(m, 5, 200, mix(0.3)); });
        ASSERT_EQ(corvane::flash_pT(VdwTwins(0.3), 5, 150, mix(0.3)).phases.size(), 2u);
        expect_gave_up([&] { corvane::flash_pT(m, 5, 150, mix(0.3)); });
    }
}

// Far beyond the envelope a refusal costs about ten solutions: its outline and a search, no
// critical point and no curve of many points (66 to 140 solutions, by evaluations).
TEST(Saturation, RefusalsBeyondTheEnvelope) {
    struct Case {
        char const *eos, *mth;
        std::vector<std::string> names;
        Vector<double> z;
        Saturated kind;
        double T;  // answered
        std::vector<double> beyond;
        double p;  // of p
        std::vector<double> beyond_p;
    };
    const auto cases = {Case{"PR",
                             "vdW1",
                             {"methane", "propane"},
                             mix(0.5),
                             Saturated::bubble,
                             250,
                             {340, 400, 500},
                             2,
                             {30, 300}},
                        Case{"PR",
                             "vdW1",
                             {"methane", "propane"},
                             mix(0.5),
                             Saturated::dew,
                             250,
                             {340, 400, 500},
                             2,
                             {30, 300}},
                        Case{"PCSAFT",
                             "LB",
                             {"methane", "butane"},
                             mix(0.5),
                             Saturated::bubble,
                             310,
                             {400, 500},
                             2,
                             {}},
                        Case{"SRK",
                             "vdW1",
                             {"methane", "ethane", "propane", "decane"},
                             vec({0.6, 0.2, 0.1, 0.1}),
                             Saturated::dew,
                             400,
                             {700, 1000},
                             2,
                             {}}};
    for (Case const& c : cases) {
        SCOPED_TRACE(c.names[1] + (c.kind == Saturated::bubble ? " bubble" : " dew"));
        const Mixture m = mixture_of(c.eos, c.mth, c.names);
        CountingMixture counted(*m, true);
        const auto cost = [&](bool at_T, double value, bool answered) {
            const long before = counted.evaluations + counted.densities;
            try {
                if (at_T)
                    corvane::saturation_T(counted, c.kind, value, c.z);
                else
                    corvane::saturation_p(counted, c.kind, value, c.z);
                EXPECT_TRUE(answered);
            } catch (EquilibriumFailure const& e) {
                EXPECT_FALSE(answered);
                EXPECT_EQ(e.kind(), EquilibriumFailure::Kind::no_solution);
            }
            return static_cast<double>(counted.evaluations + counted.densities - before);
        };
        // The stability test of more than two components, which is most of the search, looks at
        // many trial phases where nothing is near.
        const double most = c.names.size() == 2 ? 13 : 20;
        const double solution = cost(true, c.T, true),
                     of_p = c.beyond_p.empty() ? 0.0 : cost(false, c.p, true);
        for (double T : c.beyond) EXPECT_LE(cost(true, T, false), most * solution) << T;
        for (double p : c.beyond_p) EXPECT_LE(cost(false, p, false), 40 * of_p) << p;
    }
}

// Between the critical point and the cricondentherm there are two dew points. By the search alone:
// at high pressures, where a fluid of like molecules has the volumes of an ideal gas, it does not
// end.
TEST(Saturation, RetrogradeDewPointsBySearch) {
    const struct {
        char const *first, *second;
    } cases[] = {{"methane", "ethane"}, {"nitrogen", "methane"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.first);
        const Mixture m = estimated_mixture("PR", "vdW1", {c.first, c.second});
        const auto e = corvane::phase_envelope(*m, mix(0.5));
        ASSERT_TRUE(e.critical.size() == 1 && e.cricondentherm.size() == 1);
        corvane::SaturationOptions o;
        o.trace = false;
        double p[2];
        for (const bool upper : {false, true}) {
            o.branch = upper ? corvane::Branch::upper : corvane::Branch::lower;
            const auto q =
                corvane::dew_T(*m, 0.5 * (e.critical[0].T + e.cricondentherm[0].T), mix(0.5), o);
            expect_saturated(*m, q, mix(0.5));
            p[upper] = q.p;
        }
        EXPECT_LT(p[0], e.cricondentherm[0].p);
        EXPECT_GT(p[1], e.cricondentherm[0].p);
    }
}

// Beyond the closed envelope, too, there are boundaries, where two dense fluids part: within the
// search and beyond it.
TEST(Saturation, BeyondAClosedEnvelope) {
    const struct {
        char const *first, *second;
        double x;
        Saturated kind;
        double T, least, most;  // MPa: where it is
    } cases[] = {
        {"heptane", "water", 0.27825152939065045, Saturated::dew, 712.410356033313, 10, 1000},
        {"ammonia", "hexadecane", 0.98224470550921128, Saturated::dew, 729.513448023817, 1000,
         5000},
        {"cyclohexane", "water", 0.27155112508318963, Saturated::bubble, 760.452548243857, 1000,
         5000}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = estimated_mixture("PR", "vdW1", {c.first, c.second});
        const corvane::SaturationPoint q = corvane::saturation_T(*m, c.kind, c.T, mix(c.x));
        expect_saturated(*m, q, mix(c.x));
        EXPECT_GT(q.p, c.least);
        EXPECT_LT(q.p, c.most);
    }
}

// Refusals beyond the envelope, and points inside, with the curve kept: the same verdicts and, to
// the bounds of their errors, the same points, for a part of the evaluations. Of another
// composition or model it is not read.
TEST(Saturation, KeptEnvelopes) {
    struct Case {
        char const *eos, *mth;
        std::vector<std::string> names;
        Vector<double> z;
        std::vector<double> T;  // the first one has a bubble and a dew point
    };
    for (Case const& c :
         {Case{"PR",
               "vdW1",
               {"methane", "propane"},
               mix(0.5),
               {250, 300, 312, 320, 325, 340, 400, 500}},
          Case{"PR", "vdW1", {"carbon_dioxide", "water"}, mix(0.5), {300, 400, 600, 640, 700}},
          Case{"PCSAFT", "LB", {"methane", "butane"}, mix(0.5), {310, 360, 380, 400, 500}},
          Case{"SRK",
               "vdW1",
               {"methane", "ethane", "propane", "decane"},
               vec({0.6, 0.2, 0.1, 0.1}),
               {300, 450, 480, 500, 700}}}) {
        SCOPED_TRACE(c.names[1]);
        const Mixture m = mixture_of(c.eos, c.mth, c.names);
        CountingMixture counted(*m, true);
        const corvane::KeptEnvelope kept(counted, c.z);
        ASSERT_TRUE(kept.whole());
        EXPECT_TRUE(kept.of(counted, c.z) && !kept.of(*m, c.z) && !kept.of(counted, c.z * 0.999));
        corvane::SaturationOptions with, stranger;
        with.envelope = stranger.envelope = &kept;
        for (const auto kind : {corvane::Saturated::bubble, corvane::Saturated::dew}) {
            for (double T : c.T) {
                SCOPED_TRACE(T);
                std::optional<corvane::SaturationPoint> plain, quick;
                std::optional<EquilibriumFailure::Kind> why, why_quick;
                const auto solve = [&](corvane::SaturationOptions const& o, auto& point,
                                       auto& failure) {
                    const long before = counted.evaluations + counted.densities;
                    try {
                        point = corvane::saturation_T(counted, kind, T, c.z, o);
                    } catch (EquilibriumFailure const& e) {
                        failure = e.kind();
                    }
                    return counted.evaluations + counted.densities - before;
                };
                const long all = solve({}, plain, why), less = solve(with, quick, why_quick);
                ASSERT_EQ(plain.has_value(), quick.has_value());
                EXPECT_EQ(why, why_quick);
                EXPECT_TRUE(plain || T != c.T[0]);
                if (plain) {
                    EXPECT_NEAR(quick->p / plain->p, 1,
                                plain->certificate.value_error + quick->certificate.value_error);
                } else if (kept.beyond(true, T)) {
                    EXPECT_LT(less, all);  // no curve is looked for
                }
            }
        }
        EXPECT_EQ(corvane::bubble_T(*m, c.T[0], c.z, stranger).p,
                  corvane::bubble_T(*m, c.T[0], c.z).p);
    }
}
}  // namespace
