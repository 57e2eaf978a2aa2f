// Bubble points of binaries whose vapour and one liquid are as good as pure.
#include <corvane/core/constants.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr int kDissolved = 30;
constexpr double kDilute = 1e-3;  // of one component in a liquid beside the other one

/// Vapour and liquid of a binary that are as good as pure, the liquid beside them.
struct NearlyPure {
    PhaseState vapour, pure, rest;
};

/// The two of component i with least traces of the other.
bool pure_pair(FluidModel const& fluid, int i, PureSaturation const& q, double T, NearlyPure& s) {
    for (PhaseState* one : {&s.vapour, &s.pure, &s.rest}) one->resize(2);
    for (PhaseState* one : {&s.vapour, &s.pure}) {
        one->rho_i[i] = one == &s.pure ? q.rhoL : q.rhoV;
        one->rho_i[1 - i] = least_fraction * one->rho_i[i];
        if (!fluid.evaluate(*one, T, phase_all)) return false;
    }
    return true;
}

/// What of component i is dissolved in the rest, from x on: as good as Newton's method where that is
/// dilute.
bool dissolve(FluidModel const& fluid, int i, double p, double T, std::vector<double> x, NearlyPure& s) {
    for (int it = 0; it < kDissolved; ++it) {
        if (!fluid.evaluate_at(s.rest, p, T, x, Root::dense, phase_all)) return false;
        const double off = s.pure.m[i] - s.rest.m[i];
        if (!(std::fabs(off) > 1e-14)) break;
        x[i] = std::max(x[i] * std::exp(off), least_fraction);
        if (!(x[i] < kDilute)) return false;
        x[1 - i] = 1.0 - x[i];
    }
    return true;
}

/// Traces of the other component that doubles can say.
bool set_traces(FluidModel const& fluid, int i, double T, NearlyPure& s) {
    for (PhaseState* one : {&s.vapour, &s.pure}) {
        const double trace = least_fraction * std::exp(s.rest.m[1 - i] - one->m[1 - i]);
        if (!(trace > least_fraction)) continue;
        if (!(trace < no_account)) return false;
        one->rho_i[1 - i] = trace * one->rho_i[i];
        if (!fluid.evaluate(*one, T, phase_all)) return false;
    }
    return true;
}

/// Where p is given, the error of T moves the rest's density and both potentials.
void bound(FluidModel const& fluid, int i, PureSaturation const& q, bool at_T, double p,
           NearlyPure const& s, Certificate& c) {
    constexpr double eps = std::numeric_limits<double>::epsilon();
    const double P = p / (R * s.rest.T), of_T = at_T ? 0.0 : q.value_error;
    const double rest_error =
        (2.0 * rounding_of_P(fluid, s.rest) + q.value_error * P + of_T * std::fabs(s.rest.p_T)) / s.rest.S;
    const auto of_m = [&](PhaseState const& one, double rho_error) {
        double slope = 0.0;
        for (int j = 0; j < 2; ++j) slope += std::fabs(one.rho_i[j] * one.H[i * 2 + j]);
        return rounding_of_m(fluid, one, i) + of_T * std::fabs(one.m_T[i]) + slope * rho_error;
    };
    c.value_error = q.value_error;
    c.x_error = std::max(
        eps, 4.0 * s.rest.x[i] * (std::fabs(s.pure.m[i] - s.rest.m[i]) + of_m(s.pure, q.rho_error) +
                                  of_m(s.rest, rest_error)));
    c.rho_error = std::max(q.rho_error, rest_error);
    c.apart_error = q.apart_error;
}
}  // namespace

std::optional<SaturationPoint> SaturationSolver::beside_pure(int i, PhaseRecord const& other,
                                                             SaturationOptions const& o) {
    const int j = 1 - i;
    PureSaturation q;
    try {
        q = held_.at_T ? pure_saturation_T(fluid_.pure(i), held_.value)
                       : pure_saturation_p(fluid_.pure(i), held_.value);
    } catch (EquilibriumFailure const&) {
        return {};
    }
    SaturationPoint point;
    const double t = point.T = held_.T(q.T), p = point.p = held_.p(q.p);
    NearlyPure s;
    if (!pure_pair(fluid_, i, q, t, s) || !dissolve(fluid_, i, p, t, present(fluid_, other.x), s))
        return {};
    const double pure_part = (fluid_.z()[i] - s.rest.x[i]) / (1.0 - s.rest.x[i]);
    if (!(pure_part > 0.0)) {
        open_ = false;  // the whole is not between the two liquids
        return {};
    }
    if (!set_traces(fluid_, i, t, s)) return {};
    PhaseState plane = s.pure;
    plane.m[j] = s.rest.m[j];
    const StabilityResult r = stability_.test(plane, p, &s.vapour, true);
    if (!r.stable || r.unconverged) return {};
    Certificate& c = point.certificate;
    c.tpd = std::min(0.0, r.tpd);
    c.test = stability_.kind;
    bound(fluid_, i, q, held_.at_T, p, s, c);
    const bool heavier = s.pure.rho * fluid_.weight(i) > s.rest.rho * fluid_.weight(j);
    certify(fluid_, p, {heavier ? &s.pure : &s.rest, heavier ? &s.rest : &s.pure, &s.vapour}, c);
    point.fraction = {heavier ? pure_part : 1.0 - pure_part, heavier ? 1.0 - pure_part : pure_part};
    without_absent(c.phases);
    c.evaluations = fluid_.evaluations;
    const Vector<double> z = fluid_.expand(fluid_.z());
    if (o.validity) c.flag(o.validity, t, p, z);
    if (!c.holds()) return {};
    point.given = {1.0 / (pure_part / s.pure.rho + (1.0 - pure_part) / s.rest.rho), z};
    point.split = {c.phases[0], c.phases[1]};
    point.incipient = c.phases[2];
    return point;
}

}  // namespace corvane
