#include <corvane/core/constants.h>
#include <corvane/phases/coexistence/split.h>
#include <corvane/phases/numerics/newton.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/phases/report/least_fraction.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace corvane {
namespace {
constexpr double kConverged = 1e-11;  // of potentials, ln p and target
constexpr double kStep = 1e-8;        // last step: the next one would be below rounding
constexpr double kVanished = 1e-13;   // amount of a phase, of the rarest component
}  // namespace

SplitSolver::SplitSolver(FluidModel const& f, Caloric* caloric, Target target)
    : fluid(f),
      caloric_(caloric),
      target_(target),
      T_free_(target == Target::h_at_p || target == Target::s_at_p),
      p_free_(target == Target::rho_at_T),
      n_(f.size()) {}

bool SplitSolver::start(double T_, double p_, std::vector<PhaseRecord> const& phases,
                        std::vector<double> const& fractions) {
    T = T_;
    p = p_;
    iterations = 0;
    first_step = 0.0;
    count_ = static_cast<int>(phases.size());
    size_ = (count_ - 1) * n_ + count_ + (T_free_ ? 1 : 0);
    const auto m = static_cast<std::size_t>(size_), all = static_cast<std::size_t>(n_ * count_);
    phase.resize(phases.size());
    for (PhaseState& s : phase) s.resize(n_);
    amount.resize(phases.size());
    V_.resize(phases.size());
    n_ik_.resize(all);
    row_.resize(all);
    most_.resize(static_cast<std::size_t>(n_));
    dm_.resize(static_cast<std::size_t>(n_));
    r_.resize(m);
    jacobian_.resize(m * m);
    for (int i = 0; i < n_; ++i) {
        double sum = 0.0;
        for (int k = 0; k < count_; ++k)
            sum += n_ik_[i * count_ + k] = fractions[k] * phases[k].x[fluid.index(i)];
        for (int k = 0; k < count_; ++k) {
            double& n = n_ik_[i * count_ + k];
            n *= fluid.z()[i] / sum;
            if (!(n >= 0.0) || !std::isfinite(n)) return false;
        }
    }
    keep_least();
    for (int k = 0; k < count_; ++k) {
        double sum = 0.0;
        for (int i = 0; i < n_; ++i) sum += n_ik_[i * count_ + k];
        V_[k] = sum / phases[k].rho;
        if (!(V_[k] > 0.0) || !std::isfinite(V_[k])) return false;
    }
    return T > 0.0 && std::isfinite(T);
}

/// Mole fractions go no lower than least_fraction.
void SplitSolver::keep_least() {
    for (int k = 0; k < count_; ++k) {
        double sum = 0.0;
        for (int i = 0; i < n_; ++i) sum += n_ik_[i * count_ + k];
        for (int i = 0; i < n_; ++i)
            n_ik_[i * count_ + k] = std::max(n_ik_[i * count_ + k], least_fraction * sum);
    }
}

bool SplitSolver::evaluate() {
    for (int k = 0; k < count_; ++k) {
        amount[k] = 0.0;
        for (int i = 0; i < n_; ++i) {
            amount[k] += n_ik_[i * count_ + k];
            phase[k].rho_i[i] = n_ik_[i * count_ + k] / V_[k];
        }
        if (!fluid.evaluate(phase[k], T, caloric_ ? phase_all : phase_H | phase_p)) return false;
    }
    if (caloric_) caloric_->at(T);
    if (p_free_) {
        int light = 0;
        for (int k = 1; k < count_; ++k)
            if (phase[k].rho < phase[light].rho) light = k;
        p = phase[light].p;
    }
    return true;
}

double SplitSolver::distance() const {
    double sum = 0.0;
    for (int k = 0; k < count_; ++k)
        // the enthalpy at the given pressure, which the phase meets at the end
        sum += target_ == Target::h_at_p
                   ? amount[k] * caloric_->h(phase[k]) + V_[k] * (p - phase[k].p) / (R * T)
               : target_ == Target::s_at_p ? amount[k] * caloric_->s(phase[k])
                                           : V_[k];
    return target_ == Target::h_at_p   ? sum - given / T
           : target_ == Target::s_at_p ? sum - given
                                       : std::log(given / sum);
}

