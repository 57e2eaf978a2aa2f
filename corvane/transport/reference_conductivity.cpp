#include <corvane/core/errors.h>
#include <corvane/pure/model1.h>
#include <corvane/state/phase_properties.h>
#include <corvane/transport/free_volume_gas.h>
#include <corvane/transport/reference_conductivity.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane::inline detail {
namespace {

using OfT = std::function<double(double)>;
using OfState = std::function<double(double, double)>;
constexpr double kBoltzmann = 1.380649e-23, kPi = 3.14159265358979323846;

OfT dilute_gas(Figures const& f, OfT const& eta0, OfT const& cv0) {
    std::string const& form = f.text("dilute");
    const double T_red = f.number("dilute.T_red");
    if (form == "ratio")
        return [=, above = Powers(f, "dilute.A", "dilute.n"),
                below = Powers(f, "dilute.B", "dilute.m")](double T) {
            return above(T / T_red) / below(T / T_red);
        };
    if (form == "viscosity_and_powers") {
        if (!eta0) f.fail("dilute", "needs the viscosity of the dilute gas");
        return [=, A = f.numbers("dilute.A"), t = f.numbers("dilute.t")](double T) {
            double sum = A[0] * 1e6 * eta0(T);
            for (std::size_t i = 1; i < A.size(); ++i) sum += A[i] * std::pow(T_red / T, t[i]);
            return sum;
        };
    }
    if (form == "carbon_dioxide")
        return [=, l = f.numbers("dilute.l", 4)](double T) {
            const double tau = T_red / T;
            return 1e-3 / (std::sqrt(tau) * (l[0] + tau * (l[1] + tau * (l[2] + tau * l[3]))));
        };
    if (form == "friend") {  // C·η0·(15/4 + f·(cv0/R − 3/2)), f = f0 + f1·T_red/T
        if (!eta0 || !cv0) f.fail("dilute", "needs the viscosity and the heat capacity of the dilute gas");
        return [=, C = f.number("dilute.C"), F = f.numbers("dilute.f", 2)](double T) {
            return C * 1e6 * eta0(T) * (3.75 + (F[0] + F[1] * T_red / T) * (cv0(T) - 1.5));
        };
    }
    f.fail("dilute", "unknown form");
}

/// Heavy water, IAPWS (2007): with what the critical point adds.
OfState heavy_water(Figures const& f, double M) {
    return [T_red = f.number("T_red"), rho_red = f.number("rho_red_mass") / (1e-3 * M), A = f.numbers("l0", 6), B = f.numbers("l1", 5),
            Be = f.number("Be"), C = f.numbers("lc", 2), D = f.number("lL")](double T, double rho) {
        const double t = T / T_red, r = rho / rho_red;
        double zero = 0.0, dense = 0.0;
        for (std::size_t i = A.size(); i-- > 0;) zero = zero * t + A[i];
        for (std::size_t j = B.size(); j-- > 1;) dense = (dense + B[j]) * r;
        dense += B[0] * -std::expm1(Be * r);
        const double f1 = std::exp(t * (0.144847 - 5.64493 * t)),
                     f2 = std::exp(-2.8 * (r - 1.0) * (r - 1.0)) -
                          0.080738543 * std::exp(-17.9430 * (r - 0.125698) * (r - 0.125698)),
                     tau = t / (std::fabs(t - 1.1) + 1.1), f3 = 1.0 + std::exp(60.0 * (tau - 1.0) + 20.0),
                     f4 = 1.0 + std::exp(100.0 * (tau - 1.0) + 15.0);
        const double critical = C[0] * f1 * f2 * (1.0 + f2 * f2 * (C[1] * f1 * f1 * f1 * f1 / f3 + 3.5 * f2 / f4));
        const double liquid = D * std::pow(f1, 1.2) * -std::expm1(-std::pow(r / 2.5, 10));
        return 0.742128e-3 * (zero + dense + critical + liquid);
    };
}

constexpr double kSuperfluid = 2.0;  // K, about: of helium

/// Hands, Arp, without what the critical point adds.
OfState helium(Figures const& f, double M) {
    return [M, C = f.number("gas.C"), n = f.number("gas.n"), g = f.numbers("gas.c", 4), c = f.numbers("dense.c", 11)](double T, double rho) {
        if (T < kSuperfluid) return std::numeric_limits<double>::quiet_NaN();
        const double zero = C * std::pow(T, n) * std::exp((g[0] + (g[1] + (g[2] + g[3] / T) / T) / T) / T);
        if (!(rho > 0.0)) return zero;
        const double r = 1e-3 * M * rho, third = std::cbrt(T), two = third * third;
        return zero + r * (c[0] + c[1] * T + c[2] * third + c[3] * two) + r * r * r * (c[4] + c[5] * third + c[6] * two) +
               r * r * std::log(r / 68.0) * (c[7] + c[8] * third + c[9] * two + c[10] / T);
    };
}

OfState trifluoromethane(Figures const& f) {
    return [joined = FreeVolumeGas(f), B = f.numbers("gas", 2)](double T, double rho) {
        return 1e-3 * joined(T, 1e-3 * rho, B[0] + B[1] * T);
    };
}

OfState dense(Figures const& f, double M) {
    std::string const& form = f.text("residual");
    const double T_red = f.number("residual.T_red");
    const double rho_red = f.reducing_density("residual", M);
    if (form != "powers") f.fail("residual", "unknown form");
    const auto A = f.numbers("residual.A"), t = f.numbers("residual.t", A.size()),
               d = f.numbers("residual.d", A.size()), gamma = f.numbers("residual.gamma", A.size()),
               l = f.numbers("residual.l", A.size());
    return [=](double T, double rho) {
        const double tau = T_red / T, delta = rho / rho_red;
        double sum = 0.0;
        for (std::size_t i = 0; i < A.size(); ++i)
            sum += A[i] * std::pow(tau, t[i]) * std::pow(delta, d[i]) *
                   (gamma[i] == 0.0 ? 1.0 : std::exp(-gamma[i] * std::pow(delta, l[i])));
        return sum;
    };
}

/// λ0·λ1 of IAPWS R15-11.
OfState water(Figures const& f, double M) {
    return [T_red = f.number("T_red"), rho_red = f.number("rho_red_mass") / (1e-3 * M),
            L0 = f.numbers("l0", 5), L = f.numbers("l1", 30)](double T, double rho) {
        const double t = T / T_red, r = rho / rho_red, x = 1.0 / t - 1.0, y = r - 1.0;
        double zero = 0.0, sum = 0.0;
        for (std::size_t k = 5; k-- > 0;) zero = zero / t + L0[k];
        for (std::size_t i = 5; i-- > 0;) {
            double row = 0.0;
            for (std::size_t j = 6; j-- > 0;) row = row * y + L[6 * i + j];
            sum = sum * x + row;
        }
        return 1e-3 * std::sqrt(t) / zero * std::exp(r * sum);
    };
}

/// ∂rho/∂p in mol/(m³·Pa); dp_drho in cm³/mol·MPa is J/mol.
double slope_of(PhaseProperties const& s) {
    return 1.0 / s.dp_drho;
}
double slope_at(Model1 const& model, double T, double rho) {
    return slope_of(phase_properties(model, T, 1e-6 * rho));
}

/// What is infinite at a critical point, ∂rho/∂p and with it cp, at most as large as at 1e-5 of T/Tc − 1 on the
/// critical isochore by the scaling law: nearer, gravity and thermometers say nothing, and the state is not told from the point.
struct Held {
    double slope;  ///< mol/(m³·Pa)
    double cp;     ///< J/(mol K)
};
Held held(PhaseProperties const& s, double most) {
    if (std::fabs(s.dp_drho) * most >= 1.0) return {slope_of(s), s.cp};
    return {most, s.cv + s.T * s.dp_dT * s.dp_dT / (s.rho * s.rho) * most};
}
double largest_susceptibility(double Gamma, double gamma) { return Gamma * std::pow(1e5, gamma); }

/// Of water: from ∂rho/∂p to the reduced susceptibility, and the largest ∂rho/∂p.
double water_reduction(PhaseProperties const& s) {
    constexpr double rho_red = 322.0, p_red = 22.064e6;
    const double mass = 1e-3 * s.M;
    return 1e6 * s.rho * mass / rho_red * (p_red / rho_red * mass);
}
double largest_slope(PhaseProperties const& s) {
    static const double most = largest_susceptibility(0.06, 1.239);
    return most / water_reduction(s);
}

}  // namespace

