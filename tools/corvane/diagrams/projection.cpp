#include <tools/corvane/diagrams/projection.h>

#include <corvane/phases/critical/critical.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cli {
using corvane::CriticalLine;
using corvane::CriticalLineEnd;
using corvane::CriticalPoint;
using corvane::SaturationPoint;

std::vector<SaturationPoint> vapour_pressures(MixtureFluid const& mixture, int i, double from) {
    ModelN const& model = *mixture.model;
    constexpr int kPoints = 60;
    std::vector<SaturationPoint> curve;
    const Vector<double> z = binary(i == 0 ? 1.0 : 0.0);
    try {
        const CriticalPoint end = corvane::critical_point(model, z);
        // Closer towards the critical point, where the curve of pure fluids is hardest to find.
        for (int k = 0; k < kPoints; ++k) {
            const double gap = (1.0 - from) * (1.0 - static_cast<double>(k) / kPoints);
            corvane::SaturationOptions how;
            how.start = curve.empty() ? nullptr : &curve.back();
            how.validity = &mixture.validity;
            curve.push_back(
                saturation_T(model, corvane::Saturated::bubble, end.T * (1.0 - gap), z, how));
        }
        SaturationPoint last;
        last.T = end.T;
        last.p = end.p;
        last.given = last.incipient = {end.rho, z};
        last.certificate = end.certificate;
        curve.push_back(last);
    } catch (corvane::EquilibriumFailure const&) {
    } catch (ThException const&) {
    }
    return curve;
}

std::string in_words(CriticalLineEnd end, CriticalPoint const& point, MixtureFluid const& mixture) {
    if (end == CriticalLineEnd::pure)
        return fmt::format("pure {}", mixture.component(point.x[0] > 0.5 ? 0 : 1));
    return corvane::in_words(end);
}

Projection::Projection(MixtureFluid const& mixture, Units const& units)
    : mixture_(mixture), units_(units) {
    picture.title = title(mixture);
    picture.x_axis = axis(Quantity::temperature, units);
    picture.y_axis = axis(Quantity::pressure, units);
}

void Projection::show(double p) {
    picture.y_top = std::max(picture.y_top, 1.5 * at(0.0, p)[1]);
}

void Projection::add_pure(std::vector<SaturationPoint> const& curve, int i) {
    if (curve.empty()) return;
    std::vector<XY> points;
    for (SaturationPoint const& point : curve) points.push_back(at(point.T, point.p));
    show(curve.back().p);
    picture.curves.push_back({fmt::format("pure {}", mixture_.shown(i)),
                              i == 0 ? Ink::liquid : Ink::vapour, Stroke::line, points});
    picture.mark("pure critical point", Symbol::critical, Ink::black, points.back());
}

void Projection::mark(char const* name, Symbol symbol, XY at) {
    for (Marks const& m : picture.marks)
        if (m.title == name)
            for (XY const& q : m.points)
                if (std::fabs(q[0] - at[0]) < 1e-4 * std::fabs(at[0]) && std::fabs(q[1] - at[1]) < 1e-3 * std::fabs(at[1]))
                    return;
    picture.mark(name, symbol, Ink::black, at);
}

void Projection::add(CriticalLine const& line) {
    std::vector<XY> points;
    for (CriticalPoint const& point : line.points) points.push_back(at(point.T, point.p));
    picture.add("critical line", Ink::black, points, std::vector<bool>(points.size(), line.stable));
    if (!line.stable) return;
    // A line that leaves at the top is seen to do so; the others are seen as a whole.
    if (line.begin != CriticalLineEnd::pressure && line.end != CriticalLineEnd::pressure)
        for (CriticalPoint const& point : line.points) show(point.p);
    // What rises and falls again before it leaves is seen, too.
    for (std::size_t k = 1; k + 1 < line.points.size(); ++k) {
        const double p = line.points[k].p, before = line.points[k - 1].p, after = line.points[k + 1].p;
        if ((p > before && p >= after) || (p < before && p <= after)) show(p);
    }
    for (auto const& [end, point] :
         {std::pair(line.begin, line.points.front()), std::pair(line.end, line.points.back())})
        if (end != CriticalLineEnd::pressure) show(point.p);
    if (line.begin == CriticalLineEnd::end_point) mark("critical end point", Symbol::end_point, points.front());
    if (line.end == CriticalLineEnd::end_point) mark("critical end point", Symbol::end_point, points.back());
}

}  // namespace cli
