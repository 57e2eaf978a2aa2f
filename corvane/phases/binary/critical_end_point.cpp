#include <corvane/core/constants.h>
#include <corvane/phases/binary/critical_end_point.h>
#include <corvane/phases/numerics/newton.h>
#include <corvane/phases/report/error_bound.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kNewton = 30;
constexpr double kPotential = 1e-10, kStep = 1e-6;
}  // namespace

CriticalEndPoint::CriticalEndPoint(FluidModel const& fluid, CriticalConditions& conditions)
    : fluid_(fluid), conditions_(conditions) {
    other.resize(2);
}

bool CriticalEndPoint::solve(CriticalConditions::Variables& y, double rho,
                             std::vector<double> const& w) {
    CriticalConditions& c = conditions_;
    PhaseState const& s = c.s;
    double u[2] = {std::log(rho * w[0]), std::log(rho * w[1])}, r[5], J[25], scale = 1.0;
    const auto evaluate = [&] {
        for (int i = 0; i < 2; ++i) other.rho_i[i] = std::exp(u[i]);
        if (!c.evaluate(y, 3, phase_all) || !fluid_.evaluate(other, std::exp(y[1]), phase_all))
            return false;
        scale = 1.0 / std::min(s.rho, other.rho);
        r[0] = c.lambda;
        r[1] = c.C;
        for (int i = 0; i < 2; ++i) r[2 + i] = other.m[i] - s.m[i];
        r[4] = (other.p - s.p) / (R * s.T) * scale;
        return true;
    };
    const auto converged = [&](double step) {
        const double rounding = std::max(s.P_rounding(), other.P_rounding()) * scale;
        return step < kStep && c.residual() < c.limit && std::fabs(r[2]) < kPotential &&
               std::fabs(r[3]) < kPotential &&
               std::fabs(r[4]) < rounding + kPotential * s.p / (R * s.T) * scale;
    };
    const auto advance = [&](double) {
        // Bounds: 15 % in rho, 10 % in T; a factor of e in fractions, of e^10 in traces, whose
        // potentials are linear.
        const auto most = [](double x) { return x < 1e-3 ? 10.0 : 1.0; };
        const double bounds[5] = {0.15, 0.1, most(std::min(y[2], y[3])), most(other.x[0]),
                                  most(other.x[1])};
        StepBound bound;
        for (int k = 0; k < 5; ++k) bound(r[k], bounds[k]);
        const double part = bound.part();
        for (int k = 0; k < 2; ++k) {
            y[k] += part * r[k];
            u[k] += part * r[3 + k];
        }
        const double ratio = y[2] / y[3] * std::exp(part * r[2]);
        y[2] = ratio / (1.0 + ratio);
        y[3] = 1.0 / (1.0 + ratio);
        return true;
    };
    int iterations = 0;
    return damped_newton(5, J, r, kNewton, iterations, evaluate, converged, [&] { return assemble(y, J); },
                         advance);
}

/// The gradients of the five equations, in the last states.
bool CriticalEndPoint::assemble(CriticalConditions::Variables const& y, double* J) {
    PhaseState const& s = conditions_.s;
    const double scale = 1.0 / std::min(s.rho, other.rho);
    double two[6];
    if (!conditions_.gradients(y, 3, two)) return false;
    std::fill_n(J, 25, 0.0);
    for (int k = 0; k < 3; ++k) {
        J[k] = two[k];
        J[5 + k] = two[3 + k];
    }
    const double logit = y[2] * y[3];  // ∂x_0/∂ln(x_0/x_1)
    J[2] *= logit;
    J[7] *= logit;
    for (int i = 0; i < 2; ++i) {
        double* row = J + 5 * (2 + i);
        row[0] = -(s.H[2 * i] * s.rho_i[0] + s.H[2 * i + 1] * s.rho_i[1]);
        row[1] = other.m_T[i] - s.m_T[i];
        row[2] = -s.rho * (s.H[2 * i] - s.H[2 * i + 1]) * logit;
        for (int j = 0; j < 2; ++j) row[3 + j] = other.H[2 * i + j] * other.rho_i[j];
    }
    double* row = J + 20;
    row[0] = -s.S * scale;
    row[1] = (other.p_T - s.p_T) * scale;
    row[2] = -s.rho * (s.P[0] - s.P[1]) * logit * scale;
    for (int j = 0; j < 2; ++j) row[3 + j] = other.P[j] * other.rho_i[j] * scale;
    return true;
}

bool CriticalEndPoint::bound(CriticalConditions::Variables const& y, Certificate& c) {
    PhaseState const& s = conditions_.s;
    double J[25], inverse[25];
    std::vector<double> e(5, 0.0);
    if (!conditions_.equations(y, 3, e.data()) || !assemble(y, J) || !invert(5, J, inverse))
        return false;
    for (int i = 0; i < 2; ++i)
        e[2 + i] = std::fabs(other.m[i] - s.m[i]) + rounding_of_m(fluid_, s, i) +
                   rounding_of_m(fluid_, other, i);
    const double RT = R * s.T;
    e[4] = (std::fabs(other.p - s.p) / RT + rounding_of_P(fluid_, s) +
            rounding_of_P(fluid_, other)) / std::min(s.rho, other.rho);
    const ErrorBound bound(e);
    // ln p and x_0 of the critical phase
    const double logit = y[2] * y[3], ln_p[] = {RT * s.S / s.p, 1.0 + RT * s.p_T / s.p,
                                               RT * s.rho * (s.P[0] - s.P[1]) * logit / s.p};
    double p[5] = {}, x[5];
    for (int k = 0; k < 5; ++k) {
        for (int i = 0; i < 3; ++i) p[k] += ln_p[i] * inverse[5 * i + k];
        x[k] = logit * inverse[10 + k];
    }
    const double value =
        std::max(bound(&inverse[5]), bound(p) + rounding_of_P(fluid_, s) * RT / s.p);
    if (!(value <= Certificate::error_limit)) return false;
    c.value_error = value;
    c.rho_error = bound(inverse);
    c.x_error = bound(x);
    bound.phase(other, &inverse[15], c.x_error, c.rho_error);
    c.apart_error = 0.0;
    return true;
}

}  // namespace corvane
