// Bubble points of liquids that split: the first vapour beside two liquids.
#include <corvane/core/constants.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/phases/stability/test_phases.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr int kFlashes = 30;
constexpr double kStep = 0.7;     // change of ln p between flashes, the first ones
constexpr double kLowest = 1e-100;  // MPa
constexpr double kNarrow = 0.05;  // bracket in ln p from which Newton's method starts
constexpr double kLeast = 1e-4;   // bracket that ends the search
constexpr double kJump = 0.2;     // of ln rho of the lightest phase, least

std::vector<double> present(FluidModel const& fluid, Vector<double> const& all) {
    std::vector<double> x;
    for (int k = 0; k < fluid.size(); ++k)
        x.push_back(std::max(all[fluid.index(k)], least_fraction));
    return x;
}
}  // namespace

/// Newton's method for three phases, from two liquids and a vapour at T = t.
std::optional<SaturationPoint> SaturationSolver::three_phases(
    std::vector<PhaseRecord> const& liquids, std::vector<double> const& amounts,
    std::vector<double> const& y, double rho_vapour, double t, SaturationOptions const& o) {
    const int n = fluid_.size();
    const Vector<double> z = fluid_.expand(fluid_.z());
    for (int k = 0; n == 2 && k < 4; ++k)  // liquid k / 2 without component k % 2
        if (absent(present(fluid_, liquids[k / 2].x)[k % 2]))
            return beside_pure(1 - k % 2, liquids[1 - k / 2], o);
    // Three phases of a binary depend on T (or p) alone: the amounts follow.
    CoexistenceSolver three(fluid_, 3);
    if (n > 2) three.z = &fluid_.z();
    three.split = n > 2;
    (at_T_ ? three.T : three.p) = value_;
    // The lighter first: it is softer, and all pressures are compared with the first one.
    for (int k = 0; k < 2; ++k)
        three.start(k, present(fluid_, liquids[1 - k].x), liquids[1 - k].rho);
    three.start(2, y, rho_vapour);
    three.u.back() = std::log(t);
    const double v0 = amounts[1] / liquids[1].rho, v1 = amounts[0] / liquids[0].rho;
    three.fraction = v1 / (v0 + v1);
    SaturationPoint point;
    if (!three.solve(kNewton)) return {};
    three.level();
    if (n == 2) {
        const int k = fluid_.z()[0] < fluid_.z()[1] ? 0 : 1;
        const double xa = three.phase[0].x[k], xb = three.phase[1].x[k],
                     beta = (fluid_.z()[k] - xa) / (xb - xa);
        const double va = (1.0 - beta) / three.phase[0].rho, vb = beta / three.phase[1].rho;
        three.fraction = beta > 0.0 && beta < 1.0 ? vb / (va + vb) : beta;
        if (three.fraction == beta) open_ = false;  // the whole is not between the two liquids
    }
    if (!(three.fraction > 0.0 && three.fraction < 1.0) || !(three.pressure() > 0.0) ||
        !three.bound(point.certificate))
        return {};
    auto mass = [&](PhaseState const& phase) {
        double sum = 0.0;
        for (int k = 0; k < n; ++k) sum += phase.rho_i[k] * fluid_.molar_mass(k);
        return sum;
    };
    double parts[] = {(1.0 - three.fraction) * three.phase[0].rho,
                      three.fraction * three.phase[1].rho};
    PhaseState const *first = &three.phase[0], *second = &three.phase[1];
    if (mass(*first) < mass(*second)) {
        std::swap(first, second);
        std::swap(parts[0], parts[1]);
    }
    if (!(mass(three.phase[2]) < mass(*second))) return {};
    const StabilityResult r = test_phases(three, stability_, point.certificate.tpd);
    if (!r.stable || r.unconverged) return {};
    point.T = at_T_ ? value_ : three.phase[0].T;
    point.p = at_T_ ? three.pressure() : value_;
    certify(fluid_, point.p, {first, second, &three.phase[2]}, point.certificate);
    point.certificate.evaluations = fluid_.evaluations;
    if (o.validity) point.certificate.flag(o.validity, point.T, point.p, z);
    if (!point.certificate.holds()) return {};
    const double rho = parts[0] + parts[1];
    point.given = {rho, z};
    point.split = {point.certificate.phases[0], point.certificate.phases[1]};
    point.fraction = {parts[0] / rho, parts[1] / rho};
    point.incipient = point.certificate.phases[2];
    return point;
}

