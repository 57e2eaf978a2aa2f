// Where a light phase vanishes beside others: flashes that bracket it, for bubble points of liquids
// that split.
#include <corvane/core/constants.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvane {
namespace {
constexpr int kFlashes = 40;
constexpr double kStep = 0.7;        // change of ln p between flashes, the first ones
constexpr double kLowest = 1e-100;   // MPa
constexpr double kNarrow = 0.05;     // bracket in ln p from which Newton's method starts
constexpr double kLeast = 1e-4;      // bracket that ends the search
constexpr double kFine = 0.02;       // between flashes where the lightest phase is lost
constexpr double kJump = 0.2;        // of ln rho of the lightest phase, least
constexpr double kTrace = -640.0;    // of the logarithm of a vapour pressure, MPa
constexpr double kCold = 0.1;        // over twice the highest critical temperature
constexpr double kTurn = 0.1;        // and of its mole fractions
constexpr std::size_t kMatched = 7;  // phases whose orders are all tried
}  // namespace

/// Flashes at (p, T) until they bracket where the vapour vanishes beside liquids, along s =
/// ln(p/p0); at given p in T, by the same ln(p/p_sat) of Wilson's enthalpies.
struct SaturationSolver::Vanishing {
    Vanishing(SaturationSolver& solver, SaturationOptions const& options);
    void run();
    /// Newton's method from here. True where the search is over: an answer, or none to be had.
    bool solved();
    /// In place of the steps from the start: flashes at all of these, in the order in which answers
    /// are wanted.
    void scan(std::vector<Node> const& nodes);

    bool over = false;
    std::optional<SaturationPoint> point;

  private:
    void step();
    struct Side {  // the lightest phase at low or high
        double rho = 0.0;
        std::size_t count = 0;
        std::vector<double> x = {};
        double part = 0.0;                       // of the whole, in moles
        double unlike(Side const& other) const;  ///< 1 and more: no continuation of it
        bool like(Side const& other) const { return unlike(other) < 1.0; }
    };
    bool out_of_reach() const;
    bool gas(double rho, std::vector<double> const& x) const;
    bool is_gas(Side const& side) const { return gas(side.rho, side.x); }
    bool place();
    bool flash();
    std::vector<Side> sides() const;
    static Side const& nearest(std::vector<Side> const& phases, Side const& to);
    static bool lightest_alone(std::vector<Side> const& more, std::vector<Side> const& fewer);
    void note();
    bool follow();
    bool narrowed();
    bool of_the_whole();
    bool alike();
    void advance();
    void none();
    bool turn();

    SaturationSolver& own;
    SaturationOptions const& o;
    const int n;
    double t0, p0, t, p, latent = 0.0, coldest = 1e300, hottest = 0.0;
    double s = 0.0, low = -1e300, high = 1e300, reached = 1e300;
    Side below, beyond;
    struct Seen {
        double s;
        std::vector<Side> phases;  // the lightest last
    };
    std::optional<Seen> seen();  ///< a flash here, of scan() and refine()
    void refine();
    FlashOptions warm;
    FlashResult latest;
    std::vector<Seen> fluids;  // flashes without a gas
    std::size_t pair = 0;      // the next two of them to compare
    bool turned =
        false;  // between two of them: low has the light phase, high has not, in either order
    std::size_t fewer = 0;  // so many phases at high, if there are more at low
    bool unsure = false;    // whether something vanished between others
    bool scanned = false;   // fluids are of scan(), with gases
    std::vector<Side> at_low, at_high;
    FlashResult whole;
    bool above = false, tried = false;
    int it = 0, begin = 0;  // begin: of the strides
    std::size_t dense = 0;  // so many phases, of which the lightest is no gas
    std::vector<PhaseRecord> liquids;
    std::vector<double> amounts, y;
    double rho_vapour = 0.0;
};

