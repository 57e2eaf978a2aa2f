#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/stability/test_phases.h>

#include <algorithm>

namespace corvane {

StabilityResult detail::test_phases(CoexistenceSolver const& s, Stability& stability, double& tpd) {
    const int k = s.softest(), other = (k + 1) % s.count();
    PhaseState plane = s.phase[static_cast<std::size_t>(k)];
    for (int i = 0; i < plane.size();
         ++i)  // what is absent has the potential of a phase that holds it
        for (PhaseState const& phase : s.phase)
            if (absent(plane.x[i]) && !absent(phase.x[i])) plane.m[i] = phase.m[i];
    StabilityResult r =
        stability.test(plane, s.pressure(), &s.phase[static_cast<std::size_t>(other)], false);
    // A phase that is no minimum needs no trial to be unstable.
    tpd = r.stable ? std::min(0.0, r.tpd) : std::min(r.tpd, -2 * Certificate::tpd_tolerance);
    return r;
}

StabilityResult detail::test_pair(CoexistenceSolver const& pair, Stability& stability, bool first) {
    PhaseState plane = pair.phase[0];
    for (int k = 0; k < plane.size(); ++k)  // what is absent has the potential of the other phase
        if (absent(plane.x[k])) plane.m[k] = pair.phase[1].m[k];
    return stability.test(plane, pair.pressure(), &pair.phase[1], first);
}

}  // namespace corvane
