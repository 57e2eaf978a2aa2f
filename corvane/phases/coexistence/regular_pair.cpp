#include <corvane/core/constants.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/numerics/newton.h>
#include <corvane/phases/report/error_bound.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kWide = 3e-3;   // least distance of the differences in the Jacobian
constexpr double kLeast = 1e-3, kTurn = 1e-2;  // and of F, the latter over the largest |n_i|
constexpr double kTiny = 1e-12;
constexpr double kStep = 1e-12, kStagnant[] = {1e-6, 1e-9};  // without exact derivatives, with

/// Positive nodes of Gauss–Legendre rules of an even number of points, with their weights on (0, 1).
struct Rule {
    int pairs = 0;
    std::array<double, 8> s{}, w{};

    explicit Rule(int points) : pairs(points / 2) {
        for (int k = 0; k < pairs; ++k) {
            double x = std::cos(3.14159265358979323846 * (k + 0.75) / (points + 0.5)), slope = 1.0;
            for (int it = 0; it < 20; ++it) {  // Newton's method on the Legendre polynomial
                double last = 1.0, now = x;
                for (int j = 2; j <= points; ++j) {
                    const double next = ((2 * j - 1) * x * now - (j - 1) * last) / j;
                    last = now;
                    now = next;
                }
                slope = points * (x * now - last) / (x * x - 1.0);
                const double step = now / slope;
                x -= step;
                if (std::fabs(step) < 1e-16) break;
            }
            s[k] = x;
            w[k] = 2.0 / ((1.0 - x * x) * slope * slope);
        }
    }
};
Rule const& rule(int points) {
    static const std::array<Rule, 4> rules{Rule(4), Rule(8), Rule(12), Rule(16)};
    return rules[points / 4 - 1];
}

/// (sinh(r)/r − 1)/r²
double sinh_rest(double r) {
    if (std::fabs(r) > 0.5) return (std::sinh(r) / r - 1.0) / (r * r);
    const double q = r * r;
    double sum = 0.0, term = 1.0 / 6.0;
    for (int k = 4; k < 20; k += 2) {
        sum += term;
        term *= q / (k * (k + 1));
    }
    return sum;
}
}  // namespace

RegularPair::RegularPair(FluidModel const& f) : fluid(f), n_(f.size()), m_(2 * n_ + 3) {
    for (PhaseState* s : {&a, &b, &node_, &other_, &wide_a_, &wide_b_}) s->resize(n_);
    for (auto* v : {&E_, &E_d_, &q_, &q2_}) v->resize(static_cast<std::size_t>(n_));
    resize();
}

void RegularPair::resize() {
    const auto m = static_cast<std::size_t>(m_);
    e_.resize(m);
    y.resize(m);
    r_.resize(m);
    jacobian_.resize(m * m);
}

void RegularPair::add(std::vector<double> const& rho, double part) {
    const int at = m_;
    m_ += n_ + 1;
    resize();
    for (int i = 0; i < n_; ++i) y[at + i] = std::log(rho[i]);
    y.back() = part;
    beside.emplace_back().resize(n_);
}

double RegularPair::first_part() const {
    double first = 1.0 - y[2 * n_ + 2];
    for (int k = 0; k < static_cast<int>(beside.size()); ++k) first -= part(k);
    return first;
}

void RegularPair::start(std::vector<double> const& rho_a, std::vector<double> const& rho_b, double t,
                        double fraction) {
    double d = 0.0;
    for (int i = 0; i < n_; ++i) {
        const double u = std::log(rho_a[i]), v = std::log(rho_b[i]);
        y[i] = 0.5 * (u + v);
        y[n_ + i] = 0.5 * (u - v);
        d += fluid.z()[i] * y[n_ + i] * y[n_ + i];
    }
    d = std::sqrt(d);
    for (int i = 0; i < n_; ++i) y[n_ + i] /= d;
    y[2 * n_] = d;
    y[2 * n_ + 1] = std::log(t);
    y[2 * n_ + 2] = fraction;
}

