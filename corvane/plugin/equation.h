// An equation of state from its residual Helmholtz energy alone.
//
// The author writes one empty class and one macro. The class says its name and its parameters, the
// residual Helmholtz energy A^r/(RT) once, for any number type, and the largest density:
//
//     struct VanDerWaals {
//         static constexpr char const* name = "vdw";     // libthvdw.dll
//         static constexpr char const* mixing = "vdW1";  // libthvdw+vdW1.dll; absent: pure only
//         static constexpr corvane::Parameter parameters[] = {
//             {.label = "M", .unit = "g/mol", .value = 40.0},
//             {.label = "Ts", .unit = "K", .value = 150.0, .low = corvane::above_zero},
//             {.label = "vs", .unit = "cm3/mol", .value = 30.0, .low = corvane::above_zero}};
//         static constexpr corvane::Parameter pair_parameters[] = {{.label = "kij"}};
//
//         template <class T>
//         T alphar(T temperature, T density, corvane::Fractions<T> const& x) const;
//         template <class T>
//         corvane::DensityRange range(T temperature, corvane::Fractions<T> const& x) const;
//     };
//     CORVANE_EQUATION(VanDerWaals)
//
// Fast equations split the work, so that nothing is computed twice. In place of alphar and range:
//
//     auto component(T temperature, double const* par) const;   // of a component
//     auto pair(T temperature, C const& i, C const& j, double const* par) const;  // optional
//     auto mix(At const& at, Fractions<X> const& x) const;       // at[i], at(i, j): those two
//     S alphar(F const& fluid, S density) const;                 // fluid: what mix returned
//     DensityRange range(F const& fluid) const;
//     IsothermPoint isotherm(F const& fluid, double density) const;   // optional: rho·Z and its
//                                                // slope in closed form, for faster densities
//     StableRoots roots(F const& fluid, double P) const;              // optional: the densities at
//                                                // P = p/(R·T) in closed form (cubic.h)
//     int densities(F const& fluid, double P, int phase, double& rho1, double& rho2) const;
//                                                // optional: Model1::vcalc at P
//
// component and pair return plain structures of numbers. pair is called with i >= j, and with
// zeroes for i = j. T is double, or a series in the temperature alone; X is double or Gradient,
// Curvature; S is X, a series in the density, or one in both variables, which a T is converted to:
// what combines numbers of the fluid with the density is an S. Functions come from
// corvane/plugin/elementary.h: `using std::log1p;` before log1p(y). What depends on the composition
// is written with x.sum and x.sum2.
//
// `static constexpr bool separates = true;` for equations in which something depends on density and
// composition alone, as y = b·rho in a cubic one: `S` is a series in the density alone then, which
// costs half of one in both, and alphar is declared `auto`, since it returns what S and the
// temperature make together.
//
// For mixtures of many: `static constexpr int sums = 3;` says how many calls of x.sum, x.sum2 and
// x[i] mix and alphar make, together; they are then the variables of all derivatives in the
// amounts, whose cost hardly grows with the number of components.
//
// A mixing theory for the components of another equation has that one's name and its table of
// parameters, in the order of ppar, and ends with CORVANE_MIXTURE. What it knows of each component
// by itself (groups, say) it lists in a table `theory_parameters`; component then finds these after
// the others. `static std::string refusal(double const* i, double const* j)` says, with these
// alone, what keeps it from combining two components; "" if nothing. Their files:
// corvane/mixture/theory_parameters.h.
//
// A^r must be zero at zero density and relatively accurate near it, not-a-number or infinite past a
// pole, and must not throw: docs/plugins.md.
#pragma once

#include <corvane/plugin/line.h>
#include <corvane/plugin/mixture_equation.h>
#include <corvane/plugin/pure_equation.h>

namespace corvane {

/// A new mixture model of an equation; null where it says no mixing.
template <class Eq>
ModelN* new_mixture() {
    if constexpr (requires { Eq::mixing; })
        return new MixtureEquation<Eq>;
    else
        return nullptr;
}
template <class Eq>
void delete_mixture(ModelN* model) {
    if constexpr (requires { Eq::mixing; }) delete static_cast<MixtureEquation<Eq>*>(model);
}
/// Links the mixture of an equation into the program; nothing where it says no mixing.
template <class Eq>
bool link_mixture(char const* name) {
    if constexpr (requires { Eq::mixing; })
        link_plugin(std::string(name) + "+" + Eq::mixing, new_mixture<Eq>, delete_mixture<Eq>);
    return true;
}

}  // namespace corvane

/// Exports the factories and destroyers of an equation, of the pure substance and of the mixture:
/// once, at the end of the only source that needs it, outside every namespace. Linked in
/// (CORVANE_STATIC_PLUGIN), the mixture goes by the plug-in's name, "+" and the mixing theory.
#ifndef CORVANE_STATIC_PLUGIN
#define CORVANE_EQUATION(Class)                      \
    CORVANE_PLUGIN1(corvane::PureEquation<Class>)    \
    CORVANE_PLUGIN_API ModelN* createN();            \
    CORVANE_PLUGIN_API void destroyN(ModelN* model); \
    ModelN* createN() {                              \
        return corvane::new_mixture<Class>();        \
    }                                                \
    void destroyN(ModelN* model) {                   \
        corvane::delete_mixture<Class>(model);       \
    }
#else
#define CORVANE_EQUATION(Class)                                                         \
    CORVANE_PLUGIN1(corvane::PureEquation<Class>)                                       \
    [[maybe_unused]] static const bool corvane_linked_mixture =                                          \
        corvane::link_mixture<Class>(CORVANE_STATIC_PLUGIN);
#endif

/// The same of a mixing theory for components of another equation.
#define CORVANE_MIXTURE(Class) CORVANE_PLUGINN(corvane::MixtureEquation<Class>)
