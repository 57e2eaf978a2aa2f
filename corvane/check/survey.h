// What the checks of equations share: the list of worst cases, and differences with their error.
#pragma once

#include <corvane/check/check.h>
#include <corvane/core/errors.h>
#include <corvane/phases/report/certificate.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>

namespace corvane::inline detail {

struct Difference {
    double value, error;
};

/// f'(x) by central differences of steps h, h/2, h/4 … extrapolated to zero (Ridders 1982). The
/// error is the least change between neighbours of the scheme.
template <class F>
Difference ridders(F const& f, double x, double h) {
    constexpr int kLevels = 7;
    std::array<std::array<double, kLevels>, kLevels> a{};
    Difference best{std::numeric_limits<double>::quiet_NaN(),
                    std::numeric_limits<double>::infinity()};
    for (int k = 0; k < kLevels; ++k, h *= 0.5) {
        a[k][0] = (f(x + h) - f(x - h)) / ((x + h) - (x - h));
        double four = 1.0;
        for (int j = 1; j <= k; ++j) {
            four *= 4.0;
            a[k][j] = a[k][j - 1] + (a[k][j - 1] - a[k - 1][j - 1]) / (four - 1.0);
            const double error =
                std::max(std::abs(a[k][j] - a[k][j - 1]), std::abs(a[k][j] - a[k - 1][j - 1]));
            if (error < best.error) best = {a[k][j], error};
        }
    }
    return best;
}

/// Collects checks in the order in which they are first made.
class Survey {
    static constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

  public:
    struct State {
        double T = kUnknown, rho = kUnknown, p = kUnknown;
        std::vector<double> const* x = nullptr;
    };

    /// `deviation` may be `allowed`; what is no number fails.
    void see(char const* name, State const& at, double deviation, double allowed,
             std::string const& what = "") {
        Check& c = of(name);
        ++c.states;
        const double ratio = deviation == 0.0 ? 0.0 : std::abs(deviation) / allowed;
        const double badness = std::isfinite(ratio) ? ratio : 1e99;
        if (badness > c.worst || c.states == 1) {
            c.worst = badness;
            c.T = at.T;
            c.rho = at.rho;
            c.p = at.p;
            if (at.x) c.x = *at.x;
            c.what = what;
        }
    }
    /// Two numbers that should be one; `size` is that of what rounding acts on.
    void same(char const* name, State const& at, double a, double b, double allowed) {
        char text[96];
        std::snprintf(text, sizeof text, "%.12g and %.12g", a, b);
        see(name, at, a == b ? 0.0 : a - b, allowed, text);
    }
    void holds(char const* name, State const& at, bool truth, std::string const& what) {
        see(name, at, truth ? 0.0 : 1.0, 1e-9, truth ? "" : what);
    }
    /// Makes checks; if they throw, one has failed.
    template <class F>
    void guarded(char const* name, F const& checks) {
        std::string why;
        try {
            return checks();
        } catch (EquilibriumFailure const& e) {
            why = e.what();
        } catch (ThException const& e) {
            why = "ThException " + std::to_string(e.number);
        } catch (MthException const& e) {
            why = "MthException " + std::to_string(e.number);
        } catch (...) {
            why = "an exception";
        }
        holds((std::string(name) + " end without exceptions").c_str(), {}, false, why);
    }
    std::vector<Check> take() { return std::move(checks_); }

  private:
    Check& of(char const* name) {
        for (Check& c : checks_)
            if (c.name == name) return c;
        checks_.emplace_back().name = name;
        return checks_.back();
    }
    std::vector<Check> checks_;
};

/// Rounding of the terms that an equation sums up, relative to their size; what differences make of
/// it, whose steps are 1e-3 of the variable or less; and rounding of a compressibility factor
/// near 1.
inline constexpr double kRounding = 2e-13, kDifferenced = 5e-12, kNearOne = 4e-15;

}  // namespace corvane::inline detail
