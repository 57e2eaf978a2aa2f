// Bubble and dew points beside liquids that split.
#include "equilibria/phases.h"

#include <benchmarks/judge/cubic.h>
#include <benchmarks/judge/verdict.h>
#include <corvane/corvane.h>

#include <optional>

using corvane::Saturated;

namespace {
using Names = std::vector<std::string>;

// Where a liquid splits its first vapour appears beside two liquids: the state of three phases, for
// a binary at any composition between them.
TEST(SplitLiquid, OfABinaryIsItsThreePhaseState) {
    const struct {
        char const *first, *second;
        double T;
        // the last: a liquid without vapour to speak of, stiff and of fewest moles per volume
    } cases[] = {
        {"carbon_dioxide", "water", 280}, {"water", "methane", 180}, {"hydrogen", "decane", 31.26}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = estimated_mixture("PR", "vdW1", {c.first, c.second});
        const auto three = corvane::three_phase_T(*m, c.T);
        for (double x : {0.3, 0.6}) {
            const auto q = corvane::bubble_T(*m, c.T, mix(x));
            EXPECT_NEAR(q.p / three.p, 1, 1e-9);
            EXPECT_NEAR(corvane::bubble_p(*m, q.p, mix(x)).T / c.T, 1, 1e-9);
            ASSERT_EQ(q.split.size(), 2u);
            double whole = 0;
            for (unsigned k : {0u, 1u}) {
                EXPECT_NEAR(q.split[k].x[0], three.phases[k].x[0], 1e-8);
                EXPECT_GT(q.fraction[k], 0);
                whole += q.fraction[k] * q.split[k].x[0];
            }
            EXPECT_NEAR(whole, x, 1e-12);
            EXPECT_NEAR(q.incipient.x[0], three.phases[2].x[0], 1e-8);
            EXPECT_EQ(q.certificate.phases.size(), 3u);
            EXPECT_LE(q.certificate.value_error, 1e-9);
        }
    }
}

// From a neighbour the same point without flashes, also where the neighbour splits and this does
// not.
TEST(SplitLiquid, FollowsItsNeighbour) {
    const Mixture m = estimated_mixture("PR", "vdW1", {"ethanol", "water", "hexane"});
    std::vector<Vector<double>> way;
    const auto add = [&](double ethanol, double water) {
        way.emplace_back(3);
        way.back()[0] = ethanol;
        way.back()[1] = water;
        way.back()[2] = 1 - ethanol - water;
    };
    for (double ethanol = 0.05; ethanol < 0.95; ethanol += 0.02) add(ethanol, 0.5 * (1 - ethanol));
    const std::size_t counted = way.size();
    for (double ethanol = 0.9; ethanol > 0.002; ethanol /= 1.15) add(ethanol, 0.05 * ethanol);
    std::optional<corvane::SaturationPoint> last;
    long warm = 0, cold = 0;
    int split = 0, single = 0;
    for (std::size_t k = 0; k < way.size(); ++k) {
        Vector<double> const& x = way[k];
        corvane::SaturationOptions o;
        o.start = last ? &*last : nullptr;
        const auto from = corvane::bubble_p(*m, 0.1, x, o), without = corvane::bubble_p(*m, 0.1, x);
        EXPECT_NEAR(from.T / without.T, 1, 1e-9);
        ASSERT_EQ(from.split.size(), without.split.size());
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(from.incipient.x[i], without.incipient.x[i], 1e-8);
        if (k < counted && last && last->split.size() == from.split.size()) {
            warm += from.certificate.evaluations;
            cold += without.certificate.evaluations;
        }
        ++(from.split.empty() ? single : split);
        last = from;
    }
    EXPECT_GT(split, 10);
    EXPECT_GT(single, 10);
    EXPECT_LT(4 * warm, cold) << warm;
}

// Next to a critical end point, where the vapour is nearly one of the liquids when it vanishes
// (mole fractions differ by 1e-4 to 2e-3) and flashes have lost sight of it: the judge solves all
// three phases with 113 bits.
TEST(SplitLiquid, OfWhichOneIsNearlyTheVapour) {
    const struct {
        char const* eos;
        Names names;
        Vector<double> z;
        double p;
    } rows[] = {{"PR",
                 {"ethanol", "water", "benzene"},
                 vec({0.4931355287873797, 0.20982877190922541, 0.29703569929081058}),
                 45.769902401839119},
                {"PR",
                 {"hydrogen", "methane", "decane"},
                 vec({0.45423198104442875, 0.5407738947472158, 0.0049941242083555108}),
                 15.979287779645114},
                {"SRK",
                 {"benzene", "mercury", "water"},
                 vec({0.033503388118262492, 0.6495511270806641, 0.31694548480782397}),
                 18.228293278743028},
                {"SRK",
                 {"nitrogen", "methane", "carbon_dioxide"},
                 vec({0.25904829476246882, 0.50958395727686501, 0.231367747956661}),
                 8.0816180628768368}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.names[0]);
        const Mixture m = estimated_mixture(row.eos, "vdW1", row.names);
        const auto q = corvane::bubble_p(*m, row.p, row.z);
        ASSERT_EQ(q.split.size(), 2u);
        EXPECT_NEAR(q.split[1].rho / q.incipient.rho, 1, 0.02);
        const judge::Cubic cubic(*m);
        const judge::Court<judge::Cubic> court(cubic);
        const auto x = court.normal<judge::Quad>(row.z);
        judge::SeveralNewton<judge::Cubic> truth(cubic, false, true, true, row.p, q.T, x);
        std::vector<judge::Phase<judge::Quad>> phases;
        for (auto const* f : {&q.split[0], &q.split[1], &q.incipient}) {
            phases.emplace_back();
            for (int i = 0; i < 3; ++i) phases.back().rho[i] = judge::Quad(f->rho) * f->x[i];
        }
        ASSERT_TRUE(truth.solve(phases, q.fraction));
        EXPECT_LE(abs(truth.T() / q.T - 1), q.certificate.value_error + 3e-16);
        EXPECT_NEAR(double(truth.part[1]), q.fraction[1], 1e-6);
        EXPECT_GT(abs(truth.phase[1].x(0, 3) - truth.phase[2].x(0, 3)), 1e-5);
        if (&row != std::end(rows) - 1) continue;
        // The court agrees, and sees a temperature or an amount that is off. At T it is the same
        // point.
        const auto judged = [&](corvane::SaturationPoint const& point) {
            return court.saturation(Saturated::bubble, false, row.p, row.z, point).fault;
        };
        EXPECT_EQ(judged(q), judge::Fault::none);
        EXPECT_EQ(court.unfollowed, 0);
        auto wrong = q;
        wrong.T *= 1 + 1e-10;
        EXPECT_EQ(judged(wrong), judge::Fault::bound);
        wrong = q;
        std::swap(wrong.fraction[0], wrong.fraction[1]);
        EXPECT_EQ(judged(wrong), judge::Fault::fraction);
        EXPECT_NEAR(corvane::bubble_T(*m, q.T, row.z).p / row.p, 1, 1e-8);
    }
}

