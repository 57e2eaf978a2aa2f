#include <corvane/phases/binary/binary.h>
#include <corvane/phases/binary/binary_diagram.h>
#include <corvane/phases/binary/tie_lines.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/stability/hull.h>
#include <corvane/phases/stability/test_phases.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
namespace {
constexpr double kSame = 1e-6;  // of ln p, ln T and compositions: the same three-phase state

/// Three-phase state, its phases by composition; pairs 0: the outer two, 1 and 2: the inner ones.
struct Junction {
    ThreePhasePoint state;
    std::array<int, 3> order;    // of the phases, by x
    std::array<bool, 3> done{};  // pairs that have been followed
    bool outer_rising = false;   // p (or T) along the outer pair from here on
    int first(int pair) const { return order[pair == 2 ? 1 : 0]; }
    int second(int pair) const { return order[pair == 1 ? 1 : 2]; }
    double x(int phase) const { return state.phases[static_cast<std::size_t>(phase)].x[0]; }
};

class Builder {
  public:
    Builder(ModelN const& model, Fixed constant, DiagramOptions const& o)
        : fluid_(model, equal_parts()),
          constant_(constant),
          o_(o),
          pair_(fluid_),
          stability_(fluid_) {
        o_.stability = true;
    }

    BinaryDiagram run() {
        const int heavy = fluid_.pure(0).Tcrit() > fluid_.pure(1).Tcrit() ? 0 : 1;
        for (int component : {heavy, 1 - heavy}) {
            if (reached_[component] || !subcritical(component) || interrupted_) continue;
            TieLineTracer tracer(fluid_, constant_, o_, true);
            const bool begun = tracer.begin_pure(component);
            reached_[component] = begun || tracer.outside();
            if (!begun || (tracer.outside() && ends_at(tracer.first()))) continue;
            add(tracer, tracer.run(points_));
            junctions();
        }
        search();
        for (int component : {0, 1})
            if (subcritical(component) && !reached_[component]) {
                const double x = component == 0 ? 1.0 : 0.0;
                TieLine q{0.0, 0.0, x, x, 0.0, 0.0, true};
                (constant_.at_T ? q.T : q.p) = constant_.value;
                d_.open.push_back(q);
            }
        drop_followed_back();
        for (Junction const& j : junctions_) d_.three_phase.push_back(j.state);
        d_.evaluations = fluid_.evaluations;
        return std::move(d_);
    }

  private:
    bool subcritical(int k) const {
        return constant_.value < (constant_.at_T ? fluid_.pure(k).Tcrit() : fluid_.pure(k).pcrit());
    }
    /// What runs along a branch: ln p, or ln T.
    double running(TieLine const& q) const { return std::log(constant_.at_T ? q.p : q.T); }
    double mass(int k) const {
        return fluid_.mass_density(pair_.phase[static_cast<std::size_t>(k)]);
    }

    /// Has a branch come to this state on the bound of p or T from the other side?
    bool ends_at(TieLine const& q) const {
        return std::any_of(d_.branches.begin(), d_.branches.end(), [&](Diagram const& d) {
            TieLine const& end = d.points.back();
            return std::fabs(running(end) - running(q)) < kSame && std::fabs(end.x - q.x) < kSame &&
                   std::fabs(end.y - q.y) < kSame;
        });
    }

    void add(TieLineTracer& tracer, Diagram&& d) {
        points_ += static_cast<int>(d.points.size());
        if (d.end == DiagramEnd::pure) reached_[tracer.pure_end()] = true;
        if (d.end == DiagramEnd::interrupted) interrupted_ = true;
        if (d.end == DiagramEnd::three_phase)
            arrive(tracer.three_phase(), d.points.back(), tracer.rising());
        d_.branches.push_back(std::move(d));
    }

    /// A branch that was lost on its way from a pure component (next to a critical end point the
    /// third phase is hard to see), where another one has come from the other side.
    void drop_followed_back() {
        auto is_at = [](DiagramEnd why, TieLine const& q, double x) {
            return why == DiagramEnd::pure && q.x == x;
        };
        auto lost = [&](Diagram const& d) {
            const double x = d.points.front().x;
            return d.begin == DiagramEnd::pure && d.end == DiagramEnd::stuck &&
                   std::any_of(d_.branches.begin(), d_.branches.end(), [&](Diagram const& other) {
                       return is_at(other.end, other.points.back(), x) ||
                              (other.end != DiagramEnd::stuck &&
                               is_at(other.begin, other.points.front(), x));
                   });
        };
        std::vector<Diagram> kept;
        for (Diagram const& d : d_.branches)
            if (!lost(d)) kept.push_back(d);
        d_.branches = std::move(kept);
    }

