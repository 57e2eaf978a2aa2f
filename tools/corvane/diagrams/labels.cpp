// Where labels have room.
#include <tools/corvane/diagrams/raster.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace cli {
namespace {
/// Points that divide what is seen of a curve into equal parts.
std::vector<XY> divided(std::vector<XY> const& points, int parts) {
    std::vector<XY> seen;
    std::vector<double> way;
    for (XY const& point : points) {
        if (!(point[0] >= 0.0 && point[0] <= 1.0 && point[1] >= 0.0 && point[1] <= 1.0)) continue;
        const double step = seen.empty() ? 0.0
                                         : std::hypot(point[0] - seen.back()[0], point[1] - seen.back()[1]);
        way.push_back((way.empty() ? 0.0 : way.back()) + step);
        seen.push_back(point);
    }
    std::vector<XY> result;
    std::size_t k = 1;
    for (int i = 0; i <= parts && seen.size() > 1; ++i) {
        const double wanted = way.back() * i / parts;
        while (k + 1 < seen.size() && way[k] < wanted) ++k;
        const double step = way[k] - way[k - 1];
        const double t = step > 0.0 ? std::clamp((wanted - way[k - 1]) / step, 0.0, 1.0) : 0.0;
        result.push_back({seen[k - 1][0] + t * (seen[k][0] - seen[k - 1][0]),
                          seen[k - 1][1] + t * (seen[k][1] - seen[k - 1][1])});
    }
    return result;
}

std::size_t letters(std::string const& text) {  // of UTF-8
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}
}  // namespace

std::vector<Label> Picture::placed(double letter, double line) const {
    const auto axis = axes();
    const auto in_parts = [&](std::vector<XY> points) {
        for (XY& point : points) point = {axis[0].part(point[0]), axis[1].part(point[1])};
        return points;
    };
    Raster raster;
    const auto owner = [&](Label const& label) {
        for (std::size_t k = 0; k < curves.size() && !label.along.empty(); ++k)
            if (curves[k].points == label.along) return static_cast<int>(k);
        return Raster::kNobody;
    };
    for (std::size_t k = 0; k < curves.size(); ++k)
        raster.draw(in_parts(curves[k].points), static_cast<int>(k));
    std::vector<Box> taken;
    for (Marks const& m : marks)
        for (XY const& p : in_parts(m.points))
            taken.push_back({p[0] - letter, p[1] - 0.5 * line, p[0] + letter, p[1] + 0.5 * line});
    for (Inset const& inset : insets) taken.push_back(inset.around);
    if (!corners[0].empty())
        for (Box const& box : words_of_triangle(letter, line)) taken.push_back(box);
    std::vector<Label> result;
    for (Label const& label : labels) {
        const double wide = 0.5 * letter * (static_cast<double>(letters(label.text)) + 0.6),
                     high = 0.5 * line;
        constexpr int parts = 40;
        std::vector<XY> places = divided(in_parts(label.along), parts);
        if (label.along.empty()) {
            const XY at = in_parts({label.at})[0];
            for (int i = -2; i <= 2; ++i)
                for (int k = -2; k <= 2; ++k) places.push_back({at[0] + i * wide, at[1] + k * high});
        }
        double least = 1e300;
        XY best{};
        for (std::size_t k = 0; k < places.size(); ++k) {
            const XY at = places[k];
            const Box box{at[0] - wide, at[1] - high, at[0] + wide, at[1] + high};
            if (!box.inside() || std::any_of(taken.begin(), taken.end(),
                                             [&](Box const& other) { return box.meets(other); }))
                continue;
            const int others = raster.others(box, owner(label));
            const double away = label.along.empty()
                                    ? std::hypot(at[0] - places[12][0], at[1] - places[12][1])
                                    : std::fabs(static_cast<double>(k) / parts - label.where);
            if (label.along.empty() && others > 0) continue;
            if (label.field && raster.between(places[12], at)) continue;
            const double cost = 0.05 * others + away;
            if (cost < least) {
                least = cost;
                best = at;
            }
        }
        if (!(least < 2.0)) continue;
        taken.push_back({best[0] - wide, best[1] - high, best[0] + wide, best[1] + high});
        result.push_back({label.text, {axis[0].value(best[0]), axis[1].value(best[1])}, {}, 0.5, label.ink});
    }
    return result;
}

}  // namespace cli