// The vapour beside two liquids counts among the branches, too: that of the lowest p; a higher one
// is where the lighter of the liquids vanishes.
TEST(SplitLiquid, BelongsToTheBranches) {
    const struct {
        char const *first, *second;
        double x, T;
        bool two;
    } cases[] = {{"carbon_dioxide", "water", 0.5, 290, false},
                 {"water", "butane", 0.5, 320, false},
                 {"methane", "decane", 0.6880896356, 135.3710183, true},
                 {"ethane", "methanol", 0.2315563218, 281.9809472, true},
                 {"carbon_dioxide", "decane", 0.8301280966, 293.4530231, true}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.first << ' ' << c.second);
        const Mixture m = estimated_mixture("PR", "vdW1", {c.first, c.second});
        const judge::Cubic cubic(*m);
        const double p = corvane::three_phase_T(*m, c.T).p;
        corvane::SaturationOptions o;
        o.branch = corvane::Branch::lower;
        const auto lower = corvane::bubble_T(*m, c.T, mix(c.x), o);
        EXPECT_NEAR(lower.p / p, 1, 1e-9);
        EXPECT_EQ(lower.split.size(), 2u);
        o.branch = corvane::Branch::upper;
        const auto upper = corvane::bubble_T(*m, c.T, mix(c.x), o);
        EXPECT_EQ(upper.p > 1.01 * p, c.two) << upper.p;
        EXPECT_EQ(judge::Court<judge::Cubic>(cubic)
                      .saturation(Saturated::bubble, true, c.T, mix(c.x), upper)
                      .fault,
                  judge::Fault::none);
        EXPECT_EQ(corvane::stability(*m, 1.001 * upper.p, c.T, mix(c.x)).stable, c.two);
    }
}

