#include <corvane/core/errors.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/transport/volume_shift.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane::inline detail {
namespace {
std::optional<double> liquid_volume(Model1 const& model, double T) {
    try {
        return 1.0 / pure_saturation_T(model, T).rhoL;
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return {};
}
}  // namespace

VolumeShift::VolumeShift(Model1 const& model, Model1 const& reference) {
    constexpr double kFirst = 0.3, kLast = 0.8;
    const double Tc = std::min(model.Tcrit(), reference.Tcrit());
    first_ = kFirst * Tc;
    step_ = (kLast - kFirst) * Tc / (kNodes - 1);
    double largest = 0.0;
    for (int i = kNodes - 1; i >= 0; --i) {  // where one has no liquid the warmer neighbour's
        const double T = first_ + i * step_;
        auto& here = shift_[static_cast<std::size_t>(i)];
        const auto v = liquid_volume(model, T), v0 = liquid_volume(reference, T);
        here = v && v0 ? *v - *v0 : i + 1 < kNodes ? shift_[static_cast<std::size_t>(i) + 1] : 0.0;
        if (v) largest = std::max(largest, std::fabs(here) / *v);
    }
    constexpr double kSame = 1e-9;  // accuracy of two solutions of one equation
    if (largest < kSame) *this = VolumeShift();
}

double VolumeShift::operator()(double T) const {
    if (!(step_ > 0.0)) return 0.0;
    const double place = std::clamp((T - first_) / step_, 0.0, kNodes - 1.0);
    const auto i = static_cast<std::size_t>(std::min(place, kNodes - 2.0));
    const double part = place - static_cast<double>(i);
    return (1.0 - part) * shift_[i] + part * shift_[i + 1];
}

double shifted_density(double rho, double shift) {
    const double free = 1.0 - rho * shift;
    if (!(free > 0.0)) throw ThException(th_out_of_range);
    return rho / free;
}

}  // namespace corvane::inline detail
