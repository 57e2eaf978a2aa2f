#include <tools/corvane/input/home.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

namespace cli {

void Options::add_output(Command& command, bool measured_data) {
    command.flag("--csv", csv_, "comma-separated values")
        .flag("--json", json_, "JSON, with all digits")
        .excludes("--json", "--csv")
        .flag("--full", style.full, "17 digits, so that output can be input again")
        .flag("--no-heading", bare_, "leave out the lines on where the numbers come from")
        .value(measured_data ? "--home" : "--home,--data", data_,
               "data home: the directory that holds CorvaneS", {.type = "DIRECTORY"});
}

void Options::add_units(Command& command) {
    const auto unit = [&](char const* name, std::string& value, char const* what, Quantity q) {
        const auto names = unit_names(q);
        const std::string text = std::string(what) + " in and out: " + join(names, ", ");
        command.value(name, value, text.c_str(), {.one_of = names, .type = "UNIT"});
    };
    unit("--unit-T", units.temperature, "of temperatures", Quantity::temperature);
    unit("--unit-p", units.pressure, "of pressures", Quantity::pressure);
    unit("--unit-rho", units.density, "of densities", Quantity::density);
    command.flag("--molar", molar_, "J/mol, mol/cm3 (the default)")
        .flag("--mass", units.mass, "kJ/kg, kg/m3")
        .excludes("--mass", "--molar");
}

void Options::add_fluid(Command& command) {
    command.positional("EOS", fluid.eos, "equation of state: PR, SRK ... (corvane list)", true)
        .positional("SUBSTANCE", fluid.substance,
                    "name, synonym, sum formula or CAS number: carbon_dioxide, CO2, 124-38-9", true)
        .count("--set", fluid.set, "number of the parameter set (default: 1 or the first)");
}

void Options::begin() {
    style.format = json_ ? Format::json : csv_ ? Format::csv : Format::text;
    style.heading = !bare_;
    enter_data_home(data_);
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
