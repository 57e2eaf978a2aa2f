// The tangent-plane test from its starts on; one descent is in stability.cpp.
#include <corvane/core/constants.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/phases/stability/stability_line.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kSubstitutions = 3, kHidden = 40;
constexpr double kPurest = 1e-12;  // of the other components in one that is as good as pure
constexpr double kAlike = 1e-3;    // Σ|Δx| of minima that are one
// Of components in a start.
constexpr double kPure = 0.998, kHalf = 0.5, kDilute = 0.05, kAlone = 0.499;
constexpr double kLow = 0.6, kHigh = 1.1;  // of a distance over an ideal mixture's, see note()
constexpr double kNear = 1e-6;             // of such a distance, nearer to a phase than that tells
constexpr double kOther = 1e-3;            // of the density: another root
constexpr double kLate = 0.9;              // of a way to a pure component that has no density
constexpr double kLowDistance = 0.5, kDissolves = 3.0, kDissolved = 0.05;  // see dissolving()
constexpr double kVeryLow = 0.3, kLateStart = 0.8;                         // see late()
constexpr double kCondensed = -2.0;   // of ln(psat/p), below which a gas is out of place
constexpr double kSubcritical = 0.8;  // of the critical temperature, where liquids are dense
constexpr double kGas = 1.0;          // of the critical density, above any vapour's there
constexpr double kMixed[] = {0.95, 0.9, 0.85, 0.8,  0.75,
                             0.7,  0.6, 0.5,  0.35, 0.2};  // see without_liquid()
constexpr double kShared[] = {0.98, 0.95, 0.9, 0.75, 0.5, 0.25};  // likewise, of the rest
constexpr int kEdge = 10;         // bisections of the part up to which there are densities
constexpr double kUntold = 0.05;  // of the least distance of all these mixtures
constexpr double kAttracted = 0.05;  // of a pair's distance below that of its ideal mixture

/// Adds x unless there is one like it.
void add_apart(std::vector<std::vector<double>>& all, std::vector<double> const& x) {
    for (auto const& other : all) {
        double d = 0.0;
        for (std::size_t k = 0; k < x.size(); ++k) d += std::fabs(x[k] - other[k]);
        if (d < kAlike) return;
    }
    all.push_back(x);
}
}  // namespace

/// One test and what it has found so far. Parts of it are false where it may end.
class Stability::Search {
  public:
    Search(Stability& of, PhaseState const& phase, double p, PhaseState const* known, bool first)
        : of_(of),
          phase_(phase),
          known_(known),
          p_(p),
          first_(first),
          line_(of.fluid_, phase, p, of.s_, of.way_) {}
    StabilityResult run();

  private:
    bool itself();
    void binary();
    bool below(std::vector<double> const& x, double limit);
    bool nearly_pure();
    void from_starts();
    void beside_the_phase();
    void toward(int a, int b, double part);
    double note(int a, int b, double distance);
    void low_start(int a, int b, double part);
    void between_minima();
    void along_lines();
    void to_pure(PhaseState const& from, int pure);
    void on_line(DistanceLine::Node const& a, DistanceLine::Node const& m,
                 DistanceLine::Node const& b);
    void late(int k);
    void without_liquid(int k);
    void dissolving(std::size_t start);
    void pair_alone(int a, int b);
    bool ends(std::size_t start, int substitutions = kSubstitutions);
    bool record(End end);
    void take(double tpd);

    Stability& of_;
    PhaseState const &phase_, *known_;
    double p_;
    bool first_;
    StabilityResult r_;
    double best_ = 1e300;
    double tpd_ = 0.0;                // of the last descent
    std::size_t at_ = 0;              // in starts_: no descent began from there on
    std::vector<double> at_start_;    // distances there
    std::vector<double> rho_, over_;  // densities and potentials over those of the phase there
    std::vector<double> low_, high_;  // of each component: range of note() of mixtures with it
    std::vector<std::vector<double>> minima_;
    DistanceLine line_;
};

StabilityResult Stability::test(PhaseState const& phase, double p, PhaseState const* known,
                                bool first, bool whole) {
    if (fluid_.size() == 2 && kind == StabilityTest::complete)
        return complete(phase, p, known, first, whole);
    return Search(*this, phase, p, known, first).run();
}

