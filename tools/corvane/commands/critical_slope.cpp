#include <tools/corvane/commands/critical_slope.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>

#include <corvane/corvane.h>

#include <fmt/format.h>

#include <cmath>

namespace cli {
namespace {
char const* end_in_words(corvane::LineEnd end) {
    switch (end) {
        case corvane::LineEnd::pure:
            return "ends at a pure component";
        case corvane::LineEnd::vanishing:
            return "ends where a component's mole fraction falls below 1e-6";
        case corvane::LineEnd::dense:
            return "ends at high density or pressure, towards which the line goes on";
        case corvane::LineEnd::tension:
            return "ends where the pressure is no longer positive; the line goes on under tension";
        case corvane::LineEnd::full:
            return "ends at the largest number of points; the line goes on";
        case corvane::LineEnd::open:
            break;
    }
    return "ends open: no further point was found";
}
}  // namespace

void trace_slope(
    MixtureFluid const& mixture, CriticalStart const& start, Heading& heading, Table& table,
    std::function<Row(Vector<double> const& x, double T, double p, double rho)> const& row) {
    if (!(std::fabs(start.step) <= 0.5) || start.step == 0.0)
        throw Misuse("--step: give a step in the mole fraction, not 0 and at most 0.5");
    // From a pure component there is one direction.
    double s = start.x0 == 1.0   ? -std::fabs(start.step)
               : start.x0 == 0.0 ? std::fabs(start.step)
                                 : start.step;
    if (start.x0 + s < 0.0 || start.x0 + s > 1.0)
        throw Misuse("--step leads out of the compositions");
    Vector<double> x = binary(start.x0);
    Matrix<double> points;
    if (start.T) {
        points.size(1, 4);
        points[0][0] = start.x0;
        points[0][1] = *start.T;
        points[0][2] = *start.rho;
    }
    asking(fmt::format("{}: no critical line from {} = {:.6g}", mixture.text(),
                       mixture.component(0), start.x0),
           [&] { crit_slope_x(mixture.model.get(), x, s, points); });
    for (int k = 0; k < points.size(); ++k) {
        table.rows.push_back(row(binary(points[k][0]), points[k][1], points[k][3], points[k][2]));
        if (!(points[k][3] > 0.0)) table.rows.back().note = "under tension";
    }
    const std::string end = points.size() == 1
                                ? "has its start only: no further point was found in this direction"
                                : end_in_words(corvane::critical_line_end(mixture.model.get(), points));
    add_note(table.rows.back().note, end);
    heading.summary.push_back(
        fmt::format("{}; the line {}",
                    points.size() == 1 ? "1 point" : fmt::format("{} points", points.size()), end));
    heading.remarks.emplace_back(
        "from start values: not certified; points may be metastable or unstable");
}

}  // namespace cli
