// Dipoles and quadrupoles in PC-SAFT: third-order perturbation theory with the Padé approximant
//     a = A2/(1 − A3/A2)
// for each of the interactions dipole-dipole (Gross & Vrabec, AIChE J. 52 (2006) 1194),
// quadrupole-quadrupole (Gross, AIChE J. 51 (2005) 2556) and dipole-quadrupole (Vrabec & Gross, J.
// Phys. Chem. B 112 (2008) 51). At one composition and temperature A2 is rho times a polynomial in
// the packing fraction eta, A3 is rho² times another:
//     A2 = rho/T²·Σ_n (α_n + β_n/T)·eta^n,   A3 = rho²/T³·Σ_n γ_n·eta^n.
// As published, A3 of dipoles with quadrupoles has the sign of A2 where segment numbers are below
// 2, so that the approximant has a pole: at 300 K and liquid densities for hydrogen chloride with
// carbon dioxide.
#pragma once

#include <corvane/plugin/elementary.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace corvane::pcsaft {

/// α_n, β_n (times 1/T; `hotter` times 1/T²), γ_n of one interaction.
struct PolarSeries {
    std::array<double, 5> first{};
    std::array<double, 3> hot{}, hotter{};
    std::array<double, 4> third{};

    /// `pairs` times A2 and `triples` times A3 of another.
    void add(PolarSeries const& other, double pairs, double triples) {
        for (int n = 0; n < 5; ++n) first[n] += pairs * other.first[n];
        for (int n = 0; n < 3; ++n) hot[n] += pairs * other.hot[n];
        for (int n = 0; n < 3; ++n) hotter[n] += pairs * other.hotter[n];
        for (int n = 0; n < 4; ++n) third[n] += triples * other.third[n];
    }
    /// Nobody takes part.
    bool empty() const { return first[0] == 0.0 && first[1] == 0.0; }
};

/// 1 − k_ij = constant + inverse/T.
struct Likeness {
    double constant = 1.0, inverse = 0.0;
};

/// What the interactions take from a molecule; lengths in units that make π/6·NA·σ³ = vs.
struct Moments {
    double sigma = 0, Ts = 0, m = 1;
    double dipole = 0;      // μ²/(m·k) [K·cm³/mol]
    double quadrupole = 0;  // Q²/(m·k) [K·(cm³/mol)^(5/3)]

    Moments() = default;
    /// @param mu, Q  moments, D and D·Å
    Moments(double vs, double epsilon_k, double segments, double mu, double Q)
        : sigma(std::cbrt(vs)), Ts(epsilon_k), m(segments) {
        constexpr double squared = 7242.97051603992;   // D²/k [K·Å³], k = 1.380649e-23 J/K
        constexpr double volume = 0.3153185805923959;  // π/6·NA·Å³ [cm³/mol]
        constexpr double fifth = 0.1460772568862806;   // its power 5/3
        dipole = squared * volume * (mu * mu) / segments;
        quadrupole = squared * fifth * (Q * Q) / segments;
    }
};

enum PolarKind { dipole_dipole, quadrupole_quadrupole, dipole_quadrupole };
inline constexpr int kPolarKinds = 3;

/// Universal constants: rows of powers of eta, columns of the factors 1, (m − 1)/m and
/// (m − 1)/m·(m − 2)/m.
struct PolarConstants {
    double a[5][3], b[3][3], c[4][3];
};
inline constexpr PolarConstants kPolar[kPolarKinds] = {
    {{{0.30435038064, 0.95346405973, -1.16100802773},
      {-0.13585877707, -1.8396383192, 4.5258606732},
      {1.44933285154, 2.0131180118, 0.97512223853},
      {0.35569769252, -7.37249576667, -12.2810377713},
      {-2.06533084541, 8.23741345333, 5.9397574742}},
     {{0.21879385627, -0.58731641193, 3.486957558},
      {-1.18964307357, 1.24891317047, -14.9159739347},
      {1.16268885692, -0.50852797392, 15.37202186}},
     {{-0.06467735252, -0.95208758351, -0.62609792333},
      {0.19758818347, 2.99242575222, 1.29246858189},
      {-0.80875619458, -2.38026356489, 1.654278309},
      {0.69028490492, -0.27012609786, -3.43967436378}}},
    {{{1.237830788, 1.285410878, 1.794295401},
      {2.435503144, -11.46561451, 0.769510293},
      {1.633090469, 22.08689285, 7.264792255},
      {-1.611815241, 7.46913832, 94.48669892},
      {6.977118504, -17.19777208, -77.1484579}},
     {{0.454271755, -0.813734006, 6.868267516},
      {-4.501626435, 10.06402986, -5.173223765},
      {3.585886783, -10.87663092, -17.2402066}},
     {{-0.500043713, 2.000209381, 3.135827145},
      {6.531869153, -6.78386584, 7.247588801},
      {-16.01477983, 20.38324603, 3.075947834},
      {14.42597018, -10.89598394, 0.0}}},
    {{{0.697094963, -0.673459279, 0.67034077},
      {-0.633554144, -1.425899106, -4.338471826},
      {2.945509028, 4.19441392, 7.23416836},
      {-1.467027314, 1.0266216, 0.0},
      {0.0, 0.0, 0.0}},
     {{-0.484038322, 0.67651011, -1.167560146},
      {1.970405465, -3.013867512, 2.13488432},
      {-2.118572671, 0.46742656, 0.0}},
     {{0.795009692, -2.099579397, 0.0},  // c/π²
      {3.386863396, -5.941376392, 0.0},
      {0.475106328, -0.178820384, 0.0},
      {0.0, 0.0, 0.0}}}};
