// What a critical point says of itself. Internal to the library.
#pragma once

#include <corvane/phases/critical/critical.h>
#include <corvane/phases/critical/critical_conditions.h>
#include <corvane/phases/stability/stability.h>

namespace corvane::inline detail {

/// Certifies points that CriticalConditions::solve has found: the fourth-order term, the
/// tangent-plane test, and for binaries a finer scan of the compositions next to the critical one,
/// where near a tricritical point another phase hides from the grid of the test.
class CriticalCertifier {
  public:
    CriticalCertifier(FluidModel const& fluid, CriticalConditions& conditions);

    /// The solution y of conditions, just found, with its certificate (evaluations left out). False at
    /// p <= 0 or where the model fails. first: end at the first negative tangent-plane distance.
    bool certify(CriticalConditions::Variables const& y, int m, bool first,
                 Validity const* validity, CriticalPoint& point);

    /// The tangent-plane test alone, of a critical phase with phase_H and phase_p.
    void test(PhaseState phase, PhaseState const* known, bool first);

    /// As bounds of a certificate, unless they exceed its limit.
    static void state(CriticalConditions::Errors const& e, Certificate& c);

    StabilityResult result;  ///< of the last test

  private:
    double distance(PhaseState const& phase, double x0);
    bool beside(PhaseState const& phase);

    FluidModel const& fluid_;
    CriticalConditions& conditions_;
    Stability stability_;
    PhaseState trial_;
};

}  // namespace corvane::inline detail
