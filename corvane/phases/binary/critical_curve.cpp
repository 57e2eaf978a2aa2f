#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/binary/critical_curve.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <utility>

namespace corvane {
inline namespace detail {
using critical_metric::dot;  // beside that of other curves, where sources are compiled together
}
namespace {
using namespace critical_metric;
using End = CriticalLineEnd;

constexpr int kNewton = 8, kSearchNewton = 15, kLocate = 20;
constexpr double kShortest = 1e-7;            // step at which a line counts as lost
constexpr double kTrace = 1e-9;               // mole fraction for the tangent at a pure component
constexpr double kTurn = 0.9, kStray = 0.95;  // cosines: between tangents; of step and tangent
constexpr int kEnter = 6;
constexpr double kEnterStep = 0.03, kFarBelow = -100.0;  // the latter in MPa
constexpr double kLowest = 1e-3;                         // MPa: last point before tension
constexpr double kLimit = 1e-8;                          // accuracy of the ends at given p or T
constexpr double kUnresolved = 1e-9;                     // mole fraction
constexpr double kApart = 1e-3;   // in ln rho and x of the phases at an end point
constexpr double kWanted = 0.12;  // wanted turn per step, radian

Vector<double> composition(double x0) {
    Vector<double> z(2);
    z[0] = x0;
    z[1] = 1.0 - x0;
    return z;
}
void turn_back(Variables& t) {
    for (double& v : t) v = -v;
}
}  // namespace

CriticalTracer::CriticalTracer(ModelN const& model, CriticalLineOptions const& o)
    : fluid(model, composition(0.5)),
      conditions(fluid),
      model_(model),
      o_(o),
      end_point_(fluid, conditions),
      certifier_(fluid, conditions),
      limits_{Limit{End::pressure, o.p_max, 0.0}, Limit{End::tension, kLowest, 0.0},
              Limit{End::cold, 0.0, coldest()}} {
    if (!(o.p_max > 0.0) || !(o.T_min >= 0.0) || !(o.step > kShortest && o.step <= 1.0) ||
        o.points < 2)
        throw ThException(th_out_of_range);
    for (int c : {0, 1}) find_pure(c);
}

double CriticalTracer::coldest() const {
    if (o_.T_min > 0.0) return o_.T_min;
    return std::min({50.0, 0.5 * model_.mdl1[0]->Tcrit(), 0.5 * model_.mdl1[1]->Tcrit()});
}

CriticalTracer::Limit const* CriticalTracer::passed(double p, double T) const {
    for (Limit const& l : limits_)
        if (l.passed(p, T)) return &l;
    return nullptr;
}

void CriticalTracer::find_pure(int component) {
    CriticalNode q;
    CriticalOptions options;
    options.validity = o_.validity;
    try {
        q.point = critical_point(model_, composition(component == 0 ? 1.0 : 0.0), options);
    } catch (EquilibriumFailure const&) {
        return;  // lines may exist all the same
    }
    Vector<double> const& x = q.point.x;
    q.y = {std::log(q.point.rho), std::log(q.point.T), x[0], x[1]};
    pure_[component] = q;
}

bool CriticalTracer::from_pure(int c, CriticalCurve& curve) {
    if (!pure_[c] || met_[c] || passed(pure_[c]->point.p, pure_[c]->point.T)) return false;
    CriticalNode start = *pure_[c];
    Variables y = start.y;
    y[2 + c] = 1.0 - kTrace;
    y[3 - c] = kTrace;
    std::array<double, 9> J;
    if (!conditions.evaluate(y, 3) || !conditions.gradients(y, 3, J.data())) return false;
    start.t = CriticalConditions::tangent(J.data());
    if ((start.t[2] > 0.0) != (c == 1)) turn_back(start.t);
    const long before = fluid.evaluations;
    u_ = conditions.u;
    curve.begin = End::pure;
    curve.nodes = {start};
    met_[c] = true;
    curve.end = trace(curve.nodes);
    curve.evaluations = fluid.evaluations - before;
    return true;
}

bool CriticalTracer::solve_near(Variables& y, int k) {
    Variables row{};
    row[k] = 1.0;
    return conditions.solve(y, 3, &row, y[k], kSearchNewton);
}
/// From a critical point beyond the limits in p, along its curve to one within: between the
/// densities of a search a liquid's pressure may rise from 0 to p_max.
bool CriticalTracer::enter(Variables& y) {
    Variables forward{};
    for (int it = 0; it < kEnter; ++it) {
        Limit const* l = passed(conditions.s.p, conditions.s.T);
        if (!l) return true;
        if (l->end == End::cold || conditions.s.p < kFarBelow || conditions.s.p > 2.0 * o_.p_max)
            return false;
        const Variables from = y;
        Variables t = conditions.tangent();
        if (it == 0 ? (t[0] > 0.0) != (l->end == End::tension) : dot(t, forward) < 0.0)
            turn_back(t);  // at first by the density, with which the pressure mostly rises
        y = along(from, kEnterStep, t);
        if (!conditions.solve(y, 3, &t, dot(t, y), kNewton)) return false;
        forward = t;
    }
    return !passed(conditions.s.p, conditions.s.T);
}
bool CriticalTracer::begin(Variables const& y, CriticalNode& start) {
    start.y = y;
    u_ = conditions.u;
    return node(start, conditions.tangent());
}
void CriticalTracer::both_ways(CriticalNode const& start, CriticalCurve& curve) {
    const long before = fluid.evaluations;
    const std::vector<double> u = u_;
    curve.nodes = {start};
    turn_back(curve.nodes[0].t);
    curve.begin = trace(curve.nodes);
    std::reverse(curve.nodes.begin(), curve.nodes.end());
    for (CriticalNode& q : curve.nodes) turn_back(q.t);
    u_ = u;
    curve.end = curve.begin == End::closed || done ? curve.begin : trace(curve.nodes);
    curve.evaluations = fluid.evaluations - before;
}

/// The solution of conditions at y as a node; its direction is that of `forward`.
bool CriticalTracer::node(CriticalNode& q, Variables const& forward, bool first) {
    q.t = conditions.tangent();
    if (dot(q.t, forward) < 0.0) turn_back(q.t);
    const long before = fluid.evaluations;
    if (!certifier_.certify(q.y, 3, first, o_.validity, q.point)) return false;
    q.point.certificate.evaluations = fluid.evaluations - before;
    return true;
}

/// Extends the curve from its last node in the direction of its tangent.
CriticalLineEnd CriticalTracer::trace(std::vector<CriticalNode>& nodes) {
    nodes_ = &nodes;
    first_ = nodes.back().y;
    farthest_ = 0.0;
    ++count_;
    StepLength step{0.3 * o_.step, o_.step, kShortest, 0.5};
    const End why = continuation(*this, step, o_.points, o_.progress);
    done = done || why == End::full || why == End::interrupted;
    return why;
}

Trial CriticalTracer::attempt(double& length, CurveEnd& end) {
    CriticalNode const& last = nodes_->back();
    next_ = {};
    next_.y = along(last.y, length, last.t);
    if (!(next_.y[2] > 0.0 && next_.y[3] > 0.0)) {
        end = End::pure;
        return meets_pure(last, next_.y[2] > 0.5 ? 0 : 1, length, *nodes_) ? Trial::ended
                                                                         : Trial::failed;
    }
    conditions.u = u_;
    if (!conditions.solve(next_.y, 3, &last.t, dot(last.t, next_.y), kNewton)) return Trial::failed;
    const Variables move = difference(next_.y, last.y);
    cosine_ = std::fabs(dot(conditions.tangent(), last.t));
    length_ = length;
    return dot(move, last.t) > kStray * critical_metric::length(move) && cosine_ > kTurn
               ? Trial::taken
               : Trial::failed;
}

double CriticalTracer::growth() const {
    return std::clamp(kWanted / std::acos(std::min(cosine_, 1.0)), 0.5, 1.6);
}

std::optional<CurveEnd> CriticalTracer::arrive() {
    std::vector<CriticalNode>& nodes = *nodes_;
    const std::vector<double> u = conditions.u;
    if (Limit const* l = passed(conditions.s.p, conditions.s.T)) {
        if (!limit(nodes.back(), next_, *l)) return l->end == End::tension ? l->end : End::stuck;
        nodes.push_back(next_);
        return l->end;
    }
    if (!node(next_, nodes.back().t)) return End::stuck;
    u_ = u;
    nodes.push_back(next_);
    const double away = length(difference(next_.y, first_));
    if (away < length_ && farthest_ > 3.0 * length_ && dot(next_.t, nodes.front().t) > kTurn) {
        nodes.push_back(nodes.front());
        return End::closed;
    }
    farthest_ = std::max(farthest_, away);
    ++count_;
    return {};
}

bool CriticalTracer::meets_pure(CriticalNode const& last, int c, double step,
                                std::vector<CriticalNode>& nodes) {
    if (!pure_[c]) return false;
    const Variables move = difference(pure_[c]->y, last.y);
    if (length(move) > 2.0 * step || dot(move, last.t) < kStray * length(move)) return false;
    nodes.push_back(*pure_[c]);
    met_[c] = true;
    return true;
}

/// Solves the conditions on the plane across the chord from a to b, at its part s.
bool CriticalTracer::across(CriticalNode const& a, CriticalNode const& b, double s, Variables& y) {
    const Variables chord = difference(b.y, a.y);
    y = along(a.y, s, chord);
    return conditions.solve(y, 3, &chord, dot(chord, y), kNewton);
}
/// Moves b to the limit, by the Illinois method.
bool CriticalTracer::limit(CriticalNode const& a, CriticalNode& b, Limit const& l) {
    IllinoisBracket r{0.0, l.excess(a.point.p, a.point.T), 1.0,
                      l.excess(conditions.s.p, conditions.s.T)};
    CriticalNode q = b;
    for (int it = 0; it < kLocate && std::fabs(r.fb) > kLimit; ++it) {
        const double s = r.b - (r.b - r.a) * r.fb / (r.fb - r.fa);
        if (!across(a, b, s, q.y)) return false;
        r.take(s, l.excess(conditions.s.p, conditions.s.T));
    }
    b.y = q.y;
    return node(b, a.t);
}

bool CriticalTracer::end_point(CriticalNode stable, CriticalNode unstable, EndPoint& found) {
    const Variables from = stable.y, direction = difference(stable.y, unstable.y);
    CriticalNode q;
    TrialPhase trial;
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
        if (!end_point_.solve(y, trial.rho, trial.w) || length(difference(y, q.y)) > 1.5 * width ||
            !accept(q, y, found))
            continue;
        found.beyond = dot(difference(y, from), direction) > 0.0;
        return true;
    }
    // So close to the pure component that the trace of the other one cannot be resolved.
    const int absent = stable.y[2] == 0.0 ? 0 : 1;
    if (stable.y[2 + absent] > 0.0 || unstable.y[2 + absent] > kUnresolved) return false;
    found = {stable.point, {trial.rho, composition(absent == 0 ? 1.0 : 0.0)}, false};
    return true;
}

/// The solution of end_point_, if it holds: two phases that differ, and no third one.
bool CriticalTracer::accept(CriticalNode const& near, Variables const& y, EndPoint& found) {
    const PhaseState critical = conditions.s;
    PhaseState const& other = end_point_.other;
    const double apart =
        std::fabs(std::log(other.rho / critical.rho)) + std::fabs(other.x[0] - critical.x[0]);
    if (!(critical.p > 0.0) || apart < kApart) return false;
    certifier_.test(critical, &other, true);
    if (!certifier_.result.stable) return false;
    CriticalPoint q = near.point;
    q.certificate = {};
    q.certificate.evaluations = near.point.certificate.evaluations;
    q.T = critical.T;
    q.p = critical.p;
    q.rho = critical.rho;
    q.x = fluid.expand(critical.x);
    q.stable = true;
    Certificate& c = q.certificate;
    certify(fluid, q.p, {&critical, &other}, c);
    c.conditions = conditions.residual();
    c.tpd = std::min(0.0, certifier_.result.tpd);
    c.flag(o_.validity, q.T, q.p, q.x);
    if (!c.holds()) return false;
    end_point_.bound(y, c);
    found = {q, c.phases[1], false};
    return true;
}

}  // namespace corvane
