// corvane pxy, corvane txy: isothermal and isobaric diagrams of a binary.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/fields.h>
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/diagrams/several.h>
#include <tools/corvane/diagrams/xy_solid.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/input/solids.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>

namespace cli {
namespace {
using corvane::BinaryDiagram;
using corvane::Diagram;
using corvane::DiagramEnd;
using corvane::PhasePair;
using corvane::TieLine;

struct XyDiagram {
    explicit XyDiagram(bool isothermal_) : isothermal(isothermal_) {}
    bool isothermal;
    Options options;
    MixtureRequest request;
    std::string values, p_max, T_min, step;
    bool solid = false;
    std::string solid_data;
    PlotFile plot;
    Measured data;
    Models models;

    char const* name() const { return isothermal ? "pxy" : "txy"; }
    int run();

  private:
    Drawn with(MixtureRequest const& of);
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, Diagram const& branch) const;
    void report(MixtureFluid const& mixture, BinaryDiagram const& diagram, double given,
                Heading& head);
    void report(MixtureFluid const& mixture, Diagram const& branch, double given, Heading& head) const;
    void report(MixtureFluid const& mixture, corvane::ThreePhasePoint const& three, double given,
                Heading& head) const;
    void say(Heading& head, double given, std::string const& text) const;
    /// "p = 1 MPa", or the temperature.
    template <class State>
    std::string at(State const& state) const {
        return fmt::format("{} = {}", isothermal ? "p" : "T",
                           options.units.text(frame().sought(), isothermal ? state.p : state.T));
    }
    corvane::DiagramOptions how(MixtureFluid const& mixture, Heading& head) const;
    std::vector<Row> trace(MixtureFluid const& mixture, Solids const& solids, double given,
                           corvane::DiagramOptions const& asked, Heading& head, Picture& picture);
    XyFrame frame() const { return {isothermal, options.units}; }
    void seen(Diagram const& branch);
    void frame_of(Picture& picture, bool one) const;
    bool complete_ = true;
    std::vector<TracedDiagram> traced_;  ///< for measured points
    double vapour_low_ = 1e300, vapour_high_ = -1e300;  ///< ordinates of splits with a vapour
    struct Field {
        char const* name;
        std::vector<std::array<double, 3>> ties;  ///< x, y, ordinate
    };
    std::vector<Field> fields_;
    Cautions cautions_;
};

std::vector<Column> XyDiagram::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    const std::string name = mixture.component(0);
    return {{"T", u.name(Quantity::temperature), "temperature", isothermal},
            {"p", u.name(Quantity::pressure), "pressure", !isothermal},
            {"phases", "", "what the two phases are"},
            {"x_" + name, "", "mole fraction in the liquid, or the denser phase (by mass)"},
            {"y_" + name, "", "mole fraction in the vapour, or the lighter phase"},
            {"rho_x", u.name(Quantity::density), "density of the phase x"},
            {"rho_y", u.name(Quantity::density), "density of the phase y"}};
}

std::vector<Row> XyDiagram::rows_of(MixtureFluid const& mixture, Diagram const& branch) const {
    Units const& u = options.units;
    std::vector<Row> rows;
    for (TieLine const& tie : branch.points) {
        Row row;
        row.cells = {u.from_library(Quantity::temperature, tie.T),
                     u.from_library(Quantity::pressure, tie.p),
                     std::string(in_words(branch.kind)),
                     tie.x,
                     tie.y,
                     mixture.density(u, binary(tie.x), tie.rho_x),
                     mixture.density(u, binary(tie.y), tie.rho_y)};
        if (!tie.stable) row.note = "not stable: there is a phase of lower Gibbs energy";
        for (TieLine const& azeotrope : branch.azeotropes)
            if (azeotrope.p == tie.p && azeotrope.T == tie.T && azeotrope.x == tie.x)
                add_note(row.note, "azeotrope");
        rows.push_back(std::move(row));
    }
    add_note(rows.front().note,
             "begins at " + in_words(branch.begin, branch.points.front(), mixture));
    add_note(rows.back().note, "ends at " + in_words(branch.end, branch.points.back(), mixture));
    return rows;
}

/// "T = 300 K: ", and what there is.
void XyDiagram::say(Heading& head, double given, std::string const& text) const {
    head.summary.push_back(
        fmt::format("{} = {}: {}", frame().symbol(), options.units.text(frame().fixed(), given), text));
}

