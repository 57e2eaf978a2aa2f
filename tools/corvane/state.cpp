// corvane state: all properties of one state.
#include <tools/corvane/commands.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/options.h>
#include <tools/corvane/properties.h>

#include <fmt/format.h>

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
    };
    double read(std::string const& text, char const* option, Quantity quantity) const;
    std::string asked(double given) const;
    std::vector<Point> at_pressure(Fluid const& fluid, double T_, double p_) const;
    Point at_density(Fluid const& fluid, double T_, double rho_) const;
    std::string set_reference(Fluid& fluid) const;
    Row row(Fluid const& fluid, Point const& point, Table& table) const;
};

/// An option's value in library units, which must be positive.
double StateCommand::read(std::string const& text, char const* option, Quantity quantity) const {
    const double x = options.units.to_library(quantity, number(text, option));
    if (!(x > 0.0))
        throw Misuse(
            fmt::format("{} {} {} is not above zero", option, text, options.units.name(quantity)));
    return x;
}

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

StateCommand::Point StateCommand::at_density(Fluid const& fluid, double T_, double rho_) const {
    Model1 const& model = *fluid.model;
    Point point{"", {&model, T_, model.Z(rho_, T_) * rho_ * R * T_, rho_}, ""};
    if (!std::isfinite(point.state.p)) throw ThException(th_out_of_range);
    point.note = two_phase_note(model, T_, rho_, options.units, point.name);
    return point;
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
    asking(fmt::format("enthalpy and entropy of formation of {}", fluid.model->name()),
           [&] { fluid.model->load_thchem(); });
    return "reference state: enthalpy of formation and standard entropy at 0.1 MPa";
}

Row StateCommand::row(Fluid const& fluid, Point const& point, Table& table) const {
    const bool first = table.columns.empty();
    if (first) table.columns.push_back({"phase", "", ""});
    Row result{{std::string(point.name)}, point.note};
    for (Property const& property : properties()) {
        if (property.needs != Needs::nothing && !fluid.ideal) continue;
        if (property.needs == Needs::ideal_gas_and_mass && !(fluid.model->M() > 0.0)) continue;
        if (first)
            table.columns.push_back(
                {property.name, options.units.name(property.quantity), property.text});
        result.cells.emplace_back(
            options.units.from_library(property.quantity, property.value(point.state)));
    }
    add_note(result.note, extrapolated(fluid, point.state.T, point.state.p, true, options.units));
    return result;
}

int StateCommand::run() {
    if (p.empty() == rho.empty()) throw Misuse("give either --p or --rho");
    if (!rho.empty() && phase != "stable")
        throw Misuse("--phase goes with --p: a density is one state");
    Fluid fluid = options.open();
    Units const& units = options.units;
    const double T_ = read(T, "--T", Quantity::temperature);
    const Quantity quantity = p.empty() ? Quantity::density : Quantity::pressure;
    const double given = p.empty() ? read(rho, "--rho", quantity) : read(p, "--p", quantity);
    Heading head = heading("state", fluid, units);
    head.remarks.push_back(set_reference(fluid));

    const std::string what =
        fmt::format("{} at T = {}, {} = {}", fluid.name(), units.text(Quantity::temperature, T_),
                    p.empty() ? "rho" : "p", units.text(quantity, given));
    Table table;
    asking(what, [&] {
        const auto points = p.empty() ? std::vector<Point>{at_density(fluid, T_, given)}
                                      : at_pressure(fluid, T_, given);
        for (Point const& point : points) table.rows.push_back(row(fluid, point, table));
    });
    Style style = options.style;
    style.upright = true;
    write(head, table, style);
    return 0;
}
}  // namespace

void add_state(Program& program) {
    auto state = std::make_shared<StateCommand>();
    Command command =
        program.add("state", "all properties of one state", [state] { return state->run(); });
    state->options.add_fluid(command);
    command.value("--T", state->T, "temperature", {.required = true})
        .value("--p", state->p, "pressure")
        .value("--rho", state->rho, "density")
        .excludes("--rho", "--p")
        .value("--phase", state->phase,
               "root at a given pressure: stable (default), liquid, vapour, both",
               {.one_of = {"stable", "liquid", "vapour", "both"}, .type = "PHASE"})
        .value("--reference", state->reference,
               "zero of energies and entropies: table (of the ideal-gas data, default), formation",
               {.one_of = {"table", "formation"}, .type = "STATE"});
    state->options.add_units(command);
    state->options.add_output(command);
    command.examples(
        R"(  corvane state PR propane --T 300 --p 1
  corvane state PR CO2 --T -20 --p 20 --unit-T C --unit-p bar --mass
  corvane state PR propane --T 300 --p 0.9 --phase both
  corvane state PR propane --T 300 --rho 0.011 --json)");
}

}  // namespace cli
