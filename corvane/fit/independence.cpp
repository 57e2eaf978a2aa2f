#include <corvane/fit/independence.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <vector>

namespace corvane::fit {
namespace {
/// A deviation with what it is ordered by.
struct Ordered {
    std::tuple<double, double, double> place;
    double deviation;
};

double correlation_of_neighbours(std::vector<Ordered>& all) {
    std::stable_sort(all.begin(), all.end(),
                     [](Ordered const& a, Ordered const& b) { return a.place < b.place; });
    double squares = 0.0, products = 0.0;
    for (std::size_t k = 0; k < all.size(); ++k) {
        squares += all[k].deviation * all[k].deviation;
        if (k > 0) products += all[k].deviation * all[k - 1].deviation;
    }
    const double n = static_cast<double>(all.size());
    return squares > 0.0 ? std::clamp(products / squares * n / (n - 1.0), 0.0, 1.0) : 0.0;
}
}  // namespace

double independent_deviations(Problem const& problem, Result const& result) {
    std::map<std::tuple<int, int, Observable, int>, std::vector<Ordered>> groups;
    for (PointReport const& p : result.points) {
        if (!p.used) continue;
        Point const& point = problem.systems[static_cast<std::size_t>(p.system)]
                                 ->data[static_cast<std::size_t>(p.set)]
                                 .points[static_cast<std::size_t>(p.point)];
        auto const& x = point.x.empty() ? point.y : point.x;
        const auto known = [](double value) { return value > 0.0 ? value : 0.0; };
        groups[{p.system, p.set, p.what, p.component}].push_back(
            {{known(point.T), x.empty() ? 0.0 : x[0], known(point.p)}, p.weighted});
    }
    double sum = 0.0;
    for (auto& [key, all] : groups) {
        const double n = static_cast<double>(all.size());
        const double c = all.size() < 4 ? 0.0 : correlation_of_neighbours(all);
        sum += std::clamp(n * (1.0 - c) / (1.0 + c), 1.0, n);
    }
    return sum;
}

}  // namespace corvane::fit
