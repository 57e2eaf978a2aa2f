// Which curve passes where in a picture, in parts of its axes.
#pragma once

#include <tools/corvane/diagrams/picture.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace cli {

class Raster {
  public:
    static constexpr int kNobody = -1, kSeveral = -2;
    void draw(std::vector<XY> const& points, int who) {
        for (std::size_t k = 1; k < points.size(); ++k) {
            XY const &a = points[k - 1], &b = points[k];
            const double way = std::max(std::fabs(b[0] - a[0]), std::fabs(b[1] - a[1]));
            if (!std::isfinite(way)) continue;
            const int steps = std::min(4 * kSize, 1 + static_cast<int>(way * kSize));
            for (int i = 0; i <= steps; ++i) {
                const double t = static_cast<double>(i) / steps;
                put(a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), who);
            }
        }
    }
    /// Whether a curve lies on the straight way.
    bool between(XY const& a, XY const& b) const {
        for (int n = 0; n <= kSize; ++n) {
            const double t = static_cast<double>(n) / kSize, x = a[0] + t * (b[0] - a[0]), y = a[1] + t * (b[1] - a[1]);
            if (at(cell(x), cell(y)) != kNobody) return true;
        }
        return false;
    }
    /// How many cells in the box belong to others.
    int others(Box const& box, int who) const {
        int count = 0;
        for (int i = cell(box.left); i <= cell(box.right); ++i)
            for (int k = cell(box.low); k <= cell(box.high); ++k) {
                const int owner = at(i, k);
                count += owner != kNobody && owner != who ? 1 : 0;
            }
        return count;
    }

  private:
    static constexpr int kSize = 300;
    static int cell(double part) {
        return std::clamp(static_cast<int>(part * kSize), 0, kSize - 1);
    }
    int at(int i, int k) const { return cells_[static_cast<std::size_t>(i * kSize + k)]; }
    void put(double x, double y, int who) {
        if (!(x >= 0.0 && x <= 1.0 && y >= 0.0 && y <= 1.0)) return;
        int& owner = cells_[static_cast<std::size_t>(cell(x) * kSize + cell(y))];
        owner = owner == kNobody || owner == who ? who : kSeveral;
    }
    std::vector<int> cells_ = std::vector<int>(static_cast<std::size_t>(kSize) * kSize, kNobody);
};

}  // namespace cli
