// How an equation is evaluated: what depends on temperature alone first, then the composition, then
// the density. Equations that are written in one function have the same stages, with the work in
// the last one.
#pragma once

#include <corvane/plugin/density.h>
#include <corvane/plugin/fractions.h>
#include <corvane/plugin/jet.h>
#include <corvane/plugin/parameters.h>

#include <array>
#include <iterator>
#include <type_traits>

namespace corvane {

/// alphar(temperature, density, x) is all there is.
template <class Eq>
inline constexpr bool in_one_function = requires(Eq const& e, double t,
                                                 Fractions<double> const& x) {
    e.alphar(t, t, x);
};

template <class Eq>
inline constexpr int parameter_count = static_cast<int>(std::size(Eq::parameters));
/// Of what a mixing theory knows of each component by itself.
template <class Eq>
inline constexpr int theory_parameter_count = [] {
    if constexpr (requires { Eq::theory_parameters; })
        return static_cast<int>(std::size(Eq::theory_parameters));
    else
        return 0;
}();
template <class Eq>
inline constexpr int pair_parameter_count = [] {
    if constexpr (requires { Eq::pair_parameters; })
        return static_cast<int>(std::size(Eq::pair_parameters));
    else
        return 0;
}();

namespace stages_detail {
struct Nothing {};

template <class Eq, class T>
auto component(T const& temperature, double const* par) {
    if constexpr (in_one_function<Eq>) {
        std::array<double, parameter_count<Eq>> values;
        for (int k = 0; k < parameter_count<Eq>; ++k) values[k] = par[k];
        return values;
    } else {
        return Eq{}.component(temperature, par);
    }
}
/// @param pair  the parameters of the pair, zeroes where i is j
template <class Eq, class T, class C>
auto pair(T const& temperature, C const& a, C const& b, double const* given) {
    if constexpr (in_one_function<Eq>) {
        std::array<double, pair_parameter_count<Eq>> values{};
        for (int k = 0; k < pair_parameter_count<Eq>; ++k) values[k] = given[k];
        return values;
    } else if constexpr (requires(Eq const& e) { e.pair(temperature, a, b, given); }) {
        return Eq{}.pair(temperature, a, b, given);
    } else {
        return Nothing{};
    }
}
}  // namespace stages_detail

/// What an equation keeps of a component and of a pair at one temperature.
template <class Eq, class T>
using ComponentAt = decltype(stages_detail::component<Eq>(std::declval<T const&>(), nullptr));
template <class Eq, class T>
using PairAt = decltype(stages_detail::pair<Eq>(
    std::declval<T const&>(), std::declval<ComponentAt<Eq, T> const&>(),
    std::declval<ComponentAt<Eq, T> const&>(), nullptr));

/// All components and pairs at one temperature, stored by the caller.
template <class Eq, class T>
struct AtTemperature {
    static_assert(std::is_trivially_copyable_v<ComponentAt<Eq, T>> &&
                      std::is_trivially_copyable_v<PairAt<Eq, T>>,
                  "what component and pair return is kept in plain memory");

    T temperature;
    int n;
    ComponentAt<Eq, T> const* components;
    PairAt<Eq, T> const* pairs;  ///< (i, j), i >= j, at i(i+1)/2 + j

    int size() const { return n; }
    ComponentAt<Eq, T> const& operator[](int i) const { return components[i]; }
    PairAt<Eq, T> const& operator()(int i, int j) const {
        return pairs[i > j ? i * (i + 1) / 2 + j : j * (j + 1) / 2 + i];
    }
};

namespace stages_detail {
template <class T, class X>
struct OneFunction {
    T temperature;
    Fractions<X> x;
    RawParameters raw;
};
template <class Eq, class T>
RawParameters raw(AtTemperature<Eq, T> const& at) {
    return {at.components->data(), parameter_count<Eq>, at.pairs->data(), pair_parameter_count<Eq>};
}
}  // namespace stages_detail

/// The fluid at one temperature and composition.
template <class Eq, class T, class X>
auto mixed(AtTemperature<Eq, T> const& at, Fractions<X> const& x) {
    if constexpr (in_one_function<Eq>) {
        const RawParameters raw = stages_detail::raw(at);
        return stages_detail::OneFunction<T, X>{at.temperature, x.template as<X>(raw), raw};
    } else {
        return Eq{}.mix(at, x);
    }
}
/// alphar returns what it returns: a series in the density alone where only that occurs.
template <class Eq>
inline constexpr bool separates = requires { requires Eq::separates; };

/// A^r/(RT) of that fluid.
template <class Eq, class F, class S>
auto residual(F const& fluid, S const& density) {
    if constexpr (in_one_function<Eq>)
        return Eq{}.alphar(S(fluid.temperature), density, fluid.x.template as<S>(fluid.raw));
    else
        return Eq{}.alphar(fluid, density);
}
/// Where its densities lie.
template <class Eq, class F>
DensityRange density_range(F const& fluid) {
    if constexpr (in_one_function<Eq>)
        return Eq{}.range(fluid.temperature, fluid.x);
    else
        return Eq{}.range(fluid);
}

/// Whether the equation has a closed form for the isotherm.
template <class Eq, class F>
inline constexpr bool closed_isotherm = requires(Eq const& e, F const& f) {
    e.isotherm(f, 0.0);
};

/// The isotherm P = rho·Z and its slope, from the first two derivatives of A^r.
template <class Eq, class F>
struct Curve {
    static constexpr bool closed = closed_isotherm<Eq, F>;
    F const& fluid;

