// The judge of the certificates, judged: closed forms, identities, known answers, and whether it
// notices what is wrong.
#include "support/mixtures.h"

#include <benchmarks/judge/critical.h>
#include <benchmarks/judge/cubic.h>
#include <benchmarks/judge/enclosure.h>
#include <benchmarks/judge/multifluid.h>
#include <benchmarks/judge/pcsaft.h>
#include <benchmarks/judge/verdict.h>
#include <corvane/corvane.h>

#include <gtest/gtest.h>

namespace {
using judge::Court;
using judge::Cubic;
using judge::Fault;
using judge::Long;
using judge::Quad;
using judge::Values;

Mixture loaded(char const* eos, std::vector<std::string> const& names, char const* mth = "vdW1",
               int set = 1) {
    return estimated_mixture(eos, mth, names, set);
}
Mixture loaded(char const* eos, char const* a, char const* b, char const* mth = "vdW1",
               int set = 1) {
    return estimated_mixture(eos, mth, {a, b}, set);
}

/// A symmetric regular solution with one density: ln f_i = A·(1 − w_i)². A second root of constant
/// potentials stands for a phase of its own, present between two compositions only.
struct RegularSolution {
    double A, from = 2, to = 2, level = 0;
    static constexpr Long kStep = 0.4L, kFlat = 1e-16L;
    int roots(Long, Long const* w, Long* rho, Long* = nullptr) const {
        rho[0] = 1;
        rho[1] = 0.1L;
        return w[0] > from && w[0] < to ? 2 : 1;
    }
    Long state(Long rho, Long const* w, Long* h) const {
        for (int i : {0, 1})
            h[i] = rho == 1 ? A * (1 - w[i]) * (1 - w[i]) : level - std::log(w[i]);
        return 1;
    }
};

// A loop narrower than the mesh of the search, next to a critical point.
TEST(JudgeRoots, OfANarrowLoopAreThoseOfTheModel) {
    const Mixture m = loaded("PCSAFT", "heptane", "pentane", "LB", -1);
    const double T = 552.0231334442966, p = 3.2458659084298103, trace = 3.0501993399361436e-05;
    double rho[2];
    ASSERT_EQ(m->vcalc(p, T, vec({1 - trace, trace}), 1, rho[0], rho[1]), 3);
    const judge::PcSaft equation(*m);
    const Long x[] = {1 - trace, trace};
    Long found[2];
    const judge::PcSaft::At<Long> at(equation, T);
    ASSERT_EQ(at.roots(Long(p) / (Long(R) * T), x, found), 2);
    for (int k : {0, 1}) EXPECT_NEAR(rho[k] / static_cast<double>(found[k]), 1, 1e-9);
}

TEST(JudgeScan, FindsTheBinodalOfTheRegularSolution) {
    for (const double A : {2.0001, 2.1, 3.0, 20.0, 40.0}) {
        SCOPED_TRACE(A);
        // On the binodal ln(w/(1 − w)) = A·(2w − 1); from there w = 1 − w' is in equilibrium.
        Long lo = 1e-30L, hi = 0.5L - 1e-6L;
        for (int k = 0; k < 400; ++k) {
            const Long m = std::sqrt(lo * hi);
            (std::log(m / (1 - m)) < A * (2 * m - 1) ? lo : hi) = m;
        }
        const RegularSolution fluid{A};
        for (const Long x : {lo * 0.99L, lo * 1.01L, 0.5L}) {
            const Long mu[] = {A * (1 - x) * (1 - x) + std::log(x), A * x * x + std::log1p(-x)};
            const judge::BinaryScan<RegularSolution> scan(fluid, 1, mu, {x});
            EXPECT_EQ(scan.lowest().tpd < -1e-17L, x > lo) << double(x);
            if (x != 0.5L) continue;
            EXPECT_NEAR(std::min(scan.lowest().w[0], scan.lowest().w[1]) / lo, 1, 1e-7);
            const Long depth = A * (1 - lo) * (1 - lo) + std::log(2 * lo) - A / 4.0L;
            EXPECT_NEAR(double(scan.lowest().tpd / depth), 1, 1e-9);
        }
    }
}

TEST(JudgeScan, SeesAPhaseOnTheOtherRootThatExistsInANarrowRange) {
    const Long x = 0.3L, mu[] = {0.49L + std::log(x), 0.09L + std::log1p(-x)};
    // t of that phase is level − Σ w_i·mu_i: −1e-3 at w = 0.6
    const double level = double(0.6L * mu[0] + 0.4L * mu[1]) - 1e-3;
    const RegularSolution with{1, 0.52, 0.68, level}, without{1};
    EXPECT_LT(judge::BinaryScan<RegularSolution>(with, 1, mu, {x}).lowest().tpd, -1e-3L);
    EXPECT_GT(judge::BinaryScan<RegularSolution>(without, 1, mu, {x}).lowest().tpd, -1e-18L);
}

// Three components that repel each other alike: the 3-state Potts model in its mean field, where
// the mixed state is undercut from A = 4·ln 2 on, at w = (2/3, 1/6, 1/6).
struct Potts {
    double A;
    static constexpr Long kStep = 0.4L, kFlat = 1e-16L;
    int roots(Long, Long const*, Long* rho) const {
        rho[0] = 1;
        return 1;
    }
    Long state(Long, Long const* w, Long* h) const {
        const Long g = w[0] * w[1] + w[0] * w[2] + w[1] * w[2];
        for (int i : {0, 1, 2}) h[i] = A * (1 - w[i] - g);
        return 1;
    }
};
TEST(JudgeScan, FindsTheTransitionOfThreeSymmetricComponents) {
    for (const double off : {-1e-4, 1e-4}) {
        const Potts fluid{4 * std::log(2.0) + off};
        const Values<Long> x{1 / 3.0L, 1 / 3.0L, 1 / 3.0L};
        const Long m = fluid.A / 3.0L - std::log(3.0L), mu[] = {m, m, m};
        const auto t = judge::TernarySearch<Potts>(fluid, 1, mu, {x}).lowest();
        EXPECT_EQ(t.tpd < -1e-17L, off > 0);
        if (off < 0) continue;
        EXPECT_NEAR(*std::max_element(t.w.begin(), t.w.end()), 2 / 3.0, 1e-3);
        EXPECT_NEAR(double(t.tpd), -off * (1 / 3.0 - 0.25), 1e-8);  // slope of g in A at w
    }
}

/// Potentials and pressure against the model's, the equation of Gibbs and Duhem, and the roots.
template <class Equation>
void agrees(ModelN const& m, double T, std::vector<double> const& densities) {
    const Equation equation(m);
    const typename Equation::template At<Quad> at(equation, T);
    const typename Equation::template At<Long> fast(equation, T);
    for (const double rho : densities) {
        SCOPED_TRACE(testing::Message() << m.eos << ' ' << rho);
        const Vector<double> v = vec({0.3 * rho, 0.7 * rho});
        Values<Quad> x{Quad(0.3), Quad(0.7)}, h{}, g{};
        const Quad P = at.state(rho, x.data(), h.data());
        for (int i : {0, 1}) EXPECT_NEAR(double(h[i] + log(x[i])), m.my(v, T, i), 2e-12);
        EXPECT_NEAR(double(P / rho), m.Z(v, T), 2e-12);
        // dP = Σ rho_i·dm_i, along the density and along x
        const Quad step = 1e-15;
        const Quad dP = at.state(rho * (1 + step), x.data(), g.data()) - P;
        EXPECT_NEAR(double((x[0] * (g[0] - h[0]) + x[1] * (g[1] - h[1])) * rho / dP), 1, 1e-11);
        Values<Quad> y{x[0] + step, x[1] - step};
        const Quad dx = at.state(rho, y.data(), g.data()) - P;
        const Quad sum = x[0] * (g[0] - h[0] + log(y[0] / x[0])) +
                         x[1] * (g[1] - h[1] + log(y[1] / x[1]));
        EXPECT_NEAR(double(sum * rho), double(dx), 1e-11 * std::fabs(double(dx)) + 1e-28);
        // The same roots as the model's where it is compressed to this density.
        if (!(P > 0)) continue;
        const Values<Long> w{0.3L, 0.7L};
        Long r[2];
        double q[2] = {0, 0};
        const int n = fast.roots(static_cast<Long>(P), w.data(), r);
        const int given = m.vcalc(double(P) * R * T, T, vec({0.3, 0.7}), 1, q[0], q[1]);
        ASSERT_EQ(n, std::min(given, 2));
        for (int k = 0; k < n; ++k) EXPECT_NEAR(double(r[k]) / q[k], 1, 1e-9);
    }
}
TEST(JudgeEquations, AgreeWithTheModelsAndWithGibbsAndDuhem) {
    for (char const* eos : {"PR", "SRK"})
        agrees<Cubic>(*loaded(eos, "decane", "mercury"), 700, {1e-9, 1e-4, 2e-3, 6e-3, 1e-2});
    for (char const* eos : {"PR", "SRK"})  // translated
        agrees<Cubic>(*loaded(eos, "ethanol", "water", "vdW1", 3), 400, {1e-9, 1e-4, 2e-3, 1e-2});
    for (double alpha : {0.0, 0.3}) {
        const Mixture m = loaded("PR", "hexane", "ethanol", "HV");
        const double values[] = {0.02, alpha, 450, 120, -0.2, 0.1};
        for (int k = 0; k < 6; ++k) m->param(k, 1, 0, values[k]);
        agrees<Cubic>(*m, 400, {1e-9, 1e-4, 2e-3, 6e-3});
    }
    for (auto const& [a, b] :
         {std::pair{"methane", "propane"}, {"ethanol", "butane"}, {"methanol", "water"}})
        agrees<judge::PcSaft>(*loaded("PCSAFT", a, b, "LB", -1), 330, {1e-9, 1e-4, 2e-3, 0.011});
    for (auto const& [a, b] : {std::pair{"methane", "propane"}, {"nitrogen", "methane"}})
        agrees<judge::MultiFluid>(*loaded("MEOS", a, b, "GERG", 8), 300, {1e-9, 1e-4, 2e-3, 0.011});
    agrees<judge::MultiFluid>(*loaded("MEOS", "water", "decane", "GERG", 8), 300,
                              {1e-9, 1e-4, 0.007});
    // Nearly pure, just above the vapour pressure: a root inside the loop is no liquid.
    const Mixture m = loaded("MEOS", "nitrogen", "oxygen", "GERG", 8);
    const judge::MultiFluid equation(*m);
    const double T = 127.564, p = 1.56759;
    const judge::MultiFluid::At<Long> at(equation, T);
    Long r[2];
    double q[2];
    const Values<Long> x{4e-11L, 1 - 4e-11L};
    ASSERT_GT(at.roots(Long(p) / (Long(R) * T), x.data(), r), 0);
    ASSERT_GT(m->vcalc(p, T, vec({4e-11, 1 - 4e-11}), 1, q[0], q[1]), 0);
    EXPECT_NEAR(double(r[0]) / q[0], 1, 1e-6);
}

TEST(JudgeCourt, KnowsStatesOfKnownStability) {
    // Depths of quintic pieces along composition that were settled to 1e-5.
    const struct {
        char const *eos, *a, *b;
        double x, T, p, tpd, tolerance;
    } rows[] = {{"PR", "nitrogen", "octane", 0.0247, 566.57, 2.6906, -7.9e-5, 1e-5},
                {"SRK", "hydrogen_sulfide", "water", 0.19163, 592.7875, 23.537, -6.9e-5, 1e-5},
                {"SRK", "decane", "mercury", 0.0108, 1145.59, 18.88, -0.125, 1e-3},
                {"PR", "carbon_dioxide", "ethane", 0.2507580087, 288.9435977, 4.557377399, -5.25e-3,
                 1e-5},
                // an ideal gas, and a liquid far above its critical pressure
                {"PR", "methane", "propane", 0.5, 300, 0.001, 0, 1e-12},
                {"PR", "methane", "propane", 0.5, 300, 100, 0, 1e-12}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.a << " + " << row.b << ' ' << row.T);
        const Mixture m = loaded(row.eos, row.a, row.b);
        const Cubic cubic(*m);
        const Court<Cubic> court(cubic);
        const auto t = court.stability(row.p, row.T, vec({row.x, 1 - row.x}));
        EXPECT_EQ(court.proven, row.tpd < 0 ? 0 : 1);
        EXPECT_NEAR(double(t.tpd), row.tpd, row.tolerance);
    }
}

