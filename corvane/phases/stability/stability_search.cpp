// The tangent-plane test from its starts on; one descent is in stability.cpp.
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability_search.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kHidden = 40;
constexpr double kAlike = 1e-3;  // Σ|Δx| of minima that are one
constexpr double kOther = 1e-3;  // of the density: another root
constexpr double kLate = 0.9;    // of a way to a pure component that has no density

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

StabilityResult Stability::test(PhaseState const& phase, double p, PhaseState const* known,
                                bool first, bool whole) {
    if (fluid_.size() == 2 && kind == StabilityTest::complete)
        return complete(phase, p, known, first, whole);
    return StabilitySearch(*this, phase, p, known, first).run();
}

StabilityResult StabilitySearch::run() {
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

void StabilitySearch::take(double tpd) {
    best_ = tpd;
    r_.other = true;
    r_.trial = {tpd, of_.s_.rho, of_.s_.x};
}

/// Whether the phase is a minimum in its surroundings, and its other density root.
bool StabilitySearch::itself() {
    if (!of_.locally_stable(phase_)) {
        r_.stable = false;  // no trial needed, but one is looked for
        if (first_) return false;
    }
    if (of_.fluid_.evaluate_at(of_.s_, p_, phase_.T, phase_.x, Root::stable, 0) &&
        std::fabs(of_.s_.rho / phase_.rho - 1) > kOther) {
        const double d = Stability::distance(of_.s_, phase_);
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
bool StabilitySearch::record(End end) {
    if (end == End::failed) ++r_.unconverged;
    if (end == End::trivial) r_.tpd = std::min(r_.tpd, tpd_);
    if (end != End::stationary && end != End::negative) return false;
    if (tpd_ < best_) take(tpd_);
    if (end == End::negative) r_.stable = false;
    return end == End::negative && first_;
}

/// The quick test.
void StabilitySearch::binary() {
    r_.unconverged += of_.scan_binary(phase_, p_);
    for (Stability::Bracket const& b : of_.brackets_)
        if (record(of_.descend(phase_, p_, known_, b, first_, tpd_, r_.iterations))) break;
}

/// Is the distance at x below the limit? Then s_ is there.
bool StabilitySearch::below(std::vector<double> const& x, double limit) {
    return of_.distance_at(x, phase_, p_) < limit &&
           of_.fluid_.evaluate_at(of_.s_, p_, phase_.T, x, Root::stable, 0) &&
           Stability::distance(of_.s_, phase_) < limit;
}

/// Components as good as pure: one far below its solubility elsewhere (mercury in cold methane)
/// may separate without taking any of the others along. From starts with two parts in a
/// thousand of these no substitution leads there, as their potentials are out of all bounds.
bool StabilitySearch::nearly_pure() {
    const int n = of_.fluid_.size();
    for (int pure = 0; pure < n; ++pure) {
        for (int k = 0; k < n; ++k)
            of_.step_[k] = k == pure ? 1.0 - kPurest * (1.0 - phase_.x[k]) : kPurest * phase_.x[k];
        if (!below(of_.step_, -Certificate::tpd_tolerance)) continue;
        const double d = Stability::distance(of_.s_, phase_);
        r_.stable = false;
        if (d < best_) take(d);
        r_.tpd = best_;
        if (first_) return false;
    }
    return true;
}

/// A descent; true where the test may end.
bool StabilitySearch::ends(std::size_t start, int substitutions) {
    const End end = of_.descend(phase_, p_, known_, &of_.starts_[start], substitutions, first_,
                                tpd_, r_.iterations);
    if (end == End::stationary && of_.kind == StabilityTest::complete) add_apart(minima_, of_.s_.x);
    return record(end);
}

void StabilitySearch::from_starts() {
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
void StabilitySearch::along_lines() {
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
void StabilitySearch::to_pure(PhaseState const& from, int pure) {
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
void StabilitySearch::on_line(DistanceLine::Node const& a, DistanceLine::Node const& m,
                              DistanceLine::Node const& b) {
    if (!line_.negative) line_.search(a, m, b);
    if (line_.negative) {
        r_.stable = false;
        const double d = Stability::distance(of_.s_, phase_);
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

/// From the middles between all minima, the phase and the known one.
void StabilitySearch::between_minima() {
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
        const double pure = start < n ? StabilitySearch::kPure : StabilitySearch::kHalf;
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
        const End end =
            descend(plane, p, nullptr, &starts[at], at < own ? StabilitySearch::kSubstitutions : 0,
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
        descend(phase, p, nullptr, &starts_[lowest], StabilitySearch::kSubstitutions, false, tpd,
                r.iterations) == End::negative) {
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
