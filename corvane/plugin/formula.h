// An equation of state in one function, compiled in a second or two.
//
// The class is that of corvane/plugin/equation.h with alphar(temperature, density, x) and range,
// and ends with CORVANE_FORMULA in place of CORVANE_EQUATION:
//
//     template <class T>
//     T alphar(T temperature, T density, corvane::Fractions<T> const& x) const;
//     corvane::DensityRange range(double temperature, corvane::Fractions<double> const& x) const;
//
// Only alphar is compiled with it, for each type of number that derivatives are taken with; what
// the models do with these numbers is in the static library corvane::kit, which
// corvane_add_equation links. CORVANE_EQUATION compiles everything in place: it needs no library,
// and is for equations in stages, which are faster.
#pragma once

#include <corvane/core/api.h>
#include <corvane/plugin/density_range.h>
#include <corvane/plugin/fractions.h>
#include <corvane/plugin/jet.h>
#include <corvane/plugin/parameter.h>

#ifdef CORVANE_STATIC_PLUGIN
#include <corvane/pure/linked_plugins.h>
#endif

class Model1;
class ModelN;

namespace corvane {

/// Where a formula is evaluated.
struct FormulaState {
    double temperature;
    double const* x;  ///< n mole fractions
    int n;
    RawParameters raw;
};

/// A formula as the models see it: its tables, and A^r/(RT) for each type of number.
struct Formula {
    template <int K>
    using Directions = std::array<int, K>;

    char const* name;
    char const* mixing;  ///< null: pure only, and so are the last six functions
    Parameter const* parameters;
    int count;
    Parameter const* pair_parameters;
    int pair_count;

    DensityRange (*range)(FormulaState const&);
    /// At a density: Z, the point of the isotherm, both without the logarithms that only the value
    /// of A^r has; the value, series in the density, and in density and temperature.
    double (*Z)(FormulaState const&, double density);
    IsothermPoint (*isotherm)(FormulaState const&, double density);
    double (*value)(FormulaState const&, double density);
    Jet<2> (*second)(FormulaState const&, double density);
    Jet<4> (*fourth)(FormulaState const&, double density);
    Jet<2, 2> (*both)(FormulaState const&, double density);
    /// With derivatives in the amounts of some components over the total one, `density`.
    Gradient<2> (*gradient2)(FormulaState const&, double density, Directions<2> const&);
    Gradient<4> (*gradient4)(FormulaState const&, double density, Directions<4> const&);
    Gradient<2, Jet<1>> (*slopes2)(FormulaState const&, double density, Directions<2> const&);
    Gradient<4, Jet<1>> (*slopes4)(FormulaState const&, double density, Directions<4> const&);
    Curvature<2> (*curvature2)(FormulaState const&, double density, Directions<2> const&);
    Curvature<4> (*curvature4)(FormulaState const&, double density, Directions<4> const&);
};

namespace formula_detail {

template <class Eq, class S>
S alphar(FormulaState const& at, S const& temperature, S const& density) {
    return Eq{}.alphar(temperature, density, Fractions<S>(at.x, at.n, at.raw));
}
template <class Eq>
DensityRange range(FormulaState const& at) {
    return Eq{}.range(at.temperature, Fractions<double>(at.x, at.n, at.raw));
}
template <class Eq>
double value(FormulaState const& at, double density) {
    return alphar<Eq, double>(at, at.temperature, density);
}
template <class Eq, int N>
Jet<N> series(FormulaState const& at, double density) {
    return alphar<Eq>(at, Jet<N>(at.temperature), Jet<N>::along_h(density));
}
template <class Eq>
[[gnu::flatten]] double Z(FormulaState const& at, double density) {
    return 1.0 + series<Eq, 1>(at, density)(1);
}
template <class Eq>
[[gnu::flatten]] IsothermPoint isotherm(FormulaState const& at, double density) {
    const auto a = series<Eq, 2>(at, density);
    return {density * (1.0 + a(1)), 1.0 + 2.0 * (a(1) + a(2))};
}
template <class Eq>
Jet<2, 2> both(FormulaState const& at, double density) {
    return alphar<Eq>(at, Jet<2, 2>::along_k(at.temperature), Jet<2, 2>::along_h(density));
}
template <class Eq, class V>
V along(FormulaState const& at, double density, std::array<int, V::variables> const& direction) {
    using B = typename V::Base;
    V rho(density);
    for (auto& slope : rho.g) slope = B(density);
    B temperature(at.temperature);
    if constexpr (!std::is_same_v<B, double>) temperature = B::along_h(at.temperature);
    return Eq{}.alphar(V(temperature), rho, Fractions<V>(at.x, at.n, direction, at.raw));
}

constexpr bool same(char const* a, char const* b) {
    while (*a && *a == *b) ++a, ++b;
    return *a == *b;
}
template <int N>
constexpr int size(Parameter const (&)[N]) {
    return N;
}

template <class Eq>
constexpr Formula make() {
    static_assert(size(Eq::parameters) >= 3 && same(Eq::parameters[0].label, "M") &&
                      same(Eq::parameters[1].label, "Ts") && same(Eq::parameters[2].label, "vs"),
                  "the first parameters are M, Ts (a temperature) and vs (a volume)");
    static_assert(std::is_empty_v<Eq>, "an equation keeps nothing; parameters live in the model");
    Formula f{};
    f.name = Eq::name;
    f.parameters = Eq::parameters;
    f.count = size(Eq::parameters);
    if constexpr (requires { Eq::pair_parameters; }) {
        f.pair_parameters = Eq::pair_parameters;
        f.pair_count = size(Eq::pair_parameters);
    }
    f.range = range<Eq>;
    f.Z = Z<Eq>;
    f.isotherm = isotherm<Eq>;
    f.value = value<Eq>;
    f.second = series<Eq, 2>;
    f.fourth = series<Eq, 4>;
    f.both = both<Eq>;
    if constexpr (requires { Eq::mixing; }) {
        f.mixing = Eq::mixing;
        f.gradient2 = along<Eq, Gradient<2>>;
        f.gradient4 = along<Eq, Gradient<4>>;
        f.slopes2 = along<Eq, Gradient<2, Jet<1>>>;
        f.slopes4 = along<Eq, Gradient<4, Jet<1>>>;
        f.curvature2 = along<Eq, Curvature<2>>;
        f.curvature4 = along<Eq, Curvature<4>>;
    }
    return f;
}

}  // namespace formula_detail

template <class Eq>
inline constexpr Formula formula = formula_detail::make<Eq>();

/// Models of a formula, which outlives them. The mixture is null where there is no mixing.
Model1* new_formula1(Formula const& formula);
void delete_formula(Model1* model);
ModelN* new_formulaN(Formula const& formula);
void delete_formula(ModelN* model);

}  // namespace corvane

