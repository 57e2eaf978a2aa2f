// Checks of bubble and dew points of binaries that share no code and no rounding with the solver.
#pragma once

#include <corvane/corvane.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace check {

/// μ_i/(RT) = myr + ln rho_i of both components and p/(RT), which the solver computes in double
/// from the model's potentials, by another way:
///
/// cubic equations, in extended precision from the fugacity coefficients as published (Peng &
/// Robinson 1976; Soave 1972) and the parameters of the model (standard alpha, no translation, l_ij
/// = 0); relative error about 1e-18 times the sums, also at traces and tiny densities;
///
/// all others, from the Helmholtz energy alone: differences of rho·Ar in rho_i, sixth order, from
/// the state upwards (a trace has no room below). Truncation and rounding are below 1e-8.
struct Potentials {
    double mu[2], P;
    double error;  ///< bound of that of mu and of that of P/rho
};

inline Potentials cubic(ModelN const& m, Vector<double> const& rho_i, double T) {
    using Real = long double;
    const bool pr = !std::strcmp(m.eos, "PR");
    const Real s2 = std::sqrt(Real(2)), d1 = 1 + (pr ? s2 : 0), d2 = pr ? 1 - s2 : 0;
    Real root[2], b[2], x[2];
    const Real rho = Real(rho_i[0]) + rho_i[1], v = 1 / rho;
    for (int i = 0; i < 2; ++i) {
        Model1 const& c = *m.mdl1[i];
        const Real w = c.param(3), Tr = T / Real(c.param(1));
        const Real slope = !pr ? 0.480L + w * (1.574L - 0.176L * w)
                           : w <= 0.491
                               ? 0.37464L + w * (1.54226L - 0.26992L * w)
                               : 0.379642L + w * (1.48503L + w * (-0.164423L + 0.016666L * w));
        // a/(b·R·Tc) of the critical conditions, from y_c = b·rho_c.
        const Real y =
            pr ? 1 / (1 + std::cbrt(4 - 2 * s2) + std::cbrt(4 + 2 * s2)) : std::cbrt(Real(2)) - 1;
        const Real q = pr ? (8 + 40 * y) / (49 - 37 * y) * (3 + y) / y : 1 / (3 * y * y);
        b[i] = c.param(2);
        root[i] = (1 + slope * (1 - std::sqrt(Tr))) * std::sqrt(q * b[i] / Tr);  // of a/(RT)
        x[i] = rho_i[i] * v;
    }
    const Real a01 = root[0] * root[1] * (1 - Real(m.param(0, 0, 1)));
    const Real a[2] = {x[0] * root[0] * root[0] + x[1] * a01,
                       x[0] * a01 + x[1] * root[1] * root[1]};
    const Real A = x[0] * a[0] + x[1] * a[1], B = x[0] * b[0] + x[1] * b[1];
    const Real P = 1 / (v - B) - A / ((v + d1 * B) * (v + d2 * B)), Z = P * v;
    const Real part = std::log((v + d1 * B) / (v + d2 * B)) / ((d1 - d2) * B);
    Potentials r{{}, static_cast<double>(P), 1e-13};
    for (int i = 0; i < 2; ++i)
        r.mu[i] = static_cast<double>(std::log(x[i]) + b[i] / B * (Z - 1) - std::log(v - B) -
                                      part * (2 * a[i] - A * b[i] / B));
    return r;
}

inline Potentials differences(ModelN const& m, Vector<double> const& rho_i, double T) {
    // f' = Σ c_k·f(k·h)/h, k = 0 … 6
    static constexpr double c[] = {-49.0 / 20, 6,       -15.0 / 2, 20.0 / 3,
                                   -15.0 / 4,  6.0 / 5, -1.0 / 6};
    const double rho = rho_i.sum(), h = 1e-3 * rho;
    auto energy = [&](Vector<double> const& n) {
        return n.sum() * m.Ar(n.sum(), T, n * (1 / n.sum()));
    };
    auto slope = [&](Vector<double> const& step) {
        double sum = 0;
        for (int k = 0; k < 7; ++k) sum += c[k] * energy(rho_i + step * (k * h));
        return sum / h;
    };
    Potentials r{{}, rho - energy(rho_i), 1e-8};
    for (int i = 0; i < 2; ++i) {
        Vector<double> step(2);
        step[i] = 1;
        step[1 - i] = 0;
        const double myr = slope(step);
        r.mu[i] = myr + std::log(rho_i[i]);
        r.P += rho_i[i] * myr;
    }
    return r;
}

inline Potentials potentials(ModelN const& m, Vector<double> const& rho_i, double T) {
    return std::strcmp(m.mth, "vdW1") ? differences(m, rho_i, T) : cubic(m, rho_i, T);
}