SaturationSolver::Vanishing::Vanishing(SaturationSolver& solver, SaturationOptions const& options)
    : own(solver),
      o(options),
      n(solver.fluid_.size()),
      t0(solver.held_.T(solver.a_.T)),
      p0(solver.held_.p(solver.a_.p)),
      t(t0),
      p(p0),
      y(solver.b_.x) {
    for (int k = 0; k < n; ++k) {
        Model1 const& pure = own.fluid_.pure(k);
        y[k] = std::max(y[k], least_fraction);
        latent += y[k] * own.fluid_.wilson_slope(k);
        coldest = std::min(coldest, 0.3 * pure.Tcrit());
        hottest = std::max(hottest, 2.0 * pure.Tcrit());
    }
}

double SaturationSolver::Vanishing::Side::unlike(Side const& other) const {
    double off = std::fabs(std::log(rho / other.rho)) / kJump;
    for (std::size_t i = 0; i < x.size(); ++i)
        off = std::max(off, std::fabs(x[i] - other.x[i]) / kTurn);
    return off;
}

/// Below its pseudocritical density.
bool SaturationSolver::Vanishing::gas(double rho, std::vector<double> const& x) const {
    double volume = 0.0;
    for (int k = 0; k < n; ++k) volume += x[k] * own.fluid_.pure(k).vcrit();
    return rho * volume < 1.0;
}

bool SaturationSolver::Vanishing::solved() {
    if (liquids.empty() || !(rho_vapour > 0.0)) return false;
    point = own.first_vapour(liquids, amounts, y, rho_vapour, t, o);
    return over = point || !own.open_;
}

/// p and T of s; false out of reach.
bool SaturationSolver::Vanishing::place() {
    if (own.held_.at_T) {
        s = std::min(s, std::log(1.01 * kHighest / p0));
        p = p0 * std::exp(s);
    } else {
        s = std::max(s, latent * (1.0 / hottest - 1.0 / t0));
        t = 1.0 / (1.0 / t0 + s / latent);
    }
    return t > 0.0 && p > kLowest && std::isfinite(p);
}

/// False without a flash here; `over` if there is none in the surroundings.
bool SaturationSolver::Vanishing::flash() {
    try {
        whole = flash_pT(own.fluid_.model(), p, t, own.fluid_.expand(own.fluid_.z()));
        own.fluid_.evaluations += whole.certificate.evaluations;
        return true;
    } catch (EquilibriumFailure const&) {  // as next to three phases of a binary
        s += 0.03 * (turned ? high - low : 1 + it);
    } catch (ThException const& e) {
        if (e.number != th_no_density) throw;
        over = true;
    }
    return false;
}

std::vector<SaturationSolver::Vanishing::Side> SaturationSolver::Vanishing::sides() const {
    std::vector<Side> all;
    for (std::size_t k = 0; k < whole.phases.size(); ++k)
        all.push_back({whole.phases[k].rho, whole.phases.size(),
                       present(own.fluid_, whole.phases[k].x), whole.fraction[k]});
    return all;
}

SaturationSolver::Vanishing::Side const& SaturationSolver::Vanishing::nearest(
    std::vector<Side> const& phases, Side const& to) {
    return *std::min_element(phases.begin(), phases.end(), [&](Side const& a, Side const& b) {
        return a.unlike(to) < b.unlike(to);
    });
}

/// Is the last phase the one that none of the fewer phases continues? As the sums of unlike() have
/// it.
bool SaturationSolver::Vanishing::lightest_alone(std::vector<Side> const& more,
                                                 std::vector<Side> const& fewer) {
    std::vector<std::size_t> order(more.size());
    std::iota(order.begin(), order.end(), 0u);
    double least = 1e300;
    bool alone = false;
    if (more.size() > kMatched) return true;
    do {
        double sum = 0.0;
        for (std::size_t k = 0; k < fewer.size(); ++k) sum += more[order[k]].unlike(fewer[k]);
        if (!(sum < least)) continue;
        least = sum;
        const auto rest = order.begin() + static_cast<std::ptrdiff_t>(fewer.size());
        alone = std::find(rest, order.end(), more.size() - 1) != order.end();
    } while (std::next_permutation(order.begin(), order.end()));
    return alone;
}

