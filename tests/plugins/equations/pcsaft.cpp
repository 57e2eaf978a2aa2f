// PC-SAFT with association on the authors' kit: one formula of A^r for the pure fluid and for
// mixtures, with the kernels of the plug-ins PCSAFT and PCSAFT+LB but none of their derivatives.
#include <corvane/plugin/equation.h>
#include <plugins/common/pcsaft/cross_association.h>
#include <plugins/common/pcsaft/density.h>
#include <plugins/common/pcsaft/diameter.h>
#include <plugins/common/pcsaft/dispersion.h>
#include <plugins/common/pcsaft/hard_mixture.h>

#include <cmath>

namespace {
using corvane::above_zero;
using namespace corvane::pcsaft;

struct PcSaft {
    static constexpr char const *name = "PCSAFTkit", *mixing = "LB";
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 16.0},
        {.label = "Ts", .unit = "K", .value = 150.0, .low = above_zero, .adjustable = true},
        {.label = "vs", .unit = "cm3/mol", .value = 15.0, .low = above_zero, .adjustable = true},
        {.label = "m", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "kappaAB", .low = 0.0, .adjustable = true, .optional = true},
        {.label = "epsAB", .unit = "K", .adjustable = true, .optional = true},
        {.label = "donors", .low = 0.0, .adjustable = true, .optional = true},
        {.label = "acceptors", .low = 0.0, .optional = true}};
    static constexpr corvane::Parameter pair_parameters[] = {{.label = "kij", .optional = true},
                                                             {.label = "lij", .optional = true}};

    static constexpr int sums = 9;  // six to mix, one of chains, two associating components

    template <class T>
    struct Component {
        double Ts, m, sigma, kappa, epsilon, donors, acceptors;
        T d;  // diameter of the segments, in units that make π/6·NA one
        bool associates() const { return donors != 0.0 || acceptors != 0.0; }
    };
    template <class T>
    Component<T> component(T const& temperature, double const* p) const {
        const double sigma = std::cbrt(p[2]);
        const bool bonds = p[4] != 0.0;
        return {p[1],
                p[3],
                sigma,
                p[4],
                p[5],
                bonds ? p[6] : 0.0,
                bonds ? p[7] : 0.0,
                sigma * diameter(T(p[1] / temperature))};
    }
    template <class T>
    struct Pair {
        T first, second;  // of the dispersion: m_i·m_j·σ³·ε/kT, and ε² for ε
        T bond;           // Δ/g, cm³/mol
    };
    template <class T>
    Pair<T> pair(T const& temperature, Component<T> const& i, Component<T> const& j,
                 double const* k) const {
        using std::expm1;
        const double sigma = 0.5 * (i.sigma + j.sigma) * (1.0 - k[1]);
        const T theta = std::sqrt(i.Ts * j.Ts) * (1.0 - k[0]) / temperature;
        const T first = i.m * j.m * sigma * sigma * sigma * theta;
        T bond = 0.0;
        if (i.associates() && j.associates()) {
            const double size = i.sigma * j.sigma;
            const double volume = std::sqrt(i.kappa * j.kappa) * std::sqrt(size) * size;
            bond = (6.0 / M_PI) * volume * expm1(0.5 * (i.epsilon + j.epsilon) / temperature);
        }
        return {first, first * theta, bond};
    }

    template <class At, class X, class V, class M>
    struct Fluid {
        At at;
        corvane::Fractions<X> x;
        V packing, ratio, cross, unequal, first, second;
        M m;
        Dispersion<double> dispersion;  // where m is a plain number
    };
    template <class At, class X>
    auto mix(At const& at, corvane::Fractions<X> const& x) const {
        const auto m = x.sum([&](int i) { return at[i].m; });
        const auto z1 = x.sum([&](int i) { return at[i].m * at[i].d; });
        const auto z2 = x.sum([&](int i) { return at[i].m * at[i].d * at[i].d; });
        const auto z3 = x.sum([&](int i) { return at[i].m * at[i].d * at[i].d * at[i].d; });
        const auto first = x.sum2([&](int i, int j) { return at(i, j).first; });
        const auto second = x.sum2([&](int i, int j) { return at(i, j).second; });
        using V = std::remove_const_t<decltype(z3)>;
        using M = std::remove_const_t<decltype(m)>;
        const V ratio = z2 / z3;
        return Fluid<At, X, V, M>{at,
                                  x,
                                  z3,
                                  ratio,
                                  3.0 * z1 * ratio,
                                  z2 * ratio * ratio,
                                  -12.0 * first,
                                  -6.0 * m * second,
                                  m,
                                  Dispersion<double>(corvane::value_of(m))};
    }
    template <class F, class S>
    S alphar(F const& f, S const& density) const {
        using std::log1p;
        const S eta = f.packing * density, inverse = 1.0 / (1.0 - eta), ln_free = log1p(-eta);
        S a = (f.unequal - f.m) * ln_free + eta * inverse * (f.cross + f.unequal * inverse);
        a -= f.x.sum([&](int i) -> S {
            const double bonds = f.at[i].m - 1.0;
            if (bonds == 0.0) return S(0.0);
            const ContactLine contact(f.at[i].d * f.ratio);
            return bonds * (log1p(S(eta * (contact.p1 + contact.p2 * eta))) - 3.0 * ln_free);
        });
        a += dispersion(f, density, eta);
        return a + association(f, density, eta);
    }
    template <class F>
    corvane::DensityRange range(F const& f) const {
        // Critical temperatures over ε/k grow with the number of segments: 1.27 for methane, 2.5
        // for decane. That is near enough for a start.
        const double theta = f.first / (-12.0 * f.m * f.packing);
        const double Tr = 1.0 / (theta * (1.27 + 0.75 * std::log(f.m)));
        return {.top = kClosePacking / f.packing,
                .loop = 0.13 / f.packing,
                .liquid = liquid_packing(Tr) / f.packing,
                .single = true,
                .clear = kDense / f.packing};
    }

  private:
    /// The integrals are polynomials of the packing fraction, with coefficients that depend on m.
    template <class F, class S>
    static S dispersion(F const& f, S const& density, S const& eta) {
        using corvane::of_one;
        if constexpr (std::is_same_v<std::decay_t<decltype(f.m)>, double>) {
            return density * (f.first * f.dispersion.i1(eta) +
                              f.second * (f.dispersion.c1(eta) * f.dispersion.i2(eta)));
        } else {
            auto integral = [&](double const(&c)[3][7]) {
                auto part = [&](int k) {
                    return of_one(eta, [&](auto const& e) {
                        auto sum = c[k][6] * e + c[k][5];
                        for (int i = 4; i >= 0; --i) sum = sum * e + c[k][i];
                        return sum;
                    });
                };
                const S s = (f.m - 1.0) / f.m;
                return S(part(0) + s * (part(1) + (f.m - 2.0) / f.m * part(2)));
            };
            auto excess = [&](double m) {  // C1 = 1/(1 + m·sphere + (1 − m)·chain)
                return of_one(eta,
                              [&](auto const& e) { return 1.0 / Dispersion<double>(m).c1(e); });
            };
            const S chain = excess(0.0), sphere = excess(1.0);
            return density * (f.first * integral(kDispersionA) +
                              f.second * integral(kDispersionB) / (chain + f.m * (sphere - chain)));
        }
    }
    template <class F, class S>
    static S association(F const& f, S const& density, S const& eta) {
        return association_energy<S>(f.at, f.x, [&](int i, int j) {
            auto const &a = f.at[i], &b = f.at[j];
            const ContactLine contact(2.0 * a.d * b.d / (a.d + b.d) * f.ratio);
            return S(density * f.at(i, j).bond * contact.template g<S>(eta));
        });
    }
};
}  // namespace

CORVANE_EQUATION(PcSaft)