ReferenceSlope::ReferenceSlope(Model1 const& model, double T) : model_(&model), T_(T) {
    constexpr int n = 512, checked = 8;
    step_ = 3.6e6 / model.vcrit() / n;
    try {
        for (int k = 0; k <= n; ++k)  // the first is as good as zero
            dp_drho_.push_back(1.0 / slope_at(model, T, step_ * (k == 0 ? 1e-9 : k)));
        for (int k = checked / 2; k < n; k += checked) {
            const double rho = step_ * (k + 0.5);
            if (!(std::abs(interpolated(rho) * slope_at(model, T, rho) - 1.0) <= 1e-9)) return;
        }
    } catch (ThException const&) {  // the equation does not go so far
        return;
    }
    last_ = step_ * n;
}

double ReferenceSlope::interpolated(double rho) const {
    constexpr int nodes = 6;
    constexpr double weight[nodes] = {-1 / 120.0, 1 / 24.0, -1 / 12.0, 1 / 12.0, -1 / 24.0, 1 / 120.0};
    const double u = rho / step_;
    const int first = std::clamp(static_cast<int>(u) - 2, 0, static_cast<int>(dp_drho_.size()) - nodes);
    const double t = u - first;
    double before[nodes], after = 1.0, sum = 0.0;  // products of t − m
    before[0] = 1.0;
    for (int j = 1; j < nodes; ++j) before[j] = before[j - 1] * (t - (j - 1));
    for (int j = nodes; j-- > 0; after *= t - j)
        sum += weight[j] * before[j] * after * dp_drho_[static_cast<std::size_t>(first + j)];
    return sum;
}

