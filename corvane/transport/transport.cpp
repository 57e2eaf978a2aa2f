#include <corvane/catalogue/parameter_sets.h>
#include <corvane/core/errors.h>
#include <corvane/core/lazy.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/state/phase_properties.h>
#include <corvane/transport/chung.h>
#include <corvane/transport/coexistence.h>
#include <corvane/transport/correlation_table.h>
#include <corvane/transport/diffusion.h>
#include <corvane/transport/entropy_scaling.h>
#include <corvane/transport/friction_theory.h>
#include <corvane/transport/reference_conductivity.h>
#include <corvane/transport/reference_viscosity.h>
#include <corvane/transport/transport.h>
#include <corvane/transport/volume_shift.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>

namespace corvane {
namespace {

constexpr double kPropaneMass = 44.0956;  // g/mol
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

void check_state(double T, double rho) {
    if (!(T > 0.0) || !(rho >= 0.0) || !std::isfinite(T) || !std::isfinite(rho))
        throw ThException(5);
}

/// The liquid's correlation that reaches farthest up to a temperature, the preferred one of equals.
/// One serves at all temperatures: a change from row to row would be a step.
Correlation const& widest(std::vector<Correlation> const& rows, double highest) {
    constexpr double kEqual = 5.0;  // K
    Correlation const* best = &rows.front();
    const auto end = [&](Correlation const& r) { return r.Tmax < highest ? r.Tmax : highest; };
    for (Correlation const& row : rows)
        if (end(row) > end(*best) + kEqual) best = &row;
    return *best;
}

/// Correlations have values, too, where they mean nothing: behind a pole, far from their data.
TransportValue meaningful(TransportValue v) {
    if (!(v.value > 0.0) || !std::isfinite(v.value)) throw ThException(5);
    return v;
}

/// Of another source that covers T too, against the value of the first.
double second_opinion(std::vector<Correlation> const& rows, Correlation const& first, double T) {
    for (Correlation const& row : rows)
        if (&row != &first && row.covers(T) && row.source != first.source)
            return row(T) / first(T) - 1.0;
    return kNan;
}

using OfState = std::function<double(double T, double rho)>;  // K, mol/cm³

/// What the dense fluid adds to the dilute gas in propane, at a fluid's reduced state: critical
/// point of Lemmon, McLinden, Wagner, J. Chem. Eng. Data 54 (2009) 3141. property: K, mol/m³.
OfState like_propane(Model1 const& model, OfState property) {
    return [&model, property = std::move(property)](double T, double rho) {
        const double T1 = 369.89 * T / model.Tcrit(), rho1 = 5000.0 * rho * model.vcrit();
        return property(T1, rho1) - property(T1, 0.0);
    };
}

/// Nine of ten deviations stay below, as docs/transport.md has them.
struct Uncertainties {
    double joined_liquid, joined_gas, estimated_gas, estimated_dense;
};
constexpr Uncertainties kViscosity = {0.18, 0.08, 0.15, 0.8},
                        kConductivity = {0.11, 0.12, 0.2, 0.7};

constexpr double kSelfDiffusion = 0.25, kFriction = 0.1;

/// One property of the dilute gas, and of the dense fluid beside it; what joins the two.
struct Joined {
    char const* property;
    Uncertainties const* within;
    std::vector<Correlation> liquid, gas;
    OfState pattern;                     ///< what the dense fluid adds, up to a factor
    OfState own;                         ///< entropy scaling; then nothing is joined
    double own_uncertainty;
    std::optional<ChungEstimate> chung;  ///< where it is needed
    OfState estimate;                    ///< by chung

    bool complete() const {
        return own || ((!gas.empty() || estimates_gas()) && (!liquid.empty() || estimates()));
    }
    bool estimates_gas() const { return chung && chung->holds_for_gas(); }
    bool estimates() const { return chung && chung->holds(); }
    TransportValue at(Fluid const& fluid, double T, double rho) const;

