#include <corvane/transport/free_volume_gas.h>
#include <corvane/transport/special_viscosity.h>

#include <array>
#include <cmath>
#include <numbers>

namespace corvane::inline detail {
namespace {

/// Gas with second and third virial coefficients of the viscosity, and Enskog's hard spheres of a size that depends on the state; one
/// passes into the other about the critical density.
class MethanolViscosity final : public ViscosityCorrelation {
  public:
    MethanolViscosity(Figures const& f, double M)
        : M_(M),
          epsilon_(f.number("epsilon")),
          sigma_(f.number("sigma")),
          delta_(f.number("delta")),
          Tc_(f.number("Tc")),
          rho_c_(f.number("rho_c_mass") / (1e-3 * M)),
          sphere_(f.number("sphere")),
          B_(f, "B.b", "B.t"),
          C_(f.numbers("C", 2)),
          a_(f.numbers("omega", 13)),
          d_(f.numbers("sphere.T")),
          e_(f.numbers("sphere.rho")) {}
    double dilute(double T) const override {
        const double t = T / epsilon_, d2 = delta_ * delta_;
        const auto three = [&](std::size_t k) {
            return a_[k] * std::pow(t, a_[k + 1]) + a_[k + 2] * std::exp(a_[k + 3] * t) + a_[k + 4] * std::exp(a_[k + 5] * t);
        };
        const double omega = three(0) * (1.0 + d2 / (1.0 + a_[6] * d2 * d2 * d2) * three(7));
        return 26.6957e-9 * std::sqrt(M_ * T) / (sigma_ * sigma_ * omega);
    }
    double background(double T, double rho) const override {
        const double eta0 = dilute(T), t = T / epsilon_;
        if (!(rho > 0.0)) return eta0;
        const double gas = kNumber * std::pow(1e-9 * sigma_, 3) * rho,
                     thin = 1.0 + B_(t) * gas + C_[0] * t * t * t * std::exp(C_[1] / std::sqrt(t)) * gas * gas;
        double size = 0.0, power = 1.0;
        for (double d : d_) size += d * power, power *= Tc_ / T;
        power = 1.0;
        for (double e : e_) power *= rho / rho_c_, size += e * power;
        const double b = 2.0 / 3.0 * std::numbers::pi * kNumber * std::pow(1e-9 * sphere_ * size, 3) * rho, z = 0.25 * b,
                     g = (1.0 - 0.5 * z) / std::pow(1.0 - z, 3), enskog = 1.0 / g + 0.8 * b + 0.761 * g * b * b;
        const double part = 1.0 / (1.0 + std::exp(5.0 * (rho / rho_c_ - 1.0)));
        return eta0 * (part * thin + (1.0 - part) * enskog);
    }

  private:
    static constexpr double kNumber = 6.02214076e23;
    double M_, epsilon_, sigma_, delta_, Tc_, rho_c_, sphere_;
    Powers B_;
    std::vector<double> C_, a_, d_, e_;
};

class TrifluoromethaneViscosity final : public ViscosityCorrelation {
  public:
    TrifluoromethaneViscosity(Figures const& f, double M)
        : M_(M), joined_(f), sigma_(f.number("sigma")), epsilon_(f.number("epsilon")), a_(f.numbers("omega", 5)) {}
    double dilute(double T) const override { return background(T, 0.0); }
    double background(double T, double rho) const override {
        const double x = std::log(T / epsilon_);
        double sum = 0.0;
        for (std::size_t k = a_.size(); k-- > 0;) sum = sum * x + a_[k];
        return 1e-6 * joined_(T, 1e-3 * rho, 1.25 * 0.021357 * std::sqrt(M_ * T) / (sigma_ * sigma_ * std::exp(sum)));
    }

  private:
    double M_;
    FreeVolumeGas joined_;
    double sigma_, epsilon_;
    std::vector<double> a_;
};

class HeliumViscosity final : public ViscosityCorrelation {
  public:
    HeliumViscosity(Figures const& f, double M)
        : M_(M), zero_(f.numbers("zero", 5)), rho_{f.numbers("rho1", 5), f.numbers("rho2", 5), f.numbers("rho3", 5)} {}
    double dilute(double T) const override { return background(T, 0.0); }
    double background(double T, double rho) const override {
        if (T < 2.0) return std::numeric_limits<double>::quiet_NaN();  // superfluid
        const double x = std::log(std::min(T, 300.0)), dense = 1e-6 * M_ * rho;  // g/cm³
        const auto sum = [x](std::vector<double> const& c) { return c[0] / x + c[1] + x * (c[2] + x * (c[3] + x * c[4])); };
        const double zero = std::exp(sum(zero_)),
                     all = zero * std::exp(dense * (sum(rho_[0]) + dense * (sum(rho_[1]) + dense * sum(rho_[2]))));
        if (T <= 100.0) return 1e-7 * all;
        const double gas = 196.0 * std::pow(T, 0.71938) * std::exp((12.451 - 295.67 / T) / T - 4.1249);
        return 1e-7 * (all + gas - zero);
    }

  private:
    double M_;
    std::vector<double> zero_;
    std::array<std::vector<double>, 3> rho_;
};

}  // namespace

std::unique_ptr<ViscosityCorrelation> special_viscosity(Figures const& f, std::string const& form, double M) {
    if (form == "methanol") return std::make_unique<MethanolViscosity>(f, M);
    if (form == "trifluoromethane") return std::make_unique<TrifluoromethaneViscosity>(f, M);
    if (form == "helium") return std::make_unique<HeliumViscosity>(f, M);
    return nullptr;
}

}  // namespace corvane::inline detail
