// The ideal-gas table that belongs to a parameter set.
#pragma once

#include <corvane/core/api.h>

#include <string>

class Model1;

namespace corvane {

/// Path of the ideal-gas table for a model whose parameters are loaded:
/// "CorvaneS/ideal/<eos>/<name>;<id>" where there is one, else that of the substance. Some sets were published with an ideal part of their own: with the short
/// equations of GERG-2008 (MEOS, set 8) heat capacities and speeds of sound are the standard's
/// only with its own, which differs from those of the reference equations by up to 0.8 %, and by
/// more below 100 K.
CORVANE_API std::string ideal_table(Model1 const& model);

/// Loads that table, as Ideal::load does, and returns its path.
/// @throws ThException 1 no file; MthException 5, 6 as Ideal::load
CORVANE_API std::string load_ideal(Model1& model);

}  // namespace corvane
