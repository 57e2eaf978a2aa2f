// corvane state: all properties of states.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cli {
namespace {
struct StateCommand {
    Options options;
    std::string T, p, rho, phase = "stable", reference = "table";

    int run();

  private:
    struct Point {
        char const* name;
        State state;
        std::string note;
        double amount = 1.0;  // mole fraction of the whole, where the density is given
    };
    bool by_p() const { return rho.empty(); }
    std::vector<Point> at_pressure(Fluid const& fluid, double T_, double p_) const;
    std::vector<Point> at_density(Fluid const& fluid, double T_, double rho_) const;
    std::string set_reference(Fluid& fluid) const;
    std::vector<Property const*> shown(Fluid const& fluid) const;
    std::vector<Column> columns(Fluid const& fluid, bool several) const;
    Row row(Fluid const& fluid, Point const& point) const;
};

std::vector<StateCommand::Point> StateCommand::at_pressure(Fluid const& fluid, double T_,
                                                           double p_) const {
    Model1 const& model = *fluid.model;
    const Roots roots = density_roots(model, T_, p_);
    const auto point = [&](char const* name, double rho_) {
        const bool stable = rho_ == roots.stable;
        return Point{
            name,
            {&model, T_, p_, rho_},
            stable ? "" : fmt::format("metastable: the stable phase is {}", roots.stable_name)};
    };
    if (phase == "stable" || roots.fluid) return {point(roots.stable_name, roots.stable)};
    std::vector<Point> points;
    if (roots.liquid && phase != "vapour") points.push_back(point("liquid", *roots.liquid));
    if (roots.vapour && phase != "liquid") points.push_back(point("vapour", *roots.vapour));
    if (points.empty()) throw ThException(phase == "liquid" ? th_gas_only : th_liquid_only);
    if (phase == "both" && points.size() == 1)
        add_note(points.front().note, "the only phase at this pressure");
    return points;
}

/// What is stable at this density of the whole, or the one phase of this density if that is wanted.
std::vector<StateCommand::Point> StateCommand::at_density(Fluid const& fluid, double T_,
                                                          double rho_) const {
    Model1 const& model = *fluid.model;
    Units const& units = options.units;
    const State state{&model, T_, model.Z(rho_, T_) * rho_ * R * T_, rho_};
    if (!std::isfinite(state.p)) throw ThException(th_out_of_range);
    const bool rises = model.pV(rho_, T_) > 0.0;
    const Saturated both = saturated(model, T_);
    const bool within = both.found && rho_ > both.vapour && rho_ < both.liquid;
    if (phase == "single") {
        std::string note = rises ? "" : "mechanically unstable: the pressure falls with density";
        if (within)
            note = fmt::format("{}, between vapour of {} and liquid of {} at {}",
                               rises ? "metastable" : "mechanically unstable",
                               units.text(Quantity::density, both.vapour),
                               units.text(Quantity::density, both.liquid),
                               units.text(Quantity::pressure, both.p));
        return {{rises ? phase_name(model, T_, rho_) : "unstable", state, note}};
    }
    if (within) {
        // 1/rho = a/rhoL + (1 − a)/rhoV
        const double a =
            (1.0 / both.vapour - 1.0 / rho_) / (1.0 / both.vapour - 1.0 / both.liquid);
        return {{"liquid", {&model, T_, both.p, both.liquid}, "", a},
                {"vapour", {&model, T_, both.p, both.vapour}, "", 1.0 - a}};
    }
    if (!rises || !(state.p > 0.0))
        throw Failure(fmt::format("no stable phase has this density: {}",
                                  rises ? "the pressure is not above zero"
                                        : "the pressure falls with density"));
    return {{phase_name(model, T_, rho_), state,
             both.found || T_ >= model.Tcrit()
                 ? ""
                 : "no saturation state was found: whether it splits is not known"}};
}

/// Moves the reference state if asked to; returns the remark on what holds.
std::string StateCommand::set_reference(Fluid& fluid) const {
    if (!fluid.ideal) {
        if (reference == "formation")
            throw Failure(fmt::format("{}: --reference formation needs ideal-gas data: {}",
                                      fluid.name(), describe(ThException(th_no_ideal))));
        return "no ideal-gas heat capacities for this substance: total properties are left out";
    }
    if (reference == "table")
        return fmt::format("reference state: u = 0 and s = 0 for the ideal gas at {} and 1 mol/cm3",
                           options.units.text(Quantity::temperature, fluid.ideal->first));
    asking(fmt::format("enthalpy and entropy of formation CorvaneS/reaction/{}",
                       fluid.model->name()),
           [&] { fluid.model->load_thchem(); });
    return "reference state: enthalpy of formation and standard entropy at 0.1 MPa";
}

std::vector<Property const*> StateCommand::shown(Fluid const& fluid) const {
    std::vector<Property const*> result;
    for (Property const& property : properties()) {
        if (property.needs != Needs::nothing && !fluid.ideal) continue;
        if (property.needs == Needs::ideal_gas_and_mass && !(fluid.model->M() > 0.0)) continue;
        result.push_back(&property);
    }
    return result;
}

std::vector<Column> StateCommand::columns(Fluid const& fluid, bool several) const {
    std::vector<Column> result = {{"phase", "", ""}};
    if (!by_p())
        result.push_back({"amount", "", "mole fraction of the whole that is in this phase"});
    for (Property const* property : shown(fluid)) {
        result.push_back(
            {property->name, options.units.name(property->quantity), property->text});
        const std::string name = property->name;
        result.back().given = several && (name == "T" || (name == "p" && by_p()));
    }
    return result;
}

Row StateCommand::row(Fluid const& fluid, Point const& point) const {
    Row result{{std::string(point.name)}, point.note};
    if (!by_p()) result.cells.emplace_back(point.amount);
    for (Property const* property : shown(fluid))
        result.cells.emplace_back(
            options.units.from_library(property->quantity, property->value(point.state)));
    add_note(result.note, extrapolated(fluid, point.state.T, point.state.p, true, options.units));
    return result;
}

int StateCommand::run() {
    if (p.empty() == rho.empty()) throw Misuse("give either --p or --rho");
    if (!by_p() && phase != "stable" && phase != "single")
        throw Misuse("--rho goes with --phase stable or single");
    if (by_p() && phase == "single") throw Misuse("--phase single goes with --rho");
    Fluid fluid = options.open();
    Units const& units = options.units;
    const Quantity quantity = by_p() ? Quantity::pressure : Quantity::density;
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto values =
        positive_points(by_p() ? p : rho, by_p() ? "--p" : "--rho", quantity, units);
    Heading head = heading("state", fluid, units);
    head.remarks.push_back(set_reference(fluid));
    const std::size_t asked = temperatures.size() * values.size();
    Table table{columns(fluid, asked > 1), {}};
    const auto column = [&](std::string const& name) {
        const auto is = [&](Column const& one) { return one.name == name; };
        return static_cast<std::size_t>(
            std::find_if(table.columns.begin(), table.columns.end(), is) - table.columns.begin());
    };
    char const* const symbol = by_p() ? "p" : "rho";
    Rows rows("state", table, asked, "states");
    rows.each(temperatures, values, [&](double T_, double value) {
        return rows.add_all(
            fmt::format("{} at T = {}, {} = {}", fluid.name(),
                        units.text(Quantity::temperature, T_), symbol,
                        units.text(quantity, value)),
            {{column("T"), units.from_library(Quantity::temperature, T_)},
             {column(symbol), units.from_library(quantity, value)}},
            [&] {
                std::vector<Row> result;
                for (Point const& point :
                     by_p() ? at_pressure(fluid, T_, value) : at_density(fluid, T_, value))
                    result.push_back(row(fluid, point));
                return result;
            });
    });
    const int code = rows.finish(head);
    Style style = options.style;
    style.upright = asked == 1;
    write(head, table, style);
    return code;
}
}  // namespace

