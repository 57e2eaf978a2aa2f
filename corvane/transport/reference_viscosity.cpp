#include <corvane/transport/reference_viscosity.h>
#include <corvane/transport/special_viscosity.h>

#include <cmath>
#include <limits>
#include <functional>

namespace corvane::inline detail {
namespace {

using OfT = std::function<double(double)>;              // T
using OfState = std::function<double(double, double)>;  // T, rho
constexpr double kAvogadro = 6.02214129e23;

/// 26.692e-9·√(M·T)/(σ²·Ω), σ in nm: Neufeld, Janzen, Aziz, J. Chem. Phys. 57 (1972) 1100.
double neufeld(double T, double M, double sigma, double epsilon) {
    const double t = T / epsilon;
    const double omega = 1.16145 * std::pow(t, -0.14874) + 0.52487 * std::exp(-0.77320 * t) +
                         2.16178 * std::exp(-2.43787 * t);
    return 26.692e-9 * std::sqrt(M * T) / (sigma * sigma * omega);
}

OfT dilute_gas(Figures const& f, double M) {
    std::string const& form = f.text("dilute");
    const auto logarithmic = [&f] { return Powers(f, "dilute.a", "dilute.t"); };
    if (form == "collision_integral_log") {
        const double sigma = f.number("sigma"), epsilon = f.number("epsilon");
        const double factor =
            f.number("dilute.C") * std::sqrt(f.number("dilute.M")) / (sigma * sigma);
        return [=, s = logarithmic()](double T) {
            return factor * std::sqrt(T) * std::exp(-s(std::log(T / epsilon)));
        };
    }
    if (form == "neufeld") {
        const double sigma = f.number("sigma"), epsilon = f.number("epsilon");
        return [=, mass = f.number("dilute.M", M)](double T) {
            return neufeld(T, mass, sigma, epsilon);
        };
    }
    const double Tr = f.number("dilute.T_red", 1.0);
    if (form == "powers") return [Tr, s = logarithmic()](double T) { return s(T / Tr); };
    if (form == "sqrtT_over_powers")
        return [Tr, C = f.number("dilute.C"), s = logarithmic()](double T) {
            return C * std::sqrt(T) / s(T / Tr);
        };
    if (form == "sqrtT_times_powers")  // C·√(T/T_red)·Σ a_i·(T/T_red)^t_i
        return [Tr, C = f.number("dilute.C"), s = logarithmic()](double T) {
            return C * std::sqrt(T / Tr) * s(T / Tr);
        };
    if (form == "exponential")  // C·√T/exp(A + B/T + C/T²)
        return [C = f.number("dilute.C"), a = f.numbers("dilute.a", 3)](double T) {
            return C * std::sqrt(T) / std::exp(a[0] + (a[1] + a[2] / T) / T);
        };
    if (form == "laesecke_muzny")
        return [a = f.numbers("dilute.a", 7), C = f.number("dilute.C")](double T) {
            const double third = std::cbrt(T), sixth = std::sqrt(third);
            return C * std::sqrt(T) /
                   (a[0] + a[1] * sixth + a[2] * std::exp(a[3] * third) +
                    (a[4] + a[5] * third) / std::exp(third) + a[6] * std::sqrt(T));
        };
    f.fail("dilute", "unknown form");
}

/// Per η0 and rho (Rainwater, Friend, Phys. Rev. A 36 (1987) 4062), or by itself.
OfState initial_density(Figures const& f, OfT const& eta0) {
    if (!f.has("initial")) return [](double, double) { return 0.0; };
    if (f.text("initial") == "rainwater_friend") {
        const double sigma = 1e-9 * f.number("sigma"), epsilon = f.number("epsilon");
        return [=, B = Powers(f, "initial.b", "initial.t")](double T, double rho) {
            return eta0(T) * kAvogadro * sigma * sigma * sigma * B(T / epsilon) * rho;
        };
    }
    if (f.text("initial") == "empirical")
        return [n = f.numbers("initial.n"), d = f.numbers("initial.d"), t = f.numbers("initial.t")](
                   double T, double rho) {
            double sum = 0.0;
            for (std::size_t i = 0; i < n.size(); ++i)
                sum += n[i] * std::pow(rho, d[i]) * std::pow(T, -t[i]);
            return sum;
        };
    f.fail("initial", "unknown form");
}

/// Powers of density and temperature beside a free volume (Batschinski, Hildebrand).
OfState free_volume(Figures const& f, double T_red, double rho_red) {
    const auto a = f.numbers("residual.a"), d1 = f.numbers("residual.d1", a.size()),
               t1 = f.numbers("residual.t1", a.size()),
               gamma = f.numbers("residual.gamma", a.size()), l = f.numbers("residual.l", a.size());
    const auto n = f.numbers("residual.f"), d2 = f.numbers("residual.d2", n.size()),
               t2 = f.numbers("residual.t2", n.size());
    const Powers above(f, "residual.g", "residual.h"), below(f, "residual.p", "residual.q");
    return [=](double T, double rho) {
        const double tau = T_red / T, delta = rho / rho_red;
        double sum = 0.0, free = 0.0;
        for (std::size_t i = 0; i < a.size(); ++i)
            sum += a[i] * std::pow(delta, d1[i]) * std::pow(tau, t1[i]) *
                   (gamma[i] == 0.0 ? 1.0 : std::exp(gamma[i] * std::pow(delta, l[i])));
        for (std::size_t i = 0; i < n.size(); ++i)
            free += n[i] * std::pow(delta, d2[i]) * std::pow(tau, t2[i]);
        if (free == 0.0) return sum;
        const double delta0 = above(tau) / below(tau);
        if (!(delta < delta0)) return std::numeric_limits<double>::quiet_NaN();  // behind the pole
        return sum + free * (1.0 / (delta0 - delta) - 1.0 / delta0);
    };
}

/// 1e-6·r^(2/3)·√Tr·{…}, r and Tr reduced: the forms of one family of papers (Assael, Huber,
/// Perkins and co-workers), each with figures c.
OfState rational(Figures const& f, std::string const& form, double T_red, double rho_red) {
    using Inner = double (*)(std::vector<double> const&, double, double);
    Inner inner = nullptr;
    if (form == "benzene")
        inner = [](std::vector<double> const& c, double r, double t) {
            return c[0] * r * r + c[1] * r / (c[2] + c[3] * t + c[4] * r) +
                   (c[5] * r + c[6] * r * r) / (c[7] + c[8] * r * r);
        };
    if (form == "hexane")
        inner = [](std::vector<double> const& c, double r, double t) {
            return c[0] / t + c[1] / (c[2] + t + c[3] * r * r) +
                   c[4] * (1.0 + r) / (c[5] + c[6] * t + c[7] * r + r * r + c[8] * r * t);
        };
    if (form == "heptane")
        inner = [](std::vector<double> const& c, double r, double t) {
            return r * (c[0] + r * (c[1] + r * c[2]) +
                        c[3] / (c[4] + c[5] * t + c[6] * r + r * r + c[7] * r * t));
        };
    if (form == "toluene")
        inner = [](std::vector<double> const& c, double r, double t) {
            return (c[0] * r + c[1] * r * r * r * r) / t +
                   c[2] * r * r * r / (r * r + c[3] + c[4] * t) + c[5] * r;
        };
    if (!inner) return {};
    const std::size_t count = form == "toluene" ? 6 : form == "heptane" ? 8 : 9;
    return [=, c = f.numbers("residual.c", count)](double T, double rho) {
        const double r = rho / rho_red, t = T / T_red;
        return 1e-6 * std::cbrt(r * r) * std::sqrt(t) * inner(c, r, t);
    };
}

OfState residual(Figures const& f, double M) {
    std::string const& form = f.text("residual");
    const double T_red = f.number("residual.T_red");
    const double rho_red = f.reducing_density("residual", M);
    if (form == "free_volume") return free_volume(f, T_red, rho_red);
    if (OfState found = rational(f, form, T_red, rho_red)) return found;
    if (form == "hydrogen")  // Muzny, Huber, Kazakov
        return [=, c = f.numbers("residual.c", 6)](double T, double rho) {
            const double r = rho / rho_red, t = T / T_red;
            return c[0] * r * r *
                   std::exp(c[1] * t + c[2] / t + c[3] * r * r / (c[4] + t) +
                            c[5] * std::pow(r, 6));
        };
    if (form == "carbon_dioxide") {  // Laesecke, Muzny
        const double mass = 1e-3 * M, gas_constant = 8.31446261815324;
        const double unit = std::cbrt(rho_red * mass * rho_red * mass) *
                            std::sqrt(gas_constant * T_red) /
                            (std::pow(mass, 1.0 / 6.0) * 84446887.43579945);
        return [=, c = f.numbers("residual.c", 3)](double T, double rho) {
            const double r = rho / rho_red, t = T / T_red;
            return unit * (c[0] * t * r * r * r + (r * r + std::pow(r, c[2])) / (t - c[1]));
        };
    }
    if (form == "xylene")  // Cao, Meng, Wu, Vesovic: meta and ortho
        return [=, D = f.numbers("residual.D", 5), E = f.numbers("residual.E", 5), n = f.numbers("residual.n", 5),
                k = f.numbers("residual.k", 3)](double T, double rho) {
            const double r = rho / rho_red, t = T / T_red;
            return 1e-6 * std::cbrt(r * r) * std::sqrt(t) *
                   ((D[0] + E[0] * std::pow(t, -k[0])) * std::pow(r, n[0]) + D[1] * std::pow(r, n[1]) +
                    E[2] * std::pow(r, n[2]) * std::pow(t, -k[2]) + (D[3] * r + E[3] * t) * std::pow(r, n[3]) +
                    D[4] * std::pow(r, n[4]));
        };
    if (form == "p_xylene")  // Balogun, Riesco, Vesovic
        return [=, cold = Powers(f, "residual.b", "residual.m"), a = Powers(f, "residual.a", "residual.n")](double T, double rho) {
            const double r = rho / rho_red;
            return 1e-6 * std::cbrt(r * r) * (a(r) + cold(r) / std::sqrt(T / T_red));
        };
    if (form == "friend")  // nine terms over one plus two: Friend, Ely, Ingham
        return [=, C = f.number("residual.C"), g = f.numbers("residual.g", 11),
                d = f.numbers("residual.d", 11),
                s = f.numbers("residual.s", 11)](double T, double rho) {
            const double tau = T_red / T, delta = rho / rho_red;
            double sum[2] = {0.0, 1.0};
            for (std::size_t i = 0; i < 11; ++i)
                sum[i / 9] += g[i] * std::pow(delta, d[i]) * std::pow(tau, s[i]);
            return C * sum[0] / sum[1];
        };
    f.fail("residual", "unknown form");
}

class General final : public ViscosityCorrelation {
  public:
    General(Figures const& f, double M)
        : eta0_(dilute_gas(f, M)), initial_(initial_density(f, eta0_)), residual_(residual(f, M)) {}
    double dilute(double T) const override { return eta0_(T); }
    double background(double T, double rho) const override {
        return rho > 0.0 ? eta0_(T) + initial_(T, rho) + residual_(T, rho) : eta0_(T);
    }

