// What commands on mixtures share: compositions of binaries, columns and words for their points.
#pragma once

#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/output/rows.h>

#include <corvane/phases/report/certificate.h>

#include <string>
#include <vector>

namespace cli {

/// Mole fractions of a binary, from that of the first component.
Vector<double> binary(double x0);

/// The one mole fraction of an option. @throws Misuse naming it
double mole_fraction(std::string const& text, char const* option);

/// Mole fractions of an option, each from 0 to 1; the end of a rounded range is 1.
/// @throws Misuse naming the option
std::vector<double> mole_fractions(std::string const& text, char const* option);

/// The compositions of --scan NAME=first:last:step of a binary without mole fractions. @throws Misuse
std::vector<Vector<double>> scanned(MixtureFluid const& mixture, std::string const& scan);

/// Adds a column "<prefix>_<component>" for each component.
void add_fractions(std::vector<Column>& columns, MixtureFluid const& mixture, char const* prefix,
                   std::string const& text, bool given = false);
/// Adds the cells.
void add_cells(Row& row, Vector<double> const& x);

/// "PR+vdW1 methane(0.7) propane(0.3) at T = 300 K, p = 1 MPa".
std::string state(MixtureFluid const& mixture, Units const& units, double T, double p);
/// T and p as the first two cells of a row that failed.
Rows::Given given(Units const& units, double T, double p);
/// The same of a bubble or dew point, of columns T, p, x_..., y_...: T or p, and the composition.
Rows::Given given(Units const& units, bool by_T, double value, Vector<double> const& x,
                  bool liquid);

/// Of a picture: "methane + carbon dioxide, PR+vdW1, kij 0.0973", with mole fractions if there are;
/// it says what is estimated.
std::string title(MixtureFluid const& mixture);
std::string title_of_model(MixtureFluid const& mixture);  ///< its part behind the components
/// Of an axis: "p / MPa".
std::string axis(Quantity quantity, Units const& units);

/// How phases are called, the densest (by mass) first: "liquid" or "vapour", by the density reduced
/// with the mean critical volume Σ x_i·vcrit_i of the equation. A single phase is a vapour below
/// 1. Of two, the first is the liquid and the second the vapour, or "liquid2" above 1.5, which
/// compressed gases seldom reach.
std::vector<std::string> phase_names(MixtureFluid const& mixture,
                                     std::vector<corvane::PhaseRecord> const& phases);

/// "; this composition has a critical point at T = ..., p = ...", if what was given (T, or p
/// unless by_T) is near or above it, or else "".
std::string critical_hint(ModelN const& model, Vector<double> const& x, bool by_T, double given,
                          Units const& units);

}  // namespace cli
