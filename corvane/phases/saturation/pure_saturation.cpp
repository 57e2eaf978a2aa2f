#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/pure_saturation_solver.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {

constexpr double kNear = 5e-3;     // 1 − T/Tc below which the critical form is solved
constexpr double kLowest = 0.199;  // of Tc: below any triple point
constexpr double kSplit = 0.03;    // 1 − T/Tc up to which it is more accurate, from a start
constexpr double kWide = 0.03;     // 1 − T/Tc from which the critical point of the file will do
constexpr double kLeast = 1e-24;   // MPa: a thousand molecules in a cubic metre
constexpr double kInner = 1e-5;    // 1 − T/Tc above which a pair is looked for in vcalc
constexpr double kEps = 64.0 * std::numeric_limits<double>::epsilon();  // of sums of many terms
constexpr double kApart = Certificate::apart_limit;
constexpr int kSteps = 60;
constexpr int kQuick = 12;  // from a start that may not be near
constexpr char const* kNotNear = "Newton's method next to the critical point did not converge";

/// Abscissae and weights of Gauss's quadrature on (−1, 1), the positive half (Abramowitz & Stegun
/// 1964, table 25.4).
struct Node {
    double s, w;
};
constexpr Node kGauss8[] = {{0.1834346424956498, 0.36268378337836198},
                            {0.52553240991632899, 0.31370664587788729},
                            {0.79666647741362674, 0.22238103445337447},
                            {0.96028985649753623, 0.10122853629037626}};
constexpr Node kGauss16[] = {
    {0.09501250983763744, 0.1894506104550685},   {0.28160355077925891, 0.18260341504492359},
    {0.45801677765722739, 0.16915651939500254},  {0.61787624440264375, 0.14959598881657673},
    {0.75540440835500303, 0.12462897125553387},  {0.86563120238783174, 0.095158511682492785},
    {0.94457502307323258, 0.062253523938647893}, {0.98940093499164993, 0.027152459411754095}};

}  // namespace

PureSaturationSolver::PureSaturationSolver(Model1 const& model, Fixed held)
    : model_(model), held_(held) {
    if (!(held.value > 0.0) || !std::isfinite(held.value)) throw ThException(th_out_of_range);
    if (!(model.Tcrit() > 0.0) || !(model.vcrit() > 0.0)) throw ThException(th_out_of_range);
}

void PureSaturationSolver::fail(EquilibriumFailure::Kind kind, char const* advice) const {
    throw EquilibriumFailure(kind, T_or_p(held_),
                             held_.at_T ? "pure_saturation_T" : "pure_saturation_p", iterations_,
                             std::nan(""), advice);
}

IsothermState PureSaturationSolver::state(double rho, double T) const {
    IsothermState s;
    s.rho = rho;
    double d[4];
    Deriv1 const* exact = model_.derivatives();
    if (exact && exact->deriv(rho, T, 3, 0, d)) {
        s.Ar = d[0];
        s.Z = 1.0 + d[1];
        s.S = 1.0 + 2.0 * d[1] + d[2];
        s.C = 2.0 * d[1] + 4.0 * d[2] + d[3];
        s.m_noise = kEps * (1.0 + std::fabs(d[0]) + std::fabs(d[1]));
        s.S_noise = kEps * (1.0 + std::fabs(2.0 * d[1]) + std::fabs(d[2]));
        s.C_noise = kEps * (std::fabs(2.0 * d[1]) + std::fabs(4.0 * d[2]) + std::fabs(d[3]));
        return s;
    }
    const Vector<double> r = model_.crit(T, rho, 0.0);
    s.Ar = model_.Ar(rho, T);
    s.Z = r[0];
    s.S = r[1];
    s.C = r[2] * rho;
    s.m_noise = kEps * (1.0 + std::fabs(s.Ar) + std::fabs(s.Z));
    s.S_noise = 1e-9 * (1.0 + std::fabs(s.Z) + std::fabs(s.S));  // of numerical derivatives
    s.C_noise = 1e-6 * (1.0 + std::fabs(s.Z) + std::fabs(s.C));
    return s;
}

