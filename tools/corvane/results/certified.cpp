#include <tools/corvane/input/open.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>

namespace cli {
namespace {
std::vector<std::string> flags(corvane::Certificate const& c) {
    std::vector<std::string> names;
    if (c.near_trivial) names.emplace_back("near_trivial");
    if (c.estimated_pairs) names.emplace_back("estimated_pairs");
    if (c.extrapolated) names.emplace_back("extrapolated");
    if (c.below_triple) names.emplace_back("below_triple");
    return names;
}
}  // namespace

void Evidence::add_columns(std::vector<Column>& columns) {
    Column const details[] = {
        {"dmu", "", "largest difference of a chemical potential between the phases, over RT"},
        {"dp", "", "largest difference of a phase's pressure to p, over p"},
        {"tpd", "", "smallest tangent-plane distance of all trial phases, over RT"},
        {"error", "", "bound of the relative error of p (of T, where p was given; of both: critical points)"},
        {"x_error", "", "bound of the error of every mole fraction"},
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
    conditions_ = std::max(conditions_, c.conditions);
    // Estimated pairs are named in the heading.
    if (c.near_trivial) add_note(row.note, "near a critical point: the phases are nearly alike");
    if (c.extrapolated) add_note(row.note, "extrapolated");
    if (c.below_triple) add_note(row.note, "below a triple point");
    cautions_.add(c);
    if (c.bounded()) bounds_.add(c);
    for (double value : {c.dmu, c.dp, c.tpd, c.value_error, c.x_error})
        row.cells.emplace_back(value);
    row.cells.emplace_back(c.evaluations);
    row.cells.emplace_back(join(flags(c), " "));
}

void Cautions::add(corvane::Certificate const& c) {
    ++all_;
    extrapolated_ += c.extrapolated ? 1 : 0;
    below_triple_ += c.below_triple ? 1 : 0;
}

void Cautions::add(corvane::Validity const& validity, double T, double p, Vector<double> const& z) {
    corvane::Certificate flags;
    flags.flag(&validity, T, p, z);
    add(flags);
}

void Cautions::report(Heading& heading) const {
    if (extrapolated_ > 0)
        heading.summary.push_back(fmt::format(
            "{} of {} extrapolated: outside the stated range of the parameters of a component",
            extrapolated_, all_));
    if (below_triple_ > 0)
        heading.summary.push_back(
            fmt::format("{} of {} below the triple point of a component, which may freeze",
                        below_triple_, all_));
}

void append(Fields& fields, corvane::Certificate const& c) {
    fields.insert(fields.end(), {{"dmu", c.dmu},
                                 {"dp", c.dp},
                                 {"tpd", c.tpd},
                                 {"error", c.value_error},
                                 {"x_error", c.x_error},
                                 {"evaluations", c.evaluations},
                                 {"flags", join(flags(c), " ")}});
}

std::string agreement(double dmu, double dp) {
    return fmt::format("potentials agree to {:.1g} (over RT), pressures to {:.1g} (of p)", dmu, dp);
}

std::string Bounds::text() const {
    if (!any()) return "";
    const std::string of_x = fmt::format("{:.1g} (of x)", x_error_);
    return error_ > 0.0 ? fmt::format(", errors below {:.1g} (relative, of p or T) and {}", error_, of_x)
                        : ", errors below " + of_x;  // T and p were given
}

void Evidence::report(Heading& heading) const {
    if (results_ == 0) return;
    cautions_.report(heading);
    heading.summary.push_back(fmt::format(
        "certified: {}{}{}, lowest tangent-plane distance {:.1g}; {} evaluations",
        conditions_ > 0.0 ? fmt::format("critical conditions met to {:.1g}, ", conditions_) : "",
        agreement(dmu_, dp_), bounds_.text(), tpd_, evaluations_));
}

}  // namespace cli