void RegularPair::start_critical(std::vector<double> const& rho, std::vector<double> const& u,
                                 double t) {
    for (int i = 0; i < n_; ++i) {
        y[i] = std::log(rho[i]);
        y[n_ + i] = u[i] / std::sqrt(fluid.z()[i]);
    }
    y[2 * n_] = 0.0;
    y[2 * n_ + 1] = std::log(t);
    y[2 * n_ + 2] = 0.0;
}

bool RegularPair::sides(PhaseState& first, PhaseState& second, double distance, int order) {
    const double t = std::exp(ln_T());
    for (int i = 0; i < n_; ++i) {
        first.rho_i[i] = std::exp(y[i] + distance * y[n_ + i]);
        second.rho_i[i] = std::exp(y[i] - distance * y[n_ + i]);
    }
    return fluid.evaluate(first, t, order) && fluid.evaluate(second, t, order);
}

/// The phases, the wide pair, and the slopes of E and F in d.
bool RegularPair::ends() {
    const double d = distance();
    if (!sides(a, b, d, phase_all)) return false;
    for (int k = 0; k < static_cast<int>(beside.size()); ++k) {
        for (int i = 0; i < n_; ++i) beside[k].rho_i[i] = std::exp(y[of_beside(k) + i]);
        if (!fluid.evaluate(beside[k], a.T, phase_all)) return false;
    }
    h_ = std::max(std::fabs(d), kWide);
    if (d == h_) {
        wide_a_ = a;
        wide_b_ = b;
    } else if (!sides(wide_a_, wide_b_, h_, phase_all)) {
        return false;
    }
    PhaseState const &p1 = wide_a_, &p2 = wide_b_;
    double total = 0.0, F = (p1.p - p2.p) / (R * p1.T), along = 0.0;
    for (int i = 0; i < n_; ++i) {
        const double c = std::exp(y[i]), r = h_ * y[n_ + i], dm = p1.m[i] - p2.m[i];
        total += c;
        F -= c * dm;
        double mean = 0.0;
        for (int j = 0; j < n_; ++j)
            mean += 0.5 * (p1.H[i * n_ + j] * p1.rho_i[j] + p2.H[i * n_ + j] * p2.rho_i[j]) *
                    y[n_ + j];
        E_d_[i] = (mean - dm / (2.0 * h_)) / (h_ * h_);
        for (int j = 0; j < n_; ++j)
            along += c * y[n_ + j] *
                     (std::expm1(r) * p1.H[i * n_ + j] * p1.rho_i[j] +
                      std::expm1(-r) * p2.H[i * n_ + j] * p2.rho_i[j]);
    }
    F /= 2.0 * total * h_ * h_ * h_;
    F_d_ = (along / (2.0 * total * h_ * h_) - 3.0 * F) / (h_ * h_);
    return true;
}

int RegularPair::nodes() const {
    double wide = std::fabs(distance());
    for (int i = 0; i < n_; ++i)  // a component counts by what it can do to the others
        wide = std::max(wide, std::fabs(distance() * y[n_ + i]) * std::min(1.0, 10.0 * a.x[i]));
    return wide < 0.02 ? 4 : wide < 0.2 ? 8 : 12;
}

/// E (or null) and F at a half distance, with bounds of their rounding, those of E in e_.
bool RegularPair::sums(int points, double h, double* E, double& F, double& rounding) {
    double total = 0.0;
    for (int i = 0; i < n_; ++i) total += std::exp(y[i]);
    F = rounding = 0.0;
    for (int i = 0; i < n_; ++i) {
        const double n = y[n_ + i];
        if (E) E[i] = n, e_[i] = 0.0;
        F += std::exp(y[i]) / total * n * n * n * sinh_rest(h * n);
    }
    constexpr double kUnit = 64 * std::numeric_limits<double>::epsilon();
    Rule const& gauss = rule(points);
    for (int k = 0; k < gauss.pairs; ++k) {
        const double s = gauss.s[k] * h, w = 0.5 * gauss.w[k];
        if (!sides(node_, other_, s, phase_H)) return false;
        for (int i = 0; i < n_; ++i) {
            double plus = -y[n_ + i], minus = plus, size = std::fabs(plus);
            for (int j = 0; j < n_; ++j) {
                const double up = node_.H[i * n_ + j] * node_.rho_i[j] * y[n_ + j],
                             down = other_.H[i * n_ + j] * other_.rho_i[j] * y[n_ + j];
                plus += up;
                minus += down;
                size += std::fabs(up) + std::fabs(down);
            }
            const double r = s * y[n_ + i], c = std::exp(y[i]) / total;
            const double odd = std::sinh(r) / h, even = 2.0 * std::sinh(0.5 * r) / h;
            F += w * c * (odd * ((plus - minus) / h) + 0.5 * even * even * (plus + minus));
            rounding += w * c * kUnit * size * std::fabs(odd) / h;
            if (E) E[i] += w * (plus + minus), e_[i] += w * kUnit * size;
        }
    }
    return std::isfinite(F);
}