/// On which side of the bracket is the flash? Its liquids, and its vapour.
void SaturationSolver::Vanishing::note() {
    const std::size_t count = whole.phases.size();
    const std::vector<Side> phases = sides();
    const Side here = turned && fewer == 0 ? nearest(phases, below) : phases.back();
    if (turned)
        above = fewer > 0 ? count <= fewer : !here.like(below);
    else
        above = dense > 0 ? count < dense : !gas(here.rho, here.x);
    if (above && !turned) fluids.push_back({s, phases});
    if (turned || (above ? s < high : s > low)) {
        (above ? high : low) = s;
        (above ? beyond : below) = here;
        (above ? at_high : at_low) = phases;
    }
    if (!above) {
        y = here.x;
        rho_vapour = here.rho;
    }
    if (above ? count > 1 : count > 2 && (high > 1e299 || liquids.empty())) {
        const auto last = static_cast<std::ptrdiff_t>(count) - (above ? 0 : 1);
        liquids.assign(whole.phases.begin(), whole.phases.begin() + last);
        amounts.assign(whole.fraction.begin(), whole.fraction.begin() + last);
    }
}

/// How far it is from the liquids to their first vapour, by the sum of the amounts that their
/// potentials ask for. True where the search is over.
bool SaturationSolver::Vanishing::follow() {
    FluidModel const& fluid = own.fluid_;
    PhaseState liquid, vapour;
    liquid.resize(n);
    vapour.resize(n);
    // The potential of every component in the liquid that has most of it.
    std::vector<double> most(static_cast<std::size_t>(n), 0.0), m(most);
    for (PhaseRecord const& from : liquids) {
        const std::vector<double> x = present(fluid, from.x);
        for (int k = 0; k < n; ++k) liquid.rho_i[k] = x[k] * from.rho;
        if (!fluid.evaluate(liquid, t, 0)) return over = true;
        for (int k = 0; k < n; ++k)
            if (x[k] > most[k]) {
                most[k] = x[k];
                m[k] = liquid.m[k];
            }
    }
    double sum = 0.0;
    for (int k = 0; k < 4; ++k) {
        if (!fluid.evaluate_at(vapour, p, t, y, Root::dilute, 0)) return over = true;
        if (!gas(vapour.rho, vapour.x)) return false;
        sum = 0.0;
        for (int i = 0; i < n; ++i)
            sum += y[i] = std::exp(m[i] - vapour.m[i] + std::log(vapour.x[i]));
        for (double& yi : y) yi = std::max(yi / sum, least_fraction);
    }
    rho_vapour = vapour.rho;
    if (std::fabs(std::log(sum)) < kStep) reached = s + std::log(sum);
    if (!(std::fabs(reached - s) < kNarrow)) return false;
    if (solved()) return true;
    reached = 1e300;  // led astray, as next to a critical point of vapour and liquid
    return false;
}

void SaturationSolver::Vanishing::none() {
    if (n > 2 && turn()) return;  // of a binary at one p (or T) alone
    own.open_ = unsure;
    own.unsolved_ = own.unsolved_ || unsure;
    over = true;
}