void XyDiagram::report(MixtureFluid const& mixture, Diagram const& b, double given, Heading& head) const {
    TieLine const &first = b.points.front(), &last = b.points.back();
    say(head, given,
        fmt::format("{} from {} ({}) to {} ({}), {} points", in_words(b.kind),
                    in_words(b.begin, first, mixture), at(first), in_words(b.end, last, mixture),
                    at(last), b.points.size()));
    for (TieLine const& tie : b.azeotropes)
        say(head, given,
            fmt::format("azeotrope at {}, x_{} = {:.6g}", at(tie), mixture.component(0), tie.x));
}

void XyDiagram::report(MixtureFluid const& mixture, corvane::ThreePhasePoint const& three, double given,
                       Heading& head) const {
    Fields fields = {{"T", options.units.from_library(Quantity::temperature, three.T)},
                     {"p", options.units.from_library(Quantity::pressure, three.p)}};
    std::string fractions;
    for (std::size_t k = 0; k < three.phases.size(); ++k) {
        const double x = three.phases[k].x[0];
        fractions += fmt::format(" {:.6g}", x);
        fields.emplace_back(fmt::format("x{}_{}", k + 1, mixture.component(0)), x);
    }
    append(fields, three.certificate);
    list(head, "three_phase").push_back(std::move(fields));
    say(head, given,
        fmt::format("three phases at {}, mole fractions of {}{}", at(three), mixture.component(0),
                    fractions));
}

void XyDiagram::report(MixtureFluid const& mixture, BinaryDiagram const& diagram, double given,
                       Heading& head) {
    double dmu = 0.0, dp = 0.0;
    Bounds bounds;
    long points = 0, unstable = 0;
    for (Diagram const& b : diagram.branches) {
        dmu = std::max(dmu, b.dmu);
        dp = std::max(dp, b.dp);
        points += static_cast<long>(b.points.size());
        for (TieLine const& tie : b.points) {
            unstable += tie.stable ? 0 : 1;
            bounds.add(tie);
            cautions_.add(mixture.validity, tie.T, tie.p, binary(0.5));
        }
        report(mixture, b, given, head);
    }
    for (corvane::ThreePhasePoint const& three : diagram.three_phase) report(mixture, three, given, head);
    for (TieLine const& tie : diagram.open)
        say(head, given,
            fmt::format("not traced: a split near {}, {} from about {:.3g} to {:.3g}", at(tie),
                        mixture.component(0), tie.x, tie.y));
    say(head, given,
        fmt::format("{}; certified: {}{}{}; {} evaluations",
                    diagram.complete() ? "complete" : "not complete", agreement(dmu, dp), bounds.text(),
                    unstable > 0 ? fmt::format(", but {} of {} points not stable", unstable, points)
                                 : ", all points stable",
                    diagram.evaluations));
    list(head, "certificates")
        .push_back({{frame().symbol(), options.units.from_library(frame().fixed(), given)},
                    {"complete", static_cast<long>(diagram.complete())},
                    {"points", points},
                    {"unstable", unstable},
                    {"dmu", dmu},
                    {"dp", dp},
                    {"error", bounds.value()},
                    {"x_error", bounds.x_value()},
                    {"evaluations", diagram.evaluations}});
}

corvane::DiagramOptions XyDiagram::how(MixtureFluid const& mixture, Heading& head) const {
    corvane::DiagramOptions result;
    result.p_max = 100.0;
    if (!p_max.empty())
        result.p_max = positive(p_max, "--p-max", Quantity::pressure, options.units);
    if (!T_min.empty())
        result.T_min =
            positive(T_min, "--T-min", Quantity::temperature, options.units);
    // Below every triple point equations of state go on to find fluids where there are none. With
    // solids, which tell, the search goes further, for eutectics.
    if (T_min.empty() && !isothermal && !solid && mixture.validity.T_triple.size() == 2) {
        Vector<double> const& triple = mixture.validity.T_triple;
        result.T_min = std::min(triple[0], triple[1]);  // 0: not known
        const double tail = 0.3 * std::min(mixture.model->mdl1[0]->Tcrit(),
                                           mixture.model->mdl1[1]->Tcrit());
        if (result.T_min > tail)
            head.remarks.push_back(
                fmt::format("from {}, below which both components freeze (--T-min)",
                            options.units.text(Quantity::temperature, result.T_min)));
        else
            result.T_min = 0.0;
    }
    result.step = !step.empty() ? number(step, "--step") : plot ? 0.01 : 0.05;
    if (!(result.step > 0.0 && result.step <= 0.5)) throw Misuse("--step: from above 0 to 0.5");
    return result;
}

