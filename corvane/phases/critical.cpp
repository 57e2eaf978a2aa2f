#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/critical.h>
#include <corvane/phases/critical_conditions.h>
#include <corvane/phases/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

namespace corvane {
namespace {
using Variables = CriticalConditions::Variables;

constexpr int kNewton = 25, kDensities = 22;
constexpr double kFirst = 0.3, kRatio = 1.12;  // densities of the search, of the mean critical one
constexpr double kHot = 2.0, kCold = 0.25, kCooler = 0.92;
constexpr double kSame = 1e-6;      // in ln rho and ln T
constexpr double kQuartic = -1e-6;  // of the fourth-order term: its accuracy
constexpr double kSpinodal = 1e-3;  // of ln T: accuracy that a start needs

class Search {
  public:
    Search(ModelN const& model, Vector<double> const& z, CriticalOptions const& o)
        : fluid_(model, z), o_(o), conditions_(fluid_), stability_(fluid_) {
        double v = 0.0;
        cold_ = 1e300;
        for (int k = 0; k < fluid_.size(); ++k) {
            Model1 const& c = fluid_.pure(k);
            if (!(c.Tcrit() > 0.0) || !(c.vcrit() > 0.0)) throw ThException(th_out_of_range);
            v += fluid_.z()[k] * c.vcrit();
            hot_ = std::max(hot_, c.Tcrit());
            cold_ = std::min(cold_, c.Tcrit());
        }
        mean_ = -std::log(v);
        hot_ = std::log(kHot * hot_);
        cold_ = std::log(kCold * cold_);
    }

    CriticalPoint one() {
        std::optional<CriticalPoint> found;
        if (o_.start && o_.start->rho > 0.0 && o_.start->T > 0.0)
            found = solve({std::log(o_.start->rho), std::log(o_.start->T)});
        if (found && found->stable) return *found;
        Variables y{mean_, 0.0};
        if (fluid_.size() == 1) {
            y[1] = std::log(fluid_.pure(0).Tcrit());
            found = solve(y);
        } else if (spinodal(y)) {
            found = solve(y);
        }
        if (found && found->stable) return *found;
        auto points = all();
        for (CriticalPoint const& q : points)
            if (q.stable) return q;
        if (o_.unstable && !points.empty()) return points.front();
        std::string advice = "none between 0.3 and 3.6 of the mean critical density";
        if (!points.empty()) {
            char s[120];
            CriticalPoint const& q = points.front();
            std::snprintf(s, sizeof s, "%d unstable, the first at T = %.6g K, p = %.6g MPa",
                          static_cast<int>(points.size()), q.T, q.p);
            advice = s;
        }
        std::string state = "z =";
        const Vector<double> z = fluid_.expand(fluid_.z());
        for (int i = 0; i < z.size(); ++i) {
            char s[30];
            std::snprintf(s, sizeof s, " %g", z[i]);
            state += s;
        }
        throw EquilibriumFailure(EquilibriumFailure::Kind::no_solution, state, "critical_point",
                                 conditions_.iterations, std::nan(""), advice);
    }

    std::vector<CriticalPoint> all() {
        std::vector<CriticalPoint> points;
        std::vector<Node> last, now;
        for (int k = 0; k < kDensities; ++k, std::swap(last, now)) {
            column(mean_ + std::log(kFirst) + k * std::log(kRatio), now);
            for (std::size_t j = 0; j < now.size(); ++j) {
                Node& q = now[j];
                if (j < last.size()) conditions_.u = last[j].u;
                if (!conditions_.evaluate(q.y, 2)) continue;
                q.C = conditions_.C;
                q.u = conditions_.u;
                if (k == 0 || (j < last.size() && q.C * last[j].C > 0.0)) continue;
                Variables y = q.y;  // where C vanishes; or the first of a branch
                if (j < last.size())
                    for (int i = 0; i < 2; ++i)
                        y[i] -= (y[i] - last[j].y[i]) * q.C / (q.C - last[j].C);
                const auto found = solve(y);
                const auto same = [&](CriticalPoint const& other) {
                    return std::fabs(std::log(found->rho / other.rho)) < kSame &&
                           std::fabs(std::log(found->T / other.T)) < kSame;
                };
                if (found && std::none_of(points.begin(), points.end(), same))
                    points.push_back(*found);
            }
            last.resize(now.size());
        }
        std::sort(points.begin(), points.end(),
                  [](CriticalPoint const& a, CriticalPoint const& b) { return a.rho < b.rho; });
        return points;
    }

