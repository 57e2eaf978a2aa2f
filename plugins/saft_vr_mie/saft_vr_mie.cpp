// SAFT-VR Mie: chains of segments with Mie potentials of variable range, T. Lafitte, A.
// Apostolakou, C. Avendaño, A. Galindo, C. S. Adjiman, E. A. Müller, G. Jackson, J. Chem. Phys. 139
// (2013) 154504. Numbers in brackets are those of its equations. See README.md.
//
// Lengths are in units that make π/6·NA one: a diameter cubed is a volume in cm³/mol. What the
// article takes from sums of nearly equal terms at low density is written without the terms that
// cancel, so that A^r is relatively accurate there.
#include <corvane/plugin/equation.h>
#include <corvane/plugin/small_array.h>
#include <plugins/common/pcsaft/cross_association.h>
#include <plugins/common/pcsaft/density.h>
#include <plugins/saft_vr_mie/constants.h>

#include <cmath>
#include <numbers>

namespace {
using corvane::above_zero;

/// (1 − η/2)/(1 − η)³ − 1, and η times its slope, for packing fractions of which `slope` is the
/// logarithmic one; from 1/(1 − η).
template <class S>
S carnahan(S const& eta, S const& r) {
    return eta * (2.5 + eta * (eta - 3.0)) * (r * r * r);
}
template <class S>
S carnahan_slope(S const& eta, S const& slope, S const& r) {
    const S r2 = r * r;
    return slope * (2.5 - eta) * (r2 * r2);
}

/// A power λ of the distance: its sums a1S + B over 2π·rho·ε·d³, of (26), (33) to (35).
template <class T>
struct Power {
    double inverse = 0.0;  // 1/(λ − 3)
    double c[4] = {};      // of the effective packing
    T w = 0.0;             // x0^λ
    T zero = 0.0, I = 0.0, J = 0.0;

