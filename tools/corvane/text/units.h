// The units chosen for one run.
#pragma once

#include <corvane/text/units.h>

#include <string>

namespace cli {

using corvane::text::Conversion;
using corvane::text::conversion;
using corvane::text::Quantity;
using corvane::text::unit_names;

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
    /// Of a file's column: in the unit that it names, or else in the one chosen.
    /// @throws Failure an unknown unit
    Conversion of_column(Quantity quantity, std::string const& unit, std::string const& path,
                         std::string const& heading) const;
    double to_library(Quantity q, double x) const { return conversion(q).to_library(x); }
    double from_library(Quantity q, double x) const { return conversion(q).from_library(x); }
    /// "300 K": a library value in the chosen unit, for messages.
    std::string text(Quantity quantity, double x) const;
};

}  // namespace cli
