// Peng & Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59, with van der Waals mixing and the volume
// translation of Péneloux, Rauzy & Fréze, Fluid Phase Equilib. 8 (1982) 7, on the authors' kit:
//
//     A^r/(RT) = −ln(1 − y) − q/(2√2)·ln[(1 + (1+√2)y)/(1 + (1−√2)y)] − ln(1 + c·rho)
//
// with y = b·r, r = rho/(1 + c·rho) and q = a/(b·R·T).
#include <corvane/plugin/cubic.h>
#include <corvane/plugin/equation.h>

#include <cmath>
#include <numbers>

namespace {
using corvane::above_zero;

struct PengRobinson {
    static constexpr char const *name = "PR76", *mixing = "vdW1";
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 1.0},
        {.label = "Ts", .unit = "K", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "vs", .unit = "cm3/mol", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "omega", .adjustable = true},
        {.label = "c", .unit = "cm3/mol", .optional = true}};
    static constexpr corvane::Parameter pair_parameters[] = {{.label = "kij"},
                                                             {.label = "lij", .optional = true}};
    static constexpr int sums = 3;
    static constexpr bool separates = true;
    enum { M, Ts, vs, omega, c };

    template <class T>
    struct Component {
        double b, c;
        T root;  // √(a/(R·T)), cm^(3/2)/mol^(1/2)
    };
    template <class T>
    Component<T> component(T const& temperature, double const* par) const {
        using std::sqrt;
        const double w = par[omega];
        const double m = w <= 0.491 ? 0.37464 + w * (1.54226 - 0.26992 * w)
                                    : 0.379642 + w * (1.48503 + w * (-0.164423 + 0.016666 * w));
        constexpr double q_c = 0.45723552892138219 / 0.077796073903888456;
        return {par[vs], par[c],
                std::sqrt(q_c * par[vs]) * ((1.0 + m) * sqrt(par[Ts] / temperature) - m)};
    }
    template <class T>
    struct Pair {
        double b;
        T a;  // a_ij/(R·T), cm³/mol
    };
    template <class T>
    Pair<T> pair(T const&, Component<T> const& i, Component<T> const& j,
                 double const* given) const {
        return {0.5 * (i.b + j.b) * (1.0 - given[1]), i.root * j.root * (1.0 - given[0])};
    }

    template <class V, class B>
    struct Fluid {
        B b, c;
        V q;
    };
    template <class At, class X>
    auto mix(At const& at, corvane::Fractions<X> const& x) const {
        const auto b = x.sum2([&](int i, int j) { return at(i, j).b; });
        const auto shift = x.sum([&](int i) { return at[i].c; });
        const auto a = x.sum2([&](int i, int j) { return at(i, j).a; });
        return Fluid<decltype(a / b), std::remove_const_t<decltype(b)>>{b, shift, a / b};
    }
    template <class F, class S>
    auto alphar(F const& fluid, S const& density) const {
        using std::log1p;
        constexpr double d1 = 1.0 + std::numbers::sqrt2, d2 = 1.0 - std::numbers::sqrt2;
        const S shift = fluid.c * density, y = fluid.b * density / (1.0 + shift);
        return -log1p(-y) - fluid.q * log1p((d1 - d2) * y / (1.0 + d2 * y)) / (d1 - d2) -
               log1p(shift);
    }
    /// rho·Z and its slope, and the densities: what A^r says, in closed form.
    template <class F>
    corvane::IsothermPoint isotherm(F const& fluid, double density) const {
        const double t = 1.0 / (1.0 + fluid.c * density);
        const auto at = corvane::cubic_isotherm<corvane::PengRobinson>(fluid.b * density * t, fluid.q);
        return {at.P / fluid.b, at.dP * t * t};
    }
    template <class F>
    corvane::StableRoots roots(F const& fluid, double P) const {
        const auto y = corvane::cubic_roots<corvane::PengRobinson>(P * fluid.b, fluid.q);
        return {untranslated(fluid, y.dilute), untranslated(fluid, y.dense)};
    }
    template <class F>
    corvane::DensityRange range(F const& fluid) const {
        return {.top = untranslated(fluid, corvane::kCubicTop),
                .loop = untranslated(fluid, corvane::PengRobinson::y_c),
                .single = true};
    }

  private:
    /// The density of y = b·r; 0 where the translation leaves no volume.
    template <class F>
    static double untranslated(F const& fluid, double y) {
        const double rest = fluid.b - fluid.c * y;
        return rest > 0.0 ? y / rest : 0.0;
    }
};
}  // namespace

CORVANE_EQUATION(PengRobinson)
