// Kinds of data of mixtures beyond bubble and dew points: each alone leads back to the parameter of
// the model that it comes from, by functions of the library that a fit does not use.
#include "support.h"

#include <corvane/core/files.h>
#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/three_phase.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/phases/solid/anchored_solid.h>
#include <corvane/phases/solid/solid_fluid.h>
#include <corvane/solid/fusion.h>
#include <corvane/state/excess.h>
#include <corvane/text/failure.h>

#include <support/scratch.h>

#include <filesystem>
#include <functional>

using namespace corvane::fit;
using corvane::Mixture;

namespace {
Vector<double> composition(double x) {
    Vector<double> z(2);
    z[0] = x;
    z[1] = 1.0 - x;
    return z;
}

Point point(PointKind kind, double T, double p, double x = kUnknown) {
    Point q;
    q.kind = kind;
    q.T = T;
    q.p = p;
    if (std::isfinite(x)) q.x = {x, 1.0 - x};
    return q;
}

struct Case {
    char const *name, *model, *first, *second;
    double kij, start;
    std::function<std::vector<Point>(Mixture const&)> data;
    double tolerance = 1e-8;
};

std::vector<Point> azeotropes(Mixture const& m) {
    std::vector<Point> all;
    for (double T : {230.0, 260.0}) {
        const auto a = corvane::azeotrope_T(*m.model, T);
        Point q = point(PointKind::azeotrope, T, a.p, a.x);
        q.observed = {{Observable::p, a.p}, {Observable::x, a.x, kUnknown, 0}};
        all.push_back(q);
    }
    return all;
}

std::vector<Point> three_phases(Mixture const& m, bool all_measured) {
    std::vector<Point> all;
    for (double T : {270.0, 280.0}) {
        auto const t = corvane::three_phase_T(*m.model, T);
        Point q = point(PointKind::three_phase, T, t.p);
        q.observed = {{Observable::p, t.p}};
        if (all_measured) {
            std::vector<double>* to[] = {&q.x, &q.x2, &q.y};
            const Observable what[] = {Observable::x, Observable::x2, Observable::y};
            for (int k = 0; k < 3; ++k) {
                const double x = t.phases[static_cast<std::size_t>(k)].x[0];
                *to[k] = {x, 1.0 - x};
                q.observed.push_back({what[k], x, kUnknown, 0});
            }
        }
        all.push_back(q);
    }
    return all;
}

std::vector<Point> critical(Mixture const& m) {
    std::vector<Point> all;
    for (double x : {0.3, 0.6}) {
        const auto c = corvane::critical_point(*m.model, composition(x));
        Point q = point(PointKind::critical, kUnknown, kUnknown, x);
        q.observed = {{Observable::T, c.T}, {Observable::p, c.p}, {Observable::rho, c.rho}};
        all.push_back(q);
    }
    return all;
}

std::vector<Point> excess(Mixture const& m, Observable what) {
    std::vector<Point> all;
    for (double x : {0.2, 0.5, 0.8}) {
        const auto e = corvane::excess_properties(*m.model, 300.0, 0.1, composition(x));
        Point q = point(PointKind::excess, 300.0, 0.1, x);
        if (what == Observable::hE) q.observed = {{what, e.h}};
        if (what == Observable::vE) q.observed = {{what, e.v}};
        if (what == Observable::gamma) q.observed = {{what, std::exp(e.ln_gamma[1]), kUnknown, 1}};
        all.push_back(q);
    }
    return all;
}

std::vector<Point> dilute(Mixture const& m, Observable what, double T, double p) {
    const auto h = p > 0.0 ? corvane::henry_constant(*m.model, 0, T, p, composition(0.0))
                           : corvane::henry_constant(*m.model, 0, T, composition(0.0));
    Point q = point(PointKind::dilute, T, p, 0.0);
    q.observed = {{what, what == Observable::H ? h.H : std::exp(h.ln_gamma), kUnknown, 0}};
    return {q};
}

std::vector<Point> dissolved(Mixture const& m) {
    const corvane::ReadingFrom from(m.home.names());
    if (std::filesystem::exists("CorvaneS/solid/benzene")) m.model->mdl1[0]->solid.load();
    const corvane::AnchoredSolid solid(*m.model->mdl1[0], corvane::load_fusion("benzene"));
    corvane::SolidFluidOptions options;
    options.anchored[0] = &solid;
    std::vector<Point> all;
    for (double T : {230.0, 255.0}) {
        const auto s = corvane::solubility(*m.model, 0, 0.1, T, options);
        Point q = point(PointKind::solubility, T, 0.1);
        q.observed = {{Observable::solubility, s.x[0], kUnknown, 0}};
        all.push_back(q);
    }
    return all;
}

Problem problem_of(Case const& c, std::vector<Point> points) {
    Problem problem;
    DataSet set;
    set.name = c.name;
    set.points = std::move(points);
    problem.add(binary(c.model, c.first, c.second), {set});
    Parameter& p = problem.adjust_pair("kij");
    p.start = c.start;
    *p.addresses[0] = c.start;
    return problem;
}
}  // namespace