// A tangent plane of two phases touches E at both: by the slack of 1e-8 it is proven to have nothing
// below it, and raised by three times as much it cuts both off.
TEST(JudgeEnclosure, ProvesPlanesThatTouchAndRefutesThoseThatCut) {
    const struct {
        char const* eos;
        std::vector<std::string> names;
        std::vector<double> z;
        double T;
    } rows[] = {{"PR", {"methane", "propane"}, {0.5, 0.5}, 250},
                {"SRK", {"heptane", "pentane"}, {0.0367, 0.9633}, 473.4648},  // 1e-4 K below T_c
                {"PR", {"carbon_dioxide", "water"}, {1e-3, 0.999}, 400},
                {"SRK", {"hydrogen_sulfide", "water"}, {0.01, 0.99}, 400},
                {"PR", {"methane", "butane", "decane"}, {0.4, 0.3, 0.3}, 350},
                {"SRK", {"nitrogen", "methane", "propane"}, {1e-7, 0.5, 0.4999999}, 220}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.names[1]);
        const Mixture m = loaded(row.eos, row.names);
        const Cubic cubic(*m);
        Vector<double> z(static_cast<int>(row.z.size()));
        std::copy(row.z.begin(), row.z.end(), z.data);
        const auto q = corvane::bubble_T(*m, row.T, z);
        const Cubic::At<Long> at(cubic, row.T);
        ASSERT_TRUE(judge::Enclosure::serves(at));
        Values<Long> x{}, h{};
        for (int i = 0; i < z.size(); ++i) x[i] = z[i];
        const Long P = at.state(q.given.rho, x.data(), h.data());
        for (const Long raised : {0.0L, 3e-8L}) {
            Values<Long> mu{};
            for (int i = 0; i < z.size(); ++i) mu[i] = h[i] + std::log(x[i]) + raised;
            const judge::Enclosure e(at, P, mu.data(), 1e-8);
            EXPECT_EQ(e.answer(), raised > 0 ? judge::Enclosure::Answer::below
                                             : judge::Enclosure::Answer::above);
        }
    }
}

