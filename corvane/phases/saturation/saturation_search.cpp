// The search for phase boundaries over all pressures or temperatures: they are where the
// tangent-plane test changes its answer.
#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
/// Distance that the test of stability may overlook, of two components and of more: its tolerance,
/// with what higher orders add.
constexpr double kUnseen[] = {1e-10, 3e-8};
constexpr double kThin = 0.15, kThinEach = 0.4;  // of volumes, from those of an ideal gas
constexpr double kThinGas = 0.25;                // of the pseudocritical density
constexpr double kBeyond = 4.0;                  // times the highest pressure
constexpr double kJump = 0.5;  // of ln rho: to another root
}  // namespace

SaturationSolver::Node SaturationSolver::node(double s) {
    Node q;
    q.s = s;
    a_.resize(fluid_.size());
    if (!fluid_.evaluate_at(a_, p(s), T(s), fluid_.z(), Root::stable, phase_H)) return q;
    q.rho = a_.rho;
    q.r = stability_.test(a_, p(s), nullptr, false, true);
    q.stable = q.r.stable;
    q.known = !q.stable || q.r.unconverged == 0;
    q.thin = held_.at_T && q.known && q.stable && thin(q.s);
    return q;
}

bool SaturationSolver::thin(double s) const {
    const double ideal = R * a_.T / p(s);
    if (!(std::fabs(1.0 / (a_.rho * ideal) - 1.0) < kThin)) return false;
    double volume = 0.0;  // a dense fluid may have an ideal gas's by chance
    for (int k = 0; k < fluid_.size(); ++k) volume += fluid_.z()[k] * fluid_.pure(k).vcrit();
    if (!(a_.rho * volume < kThinGas)) return false;
    for (int k = 0; k < fluid_.size(); ++k)
        if (!(std::fabs(a_.v(k) / ideal - 1.0) < kThinEach)) return false;
    return true;
}

std::optional<SaturationSolver::Node> SaturationSolver::hidden(Node lo, Node hi) {
    for (int k = 0; k < 14; ++k) {
        const double jump = std::fabs(std::log(hi.rho / lo.rho));
        if (jump < 0.1 + 1.3 * (hi.s - lo.s) * (held_.at_T ? 1.0 : 4.0)) return {};
        const Node mid = node(0.5 * (lo.s + hi.s));
        if (!mid.known) return {};
        if (!mid.stable) return mid;
        (std::fabs(std::log(mid.rho / lo.rho)) > std::fabs(std::log(hi.rho / mid.rho)) ? hi : lo) =
            mid;
    }
    return {};
}

// A liquid between one that splits and its vapour, say: where the whole jumps from root to root.
std::optional<SaturationSolver::Node> SaturationSolver::window(Node lo, Node hi) {
    for (int k = 0; k < 6 && std::fabs(std::log(hi.rho / lo.rho)) > kJump; ++k) {
        const Node mid = node(0.5 * (lo.s + hi.s));
        if (!mid.known) return {};
        if (mid.stable) return mid;
        (std::fabs(std::log(mid.rho / lo.rho)) > std::fabs(std::log(hi.rho / mid.rho)) ? hi : lo) =
            mid;
    }
    return {};
}

std::optional<SaturationSolver::Node> SaturationSolver::dip(Node const& a, Node const& b,
                                                            Node const& c) {
    if (!b.r.other || !(b.r.tpd < (a.r.other ? a.r.tpd : 1e9)) ||
        !(b.r.tpd <= (c.r.other ? c.r.tpd : 1e9)))
        return {};
    constexpr double golden = 0.381966;
    double lo = a.s, hi = c.s;
    Node best = b;
    for (int k = 0; k < 16; ++k) {
        const bool right = hi - best.s > best.s - lo;
        const Node q = node(best.s + golden * (right ? hi - best.s : lo - best.s));
        if (!q.known) return {};
        if (!q.stable) return q;
        if (q.r.other && q.r.tpd < best.r.tpd) {
            (right ? lo : hi) = best.s;
            best = q;
        } else {
            (right ? hi : lo) = q.s;
        }
    }
    return {};
}

bool SaturationSolver::other_root(double rho, double jumped, double s) {
    if (!(std::fabs(std::log(jumped / rho)) > 0.1)) return false;
    const int n = fluid_.size();
    b_.resize(n);
    for (int i = 0; i < n; ++i) {
        a_.rho_i[i] = fluid_.z()[i] * rho;
        b_.rho_i[i] = fluid_.z()[i] * jumped;
    }
    if (!fluid_.evaluate(a_, T(s), 0) || !fluid_.evaluate(b_, T(s), 0)) return false;
    std::vector<double> y = fluid_.z();
    double sum = 0.0;
    for (int i = 0; i < n; ++i) sum += y[i] *= std::exp(a_.m[i] - b_.m[i]);
    for (double& yi : y) yi /= sum;
    if (!std::isfinite(sum) || !(*std::min_element(y.begin(), y.end()) > 0.0)) return false;
    pair_.start(fluid_.z(), rho, y, jumped, T(s));
    return true;
}