// No vapour appears beside two liquids, or vanishes, where the lightest phase goes from gas to
// liquid without a jump, or where no state of the search has a gas: all temperatures are asked.
TEST(SplitLiquid, WithoutAVapourIsNoSolution) {
    const struct {
        char const *first, *second;
        double x, p, coldest, hottest;
    } cases[] = {{"hydrogen", "helium", 0.67, 23.4889, 3, 66},
                 {"helium", "decane", 0.2, 0.285, 3, 700}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = estimated_mixture("PR", "vdW1", {c.first, c.second});
        double last = 0, T = c.coldest;
        for (; T < c.hottest; T *= 1.02) {
            const auto q = corvane::flash_pT(*m, c.p, T, mix(c.x));
            const double rho = q.phases.back().rho;
            if (last > 0 && q.phases.size() > 1) {
                EXPECT_LT(std::fabs(std::log(rho / last)), 0.6) << T;
            }
            last = rho;
        }
        try {
            corvane::bubble_p(*m, c.p, mix(c.x));
            ADD_FAILURE();
        } catch (corvane::EquilibriumFailure const& e) {
            EXPECT_EQ(e.kind(), corvane::EquilibriumFailure::Kind::no_solution) << e.what();
        }
    }
}

// So cold that one liquid is pure helium (or hydrogen, 3e-11 of which decane dissolves), and its
// vapour, too: the saturation of helium by itself.
TEST(SplitLiquid, BesideOneThatIsPure) {
    for (auto const& [light, p] : {std::pair("helium", 0.0113),
                                   {"helium", 0.0875},
                                   {"helium", 0.19},
                                   {"hydrogen", 0.0011},
                                   {"hydrogen", 4.5e-4}}) {
        const Mixture m = estimated_mixture("PR", "vdW1", {light, "decane"});
        const judge::Cubic cubic(*m);
        for (double x : {p < 0.01 ? 0.002 : 0.5, 0.2, 0.93}) {
            SCOPED_TRACE(testing::Message() << light << ' ' << p << ' ' << x);
            const auto q = corvane::bubble_p(*m, p, mix(x));
            ASSERT_EQ(q.split.size(), 2u);
            const auto pure = corvane::pure_saturation_p(*m->mdl1[0], p);
            EXPECT_NEAR(q.T / pure.T, 1, q.certificate.value_error);
            EXPECT_NEAR(q.incipient.rho / pure.rhoV, 1, q.certificate.rho_error);
            EXPECT_NEAR(q.fraction[q.split[0].x[0] > 0.5 ? 0 : 1], x, 1e-10);
            EXPECT_EQ(judge::Court<judge::Cubic>(cubic)
                          .saturation(Saturated::bubble, false, p, mix(x), q)
                          .fault,
                      judge::Fault::none);
            EXPECT_NEAR(corvane::bubble_T(*m, q.T, mix(x)).p / p, 1, 1e-9);
        }
    }
}