// Stated bounds of T, p and rho of critical points, against Newton's method with 113 bits on conditions
// written a second time.
template <class Equation>
void critical_within(Mixture const& m, Vector<double> const& z) {
    SCOPED_TRACE(testing::Message() << m->eos << ' ' << m->mdl1[0]->name() << ' ' << z[0]);
    const Equation equation(*m);
    const auto q = corvane::critical_point(*m, z);
    judge::CriticalNewton<Equation> truth(equation, z);
    ASSERT_TRUE(truth.solve(q.T, q.rho));
    const auto& c = q.certificate;
    ASSERT_TRUE(c.bounded());
    EXPECT_LT(c.value_error, 1e-8);
    EXPECT_LE(double(abs(q.T / truth.T() - 1)), c.value_error);
    EXPECT_LE(double(abs(q.p / truth.p() - 1)), c.value_error);
    EXPECT_LE(double(abs(q.rho / truth.rho() - 1)), c.rho_error);
}
TEST(JudgeCritical, TrueCriticalPointsLieWithinTheStatedBounds) {
    for (auto const& [a, b] : {std::pair{"methane", "propane"}, {"carbon_dioxide", "ethane"},
                               {"heptane", "pentane"}, {"nitrogen", "octane"}})
        for (const double x : {1e-9, 0.0367, 0.3, 0.5, 0.9})
            for (char const* eos : {"PR", "SRK"})
                critical_within<Cubic>(loaded(eos, a, b), vec({x, 1 - x}));
    critical_within<Cubic>(loaded("PR", {"methane", "butane", "decane"}), vec({0.5, 0.3, 0.2}));
    critical_within<judge::PcSaft>(loaded("PCSAFT", "methane", "propane", "LB", -1), vec({0.4, 0.6}));
    critical_within<judge::MultiFluid>(loaded("MEOS", "nitrogen", "methane", "GERG", 8),
                                       vec({0.3, 0.7}));
    // Along a line: the true point at the same x, as far as the line rises within the bound of x.
    const Mixture m = loaded("PR", "carbon_dioxide", "decane");
    const Cubic cubic(*m);
    int bounded = 0, all = 0;
    for (auto const& line : corvane::critical_lines(*m)) {
        auto const& points = line.points;
        for (std::size_t k = 1; k + 1 < points.size(); ++k) {
            auto const &q = points[k], &a = points[k - 1], &b = points[k + 1];
            if (q.x[0] * q.x[1] == 0) continue;
            ++all;
            judge::CriticalNewton<Cubic> truth(cubic, q.x);
            if (!truth.solve(q.T, q.rho)) continue;
            const auto& c = q.certificate;
            bounded += c.bounded();
            if (!c.bounded()) continue;
            const double run = std::fabs(b.x[0] - a.x[0]) + 1e-12;
            const double off = c.value_error + 3 * c.x_error * std::fabs(std::log(b.T / a.T)) / run;
            EXPECT_LE(double(abs(q.T / truth.T() - 1)), off) << q.T << ' ' << q.x[0];
        }
    }
    EXPECT_GT(bounded, 0.9 * all);
}

