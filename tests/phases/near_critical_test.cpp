// Bubble and dew points next to critical points, and beside liquids that split.
#include "equilibria/phases.h"

#include <benchmarks/judge/cubic.h>
#include <benchmarks/judge/verdict.h>
#include <corvane/corvane.h>

#include <optional>

using corvane::Saturated;

namespace {
using Names = std::vector<std::string>;

/// Pairs as shipped or estimated; set: of the components, −1 what the pairs name.
Mixture loaded(char const* eos, char const* mth, Names const& names, int set = 1) {
    Mixture m(attachN(eos, mth));
    m->alloc(static_cast<int>(names.size()), eos);
    for (int i = 0; i < m->mdl1.size(); ++i) {
        m->mdl1[i]->name(names[static_cast<unsigned>(i)].c_str());
        m->mdl1[i]->id(set);
        for (int j = 0; j < i; ++j) m->id(j, i, 1);
    }
    corvane::load_estimating(*m, eos, mth);
    return m;
}

// A march in T to the critical point in variables in which the trivial solution does not exist,
// with central differences for a Jacobian: all digits as they came out.
TEST(NearCritical, MeetsAMarchToTheCriticalPoint) {
    const Mixture m = loaded("SRK", "vdW1", {"heptane", "pentane"});
    const Vector<double> z = mix(0.0367);
    const double Tc = 473.4649651;
    EXPECT_NEAR(corvane::critical_point(*m, z).T, Tc, 1e-7);
    const struct {
        double T, p;
    } rows[] = {{470, 3.235413165},        {472.2, 3.331992943},       {Tc - 0.1, 3.379881001},
                {Tc - 1e-2, 3.382352486}, {Tc - 1e-4, 3.382450330}, {Tc - 1e-6, 3.382450666}};
    for (auto const& row : rows) {
        const auto q = corvane::bubble_T(*m, row.T, z);
        EXPECT_NEAR(q.p, row.p, 4e-9) << row.T;  // dp/dT = 0.025 times the last digit of Tc
        EXPECT_TRUE(q.certificate.bounded());
        EXPECT_LE(q.certificate.value_error, 1e-9);
        // pairs on the spinodal agree in their potentials just as well
        EXPECT_GT(q.given.rho / q.incipient.rho, 1 + 1e-8);
    }
}

// All of it within 5 % of critical points: no refusal, and true by an equation and a solver of their
// own with 113 bits (which at less than 1e-4 of it meet their own rounding), errors within the bounds.
TEST(NearCritical, IsTrueWithinItsBounds) {
    for (char const* eos : {"PR", "SRK"})
        for (Names const& names : {Names{"heptane", "pentane"}, {"carbon_dioxide", "ethane"},
                                   {"methane", "propane"}, {"nitrogen", "octane"}}) {
            const Mixture m = loaded(eos, "vdW1", names);
            const judge::Cubic cubic(*m);
            const judge::Court<judge::Cubic> court(cubic);
            for (double x : {0.02, 0.3, 0.8}) {
                const Vector<double> z = mix(x);
                corvane::CriticalPoint c;
                try {
                    c = corvane::critical_point(*m, z);
                } catch (corvane::EquilibriumFailure const&) {
                    continue;  // nitrogen-rich: none
                }
                for (double off : {1e-4, 1e-3, 8e-3, 5e-2})
                    for (Saturated kind : {Saturated::bubble, Saturated::dew})
                        for (bool at_T : {true, false}) {
                            SCOPED_TRACE(testing::Message()
                                         << eos << ' ' << names[0] << ' ' << x << ' ' << off
                                         << (at_T ? " T" : " p") << (kind == Saturated::dew));
                            const double value = (at_T ? c.T : c.p) * (1 - off);
                            const auto q = at_T ? corvane::saturation_T(*m, kind, value, z)
                                                : corvane::saturation_p(*m, kind, value, z);
                            const auto v = court.saturation(kind, at_T, value, z, q);
                            EXPECT_EQ(v.fault, judge::Fault::none)
                                << judge::kFaultNames[static_cast<int>(v.fault)] << v.error;
                            EXPECT_LE(v.error, q.certificate.value_error);
                            EXPECT_LE(v.x_error, q.certificate.x_error);
                            EXPECT_LE(q.certificate.value_error, 1e-8);
                            if (kind == Saturated::dew || !at_T) continue;
                            const double p = q.p * (1 - 0.2 * off);
                            const auto f = corvane::flash_pT(*m, p, value, z);
                            const auto w = court.flash(p, value, z, f);
                            EXPECT_EQ(w.fault, judge::Fault::none)
                                << "flash " << judge::kFaultNames[static_cast<int>(w.fault)];
                            if (f.phases.size() < 2) continue;  // next to an azeotrope
                            EXPECT_LE(w.x_error, f.certificate.x_error);
                            EXPECT_LE(f.certificate.x_error, 1e-6);
                        }
            }
        }
}

// One phase above a bubble point and two below, as near to it as its error allows, where rounding
// hides the sign of the tangent-plane distance: by the test of the whole and by the flash.
// A heavy component that changes fast from phase to phase, traces of which rounding is all the error,
// and lines so steep that the phases at the given pressure differ by 1e-7.
TEST(NearCritical, IsTrueWithinItsBoundsWhereOneComponentChangesFast) {
    const struct {
        Names names;
        double z0, z1;
        Saturated kind;
        double T, p;
    } rows[] = {
        {{"carbon_dioxide", "eicosane", "ethane"}, 0.32258125115448466, 0.028566293437203828,
         Saturated::bubble, 368.71928792754244, 0},
        {{"carbon_dioxide", "eicosane", "ethane"}, 0.78511796675168272, 0.031920006783233631,
         Saturated::bubble, 384.7601694336584, 0},
        {{"nitrogen", "carbon_dioxide", "octane"}, 2.0991794394004609e-08, 1 - 3.17473163e-8,
         Saturated::dew, 303.86010318601939, 0},
        {{"ethane", "propane", "decane"}, 1 - 3.141516827e-9, 2.9202402482408639e-09,
         Saturated::bubble, 216.1097567263559, 0},
        {{"carbon_dioxide", "hydrogen"}, 0.34029596151104968, 0, Saturated::dew, 0, 902.7781754179498},
        {{"hydrogen", "methane"}, 0.65998728937149348, 0, Saturated::bubble, 100.38223954258741, 0},
        {{"methane", "helium"}, 0.30490740411284645, 0, Saturated::dew, 0, 601.10882755561613}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.names[1] << ' ' << row.T << ' ' << row.p);
        const Mixture m = loaded("PR", "vdW1", row.names);
        const judge::Cubic cubic(*m);
        const Vector<double> z = row.names.size() == 2
                                     ? vec({row.z0, 1 - row.z0})
                                     : vec({row.z0, row.z1, 1 - row.z0 - row.z1});
        const bool at_T = row.T > 0;
        const double given = at_T ? row.T : row.p;
        const auto q = at_T ? corvane::saturation_T(*m, row.kind, given, z)
                            : corvane::saturation_p(*m, row.kind, given, z);
        const auto v =
            judge::Court<judge::Cubic>(cubic).saturation(row.kind, at_T, given, z, q);
        EXPECT_EQ(v.fault, judge::Fault::none) << v.ratio;
    }
}