template <class Nodes>
PureSaturationSolver::Conditions PureSaturationSolver::integrals(double u, double d, double T,
                                                                 Nodes const& nodes) const {
    Conditions sum{{0.0, 0.0}, {0.0, 0.0}, {}, {}};
    for (Node const& node : nodes)
        for (double s : {-node.s, node.s}) {
            const double r = 1.0 + s * d;
            const IsothermState at = state(u * r, T);
            const double w = 0.5 * node.w, w2 = 0.5 * node.w * (1.0 - s * s) / (r * r);
            sum.potentials.value += w * at.S / r;
            sum.potentials.error += w * at.S_noise / r;
            sum.pressures.value += w2 * (at.C - at.S);
            sum.pressures.error += w2 * (at.C_noise + at.S_noise);
        }
    return sum;
}

PureSaturationSolver::Conditions PureSaturationSolver::conditions(double u, double q,
                                                                  double T) const {
    const double d = std::sqrt(q);
    Conditions best = integrals(u, d, T, kGauss16);
    const Conditions coarse = integrals(u, d, T, kGauss8);
    best.potentials.error += std::fabs(best.potentials.value - coarse.potentials.value);
    best.pressures.error += std::fabs(best.pressures.value - coarse.pressures.value);
    const IsothermState L = state(u * (1.0 + d), T), V = state(u * (1.0 - d), T);
    const double m_noise = L.m_noise + V.m_noise + 2.0 * kEps * d;
    const double m = (L.Ar - V.Ar + L.Z - V.Z + 2.0 * std::atanh(d)) / (2.0 * d);
    const double P = (1.0 + d) * L.Z - (1.0 - d) * V.Z;  // (P_L − P_V)/u
    return {better(best.potentials, {m, m_noise / (2.0 * d)}),
            better(best.pressures, {(P / d - 2.0 * m) / q, 2.0 * m_noise / (d * q)}), L, V};
}

void PureSaturationSolver::critical(bool exact) {
    Tc_ = model_.Tcrit();
    rho_c_ = 1.0 / model_.vcrit();
    pc_ = model_.pcrit();
    if (!exact) return;
    double T = Tc_, rho = rho_c_, last = std::numeric_limits<double>::infinity();
    bool met = false;
    for (int k = 0; k < 20; ++k) {  // S = C = 0 in ln rho, ln T; ∂S/∂ln rho = C
        const double h = 1e-5;
        const IsothermState s = state(rho, T), up = state(rho * (1.0 + h), T),
                            down = state(rho * (1.0 - h), T), hot = state(rho, T * (1.0 + h)),
                            cold = state(rho, T * (1.0 - h));
        const double C_rho = (up.C - down.C) / (2 * h), S_T = (hot.S - cold.S) / (2 * h),
                     C_T = (hot.C - cold.C) / (2 * h), det = s.C * C_T - S_T * C_rho;
        const double x = (-s.S * C_T + S_T * s.C) / det, y = (-s.C * s.C + s.S * C_rho) / det;
        const double size = std::fabs(x) + std::fabs(y);
        if (!std::isfinite(size) || size > 0.1) break;
        if (size < 1e-5 && size >= 0.5 * last) {
            met = true;
            break;
        }
        last = size;
        rho *= 1.0 + x;
        T *= 1.0 + y;
    }
    if (met && std::fabs(T / Tc_ - 1.0) < 1e-3 && std::fabs(rho / rho_c_ - 1.0) < 0.05) {
        Tc_ = T;
        rho_c_ = rho;
    }
    pc_ = R * Tc_ * state(rho_c_, Tc_).P();
}

/// From S at both ends; where that would cancel, or is not exact, from differences. With F for
/// potentials, G for pressures and d = √q,
///
///     ∂F/∂ln u = (S_L − S_V)/(2d),        ∂F/∂d = [S_L/(1 + d) + S_V/(1 − d)]/(2d) − F/d,
///     ∂G/∂ln u = (S_L + S_V − 2F)/q − G,  ∂G/∂d = [S_L/(1 + d) − S_V/(1 − d)]/q − 3·G/d.
PureSaturationSolver::Jacobian PureSaturationSolver::jacobian(Conditions const& at, double u,
                                                              double q, double T) const {
    const double F = at.potentials.value, G = at.pressures.value, L = at.L.S, V = at.V.S;
    if (model_.derivatives() && q > 1e-6) {
        const double d = std::sqrt(q), l = L / (1.0 + d), v = V / (1.0 - d);
        return {(L - V) / (2.0 * d), ((l + v) / (2.0 * d) - F / d) / (2.0 * d),
                (L + V - 2.0 * F) / q - G, ((l - v) / q - 3.0 * G / d) / (2.0 * d)};
    }
    const double hu = 1e-4 * std::sqrt(q), hq = 1e-3 * q;
    const Conditions on_u = conditions(u * (1.0 + hu), q, T), on_q = conditions(u, q + hq, T);
    return {(on_u.potentials.value - F) / hu, (on_q.potentials.value - F) / hq,
            (on_u.pressures.value - G) / hu, (on_q.pressures.value - G) / hq};
}

