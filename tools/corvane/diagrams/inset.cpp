// Points that are next to each other, drawn larger in a corner where nothing else is.
#include <tools/corvane/diagrams/raster.h>

#include <fmt/format.h>

#include <limits>
#include <optional>
#include <set>
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
std::vector<XY> inside(std::vector<XY> const& points, Box const& box) {
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

/// At the left, right, lower and upper end.
std::array<std::string, 4> ends_of(XY const& x, XY const& y) {
    const auto a = numbers(x[0], x[1]), b = numbers(y[0], y[1]);
    return {a[0], a[1], b[0], b[1]};
}

std::vector<XY> edges() {
    const auto at = Picture::in_triangle;
    return {at(1, 0), at(0, 1), at(0, 0), at(1, 0)};
}

/// The lines of equal mole fractions, a tenth apart, and the edges: between them is no room for an
/// inset.
std::vector<std::vector<XY>> grid() {
    const auto at = Picture::in_triangle;
    std::vector<std::vector<XY>> lines{edges()};
    for (int k = 1; k < 10; ++k) {
        const double x = 0.1 * k;
        lines.push_back({at(x, 0.0), at(x, 1.0 - x), at(0.0, 1.0 - x), at(1.0 - x, 0.0)});
    }
    return lines;
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

/// In parts of the axes.
std::vector<XY> in_parts(Picture const& of, std::vector<XY> points) {
    for (XY& q : points) q = {of.frame[0].part(q[0]), of.frame[1].part(q[1])};
    return points;
}

/// Curves and marks that lie in the part, once more at its place.
void repeat(Picture& in, Box const& part, Box const& place) {
    const double larger = (place.right - place.left) / (part.right - part.left);
    const auto moved = [&](std::vector<XY> points) {
        for (XY& p : points)
            p = {in.frame[0].value(place.left + larger * (p[0] - part.left)),
                 in.frame[1].value(place.low + larger * (p[1] - part.low))};
        return points;
    };
    for (std::size_t k = 0, count = in.curves.size(); k < count; ++k)
        if (const auto seen = inside(in_parts(in, in.curves[k].points), part); !seen.empty()) {
            Curve larger_one = in.curves[k];
            larger_one.title.clear();
            larger_one.points = moved(seen);
            in.curves.push_back(std::move(larger_one));
        }
    for (std::size_t k = 0, count = in.marks.size(); k < count; ++k) {
        std::vector<XY> seen = in_parts(in, in.marks[k].points);
        std::erase_if(seen, [&](XY const& p) { return !Box{p[0], p[1], p[0], p[1]}.meets(part); });
        if (!seen.empty()) in.marks.push_back({"", in.marks[k].symbol, in.marks[k].ink, moved(seen)});
    }
    if (!in.corners[0].empty())
        if (const auto edge = inside(in_parts(in, edges()), part); !edge.empty())
            in.curves.push_back({"", Ink::black, Stroke::thin, moved(edge)});
}
}  // namespace

std::vector<Box> Picture::words_of_triangle(double letter, double line) const {
    const auto axis = axes();
    const auto at = [&](double top, double left) {
        const XY p = Picture::in_triangle(top, left);
        return XY{axis[0].part(p[0]), axis[1].part(p[1])};
    };
    std::vector<Box> boxes;
    const auto centred = [&](std::size_t letters, XY p, double up) {
        const double half = 0.5 * letter * static_cast<double>(letters);
        boxes.push_back(
            {p[0] - half, p[1] + (up - 1.0) * line, p[0] + half, p[1] + (up + 1.0) * line});
    };
    centred(corners[0].size(), at(1, 0), 1.0);
    centred(corners[1].size(), at(0, 1), -2.0);
    centred(corners[2].size(), at(0, 0), -2.0);
    for (double x : {0.2, 0.4, 0.6, 0.8}) {
        const XY right = at(x, 0.0), left = at(1.0 - x, x);
        centred(6, {right[0] + 2.0 * letter, right[1]}, 0.2);
        centred(6, {left[0] - 2.0 * letter, left[1]}, 0.2);
    }
    if (key_below) return boxes;
    std::set<std::string> key;
    std::size_t longest = 0;
    const auto add = [&](std::string const& name) {
        if (name.empty()) return;
        key.insert(name);
        longest = std::max(longest, name.size());
    };
    for (Curve const& c : curves) add(c.title);
    for (Marks const& m : marks) add(m.title);
    boxes.push_back({1.0 - letter * static_cast<double>(longest + 6),
                     0.96 - 1.2 * line * static_cast<double>(key.size()), 1.0, 1.0});
    return boxes;
}

void Picture::enlarge(double letter, double line) {
    const bool triangle = !corners[0].empty();
    const auto axis = axes();
    frame = {axis[0], axis[1]};
    if (data_alone) return;
    Raster raster;
    for (Curve const& c : curves) raster.draw(in_parts(*this, c.points), 0);
    std::vector<Box> taken;
    std::vector<XY> known;
    for (Marks const& m : marks)
        for (XY const& p : in_parts(*this, m.points)) {
            taken.push_back({p[0] - letter, p[1] - 0.5 * line, p[0] + letter, p[1] + 0.5 * line});
            if (m.symbol != Symbol::measured && m.symbol != Symbol::measured_open) known.push_back(p);
        }
    if (triangle) {
        for (auto const& way : grid()) raster.draw(in_parts(*this, way), 0);
        for (Box const& box : words_of_triangle(letter, line)) taken.push_back(box);
    }
    const auto part = crowded(known);
    if (!part || !part->inside()) return;
    std::array<std::string, 4> numbers;
    if (!triangle)
        numbers = ends_of({frame[0].value(part->left), frame[0].value(part->right)},
                          {frame[1].value(part->low), frame[1].value(part->high)});
    const double wide =
        letter * (static_cast<double>(std::max(numbers[2].size(), numbers[3].size())) + 1.0);
    std::optional<Inset> inset;
    for (double size : kSizes)
        if (!inset) inset = room(raster, taken, *part, size, wide, line);
    if (!inset) return;
    Box const& place = inset->place;
    if (triangle)  // there are no axes to take numbers from
        numbers[0] = fmt::format("\u00d7{:.2g}", (place.right - place.left) / (part->right - part->left));
    inset->numbers = numbers;
    repeat(*this, *part, place);
    insets.push_back(*inset);
}

}  // namespace cli