/// A light fluid as dense as a liquid vanishes beside others between two flashes: of which one has
/// fewer phases, or none that continues it.
bool SaturationSolver::Vanishing::turn() {
    if (!turned && !scanned)
        std::sort(fluids.begin(), fluids.end(),
                  [](Seen const& a, Seen const& b) { return a.s < b.s; });
    while (pair + 1 < fluids.size()) {
        Seen const *with = &fluids[pair], *without = &fluids[++pair];
        if (with->phases.size() < without->phases.size()) std::swap(with, without);
        below = with->phases.back();
        beyond = nearest(without->phases, below);
        fewer = without->phases.size() < with->phases.size() ? with->phases.size() - 1 : 0;
        if (fewer == 1 || beyond.count + fewer == 1) continue;  // a boundary of the whole, or none
        if (fewer == 0 && (beyond.like(below) || (is_gas(below) && is_gas(beyond)))) continue;
        turned = true;
        tried = false;
        dense = 0;
        low = with->s;
        high = without->s;
        at_low = with->phases;
        at_high = without->phases;
        liquids.clear();
        y = below.x;
        rho_vapour = below.rho;
        s = 0.5 * (low + high);
        reached = 1e300;
        it = std::min(it, kFlashes / 2);
        return true;
    }
    return false;
}

/// Are there traces here that no double says, by Wilson's K-factors? Or is it so cold that
/// equations have phases of their own (PC-SAFT: Yelash, Müller, Paul & Binder, Phys. Chem. Chem.
/// Phys. 7 (2005) 3728)?
bool SaturationSolver::Vanishing::out_of_reach() const {
    if (t < kCold * hottest) return true;
    for (int k = 0; k < n; ++k)
        if (own.fluid_.wilson(k, t) < kTrace) return true;
    return false;
}

std::optional<SaturationSolver::Vanishing::Seen> SaturationSolver::Vanishing::seen() {
    try {
        whole = flash_pT(own.fluid_.model(), p, t, own.fluid_.expand(own.fluid_.z()), warm);
    } catch (EquilibriumFailure const&) {
        unsure = unsure || !out_of_reach();
        return {};
    } catch (ThException const& e) {
        if (e.number != th_no_density) throw;
        unsure = unsure || !out_of_reach();
        return {};
    }
    own.fluid_.evaluations += whole.certificate.evaluations;
    latest = whole;
    warm.start = &latest;
    return Seen{s, sides()};
}

void SaturationSolver::Vanishing::scan(std::vector<Node> const& nodes) {
    scanned = true;
    for (Node const& q : nodes) {
        p = own.p(q.s);
        t = own.T(q.s);
        s = own.held_.at_T ? std::log(p / p0) : latent * (1.0 / t - 1.0 / t0);
        if (q.stable)
            fluids.push_back({s, {{q.rho, 1, own.fluid_.z(), 1.0}}});
        else if (auto const here = seen())
            fluids.push_back(*here);
    }
    refine();
    none();
}

/// Flashes between those of the scan where the lightest phase leaves no trace: it may have vanished
/// beside others that the next one does not have any more.
void SaturationSolver::Vanishing::refine() {
    const auto lost = [&](Seen const& a, Seen const& b) {
        auto const &with = a.phases.size() < b.phases.size() ? b : a,
                   &without = &with == &a ? b : a;
        Side const &light = with.phases.back(), &next = nearest(without.phases, light);
        return with.phases.size() > 1 && !next.like(light) && !(is_gas(next) && is_gas(light));
    };
    int more = kFlashes;
    for (std::size_t k = 0; k + 1 < fluids.size() && more > 0;) {
        const double a = fluids[k].s, b = fluids[k + 1].s;
        if (std::fabs(a - b) < kFine || !lost(fluids[k], fluids[k + 1])) {
            ++k;
            continue;
        }
        --more;
        s = 0.5 * (a + b);
        auto const between = place() ? seen() : std::nullopt;
        if (between)
            fluids.insert(fluids.begin() + static_cast<std::ptrdiff_t>(k) + 1, *between);
        else
            ++k;
    }
}

/// The bubble point of a liquid that splits a little further on, so that the search may pass it.
bool SaturationSolver::Vanishing::of_the_whole() {
    own.pair_.start(own.fluid_.z(), beyond.rho, y, rho_vapour, t);
    if (!own.solve() || !own.accept()) return false;
    point = own.result(o);
    return over = true;
}

