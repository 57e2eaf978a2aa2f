// The lowest tangent-plane distance of a ternary: a mesh over the triangle, then descents.
#pragma once

#include "binary_scan.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace judge {

/// t(w) as in BinaryScan, evaluated along both density roots on a mesh over the triangle (91
/// compositions if there are 12 steps on a side) and next to where densities end on it, on traces
/// of 1e-3 … 1e-12 beside every composition of the edges, and around the compositions known to be
/// in equilibrium, 0.3 … 1e-4 of a mole fraction away. From the lowest points of either root, and
/// from all those around the known compositions: substitution ln w_i = mu_i − h_i, then Newton's
/// method on the slopes d_i − d_2 in ln(w_i/w_2), differences in place of second derivatives. All
/// values count: a negative one is a proof; a positive one is only what this search says.
template <class At>
class TernarySearch {
  public:
    TernarySearch(At const& at, Long P, Long const* mu, std::vector<Values<Long>> const& known,
                  int steps = 12)
        : at_(at), P_(P), mu_{mu[0], mu[1], mu[2]} {
        std::vector<Point> mesh[2], close;
        auto add = [&](Values<Long> w, bool near_known) {
            Long sum = 0;
            for (Long v : w) {
                if (!(v > 0)) return false;
                sum += v;
            }
            for (Long& v : w) v /= sum;
            Point p[2];
            const int n = points(w, p);
            for (int r = 0; r < n; ++r) (near_known ? close : mesh[r]).push_back(p[r]);
            return n > 0;
        };
        const auto node = [&](int i, int j) {
            const auto part = [&](int k) { return std::max(1e-12L, Long(k) / steps); };
            return Values<Long>{part(i), part(j), part(steps - i - j)};
        };
        std::vector<bool> dense((steps + 1) * (steps + 1));
        for (int i = 0; i <= steps; ++i)
            for (int j = 0; i + j <= steps; ++j)
                dense[i * (steps + 1) + j] = add(node(i, j), false);
        // Where densities end between two nodes: next to that edge.
        for (int i = 0; i <= steps; ++i)
            for (int j = 0; i + j <= steps; ++j)
                for (auto [di, dj] : {std::pair{1, -1}, {1, 0}, {0, 1}}) {
                    const int k = i + di, l = j + dj;
                    if (l < 0 || k + l > steps) continue;
                    const bool here = dense[i * (steps + 1) + j],
                               there = dense[k * (steps + 1) + l];
                    if (here == there) continue;
                    Values<Long> in = here ? node(i, j) : node(k, l),
                                 out = here ? node(k, l) : node(i, j);
                    for (int it = 0; it < 10; ++it) {
                        Values<Long> m;
                        for (int c = 0; c < 3; ++c) m[c] = (in[c] + out[c]) / 2;
                        (add(m, false) ? in : out) = m;
                    }
                }
        for (const Long trace : {1e-3L, 1e-6L, 1e-9L})
            for (int i = 0; i < 3; ++i)
                for (int k = -8; k <= 8; ++k) {
                    Values<Long> w{};
                    w[i] = trace;
                    w[(i + 1) % 3] = 1 / (1 + std::exp(-Long(k)));
                    w[(i + 2) % 3] = 1 / (1 + std::exp(Long(k)));
                    add(w, false);
                }
        for (auto const& x : known)
            for (Long off = 0.3L; off > 5e-5L; off /= 4)
                for (int i = 0; i < 3; ++i)
                    for (const int sign : {-1, 1}) {
                        Values<Long> w = x;
                        w[i] *= 1 + sign * off;
                        add(w, true);
                    }
        for (auto& list : mesh) {
            std::sort(list.begin(), list.end(), [](auto& a, auto& b) { return a.t < b.t; });
            // the lowest ones, and some that are low in their own part of the triangle
            for (int part = 0; part < 3; ++part) {
                int taken = 0;
                for (std::size_t k = 0; k < list.size() && taken < 4; ++k)
                    if (major(list[k]) == part) descend(list[k]), ++taken;
            }
        }
        std::sort(close.begin(), close.end(), [](auto& a, auto& b) { return a.t < b.t; });
        for (std::size_t k = 0; k < close.size() && k < 8; ++k) descend(close[k]);
    }
    Trial const& lowest() const { return lowest_; }

  private:
    struct Point {
        Values<Long> w{}, d{};
        Long rho = 0, t = 0;
    };
    static int major(Point const& p) {
        return static_cast<int>(std::max_element(p.w.begin(), p.w.end()) - p.w.begin());
    }
    int points(Values<Long> const& w, Point* p) {
        Long rho[2], h[3];
        const int n = at_.roots(P_, w.data(), rho);
        for (int r = 0; r < n; ++r) {
            at_.state(rho[r], w.data(), h);
            p[r].w = w;
            p[r].rho = rho[r];
            p[r].t = 0;
            for (int i = 0; i < 3; ++i) {
                p[r].d[i] = h[i] + std::log(w[i]) - mu_[i];
                p[r].t += w[i] * p[r].d[i];
            }
            if (p[r].t < lowest_.tpd) lowest_ = {p[r].t, p[r].rho, w};
        }
        return n;
    }
    /// The same root at another composition. False without one.
    bool follow(Point& p, Values<Long> const& w) {
        for (Long v : w)
            if (!(v > 1e-300L)) return false;
        Point q[2];
        const int n = points(w, q);
        if (n == 0) return false;
        const int r = n == 2 && std::fabs(std::log(q[1].rho / p.rho)) <
                                    std::fabs(std::log(q[0].rho / p.rho));
        p = q[r];
        return true;
    }
    static Values<Long> shifted(Values<Long> w, Long a, Long b) {
        w[0] *= std::exp(a);
        w[1] *= std::exp(b);
        const Long sum = w[0] + w[1] + w[2];
        for (Long& v : w) v /= sum;
        return w;
    }
    void descend(Point p) {
        for (int k = 0; k < 12; ++k) {
            Values<Long> w;
            Long sum = 0, most = -1e9L;
            for (int i = 0; i < 3; ++i) most = std::max(most, std::log(p.w[i]) - p.d[i]);
            for (int i = 0; i < 3; ++i) sum += w[i] = std::exp(std::log(p.w[i]) - p.d[i] - most);
            for (Long& v : w) v = std::max(v / sum, 1e-200L);
            if (!follow(p, w)) return;
        }
        for (int k = 0; k < 12; ++k) {
            const Long h = 1e-7L;
            const Long s[2] = {p.d[0] - p.d[2], p.d[1] - p.d[2]};
            Long J[2][2], b[2] = {-s[0], -s[1]};
            for (int j = 0; j < 2; ++j) {
                Point q = p;
                if (!follow(q, shifted(p.w, j == 0 ? h : 0, j == 1 ? h : 0))) return;
                for (int i = 0; i < 2; ++i) J[i][j] = (q.d[i] - q.d[2] - s[i]) / h;
            }
            if (!eliminate(J, b, 2)) return;
            const Long size = std::max(std::fabs(b[0]), std::fabs(b[1]));
            const Long f = size > 1 ? 1 / size : 1;
            if (!follow(p, shifted(p.w, f * b[0], f * b[1])) || size < 1e-10L) return;
        }
    }

    At const& at_;
    Long P_, mu_[3];
    Trial lowest_;
};

}  // namespace judge