// Pressures of a march of the equations of coexistence to the critical point, in variables and with
// integrals in which the trivial solution does not exist: heptane 0.0367 + pentane, SRK, with
// Tc = 473.4649651 K.
TEST(JudgeCourt, FindsPhasesNextToTheCriticalPointAndNoticesWhatIsWrong) {
    const Mixture m = loaded("SRK", "heptane", "pentane");
    const Cubic cubic(*m);
    const Court<Cubic> court(cubic);
    const Vector<double> z = vec({0.0367, 0.9633});
    const Values<Quad> x = court.normal<Quad>(z);
    const auto start = corvane::bubble_T(*m, 470, z);
    judge::Phase<Quad> a, b;
    for (int i : {0, 1}) {
        a.rho[i] = start.given.rho * x[i];
        b.rho[i] = start.incipient.rho * Quad(start.incipient.x[i]);
    }
    const double Tc = 473.4649651;
    double T = 470;
    const struct {
        double below, p;
    } rows[] = {{Tc - 472.2, 3.331992943},
                {0.1, 3.379881001},
                {1e-2, 3.382352486},
                {1e-4, 3.382450330}};
    for (auto const& row : rows) {
        while (T < Tc - row.below) {
            const double next = std::max(row.below, 0.7 * (Tc - T));
            // the distance between the phases is nearly proportional to that to Tc
            for (int i : {0, 1}) {
                const Quad mean = (a.rho[i] + b.rho[i]) / 2, half = (a.rho[i] - b.rho[i]) / 2;
                a.rho[i] = mean + half * (next / (Tc - T));
                b.rho[i] = mean - half * (next / (Tc - T));
            }
            T = next == row.below ? std::nextafter(Tc - next, 1e9) : Tc - next;
            judge::PairNewton<Cubic> pair(cubic, judge::Given::T_and_x, 3, T, x);
            ASSERT_TRUE(pair.solve(a, b)) << T;
            a = pair.a();
            b = pair.b();
            if (next == row.below) {
                EXPECT_NEAR(double(pair.p()), row.p, 1.5e-9) << T;
            }
        }
    }
    // Right, then spoilt in every way that the court knows.
    const double t = 465;
    const auto right = corvane::bubble_T(*m, t, z);
    const auto fault = [&](corvane::SaturationPoint const& q, corvane::Saturated kind) {
        return court.saturation(kind, true, t, z, q).fault;
    };
    using corvane::Saturated;
    EXPECT_EQ(fault(right, Saturated::bubble), Fault::none);
    EXPECT_EQ(fault(right, Saturated::dew), Fault::kind);
    EXPECT_NEAR(court.boundary(true, right.p * 1.03, t, z) / right.p, 1, 1e-11);
    auto spoilt = right;
    spoilt.p *= 1 + 1e-5;
    EXPECT_EQ(fault(spoilt, Saturated::bubble), Fault::far);
    spoilt = right;
    spoilt.incipient.x = vec({right.incipient.x[0] + 1e-5, right.incipient.x[1] - 1e-5});
    EXPECT_EQ(fault(spoilt, Saturated::bubble), Fault::bound);
    spoilt = right;
    spoilt.incipient = {right.given.rho * (1 - 1e-4), right.given.x};
    EXPECT_NE(fault(spoilt, Saturated::bubble), Fault::none);
    spoilt.T += 1e-9;
    EXPECT_EQ(fault(spoilt, Saturated::bubble), Fault::input);
    // Within two phases: a flash that says one.
    const double p = 0.99 * right.p;
    auto flash = corvane::flash_pT(*m, p, t, z);
    ASSERT_EQ(flash.phases.size(), 2u);
    EXPECT_EQ(court.flash(p, t, z, flash).fault, Fault::none);
    std::swap(flash.fraction[0], flash.fraction[1]);
    EXPECT_EQ(court.flash(p, t, z, flash).fault, Fault::fraction);
    flash.phases.resize(1);
    EXPECT_EQ(court.flash(p, t, z, flash).fault, Fault::unstable);
    corvane::StabilityResult said;
    said.stable = true;
    EXPECT_EQ(court.tested(p, t, z, said).fault, Fault::unstable);
    said.stable = false;
    EXPECT_EQ(court.tested(1.01 * right.p, t, z, said).fault, Fault::stable);
}

