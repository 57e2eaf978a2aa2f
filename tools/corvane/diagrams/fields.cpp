#include <tools/corvane/diagrams/fields.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>

#include <corvane/phases/flash/flash.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace cli {
namespace {
constexpr int kCells = 80, kPlaces = 9;
using Cells = std::vector<int>;  // number of the field; kWall: a curve, or outside a triangle
constexpr int kFree = -1, kWall = -2;

/// The picture in cells of which curves and edges are walls.
struct Grid {
    Cells cells = Cells(static_cast<std::size_t>(kCells) * kCells, kFree);
    std::array<Axis, 2> axes;

    explicit Grid(Picture const& picture) : axes(picture.axes()) {
        const bool triangle = !picture.corners[0].empty();
        if (triangle) axes = {};
        for (Curve const& curve : picture.curves)
            if (curve.stroke == Stroke::line) draw(curve.points);
        for (int i = 0; triangle && i < kCells; ++i)
            for (int k = 0; k < kCells; ++k) {
                const XY at = centre(i * kCells + k);
                const double top = at[1] / (0.5 * std::sqrt(3.0)), left = 1.0 - at[0] - 0.5 * top;
                if (!(top > 0.0 && left > 0.0 && top + left < 1.0)) cells[index(i, k)] = kWall;
            }
    }
    static std::size_t index(int i, int k) { return static_cast<std::size_t>(i * kCells + k); }
    XY centre(int cell) const {
        return {axes[0].value((cell / kCells + 0.5) / kCells), axes[1].value((cell % kCells + 0.5) / kCells)};
    }
    void draw(std::vector<XY> const& points) {
        for (std::size_t k = 1; k < points.size(); ++k) {
            const double a[] = {axes[0].part(points[k - 1][0]), axes[1].part(points[k - 1][1])},
                         b[] = {axes[0].part(points[k][0]), axes[1].part(points[k][1])};
            const double way = std::max(std::fabs(b[0] - a[0]), std::fabs(b[1] - a[1]));
            if (!std::isfinite(way)) continue;
            const int steps = std::min(8 * kCells, 1 + static_cast<int>(3.0 * way * kCells));
            for (int n = 0; n <= steps; ++n) {
                const double t = static_cast<double>(n) / steps, x = a[0] + t * (b[0] - a[0]),
                             y = a[1] + t * (b[1] - a[1]);
                if (x >= 0.0 && x < 1.0 && y >= 0.0 && y < 1.0)
                    cells[index(static_cast<int>(x * kCells), static_cast<int>(y * kCells))] = kWall;
            }
        }
    }
    /// Free cells that hang together with one, in the order of their distance from it.
    std::vector<int> fill(int from, int number) {
        std::vector<int> found{from};
        cells[static_cast<std::size_t>(from)] = number;
        for (std::size_t n = 0; n < found.size(); ++n)
            for (auto const& [di, dk] : {std::pair(1, 0), {-1, 0}, {0, 1}, {0, -1}}) {
                const int i = found[n] / kCells + di, k = found[n] % kCells + dk;
                if (i < 0 || k < 0 || i >= kCells || k >= kCells || cells[index(i, k)] != kFree) continue;
                cells[index(i, k)] = number;
                found.push_back(i * kCells + k);
            }
        return found;
    }
    /// Cells to the next wall, other field or edge, along the axes and between them.
    int room(int cell, int number) const {
        for (int r = 1;; ++r)
            for (int di : {-r, 0, r})
                for (int dk : {-r, 0, r}) {
                    const int i = cell / kCells + di, k = cell % kCells + dk;
                    if (i < 0 || k < 0 || i >= kCells || k >= kCells || cells[index(i, k)] != number) return r;
                }
    }
};
}  // namespace

void label_fields(Picture& picture, std::function<std::string(XY const& at)> const& phase) {
    Grid grid(picture);
    int number = 0;
    for (int first = 0; first < kCells * kCells; ++first) {
        if (grid.cells[static_cast<std::size_t>(first)] != kFree) continue;
        const std::vector<int> field = grid.fill(first, number++);
        if (field.size() < kCells * kCells / 400) continue;
        const int middle = *std::max_element(field.begin(), field.end(), [&](int a, int b) {
            return grid.room(a, number - 1) < grid.room(b, number - 1);
        });
        std::string name = phase(grid.centre(middle));
        for (int n = 0; n < kPlaces && !name.empty(); ++n) {
            const std::size_t place = static_cast<std::size_t>(n) * (field.size() - 1) / (kPlaces - 1);
            const std::string there = phase(grid.centre(field[place]));
            if (there.empty())
                name.clear();
            else if (there != name)
                name = std::string(1, 'F');
        }
        if (!name.empty()) picture.labels.push_back({.text = name, .at = grid.centre(middle), .field = true});
    }
}

std::string phase_letter(MixtureFluid const& mixture, Vector<double> const& x, double T, double p, double* rho) {
    std::string letter;
    failure_of([&] {
        const auto flash = corvane::flash_pT(*mixture.model, p, T, x);
        if (flash.phases.size() != 1) return;
        if (rho) *rho = flash.phases[0].rho;
        letter += phase_names(mixture, flash.phases)[0] == "vapour" ? 'V' : 'L';
    });
    return letter;
}

}  // namespace cli
