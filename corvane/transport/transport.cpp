#include <corvane/catalogue/parameter_sets.h>
#include <corvane/core/errors.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/state/phase_properties.h>
#include <corvane/transport/correlation_table.h>
#include <corvane/transport/reference_conductivity.h>
#include <corvane/transport/reference_viscosity.h>
#include <corvane/transport/transport.h>

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

/// What the dense fluid adds to the dilute gas, of propane, in its reduced variables: critical
/// point of Lemmon, McLinden, Wagner, J. Chem. Eng. Data 54 (2009) 3141.
struct Pattern {
    std::function<double(double T, double rho)> property;  ///< K, mol/m³

    double operator()(double Tr, double reduced_density) const {
        const double T = 369.89 * Tr, rho = 5000.0 * reduced_density;
        return property(T, rho) - property(T, 0.0);
    }
};

/// A correlation of the liquid and one of the gas, and what joins them.
struct Joined {
    char const* property;
    std::vector<Correlation> liquid, gas;
    Pattern pattern;

    TransportValue at(Fluid const& fluid, double T, double rho) const;
};

TransportValue Joined::at(Fluid const& fluid, double T, double rho) const {
    constexpr double kHighest = 0.75;  // of Tc: nearer, correlations of the temperature alone fail
    Model1 const& model = *fluid.model;
    if (gas.empty() || (rho > 0.0 && liquid.empty()))
        throw OpenFailure(std::string("no ") + property + " of " + fluid.substance +
                          " in the data tree" +
                          (gas.empty() ? "" : " but that of the dilute gas (density 0)"));
    Correlation const& g = gas.front();
    TransportValue result{g(T), "gas correlation", g.source, g.covers(T),
                          second_opinion(gas, g, T)};
    if (rho == 0.0) return meaningful(std::move(result));
    const double Tc = model.Tcrit(), vc = model.vcrit();
    Correlation const& l = widest(liquid, kHighest * Tc);
    double T1 = std::min(T, kHighest * Tc);  // where the liquid's correlation gives the scale
    if (T1 > l.Tmax) T1 = l.Tmax;
    if (T1 < l.Tmin) T1 = l.Tmin;
    const double saturated = pure_saturation_T(model, T1).rhoL;
    const double scale = (l(T1) - g(T1)) / pattern(T1 / Tc, saturated * vc);
    result.value += scale * pattern(T / Tc, rho * vc);
    // What counts is the nearer of the two ends.
    const bool dense = 2.0 * rho > saturated;
    result.in_range = dense ? l.covers(std::min(T, kHighest * Tc)) : result.in_range;
    if (dense) result.second_source = second_opinion(liquid, l, T1);
    result.model = "liquid and gas correlations";
    result.source = l.source == g.source ? l.source : l.source + "; gas: " + g.source;
    return meaningful(std::move(result));  // not denser than the pattern goes
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
    std::optional<ConductivityCorrelation> conductivity;
    std::string viscosity_source, conductivity_source;
    Stated viscosity_stated, conductivity_stated;
    bool water = false;
    Joined joined_viscosity, joined_conductivity;
    std::vector<Correlation> tension;
    std::optional<ReferenceSlope> slope;  // of the isotherm without critical part

    explicit Parts(Fluid const& f);
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

Transport::Parts::Parts(Fluid const& f) : fluid(f), water(f.substance == "water") {
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
    if (const auto file = path("conductivity"); std::filesystem::exists(file)) {
        const Figures figures(file.string());
        conductivity.emplace(figures, M, eta0);
        conductivity_source = figures.text("source");
        conductivity_stated.read(figures, f);
    }
    const auto pattern = [&](char const* property) {
        return Figures(
            f.home.file(std::string("CorvaneS/transport/") + property + "/propane").string());
    };
    if (!viscosity)
        joined_viscosity = {
            "viscosity",
            correlations(f.home, "viscosity_liquid", f.substance),
            correlations(f.home, "viscosity_gas", f.substance),
            {[c = std::shared_ptr(viscosity_correlation(pattern("viscosity"), kPropaneMass))](
                 double T, double rho) { return c->background(T, rho); }}};
    if (!conductivity)
        joined_conductivity = {
            "thermal conductivity",
            correlations(f.home, "conductivity_liquid", f.substance),
            correlations(f.home, "conductivity_gas", f.substance),
            {[c = ConductivityCorrelation(pattern("conductivity"), kPropaneMass, {})](
                 double T, double rho) { return c.background(T, rho); }}};
    tension = correlations(f.home, "surface_tension", f.substance);
    const double T_ref = conductivity  ? conductivity->reference_temperature()
                         : water       ? water_reference_temperature
                                       : 0.0;
    if (T_ref > 0.0) slope.emplace(*f.model, T_ref);
}

TransportValue Transport::Parts::viscosity_at(double T, double rho,
                                              PhaseProperties const* state) const {
    if (!viscosity) return joined_viscosity.at(fluid, T, rho);
    double eta = viscosity->background(T, 1e6 * rho);
    if (water && state) eta *= critical_viscosity_factor(water_correlation_length(*state, *slope));
    return meaningful({eta, "reference correlation", viscosity_source, viscosity_stated.covers(T), kNan});
}

TransportValue Transport::Parts::conductivity_at(double T, double rho,
                                                 PhaseProperties const* state) const {
    if (!conductivity) return joined_conductivity.at(fluid, T, rho);
    TransportValue result{conductivity->background(T, 1e6 * rho), "reference correlation",
                          conductivity_source, conductivity_stated.covers(T), kNan};
    if (!state) return meaningful(std::move(result));
    if (viscosity || !joined_viscosity.liquid.empty())
        result.value += conductivity->critical(*state, slope ? &*slope : nullptr,
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
    return parts_->viscosity_at(T, rho, s ? &*s : nullptr);
}

TransportValue Transport::viscosity(PhaseProperties const& state) const {
    check_state(state.T, state.rho);
    return parts_->viscosity_at(state.T, state.rho,
                                parts_->viscosity_needs_state() ? &state : nullptr);
}

TransportValue Transport::thermal_conductivity(double T, double rho) const {
    check_state(T, rho);
    const auto s = parts_->state(parts_->conductivity_needs_state(), T, rho);
    return parts_->conductivity_at(T, rho, s ? &*s : nullptr);
}

TransportValue Transport::thermal_conductivity(PhaseProperties const& state) const {
    check_state(state.T, state.rho);
    return parts_->conductivity_at(state.T, state.rho,
                                   parts_->conductivity_needs_state() ? &state : nullptr);
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
    auto const& joined = parts_->joined_viscosity;
    return parts_->viscosity || (!joined.gas.empty() && !joined.liquid.empty());
}
bool Transport::has_conductivity() const {
    auto const& joined = parts_->joined_conductivity;
    return parts_->conductivity || (!joined.gas.empty() && !joined.liquid.empty());
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
