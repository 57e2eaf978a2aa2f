// Bubble points of liquids that split: the first vapour beside two liquids or more.
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/saturation/saturation_solver.h>
#include <corvane/phases/stability/test_phases.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace corvane {
namespace {
constexpr double kScarce = 1e-4;  // of a liquid's amount in the whole
}  // namespace

std::vector<double> detail::present(FluidModel const& fluid, Vector<double> const& all) {
    std::vector<double> x;
    x.reserve(fluid.z().size());
    for (int k = 0; k < fluid.size(); ++k)
        x.push_back(std::max(all[fluid.index(k)], least_fraction));
    return x;
}

void detail::without_absent(std::vector<PhaseRecord>& phases) {
    for (PhaseRecord& record : phases)
        for (int i = 0; i < record.x.size(); ++i)
            if (absent(record.x[i])) record.x[i] = 0.0;
}

/// Amounts of n phases that add up to the whole; false if they do not.
bool SaturationSolver::amounts_of(CoexistenceSolver const& s, std::vector<double>& amount) const {
    const int n = fluid_.size();
    std::vector<double> rows;
    for (int i = 0; i < n; ++i)
        for (int k = 0; k < n; ++k) rows.push_back(s.phase[k].x[i] / fluid_.z()[i]);
    amount.assign(static_cast<std::size_t>(n), 1.0);
    return lu_solve(n, rows.data(), amount.data()) &&
           *std::min_element(amount.begin(), amount.end()) > 0.0;
}

/// Newton's method for all phases, from liquids and a vapour at T = t. As many liquids as
/// components depend on T (or p) alone, and the amounts follow; fewer make up the whole with it.
std::optional<SaturationPoint> SaturationSolver::first_vapour(
    std::vector<PhaseRecord> const& liquids, std::vector<double> const& amounts,
    std::vector<double> const& y, double rho_vapour, double t, SaturationOptions const& o) {
    const int n = fluid_.size(), K = static_cast<int>(liquids.size());
    for (int k = 0; n == 2 && k < 4; ++k) {  // liquid k / 2 without component k % 2, or its vapour
        const double x = present(fluid_, liquids[k / 2].x)[k % 2];
        if (absent(x) || (x < no_account && absent(y[k % 2])))
            return beside_pure(1 - k % 2, liquids[1 - k / 2], o);
    }
    if (K > n) return {};
    CoexistenceSolver all(fluid_, K + 1);
    const bool whole = K < n;  // its composition is among the equations
    if (whole) all.z = &fluid_.z();
    (held_.at_T ? all.T : all.p) = held_.value;
    // The lightest first: it is the softest, and all pressures are compared with the first one.
    const auto start = [&](int k, std::vector<double> x, double rho) {
        for (double& xi : x)
            if (absent(xi)) xi *= 0.1;  // and stays so where the density changes
        all.start(k, x, rho);
    };
    // Of a mere trace of a liquid: the largest first, whose fraction is what the others leave.
    std::vector<int> order(static_cast<std::size_t>(K));
    for (int k = 0; k < K; ++k) order[k] = K - 1 - k;
    if (whole && *std::min_element(amounts.begin(), amounts.end()) < kScarce)
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            return amounts[a] / liquids[a].rho > amounts[b] / liquids[b].rho;
        });
    // The first one has to hold something of every component.
    const auto holds_all = [&](int k) {
        const std::vector<double> x = present(fluid_, liquids[k].x);
        return std::none_of(x.begin(), x.end(), absent);
    };
    std::stable_partition(order.begin(), order.end(), holds_all);
    for (int k = 0; k < K; ++k)
        start(k, present(fluid_, liquids[order[k]].x), liquids[order[k]].rho);
    start(K, y, rho_vapour);
    all.u.back() = std::log(t);
    if (whole) {
        double volume = 0.0;
        for (int k = 0; k < K; ++k) volume += amounts[k] / liquids[k].rho;
        for (int k = 1; k < K; ++k)
            all.fraction.push_back(amounts[order[k]] / liquids[order[k]].rho / volume);
    }
    if (!all.solve(kNewton)) return {};
    all.level();
    std::vector<double> parts = all.amounts();
    if (!whole && !amounts_of(all, parts)) {
        if (n == 2) open_ = false;  // the whole is not between the two liquids
        return {};
    }
    SaturationPoint point;
    if (!(all.pressure() > 0.0) || !all.bound(point.certificate)) return {};
    if (!(*std::min_element(parts.begin(), parts.end()) > 0.0)) return {};
    if (!certified_beside(all, point, o)) return {};
    report_liquids(all, parts, point);
    return point;
}