  private:
    /// A state on the spinodal.
    struct Node {
        Variables y;
        double C = 0.0;
        std::vector<double> u;
    };

    bool lambda(Variables const& y, double& value) {
        if (!conditions_.eigen(y, 2)) return false;
        value = conditions_.lambda;
        return true;
    }
    /// λ changes its sign between ln T = a and b: to kSpinodal, by the Illinois method.
    double root(Variables y, double a, double fa, double b, double fb) {
        for (int it = 0; it < 10 && std::fabs(a - b) > kSpinodal; ++it) {
            y[1] = a + (b - a) * fa / (fa - fb);
            double f = 0.0;
            if (!lambda(y, f)) break;
            if (std::fabs(y[1] - b) < kSpinodal && f * fb > 0.0) return y[1];
            if (f * fb < 0.0) {
                a = b;
                fa = fb;
            } else {
                fa *= 0.5;
            }
            b = y[1];
            fb = f;
        }
        return b;
    }
    /// The hottest spinodal state of a density.
    bool spinodal(Variables& y) {
        double above = 0.0, below = 0.0;
        bool known = false;
        for (y[1] = hot_; y[1] > cold_; y[1] += std::log(kCooler)) {
            if (!lambda(y, below)) {
                known = false;
                continue;
            }
            if (known && above > 0.0 && below <= 0.0) {
                y[1] = root(y, y[1] - std::log(kCooler), above, y[1], below);
                return true;
            }
            known = true;
            above = below;
        }
        return false;
    }
    /// All spinodal states of a density, the hottest first.
    void column(double ln_rho, std::vector<Node>& nodes) {
        nodes.clear();
        Variables y{ln_rho, hot_};
        double last = 0.0, value = 0.0;
        for (bool known = false; y[1] > cold_; y[1] += std::log(kCooler)) {
            if (!lambda(y, value)) {
                known = false;
                continue;
            }
            if (known && last * value <= 0.0) {
                Node q{y, 0.0, {}};
                q.y[1] = root(y, y[1] - std::log(kCooler), last, y[1], value);
                nodes.push_back(q);
            }
            known = true;
            last = value;
        }
    }

    /// The critical point near y with its certificate, at positive pressure.
    std::optional<CriticalPoint> solve(Variables y) {
        double D = 0.0;
        if (!conditions_.solve(y, 2, nullptr, 0.0, kNewton)) return {};
        PhaseState phase = conditions_.s;
        phase.S = std::max(std::fabs(phase.S), 1e-290);  // of a pure fluid zero, with either sign
        if (!(phase.p > 0.0) || !conditions_.quartic(y, 2, D)) return {};
        CriticalPoint q;
        q.T = phase.T;
        q.p = phase.p;
        q.rho = phase.rho;
        q.x = fluid_.expand(fluid_.z());
        certify(fluid_, q.p, {&phase}, q.certificate);
        q.certificate.conditions = conditions_.residual();
        const StabilityResult r = stability_.test(phase, q.p, nullptr, !o_.unstable);
        q.certificate.tpd = r.stable ? std::min(0.0, r.tpd) : r.tpd;
        q.stable = r.stable && D > kQuartic;
        q.certificate.evaluations = fluid_.evaluations;
        q.certificate.flag(o_.validity, q.T, q.p, q.x);
        return q;
    }

    const FluidModel fluid_;
    const CriticalOptions o_;
    CriticalConditions conditions_;
    Stability stability_;
    double mean_ = 0.0, hot_ = 0.0, cold_ = 0.0;  // ln rho, ln T
};
}  // namespace

CriticalPoint critical_point(ModelN const& model, Vector<double> const& z,
                             CriticalOptions const& options) {
    return Search(model, z, options).one();
}
std::vector<CriticalPoint> critical_points(ModelN const& model, Vector<double> const& z,
                                           CriticalOptions const& options) {
    return Search(model, z, options).all();
}

}  // namespace corvane