// The same of three components, beside two more liquids: the vapour and one of them hold 1e-80 and
// less of the others, and decane not even that.
TEST(SplitLiquid, BesideThreeOfWhichOneIsPure) {
    const struct {
        char const* eos;
        double helium, methane, p;
    } rows[] = {{"PR", 0.0026836312564832011, 0.70722263493527833, 0.1140865966207486},
                {"PR", 0.22164483254886533, 0.62279040453980, 0.19665524818823552},
                {"SRK", 0.0080987921668093654, 6.3626454352356861e-07, 0.19186158864209885}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.eos << ' ' << row.p);
        const Mixture m = estimated_mixture(row.eos, "vdW1", {"helium", "methane", "decane"});
        const Vector<double> z = vec({row.helium, row.methane, 1 - row.helium - row.methane});
        const auto q = corvane::bubble_p(*m, row.p, z);
        const auto pure = corvane::pure_saturation_p(*m->mdl1[0], row.p);
        EXPECT_NEAR(q.T / pure.T, 1, q.certificate.value_error + pure.value_error);
        EXPECT_NEAR(q.incipient.rho / pure.rhoV, 1, q.certificate.rho_error + pure.rho_error);
        ASSERT_EQ(q.split.size(), 3u);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(q.split[i].x[2 - i], 1, 1e-6);
            double whole = 0.0;
            for (int k = 0; k < 3; ++k) whole += q.fraction[k] * q.split[k].x[i];
            EXPECT_NEAR(whole / z[i], 1, 1e-9);
        }
    }
}

// Where the model's states on the way mislead the search to no pressure at all it is still a
// refusal.
TEST(SplitLiquid, WithoutPressureIsARefusal) {
    const Mixture m = estimated_mixture("MEOS", "GERG", {"hydrogen", "water"}, 8);
    EXPECT_THROW(corvane::bubble_T(*m, 168.5416702, mix(0.7651253)), corvane::EquilibriumFailure);
}

// Three components: the first vapour beside three liquids has one p at given T, whatever the whole
// is, and above it there are three liquids, below it two and a vapour.
TEST(SplitLiquid, IntoAsManyAsComponents) {
    const struct {
        Names names;
        double z0, z1, value;
        bool at_T;
    } cases[] = {
        {{"carbon_dioxide", "methane", "water"}, 0.40934982, 0.35464269, 0.0127242, false},
        {{"carbon_dioxide", "methane", "water"}, 0.5105328, 0.467617796, 177.482526, true},
        {{"methane", "hydrogen_sulfide", "water"}, 0.036342173, 0.153244473, 0.03922374, false},
        {{"benzene", "mercury", "water"}, 0.352588539, 0.380653206, 5.34823827, false},
        {{"hydrogen", "nitrogen", "water"}, 0.99294678, 0.0070530931, 24.3598629, true},
        // mercury holds no decane that doubles could say
        {{"decane", "mercury", "methane"}, 0.032704159, 0.142048599, 0.05516079, false}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.names[0] << ' ' << c.names[2] << ' ' << c.value);
        const Mixture m = estimated_mixture("PR", "vdW1", c.names);
        const judge::Cubic cubic(*m);
        const Vector<double> z = vec({c.z0, c.z1, 1 - c.z0 - c.z1});
        const auto q =
            c.at_T ? corvane::bubble_T(*m, c.value, z) : corvane::bubble_p(*m, c.value, z);
        ASSERT_EQ(q.split.size(), 3u);
        EXPECT_EQ(judge::Court<judge::Cubic>(cubic)
                      .saturation(Saturated::bubble, c.at_T, c.value, z, q)
                      .fault,
                  judge::Fault::none);
        for (int i = 0; i < 3; ++i) {
            double whole = 0;
            for (unsigned k = 0; k < 3; ++k) whole += q.fraction[k] * q.split[k].x[i];
            EXPECT_NEAR(whole, z[i], 1e-12);
        }
        for (double by : {1.001, 0.999}) {
            const auto beside = corvane::flash_pT(*m, by * q.p, q.T, z);
            EXPECT_EQ(beside.phases.size(), 3u);
            EXPECT_EQ(beside.phases.back().rho > 0.5 * q.split.back().rho, by > 1);
        }
        EXPECT_LE(q.certificate.value_error, 1e-9);
        EXPECT_TRUE(q.certificate.bounded());
    }
}