/// Next to a critical end point: where flashes see all phases for the last time the lightest is
/// nearly another one.
bool SaturationSolver::Vanishing::alike() {
    std::vector<std::vector<double>> rho_i;
    std::vector<double> volumes;
    for (Side const& phase : at_low) {
        rho_i.push_back(phase.x);
        for (double& rho : rho_i.back()) rho *= phase.rho;
        volumes.push_back(phase.part / phase.rho);
    }
    s = low;
    if (place()) point = own.first_alike(rho_i, volumes, t, o);
    return over = over || point;
}

/// A narrow bracket: does something vanish in it? True where the search is over.
bool SaturationSolver::Vanishing::narrowed() {
    const double width = std::fabs(high - low);
    // From gas to liquid without a jump, or of dense fluids another one vanishes. Of three the
    // lightest may do so later, where the whole itself shows nothing.
    const bool smooth = turned ? fewer == 0 && nearest(at_high, below).like(below)
                               : (dense > 0 || below.count == beyond.count) && below.like(beyond);
    if (smooth && !turned && beyond.count > 2) {
        dense = beyond.count;
        low = high;
        below = beyond;
        high = 1e300;
        begin = it + 1;
        return false;
    }
    // One of two phases vanishes: the vapour, of a liquid that does not split; or the denser one,
    // where the whole happens to have its pseudocritical density.
    const bool two = !turned && width < kLeast && below.count == 2 && beyond.count == 1;
    if (smooth || two || (!turned && below.count == 1 && beyond.count == 1)) {
        const bool vapour = two && !(below.part > 0.5 && below.like(beyond));
        if (vapour && of_the_whole()) return true;
        if (vapour) own.bracketed_ = std::log(own.held_.at_T ? p : t);
        none();
    } else if (width < kLeast) {
        if (solved()) return true;
        if (!turned) return over = true;
        if (fewer > 1 && alike()) return true;
        unsure = unsure || fewer == 0 || lightest_alone(at_low, at_high);
        none();
    } else if (!tried) {
        tried = !liquids.empty() && rho_vapour > 0.0;
        solved();
    }
    return over;
}

void SaturationSolver::Vanishing::advance() {
    const auto grown = [&](int from) {
        return kStep * (1 << std::clamp(it - begin - from, 0, 12));
    };
    if (turned)
        s = 0.5 * (low + high);
    else if (reached > low && reached < high)
        s = reached;
    else
        s = high > 1e299 ? s + grown(0) : low < -1e299 ? s - grown(4) : 0.5 * (low + high);
    reached = 1e300;
}

void SaturationSolver::Vanishing::step() {
    if (!place()) {
        over = true;
        return;
    }
    if (!flash()) return;
    note();
    const std::size_t count = whole.phases.size();
    if (!above && count > 2 && solved()) return;  // those liquids, if no others appear on the way
    if (above && count == 1 && low < -1e299 && s < -4 * kStep) return none();  // does not split
    if (above && count > 1 && dense == 0 && !turned && follow()) return;
    if (std::fabs(high - low) < kNarrow && narrowed()) return;
    if (turned) return advance();
    if ((high > 1e299 && (own.held_.at_T ? p > kHighest : t < coldest)) ||
        (low < -1e299 && !own.held_.at_T && t > 0.999 * hottest))
        return none();  // always a vapour, or never
    advance();
}

void SaturationSolver::Vanishing::run() {
    for (; it < kFlashes && !over; ++it) step();
}

/// Leaves open_ where it does not know whether there is such a point.
std::optional<SaturationPoint> SaturationSolver::beside_liquids(SaturationOptions const& o) {
    open_ = true;
    Vanishing search(*this, o);
    search.run();
    if (!search.over) search.solved();
    return search.point;
}

std::optional<SaturationPoint> SaturationSolver::beside_liquids_at(std::vector<Node> const& nodes,
                                                                   SaturationOptions const& o) {
    open_ = true;
    Vanishing search(*this, o);
    search.scan(nodes);
    search.run();
    return search.point;
}

}  // namespace corvane