bool SaturationSolver::of_other_kind(Node const& stable, Node const& unstable,
                                     Node const& far) const {
    return std::any_of(others_.begin(), others_.end(), [&](Other const& o) {
        const double seen = stable.s - o.s, further = unstable.s - o.s;
        if (seen * further <= 0.0) return true;
        if (!(std::fabs(seen) < std::fabs(further)) || !(o.slope * seen <= 0.0)) return false;
        const double part = seen / (far.s - o.s);
        return o.slope * seen + far.r.tpd * part * part > -kUnseen[fluid_.size() > 2];
    });
}

int SaturationSolver::boundary(Node& stable, Node& unstable) {
    const double wide = held_.at_T ? 0.02 : 0.004;
    const Node far = unstable;
    int tries = 0;
    for (int k = 0; k < 45; ++k) {
        const double width = std::fabs(unstable.s - stable.s);
        if (width < wide * std::pow(0.1, tries)) {
            if (++tries > 6) return -1;
            if (of_other_kind(stable, unstable, far)) return 0;
            if (!unstable.r.other) continue;  // unstable by its curvature alone: no start
            const double at = 0.5 * (stable.s + unstable.s), margin = 0.55 * width + 1e-7;
            auto solved = [&] { return std::fabs(found() - at) < margin; };
            auto start = [&] {
                pair_.start(fluid_.z(), stable.rho, unstable.r.trial.w, unstable.r.trial.rho,
                            T(at));
            };
            bool loose = false;
            auto tried = [&](bool converged) {
                if (loose_ && solved()) {
                    loose = true;
                    note_loose();
                }
                return converged && solved();
            };
            start();
            bool here = tried(solve());
            if (!here && other_root(stable.rho, unstable.rho, at)) here = tried(solve());
            if (!here && tries > 1) {
                start();
                here = tried(near());
            }
            if (!here && loose) return of_other_kind(stable, unstable, far) ? 0 : -1;
            if (here) {
                // A boundary of the other kind is one if it is stable; else another pair is near.
                const std::size_t known = others_.size();
                collect_ = true;
                const bool accepted = accept();
                collect_ = false;
                if (accepted) return 1;
                if (others_.size() > known) return 0;
            }
        }
        Node mid;  // elsewhere if a start of its stability test is lost
        for (double part : {0.5, 0.4, 0.65}) {
            mid = node(stable.s + part * (unstable.s - stable.s));
            if (mid.known) break;
        }
        if (!mid.known) return -1;
        (mid.stable ? stable : unstable) = mid;
    }
    return -1;
}

// Steps of a factor of 1.5 in p, or 3 % in T.
SaturationSolver::Range SaturationSolver::searched() const {
    if (held_.at_T) {
        double sum = 0.0;
        for (int k = 0; k < fluid_.size(); ++k)
            sum += fluid_.z()[k] * std::exp(-fluid_.wilson(k, held_.value));
        return {
            std::max(std::log(kLowest), std::min(-std::log(sum) - 4.0, std::log(kHighest) - 10.0)),
            std::log(kHighest), 0.4};
    }
    double least = 1e300, most = 0.0;
    for (int k = 0; k < fluid_.size(); ++k) {
        least = std::min(least, fluid_.pure(k).Tcrit());
        most = std::max(most, fluid_.pure(k).Tcrit());
    }
    return {std::log(0.3 * least), std::log(2.0 * most), 0.03};
}

// Unstable states between two stable ones that are no further apart than a step show by a jump of
// the density (hidden) or a dip of the distance.
std::vector<SaturationSolver::Change> SaturationSolver::changes(std::vector<Node> const& nodes) {
    std::vector<Change> all;
    auto add = [&](Node const& a, Node const& b) {
        if (a.stable != b.stable) all.push_back(a.stable ? Change{a, b} : Change{b, a});
    };
    for (std::size_t k = 0; k + 1 < nodes.size(); ++k) {
        Node const &a = nodes[k], &b = nodes[k + 1];
        if (!a.known || !b.known) {
            complete_ = false;
            unknown_ = true;
            continue;
        }
        if (a.stable != b.stable) {
            add(a, b);
            continue;
        }
        if (!a.stable) {
            if (const auto q = window(a, b)) {
                add(a, *q);
                add(*q, b);
            }
            continue;
        }
        std::optional<Node> q = hidden(a, b);
        if (!q && k > 0 && nodes[k - 1].known && nodes[k - 1].stable) q = dip(nodes[k - 1], a, b);
        if (q && q->s > a.s) {
            add(a, *q);
            add(*q, b);
        } else if (q) {
            add(nodes[k - 1], *q);
            add(*q, a);
        }
    }
    return all;
}

