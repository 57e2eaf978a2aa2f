#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/critical/critical_certificate.h>
#include <corvane/phases/critical/spinodal.h>
#include <corvane/phases/report/words.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane {
namespace {
using Variables = CriticalConditions::Variables;

constexpr int kNewton = 25;
constexpr double kSame = 1e-6;  // in ln rho and ln T

class Search {
  public:
    Search(ModelN const& model, Vector<double> const& z, CriticalOptions const& o)
        : fluid_(model, z),
          o_(o),
          conditions_(fluid_),
          spinodal_(fluid_, conditions_),
          certifier_(fluid_, conditions_) {}

    CriticalPoint one() {
        std::optional<CriticalPoint> found;
        conditions_.updates = true;
        if (o_.start && o_.start->rho > 0.0 && o_.start->T > 0.0)
            found = solve({std::log(o_.start->rho), std::log(o_.start->T)});
        if (found && found->stable) return *found;
        Variables y{spinodal_.mean(fluid_.z()), 0.0};
        if (fluid_.size() == 1) {
            y[1] = std::log(fluid_.pure(0).Tcrit());
            found = solve(y);
        } else if (spinodal_.hottest(y, 2)) {
            spinodal_.nearer(y);
            found = solve(y);
        }
        if (found && found->stable) return *found;
        conditions_.updates = false;
        auto points = all();
        for (CriticalPoint const& q : points)
            if (q.stable) return q;
        if (o_.unstable && !points.empty()) return points.front();
        std::string advice = "none between 0.3 and 4.4 of the mean critical density";
        if (!points.empty()) {
            CriticalPoint const& q = points.front();
            advice = std::to_string(points.size()) + " unstable, the first at " +
                     quantity("T", q.T, "K") + ", " + quantity("p", q.p, "MPa");
        }
        throw EquilibriumFailure(EquilibriumFailure::Kind::no_solution,
                                 composition_text(fluid_.expand(fluid_.z()), 6), "critical_point",
                                 conditions_.iterations, std::nan(""), advice);
    }

    std::vector<CriticalPoint> all() {
        std::vector<CriticalPoint> points;
        std::vector<SpinodalState> last, now;
        for (int k = 0; k < Spinodal::kDensities; ++k, std::swap(last, now)) {
            spinodal_.column({spinodal_.density(fluid_.z(), k), 0.0}, 2, last, now);
            for (std::size_t j = 0; k > 0 && j < now.size(); ++j) {
                const bool extra = j >= last.size();  // the first of a branch
                if (!extra && now[j].C * last[j].C > 0.0) continue;
                const auto found = solve(extra ? now[j].y : between(last[j], now[j]));
                const auto same = [&](CriticalPoint const& other) {
                    return std::fabs(std::log(found->rho / other.rho)) < kSame &&
                           std::fabs(std::log(found->T / other.T)) < kSame;
                };
                if (found && std::none_of(points.begin(), points.end(), same))
                    points.push_back(*found);
            }
        }
        std::sort(points.begin(), points.end(),
                  [](CriticalPoint const& a, CriticalPoint const& b) { return a.rho < b.rho; });
        return points;
    }

  private:
    /// The critical point near y with its certificate, at positive pressure.
    std::optional<CriticalPoint> solve(Variables y) {
        CriticalPoint q;
        if (!conditions_.solve(y, 2, nullptr, 0.0, kNewton) ||
            !certifier_.certify(y, 2, !o_.unstable, o_.validity, q))
            return {};
        q.certificate.evaluations = fluid_.evaluations;
        return q;
    }

    const FluidModel fluid_;
    const CriticalOptions o_;
    CriticalConditions conditions_;
    Spinodal spinodal_;
    CriticalCertifier certifier_;
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
