// The stable state of a mixture from two of its quantities: the flashes, and what they bracket.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/state/pure_state.h>

#include <vector>

class ModelN;

namespace corvane {

/// The stable state of mole fractions z (zeros allowed) with two given quantities, in as many
/// phases as it has. u = h − p/rho, of the whole; q is the amount of the lightest of two or more
/// phases.
///
/// (p, T), (p, h), (p, s), (T, rho)  flash_pT, flash_ph, flash_ps, flash_Trho.
/// (T, q), (p, q)  0 and 1 are bubble and dew point. Between them p (or T) is bracketed by flashes:
///     where the envelope is retrograde, the crossing that the bracket leads to.
/// (h, s)  h at given s grows with p (dh = v·dp): p is bracketed by flash_ps.
/// (rho, u), (rho, s)  grow with T: bracketed by flash_Trho.
/// (T, s)  grows with the volume where heating at constant volume raises the pressure; bracketed by
///     flash_Trho from 1e-8 mol/cm³ on.
/// (T, h), (T, u), (p, rho), (p, u), (rho, h)  as mixture_states, if one state has the values.
///
/// The others are unique for a stable state, but for (T, q), (p, q) and, where that condition fails,
/// (T, s). Brackets are narrowed by the Illinois method until the quantity is met to 1e-9 (of RT, R,
/// 1); the difference is in Certificate::target. At most 100 flashes, or those of mixture_states.
///
/// @throws ThException 5 another pair, a value that is not finite, T, p, rho not positive, q
/// outside
///     0 … 1; 3 h, s or u without ideal-gas tables; EquilibriumFailure and others as the flashes,
///     and gave_up where a jump (three phases of a binary) holds the value, or several states have it
CORVANE_API FlashResult mixture_state(ModelN const& model, Given a, Given b,
                                      Vector<double> const& z, FlashOptions const& options = {});

struct MixtureStates {
    std::vector<FlashResult> states;
    bool complete = true;  ///< false: flashes failed in a part of what was searched
};

/// All states with the two values, by rising temperature, or density where T is given.
///
/// (T, h), (T, u)  along the isotherm, from 1e-8 mol/cm³ to five mean critical densities or 1000 MPa
/// (p, rho), (p, u)  along the isobar, where T jumps (an azeotrope, three phases of a binary) in h
/// (rho, h)  along the isochore
///
/// T from a third of the mean critical temperature to four of them. Every change of sign between the
/// flashes at about 50 places is narrowed as above, and minima of what is off are looked into (up to
/// 16 flashes): a pair of states closer than that is missed. Of other pairs the one state.
///
/// @throws as mixture_state, but for several states; EquilibriumFailure no_solution: none was found,
///     gave_up: none, and flashes failed
CORVANE_API MixtureStates mixture_states(ModelN const& model, Given a, Given b,
                                         Vector<double> const& z,
                                         FlashOptions const& options = {});

}  // namespace corvane
