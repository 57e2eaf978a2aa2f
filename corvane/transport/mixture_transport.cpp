#include <corvane/core/errors.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/transport/diffusion.h>
#include <corvane/transport/dilute_gas.h>
#include <corvane/transport/entropy_scaling.h>
#include <corvane/transport/mixture_transport.h>
#include <corvane/transport/rows.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace corvane {
namespace {

struct Component {
    Fluid fluid;
    Transport transport;
    double M, vc, Tc;
    double V;    ///< of the liquid at its boiling point, cm³/mol
    double phi;  ///< association factor of Wilke and Chang
    std::optional<std::vector<double>> volume;  ///< of diffusion (Fuller), cm³/mol

    explicit Component(Fluid f)
        : fluid(std::move(f)),
          transport(fluid),
          M(*fluid.model->ppar(0)),
          vc(fluid.model->vcrit()),
          Tc(fluid.model->Tcrit()),
          V(boiling_volume(fluid.notes.vc > 0.0 ? fluid.notes.vc : vc)),
          phi(association(fluid.substance)),
          volume(row_of(fluid.home, "diffusion_volume", fluid.substance, 3, 1)) {}

  private:
    static double association(std::string const& name) {
        return name == "water" ? 2.6 : name == "methanol" ? 1.9 : name == "ethanol" ? 1.5 : 1.0;
    }
};

/// What the components add to a value's evidence.
class Evidence {
  public:
    double operator()(TransportValue const& v) {
        if (!(v.value > 0.0)) throw ThException(5);  // beyond where its correlation means anything
        in_range_ = in_range_ && v.in_range;
        uncertainty_ = std::fmax(uncertainty_, v.uncertainty);
        add(v.source);
        return v.value;
    }
    TransportValue result(double value, std::string const& model) const {
        return {value, model, sources_, in_range_, std::numeric_limits<double>::quiet_NaN(), uncertainty_};
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
    double uncertainty_ = std::numeric_limits<double>::quiet_NaN();  // the largest that is known
};

/// What the rules of mixing come to, relative: nine of ten measured values are nearer (docs/transport.md). Water with
/// anything else is told apart; `thin` is less than 0.3 critical densities.
struct RuleUncertainty {
    double thin, dense, with_water;
};
constexpr RuleUncertainty kViscosityRule = {0.12, 0.2, 0.65}, kConductivityRule = {0.15, 0.2, 0.2},
                          kGradientTheoryRule = {0.2, 0.2, 0.25}, kParachorsRule = {0.15, 0.15, 0.95};

}  // namespace

struct MixtureTransport::Parts {
    ModelN const* model = nullptr;
    std::vector<std::unique_ptr<Component>> components;
    std::optional<EntropyScaling> scaling;  ///< where all components have it

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
        const auto at = [](std::vector<double> const& v) {
            return [&v](int i) { return v[static_cast<std::size_t>(i)]; };
        };
        return corvane::of_gases(
            size(), [&](int i) { return x[i]; }, at(a), at(eta), [&](int i) { return (*this)[i].M; });
    }

    /// rho·D of the dilute gas of two components, mol/(m·s).
    double gas_diffusion(double T, std::array<double, 2> const& eta0) const {
        Component const &a = (*this)[0], &b = (*this)[1];
        const double M = 2.0 / (1.0 / a.M + 1.0 / b.M);
        if (a.volume && b.volume) return fuller_diffusion(T, M, a.volume->front(), b.volume->front());
        const double ea = energy_of(a.Tc), eb = energy_of(b.Tc);
        return dilute_diffusion(T, {M,
                                    0.5 * (collision_diameter(T, a.M, ea, eta0[0]) +
                                           collision_diameter(T, b.M, eb, eta0[1])),
                                    std::sqrt(ea * eb)});
    }

    /// The density of component i at the reduced density of the mixture.
    double corresponding(int i, double rho, Vector<double> const& x) const {
        double v = 0.0;
        for (int j = 0; j < size(); ++j) v += x[j] * (*this)[j].vc;
        return rho * v / (*this)[i].vc;
    }

    /// Of a rule in the phase; of a pure component nothing but its own.
    double uncertainty(RuleUncertainty const& rule, double own, double rho, Vector<double> const& x) const {
        double v = 0.0, most = 0.0;
        bool wet = false;
        for (int j = 0; j < size(); ++j) {
            v += x[j] * (*this)[j].vc;
            most = std::max(most, x[j]);
            wet = wet || (x[j] > 0.0 && (*this)[j].fluid.substance == "water");
        }
        if (most == 1.0) return own;
        constexpr double kThin = 0.3;
        return std::fmax(own, rho * v < kThin ? rule.thin : wet ? rule.with_water : rule.dense);
    }

