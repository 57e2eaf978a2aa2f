// What every equilibrium result says about itself, and the failure that stands in place of a result
// that cannot say it.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvane {

class FluidModel;
struct PhaseState;

/// What is known of a model beside its equations: where its parameters are published to hold. Goes
/// through every options struct into the flags of the certificates; see validity.h for reading it
/// from the data tree.
struct Validity {
    static constexpr double unknown = 1e300;
    double T_min = 0.0, T_max = unknown;  ///< K: where all parameter sets hold
    double p_max = unknown;               ///< MPa
    Vector<double> T_triple = {};  ///< K, of every component; 0 unknown. Empty: none is known
    bool estimated_pairs = false;  ///< some pair has no published parameters
};

/// The tangent-plane test that a result has passed; see stability.h.
enum class StabilityTest {
    complete,  ///< the default of every certified result
    quick      ///< on request, for curves whose ends are tested completely
};

/// A phase of a result: x over all components of the model, rho in mol/cm³.
struct PhaseRecord {
    double rho = 0.0;
    Vector<double> x;
};

/// Evidence for a result, computed from its final densities. A result is handed out only if dmu,
/// dp and target are at most `tolerance`, tpd is at least −tpd_tolerance, and the bounds of the
/// errors, where they are known, are within error_limit and apart_limit.
struct CORVANE_API Certificate {
    static constexpr double tolerance = 1e-9;
    static constexpr double tpd_tolerance = 1e-8;
    static constexpr double error_limit = 1e-6;
    static constexpr double apart_limit = 0.1;
    static constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

    double dmu = 0.0;  ///< largest |Δμ_i|/(RT) between the phases
    /// Largest difference of a phase's pressure to p, over p. What rounding the density of a liquid
    /// by 8 units in the last place does to its pressure is taken off, since below about 1e-5 MPa
    /// that is more than 1e-9·p.
    double dp = 0.0;
    /// Flashes at given h, s or rho: |Δh|/(RT), |Δs|/R or |Δrho|/rho of the result to what was
    /// given.
    double target = 0.0;
    double balance = 0.0;  ///< flash: largest |z_i − Σ fraction·x_i|
    /// Smallest tangent-plane distance (over RT) found from all starts; 0 where every start led
    /// back to the phases of the result.
    double tpd = 0.0;
    StabilityTest test = StabilityTest::complete;  ///< that tpd comes from
    std::vector<PhaseRecord> phases;
    long evaluations = 0;  ///< model evaluations of the whole calculation
    /// The phases differ by less than 1 % in density and by less than 0.01 in every mole fraction:
    /// near a critical point true results do so.
    bool near_trivial = false;

    // Bounds of the errors against the exact solution of the model's equations (with a solid's Gibbs
    // energy as computed): residuals and rounding, times the inverse Jacobian, with a margin. Of one
    // phase there are none: not-a-number. The first, relative: of p at given T, of T at given p, of both
    // at critical points, azeotropes, three phases.
    double value_error = unknown;  ///< see above; 0 where T and p were given
    double x_error = unknown;      ///< largest of all mole fractions of all phases
    double rho_error = unknown;    ///< relative, the largest of all phases
    /// Of the distance between the phases, the largest difference of ln rho_i, relative to it: no
    /// component's difference is off by more. Below apart_limit they are told apart beyond doubt.
    /// Near a critical point this and not dmu is the evidence for two phases.
    double apart_error = unknown;

    double conditions = 0.0;  ///< critical points: largest residual of the critical conditions

    // From the Validity that the caller gave; false without one.
    bool estimated_pairs = false;  ///< a pair without published parameters
    bool extrapolated = false;     ///< T or p outside the published range of the parameters
    bool below_triple = false;     ///< below the triple temperature of a component: may freeze

    bool bounded() const { return std::isfinite(value_error + x_error + rho_error + apart_error); }
    bool holds() const {
        return dmu <= tolerance && dp <= tolerance && target <= tolerance &&
               tpd >= -tpd_tolerance && !(value_error > error_limit) &&
               !(apart_error > apart_limit);
    }
    /// Sets the three flags; z: what is present. v may be null.
    void flag(Validity const* v, double T, double p, Vector<double> const& z);
    std::string line() const;  ///< one line for a report
};

/// Fills dmu, dp, phases and near_trivial from final states, evaluated with phase_H and phase_p.
CORVANE_API void certify(FluidModel const& fluid, double p, std::vector<PhaseState const*> phases,
                         Certificate& c);

/// No certified result. what() is one line with all of it.
class CORVANE_API EquilibriumFailure : public std::runtime_error {
  public:
    enum class Kind {
        no_solution,  ///< the search was complete and says that there is none
        gave_up       ///< nothing is known about a solution
    };
    EquilibriumFailure(Kind kind, std::string state, std::string solver, int iterations,
                       double residual, std::string advice);

    Kind kind() const { return kind_; }
    std::string const& state() const { return state_; }    ///< "T = 300 K, z = 0.5 0.5"
    std::string const& solver() const { return solver_; }  ///< "bubble_T"
    int iterations() const { return iterations_; }
    double residual() const { return residual_; }  ///< last residual; not-a-number if none
    std::string const& advice() const { return advice_; }

  private:
    Kind kind_;
    std::string state_, solver_;
    int iterations_;
    double residual_;
    std::string advice_;
};

}  // namespace corvane