/// Weight of the second quadrupole in the third-order term of dipoles with quadrupoles.
inline constexpr double kTwoQuadrupoles = 1.193735;

/// Factors of the constants for a mean segment number. It counts as 2 at most, but for quadrupoles
/// among themselves: the published set of benzene, m = 2.25, holds without that limit.
inline std::array<double, 3> chain_factors(PolarKind kind, double m) {
    if (kind != quadrupole_quadrupole) m = std::min(m, 2.0);
    return {1.0, (m - 1.0) / m, (m - 1.0) / m * ((m - 2.0) / m)};
}

/// Adds the pair (i, j), `weight` times, to A2. The depth ε_ij of its potential is `like` times the
/// geometric mean: the mixture has one ε_ij, k_ij included, also here.
inline void add_pair(PolarSeries& to, PolarKind kind, Moments const& i, Moments const& j,
                     Likeness like, double weight) {
    const double sigma = 0.5 * (i.sigma + j.sigma), s2 = sigma * sigma, s3 = s2 * sigma;
    // With 6·rho for π times the number density.
    if (kind == dipole_dipole) weight *= -6.0 * (i.dipole * j.dipole) / s3;
    if (kind == quadrupole_quadrupole)
        weight *= -6.0 * 9.0 / 16.0 * (i.quadrupole * j.quadrupole) / (s2 * s2 * s3);
    if (kind == dipole_quadrupole)
        weight *=
            -6.0 * 9.0 / 8.0 * (i.dipole * j.quadrupole + i.quadrupole * j.dipole) / (s2 * s3);
    if (weight == 0.0) return;
    const auto f = chain_factors(kind, std::sqrt(i.m * j.m));
    const double mean = std::sqrt(i.Ts * j.Ts), epsilon = weight * like.constant * mean,
                 more = weight * like.inverse * mean;
    for (int n = 0; n < 5; ++n)
        for (int k = 0; k < 3; ++k) to.first[n] += weight * f[k] * kPolar[kind].a[n][k];
    for (int n = 0; n < 3; ++n)
        for (int k = 0; k < 3; ++k) to.hot[n] += epsilon * f[k] * kPolar[kind].b[n][k];
    for (int n = 0; more != 0.0 && n < 3; ++n)
        for (int k = 0; k < 3; ++k) to.hotter[n] += more * f[k] * kPolar[kind].b[n][k];
}

/// Adds the triple (i, j, l), `weight` times, to A3.
inline void add_triple(PolarSeries& to, PolarKind kind, Moments const& i, Moments const& j,
                       Moments const& l, double weight) {
    const double s = 0.125 * (i.sigma + j.sigma) * (i.sigma + l.sigma) * (j.sigma + l.sigma),
                 s2 = s * s;
    if (kind == dipole_dipole) weight *= -48.0 * (i.dipole * j.dipole * l.dipole) / s;
    if (kind == quadrupole_quadrupole)
        weight *= 48.0 * 27.0 / 64.0 * (i.quadrupole * j.quadrupole * l.quadrupole) / (s2 * s);
    if (kind == dipole_quadrupole) {
        const double di = i.dipole * i.sigma, qi = i.quadrupole / i.sigma;
        const double dj = j.dipole * j.sigma, qj = j.quadrupole / j.sigma;
        const double dl = l.dipole * l.sigma, ql = l.quadrupole / l.sigma;
        const double two_dipoles = di * dj * ql + di * qj * dl + qi * dj * dl;
        const double two_quadrupoles = di * qj * ql + qi * dj * ql + qi * qj * dl;
        weight *= -36.0 / 3.0 * (two_dipoles + kTwoQuadrupoles * two_quadrupoles) / s2;
    }
    if (weight == 0.0) return;
    const auto f = chain_factors(kind, std::cbrt(i.m * j.m * l.m));
    for (int n = 0; n < 4; ++n)
        for (int k = 0; k < 3; ++k) to.third[n] += weight * f[k] * kPolar[kind].c[n][k];
}

