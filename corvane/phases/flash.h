// Flashes: how a mixture of given composition splits.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/certificate.h>

class ModelN;

namespace corvane {

struct FlashResult {
    double T = 0.0, p = 0.0;  ///< K, MPa
    /// One or two phases; with two, the first has the higher mass density. x, rho: see PhaseRecord.
    std::vector<PhaseRecord> phases;
    std::vector<double> fraction;  ///< mole fraction of the whole in each phase, sum 1
    Certificate certificate;
};

struct FlashOptions {
    FlashResult const* start = nullptr;  ///< a neighbouring two-phase result
    Validity const* validity = nullptr;  ///< for the flags of the certificate
};

/// The stable state of composition z (zeros allowed) at p [MPa], T [K]: one fluid phase, or two.
///
/// Tangent-plane test of the whole; if unstable, Rachford–Rice (Petrol. Trans. AIME 195 (1952) 327)
/// with successive substitution from the trial phase, then Newton's method on the Gibbs energy in
/// the amounts of one phase (Michelsen, Fluid Phase Equilib. 9 (1982) 21), each step shortened
/// until the energy falls; then the tangent-plane test of the result. If that finds the split
/// unstable, the split starts again from the phase found, three times at most.
///
/// @throws EquilibriumFailure gave_up: no certified split; the advice says so where three phases
///     are likely. ThException 5, 9; MthException 2; what the model throws
CORVANE_API FlashResult flash_pT(ModelN const& model, double p, double T, Vector<double> const& z,
                                 FlashOptions const& options = {});

}  // namespace corvane
