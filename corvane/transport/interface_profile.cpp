#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/transport/interface_profile.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace corvane {
namespace {

constexpr int kNodes = 64;  // intervals; even

std::size_t index(int i) { return static_cast<std::size_t>(i); }

/// The path of least grand potential through the densities.
class InterfacePath {
  public:
    InterfacePath(ModelN const& model, double T, Vector<double> const& vapour,
                  Vector<double> const& liquid, Vector<double> const& influence)
        : fluid_(model, mean(vapour, liquid)), T_(T), n_(fluid_.size()) {
        for (int k = 0; k < n_; ++k) {
            const int i = fluid_.index(k);
            if (!(influence[i] > 0.0) || !(vapour[i] > 0.0) || !(liquid[i] > 0.0))
                throw ThException(th_out_of_range);
            w_.push_back(std::sqrt(influence[i]) * 1e6);  // q in √(J/m³)·m per mol/cm³
        }
        state_ = at(vapour);
        const PhaseState dense = at(liquid);
        p_ = 0.5 * (state_.p + dense.p);
        double apart = std::fabs(state_.p - dense.p) / (R * T * dense.rho);
        for (int k = 0; k < n_; ++k) {
            m_.push_back(0.5 * (state_.m[index(k)] + dense.m[index(k)]));
            apart = std::max(apart, std::fabs(state_.m[index(k)] - dense.m[index(k)]));
        }
        constexpr double kApart = 1e-5;
        if (!(apart < kApart)) fail(EquilibriumFailure::Kind::no_solution, apart, "the phases are not in equilibrium");
        first_ = q(state_), last_ = q(dense);
        if (!(std::fabs(last_ - first_) > 1e-9 * (first_ + last_)))
            fail(EquilibriumFailure::Kind::no_solution, 0.0, "the phases are alike");
        solve(first_);  // the tangent
    }

    double first() const { return first_; }
    double last() const { return last_; }
    int index_of(int k) const { return fluid_.index(k); }
    int size() const { return n_; }
    std::vector<double> const& densities() const { return state_.rho_i; }

    /// Goes on to q; with steps half as large where Newton's method does not follow.
    void follow(double to) {
        int halvings = 0;
        double from = q(state_), step = to - from;
        while (from != to) {
            const PhaseState kept = state_;
            const std::vector<double> slope = slope_;
            const double next = std::fabs(to - from) <= 1.000001 * std::fabs(step) ? to : from + step;
            for (int k = 0; k < n_; ++k) {
                const double change = slope_[index(k)] * (next - from) / kept.rho_i[index(k)];
                state_.rho_i[index(k)] *= change > -0.5 ? 1.0 + change : std::exp(change);
            }
            if (solve(next)) {
                from = next;
                continue;
            }
            state_ = kept, slope_ = slope;
            if (++halvings > 8) fail(EquilibriumFailure::Kind::gave_up, std::fabs(to - from), "no path between the phases");
            step *= 0.5;
        }
    }

    /// Ω + p in Pa.
    double excess() const {
        double sum = 0.0;
        for (int k = 0; k < n_; ++k) sum += state_.rho_i[index(k)] * (state_.m[index(k)] - m_[index(k)]);
        const double omega = 1e6 * (R * T_ * sum - (state_.p - p_)), floor = 1e-9 * 1e6 * R * T_ * state_.rho;
        if (omega < -floor) fail(EquilibriumFailure::Kind::gave_up, omega, "the potential is below that of the phases");
        return std::max(omega, 0.0);
    }

