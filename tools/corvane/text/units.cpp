#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/units.h>

#include <fmt/format.h>

#include <cstdlib>

namespace cli {
namespace {
struct Unit {
    Quantity quantity;
    std::string_view name;
    double scale, shift = 0.0;
    int mass = 0;  // power of the molar mass [g/mol] in the scale
};

// The first unit of a quantity is the library's.
constexpr Unit kUnits[] = {
    {Quantity::ratio, "", 1.0},
    {Quantity::temperature, "K", 1.0},
    {Quantity::temperature, "C", 1.0, 273.15},
    {Quantity::pressure, "MPa", 1.0},
    {Quantity::pressure, "kPa", 1e-3},
    {Quantity::pressure, "bar", 0.1},
    {Quantity::pressure, "atm", 0.101325},
    {Quantity::pressure, "Pa", 1e-6},
    {Quantity::density, "mol/cm3", 1.0},
    {Quantity::density, "mol/dm3", 1e-3},
    {Quantity::density, "mol/m3", 1e-6},
    {Quantity::density, "kg/m3", 1e-3, 0.0, -1},
    {Quantity::density, "g/cm3", 1.0, 0.0, -1},
    {Quantity::volume, "cm3/mol", 1.0},
    {Quantity::volume, "dm3/mol", 1e3},
    {Quantity::volume, "cm3/g", 1.0, 0.0, 1},
    {Quantity::volume, "m3/kg", 1e3, 0.0, 1},
    {Quantity::energy, "J/mol", 1.0},
    {Quantity::energy, "kJ/mol", 1e3},
    {Quantity::energy, "kJ/kg", 1.0, 0.0, 1},
    {Quantity::energy, "J/g", 1.0, 0.0, 1},
    {Quantity::entropy, "J/(mol K)", 1.0},
    {Quantity::entropy, "kJ/(kg K)", 1.0, 0.0, 1},
    {Quantity::entropy, "J/(g K)", 1.0, 0.0, 1},
    {Quantity::speed, "m/s", 1.0},
    {Quantity::expansivity, "1/K", 1.0},
};

Unit const* find(Quantity quantity, std::string_view name) {
    for (Unit const& unit : kUnits)
        if (unit.quantity == quantity && unit.name == name) return &unit;
    return nullptr;
}
}  // namespace

std::optional<Conversion> conversion(Quantity quantity, std::string_view name, double M) {
    if (quantity == Quantity::compressibility && name.substr(0, 2) == "1/") {
        const auto p = conversion(Quantity::pressure, name.substr(2), M);
        return p ? std::optional(Conversion{1.0 / p->scale}) : std::nullopt;
    }
    if (quantity == Quantity::joule_thomson && name.substr(0, 2) == "K/") {
        const auto p = conversion(Quantity::pressure, name.substr(2), M);
        return p ? std::optional(Conversion{1.0 / p->scale}) : std::nullopt;
    }
    Unit const* unit = find(quantity, name);
    if (!unit || (unit->mass != 0 && !(M > 0.0))) return std::nullopt;
    const double scale = unit->mass == 0  ? unit->scale
                         : unit->mass > 0 ? unit->scale * M
                                          : unit->scale / M;
    return Conversion{scale, unit->shift};
}

std::vector<std::string> unit_names(Quantity quantity) {
    std::vector<std::string> names;
    for (Unit const& unit : kUnits)
        if (unit.quantity == quantity) names.emplace_back(unit.name);
    return names;
}

std::string Units::name(Quantity quantity) const {
    switch (quantity) {
        case Quantity::temperature:
            return temperature;
        case Quantity::pressure:
            return pressure;
        case Quantity::density:
            return !density.empty() ? density : mass ? "kg/m3" : "mol/cm3";
        case Quantity::volume:
            return mass ? "cm3/g" : "cm3/mol";
        case Quantity::energy:
            return mass ? "kJ/kg" : "J/mol";
        case Quantity::entropy:
            return mass ? "kJ/(kg K)" : "J/(mol K)";
        case Quantity::speed:
            return "m/s";
        case Quantity::compressibility:
            return "1/" + pressure;
        case Quantity::expansivity:
            return "1/K";
        case Quantity::joule_thomson:
            return "K/" + pressure;
        case Quantity::ratio:
            break;
    }
    return "";
}

bool Units::needs_mass(Quantity quantity) const {
    Unit const* unit = find(quantity, name(quantity));
    return unit && unit->mass != 0;
}

Conversion Units::with(Quantity quantity) const {
    const std::string unit = name(quantity);
    if (const auto known = conversion(quantity, unit, M)) return *known;
    throw Failure(fmt::format("the unit {} needs the molar mass, which is not known", unit));
}

std::string Units::text(Quantity quantity, double x) const {
    const std::string unit = name(quantity);
    // Ten digits: a converted 26.85 °C is shown as it was given.
    return fmt::format("{:.10g}{}{}", from_library(quantity, x), unit.empty() ? "" : " ", unit);
}

}  // namespace cli