double ReferenceSlope::operator()(double rho) const {
    return rho < last_ ? 1.0 / interpolated(rho) : slope_at(*model_, T_, rho);
}

ConductivityCorrelation::ConductivityCorrelation(Figures const& f, double M, OfT const& eta0, OfT const& cv0) {
    if (f.text("form") == "iapws") {
        background_ = water(f, M);
        enhancement_ = Enhancement::water;
        T_ref_ = water_reference_temperature;
        return;
    }
    if (f.text("form") == "heavy_water") {
        background_ = heavy_water(f, M);
        return;
    }
    if (f.text("form") == "helium") {
        background_ = helium(f, M);
        return;
    }
    if (f.text("form") == "trifluoromethane") {
        background_ = trifluoromethane(f);
        return;
    }
    if (f.text("form") != "general") f.fail("form", "unknown form");
    const auto of_gas = dilute_gas(f, eta0, cv0);
    const auto of_density = dense(f, M);
    background_ = [zero = of_gas, rest = of_density](double T, double rho) {
        return zero(T) + (rho > 0.0 ? rest(T, rho) : 0.0);
    };
    std::string const& form = f.text("critical");
    if (form == "none") return;
    if (form == "olchowy_sengers") {
        enhancement_ = Enhancement::olchowy_sengers;
        for (char const* name : {"qD", "xi0", "Gamma", "RD", "nu", "gamma"})
            figures_.push_back(f.number(std::string("critical.") + name));
        Tc_ = f.number("critical.Tc"), pc_ = 1e6 * f.number("critical.pc");
        rho_c_ = f.number("critical.rho_c");
        T_ref_ = f.number("critical.T_ref", 1.5 * Tc_);
        most_ = largest_susceptibility(figures_[2], figures_[5]);
        return;
    }
    if (form != "gaussian") f.fail("critical", "unknown form");
    enhancement_ = Enhancement::gaussian;
    figures_ = f.numbers("critical.a", 3);
    Tc_ = f.number("critical.Tc"), rho_c_ = f.number("critical.rho_c_mass") / (1e-3 * M);
}

