// corvane bubble, dew, equilibrium: certified bubble and dew points of a mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/saturation/saturation.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

namespace cli {
namespace {
using corvane::Branch;
using corvane::Saturated;
using corvane::SaturationPoint;

struct SaturationPoints {
    std::string command, kind;  ///< "bubble" or "dew"
    Options options;
    MixtureRequest request;
    std::string T, p, branch = "any", scan;
    PlotFile plot;
    Measured data;
    FileRun file;

    int run();

  private:
    struct Asked {
        double value;  ///< T or p
        Vector<double> z;
    };
    bool bubble() const { return kind == "bubble"; }
    Saturated which() const { return bubble() ? Saturated::bubble : Saturated::dew; }
    bool by_T() const { return p.empty(); }
    int of_file(MixtureFluid& mixture);
    std::vector<Asked> asked(MixtureFluid const& mixture) const;
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    /// Of so many liquids beside the first vapour: compositions, densities and parts of the whole.
    std::vector<Column> split_columns(MixtureFluid const& mixture, std::size_t liquids) const;
    Row row(MixtureFluid const& mixture, SaturationPoint const& point, Evidence& evidence) const;
    SaturationPoint solve(MixtureFluid const& mixture, Asked const& point,
                          std::optional<SaturationPoint> const& last) const;
};

/// The points in the order of the rows; with --scan, the compositions at each T or p.
std::vector<SaturationPoints::Asked> SaturationPoints::asked(MixtureFluid const& mixture) const {
    const auto values =
        positive_points(by_T() ? T : p, by_T() ? "--T" : "--p",
                        by_T() ? Quantity::temperature : Quantity::pressure, options.units);
    std::vector<Asked> result;
    if (scan.empty()) {
        for (double value : values) result.push_back({value, mixture.x});
        return result;
    }
    for (double value : values)
        for (Vector<double> const& x : scanned(mixture, scan)) result.push_back({value, x});
    return result;
}

std::vector<Column> SaturationPoints::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {{"T", u.name(Quantity::temperature), "temperature", by_T()},
                                  {"p", u.name(Quantity::pressure), "pressure", !by_T()}};
    add_fractions(result, mixture, "x", "mole fraction in the liquid", bubble());
    add_fractions(result, mixture, "y", "mole fraction in the vapour", !bubble());
    result.push_back({"rhoL", u.name(Quantity::density), "density of the liquid"});
    result.push_back({"rhoV", u.name(Quantity::density), "density of the vapour"});
    for (int i = 0; i < mixture.size(); ++i) {
        result.push_back({fmt::format("K_{}", mixture.component(i)), "", "y/x"});
        result.back().detail = command != "equilibrium";
    }
    Evidence::add_columns(result);
    return result;
}

std::vector<Column> SaturationPoints::split_columns(MixtureFluid const& mixture,
                                                    std::size_t liquids) const {
    std::vector<Column> result;
    for (std::size_t k = 1; k <= liquids; ++k) {
        const std::string liquid = fmt::format("liquid {}, the denser first", k);
        add_fractions(result, mixture, fmt::format("x{}", k).c_str(), "mole fraction in " + liquid);
        result.push_back({fmt::format("rhoL{}", k), options.units.name(Quantity::density),
                          "density of " + liquid});
        result.push_back({fmt::format("part{}", k), "", "mole fraction of the whole in " + liquid});
    }
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
    for (int i = 0; i < mixture.size(); ++i)  // not finite, so blank, if absent; two liquids: none
        result.cells.emplace_back(point.split.empty() ? vapour.x[i] / liquid.x[i] : std::nan(""));
    evidence.add(result, point.certificate);
    for (std::size_t k = 0; k < point.split.size(); ++k) {
        corvane::PhaseRecord const& one = point.split[k];
        add_cells(result, one.x);
        result.cells.emplace_back(mixture.density(u, one.x, one.rho));
        result.cells.emplace_back(point.fraction[k]);
    }
    if (phase_names(mixture, {liquid, vapour}).back() != "vapour")
        add_note(result.note, "both phases are as dense as liquids: y is no vapour");
    if (!point.split.empty())
        add_note(result.note, point.split.size() == 2
                                  ? "the liquid is two: x1 and x2; x and rhoL are those of both together"
                                  : "the liquid is three: x1, x2 and x3; x and rhoL are those of all together");
    return result;
}

SaturationPoint SaturationPoints::solve(MixtureFluid const& mixture, Asked const& point,
                                        std::optional<SaturationPoint> const& last) const {
    corvane::SaturationOptions how;
    how.branch = branch == "lower"   ? Branch::lower
                 : branch == "upper" ? Branch::upper
                                     : Branch::any;
    how.start = last ? &*last : nullptr;
    how.validity = &mixture.validity;
    ModelN const& model = *mixture.model;
    try {
        return by_T() ? saturation_T(model, which(), point.value, point.z, how)
                      : saturation_p(model, which(), point.value, point.z, how);
    } catch (corvane::EquilibriumFailure const& failure) {
        throw Failure(describe(failure) +
                      critical_hint(model, point.z, by_T(), point.value, options.units));
    }
}

int SaturationPoints::of_file(MixtureFluid& mixture) {
    file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, options.units, &mixture);
    if (file.has("T") == file.has("p")) throw Failure("--input: either a column T or a column p");
    p = file.has("p") ? "p" : "";
    const auto make = [&]() -> FileRun::Compute {
        return [&, last = std::optional<SaturationPoint>()](FileRow const& in, Row& result) mutable {
            last = solve(mixture, {in[by_T() ? "T" : "p"], in.x()}, last);
            Evidence evidence;
            result = row(mixture, *last, evidence);
        };
    };
    return file.run(command.c_str(), columns(mixture), options.style, make);
}