/// RegularPair of the two that are alike, with the other liquids beside them.
std::optional<SaturationPoint> SaturationSolver::first_alike(std::vector<std::vector<double>> rho,
                                                             std::vector<double> volumes, double t,
                                                             SaturationOptions const& o) {
    const int n = fluid_.size();
    const std::size_t count = rho.size();
    if (count < 3 || count > static_cast<std::size_t>(n)) return {};
    // The liquid that is most alike comes first.
    const auto unlike = [&](std::size_t k) {
        double most = 0.0;
        for (int i = 0; i < n; ++i)
            most = std::max(most, std::fabs(std::log(rho[k][i] / rho.back()[i])));
        return most;
    };
    for (std::size_t k = 1; k + 1 < count; ++k)
        if (unlike(k) < unlike(0)) {
            std::swap(rho[0], rho[k]);
            std::swap(volumes[0], volumes[k]);
        }
    if (!(unlike(0) < RegularPair::kNearEach)) return {};
    RegularPair pair(fluid_);
    (held_.at_T ? pair.T : pair.p) = held_.value;
    pair.start(rho[0], rho.back(), t);
    const double whole = std::accumulate(volumes.begin(), volumes.end(), 0.0);
    for (std::size_t k = 1; k + 1 < count; ++k) pair.add(rho[k], volumes[k] / whole);
    SaturationPoint point;
    if (!pair.solve(kNewton) || !(pair.distance() > 0.0) || !pair.locally_stable() ||
        !pair.bound(point.certificate))
        return {};
    CoexistenceSolver all(fluid_, static_cast<int>(count));
    all.start(0, pair.a.x, pair.a.rho);
    for (std::size_t k = 1; k + 1 < count; ++k) {
        PhaseState const& liquid = pair.beside[k - 1];
        all.start(static_cast<int>(k), liquid.x, liquid.rho);
        all.fraction.push_back(pair.part(static_cast<int>(k) - 1));
    }
    all.start(static_cast<int>(count) - 1, pair.b.x, pair.b.rho);
    all.u.back() = pair.ln_T();
    if (!all.evaluate() || !(all.pressure() > 0.0)) return {};
    const std::vector<double> parts = all.amounts();
    if (!(*std::min_element(parts.begin(), parts.end()) > 0.0) || !certified_beside(all, point, o))
        return {};
    report_liquids(all, parts, point);
    return point;
}

std::optional<SaturationPoint> SaturationSolver::warm_split(SaturationPoint const& start,
                                                            SaturationOptions const& o) {
    std::optional<SaturationPoint> found;
    if (start.incipient.x.size() == fluid_.expand(fluid_.z()).size())
        found = first_vapour(start.split, start.fraction, present(fluid_, start.incipient.x),
                             start.incipient.rho, held_.T(start.T), o);
    open_ = false;  // what was not found from there is no answer
    return found;
}

/// The certificate of a vapour, the last of all phases, beside liquids.
bool SaturationSolver::certified_beside(CoexistenceSolver const& all, SaturationPoint& point,
                                        SaturationOptions const& o) {
    PhaseState const& vapour = all.phase.back();
    std::vector<PhaseState const*> phases;
    for (PhaseState const& s : all.phase) {
        if (&s != &vapour && !(fluid_.mass_density(vapour) < fluid_.mass_density(s))) return false;
        phases.push_back(&s);
    }
    // Of three components and more as flash_certified: a start that is lost among traces of 1e-100
    // is no sign of a further phase.
    const StabilityResult r = test_phases(all, stability_, point.certificate.tpd);
    if (!r.stable || r.unseen || (r.unconverged && fluid_.size() == 2)) return false;
    point.T = held_.T(vapour.T);
    point.p = held_.p(all.pressure());
    certify(fluid_, point.p, phases, point.certificate);
    point.certificate.test = stability_.kind;
    point.certificate.evaluations = fluid_.evaluations;
    if (o.validity) point.certificate.flag(o.validity, point.T, point.p, fluid_.expand(fluid_.z()));
    return point.certificate.holds();
}

/// The liquids by falling mass density, with their parts of the whole in moles (of any sum).
void SaturationSolver::report_liquids(CoexistenceSolver const& all,
                                      std::vector<double> const& parts,
                                      SaturationPoint& point) const {
    std::vector<std::size_t> order(parts.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return fluid_.mass_density(all.phase[a]) > fluid_.mass_density(all.phase[b]);
    });
    const double whole = std::accumulate(parts.begin(), parts.end(), 0.0);
    std::vector<PhaseRecord> found = point.certificate.phases;
    without_absent(found);
    double volume = 0.0;
    point.certificate.phases.clear();
    for (std::size_t k : order) {
        point.split.push_back(found[k]);
        point.fraction.push_back(parts[k] / whole);
        volume += parts[k] / whole / found[k].rho;
    }
    point.incipient = found.back();
    point.certificate.phases = point.split;
    point.certificate.phases.push_back(point.incipient);
    point.given = {1.0 / volume, fluid_.expand(fluid_.z())};
}

}  // namespace corvane