// A dew point whose phases differ by 3e-8, which 113 bits do not tell from the trivial solution.
TEST(JudgeCourt, FollowsPhasesThatAreNearlyAlike) {
    const Mixture m = loaded("PR", "carbon_dioxide", "decane");
    const Cubic cubic(*m);
    const Court<Cubic> court(cubic);
    const Vector<double> z = vec({0.11972256234790853, 1 - 0.11972256234790853});
    const double p = 2.9725946732374724;
    auto q = corvane::dew_p(*m, p, z);
    ASSERT_LT(std::fabs(q.given.rho / q.incipient.rho - 1), 1e-7);
    EXPECT_EQ(court.saturation(corvane::Saturated::dew, false, p, z, q).fault, Fault::none);
    q.T *= 1 + 3e-13;
    EXPECT_EQ(court.saturation(corvane::Saturated::dew, false, p, z, q).fault, Fault::bound);
}

// Among them traces, whose ln rho_i differs from phase to phase much more than those of the rest.
TEST(JudgeCourt, FindsTheErrorsOfEveryComponentWithinTheStatedBounds) {
    const struct {
        char const *a, *b;
        double x, T, p;
    } rows[] = {{"hydrogen", "carbon_monoxide", 0.42295544404903002, 73.073412983521962,
                 0.52794743929034049},
                {"carbon_monoxide", "hydrogen", 2.6728909835473552e-10, 19.444997179544941,
                 0.076393574790738508},
                {"methane", "octane", 8.9758087846013986e-11, 398.49725922438716,
                 0.10050167513745968},
                {"methane", "hydrogen_sulfide", 0.41616450883056982, 152.93360486833063,
                 0.78039600963209188},
                // a whole nearly pure and nearly critical: phases that only the trace tells apart
                {"ethanol", "water", 1.0018962839728102e-06, 601.64907499115066,
                 12.785702103463695}};
    for (auto const& row : rows) {
        const Mixture m = loaded("PR", row.a, row.b);
        const Cubic cubic(*m);
        const Vector<double> z = vec({row.x, 1 - row.x});
        const auto q = corvane::flash_pT(*m, row.p, row.T, z);
        const auto v = Court<Cubic>(cubic).flash(row.p, row.T, z, q);
        EXPECT_EQ(v.fault, Fault::none) << row.a << " + " << row.b << ": " << v.ratio;
    }
}