TEST(NearCritical, StabilityAndFlashChangeAtTheBubblePoint) {
    const struct {
        char const *eos, *mth;
        Names names;
        double x;
        int set;
    } cases[] = {{"PR", "vdW1", {"heptane", "pentane"}, 0.0309, 1},
                 {"PR", "vdW1", {"methane", "pentane"}, 0.149, 1},
                 {"SRK", "vdW1", {"methane", "hydrogen_sulfide"}, 0.47, 1},
                 {"PCSAFT", "LB", {"methane", "pentane"}, 0.508084, -1}};
    for (auto const& c : cases) {
        const Mixture m = loaded(c.eos, c.mth, c.names, c.set);
        const Vector<double> z = mix(c.x);
        const double Tc = corvane::critical_point(*m, z).T;
        for (double off : {3e-6, 1e-4, 3e-3, 3e-2}) {
            const auto q = corvane::bubble_T(*m, Tc * (1 - off), z);
            const double near = 20 * q.certificate.value_error;
            ASSERT_LT(near, 1e-7);
            for (double e : {near, 1e-8, 1e-7, 1e-5})
                for (double side : {-1.0, 1.0}) {
                    SCOPED_TRACE(testing::Message() << c.eos << ' ' << c.x << ' ' << off << ' ' << e * side);
                    const double p = q.p * (1 + side * std::max(e, near));
                    const auto s = corvane::stability(*m, p, q.T, z);
                    EXPECT_EQ(s.unconverged, 0);
                    EXPECT_EQ(s.stable, side > 0);
                    EXPECT_EQ(corvane::flash_pT(*m, p, q.T, z).phases.size(), side > 0 ? 1u : 2u);
                }
        }
    }
}

