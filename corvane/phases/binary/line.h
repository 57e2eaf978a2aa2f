// Lines of invariant states of a binary: three phases, azeotropes. Internal to the library.
#pragma once

#include <corvane/phases/binary/binary.h>
#include <corvane/phases/binary/binary_diagram.h>
#include <corvane/phases/binary/path.h>
#include <corvane/phases/binary/phase_line.h>
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/phases/stability/test_phases.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace corvane::inline detail {

/// Follows states of `phases` phases with one degree of freedom, in T from a start.
class LineTracer {
  public:
    /// also: a further condition on the first two phases (five coefficients), or empty.
    LineTracer(FluidModel const& fluid, int phases, std::vector<double> const& also,
               PhaseLineOptions const& options);

    /// Solves at the T of solver.u. False without a solution.
    bool begin();
    /// From the state of begin() to an end; that state itself is not recorded. `record` takes each
    /// point from solver and tpd, and counts; false if the point misses its certificate.
    PhaseLineEnd run(bool hotter, std::function<bool()> const& record);

    // For continuation().
    Trial attempt(double& length, CurveEnd& end);
    double growth() const { return path_.growth(); }
    int count() const { return points; }
    CurveEnd lost();
    std::optional<CurveEnd> arrive();

    CoexistenceSolver solver;
    double tpd = 0.0;  ///< tangent-plane distance of the state in solver
    int points = 0;    ///< recorded so far

  private:
    bool stable();
    bool settle(std::vector<double> const& u);
    bool new_phase();
    bool critical();
    bool critical_azeotrope(CriticalConditions& conditions, std::vector<double>& u);
    PhaseLineEnd pure(int component);
    PhaseLineEnd at_end(bool solved, PhaseLineEnd why);

    FluidModel const& fluid_;
    const PhaseLineOptions o_;
    const double T_min_;
    std::vector<double> start_;
    Path path_;
    Stability stability_;
    StabilityResult result_;
    std::function<bool()> record_;
};

/// The failure of a start: none such next to it, or not to the certificate's tolerances.
[[noreturn]] inline void fail_start(Fixed held, char const* name, int iterations, double residual,
                                    char const* advice) {
    throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, T_or_p(held), name, iterations,
                             residual, advice);
}
/// The failure of a diagram to hold such a state; why: none, if it is complete.
[[noreturn]] inline void fail_none(BinaryDiagram const& all, Fixed held, char const* name,
                                   char const* why) {
    throw EquilibriumFailure(
        all.complete() ? EquilibriumFailure::Kind::no_solution : EquilibriumFailure::Kind::gave_up,
        T_or_p(held), name, 0, std::nan(""),
        all.complete() ? why : "the diagram is not complete: give a start");
}

/// The diagram whose three phases and azeotropes are starts.
inline BinaryDiagram complete_diagram(ModelN const& binary, Fixed held, double p_max) {
    DiagramOptions o;
    o.p_max = p_max;
    return held.at_T ? complete_pxy(binary, held.value, o) : complete_Txy(binary, held.value, o);
}

/// What make(s, tpd) gives of the solution that the start in s leads to. trivial, unstable: why it
/// is refused where phases became one, or a further one exists.
template <class Make>
auto point_from(CoexistenceSolver& s, Fixed held, char const* name, char const* trivial,
                char const* unstable, Make make) {
    constexpr int newton = 30;
    auto fail = [&](double residual, char const* advice) {
        fail_start(held, name, s.iterations, residual, advice);
    };
    if (!s.solve(newton)) fail(s.residual, "give a nearer start, or none");
    if (s.trivial()) fail(s.residual, trivial);
    Stability stability(s.fluid);
    double tpd = 0.0;
    test_phases(s, stability, tpd);
    auto q = make(s, tpd);
    if (tpd < -Certificate::tpd_tolerance) fail(tpd, unstable);
    if (!q.certificate.holds())
        fail(std::max(q.certificate.dmu, q.certificate.dp),
             "the solution misses its tolerances: model without exact derivatives?");
    return q;
}

/// A whole line from the state of tracer.begin(), which begin and end explain; no points if
/// that state misses its certificate. make: the point of tracer.solver.
template <class Line, class Make>
Line trace_line(LineTracer& tracer, Make make) {
    Line line;
    auto record = [&] {
        auto point = make();
        if (!point.certificate.holds()) {
            tracer.solver.level();
            point = make();
        }
        if (!point.certificate.holds()) return false;
        line.points.push_back(std::move(point));
        ++tracer.points;
        return true;
    };
    if (!record()) return line;
    line.begin = tracer.run(false, record);
    std::reverse(line.points.begin(), line.points.end());
    line.end = line.begin == PhaseLineEnd::interrupted ? line.begin : tracer.run(true, record);
    return line;
}

/// The line from what prepare(solver) makes of a start at T. @throws ThException 5 if that is false
template <class Line, class Prepare, class Make>
Line line_from(ModelN const& binary, double T, int phases, std::vector<double> const& also,
               PhaseLineOptions const& o, char const* name, char const* none, Prepare prepare,
               Make make) {
    check_binary(binary, T);
    check_options(o);
    const FluidModel fluid(binary, equal_parts());
    LineTracer tracer(fluid, phases, also, o);
    if (!prepare(tracer.solver)) throw ThException(th_out_of_range);
    if (!tracer.begin() || tracer.tpd < -Certificate::tpd_tolerance)
        fail_start({true, T}, name, tracer.solver.iterations, tracer.solver.residual, none);
    return trace_line<Line>(tracer, [&] { return make(tracer.solver, tracer.tpd, o.validity); });
}

/// Do the points, as a line, pass the state (T, p, x) within 2 % of p and 0.02 of x? x_of: of a
/// point.
template <class Point, class X>
bool passes(std::vector<Point> const& points, double T, double p, double x, X x_of) {
    constexpr double slack = 0.02;
    for (std::size_t k = 1; k < points.size(); ++k) {
        Point const &a = points[k - 1], &b = points[k];
        if ((a.T - T) * (b.T - T) > 0.0) continue;
        const double w = a.T == b.T ? 0.0 : (1 / T - 1 / a.T) / (1 / b.T - 1 / a.T);
        if (std::fabs((1 - w) * std::log(a.p) + w * std::log(b.p) - std::log(p)) < slack &&
            std::fabs((1 - w) * x_of(a) + w * x_of(b) - x) < slack)
            return true;
    }
    return false;
}

/// Adds the line through a state unless one of `lines` passes it, or it has no points. False if the
/// caller interrupts it.
template <class Line, class X, class Trace>
bool add_line(std::vector<Line>& lines, double T, double p, double x, X x_of, Trace trace) {
    for (Line const& line : lines)
        if (passes(line.points, T, p, x, x_of)) return true;
    Line line = trace();
    const bool interrupted = line.end == PhaseLineEnd::interrupted;
    if (!line.points.empty()) lines.push_back(std::move(line));
    return !interrupted;
}

/// Complete diagrams at temperatures 6 % apart from T_min to the higher critical temperature, and
/// close to both critical ones, until visit returns false.
void search_lines(ModelN const& binary, PhaseLineOptions const& options,
                  std::function<bool(BinaryDiagram const&)> const& visit);

}  // namespace corvane::inline detail
