// The slow and sure search for densities: an isotherm in 1500 equal steps, the first of them halved
// forty times towards zero (a heavy cold gas ends within it), every rising crossing bisected to the
// last digit.
#pragma once

#include <corvane/check/survey.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace corvane::inline detail {

class IsothermScan {
  public:
    /// @param P  rho·Z at a density
    /// @param P_high  highest of the stated range: an isotherm that falls at its dense end, from
    ///                above it, ends there
    IsothermScan(std::function<double(double)> P, double top,
                 double P_high = std::numeric_limits<double>::infinity())
        : P_(std::move(P)), top_(top) {
        rho_.push_back(0.0);
        for (int k = 40; k > 0; --k) rho_.push_back(std::ldexp(top / kSteps, -k));
        for (int k = 1; k <= kSteps; ++k) rho_.push_back(k * top / kSteps);
        for (double rho : rho_) at_.push_back(rho == 0.0 ? 0.0 : P_(rho));
        std::size_t end = at_.size();
        while (end > 1 && at_[end - 2] > at_[end - 1]) --end;
        if (end < at_.size() && at_[end - 1] > P_high) {
            rho_.resize(end);
            at_.resize(end);
            top_ = rho_.back();
        }
    }
    double top() const { return top_; }
    /// The fluid's branches end at two inflections, or one and a spinodal: what lies between them
    /// is no fluid, though the isotherm may rise there.
    void soft_ends(double dilute, double dense) {
        dilute_ = dilute;
        dense_ = dense;
    }
    /// Whether P is that of such an end, to a hundredth of its density.
    bool at_soft_end(double P) const {
        for (double rho : {dilute_, dense_})
            if (dilute_ < dense_ && (P - P_(0.99 * rho)) * (P - P_(1.01 * rho)) < 0.0) return true;
        return false;
    }
    /// Parts in which the pressure falls.
    int loops() const {
        int n = 0;
        for (std::size_t k = 1; k + 1 < at_.size(); ++k)
            n += at_[k] >= at_[k - 1] && at_[k + 1] < at_[k];
        return n;
    }
    /// Where the pressure falls first, and where it rises for good; nothing to see: 0.
    std::pair<double, double> spinodals() const {
        double first = 0.0, last = 0.0;
        for (std::size_t k = 1; k < at_.size(); ++k)
            if (at_[k] < at_[k - 1]) {
                if (first == 0.0) first = rho_[k - 1];
                last = rho_[k];
            }
        return {first, last};
    }
    /// Densities at P on the first and on the last rising branch, ascending.
    std::vector<double> roots(double P) const {
        std::size_t first = at_.size(), last = 0;  // steps in which the pressure falls
        for (std::size_t k = 0; k + 1 < at_.size(); ++k)
            if (at_[k + 1] < at_[k]) {
                first = std::min(first, k);
                last = k;
            }
        std::vector<double> found;
        for (std::size_t k = 0; k + 1 < at_.size(); ++k) {
            if (!(at_[k] < P && P <= at_[k + 1]) || (k > first && k < last)) continue;
            double low = rho_[k], high = rho_[k + 1];
            for (int i = 0; i < 2000 && low < high; ++i) {
                const double middle = 0.5 * (low + high);
                if (middle == low || middle == high) break;
                (P_(middle) < P ? low : high) = middle;
            }
            if (!(dilute_ < high && high < dense_)) found.push_back(high);
        }
        return found;
    }
    /// Whether P is that of an extreme: there the number of roots is a matter of rounding.
    bool at_spinodal(double P) const {
        for (std::size_t k = 1; k + 1 < at_.size(); ++k) {
            const double a = at_[k - 1], b = at_[k], c = at_[k + 1];
            if ((b - a) * (c - b) > 0.0) continue;
            if (std::abs(b - P) < std::max(std::abs(b - a), std::abs(c - b)) + 1e-6 * std::abs(b))
                return true;
        }
        return false;
    }

  private:
    static constexpr int kSteps = 1500;
    std::function<double(double)> P_;
    double top_, dilute_ = 0.0, dense_ = 0.0;
    std::vector<double> rho_, at_;
};

/// Least slope of an isotherm that goes on rising: a soft end, where an inner loop has swallowed
/// the spinodal.
template <class Slope>
bool inflects(Slope const& slope, double rho) {
    const auto curvature = [&](double r) { return slope(1.001 * r) - slope(0.999 * r); };
    return slope(rho) > 0.0 && curvature(0.99 * rho) < 0.0 && curvature(1.01 * rho) > 0.0;
}

/// vcalc(phase, rho1, rho2) against the scan, by the contract of Model1::vcalc.
template <class Vcalc, class Slope>
void check_roots(Survey& survey, IsothermScan const& scan,
                 std::function<double(double)> const& isotherm, Survey::State const& at, double P,
                 Vcalc const& vcalc, Slope const& slope) {
    char const *count = "densities: all that a scan finds",
               *same = "densities: those that a scan finds";
    double dense = 0.0, dilute = 0.0, first = 0.0, second = 0.0;
    const int n = vcalc(1, dense, dilute);
    const std::vector<double> sure = scan.roots(P);
    const bool clear = !scan.at_spinodal(P) && !scan.at_soft_end(P) && dense <= scan.top();
    if (n != 1 && n != 3)
        return survey.holds(count, at, false, "vcalc returns " + std::to_string(n));
    const bool all = sure.size() == 1 ? n == 1 : sure.size() > 1 && n == 3;
    if (clear)
        survey.holds(
            count, at, all,
            std::to_string(sure.size()) + " in the scan, vcalc returns " + std::to_string(n));
    for (double rho : {dense, n == 3 ? dilute : dense}) {
        const double s = slope(rho), noise = kRounding * rho * (10.0 + std::abs(s));
        survey.holds("densities: stable and positive", at, rho > 0.0 && s > 0.0, "not stable");
        survey.same("densities: at the pressure", at, isotherm(rho), P,
                    0.2 * noise + 1e-13 * std::abs(P));
        if (!clear || !all || s < 1e-3) continue;
        double nearest = sure.front();
        for (double r : sure)
            if (std::abs(r - rho) < std::abs(nearest - rho)) nearest = r;
        survey.same(same, at, rho, nearest, 1e-12 * rho + noise / s);
    }
    if (clear && n == 3) survey.same(same, at, dilute, sure.front(), 1e-9 * dilute);
    char const* codes = "densities: phase codes";
    survey.holds(codes, at,
                 vcalc(3, first, second) == n &&
                     (n == 1 ? first == dense : first == dilute && second == dense),
                 "phase 3 is not the reverse of phase 1");
    survey.holds(codes, at, n == 1 || dense > dilute, "phase 1 is not the dense root");
    for (double start : {dense, n == 3 ? dilute : dense}) {
        double rho = start, other = 0.0;
        vcalc(-1, rho, other);
        survey.same(codes, at, rho, start, 1e-10 * start);
    }
}

}  // namespace corvane::inline detail