/// Rows of the potentials, which are also the columns of the amounts: component i in phase k
/// against the phase that holds most of i.
void SplitSolver::number() {
    int next = 0;
    for (int i = 0; i < n_; ++i) {
        double const* n = &n_ik_[i * count_];
        most_[i] = static_cast<int>(std::max_element(n, n + count_) - n);
        for (int k = 0; k < count_; ++k) row_[i * count_ + k] = k == most_[i] ? -1 : next++;
    }
}

/// Adds what a unit of the variable `column` does to phase k: to its potentials (dm), its reduced
/// pressure and the target.
void SplitSolver::add(int column, int k, double const* dm, double dpi, double dtarget,
                      double scale) {
    double* const J = jacobian_.data() + column;
    const int m = size_;
    for (int i = 0; i < n_; ++i)
        if (k != most_[i])
            J[row(i, k) * m] += scale * dm[i];
        else
            for (int other = 0; other < count_; ++other)
                if (other != k) J[row(i, other) * m] -= scale * dm[i];
    if (!p_free_ || k > 0)
        J[pressure_row(k) * m] += scale * dpi;
    else
        for (int other = 1; other < count_; ++other) J[pressure_row(other) * m] -= scale * dpi;
    if (target_ != Target::none) J[(m - 1) * m] += scale * dtarget;
}

void SplitSolver::assemble() {
    const int n = n_, K = count_, m = size_, pressures = (K - 1) * n;
    const bool entropy = target_ == Target::s_at_p;
    std::fill(jacobian_.begin(), jacobian_.end(), 0.0);
    number();
    const double reduced = p / (R * T);
    double volume = 0.0;
    for (double V : V_) volume += V;
    for (int i = 0; i < n; ++i)
        for (int k = 0; k < K; ++k)
            if (k != most_[i]) r_[row(i, k)] = phase[k].m[i] - phase[most_[i]].m[i];
    for (int k = p_free_ ? 1 : 0; k < K; ++k)
        r_[pressure_row(k)] = phase[k].p / (R * T) - (p_free_ ? phase[0].p / (R * T) : reduced);
    if (target_ != Target::none) r_[m - 1] = distance();
    for (int k = 0; k < K; ++k) {
        PhaseState const& s = phase[k];
        for (int j = 0; j < n; ++j) {
            for (int i = 0; i < n; ++i) dm_[i] = s.H[i * n + j] / V_[k];
            const double target = !T_free_  ? 0.0
                                  : entropy ? caloric_->S(j) - 1.0 - s.m[j] - s.m_T[j]
                                            : caloric_->U(j) - s.m_T[j];
            for (int var = 0; var < K; ++var) {  // the variables that move component j
                if (var == most_[j] || (var != k && k != most_[j])) continue;
                const double sign = var == k ? 1.0 : -1.0;
                add(row(j, var), k, dm_.data(), s.P[j] / V_[k], target, sign * n_ik_[j * K + var]);
            }
        }
        for (int i = 0; i < n; ++i) dm_[i] = -s.P[i];
        // ∂U/∂V = RT·p_T, and the enthalpy is that of the given pressure
        const double target =
            !T_free_ ? -V_[k] / volume : V_[k] * (s.p_T + (entropy ? s.p / (R * T) : reduced));
        add(pressures + k, k, dm_.data(), -s.S, target, 1.0);
        if (!T_free_) continue;
        for (int i = 0; i < n; ++i) dm_[i] = s.m_T[i];
        add(m - 1, k, dm_.data(), s.p_T + reduced, amount[k] * caloric_->cv(s), 1.0);
    }
    for (int i = 0; i < n; ++i)  // components that would be fewer than the least stay as they are
        for (int k = 0; k < K; ++k) {
            if (k == most_[i] || !absent(phase[k].x[i])) continue;
            const int at = row(i, k);
            if (!(r_[at] > 0.0)) continue;
            std::fill_n(&jacobian_[at * m], m, 0.0);
            jacobian_[at * m + at] = 1.0;
            r_[at] = 0.0;
        }
}