    /// Is ∂μ_i/∂rho_j not positive definite? Then it is no phase. False where the model has no state.
    bool unstable(double T, double rho, Vector<double> const& x) const {
        if (!(rho > 0.0)) return false;
        const FluidModel fluid(*model, x);
        const int n = fluid.size();
        PhaseState s;
        s.resize(n);
        const auto at = [](int i) { return static_cast<std::size_t>(i); };
        for (int k = 0; k < n; ++k) s.rho_i[at(k)] = rho * x[fluid.index(k)];
        if (!fluid.evaluate(s, T, phase_H)) return false;
        for (int i = 0; i < n; ++i)  // Cholesky's factors, of relative changes, in place
            for (int j = 0; j <= i; ++j) {
                double sum = s.H[at(i * n + j)] * std::sqrt(s.rho_i[at(i)] * s.rho_i[at(j)]);
                for (int k = 0; k < j; ++k) sum -= s.H[at(i * n + k)] * s.H[at(j * n + k)];
                if (i == j && !(sum > 0.0)) return true;
                s.H[at(i * n + j)] = i == j ? std::sqrt(sum) : sum / s.H[at(j * n + j)];
            }
        return false;
    }

    InterfaceProfile profile(double T, double rhoL, Vector<double> const& x, double rhoV,
                             Vector<double> const& y, Evidence& known) const;

    std::vector<double> dilute_viscosities(double T, Vector<double> const& x, Evidence& known) const {
        std::vector<double> eta;
        eta.reserve(static_cast<std::size_t>(size()));
        for (int i = 0; i < size(); ++i)
            eta.push_back(x[i] > 0.0 ? known((*this)[i].transport.viscosity_background(T, 0.0)) : 1.0);
        return eta;
    }
};

MixtureTransport::MixtureTransport(Mixture const& mixture) : parts_(std::make_unique<Parts>()) {
    parts_->model = mixture.model.get();
    FluidOptions options;
    options.home = mixture.home;
    for (int i = 0; i < mixture.size(); ++i) {
        options.set = mixture.model->mdl1[i]->id();  // densities are those of the mixture's sets
        parts_->components.push_back(std::make_unique<Component>(
            open(*mixture.equation, mixture.components[static_cast<std::size_t>(i)], options)));
    }
    const auto has_row = [&](std::string const& name) {
        return entropy_scaling_row(mixture.home, name).has_value();
    };
    if (!std::all_of(mixture.components.begin(), mixture.components.end(), has_row)) return;
    parts_->scaling.emplace(mixture.home, mixture.components);
    for (int i = 0; i < mixture.size(); ++i) parts_->scaling->translate(i, *(*parts_)[i].fluid.model);
}
MixtureTransport::~MixtureTransport() = default;

TransportValue MixtureTransport::viscosity(double T, double rho, Vector<double> const& x) const {
    Parts const& p = *parts_;
    p.check(T, rho, x);
    Evidence known;
    const std::vector<double> eta0 = p.dilute_viscosities(T, x, known);
    double value = p.of_gases(x, eta0, eta0);
    const auto with_rule = [&](TransportValue v) {
        v.uncertainty = p.uncertainty(kViscosityRule, v.uncertainty, rho, x);
        v.metastable = p.unstable(T, rho, x);
        return v;
    };
    if (rho == 0.0) return with_rule(known.result(value, "Wilke"));
    for (int i = 0; i < p.size(); ++i)
        if (x[i] > 0.0)
            value *= std::pow(known(p[i].transport.viscosity_background(T, p.corresponding(i, rho, x))) /
                                  eta0[static_cast<std::size_t>(i)],
                              x[i]);
    TransportValue result = with_rule(known.result(value, "Wilke; Grunberg, Nissan at equal reduced densities"));
    if (p.scaling) result.second_source = (*p.scaling)(T, rho, x) / value - 1.0;
    return result;
}

TransportValue MixtureTransport::viscosity_by_entropy_scaling(double T, double rho,
                                                              Vector<double> const& x) const {
    Parts const& p = *parts_;
    p.check(T, rho, x);
    if (!p.scaling) throw OpenFailure("entropy scaling has not all components of the mixture");
    bool in_range = true;
    for (int i = 0; i < p.size(); ++i) in_range = in_range && !(x[i] > 0.0 && T < p[i].fluid.notes.Tmin);
    TransportValue result{(*p.scaling)(T, rho, x), "entropy scaling", EntropyScaling::source, in_range,
                          std::numeric_limits<double>::quiet_NaN()};
    if (!(result.value > 0.0) || !std::isfinite(result.value)) throw ThException(5);
    return result;
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
    const auto with_rule = [&](TransportValue v) {
        v.uncertainty = p.uncertainty(kConductivityRule, v.uncertainty, rho, x);
        v.metastable = p.unstable(T, rho, x);
        return v;
    };
    if (rho == 0.0) return with_rule(known.result(value, "Wassiljewa, Mason, Saxena"));
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
    return with_rule(known.result(value, "Wassiljewa, Mason, Saxena; Filippov at equal reduced densities, "
                                         "without critical enhancement"));
}

