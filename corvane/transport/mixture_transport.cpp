#include <corvane/core/errors.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/transport/mixture_transport.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace corvane {
namespace {

struct Component {
    Fluid fluid;
    Transport transport;
    double M, vc, Tc;

    explicit Component(Fluid f)
        : fluid(std::move(f)),
          transport(fluid),
          M(*fluid.model->ppar(0)),
          vc(fluid.model->vcrit()),
          Tc(fluid.model->Tcrit()) {}
};

/// What the components add to a value's evidence.
class Evidence {
  public:
    double operator()(TransportValue const& v) {
        if (!(v.value > 0.0)) throw ThException(5);  // beyond where its correlation means anything
        in_range_ = in_range_ && v.in_range;
        add(v.source);
        return v.value;
    }
    TransportValue result(double value, std::string const& model) const {
        return {value, model, sources_, in_range_, std::numeric_limits<double>::quiet_NaN()};
    }

  private:
    void add(std::string const& source) {
        if (std::find(told_.begin(), told_.end(), source) != told_.end()) return;
        told_.push_back(source);
        sources_ += (sources_.empty() ? "" : "; ") + source;
    }

    std::vector<std::string> told_;
    std::string sources_;
    bool in_range_ = true;
};

}  // namespace

struct MixtureTransport::Parts {
    std::vector<std::unique_ptr<Component>> components;

    int size() const { return static_cast<int>(components.size()); }
    Component const& operator[](int i) const { return *components[static_cast<std::size_t>(i)]; }

    void check(double T, double rho, Vector<double> const& x) const {
        bool good = T > 0.0 && rho >= 0.0 && std::isfinite(T + rho) && x.size() == size();
        double sum = 0.0;
        for (int i = 0; good && i < size(); ++i) {
            good = x[i] >= 0.0;
            sum += x[i];
        }
        if (!good || !(std::fabs(sum - 1.0) < 1e-9)) throw ThException(5);
    }

    /// Σ_i x_i·a_i/Σ_j x_j·φ_ij with Wilke's φ of the dilute viscosities eta.
    double of_gases(Vector<double> const& x, std::vector<double> const& a,
                    std::vector<double> const& eta) const {
        double sum = 0.0;
        for (int i = 0; i < size(); ++i) {
            if (!(x[i] > 0.0)) continue;
            double below = 0.0;
            for (int j = 0; j < size(); ++j) {
                if (!(x[j] > 0.0)) continue;
                const double m = (*this)[i].M / (*this)[j].M;
                const double root = 1.0 + std::sqrt(eta[static_cast<std::size_t>(i)] /
                                                    eta[static_cast<std::size_t>(j)]) /
                                              std::sqrt(std::sqrt(m));
                below += x[j] * root * root / std::sqrt(8.0 * (1.0 + m));
            }
            sum += x[i] * a[static_cast<std::size_t>(i)] / below;
        }
        return sum;
    }

    /// The density of component i at the reduced density of the mixture.
    double corresponding(int i, double rho, Vector<double> const& x) const {
        double v = 0.0;
        for (int j = 0; j < size(); ++j) v += x[j] * (*this)[j].vc;
        return rho * v / (*this)[i].vc;
    }

    std::vector<double> dilute_viscosities(double T, Vector<double> const& x, Evidence& known) const {
        std::vector<double> eta;
        for (int i = 0; i < size(); ++i)
            eta.push_back(x[i] > 0.0 ? known((*this)[i].transport.viscosity_background(T, 0.0)) : 1.0);
        return eta;
    }
};

MixtureTransport::MixtureTransport(Mixture const& mixture) : parts_(std::make_unique<Parts>()) {
    FluidOptions options;
    options.home = mixture.home;
    for (std::string const& name : mixture.components)
        parts_->components.push_back(
            std::make_unique<Component>(open(*mixture.equation, name, options)));
}
MixtureTransport::~MixtureTransport() = default;

TransportValue MixtureTransport::viscosity(double T, double rho, Vector<double> const& x) const {
    Parts const& p = *parts_;
    p.check(T, rho, x);
    Evidence known;
    const std::vector<double> eta0 = p.dilute_viscosities(T, x, known);
    double value = p.of_gases(x, eta0, eta0);
    if (rho == 0.0) return known.result(value, "Wilke");
    for (int i = 0; i < p.size(); ++i)
        if (x[i] > 0.0)
            value *= std::pow(known(p[i].transport.viscosity_background(T, p.corresponding(i, rho, x))) /
                                  eta0[static_cast<std::size_t>(i)],
                              x[i]);
    return known.result(value, "Wilke; Grunberg, Nissan at equal reduced densities");
}

TransportValue MixtureTransport::thermal_conductivity(double T, double rho,
                                                      Vector<double> const& x) const {
    Parts const& p = *parts_;
    p.check(T, rho, x);
    Evidence known;
    const std::vector<double> eta0 = p.dilute_viscosities(T, x, known);
    std::vector<double> lambda0, w, excess;
    double M = 0.0;
    for (int i = 0; i < p.size(); ++i) {
        lambda0.push_back(x[i] > 0.0 ? known(p[i].transport.conductivity_background(T, 0.0)) : 0.0);
        M += x[i] * p[i].M;
    }
    double value = p.of_gases(x, lambda0, eta0);
    if (rho == 0.0) return known.result(value, "Wassiljewa, Mason, Saxena");
    for (int i = 0; i < p.size(); ++i) {
        w.push_back(x[i] * p[i].M / M);
        excess.push_back(
            x[i] > 0.0 ? known(p[i].transport.conductivity_background(T, p.corresponding(i, rho, x))) -
                             lambda0[static_cast<std::size_t>(i)]
                       : 0.0);
    }
    for (std::size_t i = 0; i < w.size(); ++i) {
        value += w[i] * excess[i];
        for (std::size_t j = 0; j < i; ++j)
            value -= 0.72 * w[i] * w[j] * std::fabs(excess[i] - excess[j]);
    }
    if (!(value > 0.0)) throw ThException(5);
    return known.result(value, "Wassiljewa, Mason, Saxena; Filippov at equal reduced densities, "
                               "without critical enhancement");
}

TransportValue MixtureTransport::surface_tension(double T, double rhoL, Vector<double> const& x,
                                                 double rhoV, Vector<double> const& y) const {
    constexpr double kHighest = 0.9;  // of Tc: nearer, parachors are quotients of small numbers
    Parts const& p = *parts_;
    p.check(T, rhoL, x);
    p.check(T, rhoV, y);
    Evidence known;
    double sum = 0.0;
    for (int i = 0; i < p.size(); ++i) {
        if (!(x[i] > 0.0) && !(y[i] > 0.0)) continue;
        const double T1 = std::min(T, kHighest * p[i].Tc);
        const double sigma = known(p[i].transport.surface_tension(T1));
        const PureSaturation s = pure_saturation_T(*p[i].fluid.model, T1);
        sum += std::pow(sigma, 0.25) / (s.rhoL - s.rhoV) * (x[i] * rhoL - y[i] * rhoV);
    }
    return known.result(sum > 0.0 ? std::pow(sum, 4) : 0.0, "Weinaug, Katz: parachors");
}

}  // namespace corvane