  private:
    TransportValue dilute(Fluid const& fluid, double T) const;
    void anchor(Model1 const& model, double T, double rho, TransportValue& result) const;
    [[noreturn]] void missing(Fluid const& fluid, char const* but) const {
        throw OpenFailure(std::string("no ") + property + " of " + fluid.substance + " in the data tree" +
                          but + (chung ? ", and estimates do not hold for it" : ""));
    }
};

TransportValue Joined::dilute(Fluid const& fluid, double T) const {
    if (!gas.empty()) {
        Correlation const& g = gas.front();
        return {g(T), "gas correlation", g.source, g.covers(T), second_opinion(gas, g, T), within->joined_gas};
    }
    if (!estimates_gas()) missing(fluid, "");
    return {estimate(T, 0.0), "estimate", ChungEstimate::source, chung->informed(), kNan,
            within->estimated_gas};
}

/// Adds the dense fluid so that the saturated liquid has its correlation's value.
void Joined::anchor(Model1 const& model, double T, double rho, TransportValue& result) const {
    constexpr double kHighest = 0.75;  // of Tc: nearer, correlations of the temperature alone fail
    Correlation const& l = widest(liquid, kHighest * model.Tcrit());
    double T1 = std::min(T, kHighest * model.Tcrit());  // where the liquid's correlation gives the scale
    if (T1 > l.Tmax) T1 = l.Tmax;
    if (T1 < l.Tmin) T1 = l.Tmin;
    const double saturated = pure_saturation_T(model, T1).rhoL;
    const double gas1 = gas.empty() ? estimate(T1, 0.0) : gas.front()(T1);
    const double scale = (l(T1) - gas1) / pattern(T1, saturated);
    if (!(scale > 0.0)) throw ThException(5);  // a liquid less than its gas: no correlation of it there
    result.value += scale * pattern(T, rho);
    // What counts is the nearer of the two ends.
    if (2.0 * rho > saturated) {
        result.in_range = l.covers(std::min(T, kHighest * model.Tcrit()));
        result.second_source = second_opinion(liquid, l, T1);
        result.uncertainty = within->joined_liquid;
    }
    result.model = gas.empty() ? "liquid correlation, gas by estimate" : "liquid and gas correlations";
    if (result.source != l.source) result.source = l.source + "; gas: " + result.source;
}

TransportValue Joined::at(Fluid const& fluid, double T, double rho) const {
    if (own)
        return meaningful({own(T, rho), "entropy scaling", EntropyScaling::source,
                           !(T < fluid.notes.Tmin), kNan, own_uncertainty});
    TransportValue result = dilute(fluid, T);
    if (rho == 0.0) return meaningful(std::move(result));
    if (!liquid.empty()) {
        anchor(*fluid.model, T, rho, result);
    } else {
        if (!estimates()) missing(fluid, " but that of the dilute gas (density 0)");
        result.value += estimate(T, rho) - estimate(T, 0.0);
        result.in_range = result.in_range && chung->informed() && T >= chung->lowest();
        result.model = gas.empty() ? "estimate" : "estimate and gas correlation";
        if (!gas.empty()) result.source = std::string(ChungEstimate::source) + "; gas: " + result.source;
        result.uncertainty = within->estimated_dense;
    }
    return meaningful(std::move(result));  // not denser than the pattern goes
}

/// From the densities of a fluid to those of the reference equation, which reference correlations want.
VolumeShift shift_to_reference(Fluid const& fluid) {
    if (fluid.equation == "MEOS" && fluid.set == 1) return {};
    FluidOptions options;
    options.home = fluid.home;
    try {
        return {*fluid.model, *open("MEOS", fluid.substance, options).model};
    } catch (OpenFailure const&) {
        return {};
    }
}

/// The temperatures [K] for which a publication states its correlation ("valid:"), else those of the
/// reference equation that it was made for; where neither says any, all.
struct Stated {
    double Tmin = kNan, Tmax = kNan;

