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
}  // namespace

Layout::Layout(Picture const& picture, Sheet const& sheet) {
    const bool screen = !(sheet.width > 0.0), triangle = !picture.corners[0].empty();
    const bool paper = sheet.format == PictureFormat::pdf || sheet.format == PictureFormat::eps;
    // SVG has pixels of 1/96 in; a PNG of given size has 300 per inch.
    const double dots = paper                                ? 72.0
                        : sheet.format == PictureFormat::svg ? 96.0
                        : screen                             ? 144.0
                                                             : 300.0;
    const double mm[] = {screen ? 160.0 : sheet.width, screen ? 320.0 / 3.0 : sheet.height};
    const bool pixels = screen && !paper;
    scale = pixels ? (sheet.format == PictureFormat::svg ? 1.0 : 1.5) : 0.55 * dots / 72.0;
    if (!pixels) symbols = sheet.format == PictureFormat::svg ? 0.55 : 1.0;
    width = pixels ? 900.0 * scale : mm[0] / 25.4 * dots;
    height = pixels ? 600.0 * scale : mm[1] / 25.4 * dots;
    // In the width of a column a triangle has little room beside its words.
    const double points = sheet.points > 0.0 ? sheet.points : pixels ? 11.25 : triangle && mm[0] < 100.0 ? 7.0 : 8.0;
    font = pixels ? points * 96.0 / 72.0 * scale : points / 72.0 * dots;
    const double wide = 0.55 * font;  // of a letter, on an average
    std::set<std::string> titles;
    for (Curve const& c : picture.curves) titles.insert(c.title);
    for (Marks const& m : picture.marks) titles.insert(m.title);
    titles.erase("");
    std::size_t key = 0;
    for (std::string const& title : titles) key = std::max(key, letters(title));
    if (!picture.title.empty())
        title_lines = wrapped(picture.title, std::max<std::size_t>(8, static_cast<std::size_t>(width / wide) - 2));
    // In a triangle, whose margins are ours, gnuplot must have room for what it takes letters to be.
    double widest = 0.0;
    for (std::string const& name : titles) widest = std::max(widest, extent(name));
    const double column = triangle ? 1.1 * (static_cast<double>(key) + 4.5) : widest + 2.2;
    key_columns = std::max(1, static_cast<int>(width / (wide * column)));
    if (triangle)
        place_triangle(picture, wide, key, titles.size());
    else
        narrow = width < wide * (static_cast<double>(key) + 55.0);
    const double key_width = narrow || triangle ? 0.0 : wide * (static_cast<double>(key) + 5.0);
    const double axis_width = std::max(10.0 * wide, width - key_width - 11.0 * wide),
                 axis_height = std::max(5.0 * font, height - font * (5.5 + 1.25 * static_cast<double>(title_lines.size())));
    const auto fits = [&](double room) {
        return std::max<std::size_t>(8, static_cast<std::size_t>(room / wide));
    };
    x_axis = wrapped(picture.x_axis, fits(axis_width + 5.0 * wide));
    y_axis = wrapped(picture.y_axis, fits(axis_height + 2.0 * font));
    double across = axis_width, up = axis_height;
    space_numbers(picture, wide, axis_width);
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

/// Gnuplot chooses numbers by the length of the axis alone.
void Layout::space_numbers(Picture const& picture, double wide, double axis_width) {
    if (!narrow || picture.fraction || !picture.corners[0].empty()) return;
    const Axis axis = picture.axes()[0];
    if (axis.log) return;
    const double range = axis.high - axis.low;
    if (!(range > 0.0) || !std::isfinite(range)) return;
    for (double ten = std::pow(10.0, std::floor(std::log10(range)) - 1.0); x_step == 0.0; ten *= 10.0)
        for (double step : {1.0, 2.0, 5.0}) {
            std::size_t most = 0;
            for (double end : {axis.low, axis.high})
                most = std::max(most, fmt::format("{:g}", std::round(end / (step * ten)) * step * ten).size());
            // At least four numbers, and not closer than gnuplot would put them.
            if (range / (step * ten) > 8.0 || step * ten / range * axis_width < wide * (static_cast<double>(most) + 2.0)) continue;
            x_step = step * ten;
            return;
        }
}

}  // namespace cli