inline Vector<double> binary(double x) {
    Vector<double> z(2);
    z[0] = x;
    z[1] = 1 - x;
    return z;
}
inline double mass(ModelN const& m, Vector<double> const& rho_i) {
    return rho_i[0] * m.mdl1[0]->M() + rho_i[1] * m.mdl1[1]->M();
}

struct Trial {
    double tpd, mass;
};
/// Smallest tangent-plane distance to potentials mu over a grid of compositions.
inline Trial distance(ModelN const& m, double p, double T, double const* mu) {
    Trial best{1e9, 0};
    for (int k = -20; k < 220; ++k) {  // dense near both ends
        const double w = k < 0     ? std::pow(10.0, k / 3.0) * 0.005
                         : k > 200 ? 1 - std::pow(10.0, (200 - k) / 3.0) * 0.005
                                   : std::min(0.995, std::max(0.005, k / 200.0));
        double r[2] = {0, 0}, f[2];
        const int roots = m.vcalc(p, T, binary(w), 1, r[0], r[1]);
        for (int i = 0; i < (roots > 1 ? 2 : roots); ++i) {
            const Vector<double> v = binary(w) * r[i];
            m.derivatives()->potentials(v, T, f, nullptr, nullptr);
            double tpd = 0;
            for (int j = 0; j < 2; ++j) tpd += binary(w)[j] * (f[j] + std::log(v[j]) - mu[j]);
            if (tpd < best.tpd) best = {tpd, mass(m, v)};
        }
    }
    return best;
}

/// What is wrong with a result; null if nothing.
inline char const* fault(ModelN const& m, corvane::Saturated kind, double T, double x,
                         corvane::SaturationPoint const& q) {
    const Vector<double> a = q.given.x * q.given.rho, b = q.incipient.x * q.incipient.rho;
    if (std::fabs(q.given.x[0] - x) > 1e-12 || q.T != T) return "other state";
    double mu[2], apart = 0;
    const Potentials pa = potentials(m, a, T), pb = potentials(m, b, T);
    for (int i = 0; i < 2; ++i) {
        mu[i] = m.my(a, T, i);
        if (!(std::fabs(mu[i] - m.my(b, T, i)) <= 1e-9)) return "potentials";
        if (!(std::fabs(pa.mu[i] - pb.mu[i]) <= 1e-9 + 2 * pa.error)) return "other potentials";
        apart = std::max(apart, std::fabs(std::log(a[i] / b[i])));
    }
    for (Vector<double> const* v : {&a, &b}) {
        const double rho = v->sum(), other = (v == &a ? pa : pb).P * R * T;
        // Rounding of the density, and of Z in long sums (multi-fluid: 5e-14 in cold water).
        const double rounding =
            R * T * rho *
            (2e-15 * m.pV(rho, T, *v * (1 / rho)) + (std::strcmp(m.mth, "vdW1") ? 2e-13 : 0.0));
        if (!(std::fabs(m.Z(*v, T) * R * T * rho - q.p) <= 1e-9 * q.p + rounding))
            return "pressure";
        if (!(std::fabs(other - q.p) <= 1e-9 * q.p + rounding + pa.error * R * T * rho))
            return "other pressure";
    }
    if (apart < 1e-4) return "trivial";
    if ((mass(m, b) < mass(m, a)) != (kind == corvane::Saturated::bubble)) return "kind";
    return distance(m, q.p, T, mu).tpd < -1e-7 ? "unstable" : nullptr;
}

/// Does the model have a density at every composition, at T and pressures from 1e-4 to 1000 MPa?
inline bool has_densities(ModelN const& m, double T) {
    for (double p = 1e-4; p < 2000; p *= 10)
        for (int k = 0; k <= 50; ++k) {
            double r[2] = {0, 0};
            if (m.vcalc(p, T, binary(0.001 + 0.998 * k / 50), 1, r[0], r[1]) < 1) return false;
        }
    return true;
}

/// A boundary of the kind asked for that a scan over p finds where the solver says there is none;
/// 0 if there is none. Only such boundaries count as the scan itself resolves: 8 % in p.
inline double overlooked(ModelN const& m, corvane::Saturated kind, double T, double x) {
    bool stable = true;
    double last_mass = 0;
    Trial last{};
    for (double p = 1e-7; p < 1000; p *= 1.08) {
        double r[2] = {0, 0}, mu[2];
        if (m.vcalc(p, T, binary(x), -1, r[0], r[1]) < 1) continue;
        const Vector<double> v = binary(x) * r[0];
        for (int j = 0; j < 2; ++j) mu[j] = m.my(v, T, j);
        const Trial t = distance(m, p, T, mu);
        const bool now = t.tpd > -1e-9;
        if (now != stable) {
            // both phases on the unstable side
            if (((now ? last : t).mass < (now ? last_mass : mass(m, v))) ==
                (kind == corvane::Saturated::bubble))
                return p;
        }
        stable = now;
        last_mass = mass(m, v);
        last = t;
    }
    return 0;
}

}  // namespace check
