#include <corvane/phases/critical/critical_certificate.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
namespace {
constexpr double kMargin = 1e-5;   // of the eigenvalues
constexpr double kFourth = -1e-6;  // of the fourth-order term: its accuracy
constexpr std::array<double, 7> kBeside{0.03, 0.08, 0.17, 0.3,
                                        0.5,  0.7,  0.88};  // of the room on either side
constexpr int kGolden = 12;
}  // namespace

CriticalCertifier::CriticalCertifier(FluidModel const& fluid, CriticalConditions& conditions)
    : fluid_(fluid), conditions_(conditions), stability_(fluid) {
    stability_.critical = true;
    trial_.resize(fluid.size());
}

/// Tangent-plane distance of the stable phase of composition x0 in a binary.
double CriticalCertifier::distance(PhaseState const& phase, double x0) {
    if (!fluid_.evaluate_at(trial_, phase.p, phase.T, {x0, 1.0 - x0}, Root::stable, 0))
        return 1e300;
    double d = 0.0;
    for (int k = 0; k < 2; ++k) d += trial_.x[k] * (trial_.m[k] - phase.m[k]);
    return d;
}

/// From the critical composition outwards the distance grows with the fourth power; where it falls
/// again there is a minimum, which is refined by golden sections. Stores a negative one.
bool CriticalCertifier::beside(PhaseState const& phase) {
    const double x = phase.x[0];
    for (double room : {1.0 - x, -x}) {
        double last = 0.0;
        for (std::size_t k = 0; k < kBeside.size(); ++k) {
            const double here = distance(phase, x + room * kBeside[k]);
            if (here >= last) {
                last = here;
                continue;
            }
            double a = x + room * (k > 0 ? kBeside[k - 1] : 0.0),
                   b = x + room * (k + 1 < kBeside.size() ? kBeside[k + 1] : 0.95);
            double best = x + room * kBeside[k], value = here;
            for (int it = 0; it < kGolden; ++it) {
                const bool right = std::fabs(b - best) > std::fabs(best - a);
                const double at = best + 0.381966 * ((right ? b : a) - best);
                const double d = distance(phase, at);
                if (d < value) {
                    (right ? a : b) = best;
                    best = at;
                    value = d;
                } else {
                    (right ? b : a) = at;
                }
            }
            if (!(value < -Certificate::tpd_tolerance)) break;
            distance(phase, best);
            result.stable = false;
            result.other = true;
            result.tpd = value;
            result.trial = {value, trial_.rho, trial_.x};
            return true;
        }
    }
    return false;
}

/// The Hessian of a critical phase is singular. A margin keeps rounding from making it indefinite,
/// which the test would report as instability; all else that the test uses is in m.
void CriticalCertifier::test(PhaseState phase, PhaseState const* known, bool first) {
    const int n = phase.size();
    for (int i = 0; i < n; ++i) {
        phase.H[i * n + i] += kMargin / phase.rho_i[i];
        phase.P[i] += kMargin;
    }
    phase.S += kMargin * phase.rho;
    result = stability_.test(phase, phase.p, known, first);
    if (n == 2 && result.stable && !known) beside(phase);
}

void CriticalCertifier::state(CriticalConditions::Errors const& e, Certificate& c) {
    if (!(e.value() <= Certificate::error_limit)) return;
    c.value_error = e.value();
    c.x_error = e.x;
    c.rho_error = e.rho;
    c.apart_error = 0.0;
}

bool CriticalCertifier::certify(CriticalConditions::Variables const& y, int m, bool first,
                                Validity const* validity, CriticalPoint& q) {
    const PhaseState phase = conditions_.s;
    const double residual = conditions_.residual();
    double D = 0.0;
    if (!(phase.p > 0.0) || !conditions_.quartic(y, m, D)) return false;
    q.T = phase.T;
    q.p = phase.p;
    q.rho = phase.rho;
    q.x = fluid_.expand(phase.x);
    corvane::certify(fluid_, q.p, {&phase}, q.certificate);
    q.certificate.conditions = residual;
    test(phase, nullptr, first);
    q.certificate.tpd = result.stable ? std::min(0.0, result.tpd) : result.tpd;
    q.stable = result.stable && D > kFourth;
    if (const auto e = conditions_.errors(y, m)) state(*e, q.certificate);
    q.certificate.flag(validity, q.T, q.p, q.x);
    return true;
}

}  // namespace corvane
