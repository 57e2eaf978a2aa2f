// What the checks of equations share: the list of worst cases, and differences with their error.
#pragma once

#include <corvane/check/check.h>
#include <corvane/core/errors.h>
#include <corvane/phases/report/certificate.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>

namespace corvane::inline detail {

struct Difference {
    double value, error, scatter;  // of the values that were differenced
};

/// What rounding scatters f by at x, a standard deviation: from third differences of values so near
/// that f itself has none.
template <class F>
double scatter(F const& f, double x) {
    constexpr int kValues = 7;
    std::array<double, kValues> d{};
    for (int k = 0; k < kValues; ++k) d[k] = f(x * (1.0 + 1e-8 * (k - 3)));
    for (int order = 1; order <= 3; ++order)
        for (int k = 0; k + order < kValues; ++k) d[k] = d[k + 1] - d[k];
    double sum = 0.0;
    for (int k = 0; k + 3 < kValues; ++k) sum += d[k] * d[k];
    return std::sqrt(sum / (20.0 * (kValues - 3)));  // 1 + 9 + 9 + 1
}

/// f'(x) by central differences of steps h, h/2, h/4 … extrapolated to zero (Ridders 1982), h short
/// enough that f is a number at x ± h. The error is the least change between neighbours of the
/// scheme, and what the scatter of f makes of the step there: neighbours may agree by chance.
template <class F>
Difference ridders(F const& f, double x, double h) {
    constexpr int kLevels = 7;
    const auto known = [&f](double y) {
        try {
            return std::isfinite(f(y));
        } catch (MthException const&) {
            return false;
        }
    };
    for (int k = 0; k < 20 && !(known(x + h) && known(x - h)); ++k) h *= 0.5;
    std::array<std::array<double, kLevels>, kLevels> a{};
    Difference best{std::numeric_limits<double>::quiet_NaN(),
                    std::numeric_limits<double>::infinity(), scatter(f, x)};
    for (int k = 0; k < kLevels; ++k, h *= 0.5) {
        a[k][0] = (f(x + h) - f(x - h)) / ((x + h) - (x - h));
        double four = 1.0;
        for (int j = 1; j <= k; ++j) {
            four *= 4.0;
            a[k][j] = a[k][j - 1] + (a[k][j - 1] - a[k - 1][j - 1]) / (four - 1.0);
            const double error =
                std::max(std::abs(a[k][j] - a[k][j - 1]), std::abs(a[k][j] - a[k - 1][j - 1])) +
                best.scatter / h;
            if (error < best.error) {
                best.value = a[k][j];
                best.error = error;
            }
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
    void same(char const* name, State const& at, double a, double b, double allowed,
              std::string const& of = "") {
        char text[96];
        std::snprintf(text, sizeof text, "%.12g and %.12g", a, b);
        see(name, at, a == b ? 0.0 : a - b, allowed, of.empty() ? text : of + ": " + text);
    }
    /// All that another survey found, as one check, with what it was made of.
    void take_over(char const* name, Survey& other, std::string const& of) {
        for (Check const& c : other.take()) {
            see(name, {.T = c.T, .rho = c.rho, .p = c.p, .x = c.x.empty() ? nullptr : &c.x},
                c.worst, 1.0, of + ": " + c.name + ": " + c.what);
            this->of(name).states += c.states - 1;
        }
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

/// Past a pole, and wherever else a state is none, betaV has no number where Z has none, and Z none
/// where betaV has none. betaV() may throw as numerical differentiation does.
template <class BetaV>
void numbers_end_together(Survey& survey, Survey::State const& at, double Z, BetaV const& betaV) {
    double slope = std::numeric_limits<double>::quiet_NaN();
    try {
        slope = betaV();
    } catch (MthException const&) {
    }
    survey.holds("Z and betaV have numbers at the same densities", at,
                 std::isfinite(Z) == std::isfinite(slope),
                 std::isfinite(Z) ? "Z alone" : "betaV alone");
}

/// deriv(nrho, nT, d) at one state: the promised orders are there, impossible ones are not, and
/// what is answered is written, as far as the highest derivative of each variable, and one number
/// whichever order asks for it.
template <class Deriv>
void orders_of_derivatives(Survey& survey, Survey::State const& at, Deriv const& deriv) {
    constexpr double kUnwritten = std::numeric_limits<double>::quiet_NaN();
    constexpr int kOrders = 5;
    char const* name = "orders of derivatives";
    constexpr int kRoom = kOrders * kOrders + 8;
    double known[9], d[kRoom];
    std::fill_n(known, 9, kUnwritten);
    const bool promised = deriv(2, 2, known) == 1 && deriv(3, 0, d) == 1;
    survey.holds(name, at, promised, "an order is missing");
    for (auto const& [nrho, nT] : {std::pair{-1, 0}, {0, -1}, {-1, 2}, {2, -1}, {9, 9}})
        survey.holds(name, at, deriv(nrho, nT, d) == 0, "an impossible order is answered");
    for (int nrho = 0; promised && nrho < kOrders; ++nrho)
        for (int nT = 0; nT < kOrders; ++nT) {
            std::fill_n(d, kRoom, kUnwritten);
            if (deriv(nrho, nT, d) == 0) continue;
            const std::string order = "(" + std::to_string(nrho) + ", " + std::to_string(nT) + ")";
            survey.holds(name, at, std::isfinite(d[nrho * (nT + 1)]) && std::isfinite(d[nT]),
                         order + " is answered and not written");
            const int size = (nrho + 1) * (nT + 1);
            survey.holds(name, at,
                         std::all_of(d + size, d + kRoom, [](double e) { return std::isnan(e); }),
                         order + " writes behind its numbers");
            for (int i = 0; i <= std::min(nrho, 2); ++i)
                for (int j = 0; j <= nT && i + j <= 2; ++j)
                    survey.holds(name, at,
                                 std::abs(d[i * (nT + 1) + j] - known[3 * i + j]) <=
                                     1e-10 * (1.0 + std::abs(known[3 * i + j])),
                                 order + " has other numbers than (2, 2)");
        }
}

}  // namespace corvane::inline detail
