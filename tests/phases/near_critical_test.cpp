// Bubble and dew points next to critical points.
#include "equilibria/phases.h"

#include <benchmarks/judge/cubic.h>
#include <benchmarks/judge/verdict.h>
#include <corvane/corvane.h>

#include <optional>

using corvane::Saturated;

namespace {
using Names = std::vector<std::string>;

// A march in T to the critical point in variables in which the trivial solution does not exist,
// with central differences for a Jacobian: all digits as they came out.
TEST(NearCritical, MeetsAMarchToTheCriticalPoint) {
    const Mixture m = estimated_mixture("SRK", "vdW1", {"heptane", "pentane"});
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
            const Mixture m = estimated_mixture(eos, "vdW1", names);
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

// A heavy component that changes fast from phase to phase, traces of which rounding is all the
// error, lines so steep that the phases at the given pressure differ by 1e-7, and pairs so flat
// between themselves that a trial of the stability test stays there (SRK).
TEST(NearCritical, IsTrueWithinItsBoundsWhereOneComponentChangesFast) {
    const struct {
        Names names;
        double z0, z1;
        Saturated kind;
        double T, p;
        char const* eos = "PR";
    } rows[] = {
        {{"ethanol", "heptane", "carbon_dioxide"},
         0.527184650035021740,
         0.18204077668825155,
         Saturated::bubble,
         522.94867504368187,
         0,
         "SRK"},
        {{"methane", "decane", "water"},
         0.774738373715140341,
         0.15316778316128607,
         Saturated::bubble,
         471.69794783742992,
         0,
         "SRK"},
        {{"carbon_dioxide", "eicosane", "ethane"},
         0.32258125115448466,
         0.028566293437203828,
         Saturated::bubble,
         368.71928792754244,
         0},
        {{"carbon_dioxide", "eicosane", "ethane"},
         0.78511796675168272,
         0.031920006783233631,
         Saturated::bubble,
         384.7601694336584,
         0},
        {{"nitrogen", "carbon_dioxide", "octane"},
         2.0991794394004609e-08,
         1 - 3.17473163e-8,
         Saturated::dew,
         303.86010318601939,
         0},
        {{"ethane", "propane", "decane"},
         1 - 3.141516827e-9,
         2.9202402482408639e-09,
         Saturated::bubble,
         216.1097567263559,
         0},
        {{"carbon_dioxide", "hydrogen"},
         0.34029596151104968,
         0,
         Saturated::dew,
         0,
         902.7781754179498},
        // two cold liquids, whose potentials bend more than the quadrature between them knows
        {{"methane", "butane", "decane"},
         0.0027720334975216187,
         1 - 0.0027720334975216187 - 0.17731270700415597,
         Saturated::bubble,
         0,
         12.318566384053213},
        {{"hydrogen", "methane"}, 0.65998728937149348, 0, Saturated::bubble, 100.38223954258741, 0},
        {{"methane", "helium"}, 0.30490740411284645, 0, Saturated::dew, 0, 601.10882755561613}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.names[1] << ' ' << row.T << ' ' << row.p);
        const Mixture m = estimated_mixture(row.eos, "vdW1", row.names);
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

// Where p or T hardly moves along the line, or runs back, beside a critical point: of both kinds
// one is there, true within its bounds, and a scan over all pressures or temperatures misses no
// other.
TEST(NearCritical, FindsTheKindThatIsThereAndSaysThatTheOtherIsNot) {
    const struct {
        char const* eos;
        Names names;
        double x;
        bool at_T;
        double value;
        Saturated there;
    } rows[] = {
        // the liquid is stable from 454 to 465 K alone, between two steps of the search
        {"PR",
         {"ethanol", "heptane"},
         0.71345380252075657,
         false,
         3.2388086688873403,
         Saturated::bubble},
        // mixes, boils and has its dew point within one step
        {"PR", {"ethanol", "heptane"}, 0.71345, false, 3.2, Saturated::bubble},
        {"PR",
         {"carbon_dioxide", "water"},
         0.32947685794879344,
         false,
         197.57970252287939,
         Saturated::bubble},
        {"SRK",
         {"carbon_dioxide", "water"},
         0.3319783416104034,
         true,
         547.31384681312932,
         Saturated::dew},
        {"PR",
         {"methanol", "hexane"},
         0.87522625223720751,
         false,
         8.2837315377404703,
         Saturated::dew},
        {"PR", {"water", "butane"}, 0.968360239008730937, true, 658.12106957982769, Saturated::dew},
        {"PR",
         {"hydrogen", "carbon_monoxide"},
         0.62519667296706916,
         true,
         79.109075965717679,
         Saturated::dew},
        {"SRK",
         {"hydrogen", "helium"},
         0.46615404305428998,
         true,
         16.889755542936271,
         Saturated::dew},
        {"SRK",
         {"nitrogen", "ethane"},
         0.68914819937306399,
         false,
         18.277432979184294,
         Saturated::dew},
        {"PR",
         {"methane", "decane"},
         0.917565712837337122,
         false,
         37.438627489225269,
         Saturated::bubble},
        {"SRK",
         {"methane", "decane"},
         0.916037416191667925,
         false,
         42.344549036270038,
         Saturated::bubble}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.eos << ' ' << row.names[0] << ' ' << row.value);
        const Mixture m = estimated_mixture(row.eos, "vdW1", row.names);
        const judge::Cubic cubic(*m);
        const judge::Court<judge::Cubic> court(cubic);
        const Vector<double> z = mix(row.x);
        const double Tc[] = {m->mdl1[0]->Tcrit(), m->mdl1[1]->Tcrit()};
        for (Saturated kind : {Saturated::bubble, Saturated::dew}) {
            judge::Verdict v;
            bool found = true;
            try {
                const auto q = row.at_T ? corvane::saturation_T(*m, kind, row.value, z)
                                        : corvane::saturation_p(*m, kind, row.value, z);
                v = court.saturation(kind, row.at_T, row.value, z, q);
            } catch (corvane::EquilibriumFailure const& f) {
                found = false;
                EXPECT_EQ(f.kind(), corvane::EquilibriumFailure::Kind::no_solution) << f.what();
                v = court.absent(kind, row.at_T, row.value, z, std::min(Tc[0], Tc[1]),
                                 std::max(Tc[0], Tc[1]));
            }
            EXPECT_TRUE(found || kind != row.there);
            EXPECT_EQ(v.fault, judge::Fault::none) << judge::kFaultNames[static_cast<int>(v.fault)]
                                                   << ' ' << static_cast<double>(v.truth);
        }
    }
}

// Flashes that miss by rounding alone: a whole above a critical azeotrope, whose phases differ in
// density and hardly in composition, and a tie line whose phases are equally dense.
TEST(NearCritical, FlashesOfPhasesAlikeInDensityOrInCompositionAlone) {
    const struct {
        char const* eos;
        Names names;
        double x, T, p;
        std::size_t phases;
    } rows[] = {{"PR",
                 {"ethanol", "water"},
                 0.54836437501741526,
                 536.59058763627513,
                 9.2212433447711586,
                 1},
                {"PR", {"ethanol", "water"}, 0.54836437501741526, 536.59058763627513, 9.2212413, 2},
                {"SRK",
                 {"ethanol", "water"},
                 0.54836437501741526,
                 537.55233988899681,
                 9.2361926844085076,
                 1},
                {"SRK",
                 {"carbon_dioxide", "hexadecane"},
                 0.937511699320746468,
                 445.39699708986757,
                 22.951198250782319,
                 2}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.eos << ' ' << row.names[0] << ' ' << row.p);
        const Mixture m = estimated_mixture(row.eos, "vdW1", row.names);
        const judge::Cubic cubic(*m);
        const auto q = corvane::flash_pT(*m, row.p, row.T, mix(row.x));
        const auto v = judge::Court<judge::Cubic>(cubic).flash(row.p, row.T, mix(row.x), q);
        EXPECT_EQ(q.phases.size(), row.phases);
        EXPECT_EQ(v.fault, judge::Fault::none) << judge::kFaultNames[static_cast<int>(v.fault)];
    }
}

// Of three components so near to a spinodal that no trial phase is found, only the curvature tells
// that the whole splits: the eigenvector leads to the phases.
TEST(NearCritical, FlashesOnTheSpinodalOfThreeComponents) {
    const struct {
        Names names;
        Vector<double> z;
        double T, p;
    } rows[] = {{{"carbon_dioxide", "hexadecane", "methane"},
                 vec({0.84266547071572, 0.020748746916605703, 0.13658578236767438}),
                 330.87748023334422,
                 15.143422199880675},
                {{"nitrogen", "oxygen", "argon"},
                 vec({0.6435761582031836, 0.15059839183004661, 0.20582544996676982}),
                 135.12341681081691,
                 3.9482772804415855},
                {{"nitrogen", "carbon_dioxide", "octane"},
                 vec({0.30151495439118414, 0.6780148124138661, 0.020470233194949779}),
                 290.09606045373221,
                 13.643935080337515}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.names[1]);
        const Mixture m = estimated_mixture("PR", "vdW1", row.names);
        const judge::Cubic cubic(*m);
        const auto q = corvane::flash_pT(*m, row.p, row.T, row.z);
        ASSERT_EQ(q.phases.size(), 2u);
        const auto z = judge::Court<judge::Cubic>(cubic).normal<judge::Quad>(row.z);
        judge::PairNewton<judge::Cubic> truth(cubic, judge::Given::p_and_T, row.p, row.T, z);
        judge::Phase<judge::Quad> a, b;
        for (int i = 0; i < 3; ++i) {
            a.rho[i] = judge::Quad(q.phases[0].rho) * q.phases[0].x[i];
            b.rho[i] = judge::Quad(q.phases[1].rho) * q.phases[1].x[i];
        }
        ASSERT_TRUE(truth.solve(a, b));
        EXPECT_TRUE(truth.beta() > 0 && truth.beta() < 1);
        for (int i = 0; i < 3; ++i) {
            EXPECT_LE(abs(truth.a().x(i, 3) - q.phases[0].x[i]), q.certificate.x_error + 3e-16);
            EXPECT_LE(abs(truth.b().x(i, 3) - q.phases[1].x[i]), q.certificate.x_error + 3e-16);
        }
    }
}

// One phase above a bubble point and two below, as near to it as its error allows, where rounding
// hides the sign of the tangent-plane distance: by the test of the whole and by the flash.
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
        const Mixture m = estimated_mixture(c.eos, c.mth, c.names, c.set);
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
        const Mixture m = estimated_mixture(model.eos, model.mth, model.names, -1);
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
        const Mixture m = estimated_mixture("PR", "vdW1", {c.first, c.second});
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
    const Mixture m = estimated_mixture("PR", "vdW1", {"decane", "mercury"});
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
        const Mixture m = estimated_mixture(c.eos, c.mth, {c.name});
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
