// Substances that no file knows, by their critical constants: fractions of a crude oil (C7+),
// substances of a thought.
#pragma once

#include <corvane/core/api.h>

#include <string>
#include <vector>

class Model1;

namespace corvane {

/// Constants of a pseudo-component. It has no ideal-gas heat capacities, so that there are no total
/// energies and entropies of what holds it, and no interaction parameters with others: the mixing
/// theory's estimate (k_ij = 0) stands in until the caller gives one.
struct PseudoComponent {
    std::string name;    ///< without blank, '/', ';' and '='; at most 31 characters
    double Tc, pc;       ///< K, MPa; above zero
    double omega;        ///< acentric factor, from -1 to 4
    double M = 0.0;      ///< g/mol, 0: not known
    double c = 0.0;      ///< volume translation v = v_eos - c, cm³/mol
};

/// Gives a model of PR or SRK that was attached, and has a number, the parameters of a
/// pseudo-component, as a file of a set with the standard alpha function would.
/// @throws OpenFailure another equation, or a constant out of its range
CORVANE_API void define(Model1& model, PseudoComponent const& substance);

/// The one of that name, or null.
CORVANE_API PseudoComponent const* find(std::vector<PseudoComponent> const& defined,
                                        std::string const& name);

}  // namespace corvane
