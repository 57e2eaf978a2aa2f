#include <plugins/meos/climb.h>

#include <algorithm>
#include <cmath>

namespace corvane::meos {

double murnaghan_step(double q, double bend) {
    const double K1 = 1.0 + bend, x = K1 * q;  // q = (P − P_now)/K, bend = C/S, K1 = dK/dP
    if (std::abs(x) < 1e-4 && std::abs(q) < 1e-4) return q + 0.5 * q * (q - x);
    if (std::abs(K1) < 1e-6) return std::expm1(q);
    return std::expm1(std::log1p(x) / K1);
}

namespace {
/// By how much a density may miss P: 1e-6 of it, and the rounding of a liquid's terms.
double room(double P, double x) {
    return 1e-6 * std::abs(P) + 1e-9 * x;
}
}  // namespace

double climb(Isotherm<false> const& isotherm, double P, double x, Bracket b) {
    const bool gas = b.on == 0.0;
    for (int k = 0; k < 120; ++k) {
        if (!(x > b.low && x < b.high))
            x = b.high < kInfinity ? 0.5 * (b.low + b.high) : 1.15 * std::max(b.low, b.on);
        const IsothermState s = state_at(isotherm, x);
        if (!(s.S > 0.0) || !std::isfinite(s.P) || !std::isfinite(s.C)) {
            if (x < b.on)
                b.low = x, b.low_open = true;
            else
                b.high = x, b.high_open = true;
            x = 0.5 * (b.low + b.high);
        } else {
            const double q = (P - s.P) / (x * s.S), bend = s.C / s.S;
            const double step = murnaghan_step(q, bend);
            // The error after the step is of the order q³·(bend² + 1).
            if (std::isfinite(step) && std::abs(q) * q * q * (bend * bend + 1.0) < 1e-17) {
                // Far below a triple point some isotherms rise by 1e20 around the critical density:
                // they cross P between two neighbouring densities, neither of which has it.
                constexpr double eps = std::numeric_limits<double>::epsilon();
                return 8.0 * x * s.S * eps <= room(P, x) ? x + x * step : 0.0;
            }
            if (q > 0.0)
                b.low = x, b.low_open = false;
            else
                b.high = x, b.high_open = false;
            x += x * std::clamp(std::isfinite(step) ? step : q, -0.7, gas ? 4.0 : 0.15);
        }
        if (b.high < kInfinity && b.high - b.low <= 1e-15 * b.high) break;
    }
    return !b.low_open && !b.high_open && is_root(isotherm, P, b.low) ? b.low : 0.0;
}

double beyond_loops(Isotherm<false> const& isotherm, double rho_c) {
    const auto rises = [&](double rho) { return isotherm.at<3>(rho).slope() > 0.0; };
    double top = kDense * rho_c;
    for (int k = 0; k < 6 && !rises(top); ++k) top *= 1.1;
    if (rises(top)) return top;
    top = kDense * rho_c;
    while (top > 1.2 * rho_c && !rises(top)) top -= 0.05 * rho_c;
    return top;
}

bool is_root(Isotherm<false> const& isotherm, double P, double x) {
    const IsothermState s = state_at(isotherm, x);
    return s.S > 0.0 && std::abs(s.P - P) <= 1e-10 * (std::abs(P) + x * (1.0 + s.S)) &&
           std::abs(s.P - P) <= room(P, x);
}

IsothermState spinodal_near(Isotherm<false> const& isotherm, double x, double low, double high) {
    for (int k = 0; k < 30; ++k) {
        const IsothermState s = state_at(isotherm, x);
        const double step = -s.S * x / s.C;  // dS/drho = C/rho
        if (!std::isfinite(step)) return {};
        if (std::abs(step) <= 1e-9 * x) return s;
        x += std::clamp(step, -0.1 * x, 0.1 * x);
        if (!(x > low && x < high)) return {};
    }
    return {};
}

}  // namespace corvane::meos