double ConductivityCorrelation::critical(PhaseProperties const& s, ReferenceSlope const* slope,
                                         double eta) const {
    const double T = s.T, rho = 1e6 * s.rho;
    if (enhancement_ == Enhancement::none || !(rho > 0.0)) return 0.0;
    if (enhancement_ == Enhancement::gaussian) {
        const double t = Tc_ / T - 1.0, d = rho / rho_c_ - 1.0;
        return figures_[0] * std::exp(figures_[1] * t * t * t * t + figures_[2] * d * d);
    }
    if (std::isnan(s.h)) throw ThException(th_no_ideal);
    if (std::isnan(s.cv)) throw ThException(th_out_of_range);  // at a critical point where the equation is singular
    if (enhancement_ == Enhancement::water) return water_enhancement(s, *slope, eta);
    const double qD = figures_[0], xi0 = figures_[1], Gamma = figures_[2], RD = figures_[3],
                 nu = figures_[4], gamma = figures_[5];
    const double reduce = pc_ * rho / (rho_c_ * rho_c_);
    const auto [here, cp] = held(s, most_ / reduce);
    const double chi = reduce * (here - T_ref_ / T * (*slope)(rho));
    if (!(chi > 0.0) || !(cp > 0.0)) return 0.0;
    const double xi = xi0 * std::pow(chi / Gamma, nu / gamma), y = qD * xi;
    const double W = 2.0 / kPi * ((cp - s.cv) / cp * std::atan(y) + s.cv / cp * y);
    const double crossover = 1.0 / y + y * y * rho_c_ * rho_c_ / (3.0 * rho * rho);
    const double W0 = -2.0 / kPi * std::expm1(-1.0 / crossover);
    return rho * cp * RD * kBoltzmann * T / (6.0 * kPi * eta * xi) * (W - W0);
}

double ConductivityCorrelation::water_enhancement(PhaseProperties const& s,
                                                  ReferenceSlope const& slope, double eta) const {
    constexpr double Lambda = 177.8514, rho_red = 322.0, T_red = 647.096, R_mass = 461.51805;
    const double r = 1e3 * s.rho * s.M / rho_red, y = water_correlation_length(s, slope) / 0.4;
    const double own_cp = held(s, largest_slope(s)).cp;
    if (!(y > 1.2e-7) || !(own_cp > 0.0)) return 0.0;
    const double inverse = s.cv / own_cp;
    const double Z = 2.0 / (kPi * y) *
                     ((1.0 - inverse) * std::atan(y) + inverse * y +
                      std::expm1(-1.0 / (1.0 / y + y * y / (3.0 * r * r))));
    const double cp = own_cp / (1e-3 * s.M) / R_mass;
    return 1e-3 * Lambda * r * cp * (s.T / T_red) / (1e6 * eta) * Z;
}

double water_correlation_length(PhaseProperties const& s, ReferenceSlope const& slope) {
    const double chi = water_reduction(s) * (held(s, largest_slope(s)).slope - slope(1e6 * s.rho) * slope.T() / s.T);
    return chi > 0.0 ? 0.13 * std::pow(chi / 0.06, 0.63 / 1.239) : 0.0;
}

}  // namespace corvane::inline detail
