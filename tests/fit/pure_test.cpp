// Parameters of pure substances: recovered, better than published, determined or not, written.
#include "support.h"

#include <corvane/text/failure.h>
#include <support/scratch.h>

using namespace corvane::fit;
using corvane::Fluid;
using corvane::PhaseProperties;

namespace {
/// Every kind of datum that a model answers, between 0.5 and 0.95 of its critical temperature.
DataSet every_kind(Model1 const& model) {
    DataSet set = saturation(model, 0.5 * model.Tcrit(), 0.95 * model.Tcrit(), 6);
    for (Point& p : set.points) {
        const auto s = corvane::pure_saturation_T(model, p.T);
        p.observed.push_back({Observable::rhoV, s.rhoV});
        p.observed.push_back(
            {Observable::hvap, R * p.T * (model.Hr(s.rhoV, p.T) - model.Hr(s.rhoL, p.T))});
    }
    for (double T : {0.7, 1.3})
        for (double p : {0.05, 1.0, 6.0}) {
            Point point;
            point.kind = PointKind::state;
            point.T = T * model.Tcrit();
            point.p = p * model.pcrit();
            double rho = 0.0, other = 0.0;
            model.vcalc(point.p, point.T, -1, rho, other);
            const PhaseProperties q = corvane::phase_properties(model, point.T, rho);
            point.observed = {{Observable::rho, rho},
                              {Observable::cp, q.cp},
                              {Observable::w, q.w},
                              {Observable::JT, q.mu_JT}};
            set.points.push_back(point);
        }
    Point virial;
    virial.kind = PointKind::virial;
    virial.T = model.Tcrit();
    virial.observed = {{Observable::B, model.B(virial.T, 2)}};
    set.points.push_back(virial);
    Point critical;
    critical.kind = PointKind::critical;
    critical.observed = {{Observable::T, model.Tcrit()},
                         {Observable::p, model.pcrit()},
                         {Observable::rho, 1.0 / model.vcrit()}};
    set.points.push_back(critical);
    return set;
}

/// Data of one kind of observable alone.
DataSet only(DataSet set, Observable what) {
    for (Point& p : set.points)
        std::erase_if(p.observed, [&](Observation const& o) { return o.what != what; });
    std::erase_if(set.points, [](Point const& p) { return p.observed.empty(); });
    return set;
}
}  // namespace

// Data of an equation itself lead back to its parameters from 10 % off: from every quantity alone
// for one parameter, which no wrong derivative would do in a few steps, and from all for all.
TEST(FitPure, RecoversTheParametersOfItsOwnData) {
    for (char const* equation : {"PCSAFT", "PR"}) {
        const Fluid source = fluid(equation, "propane");
        const DataSet all = every_kind(*source.model);
        for (Observable what :
             {Observable::p, Observable::rhoL, Observable::rhoV, Observable::hvap, Observable::rho,
              Observable::cp, Observable::w, Observable::JT, Observable::B, Observable::T}) {
            SCOPED_TRACE(std::string(equation) + " " + name_of(what));
            Problem problem;
            Fluid changed = fluid(equation, "propane");
            changed.model->Ts(0.95 * changed.model->Ts());
            problem.add(std::move(changed), {only(all, what)});
            problem.adjust("Ts");
            const Result r = solve(problem);
            EXPECT_TRUE(r.converged);
            EXPECT_NEAR(r.parameters[0].value / source.model->Ts(), 1.0, 1e-8);
            EXPECT_LE(r.iterations, 12);
        }
    }
    const struct {
        char const *equation, *substance;
        std::vector<std::string> names;
    } whole[] = {{"PCSAFT", "hexane", {"Ts", "vs", "m"}},
                 {"PCSAFT", "ethanol", {"Ts", "vs", "m", "kappaAB", "epsAB"}},
                 {"SRK", "toluene", {"Ts", "vs", "omega"}}};
    for (auto const& c : whole) {
        SCOPED_TRACE(c.substance);
        const Fluid source = fluid(c.equation, c.substance);
        Problem problem;
        Fluid changed = fluid(c.equation, c.substance);
        for (int i = 1; i <= changed.model->madj(); ++i)
            if (i < 6) changed.model->param(i, (i % 2 ? 1.1 : 0.9) * changed.model->param(i));
        problem.add(std::move(changed), {saturation(*source.model, 0.45 * source.model->Tcrit(),
                                                    0.99 * source.model->Tcrit(), 30)});
        for (auto const& name : c.names) problem.adjust(name);
        const Result r = solve(problem);
        EXPECT_TRUE(r.converged);
        for (std::size_t k = 0; k < c.names.size(); ++k) {
            const double* at = problem.parameters[k]->addresses[0];
            for (int i = 1; i < source.model->mpar(); ++i)
                if (at == problem.systems[0]->fluid->model->ppar(i)) {
                    EXPECT_NEAR(*at / source.model->param(i), 1.0, 1e-6) << c.names[k];
                }
        }
        for (SetReport const& s : r.sets) EXPECT_EQ(s.without_solution, 0);
    }
}

