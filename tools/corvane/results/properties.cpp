#include <tools/corvane/results/properties.h>
#include <tools/corvane/text/errors.h>

#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/state/phase_properties.h>

#include <fmt/format.h>

#include <cmath>

namespace cli {
namespace {
constexpr Needs kNone = Needs::nothing, kIdeal = Needs::ideal_gas,
                kMass = Needs::ideal_gas_and_mass;

double RT(State const& s) {
    return R * s.T;
}

double fugacity_coefficient(State const& s) {
    return std::exp(s.model->Gr(s.rho, s.T)) / s.model->Z(s.rho, s.T);
}

#define REDUCED(factor, name) [](State const& s) { return (factor)*s.model->name(s.rho, s.T); }
#define PHASE(name) \
    [](State const& s) { return corvane::phase_properties(*s.model, s.T, s.rho).name; }

const std::vector<Property> kProperties = {
    {"T", Quantity::temperature, "temperature", kNone, [](State const& s) { return s.T; }},
    {"p", Quantity::pressure, "pressure", kNone, [](State const& s) { return s.p; }},
    {"rho", Quantity::density, "density", kNone, [](State const& s) { return s.rho; }},
    {"v", Quantity::volume, "molar or specific volume", kNone,
     [](State const& s) { return 1.0 / s.rho; }},
    {"Z", Quantity::ratio, "compressibility factor", kNone, REDUCED(1.0, Z)},
    {"u", Quantity::energy, "internal energy", kIdeal, REDUCED(RT(s), Um)},
    {"h", Quantity::energy, "enthalpy", kIdeal, REDUCED(RT(s), Hm)},
    {"s", Quantity::entropy, "entropy", kIdeal, REDUCED(R, Sm)},
    {"g", Quantity::energy, "Gibbs energy", kIdeal, REDUCED(RT(s), Gm)},
    {"a", Quantity::energy, "Helmholtz energy", kIdeal, REDUCED(RT(s), Am)},
    {"cv", Quantity::entropy, "isochoric heat capacity", kIdeal, REDUCED(R, CVm)},
    {"cp", Quantity::entropy, "isobaric heat capacity", kIdeal, REDUCED(R, Cpm)},
    {"w", Quantity::speed, "speed of sound", kMass, PHASE(w)},
    {"n_s", Quantity::ratio, "isentropic exponent, -(v/p)(dp/dv) at constant s", kIdeal, PHASE(n_s)},
    {"muJT", Quantity::joule_thomson, "Joule-Thomson coefficient", kIdeal, PHASE(mu_JT)},
    {"kappaT", Quantity::compressibility, "isothermal compressibility", kNone,
     [](State const& s) { return s.model->kappaT(s.rho, s.T) / (s.rho * RT(s)); }},
    {"alpha", Quantity::expansivity, "thermal expansivity", kNone,
     [](State const& s) { return s.model->alphap(s.rho, s.T) / s.T; }},
    {"phi", Quantity::ratio, "fugacity coefficient", kNone, fugacity_coefficient},
    {"B", Quantity::volume, "second virial coefficient", kNone,
     [](State const& s) { return s.model->B(s.T, 2); }},
    {"u_res", Quantity::energy, "residual internal energy (all residuals at T, rho)", kNone,
     REDUCED(RT(s), Ur)},
    {"h_res", Quantity::energy, "residual enthalpy", kNone, REDUCED(RT(s), Hr)},
    {"s_res", Quantity::entropy, "residual entropy", kNone, REDUCED(R, Sr)},
    {"g_res", Quantity::energy, "residual Gibbs energy", kNone, REDUCED(RT(s), Gr)},
    {"a_res", Quantity::energy, "residual Helmholtz energy", kNone, REDUCED(RT(s), Ar)},
    {"cv_res", Quantity::entropy, "residual isochoric heat capacity", kNone, REDUCED(R, CVr)},
    {"cp_res", Quantity::entropy, "residual isobaric heat capacity", kNone, REDUCED(R, Cpr)},
};
#undef REDUCED
#undef PHASE

/// The first root of the equation's own solver, checked: a density that does not give back the
/// pressure is no answer. Rounding of rho·R·T·Z counts in terms of rho·R·T.
std::optional<double> root(Model1 const& model, double T, double p, int phase) {
    double rho = 0.0, other = 0.0;
    if (model.vcalc(p, T, phase, rho, other) == 0) return std::nullopt;
    const double ideal = rho * R * T;
    if (!(rho > 0.0) || !(std::fabs(model.Z(rho, T) * ideal - p) < 1e-7 * p + 1e-9 * ideal))
        throw Failure(
            fmt::format("the density {} mol/cm3 that the equation's solver found does "
                        "not give back the pressure",
                        rho));
    return rho;
}
}  // namespace

std::vector<Property> const& properties() {
    return kProperties;
}

std::optional<double> of_whole(std::string_view name, corvane::PureState const& q) {
    if (name == "T") return q.T;
    if (name == "p") return q.p;
    if (name == "rho") return q.rho;
    if (name == "v") return 1.0 / q.rho;
    if (name == "u") return q.u;
    if (name == "h") return q.h;
    if (name == "s") return q.s;
    if (name == "g") return q.h - q.T * q.s;
    if (name == "a") return q.u - q.T * q.s;
    return std::nullopt;
}

Roots density_roots(Model1 const& model, double T, double p) {
    constexpr double kSame = 1e-6;  // closer roots are one
    const auto dense = root(model, T, p, 1), dilute = root(model, T, p, 3);
    if (!dense && !dilute) throw ThException(th_no_density);
    Roots roots;
    if (dense && dilute && *dense > *dilute * (1.0 + kSame)) {
        roots.liquid = dense;
        roots.vapour = dilute;
        const bool liquid = model.Ge(*dense, T) < model.Ge(*dilute, T);
        roots.stable = liquid ? *dense : *dilute;
        roots.stable_name = liquid ? "liquid" : "vapour";
        return roots;
    }
    const double rho = dense ? *dense : *dilute;
    roots.stable = rho;
    roots.stable_name = phase_name(model, T, rho);
    (T >= model.Tcrit() ? roots.fluid : *roots.stable_name == 'l' ? roots.liquid : roots.vapour) =
        rho;
    return roots;
}

SaturatedPair saturated(Model1 const& model, double T) {
    SaturatedPair state;
    if (T < model.Tcrit()) try {
            const corvane::PureSaturation q = corvane::pure_saturation_T(model, T);
            state.p = q.p;
            state.liquid = q.rhoL;
            state.vapour = q.rhoV;
            state.found = true;
        } catch (corvane::EquilibriumFailure const&) {  // not found
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
    return state;
}

char const* phase_name(Model1 const& model, double T, double rho) {
    return T >= model.Tcrit() ? "fluid" : rho * model.vcrit() > 1.0 ? "liquid" : "vapour";
}

}  // namespace cli
