#include <corvane/mixture/modeln.h>
#include <corvane/phases/binary/pure_point.h>
#include <corvane/phases/coexistence/pair.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/saturation/saturation.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kSlope = 7.0;   // d ln p/d ln T at the critical point, for starts at constant p
constexpr double kApart = 1e-5;  // smallest ratio of the densities

Vector<double> only(int component) {
    Vector<double> z(2);
    z[component] = 1.0;
    z[1 - component] = 0.0;
    return z;
}

void bounded(Certificate const& c, TieLine& q) {
    q.value_error = c.value_error;
    q.x_error = 0.0;
}

/// Newton from densities and T of a start.
bool solve(FluidModel const& fluid, Vector<double> const& z, Fixed constant, double liquid,
           double vapour, double T, TieLine& q) {
    const FluidModel pure(fluid.model(), z);
    PairSolver pair(pure);
    pair.hold(constant);
    pair.start({1.0}, liquid, {1.0}, vapour, T);
    const bool solved = pair.solve(40) && pair.u[0] - pair.u[1] > kApart && pair.pressure() > 0.0;
    fluid.evaluations += pure.evaluations;
    if (!solved) return false;
    q = {pair.a.T, pair.pressure(), z[0], z[0], pair.a.rho, pair.b.rho, true};
    if (Certificate c; pair.bound(c) && c.holds()) bounded(c, q);
    return true;
}

bool near_critical(FluidModel const& fluid, Vector<double> const& z, Fixed constant,
                   TieLine& q) {
    const CriticalPoint c = critical_point(fluid.model(), z);
    fluid.evaluations += c.certificate.evaluations;
    const double reduced = constant.value / (constant.at_T ? c.T : c.p);
    if (!(reduced < 1.0)) return false;
    const double off = constant.at_T ? 1.0 - reduced : -std::log(reduced) / kSlope;
    // The amplitude is 2 for van der Waals' equation and larger for others.
    for (double amplitude : {2.3, 3.0, 3.8, 1.7}) {
        const double d = std::min(amplitude * std::sqrt(off), 0.9);
        if (solve(fluid, z, constant, c.rho * (1.0 + d), c.rho * (1.0 - d), c.T * (1.0 - off), q))
            return true;
    }
    return false;
}
}  // namespace

bool detail::pure_point(FluidModel const& fluid, int component, Fixed constant, TieLine& q,
                TieLine const* near) {
    const Vector<double> z = only(component);
    try {
        if (near && solve(fluid, z, constant, std::max(near->rho_x, near->rho_y),
                          std::min(near->rho_x, near->rho_y), near->T, q))
            return true;
        SaturationOptions o;
        o.trace = false;
        try {
            const SaturationPoint s = constant.at_T ? bubble_T(fluid.model(), constant.value, z, o)
                                                    : bubble_p(fluid.model(), constant.value, z, o);
            fluid.evaluations += s.certificate.evaluations;
            q = {s.T, s.p, z[0], z[0], s.given.rho, s.incipient.rho, true};
            bounded(s.certificate, q);
            return true;
        } catch (EquilibriumFailure const&) {
            return near_critical(fluid, z, constant, q);
        }
    } catch (EquilibriumFailure const&) {
        return false;
    }
}

}  // namespace corvane
