// Cubic plus association: Soave–Redlich–Kwong with the association of Wertheim's theory
// (Kontogeorgis, Voutsas, Yakoumis & Tassios, Ind. Eng. Chem. Res. 35 (1996) 4310).
//
//     A^r/(RT) = −ln(1 − y) − a/(b·R·T)·ln(1 + y) + Σ x_i Σ over sites of ln X − X/2 + 1/2,  y =
//     b·rho a_i = a0·[1 + c1·(1 − √(T/Ts))]²,   Δ_ij = g·b_ij·β_ij·[exp(ε_ij/T) − 1]
// See README.md.
#include <corvane/plugin/equation.h>
#include <plugins/common/pcsaft/cross_association.h>

#include <cmath>

namespace {
using corvane::above_zero;

struct Cpa {
    static constexpr char const *name = "CPA", *mixing = "vdW1";
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 18.0},
        {.label = "Ts", .unit = "K", .value = 647.0, .low = above_zero},
        {.label = "vs", .unit = "cm3/mol", .value = 15.0, .low = above_zero, .adjustable = true},
        {.label = "a0", .unit = "MPa cm6/mol2", .value = 1e5, .low = 0.0, .adjustable = true},
        {.label = "c1", .value = 0.7, .adjustable = true},
        {.label = "betaAB", .low = 0.0, .adjustable = true, .optional = true},
        {.label = "epsAB", .unit = "K", .adjustable = true, .optional = true},
        {.label = "donors", .low = 0.0, .optional = true},
        {.label = "acceptors", .low = 0.0, .optional = true},
        {.label = "original", .low = 0.0, .high = 1.0, .optional = true}};
    static constexpr corvane::Parameter pair_parameters[] = {
        {.label = "kij"},
        {.label = "epsAB", .unit = "K", .optional = true},
        {.label = "betaAB", .low = 0.0, .optional = true}};
    enum { M, Ts, vs, a0, c1, betaAB, epsAB, donors, acceptors, original };
    static constexpr int sums = 6;  // b, a, four associating components
    static constexpr bool separates = true;

    template <class T>
    struct Component {
        double b, beta, epsilon, donors, acceptors;
        bool spheres;  // contact value of Carnahan and Starling
        T root;        // √(a/(R·T)), cm^(3/2)/mol^(1/2)
    };
    template <class T>
    Component<T> component(T const& temperature, double const* p) const {
        using std::sqrt;
        const T unit = std::sqrt(p[a0] / R) / sqrt(temperature);
        return {p[vs],
                p[betaAB],
                p[epsAB],
                p[donors],
                p[acceptors],
                p[original] != 0.0,
                unit * (1.0 + p[c1] * (1.0 - sqrt(temperature / p[Ts])))};
    }
    template <class T>
    struct Pair {
        T a;     // a_ij/(R·T), cm³/mol
        T bond;  // Δ/g, cm³/mol
    };
    template <class T>
    Pair<T> pair(T const& temperature, Component<T> const& i, Component<T> const& j,
                 double const* given) const {
        using std::expm1;
        // One site that bonds to its like is half a donor and half an acceptor, with twice the
        // strength: the same equations where the partners' donors and acceptors are alike.
        const double twice = i.donors == 0.5 || j.donors == 0.5 ? 2.0 : 1.0;
        const double beta = twice * (given[2] != 0.0 ? given[2] : std::sqrt(i.beta * j.beta));
        const double epsilon = given[1] != 0.0 ? given[1] : 0.5 * (i.epsilon + j.epsilon);
        const bool bonds = i.donors * j.acceptors + i.acceptors * j.donors > 0.0 && beta > 0.0;
        return {i.root * j.root * (1.0 - given[0]),
                bonds ? T(0.5 * (i.b + j.b) * beta * expm1(T(epsilon / temperature))) : T(0.0)};
    }

    template <class At, class X, class V, class B>
    struct Fluid {
        At at;
        corvane::Fractions<X> x;
        B b;
        V q;           // a/(b·R·T)
        bool spheres;  // contact value of Carnahan and Starling
    };
    template <class At, class X>
    auto mix(At const& at, corvane::Fractions<X> const& x) const {
        const auto b = x.sum([&](int i) { return at[i].b; });
        const auto a = x.sum2([&](int i, int j) { return at(i, j).a; });
        bool spheres = false;
        for (int i = 0; i < at.size(); ++i) spheres = spheres || at[i].spheres;
        return Fluid<At, X, std::remove_const_t<decltype(a / b)>, std::remove_const_t<decltype(b)>>{
            at, x, b, a / b, spheres};
    }
    template <class F, class S>
    auto alphar(F const& f, S const& density) const {
        using std::log1p;
        const S y = f.b * density;
        return -log1p(-y) - f.q * log1p(y) + association(f, density, y);
    }
    template <class F>
    corvane::DensityRange range(F const& f) const {
        return {.top = (1.0 - 1e-9) / f.b, .loop = 0.26 / f.b};
    }

  private:
    /// Contact value at the packing fraction y/4.
    template <class S>
    static S contact(bool spheres, S const& y) {
        if (!spheres) return 1.0 / (1.0 - 0.475 * y);  // 1.9·y/4
        const S free = 1.0 - 0.25 * y;
        return (1.0 - 0.125 * y) / (free * free * free);
    }
    template <class F, class S>
    static auto association(F const& f, S const& density, S const& y) {
        const S g = density * contact(f.spheres, y);
        using Both = decltype(g * f.at(0, 0).bond);
        return corvane::pcsaft::association_energy<Both>(
            f.at, f.x, [&](int i, int j) { return Both(g * f.at(i, j).bond); });
    }
};
}  // namespace

CORVANE_EQUATION(Cpa)
