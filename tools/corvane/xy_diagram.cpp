// corvane pxy, corvane txy: isothermal and isobaric diagrams of a binary.
#include <tools/corvane/certified.h>
#include <tools/corvane/commands.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/measured.h>
#include <tools/corvane/mixture_points.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/open.h>
#include <tools/corvane/options.h>
#include <tools/corvane/rows.h>

#include <corvane/phases/diagram.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
using corvane::Diagram;
using corvane::DiagramEnd;
using corvane::TieLine;

struct XyDiagram {
    explicit XyDiagram(bool isothermal_) : isothermal(isothermal_) {}
    bool isothermal;
    Options options;
    MixtureRequest request;
    std::string values, p_max, step;
    PlotFile plot;
    Measured data;

    char const* name() const { return isothermal ? "pxy" : "txy"; }
    char const* symbol() const { return isothermal ? "T" : "p"; }
    Quantity fixed() const { return isothermal ? Quantity::temperature : Quantity::pressure; }
    Quantity sought() const { return isothermal ? Quantity::pressure : Quantity::temperature; }
    int run();

  private:
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, TieLine const& tie) const;
    std::vector<Row> trace(MixtureFluid const& mixture, double given, corvane::Progress progress,
                           Heading& head, Picture& picture) const;
    void draw(Diagram const& diagram, double given, Picture& picture) const;
};

char const* in_words(DiagramEnd end) {
    switch (end) {
        case DiagramEnd::pure:
            return "at the other pure component";
        case DiagramEnd::critical:
            return "at a critical point";
        case DiagramEnd::limit:
            return "at the limit of p or T";
        case DiagramEnd::full:
            return "at the largest number of points; it goes on";
        case DiagramEnd::interrupted:
            return "interrupted";
        case DiagramEnd::stuck:
            break;
    }
    return "open: no further point was found";
}

std::vector<Column> XyDiagram::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    return {{"T", u.name(Quantity::temperature), "temperature", isothermal},
            {"p", u.name(Quantity::pressure), "pressure", !isothermal},
            {fmt::format("x_{}", mixture.component(0)), "", "mole fraction in the liquid"},
            {fmt::format("y_{}", mixture.component(0)), "", "mole fraction in the vapour"},
            {"rhoL", u.name(Quantity::density), "density of the liquid"},
            {"rhoV", u.name(Quantity::density), "density of the vapour"}};
}

Row XyDiagram::row(MixtureFluid const& mixture, TieLine const& tie) const {
    Units const& u = options.units;
    Row result;
    result.cells = {u.from_library(Quantity::temperature, tie.T),
                    u.from_library(Quantity::pressure, tie.p),
                    tie.x,
                    tie.y,
                    mixture.density(u, binary(tie.x), tie.rho_x),
                    mixture.density(u, binary(tie.y), tie.rho_y)};
    if (!tie.stable) result.note = "not stable: there is a phase of lower Gibbs energy";
    return result;
}

void XyDiagram::draw(Diagram const& diagram, double given, Picture& picture) const {
    std::vector<XY> x, y;
    std::vector<bool> stable;
    for (TieLine const& tie : diagram.points) {
        const double value = options.units.from_library(sought(), isothermal ? tie.p : tie.T);
        x.push_back({tie.x, value});
        y.push_back({tie.y, value});
        stable.push_back(tie.stable);
    }
    picture.add("liquid", Ink::liquid, x, stable);
    picture.add("vapour", Ink::vapour, y, stable);
    if (diagram.end == DiagramEnd::critical)
        picture.mark("critical point", Symbol::critical, Ink::black, x.back());
    picture.label(options.units.text(fixed(), given), x);
}