    void read(Figures const& figures, Fluid const& fluid) {
        if (figures.has("valid")) {
            const auto both = figures.numbers("valid", 2);
            Tmin = both[0], Tmax = both[1];
            return;
        }
        const ParameterNotes notes = parameter_notes(fluid.home, "MEOS", fluid.substance, 1);
        Tmin = notes.Tmin, Tmax = notes.Tmax;
    }
    bool covers(double T) const { return !(T < Tmin) && !(T > Tmax); }
};

}  // namespace

struct Transport::Parts {
    Fluid const& fluid;
    std::unique_ptr<ViscosityCorrelation> viscosity;
    FrictionTheory const* friction = nullptr;  // what viscosity is, if it is that
    std::optional<ConductivityCorrelation> conductivity;
    std::string viscosity_source, conductivity_source;
    Stated viscosity_stated, conductivity_stated;
    bool water = false;
    Lazy<VolumeShift> shift;           // to the reference equation
    Lazy<VolumeShift> friction_shift;  // to that of the friction-theory set
    Joined joined_viscosity{"viscosity", &kViscosity, {}, {}, {}, {}, 0.0, {}, {}},
        joined_conductivity{"thermal conductivity", &kConductivity, {}, {}, {}, {}, 0.0, {}, {}};
    std::vector<Correlation> tension;
    double T_slope = 0.0;        // K, of the isotherm without critical part; 0: not needed
    Lazy<ReferenceSlope> slope;  // of that
    Coexistence coexistence;

