// Starts of the complete tangent-plane test of three and more components that depend on what was
// found at the usual ones.
#include <corvane/phases/stability/stability_search.h>

#include <algorithm>
#include <cmath>

namespace corvane::inline detail {
namespace {
// Of components in a start.
constexpr double kDilute = 0.05, kAlone = 0.499;
constexpr double kNear = 1e-6;  // of such a distance, nearer to a phase than that tells
constexpr double kLowDistance = 0.5, kDissolves = 3.0, kDissolved = 0.05;  // see dissolving()
constexpr double kVeryLow = 0.3, kLateStart = 0.8;                         // see late()
constexpr double kAttracted = 0.05;  // of a pair's distance below that of its ideal mixture
}  // namespace

/// 5 % of every component beside the phase; where the distance is low for an ideal mixture
/// somewhere, mixtures of two, too. From there without substitutions, which leap over narrow minima
/// (a few per cent of a heavy component in a light one, say), and so once more from nearly pure
/// components whose distances are too high.
void StabilitySearch::beside_the_phase() {
    const int n = of_.fluid_.size();
    const std::size_t step = of_.W_.size();
    low_.assign(step, 1.0);
    high_.assign(step, 1.0);
    for (std::size_t k = 0; k < 2 * step; ++k) {
        toward(k % step, k % step, k < step ? kPure : kHalf);
        note(k % step, k % step, at_start_[k]);
    }
    for (std::size_t k = 0; k < 2 * step; ++k) dissolving(k);
    for (int k = 0; k < n && r_.stable; ++k) {
        without_liquid(k);
        if (r_.stable) late(k);
    }
    for (int k = 0; k < n; ++k) low_start(k, k, kDilute);
    if (*std::min_element(low_.begin(), low_.end()) < kLow) {
        const std::vector<double> alone = low_;
        for (int a = 0; a < n; ++a)
            for (int b = 0; b < a; ++b) {
                if (!(std::min(alone[a], alone[b]) < kLow)) continue;
                low_start(a, b, kHalf - kDilute);
                if (low_[a] < kLow && low_[b] < kLow) pair_alone(a, b);
            }
        for (int k = 0; k < n && r_.stable; ++k)
            if (high_[k] > kHigh) ends(k * step, 0);
    }
    for (; at_ < of_.starts_.size() && r_.stable; at_ += step) ends(at_, 0);
}

/// Between the starts half and nearly pure, which may lead to two phases past a third, where the
/// distance is far below an ideal mixture's (a fluid of much methane between a liquid and its
/// vapour).
void StabilitySearch::late(int k) {
    if (!(low_[k] < kVeryLow)) return;
    toward(k, k, kLateStart);
    std::vector<double> start;
    for (double w : of_.way_) start.push_back(std::log(w));
    record(of_.descend(phase_, p_, known_, start.data(), 1, first_, tpd_, r_.iterations));
}

/// At a start of low distance a component would dissolve far better than in the phase, of which
/// there is less than that takes: with more of it (octane in cold nitrogen, beside its liquid with
/// methane).
void StabilitySearch::dissolving(std::size_t start) {
    if (!(at_start_[start] < kLowDistance)) return;
    const std::size_t n = of_.W_.size(), pure = start % n;
    double const* over = &over_[start * n];
    toward(pure, pure, start < n ? kPure : kHalf);
    std::size_t best = n;
    double least = -kDissolves;
    for (std::size_t k = 0; k < n; ++k) {
        const double excess = over[k] - std::log(of_.way_[k] / phase_.x[k]);
        if (k == pure || !(excess < least)) continue;
        least = excess;
        best = k;
    }
    if (best == n || !(of_.way_[best] < kDissolved)) return;
    of_.way_[best] = std::min(of_.way_[best] * std::exp(-over[best]), kDissolved);
    double sum = 0.0;
    for (double w : of_.way_) sum += w;
    for (double w : of_.way_) of_.starts_.push_back(std::log(w / sum));
}

/// Two components that attract each other and may separate without the others: ammonia and water
/// from a wax.
void StabilitySearch::pair_alone(int a, int b) {
    toward(a, b, kAlone);
    const double ideal = 0.5 * (at_start_[a] + at_start_[b]) - std::log(2.0);
    if (!(of_.distance_at(of_.way_, phase_, p_) < ideal - kAttracted)) return;
    for (double w : of_.way_) of_.starts_.push_back(std::log(w));
}

/// Sets way_ to `part` of components a and b, which may be one, beside the phase.
void StabilitySearch::toward(int a, int b, double part) {
    const double rest = 1.0 - (a == b ? part : 2.0 * part);
    for (int k = 0; k < phase_.size(); ++k)
        of_.way_[k] = rest * phase_.x[k] + (k == a || k == b ? part : 0.0);
}

/// The distance at way_, a mixture of components a and b, over that in an ideal mixture from the
/// nearest of both phases, Σ w·ln(w/x). Between phases that are neighbours of no others it is
/// about 1.
double StabilitySearch::note(int a, int b, double distance) {
    double ideal = 1e300;
    const auto from = [&](std::vector<double> const& x) {
        double sum = 0.0;
        for (std::size_t k = 0; k < x.size(); ++k)
            if (of_.way_[k] > 0.0) sum += of_.way_[k] * std::log(of_.way_[k] / x[k]);
        ideal = std::min(ideal, sum);
    };
    from(phase_.x);
    if (known_) from(known_->x);
    const double part = ideal > kNear && std::isfinite(distance) ? distance / ideal : 1.0;
    for (int k : {a, b}) {
        low_[k] = std::min(low_[k], part);
        high_[k] = std::max(high_[k], part);
    }
    return part;
}

/// Adds a start with `part` of components a and b beside the phase if the distance is low there.
void StabilitySearch::low_start(int a, int b, double part) {
    toward(a, b, part);
    const double d = of_.distance_at(of_.way_, phase_, p_);
    if (!std::isfinite(d) || !(note(a, b, d) < kLow)) return;
    for (double w : of_.way_) of_.starts_.push_back(std::log(w));
}

}  // namespace corvane::inline detail
