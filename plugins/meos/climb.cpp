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

double Climb::next() {
    if (!(x_ > b_.low && x_ < b_.high))
        x_ = b_.high < kInfinity ? 0.5 * (b_.low + b_.high) : 1.15 * std::max(b_.low, b_.on);
    return x_;
}

bool Climb::ends(IsothermState const& s) {
    const double x = x_;
    if (!(s.S > 0.0) || !std::isfinite(s.P) || !std::isfinite(s.C)) {
        if (x < b_.on)
            b_.low = x, b_.low_open = true;
        else
            b_.high = x, b_.high_open = true;
        x_ = 0.5 * (b_.low + b_.high);
    } else {
        const double q = (P_ - s.P) / (x * s.S), bend = s.C / s.S;
        const double step = murnaghan_step(q, bend);
        // The error after the step is of the order q³·(bend² + 1).
        if (std::isfinite(step) && std::abs(q) * q * q * (bend * bend + 1.0) < 1e-17) {
            // Far below a triple point some isotherms rise by 1e20 around the critical density:
            // they cross P between two neighbouring densities, neither of which has it.
            constexpr double eps = std::numeric_limits<double>::epsilon();
            found_ = true;
            root_ = 8.0 * x * s.S * eps <= room(P_, x) ? x + x * step : 0.0;
            return true;
        }
        if (q > 0.0)
            b_.low = x, b_.low_open = false;
        else
            b_.high = x, b_.high_open = false;
        x_ += x * std::clamp(std::isfinite(step) ? step : q, -0.7, gas_ ? 4.0 : 0.15);
    }
    return ++count_ == 120 || (b_.high < kInfinity && b_.high - b_.low <= 1e-15 * b_.high);
}

double climb(Isotherm<false> const& isotherm, Climb c) {
    while (!c.ends(state_at(isotherm, c.next()))) {
    }
    if (c.found()) return c.root();
    Bracket const& b = c.bracket();
    return !b.low_open && !b.high_open && is_root(isotherm, c.P(), b.low) ? b.low : 0.0;
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
