// Units in which a person gives and gets quantities. The library works in K, MPa, mol/cm³, J/mol.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::text {

enum class Quantity {
    ratio,  // no unit
    temperature,
    pressure,
    density,
    volume,
    energy,
    entropy,  // and heat capacity
    speed,
    viscosity,
    compressibility,  // 1/pressure
    expansivity,      // 1/temperature
    joule_thomson     // temperature/pressure
};

/// library value = scale·value + shift.
struct Conversion {
    double scale = 1.0, shift = 0.0;
    double to_library(double x) const { return scale * x + shift; }
    double from_library(double x) const { return (x - shift) / scale; }
};

/// The one spelling in unit_names of those that mean the same: "°C" and "degC" are C, "kg/m³" and
/// "kg/m^3" kg/m3, "µPa·s" and "uPa.s" uPa s. Degrees, exponents and micro may stand in Latin-1, as
/// spreadsheets save them.
std::string unit_spelling(std::string const& name);

/// The conversion of a named unit of a quantity ("bar", "kg/m3"), or nothing if there is no such
/// unit. Units with mass need the molar mass M in g/mol; with M not above 0 they are unknown.
std::optional<Conversion> conversion(Quantity quantity, std::string_view unit, double M);

/// Whether a unit, written as in unit_names, needs the molar mass.
bool needs_mass(Quantity quantity, std::string_view unit);

/// The names of a quantity's units, the library's own first.
std::vector<std::string> unit_names(Quantity quantity);

}  // namespace corvane::text