/// An interaction at mole fractions x of n kinds of molecules; like(i, j) as add_pair takes it.
template <class Molecules, class Fractions, class Like>
PolarSeries polar_series(PolarKind kind, Molecules const& of, Fractions const& x, int n,
                         Like like) {
    PolarSeries s;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            const double pair = (i == j ? 1.0 : 2.0) * x[i] * x[j];
            add_pair(s, kind, of[i], of[j], like(i, j), pair);
            for (int l = 0; l <= j; ++l)  // 1, 3 or 6 orders of the three
                add_triple(s, kind, of[i], of[j], of[l],
                           (i == l   ? 1.0
                            : j == l ? 1.5
                                     : 3.0) *
                               pair * x[l]);
        }
    return s;
}

/// An interaction along an isotherm: A2 = eta·p(eta), A3 = eta²·q(eta).
template <class T>
struct PolarLine {
    std::array<T, 5> p;
    std::array<T, 4> q;

    PolarLine() = default;
    /// @param packing  eta/rho
    PolarLine(PolarSeries const& s, T const& temperature, T const& packing) {
        const T beta = 1.0 / temperature, two = beta * beta / packing,
                three = two * (beta / packing);
        for (int n = 0; n < 5; ++n)
            p[n] = two * (n < 3 ? s.first[n] + beta * s.hot[n] : T(s.first[n]));
        for (int n = 0; n < 3; ++n)
            if (s.hotter[n] != 0.0) p[n] += two * (beta * beta * s.hotter[n]);
        for (int n = 0; n < 4; ++n) q[n] = three * s.third[n];
    }
    /// a, and its slope in eta; not-a-number past the pole of the approximant.
    template <class S>
    S ar(S const& eta) const {
        const S P = value(p, eta);
        return eta * P * short_of_pole(S(P / (P - eta * value(q, eta))));
    }
    template <class S>
    S slope(S const& eta) const {
        const S P = value(p, eta), Q = value(q, eta), dP = derivative(p, eta);
        const S ratio = short_of_pole(S(P / (P - eta * Q)));
        return ratio * (P + eta * (2.0 * dP - ratio * (dP - Q - eta * derivative(q, eta))));
    }

  private:
    /// 1/(1 − A3/A2), which is positive.
    template <class S>
    static S short_of_pole(S const& ratio) {
        return value_of(ratio) > 0.0 ? ratio : S(std::numeric_limits<double>::quiet_NaN());
    }
    template <std::size_t N, class S>
    static S value(std::array<T, N> const& c, S const& x) {
        S sum = S(c[N - 1]);
        for (std::size_t n = N - 1; n-- > 0;) sum = sum * x + c[n];
        return sum;
    }
    template <std::size_t N, class S>
    static S derivative(std::array<T, N> const& c, S const& x) {
        S sum = S(static_cast<double>(N - 1) * c[N - 1]);
        for (std::size_t n = N - 1; n-- > 1;) sum = sum * x + static_cast<double>(n) * c[n];
        return sum;
    }
};

/// The interactions of one composition along an isotherm.
template <class T>
class PolarLines {
  public:
    /// @param of, x    polar molecules, n of them, and their mole fractions
    /// @param packing  eta/rho
    template <class Molecules, class Fractions, class Like>
    PolarLines(Molecules const& of, int n, Fractions const& x, Like like, T const& temperature,
               T const& packing) {
        for (int kind = 0; kind < kPolarKinds; ++kind) {
            const PolarSeries s = polar_series(static_cast<PolarKind>(kind), of, x, n, like);
            if (!s.empty()) lines_[count_++] = PolarLine<T>(s, temperature, packing);
        }
    }
    /// A^r/(RT) at the packing fraction eta, and its slope.
    template <class S>
    S ar(S const& eta) const {
        S sum = 0.0;
        for (int k = 0; k < count_; ++k) sum += lines_[k].ar(eta);
        return sum;
    }
    template <class S>
    S slope(S const& eta) const {
        S sum = 0.0;
        for (int k = 0; k < count_; ++k) sum += lines_[k].slope(eta);
        return sum;
    }

  private:
    int count_ = 0;
    std::array<PolarLine<T>, kPolarKinds> lines_;
};

}  // namespace corvane::pcsaft
