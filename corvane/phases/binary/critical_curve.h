// One critical curve of a binary, stable or not. Internal to the library.
#pragma once

#include <corvane/phases/binary/critical_end_point.h>
#include <corvane/phases/binary/critical_line.h>
#include <corvane/phases/continuation/continuation.h>
#include <corvane/phases/critical/critical_certificate.h>

#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace corvane::inline detail {

/// Points and directions in (ln rho, ln T, x_0); the fourth element follows the third.
namespace critical_metric {
using Variables = CriticalConditions::Variables;
inline double dot(Variables const& a, Variables const& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Variables along(Variables const& a, double s, Variables const& t) {
    return {a[0] + s * t[0], a[1] + s * t[1], a[2] + s * t[2], a[3] + s * t[3]};
}
inline Variables difference(Variables const& a, Variables const& b) {
    return along(a, -1.0, b);
}
inline double length(Variables const& a) {
    return std::sqrt(dot(a, a));
}
}  // namespace critical_metric

struct CriticalNode {
    CriticalConditions::Variables y{}, t{};  ///< t: direction of the curve, of unit length
    CriticalPoint point;
};
struct CriticalCurve {
    std::vector<CriticalNode> nodes;
    CriticalLineEnd begin = CriticalLineEnd::stuck, end = CriticalLineEnd::stuck;
    long evaluations = 0;
};

/// Traces curves by arc length (pseudo-arclength: Keller, in Applications of Bifurcation Theory,
/// Academic Press 1977, 359), and solves for what lies between two of their nodes.
class CriticalTracer {
  public:
    using Variables = CriticalConditions::Variables;
    /// @throws ThException 5 options out of range
    CriticalTracer(ModelN const& model, CriticalLineOptions const& options);

    /// From the pure component c. False if its critical point is unknown, outside the limits, or
    /// was met by a curve.
    bool from_pure(int c, CriticalCurve& curve);
    /// Both ways from the critical point near y, solved at fixed ln rho (k = 0) or x_0 (k = 2).
    /// `known` tells whether the solution lies on a curve that is there already.
    template <class Known>
    bool from_point(Variables y, int k, Known known, CriticalCurve& curve) {
        CriticalNode start;
        if (known(y) || !solve_near(y, k) || known(y) || !enter(y) || known(y) || !begin(y, start))
            return false;
        both_ways(start, curve);
        return true;
    }

    /// The critical end point between neighbouring nodes of a curve, and the phase that coexists
    /// there. beyond: it lies on the far side of `stable`, where the test had missed that phase.
    struct EndPoint {
        CriticalPoint point;
        PhaseRecord phase;
        bool beyond = false;
    };
    bool end_point(CriticalNode stable, CriticalNode unstable, EndPoint& found);

    // For continuation().
    Trial attempt(double& length, CurveEnd& end);
    double growth() const;
    int count() const { return count_; }
    CurveEnd lost() const { return CurveEnd::stuck; }
    std::optional<CurveEnd> arrive();

    FluidModel const fluid;
    CriticalConditions conditions;
    bool done = false;  ///< bound of the points, or interrupted by the caller

  private:
    /// An end at which p or T takes a given value.
    struct Limit {
        CriticalLineEnd end;
        double p, T;  // one of them is zero
        double excess(double p_, double T_) const { return p > 0.0 ? p_ / p - 1.0 : T_ / T - 1.0; }
        bool passed(double p_, double T_) const {
            return end == CriticalLineEnd::pressure ? p_ > p : excess(p_, T_) < 0.0;
        }
    };

    double coldest() const;
    Limit const* passed(double p, double T) const;
    void find_pure(int component);
    bool solve_near(Variables& y, int k);
    bool enter(Variables& y);
    bool begin(Variables const& y, CriticalNode& start);
    void both_ways(CriticalNode const& start, CriticalCurve& curve);
    bool node(CriticalNode& q, Variables const& forward, bool first = true);
    CriticalLineEnd trace(std::vector<CriticalNode>& nodes);
    bool meets_pure(CriticalNode const& last, int c, double step, std::vector<CriticalNode>& nodes);
    bool across(CriticalNode const& a, CriticalNode const& b, double s, Variables& y);
    bool limit(CriticalNode const& a, CriticalNode& b, Limit const& l);
    bool accept(CriticalNode const& near, Variables const& y, EndPoint& found);

    ModelN const& model_;
    const CriticalLineOptions o_;
    CriticalEndPoint end_point_;
    CriticalCertifier certifier_;
    const std::array<Limit, 3> limits_;
    std::vector<double> u_ = {0.0, 0.0};  // orientation at the last node
    std::optional<CriticalNode> pure_[2];
    bool met_[2] = {false, false};
    int count_ = 0;
    // Of the curve that is being traced: its nodes; the last step, with the cosine of its turn.
    std::vector<CriticalNode>* nodes_ = nullptr;
    CriticalNode next_;
    Variables first_{};
    double length_ = 0.0, cosine_ = 1.0, farthest_ = 0.0;
};

}  // namespace corvane::inline detail