/// After the last step, which is within the bounds or as small as steps become.
PureSaturation PureSaturationSolver::near_result(double T, double u, double q, Conditions const& at,
                                                 Bounded const& u_step,
                                                 Bounded const& q_step) const {
    const double apart = 0.5 * (q_step.error + std::fabs(q_step.value)) / q;
    if (apart > kApart) gave_up("too near the critical point for double precision");
    if (!(at.L.S > -at.L.S_noise) || !(at.V.S > -at.V.S_noise)) gave_up(kNotNear);
    const double d = std::sqrt(q + q_step.value);
    u *= 1.0 + u_step.value;
    const IsothermState L = state(u * (1.0 + d), T), V = state(u * (1.0 - d), T);
    const double rho_error = u_step.error + std::fabs(u_step.value) + d * apart / (1.0 - d);
    // At equilibrium p does not change with the densities to first order but by S.
    const double p_error =
        kEps + L.m_noise / L.Z + (L.m_noise + std::fabs(L.S) + std::fabs(V.S)) * rho_error / L.Z;
    return {T, R * T * 0.5 * (L.P() + V.P()), L.rho, V.rho, p_error, rho_error, apart};
}

PureSaturation PureSaturationSolver::near(double T, double u, double q) {
    double last = 1e300;
    for (int k = 0; k < kSteps; ++k) {
        ++iterations_;
        const Conditions at = conditions(u, q, T);
        const auto [a, b, c, e] = jacobian(at, u, q, T);
        const double det = a * e - b * c, f = at.potentials.value, g = at.pressures.value;
        const double du = -(e * f - b * g) / det, dq = -(a * g - c * f) / det;
        if (!std::isfinite(du) || !std::isfinite(dq)) break;
        const double f_error = at.potentials.error, g_error = at.pressures.error;
        const double u_error = (std::fabs(e * f_error) + std::fabs(b * g_error)) / std::fabs(det),
                     q_error = (std::fabs(a * g_error) + std::fabs(c * f_error)) / std::fabs(det);
        const double size = std::fabs(du) + std::fabs(dq) / q;
        const bool settled = std::fabs(du) <= u_error && std::fabs(dq) <= q_error;
        if (settled || (size < 1e-3 && size >= 0.5 * last))
            return near_result(T, u, q, at, {du, u_error}, {dq, q_error});
        last = size;
        u *= 1.0 + std::clamp(du, -0.05, 0.05);
        q = std::clamp(q + dq, 0.05 * q, 20.0 * q);
        if (q < 1e-13) {
            if (T >= Tc_ * (1.0 - 1e-12)) no_solution();
            gave_up("too near the critical point for double precision");
        }
        q = std::min(q, 0.5);
    }
    gave_up(kNotNear);
}

