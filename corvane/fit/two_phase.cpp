#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/fit/two_phase.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
constexpr int kNewton = 25;
}

double total(std::vector<double> const& v) {
    double sum = 0.0;
    for (double each : v) sum += each;
    return sum;
}

void fill(PhaseState& s, std::vector<double> const& rho_i) {
    s.resize(static_cast<int>(rho_i.size()));
    s.rho_i = rho_i;
    s.rho = total(rho_i);
    for (std::size_t i = 0; i < rho_i.size(); ++i) s.x[i] = rho_i[i] / s.rho;
}

bool TwoPhase::all_present(Numbers const& x) {
    return std::all_of(x.begin(), x.end(), [](double each) { return each > 0.0; });
}

Vector<double> TwoPhase::vector(Numbers const& x) const {
    Vector<double> v(n_);
    for (int i = 0; i < n_; ++i) v[i] = x[static_cast<std::size_t>(i)];
    return v;
}

TwoPhase::Numbers TwoPhase::second_phase(FluidModel const& fluid, Point const& point,
                                         Numbers const& measured) const {
    if (!measured.empty() && all_present(measured)) return measured;
    Numbers w = given(point);
    for (int i = 0; i < n_; ++i) {
        const double K = std::exp(fluid.wilson(i, point.T)) / point.p;
        w[static_cast<std::size_t>(i)] *= dew(point) ? 1.0 / K : K;
    }
    return w;
}

bool TwoPhase::system(Point const& point, PhaseState const& a, PhaseState const& b,
                      Eigen::MatrixXd* J, Eigen::VectorXd& F) const {
    const bool two = point.kind == PointKind::liquid_liquid;
    const int first = two ? n_ : 1, size = first + n_;
    const double RT = R * point.T;
    F.resize(size);
    for (int i = 0; i < n_; ++i) F[i] = a.m[i] - b.m[i];
    const double scale = point.p / RT;
    F[n_] = ((two ? a.p - point.p : a.p - b.p) / RT) / scale;
    if (two) F[n_ + 1] = ((b.p - point.p) / RT) / scale;
    if (!F.allFinite()) return false;
    if (!J) return true;
    J->setZero(size, size);
    for (int i = 0; i < n_; ++i)
        for (int j = 0; j < n_; ++j) {
            (*J)(i, two ? j : 0) += a.H[i * n_ + j] * a.rho_i[j];
            (*J)(i, first + j) = -b.H[i * n_ + j] * b.rho_i[j];
        }
    for (int j = 0; j < n_; ++j) {
        (*J)(n_, two ? j : 0) += a.P[j] * a.rho_i[j] / scale;
        (*J)(two ? n_ + 1 : n_, first + j) = (two ? 1.0 : -1.0) * b.P[j] * b.rho_i[j] / scale;
    }
    return J->allFinite();
}

bool TwoPhase::newton(FluidModel const& fluid, Point const& point, Phases& phases) const {
    const bool two = point.kind == PointKind::liquid_liquid;
    const int first = two ? n_ : 1;
    PhaseState a, b;
    Eigen::MatrixXd J;
    Eigen::VectorXd F;
    Phases at = phases;
    for (int k = 0; k < kNewton; ++k) {
        fill(a, at.a);
        fill(b, at.b);
        if (!fluid.evaluate(a, point.T, phase_H | phase_p) ||
            !fluid.evaluate(b, point.T, phase_H | phase_p) || !system(point, a, b, &J, F))
            return false;
        const Eigen::VectorXd s = J.partialPivLu().solve(-F);
        if (!s.allFinite()) return false;
        const double size = s.lpNorm<Eigen::Infinity>(), cut = std::fmin(1.0, 0.5 / size);
        for (int j = 0; j < n_; ++j) {
            at.a[static_cast<std::size_t>(j)] *= std::exp(cut * s[two ? j : 0]);
            at.b[static_cast<std::size_t>(j)] *= std::exp(cut * s[first + j]);
        }
        if (size < 1e-7) {
            double apart = 0.0;
            for (int j = 0; j < n_; ++j) {
                const auto i = static_cast<std::size_t>(j);
                apart = std::fmax(apart, std::fabs(std::log(at.a[i] / at.b[i])));
            }
            if (apart < 1e-3 || !(a.S > 0.0) || !(b.S > 0.0)) return false;
            if (!two && (total(at.a) > total(at.b)) == dew(point)) return false;  // the other kind
            phases = at;
            return true;
        }
    }
    return false;
}