std::vector<Row> XyDiagram::trace(MixtureFluid const& mixture, double given,
                                  corvane::Progress progress, Heading& head,
                                  Picture& picture) const {
    corvane::DiagramOptions how;
    if (!p_max.empty())
        how.p_max = positive_points(p_max, "--p-max", Quantity::pressure, options.units).front();
    how.step = !step.empty() ? number(step, "--step") : plot ? 0.01 : 0.05;
    if (!(how.step > 0.0 && how.step <= 0.5)) throw Misuse("--step: from above 0 to 0.5");
    how.progress = std::move(progress);
    const Diagram diagram = isothermal ? diagram_pxy(*mixture.model, given, how)
                                       : diagram_Txy(*mixture.model, given, how);
    std::vector<Row> rows;
    for (TieLine const& tie : diagram.points) rows.push_back(row(mixture, tie));
    add_note(rows.back().note, fmt::format("ends {}", in_words(diagram.end)));
    const std::string at = fmt::format("{} = {}", symbol(), options.units.text(fixed(), given));
    head.summary.push_back(
        fmt::format("{}: {} points, {} of them not stable; ends {}; certified: {}; {} evaluations",
                    at, rows.size(), diagram.unstable, in_words(diagram.end),
                    agreement(diagram.dmu, diagram.dp), diagram.evaluations));
    head.lists.back().second.push_back({{symbol(), options.units.from_library(fixed(), given)},
                                        {"points", static_cast<long>(rows.size())},
                                        {"unstable", static_cast<long>(diagram.unstable)},
                                        {"end", in_words(diagram.end)},
                                        {"dmu", diagram.dmu},
                                        {"dp", diagram.dp},
                                        {"evaluations", diagram.evaluations}});
    draw(diagram, given, picture);
    return rows;
}

int XyDiagram::run() {
    plot.begin();
    data.begin();
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    if (mixture.size() != 2) throw Misuse("a diagram needs two components");
    if (mixture.composed) throw Misuse("a diagram has all compositions: give no mole fractions");
    Units& units = options.units;
    units.M = mixture.M();
    const auto given = positive_points(values, isothermal ? "--T" : "--p", fixed(), units);
    if (data) data.read(mixture, isothermal);
    Heading head = heading(name(), mixture);
    head.lists.emplace_back("certificates", std::vector<Fields>());
    Picture picture;
    picture.title = title(mixture);
    picture.x_axis = fmt::format("mole fraction of {}", mixture.component(0));
    picture.y_axis = axis(sought(), units);
    picture.fraction = true;
    if (given.size() == 1) picture.title += ", " + units.text(fixed(), given.front());
    Table table{columns(mixture), {}};
    Rows rows(name(), table, given.size(), "diagrams");
    for (double value : given)
        if (!rows.add_all(
                fmt::format("{} at {} = {}", mixture.name(), symbol(), units.text(fixed(), value)),
                {{isothermal ? 0 : 1, units.from_library(fixed(), value)}},
                [&] { return trace(mixture, value, rows.progress(), head, picture); }))
            break;
    if (data) {
        data.compare(mixture, given, units, head);
        data.draw(picture, units);
    }
    if (given.size() == 1) picture.labels.clear();  // it is in the title
    const int code = rows.finish(head);
    write(head, table, options.style);
    plot.draw(picture);
    return code;
}

void add(Program& program, bool isothermal, char const* text, char const* examples) {
    auto diagram = std::make_shared<XyDiagram>(isothermal);
    Command command = program.add(diagram->name(), text, [diagram] { return diagram->run(); });
    diagram->request.fractions_optional = true;
    diagram->request.add_to(command);
    command.value(isothermal ? "--T" : "--p", diagram->values,
                  isothermal ? "temperatures: 300 or 300,310 or first:last:step"
                             : "pressures: 1 or 1,2 or first:last:step",
                  {.required = true, .type = "VALUES"});
    if (isothermal) command.value("--p-max", diagram->p_max, "where to end (default: 1000 MPa)");
    command.value("--step", diagram->step,
                  "longest step in the mole fractions, about (default: 0.05; 0.01 with --plot)");
    diagram->plot.add_to(command);
    diagram->data.add_to(command);
    diagram->options.add_units(command);
    diagram->options.add_output(command, true);
    command.examples(examples);
}
}  // namespace

void add_pxy(Program& program) {
    add(program, true, "p-x-y diagram of a binary at given temperatures",
        R"(  corvane pxy PR+vdW1 propane butane --T 323.15 --data examples/propane_butane.csv
  corvane pxy PR+vdW1 methane propane --T 210,250,290 --plot pxy.svg --unit-p bar)");
}

void add_txy(Program& program) {
    add(program, false, "T-x-y diagram of a binary at given pressures",
        R"(  corvane txy PR+vdW1 propane butane --p 1 --plot txy.png
  corvane txy PCSAFT+LB ethanol hexane --p 1.01325 --unit-p bar --unit-T C)");
}

}  // namespace cli