  private:
    OfT eta0_;
    OfState initial_, residual_;
};

/// Water and heavy water: scale·μ0(T)·exp(r·ΣΣ H_ij·(1/t − 1)^i·(r − 1)^j), IAPWS.
class Water final : public ViscosityCorrelation {
  public:
    Water(Figures const& f, double M)
        : T_red_(f.number("T_red")),
          rho_red_(f.number("rho_red_mass") / (1e-3 * M)),
          scale_(f.number("scale")),
          H0_(f.numbers("mu0")),
          I_(f.numbers("mu1.i")),
          J_(f.numbers("mu1.j", I_.size())),
          H_(f.numbers("mu1.H", I_.size())) {}
    double dilute(double T) const override {
        const double t = T / T_red_;
        double sum = 0.0;
        for (std::size_t i = H0_.size(); i-- > 0;) sum = sum / t + H0_[i];
        return scale_ * std::sqrt(t) / sum;
    }
    double background(double T, double rho) const override {
        const double r = rho / rho_red_, x = T_red_ / T - 1.0, y = r - 1.0;
        double xs[8] = {1.0}, ys[8] = {1.0}, sum = 0.0;
        for (int k = 1; k < 8; ++k) xs[k] = xs[k - 1] * x, ys[k] = ys[k - 1] * y;
        for (std::size_t k = 0; k < H_.size(); ++k)
            sum += H_[k] * xs[static_cast<int>(I_[k]) & 7] * ys[static_cast<int>(J_[k]) & 7];
        return dilute(T) * std::exp(r * sum);
    }