/// E_ and F_ at y, with bounds of their errors in e_.
bool RegularPair::integrals(int points) {
    double steepest = 0.0, error = 0.0;
    for (int i = 0; i < n_; ++i) steepest = std::max(steepest, std::fabs(y[n_ + i]));
    const double d = std::max(std::fabs(distance()), kTiny), h = std::min(kLeast, kTurn / steepest);
    if (!sums(points, d, E_.data(), F_, error)) return false;
    if (d < h) {
        const double q = (d / h) * (d / h);
        const double w[] = {(q - 4.0) * (q - 9.0) / 24.0, (q - 1.0) * (q - 9.0) / -15.0,
                            (q - 1.0) * (q - 4.0) / 40.0},
                     line[] = {(4.0 - q) / 3.0, (q - 1.0) / 3.0, 0.0};
        double bend = 0.0;
        F_ = error = 0.0;
        for (int k = 0; k < 3; ++k) {
            double F = 0.0, rounding = 0.0;
            if (!sums(points, (k + 1) * h, nullptr, F, rounding)) return false;
            F_ += w[k] * F;
            bend += (w[k] - line[k]) * F;
            error += std::fabs(w[k]) * rounding;
        }
        error += std::fabs(bend) * 9.0 * h * h * steepest * steepest;
    }
    e_[n_] = error;
    if (!fluid.exact())
        for (int i = 0; i <= n_; ++i) e_[i] *= 1e7;
    return std::isfinite(F_);
}

/// Rows: E, F, the length of n, the phases beside, the composition of the whole, then what is
/// fixed. `tangent`: d is.
void RegularPair::assemble(bool tangent) {
    std::fill(jacobian_.begin(), jacobian_.end(), 0.0);
    double *J = jacobian_.data(), *r = r_.data();
    equilibrium(J, r);
    J += (n_ + 1) * m_;
    r += n_ + 1;
    double norm = -1.0;
    for (int i = 0; i < n_; ++i) {
        norm += fluid.z()[i] * y[n_ + i] * y[n_ + i];
        J[n_ + i] = fluid.z()[i] * y[n_ + i];
    }
    *r++ = 0.5 * norm;
    J += m_;
    if (free_composition) return fix(J, r, tangent);
    for (int k = 0; k < static_cast<int>(beside.size()); ++k, J += (n_ + 1) * m_, r += n_ + 1)
        equal(k, J, r);
    compose(J, r);
    fix(J + (n_ - 1) * m_, r + n_ - 1, tangent);
}

/// Potentials and pressure of a phase beside them against a.
void RegularPair::equal(int k, double* J, double* r) const {
    const int n = n_, m = m_, at_d = 2 * n, at_T = at_d + 1, own = of_beside(k);
    const double d = distance(), scale = 1.0 / a.rho;
    PhaseState const& c = beside[k];
    const auto row = [&](double off, double off_T, auto slope_c, auto slope_a) {
        *r++ = off;
        for (int j = 0; j < n; ++j) {
            const double of_a = a.rho_i[j] * slope_a(j);
            J[own + j] = c.rho_i[j] * slope_c(j);
            J[j] = -of_a;
            J[n + j] = -d * of_a;
            J[at_d] -= y[n + j] * of_a;
        }
        J[at_T] = off_T;
        J += m;
    };
    for (int i = 0; i < n; ++i)
        row(
            c.m[i] - a.m[i], c.m_T[i] - a.m_T[i], [&](int j) { return c.H[i * n + j]; },
            [&](int j) { return a.H[i * n + j]; });
    row((c.p - a.p) / (R * a.T) * scale, (c.p_T - a.p_T) * scale,
        [&](int j) { return c.P[j] * scale; }, [&](int j) { return a.P[j] * scale; });
}