int SaturationPoints::run() {
    file.begin(options.json());
    if (file ? !T.empty() || !p.empty() || !scan.empty() || plot || data
             : T.empty() == p.empty())
        throw Misuse("give either --T or --p, or --input");
    plot.begin();
    data.begin();
    options.begin();
    request.fractions_optional = !scan.empty() || file;
    MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    if (file) return of_file(mixture);
    if (data) data.read(mixture, MeasuredKind::composition, units);
    const Quantity quantity = by_T() ? Quantity::temperature : Quantity::pressure;
    char const* const symbol = by_T() ? "T" : "p";
    const std::vector<Asked> all = asked(mixture);
    Heading head = heading(command, mixture);
    head.remarks.emplace_back(bubble() ? "the liquid (x) is given, y is the first vapour"
                                       : "the vapour (y) is given, x is the first liquid");
    Table table{columns(mixture), {}};
    Evidence evidence;
    std::optional<SaturationPoint> last;
    Curve curve{
        fmt::format("{} points", kind), bubble() ? Ink::liquid : Ink::vapour, Stroke::line, {}};
    Rows rows(command.c_str(), table, all.size());
    for (Asked const& point : all) {
        const std::string what =
            fmt::format("{}{} at {} = {}: {} point", mixture.name(), mixture.composition(point.z),
                        symbol, units.text(quantity, point.value), kind);
        if (!rows.add(what, cli::given(units, by_T(), point.value, point.z, bubble()), [&] {
                // Where a point fails the curve has a gap.
                curve.points.push_back({std::nan(""), std::nan("")});
                last = solve(mixture, point, last);
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
        data.compare(mixture, {which()}, units, head);
        data.draw(picture, units);
    }
    const std::size_t plain = table.columns.size();
    std::size_t liquids = 0;
    for (Row const& row : table.rows) {
        const std::size_t each = static_cast<std::size_t>(mixture.size()) + 2;
        if (row.cells.size() > plain) liquids = std::max(liquids, (row.cells.size() - plain) / each);
    }
    for (Column& column : split_columns(mixture, liquids)) table.columns.push_back(std::move(column));
    const int code = rows.finish(head);
    plot.show(picture, head, table, options.style);
    return code;
}

void add(Program& program, char const* name, char const* kind, char const* text,
         char const* examples) {
    auto points = std::make_shared<SaturationPoints>();
    points->command = name;
    points->kind = kind;
    Command command = program.add(name, text, [points] { return points->run(); });
    points->request.fractions_optional = true;
    points->request.add_to(command);
    command
        .value("--T", points->T, "temperatures: 300 or 300,310 or first:last:step",
               {.type = "VALUES"})
        .value("--p", points->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--scan", points->scan,
               "binary: mole fractions of a component, methane=0:1:0.1 (p-x-y, T-x-y diagram)",
               {.type = "NAME=VALUES"})
        .value("--branch", points->branch,
               "where there are several: any (default; the one next to the last), or that of "
               "lower or upper pressure (temperature)",
               {.one_of = {"any", "lower", "upper"}, .type = "BRANCH"});
    if (points->command == "equilibrium")
        command.value("--kind", points->kind, "bubble: of a liquid (default); dew: of a vapour",
                      {.one_of = {"bubble", "dew"}, .type = "KIND"});
    points->file.add_to(command);
    points->plot.add_to(command);
    points->data.add_to(command);
    points->plot.add_deviations(command);
    points->options.add_units(command);
    points->options.add_output(command);
    command.examples(examples);
}
}  // namespace

void add_bubble(Program& program) {
    add(program, "bubble", "bubble", "certified bubble points of a liquid",
        R"(  corvane bubble PR+vdW1 methane=0.3 propane=0.7 --T 250:300:10
  corvane bubble PCSAFT+LB ethanol=0.5 hexane --p 1.01325 --unit-p bar --unit-T C)");
}

void add_dew(Program& program) {
    add(program, "dew", "dew", "certified dew points of a vapour",
        R"(  corvane dew PR+vdW1 methane=0.7 propane=0.3 --p 1:4:1
  corvane dew PR+vdW1 methane=0.7 propane=0.3 --T 295 --branch lower
  corvane dew PR+vdW1 methane=0.7 propane=0.3 --T 295 --branch upper)");
}

void add_equilibrium(Program& program) {
    add(program, "equilibrium", "bubble", "bubble or dew points with K-values, for scans",
        R"(  corvane equilibrium PR+vdW1 methane=0.3 propane=0.7 --T 250:300:10
  corvane equilibrium PR+vdW1 nitrogen=0.05 CO2=0.05 methane --p 20 --unit-p bar --kind dew
  corvane equilibrium PR+vdW1 CO2 propane --scan CO2=0:1:0.1 --T 270)");
}

}  // namespace cli
