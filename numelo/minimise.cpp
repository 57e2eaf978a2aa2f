// Minimisation without derivatives: Powell's conjugate directions (Comput. J. 7 (1964) 155) with
// Brent's line search (Algorithms for Minimization without Derivatives, 1973, ch. 5).
#include <corvane/core/numelo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double eps = std::numeric_limits<double>::epsilon();
constexpr double golden = 0.3819660112501051;
constexpr double tolerance = 3e-9;  // of a line search, relative: sqrt(eps)
constexpr double first_tolerance = 1e-5, tightening = 1e-3;  // of the cycles before the last
constexpr double first_step = 0.02, least_size = 1e-3, later_step = 0.3;
constexpr int max_expansions = 60, max_line_steps = 80;

struct Point {
    double t, f;
};

class Powell {
  public:
    Powell(numelo_functionv f, void* ctx, Vector<double> const& x)
        : f_(f),
          ctx_(ctx),
          x_(x),
          trial_(x),
          value_(f(x, ctx)),
          line_tolerance_(x.n > 1 ? first_tolerance : tolerance) {
        if (!std::isfinite(value_)) throw MthException(mth_out_of_range);
        for (int i = 0; i < x.n; ++i) {
            std::vector<double> d(x.n);
            d[i] = size(x[i]);
            directions_.push_back({d, first_step});
        }
    }

    double run(Vector<double>& x, int maxit, bool trace) {
        const int n = x.n;
        for (int cycle = 1; n > 0; ++cycle) {
            if (cycle > maxit) throw MthException(mth_iterations);
            const Vector<double> start(x_);
            const double before = value_;
            int best = 0;
            double gain = 0.0;
            at_wall_ = false;
            for (int i = 0; i < n; ++i) {
                const double f = value_;
                search(directions_[i]);
                if (f - value_ > gain) {
                    gain = f - value_;
                    best = i;
                }
            }
            double moved = 0.0;
            for (int i = 0; i < n; ++i)
                moved = std::max(moved, std::fabs(x_[i] - start[i]) / size(x_[i]));
            if (trace)
                std::fprintf(stderr, "min_powell %3d  f %.12e  moved %.1e\n", cycle, value_, moved);
            // Searches are loose at first; the last cycle is one with full tolerance. With one
            // parameter the line is all there is.
            const bool still = moved < 2 * line_tolerance_ ||
                               before - value_ <= 4 * eps * std::fabs(value_) || n == 1;
            if (still && line_tolerance_ == tolerance) break;
            line_tolerance_ =
                still ? tolerance : std::clamp(tightening * moved, tolerance, line_tolerance_);
            if (still) continue;
            turn(start, before, best, gain, moved);
        }
        if (at_wall_) {
            if (failure_) std::rethrow_exception(failure_);
            throw MthException(mth_out_of_range);
        }
        x = x_;
        return value_;
    }

  private:
    struct Direction {
        std::vector<double> d;  // as long as x is large
        double step;            // first step to try, in units of d
    };

    static double size(double x) { return std::max(std::fabs(x), least_size); }

    double at(Direction const& line, double t) {
        for (int i = 0; i < x_.n; ++i) trial_[i] = x_[i] + t * line.d[i];
        try {
            const double f = f_(trial_, ctx_);
            return std::isfinite(f) ? f : infinity;
        } catch (...) {
            failure_ = std::current_exception();
            return infinity;
        }
    }

    /// Distance along the line that changes a component by its size.
    double unit(Direction const& line, double t) const {
        double most = 0.0;
        for (int i = 0; i < x_.n; ++i)
            most = std::max(most, std::fabs(line.d[i]) / size(x_[i] + t * line.d[i]));
        return 1.0 / most;
    }

    /// Moves x_ to the minimum along a line.
    void search(Direction& line) {
        const Point origin{0.0, value_};
        Point a{-line.step, infinity}, b = origin, c{line.step, at(line, line.step)};
        while (!(c.f < infinity) && c.t > tolerance) {  // walls close by: shorter steps
            a = {-c.t, at(line, -c.t)};
            if (a.f < infinity) break;
            c = {0.25 * c.t, at(line, 0.25 * c.t)};
        }
        if (c.f < b.f) {
            a = b;
            b = c;
            expand(line, a, b, c);
        } else {
            if (!(a.f < infinity)) a = {-c.t, at(line, -c.t)};
            if (a.f < b.f) {
                c = std::exchange(b, a);
                expand(line, c, b, a);
            }
        }
        const bool walls = brent(line, a, b, c, line_tolerance_ * unit(line, b.t));
        at_wall_ = at_wall_ || walls;
        for (int i = 0; i < x_.n; ++i) x_[i] += b.t * line.d[i];
        value_ = b.f;
        line.step = std::clamp(later_step * std::fabs(b.t), 1e2 * tolerance, 1.0);
    }

