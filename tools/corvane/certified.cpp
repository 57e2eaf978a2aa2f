#include <tools/corvane/certified.h>
#include <tools/corvane/open.h>
#include <tools/corvane/text.h>

#include <fmt/format.h>

#include <algorithm>

namespace cli {

void Evidence::add_columns(std::vector<Column>& columns) {
    Column const details[] = {
        {"dmu", "", "largest difference of a chemical potential between the phases, over RT"},
        {"dp", "", "largest difference of a phase's pressure to p, over p"},
        {"tpd", "", "smallest tangent-plane distance of all trial phases, over RT"},
        {"evaluations", "", "evaluations of the model"},
        {"flags", "", "near_trivial, estimated_pairs, extrapolated, below_triple"}};
    for (Column column : details) {
        column.detail = true;
        column.digits = 3;
        columns.push_back(column);
    }
}

void Evidence::add(Row& row, corvane::Certificate const& c) {
    ++results_;
    evaluations_ += c.evaluations;
    dmu_ = std::max(dmu_, c.dmu);
    dp_ = std::max(dp_, c.dp);
    tpd_ = std::min(tpd_, c.tpd);
    std::vector<std::string> flags;
    const auto flag = [&](bool set, char const* name, char const* note) {
        if (!set) return;
        flags.emplace_back(name);
        if (*note) add_note(row.note, note);
    };
    flag(c.near_trivial, "near_trivial", "near a critical point: the phases are nearly alike");
    flag(c.estimated_pairs, "estimated_pairs", "");  // the heading has it
    flag(c.extrapolated, "extrapolated", "extrapolated: outside the range of the parameters");
    flag(c.below_triple, "below_triple", "below the triple point of a component: it may freeze");
    for (double value : {c.dmu, c.dp, c.tpd}) row.cells.emplace_back(value);
    row.cells.emplace_back(c.evaluations);
    row.cells.emplace_back(join(flags, " "));
}

std::string agreement(double dmu, double dp) {
    return fmt::format("potentials agree to {:.1g} (over RT), pressures to {:.1g} (of p)", dmu, dp);
}

void Evidence::report(Heading& heading) const {
    if (results_ > 0)
        heading.summary.push_back(
            fmt::format("certified: {}, lowest tangent-plane distance {:.1g}; {} evaluations",
                        agreement(dmu_, dp_), tpd_, evaluations_));
}

}  // namespace cli
