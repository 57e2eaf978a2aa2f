#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/solid/anchored_solid.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace corvane {
namespace {
constexpr double kHigh = 100.0;      // MPa, of the second point of the melting curve
constexpr double kSolidPart = 1.12;  // density of a solid over that of its liquid, estimated
constexpr double kOfLiquid = 0.4;    // expansivity, compressibility over the liquid's, estimated
constexpr double kLowest = 0.25;     // of T_t, without a transition
constexpr double kCold = 0.05;       // of T_t, where all ends
}  // namespace

AnchoredSolid::AnchoredSolid(Model1 const& fluid, FusionData const& data)
    : fluid_(&fluid), data_(data) {
    const double T = data.T;
    if (!(T > 0.0) || !(data.h > 0.0) || !std::isfinite(T) || !std::isfinite(data.h))
        throw ThException(th_out_of_range);
    double rhoL = 0.0, rhoV = 0.0;
    try {
        SaturationMarch().at_T(&fluid, T, 0, p_t_, rhoL, rhoV);
    } catch (ThException const&) {
        p_t_ = 0.0;
    } catch (MthException const&) {
        p_t_ = 0.0;
    }
    if (!(p_t_ > 0.0)) {  // too low for the saturation solver, and without weight in the liquid
        p_t_ = 1e-3;
        rhoL = 0.0;
        fluid.Ge(p_t_, T, 1, rhoL);
    }
    if (!(rhoL * fluid.vcrit() > 1.0)) throw ThException(th_no_density);
    g_t_ = fluid.Ge(rhoL, T);
    E_t_ = T * (fluid.Hr(rhoL, T) + 1.0) - data.h / R;
    C_ = fluid.Cpr(rhoL, T) + 1.0 - data.cp / R;
    T_min_ = std::fmax(data.T_min, kLowest * T);
    Solid const& measured = fluid.solid;
    if (measured.sg.size() > 0) try {
            const double T_s = std::fmin(T, measured.Tmax());
            int form = 0;
            double rho = 0.0;
            const double g = measured.Ge(p_t_, T_s, form, rho), E = T_s * measured.He(p_t_, T_s);
            if (std::isfinite(g) && std::isfinite(E) && T_s > 0.98 * T) {
                A_ = g_t_ - g - E * (1.0 / T - 1.0 / T_s);
                B_ = E_t_ - E;
                auto const& last = measured.sg[measured.sg.size() - 1].x;
                T_low_ = 1.0 / last[last.size() - 1];
                E_low_ = T_low_ * measured.He(p_t_, T_low_) + B_;
                g_low_ = measured.Ge(p_t_, T_low_, form, rho) + A_ + B_ * (1.0 / T_low_ - 1.0 / T);
                C_low_ = (E_t_ - E_low_) / (T - T_low_);
                curve_ = std::isfinite(g_low_) && std::isfinite(C_low_);
            }
        } catch (ThException const&) {  // no vapour: the other form serves
        } catch (MthException const&) {
        }
    set_volume(rhoL);
}

void AnchoredSolid::set_volume(double rhoL) {
    const double P_rho = fluid_->pV(rhoL, data_.T);
    measured_volume_ = data_.dv != 0.0 || data_.T_100 > 0.0;
    v_ = data_.dv != 0.0 ? 1.0 / rhoL - data_.dv : 1.0 / (kSolidPart * rhoL);
    kappa_ = kOfLiquid / (rhoL * R * data_.T * P_rho);
    alpha_ = kOfLiquid * fluid_->betaV(rhoL, data_.T) / (P_rho * data_.T);
    double warm = 0.0, cold = 0.0, psub = 0.0, kappa = 0.0;
    const double T_s = std::fmin(data_.T, fluid_->solid.Tmax()), step = 0.05 * T_s;
    if (curve_ && fluid_->solid.sge(T_s, 0, psub, warm, kappa) >= 0 &&
        fluid_->solid.sge(T_s - step, 0, psub, cold, kappa) >= 0 && warm > cold)
        alpha_ = (warm - cold) / (warm * step);
    if (!(data_.T_100 > 0.0)) return;
    // Work that the solid must have taken up at 100 MPa.
    const double T = data_.T_100, dp = kHigh - p_t_;
    double g = 0.0, E = 0.0, rho = 0.0, gL = 0.0;
    int form = 0;
    try {
        if (!level(T, g, E, form, false)) return;
        gL = fluid_->Ge(kHigh, T, 1, rho);
    } catch (ThException const&) {
        return;
    } catch (MthException const&) {
        return;
    }
    if (!(rho * fluid_->vcrit() > 1.0)) return;
    const double mean = R * T * (gL - g) / dp / expanded(T);
    if (!(mean > 0.0)) return;
    // (1 − exp(−y))/y = mean/v, y = kappa·dp, which falls with y.
    double low = -0.2, high = 0.4;
    const auto part = [](double y) { return y == 0.0 ? 1.0 : -std::expm1(-y) / y; };
    if (data_.dv == 0.0 || mean / v_ > part(low) || mean / v_ < part(high)) {
        v_ = mean;  // a compressibility that no solid has: the volume takes the misfit
        kappa_ = 0.0;
        return;
    }
    for (int it = 0; it < 60; ++it) {
        const double y = 0.5 * (low + high);
        (part(y) > mean / v_ ? low : high) = y;
    }
    kappa_ = low / dp;
}