/// Newton's method for both densities; nothing if it does not arrive.
std::optional<PureSaturation> PureSaturationSolver::newton(double T, double liquid, double vapour,
                                                           int steps) {
    double last = 1e300;
    for (int k = 0; k < steps; ++k) {
        ++iterations_;
        const IsothermState L = state(liquid, T), V = state(vapour, T);
        // P_L = P_V, m_L = m_V in the logarithms of the densities.
        const double ratio = std::log(liquid / vapour);
        const double f = L.P() - V.P(), g = L.Ar - V.Ar + L.Z - V.Z + ratio;
        const double det = L.S * V.S * (vapour - liquid);
        const double x = V.S * (f - vapour * g) / det, y = L.S * (f - liquid * g) / det;
        if (!(L.S > 0.0) || !(V.S > 0.0) || !std::isfinite(x) || !std::isfinite(y)) break;
        const double f_noise = L.rho * L.m_noise + V.rho * V.m_noise;
        const double g_noise = L.m_noise + V.m_noise + kEps * std::fabs(ratio);
        const auto bound = [&](double S, double rho) {
            return std::fabs(S / det) * (rho * g_noise + f_noise);
        };
        const double x_error = bound(V.S, vapour), y_error = bound(L.S, liquid);
        const double size = std::fabs(x) + std::fabs(y);
        if (size < 1e-4 && (size <= x_error + y_error || size >= 0.5 * last)) {
            const double rho_error = std::max(std::fabs(x) + x_error, std::fabs(y) + y_error);
            return PureSaturation{T,
                                  R * T * (V.P() + V.rho * V.S * y),
                                  liquid * (1.0 + x),
                                  vapour * (1.0 + y),
                                  kEps + V.m_noise / V.Z + (std::fabs(y) + y_error) * V.S / V.Z,
                                  rho_error,
                                  rho_error * liquid / (liquid - vapour)};
        }
        if (R * T * V.P() < kLeast) break;
        last = size;
        liquid *= std::exp(std::clamp(x, -0.1, 0.1));
        vapour *= std::exp(std::clamp(y, -0.5, 0.5));
        if (!(liquid > vapour)) break;
    }
    least_ = R * T * vapour;
    return {};
}

PureSaturation PureSaturationSolver::far(double T, double liquid, double vapour) {
    if (const auto found = newton(T, liquid, vapour, kSteps)) return *found;
    if (least_ < kLeast) gave_up("saturated below 1e-24 MPa");
    gave_up("Newton's method did not converge");
}

/// A start from the acentric factor: ln(rhoL/rhoV)/z and (rhoL/rho_c − 1)/z with z = √(Tc/T − 1),
/// fitted to Peng and Robinson's equation, of which others are near enough from 0.5 % below
/// critical on.
std::optional<PureSaturation> PureSaturationSolver::quick(double T) {
    const double w = model_.omega(), s = (Tc_ - T) / T, z = std::sqrt(s);
    // Without exact derivatives each step costs more than the walk.
    if (!(w > -0.5 && w < 0.8) || !model_.derivatives()) return {};
    const double apart = 5.87 + 2.72 * w + (1.69 + 4.2 * w) * s * s / (s + 0.5 - 0.55 * w);
    const double liquid = 1.0 + z * (3.12 + 1.45 * w) / (1.0 + (0.34 + 0.36 * w) * s);
    const double vapour = liquid * std::exp(-apart * z);
    const auto found = newton(T, rho_c_ * liquid, rho_c_ * vapour, kQuick);
    if (found && outermost(*found)) return found;
    return {};
}

PureSaturation PureSaturationSolver::far(double T) {
    double p = 0.0, liquid = 0.0, vapour = 0.0;
    try {
        SaturationMarch().at_T(&model_, T, 0, p, liquid, vapour);
    } catch (ThException const&) {
        gave_up("the model has no two phases at this temperature");
    } catch (MthException const&) {
        gave_up("the model has no two phases at this temperature");
    }
    return far(T, liquid, vapour);
}

bool PureSaturationSolver::outermost(PureSaturation const& q) const {
    double rhoL = 0.0, rhoV = 0.0;
    const double room = 0.05 * (q.rhoL - q.rhoV);
    return model_.vcalc(q.p, q.T, 1, rhoL, rhoV) == 3 && std::fabs(rhoL - q.rhoL) < room &&
           std::fabs(rhoV - q.rhoV) < std::min(room, 0.1 * q.rhoV);
}

PureSaturation PureSaturationSolver::from(double T, double liquid, double vapour) {
    if (T > (1.0 - kSplit) * Tc_) try {
            const double u = 0.5 * (liquid + vapour), d = 0.5 * (liquid - vapour) / u;
            return near(T, u, d * d);
        } catch (EquilibriumFailure const&) {  // not smooth enough
            if (T > (1.0 - kInner) * Tc_) throw;
        }
    return far(T, liquid, vapour);
}