    /// A branch ended at three phases, as their pair q.
    void arrive(ThreePhasePoint const& state, TieLine const& q, bool rising) {
        Junction* at = nullptr;
        for (Junction& j : junctions_)
            if (std::fabs(std::log(j.state.p / state.p)) < kSame &&
                std::fabs(std::log(j.state.T / state.T)) < kSame &&
                std::fabs(j.x(0) - state.phases[0].x[0]) < kSame)
                at = &j;
        if (!at) {
            junctions_.push_back({state, {0, 1, 2}, {}, false});
            at = &junctions_.back();
            std::sort(at->order.begin(), at->order.end(),
                      [&](int a, int b) { return at->x(a) < at->x(b); });
        }
        const double lo = std::min(q.x, q.y), hi = std::max(q.x, q.y);
        int pair = 0;
        double nearest = 1e300;
        for (int k = 0; k < 3; ++k) {
            const double off =
                std::fabs(at->x(at->first(k)) - lo) + std::fabs(at->x(at->second(k)) - hi);
            if (off < nearest) nearest = off, pair = k;
        }
        at->done[static_cast<std::size_t>(pair)] = true;
        at->outer_rising = pair == 0 ? !rising : rising;
    }

    /// Follows all curves that begin at three phases and have not been reached.
    void junctions() {
        for (std::size_t k = 0; k < junctions_.size(); ++k)
            for (int pair = 0; pair < 3; ++pair) {
                if (junctions_[k].done[static_cast<std::size_t>(pair)] || interrupted_) continue;
                junctions_[k].done[static_cast<std::size_t>(pair)] = true;
                leave(Junction(junctions_[k]), pair);
            }
    }
    void leave(Junction const& j, int pair) {
        int a = j.first(pair), b = j.second(pair);
        if (a > b) std::swap(a, b);  // phase a is the denser one
        std::vector<double> u;
        for (int phase : {a, b}) {
            PhaseRecord const& q = j.state.phases[static_cast<std::size_t>(phase)];
            for (int i = 0; i < 2; ++i) u.push_back(std::log(q.x[i] * q.rho));
        }
        u.push_back(std::log(j.state.T));
        const bool rising = pair == 0 ? j.outer_rising : !j.outer_rising;
        for (bool up : {rising, !rising}) {
            TieLineTracer tracer(fluid_, constant_, o_, true);
            tracer.kind = b == 2 ? PhasePair::vapour_liquid : PhasePair::liquid_liquid;
            if (!tracer.begin_at(u, up, DiagramEnd::three_phase)) break;
            Diagram d = tracer.run(points_);
            // Straight back to the same state: the other way was meant (an extremum is near).
            if (d.end == DiagramEnd::three_phase && d.points.size() < 3 &&
                std::fabs(running(d.points.back()) - running(d.points.front())) < kSame)
                continue;
            add(tracer, std::move(d));
            return;
        }
        d_.open.push_back({j.state.T, j.state.p, j.x(a), j.x(b),
                           j.state.phases[static_cast<std::size_t>(a)].rho,
                           j.state.phases[static_cast<std::size_t>(b)].rho, true});
    }

    /// Do the branches have the split from lo to hi at this ln p (or ln T)?
    bool covered(double s, double lo, double hi) const {
        for (Diagram const& d : d_.branches)
            for (std::size_t k = 1; k < d.points.size(); ++k) {
                TieLine const &a = d.points[k - 1], &b = d.points[k];
                const double sa = running(a), sb = running(b);
                if ((sa - s) * (sb - s) > 0.0 || sa == sb) continue;
                const double q = (s - sa) / (sb - sa);
                const double x = a.x + q * (b.x - a.x), y = a.y + q * (b.y - a.y);
                const double left = std::min(x, y), right = std::max(x, y);
                const double common = std::min(hi, right) - std::max(lo, left);
                if (common > 0.5 * std::min(hi - lo, right - left)) return true;
            }
        return false;
    }
    /// Is the solved tie line next to a step of a branch? In the box around its two points, half as
    /// large again.
    bool known(TieLine const& q) const {
        auto inside = [](double v, double a, double b, double slack) {
            const double margin = 0.25 * std::fabs(b - a) + slack;
            return v > std::min(a, b) - margin && v < std::max(a, b) + margin;
        };
        for (Diagram const& d : d_.branches)
            for (std::size_t k = 1; k < d.points.size(); ++k) {
                TieLine const &a = d.points[k - 1], &b = d.points[k];
                if (!inside(running(q), running(a), running(b), 0.01)) continue;
                for (bool swap : {false, true})
                    if (inside(swap ? q.y : q.x, a.x, b.x, 0.01) &&
                        inside(swap ? q.x : q.y, a.y, b.y, 0.01))
                        return true;
            }
        return false;
    }

