// What points count that lose their solution, along lines in the parameters of models.
#include "support.h"

#include <corvane/fit/evaluator.h>
#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/three_phase.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>

#include <functional>

using namespace corvane::fit;
using corvane::Mixture;

namespace {
std::vector<double> pair(double x) {
    return {x, 1.0 - x};
}
Vector<double> composition(double x) {
    Vector<double> z(2);
    z[0] = x;
    z[1] = 1.0 - x;
    return z;
}

/// A point of a model, as a measured one.
Point boundary(Mixture const& m, PointKind kind, double T, double x, bool other = true) {
    const bool bubble = kind == PointKind::bubble;
    const auto s = bubble ? corvane::bubble_T(*m.model, T, composition(x))
                          : corvane::dew_T(*m.model, T, composition(x));
    Point p;
    p.kind = kind;
    p.T = T;
    p.p = s.p;
    (bubble ? p.x : p.y) = pair(x);
    p.observed = {{Observable::p, s.p}};
    if (!other) return p;
    (bubble ? p.y : p.x) = pair(s.incipient.x[0]);
    p.observed.push_back({bubble ? Observable::y : Observable::x, s.incipient.x[0], kUnknown, 0});
    return p;
}
Point two_liquids(Mixture const& m, double T, double p, double z) {
    const auto f = corvane::flash_pT(*m.model, p, T, composition(z));
    Point q;
    q.kind = PointKind::liquid_liquid;
    q.T = T;
    q.p = p;
    q.x = pair(f.phases.at(0).x[0]);
    q.x2 = pair(f.phases.at(1).x[0]);
    q.observed = {{Observable::x, q.x[0], kUnknown, 0}, {Observable::x2, q.x2[0], kUnknown, 0}};
    return q;
}
Point azeotrope(Mixture const& m, double T) {
    const auto a = corvane::azeotrope_T(*m.model, T);
    Point q;
    q.kind = PointKind::azeotrope;
    q.T = T;
    q.p = a.p;
    q.x = pair(a.x);
    q.observed = {{Observable::p, a.p}, {Observable::x, a.x, kUnknown, 0}};
    return q;
}
Point three_phases(Mixture const& m, double T) {
    const auto t = corvane::three_phase_T(*m.model, T);
    Point q;
    q.kind = PointKind::three_phase;
    q.T = T;
    q.p = t.p;
    q.x = pair(t.phases[0].x[0]);
    q.x2 = pair(t.phases[1].x[0]);
    q.y = pair(t.phases[2].x[0]);
    q.observed = {{Observable::p, t.p},
                  {Observable::x, q.x[0], kUnknown, 0},
                  {Observable::x2, q.x2[0], kUnknown, 0},
                  {Observable::y, q.y[0], kUnknown, 0}};
    return q;
}

Point p_alone(Point q) {
    q.x.clear();
    q.x2.clear();
    q.y.clear();
    q.observed.resize(1);
    return q;
}

/// Squares of the deviations of a point along a line, with their slopes.
struct Line {
    std::vector<double> square, slope;
    int known = 0, lost = 0;  // known: a solution, or a boundary's continuation
    double h = 0.0;
    /// What is left of differences of neighbours when their slopes are integrated, in all.
    double defect() const {
        double sum = 0.0;
        for (std::size_t k = 1; k < square.size(); ++k)
            sum += std::fabs(square[k] - square[k - 1] - 0.5 * h * (slope[k] + slope[k - 1]));
        return sum;
    }
    double way() const {
        double sum = 0.0;
        for (std::size_t k = 1; k < square.size(); ++k) sum += std::fabs(square[k] - square[k - 1]);
        return sum;
    }
    double steepest() const {
        double most = 0.0;
        for (double s : slope) most = std::fmax(most, std::fabs(s));
        return most;
    }
    double largest_difference() const {
        double most = 0.0;
        for (std::size_t k = 1; k < square.size(); ++k)
            most = std::fmax(most, std::fabs(square[k] - square[k - 1]) / h);
        return most;
    }
};

Line along(Evaluator& evaluator, Point const& point, double* parameter, double step, double from,
           double to, int count) {
    Line line;
    line.h = std::fabs(to - from) / count;
    std::vector<Answer> answers;
    for (int k = 0; k <= count; ++k) {
        const double at = *parameter = from + (to - from) * k / count;
        evaluator.parameters_changed();
        evaluator.evaluate(0, point, {Knob{{parameter}, at, step}}, answers);
        double square = 0.0, slope = 0.0;
        for (std::size_t o = 0; o < answers.size(); ++o) {
            Observation const& seen = point.observed[o];
            const double size = is_fraction(seen.what) ? 1.0 : seen.value;
            const double d = answers[o].alone
                                 ? answers[o].penalty
                                 : (answers[o].calculated - seen.value) / size + answers[o].penalty;
            square += d * d;
            slope += 2.0 * d * answers[o].slope[0] / (answers[o].alone ? 1.0 : size);
        }
        line.square.push_back(square);
        line.slope.push_back(to > from ? slope : -slope);
        line.known += !answers[0].alone;
        line.lost += !answers[0].solved;
    }
    return line;
}

/// A step in the squares, or a wrong or infinite slope, does not go away on a finer grid: the
/// integral of the slopes misses it, and the largest difference quotient grows with the number of
/// points.
void continuous(Line const& coarse, Line const& fine) {
    EXPECT_GT(fine.known, 5);
    EXPECT_GT(fine.lost, 5);
    EXPECT_TRUE(std::isfinite(fine.steepest()));
    // Of second order: a sixteenth is left where the coarse grid is fine enough; or what
    // differences leave.
    EXPECT_LT(fine.defect(), std::fmax(0.3 * coarse.defect(), 2e-4 * fine.way()));
    EXPECT_LT(fine.defect(), 0.02 * fine.way());
    EXPECT_LT(fine.largest_difference(), 1.05 * fine.steepest());
}
}  // namespace