TEST(FitKinds, EachAloneLeadsBackToItsParameter) {
    char const *co2 = "carbon_dioxide", *benzene = "benzene", *hexane = "hexane";
    const Case cases[] = {
        {"azeotropes", "PR+vdW1", co2, "ethane", 0.13, 0.10, azeotropes},
        {"three phases", "SRK+vdW1", "methanol", hexane, 0.02, 0.03,
         [](auto const& m) { return three_phases(m, true); }},
        {"pressures of three phases", "SRK+vdW1", "methanol", hexane, 0.02, 0.03,
         [](auto const& m) { return three_phases(m, false); }},
        // The third-order condition is differenced, so that densities have six digits or seven.
        {"critical points", "PR+vdW1", "methane", "propane", 0.03, 0.0, critical, 1e-5},
        {"hE", "PCSAFT+LB", benzene, hexane, 0.01, 0.03,
         [](auto const& m) { return excess(m, Observable::hE); }},
        {"vE", "PR+vdW1", benzene, hexane, 0.01, -0.02,
         [](auto const& m) { return excess(m, Observable::vE); }},
        {"gamma", "SRK+vdW1", benzene, hexane, 0.01, 0.05,
         [](auto const& m) { return excess(m, Observable::gamma); }},
        {"H", "PR+vdW1", "methane", "propane", 0.02, 0.1,
         [](auto const& m) { return dilute(m, Observable::H, 250.0, kUnknown); }},
        {"gammainf", "PCSAFT+LB", hexane, benzene, 0.012, 0.0,
         [](auto const& m) { return dilute(m, Observable::gammainf, 300.0, 0.1); }},
        {"solubility", "PR+vdW1", benzene, hexane, 0.01, 0.04, dissolved}};
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        Mixture source = binary(c.model, c.first, c.second);
        *source.model->ppar(0, 0, 1) = c.kij;
        Problem problem = problem_of(c, c.data(source));
        const Result r = solve(problem);
        EXPECT_TRUE(r.converged);
        EXPECT_NEAR(r.parameters[0].value, c.kij, c.tolerance);
        EXPECT_LE(r.iterations, 15);
        for (SetReport const& s : r.sets) {
            EXPECT_EQ(s.without_solution, 0) << name_of(s.what);
            EXPECT_EQ(s.unstable, 0) << name_of(s.what);
        }
    }
}

// Where the model has no such state at the start the penalty leads to where there is one.
TEST(FitKinds, WithoutASolutionThePenaltyLeadsBack) {
    const Case c{"azeotropes", "PR+vdW1", "carbon_dioxide", "ethane", 0.13, 0.0, azeotropes};
    Mixture source = binary(c.model, c.first, c.second);
    *source.model->ppar(0, 0, 1) = c.kij;
    for (bool first : {false, true}) {
        Problem problem = problem_of(c, c.data(source));
        const Result r = solve(problem, {.first_stage = first});
        EXPECT_LT(r.sets[0].before.points, r.sets[0].points);  // not all have one at the start
        EXPECT_NEAR(r.parameters[0].value, c.kij, 1e-8);
        EXPECT_EQ(r.sets[0].without_solution, 0);
    }
}

// A bubble point inside the gap of two liquids: what is compared is the boundary of a liquid that
// splits, and the report says so.
TEST(FitKinds, NamesWhatIsNotStable) {
    Case c{"inside", "SRK+vdW1", "methanol", "hexane", 0.02, 0.02, {}};
    Mixture source = binary(c.model, c.first, c.second);
    *source.model->ppar(0, 0, 1) = c.kij;
    const auto t = corvane::three_phase_T(*source.model, 280.0);
    const auto outside = corvane::bubble_T(*source.model, 280.0, composition(0.01));
    std::vector<Point> points = {point(PointKind::bubble, 280.0, t.p, 0.5),
                                 point(PointKind::bubble, 280.0, outside.p, 0.01)};
    for (Point& p : points) p.observed = {{Observable::p, p.p}};
    Problem problem = problem_of(c, points);
    problem.parameters[0]->prior = c.kij;
    problem.parameters[0]->prior_width = 1e-9;  // as good as fixed
    const Result r = solve(problem);
    EXPECT_FALSE(r.points[0].stable);
    EXPECT_TRUE(r.points[1].stable);
    EXPECT_EQ(r.sets[0].unstable, 1);
    EXPECT_TRUE(warned(r, "not stable"));
}