/// E and F, of which the derivatives are those of the wide states.
void RegularPair::equilibrium(double* J, double* r) const {
    const int n = n_, m = m_, at_d = 2 * n, at_T = at_d + 1;
    PhaseState const &p1 = wide_a_, &p2 = wide_b_;
    const double d = distance(), h = h_;
    for (int i = 0; i < n; ++i, J += m) {
        *r++ = E_[i];
        for (int j = 0; j < n; ++j) {
            const double k1 = p1.H[i * n + j] * p1.rho_i[j], k2 = p2.H[i * n + j] * p2.rho_i[j];
            J[j] = (k1 - k2) / (2.0 * h);
            J[n + j] = 0.5 * (k1 + k2);
        }
        J[at_d] = d * E_d_[i];
        J[at_T] = (p1.m_T[i] - p2.m_T[i]) / (2.0 * h);
    }
    double total = 0.0;
    for (int i = 0; i < n; ++i) total += std::exp(y[i]);
    const double scale = 1.0 / (2.0 * total * h * h * h);
    double F = (p1.p - p2.p) / (R * p1.T), F_T = p1.p_T - p2.p_T;
    for (int i = 0; i < n; ++i) {
        const double c = std::exp(y[i]);
        F -= c * (p1.m[i] - p2.m[i]);
        F_T -= c * (p1.m_T[i] - p2.m_T[i]);
    }
    F *= scale;
    for (int j = 0; j < n; ++j) {
        double g1 = 0.0, g2 = 0.0;
        for (int i = 0; i < n; ++i) {
            const double c = std::exp(y[i]);
            g1 += c * std::expm1(h * y[n + i]) * p1.H[i * n + j] * p1.rho_i[j];
            g2 += c * std::expm1(-h * y[n + i]) * p2.H[i * n + j] * p2.rho_i[j];
        }
        const double c = std::exp(y[j]);
        J[j] = scale * (g1 - g2 - c * (p1.m[j] - p2.m[j])) - F * c / total;
        J[n + j] = scale * h * (g1 + g2);
    }
    *r = F_;
    J[at_d] = d * F_d_;
    J[at_T] = scale * F_T;
}

/// Composition of the whole, of all phases by their volume fractions, against the first component.
void RegularPair::compose(double* J, double* r) const {
    const int n = n_, m = m_, at_d = 2 * n, at_f = at_d + 2;
    const int others = static_cast<int>(beside.size());
    const double d = distance(), fraction = y[at_f], first = first_part();
    double first_off = 0.0;  // ln of component 0 in the whole, over z
    for (int i = 0; i < n; ++i) {
        double more = fraction * std::expm1(-2.0 * d * y[n + i]);
        for (int k = 0; k < others; ++k) more += part(k) * (beside[k].rho_i[i] / a.rho_i[i] - 1.0);
        const double whole = a.rho_i[i] * (1.0 + more);
        const double of_a = first * a.rho_i[i] / whole, of_b = fraction * b.rho_i[i] / whole;
        const double off = y[i] + d * y[n + i] + std::log1p(more) - std::log(fluid.z()[i]);
        if (i == 0) first_off = off;
        for (int j = 1; j < n; ++j) {
            if (i > 0 && j != i) continue;
            const double sign = i == 0 ? -1.0 : 1.0;
            double* const slope = J + (j - 1) * m;
            slope[i] += sign * (of_a + of_b);
            slope[n + i] += sign * d * (of_a - of_b);
            slope[at_d] += sign * y[n + i] * (of_a - of_b);
            slope[at_f] += sign * (b.rho_i[i] - a.rho_i[i]) / whole;
            for (int k = 0; k < others; ++k) {
                const double c = beside[k].rho_i[i];
                slope[of_beside(k) + i] += sign * part(k) * c / whole;
                slope[of_beside(k) + n] += sign * (c - a.rho_i[i]) / whole;
            }
        }
        if (i > 0) r[i - 1] = off - first_off;
    }
}

