// Cubic equations of state whose attraction in mixtures follows from a model of the excess Gibbs
// energy, on the authors' kit.
//
//     a/(b·R·T) = Σ x_i·a_i/(b_i·R·T) + h(T, x),   b = Σ x_i·b_i,   c = Σ x_i·c_i
//
// What h is says the mixing theory: Huron & Vidal, Fluid Phase Equilib. 3 (1979) 255; Holderbaum &
// Gmehling, Fluid Phase Equilib. 70 (1991) 251. Derivatives and everything else come from the kit.
#pragma once

#include <corvane/plugin/equation.h>
#include <plugins/common/cubic_fluid.h>

#include <array>
#include <cmath>

namespace corvane {

/// The table of a cubic equation's parameters, as CubicModel has them.
inline constexpr Parameter cubic_table[cubic_parameters] = {
    {.label = "M", .unit = "g/mol"},
    {.label = "Ts", .unit = "K", .low = above_zero, .adjustable = true},
    {.label = "vs", .unit = "cm3/mol", .low = above_zero, .adjustable = true},
    {.label = "omega", .adjustable = true},
    {.label = "alpha"},
    {.label = "L"},
    {.label = "Mtwu"},
    {.label = "Ntwu"},
    {.label = "c", .unit = "cm3/mol"},
    {.label = "c1"},
    {.label = "c2"},
    {.label = "c3"}};

/// a/(b·R·T) of a component, a number with derivatives in T where T is one (up to the second).
template <class Form, class T>
T attraction_of(T const& temperature, double const* par) {
    const double at = value_of(temperature);
    const Attraction a = attraction<Form>(par, at);
    if constexpr (Differentiable<T>) {
        std::array<double, T::order + 1> f{a.q, a.Tq / at};
        if constexpr (T::order > 1) f[2] = 0.5 * a.TTq / (at * at);
        return temperature.compose(f);
    } else {
        return a.q;
    }
}

/// Base class of the equation of a mixing theory. `Theory` has component and pair, whose results
/// have b, c and q, and `excess(at, x, b)`, which returns h.
template <class Form, class Theory>
struct ExcessCubic {
    static constexpr char const* name = Form::name;
    static constexpr auto& parameters = cubic_table;
    static constexpr bool separates = true;

    /// The value of I at infinite pressure, y = 1: what a/(b·R·T) leaves there of the excess Gibbs
    /// energy.
    static double Lambda() {
        static const double value = attraction_integral<Form>(1.0);
        return value;
    }

    template <class B, class Q>
    struct Fluid {
        B b, c;
        Q q;
        CubicFluid<Form> plain() const {
            return {value_of(b), value_of(c), {value_of(q), 0.0, 0.0}};
        }
    };
    template <class At, class X>
    auto mix(At const& at, Fractions<X> const& x) const {
        const auto b = x.sum([&](int i) { return at[i].b; });
        const auto c = x.sum([&](int i) { return at[i].c; });
        const auto q = x.sum([&](int i) { return at[i].q; }) + Theory::excess(at, x, b);
        return Fluid<std::remove_const_t<decltype(b)>, std::remove_const_t<decltype(q)>>{b, c, q};
    }
    template <class F, class S>
    auto alphar(F const& f, S const& density) const {
        using std::log1p;
        const S y = f.b * density / (1.0 + f.c * density);
        const S integral =
            log1p(S((Form::d1 - Form::d2) * y / (1.0 + Form::d2 * y))) / (Form::d1 - Form::d2);
        return -log1p(S((f.c - f.b) * density)) - f.q * integral;
    }
    template <class F>
    DensityRange range(F const& f) const {
        const CubicFluid<Form> plain = f.plain();
        return {.top = plain.translated(kCubicTop),
                .loop = plain.translated(Form::y_c),
                .single = true};
    }
    template <class F>
    IsothermPoint isotherm(F const& f, double rho) const {
        const double t = 1.0 + f.c * rho;
        const IsothermPoint at = cubic_isotherm<Form>(f.b * rho / t, f.q);
        return {at.P / f.b, at.dP / (t * t)};
    }
    template <class F>
    int densities(F const& f, double P, int phase, double& rho1, double& rho2) const {
        return f.plain().density(P * R, 1.0, phase, rho1, rho2);
    }
};

}  // namespace corvane