/// What the picture shows of it at least, and the name of the field between its curves.
void XyDiagram::seen(Diagram const& branch) {
    Field field{branch.kind == PhasePair::vapour_liquid   ? "L + V"
                : branch.kind == PhasePair::liquid_liquid ? "L + L"
                                                          : "F + F", {}};
    for (TieLine const& tie : branch.points) {
        if (!tie.stable) continue;
        if (branch.kind == PhasePair::vapour_liquid) {
            vapour_low_ = std::min(vapour_low_, frame().value(tie));
            vapour_high_ = std::max(vapour_high_, frame().value(tie));
        }
        field.ties.push_back({tie.x, tie.y, frame().value(tie)});
    }
    fields_.push_back(std::move(field));
}

std::vector<Row> XyDiagram::trace(MixtureFluid const& mixture, Solids const& solids, double given,
                                  corvane::DiagramOptions const& asked, Heading& head,
                                  Picture& picture) {
    BinaryDiagram diagram = isothermal ? complete_pxy(*mixture.model, given, asked)
                                       : complete_Txy(*mixture.model, given, asked);
    std::vector<Row> rows;
    std::vector<XY> longest;  // the liquid of the longest branch, which bears the label
    for (Diagram& branch : diagram.branches) {
        branch = denser_first(std::move(branch), mixture);
        for (TieLine& tie : branch.points)
            if (solids.freeze(tie.T, tie.p, tie.x, tie.rho_x)) tie.stable = false;
        for (Row& row : rows_of(mixture, branch)) rows.push_back(std::move(row));
        draw(branch, frame(), picture);
        seen(branch);
        if (branch.points.size() <= longest.size()) continue;
        longest.clear();
        for (TieLine const& tie : branch.points) longest.push_back({tie.x, frame().value(tie)});
    }
    if (rows.empty()) throw Failure("no solution: one phase only, in all compositions within the bounds");
    for (corvane::ThreePhasePoint const& three : diagram.three_phase) {
        const bool frozen = std::any_of(
            three.phases.begin(), three.phases.end(), [&](corvane::PhaseRecord const& phase) {
                return solids.freeze(three.T, three.p, phase.x[0], phase.rho);
            });
        draw(three, !frozen, frame(), picture);
    }
    picture.labels.push_back({options.units.text(frame().fixed(), given), {}, longest});
    report(mixture, diagram, given, head);
    complete_ = complete_ && diagram.complete();
    for (Row& row : solids.trace(frame(), given, asked, head, picture))
        rows.push_back(std::move(row));
    if (data) traced_.push_back({given, std::move(diagram)});
    return rows;
}

/// What there is with one model.
Drawn XyDiagram::with(MixtureRequest const& of) {
    const MixtureFluid mixture = open_binary(of);
    complete_ = true;
    cautions_ = {};
    vapour_low_ = 1e300, vapour_high_ = -1e300;
    fields_.clear();
    traced_.clear();
    Measured measured = data;
    Units& units = options.units;
    units.M = mixture.M();
    if (measured) measured.read(mixture, isothermal ? MeasuredKind::isotherms : MeasuredKind::isobars, units);
    char const* const option = isothermal ? "--T" : "--p";
    const auto given = values.empty() ? measured.groups()
                                      : positive_points(values, option, frame().fixed(), units);
    if (given.empty()) throw Failure(fmt::format("--data tells no {}: give {}", frame().symbol(), option));
    Heading head = heading(name(), mixture);
    const Solids solids(mixture, solid, solid_data, head, options.units);
    Picture picture;
    picture.title = title(mixture);
    picture.x_axis = fmt::format("mole fraction of {}", mixture.shown(0));
    picture.y_axis = axis(frame().sought(), units);
    picture.fraction = true;
    head.remarks.push_back("every stable two-phase state; x is the liquid, or the denser phase");
    if (given.size() == 1) picture.title += ", " + units.text(frame().fixed(), given.front());
    Table table{columns(mixture), {}};
    Rows rows(name(), table, given.size(), "diagrams");
    corvane::DiagramOptions asked = how(mixture, head);
    asked.progress = rows.progress();
    for (double value : given)
        if (!rows.add_all(fmt::format("{} at {} = {}", mixture.text(), frame().symbol(),
                                      units.text(frame().fixed(), value)),
                          {{isothermal ? 0 : 1, units.from_library(frame().fixed(), value)}},
                          [&] { return trace(mixture, solids, value, asked, head, picture); }))
            break;
    cautions_.report(head);
    if (measured) {
        measured.compare(mixture, traced_, units, head);
        measured.draw(picture, units);
    }
    frame_of(picture, given.size() == 1);
    if (plot && given.size() == 1 && complete_)
        label_fields(picture, [&](XY const& at) {
            const double sought = units.to_library(frame().sought(), at[1]), T = isothermal ? given[0] : sought,
                         p = isothermal ? sought : given[0];
            double rho = 0.0;
            const std::string letter = phase_letter(mixture, binary(at[0]), T, p, &rho);
            return solids.freeze(T, p, at[0], rho) ? std::string() : letter;
        });
    const int code = rows.finish(head);
    return {head, table, picture, title_of_model(mixture), code == 0 && !complete_ ? 1 : code};
}

