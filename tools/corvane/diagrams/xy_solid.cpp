#include <tools/corvane/diagrams/xy_solid.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace cli {
using corvane::SolidFluidEnd;
using corvane::SolidFluidLine;
using corvane::SolidFluidPoint;

namespace {
/// Of μ/(RT): far above the convergence of the fluid phases.
constexpr double kFrozen = 1e-7;
}  // namespace

Solids::Solids(MixtureFluid const& mixture, bool wanted, std::string const& data, Heading& heading,
               Units const& units)
    : mixture_(mixture) {
    if (!wanted) return;
    for (int i : {0, 1}) {
        solid_[i] = load_solid(*mixture.model->mdl1[i], data);
        heading.remarks.push_back(solid_[i] ? solid_[i]->remark(units)
                                            : fmt::format("no solid data of {}, which never "
                                                          "freezes here",
                                                          mixture.component(i)));
    }
    if (!solid_[0] && !solid_[1])
        throw Failure("--solid: there are no solid data of either component");
}

bool Solids::freeze(double T, double p, double x0, double rho) const {
    ModelN const& model = *mixture_.model;
    const Vector<double> x = binary(x0);
    for (int i : {0, 1}) {
        if (!solid_[i] || !(x[i] > 0.0) || T > solid_[i]->T_max()) continue;
        try {
            if (model.my(x * rho, T, i) > solid_[i]->g(p, T) + kFrozen) return true;
        } catch (ThException const&) {  // outside the data: not known to freeze
        } catch (MthException const&) {
        }
    }
    return false;
}

/// Once, though the line of each solid ends there.
void Solids::report_eutectic(XyFrame const& frame, double given, SolidFluidPoint const& point,
                             std::vector<double>& known, Heading& heading) const {
    constexpr double kSame = 1e-6;
    const double x = point.x[0];
    if (std::any_of(known.begin(), known.end(), [&](double other) { return std::fabs(other - x) < kSame; }))
        return;
    known.push_back(x);
    Units const& u = frame.units;
    const std::string fraction = fmt::format("x_{}", mixture_.component(0));
    heading.summary.push_back(fmt::format("{} = {}: eutectic at {} = {:.7g} {}, {} = {:.6g}", frame.symbol(),
                                          u.text(frame.fixed(), given), frame.isothermal ? "p" : "T",
                                          frame.value(point), u.name(frame.sought()), fraction, x));
    list(heading, "eutectics")
        .push_back({{"T", u.from_library(Quantity::temperature, point.T)},
                    {"p", u.from_library(Quantity::pressure, point.p)},
                    {fraction, x}});
}

/// "CO₂ (s) + L" between the middle of the line and the pure solid; below a eutectic both solids.
void Solids::label(int i, SolidFluidLine const& line, XyFrame const& frame, Picture& picture) const {
    constexpr double kRoom = 0.1;
    const double pure = i == 0 ? 1.0 : 0.0, first = frame.value(line.points.front()), last = frame.value(line.points.back());
    SolidFluidPoint const& middle = *std::min_element(
        line.points.begin(), line.points.end(), [&](SolidFluidPoint const& a, SolidFluidPoint const& b) {
            const double wanted = 0.5 * (first + last);
            return std::fabs(frame.value(a) - wanted) < std::fabs(frame.value(b) - wanted);
        });
    const auto solid = [&](int k) { return mixture_.shown(k) + " (s)"; };
    double reduced = 0.0;
    for (int k : {0, 1}) reduced += middle.rho * middle.x[k] * mixture_.model->mdl1[k]->vcrit();
    if (middle.stable && std::fabs(middle.x[0] - pure) > kRoom)
        picture.labels.push_back({.text = solid(i) + (reduced > 1.0 ? " + L" : " + V"),
                                  .at = {0.5 * (middle.x[0] + pure), frame.value(middle)},
                                  .field = true});
    if (line.end == SolidFluidEnd::eutectic && i == 0)
        picture.labels.push_back({.text = solid(0) + " + " + solid(1), .at = {0.5, last + 0.1 * (last - first)}, .field = true});
}

