#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {

constexpr double kNear = 5e-3;   // 1 − T/Tc below which the critical form is solved
constexpr double kLowest = 0.199;  // of Tc: below any triple point
constexpr double kWide = 0.03;     // 1 − T/Tc from which the critical point of the file will do
constexpr double kLeast = 1e-24;  // MPa: a thousand molecules in a cubic metre
constexpr double kInner = 1e-5;   // 1 − T/Tc above which a pair is looked for in vcalc
constexpr double kEps = 64.0 * std::numeric_limits<double>::epsilon();  // of sums of many terms
constexpr double kApart = Certificate::apart_limit;
constexpr int kSteps = 60;

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
    {0.09501250983763744, 0.1894506104550685},  {0.28160355077925891, 0.18260341504492359},
    {0.45801677765722739, 0.16915651939500254}, {0.61787624440264375, 0.14959598881657673},
    {0.75540440835500303, 0.12462897125553387}, {0.86563120238783174, 0.095158511682492785},
    {0.94457502307323258, 0.062253523938647893}, {0.98940093499164993, 0.027152459411754095}};

/// A density at T: Ar, P = rho·Z = p/(RT), S = ∂P/∂rho, C = rho·∂²P/∂rho², with what rounding may
/// do to Ar + Z, S and C.
struct State {
    double rho = 0.0, Ar = 0.0, Z = 0.0, S = 0.0, C = 0.0;
    double m_noise = 0.0, S_noise = 0.0, C_noise = 0.0;
    double P() const { return rho * Z; }
};

/// A number with a bound of its error.
struct Bounded {
    double value = 0.0, error = std::numeric_limits<double>::infinity();
};
Bounded better(Bounded const& a, Bounded const& b) {
    return b.error < a.error ? b : a;
}

/// The two equations next to the critical point.
struct Conditions {
    Bounded potentials, pressures;
};

class Solver {
  public:
    Solver(Model1 const& model, bool at_T, double value)
        : model_(model), at_T_(at_T), value_(value) {
        if (!(value > 0.0) || !std::isfinite(value)) throw ThException(th_out_of_range);
        if (!(model.Tcrit() > 0.0) || !(model.vcrit() > 0.0)) throw ThException(th_out_of_range);
    }
    PureSaturation at_T();
    PureSaturation at_p();

  private:
    State state(double rho, double T) const;
    template <std::size_t n>
    Conditions integrals(double u, double d, double T, Node const (&nodes)[n]) const;
    Conditions conditions(double u, double q, double T) const;
    /// Critical point of the parameter file; `exact`: of the equation, by Newton's method from that,
    /// which it stays where this finds none near.
    void critical(bool exact);
    PureSaturation near(double T);
    PureSaturation far(double T);
    PureSaturation solve(double T);
    [[noreturn]] void fail(EquilibriumFailure::Kind kind, char const* advice) const;
    [[noreturn]] void no_solution() const {
        fail(EquilibriumFailure::Kind::no_solution, "at or above the critical point");
    }
    [[noreturn]] void gave_up(char const* advice) const {
        fail(EquilibriumFailure::Kind::gave_up, advice);
    }

    Model1 const& model_;
    bool at_T_;
    double value_;
    double Tc_ = 0.0, rho_c_ = 0.0, pc_ = 0.0;
    int iterations_ = 0;
};

void Solver::fail(EquilibriumFailure::Kind kind, char const* advice) const {
    throw EquilibriumFailure(kind, T_or_p(at_T_, value_), at_T_ ? "pure_saturation_T" : "pure_saturation_p",
                             iterations_, std::nan(""), advice);
}