// The incipient phase of a bubble point has its dew point there, and the first phase is the
// incipient one then: for every model and any number of components. Two results, two starts.
TEST(NearCritical, OnePhaseSBubblePointIsTheOtherSDewPoint) {
    const struct {
        char const *eos, *mth;
        Names names;
    } models[] = {{"PR", "vdW1", {"methane", "butane", "decane"}},
                  {"SRK", "vdW1", {"nitrogen", "methane", "ethane", "propane"}},
                  {"PCSAFT", "LB", {"methane", "propane"}},
                  {"MEOS", "GERG", {"methane", "ethane"}}};
    for (auto const& model : models) {
        const Mixture m = loaded(model.eos, model.mth, model.names, -1);
        const int n = m->mdl1.size();
        Vector<double> z(n);
        for (int i = 0; i < n; ++i) z[i] = 2.0 * (n - i) / (n * (n + 1));
        const double Tc = corvane::critical_point(*m, z).T;
        for (double off : {1e-6, 1e-4, 1e-2}) {
            SCOPED_TRACE(testing::Message() << model.eos << ' ' << n << ' ' << off);
            const auto q = corvane::bubble_T(*m, Tc * (1 - off), z);
            corvane::SaturationOptions upper;  // its critical temperature may be the lower one
            upper.branch = corvane::Branch::upper;
            const auto r = corvane::dew_T(*m, q.T, q.incipient.x, upper);
            ASSERT_TRUE(q.certificate.bounded() && r.certificate.bounded());
            // the second state carries the error of the first one's composition
            const double error = q.certificate.x_error + r.certificate.x_error + 1e-12;
            EXPECT_NEAR(r.p / q.p, 1, 30 * error);
            EXPECT_NEAR(r.given.rho / q.incipient.rho, 1, 1e3 * error);
            for (int i = 0; i < n; ++i) EXPECT_NEAR(r.incipient.x[i], z[i], 1e3 * error);
            EXPECT_LT(q.certificate.apart_error, 0.1 * corvane::Certificate::apart_limit);
        }
    }
}

// Through the critical point at constant composition: a bubble point below its temperature, the
// upper of two dew points above it, and the two phases change their places.
TEST(NearCritical, KindsMeetAtTheCriticalPoint) {
    const Mixture m = peng_robinson("methane", "propane", 0.01);
    const Vector<double> z = mix(0.45);
    const auto c = corvane::critical_point(*m, z);
    corvane::SaturationOptions upper;
    upper.branch = corvane::Branch::upper;
    for (double off : {1e-3, 1e-4, 1e-5}) {
        const auto a = corvane::bubble_T(*m, c.T * (1 - off), z),
                   b = corvane::dew_T(*m, c.T * (1 + off), z, upper);
        // odd in the distance but for its square, of which the factors are about 100
        EXPECT_NEAR((a.given.rho / a.incipient.rho - 1) / (b.incipient.rho / b.given.rho - 1), 1,
                    300 * off);
        EXPECT_NEAR((a.p + b.p) / (2 * c.p), 1, 1e3 * off * off);
    }
}