double AnchoredSolid::expanded(double T) const {
    return 1.0 + alpha_ * (T - data_.T);
}

double AnchoredSolid::work(double p, double T) const {
    const double y = kappa_ * (p - p_t_);
    return v_ * expanded(T) * (p - p_t_) * (y == 0.0 ? 1.0 : -std::expm1(-y) / y);
}

/// g and E at (T, p_t). False outside the range.
bool AnchoredSolid::level(double T, double& g, double& E, int& form, bool slope) const {
    const double T_t = data_.T;
    if (!(T >= kCold * T_t) || !(T <= T_max() * (1.0 + 1e-12))) return false;
    if (curve_ && T >= T_low_ && T <= std::fmin(T_t, fluid_->solid.Tmax())) {
        double rho = 0.0;
        g = fluid_->solid.Ge(p_t_, T, form, rho) + A_ + B_ * (1.0 / T - 1.0 / T_t);
        if (slope) E = T * fluid_->solid.He(p_t_, T) + B_;
        return true;
    }
    const bool low = curve_ && T < T_t;
    const double T0 = low ? T_low_ : T_t, E0 = low ? E_low_ : E_t_, C = low ? C_low_ : C_;
    form = low ? fluid_->solid.sg.size() - 1 : 0;
    g = (low ? g_low_ : g_t_) + E0 * (1.0 / T - 1.0 / T0) - C * (std::log(T / T0) + T0 / T - 1.0);
    E = E0 + C * (T - T0);
    return true;
}

AnchoredSolid::State AnchoredSolid::at(double p, double T, bool slope) const {
    State s;
    double E = 0.0;
    if (!std::isfinite(p) || !level(T, s.g, E, s.form, slope)) throw ThException(th_out_of_range);
    const double RT = R * T, W = work(p, T), shrunk = std::exp(-kappa_ * (p - p_t_));
    s.g += W / RT;
    s.g_T = -(E / T + W / RT * (1.0 - alpha_ * T / expanded(T)));
    s.v = v_ * expanded(T) * shrunk;
    double v = (data_.v > 0.0 ? data_.v : v_) * expanded(T);
    double psub = 0.0, volume = 0.0, kappa = 0.0;
    if (curve_ && T >= T_low_ && T <= data_.T &&
        fluid_->solid.sge(T, s.form, psub, volume, kappa) >= 0)
        v = volume;
    s.rho = 1.0 / (v * shrunk);
    return s;
}

double AnchoredSolid::enthalpy_of_fusion(double p, double T) const {
    double rho = 0.0;
    return R * T * (fluid_->Hr(p, T, 1, rho) + 1.0 + at(p, T).g_T);
}

double AnchoredSolid::melting(double p) const {
    const auto gap = [&](double T) {
        double rho = 0.0;
        const double g = at(p, T, false).g - fluid_->Ge(p, T, 1, rho);
        if (!(rho * fluid_->vcrit() > 1.0)) throw ThException(th_generic);
        return g;
    };
    // The solid is the stable one below: where the gap is negative at T_t, search upwards.
    double a = data_.T, fa = gap(a);
    const double step = fa < 0.0 ? 0.01 * data_.T : -0.01 * data_.T;
    for (int k = 0; k < 80; ++k) {
        const double b = std::fmax(std::fmin(a + step, T_max()), T_min_);
        if (b == a) break;
        const double fb = gap(b);
        if (fa * fb <= 0.0) {
            IllinoisBracket r{a, fa, b, fb};
            for (int it = 0; it < 60 && r.fb != 0.0; ++it) {
                const double T = r.b - r.fb * (r.b - r.a) / (r.fb - r.fa);
                const double before = r.b;
                r.take(T, gap(T));
                if (std::fabs(T - before) < 1e-13 * T) break;
            }
            if (!(enthalpy_of_fusion(p, r.b) > 0.0)) throw ThException(th_generic);
            return r.b;
        }
        a = b;
        fa = fb;
    }
    throw ThException(th_generic);
}

double AnchoredSolid::sublimation(double T) const {
    if (!(T <= data_.T)) throw ThException(th_out_of_range);
    double p = R * T * std::exp(at(p_t_, T, false).g);
    for (int it = 0; it < 100; ++it) {
        double rho = 0.0;
        const double change = at(p, T, false).g - fluid_->Ge(p, T, 3, rho);
        p *= std::exp(change);
        if (!std::isfinite(p) || !(p > 0.0)) break;
        if (std::fabs(change) < 1e-13) return p;
    }
    throw ThException(th_generic);
}

}  // namespace corvane
