#include <tools/corvane/errors.h>
#include <tools/corvane/home.h>
#include <tools/corvane/options.h>

#include <CLI/CLI.hpp>

namespace cli {

void Options::add_output(CLI::App& command) {
    auto* as_csv = command.add_flag("--csv", csv, "comma-separated values");
    command.add_flag("--json", json, "JSON, with all digits")->excludes(as_csv);
    command.add_flag("--full", style.full, "17 digits, so that output can be input again");
    command.add_flag("--no-heading", bare,
                     "leave out the lines that say where the numbers come from");
    command.add_option("--data", data, "data home: the directory that holds CorvaneS")
        ->type_name("DIR");
}

void Options::add_units(CLI::App& command) {
    command.add_option("--unit-T", units.temperature, "of temperatures in and out: K, C")
        ->type_name("UNIT")
        ->check(CLI::IsMember(unit_names(Quantity::temperature)).description(""));
    command
        .add_option("--unit-p", units.pressure, "of pressures in and out: MPa, kPa, bar, atm, Pa")
        ->type_name("UNIT")
        ->check(CLI::IsMember(unit_names(Quantity::pressure)).description(""));
    command
        .add_option("--unit-rho", units.density,
                    "of densities in and out: mol/cm3, mol/dm3, mol/m3, kg/m3, g/cm3")
        ->type_name("UNIT")
        ->check(CLI::IsMember(unit_names(Quantity::density)).description(""));
    auto* per_mole = command.add_flag("--molar", molar, "J/mol, mol/cm3 (the default)");
    command.add_flag("--mass", units.mass, "kJ/kg, kg/m3")->excludes(per_mole);
}

void Options::add_fluid(CLI::App& command) {
    command.add_option("EOS", fluid.eos, "equation of state: PR, SRK ... (corvane list)")
        ->required();
    command
        .add_option("SUBSTANCE", fluid.substance,
                    "name, synonym, sum formula or CAS number: carbon_dioxide, CO2, 124-38-9")
        ->required();
    command.add_option("--set", fluid.set, "number of the parameter set (default: 1 or the first)")
        ->type_name("N")
        ->check(CLI::PositiveNumber.description(""));
}

void Options::begin() {
    style.format = json ? Format::json : csv ? Format::csv : Format::text;
    style.heading = !bare;
    enter_data_home(data);
}

Fluid Options::open() {
    begin();
    Fluid result = open_fluid(fluid);
    units.M = result.model->M();
    for (Quantity quantity : {Quantity::density, Quantity::energy})
        if (units.needs_mass(quantity) && !(units.M > 0.0))
            throw Failure("the molar mass of " + result.name() + " is not known");
    return result;
}

}  // namespace cli