StabilityResult Stability::Search::run() {
    const int n = of_.fluid_.size();
    of_.steep_ = n > 2 && of_.is_steep(phase_);
    of_.bowls_.clear();
    if (!itself()) return r_;
    if (n == 2) binary();
    if (n > 2) {
        if (!nearly_pure()) return r_;
        from_starts();
        if (r_.stable && of_.hidden_root(phase_, p_, tpd_)) {
            take(tpd_);
            r_.stable = false;
        }
    }
    if (r_.other) r_.tpd = std::min(r_.tpd == 0.0 ? best_ : r_.tpd, best_);
    return r_;
}

void Stability::Search::take(double tpd) {
    best_ = tpd;
    r_.other = true;
    r_.trial = {tpd, of_.s_.rho, of_.s_.x};
}

/// Whether the phase is a minimum in its surroundings, and its other density root.
bool Stability::Search::itself() {
    if (!of_.locally_stable(phase_)) {
        r_.stable = false;  // no trial needed, but one is looked for
        if (first_) return false;
    }
    if (of_.fluid_.evaluate_at(of_.s_, p_, phase_.T, phase_.x, Root::stable, 0) &&
        std::fabs(of_.s_.rho / phase_.rho - 1) > kOther) {
        const double d = distance(of_.s_, phase_);
        if (d < -Certificate::tpd_tolerance) {
            take(d);
            r_.stable = false;
            r_.tpd = d;
            if (first_) return false;
        }
        r_.tpd = std::min(r_.tpd, d);
    }
    return true;
}

/// True where the test may end.
bool Stability::Search::record(End end) {
    if (end == End::failed) ++r_.unconverged;
    if (end == End::trivial) r_.tpd = std::min(r_.tpd, tpd_);
    if (end != End::stationary && end != End::negative) return false;
    if (tpd_ < best_) take(tpd_);
    if (end == End::negative) r_.stable = false;
    return end == End::negative && first_;
}

/// The quick test.
void Stability::Search::binary() {
    r_.unconverged += of_.scan_binary(phase_, p_);
    for (Bracket const& b : of_.brackets_)
        if (record(of_.descend(phase_, p_, known_, b, first_, tpd_, r_.iterations))) break;
}

/// Is the distance at x below the limit? Then s_ is there.
bool Stability::Search::below(std::vector<double> const& x, double limit) {
    return of_.distance_at(x, phase_, p_) < limit &&
           of_.fluid_.evaluate_at(of_.s_, p_, phase_.T, x, Root::stable, 0) &&
           distance(of_.s_, phase_) < limit;
}

/// Components as good as pure: one far below its solubility elsewhere (mercury in cold methane)
/// may separate without taking any of the others along. From starts with two parts in a
/// thousand of these no substitution leads there, as their potentials are out of all bounds.
bool Stability::Search::nearly_pure() {
    const int n = of_.fluid_.size();
    for (int pure = 0; pure < n; ++pure) {
        for (int k = 0; k < n; ++k)
            of_.step_[k] = k == pure ? 1.0 - kPurest * (1.0 - phase_.x[k]) : kPurest * phase_.x[k];
        if (!below(of_.step_, -Certificate::tpd_tolerance)) continue;
        const double d = distance(of_.s_, phase_);
        r_.stable = false;
        if (d < best_) take(d);
        r_.tpd = best_;
        if (first_) return false;
    }
    return true;
}

/// A descent; true where the test may end.
bool Stability::Search::ends(std::size_t start, int substitutions) {
    const End end = of_.descend(phase_, p_, known_, &of_.starts_[start], substitutions, first_,
                                tpd_, r_.iterations);
    if (end == End::stationary && of_.kind == StabilityTest::complete) add_apart(minima_, of_.s_.x);
    return record(end);
}

void Stability::Search::from_starts() {
    of_.many_starts(phase_, p_);
    const std::size_t step = of_.W_.size();
    for (; at_ < of_.starts_.size() && !ends(at_); at_ += step) {
        at_start_.push_back(of_.start_);
        rho_.push_back(of_.start_rho_);
        over_.insert(over_.end(), of_.over_.begin(), of_.over_.end());
    }
    if (r_.stable && of_.kind == StabilityTest::complete) beside_the_phase();
    if (r_.stable && !minima_.empty()) between_minima();
    if (r_.stable && of_.kind == StabilityTest::complete) along_lines();
}