    Power() = default;
    Power(double lambda, T const& x0) : inverse(1.0 / (lambda - 3.0)) {
        using std::pow;
        for (int i = 0; i < 4; ++i)
            for (int k = 3; k >= 0; --k) c[i] = c[i] / lambda + corvane::mie::A[i][k];
        w = pow(x0, lambda);
        const T cube = x0 * x0 * x0 / w;
        zero = -inverse * cube;
        I = -inverse * (cube - 1.0);
        J = -inverse / (lambda - 4.0) * (x0 * cube * (lambda - 3.0) - cube * (lambda - 4.0) - 1.0);
    }
};
/// w times what such a sum has beyond its value at zero density, and ζ times its slope.
template <class S>
struct Sum {
    S more, slope;
};

struct SaftVrMie {
    static constexpr char const *name = "SAFTVRMIE", *mixing = "LB";
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 16.0},
        {.label = "Ts", .unit = "K", .value = 150.0, .low = above_zero, .adjustable = true},
        {.label = "vs", .unit = "cm3/mol", .value = 16.0, .low = above_zero, .adjustable = true},
        {.label = "m", .value = 1.0, .low = 1.0, .adjustable = true},
        {.label = "lambdaR", .value = 12.0, .low = 4.5, .adjustable = true},
        {.label = "lambdaA", .value = 6.0, .low = 3.1, .adjustable = true},
        {.label = "epsAB", .unit = "K", .adjustable = true, .optional = true},
        {.label = "KAB", .unit = "A3", .low = 0.0, .adjustable = true, .optional = true},
        {.label = "rc", .low = 0.0, .adjustable = true, .optional = true},
        {.label = "donors", .low = 0.0, .optional = true},
        {.label = "acceptors", .low = 0.0, .optional = true}};
    static constexpr corvane::Parameter pair_parameters[] = {
        {.label = "kij"},
        {.label = "lambdaR", .low = 0.0, .optional = true},
        {.label = "epsAB", .unit = "K", .optional = true},
        {.label = "KAB", .unit = "A3", .low = 0.0, .optional = true}};
    enum { M, Ts, vs, m, lambdaR, lambdaA, epsAB, KAB, rc, donors, acceptors };

    template <class T>
    struct Component {
        double Ts, m, sigma, lambda_r, lambda_a, epsilon, K, donors, acceptors;
        bool hard;  // bonds by the contact value of hard spheres, K from rc
        T d, K_rc;  // diameter; K of such bonds, cm³/mol
    };
    template <class T>
    Component<T> component(T const& temperature, double const* p) const {
        const double sigma = std::cbrt(p[vs]);
        const T delta = diameter(T(p[Ts] / temperature), p[lambdaR], p[lambdaA]);
        const bool hard = p[rc] > 0.0;
        return {p[Ts],
                p[m],
                sigma,
                p[lambdaR],
                p[lambdaA],
                p[epsAB],
                p[KAB],
                p[donors],
                p[acceptors],
                hard,
                sigma * delta,
                hard ? (6.0 / std::numbers::pi * p[vs]) * bonding_volume(delta, p[rc]) : T(0.0)};
    }
    template <class T>
    struct Pair {
        T theta, x0, d3;  // ε/kT, σ/d, diameter cubed
        double C, lambda_a, lambda_r, sigma3, f[6];
        Power<T> a, r, aa, ar, rr;
        T gamma_theta;  // φ70·(1 − tanh …)·(exp(ε/kT) − 1)
        T bond[11];  // Δ over the density: coefficients of (rho·σ³)^p, or of the contact value
        bool hard;
        /// Of the second order at zero density.
        T second_zero() const { return aa.w * aa.zero - 2.0 * (ar.w * ar.zero) + rr.w * rr.zero; }
    };
    template <class T>
    Pair<T> pair(T const& temperature, Component<T> const& i, Component<T> const& j,
                 double const* given) const {
        using std::expm1;
        const double sigma = 0.5 * (i.sigma + j.sigma), sigma3 = sigma * sigma * sigma;
        const auto combined = [](double x, double y) {
            return 3.0 + std::sqrt((x - 3.0) * (y - 3.0));
        };
        const double lr = given[1] > 0.0 ? given[1] : combined(i.lambda_r, j.lambda_r);
        const double la = combined(i.lambda_a, j.lambda_a);
        const double eps =
            (1.0 - given[0]) * std::sqrt(i.Ts * j.Ts) * std::pow(i.sigma * j.sigma, 1.5) / sigma3;
        Pair<T> of;
        of.theta = eps / temperature;
        const T d = 0.5 * (i.d + j.d), x0 = sigma / d;
        of.x0 = x0;
        of.d3 = d * d * d;
        of.lambda_a = la;
        of.lambda_r = lr;
        of.C = prefactor(lr, la);
        of.sigma3 = sigma3;
        const double alpha = of.C * (1.0 / (la - 3.0) - 1.0 / (lr - 3.0));
        for (int k = 0; k < 6; ++k) {
            auto const& phi = corvane::mie::phi;
            of.f[k] = (phi[0][k] + alpha * (phi[1][k] + alpha * (phi[2][k] + alpha * phi[3][k]))) /
                      (1.0 + alpha * (phi[4][k] + alpha * (phi[5][k] + alpha * phi[6][k])));
        }
        of.a = Power<T>(la, x0);
        of.r = Power<T>(lr, x0);
        of.aa = Power<T>(2.0 * la, x0);
        of.ar = Power<T>(la + lr, x0);
        of.rr = Power<T>(2.0 * lr, x0);
        auto const& p7 = corvane::mie::phi_7;
        of.gamma_theta = p7[0] * (1.0 - std::tanh(p7[1] * (p7[2] - alpha))) * expm1(of.theta);
        bonds(of, temperature, i, j, eps, given);
        return of;
    }

    template <class At, class X, class V, class N>
    struct Fluid {
        At at;
        corvane::Fractions<X> x;
        N m;
        V z1, z2, z3, packing;  // per density; packing is ζ_x
        N sigma3;               // the same with σ
    };
    template <class At, class X>
    auto mix(At const& at, corvane::Fractions<X> const& x) const {
        const auto segments = x.sum([&](int i) { return at[i].m; });
        const auto z1 = x.sum([&](int i) { return at[i].m * at[i].d; });
        const auto z2 = x.sum([&](int i) { return at[i].m * at[i].d * at[i].d; });
        const auto z3 = x.sum([&](int i) { return at[i].m * at[i].d * at[i].d * at[i].d; });
        const auto d3 = x.sum2([&](int i, int j) { return at[i].m * at[j].m * at(i, j).d3; });
        const auto s3 = x.sum2([&](int i, int j) { return at[i].m * at[j].m * at(i, j).sigma3; });
        using V = std::remove_const_t<decltype(z3)>;
        using N = std::remove_const_t<decltype(segments)>;
        return Fluid<At, X, V, N>{at, x, segments, z1, z2, z3, d3 / segments, s3 / segments};
    }
    template <class F, class S>
    S alphar(F const& f, S const& density) const {
        using Axis = corvane::Line<S>;
        const Axis zeta(S(f.packing * density)), bar(S(f.sigma3 * density));
        const State<typename Axis::Number> s(zeta.variable());
        const Bar<S> b(bar);
        const S each = 1.0 / S(f.m) * b.bar;
        const int n = f.x.size();
        corvane::SmallArray<S, 10> pairs(n * (n + 1) / 2);
        corvane::SmallArray<S> chains(n);
        for (int i = 0, at = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j, ++at) {
                auto const& p = f.at(i, j);
                const auto sums = s.sums(p, i == j && f.at[i].m != 1.0);
                pairs[at] =
                    (f.at[i].m * f.at[j].m) * attraction(density, each, zeta, s, b, p, sums);
                if (i == j)
                    chains[i] = f.at[i].m == 1.0 ? S(0.0)
                                                 : (f.at[i].m - 1.0) * contact(zeta, s, b, p, sums);
            }
        S a = spheres(f, density);
        a += f.x.sum([&](int i) -> S {
            return f.x.sum([&](int j) -> S {
                return pairs[i > j ? i * (i + 1) / 2 + j : j * (j + 1) / 2 + i];
            }) - chains[i];
        });
        return a + association(f, density, zeta, s, b);
    }
    template <class F>
    corvane::DensityRange range(F const& f) const {
        const double packing = f.packing;
        return {.top = corvane::pcsaft::kClosePacking / packing,
                .loop = 0.13 / packing,
                .liquid = 0.4 / packing,
                .clear = 0.55 / packing};
    }

  private:
    static double prefactor(double lr, double la) {
        return lr / (lr - la) * std::pow(lr / la, la / (lr - la));
    }
    /// d/σ of (7), in two panels from where the Boltzmann factor is exp(−36) on. That point is
    /// found by Newton's method in ln(σ/r), from below, where it is monotonic: the equation is
    /// concave there.
    template <class T>
    static T diameter(T const& theta, double lr, double la) {
        using std::exp;
        const double C = prefactor(lr, la), rise = 36.0 / (C * corvane::value_of(theta));
        double s = std::log1p(rise) / lr;
        for (int k = 0; k < 10; ++k) {
            const double rest = -std::expm1((la - lr) * s);
            s -=
                (lr * s + std::log(rest) - std::log(rise)) / (lr + (lr - la) * (1.0 - rest) / rest);
        }
        const double low = std::exp(-s), half = 0.25 * (1.0 - low);
        T sum = 0.0;
        for (double middle : {low + half, 1.0 - half})
            for (auto const& [node, weight] : corvane::mie::gauss)
                for (double x : {middle - half * node, middle + half * node})
                    sum += weight * exp(T(-C * (std::pow(x, -lr) - std::pow(x, -la)) * theta));
        return 1.0 - half * sum;
    }
    /// K over σ³ for sites at 0.4·σ with the range rc·σ.
    template <class T>
    static T bonding_volume(T const& d, double rc) {
        using std::log;
        constexpr double rd = 0.4;
        const double rc2 = rc * rc, rd2 = rd * rd;
        return 4.0 * std::numbers::pi / (72.0 * rd2) * d * d *
               (log(T((rc + 2.0 * rd) / d)) * (6.0 * rc2 * rc + 18.0 * rc2 * rd - 24.0 * rd2 * rd) +
                (rc + 2.0 * rd - d) *
                    (22.0 * rd2 - 5.0 * rc * rd - 8.0 * rc2 + (rc - 7.0 * rd) * d + d * d));
    }
    template <class T>
    static void bonds(Pair<T>& of, T const& temperature, Component<T> const& i,
                      Component<T> const& j, double eps, double const* given) {
        using std::cbrt;
        using std::expm1;
        for (T& b : of.bond) b = T(0.0);
        of.hard = i.hard || j.hard;
        if (!(i.donors * j.acceptors + i.acceptors * j.donors > 0.0)) return;
        const double epsilon = given[2] != 0.0 ? given[2] : std::sqrt(i.epsilon * j.epsilon);
        const T strength = expm1(T(epsilon / temperature));
        if (of.hard) {
            if (!i.hard || !j.hard) return;  // no rule combines the two kinds
            const T mean = 0.5 * (cbrt(i.K_rc) + cbrt(j.K_rc));
            of.bond[0] = strength * mean * mean * mean;
            return;
        }
        const double mean = 0.5 * (std::cbrt(i.K) + std::cbrt(j.K));
        const double K = 0.602214129 * (given[3] > 0.0 ? given[3] : mean * mean * mean);
        T t = temperature / eps;
        if (corvane::value_of(t) < 0.4) t = T(0.4);  // beyond the fit of the kernel
        if (corvane::value_of(t) > 10.0) t = T(10.0);
        for (int p = 0; p <= 10; ++p) {
            T sum = 0.0;
            for (int q = 10 - p; q >= 0; --q) sum = sum * t + corvane::mie::kernel[p][q];
            of.bond[p] = K * strength * sum;
        }
    }

    /// The five sums of a pair; of the second order those that occur together.
    template <class U>
    struct Five {
        Sum<U> a, r, aa, ar, rr;
    };
    /// Functions of the packing alone.
    template <class U>
    struct State {
        U zeta;                       // ζ_x with diameters
        U free, F, dF, H, dH, K, dK;  // 1 − ζ; dF … are ζ times slopes; F without its 1
        explicit State(U const& z) : zeta(z), free(1.0 - z) {
            const U free2 = free * free, free4 = free2 * free2, r = 1.0 / free, r3 = r * r * r;
            F = carnahan(z, r);
            dF = carnahan_slope(z, z, r);
            H = 4.5 * z * (1.0 + z) * r3;
            dH = 4.5 * z * (1.0 + z * (4.0 + z)) * (r3 * r);
            const U D = 1.0 + z * (4.0 + z * (4.0 + z * (z - 4.0)));
            K = free4 / D;
            dK = K * z * (-4.0 / free - (4.0 + z * (8.0 + z * (4.0 * z - 12.0))) / D);
        }
        template <class T>
        [[gnu::noinline]] Sum<U> sum(Power<T> const& p, bool slopes) const {  // five times a pair
            const U eff = zeta * (p.c[0] + zeta * (p.c[1] + zeta * (p.c[2] + zeta * p.c[3])));
            const U inverse = 1.0 / (1.0 - eff);
            Sum<U> r{p.w * (F * p.I - H * p.J - p.inverse * carnahan(eff, inverse)), U(0.0)};
            if (!slopes) return r;
            const U slope =
                zeta *
                (p.c[0] + zeta * (2.0 * p.c[1] + zeta * (3.0 * p.c[2] + zeta * (4.0 * p.c[3]))));
            r.slope = p.w * (dF * p.I - dH * p.J - p.inverse * carnahan_slope(eff, slope, inverse));
            return r;
        }
        template <class P>
        Five<U> sums(P const& p, bool slopes) const {
            return {sum(p.a, slopes), sum(p.r, slopes), sum(p.aa, slopes), sum(p.ar, slopes),
                    sum(p.rr, slopes)};
        }
    };
    /// The packing with σ, as the line of functions of it alone and as a number.
    template <class S>
    struct Bar {
        using U = typename corvane::Line<S>::Number;
        corvane::Line<S> line;
        U one;
        S bar, bar5, bar8;
        explicit Bar(corvane::Line<S> const& l) : line(l), one(l.variable()), bar(l.at()) {
            const S bar2 = bar * bar;
            bar5 = bar2 * bar2 * bar;
            bar8 = bar5 * bar2 * bar;
        }
    };
    /// Hard spheres of (13), times the number of segments.
    template <class F, class S>
    static S spheres(F const& f, S const& density) {
        using std::log1p;
        const S zeta3 = f.z3 * density, inverse = 1.0 / (1.0 - zeta3);
        const auto ratio = f.z2 / f.z3;
        const auto unequal = f.z2 * ratio * ratio;
        return (unequal - f.m) * log1p(-zeta3) +
               zeta3 * inverse * (3.0 * f.z1 * ratio + unequal * inverse);
    }
    /// First to third order of the attraction of a pair over m_i·m_j, (14) to (43). each: the
    /// packing with σ over the number of segments.
    template <class S, class U, class P>
    static S attraction(S const& density, S const& each, corvane::Line<S> const& zeta,
                        State<U> const& s, Bar<S> const& b, P const& p, Five<U> const& of) {
        using std::exp;
        const auto first = 12.0 * p.C * p.theta * p.d3;
        const U one = first * (p.a.w * p.a.zero - p.r.w * p.r.zero + (of.a.more - of.r.more));
        const U two = 0.5 * p.C * first * p.theta *
                      (s.K * (p.second_zero() + (of.aa.more - 2.0 * of.ar.more + of.rr.more)));
        const S chi = p.f[0] * b.bar + p.f[1] * b.bar5 + p.f[2] * b.bar8;
        const auto third = p.theta * p.theta * p.theta * p.f[3];
        return density * (zeta.lift(U(one + two)) + chi * zeta.lift(two)) -
               each * b.line.lift(U(third * exp(U(b.one * (p.f[4] + p.f[5] * b.one)))));
    }
    /// ln of the contact value of segments in a chain, (47) to (64).
    template <class S, class U, class P>
    static S contact(corvane::Line<S> const& zeta, State<U> const& s, Bar<S> const& b, P const& p,
                     Five<U> const& of) {
        using std::exp;
        using std::log1p;
        const U &z = s.zeta, free3 = s.free * s.free * s.free;
        const U k0 = z * (42.0 + z * (-39.0 + z * (9.0 - 2.0 * z))) / (6.0 * free3) - log1p(U(-z));
        const U k1 = z * (z * (z * z + 6.0) - 12.0) / (2.0 * free3);
        const U k2 = -0.375 * z * z / (s.free * s.free);
        const U k3 = z * (3.0 + z * (3.0 - z * z)) / (6.0 * free3);
        const U hard = k0 + p.x0 * (k1 + p.x0 * (k2 + p.x0 * k3));
        // Both corrections vanish at zero density; what is left of their sums there cancels.
        const U first = p.C * ((3.0 - p.lambda_a) * of.a.more + 3.0 * of.a.slope -
                               (3.0 - p.lambda_r) * of.r.more - 3.0 * of.r.slope);
        const U second = p.C * p.C *
                         (1.5 * ((s.K + s.dK) * (of.aa.more - 2.0 * of.ar.more + of.rr.more) +
                                 s.dK * p.second_zero() +
                                 s.K * (of.aa.slope - 2.0 * of.ar.slope + of.rr.slope)) +
                          s.K * ((p.lambda_a + p.lambda_r) * of.ar.more - p.lambda_r * of.rr.more -
                                 p.lambda_a * of.aa.more));
        const U less = p.theta * exp(U(-hard)), two = p.theta * less * second;
        const U gamma = p.gamma_theta * b.one *
                        exp(U(b.one * (corvane::mie::phi_7[3] + corvane::mie::phi_7[4] * b.one)));
        return zeta.lift(U(hard + less * first + two)) + b.line.lift(gamma) * zeta.lift(two);
    }
    template <class F, class S, class U>
    static S association(F const& f, S const& density, corvane::Line<S> const& zeta,
                         State<U> const& s, Bar<S> const& b) {
        const U rho3 = 6.0 / std::numbers::pi * b.one, g = 1.0 + s.F;
        return corvane::pcsaft::association_energy<S>(f.at, f.x, [&](int i, int j) {
            auto const& pair = f.at(i, j);
            if (pair.hard) return S(density * zeta.lift(U(g * pair.bond[0])));
            U sum = U(pair.bond[10]);
            for (int p = 9; p >= 0; --p) sum = sum * rho3 + pair.bond[p];
            return S(density * b.line.lift(sum));
        });
    }
};
}  // namespace

CORVANE_EQUATION(SaftVrMie)
