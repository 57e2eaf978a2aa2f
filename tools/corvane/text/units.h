// Units in which a person gives and gets quantities. The library works in K, MPa, mol/cm³, J/mol.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

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

/// The conversion of a named unit of a quantity ("bar", "kg/m3"), or nothing if there is no such
/// unit. Units with mass need the molar mass M in g/mol; with M not above 0 they are unknown.
std::optional<Conversion> conversion(Quantity quantity, std::string_view unit, double M);

/// The names of a quantity's units, the library's own first.
std::vector<std::string> unit_names(Quantity quantity);

/// The units chosen for one run.
class Units {
  public:
    // Empty: the library's, or that per mass where `mass` is set.
    std::string temperature, pressure, density, volume, energy, entropy, speed, viscosity;
    bool mass = false;  ///< quantities of matter per mass instead of per mole
    double M = 0.0;     ///< g/mol, 0 while not known

    /// Fills what is empty: "si" (K, Pa, mol/m3 …), "bar" (C, bar, kg/m3, kJ/kg), "us" (F, psi,
    /// lb/ft3, BTU/lb), "mass" (K, MPa, kg/m3, kJ/kg).
    void preset(std::string const& name);

    std::string name(Quantity quantity) const;
    /// Whether the unit chosen for the quantity needs the molar mass.
    bool needs_mass(Quantity quantity) const;
    /// @throws Failure a unit with mass, and no molar mass
    Conversion conversion(Quantity quantity) const;
    double to_library(Quantity q, double x) const { return conversion(q).to_library(x); }
    double from_library(Quantity q, double x) const { return conversion(q).from_library(x); }
    /// "300 K": a library value in the chosen unit, for messages.
    std::string text(Quantity quantity, double x) const;
};

}  // namespace cli