/// A liquid rich in what is a gas when pure, say: a narrow minimum between a start that leads to
/// the phase and one that leads to its vapour. It shows on the straight ways between the phases,
/// from the phase to pure components of distances that are not those of an ideal mixture, and from
/// the known one to all.
void Stability::Search::along_lines() {
    if (known_) {
        line_.set(phase_.x, known_->x.data(), -1);
        DistanceLine::Node m;
        if (line_.evaluate(kHalf, m) || line_.negative)
            on_line(line_.zero(0.0, phase_.rho), m, line_.zero(1.0, known_->rho));
    }
    for (int k = 0; k < phase_.size() && r_.stable; ++k) {
        if (low_[k] < kLow || high_[k] > kHigh) to_pure(phase_, k);
        if (known_ && r_.stable) to_pure(*known_, k);
    }
}
/// From a phase to a pure component, near which and halfway starts have been.
void Stability::Search::to_pure(PhaseState const& from, int pure) {
    const std::size_t n = of_.W_.size(), nearly = pure, half = n + nearly;
    const bool own = &from == &phase_;
    line_.set(from.x, nullptr, pure);
    std::vector<double>& over = of_.step_;
    std::copy_n(&over_[nearly * n], n, over.begin());
    for (std::size_t k = 0; !own && k < n; ++k)  // traces of another phase, by their ideal part
        if (k != nearly) over[k] += std::log(from.x[k] / phase_.x[k]);
    DistanceLine::Node m, b = line_.node(kPure, rho_[nearly], over.data());
    if (own) m = line_.node(kHalf, rho_[half], &over_[half * n]);
    const bool found = (std::isfinite(b.all.slope) || line_.evaluate(kLate, b)) &&
                       ((own && std::isfinite(m.all.slope)) || line_.evaluate(kHalf, m));
    if (found || line_.negative) on_line(line_.zero(0.0, from.rho), m, b);
}
/// A negative distance is proof enough; where there are minima, descents.
void Stability::Search::on_line(DistanceLine::Node const& a, DistanceLine::Node const& m,
                                DistanceLine::Node const& b) {
    if (!line_.negative) line_.search(a, m, b);
    if (line_.negative) {
        r_.stable = false;
        const double d = distance(of_.s_, phase_);
        if (d < best_) take(d);
        return;
    }
    std::vector<double> start(phase_.x.size());
    for (double s : line_.minima) {
        for (int k = 0; k < phase_.size(); ++k) start[k] = std::log(line_.fraction(s, k));
        const End end =
            of_.descend(phase_, p_, known_, start.data(), 0, first_, tpd_, r_.iterations);
        if (record(end) || !r_.stable) return;
    }
}