std::optional<SaturationPoint> SaturationSolver::beside_pure(int i, PhaseRecord const& other,
                                                             SaturationOptions const& o) {
    const int j = 1 - i;
    PureSaturation q;
    try {
        q = at_T_ ? pure_saturation_T(fluid_.pure(i), value_)
                  : pure_saturation_p(fluid_.pure(i), value_);
    } catch (EquilibriumFailure const&) {
        return {};
    }
    SaturationPoint point;
    const double t = point.T = at_T_ ? value_ : q.T, p = point.p = at_T_ ? q.p : value_;
    PhaseState vapour, pure, rest;
    for (PhaseState* s : {&vapour, &pure, &rest}) s->resize(2);
    for (PhaseState* s : {&vapour, &pure}) {
        s->rho_i[i] = s == &pure ? q.rhoL : q.rhoV;
        s->rho_i[j] = least_fraction * s->rho_i[i];
        if (!fluid_.evaluate(*s, t, phase_all)) return {};
    }
    std::vector<double> x = present(fluid_, other.x);
    for (int it = 0; it < 3; ++it) {
        if (!fluid_.evaluate_at(rest, p, t, x, Root::dense, phase_all)) return {};
        x[i] = std::max(x[i] * std::exp(pure.m[i] - rest.m[i]), least_fraction);
    }
    constexpr double eps = std::numeric_limits<double>::epsilon();
    if (!(x[i] < 0.1 * eps)) return {};
    PhaseState plane = pure;
    plane.m[j] = rest.m[j];
    const StabilityResult r = stability_.test(plane, p, &vapour, true);
    if (!r.stable || r.unconverged) return {};
    Certificate& c = point.certificate;
    c.tpd = std::min(0.0, r.tpd);
    c.test = stability_.kind;
    c.value_error = q.value_error;
    c.x_error = eps;
    c.rho_error = std::max(q.rho_error, (2.0 * rounding_of_P(fluid_, rest) +
                                         q.value_error * p / (R * t)) / rest.S);
    c.apart_error = q.apart_error;
    const bool heavier = pure.rho * fluid_.molar_mass(i) > rest.rho * fluid_.molar_mass(j);
    certify(fluid_, p, {heavier ? &pure : &rest, heavier ? &rest : &pure, &vapour}, c);
    const double pure_part = fluid_.z()[i];
    point.fraction = {heavier ? pure_part : 1.0 - pure_part, heavier ? 1.0 - pure_part : pure_part};
    for (PhaseRecord& record : c.phases)
        for (int k = 0; k < record.x.size(); ++k)
            if (absent(record.x[k])) record.x[k] = 0.0;
    c.evaluations = fluid_.evaluations;
    const Vector<double> z = fluid_.expand(fluid_.z());
    if (o.validity) c.flag(o.validity, t, p, z);
    if (!c.holds()) return {};
    point.given = {1.0 / (pure_part / pure.rho + (1.0 - pure_part) / rest.rho), z};
    point.split = {c.phases[0], c.phases[1]};
    point.incipient = c.phases[2];
    return point;
}

