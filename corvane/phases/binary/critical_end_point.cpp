#include <corvane/core/constants.h>
#include <corvane/phases/binary/critical_end_point.h>
#include <corvane/phases/numerics/dense.h>

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
    double u[2] = {std::log(rho * w[0]), std::log(rho * w[1])}, step = 1.0;
    for (int it = 0; it <= kNewton; ++it) {
        for (int i = 0; i < 2; ++i) other.rho_i[i] = std::exp(u[i]);
        if (!c.evaluate(y, 3, phase_all) || !fluid_.evaluate(other, std::exp(y[1]), phase_all))
            return false;
        PhaseState const& s = c.s;
        const double scale = 1.0 / std::min(s.rho, other.rho), RT = R * s.T;
        double r[5] = {-c.lambda, -c.C, s.m[0] - other.m[0], s.m[1] - other.m[1],
                       (s.p - other.p) / RT * scale};
        const double rounding = 2e-15 * std::max(std::fabs(s.S), std::fabs(other.S)) * scale;
        if (step < kStep && c.residual() < c.limit && std::fabs(r[2]) < kPotential &&
            std::fabs(r[3]) < kPotential &&
            std::fabs(r[4]) < rounding + kPotential * s.p / RT * scale)
            return true;
        double two[6], J[25] = {};
        if (it == kNewton || !c.gradients(y, 3, two)) return false;
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
        if (!lu_solve(5, J, r)) return false;
        // Bounds: 15 % in rho, 10 % in T; a factor of e in fractions, of e^10 in traces, whose
        // potentials are linear.
        const auto bound = [](double x) { return x < 1e-3 ? 10.0 : 1.0; };
        const double bounds[5] = {0.15, 0.1, bound(std::min(y[2], y[3])), bound(other.x[0]),
                                  bound(other.x[1])};
        double part = 1.0;
        step = 0.0;
        for (int k = 0; k < 5; ++k) {
            step = std::max(step, std::fabs(r[k]));
            part = std::min(part, bounds[k] / std::max(std::fabs(r[k]), 1e-300));
        }
        for (int k = 0; k < 2; ++k) {
            y[k] += part * r[k];
            u[k] += part * r[3 + k];
        }
        const double ratio = y[2] / y[3] * std::exp(part * r[2]);
        y[2] = ratio / (1.0 + ratio);
        y[3] = 1.0 / (1.0 + ratio);
    }
    return false;
}

}  // namespace corvane