void add_state(Program& program) {
    auto state = std::make_shared<StateCommand>();
    Command command =
        program.add("state", "all properties of states", [state] { return state->run(); });
    state->options.add_fluid(command);
    command
        .value("--T", state->T, "temperatures: 300 or 300,310 or first:last:step",
               {.required = true, .type = "VALUES"})
        .value("--p", state->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--rho", state->rho, "densities: of one phase or of two together",
               {.type = "VALUES"})
        .excludes("--rho", "--p")
        .value("--phase", state->phase,
               "at a pressure: stable (default), liquid, vapour, both; at a density: stable (two "
               "phases where they are), single (one phase, even if it is not stable)",
               {.one_of = {"stable", "liquid", "vapour", "both", "single"}, .type = "PHASE"})
        .value("--reference", state->reference,
               "zero of energies and entropies: table (of the ideal-gas data, default), formation",
               {.one_of = {"table", "formation"}, .type = "STATE"});
    state->options.add_units(command);
    state->options.add_output(command);
    command.examples(
        R"(  corvane state PR propane --T 300 --p 1
  corvane state PR CO2 --T -20 --p 20 --unit-T C --unit-p bar --mass
  corvane state PR propane --T 300 --p 0.9 --phase both
  corvane state PR propane --T 300 --rho 0.011 --json
  corvane state PR propane --T 300:400:10 --p 1 --csv)");
}

}  // namespace cli
