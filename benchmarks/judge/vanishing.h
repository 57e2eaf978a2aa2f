// Does a phase vanish where the solver says that no such boundary is? Flashes along p (or T) show it:
// another road, though of the same library. For three components and more.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>
#include <vector>

namespace judge {

class Vanishing {
  public:
    Vanishing(ModelN const& m, bool at_T, double value, Vector<double> const& z)
        : m_(m), at_T_(at_T), value_(value), z_(z) {}

    /// p (or T) in [lo, hi] at which the lightest phase vanishes (bubble), or the heavier one of two
    /// (dew); none among so many equal steps of the logarithm that end in different numbers of phases.
    std::optional<double> look(corvane::Saturated kind, double lo, double hi, int steps) const {
        Phases last;
        double from = 0;
        for (int k = 0; k <= steps; ++k) {
            const double s = std::log(lo) + (std::log(hi) - std::log(lo)) * k / steps;
            const Phases here = flash(s);
            if (here.empty()) continue;
            if (!last.empty() && here.size() != last.size())
                if (const auto at = between(kind, from, last, s, here)) return at;
            last = here;
            from = s;
        }
        return {};
    }

  private:
    struct Phase {
        double rho, mass;  // mol and g/cm³
        std::vector<double> x;
    };
    using Phases = std::vector<Phase>;

    Phases flash(double s) const {
        Phases all;
        try {
            const auto q = at_T_ ? corvane::flash_pT(m_, std::exp(s), value_, z_)
                                 : corvane::flash_pT(m_, value_, std::exp(s), z_);
            for (auto const& record : q.phases) {
                all.push_back({record.rho, 0, {}});
                for (int i = 0; i < z_.size(); ++i) {
                    all.back().x.push_back(record.x[i]);
                    all.back().mass += record.x[i] * m_.mdl1[i]->M() * record.rho;
                }
            }
        } catch (corvane::EquilibriumFailure const&) {
        } catch (ThException const&) {
        }
        return all;
    }
    static double unlike(Phase const& a, Phase const& b) {
        double d = std::fabs(std::log(a.rho / b.rho));
        for (std::size_t i = 0; i < a.x.size(); ++i) d += std::fabs(a.x[i] - b.x[i]);
        return d;
    }
    /// Halves the step; of one phase more on one side, the one that none on the other continues.
    std::optional<double> between(corvane::Saturated kind, double a, Phases at_a, double b,
                                  Phases at_b) const {
        for (int k = 0; k < 33; ++k) {
            const double mid = 0.5 * (a + b);
            const Phases here = flash(mid);
            if (here.empty()) return {};
            const bool left = here.size() == at_a.size();
            (left ? a : b) = mid;
            (left ? at_a : at_b) = here;
        }
        Phases const &more = at_a.size() > at_b.size() ? at_a : at_b,
                     &fewer = at_a.size() > at_b.size() ? at_b : at_a;
        if (more.size() != fewer.size() + 1) return {};
        std::vector<std::size_t> order(more.size());
        std::iota(order.begin(), order.end(), 0u);
        double least = 1e300;
        std::size_t gone = 0;
        do {
            double sum = 0;
            for (std::size_t k = 0; k < fewer.size(); ++k) sum += unlike(more[order[k]], fewer[k]);
            if (sum < least) gone = order.back();
            least = std::min(least, sum);
        } while (std::next_permutation(order.begin(), order.end()));
        double alike = 1e300;
        bool lightest = true;
        for (std::size_t k = 0; k < more.size(); ++k) {
            if (k == gone) continue;
            alike = std::min(alike, unlike(more[k], more[gone]));
            lightest = lightest && more[gone].mass < more[k].mass;
        }
        if (alike < kAlike) return {};
        if (kind == corvane::Saturated::bubble ? !lightest : lightest || more.size() > 2) return {};
        return std::exp(0.5 * (a + b));
    }

    static constexpr double kAlike = 1e-3;  // phases that flashes next to a critical point take for one
    ModelN const& m_;
    bool at_T_;
    double value_;
    Vector<double> const& z_;
};

}  // namespace judge
