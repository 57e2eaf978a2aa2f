// Names of the fields of one phase in a picture.
#pragma once

#include <tools/corvane/diagrams/picture.h>
#include <tools/corvane/input/open_mixture.h>

#include <functional>
#include <string>

namespace cli {

/// Labels every field between the full curves (a 400th of the picture or more) with what `phase` says
/// at nine places of it: the same everywhere, or "F" where liquid goes over into vapour; nothing where
/// it says "" at one of them.
void label_fields(Picture& picture, std::function<std::string(XY const& at)> const& phase);

/// "L" or "V" of the one stable phase at T, p, and its density; "" where there are several, or no answer.
std::string phase_letter(MixtureFluid const& mixture, Vector<double> const& x, double T, double p,
                         double* rho = nullptr);

}  // namespace cli
