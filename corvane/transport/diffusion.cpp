#include <corvane/core/constants.h>
#include <corvane/transport/diffusion.h>
#include <corvane/transport/dilute_gas.h>

#include <numbers>

namespace corvane::inline detail {
namespace {
constexpr double kAvogadro = 6.02214076e23;
}

double collision_diameter(double T, double M, double epsilon, double eta0) {
    return std::sqrt(chapman_enskog_viscosity(T, M, 1.0, epsilon) / eta0);
}

double dilute_diffusion(double T, GasPair const& pair) {
    // (6/5)·η/M with Ω(1,1) in place of Ω(2,2)
    const double t = T / pair.epsilon;
    return 1.2 * chapman_enskog_viscosity(T, pair.M, pair.sigma, pair.epsilon) * collision_viscosity(t) /
           collision_diffusion(t) / (1e-3 * pair.M);
}

double fuller_diffusion(double T, double M, double v1, double v2) {
    const double sum = std::cbrt(v1) + std::cbrt(v2);
    return 1e5 / (R * T) * 0.00143e-4 * std::pow(T, 1.75) / (std::sqrt(M) * sum * sum);
}

double joined_diffusion(double gas, double liquid, double rho, double eta0, double eta) {
    return std::hypot(gas / (1e6 * rho) * eta0, liquid) / eta;
}

double liquid_self_diffusion(double T, double rho) {
    return R / kAvogadro * T * std::cbrt(1e6 * rho * kAvogadro) / (2.0 * std::numbers::pi);
}

}  // namespace corvane::inline detail
