// Newton's method with bounded steps. Internal to the library.
#pragma once

#include <corvane/phases/numerics/dense.h>

#include <algorithm>
#include <cmath>

namespace corvane::inline detail {

/// The part of a Newton step that keeps every change within its bound.
class StepBound {
  public:
    void operator()(double change, double most) {
        part_ = std::min(part_, most / std::max(1e-300, std::fabs(change)));
    }
    double part() const { return part_; }

  private:
    double part_ = 1.0;
};

/// Newton's method for the m equations r = 0 with the Jacobian J (m×m, row by row), at most `limit`
/// steps. The caller's part of every iteration, in this order:
///   evaluate()       the equations at the variables; false ends the search
///   converged(step)  is this the solution? `step` is the largest element of the last Newton step
///                    before it was shortened, 1 at first
///   assemble()       r and J, where evaluate() has not left them there; false ends the search
///   advance(step)    moves the variables by at most the step that r then holds; false ends the
///                    search
/// J is overwritten. False without a solution; then r is of no use.
template <class Evaluate, class Converged, class Assemble, class Advance>
bool damped_newton(int m, double* J, double* r, int limit, int& iterations, Evaluate&& evaluate,
                   Converged&& converged, Assemble&& assemble, Advance&& advance) {
    double step = 1.0;
    for (int it = 0; it <= limit; ++it) {
        ++iterations;
        if (!evaluate()) return false;
        if (converged(step)) return true;
        if (it == limit || !assemble()) return false;
        for (int i = 0; i < m; ++i) r[i] = -r[i];
        if (!lu_solve(m, J, r)) return false;
        step = 0.0;
        for (int i = 0; i < m; ++i) step = std::max(step, std::fabs(r[i]));
        if (!advance(step)) return false;
    }
    return false;
}

}  // namespace corvane::inline detail
