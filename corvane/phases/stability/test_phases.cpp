#include <corvane/phases/stability/test_phases.h>

#include <algorithm>

namespace corvane {

StabilityResult detail::test_phases(CoexistenceSolver const& s, Stability& stability, double& tpd) {
    const int k = s.softest(), other = (k + 1) % s.count();
    StabilityResult r = stability.test(s.phase[static_cast<std::size_t>(k)], s.pressure(),
                                       &s.phase[static_cast<std::size_t>(other)], false);
    // A phase that is no minimum needs no trial to be unstable.
    tpd = r.stable ? std::min(0.0, r.tpd) : std::min(r.tpd, -2 * Certificate::tpd_tolerance);
    return r;
}

}  // namespace corvane
