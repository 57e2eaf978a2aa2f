// What is measured of the melting of a substance.
#pragma once

#include <corvane/core/api.h>

#include <string>

namespace corvane {

/// What is measured of the melting of a substance. 0 is unknown, but for T and h.
struct FusionData {
    double T = 0.0;   ///< triple temperature (or that of melting at normal pressure), K
    double h = 0.0;   ///< enthalpy of fusion at T, J/mol
    double cp = 0.0;  ///< heat capacity of the liquid less that of the solid at T, J/(mol K)
    double v = 0.0;   ///< volume of the solid at T, cm³/mol
    double dv = 0.0;  ///< volume of the liquid less that of the solid at T, cm³/mol
    double T_100 = 0.0;  ///< melting temperature at 100 MPa, K
    double T_min = 0.0;  ///< transition to another solid below T, K
};

/// The row of a substance in "./CorvaneS/fusion.tsv".
/// @throws ThException 1 no such file, or a number in the row is malformed or out of range; 6 no
///     such row
CORVANE_API FusionData load_fusion(std::string const& substance);

}  // namespace corvane