// Where only the other kind ends at the critical point the search has to say so: by the envelope, at
// whose every bubble point the pressure is above that asked for.
TEST(NearCritical, NoSuchKindIsNoSolution) {
    const struct {
        char const *first, *second;
        double x;
    } cases[] = {{"hydrogen", "methane", 0.42871738210444887},
                 {"hydrogen", "methane", 0.3},
                 {"nitrogen", "water", 0.2}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.x);
        const Mixture m = loaded("PR", "vdW1", {c.first, c.second});
        const double p = corvane::critical_point(*m, mix(c.x)).p * (1 - 3e-5);
        for (auto const& q : corvane::phase_envelope(*m, mix(c.x)).points)
            ASSERT_TRUE(!q.bubble || q.p > p) << q.T;
        try {
            corvane::bubble_p(*m, p, mix(c.x));
            ADD_FAILURE();
        } catch (corvane::EquilibriumFailure const& e) {
            EXPECT_EQ(e.kind(), corvane::EquilibriumFailure::Kind::no_solution) << e.what();
        }
    }
}

// Beside the boundary there is a pair of the other kind, which is not stable and no boundary.
TEST(NearCritical, AnUnstablePairEndsNoSearch) {
    const Mixture m = loaded("PR", "vdW1", {"decane", "mercury"});
    const Vector<double> z = mix(0.00129);
    const auto q = corvane::dew_p(*m, 147.546, z);
    const judge::Cubic cubic(*m);
    EXPECT_EQ(judge::Court<judge::Cubic>(cubic).saturation(Saturated::dew, false, 147.546, z, q).fault,
              judge::Fault::none);
    EXPECT_TRUE(corvane::stability(*m, q.p, q.T * (1 + 1e-6), z).stable);
    EXPECT_FALSE(corvane::stability(*m, q.p, q.T * (1 - 1e-6), z).stable);
}

// A mixture of one component meets the same fluid's own solver, also where the equation is not smooth
// at the critical point (carbon dioxide's reference equation: from 0.1 % on nothing else answers).
TEST(NearCritical, OneComponentIsThePureFluid) {
    const struct {
        char const *eos, *mth, *name;
    } cases[] = {{"PR", "vdW1", "methane"}, {"MEOS", "GERG", "carbon_dioxide"}, {"PCSAFT", "LB", "decane"}};
    for (auto const& c : cases) {
        const Mixture m = loaded(c.eos, c.mth, {c.name});
        Vector<double> z(1);
        z.set(1.0);
        const double Tc = corvane::critical_point(*m, z).T;
        for (double d : {1e-2, 4e-3, 1e-3, 1e-5, 1e-7, 1e-9}) {
            SCOPED_TRACE(testing::Message() << c.eos << " " << c.name << " " << d);
            const auto pure = corvane::pure_saturation_T(*m->mdl1[0], Tc * (1 - d));
            const auto at_T = corvane::bubble_T(*m, Tc * (1 - d), z);
            EXPECT_NEAR(at_T.p / pure.p, 1, pure.value_error + at_T.certificate.value_error);
            EXPECT_NEAR(at_T.given.rho / pure.rhoL, 1, pure.rho_error + at_T.certificate.rho_error);
            const auto at_p = corvane::dew_p(*m, pure.p, z);
            EXPECT_NEAR(at_p.T / (Tc * (1 - d)), 1, pure.value_error + at_p.certificate.value_error);
        }
    }
}

