// corvane saturation: vapour-liquid equilibrium along temperatures or pressures.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/deviations.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/results/compare.h>
#include <tools/corvane/results/transport.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_expansion.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace cli {
namespace {
struct Equilibrium {
    Model1 const* model;
    double T, p, rhoL, rhoV;
};

enum class Shown { always, all, all_with_ideal };

struct SaturationColumn {
    char const* name;
    Quantity quantity;
    char const* text;
    Shown shown;
    double (*value)(Equilibrium const&);
};

double vaporisation_enthalpy(Equilibrium const& e) {
    return R * e.T * (e.model->Hr(e.rhoV, e.T) - e.model->Hr(e.rhoL, e.T));
}
double fugacity_coefficient(Equilibrium const& e) {
    return std::exp(e.model->Gr(e.rhoV, e.T)) / e.model->Z(e.rhoV, e.T);
}

#define EXPRESSION(x) [](Equilibrium const& e) { return x; }
const SaturationColumn kColumns[] = {
    {"T", Quantity::temperature, "temperature", Shown::always, EXPRESSION(e.T)},
    {"p", Quantity::pressure, "saturation pressure", Shown::always, EXPRESSION(e.p)},
    {"rhoL", Quantity::density, "density of the liquid", Shown::always, EXPRESSION(e.rhoL)},
    {"rhoV", Quantity::density, "density of the vapour", Shown::always, EXPRESSION(e.rhoV)},
    {"hvap", Quantity::energy, "enthalpy of vaporisation", Shown::always, vaporisation_enthalpy},
    {"svap", Quantity::entropy, "entropy of vaporisation", Shown::always,
     EXPRESSION(vaporisation_enthalpy(e) / e.T)},
    {"vL", Quantity::volume, "volume of the liquid", Shown::all, EXPRESSION(1.0 / e.rhoL)},
    {"vV", Quantity::volume, "volume of the vapour", Shown::all, EXPRESSION(1.0 / e.rhoV)},
    {"ZL", Quantity::ratio, "compressibility factor of the liquid", Shown::all,
     EXPRESSION(e.model->Z(e.rhoL, e.T))},
    {"ZV", Quantity::ratio, "compressibility factor of the vapour", Shown::all,
     EXPRESSION(e.model->Z(e.rhoV, e.T))},
    {"phi", Quantity::ratio, "fugacity coefficient", Shown::all, fugacity_coefficient},
    {"hL", Quantity::energy, "enthalpy of the liquid", Shown::all_with_ideal,
     EXPRESSION(R* e.T* e.model->Hm(e.rhoL, e.T))},
    {"hV", Quantity::energy, "enthalpy of the vapour", Shown::all_with_ideal,
     EXPRESSION(R* e.T* e.model->Hm(e.rhoV, e.T))},
    {"sL", Quantity::entropy, "entropy of the liquid", Shown::all_with_ideal,
     EXPRESSION(R* e.model->Sm(e.rhoL, e.T))},
    {"sV", Quantity::entropy, "entropy of the vapour", Shown::all_with_ideal,
     EXPRESSION(R* e.model->Sm(e.rhoV, e.T))},
    {"cpL", Quantity::entropy, "isobaric heat capacity of the liquid", Shown::all_with_ideal,
     EXPRESSION(R* e.model->Cpm(e.rhoL, e.T))},
    {"cpV", Quantity::entropy, "isobaric heat capacity of the vapour", Shown::all_with_ideal,
     EXPRESSION(R* e.model->Cpm(e.rhoV, e.T))},
};
#undef EXPRESSION

std::map<std::string, Quantity> quantities() {
    std::map<std::string, Quantity> result;
    for (SaturationColumn const& column : kColumns) result[column.name] = column.quantity;
    return result;
}

/// For many points the curve is precomputed: every one of them starts on it, and is certified as
/// without. Nothing if there are few, or the model has no smooth curve.
std::optional<corvane::SaturationExpansion> precomputed(Fluid const& fluid, std::size_t points) {
    constexpr std::size_t kMany = 1000;  // building it costs some hundred points
    if (points < kMany) return {};
    try {
        return corvane::SaturationExpansion(*fluid.model);
    } catch (corvane::EquilibriumFailure const&) {  // each point says why
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return {};
}

/// @throws Failure naming the point
Equilibrium equilibrium(Fluid const& fluid, Units const& units, bool by_T, double given,
                        std::optional<corvane::SaturationExpansion> const& curve) {
    Model1 const& model = *fluid.model;
    if (std::isnan(given))
        throw Failure(fmt::format("a published point without {}", by_T ? "T" : "p"));
    const Quantity quantity = by_T ? Quantity::temperature : Quantity::pressure;
    const std::string what = fmt::format("{} at {} = {}", fluid.name(), by_T ? "T" : "p",
                                         units.text(quantity, given));
    const double critical = by_T ? model.Tcrit() : model.pcrit();
    if (!(given < critical))
        throw Failure(fmt::format("{} is not below the critical {} {} of the equation", what,
                                  by_T ? "temperature" : "pressure",
                                  units.text(quantity, critical)));
    return asking(what, [&] {
        const corvane::PureSaturation q =
            curve ? (by_T ? curve->certified_T(model, given) : curve->certified_p(model, given))
                  : (by_T ? corvane::pure_saturation_T(model, given)
                          : corvane::pure_saturation_p(model, given));
        return Equilibrium{&model, q.T, q.p, q.rhoL, q.rhoV};
    });
}

struct SaturationCommand {
    Options options;
    std::string T, p, compare;
    FileRun file;
    bool all = false;
    PlotFile plot;

    int run();

  private:
    void check() const;
    Picture picture(Fluid const& fluid, Table const& table, std::string const& given) const;
    std::vector<double> read_points() const;
    std::optional<Published> read_published() const;
    int of_file(Table const& table, std::function<Row(double)> const& row);
    std::vector<SaturationColumn const*> choose(Fluid const& fluid,
                                                std::optional<Published> const& published) const;
};

std::vector<double> SaturationCommand::read_points() const {
    const bool by_T = p.empty();
    const Quantity quantity = by_T ? Quantity::temperature : Quantity::pressure;
    char const* option = by_T ? "--T" : "--p";
    return positive_points(by_T ? T : p, option, quantity, options.units);
}

std::vector<SaturationColumn const*> SaturationCommand::choose(
    Fluid const& fluid, std::optional<Published> const& published) const {
    std::vector<SaturationColumn const*> chosen;
    for (SaturationColumn const& column : kColumns) {
        const bool wanted =
            column.shown == Shown::always || all || (published && published->has(column.name));
        if (wanted && (column.shown != Shown::all_with_ideal || fluid.ideal))
            chosen.push_back(&column);
    }
    return chosen;
}

/// Deviations from published values, or the vapour pressure.
Picture SaturationCommand::picture(Fluid const& fluid, Table const& table, std::string const& given) const {
    Picture result;
    result.title = fmt::format("{}, {}", fluid.shown(), fluid.equation);
    const auto points = [&](std::string const& x, std::string const& y) {
        const auto index = [&](std::string const& name) {
            return std::find_if(table.columns.begin(), table.columns.end(),
                                [&](Column const& c) { return c.name == name; }) - table.columns.begin();
        };
        std::vector<XY> found;
        for (Row const& row : table.rows) {
            const auto value = [&](std::ptrdiff_t k) {
                double const* v = k < static_cast<std::ptrdiff_t>(row.cells.size())
                                      ? std::get_if<double>(&row.cells[static_cast<std::size_t>(k)]) : nullptr;
                return v ? *v : std::nan("");
            };
            found.push_back({value(index(x)), value(index(y))});
        }
        return found;
    };
    if (compare.empty()) {
        result.x_axis = axis(Quantity::temperature, options.units);
        result.y_axis = axis(Quantity::pressure, options.units);
        result.log_y = true;
        result.curves.push_back({"vapour pressure", Ink::liquid, Stroke::line, points("T", "p")});
        return result;
    }
    result.x_axis = axis(given == "T" ? Quantity::temperature : Quantity::pressure, options.units);
    result.y_axis = "deviation: calculated/published - 1, %";
    result.data_alone = true;
    for (Column const& column : table.columns) {
        if (column.name.compare(0, 2, "d_") != 0) continue;
        const std::string name = column.name.substr(2);
        result.marks.push_back(deviation_marks(
            result.marks.size(), column.unit == "K" ? name + ", calculated - published, K" : name));
        result.marks.back().points = points(given, column.name);
    }
    result.curves.push_back(zero_line(result.marks));
    return result;
}

/// Of both phases, and between them, as far as there are models.
void add_columns(TransportCells const& transport, Table& table) {
    auto const& models = transport.models();
    auto& columns = table.columns;
    if (models.has_viscosity()) {
        columns.push_back(transport.viscosity_column("etaL", "viscosity of the liquid"));
        columns.push_back(transport.viscosity_column("etaV", "viscosity of the vapour"));
    }
    if (models.has_conductivity()) {
        columns.push_back(transport.conductivity_column("lambdaL", "thermal conductivity of the liquid"));
        columns.push_back(transport.conductivity_column("lambdaV", "thermal conductivity of the vapour"));
    }
    if (models.has_surface_tension()) columns.push_back(transport.tension_column());
}
void add_cells(TransportCells& transport, Equilibrium const& e, Row& row) {
    auto const& models = transport.models();
    if (models.has_viscosity())
        for (double rho : {e.rhoL, e.rhoV})
            row.cells.push_back(transport.viscosity(e.T, rho, row, true).cell);
    if (models.has_conductivity())
        for (double rho : {e.rhoL, e.rhoV})
            row.cells.push_back(transport.conductivity(e.T, rho, row, true).cell);
    if (models.has_surface_tension()) row.cells.push_back(transport.tension(e.T, row).cell);
}

/// What is asked for, each in one way.
void SaturationCommand::check() const {
    if (plot && file) throw Misuse("--plot and --html draw what --T, --p or --compare ask for");
    if ((T.empty() ? 0 : 1) + (p.empty() ? 0 : 1) + (compare.empty() ? 0 : 1) + (file ? 1 : 0) != 1)
        throw Misuse("give one of --T, --p, --compare and --input");
}

/// The points of --compare.
std::optional<Published> SaturationCommand::read_published() const {
    if (compare.empty()) return {};
    Published published(compare, quantities(), options.units);
    if (!published.has("T") && !published.has("p"))
        throw Failure(compare + ": neither a column T nor a column p");
    return published;
}

int SaturationCommand::of_file(Table const& table, std::function<Row(double)> const& row) {
    if (file.has("T") == file.has("p"))
        throw Failure("--input: either a column T or a column p");
    char const* const given = file.has("T") ? "T" : "p";
    const FileRun::Compute compute = [&](FileRow const& in, Row& result) { result = row(in[given]); };
    return file.run("saturation", table.columns, options.style, [&] { return compute; });
}

int SaturationCommand::run() {
    plot.begin();
    check();
    file.begin(options.json());
    Fluid fluid = options.open();
    Units const& units = options.units;
    std::vector<double> given;
    if (compare.empty() && !file) given = read_points();
    const std::optional<Published> published = read_published();
    if (published) given = published->column(published->has("T") ? "T" : "p");
    if (file) file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, units);
    const bool by_T = file ? file.has("T") : published ? published->has("T") : p.empty();

    Heading head = heading("saturation", fluid, units);
    const std::string reference = options.set_reference(fluid);
    if (all) head.remarks.push_back(reference);
    if (published && !published->source().empty())
        head.remarks.push_back("published: " + published->source());
    const auto columns = choose(fluid, published);
    Table table;
    for (SaturationColumn const* column : columns)
        table.columns.push_back({column->name, units.name(column->quantity), column->text,
                                 column->name == std::string(by_T ? "T" : "p")});

    std::optional<TransportCells> transport;
    if (all) add_columns(transport.emplace(fluid, units), table);
    const auto curve = precomputed(fluid, given.size());
    const auto row = [&](double x) {
        const Equilibrium e = equilibrium(fluid, units, by_T, x, curve);
        Row result;
        for (SaturationColumn const* column : columns)
            result.cells.emplace_back(units.from_library(column->quantity, column->value(e)));
        result.note = extrapolated(fluid, e.T, e.p, all, units);
        if (transport) add_cells(*transport, e, result);
        return result;
    };
    if (file) return of_file(table, row);
    Rows rows("saturation", table, given.size());
    const Quantity quantity = by_T ? Quantity::temperature : Quantity::pressure;
    for (double x : given)
        if (!rows.add("", {{by_T ? 0 : 1, units.from_library(quantity, x)}},
                      [&] { return row(x); }))
            break;
    const int code = rows.finish(head);
    if (transport) transport->tell(head);
    if (published)
        for (std::string const& line :
             published->lay_beside(table, by_T ? "T" : "p", quantities(), units))
            head.summary.push_back(line);
    plot.show(plot ? picture(fluid, table, by_T ? "T" : "p") : Picture(), head, table, options.style);
    return code;
}
}  // namespace

void add_saturation(Program& program) {
    auto saturation = std::make_shared<SaturationCommand>();
    Command command = program.add("saturation", "vapour-liquid equilibrium of a substance",
                                  [saturation] { return saturation->run(); });
    saturation->options.add_fluid(command);
    command
        .value("--T", saturation->T, "temperatures: 300 or 300,310 or first:last:step",
               {.type = "VALUES"})
        .value("--p", saturation->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--compare", saturation->compare,
               "published points: a CSV file with columns such as T/K, p/MPa, rhoL/(kg/m3)",
               {.type = "FILE"})
        .flag("--all", saturation->all, "more columns: volumes, Z, phi, h, s, cp, viscosity, conductivity of both phases, "
              "surface tension");
    saturation->file.add_to(command);
    saturation->plot.add_to(command);
    saturation->options.add_reference(command);
    saturation->options.add_units(command);
    saturation->options.add_output(command);
    command.examples(
        R"(  corvane saturation PR CO2 --T 220:300:10
  corvane saturation PR water --p 1,5,10 --unit-p bar --unit-T C --mass --all
  corvane saturation PR CO2 --compare points.csv)");
}

}  // namespace cli