// Vapour pressures and liquid densities of the reference equations: the mean deviations of both are
// below those of the published sets (Gross & Sadowski 2001, 2002) on the same data.
TEST(FitPure, DeviatesLessThanPublishedSetsFromReferenceEquations) {
    const struct {
        char const* substance;
        double first, last;
        std::vector<std::string> names;
    } cases[] = {{"methane", 97, 186, {"Ts", "vs"}},
                 {"propane", 90, 365, {"m", "Ts", "vs"}},
                 {"hexane", 180, 500, {"m", "Ts", "vs"}},
                 {"toluene", 180, 585, {"m", "Ts", "vs"}},
                 {"carbon_dioxide", 217, 303, {"m", "Ts", "vs"}},
                 {"ethanol", 230, 510, {"m", "Ts", "vs", "kappaAB", "epsAB"}}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.substance);
        Problem problem;
        problem.add(fluid("PCSAFT", c.substance),
                    {saturation(*fluid("MEOS", c.substance).model, c.first, c.last, 40)});
        for (auto const& name : c.names) problem.adjust(name);
        // Mean sizes are compared; a narrow Huber loss minimises these, squares would not.
        const Result r = solve(problem, {.loss = Loss::huber, .loss_width = 0.5});
        EXPECT_TRUE(r.converged);
        double before = 0.0, after = 0.0;
        for (SetReport const& s : r.sets) {
            before += s.before.mean_absolute;
            after += s.after.mean_absolute;
            EXPECT_LT(s.after.mean_absolute, 0.012);
            double sum = 0.0, bias = 0.0, largest = 0.0;
            int points = 0;
            for (auto const& p : r.points) {
                if (p.system != s.system || p.set != s.set || p.what != s.what) continue;
                ++points;
                sum += std::fabs(p.deviation);
                bias += p.deviation;
                if (std::fabs(p.deviation) > std::fabs(largest)) largest = p.deviation;
            }
            EXPECT_EQ(points, s.points);
            EXPECT_NEAR(s.after.mean_absolute, sum / points, 1e-12);
            EXPECT_NEAR(s.after.bias, bias / points, 1e-12);
            EXPECT_EQ(s.after.largest, largest);
        }
        EXPECT_LE(after, before);
    }
}

TEST(FitPure, SeesWrongUnitsOutliersAndWhatDataLeaveOpen) {
    const Fluid source = fluid("PCSAFT", "propane");
    const DataSet good = saturation(*source.model, 180.0, 350.0, 30);
    const auto fitted = [&](DataSet const& set, Options const& options = {}) {
        Problem problem;
        problem.add(fluid("PCSAFT", "propane"), {set});
        for (char const* name : {"m", "Ts", "vs"}) problem.adjust(name);
        return solve(problem, options);
    };
    DataSet bar = good;  // pressures in bar under a heading MPa
    for (Point& p : bar.points) p.observed[0].value *= 10.0;
    EXPECT_TRUE(warned(fitted(bar), "wrong unit"));
    EXPECT_FALSE(warned(fitted(good), "wrong unit"));
    DataSet swapped = good;  // kg/m³ under p, MPa under the density
    for (Point& p : swapped.points) {
        const double pressure = p.observed[0].value;
        p.observed[0].value = p.p = 44.1e3 * p.observed[1].value;
        p.observed[1].value = pressure / 44.1e3;
    }
    EXPECT_TRUE(warned(fitted(swapped), "a wrong column"));
    DataSet celsius = saturation(*source.model, 290.0, 350.0, 12);
    for (Point& p : celsius.points) p.T -= 273.15;
    EXPECT_TRUE(warned(fitted(celsius), "a wrong unit, perhaps of T"));

    DataSet one = good;  // 30 % off, beside noise of 0.1 %
    for (std::size_t k = 0; k < one.points.size(); ++k)
        one.points[k].observed[0].value *= k % 2 ? 1.001 : 0.999;
    one.points[12].observed[0].value *= 1.3;
    const Result squares = fitted(one);
    for (PointReport const& p : squares.points)
        EXPECT_EQ(p.outlier && p.what == Observable::p && std::fabs(p.deviation) > 0.1,
                  p.point == 12 && p.what == Observable::p);
    EXPECT_TRUE(warned(squares, "far from the others"));
    const double m = source.model->param(3);
    for (Loss loss : {Loss::huber, Loss::cauchy})
        EXPECT_LT(std::fabs(fitted(one, {.loss = loss}).parameters[0].value - m),
                  0.2 * std::fabs(squares.parameters[0].value - m));
    one.points[12].used = false;
    const Result excluded = fitted(one);
    EXPECT_EQ(excluded.sets[0].excluded, 1);
    EXPECT_NEAR(excluded.parameters[0].value, m, 4.0 * excluded.parameters[0].error);

    // A single temperature tells two parameters, not three.
    DataSet narrow = saturation(*source.model, 299.99, 300.01, 3);
    EXPECT_TRUE(warned(fitted(narrow), "apart"));
    Problem vapour;  // second virial coefficients of a fluid that does not associate know no bonds
    vapour.add(fluid("PCSAFT", "propane"), {good});
    vapour.adjust("epsAB").upper = 10.0;
    EXPECT_TRUE(warned(solve(vapour), "depends on epsAB"));
}

