#include <tools/corvane/diagrams/picture.h>

#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace cli {
namespace {
char const* colour(Ink ink) {
    switch (ink) {
        case Ink::liquid:
            return "#1f5fa8";
        case Ink::vapour:
            return "#c8402a";
        case Ink::liquid2:
            return "#2e8b57";
        case Ink::azeotrope:
            return "#8e44ad";
        case Ink::solid:
            return "#8a6d1f";
        case Ink::grey:
            return "#808080";
        case Ink::black:
            break;
    }
    return "#202020";
}


std::vector<int> dashes(Ink ink) {
    switch (ink) {
        case Ink::vapour:
            return {12, 5};
        case Ink::liquid2:
            return {12, 4, 2, 4};
        case Ink::azeotrope:
            return {2, 4};
        case Ink::solid:
            return {14, 4, 2, 4, 2, 4};
        case Ink::liquid:
        case Ink::grey:
        case Ink::black:
            break;
    }
    return {};
}
}  // namespace

Pen pen(Ink ink, Stroke stroke, bool mono) {
    Pen result{colour(mono && ink != Ink::grey ? Ink::black : ink), 2.0, {}};
    if (mono) {
        result.dashes = dashes(ink);
        result.width = ink == Ink::liquid ? 1.3 : 2.6;
    }
    if (stroke == Stroke::dashed) return {result.colour, 1.2, {6, 5}};
    if (stroke == Stroke::thin) result.width = 1.0;
    return result;
}

Pen pen(Curve const& curve, bool mono) {
    Pen result = pen(curve.ink, curve.stroke, mono);
    if (!mono && curve.stroke == Stroke::line) result.width += 1.4 * (curve.models - 1 - curve.model);
    return result;
}

std::optional<Symbol> model_symbol(int model) {
    constexpr Symbol all[] = {Symbol::square_open, Symbol::down_open, Symbol::cross, Symbol::pentagon_open,
                              Symbol::star};
    if (model < 1 || model > static_cast<int>(std::size(all))) return {};
    return all[model - 1];
}

void Picture::mark_models() {
    constexpr double kApart = 0.15;  // of the marks of a model, in parts of the axes
    const auto axis = axes();
    for (std::size_t c = 0, count = curves.size(); c < count; ++c) {
        Curve const& curve = curves[c];
        const auto symbol = model_symbol(curve.model);
        if (!symbol || curve.stroke == Stroke::dashed) continue;
        Marks along{"", *symbol, curve.ink, {}};
        double way = 0.0, next = kApart * (0.3 + curve.model / static_cast<double>(curve.models));
        for (std::size_t k = 1; k < curve.points.size(); ++k) {
            XY const &a = curve.points[k - 1], &b = curve.points[k];
            const double step = std::hypot(axis[0].part(b[0]) - axis[0].part(a[0]), axis[1].part(b[1]) - axis[1].part(a[1]));
            if (!std::isfinite(step)) continue;
            for (int n = 0; next < way + step && n < 10; ++n, next += kApart) {
                const double t = (next - way) / step;
                along.points.push_back({a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])});
            }
            way += step;
        }
        if (!along.points.empty()) marks.push_back(std::move(along));
    }
}

void Picture::add(std::string const& name, Ink ink, std::vector<XY> const& points,
                  std::vector<bool> const& stable) {
    for (std::size_t first = 0, k = 1; k <= points.size(); ++k) {
        if (k < points.size() && stable[k] == stable[first]) continue;
        // The dashed stretch is the one that reaches over to the other.
        const bool more = !stable[first];
        const std::size_t begin = more && first > 0 ? first - 1 : first;
        const std::size_t end = more && k < points.size() ? k + 1 : k;
        const auto from = points.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto to = points.begin() + static_cast<std::ptrdiff_t>(end);
        curves.push_back({stable[first] ? name : "not stable",
                          stable[first] ? ink : Ink::grey,
                          stable[first] ? Stroke::line : Stroke::dashed,
                          {from, to}});
        first = k;
    }
}

XY Picture::in_triangle(double top, double left) {
    return {1.0 - left - 0.5 * top, 0.5 * std::sqrt(3.0) * top};
}

void Picture::mark(std::string const& name, Symbol symbol, Ink ink, XY at) {
    for (Marks& known : marks)
        if (known.title == name) {
            known.points.push_back(at);
            return;
        }
    marks.push_back({name, symbol, ink, {at}});
}

