// The path of a residue curve, whatever the vapour comes from. Internal to the library.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace corvane::inline detail {

using Fractions3 = std::array<double, 3>;

/// Boiling liquid of composition x, its vapour y, and its T.
struct Boiling {
    Fractions3 x, y;
    double T;
};
struct ResidueNode {
    Boiling at;
    double xi;  ///< ∫ d(arc)/|x − y| from the start
};

inline double distance(Fractions3 const& a, Fractions3 const& b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) +
                     (a[2] - b[2]) * (a[2] - b[2]));
}

/// The pair of orders 5 and 4 of Dormand and Prince: weights of the slopes in every stage, of which the
/// last one is the result, and in the error.
inline constexpr double kStages[7][6] = {
    {},
    {1. / 5},
    {3. / 40, 9. / 40},
    {44. / 45, -56. / 15, 32. / 9},
    {19372. / 6561, -25360. / 2187, 64448. / 6561, -212. / 729},
    {9017. / 3168, -355. / 33, 46732. / 5247, 49. / 176, -5103. / 18656},
    {35. / 384, 0., 500. / 1113, 125. / 192, -2187. / 6784, 11. / 84}};
inline constexpr double kStageErrors[7] = {71. / 57600,      0., -71. / 16695, 71. / 1920, -17253. / 339200,
                                    22. / 525, -1. / 40};

/// dx/ds and dξ/ds in the arc length s; nothing where liquid and vapour are equal.
inline std::optional<std::array<double, 4>> residue_slope(Boiling const& b, double sign) {
    const double gap = distance(b.x, b.y);
    if (!(gap > 1e-7)) return {};
    std::array<double, 4> d{0, 0, 0, sign / gap};
    for (std::size_t i = 0; i < 3; ++i) d[i] = sign * (b.x[i] - b.y[i]) / gap;
    return d;
}

/// Follows dx/dξ = ±(x − y) from x. In the arc length the way to a node is finite and not stiff:
/// dx/ds = ±(x − y)/|x − y|, dξ/ds = ±1/|x − y|, by the pair of orders 5 and 4 of Dormand and Prince (J.
/// Comput. Appl. Math. 6 (1980) 19), of which the difference is held below `tolerance` in x; a step
/// that leaves the triangle is halved. boil(x) returns the Boiling of x or nothing; arrived(node) ends
/// the path. Ends, too, where |x − y| is below 1e-7, after `most` steps, and where no step is found.
template <class Boil, class Arrived>
std::vector<ResidueNode> residue_path(Fractions3 start, double sign, double longest, double tolerance,
                                      int most, Boil const& boil, Arrived const& arrived) {
    using Four = std::array<double, 4>;  // x and ξ
    std::vector<ResidueNode> path;
    const std::optional<Boiling> first = boil(start);
    if (!first) return path;
    path.push_back({*first, 0.0});
    std::optional<Four> k0 = residue_slope(*first, sign);
    double h = 0.1 * longest;
    for (int tries = 0; k0 && tries < 4 * most && static_cast<int>(path.size()) < most && h > 1e-9; ++tries) {
        ResidueNode const& now = path.back();
        std::array<Four, 7> k{*k0};
        std::optional<Boiling> last;
        double xi = now.xi, off = 0.0;
        bool good = true;
        for (std::size_t stage = 1; stage < 7 && good; ++stage) {
            Four u{now.at.x[0], now.at.x[1], now.at.x[2], now.xi};
            for (std::size_t j = 0; j < stage; ++j)
                for (std::size_t i = 0; i < 4; ++i) u[i] += h * kStages[stage][j] * k[j][i];
            good = u[0] > 0.0 && u[1] > 0.0 && u[2] > 0.0;
            if (!good) break;
            const double sum = u[0] + u[1] + u[2];
            last = boil({u[0] / sum, u[1] / sum, u[2] / sum});
            const auto d = last ? residue_slope(*last, sign) : std::nullopt;
            good = d.has_value();
            if (good) k[stage] = *d;
            xi = u[3];
        }
        if (good)
            for (std::size_t i = 0; i < 3; ++i) {
                double e = 0.0;
                for (std::size_t j = 0; j < 7; ++j) e += kStageErrors[j] * k[j][i];
                off = std::max(off, std::fabs(h * e));
            }
        if (!good || off > tolerance) {
            h *= good ? std::max(0.2, 0.9 * std::pow(tolerance / off, 0.2)) : 0.5;
            continue;
        }
        path.push_back({*last, xi});
        k0 = k[6];
        if (arrived(path.back())) break;
        h = std::min(longest, h * std::min(5.0, 0.9 * std::pow(tolerance / std::max(off, 1e-300), 0.2)));
    }
    return path;
}

}  // namespace corvane::inline detail