// Excess enthalpies that pass through zero have deviations relative to the largest one; a tie line
// of three components leads back, too.
TEST(FitKinds, SizesOfDeviationsAndTernaryTieLines) {
    DataSet set;
    set.name = "hE";
    set.points = {point(PointKind::excess, 300.0, 0.1, 0.2),
                  point(PointKind::excess, 300.0, 0.1, 0.5)};
    set.points[0].observed = {{Observable::hE, 0.0}};
    set.points[1].observed = {{Observable::hE, -400.0, 8.0}};
    Problem problem;
    problem.add(binary("PR+vdW1", "benzene", "hexane"), {set});
    problem.adjust_pair("kij");
    const Result r = solve(problem);
    EXPECT_EQ(r.points[0].size, 400.0);
    EXPECT_NEAR(r.points[0].deviation, r.points[0].after / 400.0, 1e-12);
    EXPECT_NEAR(r.points[1].weighted, (r.points[1].after + 400.0) / 8.0, 1e-9);

    corvane::MixtureOptions options;
    options.home = here();
    const auto three = [&] {
        return corvane::open_mixture("SRK+vdW1", {"methanol", "hexane", "toluene"}, options);
    };
    Mixture source = three();
    *source.model->ppar(0, 0, 1) = 0.03;
    Vector<double> z(3);
    z[0] = 0.45;
    z[1] = 0.45;
    z[2] = 0.1;
    const auto f = corvane::flash_pT(*source.model, 0.5, 270.0, z);
    ASSERT_EQ(f.phases.size(), 2u);
    Point q = point(PointKind::liquid_liquid, 270.0, 0.5);
    for (int i = 0; i < 3; ++i) {
        q.x.push_back(f.phases[0].x[i]);
        q.x2.push_back(f.phases[1].x[i]);
    }
    for (int i = 0; i < 2; ++i) {
        q.observed.push_back({Observable::x, f.phases[0].x[i], kUnknown, i});
        q.observed.push_back({Observable::x2, f.phases[1].x[i], kUnknown, i});
    }
    DataSet ties;
    ties.name = "ties";
    ties.points = {q};
    Problem ternary;
    ternary.add(three(), {ties});
    Parameter& p = ternary.adjust_pair("kij");
    p.start = *p.addresses[0] = 0.05;
    EXPECT_NEAR(solve(ternary).parameters[0].value, 0.03, 1e-8);
}

// k_ij = kij + kijT/T: at one temperature the mixture with that k_ij, slopes in T as differences
// give them; Henry's constants at several temperatures tell both parameters, and the file keeps
// them.
TEST(FitKinds, TemperatureDependentPairParameters) {
    const Scratch scratch;
    const corvane::DataHome home(scratch.home());
    corvane::MixtureOptions options;
    options.home = home;
    const auto pair = [&] {
        return corvane::open_mixture("PR+vdW1", {"carbon_dioxide", "water"}, options);
    };
    const double kij = 0.25, kijT = -60.0, T = 320.0, rho = 0.03, h = 0.05;
    Mixture source = pair(), fixed = pair();
    *source.model->ppar(0, 0, 1) = kij;
    *source.model->ppar(2, 0, 1) = kijT;
    *fixed.model->ppar(0, 0, 1) = kij + kijT / T;
    Vector<double> const x = composition(0.3);
    ModelN const& m = *source.model;
    EXPECT_NEAR(m.Ar(rho, T, x) / fixed.model->Ar(rho, T, x), 1.0, 1e-14);
    const double up = m.Ar(rho, T + h, x), down = m.Ar(rho, T - h, x), at = m.Ar(rho, T, x);
    const double first = T * (up - down) / (2.0 * h),
                 second = T * T * (up - 2.0 * at + down) / (h * h);
    EXPECT_NEAR(m.Ur(rho, T, x) / -first, 1.0, 1e-6);
    EXPECT_NEAR(T * m.CVr(rho, T, x) / (-2.0 * first - second), 1.0, 1e-4);  // CVr is over T

    DataSet set;
    set.name = "henry";
    for (double t : {290.0, 350.0, 410.0, 470.0}) {
        Point q = point(PointKind::dilute, t, kUnknown, 0.0);
        q.observed = {
            {Observable::H, corvane::henry_constant(m, 0, t, composition(0.0)).H, kUnknown, 0}};
        set.points.push_back(q);
    }
    Problem problem;
    problem.add(pair(), {set});
    problem.adjust_pair("kij");
    problem.adjust_pair("kijT");
    const Result r = solve(problem);
    EXPECT_NEAR(r.parameters[0].value, kij, 1e-6);
    EXPECT_NEAR(r.parameters[1].value, kijT, 1e-4);
    write_parameters(problem, r, 0, {scratch.dir() / "mine", 9});
    options.home = corvane::DataHome(scratch.dir() / "mine").over(home);
    options.pair_set = 9;
    const Mixture again = pair();
    for (int k : {0, 1, 2})
        EXPECT_EQ(again.model->param(k, 0, 1), problem.systems[0]->mixture->model->param(k, 0, 1));
}