PureSaturation PureSaturationSolver::solve(double T) {
    if (T <= (1.0 - kNear) * Tc_) {
        if (const auto found = quick(T)) return *found;
        return far(T);
    }
    const double q = std::clamp(5.0 * (1.0 - T / Tc_), 1e-6, 0.3);
    if (T >= (1.0 - kInner) * Tc_) return near(T, rho_c_, q);
    try {
        if (const PureSaturation found = near(T, rho_c_, q); outermost(found)) return found;
    } catch (EquilibriumFailure const&) {  // not smooth enough for its start
    }
    return far(T);
}

PureSaturation PureSaturationSolver::at_T() {
    critical(held_.value > (1.0 - kWide) * model_.Tcrit());
    if (held_.value >= Tc_) no_solution();
    if (held_.value < kLowest * Tc_) gave_up("below a fifth of the critical temperature");
    return solve(held_.value);
}

void PureSaturationSolver::add_error_of_T(PureSaturation& q, double h, double rhoL, double rhoV,
                                          double noise) {
    constexpr double kMargin = 2.0;
    const double part = kMargin * q.value_error / h;
    const double liquid = std::fabs(std::log(rhoL / q.rhoL)) + noise,
                 vapour = std::fabs(std::log(rhoV / q.rhoV)) + noise;
    q.rho_error += part * std::max(liquid, vapour);
    q.apart_error += part * (liquid + vapour) / std::log(q.rhoL / q.rhoV);
}

PureSaturation PureSaturationSolver::at_p() {
    critical(!(held_.value < (1.0 - 10.0 * kWide) * model_.pcrit()));
    if (held_.value >= pc_) no_solution();
    if (held_.value < kLeast) gave_up("below 1e-24 MPa");
    // ln p by ln T along the critical isochore: at the critical point the slope of the saturation
    // curve, and 4 to 8 for all fluids.
    const double h = 1e-5;
    const double slope =
        std::log(state(rho_c_, Tc_).Z / state(rho_c_, Tc_ * (1.0 - h)).Z) / -std::log1p(-h) + 1.0;
    double T = Tc_ * std::exp(std::log(held_.value / pc_) / slope), T_before = 0.0, p_before = 0.0;
    if (T < (1.0 - kNear) * Tc_) try {
            double liquid = 0.0, vapour = 0.0;
            SaturationMarch().at_p(&model_, held_.value, 0, T, liquid, vapour);
        } catch (ThException const&) {  // the critical slope is a start, too
        } catch (MthException const&) {
        }
    double steep = slope, last = 1e300;
    for (int k = 0; k < kSteps; ++k) {
        T = std::min(T, Tc_ * (1.0 - 1e-13));
        if (T < kLowest * Tc_) gave_up("below a fifth of the critical temperature");
        PureSaturation q = solve(T);
        const double off = std::log(q.p / held_.value);
        if (T_before > 0.0 && std::fabs(T / T_before - 1.0) > 1e-9)
            steep = std::log(q.p / p_before) / std::log(T / T_before);
        const double step = -off / steep;
        if (std::fabs(off) <= q.value_error ||
            (std::fabs(step) < 1e-9 && std::fabs(off) >= 0.5 * last)) {
            q.value_error = (q.value_error + std::fabs(off)) / steep + kEps;
            const double near = std::min(1e-4, 0.1 * (1.0 - q.T / Tc_));
            const double cold = q.T * (1.0 - near);
            auto c = newton(cold, q.rhoL, q.rhoV, kQuick);  // for a slope of two digits near enough
            if (!c) c = from(cold, q.rhoL, q.rhoV);
            add_error_of_T(q, near, c->rhoL, c->rhoV, q.rho_error + c->rho_error);
            q.p = held_.value;
            return q;
        }
        last = std::fabs(off);
        T_before = T;
        p_before = q.p;
        T *= std::exp(std::clamp(step, -0.3, 0.3));
    }
    gave_up("no temperature with this saturation pressure was found");
}

PureSaturation pure_saturation_T(Model1 const& model, double T) {
    return PureSaturationSolver(model, {true, T}).at_T();
}
PureSaturation pure_saturation_p(Model1 const& model, double p) {
    return PureSaturationSolver(model, {false, p}).at_p();
}

}  // namespace corvane