    /// Walks on from a over b, f(b) < f(a), until f rises at c.
    void expand(Direction const& line, Point& a, Point& b, Point& c) {
        for (int k = 0; k < max_expansions; ++k) {
            const double t = b.t + 1.6180339887498949 * (b.t - a.t);
            c = {t, at(line, t)};
            if (!(c.f < b.f)) return;
            a = b;
            b = c;
        }
        throw MthException(mth_iterations);
    }

    /// Brent's minimisation in the bracket (a, b, c), a.f >= b.f <= c.f; true if b ends against a
    /// wall.
    bool brent(Direction const& line, Point& a, Point& b, Point& c, double tol) {
        if (a.t > c.t) std::swap(a, c);
        Point w = a.f < c.f ? a : c, v = a.f < c.f ? c : a;
        double last = c.t - a.t, before = last;
        for (int k = 0; k < max_line_steps; ++k) {
            const double mid = 0.5 * (a.t + c.t);
            if (std::fabs(b.t - mid) + 0.5 * (c.t - a.t) <= 2 * tol) break;
            double step = 0.0;
            bool parabola = false;
            if (std::fabs(before) > tol && w.f < infinity && v.f < infinity) {
                const double r = (b.t - w.t) * (b.f - v.f), q0 = (b.t - v.t) * (b.f - w.f);
                double p = (b.t - v.t) * q0 - (b.t - w.t) * r, q = 2 * (q0 - r);
                if (q > 0) p = -p;
                q = std::fabs(q);
                if (std::fabs(p) < std::fabs(0.5 * q * before) && p > q * (a.t - b.t) &&
                    p < q * (c.t - b.t)) {
                    parabola = true;
                    before = last;
                    step = p / q;
                    const double t = b.t + step;
                    if (t - a.t < 2 * tol || c.t - t < 2 * tol) step = b.t < mid ? tol : -tol;
                }
            }
            if (!parabola) {
                before = b.t < mid ? c.t - b.t : a.t - b.t;
                step = golden * before;
            }
            last = step;
            if (std::fabs(step) < tol) step = std::copysign(tol, step);
            const Point u{b.t + step, at(line, b.t + step)};
            if (u.f <= b.f) {
                (u.t >= b.t ? a : c) = b;
                v = w;
                w = b;
                b = u;
            } else {
                (u.t < b.t ? a : c) = u;
                if (u.f <= w.f || w.t == b.t) {
                    v = w;
                    w = u;
                } else if (u.f <= v.f || v.t == b.t || v.t == w.t) {
                    v = u;
                }
            }
        }
        const double near = 8 * tol;
        return (!(a.f < infinity) && b.t - a.t < near) || (!(c.f < infinity) && c.t - b.t < near);
    }

    /// Powell's test, and the exchange of the direction of largest decrease for that of the cycle.
    void turn(Vector<double> const& start, double before, int best, double gain, double moved) {
        Direction whole{std::vector<double>(x_.n), moved};
        for (int i = 0; i < x_.n; ++i) whole.d[i] = (x_[i] - start[i]) / moved;
        const double beyond = at(whole, moved);
        const double rest = before - value_ - gain, change = before - beyond;
        if (!(beyond < before) ||
            2 * (before - 2 * value_ + beyond) * rest * rest >= gain * change * change)
            return;
        whole.step = std::max(later_step * moved, 1e2 * tolerance);
        search(whole);
        directions_[best] = std::move(directions_.back());
        directions_.back() = std::move(whole);
    }

    numelo_functionv f_;
    void* ctx_;
    Vector<double> x_, trial_;
    double value_, line_tolerance_;
    bool at_wall_ = false;
    std::vector<Direction> directions_;
    std::exception_ptr failure_;
};

}  // namespace

double min_powell(numelo_functionv f, Vector<double>& x, void* ctx, int maxit, int trace) {
    return Powell(f, ctx, x).run(x, maxit, trace != 0);
}
