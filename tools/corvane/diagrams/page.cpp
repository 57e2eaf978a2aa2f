#include <tools/corvane/diagrams/gnuplot.h>
#include <tools/corvane/diagrams/page.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace cli {
namespace {
using Json = nlohmann::ordered_json;

char const* const kStyle =
    "body{font:16px/1.4 sans-serif;color:#202020;background:#fff;margin:1.5em auto;max-width:62em;padding:0 1em}"
    "h1{font-size:1.3em}figure{margin:0}figure svg{width:100%;height:auto;max-height:90vh;touch-action:none}"
    ".from,.summary{font-size:.85em;color:#505050;padding:0;list-style:none;overflow-wrap:anywhere}"
    ".table{overflow:auto;max-height:40em}table{border-collapse:collapse;font-size:.8em;font-variant-numeric:"
    "tabular-nums}th,td{padding:.15em .8em;text-align:right;white-space:nowrap}th{position:sticky;top:0;"
    "background:#f0f0f0}tr:nth-child(even){background:#f8f8f8}button{font:inherit;margin-right:.4em}"
    "#told{min-height:1.4em;font-variant-numeric:tabular-nums}";

Json points_of(std::vector<XY> const& points) {
    Json list = Json::array();
    for (auto const& [x, y] : points)
        list.push_back(std::isfinite(x) && std::isfinite(y) ? Json{x, y} : Json(nullptr));
    return list;
}

char const* name_of(Symbol symbol) {
    switch (symbol) {
        case Symbol::critical: return "disc";
        case Symbol::end_point: return "up";
        case Symbol::extremum: return "up-open";
        case Symbol::azeotrope: return "diamond-open";
        case Symbol::three_phase: return "square";
        case Symbol::eutectic: return "down";
        case Symbol::measured: return "plus";
        case Symbol::square_open: return "square-open";
        case Symbol::down_open: return "down-open";
        case Symbol::cross: return "cross";
        case Symbol::pentagon_open: return "pentagon-open";
        case Symbol::star: return "star";
        case Symbol::measured_open: break;
    }
    return "ring";
}

/// What the script draws.
std::string data(Picture picture, bool mono) {
    Json json;
    if (mono) picture.mark_models();
    const auto axes = picture.axes();
    json["title"] = picture.title;
    json["axes"] = Json::array();
    for (std::size_t i : {0, 1})
        json["axes"].push_back({{"name", i == 0 ? picture.x_axis : picture.y_axis},
                                {"low", axes[i].low}, {"high", axes[i].high}, {"log", axes[i].log}});
    json["corners"] = Json::array();
    if (!picture.corners[0].empty()) json["corners"] = picture.corners;
    json["curves"] = Json::array();
    for (Curve const& c : picture.curves) {
        const Pen p = pen(c, mono);
        json["curves"].push_back({{"name", c.title}, {"colour", p.colour}, {"width", p.width},
                                  {"dashes", p.dashes}, {"points", points_of(c.points)}});
        if (const auto symbol = model_symbol(c.model); mono && symbol)
            json["curves"].back()["symbol"] = name_of(*symbol);
    }
    json["marks"] = Json::array();
    for (Marks const& m : picture.marks)
        json["marks"].push_back({{"name", m.title}, {"symbol", name_of(m.symbol)},
                                 {"colour", pen(m.ink, Stroke::line, mono).colour},
                                 {"points", points_of(m.points)}});
    json["labels"] = Json::array();
    for (Label const& l : picture.placed(0.012, 0.035))
        json["labels"].push_back({{"text", l.text}, {"at", l.at},
                                  {"colour", pen(l.ink, Stroke::thin, mono).colour}});
    std::string text;
    for (char c : json.dump(-1, ' ', false, Json::error_handler_t::replace))
        if (c == '<' || c == '>' || c == '&')
            text += fmt::format("\\u{:04x}", static_cast<int>(c));
        else
            text += c;
    return text;
}

std::string rows_of(Table const& table, Style const& style) {
    bool notes = false;
    for (Row const& row : table.rows) notes = notes || !row.note.empty();
    std::string text = "<thead><tr>";
    for (Column const& column : table.columns)
        text += fmt::format("<th scope=\"col\" title=\"{}\">{}</th>", escaped(column.text), escaped(column.heading()));
    text += notes ? "<th scope=\"col\">note</th></tr></thead>\n<tbody>\n" : "</tr></thead>\n<tbody>\n";
    for (auto& row : printed(table, style)) {
        const std::string note = row.back();
        row.pop_back();
        row.resize(table.columns.size());
        if (notes) row.push_back(note);
        text += "<tr>";
        for (std::string const& cell : row) text += "<td>" + escaped(cell) + "</td>";
        text += "</tr>\n";
    }
    return text + "</tbody>";
}

std::string list_of(std::vector<std::string> const& lines, char const* of) {
    if (lines.empty()) return "";
    std::string text = fmt::format("<ul class=\"{}\">\n", of);
    for (std::string const& line : lines) text += "<li>" + escaped(line) + "</li>\n";
    return text + "</ul>\n";
}
}  // namespace

std::string page(Picture const& picture, std::string const& svg, bool mono, Heading const& heading,
                 Table const& table, Style const& style) {
    const std::string title = escaped(picture.title.empty() ? heading.command : picture.title);
    std::string text = fmt::format(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
        "style-src 'unsafe-inline'; script-src 'unsafe-inline'\"/>\n"
        "<title>{0}</title>\n<style>{1}</style>\n</head>\n<body>\n<h1>{0}</h1>\n",
        title, kStyle);
    // Without its XML declaration the picture is a part of the page.
    const std::size_t begin = svg.find("<svg");
    text += "<figure id=\"picture\">\n" + svg.substr(begin == std::string::npos ? svg.size() : begin) + "</figure>\n";
    text += list_of(heading_lines(heading), "from");
    text += list_of(heading.summary, "summary");
    text += "<div class=\"table\"><table>\n" + rows_of(table, style) + "\n</table></div>\n";
    text += "<script type=\"application/json\" id=\"data\">" + data(picture, mono) + "</script>\n";
    return text + "<script>//<![CDATA[\n" + kPageScript + "//]]></script>\n</body>\n</html>\n";
}

}  // namespace cli
