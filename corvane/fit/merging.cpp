#include <corvane/fit/merging.h>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
using Numbers = std::vector<double>;

double difference(Numbers const& a, Numbers const& b) {
    double most = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) most = std::fmax(most, std::fabs(a[i] - b[i]));
    return most;
}

double to_pure(Numbers const& x) {
    return 1.0 - *std::max_element(x.begin(), x.end());
}

/// In the order of the phases of a solution; empty where not all are known.
std::vector<Numbers> measured(Point const& point) {
    std::vector<Numbers> result{point.x, point.x2};
    if (point.kind == PointKind::three_phase) result.push_back(point.y);
    if (std::any_of(result.begin(), result.end(), [](auto const& x) { return x.empty(); }))
        return {};
    return result;
}
/// Liquids by their compositions, over the measured difference or kUnmeasured; a vapour may have
/// that of a liquid and be none.
double nearness(Point const& point, Phases const& phases) {
    std::vector<Numbers> found = phases.rho_i;
    for (Numbers& x : found) {
        const double rho = total(x);
        for (double& each : x) each /= rho;
    }
    if (point.kind == PointKind::azeotrope)
        return to_pure(found[0]) / (point.x.empty() ? kUnmeasuredAzeotrope : to_pure(point.x));
    const auto known = measured(point);
    double result = difference(found[0], found[1]) /
                    (known.empty() ? kUnmeasured : difference(known[0], known[1]));
    for (std::size_t liquid = 0; liquid < 2 && found.size() > 2; ++liquid) {
        const double ratio = total(phases.rho_i[liquid]) / total(phases.rho_i[2]);
        result = std::fmin(
            result, std::fmax(std::fabs(std::log(ratio)), difference(found[liquid], found[2])));
    }
    return result;
}
}  // namespace

double merging_weight(Point const& point, Phases const& phases) {
    if (Equilibrium::saturation(point)) return 1.0;
    const double s = std::pow(std::fmin(1.0, nearness(point, phases) / kMerging), 2);
    return s * s * (3.0 - 2.0 * s);
}

double merged(Point const& point, Observation const& seen) {
    if (point.kind == PointKind::azeotrope) return to_pure(point.x);
    const auto known = measured(point);
    if (known.empty()) return 0.0;
    const std::size_t own = seen.what == Observable::x ? 0 : seen.what == Observable::x2 ? 1 : 2;
    double next = INFINITY;
    for (std::size_t k = 0; k < known.size(); ++k)
        if (k != own) next = std::fmin(next, difference(known[own], known[k]));
    return 0.5 * next;
}

}  // namespace corvane::fit
