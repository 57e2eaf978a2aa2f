// Potentials and density roots from a residual Helmholtz energy density alone.
#pragma once

#include "dual.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace judge {

/// Psi<Real> has, at one temperature: size(); energy(S const* rho_i) = rho·a^r/RT for S a Dual of
/// Real; limit(x), the largest density looked at; pressure(x), a function of rho that returns
/// p/(RT) at mole fractions x; select(x, roots, on), which
/// leaves those that are phases, on: the rising branches that they lie on, from 1.
///
/// Roots are searched in double on a geometric mesh, 5 % in density between 2 % of the limit and the
/// limit, a factor of 1.4 below; cells in which the isotherm is flat, or turns round close to P, by 32 more;
/// each is halved, then polished in Real. Of several, the first and the last one are taken, up to
/// the end of the last of `branches` rising branches.
template <template <class> class Psi, class Parameters, class Real, int kBranches>
class EnergyAt {
  public:
    EnergyAt(Parameters const& parameters, Real T)
        : psi_(parameters, T), fast_(parameters, static_cast<double>(T)) {}
    int size() const { return psi_.size(); }
    static constexpr Long kStep = 0.8L, kFlat = 1e-16L;

    Real state(Real rho, Real const* x, Real* h) const {
        using std::log;
        using S = Dual<Real, kMax>;
        const int n = psi_.size();
        std::array<S, kMax> r;
        for (int i = 0; i < n; ++i) {
            r[i] = S(rho * x[i]);
            r[i].d[i] = 1;
        }
        const S e = psi_.energy(r.data());
        Real P = rho - e.v;
        for (int i = 0; i < n; ++i) {
            P += rho * x[i] * e.d[i];
            h[i] = log(rho) + e.d[i];
        }
        return P;
    }
    int roots(Real P, Real const* x, Real* rho, Real* gap = nullptr) const {
        if (gap) *gap = 1;
        double xd[kMax] = {};
        for (int i = 0; i < size(); ++i) xd[i] = static_cast<double>(x[i]);
        const auto pressure = fast_.pressure(xd);
        const double target = static_cast<double>(P), top = fast_.limit(xd);
        std::vector<double> r{std::min(target / 2, 0.001 * top)}, p;
        while (r.back() < top) r.push_back(r.back() * (r.back() < 0.02 * top ? 1.4 : 1.05));
        for (double q : r) p.push_back(pressure(q));
        std::vector<double> found;
        std::vector<int> on;  // branch of each
        int branch = 0;
        bool rising = false;
        for (std::size_t k = 1; k < r.size() && std::isfinite(p[k]); ++k) {
            const bool up = p[k] > p[k - 1];
            if (up && !rising && ++branch > kBranches) break;
            rising = up;
            const double flat = (p[k] - p[k - 1]) / (target * std::log(r[k] / r[k - 1]));
            const bool turn = std::fabs(flat) < 0.1 || (k > 1 && (p[k - 1] - p[k - 2] > 0) != up) ||
                              (k + 1 < r.size() && (p[k + 1] - p[k] > 0) != up);
            const bool crossing = (p[k - 1] < target) != (p[k] < target);
            const double close = std::min(std::fabs(p[k] - target), std::fabs(p[k - 1] - target));
            if (crossing ? std::fabs(flat) < 0.7 : turn && close < 0.2 * target) {
                double a = r[k - 1], pa = p[k - 1];
                for (int j = 1; j <= 32; ++j) {
                    const double b = j == 32 ? r[k] : a * std::exp(std::log(r[k] / r[k - 1]) / 32);
                    const double pb = j == 32 ? p[k] : pressure(b);
                    if (pa < target && pb >= target)
                        found.push_back(halved(pressure, target, a, b));
                    a = b, pa = pb;
                }
            } else if (p[k - 1] < target && p[k] >= target)
                found.push_back(halved(pressure, target, r[k - 1], r[k]));
            on.resize(found.size(), branch);
        }
        if (found.empty()) return 0;
        fast_.select(xd, found, on);
        if (found.empty()) return 0;
        const auto exact = psi_.pressure(x);
        auto polished = [&](double start) {
            Real q = start;
            const double slope = (pressure(start * (1 + 1e-6)) - pressure(start * (1 - 1e-6))) /
                                 (2e-6 * start);
            for (int k = 0; k < 30; ++k) {
                const Real step = (exact(q) - P) / Real(slope);
                if (!(std::fabs(static_cast<double>(step / q)) < 0.01)) break;
                q -= step;
                if (std::fabs(static_cast<double>(step / q)) < 1e-17) break;
            }
            return q;
        };
        rho[0] = polished(found.back());
        if (found.size() == 1) return 1;
        rho[1] = polished(found.front());
        return 2;
    }

  private:
    template <class F>
    static double halved(F const& pressure, double target, double a, double b) {
        for (int k = 0; k < 24; ++k) {
            const double m = (a + b) / 2;
            (pressure(m) < target ? a : b) = m;
        }
        return (a + b) / 2;
    }
    Psi<Real> psi_;
    Psi<double> fast_;
};

}  // namespace judge