std::vector<SolidFluidLine> Solids::lines(XyFrame const& frame, int i, double given,
                                          corvane::DiagramOptions const& asked) const {
    corvane::SolidFluidOptions how;
    how.p_max = asked.p_max;
    how.progress = asked.progress;
    for (int k : {0, 1})
        if (solid_[k]) how.anchored[k] = solid_[k]->pointer();
    how.validity = &mixture_.validity;
    how.x_min = 1e-6;
    return frame.isothermal ? solid_fluid_isotherm(*mixture_.model, i, given, how)
                            : solid_fluid_isobar(*mixture_.model, i, given, how);
}

/// Three phases: two solids and a fluid, or a solid and two fluids.
void Solids::mark_end(int i, SolidFluidLine const& line, XyFrame const& frame, Picture& picture) const {
    const double own = i == 0 ? 1.0 : 0.0, y = frame.value(line.points.back());
    const XY end{line.points.back().x[0], y};
    std::vector<XY> three = {{own, y}, end};
    if (line.end == SolidFluidEnd::eutectic) {
        picture.mark("eutectic", Symbol::eutectic, Ink::black, end);
        three.push_back({1.0 - own, y});
    } else if (line.end == SolidFluidEnd::split) {
        three.push_back({line.end_phase.x[0], y});
    } else {
        return;
    }
    picture.curves.push_back({"", Ink::black, Stroke::thin, three});
}

/// Rows and the curve of a line; its evidence in the summary.
std::vector<Row> Solids::rows_of(int i, SolidFluidLine const& line, XyFrame const& frame,
                                 std::string const& where, Heading& heading, Picture& picture) const {
    Units const& u = frame.units;
    const Vector<double> pure = binary(i == 0 ? 1.0 : 0.0);
    std::vector<Row> rows;
    std::vector<XY> curve;
    std::vector<bool> stable;
    double dmu = 0.0, dp = 0.0;
    for (SolidFluidPoint const& point : line.points) {
        Row row;
        row.cells = {u.from_library(Quantity::temperature, point.T),
                     u.from_library(Quantity::pressure, point.p),
                     name(i),
                     point.x[0],
                     pure[0],
                     mixture_.density(u, point.x, point.rho),
                     mixture_.density(u, pure, point.rho_solid)};
        if (!point.stable) row.note = "not stable";
        rows.push_back(std::move(row));
        curve.push_back({point.x[0], frame.value(point)});
        stable.push_back(point.stable);
        dmu = std::max(dmu, point.certificate.dmu);
        dp = std::max(dp, point.certificate.dp);
    }
    const std::string begin = in_words(line.begin, corvane::CurveKind::solid),
                      end = in_words(line.end, corvane::CurveKind::solid);
    add_note(rows.front().note, "begins at " + begin);
    add_note(rows.back().note, "ends at " + end);
    heading.summary.push_back(fmt::format("{} from {} to {}, {} points; certified: {}", where, begin, end,
                                          line.points.size(), agreement(dmu, dp)));
    picture.add("saturated with a solid", Ink::solid, curve, stable);
    return rows;
}

std::vector<Row> Solids::trace(XyFrame const& frame, double given,
                               corvane::DiagramOptions const& asked, Heading& heading,
                               Picture& picture) const {
    std::vector<Row> rows;
    std::vector<double> eutectics;  // mole fractions
    for (int i : {0, 1}) {
        if (!solid_[i]) continue;
        const std::string where = fmt::format("{} = {}: {}", frame.symbol(),
                                              frame.units.text(frame.fixed(), given), name(i));
        std::vector<SolidFluidLine> found;
        try {
            found = asking(where, [&] { return lines(frame, i, given, asked); });
        } catch (Failure const& failure) {
            heading.summary.emplace_back(failure.what());
        }
        for (SolidFluidLine const& line : found) {
            const auto more = rows_of(i, line, frame, where, heading, picture);
            rows.insert(rows.end(), more.begin(), more.end());
            label(i, line, frame, picture);
            if (line.end == SolidFluidEnd::eutectic)
                report_eutectic(frame, given, line.points.back(), eutectics, heading);
            mark_end(i, line, frame, picture);
        }
    }
    return rows;
}

}  // namespace cli
