#include <corvane/phases/flash/two_phases.h>
#include <corvane/phases/numerics/dense.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kSubstitutions = 2, kIterations = 60;
constexpr double kConverged = 1e-11;  // of the potentials
constexpr double kFar = 2.0;          // of the potentials: substitution before Newton's method
constexpr double kNothing = 1e-14;    // amount of a phase that is no start
constexpr double kRounding = 1e-9;    // what rounding may leave of the potentials, see Certificate
}  // namespace

TwoPhases::TwoPhases(FluidModel const& fluid) : fluid_(fluid), n_(fluid.size()) {
    for (PhaseState* s : {&a, &b}) s->resize(n_);
    const auto n = static_cast<std::size_t>(n_);
    for (auto* v : {&l_, &v_, &lnK, &K_, &x_, &y_, &step_, &down_}) v->resize(n);
    hess_.resize(n * n);
}
void TwoPhases::begin(double p, double T) {
    p_ = p;
    T_ = T;
    beta = 0.5;
    residual = 0.0;
    iterations = 0;
}

bool TwoPhases::wilson() {
    for (int i = 0; i < n_; ++i) lnK[i] = fluid_.wilson(i, T_) - std::log(p_);
    return rachford_rice() && solve(true);
}

/// Fraction of phase b for lnK by Newton's method kept in a bracket; writes x_, y_ (sums 1).
/// False if the whole fraction 0 … 1 has no root.
bool TwoPhases::rachford_rice() {
    std::vector<double> const& z = fluid_.z();
    double lo = 0.0, hi = 1.0, at0 = -1.0, at1 = 1.0;
    for (int i = 0; i < n_; ++i) {
        step_[i] = std::expm1(lnK[i]);
        K_[i] = std::exp(lnK[i]);  // which expm1 loses where it is small
        at0 += z[i] * K_[i];
        at1 -= z[i] / K_[i];
    }
    if (!(at0 > 0.0) || !(at1 < 0.0)) return false;
    double f = beta > 0.0 && beta < 1.0 ? beta : 0.5;
    for (int it = 0; it < 100; ++it) {
        double g = 0.0, d = 0.0;
        for (int i = 0; i < n_; ++i) {
            const double q = step_[i] / (1.0 + f * step_[i]);
            g += z[i] * q;
            d -= z[i] * q * q;
        }
        (g > 0.0 ? lo : hi) = f;
        double next = f - g / d;
        if (!(next > lo) || !(next < hi)) next = 0.5 * (lo + hi);
        const double moved = std::fabs(next - f);
        f = next;
        if (moved < 1e-14) break;
    }
    beta = f;
    // l is not z − v, which would lose a component of which phase a holds traces.
    double sum_x = 0.0, sum_y = 0.0;
    for (int i = 0; i < n_; ++i) {
        sum_x += x_[i] = z[i] / (1.0 + f * step_[i]);
        sum_y += y_[i] = x_[i] * K_[i];
    }
    for (int i = 0; i < n_; ++i) {
        v_[i] = f * y_[i];
        l_[i] = (1.0 - f) * x_[i];
        x_[i] /= sum_x;
        y_[i] /= sum_y;
    }
    return true;
}

/// Mole fractions from the amounts l_ in phase a and v_ in phase b; false if impossible.
bool TwoPhases::fractions() {
    double in_a = 0.0;
    beta = 0.0;
    for (int i = 0; i < n_; ++i) {
        if (!(v_[i] > 0.0) || !(l_[i] > 0.0)) return false;
        beta += v_[i];
        in_a += l_[i];
    }
    for (int i = 0; i < n_; ++i) {
        y_[i] = v_[i] / beta;
        x_[i] = l_[i] / in_a;
    }
    return true;
}
/// Both phases at x_ and y_; sets gibbs_ and residual.
bool TwoPhases::evaluate(int order) {
    if (order & phase_H) order |= phase_p;  // as the certificate asks for
    if (!fluid_.evaluate_at(a, p_, T_, x_, Root::stable, order) ||
        !fluid_.evaluate_at(b, p_, T_, y_, Root::stable, order))
        return false;
    gibbs_ = residual = 0.0;
    for (int i = 0; i < n_; ++i) {
        gibbs_ += l_[i] * a.m[i] + v_[i] * b.m[i];
        residual = std::max(residual, std::fabs(b.m[i] - a.m[i]));
    }
    return std::isfinite(gibbs_);
}

/// Amounts from the K-factors of the present phases; the old ones where these enclose no split.
bool TwoPhases::substitute(int order) {
    K_factors();
    return rachford_rice() && evaluate(order);
}
/// A substitution, at the present fraction of phase b where the K-factors enclose no split;
/// false and without effect if it does not lower the energy. Far from equilibrium it settles
/// traces of any power of ten, of which a step in the amounts gains one.
bool TwoPhases::descended() {
    from_l_ = l_;
    from_v_ = v_;
    const double before = gibbs_;
    if ((substitute(phase_H) || at_fraction()) && gibbs_ < before) return true;
    restore();
    return false;
}
bool TwoPhases::at_fraction() {
    for (int i = 0; i < n_; ++i) {
        const double in_b = beta * std::exp(lnK[i]);
        l_[i] = fluid_.z()[i] * (1.0 - beta) / (1.0 - beta + in_b);
        v_[i] = fluid_.z()[i] * in_b / (1.0 - beta + in_b);
    }
    return fractions() && evaluate(phase_H);
}
void TwoPhases::K_factors() {
    for (int i = 0; i < n_; ++i) lnK[i] = a.m[i] - std::log(x_[i]) - (b.m[i] - std::log(y_[i]));
    ++iterations;
}