// Calls that the solvers may refuse only for having no solution.
TEST(JudgeCourt, SaturationOfTracesAndFarFromCriticalPointsIsFoundOrAbsent) {
    using corvane::Saturated;
    const struct {
        char const *a, *b;
        double x;
        Saturated kind;
        double T, p;
        bool found;
    } rows[] = {
        // along the pairs from the critical point, to where these are no longer alike
        {"methanol", "hexane", 0.47670615390632815, Saturated::dew, 0, 2.4969658666773413, true},
        {"nitrogen", "octane", 0.59415708545324114, Saturated::bubble, 366.8572684164144, 0, true},
        // as much of the main component per volume of the gas as of the drop
        {"decane", "methane", 2.32762202675403e-06, Saturated::dew, 0, 0.2225057918131019, true},
        {"hexadecane", "carbon_dioxide", 0.00023226559362392302, Saturated::dew, 0,
         4.7812739683046299, true},
        // stiff liquids next to a critical point, 4e-4 and 1e-3 apart; above 1000 MPa
        {"decane", "methane", 0.081076452932238405, Saturated::dew, 0, 114.63219668523924, true},
        {"methane", "helium", 0.29836973197749339, Saturated::bubble, 116.83827781324835, 0, true},
        // the first vapour beside two liquids, one of them a trace
        {"benzene", "water", 1.3077438663515606e-09, Saturated::bubble, 386.38755414554413, 0, true},
        {"benzene", "water", 9.0142488913839882e-12, Saturated::bubble, 0, 0.050028829683218562,
         true},
        // immiscible up to 1000 MPa
        {"mercury", "decane", 0.34220010070509038, Saturated::bubble, 0, 13.489415231644644, false},
        {"hydrogen_sulfide", "water", 0.35058532459551789, Saturated::bubble, 0,
         26.431669498775424, false}};
    for (auto const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.a << " + " << row.b << ' ' << row.T << ' ' << row.p);
        const Mixture m = loaded("PR", row.a, row.b);
        const Cubic cubic(*m);
        const Court<Cubic> court(cubic);
        const Vector<double> z = vec({row.x, 1 - row.x});
        const bool at_T = row.T > 0;
        const double given = at_T ? row.T : row.p;
        try {
            const auto q = at_T ? corvane::saturation_T(*m, row.kind, given, z)
                                : corvane::saturation_p(*m, row.kind, given, z);
            EXPECT_TRUE(row.found);
            EXPECT_EQ(court.saturation(row.kind, at_T, given, z, q).fault, Fault::none);
        } catch (corvane::EquilibriumFailure const& e) {
            EXPECT_FALSE(row.found) << e.what();
            EXPECT_EQ(e.kind(), corvane::EquilibriumFailure::Kind::no_solution);
            EXPECT_EQ(court.absent(row.kind, at_T, given, z, 190, 1800).fault, Fault::none);
        }
    }
    // The court finds what is there.
    const Mixture m = loaded("PR", "methane", "propane");
    const Cubic cubic(*m);
    const auto v = Court<Cubic>(cubic).absent(Saturated::dew, true, 250, vec({0.5, 0.5}), 190, 370);
    EXPECT_EQ(v.fault, Fault::missed);
    EXPECT_NEAR(v.truth / corvane::dew_T(*m, 250, vec({0.5, 0.5})).p, 1, 1e-6);
}