/// Exports the factories and destroyers of a formula, as CORVANE_EQUATION does.
#ifndef CORVANE_STATIC_PLUGIN
#define CORVANE_FORMULA(Class)                                 \
    CORVANE_PLUGIN_API Model1* create1();                      \
    CORVANE_PLUGIN_API void destroy1(Model1* model);           \
    CORVANE_PLUGIN_API ModelN* createN();                      \
    CORVANE_PLUGIN_API void destroyN(ModelN* model);           \
    Model1* create1() {                                        \
        return corvane::new_formula1(corvane::formula<Class>); \
    }                                                          \
    void destroy1(Model1* model) {                             \
        corvane::delete_formula(model);                        \
    }                                                          \
    ModelN* createN() {                                        \
        return corvane::new_formulaN(corvane::formula<Class>); \
    }                                                          \
    void destroyN(ModelN* model) {                             \
        corvane::delete_formula(model);                        \
    }
#else
#define CORVANE_FORMULA(Class)                                                    \
    [[maybe_unused]] static const bool corvane_linked_formula = [] {              \
        const std::string name = CORVANE_STATIC_PLUGIN;                           \
        corvane::link_plugin(                                                     \
            name, +[] { return corvane::new_formula1(corvane::formula<Class>); }, \
            +[](Model1* model) { corvane::delete_formula(model); });              \
        if (char const* mixing = corvane::formula<Class>.mixing)                  \
            corvane::link_plugin(                                                 \
                name + "+" + mixing,                                              \
                +[] { return corvane::new_formulaN(corvane::formula<Class>); },   \
                +[](ModelN* model) { corvane::delete_formula(model); });          \
        return true;                                                              \
    }();
#endif