/// 5 % of every component beside the phase; where the distance is low for an ideal mixture
/// somewhere, mixtures of two, too. From there without substitutions, which leap over narrow minima
/// (a few per cent of a heavy component in a light one, say), and so once more from nearly pure
/// components whose distances are too high.
void Stability::Search::beside_the_phase() {
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
        for (int a = 0; a < n; ++a)
            for (int b = 0; b < a; ++b) {
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
void Stability::Search::late(int k) {
    if (!(low_[k] < kVeryLow)) return;
    toward(k, k, kLateStart);
    std::vector<double> start;
    for (double w : of_.way_) start.push_back(std::log(w));
    record(of_.descend(phase_, p_, known_, start.data(), 1, first_, tpd_, r_.iterations));
}

/// Below its critical temperature and far above its saturation pressure a component has no density,
/// or that of a gas alone: its equation, far below the range it was made for, has no liquid, while
/// mixtures with less of it may have one (water in multi-fluid mixtures below 230 K, a wax in cold
/// nitrogen).
void Stability::Search::without_liquid(int k) {
    const double saturation = of_.fluid_.wilson(k, phase_.T);  // its logarithm
    const bool seen = std::isfinite(at_start_[k]);
    if (seen && (!(phase_.T < kSubcritical * of_.fluid_.pure(k).Tcrit()) ||
                 !(saturation - std::log(p_) < kCondensed) ||
                 !(rho_[k] * of_.fluid_.pure(k).vcrit() < kGas)))
        return;
    const std::size_t n = of_.W_.size(), pure = k;
    double nearest = 1e300;
    for (std::size_t with = 0; with < n; ++with) {  // k itself: with the phase
        std::vector<double> lowest;
        double least = 1e300;
        const auto look = [&](double part, double share) {
            for (std::size_t i = 0; i < n; ++i) {
                const double other = i == with ? share : share * kPurest;
                of_.way_[i] = (i == pure ? part : (1.0 - part) * other) +
                              (1.0 - part) * (1.0 - share) * phase_.x[i];
            }
            const double d = of_.distance_at(of_.way_, phase_, p_);
            if (d < least) {
                least = d;
                lowest = of_.way_;
            }
            return std::isfinite(d);
        };
        // Where densities end the distance may still fall: it is looked at next to that edge.
        const auto along = [&](double share) {
            double without = 1.0, last = 0.0;
            for (double part : kMixed) {
                if (!look(part, share))
                    without = part;
                else if (last == 0.0)
                    last = part;
            }
            for (int it = 0; !seen && last > 0.0 && it < kEdge; ++it) {
                const double part = 0.5 * (last + without);
                (look(part, share) ? last : without) = part;
            }
        };
        if (with == pure) {
            along(0.0);
        } else {
            along(1.0);
            for (double share : kShared)
                if (!seen) along(share);
        }
        if (!seen) nearest = std::min(nearest, least);
        if (lowest.empty()) continue;
        if (below(lowest, -Certificate::tpd_tolerance)) {  // a descent might leave for no density
            r_.stable = false;
            take(distance(of_.s_, phase_));
            return;
        }
        for (double& w : lowest) w = std::log(w);
        if (record(of_.descend(phase_, p_, known_, lowest.data(), 0, first_, tpd_, r_.iterations)))
            return;
        if (!r_.stable) return;
    }
    if (nearest < kUntold) {  // the lowest may lie between those that were looked at
        ++r_.unconverged;
        ++r_.unseen;
        return;
    }
    // What is known of its liquid is Wilson's estimate of the fugacity.
    if (!seen || phase_.m[k] + std::log(R * phase_.T) < saturation + kCondensed) return;
    ++r_.unconverged;
    ++r_.unseen;
}

/// At a start of low distance a component would dissolve far better than in the phase, of which
/// there is less than that takes: with more of it (octane in cold nitrogen, beside its liquid with
/// methane).
void Stability::Search::dissolving(std::size_t start) {
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
void Stability::Search::pair_alone(int a, int b) {
    toward(a, b, kAlone);
    const double ideal = 0.5 * (at_start_[a] + at_start_[b]) - std::log(2.0);
    if (!(of_.distance_at(of_.way_, phase_, p_) < ideal - kAttracted)) return;
    for (double w : of_.way_) of_.starts_.push_back(std::log(w));
}

/// Sets way_ to `part` of components a and b, which may be one, beside the phase.
void Stability::Search::toward(int a, int b, double part) {
    const double rest = 1.0 - (a == b ? part : 2.0 * part);
    for (int k = 0; k < phase_.size(); ++k)
        of_.way_[k] = rest * phase_.x[k] + (k == a || k == b ? part : 0.0);
}

/// The distance at way_, a mixture of components a and b, over that in an ideal mixture from the
/// nearest of both phases, Σ w·ln(w/x). Between phases that are neighbours of no others it is
/// about 1.
double Stability::Search::note(int a, int b, double distance) {
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
void Stability::Search::low_start(int a, int b, double part) {
    toward(a, b, part);
    const double d = of_.distance_at(of_.way_, phase_, p_);
    if (!std::isfinite(d) || !(note(a, b, d) < kLow)) return;
    for (double w : of_.way_) of_.starts_.push_back(std::log(w));
}

/// From the middles between all minima, the phase and the known one.
void Stability::Search::between_minima() {
    const std::size_t step = of_.W_.size();
    minima_.push_back(phase_.x);
    if (known_) minima_.push_back(known_->x);
    for (std::size_t a = 0; a < minima_.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            for (std::size_t k = 0; k < step; ++k)
                of_.starts_.push_back(std::log(0.5 * (minima_[a][k] + minima_[b][k])));
    for (; at_ < of_.starts_.size(); at_ += step)
        if (ends(at_)) break;
}

void Stability::many_starts(PhaseState const& phase, double p) {
    const int n = fluid_.size();
    starts_.clear();
    for (int start = 0; start < 2 * n; ++start) {  // nearly pure; half pure
        const double pure = start < n ? kPure : kHalf;
        for (int k = 0; k < n; ++k)
            starts_.push_back(std::log((1.0 - pure) * phase.x[k] + (k == start % n ? pure : 0.0)));
    }
    for (double sign : {1.0, -1.0})
        for (int k = 0; k < n; ++k)
            starts_.push_back(std::log(phase.x[k]) +
                              sign * (fluid_.wilson(k, phase.T) - std::log(p)));
}

std::vector<TrialPhase> Stability::minima(PhaseState const& plane, double p,
                                          std::vector<std::vector<double>> const& from) {
    std::vector<TrialPhase> found;
    steep_ = false;
    many_starts(plane, p);
    std::vector<double> starts = starts_;
    const std::size_t own = starts.size();
    for (std::vector<double> const& x : from)
        for (double xi : x) starts.push_back(std::log(xi));
    for (std::size_t at = 0; at < starts.size(); at += W_.size()) {
        double tpd = 0.0;
        int iterations = 0;
        const End end = descend(plane, p, nullptr, &starts[at], at < own ? kSubstitutions : 0,
                                false, tpd, iterations);
        if (end == End::stationary || end == End::negative) found.push_back({tpd, s_.rho, s_.x});
    }
    double tpd = 0.0;
    if (hidden_root(plane, p, tpd)) found.push_back({tpd, s_.rho, s_.x});
    return found;
}

StabilityResult Stability::lowest_start(PhaseState const& phase, double p) {
    StabilityResult r;
    many_starts(phase, p);
    steep_ = false;
    const std::size_t n = W_.size();
    std::size_t lowest = 0;
    std::vector<double> w(n);
    double least = 0.0;
    for (std::size_t at = 0; at < 2 * n * n; at += n) {
        for (std::size_t k = 0; k < n; ++k) w[k] = std::exp(starts_[at + k]);
        const double d = distance_at(w, phase, p);
        if (!(d < least)) continue;
        least = d;
        lowest = at;
    }
    double tpd = 0.0;
    if (least < -Certificate::tpd_tolerance &&
        descend(phase, p, nullptr, &starts_[lowest], kSubstitutions, false, tpd, r.iterations) ==
            End::negative) {
        r.stable = false;
        r.other = true;
        r.tpd = tpd;
        r.trial = {tpd, s_.rho, s_.x};
    }
    return r;
}

/// Nearly pure trials by substitution along the density root of higher Gibbs energy, which the
/// other starts leave: there a liquid whose light component would be a gas when pure stays hidden,
/// or a gas likewise. True with s_ and tpd of a trial below the tangent plane.
bool Stability::hidden_root(PhaseState const& phase, double p, double& tpd) {
    const int n = fluid_.size();
    std::vector<double>& w = step_;
    for (int pure = 0; pure < n; ++pure) {
        for (int i = 0; i < n; ++i) w[i] = 0.002 * phase.x[i] + (i == pure ? 0.998 : 0.0);
        double rho[2], gibbs[2], last = 1e300;
        if (fluid_.densities(p, phase.T, w, rho, gibbs) < 2) continue;
        const int other = gibbs[0] > gibbs[1] ? 0 : 1;
        const Root root = other == 0 ? Root::dense : Root::dilute;
        for (int it = 0; it < kHidden; ++it) {
            for (int i = 0; it == 0 && i < n; ++i) s_.rho_i[i] = w[i] * rho[other];
            if (!(it == 0 ? fluid_.evaluate(s_, phase.T, 0)
                          : fluid_.evaluate_at(s_, p, phase.T, w, root, 0)))
                break;
            tpd = distance(s_, phase);
            if (tpd < 10 * -Certificate::tpd_tolerance) return true;
            if (steep_ && tpd >= 0.0 && in_bowl(phase)) break;
            if (std::fabs(tpd - last) < 1e-6) break;  // stationary, and not below
            last = tpd;
            double sum = 0.0;
            for (int i = 0; i < n; ++i) sum += w[i] = std::exp(phase.m[i] - s_.m[i]) * s_.x[i];
            for (double& wi : w) wi /= sum;
        }
    }
    return false;
}

}  // namespace corvane
