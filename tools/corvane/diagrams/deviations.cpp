#include <tools/corvane/diagrams/deviations.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

namespace cli {

Marks deviation_marks(std::size_t k, std::string title) {
    constexpr std::pair<Symbol, Ink> styles[] = {
        {Symbol::measured_open, Ink::liquid}, {Symbol::measured, Ink::vapour}, {Symbol::extremum, Ink::liquid2},
        {Symbol::azeotrope, Ink::azeotrope},  {Symbol::end_point, Ink::solid}, {Symbol::three_phase, Ink::black}};
    auto const& [symbol, ink] = styles[k % std::size(styles)];
    return {std::move(title), symbol, ink, {}};
}

Curve zero_line(std::vector<Marks> const& marks) {
    XY ends[2] = {{1e300, 0.0}, {-1e300, 0.0}};
    for (Marks const& m : marks)
        for (XY const& q : m.points) {
            if (!std::isfinite(q[0])) continue;
            ends[0][0] = std::min(ends[0][0], q[0]);
            ends[1][0] = std::max(ends[1][0], q[0]);
        }
    if (!(ends[0][0] <= ends[1][0])) return {};
    return {"", Ink::black, Stroke::thin, {ends[0], ends[1]}};
}

Picture deviations(Heading const& heading, Table const& table, std::string const& title) {
    std::vector<std::map<std::string, double>> points;
    bool fractions = false;
    for (auto const& [name, entries] : heading.lists) {
        if (name != "measured") continue;
        for (Fields const& fields : entries) {
            auto& point = points.emplace_back();
            for (auto const& [field, value] : fields)
                if (double const* number = std::get_if<double>(&value)) point[field] = *number;
            fractions = fractions || point.count("x") > 0 || point.count("y") > 0;
        }
    }
    Picture picture;
    picture.title = title;
    picture.x_axis = fractions ? "mole fraction measured" : "T";
    for (Column const& column : table.columns)
        if (!fractions && column.name == "T") picture.x_axis = "T / " + column.unit;
    picture.y_axis = "deviation";
    picture.data_alone = true;
    const auto add = [&](std::string const& words, auto const& deviation, char const* over) {
        Marks marks = deviation_marks(picture.marks.size(), words);
        for (auto const& point : points) {
            const auto at = point.find(fractions ? over : "T");
            const double value = deviation(point);
            if (at != point.end() && std::isfinite(value)) marks.points.push_back({at->second, value});
        }
        if (!marks.points.empty()) picture.marks.push_back(std::move(marks));
    };
    const auto of = [](auto const& point, std::string const& name) {
        const auto found = point.find(name);
        return found == point.end() ? std::nan("") : found->second;
    };
    for (auto const& [field, words, over] :
         {std::array{"d_p_x", "p at x, %", "x"}, {"d_p_y", "p at y, %", "y"}, {"d_p_T", "p at T, %", "x"},
          {"d_T_x", "T at x, K", "x"}, {"d_T_y", "T at y, K", "y"}})
        add(
            words, [&, name = field](auto const& point) { return of(point, name); }, over);
    for (std::string const name : {"x", "y"})
        add(name + " at T and p, mol-%", [&](auto const& point) { return 100.0 * (of(point, name + "_Tp") - of(point, name)); },
            name.c_str());
    picture.curves.push_back(zero_line(picture.marks));
    return picture;
}

}  // namespace cli