    /// Splits that no branch from a pure component passes, at levels a factor of 1.5 in p apart, or
    /// 4 % in T: a branch that is connected with none of them and spans less, next to the consolute
    /// point at which it vanishes, is missed.
    void search() {
        double lo = std::log(o_.p_max), hi = lo, step = 0.4;
        if (constant_.at_T) {
            for (int k : {0, 1}) {
                const double p = subcritical(k) ? fluid_.wilson(k, constant_.value) + std::log(0.5)
                                                : std::log(0.05 * fluid_.pure(k).pcrit());
                lo = std::min(lo, std::max(p, std::log(0.01)));
            }
        } else {
            const double Tc[] = {fluid_.pure(0).Tcrit(), fluid_.pure(1).Tcrit()};
            lo = std::log(o_.T_min > 0.0 ? o_.T_min : 0.3 * std::min(Tc[0], Tc[1]));
            hi = std::log(2.0 * std::max(Tc[0], Tc[1]));
            step = 0.04;
        }
        struct Failed {
            double p, T;
            Facet facet;
        };
        std::vector<Failed> failed;
        const int count = static_cast<int>(std::ceil((hi - lo) / step));
        for (int k = 0; k <= count && !interrupted_; ++k) {
            const double s = lo + (hi - lo) * k / std::max(count, 1);
            const double p = constant_.at_T ? std::exp(s) : constant_.value,
                         T = constant_.at_T ? constant_.value : std::exp(s);
            std::vector<Facet> facets;
            if (!survives([&] { return facets = split_facets(fluid_, p, T), true; }))
                d_.open.push_back({T, p, 0.0, 1.0, 0.0, 0.0, false});
            for (Facet const& f : facets) {
                if (covered(s, f.x[0], f.x[1])) continue;
                if (!survives([&] { return detached(p, T, f); })) failed.push_back({p, T, f});
            }
        }
        for (auto const& [p, T, f] : failed)
            if (!covered(std::log(constant_.at_T ? p : T), f.x[0], f.x[1])) unresolved(p, T, f);
    }