/// Two phases from lnK. `guess`: give up where the phases vanish or grow alike, and where the energy
/// has no minimum near: where Newton's matrix is not definite, or a third step along it does not
/// lower the energy. Of 11,000 guesses that led to two phases 9 met that on their way, of those that
/// led nowhere all that lasted.
bool TwoPhases::solve(bool guess) {
    guess_ = guess;
    // The trial's K-factors need not enclose a split: then a little of b beside the whole. Those
    // of a trial beside the whole enclose one of no amount, or none, as their sum is rounded.
    if ((!rachford_rice() || (!guess && beta < kNothing)) && (small_amount(), !fractions()))
        return false;
    if (!evaluate(guess ? 0 : phase_H)) return false;
    for (int it = 1; it <= kSubstitutions; ++it) {
        if (!guess && !descended()) break;
        if (guess && !substitute(it < kSubstitutions ? 0 : phase_H)) return false;
    }
    for (int it = 0; it < kIterations && residual > kConverged; ++it) {
        ++iterations;
        if ((residual > kFar && descended()) || newton()) continue;
        if (guess && residual > kRounding) return false;
        const double last = residual;
        if (!substitute(phase_H) || (residual < kRounding / 10 && residual > 0.5 * last)) break;
    }
    if (!(residual <= kRounding)) return false;
    double apart = 0.0;
    for (int i = 0; i < n_; ++i)
        apart = std::max(apart, std::fabs(std::log(a.rho_i[i] / b.rho_i[i])));
    return apart > 1e-4;
}

/// A twentieth of what phase b could take of the limiting component.
void TwoPhases::small_amount() {
    double most = 1e300, sum = 0.0;
    for (int i = 0; i < n_; ++i) sum += y_[i] = fluid_.z()[i] * std::exp(lnK[i]);
    for (int i = 0; i < n_; ++i) most = std::min(most, fluid_.z()[i] * sum / y_[i]);
    for (int i = 0; i < n_; ++i) l_[i] = fluid_.z()[i] - (v_[i] = 0.05 * most * y_[i] / sum);
}

/// One step of Newton's method on the Gibbs energy; false if no shorter step lowers it. Where
/// the energy is not convex, multiples of the ideal part's diagonal make the matrix definite
/// (Michelsen, 1982), which turns the step towards a substitution.
bool TwoPhases::newton() {
    for (int i = 0; i < n_; ++i)
        for (int j = 0; j < n_; ++j)
            hess_[i * n_ + j] = b.m_n(i, j) / beta + a.m_n(i, j) / (1.0 - beta);
    from_l_ = l_;
    from_v_ = v_;
    second_ = hess_;
    for (int i = 0; i < n_; ++i) down_[i] = a.m[i] - b.m[i];
    for (double shift : {0.0, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 0.1, 1.0, 10.0}) {
        if (shift > 0.0 && guess_) return false;
        hess_ = second_;
        step_ = down_;
        for (int i = 0; i < n_; ++i)
            hess_[i * n_ + i] += shift * (1.0 / from_v_[i] + 1.0 / from_l_[i]);
        if (!cholesky_solve(n_, hess_.data(), step_.data()) || !line_search()) continue;
        if (shift > 0.0) lengthen();
        return true;
    }
    return false;
}
/// The longest of some steps along step_ that lowers the energy; else all is as it was.
bool TwoPhases::line_search() {
    const double before = gibbs_, last = residual;
    double scale = 1.0;
    for (int i = 0; i < n_; ++i) {
        const double room = step_[i] > 0.0 ? l_[i] : v_[i];
        scale = std::min(scale, 0.9 * room / std::max(std::fabs(step_[i]), 1e-300));
    }
    for (int k = 0; k < (guess_ ? 3 : 12); ++k, scale *= 0.4) {
        for (int i = 0; i < n_; ++i) {
            v_[i] = from_v_[i] + scale * step_[i];
            l_[i] = from_l_[i] - scale * step_[i];
        }
        if (!fractions() || !evaluate(phase_H)) continue;
        // Next to the solution the energy is flat to rounding, and the potentials tell.
        const double rounding = 1e-13 * std::fabs(before);
        if (gibbs_ < before - rounding || (gibbs_ < before + rounding && residual < 0.9 * last))
            return true;
    }
    restore();
    return false;
}
/// A shift makes steps short where the energy is flat: longer ones while it falls.
void TwoPhases::lengthen() {
    for (double scale = 4.0; scale < 1e4; scale *= 4.0) {
        const double before = gibbs_;
        const std::vector<double> l = l_, v = v_;
        for (int i = 0; i < n_; ++i) {
            v_[i] = from_v_[i] + scale * step_[i];
            l_[i] = from_l_[i] - scale * step_[i];
        }
        if (fractions() && evaluate(phase_H) && gibbs_ < before) continue;
        from_l_ = l;
        from_v_ = v;
        return restore();
    }
}
void TwoPhases::restore() {
    l_ = from_l_;
    v_ = from_v_;
    fractions();
    evaluate(phase_H);
}

}  // namespace corvane
