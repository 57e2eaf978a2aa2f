// Liquids of components that have none when pure, up to the edge of the compositions that have a
// density.
#include <corvane/core/constants.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability_search.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane::inline detail {
namespace {
constexpr double kCondensed = -2.0;   // of ln(psat/p), below which a gas is out of place
constexpr double kSubcritical = 0.8;  // of the critical temperature, where liquids are dense
constexpr double kGas = 1.0;          // of the critical density, above any vapour's there
constexpr double kParts[] = {
    0.95, 0.9, 0.85, 0.8,  0.75, 0.7,  0.6,  0.5,
    0.35, 0.2, 0.1,  0.05, 0.02, 0.01, 0.005};                    // of the component, along a ray
constexpr double kShared[] = {0.98, 0.95, 0.9, 0.75, 0.5, 0.25};  // of another one where rays begin
constexpr int kBisections = 10;
constexpr int kEnds = 3;          // minimisations from where rays end
constexpr double kSimplex = 0.4;  // side of the first simplex, of ln w
constexpr double kSmall = 1e-4;   // of values in the last one
constexpr int kMoves = 25;        // of the simplex, times components
constexpr double kUntold = 0.02;  // of the least distance there
constexpr double kNone = std::numeric_limits<double>::infinity();
}  // namespace

/// The mixtures of component k, along rays to it from the phase, the known one, every other
/// component and mixtures of these with the phase. Where densities end on a ray, and the distance
/// still falls there, it is minimised within the compositions that have one by the simplex method
/// (Nelder and Mead, Comput. J. 7 (1965) 308), in the logarithms of the mole fractions over the
/// largest one.
class StabilitySearch::Edge {
  public:
    Edge(StabilitySearch& search, int k) : search_(search), k_(static_cast<std::size_t>(k)) {}
    /// True where the test may end. `all`: from mixtures of the phase with others, too.
    bool run(bool all);
    /// Least distance where densities end, of what no descent could tell more of.
    double untold = kNone;

  private:
    using Point = std::vector<double>;
    struct Place {
        double d;
        Point w;
    };
    double at(Point const& w);
    bool ray(Point const& from);
    bool lowest(Point w);
    bool from_end(Place const& end);
    Place minimise(Place const& from);

    StabilitySearch& search_;
    std::size_t k_;
    std::vector<Place> ends_;
};

double StabilitySearch::Edge::at(Point const& w) {
    const double d = search_.of_.distance_at(w, search_.phase_, search_.p_);
    return std::isfinite(d) ? d : kNone;
}

bool StabilitySearch::Edge::run(bool all) {
    const std::size_t n = search_.of_.W_.size();
    Point const& x = search_.phase_.x;
    if (ray(x) || (search_.known_ && ray(search_.known_->x))) return true;
    for (std::size_t with = 0; with < n; ++with) {
        if (with == k_) continue;
        Point from(n);
        const auto mixed = [&](double share) {
            for (std::size_t i = 0; i < n; ++i)
                from[i] = (1.0 - share) * x[i] + share * (i == with ? 1.0 : kPurest);
            return ray(from);
        };
        if (mixed(1.0)) return true;
        for (double share : kShared)
            if (all && mixed(share)) return true;
    }
    std::sort(ends_.begin(), ends_.end(), [](Place const& a, Place const& b) { return a.d < b.d; });
    if (ends_.size() > kEnds) ends_.resize(kEnds);
    return std::any_of(ends_.begin(), ends_.end(), [&](Place const& e) { return from_end(e); });
}

bool StabilitySearch::Edge::ray(Point const& from) {
    const std::size_t n = from.size();
    Point w(n), best;
    double least = kNone, without = 1.0, last = 0.0, at_last = kNone, before = kNone;
    const auto look = [&](double part) {
        for (std::size_t i = 0; i < n; ++i) w[i] = (1.0 - part) * from[i] + (i == k_ ? part : 0.0);
        const double d = at(w);
        if (d < least) {
            least = d;
            best = w;
        }
        return d;
    };
    for (double part : kParts) {
        const double d = look(part);
        if (d < kNone && last == 0.0) {
            last = part;
            at_last = d;
        } else if (d < kNone && before == kNone) {
            before = d;
        } else if (last == 0.0) {
            without = part;
        }
    }
    if (last == 0.0) return false;
    if (without < 1.0) {
        for (int it = 0; it < kBisections; ++it) {
            const double part = 0.5 * (last + without), d = look(part);
            if (d < kNone) {
                before = at_last;
                last = part;
                at_last = d;
            } else {
                without = part;
            }
        }
        for (std::size_t i = 0; i < n; ++i) w[i] = (1.0 - last) * from[i] + (i == k_ ? last : 0.0);
        if (at_last < before) ends_.push_back({at_last, w});
    }
    return lowest(best);
}