// Above the critical temperature of the equation at the start the deviation has a value that leads
// back.
TEST(FitPure, PointsWithoutASolutionLeadBack) {
    const Fluid source = fluid("PCSAFT", "propane");
    DataSet near = saturation(*source.model, 300.0, 0.995 * source.model->Tcrit(), 12);
    Problem problem;
    Fluid low = fluid("PCSAFT", "propane");
    low.model->Ts(0.9 * low.model->Ts());  // Tc 10 % too low
    problem.add(std::move(low), {near});
    problem.adjust("Ts");
    for (bool first : {false, true}) {
        const Result r = solve(problem, {.first_stage = first});
        EXPECT_NEAR(r.parameters[0].value / source.model->Ts(), 1.0, 1e-7);
        EXPECT_EQ(r.sets[0].without_solution, 0);
    }
}

TEST(FitPure, HoldsBoundsPriorsAndPredictsWhatWasLeftOut) {
    const Fluid source = fluid("PCSAFT", "propane");
    const double m = source.model->param(3);
    const DataSet data = saturation(*source.model, 180.0, 350.0, 20);
    Problem problem;
    problem.add(fluid("PCSAFT", "propane"), {data});
    Parameter& p = problem.adjust("m");
    problem.adjust("Ts");
    p.upper = 0.99 * m;
    p.start = 0.95 * m;
    const Result bounded = solve(problem, {.folds = 4});
    EXPECT_TRUE(bounded.parameters[0].at_bound);
    EXPECT_EQ(bounded.parameters[0].value, 0.99 * m);
    EXPECT_TRUE(warned(bounded, "bound"));
    EXPECT_GT(bounded.sets[0].predicted, 0.0);
    EXPECT_LT(bounded.sets[0].predicted, 2.0 * bounded.sets[0].after.mean_absolute);
    p.upper = 2.0 * m;
    p.prior = 1.02 * m;
    p.prior_width = 1e-9;  // as good as fixed
    EXPECT_NEAR(solve(problem).parameters[0].value / (1.02 * m), 1.0, 1e-6);
}

TEST(FitPure, WritesASetThatGivesWhatWasFitted) {
    const Scratch scratch;
    const corvane::DataHome home(scratch.home());
    Problem problem;
    DataSet data = saturation(*corvane::open("MEOS", "hexane", {0, home}).model, 250.0, 480.0, 20);
    data.source = "a reference equation";
    problem.add(corvane::open("PCSAFT", "hexane", {0, home}), {data});
    for (char const* name : {"m", "Ts", "vs"}) problem.adjust(name);
    const Result r = solve(problem);
    const Target target{scratch.dir() / "mine", 9};
    const auto path = write_parameters(problem, r, 0, target);
    EXPECT_EQ(path, scratch.dir() / "mine/CorvaneS/parameters/PCSAFT/hexane;9");
    EXPECT_THROW(write_parameters(problem, r, 0, target), corvane::text::Failure);  // it is there
    const Fluid again = corvane::open("PCSAFT", "hexane",
                                      {9, corvane::DataHome(scratch.dir() / "mine").over(home)});
    EXPECT_EQ(again.notes.source, "fitted to a reference equation");
    EXPECT_EQ(again.notes.Tmin, 250.0);
    EXPECT_EQ(again.notes.Tmax, 480.0);
    EXPECT_NEAR(again.notes.Tc, 507.82, 0.01);  // the measured one, of the file that was begun with
    for (int i = 0; i < again.model->mpar(); ++i)
        EXPECT_EQ(again.model->param(i), problem.systems[0]->fluid->model->param(i));
    // The critical constants are those of the new parameters: both conditions vanish there.
    const Vector<double> c =
        again.model->crit(again.model->Tcrit(), 1.0 / again.model->vcrit(), 0.0);
    EXPECT_NEAR(c[1], 0.0, 1e-8);
    EXPECT_NEAR(c[2] / again.model->vcrit(), 0.0, 1e-6);
    for (PointReport const& p : r.points) {
        if (p.what != Observable::p) continue;
        const double T = data.points[static_cast<std::size_t>(p.point)].T;
        EXPECT_NEAR(corvane::pure_saturation_T(*again.model, T).p / p.after, 1.0, 1e-8);
    }
    EXPECT_THROW(problem.adjust("kij"), corvane::text::Failure);
}