    /// Solves the split of a facet and traces it both ways; true also if it is known already.
    bool detached(double p, double T, Facet const& f) {
        pair_.T = T;
        pair_.p = p;
        pair_.row.clear();
        double x[2] = {f.x[0], f.x[1]};
        pair_.start({x[0], 1 - x[0]}, f.rho[0], {x[1], 1 - x[1]}, f.rho[1], T);
        // From the grid's ends, where a component is nearly absent: its true amount by equal
        // potentials.
        if (!pair_.evaluate()) return false;
        for (int i = 0; i < 2; ++i)
            for (int k = 0; k < 2; ++k) {
                PhaseState const &s = pair_.phase[k], &o = pair_.phase[1 - k];
                if (!(s.x[i] < 1e-6)) continue;
                double& u = pair_.u[2 * k + i];
                u = std::max(u + o.m[i] - s.m[i], pair_.u[2 * k + 1 - i] + ln_trace);
            }
        auto solved = [&](int limit) {
            return pair_.solve(limit) && !pair_.trivial() && pair_.a.S > 0.0 &&
                   pair_.b.S > 0.0;
        };
        if (!solved(20) && !(flashed(p, T, 0.5 * (x[0] + x[1])) && solved(10))) return false;
        const TieLine q = tie_line(pair_);
        if (known(q) || covered(running(q), std::min(q.x, q.y), std::max(q.x, q.y))) return true;
        if (!test_pair(pair_, stability_, true).stable) return false;
        std::vector<double> u = pair_.u;
        if (mass(0) < mass(1)) {
            std::swap(u[0], u[2]);
            std::swap(u[1], u[3]);
        }
        if (!trace_both(u)) return false;
        junctions();
        return true;
    }
    /// Start values from the flash, which is slower and takes narrow gaps.
    bool flashed(double p, double T, double x) {
        Vector<double> z(2);
        z[0] = x;
        z[1] = 1 - x;
        try {
            const FlashResult q = flash_pT(fluid_.model(), p, T, z);
            fluid_.evaluations += q.certificate.evaluations;
            if (q.phases.size() != 2) return false;
            auto const &a = q.phases[0], &b = q.phases[1];
            pair_.start({a.x[0], a.x[1]}, a.rho, {b.x[0], b.x[1]}, b.rho, T);
            return true;
        } catch (EquilibriumFailure const&) {
            return false;
        }
    }
    bool trace_both(std::vector<double> const& u) {
        TieLineTracer down(fluid_, constant_, o_, true), up(fluid_, constant_, o_, true);
        if (!down.begin_at(u, false, DiagramEnd::interrupted) ||
            !up.begin_at(u, true, DiagramEnd::interrupted))
            return false;
        Diagram a = down.run(points_);
        const int low = static_cast<int>(a.points.size());
        add(down, std::move(a));
        if (interrupted_) return true;
        up.kind = down.kind;
        Diagram b = up.run(points_);
        a = std::move(d_.branches.back());
        d_.branches.pop_back();
        // One branch, from the lower end to the upper one.
        points_ -= low;
        if (low == 2 && running(a.points[0]) == running(a.points[1])) a.points.pop_back();
        std::reverse(a.points.begin(), a.points.end());
        std::reverse(a.azeotropes.begin(), a.azeotropes.end());
        b.points.insert(b.points.begin(), a.points.begin(), a.points.end() - 1);
        b.azeotropes.insert(b.azeotropes.begin(), a.azeotropes.begin(), a.azeotropes.end());
        b.begin = a.end;
        b.dmu = std::max(a.dmu, b.dmu);
        b.dp = std::max(a.dp, b.dp);
        b.unstable += a.unstable;
        b.evaluations += a.evaluations;
        if (a.kind == PhasePair::vapour_liquid) b.kind = a.kind;
        add(up, std::move(b));
        return true;
    }

    /// A facet that led to no tie line: a gap of the diagram if its middle is unstable.
    void unresolved(double p, double T, Facet const& f) {
        PhaseState s;
        s.resize(2);
        const double x = 0.5 * (f.x[0] + f.x[1]);
        bool stable = false;
        if (survives([&] {
                if (!fluid_.evaluate_at(s, p, T, {x, 1 - x}, Root::stable, phase_H)) return false;
                const StabilityResult r = stability_.test(s, p, nullptr, true, true);
                stable = r.stable && r.unconverged == 0;
                return true;
            }) &&
            stable)
            return;
        if (covered(std::log(constant_.at_T ? p : T), x - 0.01, x + 0.01)) return;
        d_.open.push_back({T, p, f.x[0], f.x[1], f.rho[0], f.rho[1], false});
    }

    const FluidModel fluid_;
    const Fixed constant_;
    DiagramOptions o_;
    PairSolver pair_;
    Stability stability_;
    bool reached_[2] = {false, false}, interrupted_ = false;
    int points_ = 0;
    std::vector<Junction> junctions_;
    BinaryDiagram d_;
};

BinaryDiagram build(ModelN const& model, Fixed constant, DiagramOptions const& o) {
    check_binary(model, constant.value);
    check_options(o);
    return Builder(model, constant, o).run();
}
}  // namespace

bool BinaryDiagram::complete() const {
    auto explained = [](DiagramEnd e) {
        return e != DiagramEnd::stuck && e != DiagramEnd::full && e != DiagramEnd::interrupted;
    };
    return open.empty() && std::all_of(branches.begin(), branches.end(), [&](Diagram const& d) {
               return explained(d.begin) && explained(d.end);
           });
}

BinaryDiagram complete_pxy(ModelN const& binary, double T, DiagramOptions const& options) {
    return build(binary, {true, T}, options);
}
BinaryDiagram complete_Txy(ModelN const& binary, double p, DiagramOptions const& options) {
    return build(binary, {false, p}, options);
}

}  // namespace corvane
