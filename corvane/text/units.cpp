#include <corvane/text/units.h>

#include <cmath>
#include <limits>
#include <utility>

namespace corvane::text {
namespace {
struct Unit {
    Quantity quantity;
    std::string_view name;
    double scale, shift = 0.0;
    int mass = 0;  // power of the molar mass [g/mol] in the scale
};

// Exact by definition: 1 lb = 453.59237 g, 1 ft = 0.3048 m, 1 lbf/in² with g = 9.80665 m/s²,
// 1 atm = 101325 Pa = 760 torr, 1 BTU (international table) = 1055.05585262 J, 1 cal
// (thermochemical) = 4.184 J; the conventional millimetre of mercury is 133.322387415 Pa.
constexpr double kPound = 453.59237, kCubicFoot = 0.3048 * 0.3048 * 0.3048 * 1e6;  // g, cm³
constexpr double kBtu = 1055.05585262, kCal = 4.184;                              // J

// The first unit of a quantity is the library's.
constexpr Unit kUnits[] = {
    {Quantity::ratio, "", 1.0},
    {Quantity::temperature, "K", 1.0},
    {Quantity::temperature, "C", 1.0, 273.15},
    {Quantity::temperature, "F", 5.0 / 9.0, 459.67 * 5.0 / 9.0},
    {Quantity::temperature, "R", 5.0 / 9.0},
    {Quantity::pressure, "MPa", 1.0},
    {Quantity::pressure, "kPa", 1e-3},
    {Quantity::pressure, "bar", 0.1},
    {Quantity::pressure, "mbar", 1e-4},
    {Quantity::pressure, "hPa", 1e-4},
    {Quantity::pressure, "atm", 0.101325},
    {Quantity::pressure, "psi", 1e-3 * 0.45359237 * 9.80665 / (0.0254 * 0.0254) * 1e-3},
    {Quantity::pressure, "torr", 0.101325 / 760.0},
    {Quantity::pressure, "mmHg", 133.322387415e-6},
    {Quantity::pressure, "kgf/cm2", 0.0980665},
    {Quantity::pressure, "Pa", 1e-6},
    {Quantity::density, "mol/cm3", 1.0},
    {Quantity::density, "mol/dm3", 1e-3},
    {Quantity::density, "mol/L", 1e-3},
    {Quantity::density, "kmol/m3", 1e-3},
    {Quantity::density, "mol/m3", 1e-6},
    {Quantity::density, "kg/m3", 1e-3, 0.0, -1},
    {Quantity::density, "g/L", 1e-3, 0.0, -1},
    {Quantity::density, "g/cm3", 1.0, 0.0, -1},
    {Quantity::density, "kg/L", 1.0, 0.0, -1},
    {Quantity::density, "lb/ft3", kPound / kCubicFoot, 0.0, -1},
    {Quantity::volume, "cm3/mol", 1.0},
    {Quantity::volume, "dm3/mol", 1e3},
    {Quantity::volume, "L/mol", 1e3},
    {Quantity::volume, "m3/kmol", 1e3},
    {Quantity::volume, "m3/mol", 1e6},
    {Quantity::volume, "cm3/g", 1.0, 0.0, 1},
    {Quantity::volume, "L/kg", 1.0, 0.0, 1},
    {Quantity::volume, "m3/kg", 1e3, 0.0, 1},
    {Quantity::volume, "ft3/lb", kCubicFoot / kPound, 0.0, 1},
    {Quantity::energy, "J/mol", 1.0},
    {Quantity::energy, "kJ/mol", 1e3},
    {Quantity::energy, "cal/mol", kCal},
    {Quantity::energy, "kcal/mol", 1e3 * kCal},
    {Quantity::energy, "kJ/kg", 1.0, 0.0, 1},
    {Quantity::energy, "J/g", 1.0, 0.0, 1},
    {Quantity::energy, "J/kg", 1e-3, 0.0, 1},
    {Quantity::energy, "kcal/kg", kCal, 0.0, 1},
    {Quantity::energy, "BTU/lb", kBtu / kPound, 0.0, 1},
    {Quantity::entropy, "J/(mol K)", 1.0},
    {Quantity::entropy, "cal/(mol K)", kCal},
    {Quantity::entropy, "kJ/(kg K)", 1.0, 0.0, 1},
    {Quantity::entropy, "J/(g K)", 1.0, 0.0, 1},
    {Quantity::entropy, "J/(kg K)", 1e-3, 0.0, 1},
    {Quantity::entropy, "kcal/(kg K)", kCal, 0.0, 1},
    {Quantity::entropy, "BTU/(lb R)", 1.8 * kBtu / kPound, 0.0, 1},
    {Quantity::speed, "m/s", 1.0},
    {Quantity::speed, "ft/s", 0.3048},
    {Quantity::viscosity, "uPa s", 1.0},
    {Quantity::viscosity, "mPa s", 1e3},
    {Quantity::viscosity, "Pa s", 1e6},
    {Quantity::viscosity, "cP", 1e3},
    {Quantity::viscosity, "P", 1e5},
};

Unit const* find(Quantity quantity, std::string_view name) {
    for (Unit const& unit : kUnits)
        if (unit.quantity == quantity && unit.name == name) return &unit;
    return nullptr;
}

}  // namespace

std::string unit_spelling(std::string const& given) {
    std::string_view name = given;
    constexpr std::pair<std::string_view, std::string_view> kSame[] = {
        {"\u00b0", ""},  {"deg", ""},     {"^", ""},       {"\u00b2", "2"}, {"\u00b3", "3"},
        {"\u00b5", "u"}, {"\u03bc", "u"}, {"\u00b7", " "}, {"*", " "},      {".", " "},
        {"\xb0", ""},    {"\xb2", "2"},   {"\xb3", "3"},   {"\xb5", "u"},   {"\xb7", " "}};
    std::string text;
    while (!name.empty()) {
        bool found = false;
        for (auto const& [from, to] : kSame)
            if (!found && name.starts_with(from)) {
                text += to;
                name.remove_prefix(from.size());
                found = true;
            }
        if (found) continue;
        text += name.front();
        name.remove_prefix(1);
    }
    return text;
}

std::optional<Conversion> conversion(Quantity quantity, std::string_view given, double M) {
    Unit const* unit = find(quantity, given);
    if (!unit) {  // a compound, or spelled otherwise
        const std::string unit_name = unit_spelling(std::string(given));
        std::string_view name = unit_name;
        const auto of = [&](Quantity other, std::string_view part) {
            const auto known = conversion(other, part, M);
            return known ? known->scale : std::numeric_limits<double>::quiet_NaN();
        };
        double scale = 0.0;
        if (quantity == Quantity::compressibility && name.starts_with("1/"))
            scale = 1.0 / of(Quantity::pressure, name.substr(2));
        else if (quantity == Quantity::expansivity && name.starts_with("1/"))
            scale = 1.0 / of(Quantity::temperature, name.substr(2));
        else if (quantity == Quantity::joule_thomson && name.substr(1, 1) == "/")
            scale = of(Quantity::temperature, name.substr(0, 1)) /
                    of(Quantity::pressure, name.substr(2));
        if (scale != 0.0)
            return std::isfinite(scale) ? std::optional(Conversion{scale}) : std::nullopt;
        unit = find(quantity, name);
    }
    if (!unit || (unit->mass != 0 && !(M > 0.0))) return std::nullopt;
    const double scale = unit->mass == 0  ? unit->scale
                         : unit->mass > 0 ? unit->scale * M
                                          : unit->scale / M;
    return Conversion{scale, unit->shift};
}

bool needs_mass(Quantity quantity, std::string_view unit) {
    Unit const* known = find(quantity, unit);
    return known && known->mass != 0;
}

std::vector<std::string> unit_names(Quantity quantity) {
    std::vector<std::string> names;
    for (Unit const& unit : kUnits)
        if (unit.quantity == quantity) names.emplace_back(unit.name);
    return names;
}

}  // namespace corvane::text
