#include <corvane/core/lanes.h>
#include <plugins/meos/special_terms.h>

#include <cmath>

namespace corvane::meos {

void add_non_analytic(Equation::NonAnalytic const& term, double delta, double tau, int order,
                      bool with_tau, Value& v) {
    const double x = delta - 1.0, s = x * x, y = tau - 1.0;
    const double C = *term.C, D = *term.D;
    const double decay = -C * s - D * (y * y);
    if (decay < -80.0) return;
    const double A = *term.A, B = *term.B, b = *term.b;
    const double q = 1.0 / *term.beta, a2 = 2.0 * *term.a;  // exponents of |x|

    const double ln_x = 0.5 * std::log(s);
    double power[4] = {q * ln_x, a2 * ln_x, decay, 0.0};
    lanes::exp_in_place(power, 4);
    const double u = power[0], w = power[1], psi = power[2];
    const double theta = -y + A * u;
    const double Delta = theta * theta + B * w;
    const bool singular = !(Delta > 0.0);  // the critical point itself: all limits taken as 0
    const double F = singular ? 0.0 : std::exp(b * std::log(Delta));
    const double nF = *term.n * F * psi, weight = nF * delta;
    v.a += weight;
    if (order < 1 && !with_tau) return;

    // x^k·∂^k of u and w; the quotients by x are 0 at x = 0, where u and w vanish faster than x^k.
    const double rx = x == 0.0 ? 0.0 : 1.0 / x;
    const double u1 = q * u * rx, w1 = a2 * w * rx;
    const double D1 = 2.0 * theta * A * u1 + B * w1;
    const double rDelta = singular ? 0.0 : 1.0 / Delta;
    // Logarithmic derivatives of Δ^b·ψ: first f1, second f2, third f3.
    const double r1 = D1 * rDelta;
    const double f1 = b * r1 - 2.0 * C * x;
    // G = δ·E, E = Δ^b ψ: ∂^k G = δ E_k + k E_(k−1), multiplied by δ^k.
    const double E1 = f1;
    v.d1 += weight * (delta * E1 + 1.0);
    double u2 = 0.0, D2 = 0.0;
    if (order >= 2) {
        u2 = (q - 1.0) * u1 * rx;
        const double w2 = (a2 - 1.0) * w1 * rx;
        D2 = 2.0 * A * (A * u1 * u1 + theta * u2) + B * w2;
        const double f2 = b * (D2 * rDelta - r1 * r1) - 2.0 * C;
        const double E2 = f2 + f1 * f1;
        v.d2 += weight * delta * (delta * E2 + 2.0 * E1);
        if (order >= 3) {
            const double u3 = (q - 2.0) * u2 * rx, w3 = (a2 - 2.0) * w2 * rx;
            const double D3 = 2.0 * A * (3.0 * A * u1 * u2 + theta * u3) + B * w3;
            const double f3 = b * (D3 * rDelta - 3.0 * D2 * rDelta * r1 + 2.0 * r1 * r1 * r1);
            const double E3 = f3 + 3.0 * f1 * f2 + f1 * f1 * f1;
            v.d3 += weight * delta * delta * (delta * E3 + 3.0 * E2);
        }
    }
    if (!with_tau) return;
    if (singular) {  // ∂²/∂τ² ~ |1−τ|^(2b−2)
        if (b < 1.0 && *term.n != 0.0) v.t2 += *term.n * INFINITY;
        return;
    }
    const double rt = -2.0 * theta * rDelta;  // Δ_τ/Δ
    const double g1 = b * rt - 2.0 * D * y;
    const double g2 = b * (2.0 * rDelta - rt * rt) - 2.0 * D;
    v.t1 += weight * tau * g1;
    v.t2 += weight * tau * tau * (g2 + g1 * g1);
    const double mixed = b * (-2.0 * A * u1 * rDelta - r1 * rt);
    v.dt += weight * tau * (delta * (mixed + f1 * g1) + g1);
}

void add_association(Equation::Association const& term, double delta, double tau, int order,
                     bool with_tau, Value& v) {
    const double vbar = *term.vbarn, eta = vbar * delta, r = 1.0 / (1.0 - eta), r3 = r * r * r;
    const double strength = *term.kappabar * std::expm1(*term.epsilonbar * tau);
    const double factor = *term.a * *term.m;
    // g and its derivatives times δ^k.
    const double g0 = 0.5 * (2.0 - eta) * r3;
    const double g1 = eta * 0.5 * (5.0 - 2.0 * eta) * r3 * r;
    const double g2 = eta * eta * 3.0 * (3.0 - eta) * r3 * r * r;
    const double g3 = eta * eta * eta * 6.0 * (7.0 - 2.0 * eta) * r3 * r3;
    // z = Δδ; z_k = δ^k ∂^k z.
    const double scale = strength * delta;
    const double z = scale * g0, z1 = scale * (g0 + g1);
    const double X = 2.0 / (1.0 + std::sqrt(1.0 + 4.0 * z));
    // φ(z) = ln X − X/2 + 1/2 = −ln(1 + zX) + zX²/2, whose derivative is −X²/2.
    const double p1 = -0.5 * X * X;
    v.a += factor * (-std::log1p(z * X) + 0.5 * z * X * X);
    v.d1 += factor * p1 * z1;
    if (order < 2 && !with_tau) return;
    const double rX = 1.0 / (2.0 - X), X3 = X * X * X;
    const double p2 = X3 * X * rX;
    const double z2 = scale * (2.0 * g1 + g2);
    v.d2 += factor * (p2 * z1 * z1 + p1 * z2);
    if (order >= 3) {
        const double p3 = -X3 * X3 * rX * rX * (4.0 + X * rX);
        const double z3 = scale * (3.0 * g2 + g3);
        v.d3 += factor * (p3 * z1 * z1 * z1 + 3.0 * p2 * z1 * z2 + p1 * z3);
    }
    if (!with_tau) return;
    // τ·∂ and τ²·∂² of z, and δτ·∂².
    const double growth =
        *term.kappabar * std::exp(*term.epsilonbar * tau) * *term.epsilonbar * tau;
    const double zt = growth * delta * g0, ztt = zt * *term.epsilonbar * tau;
    const double zdt = growth * delta * (g0 + g1);
    v.t1 += factor * p1 * zt;
    v.t2 += factor * (p2 * zt * zt + p1 * ztt);
    v.dt += factor * (p2 * z1 * zt + p1 * zdt);
}

}  // namespace corvane::meos