/// One step, shortened; false when a phase vanishes.
bool SplitSolver::advance() {
    const int n = n_, K = count_, m = size_, pressures = (K - 1) * n;
    StepBound bound;
    // dm_ and the columns of the amounts: from changes of ln n_ik to changes of n_ik
    for (int i = 0; i < n; ++i) {
        double gain = 0.0;
        for (int k = 0; k < K; ++k) {
            if (k == most_[i]) continue;
            double& step = r_[row(i, k)];
            bound(step, step < 0.0 ? 0.9 : 3.0);
            step *= n_ik_[i * K + k];
            gain -= step;
        }
        dm_[i] = gain;
        if (gain < 0.0) bound(gain, 0.9 * n_ik_[i * K + most_[i]]);
    }
    for (int k = 0; k < K; ++k) bound(r_[pressures + k], r_[pressures + k] < 0.0 ? 0.9 : 3.0);
    if (T_free_) bound(r_[m - 1], 0.15);
    bool vanishes = false;
    const double vanished =
        kVanished * *std::min_element(fluid.z().begin(), fluid.z().end());
    for (int k = 0; k < K; ++k) {
        double change = 0.0;
        for (int i = 0; i < n; ++i) change += k == most_[i] ? dm_[i] : r_[row(i, k)];
        change /= amount[k];
        vanishes = vanishes || change < -1.0;
        // of the density of a dense phase less than of that of a gas
        bound(change - r_[pressures + k], phase[k].S < 2 * phase[k].rho ? 0.7 : 0.15);
    }
    vanishing_ = vanishes ? vanishing_ + 1 : 0;
    if (vanishing_ > 2) return false;
    const double scale = bound.part();
    for (int k = 0; k < K; ++k) {
        double sum = 0.0;
        for (int i = 0; i < n; ++i)
            sum += n_ik_[i * K + k] += scale * (k == most_[i] ? dm_[i] : r_[row(i, k)]);
        V_[k] *= 1.0 + scale * r_[pressures + k];  // as the amounts, so that densities stay
        if (!(sum > vanished)) return false;
    }
    if (T_free_) T *= std::exp(scale * r_[m - 1]);
    keep_least();
    return true;
}

bool SplitSolver::solve(int limit) {
    const int pressures = (count_ - 1) * n_;
    bool first = true;
    vanishing_ = 0;
    const auto converged = [&](double step) {
        double dp = 0.0;
        residual = target_ == Target::none ? 0.0 : std::fabs(r_[size_ - 1]);
        for (int i = 0; i < pressures; ++i) residual = std::max(residual, std::fabs(r_[i]));
        for (int k = p_free_ ? 1 : 0; k < count_; ++k)
            dp = std::max(
                dp, std::fabs(r_[pressure_row(k)]) - 8 * std::numeric_limits<double>::epsilon() *
                                                         std::max(phase[k].S, phase[0].S));
        residual = std::max(residual, dp * R * T / std::max(std::fabs(p), 1e-300));
        return (residual < kConverged && step < 1e-4) ||
               (residual < 50 * kConverged && step < kStep);  // at rounding
    };
    return damped_newton(
        size_, jacobian_.data(), r_.data(), limit, iterations,
        [&] { return evaluate() && (assemble(), true); }, converged,
        [&] { return std::isfinite(residual); },
        [&](double) {
            if (std::exchange(first, false)) first_step = change_of_unknown();
            return advance();
        });
}

/// What the Newton step changes ln T or ln p by.
double SplitSolver::change_of_unknown() const {
    if (!p_free_) return r_[size_ - 1];
    double change = -phase[0].S * r_[(count_ - 1) * n_];  // of ln p, from phase 0
    for (int i = 0; i < n_; ++i) {
        double dn = 0.0;
        if (most_[i] != 0)
            dn = r_[row(i, 0)] * n_ik_[i * count_];
        else
            for (int k = 1; k < count_; ++k) dn -= r_[row(i, k)] * n_ik_[i * count_ + k];
        change += phase[0].P[i] * dn / V_[0];
    }
    return change * (R * T / p);
}