/// Flashes at (p, T) until they bracket where the vapour vanishes beside two liquids: from the
/// liquids above it follows how far, by the sum of the vapour's amounts that their potentials ask
/// for. Then Newton's method for all three phases. At given p the search is in T, in steps of the
/// same ln(p/p_sat) by Wilson's enthalpies.
///
/// Leaves open_ where it does not know whether there is such a point.
std::optional<SaturationPoint> SaturationSolver::beside_two_liquids(SaturationOptions const& o) {
    open_ = true;
    const int n = fluid_.size();
    const Vector<double> z = fluid_.expand(fluid_.z());
    std::vector<double> y = b_.x;
    for (double& yi : y) yi = std::max(yi, least_fraction);
    // Below its pseudocritical density.
    const auto gas = [&](double rho, std::vector<double> const& x) {
        double volume = 0.0;
        for (int k = 0; k < n; ++k) volume += x[k] * fluid_.pure(k).vcrit();
        return rho * volume < 1.0;
    };
    double t = at_T_ ? value_ : a_.T, q = at_T_ ? a_.p : value_, latent = 0.0;
    for (int k = 0; k < n; ++k)
        latent += y[k] * 5.373 * (1.0 + fluid_.pure(k).omega()) * fluid_.pure(k).Tcrit();
    std::vector<PhaseRecord> liquids;
    std::vector<double> amounts;
    PhaseState liquid, vapour;
    liquid.resize(n);
    vapour.resize(n);
    struct Side {  // the lightest phase at low or high
        double rho = 0.0;
        std::size_t count = 0;
    } below, beyond;
    double coldest = 1e300, hottest = 0.0;
    for (int k = 0; k < n; ++k) {
        coldest = std::min(coldest, 0.3 * fluid_.pure(k).Tcrit());
        hottest = std::max(hottest, 2.0 * fluid_.pure(k).Tcrit());
    }
    double rho_vapour = 0.0, s = 0.0, low = -1e300, high = 1e300, reached = 1e300;
    bool tried = false;
    const double t0 = t, q0 = q;
    for (int it = 0; it < kFlashes; ++it) {
        if (!at_T_) s = std::max(s, latent * (1.0 / hottest - 1.0 / t0));
        if (at_T_)
            q = q0 * std::exp(s);
        else
            t = 1.0 / (1.0 / t0 + s / latent);
        if (!(t > 0.0) || !(q > kLowest) || !std::isfinite(q)) return {};
        FlashResult whole;
        try {
            whole = flash_pT(fluid_.model(), q, t, z);
            fluid_.evaluations += whole.certificate.evaluations;
        } catch (EquilibriumFailure const&) {  // as next to three phases of a binary
            s += 0.03 * (1 + it);
            continue;
        } catch (ThException const& e) {
            if (e.number != th_no_density) throw;
            return {};
        }
        const std::size_t count = whole.phases.size();
        const std::vector<double> lightest = present(fluid_, whole.phases.back().x);
        const bool above = !gas(whole.phases.back().rho, lightest);
        if (!above && s > low) {
            low = s;
            below = {whole.phases.back().rho, count};
        }
        if (above && s < high) {
            high = s;
            beyond = {whole.phases.back().rho, count};
        }
        if (!above) {
            y = lightest;
            rho_vapour = whole.phases.back().rho;
        }
        if (count > (above ? 1u : 2u)) {
            liquids.assign(whole.phases.begin(), whole.phases.begin() + 2);
            amounts.assign(whole.fraction.begin(), whole.fraction.begin() + 2);
            if (!above) break;
        }
        if (above && count == 1 && low < -1e299 && s < -4 * kStep) {  // does not split
            open_ = false;
            return {};
        }
        if (above && count > 1) {
            for (int k = 0; k < n; ++k)
                liquid.rho_i[k] = liquids[0].x[fluid_.index(k)] * liquids[0].rho;
            if (!fluid_.evaluate(liquid, t, 0)) return {};
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) {
                if (!fluid_.evaluate_at(vapour, q, t, y, Root::dilute, 0)) return {};
                if (!gas(vapour.rho, vapour.x)) break;
                sum = 0.0;
                for (int i = 0; i < n; ++i)
                    sum += y[i] = std::exp(liquid.m[i] - vapour.m[i] + std::log(vapour.x[i]));
                for (double& yi : y) yi = std::max(yi / sum, least_fraction);
            }
            if (gas(vapour.rho, vapour.x)) {
                rho_vapour = vapour.rho;
                if (std::fabs(std::log(sum)) < kStep) reached = s + std::log(sum);
                if (std::fabs(reached - s) < kNarrow) {
                    const auto found = three_phases(liquids, amounts, y, rho_vapour, t, o);
                    if (found) return found;
                    if (!open_) return {};
                    reached = 1e300;  // led astray, as next to a critical point of vapour and liquid
                }
            }
        }
        if (high - low < kNarrow) {
            // One phase, or from gas to liquid without a jump: nothing vanishes.
            if ((below.count == 1 && beyond.count == 1) ||
                std::fabs(std::log(below.rho / beyond.rho)) < kJump) {
                open_ = false;
                return {};
            }
            if (high - low < kLeast) break;
            if (!tried && !liquids.empty() && rho_vapour > 0.0) {
                const auto found = three_phases(liquids, amounts, y, rho_vapour, t, o);
                if (found || !open_) return found;
                tried = true;
            }
        }
        // Always a vapour, or never.
        if ((high > 1e299 && (at_T_ ? q > kHighest : t < coldest)) ||
            (low < -1e299 && !at_T_ && t > 0.999 * hottest)) {
            open_ = false;
            return {};
        }
        const auto grown = [&](int from) { return kStep * (1 << std::clamp(it - from, 0, 12)); };
        if (reached > low && reached < high)
            s = reached;
        else
            s = high > 1e299 ? s + grown(0) : low < -1e299 ? s - grown(4) : 0.5 * (low + high);
        reached = 1e300;
    }
    if (liquids.empty() || !(rho_vapour > 0.0)) return {};
    return three_phases(liquids, amounts, y, rho_vapour, t, o);
}

}  // namespace corvane
