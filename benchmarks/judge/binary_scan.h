// The lowest tangent-plane distance of a binary, by a slow search of the whole range of composition.
#pragma once

#include "real.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace judge {

/// A trial phase: tpd/(RT) per mole, total density, mole fractions.
struct Trial {
    Long tpd = 1, rho = 0;
    Values<Long> w{};
    Long noise = 0;  ///< of tpd
};

/// t(w) = Σ w_i·(h_i + ln w_i − mu_i) along both density roots at P = p/(RT), over the logit of w_0
/// from −46 to 46 (1e-20; beyond, t is that of the pure component within 1e-18). Its slope by w_0
/// is s = d_0 − d_1, d_i = h_i + ln w_i − mu_i, by the equation of Gibbs and Duhem; minima are where
/// s rises through zero. Nodes At::kStep apart, up to five times that beyond 12, and the compositions
/// `near_w`; an interval is halved, 30 times at most, as long as its roots differ in number, the
/// density jumps, the slope at its middle misses the straight line by more than what keeps it from
/// zero (down to At::kFlat, what rounding may make of a slope), or a single root is about to become three. Every value counts, so that a negative one is a proof; that a positive one is not
/// undercut rests on the halving.
template <class At>
class BinaryScan {
  public:
    BinaryScan(At const& at, Long P, Long const* mu, std::vector<Long> const& near_w = {})
        : at_(at), P_(P), mu_{mu[0], mu[1]} {
        std::vector<Long> L;
        for (Long l = 0; l < 46; l += l < 12 ? At::kStep : l < 24 ? 2 * At::kStep : 5 * At::kStep) {
            L.push_back(l);
            if (l > 0) L.push_back(-l);
        }
        L.push_back(46);
        L.push_back(-46);
        for (Long w : near_w)
            if (w > 0 && w < 1) L.push_back(std::log(w / (1 - w)));
        std::sort(L.begin(), L.end());
        Node last = node(L[0]);
        for (std::size_t k = 1; k < L.size(); ++k) {
            const Node next = node(L[k]);
            if (L[k] > L[k - 1]) settle(last, next, 30);
            last = next;
        }
    }
    Trial const& lowest() const { return lowest_; }

  private:
    struct Branch {
        Long rho, t, s;
    };
    struct Node {
        Long L, gap;
        int n;
        Branch b[2];
    };

    Trial trial(Long L, Branch const& b) const {
        const Long w = 1 / (1 + std::exp(-L));
        return {b.t, b.rho, {w, 1 / (1 + std::exp(L))}};
    }
    Node node(Long L) {
        const Long e = std::exp(-std::fabs(L)), major = 1 / (1 + e), minor = e / (1 + e);
        const Long ln_major = -std::log1p(e), ln_minor = -std::fabs(L) + ln_major;
        const bool up = L > 0;
        const Long w[2] = {up ? major : minor, up ? minor : major};
        const Long ln[2] = {up ? ln_major : ln_minor, up ? ln_minor : ln_major};
        Node q{L, 1, 0, {}};
        Long rho[2], h[2];
        q.n = at_.roots(P_, w, rho, &q.gap);
        for (int r = 0; r < q.n; ++r) {
            at_.state(rho[r], w, h);
            const Long d0 = h[0] + ln[0] - mu_[0], d1 = h[1] + ln[1] - mu_[1];
            q.b[r] = {rho[r], w[0] * d0 + w[1] * d1, d0 - d1};
            if (q.b[r].t < lowest_.tpd) lowest_ = trial(L, q.b[r]);
        }
        return q;
    }
    static bool same(Branch const& a, Branch const& b) {
        return std::fabs(std::log(a.rho / b.rho)) < 0.5L;
    }

    void settle(Node const& a, Node const& b, int depth) {
        if (depth == 0) {
            for (int r = 0; r < a.n && a.n == b.n; ++r)
                if (a.b[r].s < 0 && b.b[r].s > 0) minimum(a, b, r);
            return;
        }
        const Node m = node((a.L + b.L) / 2);
        bool split = a.n != b.n || a.n != m.n, flat = !split;
        for (int r = 0; r < a.n && flat; ++r)  // to rounding
            for (Node const* q : {&a, &m, &b}) flat = flat && std::fabs(q->b[r].s) < At::kFlat;
        if (flat) return;
        for (int r = 0; r < a.n && !split; ++r) {
            const Long sa = a.b[r].s, sm = m.b[r].s, sb = b.b[r].s;
            const Long off = std::fabs(sm - (sa + sb) / 2);
            // One change of sign is enough to know where the zero is.
            const bool clear = 1.5L * off < std::min({std::fabs(sa), std::fabs(sm), std::fabs(sb)});
            split = !clear || !same(a.b[r], b.b[r]);
        }
        if (!split && a.n == 1 && m.gap < 1) {
            // parabola through the three gaps
            const Long c = (a.gap + b.gap) / 2 - m.gap, g = (b.gap - a.gap) / 2;
            split = c > 0 && std::fabs(g) < 2 * c && m.gap - g * g / (4 * c) < 0.5L * m.gap;
        }
        if (split) {
            // Where a branch ends it lies above the other one: no minimum of the lower one is near.
            const bool end = a.n != b.n && depth < 16;
            if (end) return;
            settle(a, m, depth - 1);
            settle(m, b, depth - 1);
            return;
        }
        for (int r = 0; r < a.n; ++r) {
            if (a.b[r].s < 0 && m.b[r].s >= 0) minimum(a, m, r);
            if (m.b[r].s < 0 && b.b[r].s > 0) minimum(m, b, r);
        }
    }
    void minimum(Node a, Node b, int r) {
        for (int k = 0; k < 60 && b.L - a.L > 1e-17L * std::fabs(a.L); ++k) {
            // false position and halving in turn
            const Long f = k % 2 ? 0.5L : a.b[r].s / (a.b[r].s - b.b[r].s);
            const Node m = node(a.L + (b.L - a.L) * std::min(0.999L, std::max(0.001L, f)));
            if (m.n != a.n) break;  // the branch ends in between
            if (std::fabs(m.b[r].s) < 1e-17L) {
                a = b = m;
                break;
            }
            (m.b[r].s < 0 ? a : b) = m;
        }
    }

    At const& at_;
    Long P_, mu_[2];
    Trial lowest_;
};

}  // namespace judge
