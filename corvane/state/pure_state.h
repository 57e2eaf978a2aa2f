// The state of a pure fluid from any two of its quantities, in one phase or two.
#pragma once

#include <corvane/core/api.h>
#include <corvane/state/phase_properties.h>

#include <optional>
#include <vector>

class Model1;

namespace corvane {

class SaturationExpansion;

/// What a state can be asked by.
enum class Quantity {
    T,    ///< K
    p,    ///< MPa
    rho,  ///< mol/cm³, of the whole
    h,    ///< J/mol
    s,    ///< J/(mol K)
    u,    ///< J/mol
    q     ///< amount of vapour over the whole, 0 to 1
};

struct Given {
    Quantity what;
    double value;
};

/// A stable state. In two phases the molar quantities are those of the whole, and liquid and vapour
/// are both there; in one phase, neither.
struct PureState {
    double T = 0.0, p = 0.0, rho = 0.0;  ///< K, MPa, mol/cm³
    double h = 0.0, s = 0.0, u = 0.0;    ///< J/mol, J/(mol K), J/mol; not-a-number without tables
    double q = 0.0;                      ///< vapour fraction in two phases, else not-a-number
    std::optional<PhaseProperties> phase;          ///< the one phase
    std::optional<PhaseProperties> liquid, vapour; ///< the two
};

struct PureStateOptions {
    double T_min = 0.0;  ///< K: of the search; 0: 0.2 of the critical temperature
    double T_max = 0.0;  ///< K; 0: 10 critical temperatures, at least 3000 K
    double p_max = 0.0;  ///< MPa; 0: 10000
    /// The precomputed curve of this model, if there is one: stands in for the solver where it
    /// answers with a bound of 1e-9 or better, and says which of two density roots is stable.
    SaturationExpansion const* saturation = nullptr;
};

/// All stable states with the two given quantities, by rising temperature (and density).
///
/// (T, p)  the density root of lowest Gibbs energy; on the saturation curve that is one phase.
/// (T, q), (p, q)  saturation.
/// (T, rho), (T, s), (T, h), (T, u)  along the isotherm: the two phases, if the value lies between
///     those of the saturated phases, and every crossing on the dilute and the dense side.
/// (p, rho), (p, u)  the same along the isobar.
/// (p, h), (p, s)  h and s of the stable state grow with T: one state, which is bracketed.
/// (rho, s), (rho, u)  grow with T, too; (rho, h)  every crossing along the isochore.
/// (h, s)  at given s, h grows with p (dh = v·dp): p is bracketed; inside, (p, s).
///
/// Brackets are narrowed to rounding by the Illinois method. "Every crossing" means of 40 pieces of
/// a branch, and pairs in neighbouring ones on either side of a minimum of what is off (24 golden
/// sections): a pair within 1e-5 of them is missed. What is searched ends where the
/// equation has no density.
///
/// @throws ThException 5 a value that is not finite, T, p, rho not positive, q outside 0 … 1, or a
///     pair that is none of these; 3 h, s or u without an ideal-gas table. EquilibriumFailure: q is
///     given at or above the critical point, or as pure_saturation.h. No state: an empty list
CORVANE_API std::vector<PureState> pure_states(Model1 const& model, Given a, Given b,
                                               PureStateOptions const& options = {});

}  // namespace corvane
