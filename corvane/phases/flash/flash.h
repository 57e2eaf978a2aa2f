// Flashes: how a mixture of given composition splits.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/certificate.h>

#include <limits>

class ModelN;

namespace corvane {

struct FlashResult {
    double T = 0.0, p = 0.0;  ///< K, MPa
    /// As many as are stable, by falling mass density. x, rho: see PhaseRecord. Mole fractions below
    /// 1e-280 are given as 0, and their potentials are in no residual.
    std::vector<PhaseRecord> phases;
    std::vector<double> fraction;  ///< mole fraction of the whole in each phase, sum 1
    Certificate certificate;
    double rho = 0.0;  ///< of the whole, mol/cm³
    /// Of the whole, J/mol and J/(mol K), in the reference states of ModelN::Hm and Sm.
    /// Not-a-number from flash_pT, and from flash_Trho where an ideal-gas table is missing.
    double h = std::numeric_limits<double>::quiet_NaN();
    double s = std::numeric_limits<double>::quiet_NaN();
};

struct FlashOptions {
    FlashResult const* start = nullptr;  ///< a neighbouring result
    Validity const* validity = nullptr;  ///< for the flags of the certificate
    StabilityTest test = StabilityTest::complete;
};

/// The stable state of composition z (zeros allowed) at p [MPa], T [K]: one fluid phase, two, or as
/// many as there are components. A pure fluid is one phase, also at its saturation; three phases of
/// a binary have one T at given p, which flash_ph, flash_ps and flash_Trho can meet.
///
/// First the split that Wilson's K-factors lead to; if it is certified, it is the answer. Else the
/// tangent-plane test of the whole; if unstable, Rachford–Rice (Petrol. Trans. AIME 195 (1952) 327)
/// with substitution from the trial phase, then Newton's method on the Gibbs energy in the amounts
/// of one phase (Michelsen, Fluid Phase Equilib. 9 (1982) 21), each step shortened until the energy
/// falls, its matrix shifted where the energy is not convex; then the tangent-plane test of the
/// result. If that finds the split unstable, the phase found is added as a third one, or paired
/// with either phase of the split or with the whole; nine splits at most. At last the phases come
/// from nothing, by a linear program over trial phases (flash_columns). Where the whole is unstable
/// by less than 1e-5, and where no split converges, the pair is solved that is regular through
/// critical points (RegularPair); the whole splits if it lies between its phases.
///
/// @throws EquilibriumFailure gave_up: no certified split; the advice says so where more phases are
///     likely, and of three components and more where one has no density when nearly pure. ThException 5, 9; MthException 2; what the model throws
CORVANE_API FlashResult flash_pT(ModelN const& model, double p, double T, Vector<double> const& z,
                                 FlashOptions const& options = {});

/// Fills h and s of a result, z as given to its flash. @throws ThException 3 without an ideal-gas
/// table of a present component
CORVANE_API void add_caloric(ModelN const& model, Vector<double> const& z, FlashResult& result);

/// The stable state of composition z at p [MPa] and molar enthalpy h [J/mol].
///
/// h of the stable state grows with T, in jumps where a pure fluid, an azeotrope or as many phases
/// as components plus one coexist. The search brackets T by flashes at (p, T); from the phases of
/// each of them, and from those of both ends together, Newton's method for phases, amounts and T at
/// once (SplitSolver) is tried, and its result taken when it is stable: usually after one flash.
///
/// T is sought from a quarter of the lowest critical temperature of the present components up to
/// the lowest last temperature of their ideal-gas tables (or 1.5 times the highest critical
/// temperature, if higher).
///
/// @throws EquilibriumFailure no_solution: h is outside what that range of T reaches; gave_up: no
///     certified state. ThException 3 without an ideal-gas table; 5, MthException 2 bad arguments;
///     what the model throws
CORVANE_API FlashResult flash_ph(ModelN const& model, double p, double h, Vector<double> const& z,
                                 FlashOptions const& options = {});

/// The same at given molar entropy s [J/(mol K)]; T from the highest first temperature of the
/// tables on, if that is higher: below it the published continuation of S° is not the integral of
/// cp/T.
CORVANE_API FlashResult flash_ps(ModelN const& model, double p, double s, Vector<double> const& z,
                                 FlashOptions const& options = {});

/// The stable state of composition z at T [K] and overall density rho [mol/cm³]. One phase needs no
/// more than the tangent-plane test; otherwise p is sought as T above, from 1e-12 to 1e4 MPa.
CORVANE_API FlashResult flash_Trho(ModelN const& model, double T, double rho,
                                   Vector<double> const& z, FlashOptions const& options = {});

}  // namespace corvane
