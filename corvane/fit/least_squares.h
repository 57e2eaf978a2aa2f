// Nonlinear least squares with bounds and robust losses, and what the solution says of itself.
// Internal to the library.
#pragma once

#include <corvane/fit/fit.h>

#include <Eigen/Dense>

#include <functional>

namespace corvane::fit {

/// Residuals at x, and with `J` their derivatives. False where they are not finite.
using Residuals =
    std::function<bool(Eigen::VectorXd const& x, Eigen::VectorXd& r, Eigen::MatrixXd* J)>;

struct LeastSquares {
    Loss loss = Loss::squares;
    double width = 1.0;
    int losses = -1;               ///< the loss applies to the first so many residuals; −1: all
    Eigen::VectorXd lower, upper;  ///< or empty
    Eigen::VectorXd room;          ///< no step is longer than |x| + room; empty: 1
    int limit = 100;
    std::function<bool()> go_on = {};
};

struct Minimum {
    Eigen::VectorXd x, r;
    Eigen::MatrixXd J;
    double cost = 0.0;  ///< half the sum of losses
    int iterations = 0;
    bool converged = false;
};

/// Levenberg and Marquardt's method (Moré, Lecture Notes in Math. 630 (1978) 105) with columns
/// scaled by their largest norm so far, the damping of Nielsen (IMM-REP-1999-05, Technical
/// University of Denmark), and losses as weights of residuals (iteratively: the first-order part of
/// Triggs et al., Lecture Notes in Comput. Sci. 1883 (2000) 298). Variables at a bound whose
/// gradient points outside are held (Kanzow, Yamashita & Fukushima, J. Comput. Appl. Math. 172
/// (2004) 375: projected steps). A step that would take a variable by more than its own size is
/// shortened, which keeps exponentials where they have slopes. Converged: no step longer than 1e-9
/// of x is left, the gradient is orthogonal to the residuals to 1e-9, or these are 1e-14 of what
/// they were at the start.
Minimum minimise(Residuals const& f, Eigen::VectorXd x, LeastSquares const& how);

/// What a linear model says at the minimum, from the Jacobian and the residuals there (with the
/// weights of losses): σ² = Σr²/(rows − columns), covariance σ²·(JᵀJ)⁻¹, leverages
/// diag(J·(JᵀJ)⁻¹·Jᵀ); by singular values of J with columns of unit length, whose ratio is the
/// condition.
struct Uncertainty {
    double spread = 0.0, condition = 1.0;
    Eigen::VectorXd error, leverage;  ///< not-a-number where the data do not determine them
    Eigen::MatrixXd correlation;
    Eigen::VectorXd weakest;  ///< direction of the smallest singular value, by columns
};
Uncertainty uncertainty(Eigen::MatrixXd const& J, Eigen::VectorXd const& r);

/// Loss of r and its weight loss'(r)/(2r).
double loss_of(Loss loss, double width, double r);
double weight_of(Loss loss, double width, double r);

}  // namespace corvane::fit