MixtureDiffusion MixtureTransport::diffusion(double T, double rho, Vector<double> const& x) const {
    constexpr double kUncertainty = 0.25;
    Parts const& p = *parts_;
    p.check(T, rho, x);
    if (p.size() != 2 || !(rho > 0.0)) throw ThException(5);
    Evidence known;
    std::array<double, 2> eta0{};
    for (int i : {0, 1}) eta0[static_cast<std::size_t>(i)] = known(p[i].transport.viscosity_background(T, 0.0));
    const bool fuller = p[0].volume && p[1].volume;
    const double gas = p.gas_diffusion(T, eta0);
    const auto solute = [&](int i) { return wilke_chang(T, p[1 - i].M, p[1 - i].phi, p[i].V); };
    const double liquid = std::pow(solute(0), x[1]) * std::pow(solute(1), x[0]);
    const double dilute = p.of_gases(x, {eta0[0], eta0[1]}, {eta0[0], eta0[1]});
    const TransportValue eta = viscosity(T, rho, x);  // rests on the dilute ones, too
    Evidence all;
    all(eta);
    MixtureDiffusion result;
    result.stefan = all.result(joined_diffusion(gas, liquid, rho, dilute, eta.value),
                                 std::string(fuller ? "Fuller" : "Chapman, Enskog") +
                                     "; Wilke, Chang; Leffler, Cullinan; viscosity: " + eta.model);
    result.stefan.metastable = eta.metastable;
    result.stefan.uncertainty = std::fmax(kUncertainty, result.stefan.uncertainty);
    if (!(x[0] > 0.0) || !(x[1] > 0.0)) return result;
    const FluidModel fluid(*p.model, x);
    PhaseState s;
    s.resize(2);
    for (std::size_t i : {0U, 1U}) s.x[i] = x[static_cast<int>(i)], s.rho_i[i] = rho * s.x[i];
    s.rho = rho;
    if (!fluid.evaluate(s, T, phase_H)) throw ThException(5);
    result.thermodynamic_factor = s.x[0] * (s.m_n(0, 0) - s.m_n(0, 1));
    return result;
}

InterfaceProfile MixtureTransport::Parts::profile(double T, double rhoL, Vector<double> const& x, double rhoV,
                                                  Vector<double> const& y, Evidence& known) const {
    constexpr double kHighest = 0.85;  // of Tc: nearer, influence parameters grow without bound
    check(T, rhoL, x);
    check(T, rhoV, y);
    Vector<double> vapour(size()), liquid(size()), influence(size()), one(size());
    for (int i = 0; i < size(); ++i) {
        vapour[i] = rhoV * y[i], liquid[i] = rhoL * x[i];
        if (!(x[i] > 0.0) && !(y[i] > 0.0)) continue;
        Model1 const& pure = *model->mdl1[i];
        const double T1 = std::min({T, kHighest * pure.Tcrit(), kHighest * (*this)[i].Tc});
        const double sigma = known((*this)[i].transport.surface_tension(T1));
        const PureSaturation s = pure_saturation_T(pure, T1);
        Vector<double> thin(size()), dense(size());
        thin[i] = s.rhoV, dense[i] = s.rhoL, one[i] = 1.0;
        influence[i] = std::pow(sigma / corvane::interface_profile(*model, T1, thin, dense, one).tension, 2);
    }
    return corvane::interface_profile(*model, T, vapour, liquid, influence);
}

InterfaceProfile MixtureTransport::interface_profile(double T, double rhoL, Vector<double> const& x,
                                                     double rhoV, Vector<double> const& y) const {
    Evidence known;
    return parts_->profile(T, rhoL, x, rhoV, y, known);
}

TransportValue MixtureTransport::surface_tension(double T, double rhoL, Vector<double> const& x,
                                                 double rhoV, Vector<double> const& y) const {
    constexpr double kWorst = 1e-3;  // of the quadrature: a profile that is not smooth
    try {
        Evidence known;
        const InterfaceProfile p = parts_->profile(T, rhoL, x, rhoV, y, known);
        if (p.tension_error < kWorst) {
            TransportValue result = known.result(p.tension, "density-gradient theory");
            result.second_source = surface_tension_by_parachors(T, rhoL, x, rhoV, y).value / p.tension - 1.0;
            result.uncertainty = parts_->uncertainty(kGradientTheoryRule, result.uncertainty, rhoL, x);
            return result;
        }
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    }
    return surface_tension_by_parachors(T, rhoL, x, rhoV, y);
}

TransportValue MixtureTransport::surface_tension_by_parachors(double T, double rhoL,
                                                              Vector<double> const& x, double rhoV,
                                                              Vector<double> const& y) const {
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
    TransportValue result = known.result(sum > 0.0 ? std::pow(sum, 4) : 0.0, "Weinaug, Katz: parachors");
    result.uncertainty = p.uncertainty(kParachorsRule, result.uncertainty, rhoL, x);
    return result;
}

}  // namespace corvane
