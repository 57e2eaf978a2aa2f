// A pure-substance plug-in from an equation: everything that Model1 asks for, derived from its
// residual Helmholtz energy and its table of parameters.
#pragma once

#include <corvane/plugin/plugin.h>
#include <corvane/plugin/stages.h>
#include <corvane/plugin/tables.h>
#include <corvane/pure/derivatives.h>

#include <algorithm>
#include <string_view>

namespace corvane {

/// A pure fluid of an equation at one temperature.
template <class Eq, class T>
struct FluidAtT {
    FluidAtT(double const* par, T const& temperature)
        : component(stages_detail::component<Eq>(temperature, par)),
          pair(stages_detail::pair<Eq>(temperature, component, component, kNoPair.data())),
          at{temperature, 1, &component, &pair},
          fluid(mixed<Eq>(at, Fractions<double>(&kOne, 1))) {}
    FluidAtT(FluidAtT const&) = delete;
    FluidAtT& operator=(FluidAtT const&) = delete;

    static constexpr double kOne = 1.0;
    static constexpr std::array<double, pair_parameter_count<Eq> + 1> kNoPair{};
    ComponentAt<Eq, T> component;
    PairAt<Eq, T> pair;
    AtTemperature<Eq, T> at;
    decltype(mixed<Eq>(std::declval<AtTemperature<Eq, T> const&>(),
                       std::declval<Fractions<double> const&>())) fluid;
};

template <class Eq>
class PureEquation final : public Model1, public Deriv1 {
    static constexpr int kCount = parameter_count<Eq>;
    static constexpr bool labelled(int k, std::string_view label) {
        return Eq::parameters[k].label == label;
    }
    static constexpr int adjustable() {
        return static_cast<int>(std::count_if(std::begin(Eq::parameters), std::end(Eq::parameters),
                                              [](Parameter const& p) { return p.adjustable; }));
    }
    static_assert(kCount >= 3 && labelled(0, "M") && labelled(1, "Ts") && labelled(2, "vs"),
                  "the first parameters are M, Ts (a temperature) and vs (a volume)");
    static_assert(std::is_empty_v<Eq>, "an equation keeps nothing; parameters live in the model");

  public:
    PureEquation() {
        eos_ = Eq::name;
        mpar_ = kCount;
        madj_ = adjustable();
    }

    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }

    void par_in(FILE* f, int /*mode*/) override {
        SectionReader section(f);
        par_ = read_parameters(section, Eq::parameters);
        constexpr int at = parameter_index(Eq::parameters, "omega");
        if constexpr (at >= 0) omega(par_[at]);
        fill_tables();
    }
    void par_out(FILE* f) const override {
        SectionWriter section(f);
        write_parameters(section, Eq::parameters, par_.data());
    }

    double Ar(double rho, double T) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        return residual<Eq>(State(par_.data(), T).fluid, rho);
    }
    double Z(double rho, double T) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        return compressibility<Eq>(State(par_.data(), T).fluid, rho);
    }
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        if (!(T > 0.0) || !std::isfinite(T)) return 0;
        const State s(par_.data(), T);
        return fluid_densities<Eq>(s.fluid, p / (R * T), phase, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override {
        const State s(par_.data(), T);
        const DensityRange at = density_range<Eq>(s.fluid);
        if (phase == 1) return at.liquid > 0.0 ? at.liquid : 0.8 * at.top;
        const double P = p / (R * T);
        return P > 0.0 ? P / (1.0 + P / at.top) : 0.0;
    }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        return residual_derivatives<Eq>(
            [this](auto const& temperature, auto const& use) {
                using Number = std::decay_t<decltype(temperature)>;
                use(FluidAtT<Eq, Number>(par_.data(), temperature).fluid);
            },
            rho, T, nrho, nT, d);
    }

  private:
    using State = FluidAtT<Eq, double>;
    using Fluid = decltype(State::fluid);

    void fill_tables() {
        const double Tc = Tcrit(), low = 0.25 * Tc;
        double top = no_limit;  // one for all temperatures
        for (double T : {low, Tc})
            if (T > 0.0) {
                const State s(par_.data(), T);
                const DensityRange at = density_range<Eq>(s.fluid);
                top = std::min(top, at.clear > 0.0 ? at.clear : at.top);
            }
        fill_density_tables(
            [this](double T) {
                return [s = State(par_.data(), T)](double rho) {
                    return Curve<Eq, Fluid>{s.fluid}(rho);
                };
            },
            {.Tc = Tc, .rho_c = 1.0 / vcrit(), .top = top, .Tmin = low}, Ttable_, dilute_, dense_);
    }

    ParameterValues<static_cast<std::size_t>(kCount)> par_ = default_values(Eq::parameters);
};

}  // namespace corvane