/// The last two of the fraction, the distance, T and p; all four of free_composition.
void RegularPair::fix(double* J, double* r, bool tangent) const {
    const int n = n_, m = m_, at_d = 2 * n, at_T = at_d + 1, at_f = at_d + 2;
    const double d = distance();
    const auto keep = [&](int at) {
        *r++ = 0.0;
        J[at] = 1.0;
        J += m;
    };
    if (!free_composition && (fixed_fraction || tangent)) keep(at_f);
    if (!free_composition && (fixed_distance || tangent)) return keep(at_d);
    if (T) {
        *r++ = ln_T() - std::log(*T);
        J[at_T] = 1.0;
        J += m;
    }
    if (p) {
        const double unit = R * a.T / *p;
        *r++ = a.p / *p - 1.0;
        for (int j = 0; j < n; ++j) {
            const double slope = unit * a.rho_i[j] * a.P[j];
            J[j] = slope;
            J[n + j] = d * slope;
            J[at_d] += y[n + j] * slope;
        }
        J[at_T] = unit * (a.p_T + a.p / (R * a.T));
        J += m;
    }
    if (free_composition) {
        keep(at_f);
        keep(at_d);
    }
}

bool RegularPair::solve(int limit) {
    double last = 1e300;
    bool settled = false;  // by the last step: only the ends are evaluated once more
    const auto advance = [&](double) {
        const double d = distance();
        double step = std::max(std::fabs(r_[2 * n_]), std::fabs(r_[2 * n_ + 1]));
        StepBound bound;
        for (int i = 0; i < n_; ++i) {
            const double turn = std::sqrt(fluid.z()[i]) * r_[n_ + i];
            step = std::max({step, std::fabs(r_[i]), std::fabs(turn)});
            bound(r_[i], 0.2);
            bound(turn, 0.3);
        }
        bound(r_[2 * n_ + 1], 0.05);
        double shrinks = 0.0;  // a's part of the whole, which stays positive as the others
        for (int k = 0; k < static_cast<int>(beside.size()); ++k) {
            for (int i = 0; i < n_; ++i) {
                step = std::max(step, std::fabs(r_[of_beside(k) + i]));
                bound(r_[of_beside(k) + i], 0.2);
            }
            const double more = r_[of_beside(k) + n_];
            shrinks += more;
            if (more < 0.0) bound(more, 0.5 * part(k));
        }
        if (!beside.empty() && shrinks > 0.0) bound(shrinks, 0.5 * first_part());
        if (!fixed_distance && !free_composition)  // away from zero, or towards it, not through it
            bound(r_[2 * n_],
                  r_[2 * n_] * d > 0.0 ? 0.1 + std::fabs(d) : 0.6 * std::fabs(d));
        for (int i = 0; i < m_; ++i) y[i] += bound.part() * r_[i];
        if (!std::isfinite(step) || std::fabs(distance()) > 1.0) return false;
        // The last steps are rounding, which only the bound can judge.
        const bool stagnant = (step < kStagnant[fluid.exact()] && step > 0.3 * last) ||
                              (step < kStagnant[false] && step > 0.9 * last);
        settled = bound.part() == 1.0 && (step < kStep || stagnant);
        last = step;
        return true;
    };
    return damped_newton(
        m_, jacobian_.data(), r_.data(), limit, iterations,
        [&] { return ends() && (settled || integrals(nodes())); },
        [&](double) { return settled; }, [&] { return assemble(false), true; }, advance);
}

bool RegularPair::tangent(std::vector<double>& t) {
    assemble(true);
    t.assign(static_cast<std::size_t>(m_), 0.0);
    t.back() = 1.0;
    return lu_solve(m_, jacobian_.data(), t.data());
}

double RegularPair::ln_p(std::vector<double> const& t) const {
    const double d = distance();
    double slope = (a.p_T + a.p / (R * a.T)) * t[2 * n_ + 1];
    for (int j = 0; j < n_; ++j)
        slope += a.rho_i[j] * a.P[j] * (t[j] + d * t[n_ + j] + y[n_ + j] * t[2 * n_]);
    return slope * R * a.T / a.p;
}

