// corvane bubble, corvane dew: certified bubble and dew points of a mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/saturation/saturation.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <optional>

namespace cli {
namespace {
using corvane::Branch;
using corvane::Saturated;
using corvane::SaturationPoint;

struct SaturationPoints {
    explicit SaturationPoints(Saturated kind_) : kind(kind_) {}
    Saturated kind;
    Options options;
    MixtureRequest request;
    std::string T, p, branch = "any";
    PlotFile plot;
    Measured data;

    char const* name() const { return bubble() ? "bubble" : "dew"; }
    int run();

  private:
    bool bubble() const { return kind == Saturated::bubble; }
    bool by_T() const { return p.empty(); }
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, SaturationPoint const& point, Evidence& evidence) const;
    SaturationPoint solve(MixtureFluid const& mixture, double given,
                          std::optional<SaturationPoint> const& last) const;
};

std::vector<Column> SaturationPoints::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {{"T", u.name(Quantity::temperature), "temperature", by_T()},
                                  {"p", u.name(Quantity::pressure), "pressure", !by_T()}};
    add_fractions(result, mixture, "x", "mole fraction in the liquid", bubble());
    add_fractions(result, mixture, "y", "mole fraction in the vapour", !bubble());
    result.push_back({"rhoL", u.name(Quantity::density), "density of the liquid"});
    result.push_back({"rhoV", u.name(Quantity::density), "density of the vapour"});
    Evidence::add_columns(result);
    return result;
}

Row SaturationPoints::row(MixtureFluid const& mixture, SaturationPoint const& point,
                          Evidence& evidence) const {
    Units const& u = options.units;
    corvane::PhaseRecord const& liquid = bubble() ? point.given : point.incipient;
    corvane::PhaseRecord const& vapour = bubble() ? point.incipient : point.given;
    Row result;
    result.cells.emplace_back(u.from_library(Quantity::temperature, point.T));
    result.cells.emplace_back(u.from_library(Quantity::pressure, point.p));
    for (auto const* phase : {&liquid, &vapour}) add_cells(result, phase->x);
    for (auto const* phase : {&liquid, &vapour})
        result.cells.emplace_back(mixture.density(u, phase->x, phase->rho));
    evidence.add(result, point.certificate);
    if (phase_names(mixture, {liquid, vapour}).back() != "vapour")
        add_note(result.note, "both phases are as dense as liquids: y is no vapour");
    return result;
}

SaturationPoint SaturationPoints::solve(MixtureFluid const& mixture, double given,
                                        std::optional<SaturationPoint> const& last) const {
    corvane::SaturationOptions how;
    how.branch = branch == "lower"   ? Branch::lower
                 : branch == "upper" ? Branch::upper
                                     : Branch::any;
    how.start = last ? &*last : nullptr;
    how.validity = &mixture.validity;
    ModelN const& model = *mixture.model;
    try {
        return by_T() ? saturation_T(model, kind, given, mixture.x, how)
                      : saturation_p(model, kind, given, mixture.x, how);
    } catch (corvane::EquilibriumFailure const& failure) {
        throw Failure(describe(failure) +
                      critical_hint(model, mixture.x, by_T(), given, options.units));
    }
}

int SaturationPoints::run() {
    if (T.empty() == p.empty()) throw Misuse("give either --T or --p");
    plot.begin();
    data.begin();
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    if (data) data.read(mixture, MeasuredKind::composition);
    const Quantity quantity = by_T() ? Quantity::temperature : Quantity::pressure;
    char const* const symbol = by_T() ? "T" : "p";
    const auto given = positive_points(by_T() ? T : p, by_T() ? "--T" : "--p", quantity, units);
    Heading head = heading(name(), mixture);
    head.remarks.emplace_back(bubble() ? "the liquid (x) is given, y is the first vapour"
                                       : "the vapour (y) is given, x is the first liquid");
    Table table{columns(mixture), {}};
    Evidence evidence;
    std::optional<SaturationPoint> last;
    Curve curve{
        fmt::format("{} points", name()), bubble() ? Ink::liquid : Ink::vapour, Stroke::line, {}};
    Rows rows(name(), table, given.size());
    for (double value : given) {
        const std::string what = fmt::format("{} at {} = {}: {} point", mixture.name(), symbol,
                                             units.text(quantity, value), name());
        if (!rows.add(what, cli::given(units, by_T(), value, mixture.x, bubble()), [&] {
                // Where a point fails the curve has a gap.
                curve.points.push_back({std::nan(""), std::nan("")});
                last = solve(mixture, value, last);
                curve.points.back() = {units.from_library(Quantity::temperature, last->T),
                                       units.from_library(Quantity::pressure, last->p)};
                return row(mixture, *last, evidence);
            }))
            break;
    }
    evidence.report(head);
    Picture picture{.title = title(mixture),
                    .x_axis = axis(Quantity::temperature, units),
                    .y_axis = axis(Quantity::pressure, units),
                    .curves = {curve}};
    if (data) {
        data.compare(mixture, {kind}, units, head);
        data.draw(picture, units);
    }
    const int code = rows.finish(head);
    write(head, table, options.style);
    plot.draw(picture);
    return code;
}

void add(Program& program, Saturated kind, char const* text, char const* examples) {
    auto points = std::make_shared<SaturationPoints>(kind);
    Command command = program.add(points->name(), text, [points] { return points->run(); });
    points->request.add_to(command);
    command
        .value("--T", points->T, "temperatures: 300 or 300,310 or first:last:step",
               {.type = "VALUES"})
        .value("--p", points->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--branch", points->branch,
               "where there are several: any (default; the one next to the last), or that of "
               "lower or upper pressure (temperature)",
               {.one_of = {"any", "lower", "upper"}, .type = "BRANCH"});
    points->plot.add_to(command);
    points->data.add_to(command);
    points->options.add_units(command);
    points->options.add_output(command, true);
    command.examples(examples);
}
}  // namespace

void add_bubble(Program& program) {
    add(program, Saturated::bubble, "certified bubble points of a liquid",
        R"(  corvane bubble PR+vdW1 methane=0.3 propane=0.7 --T 250:300:10
  corvane bubble PCSAFT+LB ethanol=0.5 hexane --p 1.01325 --unit-p bar --unit-T C)");
}

void add_dew(Program& program) {
    add(program, Saturated::dew, "certified dew points of a vapour",
        R"(  corvane dew PR+vdW1 methane=0.7 propane=0.3 --p 1:4:1
  corvane dew PR+vdW1 methane=0.7 propane=0.3 --T 295 --branch lower
  corvane dew PR+vdW1 methane=0.7 propane=0.3 --T 295 --branch upper)");
}

}  // namespace cli
