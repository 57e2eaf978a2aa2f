// Equilibria of many states: columns in, columns out, over threads, with a status for every row.
//
//     std::vector<double> p(n), x(2 * n), error(n);
//     std::vector<corvane::RowStatus> status(n);
//     corvane::SaturationColumns out;
//     out.p = p.data(), out.x_incipient = x.data(), out.value_error = error.data();
//     out.status = status.data();
//     corvane::saturations_T(*mixture.model, corvane::Saturated::bubble, n, T.data(),
//                           {z.data(), true}, out, {.threads = 0});
//
// A row is what the function for one state returns, with the same certificate; what that throws
// becomes the row's status, and not-a-number in its columns. Columns are arrays of n elements (N in
// a row where a mole fraction of each component is told), or null where they are not wanted.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>

#include <cstddef>
#include <cstdint>

class Model1;
class ModelN;

namespace corvane {

class SaturationExpansion;

/// What became of a row.
enum class RowStatus : std::int8_t {
    solved,
    no_solution,  ///< EquilibriumFailure: the search was complete and says that there is none
    gave_up,      ///< EquilibriumFailure: nothing is known
    invalid,      ///< out of range, not finite, a wrong composition; what a model throws
    no_ideal      ///< h or s given, and no ideal-gas table
};

/// Mole fractions: n rows of N, or one that holds for all of them.
struct Compositions {
    double const* z = nullptr;
    bool one_for_all = false;
};

struct BatchOptions {
    int threads = 1;  ///< at most 64; 0: as many as the machine has. Models are not written
    /// Start each row from the one before it, in pieces of 64 rows, as SaturationOptions::start and
    /// FlashOptions::start do: faster where neighbours are alike. Results then depend, within the
    /// bounds of their errors, on the order of the rows, but not on the number of threads; where
    /// there are several solutions, the one near the neighbour's is the answer.
    bool neighbours = false;
    Branch branch = Branch::any;  ///< of saturation
    /// Of saturation, where one composition holds for all: makes refusals cheaper.
    KeptEnvelope const* envelope = nullptr;
    Validity const* validity = nullptr;  ///< for `flags`
    StabilityTest test = StabilityTest::complete;
};

/// Certificate of each row, as in Certificate.
struct CertificateColumns {
    double *dmu = nullptr, *dp = nullptr, *tpd = nullptr, *value_error = nullptr,
           *x_error = nullptr, *rho_error = nullptr, *apart_error = nullptr;
    /// 1 estimated pairs, 2 extrapolated, 4 below a triple temperature, 8 near trivial
    std::uint8_t* flags = nullptr;
    RowStatus* status = nullptr;
};

/// Saturation of a pure fluid: of certificates, value_error, rho_error, apart_error and the status.
struct PureSaturationColumns : CertificateColumns {
    double *T = nullptr, *p = nullptr, *rhoL = nullptr, *rhoV = nullptr;  ///< K, MPa, mol/cm³
};

/// pure_saturation_T and pure_saturation_p of n values. `curve`, the precomputed one of this model,
/// answers where its bounds are 1e-10 or better (apart_error is not known there); it pays from some
/// thousand rows on.
/// @return how many rows are not solved
CORVANE_API std::size_t pure_saturations_T(Model1 const& model, std::size_t n, double const* T,
                                           PureSaturationColumns const& columns, int threads = 1,
                                           SaturationExpansion const* curve = nullptr);
CORVANE_API std::size_t pure_saturations_p(Model1 const& model, std::size_t n, double const* p,
                                           PureSaturationColumns const& columns, int threads = 1,
                                           SaturationExpansion const* curve = nullptr);

/// Bubble or dew points of a mixture, as SaturationPoint has them.
struct SaturationColumns : CertificateColumns {
    double *T = nullptr, *p = nullptr;                ///< K, MPa
    double *rho = nullptr, *rho_incipient = nullptr;  ///< mol/cm³; the first of the whole
    double* x_incipient = nullptr;                    ///< N in a row
    int* phases = nullptr;  ///< 2, and more where the given composition is split
};

/// saturation_T and saturation_p of n states.
/// @return how many rows are not solved. @throws MthException 2 a model without components
CORVANE_API std::size_t saturations_T(ModelN const& model, Saturated kind, std::size_t n,
                                      double const* T, Compositions const& z,
                                      SaturationColumns const& columns,
                                      BatchOptions const& options = {});
CORVANE_API std::size_t saturations_p(ModelN const& model, Saturated kind, std::size_t n,
                                      double const* p, Compositions const& z,
                                      SaturationColumns const& columns,
                                      BatchOptions const& options = {});

/// Flashes, as FlashResult has them. Phases by falling mass density, `room` places of each row; a
/// row of more phases says so in `phases` and has the first of them.
struct FlashColumns : CertificateColumns {
    double *T = nullptr, *p = nullptr, *rho = nullptr;  ///< of the whole: K, MPa, mol/cm³
    double *h = nullptr, *s = nullptr;  ///< J/mol, J/(mol K); not-a-number without ideal-gas tables
    int* phases = nullptr;              ///< 0 where the row is not solved
    int room = 2;                       ///< at least 1
    double* fraction =
        nullptr;  ///< `room` in a row, as below; not-a-number where there is no phase
    double* rho_phase = nullptr;  ///< mol/cm³
    double* x = nullptr;          ///< N for each
};

/// What two quantities a flash is given.
enum class FlashGiven { pT, ph, ps, Trho };

/// flash_pT, flash_ph, flash_ps and flash_Trho of n states: a and b in the order of the name.
/// @return how many rows are not solved. @throws MthException 2 a model without components, room <
/// 1
CORVANE_API std::size_t flashes(ModelN const& model, FlashGiven given, std::size_t n,
                                double const* a, double const* b, Compositions const& z,
                                FlashColumns const& columns, BatchOptions const& options = {});

}  // namespace corvane