// Where a liquid splits its first vapour appears beside two liquids: the state of three phases, for
// a binary at any composition between them.
TEST(SplitLiquid, OfABinaryIsItsThreePhaseState) {
    const struct {
        char const *first, *second;
        double T;
        // the last: a liquid without vapour to speak of, stiff and of fewest moles per volume
    } cases[] = {{"carbon_dioxide", "water", 280}, {"water", "methane", 180}, {"hydrogen", "decane", 31.26}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = loaded("PR", "vdW1", {c.first, c.second});
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

// From a neighbour the same point without flashes, also where the neighbour splits and this does not.
TEST(SplitLiquid, FollowsItsNeighbour) {
    const Mixture m = loaded("PR", "vdW1", {"ethanol", "water", "hexane"});
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

// The vapour beside two liquids counts among the branches, too: that of the lowest p; a higher one is
// where the lighter of the liquids vanishes.
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
        const Mixture m = loaded("PR", "vdW1", {c.first, c.second});
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

// No vapour appears beside two liquids, or vanishes, where the lightest phase goes from gas to liquid
// without a jump, or where no state of the search has a gas: all temperatures are asked.
TEST(SplitLiquid, WithoutAVapourIsNoSolution) {
    const struct {
        char const *first, *second;
        double x, p, coldest, hottest;
    } cases[] = {{"hydrogen", "helium", 0.67, 23.4889, 3, 66}, {"helium", "decane", 0.2, 0.285, 3, 700}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.second);
        const Mixture m = loaded("PR", "vdW1", {c.first, c.second});
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
    for (auto const& [light, p] : {std::pair("helium", 0.0113), {"helium", 0.0875}, {"helium", 0.19},
                                   {"hydrogen", 0.0011}, {"hydrogen", 4.5e-4}}) {
        const Mixture m = loaded("PR", "vdW1", {light, "decane"});
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

// Where the model's states on the way mislead the search to no pressure at all it is still a refusal.
TEST(SplitLiquid, WithoutPressureIsARefusal) {
    const Mixture m = loaded("MEOS", "GERG", {"hydrogen", "water"}, 8);
    EXPECT_THROW(corvane::bubble_T(*m, 168.5416702, mix(0.7651253)), corvane::EquilibriumFailure);
}

// Three components: the first vapour beside three liquids has one p at given T, whatever the whole is,
// and above it there are three liquids, below it two and a vapour.
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
        const Mixture m = loaded("PR", "vdW1", c.names);
        const judge::Cubic cubic(*m);
        const Vector<double> z = vec({c.z0, c.z1, 1 - c.z0 - c.z1});
        const auto q = c.at_T ? corvane::bubble_T(*m, c.value, z) : corvane::bubble_p(*m, c.value, z);
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

// Four components beside three liquids: the amounts are among the equations, and both sides of p have
// them all.
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
        const Mixture m = loaded("PR", "vdW1", c.names);
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
        loaded("PR", "vdW1", {"nitrogen", "methane", "ethane", "butane", "pentane"});
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

// Two phases next to a critical point, by a model that has no density in a range of compositions far
// from them: whether there are others is open.
TEST(NearCritical, OfAModelWithAHole) {
    struct Hole : ModelN {
        Mixture inner = peng_robinson("methane", "propane", 0.01);
        bool open = false;
        Hole() {
            mdl1 = inner->mdl1;
            derivatives(inner->derivatives());
        }
        double Ar(double rho, double T, Vector<double> const& x) const override {
            return inner->Ar(rho, T, x);
        }
        int vcalc(double p, double T, Vector<double> const& x, int mode, double& a,
                  double& b) const override {
            return open && x[0] > 0.82 && x[0] < 0.9 ? 0 : inner->vcalc(p, T, x, mode, a, b);
        }
        double* ppar(int, int, int) override { return nullptr; }
        void par_alloc() override {}
        void par_in(FILE*, int, int) override {}
        void par_out(FILE*, int, int) const override {}
        Vector<double> mixpar(Vector<double> const& x) const override { return x; }
    } m;
    for (double z : {0.3, 0.6})
        for (double off : {1e-4, 1e-6, 1e-8}) {
            SCOPED_TRACE(testing::Message() << z << " " << off);
            m.open = false;
            const double T = corvane::critical_point(*m.inner, mix(z)).T * (1 - off),
                         p = corvane::bubble_T(*m.inner, T, mix(z)).p * (1 - 0.6 * off);
            EXPECT_EQ(corvane::flash_pT(m, p, T, mix(z)).phases.size(), 2u);
            m.open = true;
            EXPECT_THROW(corvane::flash_pT(m, p, T, mix(z)), corvane::EquilibriumFailure);
        }
}
}  // namespace