double Axis::part(double value) const {
    return log ? std::log(value / low) / std::log(high / low) : (value - low) / (high - low);
}
double Axis::value(double part) const {
    return log ? low * std::pow(high / low, part) : low + part * (high - low);
}

namespace {
/// The ends of a decade's 1, 2, 5 around the values, or of the steps of a tenth or so.
Axis rounded(double low, double high, bool log) {
    constexpr double kBeyond = 0.02;  // of a step, not seen
    if (!(low <= high)) return {log ? 0.1 : 0.0, 1.0, log};
    if (log) {
        const auto step = [](double v, bool up) {
            const double power = std::pow(10.0, std::floor(std::log10(v)));
            double best = up ? 10.0 * power : power;
            for (double digit : {1.0, 2.0, 5.0}) {
                const double here = digit * power;
                if (up ? here >= v * (1 - 1e-9) && here < best : here <= v * (1 + 1e-9)) best = here;
            }
            return best;
        };
        Axis axis{step(low, false), step(high, true), true};
        if (!(axis.high > axis.low)) axis.high = 2.0 * axis.low;
        return axis;
    }
    if (!(high - low > 1e-9 * std::fabs(high))) {
        const double around = high == 0.0 ? 1.0 : 0.1 * std::fabs(high);
        low -= around;
        high += around;
    }
    const double rough = (high - low) / 8.0, power = std::pow(10.0, std::floor(std::log10(rough)));
    const double part = rough / power, step = (part > 5 ? 10 : part > 2 ? 5 : part > 1 ? 2 : 1) * power;
    return {step * std::floor(low / step + kBeyond), step * std::ceil(high / step - kBeyond), false};
}
}  // namespace

std::array<Axis, 2> Picture::axes() const {
    if (!frame.empty()) return {frame[0], frame[1]};
    if (!corners[0].empty()) return {Axis{-0.12, 1.12, false}, Axis{-0.09, 0.93, false}};
    XY low{1e300, 1e300}, high{-1e300, -1e300};
    double top = y_top, rises = 1e300;
    const auto see = [&](XY const& point) {
        if (!std::isfinite(point[0]) || !std::isfinite(point[1])) return;
        if ((log_x && !(point[0] > 0.0)) || (log_y && !(point[1] > 0.0))) return;
        if ((!(point[1] <= y_top) && y_top > 0.0) || point[1] < y_bottom) return;
        for (std::size_t i : {0, 1}) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
        if (log_y || point[1] > 2e-3 * y_top) rises = std::min(rises, point[0]);
    };
    double highest = 0.0, lowest = 1e300;
    for (Curve const& curve : curves)
        for (XY const& point : curve.points) {
            see(point);
            if (!std::isfinite(point[1])) continue;
            highest = std::max(highest, point[1]);
            lowest = std::min(lowest, point[1]);
        }
    for (Marks const& m : marks)
        for (XY const& point : m.points) {
            see(point);
            // Measured points are all seen.
            if (m.symbol != Symbol::measured_open || !(y_top > 0.0) || !std::isfinite(point[1])) continue;
            top = std::max(top, 1.1 * point[1]);
            high[0] = std::max(high[0], point[0]);
            rises = std::min(rises, point[0]);
        }
    if (y_top > 0.0 && rises < 1e300) {
        low[0] = rises;
        if (highest > top) high[1] = top;
        high[1] = std::max(high[1], std::min(top, highest));
    }
    if (lowest < y_bottom) low[1] = std::min(low[1], y_bottom);
    if (!log_y && low[1] > 0.0 && y_top > 0.0) low[1] = 0.0;
    Axis x = fraction ? Axis{0.0, 1.0, false} : rounded(low[0], high[0], log_x);
    return {x, rounded(low[1], high[1], log_y)};
}

std::string Picture::description() const {
    std::string text = corners[0].empty()
                           ? fmt::format("{} over {}.", y_axis, x_axis)
                           : fmt::format("Triangle of {}, {} and {}.", corners[0], corners[1], corners[2]);
    std::set<std::string> seen;
    std::vector<std::string> names;
    for (Curve const& c : curves)
        if (!c.title.empty() && seen.insert(c.title).second) names.push_back(c.title);
    if (!names.empty()) text += " Curves: " + join(names, ", ") + ".";
    names.clear();
    for (Marks const& m : marks) names.push_back(m.title);
    if (!names.empty()) text += " Marked: " + join(names, ", ") + ".";
    return text;
}

}  // namespace cli