  private:
    double T_red_, rho_red_, scale_;
    std::vector<double> H0_, I_, J_, H_;
};

}  // namespace

std::unique_ptr<ViscosityCorrelation> viscosity_correlation(Figures const& figures, double M) {
    if (figures.text("form") == "iapws") return std::make_unique<Water>(figures, M);
    if (figures.text("form") == "general") return std::make_unique<General>(figures, M);
    if (auto found = special_viscosity(figures, figures.text("form"), M)) return found;
    figures.fail("form", "unknown form");
}

double critical_viscosity_factor(double xi) {
    constexpr double qC = 1.0 / 1.9, qD = 1.0 / 1.1, exponent = 0.068;
    if (!(xi > 0.0)) return 1.0;
    const double c = qC * xi, d = qD * xi;
    if (xi <= 0.3817016416)
        return std::exp(exponent * 0.2 * c * std::pow(d, 5) *
                        (1.0 - c + c * c - 765.0 / 504.0 * d * d));
    const double psi = std::acos(1.0 / std::sqrt(1.0 + d * d));
    const double w = std::sqrt(std::abs((c - 1.0) / (c + 1.0))) * std::tan(0.5 * psi);
    const double L = c > 1.0 ? std::log((1.0 + w) / (1.0 - w)) : 2.0 * std::atan(std::abs(w));
    const double c2 = c * c, c3 = c2 * c;
    const double Y = std::sin(3.0 * psi) / 12.0 - std::sin(2.0 * psi) / (4.0 * c) +
                     (1.0 - 1.25 * c2) * std::sin(psi) / c2 -
                     ((1.0 - 1.5 * c2) * psi - std::pow(std::abs(c2 - 1.0), 1.5) * L) / c3;
    return std::exp(exponent * Y);
}

}  // namespace corvane::inline detail