// Nearly pure wholes: what a liquid of mercury holds of decane is below all doubles; a second liquid
// that is 1e-12 of the whole; both asked at T and, with what that gives, at p.
TEST(JudgeCourt, SaturationOfTernariesWithTracesIsFound) {
    using corvane::Saturated;
    const struct {
        std::vector<std::string> names;
        std::vector<double> z;
        Saturated kind;
        double T;
        std::size_t liquids;
    } rows[] = {{{"decane", "mercury", "methane"}, {1.7e-9, 0.0054}, Saturated::dew, 108.05, 0},
                {{"decane", "mercury", "methane"}, {8.2e-6, 3.4e-4}, Saturated::dew, 185.4, 0},
                {{"carbon_dioxide", "decane", "water"}, {7e-10, 1.1e-12}, Saturated::bubble, 463.8, 2},
                {{"ethanol", "heptane", "carbon_dioxide"}, {0.9958, 5.9e-11}, Saturated::bubble,
                 177.65, 2}};
    for (auto const& row : rows)
        for (char const* eos : {"PR", "SRK"}) {
            SCOPED_TRACE(testing::Message() << eos << ' ' << row.names[0] << ' ' << row.T);
            const Mixture m = loaded(eos, row.names);
            const Vector<double> z = vec({row.z[0], row.z[1], 1 - row.z[0] - row.z[1]});
            const Cubic cubic(*m);
            const Court<Cubic> court(cubic);
            const auto q = corvane::saturation_T(*m, row.kind, row.T, z);
            EXPECT_EQ(court.saturation(row.kind, true, row.T, z, q).fault, Fault::none);
            if (*eos == 'P') {
                EXPECT_EQ(q.split.size(), row.liquids);
            }
            const auto back = corvane::saturation_p(*m, row.kind, q.p, z);
            EXPECT_EQ(court.saturation(row.kind, false, q.p, z, back).fault, Fault::none);
            EXPECT_NEAR(back.T / row.T, 1, 1e-9);
            EXPECT_EQ(court.unproven, 0);
        }
}
}  // namespace
