// How phases in equilibrium at a measured point are found.
#include <corvane/core/errors.h>
#include <corvane/fit/equilibrium.h>
#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/three_phase.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
constexpr int kNewton = 25, kApproach = 40;
constexpr double kShortest = 1e-5;  // step of T on the way to a point, of T
}  // namespace

bool Equilibrium::newton(FluidModel const& fluid, Point const& point, Phases& phases) const {
    Phases at = phases;
    States s;
    Eigen::MatrixXd J;
    Eigen::VectorXd F;
    for (int k = 0; k < kNewton; ++k) {
        if (!states(fluid, point, at, s, phase_H | phase_p) || !system(point, at, s, &J, F))
            return false;
        const Eigen::VectorXd du = J.partialPivLu().solve(-F);
        if (!du.allFinite()) return false;
        const double size =
            du.head(static_cast<Eigen::Index>(s.size()) * n_).lpNorm<Eigen::Infinity>();
        at = moved(at, du, std::fmin(1.0, 0.5 / size));
        if (size < 1e-7) {
            if (!acceptable(point, at, s)) return false;
            phases = at;
            return true;
        }
    }
    return false;
}

/// Saturation with an unknown second phase: a few substitutions, then Newton's method.
bool Equilibrium::substitute(FluidModel const& fluid, Point const& point, Phases& phases) const {
    Numbers const& measured = dew(point) ? point.x : point.y;
    PhaseState a, b;
    a.resize(n_);
    b.resize(n_);
    const Root own = dew(point) ? Root::dilute : Root::dense,
               other = dew(point) ? Root::dense : Root::dilute;
    if (!fluid.evaluate_at(a, point.p, point.T, given(point), own, 0)) return false;
    Numbers w = second_phase(fluid, point, measured);
    for (int round = 0; round < 4; ++round) {
        const double sum = total(w);
        for (double& each : w) each /= sum;
        if (!fluid.evaluate_at(b, point.p, point.T, w, other, 0)) return false;
        for (std::size_t i = 0; i < w.size(); ++i) w[i] = b.x[i] * std::exp(a.m[i] - b.m[i]);
    }
    phases.rho_i = {a.rho_i, b.rho_i};
    return newton(fluid, point, phases);
}

bool Equilibrium::near_measured(FluidModel const& fluid, Point const& point, Phases& phases) const {
    if (saturation(point)) return substitute(fluid, point, phases);
    phases = {};
    for (auto const& [x, root] : measured(point)) {
        PhaseState s;
        s.resize(n_);
        if (!fluid.evaluate_at(s, point.p, point.T, *x, root, 0)) return false;
        phases.rho_i.push_back(s.rho_i);
    }
    return !phases.empty() && newton(fluid, point, phases);
}

/// What the certified solvers find.
Phases Equilibrium::found(Point const& point) const {
    Phases result;
    const auto add = [&](PhaseRecord const& phase) {
        Numbers rho_i;
        for (int i = 0; i < n_; ++i) rho_i.push_back(phase.rho * phase.x[i]);
        result.rho_i.push_back(rho_i);
    };
    if (point.kind == PointKind::liquid_liquid) {
        const FlashResult f = flash_pT(model_, point.p, point.T, vector(middle(point)));
        if (f.phases.size() == 2)
            for (auto const& phase : f.phases) add(phase);
        if (!result.empty() && !in_order(point, result))
            std::swap(result.rho_i[0], result.rho_i[1]);
    } else if (point.kind == PointKind::azeotrope) {
        const AzeotropePoint a = azeotrope_T(model_, point.T);
        add(a.dense);
        add(a.light);
    } else if (point.kind == PointKind::three_phase) {
        for (PhaseRecord const& phase : three_phase_T(model_, point.T).phases) add(phase);
        std::swap(result.rho_i[result.lightest()], result.rho_i[2]);
        if (!in_order(point, result)) std::swap(result.rho_i[0], result.rho_i[1]);
    } else {
        SaturationOptions options;
        options.trace = false;
        options.test = StabilityTest::quick;
        const SaturationPoint s =
            saturation_T(model_, dew(point) ? Saturated::dew : Saturated::bubble, point.T,
                         vector(given(point)), options);
        if (!s.split.empty()) return result;
        add(s.given);
        add(s.incipient);
    }
    return result;
}

bool Equilibrium::search(Point const& point, Phases& phases) const {
    phases = {};
    try {
        phases = found(point);
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return !phases.empty();
}

bool Equilibrium::near(Point const& point, Phases& phases) const {
    const FluidModel fluid(model_, vector(middle(point)));
    return (!phases.empty() && newton(fluid, point, phases)) || near_measured(fluid, point, phases);
}

/// Two liquids that are nearly one: from another temperature, at which they are not.
bool Equilibrium::approach(Point const& point, Phases& phases) const {
    Point other = point;
    for (double part : {0.97, 1.03, 0.9}) {
        double T = part * point.T, step = point.T - T;
        other.T = T;
        phases = {};
        if (!near(other, phases)) continue;
        for (int k = 0; k < kApproach && std::fabs(step) > kShortest * T; ++k) {
            other.T = std::fabs(point.T - T) <= std::fabs(step) ? point.T : T + step;
            Phases next = phases;
            if (!newton(FluidModel(model_, vector(middle(point))), other, next)) {
                step *= 0.5;
                continue;
            }
            phases = next;
            T = other.T;
            if (T == point.T) return true;
        }
    }
    phases = {};
    return false;
}

bool Equilibrium::solve(Point const& point, Phases& phases) const {
    if (whole(point) && near(point, phases)) return true;
    if (whole(point) && point.kind == PointKind::liquid_liquid && approach(point, phases))
        return true;
    return search(point, phases);
}

}  // namespace corvane::fit