// A step with three boundaries: a liquid that mixes before it boils, say. Of them halving meets
// one.
std::vector<SaturationSolver::Change> SaturationSolver::also_in(Change const& step,
                                                                Change const& met) {
    std::vector<Change> more;
    auto look = [&](Node const& a, Node const& b, bool stable) {
        Node const &lo = a.s < b.s ? a : b, &hi = a.s < b.s ? b : a;
        const auto q = stable ? hidden(lo, hi) : window(lo, hi);
        if (!q) return;
        for (Node const* end : {&lo, &hi})
            more.push_back(stable ? Change{*end, *q} : Change{*q, *end});
    };
    const bool first = step.stable.s < step.unstable.s;
    look(first ? step.stable : step.unstable, first ? met.stable : met.unstable, first);
    look(first ? step.unstable : step.stable, first ? met.unstable : met.stable, !first);
    return more;
}

bool SaturationSolver::lay(double finer, std::vector<Node>& nodes, bool only_stable) {
    const auto over = [&](Range const& r) {
        if (!(r.hi - r.lo < 1e4)) return false;  // absurd temperatures: no pressure to begin with
        const int count = static_cast<int>(std::ceil((r.hi - r.lo) / r.step * finer));
        nodes.clear();
        for (int i = 0; i <= count; ++i) {
            const int k = held_.at_T ? count - i : i;
            nodes.push_back(node(r.lo + (r.hi - r.lo) * k / count));
            Node const& q = nodes.back();
            if (only_stable && !(q.known && q.stable)) return false;
            if (q.thin) break;
        }
        if (held_.at_T) std::reverse(nodes.begin(), nodes.end());
        return true;
    };
    Range range = searched();
    if (!over(range)) return false;
    const bool begun = nodes.front().known && nodes.front().stable;
    return begun || !lower(range) || over(range);
}

bool SaturationSolver::lower(Range& range) {
    const double least = std::log(kLowest);
    if (!held_.at_T || !(range.lo > least)) return false;
    for (int k = 1; range.lo > least; ++k) {
        range.lo = std::max(least, range.lo - 4.0);
        if (k == 8 || !(range.lo > least)) break;
        const Node q = node(range.lo);
        if (q.known && q.stable) break;
    }
    return true;
}

bool SaturationSolver::quiet() {
    if (quiet_) return *quiet_;
    const PhaseState at = a_;  // where beside_liquids() starts
    const auto falls = [](Node const& to, Node const& from) {
        return to.r.other && !(from.r.other && from.r.tpd <= to.r.tpd);
    };
    const auto beyond = [&] {  // dense fluids may part at higher pressures, or colder
        if (!held_.at_T) return laid_.size() > 1 && falls(laid_[0], laid_[1]);
        const Node q = node(std::log(kBeyond * kHighest));
        return q.known && !q.stable;
    };
    quiet_ = lay(1.0, laid_, true) && changes(laid_).empty() && !beyond();
    a_ = at;
    if (*quiet_)
        nodes_ = laid_;
    else
        laid_.clear();
    return *quiet_;
}

bool SaturationSolver::global(bool upper, double finer) {
    std::vector<Node> nodes;
    if (finer == 1.0) nodes = std::move(laid_);
    complete_ = !nodes.empty() || lay(finer, nodes);
    if (!complete_) return false;
    nodes_ = nodes;
    if (upper) std::reverse(nodes_.begin(), nodes_.end());
    std::vector<Change> found = changes(nodes);
    if (upper) std::reverse(found.begin(), found.end());
    for (std::size_t k = 0; k < found.size(); ++k) {
        Change c = found[k];
        const int r = boundary(c.stable, c.unstable);
        if (r > 0) return true;
        if (r < 0) {
            complete_ = false;
            missed_ = true;
        }
        if (found.size() > nodes.size()) continue;  // a bound
        std::vector<Change> more = also_in(found[k], c);
        if (upper) std::reverse(more.begin(), more.end());
        found.insert(found.begin() + static_cast<std::ptrdiff_t>(k) + 1, more.begin(), more.end());
    }
    return false;
}

}  // namespace corvane