  private:
    static Vector<double> mean(Vector<double> const& a, Vector<double> const& b) {
        if (a.size() != b.size()) throw ThException(th_out_of_range);
        Vector<double> x(a.size());
        double sum = 0.0;
        for (int i = 0; i < x.size(); ++i) sum += x[i] = a[i] + b[i];
        for (int i = 0; i < x.size(); ++i) x[i] /= sum;
        return x;
    }
    PhaseState at(Vector<double> const& rho_i) const {
        PhaseState s;
        s.resize(n_);
        for (int k = 0; k < n_; ++k) s.rho_i[index(k)] = rho_i[fluid_.index(k)];
        if (!fluid_.evaluate(s, T_, phase_H | phase_p)) throw ThException(th_out_of_range);
        return s;
    }
    double q(PhaseState const& s) const {
        double sum = 0.0;
        for (int k = 0; k < n_; ++k) sum += w_[index(k)] * s.rho_i[index(k)];
        return sum;
    }
    /// The bordered matrix of relative changes of the densities and of the multiplier.
    std::vector<double> matrix() const {
        const int m = n_ + 1;
        std::vector<double> a(index(m * m), 0.0);
        for (int i = 0; i < n_; ++i) {
            for (int j = 0; j < n_; ++j)
                a[index(i * m + j)] = state_.H[index(i * n_ + j)] * state_.rho_i[index(j)];
            a[index(i * m + n_)] = -w_[index(i)];
            a[index(n_ * m + i)] = w_[index(i)] * state_.rho_i[index(i)];
        }
        return a;
    }
    /// Potentials that differ from those of the phases by a multiple of w, at Σ w_i·rho_i = to; then the
    /// slope of the path.
    bool solve(double to) {
        const int m = n_ + 1;
        constexpr double kSolved = 1e-11;
        for (int iteration = 0; iteration < 60; ++iteration) {
            if (!fluid_.evaluate(state_, T_, phase_H | phase_p)) return false;
            // the multiplier that leaves least, then Newton's step
            double above = 0.0, below = 0.0;
            for (int k = 0; k < n_; ++k) {
                above += w_[index(k)] * (state_.m[index(k)] - m_[index(k)]);
                below += w_[index(k)] * w_[index(k)];
            }
            const double lambda = above / below;
            std::vector<double> b(index(m));
            for (int k = 0; k < n_; ++k)
                b[index(k)] = -(state_.m[index(k)] - m_[index(k)] - lambda * w_[index(k)]);
            b[index(n_)] = to - q(state_);
            std::vector<double> a = matrix();
            if (!lu_solve(m, a.data(), b.data())) return false;
            double largest = 0.0;
            for (int k = 0; k < n_; ++k) largest = std::max(largest, std::fabs(b[index(k)]));
            const double part = largest > 0.5 ? 0.5 / largest : 1.0;
            for (int k = 0; k < n_; ++k) state_.rho_i[index(k)] *= 1.0 + part * b[index(k)];
            if (largest < kSolved) return set_slope();
        }
        return false;
    }
    bool set_slope() {
        if (!fluid_.evaluate(state_, T_, phase_H | phase_p)) return false;
        const int m = n_ + 1;
        std::vector<double> a = matrix(), b(index(m), 0.0);
        b[index(n_)] = 1.0;
        if (!lu_solve(m, a.data(), b.data())) return false;
        slope_.resize(index(n_));
        for (int k = 0; k < n_; ++k) slope_[index(k)] = b[index(k)] * state_.rho_i[index(k)];
        return true;
    }
    [[noreturn]] void fail(EquilibriumFailure::Kind kind, double residual, char const* advice) const {
        throw EquilibriumFailure(kind, "T = " + std::to_string(T_) + " K", "interface_profile", 0, residual, advice);
    }

    FluidModel fluid_;
    double T_;
    int n_;
    std::vector<double> w_, m_, slope_;
    double p_ = 0.0, first_ = 0.0, last_ = 0.0;
    PhaseState state_;
};

/// Where the path is at a part of q, linear in the angle between the nodes.
double z_at(double part, std::vector<double> const& z) {
    const double place = std::acos(1.0 - 2.0 * part) / std::numbers::pi * kNodes - 1.0;
    const auto k = static_cast<std::size_t>(place);
    return z[k] + (place - static_cast<double>(k)) * (z[k + 1] - z[k]);
}

}  // namespace

InterfaceProfile interface_profile(ModelN const& model, double T, Vector<double> const& vapour,
                                   Vector<double> const& liquid, Vector<double> const& influence) {
    if (influence.size() != model.mdl1.size() || vapour.size() != influence.size() || !(T > 0.0))
        throw ThException(th_out_of_range);
    InterfacePath path(model, T, vapour, liquid, influence);
    const double half = 0.5 * (path.last() - path.first()), mid = 0.5 * (path.last() + path.first());
    const auto angle = [](int k) { return std::numbers::pi * k / kNodes; };
    InterfaceProfile result;
    std::vector<double> force, sine;  // √(2·(Ω + p)), dq/dθ over half
    for (int k = 1; k < kNodes; ++k) {
        path.follow(mid - half * std::cos(angle(k)));
        const double omega = path.excess();
        result.excess.push_back(1e-6 * omega);
        force.push_back(std::sqrt(2.0 * omega));
        sine.push_back(std::sin(angle(k)));
        std::vector<double> rho(index(influence.size()), 0.0);
        for (int j = 0; j < path.size(); ++j) rho[index(path.index_of(j))] = path.densities()[index(j)];
        result.rho_i.push_back(std::move(rho));
    }
    double sum = 0.0, coarse = 0.0;
    for (std::size_t k = 0; k < force.size(); ++k) {
        sum += force[k] * sine[k];
        if (k % 2 == 1) coarse += 2.0 * force[k] * sine[k];
    }
    const double step = std::fabs(half) * std::numbers::pi / kNodes;
    result.tension = step * sum;
    result.tension_error = std::fabs(coarse / sum - 1.0);
    // z = ∫ dq/√(2·(Ω + p)); θ by the trapezoidal rule, from the middle
    result.z.assign(force.size(), 0.0);
    for (std::size_t k = 1; k < force.size(); ++k) {
        const double a = force[k - 1] > 0.0 ? sine[k - 1] / force[k - 1] : 0.0,
                     b = force[k] > 0.0 ? sine[k] / force[k] : 0.0;
        result.z[k] = result.z[k - 1] + 1e9 * step * 0.5 * (a + b);
    }
    result.thickness = z_at(0.9, result.z) - z_at(0.1, result.z);
    const double middle = result.z[index(kNodes / 2 - 1)];
    for (double& z : result.z) z -= middle;
    for (int i = 0; i < influence.size(); ++i) result.influence.push_back(influence[i]);
    return result;
}

}  // namespace corvane
