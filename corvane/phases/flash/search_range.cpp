#include <corvane/core/constants.h>
#include <corvane/phases/flash/search_range.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kLowest = 0.25, kHighest = 1.5;    // T in critical temperatures
constexpr double kLnPMin = -27.63, kLnPMax = 9.21;  // 1e-12 and 1e4 MPa
}  // namespace

SearchRange::SearchRange(FluidModel const& fluid, Caloric* caloric, Target target)
    : fluid_(fluid), caloric_(caloric), target_(target), n_(fluid.size()) {
    for (int i = 0; i < n_; ++i) {
        const double Tc = fluid.pure(i).Tcrit();
        lowest_Tc_ = std::min(lowest_Tc_, Tc);
        highest_Tc_ = std::max(highest_Tc_, Tc);
        mean_Tc_ += fluid.z()[i] * Tc;
    }
}

void SearchRange::limits() {
    if (max_ > min_) return;
    if (target_ == Target::rho_at_T) {
        min_ = kLnPMin;
        max_ = kLnPMax;
        return;
    }
    double lowest = kLowest * lowest_Tc_;
    if (target_ == Target::s_at_p) lowest = std::max(lowest, caloric_->T_first());
    min_ = std::log(lowest);
    max_ = std::log(std::max(kHighest * highest_Tc_, caloric_->T_last()));
}

double SearchRange::clamped(double outer) {
    if (target_ != Target::rho_at_T && outer < std::log(kHighest * highest_Tc_) &&
        outer > std::log(kLowest * lowest_Tc_) &&
        (target_ == Target::h_at_p || caloric_->covers(std::exp(outer))))
        return outer;
    limits();
    return std::clamp(outer, min_, max_);
}

double SearchRange::guess(double fixed, double given) {
    return clamped(target_ == Target::rho_at_T ? guess_ln_p(fixed, given)
                                               : guess_ln_T(fixed, given));
}

double SearchRange::guess_ln_p(double T, double given) const {
    double bubble = 0.0, dew = 0.0;
    for (int i = 0; i < n_; ++i) {
        const double f = std::exp(fluid_.wilson(i, T));
        bubble += fluid_.z()[i] * f;
        dew += fluid_.z()[i] / f;
    }
    return std::log(std::clamp(R * T / given, 1.0 / dew, bubble));
}

double SearchRange::wilson_ln_T(double p, double sign) const {
    double T = 0.7 * mean_Tc_;
    for (int k = 0; k < 12; ++k) {  // Newton in 1/T on ln Σ z·K^±1
        double sum = 0.0, slope = 0.0;
        for (int i = 0; i < n_; ++i) {
            const double f = fluid_.z()[i] * std::exp(sign * (fluid_.wilson(i, T) - std::log(p)));
            sum += f;
            slope += f * sign * fluid_.wilson_slope(i);
        }
        const double move = sum * std::log(sum) / slope;  // of 1/T
        T = 1.0 / std::clamp(1.0 / T + move, 0.6 / T, 1.6 / T);
        if (std::fabs(move * T) < 1e-3) break;
    }
    return std::log(std::clamp(T, 0.3 * mean_Tc_, 1.3 * mean_Tc_));
}

double SearchRange::guess_ln_T(double p, double given) const {
    const bool entropy = target_ == Target::s_at_p;
    const double bubble = wilson_ln_T(p, 1.0), dew = wilson_ln_T(p, -1.0);
    auto gas = [&](double ln_T) {  // h/R or s/R
        caloric_->at(std::exp(ln_T));
        return entropy ? caloric_->ideal_s(p) : std::exp(ln_T) * caloric_->ideal_h();
    };
    auto to_T = [&](double ln_T) { return entropy ? 1.0 : std::exp(ln_T); };  // d h = T d s
    const double above = gas(dew);
    double x = dew;
    if (given > above) {
        double distance = given - above;
        for (int k = 0; k < 8; ++k) {
            const double move = distance / (caloric_->ideal_cp() * to_T(x));
            x += std::clamp(move, -0.5, 0.5);
            if (std::fabs(move) < 1e-2) break;
            distance = given - gas(x);
        }
    } else {
        double L = 0.0;
        for (int i = 0; i < n_; ++i) L += fluid_.z()[i] * fluid_.wilson_slope(i);
        const double below = gas(bubble) - (entropy ? L / std::exp(bubble) : L);
        if (given > below)
            x = bubble + (dew - bubble) * (given - below) / std::max(above - below, 1e-300);
        else  // a liquid's heat capacity is about half as large again as its gas's
            x = bubble +
                std::max((given - below) / (1.5 * caloric_->ideal_cp() * to_T(bubble)), -0.7);
    }
    return std::isfinite(x) ? x : std::log(0.7 * mean_Tc_);
}

}  // namespace corvane