/// From the measured state: a few substitutions, then Newton's method.
bool TwoPhase::near_measured(FluidModel const& fluid, Point const& point, Phases& phases) const {
    Numbers const &z = given(point), &measured = dew(point) ? point.x : point.y;
    PhaseState a, b;
    a.resize(n_);
    b.resize(n_);
    const Root own = dew(point) ? Root::dilute : Root::dense,
               other = dew(point) ? Root::dense : Root::dilute;
    if (!fluid.evaluate_at(a, point.p, point.T, z, own, 0)) return false;
    Numbers w = second_phase(fluid, point, measured);
    for (int round = 0; round < 4; ++round) {
        const double sum = total(w);
        for (double& each : w) each /= sum;
        if (!fluid.evaluate_at(b, point.p, point.T, w, other, 0)) return false;
        for (std::size_t i = 0; i < w.size(); ++i) w[i] = b.x[i] * std::exp(a.m[i] - b.m[i]);
    }
    phases = {a.rho_i, b.rho_i};
    return newton(fluid, point, phases);
}

/// By the certified solver: near the measured pressure if there is a boundary.
bool TwoPhase::search(Point const& point, Phases& phases) const {
    SaturationOptions options;
    options.trace = false;
    options.test = StabilityTest::quick;
    try {
        const SaturationPoint s =
            saturation_T(model_, dew(point) ? Saturated::dew : Saturated::bubble, point.T,
                         vector(given(point)), options);
        phases.a.resize(static_cast<std::size_t>(n_));
        phases.b = phases.a;
        for (int i = 0; i < n_; ++i) {
            phases.a[static_cast<std::size_t>(i)] = s.given.rho * s.given.x[i];
            phases.b[static_cast<std::size_t>(i)] = s.incipient.rho * s.incipient.x[i];
        }
        return s.split.empty();
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return false;
}

bool TwoPhase::saturation(Point const& point, Phases& phases) const {
    const FluidModel fluid(model_, vector(given(point)));
    if (!phases.empty() && newton(fluid, point, phases)) return true;
    if (near_measured(fluid, point, phases) || search(point, phases)) return true;
    phases = {};
    return false;
}

bool TwoPhase::liquids(Point const& point, Phases& phases) const {
    Numbers middle(point.x);
    for (std::size_t i = 0; i < middle.size(); ++i) middle[i] = 0.5 * (point.x[i] + point.y[i]);
    const FluidModel fluid(model_, vector(middle));
    const auto in_order = [&] {  // which is which
        const bool falls = point.x[0] > point.y[0];
        return (phases.a[0] / total(phases.a) > phases.b[0] / total(phases.b)) == falls;
    };
    if (!phases.empty() && newton(fluid, point, phases) && in_order()) return true;
    PhaseState a, b;
    a.resize(n_);
    b.resize(n_);
    if (all_present(point.x) && all_present(point.y) &&
        fluid.evaluate_at(a, point.p, point.T, point.x, Root::dense, 0) &&
        fluid.evaluate_at(b, point.p, point.T, point.y, Root::dense, 0)) {
        phases = {a.rho_i, b.rho_i};
        if (newton(fluid, point, phases) && in_order()) return true;
    }
    try {
        FlashOptions options;
        const FlashResult f = flash_pT(model_, point.p, point.T, vector(middle), options);
        if (f.phases.size() == 2) {
            phases.a.resize(point.x.size());
            phases.b.resize(point.x.size());
            for (int i = 0; i < n_; ++i) {
                phases.a[static_cast<std::size_t>(i)] = f.phases[0].rho * f.phases[0].x[i];
                phases.b[static_cast<std::size_t>(i)] = f.phases[1].rho * f.phases[1].x[i];
            }
            if (!in_order()) std::swap(phases.a, phases.b);
            return true;
        }
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    phases = {};
    return false;
}

}  // namespace corvane::fit