// Four components beside three liquids: the amounts are among the equations, and both sides of p
// have them all.
TEST(SplitLiquid, IntoThreeOfFour) {
    const struct {
        Names names;
        std::vector<double> z;
        double T;
    } cases[] = {{{"carbon_dioxide", "water", "methane", "decane"},
                  {0.4408251253, 0.2805063789, 0.229521969},
                  180.1783263},
                 {{"decane", "water", "mercury", "methane"},
                  {0.2735812011, 0.1229249848, 0.09618313428},
                  262.4733534}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.T);
        const Mixture m = estimated_mixture("PR", "vdW1", c.names);
        const Vector<double> z = vec({c.z[0], c.z[1], c.z[2], 1 - c.z[0] - c.z[1] - c.z[2]});
        const auto q = corvane::bubble_T(*m, c.T, z);
        ASSERT_EQ(q.split.size(), 3u);
        EXPECT_NEAR(corvane::bubble_p(*m, q.p, z).T / c.T, 1, 1e-9);
        for (int i = 0; i < 4; ++i) {
            double whole = 0;
            for (unsigned k = 0; k < 3; ++k) {
                whole += q.fraction[k] * q.split[k].x[i];
                if (q.split[k].x[i] == 0) continue;  // less than doubles can say
                EXPECT_NEAR(m->my(q.split[k].x * q.split[k].rho, q.T, i),
                            m->my(q.incipient.x * q.incipient.rho, q.T, i), 1e-9);
            }
            EXPECT_NEAR(whole, z[i], 1e-12);
        }
        for (double by : {1.001, 0.999}) {
            const auto beside = corvane::flash_pT(*m, by * q.p, q.T, z);
            EXPECT_EQ(beside.phases.size(), by > 1 ? 3u : 4u);
        }
        EXPECT_LE(q.certificate.value_error, 1e-9);
    }
}

TEST(SplitLiquid, OfAMixture) {
    const Mixture m =
        estimated_mixture("PR", "vdW1", {"nitrogen", "methane", "ethane", "butane", "pentane"});
    const Vector<double> z = vec({0.3797, 0.3225, 0.278, 0.0014, 0.0184});
    for (double given : {0.1, 0.4, 0.8, 1.2, 120.0}) {  // MPa; K
        SCOPED_TRACE(given);
        // At 120 K the second liquid appears at a higher pressure than the vapour.
        const auto q =
            given > 2 ? corvane::bubble_T(*m, given, z) : corvane::bubble_p(*m, given, z);
        const double p = q.p;
        ASSERT_EQ(q.split.size(), 2u);
        const std::vector<corvane::PhaseRecord> phases{q.split[0], q.split[1], q.incipient};
        for (int i = 0; i < 5; ++i) {
            EXPECT_NEAR(q.fraction[0] * q.split[0].x[i] + q.fraction[1] * q.split[1].x[i], z[i],
                        1e-12);
            for (auto const& phase : phases)
                EXPECT_NEAR(m->my(phase.x * phase.rho, q.T, i),
                            m->my(phases[2].x * phases[2].rho, q.T, i), 1e-9);
        }
        // Two liquids on one side, vapour too on the other.
        const auto above = corvane::flash_pT(*m, p * 1.001, q.T, z);
        EXPECT_EQ(above.phases.size(), 2u);
        EXPECT_GT(above.phases[1].rho, 0.5 * q.split[1].rho);
        const auto below = corvane::flash_pT(*m, p * 0.999, q.T, z);
        EXPECT_LT(below.phases.back().rho, 0.5 * q.split[1].rho);
    }
}
}  // namespace
