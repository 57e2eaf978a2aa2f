#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/critical_certificate.h>
#include <corvane/phases/critical_end_point.h>
#include <corvane/phases/critical_line.h>
#include <corvane/phases/spinodal.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace corvane {
namespace {
using End = CriticalLineEnd;
using Variables = CriticalConditions::Variables;

constexpr int kNewton = 8, kSearchNewton = 15, kLocate = 20;
constexpr double kShortest = 1e-7;            // step at which a line counts as lost
constexpr double kTrace = 1e-9;               // mole fraction for the tangent at a pure component
constexpr double kTurn = 0.9, kStray = 0.95;  // cosines: between tangents; of step and tangent
constexpr double kLowest = 1e-3;              // MPa: last point before tension
constexpr double kLimit = 1e-8;               // accuracy of the ends at given p or T
constexpr double kUnresolved = 1e-9;          // mole fraction
constexpr double kWanted = 0.12;              // wanted turn per step, radian
constexpr double kSame = 0.15;  // distance to a known line, of the length of its segment
constexpr std::array<double, 9> kSearch{0.02, 0.08, 0.2, 0.35, 0.5, 0.65, 0.8, 0.92, 0.98};

double dot(Variables const& a, Variables const& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
Variables along(Variables const& a, double s, Variables const& t) {
    return {a[0] + s * t[0], a[1] + s * t[1], a[2] + s * t[2], a[3] + s * t[3]};
}
Variables difference(Variables const& a, Variables const& b) {
    return along(a, -1.0, b);
}
double length(Variables const& a) {
    return std::sqrt(dot(a, a));
}

struct Node {
    Variables y{}, t{};
    CriticalPoint point;
};
struct Curve {
    std::vector<Node> nodes;
    End begin = End::stuck, end = End::stuck;
    long evaluations = 0;
};

/// An end at which p or T takes a given value.
struct Limit {
    End end;
    double p, T;  // one of them is zero
    double excess(double p_, double T_) const { return p > 0.0 ? p_ / p - 1.0 : T_ / T - 1.0; }
    bool passed(double p_, double T_) const {
        return end == End::pressure ? p_ > p : excess(p_, T_) < 0.0;
    }
};

class Tracer {
  public:
    Tracer(ModelN const& model, CriticalLineOptions const& o)
        : model_(model),
          fluid_(model, middle()),
          o_(o),
          conditions_(fluid_),
          spinodal_(fluid_, conditions_),
          end_point_(fluid_, conditions_),
          certifier_(fluid_, conditions_) {
        if (!(o.p_max > 0.0) || !(o.T_min >= 0.0) || !(o.step > kShortest) || o.points < 2)
            throw ThException(th_out_of_range);
    }

    std::vector<CriticalLine> run() {
        for (int c : {0, 1}) pure_[c] = pure(c);
        for (int c : {0, 1})
            if (pure_[c] && pure_[c]->point.T > coldest() && !met_[c] && !done_) from_pure(c);
        if (o_.detached && !done_) search();
        if (curves_.empty())
            throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, "the whole binary",
                                     "critical_lines", conditions_.iterations, std::nan(""),
                                     "no critical point of a pure component and none in between");
        std::vector<CriticalLine> lines;
        for (Curve& curve : curves_) split(curve, lines);
        return lines;
    }

  private:
    static Vector<double> middle() {
        Vector<double> z(2);
        z.set(0.5);
        return z;
    }

    double coldest() const {
        if (o_.T_min > 0.0) return o_.T_min;
        return std::min({50.0, 0.5 * model_.mdl1[0]->Tcrit(), 0.5 * model_.mdl1[1]->Tcrit()});
    }

    /// x_0 = 1 at component 0.
    std::optional<Node> pure(int component) {
        Vector<double> z(2);
        z[component] = 1.0;
        z[1 - component] = 0.0;
        Node q;
        CriticalOptions options;
        options.validity = o_.validity;
        try {
            q.point = critical_point(model_, z, options);
        } catch (EquilibriumFailure const&) {
            return {};  // lines may exist all the same
        }
        q.y = {std::log(q.point.rho), std::log(q.point.T), z[0], z[1]};
        return q;
    }

    void from_pure(int c) {
        Node start = *pure_[c];
        Variables y = start.y;
        y[2] = c == 0 ? 1.0 - kTrace : kTrace;
        y[3] = c == 0 ? kTrace : 1.0 - kTrace;
        std::array<double, 9> J;
        if (!conditions_.evaluate(y, 3) || !conditions_.gradients(y, 3, J.data())) return;
        start.t = CriticalConditions::tangent(J.data());
        if ((start.t[2] > 0.0) != (c == 1))
            for (double& v : start.t) v = -v;
        Curve curve;
        const long before = fluid_.evaluations;
        curve.begin = End::pure;
        curve.nodes.push_back(start);
        met_[c] = true;
        curve.end = trace(curve.nodes);
        curve.evaluations = fluid_.evaluations - before;
        curves_.push_back(std::move(curve));
    }

    /// The solution of conditions_ at y as a node; its direction is that of `forward`.
    bool node(Node& q, Variables const& forward, bool first = true) {
        q.t = conditions_.tangent();
        if (dot(q.t, forward) < 0.0)
            for (double& v : q.t) v = -v;
        const long before = fluid_.evaluations;
        if (!certifier_.certify(q.y, 3, first, o_.validity, q.point)) return false;
        q.point.certificate.evaluations = fluid_.evaluations - before;
        return true;
    }

    /// Extends the curve from its last node in the direction of its tangent.
    End trace(std::vector<Node>& nodes) {
        const Variables first = nodes.back().y;
        double step = 0.3 * o_.step, farthest = 0.0;
        while (true) {
            ++count_;
            if (count_ >= o_.points) return done_ = true, End::full;
            if (o_.progress && !o_.progress(count_)) return done_ = true, End::interrupted;
            const Node last = nodes.back();
            Node next;
            double cosine = 1.0;
            for (;; step *= 0.5) {
                if (step < kShortest) return End::stuck;
                next.y = along(last.y, step, last.t);
                if (!(next.y[2] > 0.0 && next.y[3] > 0.0)) {
                    if (meets_pure(last, next.y[2] > 0.5 ? 0 : 1, step, nodes)) return End::pure;
                    continue;
                }
                conditions_.u = u_;
                if (!conditions_.solve(next.y, 3, &last.t, dot(last.t, next.y), kNewton)) continue;
                const Variables move = difference(next.y, last.y);
                cosine = std::fabs(dot(conditions_.tangent(), last.t));
                if (dot(move, last.t) > kStray * length(move) && cosine > kTurn) break;
            }
            const std::vector<double> u = conditions_.u;
            const double p = conditions_.s.p;
            for (Limit const& l : limits_)
                if (l.passed(p, conditions_.s.T)) {
                    if (!limit(last, next, l)) return l.end == End::tension ? l.end : End::stuck;
                    nodes.push_back(next);
                    return l.end;
                }
            if (!node(next, last.t)) return End::stuck;
            u_ = u;
            nodes.push_back(next);
            const double away = length(difference(next.y, first));
            if (away < step && farthest > 3.0 * step && dot(next.t, nodes.front().t) > kTurn) {
                nodes.push_back(nodes.front());
                return End::closed;
            }
            farthest = std::max(farthest, away);
            const double turn = std::acos(std::min(cosine, 1.0));
            step = std::min(o_.step, step * std::clamp(kWanted / turn, 0.5, 1.6));
        }
    }

    bool meets_pure(Node const& last, int c, double step, std::vector<Node>& nodes) {
        if (!pure_[c]) return false;
        const Variables move = difference(pure_[c]->y, last.y);
        if (length(move) > 2.0 * step || dot(move, last.t) < kStray * length(move)) return false;
        nodes.push_back(*pure_[c]);
        met_[c] = true;
        return true;
    }

    /// Solves the conditions on the plane across the chord from a to b, at its part s.
    bool across(Node const& a, Node const& b, double s, Variables& y) {
        const Variables chord = difference(b.y, a.y);
        y = along(a.y, s, chord);
        return conditions_.solve(y, 3, &chord, dot(chord, y), kNewton);
    }
    /// Moves b to the limit, by the Illinois method.
    bool limit(Node const& a, Node& b, Limit const& l) {
        double s0 = 0.0, f0 = l.excess(a.point.p, a.point.T), s1 = 1.0,
               f1 = l.excess(conditions_.s.p, conditions_.s.T);
        Node q = b;
        for (int it = 0; it < kLocate && std::fabs(f1) > kLimit; ++it) {
            const double s = s1 - (s1 - s0) * f1 / (f1 - f0);
            if (!across(a, b, s, q.y)) return false;
            const double f = l.excess(conditions_.s.p, conditions_.s.T);
            if (f * f1 < 0.0) {
                s0 = s1;
                f0 = f1;
            } else {
                f0 *= 0.5;
            }
            s1 = s;
            f1 = f;
        }
        b.y = q.y;
        return node(b, a.t);
    }

    /// The critical end point between a stable and an unstable node.
    bool end_point(Node stable, Node unstable, CriticalPoint& point, PhaseRecord& phase,
                   bool& beyond) {
        const Variables from = stable.y, direction = difference(stable.y, unstable.y);
        Node q;
        TrialPhase trial;
        beyond = false;
        double s = 1.0;
        for (int it = 0; it < kLocate; ++it, s = 0.5) {
            if (!across(stable, unstable, s, q.y) || !node(q, stable.t, false)) return false;
            if (q.point.stable) {
                stable = q;
                continue;
            }
            unstable = q;
            trial = certifier_.result.trial;
            if (trial.w.empty()) continue;
            const double width = length(difference(unstable.y, stable.y));
            Variables y = q.y;
            if (!end_point_.solve(y, trial.rho, trial.w) ||
                length(difference(y, q.y)) > 1.5 * width)
                continue;
            const PhaseState critical = conditions_.s;
            PhaseState const& other = end_point_.other;
            const double apart = std::fabs(std::log(other.rho / critical.rho)) +
                                 std::fabs(other.x[0] - critical.x[0]);
            if (!(critical.p > 0.0) || apart < 1e-3) continue;
            certifier_.test(critical, &other, true);
            const StabilityResult r = certifier_.result;
            if (!r.stable) continue;
            point = q.point;
            point.T = critical.T;
            point.p = critical.p;
            point.rho = critical.rho;
            point.x = fluid_.expand(critical.x);
            point.stable = true;
            Certificate& c = point.certificate;
            certify(fluid_, point.p, {&critical, &other}, c);
            c.conditions = conditions_.residual();
            c.tpd = std::min(0.0, r.tpd);
            c.flag(o_.validity, point.T, point.p, point.x);
            if (!c.holds()) continue;
            phase = c.phases[1];
            beyond = dot(difference(y, from), direction) > 0.0;
            return true;
        }
        // So close to the pure component that the trace of the other one cannot be resolved.
        const int absent = stable.y[2] == 0.0 ? 0 : 1;
        if (stable.y[2 + absent] > 0.0 || unstable.y[2 + absent] > kUnresolved) return false;
        point = stable.point;
        phase = {trial.rho, pure_[absent] ? pure_[absent]->point.x : point.x};
        return true;
    }

    /// Into stretches that are stable, or not.
    void split(Curve& curve, std::vector<CriticalLine>& lines) {
        std::vector<Node> const& nodes = curve.nodes;
        CriticalLine line;
        line.begin = curve.begin;
        line.stable = nodes.front().point.stable;
        line.evaluations = curve.evaluations;
        const auto finish = [&] {
            if (line.stable || o_.unstable) lines.push_back(line);
        };
        for (std::size_t k = 0; k < nodes.size(); ++k) {
            line.points.push_back(nodes[k].point);
            if (k + 1 == nodes.size() || nodes[k + 1].point.stable == line.stable) continue;
            CriticalPoint point;
            PhaseRecord phase;
            // beyond: the tangent-plane test had missed the other phase at the node called stable
            bool beyond = false;
            const bool found = line.stable
                                   ? end_point(nodes[k], nodes[k + 1], point, phase, beyond)
                                   : end_point(nodes[k + 1], nodes[k], point, phase, beyond);
            if (beyond && line.stable && line.points.size() > 1) line.points.pop_back();
            line.end = found ? End::end_point : End::stuck;
            if (found) {
                if (point.x[0] != line.points.back().x[0]) line.points.push_back(point);
                line.end_phase = phase;
            }
            finish();
            CriticalLine next;
            next.begin = line.end;
            next.begin_phase = line.end_phase;
            next.stable = !line.stable;
            next.evaluations = line.evaluations;
            if (found) next.points.push_back(point);
            if (beyond && next.stable && k + 2 < nodes.size() && nodes[k + 2].point.stable) ++k;
            line = std::move(next);
        }
        line.end = curve.end;
        finish();
    }

    bool known(Variables const& y) const {
        for (Curve const& curve : curves_)
            for (std::size_t k = 1; k < curve.nodes.size(); ++k) {
                Variables const& a = curve.nodes[k - 1].y;
                const Variables chord = difference(curve.nodes[k].y, a);
                const double size = length(chord);
                const double s = dot(difference(y, a), chord) / (size * size);
                if (s < -0.2 || s > 1.2) continue;
                if (length(difference(y, along(a, s, chord))) < kSame * size + 1e-6) return true;
            }
        return false;
    }

    /// A critical point near y, at fixed x_0 (k = 2) or ln rho (k = 0): the start of a new curve?
    void candidate(Variables y, int k) {
        if (done_ || known(y)) return;
        Variables row{};
        row[k] = 1.0;
        if (!conditions_.solve(y, 3, &row, y[k], kSearchNewton) || known(y)) return;
        for (Limit const& l : limits_)
            if (l.passed(conditions_.s.p, conditions_.s.T)) return;
        const long before = fluid_.evaluations;
        Node start;
        start.y = y;
        u_ = conditions_.u;
        const std::vector<double> u = u_;
        if (!node(start, conditions_.tangent())) return;
        Curve curve;
        curve.nodes.push_back(start);
        for (double& v : curve.nodes[0].t) v = -v;
        curve.begin = trace(curve.nodes);
        std::reverse(curve.nodes.begin(), curve.nodes.end());
        for (Node& q : curve.nodes)
            for (double& v : q.t) v = -v;
        u_ = u;
        curve.end = curve.begin == End::closed ? End::closed
                    : done_                    ? End::interrupted
                                               : trace(curve.nodes);
        curve.evaluations = fluid_.evaluations - before;
        curves_.push_back(std::move(curve));
    }

    void search() {
        std::array<std::array<std::vector<SpinodalState>, Spinodal::kDensities>, 2> grid;
        for (std::size_t i = 0; i < kSearch.size(); ++i) {
            auto& now = grid[i % 2];
            auto const& last = grid[(i + 1) % 2];
            const std::vector<double> x{kSearch[i], 1.0 - kSearch[i]};
            for (int k = 0; k < Spinodal::kDensities; ++k) {
                auto const& beside = k > 0 ? now[k - 1] : last[k];
                spinodal_.column({spinodal_.density(x, k), 0.0, x[0], x[1]}, 3, beside, now[k]);
                if (k > 0) changes(beside, now[k], 2);
            }
            if (i > 0)
                for (int k = 0; k < Spinodal::kDensities; ++k) changes(last[k], now[k], 0);
        }
    }
    void changes(std::vector<SpinodalState> const& a, std::vector<SpinodalState> const& b, int k) {
        for (std::size_t j = 0; j < std::min(a.size(), b.size()); ++j) {
            double direction = 0.0;
            for (int i = 0; i < 2; ++i) direction += a[j].u[i] * b[j].u[i];
            SpinodalState end = b[j];
            if (direction < 0.0) end.C = -end.C;
            if (a[j].C * end.C > 0.0) continue;
            conditions_.u = a[j].u;
            candidate(between(a[j], end), k);
        }
    }

    ModelN const& model_;
    const FluidModel fluid_;
    const CriticalLineOptions o_;
    CriticalConditions conditions_;
    Spinodal spinodal_;
    CriticalEndPoint end_point_;
    CriticalCertifier certifier_;
    std::vector<double> u_ = {0.0, 0.0};  // orientation of the last node
    const std::array<Limit, 3> limits_{Limit{End::pressure, o_.p_max, 0.0},
                                       {End::tension, kLowest, 0.0},
                                       {End::cold, 0.0, coldest()}};
    std::optional<Node> pure_[2];
    bool met_[2] = {false, false}, done_ = false;
    int count_ = 0;
    std::vector<Curve> curves_;
};
}  // namespace

char const* in_words(CriticalLineEnd end) {
    switch (end) {
        case End::pure:
            return "a pure component";
        case End::end_point:
            return "a critical end point, where another phase coexists with the critical one";
        case End::pressure:
            return "the highest pressure asked for";
        case End::tension:
            return "a pressure that is no longer positive; it goes on under tension";
        case End::cold:
            return "the lowest temperature asked for";
        case End::full:
            return "the largest number of points; it goes on";
        case End::interrupted:
            return "the caller's request";
        case End::closed:
            return "its first point: a closed line";
        case End::stuck:
            break;
    }
    return "an open end: no further point was found";
}

std::vector<CriticalLine> critical_lines(ModelN const& binary, CriticalLineOptions const& options) {
    if (binary.mdl1.size() != 2) throw ThException(th_no_option);
    return Tracer(binary, options).run();
}

}  // namespace corvane
