// corvane saturation: vapour-liquid equilibrium along temperatures or pressures.
#include <tools/corvane/commands.h>
#include <tools/corvane/compare.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/options.h>
#include <tools/corvane/rows.h>

#include <corvane/equilibria/ffe1core.h>

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
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

/// Solves point after point, each starting from the last solution, and again from the critical
/// point where that fails.
class March {
  public:
    March(Fluid const& fluid, Units const& units, bool by_T)
        : fluid_(fluid), units_(units), by_T_(by_T) {}

    /// @throws Failure naming the point
    Equilibrium at(double given) {
        Model1 const& model = *fluid_.model;
        if (std::isnan(given))
            throw Failure(fmt::format("a published point without {}", by_T_ ? "T" : "p"));
        const Quantity quantity = by_T_ ? Quantity::temperature : Quantity::pressure;
        const std::string what = fmt::format("{} at {} = {}", fluid_.name(), by_T_ ? "T" : "p",
                                             units_.text(quantity, given));
        const double critical = by_T_ ? model.Tcrit() : model.pcrit();
        if (!(given < critical))
            throw Failure(fmt::format("{} is not below the critical {} {} of the equation", what,
                                      by_T_ ? "temperature" : "pressure",
                                      units_.text(quantity, critical)));
        return asking(what, [&] {
            if (marching_) {
                try {
                    return solve(given, 1);
                } catch (ThException const&) {  // too far from the last point: start afresh
                } catch (MthException const&) {
                }
            }
            marching_ = false;
            Equilibrium e = cold(given, critical);
            marching_ = true;
            return e;
        });
    }

  private:
    /// From the critical point; where that finds no start (steep curves next to it), by a march
    /// from 10 % below the critical point in steps of half the remaining distance.
    Equilibrium cold(double given, double critical) {
        try {
            return solve(given, 0);
        } catch (ThException const& e) {
            if (e.number != th_generic || given < 0.9 * critical) throw;
        }
        double gap = 0.1 * critical;
        solve(critical - gap, 0);
        while (0.5 * gap > critical - given) {
            gap *= 0.5;
            solve(critical - gap, 1);
        }
        return solve(given, 1);
    }

    Equilibrium solve(double given, int cont) {
        Model1 const* model = fluid_.model.get();
        Equilibrium e{model, given, given, 0.0, 0.0};
        if (by_T_)
            memory_.at_T(model, e.T, cont, e.p, e.rhoL, e.rhoV);
        else
            memory_.at_p(model, e.p, cont, e.T, e.rhoL, e.rhoV);
        // What the fit left behind must be an equilibrium of two phases; 1e-8 is far above its
        // rounding and far below anything visible in p.
        double rhoL = 0.0, rhoV = 0.0;
        if (!(std::fabs(maxwell(model, e.p, e.T, rhoL, rhoV)) < 1e-8) || !(e.rhoL > e.rhoV))
            throw ThException(th_generic);
        return e;
    }

    Fluid const& fluid_;
    Units const& units_;
    bool by_T_, marching_ = false;
    corvane::Saturation memory_;
};

struct SaturationCommand {
    Options options;
    std::string T, p, compare;
    bool all = false;

    int run();

  private:
    std::vector<double> read_points() const;
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

int SaturationCommand::run() {
    if ((T.empty() ? 0 : 1) + (p.empty() ? 0 : 1) + (compare.empty() ? 0 : 1) != 1)
        throw Misuse("give one of --T, --p and --compare");
    std::vector<double> given;
    if (compare.empty())
        given = read_points();
    else
        compare = std::filesystem::absolute(compare).string();  // open() changes the directory
    Fluid fluid = options.open();
    Units const& units = options.units;
    std::optional<Published> published;
    if (!compare.empty()) {
        published.emplace(compare, quantities(), units.M);
        if (!published->has("T") && !published->has("p"))
            throw Failure(compare + ": neither a column T nor a column p");
        given = published->column(published->has("T") ? "T" : "p");
    }
    const bool by_T = published ? published->has("T") : p.empty();

    Heading head = heading("saturation", fluid, units);
    if (all && !fluid.ideal)
        head.remarks.push_back(
            "no ideal-gas heat capacities for this substance: total properties are left out");
    if (published && !published->source().empty())
        head.remarks.push_back("published: " + published->source());
    const auto columns = choose(fluid, published);
    Table table;
    for (SaturationColumn const* column : columns)
        table.columns.push_back({column->name, units.name(column->quantity), column->text,
                                 column->name == std::string(by_T ? "T" : "p")});

    March march(fluid, units, by_T);
    Rows rows("saturation", table, given.size());
    const auto row = [&](double x) {
        const Equilibrium e = march.at(x);
        Row result;
        for (SaturationColumn const* column : columns)
            result.cells.emplace_back(units.from_library(column->quantity, column->value(e)));
        result.note = extrapolated(fluid, e.T, e.p, all, units);
        return result;
    };
    const Quantity quantity = by_T ? Quantity::temperature : Quantity::pressure;
    for (double x : given)
        if (!rows.add("", {{by_T ? 0 : 1, units.from_library(quantity, x)}},
                      [&] { return row(x); }))
            break;
    const int code = rows.finish(head);
    if (published)
        for (std::string const& line :
             published->lay_beside(table, by_T ? "T" : "p", quantities(), units))
            head.summary.push_back(line);
    write(head, table, options.style);
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
        .flag("--all", saturation->all, "more columns: volumes, Z, phi, h, s, cp of both phases");
    saturation->options.add_units(command);
    saturation->options.add_output(command);
    command.examples(
        R"(  corvane saturation PR CO2 --T 220:300:10
  corvane saturation PR water --p 1,5,10 --unit-p bar --unit-T C --mass --all
  corvane saturation PR CO2 --compare points.csv)");
}

}  // namespace cli