/// Residuals, and what rounding may add to them.
std::vector<double> SplitSolver::errors() const {
    const int n = n_, K = count_, m = size_;
    std::vector<double> e(static_cast<std::size_t>(m));
    for (int k = 0; k < m; ++k) e[k] = std::fabs(r_[k]);
    for (int i = 0; i < n; ++i)
        for (int k = 0; k < K; ++k)
            if (k != most_[i])
                e[row(i, k)] += rounding_of_m(fluid, phase[k], i) +
                                rounding_of_m(fluid, phase[most_[i]], i);
    for (int k = p_free_ ? 1 : 0; k < K; ++k)
        e[pressure_row(k)] += rounding_of_P(fluid, phase[k]) +
                              (p_free_ ? rounding_of_P(fluid, phase[0]) : 0.0);
    if (target_ == Target::none) return e;
    // h/RT or s/R: as the potentials; ideal gas to 1e-14 of itself
    double size = T_free_ ? 1.0 + std::fabs(given / (target_ == Target::h_at_p ? T : 1.0)) : 1.0;
    size *= 1e-14;
    for (int k = 0; T_free_ && k < K; ++k)
        for (int i = 0; i < n; ++i)
            size += amount[k] * phase[k].x[i] * rounding_of_m(fluid, phase[k], i);
    e[m - 1] += size;
    return e;
}

bool SplitSolver::bound(Certificate& c) {
    assemble();
    const int n = n_, K = count_, m = size_, pressures = (K - 1) * n;
    const std::vector<double> e = errors();
    std::vector<double> inverse(jacobian_.size());
    if (!invert(m, jacobian_.data(), inverse.data())) return false;
    const ErrorBound off(e);
    // ∂ln rho_i of every phase: of the amounts (the phase that holds most of a component loses what
    // the others gain) less that of the volume.
    const std::size_t width = static_cast<std::size_t>(m), block = width * n;
    std::vector<double> rows(block * K, 0.0), sum(width), ln(static_cast<std::size_t>(n)),
        between(block);
    for (int k = 0; k < K; ++k)
        for (int i = 0; i < n; ++i) {
            double* to = &rows[block * k + width * i];
            for (int other = 0; other < K; ++other) {
                if (other == most_[i] || (k != most_[i] && other != k)) continue;
                const double part = k == other ? 1.0
                                               : -n_ik_[i * K + other] / n_ik_[i * K + most_[i]];
                for (int j = 0; j < m; ++j) to[j] += part * inverse[width * row(i, other) + j];
            }
            for (int j = 0; j < m; ++j) to[j] -= inverse[width * (pressures + k) + j];
        }
    c.x_error = c.rho_error = c.apart_error = 0.0;
    int light = 0;
    for (int k = 0; k < K; ++k) {
        if (phase[k].rho < phase[light].rho) light = k;
        off.phase(phase[k], &rows[block * k], c.x_error, c.rho_error);
        for (int other = 0; other < k; ++other) {
            for (int i = 0; i < n; ++i)
                ln[i] = std::log(phase[k].rho_i[i] / phase[other].rho_i[i]);
            for (std::size_t j = 0; j < block; ++j)
                between[j] = rows[block * k + j] - rows[block * other + j];
            c.apart_error = std::max(c.apart_error, off.apart(ln, between.data()));
        }
    }
    c.value_error = 0.0;
    if (T_free_) c.value_error = off(&inverse[width * (m - 1)]);
    if (p_free_) {
        PhaseState const& s = phase[light];
        const double unit = R * T / s.p;
        std::fill(sum.begin(), sum.end(), 0.0);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < m; ++j)
                sum[j] += unit * s.rho_i[i] * s.P[i] * rows[block * light + width * i + j];
        c.value_error = off(sum.data()) + std::fabs(unit) * rounding_of_P(fluid, s);
    }
    return c.bounded();
}

}  // namespace corvane
