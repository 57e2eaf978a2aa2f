#include <corvane/core/errors.h>
#include <corvane/phases/critical/spinodal.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
using Variables = CriticalConditions::Variables;

// Densities: a liquid's pressure rises by 1000 MPa within 15 %. Temperatures: λ is
// positive far up and mostly changes its sign once; two changes within a step of 12 % are not seen.
constexpr double kFirst = 0.3, kRatio = 1.12, kDenseRatio = 1.05;
constexpr int kLoose = 19;
constexpr double kSlope = 2.5, kFall = 0.25, kFarthest = 0.45;  // see nearer()
constexpr double kHot = 2.0, kCold = 0.2;
constexpr double kAccuracy = 1e-3, kRough = 1e-2;  // of ln T; of a start
const double kCooler = std::log(0.88);
}  // namespace

Spinodal::Spinodal(FluidModel const& fluid, CriticalConditions& conditions)
    : fluid_(fluid), conditions_(conditions) {
    double hot = 0.0, cold = 1e300;
    for (int k = 0; k < fluid.size(); ++k) {
        Model1 const& c = fluid.pure(k);
        if (!(c.Tcrit() > 0.0) || !(c.vcrit() > 0.0)) throw ThException(th_out_of_range);
        hot = std::max(hot, c.Tcrit());
        cold = std::min(cold, c.Tcrit());
    }
    hot_ = std::log(kHot * hot);
    cold_ = std::log(kCold * cold);
}

double Spinodal::mean(std::vector<double> const& x) const {
    double v = 0.0;
    for (int k = 0; k < fluid_.size(); ++k) v += x[k] * fluid_.pure(k).vcrit();
    return -std::log(v);
}
double Spinodal::density(std::vector<double> const& x, int k) const {
    return mean(x) + std::log(kFirst) + std::min(k, kLoose) * std::log(kRatio) +
           std::max(0, k - kLoose) * std::log(kDenseRatio);
}

bool Spinodal::lambda(Variables const& y, int m, double& value) {
    if (!conditions_.eigen(y, m)) return false;
    value = conditions_.lambda;
    return true;
}

/// λ changes its sign between ln T = a and b: Illinois method.
double Spinodal::root(Variables y, int m, double a, double b, double accuracy) {
    double fa = 0.0, fb = 0.0;
    y[1] = b;
    if (!lambda(y, m, fb)) return b;
    y[1] = a;
    if (!lambda(y, m, fa) || !(fa * fb < 0.0)) return std::fabs(fa) < std::fabs(fb) ? a : b;
    IllinoisBracket r{a, fa, b, fb};
    for (int it = 0; it < 10 && std::fabs(r.a - r.b) > accuracy; ++it) {
        y[1] = r.a + (r.b - r.a) * r.fa / (r.fa - r.fb);
        double f = 0.0;
        if (!lambda(y, m, f)) break;
        if (std::fabs(y[1] - r.b) < accuracy && f * r.fb > 0.0) return y[1];
        r.take(y[1], f);
    }
    return r.b;
}

bool Spinodal::hottest(Variables& y, int m) {
    bool above = false, now = false;
    for (y[1] = hot_; y[1] > cold_; y[1] += kCooler) {
        const bool good = conditions_.definite(y, m, now);
        if (good && above && !now) {
            y[1] = root(y, m, y[1] - kCooler, y[1], kRough);
            return true;
        }
        above = good && now;
    }
    return false;
}

void Spinodal::nearer(Variables& y) {
    if (!conditions_.evaluate(y, 2)) return;
    double along = 0.0;
    for (int i = 0; i < fluid_.size(); ++i) along += conditions_.u[i] * std::sqrt(fluid_.z()[i]);
    const double C = along > 0.0 ? conditions_.C : -conditions_.C;
    const double step = std::clamp(-C / kSlope, -kFarthest, kFarthest);
    y[0] += step;
    y[1] -= kFall * step * step;
}

void Spinodal::column(Variables y, int m, std::vector<SpinodalState> const& before,
                      std::vector<SpinodalState>& states) {
    states.clear();
    bool last = false, now = false, known = false;
    for (y[1] = hot_; y[1] > cold_; y[1] += kCooler) {
        const bool good = conditions_.definite(y, m, now);
        if (good && known && last != now) {
            SpinodalState q{y, 0.0, {}};
            q.y[1] = root(y, m, y[1] - kCooler, y[1], kAccuracy);
            if (states.size() < before.size()) conditions_.u = before[states.size()].u;
            if (conditions_.evaluate(q.y, m)) {
                q.C = conditions_.C;
                q.u = conditions_.u;
                states.push_back(q);
            }
        }
        known = good;
        last = now;
    }
}

Variables detail::between(SpinodalState const& a, SpinodalState const& b) {
    Variables y = b.y;
    for (std::size_t i = 0; i < y.size(); ++i) y[i] -= (b.y[i] - a.y[i]) * b.C / (b.C - a.C);
    return y;
}

}  // namespace corvane
