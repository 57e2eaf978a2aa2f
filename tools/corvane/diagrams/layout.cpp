#include <tools/corvane/diagrams/layout.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <string_view>

namespace cli {
namespace {
std::size_t letters(std::string_view text) {  // of UTF-8
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// Letters on an average; capitals are wider.
double extent(std::string_view text) {
    const auto capitals = std::count_if(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    return static_cast<double>(letters(text)) + 0.35 * static_cast<double>(capitals);
}
bool is_number(std::string const& word) {
    return word.find_first_not_of("0123456789.-") == std::string::npos;
}
/// What blanks separate, but a number and its unit together.
std::vector<std::string> words(std::string const& text) {
    std::vector<std::string> list;
    bool after_number = false;
    for (std::string const& word : split(text, ' ')) {
        if (after_number && letters(word) < 6)
            list.back() += ' ' + word;
        else
            list.push_back(word);
        after_number = !word.empty() && is_number(word);
    }
    return list;
}

/// The text in lines of at most so many letters, which end at a blank if there is one.
std::vector<std::string> wrapped(std::string const& text, std::size_t most) {
    std::vector<std::string> lines(1);
    for (std::string word : words(text)) {
        std::string& line = lines.back();
        if (!line.empty() && letters(line) + 1 + letters(word) > most) lines.emplace_back();
        while (letters(word) > most) {
            std::size_t end = 0;
            for (std::size_t count = 0; end < word.size(); ++end)
                if ((word[end] & 0xC0) != 0x80 && count++ == most) break;
            lines.back() = word.substr(0, end);
            lines.emplace_back();
            word.erase(0, end);
        }
        lines.back() += (lines.back().empty() ? "" : " ") + word;
    }
    return lines;
}
/// Of the round ones above a thirtieth of the range the first between two of which numbers fit, by
/// fits(step); 0: none.
template <class Fits>
double round_step(Axis const& axis, Fits fits) {
    const double range = axis.high - axis.low;
    if (axis.log || !(range > 0.0) || !std::isfinite(range)) return 0.0;
    for (double ten = std::pow(10.0, std::floor(std::log10(range)) - 1.0); ten <= range; ten *= 10.0)
        for (double step : {1.0, 2.0, 5.0})
            if (range / (step * ten) <= 8.0 && fits(step * ten)) return step * ten;
    return 0.0;
}
bool is_paper(Sheet const& sheet) {
    return sheet.format == PictureFormat::pdf || sheet.format == PictureFormat::eps;
}
/// Its size is in pixels: none is given, nor is it for paper.
bool on_screen(Sheet const& sheet) {
    return !(sheet.width > 0.0) && !is_paper(sheet);
}
}  // namespace

/// Sizes and scales of the sheet; dots per inch.
double Layout::measure(Sheet const& sheet) {
    const bool given = sheet.width > 0.0, pixels = on_screen(sheet);
    // SVG has pixels of 1/96 in; a PNG of given size has 300 per inch.
    const double dots = is_paper(sheet)                      ? 72.0
                        : sheet.format == PictureFormat::svg ? 96.0
                        : given                              ? 300.0
                                                             : 144.0;
    const double mm[] = {given ? sheet.width : 160.0, given ? sheet.height : 320.0 / 3.0};
    scale = pixels ? (sheet.format == PictureFormat::svg ? 1.0 : 1.5) : 0.55 * dots / 72.0;
    if (!pixels) symbols = sheet.format == PictureFormat::svg ? 0.55 : 1.0;
    width = pixels ? 900.0 * scale : mm[0] / 25.4 * dots;
    height = pixels ? 600.0 * scale : mm[1] / 25.4 * dots;
    return dots;
}

Layout::Layout(Picture const& picture, Sheet const& sheet) {
    const bool triangle = !picture.corners[0].empty();
    const double dots = measure(sheet);
    const bool pixels = on_screen(sheet);
    // In the width of a column a triangle has little room beside its words.
    double points = sheet.points > 0.0                                     ? sheet.points
                    : pixels                                               ? 11.25
                    : triangle && sheet.width > 0.0 && sheet.width < 100.0 ? 7.0
                                                                           : 8.0;
    std::set<std::string> titles;
    for (Curve const& c : picture.curves) titles.insert(c.title);
    for (Marks const& m : picture.marks) titles.insert(m.title);
    titles.erase("");
    std::size_t key = 0;
    for (std::string const& title : titles) key = std::max(key, letters(title));
    // Where the margins are ours gnuplot must have room for what it takes letters to be.
    double widest = 0.0;
    for (std::string const& name : titles) widest = std::max(widest, extent(name));
    const double column = triangle ? 1.1 * (static_cast<double>(key) + 4.5)
                                   : (sheet.format == PictureFormat::svg ? 1.25 : 1.1) * (widest + 3.5);
    double wide = 0.0;  // a letter, on an average
    // Smaller letters where what is written leaves no half of the sheet to the axes.
    for (;; points -= 0.5) {
        font = pixels ? points * 96.0 / 72.0 * scale : points / 72.0 * dots;
        wide = 0.55 * font;
        if (!picture.title.empty())
            title_lines = wrapped(picture.title, std::max<std::size_t>(8, static_cast<std::size_t>(width / wide) - 2));
        // Samples of lines and points do not become smaller with the letters.
        const double samples = triangle || pixels ? 0.0 : 8.0 / 72.0 * dots;
        key_columns = std::max(1, static_cast<int>(width / (wide * column + samples)));
        if (triangle) break;
        narrow = width < wide * (static_cast<double>(key) + 55.0);
        if (narrow) below = lines_below(picture, wide, titles.size());
        const double words = 1.2 * font * (below + 1.2 + 1.25 * static_cast<double>(title_lines.size()));
        if (!narrow || pixels || sheet.points > 0.0 || points <= 5.0 || words < 0.5 * height) break;
    }
    if (triangle)
        place_triangle(picture, wide, key, titles.size());
    const double key_width = narrow || triangle ? 0.0 : wide * (static_cast<double>(key) + 5.0);
    const double axis_width = std::max(10.0 * wide, width - key_width - 11.0 * wide),
                 axis_height = std::max(5.0 * font, height - font * ((narrow && !triangle ? 1.2 * below + 1.5 : 5.5) +
                                                                     1.25 * static_cast<double>(title_lines.size())));
    const auto fits = [&](double room) {
        return std::max<std::size_t>(8, static_cast<std::size_t>(room / wide));
    };
    x_axis = wrapped(picture.x_axis, fits(axis_width + 5.0 * wide));
    y_axis = wrapped(picture.y_axis, fits(axis_height + 2.0 * font));
    double across = axis_width, up = axis_height;
    space_numbers(picture, wide, axis_width, axis_height);
    if (triangle) {  // both axes have one scale
        const auto axes = picture.axes();
        const double ratio = (axes[0].high - axes[0].low) / (axes[1].high - axes[1].low);
        up = std::max(5.0 * font, height - font * (1.2 * below + 1.2 + 1.25 * static_cast<double>(title_lines.size())));
        across = std::min(width, ratio * up);
        up = across / ratio;
    }
    letter = 0.9 * wide / across;
    line = 1.15 * font / up;
}

/// The key stands beside the upper corner, or below all if it would cover a part of the triangle.
void Layout::place_triangle(Picture const& picture, double wide, std::size_t key, std::size_t entries) {
    const double key_width = wide * (static_cast<double>(key) + 5.0), count = static_cast<double>(entries);
    const auto axes = picture.axes();
    const double titles = 1.2 + 1.25 * static_cast<double>(title_lines.size());
    double unit = 0.0;  // length of a side
    const auto measure = [&] {
        unit = std::min(width / (axes[0].high - axes[0].low),
                        std::max(5.0 * font, height - font * (1.2 * below + titles)) / (axes[1].high - axes[1].low));
    };
    const auto half = [&](std::size_t k) {
        return 0.5 * wide * static_cast<double>(letters(picture.corners[k]) + 1);
    };
    // Names of the lower corners, moved in where they would be cut off.
    const auto lower = [&] {
        for (std::size_t k : {1, 2}) {
            const double ideal = 0.5 * width + (k == 1 ? -0.5 : 0.5) * unit;
            const double at = std::clamp(ideal, std::min(half(k), 0.5 * width), std::max(width - half(k), 0.5 * width));
            lower_names[k - 1] = {(at - half(k)) / width, (at + half(k)) / width};
        }
        names_meet = lower_names[0][1] > lower_names[1][0];
    };
    measure();
    const double foot = axes[1].high - 0.02 - 1.35 * font * count / unit;  // of the key, in sides
    const double side = 0.5 * width + (0.5 - foot / std::numbers::sqrt3) * unit + 5.0 * wide;
    const double left = 0.985 * width - key_width;
    narrow = entries > 0 && (left < side || left < 0.5 * width + half(0) + wide);
    below = 1.0;
    lower();
    if (narrow) {
        below = 2.4 + 1.3 * std::ceil(count / key_columns);
    }
    if (names_meet) below += 1.2;
    measure();
    lower();
    few_numbers = 0.2 * unit < 4.0 * wide;
}

/// Numbers, the title of the x axis and the key, with half a line between these two.
double Layout::lines_below(Picture const& picture, double wide, std::size_t entries) const {
    const auto lines = wrapped(picture.x_axis, std::max<std::size_t>(8, static_cast<std::size_t>(width / wide) - 6));
    return 2.1 + 1.1 * static_cast<double>(lines.size()) +
           (entries > 0 ? 0.7 + 1.1 * std::ceil(static_cast<double>(entries) / key_columns) : 0.0);
}

/// Gnuplot chooses numbers by the length of the axis alone.
void Layout::space_numbers(Picture const& picture, double wide, double axis_width, double axis_height) {
    if (!narrow || !picture.corners[0].empty()) return;
    const auto axes = picture.axes();
    auto const &x = axes[0], &y = axes[1];
    const double up = y.high - y.low;
    y_step = round_step(y, [&](double step) { return step / up * axis_height >= 1.6 * font; });
    if (picture.fraction) return;
    // Not closer than gnuplot would put them.
    x_step = round_step(x, [&](double step) {
        std::size_t most = 0;
        for (double end : {x.low, x.high}) most = std::max(most, fmt::format("{:g}", std::round(end / step) * step).size());
        return step / (x.high - x.low) * axis_width >= wide * (static_cast<double>(most) + 2.0);
    });
}

}  // namespace cli