State Solver::state(double rho, double T) const {
    State s;
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

template <std::size_t n>
Conditions Solver::integrals(double u, double d, double T, Node const (&nodes)[n]) const {
    Conditions sum{{0.0, 0.0}, {0.0, 0.0}};
    for (Node const& node : nodes)
        for (double s : {-node.s, node.s}) {
            const double r = 1.0 + s * d;
            const State at = state(u * r, T);
            const double w = 0.5 * node.w, w2 = 0.5 * node.w * (1.0 - s * s) / (r * r);
            sum.potentials.value += w * at.S / r;
            sum.potentials.error += w * at.S_noise / r;
            sum.pressures.value += w2 * (at.C - at.S);
            sum.pressures.error += w2 * (at.C_noise + at.S_noise);
        }
    return sum;
}

Conditions Solver::conditions(double u, double q, double T) const {
    const double d = std::sqrt(q);
    Conditions best = integrals(u, d, T, kGauss16);
    const Conditions coarse = integrals(u, d, T, kGauss8);
    best.potentials.error += std::fabs(best.potentials.value - coarse.potentials.value);
    best.pressures.error += std::fabs(best.pressures.value - coarse.pressures.value);
    const State L = state(u * (1.0 + d), T), V = state(u * (1.0 - d), T);
    const double m_noise = L.m_noise + V.m_noise + 2.0 * kEps * d;
    const double m = (L.Ar - V.Ar + L.Z - V.Z + 2.0 * std::atanh(d)) / (2.0 * d);
    const double P = (1.0 + d) * L.Z - (1.0 - d) * V.Z;  // (P_L − P_V)/u
    return {better(best.potentials, {m, m_noise / (2.0 * d)}),
            better(best.pressures, {(P / d - 2.0 * m) / q, 2.0 * m_noise / (d * q)})};
}

void Solver::critical(bool exact) {
    Tc_ = model_.Tcrit();
    rho_c_ = 1.0 / model_.vcrit();
    pc_ = model_.pcrit();
    if (!exact) return;
    double T = Tc_, rho = rho_c_, last = std::numeric_limits<double>::infinity();
    bool met = false;
    for (int k = 0; k < 20; ++k) {  // S = C = 0 in ln rho, ln T; ∂S/∂ln rho = C
        const double h = 1e-5;
        const State s = state(rho, T), up = state(rho * (1.0 + h), T),
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

PureSaturation Solver::near(double T) {
    double u = rho_c_, q = std::clamp(5.0 * (1.0 - T / Tc_), 1e-6, 0.3), last = 1e300;
    for (int k = 0; k < kSteps; ++k) {
        ++iterations_;
        const double hu = 1e-4 * std::sqrt(q), hq = 1e-3 * q;
        const Conditions at = conditions(u, q, T), on_u = conditions(u * (1.0 + hu), q, T),
                         on_q = conditions(u, q + hq, T);
        const double a = (on_u.potentials.value - at.potentials.value) / hu,
                     b = (on_q.potentials.value - at.potentials.value) / hq,
                     c = (on_u.pressures.value - at.pressures.value) / hu,
                     e = (on_q.pressures.value - at.pressures.value) / hq, det = a * e - b * c;
        const auto first = [&](double f, double g) { return (e * f - b * g) / det; };
        const auto second = [&](double f, double g) { return (a * g - c * f) / det; };
        const double du = -first(at.potentials.value, at.pressures.value),
                     dq = -second(at.potentials.value, at.pressures.value);
        if (!std::isfinite(du) || !std::isfinite(dq)) break;
        const double f = at.potentials.error, g = at.pressures.error;
        const double u_error = (std::fabs(e * f) + std::fabs(b * g)) / std::fabs(det),
                     q_error = (std::fabs(a * g) + std::fabs(c * f)) / std::fabs(det);
        const double size = std::fabs(du) + std::fabs(dq) / q;
        const bool settled = std::fabs(du) <= u_error && std::fabs(dq) <= q_error;
        if (settled || (size < 1e-3 && size >= 0.5 * last)) {
            const double d = std::sqrt(q), u_all = u_error + std::fabs(du),
                         apart = 0.5 * (q_error + std::fabs(dq)) / q;
            if (apart > kApart) gave_up("too near the critical point for double precision");
            const State L = state(u * (1.0 + d), T), V = state(u * (1.0 - d), T);
            if (!(L.S > -L.S_noise) || !(V.S > -V.S_noise)) break;
            const double rho_error = u_all + d * apart / (1.0 - d);
            // At equilibrium p does not change with the densities to first order but by S.
            return {T,
                    R * T * 0.5 * (L.P() + V.P()),
                    L.rho,
                    V.rho,
                    kEps + (L.m_noise + std::fabs(L.S) + std::fabs(V.S)) * rho_error / L.Z +
                        L.m_noise / L.Z,
                    rho_error,
                    apart};
        }
        last = size;
        u *= 1.0 + std::clamp(du, -0.05, 0.05);
        q = std::clamp(q + dq, 0.05 * q, 20.0 * q);
        if (q < 1e-13) {
            if (T >= Tc_ * (1.0 - 1e-12)) no_solution();
            gave_up("too near the critical point for double precision");
        }
        q = std::min(q, 0.5);
    }
    gave_up("Newton's method next to the critical point did not converge");
}

PureSaturation Solver::far(double T) {
    double p = 0.0, liquid = 0.0, vapour = 0.0;
    try {
        SaturationMarch().at_T(&model_, T, 0, p, liquid, vapour);
    } catch (ThException const&) {
        gave_up("the model has no two phases at this temperature");
    } catch (MthException const&) {
        gave_up("the model has no two phases at this temperature");
    }
    double last = 1e300;
    for (int k = 0; k < kSteps; ++k) {
        ++iterations_;
        const State L = state(liquid, T), V = state(vapour, T);
        // P_L = P_V, m_L = m_V in the logarithms of the densities.
        const double f = L.P() - V.P(), g = L.Ar - V.Ar + L.Z - V.Z + std::log(liquid / vapour);
        const double det = L.S * V.S * (vapour - liquid);
        const auto dL = [&](double P, double m) { return V.S * (vapour * m - P) / det; };
        const auto dV = [&](double P, double m) { return L.S * (liquid * m - P) / det; };
        const double x = -dL(f, g), y = -dV(f, g);
        if (!(L.S > 0.0) || !(V.S > 0.0) || !std::isfinite(x) || !std::isfinite(y)) break;
        const double f_noise = L.rho * L.m_noise + V.rho * V.m_noise;
        const double g_noise = L.m_noise + V.m_noise + kEps * std::fabs(std::log(liquid / vapour));
        const auto bound = [&](double S, double rho) {
            return std::fabs(S / det) * (rho * g_noise + f_noise);
        };
        const double x_error = bound(V.S, vapour), y_error = bound(L.S, liquid);
        const double size = std::fabs(x) + std::fabs(y);
        if (size < 1e-4 && (size <= x_error + y_error || size >= 0.5 * last)) {
            const double rho_error = std::max(std::fabs(x) + x_error, std::fabs(y) + y_error);
            return {T,         R * T * V.P(),
                    liquid,    vapour,
                    kEps + V.m_noise / V.Z + (std::fabs(y) + y_error) * V.S / V.Z,
                    rho_error, rho_error * liquid / (liquid - vapour)};
        }
        if (R * T * V.P() < kLeast) gave_up("saturated below 1e-24 MPa");
        last = size;
        liquid *= std::exp(std::clamp(x, -0.1, 0.1));
        vapour *= std::exp(std::clamp(y, -0.5, 0.5));
        if (!(liquid > vapour)) break;
    }
    gave_up("Newton's method did not converge");
}

PureSaturation Solver::solve(double T) {
    if (T <= (1.0 - kNear) * Tc_) return far(T);
    if (T >= (1.0 - kInner) * Tc_) return near(T);
    try {
        const PureSaturation q = near(T);
        // An equation with an inner loop has pairs that end on that.
        double rhoL = 0.0, rhoV = 0.0;
        const double room = 0.05 * (q.rhoL - q.rhoV);
        if (model_.vcalc(q.p, T, 1, rhoL, rhoV) == 3 && std::fabs(rhoL - q.rhoL) < room &&
            std::fabs(rhoV - q.rhoV) < room)
            return q;
    } catch (EquilibriumFailure const&) {  // not smooth enough for its start
    }
    return far(T);
}

PureSaturation Solver::at_T() {
    critical(value_ > (1.0 - kWide) * model_.Tcrit());
    if (value_ >= Tc_) no_solution();
    if (value_ < kLowest * Tc_) gave_up("below a fifth of the critical temperature");
    return solve(value_);
}

PureSaturation Solver::at_p() {
    critical(!(value_ < (1.0 - 10.0 * kWide) * model_.pcrit()));
    if (value_ >= pc_) no_solution();
    if (value_ < kLeast) gave_up("below 1e-24 MPa");
    // ln p by ln T along the critical isochore: at the critical point the slope of the saturation
    // curve, and 4 to 8 for all fluids.
    const double h = 1e-5;
    const double slope =
        std::log(state(rho_c_, Tc_).Z / state(rho_c_, Tc_ * (1.0 - h)).Z) / -std::log1p(-h) + 1.0;
    double T = Tc_ * std::exp(std::log(value_ / pc_) / slope), T_before = 0.0, p_before = 0.0;
    if (T < (1.0 - kNear) * Tc_) try {
            double liquid = 0.0, vapour = 0.0;
            SaturationMarch().at_p(&model_, value_, 0, T, liquid, vapour);
        } catch (ThException const&) {  // the critical slope is a start, too
        } catch (MthException const&) {
        }
    double steep = slope, last = 1e300;
    for (int k = 0; k < kSteps; ++k) {
        T = std::min(T, Tc_ * (1.0 - 1e-13));
        if (T < kLowest * Tc_) gave_up("below a fifth of the critical temperature");
        PureSaturation q = solve(T);
        const double off = std::log(q.p / value_);
        if (T_before > 0.0 && std::fabs(T / T_before - 1.0) > 1e-9)
            steep = std::log(q.p / p_before) / std::log(T / T_before);
        const double step = -off / steep;
        if (std::fabs(off) <= q.value_error ||
            (std::fabs(step) < 1e-9 && std::fabs(off) >= 0.5 * last)) {
            q.value_error = (q.value_error + std::fabs(off)) / steep + kEps;
            q.p = value_;
            return q;
        }
        last = std::fabs(off);
        T_before = T;
        p_before = q.p;
        T *= std::exp(std::clamp(step, -0.3, 0.3));
    }
    gave_up("no temperature with this saturation pressure was found");
}

}  // namespace

PureSaturation pure_saturation_T(Model1 const& model, double T) {
    return Solver(model, true, T).at_T();
}
PureSaturation pure_saturation_p(Model1 const& model, double p) {
    return Solver(model, false, p).at_p();
}

}  // namespace corvane
