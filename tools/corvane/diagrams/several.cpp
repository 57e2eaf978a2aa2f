#include <tools/corvane/diagrams/several.h>
#include <tools/corvane/output/watch.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <algorithm>
#include <utility>

namespace cli {
namespace {
constexpr Ink kInks[] = {Ink::liquid, Ink::vapour, Ink::liquid2, Ink::azeotrope, Ink::solid, Ink::black};

/// The curves of one model beside those of others; its labels stay out.
void lay_beside(Picture& all, Picture const& one, std::string const& model, int k, int models) {
    const Ink ink = kInks[k];
    for (Curve curve : one.curves) {
        if (curve.stroke != Stroke::dashed) {
            if (!curve.title.empty()) curve.title = model;
            curve.ink = ink;
            curve.model = k;
            curve.models = models;
        }
        all.curves.push_back(std::move(curve));
    }
    for (Marks marks : one.marks) {
        if (marks.symbol != Symbol::measured && marks.symbol != Symbol::measured_open) marks.ink = ink;
        all.marks.push_back(std::move(marks));
    }
    all.y_top = std::max(all.y_top, one.y_top);
    all.y_bottom = std::min(all.y_bottom, one.y_bottom);
}

Drawn joined(std::vector<Drawn> found, std::vector<std::string> const& models) {
    Drawn all{found[0].head, found[0].table, found[0].picture, "", 0};
    for (auto& [name, value] : all.head.fields)
        if (name == "model") value = join(models, ", ");
    all.head.remarks.clear();
    all.head.summary.clear();
    all.head.lists.clear();
    all.table.rows.clear();
    all.table.columns.insert(all.table.columns.begin(), {"model", "", "model of the mixture"});
    all.picture.curves.clear();
    all.picture.marks.clear();
    const std::size_t width = all.table.columns.size();
    for (std::size_t k = 0; k < found.size(); ++k) {
        Drawn& one = found[k];
        if (one.table.columns.size() + 1 != width)
            throw Failure("the tables of the models have different columns: ask for one after the other");
        for (std::string const& text : one.head.remarks) all.head.remarks.push_back(models[k] + ": " + text);
        for (std::string const& text : one.head.summary) all.head.summary.push_back(models[k] + ": " + text);
        for (auto& [name, entries] : one.head.lists)
            for (Fields& fields : entries) {
                fields.insert(fields.begin(), {"model", models[k]});
                list(all.head, name).push_back(std::move(fields));
            }
        for (Row& row : one.table.rows) {
            row.cells.insert(row.cells.begin(), models[k]);
            all.table.rows.push_back(std::move(row));
        }
        lay_beside(all.picture, one.picture, one.model, static_cast<int>(k), static_cast<int>(found.size()));
        all.code = std::max(all.code, one.code);
    }
    // What the title says of the first model is in the key.
    const std::string first = ", " + found[0].model;
    if (const std::size_t at = all.picture.title.find(first); at != std::string::npos)
        all.picture.title.erase(at, first.size());
    return all;
}
}  // namespace

void Models::add_to(Command& command) {
    command.repeated("--model", more_,
                     "a further model in the same table and picture, beside MODEL or in its place", "MODEL");
}

int Models::draw(MixtureRequest const& request, PlotFile const& plot, Style const& style, One const& one) const {
    // What is finished is also written and drawn.
    const Watch watch("");
    const Drawn found = each(request, one);
    plot.show(found.picture, found.head, found.table, style);
    return found.code;
}

Drawn Models::each(MixtureRequest request, One const& one) const {
    std::vector<std::string> models = more_;
    if (more_.empty() || request.model.find('+') != std::string::npos)
        models.insert(models.begin(), request.model);
    else
        request.components.insert(request.components.begin(), request.model);
    if (models.size() > std::size(kInks)) throw Misuse("--model: at most six models in a picture");
    if (models.size() > 1 && !request.kij.empty())
        throw Misuse("--kij is of one model: with several they have their own");
    std::vector<Drawn> found;
    for (std::string const& model : models) {
        request.model = model;
        found.push_back(one(request));
        if (found.back().code == 130) break;  // interrupted
    }
    if (models.size() == 1) return std::move(found.front());
    return joined(std::move(found), models);
}

}  // namespace cli
