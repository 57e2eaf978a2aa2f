#include <tools/corvane/diagrams/binary_lines.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/text/numbers.h>

#include <fmt/format.h>

#include <utility>

namespace cli {
using corvane::AzeotropicLine;
using corvane::CriticalLine;
using corvane::CurveKind;
using corvane::PhaseLineEnd;
using corvane::ThreePhaseLine;

BinaryLines::BinaryLines(MixtureFluid const& mixture, Units const& units)
    : projection(mixture, units), mixture_(mixture), units_(units) {
    table.columns = {{"curve", "", "what coexists"},
                     {"line", "", "number of the line"},
                     {"T", units.name(Quantity::temperature), "temperature"},
                     {"p", units.name(Quantity::pressure), "pressure"}};
    for (int k : {1, 2, 3})
        table.columns.push_back({fmt::format("x{}_{}", k, mixture.component(0)), "",
                                 fmt::format("mole fraction in phase {}", k)});
    Evidence::add_columns(table.columns);
}

void LineLimits::add_to(Command& command) {
    command.value("--p-max", p_max, "where lines end at high pressure (default: 100 MPa)")
        .value("--T-min", T_min, "where lines end at low temperature")
        .flag("--log-p", log_p, "logarithmic pressures in the picture");
}

void LineLimits::frame(Picture& picture) const {
    picture.log_y = log_p;
    if (log_p || !p_max.empty()) picture.y_top = 0.0;  // all of the lines
}

void LineLimits::limit(Units const& units, double& highest, double& coldest) const {
    highest = 100.0;
    if (!p_max.empty()) highest = positive(p_max, "--p-max", Quantity::pressure, units);
    if (!T_min.empty()) coldest = positive(T_min, "--T-min", Quantity::temperature, units);
}

Row BinaryLines::row(std::string const& curve, double T, double p, Fractions const& x,
                     corvane::Certificate const& certificate) {
    Row row;
    row.cells = {curve, number_, units_.from_library(Quantity::temperature, T),
                 units_.from_library(Quantity::pressure, p)};
    for (double fraction : x) row.cells.emplace_back(fraction);
    row.cells.resize(7);
    evidence_.add(row, certificate);
    return row;
}

Row BinaryLines::row(corvane::ThreePhasePoint const& point) {
    Fractions x;
    for (corvane::PhaseRecord const& phase : point.phases) x.push_back(phase.x[0]);
    return row("three phases", point.T, point.p, x, point.certificate);
}

Row BinaryLines::row(corvane::AzeotropePoint const& point) {
    return row("azeotrope", point.T, point.p, {point.x}, point.certificate);
}

/// Tells of the line of which the last rows are.
void BinaryLines::ends(std::string const& curve, std::size_t points, std::string const& begin,
                       std::string const& end) {
    Row &first = table.rows[table.rows.size() - points], &last = table.rows.back();
    add_note(first.note, "begins at " + begin);
    add_note(last.note, "ends at " + end);
    const auto at = [&](Row const& row) {
        return fmt::format("T = {:.10g} {}, p = {:.10g} {}", std::get<double>(row.cells[2]),
                           units_.name(Quantity::temperature), std::get<double>(row.cells[3]),
                           units_.name(Quantity::pressure));
    };
    summary_.push_back(fmt::format("line {}, {}: {} points, from {} ({}) to {} ({})", number_,
                                   curve, points, begin, at(first), end, at(last)));
}

void BinaryLines::add_pure(int i) {
    const auto curve = vapour_pressures(mixture_, i);
    if (curve.empty()) return;
    ++number_;
    const std::string name = fmt::format("pure {}", mixture_.component(i));
    for (auto const& one : curve)
        table.rows.push_back(row(name, one.T, one.p, {one.given.x[0]}, one.certificate));
    ends(name, curve.size(), "half its critical temperature", "its critical point");
    projection.add_pure(curve, i);
}

void BinaryLines::add(CriticalLine const& line) {
    ++number_;
    for (auto const& one : line.points)
        table.rows.push_back(row("critical", one.T, one.p, {one.x[0]}, one.certificate));
    ends("critical", line.points.size(), in_words(line.begin, line.points.front(), mixture_),
         in_words(line.end, line.points.back(), mixture_));
    using End = corvane::CriticalLineEnd;
    open_ = open_ || (line.stable && (line.begin == End::stuck || line.end == End::stuck));
    projection.add(line);
}

/// The rows of a line and how it ends; its points in the projection.
template <class Line>
std::vector<XY> BinaryLines::listed(Line const& line, char const* name, CurveKind kind) {
    ++number_;
    std::vector<XY> curve;
    for (auto const& one : line.points) {
        table.rows.push_back(row(one));
        curve.push_back(projection.at(one.T, one.p));
    }
    ends(name, line.points.size(), in_words(line.begin, kind), in_words(line.end, kind));
    open_ = open_ || line.begin == PhaseLineEnd::stuck || line.end == PhaseLineEnd::stuck;
    return curve;
}

void BinaryLines::add(ThreePhaseLine const& line) {
    const std::vector<XY> curve = listed(line, "three phases", CurveKind::phase_line);
    projection.picture.curves.push_back({"three phases", Ink::liquid2, Stroke::line, curve});
    for (auto const& [end, at] : {std::pair(line.begin, curve.front()), std::pair(line.end, curve.back())})
        if (end == PhaseLineEnd::critical) projection.mark("critical end point", Symbol::end_point, at);
}

void BinaryLines::add(AzeotropicLine const& line) {
    const std::vector<XY> curve = listed(line, "azeotrope", CurveKind::azeotrope);
    projection.picture.curves.push_back({"azeotropes", Ink::azeotrope, Stroke::line, curve});
    for (auto const& [end, at] : {std::pair(line.begin, curve.front()), std::pair(line.end, curve.back())})
        if (end == PhaseLineEnd::critical)
            projection.mark("critical azeotrope", Symbol::azeotrope, at);
        else if (end == PhaseLineEnd::three_phase)
            projection.mark("azeotrope of two liquids", Symbol::three_phase, at);
        else if (end == PhaseLineEnd::pure)
            projection.mark("azeotrope at a pure component", Symbol::extremum, at);
}

void BinaryLines::finish(Heading& heading) const {
    heading.summary.insert(heading.summary.end(), summary_.begin(), summary_.end());
    evidence_.report(heading);
}

}  // namespace cli
