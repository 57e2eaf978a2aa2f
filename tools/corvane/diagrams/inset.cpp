// Points that are next to each other, drawn larger in a corner where nothing else is.
#include <tools/corvane/diagrams/raster.h>

#include <fmt/format.h>

#include <limits>
#include <optional>
#include <utility>

namespace cli {
namespace {
// In parts of the axes, but kShare.
constexpr double kTogether = 0.02;  // marks nearer than this hide each other
constexpr double kSame = 1e-5;      // nearer than this they are one
constexpr double kShare = 0.4;      // of the inset's width that lies between the marks
constexpr double kSizes[] = {0.36, 0.3, 0.24};

/// What of the way from a to b lies within, as parts of it.
std::optional<std::pair<double, double>> within(Box const& box, XY const& a, XY const& b) {
    double from = 0.0, to = 1.0;
    const double low[] = {box.left, box.low}, high[] = {box.right, box.high};
    for (std::size_t i : {0, 1}) {
        const double way = b[i] - a[i];
        if (!std::isfinite(way) || (way == 0.0 && !(a[i] >= low[i] && a[i] <= high[i]))) return {};
        if (way == 0.0) continue;
        const double first = (low[i] - a[i]) / way, last = (high[i] - a[i]) / way;
        from = std::max(from, std::min(first, last));
        to = std::min(to, std::max(first, last));
    }
    if (!(from < to)) return {};
    return std::pair(from, to);
}

/// The stretches of a curve that lie within.
std::vector<XY> clipped(std::vector<XY> const& points, Box const& box) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<XY> seen;
    for (std::size_t k = 1; k < points.size(); ++k) {
        XY const &a = points[k - 1], &b = points[k];
        const auto stretch = within(box, a, b);
        if (!stretch) continue;
        const auto at = [&](double t) { return XY{a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])}; };
        const XY begin = at(stretch->first);
        if (seen.empty() || seen.back() != begin) {
            if (!seen.empty()) seen.push_back({nan, nan});
            seen.push_back(begin);
        }
        seen.push_back(at(stretch->second));
    }
    return seen;
}

/// What lies round marks that hide each other: the first of them, and all next to it.
std::optional<Box> crowded(std::vector<XY> const& marks) {
    for (XY const& a : marks) {
        Box hull{a[0], a[1], a[0], a[1]};
        for (XY const& b : marks) {
            const double d = std::max(std::fabs(a[0] - b[0]), std::fabs(a[1] - b[1]));
            if (!(d < kTogether)) continue;
            hull = {std::min(hull.left, b[0]), std::min(hull.low, b[1]), std::max(hull.right, b[0]),
                    std::max(hull.high, b[1])};
        }
        const double size = std::max(hull.right - hull.left, hull.high - hull.low);
        if (!(size > kSame)) continue;
        const double half = 0.5 * size / kShare, x = 0.5 * (hull.left + hull.right), y = 0.5 * (hull.low + hull.high);
        return Box{x - half, y - half, x + half, y + half};
    }
    return {};
}

/// The ends of an axis in as many digits as a hundredth of it needs.
std::array<std::string, 2> numbers(double low, double high) {
    const int digits = std::clamp(1 - static_cast<int>(std::floor(std::log10(std::fabs(high - low)))), 0, 12);
    return {fmt::format("{:.{}f}", low, digits), fmt::format("{:.{}f}", high, digits)};
}

/// Where a square of this size has room with its numbers, `wide` at its left and `line` high below: over no
/// curve and no mark, nearest to what it enlarges.
std::optional<Inset> room(Raster const& raster, std::vector<Box> const& taken, Box const& part, double size,
                          double wide, double line) {
    constexpr double kStep = 0.025;
    std::optional<Inset> best;
    double nearest = 1e300;
    for (double left = wide; left + size < 1.0; left += kStep)
        for (double low = 1.3 * line; low + size < 1.0; low += kStep) {
            const Box place{left, low, left + size, low + size};
            const Box around{left - wide, low - 1.3 * line, place.right + 0.01, place.high + 0.5 * line};
            const double away = std::hypot(place.left + place.right - part.left - part.right,
                                           place.low + place.high - part.low - part.high);
            if (away < nearest && around.inside() && raster.others(around, Raster::kNobody) == 0 &&
                std::none_of(taken.begin(), taken.end(), [&](Box const& b) { return b.meets(around); })) {
                nearest = away;
                best = {part, place, around, {}};
            }
        }
    return best;
}
}  // namespace

void Picture::enlarge(double letter, double line) {
    if (!corners[0].empty()) return;
    const auto axis = axes();
    frame = {axis[0], axis[1]};
    const auto in_parts = [&](std::vector<XY> points) {
        for (XY& q : points) q = {frame[0].part(q[0]), frame[1].part(q[1])};
        return points;
    };
    Raster raster;
    for (Curve const& c : curves) raster.draw(in_parts(c.points), 0);
    std::vector<Box> taken;
    std::vector<XY> known;
    for (Marks const& m : marks)
        for (XY const& p : in_parts(m.points)) {
            taken.push_back({p[0] - letter, p[1] - 0.5 * line, p[0] + letter, p[1] + 0.5 * line});
            if (m.symbol != Symbol::measured && m.symbol != Symbol::measured_open) known.push_back(p);
        }
    const auto part = crowded(known);
    if (!part || !part->inside()) return;
    const auto x = numbers(frame[0].value(part->left), frame[0].value(part->right)),
               y = numbers(frame[1].value(part->low), frame[1].value(part->high));
    const double wide = letter * (static_cast<double>(std::max(y[0].size(), y[1].size())) + 1.0);
    std::optional<Inset> inset;
    for (double size : kSizes)
        if (!inset) inset = room(raster, taken, *part, size, wide, line);
    if (!inset) return;
    inset->numbers = {x[0], x[1], y[0], y[1]};
    const double larger = (inset->place.right - inset->place.left) / (part->right - part->left);
    const auto moved = [&](std::vector<XY> points) {
        for (XY& p : points)
            p = {frame[0].value(inset->place.left + larger * (p[0] - part->left)),
                 frame[1].value(inset->place.low + larger * (p[1] - part->low))};
        return points;
    };
    for (std::size_t k = 0, count = curves.size(); k < count; ++k)
        if (const auto seen = clipped(in_parts(curves[k].points), *part); !seen.empty())
            curves.push_back({"", curves[k].ink, curves[k].stroke, moved(seen)});
    for (std::size_t k = 0, count = marks.size(); k < count; ++k) {
        std::vector<XY> seen = in_parts(marks[k].points);
        std::erase_if(seen, [&](XY const& p) { return !Box{p[0], p[1], p[0], p[1]}.meets(*part); });
        if (!seen.empty()) marks.push_back({"", marks[k].symbol, marks[k].ink, moved(seen)});
    }
    insets.push_back(*inset);
}

}  // namespace cli
