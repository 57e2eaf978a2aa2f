#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/units.h>

#include <fmt/format.h>

namespace cli {
namespace {
/// The unit of differences of temperature: "K", "F", "R".
std::string difference(std::string const& temperature) {
    return temperature == "F" || temperature == "R" ? temperature : "K";
}
}  // namespace

std::string Units::name(Quantity quantity) const {
    const auto chosen = [&](std::string const& own, char const* molar, char const* per_mass) {
        return !own.empty() ? own : std::string(mass ? per_mass : molar);
    };
    switch (quantity) {
        case Quantity::temperature:
            return chosen(temperature, "K", "K");
        case Quantity::pressure:
            return chosen(pressure, "MPa", "MPa");
        case Quantity::density:
            return chosen(density, "mol/cm3", "kg/m3");
        case Quantity::volume:
            return chosen(volume, "cm3/mol", "cm3/g");
        case Quantity::energy:
            return chosen(energy, "J/mol", "kJ/kg");
        case Quantity::entropy:
            return chosen(entropy, "J/(mol K)", "kJ/(kg K)");
        case Quantity::speed:
            return chosen(speed, "m/s", "m/s");
        case Quantity::viscosity:
            return chosen(viscosity, "uPa s", "uPa s");
        case Quantity::compressibility:
            return "1/" + name(Quantity::pressure);
        case Quantity::expansivity:
            return "1/" + difference(temperature);
        case Quantity::joule_thomson:
            return difference(temperature) + '/' + name(Quantity::pressure);
        case Quantity::ratio:
            break;
    }
    return "";
}

void Units::preset(std::string const& name) {
    const auto set = [](std::string& unit, char const* value) {
        if (unit.empty()) unit = value;
    };
    if (name == "mass") {
        mass = true;
    } else if (name == "bar") {
        mass = true;
        set(temperature, "C");
        set(pressure, "bar");
        set(volume, "m3/kg");
    } else if (name == "us") {
        mass = true;
        set(temperature, "F");
        set(pressure, "psi");
        set(density, "lb/ft3");
        set(volume, "ft3/lb");
        set(energy, "BTU/lb");
        set(entropy, "BTU/(lb R)");
        set(speed, "ft/s");
        set(viscosity, "cP");
    } else if (name == "si") {
        set(pressure, "Pa");
        set(density, mass ? "kg/m3" : "mol/m3");
        set(volume, mass ? "m3/kg" : "m3/mol");
        set(energy, mass ? "J/kg" : "J/mol");
        set(entropy, mass ? "J/(kg K)" : "J/(mol K)");
        set(viscosity, "Pa s");
    }
}

bool Units::needs_mass(Quantity quantity) const {
    return corvane::text::needs_mass(quantity, name(quantity));
}

Conversion Units::conversion(Quantity quantity) const {
    const std::string unit = name(quantity);
    if (const auto known = cli::conversion(quantity, unit, M)) return *known;
    throw Failure(fmt::format("the unit {} needs the molar mass, which is not known", unit));
}

Conversion Units::of_column(Quantity quantity, std::string const& unit, std::string const& path,
                            std::string const& heading) const {
    if (unit.empty()) return conversion(quantity);
    if (const auto known = cli::conversion(quantity, unit, M)) return *known;
    throw Failure(fmt::format("{}: column {}: unknown unit '{}'{}", path, heading, unit,
                              M > 0.0 ? "" : ", or one that needs the molar mass"));
}

std::string Units::text(Quantity quantity, double x) const {
    const std::string unit = name(quantity);
    // Ten digits: a converted 26.85 °C is shown as it was given.
    return fmt::format("{:.10g}{}{}", from_library(quantity, x), unit.empty() ? "" : " ", unit);
}

}  // namespace cli
