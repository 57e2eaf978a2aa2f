#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/transport/chung.h>
#include <corvane/transport/dilute_gas.h>
#include <corvane/transport/rows.h>

#include <cmath>

namespace corvane::inline detail {
namespace {

struct Row {
    double a, b, c;  // constant, of ω, of the reduced dipole moment to the fourth
};
constexpr Row kE[10] = {{6.324, 50.412, -51.680},         {1.210e-3, -1.154e-3, -6.257e-3},
                        {5.283, 254.209, -168.48},        {6.623, 38.096, -8.464},
                        {19.745, 7.630, -14.354},         {-1.900, -12.537, 4.985},
                        {24.275, 3.450, -11.291},         {0.7972, 1.117, 0.01235},
                        {-0.2382, 0.06770, -0.8163},      {0.06863, 0.3479, 0.5926}};
constexpr Row kB[7] = {{2.4166, 0.74824, -0.91858},   {-0.50924, -1.5094, -49.991},
                       {6.6107, 5.6207, 64.760},      {14.543, -8.9139, -5.6379},
                       {0.79274, 0.82019, -0.69369},  {-5.8634, 12.801, 9.5893},
                       {91.089, 128.11, -54.217}};

/// [C1·(1 − exp(−C4·y))/y + C2·G1·exp(C5·y) + C3·G1]/(C1·C4 + C2 + C3)
double contact(double y, double c1, double c2, double c3, double c4, double c5) {
    const double free = 1.0 - y, G1 = (1.0 - 0.5 * y) / (free * free * free);
    return (-c1 * std::expm1(-c4 * y) / y + c2 * G1 * std::exp(c5 * y) + c3 * G1) /
           (c1 * c4 + c2 + c3);
}

}  // namespace

ChungEstimate::ChungEstimate(double M, double Tc, double vc, double omega, double dipole) {
    set_up(M, Tc, vc, omega, dipole);
}

ChungEstimate::ChungEstimate(Fluid const& fluid) {
    Model1 const& model = *fluid.model;
    const auto known = [](double x, double otherwise) { return x > 0.0 ? x : otherwise; };
    const double Tc = known(fluid.notes.Tc, model.Tcrit()), pc = known(fluid.notes.pc, model.pcrit()),
                 vc = known(fluid.notes.vc, model.vcrit());
    const double omega = -std::log10(pure_saturation_T(model, 0.7 * Tc).p / pc) - 1.0;
    const auto dipole = row_of(fluid.home, "dipole", fluid.substance, 3, 1);
    informed_ = dipole.has_value();
    set_up(*fluid.model->ppar(0), Tc, vc, omega, informed_ ? dipole->front() : 0.0);
}

void ChungEstimate::set_up(double M, double Tc, double vc, double omega, double dipole) {
    M_ = M, Tc_ = Tc, vc_ = vc, omega_ = omega;
    const double reduced = 131.3 * dipole / std::sqrt(vc * Tc), mu4 = std::pow(reduced, 4);
    dipole_ = reduced;
    shape_ = 1.0 - 0.2756 * omega + 0.059035 * mu4;
    for (std::size_t i = 0; i < E_.size(); ++i) E_[i] = kE[i].a + kE[i].b * omega + kE[i].c * mu4;
    for (std::size_t i = 0; i < B_.size(); ++i) B_[i] = kB[i].a + kB[i].b * omega + kB[i].c * mu4;
}

double ChungEstimate::dilute(double T) const {
    const double t = 1.2593 * T / Tc_, wave = 6.435e-4 * std::pow(t, 0.14874) *
                                              std::sin(18.0323 * std::pow(t, -0.76830) - 7.27371);
    return 40.785 * shape_ * std::sqrt(M_ * T) / (std::cbrt(vc_ * vc_) * (collision_viscosity(t) - wave));
}

double ChungEstimate::viscosity(double T, double rho) const {
    const double gas = dilute(T), y = rho * vc_ / 6.0;
    if (!(y > 0.0)) return 1e-7 * gas;
    const double t = 1.2593 * T / Tc_;
    const double G2 = contact(y, E_[0], E_[1], E_[2], E_[3], E_[4]);
    const double dense = E_[6] * y * y * G2 * std::exp(E_[7] + (E_[8] + E_[9] / t) / t) * 36.344 *
                         std::sqrt(M_ * Tc_) / std::cbrt(vc_ * vc_);
    return 1e-7 * (gas * (1.0 / G2 + E_[5] * y) + dense);
}

double ChungEstimate::conductivity(double T, double rho, double cv) const {
    const double Tr = T / Tc_, alpha = cv - 1.5, Z = 2.0 + 10.5 * Tr * Tr,
                 beta = 0.7862 + omega_ * (-0.7109 + 1.3168 * omega_);
    const double psi = 1.0 + alpha * (0.215 + 0.28288 * alpha - 1.061 * beta + 0.26665 * Z) /
                                 (0.6366 + beta * Z + 1.061 * alpha * beta);
    const double M = 1e-3 * M_, gas = 31.2 * 1e-7 * dilute(T) * psi / M;
    const double y = rho * vc_ / 6.0;
    if (!(y > 0.0)) return gas;
    const double G2 = contact(y, B_[0], B_[1], B_[2], B_[3], B_[4]);
    const double q = 3.586e-3 * std::sqrt(Tc_ / M) / std::cbrt(vc_ * vc_);
    return gas * (1.0 / G2 + B_[5] * y) + q * B_[6] * y * y * std::sqrt(Tr) * G2;
}

}  // namespace corvane::inline detail
