#include <corvane/phases/stability/hull.h>

#include <array>
#include <cmath>

namespace corvane {
namespace {
// Closest at the ends, where phases rich in one component are; 0.06 apart in between, so that only
// a split narrower than that, next to a consolute point, has no grid point to pass over.
constexpr std::array<double, 25> kGrid{1e-9, 0.002, 0.01, 0.03, 0.06, 0.1,   0.15,    0.2,  0.26,
                                       0.32, 0.38,  0.44, 0.5,  0.56, 0.62,  0.68,    0.74, 0.8,
                                       0.85, 0.9,   0.94, 0.97, 0.99, 0.998, 1 - 1e-9};
constexpr double kAbove = 1e-9;  // a grid point above a facet by less is on it
constexpr double kJump = 0.15;   // of ln rho between neighbours: different density roots

struct Vertex {
    double x, rho, g;
    int at;
};
}  // namespace

std::vector<Facet> detail::split_facets(FluidModel const& fluid, double p, double T) {
    PhaseState s;
    s.resize(2);
    std::vector<double> x(2);
    std::vector<Vertex> hull;
    for (int k = 0; k < static_cast<int>(kGrid.size()); ++k) {
        x[0] = kGrid[static_cast<std::size_t>(k)];
        x[1] = 1.0 - x[0];
        double rho[2];
        Vertex v{x[0], 0.0, 1e300, k};
        const int roots = fluid.densities(p, T, x, rho);
        for (int root = 0; root < roots; ++root) {
            for (int i = 0; i < 2; ++i) s.rho_i[i] = x[i] * rho[root];
            if (!fluid.evaluate(s, T, 0)) continue;
            const double g = x[0] * s.m[0] + x[1] * s.m[1];
            if (g < v.g) v.g = g, v.rho = rho[root];
        }
        if (!(v.g < 1e299)) continue;
        // Andrew's monotone chain: the last vertex goes if it is above the chord around it.
        while (hull.size() > 1) {
            Vertex const &b = hull.back(), &a = hull[hull.size() - 2];
            const double chord = a.g + (v.g - a.g) * (b.x - a.x) / (v.x - a.x);
            if (b.g < chord + kAbove) break;
            hull.pop_back();
        }
        hull.push_back(v);
    }
    std::vector<Facet> facets;
    for (std::size_t k = 1; k < hull.size(); ++k) {
        Vertex const &a = hull[k - 1], &b = hull[k];
        if (b.at > a.at + 1 || std::fabs(std::log(a.rho / b.rho)) > kJump)
            facets.push_back({{a.x, b.x}, {a.rho, b.rho}});
    }
    return facets;
}

}  // namespace corvane