/// What is seen: with no bounds given the vapour, wherever liquids go on to without it.
void XyDiagram::frame_of(Picture& picture, bool one) const {
    // Of one its value is in the title; of several fields would not be clear.
    std::erase_if(picture.labels, [&](Label const& label) { return label.along.empty() != one; });
    if (vapour_low_ < vapour_high_ && !solid) {
        if (isothermal && p_max.empty()) picture.y_top = 1.5 * vapour_high_;
        if (!isothermal && T_min.empty())
            picture.y_bottom = vapour_low_ - std::max(0.5 * (vapour_high_ - vapour_low_), 5.0);
    }
    if (!one) return;
    // In the middle of the widest split that is well inside the field and the picture.
    const Axis y = picture.axes()[1];
    for (Field const& field : fields_) {
        double low = 1.0, high = 0.0;
        for (auto const& tie : field.ties) {
            low = std::min(low, std::max(0.0, y.part(tie[2])));
            high = std::max(high, std::min(1.0, y.part(tie[2])));
        }
        std::array<double, 3> widest{};
        for (auto const& tie : field.ties)
            if (y.part(tie[2]) > low + 0.06 && y.part(tie[2]) < high - 0.06 &&
                std::fabs(tie[0] - tie[1]) > std::fabs(widest[0] - widest[1]))
                widest = tie;
        if (widest[0] != widest[1])
            picture.labels.push_back(
                {.text = field.name, .at = {0.5 * (widest[0] + widest[1]), widest[2]}, .field = true});
    }
}

int XyDiagram::run() {
    if (values.empty() && !data)
        throw Misuse(fmt::format("give {}, or --data with the points that tell", isothermal ? "--T" : "--p"));
    plot.begin();
    data.begin();
    options.begin();
    return models.draw(request, plot, options.style, [&](MixtureRequest const& of) { return with(of); });
}

void add(Program& program, bool isothermal, char const* text, char const* examples) {
    auto diagram = std::make_shared<XyDiagram>(isothermal);
    Command command = program.add(diagram->name(), text, [diagram] { return diagram->run(); });
    diagram->request.binary = true;
    diagram->request.add_to(command);
    command.value(isothermal ? "--T" : "--p", diagram->values,
                  isothermal ? "temperatures: 300 or 300,310 or first:last:step (default: those of --data, "
                               "within 0.1 K one)"
                             : "pressures: 1 or 1,2 or first:last:step (default: those of --data, "
                               "within 0.5 % one)",
                  {.type = "VALUES"});
    if (isothermal)
        command.value("--p-max", diagram->p_max, "where to end (default: 100 MPa)");
    else
        command.value("--T-min", diagram->T_min,
                      "where to begin (default: the lower triple point; if it is not known or with --solid, "
                      "0.3 of the lower critical temperature)");
    command.value("--step", diagram->step,
                  "longest step in the mole fractions, about (default: 0.05; 0.01 with --plot)");
    command.flag("--solid", diagram->solid,
                 "the components' pure solids, too, where there are data: freezing, eutectics");
    add_solid_data(command, diagram->solid_data);
    diagram->plot.add_to(command);
    diagram->data.add_to(command);
    diagram->plot.add_deviations(command);
    diagram->models.add_to(command);
    diagram->options.add_units(command);
    diagram->options.add_output(command);
    command.examples(examples);
}
}  // namespace

void add_pxy(Program& program) {
    add(program, true, "p-x-y diagram of a binary at given temperatures",
        R"(  corvane pxy PR+vdW1 propane butane --T 323.15 --data examples/measured/propane_butane.csv
  corvane pxy PCSAFT+LB 2_propanol 2_2_4_trimethylpentane --data examples/measured/2_propanol_isooctane.csv
  corvane pxy PR+vdW1 methane propane --T 210,250,290 --plot pxy.svg --unit-p bar)");
}

void add_txy(Program& program) {
    add(program, false, "T-x-y diagram of a binary at given pressures",
        R"(  corvane txy PR+vdW1 propane butane --p 1 --plot txy.png
  corvane txy PCSAFT+LB ethanol hexane --p 1.01325 --unit-p bar --unit-T C)");
}

}  // namespace cli