    explicit Parts(Fluid const& f);
    /// mol/m³ of the reference equation where the model has rho.
    double reference_density(double T, double rho) const {
        return 1e6 * shifted_density(rho, (*shift)(T));
    }
    void join_viscosity(Figures const& propane);
    void join_conductivity(Figures const& propane);
    std::optional<ChungEstimate> estimate(bool needed) const;
    /// state: null where the model needs none, and of the dilute gas.
    TransportValue viscosity_at(double T, double rho, PhaseProperties const* state) const;
    TransportValue conductivity_at(double T, double rho, PhaseProperties const* state) const;
    /// The properties of a state where a model asks for them.
    std::optional<PhaseProperties> state(bool needed, double T, double rho) const {
        if (!needed || !(rho > 0.0)) return {};
        return phase_properties(*fluid.model, T, rho);
    }
    bool viscosity_needs_state() const { return viscosity && water; }
    bool conductivity_needs_state() const { return conductivity && conductivity->enhanced(); }
};

Transport::Parts::Parts(Fluid const& f)
    : fluid(f),
      water(f.substance == "water"),
      shift([&f] { return shift_to_reference(f); }),
      friction_shift([this] { return VolumeShift(*fluid.model, *friction->fluid().model); }),
      slope([this] { return ReferenceSlope(*fluid.model, T_slope); }),
      coexistence(*f.model) {
    const auto path = [&](char const* property) {
        return f.home.file(std::string("CorvaneS/transport/") + property + "/" + f.substance);
    };
    const double M = *f.model->ppar(0);
    std::function<double(double)> eta0;
    if (const auto file = path("viscosity"); std::filesystem::exists(file)) {
        const Figures figures(file.string());
        viscosity = viscosity_correlation(figures, M);
        viscosity_source = figures.text("source");
        viscosity_stated.read(figures, f);
        eta0 = [this](double T) { return viscosity->dilute(T); };
    }
    if (!viscosity) {
        if (auto found = FrictionTheory::find(f.home, f.substance)) {
            friction = found.get();
            viscosity_source = found->source();
            viscosity_stated = {found->notes().Tmin, found->notes().Tmax};
            viscosity = std::move(found);
            eta0 = [this](double T) { return viscosity->dilute(T); };
        }
    }
    if (const auto file = path("conductivity"); std::filesystem::exists(file)) {
        const Figures figures(file.string());
        conductivity.emplace(figures, M, eta0, [this](double T) { return fluid.model->ideal.CVm(T); });
        conductivity_source = figures.text("source");
        conductivity_stated.read(figures, f);
    }
    const auto pattern = [&](char const* property) {
        return Figures(
            f.home.file(std::string("CorvaneS/transport/") + property + "/propane").string());
    };
    if (!viscosity) join_viscosity(pattern("viscosity"));
    if (!conductivity) join_conductivity(pattern("conductivity"));
    tension = correlations(f.home, "surface_tension", f.substance);
    T_slope = conductivity ? conductivity->reference_temperature()
              : water      ? water_reference_temperature
                           : 0.0;
}

void Transport::Parts::join_viscosity(Figures const& propane) {
    Joined& j = joined_viscosity;
    j.liquid = correlations(fluid.home, "viscosity_liquid", fluid.substance);
    j.gas = correlations(fluid.home, "viscosity_gas", fluid.substance);
    if (const auto row = j.liquid.empty() ? entropy_scaling_row(fluid.home, fluid.substance) : std::nullopt) {
        j.own_uncertainty = row->uncertainty;
        auto scaling = std::make_shared<EntropyScaling>(fluid.home, std::vector{fluid.substance});
        scaling->translate(0, *fluid.model);
        Vector<double> pure(1);
        pure[0] = 1.0;
        j.own = [=](double T, double rho) { return (*scaling)(T, rho, pure); };
    } else if (!j.liquid.empty()) {
        j.pattern = like_propane(
            *fluid.model, [c = std::shared_ptr(viscosity_correlation(propane, kPropaneMass))](
                              double T, double rho) { return c->background(T, rho); });
    }
    j.chung = estimate(!j.own && (j.gas.empty() || j.liquid.empty()));
    if (j.chung) j.estimate = [c = *j.chung](double T, double rho) { return c.viscosity(T, rho); };
}

void Transport::Parts::join_conductivity(Figures const& propane) {
    Joined& j = joined_conductivity;
    j.liquid = correlations(fluid.home, "conductivity_liquid", fluid.substance);
    j.gas = correlations(fluid.home, "conductivity_gas", fluid.substance);
    if (!j.liquid.empty())
        j.pattern = like_propane(*fluid.model,
                                 [c = ConductivityCorrelation(propane, kPropaneMass, {})](
                                     double T, double rho) { return c.background(T, rho); });
    j.chung = estimate(fluid.ideal && (j.gas.empty() || j.liquid.empty()));
    if (j.chung)
        j.estimate = [c = *j.chung, this](double T, double rho) {
            return c.conductivity(T, rho, fluid.model->ideal.CVm(T));
        };
}

/// Nothing where the equation has no vapour pressure that gives an acentric factor.
std::optional<ChungEstimate> Transport::Parts::estimate(bool needed) const {
    if (!needed) return {};
    try {
        return ChungEstimate(fluid);
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return {};
}

TransportValue Transport::Parts::viscosity_at(double T, double rho,
                                              PhaseProperties const* state) const {
    if (!viscosity) return joined_viscosity.at(fluid, T, rho);
    if (friction)
        return meaningful({viscosity->background(T, 1e6 * shifted_density(rho, (*friction_shift)(T))), "friction theory",
                           viscosity_source, viscosity_stated.covers(T), kNan, kFriction});
    double eta = viscosity->background(T, reference_density(T, rho));
    if (water && state) eta *= critical_viscosity_factor(water_correlation_length(*state, *slope));
    return meaningful({eta, "reference correlation", viscosity_source, viscosity_stated.covers(T), kNan});
}

TransportValue Transport::Parts::conductivity_at(double T, double rho,
                                                 PhaseProperties const* state) const {
    if (!conductivity) return joined_conductivity.at(fluid, T, rho);
    TransportValue result{conductivity->background(T, reference_density(T, rho)), "reference correlation",
                          conductivity_source, conductivity_stated.covers(T), kNan};
    if (!state) return meaningful(std::move(result));
    if (viscosity || joined_viscosity.complete())
        result.value += conductivity->critical(*state, T_slope > 0.0 ? &*slope : nullptr,
                                               viscosity_at(T, rho, state).value);
    else
        result.model += " without its critical enhancement, for which there is no viscosity";
    return meaningful(std::move(result));
}

Transport::Transport(Fluid const& fluid) : parts_(std::make_unique<Parts>(fluid)) {}
Transport::~Transport() = default;

TransportValue Transport::viscosity(double T, double rho) const {
    check_state(T, rho);
    const auto s = parts_->state(parts_->viscosity_needs_state(), T, rho);
    TransportValue v = parts_->viscosity_at(T, rho, s ? &*s : nullptr);
    v.metastable = parts_->coexistence.parts(T, rho);
    return v;
}

TransportValue Transport::viscosity(PhaseProperties const& state) const {
    check_state(state.T, state.rho);
    return parts_->viscosity_at(state.T, state.rho,
                                parts_->viscosity_needs_state() ? &state : nullptr);
}

TransportValue Transport::thermal_conductivity(double T, double rho) const {
    check_state(T, rho);
    const auto s = parts_->state(parts_->conductivity_needs_state(), T, rho);
    TransportValue v = parts_->conductivity_at(T, rho, s ? &*s : nullptr);
    v.metastable = parts_->coexistence.parts(T, rho);
    return v;
}

TransportValue Transport::thermal_conductivity(PhaseProperties const& state) const {
    check_state(state.T, state.rho);
    return parts_->conductivity_at(state.T, state.rho,
                                   parts_->conductivity_needs_state() ? &state : nullptr);
}

TransportValue Transport::diffusion(double T, double rho) const {
    check_state(T, rho);
    if (!(rho > 0.0)) throw ThException(5);
    Model1 const& model = *parts_->fluid.model;
    TransportValue result = parts_->viscosity_at(T, rho, nullptr);
    const double eta = result.value, eta0 = parts_->viscosity_at(T, 0.0, nullptr).value;
    const double M = *parts_->fluid.model->ppar(0), epsilon = energy_of(model.Tcrit());
    const double gas = dilute_diffusion(T, {M, collision_diameter(T, M, epsilon, eta0), epsilon});
    result.value = joined_diffusion(gas, liquid_self_diffusion(T, rho), rho, eta0, eta);
    result.model = "Chapman, Enskog; Li, Chang; viscosity: " + result.model;
    result.uncertainty = std::fmax(kSelfDiffusion, result.uncertainty);
    result.metastable = parts_->coexistence.parts(T, rho);
    return result;
}

TransportValue Transport::viscosity_background(double T, double rho) const {
    check_state(T, rho);
    return parts_->viscosity_at(T, rho, nullptr);
}
TransportValue Transport::conductivity_background(double T, double rho) const {
    check_state(T, rho);
    return parts_->conductivity_at(T, rho, nullptr);
}

bool Transport::has_viscosity() const {
    return parts_->viscosity || parts_->joined_viscosity.complete();
}
bool Transport::has_conductivity() const {
    return parts_->conductivity || parts_->joined_conductivity.complete();
}
bool Transport::has_surface_tension() const {
    return !parts_->tension.empty();
}

TransportValue Transport::surface_tension(double T) const {
    check_state(T, 0.0);
    if (parts_->tension.empty())
        throw OpenFailure("no surface tension of " + parts_->fluid.substance + " in the data tree");
    Correlation const& row = parts_->tension.front();
    const double value = row(T);
    if (!(value >= 0.0) || !std::isfinite(value)) throw ThException(5);  // a line beyond its end
    return {value, "correlation", row.source, row.covers(T), second_opinion(parts_->tension, row, T)};
}

}  // namespace corvane