// From both ends, since what was found last is the start of what comes next.
TEST(FitPenalty, IsContinuousWithItsSlopesThroughTheLossOfASolution) {
    char const *co2 = "carbon_dioxide", *methane = "methane", *propane = "propane";
    using Make = std::function<Point(Mixture const&)>;
    const auto at = [](PointKind kind, double T, double x, bool other = true) -> Make {
        return [=](Mixture const& m) { return boundary(m, kind, T, x, other); };
    };
    const struct {
        char const *name, *model, *first, *second;
        double kij, from, to;
        Make make;
    } cases[] = {
        // Through the critical point, then to where the boundary goes on to dense states instead.
        {"bubble", "PCSAFT+LB", co2, methane, 0.05, 0.04, 0.18, at(PointKind::bubble, 235.0, 0.4)},
        {"bubble, p alone", "SRK+vdW1", methane, propane, -0.1, -0.1, 0.05,
         at(PointKind::bubble, 290.0, 0.7, false)},
        {"bubble", "PR+vdW1", co2, propane, 0.13, 0.0, 0.2, at(PointKind::bubble, 322.0, 0.6)},
        // Through the largest temperature of the boundary.
        {"dew", "PCSAFT+LB", co2, methane, -0.2, -0.2, 0.1, at(PointKind::dew, 275.0, 0.6)},
        {"dew, p alone", "PR+vdW1", co2, methane, -0.2, -0.2, 0.1,
         at(PointKind::dew, 256.0, 0.4, false)},
        {"two liquids", "SRK+vdW1", "methanol", "hexane", 0.02, -0.05, -0.03,
         [](auto const& m) { return two_liquids(m, 290.0, 0.5, 0.5); }},
        {"two liquids", "PCSAFT+LB", "methanol", "hexane", 0.03, 0.0265, 0.0285,
         [](auto const& m) { return two_liquids(m, 280.0, 0.5, 0.5); }},
        {"azeotrope", "PR+vdW1", co2, "ethane", 0.13, -0.01, 0.04,
         [](auto const& m) { return azeotrope(m, 230.0); }},
        {"three phases", "SRK+vdW1", "methanol", "hexane", 0.02, -0.06, -0.04,
         [](auto const& m) { return three_phases(m, 280.0); }},
        {"azeotrope, p alone", "PR+vdW1", co2, "ethane", 0.13, -0.001, 0.004,
         [](auto const& m) { return p_alone(azeotrope(m, 230.0)); }},
        {"three phases, p alone", "SRK+vdW1", "methanol", "hexane", 0.02, -0.055, -0.045,
         [](auto const& m) { return p_alone(three_phases(m, 280.0)); }}};
    for (auto const& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " " + c.model);
        Mixture m = binary(c.model, c.first, c.second);
        double* kij = m.model->ppar(0, 0, 1);
        *kij = c.kij;
        const Point point = c.make(m);
        for (bool back : {false, true}) {
            const double from = back ? c.to : c.from, to = back ? c.from : c.to;
            const auto line = [&](int count) {
                const auto evaluator = mixture_evaluator(m, 1);
                return along(*evaluator, point, kij, 1e-6, from, to, count);
            };
            continuous(line(100), line(400));
        }
    }
}