bool RegularPair::bound(Certificate& c) {
    const int n = n_, m = m_;
    // A finer rule than the solution's, so that the residuals have its error in them.
    if (!integrals(nodes() + 4)) return false;
    assemble(false);
    constexpr double eps = std::numeric_limits<double>::epsilon();
    for (int k = n + 1; k < m; ++k) e_[k] = 8 * eps;  // logarithms of compositions, of T
    int at = n + 2;
    for (PhaseState const& s : beside) {
        for (int i = 0; i < n; ++i)
            e_[at++] = rounding_of_m(fluid, a, i) + rounding_of_m(fluid, s, i);
        e_[at++] = (rounding_of_P(fluid, a) + rounding_of_P(fluid, s)) / a.rho;
    }
    for (int i = 1; i < n; ++i) e_[at++] = 4 * eps * (2.0 + std::fabs(y[i]) + std::fabs(y[0]));
    const double p_rounding = rounding_of_P(fluid, a) * R * a.T / a.p;
    if (p && !fixed_distance) e_[m - 1] = p_rounding;
    for (int k = 0; k < m; ++k) e_[k] += std::fabs(r_[k]);
    std::vector<double> inverse(jacobian_.size());
    if (!invert(m, jacobian_.data(), inverse.data())) return false;
    const ErrorBound off(e_);
    const double d = distance();
    const auto row = [&](int i) { return &inverse[static_cast<std::size_t>(i) * m]; };
    std::vector<double> rows(static_cast<std::size_t>(n * m)), ln_p(static_cast<std::size_t>(m));
    c.x_error = c.rho_error = 0.0;
    for (PhaseState const* s : {&a, &b}) {
        const double side = s == &a ? 1.0 : -1.0;
        for (int i = 0; i < n; ++i)
            for (int k = 0; k < m; ++k)
                rows[i * m + k] =
                    row(i)[k] + side * (d * row(n + i)[k] + y[n + i] * row(2 * n)[k]);
        off.phase(*s, rows.data(), c.x_error, c.rho_error);
        if (s == &b) continue;
        for (int k = 0; k < m; ++k) {
            ln_p[k] = (a.p_T + a.p / (R * a.T)) * row(2 * n + 1)[k];
            for (int j = 0; j < n; ++j) ln_p[k] += a.rho_i[j] * a.P[j] * rows[j * m + k];
            ln_p[k] *= R * a.T / a.p;
        }
    }
    for (int k = 0; k < static_cast<int>(beside.size()); ++k)
        off.phase(beside[k], row(of_beside(k)), c.x_error, c.rho_error);
    std::vector<double> ln(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        ln[i] = 2.0 * d * y[n + i];
        for (int k = 0; k < m; ++k)
            rows[i * m + k] = 2.0 * (d * row(n + i)[k] + y[n + i] * row(2 * n)[k]);
    }
    c.apart_error = off.apart(ln, rows.data());
    const double of_p = off(ln_p.data()) + p_rounding, of_T = off(row(2 * n + 1));
    c.value_error = T && p ? 0.0
                    : T      ? of_p
                    : p      ? of_T
                                       : std::max(of_p, of_T);
    return c.bounded();
}

bool RegularPair::locally_stable() {
    const int n = n_;
    std::vector<double> B(static_cast<std::size_t>(n * n)), g(static_cast<std::size_t>(n));
    double above = 0.0, weight = 0.0;  // ½ ∫ q ds along n at the wide distance
    for (int i = 0; i < n; ++i) {
        const double c = std::exp(y[i]) * y[n + i];
        above += c * (wide_a_.m[i] - wide_b_.m[i]) / (2.0 * h_);
        weight += c * y[n + i];
    }
    above /= weight;
    for (PhaseState const* s : {&wide_a_, &wide_b_}) {
        double length = 0.0;
        for (int i = 0; i < n; ++i) {
            g[i] = std::sqrt(s->rho_i[i]) * y[n + i];
            length += g[i] * g[i];
        }
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                B[i * n + j] = std::sqrt(s->rho_i[i] * s->rho_i[j]) * 0.5 *
                                   (s->H[i * n + j] + s->H[j * n + i]) -
                               (h_ > std::fabs(distance()) ? above * g[i] * g[j] / length : 0.0);
        if (!cholesky_solve(n, B.data(), g.data())) return false;
    }
    return true;
}

}  // namespace corvane