/// A negative distance, or where a descent from w ends.
bool StabilitySearch::Edge::lowest(Point w) {
    StabilitySearch& s = search_;
    if (s.below(w, -Certificate::tpd_tolerance)) {  // a descent might leave for no density
        s.r_.stable = false;
        s.take(Stability::distance(s.of_.s_, s.phase_));
        return true;
    }
    for (double& wi : w) wi = std::log(wi);
    return s.record(s.of_.descend(s.phase_, s.p_, s.known_, w.data(), 0, s.first_, s.tpd_,
                                  s.r_.iterations)) ||
           !s.r_.stable;
}

bool StabilitySearch::Edge::from_end(Place const& end) {
    const Place low = minimise(end);
    const int failed = search_.r_.unconverged;
    if (lowest(low.w)) return true;
    if (search_.r_.unconverged > failed) untold = std::min(untold, low.d);
    return false;
}

StabilitySearch::Edge::Place StabilitySearch::Edge::minimise(Place const& from) {
    const std::size_t n = from.w.size(), dims = n - 1;
    const std::size_t base = std::max_element(from.w.begin(), from.w.end()) - from.w.begin();
    const auto fractions = [&](Point const& y) {
        Point w(n);
        double sum = 0.0;
        for (std::size_t i = 0, c = 0; i < n; ++i) sum += w[i] = i == base ? 1.0 : std::exp(y[c++]);
        for (double& wi : w) wi /= sum;
        return w;
    };
    const auto value = [&](Point const& y) { return at(fractions(y)); };
    std::vector<Place> simplex(n, {from.d, Point(dims)});
    for (std::size_t i = 0, c = 0; i < n; ++i) {
        if (i == base) continue;
        for (Place& corner : simplex) corner.w[c] = std::log(from.w[i] / from.w[base]);
        ++c;
    }
    for (std::size_t c = 0; c < dims; ++c) {
        simplex[c + 1].w[c] -= kSimplex;
        simplex[c + 1].d = value(simplex[c + 1].w);
    }
    Point middle(dims), y(dims);
    const auto moved = [&](double times) {
        for (std::size_t c = 0; c < dims; ++c)
            y[c] = middle[c] + times * (simplex[dims].w[c] - middle[c]);
        return Place{value(y), y};
    };
    for (std::size_t it = 0; it < kMoves * n; ++it) {
        std::sort(simplex.begin(), simplex.end(),
                  [](Place const& a, Place const& b) { return a.d < b.d; });
        if (simplex[0].d < -Certificate::tpd_tolerance || simplex[dims].d - simplex[0].d < kSmall)
            break;
        std::fill(middle.begin(), middle.end(), 0.0);
        for (std::size_t i = 0; i < dims; ++i)
            for (std::size_t c = 0; c < dims; ++c)
                middle[c] += simplex[i].w[c] / static_cast<double>(dims);
        Place next = moved(-1.0);
        if (next.d < simplex[0].d) {
            const Place further = moved(-2.0);
            if (further.d < next.d) next = further;
        } else if (!(next.d < simplex[dims - 1].d)) {
            next = moved(next.d < simplex[dims].d ? -0.5 : 0.5);
        }
        if (next.d < simplex[dims].d) {
            simplex[dims] = next;
            continue;
        }
        for (std::size_t i = 1; i < n; ++i) {
            for (std::size_t c = 0; c < dims; ++c)
                simplex[i].w[c] = 0.5 * (simplex[i].w[c] + simplex[0].w[c]);
            simplex[i].d = value(simplex[i].w);
        }
    }
    auto const& best = *std::min_element(simplex.begin(), simplex.end(),
                                         [](Place const& a, Place const& b) { return a.d < b.d; });
    return {best.d, fractions(best.w)};
}

/// Below its critical temperature and far above its saturation pressure a component has no density,
/// or that of a gas alone: its equation, far below the range it was made for, has no liquid, while
/// mixtures with less of it may have one (water in multi-fluid mixtures below 230 K, a wax in cold
/// nitrogen).
void StabilitySearch::without_liquid(int k) {
    const double saturation = of_.fluid_.wilson(k, phase_.T);  // its logarithm
    const bool seen = std::isfinite(at_start_[k]);
    if (seen && (!(phase_.T < kSubcritical * of_.fluid_.pure(k).Tcrit()) ||
                 !(saturation - std::log(p_) < kCondensed) ||
                 !(rho_[k] * of_.fluid_.pure(k).vcrit() < kGas)))
        return;
    Edge edge(*this, k);
    if (edge.run(!seen)) return;
    // Of a gas, what is known of its liquid is Wilson's estimate of the fugacity.
    const bool told = seen ? phase_.m[k] + std::log(R * phase_.T) < saturation + kCondensed
                           : !(edge.untold < kUntold);
    if (told) return;
    ++r_.unconverged;
    ++r_.unseen;
}

}  // namespace corvane::inline detail
