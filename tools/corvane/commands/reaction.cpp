// corvane reaction: equilibrium constants among ideal gases.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/catalogue/reaction.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace cli {
namespace {
struct ReactionCommand {
    Options options;
    std::string reaction, T;

    int run();
};

int ReactionCommand::run() {
    options.begin();
    Units const& u = options.units;
    for (Quantity quantity : {Quantity::energy, Quantity::entropy})
        if (u.needs_mass(quantity)) throw Misuse("a reaction has no mass: units per mole alone");
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, u);
    const corvane::Reaction known(reaction, entered_home());
    Heading head;
    head.command = "reaction";
    head.fields = {{"reaction", reaction}};
    head.remarks.emplace_back(
        "ideal gases at 0.1 MPa: K is the product of (p_i/0.1 MPa)^nu_i, -RT ln K = dG");
    for (auto const& s : known.species()) {
        head.remarks.push_back(fmt::format(
            "{} {} ({}): H {}, S {} at 298.15 K{}; heat capacities from {} to {}", shortest(s.nu),
            s.substance, s.formula, u.text(Quantity::energy, s.H0), u.text(Quantity::entropy, s.S0),
            s.estimated ? ", from the liquid's by " + s.equation : "",
            u.text(Quantity::temperature, s.T_min), u.text(Quantity::temperature, s.T_max)));
        list(head, "species").push_back({{"substance", s.substance}, {"formula", s.formula},
                                         {"nu", s.nu}, {"H0", s.H0}, {"S0", s.S0}});
    }
    Table table;
    table.columns = {{"T", u.name(Quantity::temperature), "temperature", true},
                     {"K", "", "equilibrium constant"},
                     {"lnK", "", "its logarithm"},
                     {"dG", u.name(Quantity::energy), "Gibbs energy of reaction"},
                     {"dH", u.name(Quantity::energy), "enthalpy of reaction"},
                     {"dS", u.name(Quantity::entropy), "entropy of reaction"},
                     {"dcp", u.name(Quantity::entropy), "difference of heat capacities"}};
    Rows rows("reaction", table, temperatures.size());
    for (double T_ : temperatures)
        if (!rows.add("at T = " + u.text(Quantity::temperature, T_),
                      {{0, u.from_library(Quantity::temperature, T_)}}, [&] {
                          const corvane::ReactionState r = known.at(T_);
                          return Row{{u.from_library(Quantity::temperature, T_), std::exp(r.lnK),
                                      r.lnK, u.from_library(Quantity::energy, r.dG),
                                      u.from_library(Quantity::energy, r.dH),
                                      u.from_library(Quantity::entropy, r.dS),
                                      u.from_library(Quantity::entropy, r.dcp)},
                                     r.extrapolated ? "extrapolated: beyond the heat capacities" : ""};
                      }))
            break;
    return rows.write(head, options.style);
}
}  // namespace

void add_reaction(Program& program) {
    auto reaction = std::make_shared<ReactionCommand>();
    Command command = program.add("reaction", "equilibrium constants of a reaction among ideal gases",
                                  [reaction] { return reaction->run(); });
    command
        .positional("REACTION", reaction->reaction,
                    "in quotation marks: \"N2 + 3 H2 = 2 NH3\"; names, formulas, CAS numbers", true)
        .value("--T", reaction->T, "temperatures: 300 or 300,310 or first:last:step",
               {.required = true, .type = "VALUES"});
    reaction->options.add_units(command);
    reaction->options.add_output(command);
    command.examples(
        R"(  corvane reaction "N2 + 3 H2 = 2 NH3" --T 700
  corvane reaction "CO + H2O = CO2 + H2" --T 500:1000:100
  corvane reaction "ethanol = ethylene + water" --T 400 --unit-h kJ/mol)");
}

}  // namespace cli