TEST(FitPenalty, OfPureSaturationIsContinuousThroughTheCriticalPoint) {
    for (char const* equation : {"PR", "PCSAFT", "SRK"}) {
        SCOPED_TRACE(equation);
        const corvane::Fluid f = fluid(equation, "propane");
        const double T = 0.99 * f.model->Tcrit(), Ts = f.model->Ts();
        const auto s = corvane::pure_saturation_T(*f.model, T);
        Point point;
        point.T = T;
        point.p = s.p;
        point.observed = {
            {Observable::p, s.p},
            {Observable::rhoL, s.rhoL},
            {Observable::rhoV, s.rhoV},
            {Observable::hvap, R * T * (f.model->Hr(s.rhoV, T) - f.model->Hr(s.rhoL, T))}};
        double* parameter = nullptr;
        for (int i = 0; i < f.model->mpar(); ++i)
            if (f.model->param(i) == Ts) parameter = f.model->ppar(i);
        ASSERT_NE(parameter, nullptr);
        const auto line = [&](int count) {
            const auto evaluator = pure_evaluator(*f.model, 1);
            return along(*evaluator, point, parameter, 1e-5 * Ts, 0.98 * Ts, 1.0 * Ts, count);
        };
        continuous(line(200), line(800));
    }
}

// Points of a model, fitted from a k_ij at which they have no solution.
TEST(FitPenalty, FitsFindTheirWayBack) {
    const struct {
        char const *name, *model, *first, *second;
        double kij, start;
        std::function<std::vector<Point>(Mixture const&)> make;
    } cases[] = {
        {"bubble", "PCSAFT+LB", "carbon_dioxide", "methane", 0.03, 0.15,
         [](auto const& m) {
             return std::vector<Point>{boundary(m, PointKind::bubble, 235.0, 0.4)};
         }},
        {"bubble, p alone", "SRK+vdW1", "methane", "propane", -0.1, 0.1,
         [](auto const& m) {
             return std::vector<Point>{boundary(m, PointKind::bubble, 290.0, 0.7, false)};
         }},
        {"dew", "PCSAFT+LB", "carbon_dioxide", "methane", -0.2, 0.1,
         [](auto const& m) { return std::vector<Point>{boundary(m, PointKind::dew, 275.0, 0.6)}; }},
        {"two liquids", "PCSAFT+LB", "methanol", "hexane", 0.03, 0.0,
         [](auto const& m) { return std::vector<Point>{two_liquids(m, 280.0, 0.5, 0.5)}; }},
        // From so far that most have no solution or one several hundred per cent off.
        {"isotherms", "PR+vdW1", "methane", "propane", 0.015, 0.5,
         [](auto const& m) {
             std::vector<Point> points;
             for (double T : {222.0, 240.0, 259.0, 277.0, 296.0})
                 for (int k = 1; k <= 8; ++k)
                     points.push_back(boundary(m, PointKind::bubble, T, 0.05 * k));
             return points;
         }}};
    for (auto const& c : cases)
        for (bool first : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (first ? ", first stage" : ""));
            Mixture source = binary(c.model, c.first, c.second);
            *source.model->ppar(0, 0, 1) = c.kij;
            DataSet set;
            set.name = c.name;
            set.points = c.make(source);
            Problem problem;
            problem.choose(problem.add(binary(c.model, c.first, c.second), {set}),
                           {.names = {"kij"}, .start = {{"kij", c.start}}});
            const Result r = solve(problem, {.first_stage = first});
            if (set.points.size() == 1) {
                EXPECT_EQ(r.sets[0].before.points, 0);
            }
            EXPECT_NEAR(r.parameters[0].value, c.kij, 1e-8);
            EXPECT_EQ(r.sets[0].without_solution, 0);
        }
}
