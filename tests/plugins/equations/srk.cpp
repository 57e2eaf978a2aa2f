// Soave, Chem. Eng. Sci. 27 (1972) 1197, with van der Waals mixing, on the authors' kit:
//
//     A^r/(RT) = −ln(1 − y) − q·ln(1 + y),   y = b·rho,   q = a/(b·R·T).
#include <corvane/plugin/cubic.h>
#include <corvane/plugin/equation.h>

#include <cmath>

namespace {
using corvane::above_zero;
using Form = corvane::SoaveRedlichKwong;

struct Soave {
    static constexpr char const *name = "SRKkit", *mixing = "vdW1";
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 1.0},
        {.label = "Ts", .unit = "K", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "vs", .unit = "cm3/mol", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "omega", .adjustable = true}};
    static constexpr corvane::Parameter pair_parameters[] = {{.label = "kij"},
                                                             {.label = "lij", .optional = true}};
    static constexpr int sums = 2;
    static constexpr bool separates = true;

    template <class T>
    struct Component {
        double b;
        T root;  // √(a/(R·T)), cm^(3/2)/mol^(1/2)
    };
    template <class T>
    Component<T> component(T const& temperature, double const* par) const {
        using std::sqrt;
        const double m = 0.480 + par[3] * (1.574 - 0.176 * par[3]);
        return {par[2], std::sqrt(corvane::q_c<Form> * par[2]) *
                            ((1.0 + m) * sqrt(par[1] / temperature) - m)};
    }
    template <class T>
    struct Pair {
        double b;
        T a;  // a_ij/(R·T), cm³/mol
    };
    template <class T>
    Pair<T> pair(T const&, Component<T> const& i, Component<T> const& j, double const* k) const {
        return {0.5 * (i.b + j.b) * (1.0 - k[1]), i.root * j.root * (1.0 - k[0])};
    }
    template <class B, class V>
    struct Fluid {
        B b;
        V q;
    };
    template <class At, class X>
    auto mix(At const& at, corvane::Fractions<X> const& x) const {
        const auto b = x.sum2([&](int i, int j) { return at(i, j).b; });
        const auto a = x.sum2([&](int i, int j) { return at(i, j).a; });
        return Fluid<std::remove_const_t<decltype(b)>, decltype(a / b)>{b, a / b};
    }
    template <class F, class S>
    auto alphar(F const& fluid, S const& density) const {
        using std::log1p;
        const S y = fluid.b * density;
        return -log1p(-y) - fluid.q * log1p(y);
    }
    template <class F>
    corvane::IsothermPoint isotherm(F const& fluid, double density) const {
        const auto at = corvane::cubic_isotherm<Form>(fluid.b * density, fluid.q);
        return {at.P / fluid.b, at.dP};
    }
    template <class F>
    corvane::StableRoots roots(F const& fluid, double P) const {
        const auto y = corvane::cubic_roots<Form>(P * fluid.b, fluid.q);
        return {y.dilute / fluid.b, y.dense / fluid.b};
    }
    template <class F>
    corvane::DensityRange range(F const& fluid) const {
        return {.top = corvane::kCubicTop / fluid.b, .loop = Form::y_c / fluid.b, .single = true};
    }
};
}  // namespace

CORVANE_EQUATION(Soave)