    /// Flat, so that logarithms whose slopes alone are needed are left out.
    [[gnu::flatten]] IsothermPoint operator()(double rho) const {
        if constexpr (closed) return Eq{}.isotherm(fluid, rho);
        const auto a = residual<Eq>(fluid, Jet<2>::along_h(rho));
        return {rho * (1.0 + a(1)), 1.0 + 2.0 * (a(1) + a(2))};
    }
    [[gnu::flatten]] double Z(double rho) const {
        return 1.0 + residual<Eq>(fluid, Jet<1>::along_h(rho))(1);
    }
    double pressure(double rho) const { return rho * Z(rho); }
    /// Slope of P, and rho and rho² times its first two derivatives.
    SlopePoint slope(double rho) const {
        const auto a = residual<Eq>(fluid, Jet<4>::along_h(rho));
        return {1.0 + 2.0 * (a(1) + a(2)), 2.0 * a(1) + 8.0 * a(2) + 6.0 * a(3),
                12.0 * a(2) + 36.0 * a(3) + 24.0 * a(4)};
    }
    double residual_at(double rho) const { return residual<Eq>(fluid, rho); }
    /// Ar + Z − 1 + ln rho.
    double gibbs(double rho) const {
        const auto a = residual<Eq>(fluid, Jet<1>::along_h(rho));
        return a(0) + a(1) + std::log(rho);
    }
};

/// Z: not-a-number wherever Ar is no number, past a pole.
template <class Eq, class F>
double compressibility(F const& fluid, double rho) {
    if constexpr (closed_isotherm<Eq, F>) {
        const bool before_poles = rho > 0.0 && rho <= density_range<Eq>(fluid).top;
        if (before_poles || (rho != 0.0 && std::isfinite(residual<Eq>(fluid, rho))))
            return Eq{}.isotherm(fluid, rho).P / rho;
    } else if (rho > 0.0 && rho <= density_range<Eq>(fluid).top) {
        return Curve<Eq, F>{fluid}.Z(rho);
    }
    const auto a = residual<Eq>(fluid, Jet<1>::along_h(rho));
    return std::isfinite(a(0)) ? 1.0 + a(1) : std::numeric_limits<double>::quiet_NaN();
}

/// Densities by the contract of Model1::vcalc at P = p/(R·T): the equation's own, its roots in
/// closed form, or the search.
template <class Eq, class F>
int fluid_densities(F const& fluid, double P, int phase, double& rho1, double& rho2) {
    if constexpr (requires(Eq const& e) { e.densities(fluid, P, phase, rho1, rho2); })
        return Eq{}.densities(fluid, P, phase, rho1, rho2);
    else if constexpr (requires(Eq const& e) { e.roots(fluid, P); }) {
        if (!is_pressure(P)) return 0;
        const Curve<Eq, F> f{fluid};
        const StableRoots root = Eq{}.roots(fluid, P);
        return order_roots(
            root.dilute, root.dense, phase, [&](double start) { return f(start).P > P; },
            [&](double rho) { return f.gibbs(rho); }, rho1, rho2);
    } else
        return all_densities(Curve<Eq, F>{fluid}, density_range<Eq>(fluid), P, phase, rho1, rho2);
}

/// Derivatives of A^r by the contract of Deriv1::deriv. `at(T)` calls its second argument with the
/// fluid at T, a number with derivatives or not.
template <class Eq, class AtT>
int residual_derivatives(AtT const& at, double rho, double T, int nrho, int nT, double* d) {
    if (nrho < 0 || nT < 0) return 0;
    constexpr double factorial[] = {1, 1, 2, 6};
    const bool possible = T > 0.0 && std::isfinite(T);
    auto write = [&](auto const& a, int order) {
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT && i + j <= order; ++j)
                d[i * (nT + 1) + j] = possible ? factorial[i] * factorial[j] * a(i, j)
                                               : std::numeric_limits<double>::quiet_NaN();
    };
    auto both = [&]<int N>(std::integral_constant<int, N>) {
        using Density = std::conditional_t<separates<Eq>, Jet<N>, Jet<N, N>>;
        at(Jet<N, N, 0>::along_k(T), [&](auto const& fluid) {
            write(Jet<N, N>(residual<Eq>(fluid, Density::along_h(rho))), N);
        });
    };
    if (nT == 0 && nrho <= 3)
        at(T, [&](auto const& fluid) { write(residual<Eq>(fluid, Jet<3>::along_h(rho)), 3); });
    else if (nrho <= 1 && nT <= 1 && nrho + nT < 2)
        both(std::integral_constant<int, 1>());
    else if (nrho <= 2 && nT <= 2)
        both(std::integral_constant<int, 2>());
    else
        return 0;
    return 1;
}

}  // namespace corvane
