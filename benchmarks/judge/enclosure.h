// A proof that no phase lies below a tangent plane: cubic mixtures with a linear covolume, by branch
// and bound over all partial densities. There is no mesh, no root and no descent: every state belongs
// to a box, and every box is settled by a bound.
#pragma once

#include "cubic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace judge {

/// With x_i = b_i·rho_i, B = Σ x_i < 1, beta_i = b_0/b_i and N = Σ beta_i·x_i,
///
///     E = Σ beta_i·x_i·(ln x_i − 1 − c_i) − N·ln(1 − B) − Q(x)·G(B) + b_0·P
///
/// is b_0·rho times the tangent-plane distance at given volume: c_i = ln b_i + m_i of the plane, P =
/// p/(RT), Q the quadratic form of a_ij/(RT), G = ln[(1 + d1·B)/(1 + d2·B)]/((d1 − d2)·B). At fixed
/// composition its infimum over the density is at a density root, so that E >= −slack·N on the whole
/// simplex says that no phase of any composition is below the plane by more than slack (over RT, per
/// mole). slack goes into c_i.
///
/// A box is settled where
///  - E is convex on it, its lower Hessian (every element bounded by the extreme values of its terms)
///    being positive definite: E then lies above its tangent at the minimum, which Newton's method
///    finds;
///  - a quadratic below E is positive: value and slope at the middle, the lower Hessian;
///  - E rises along a coordinate: the side towards the origin decides.
/// Otherwise it is halved. G(B) = ∫ s(Bt)dt from 0 to 1, G′ and G″ with t·s′ and t²·s″, s = 1/((1 +
/// d1·B)(1 + d2·B)), whose derivatives are of alternating sign on [0, 1) for both equations: G, G′ and
/// G″ are monotonic in B. Rounding: every sum is lowered by kRounding times its terms' sizes.
///
/// Branch and bound with convexity: Hansen & Walster, Global Optimization Using Interval Analysis,
/// Dekker 2004, chapter 12; for the stability of phases: Hua, Brennecke & Stadtherr, Ind. Eng. Chem.
/// Res. 37 (1998) 1519; in densities: Nagarajan, Cullick & Griewank, Fluid Phase Equilib. 62 (1991) 191.
class Enclosure {
  public:
    enum class Answer {
        above,  ///< proven: nothing is below the plane by more than slack
        below,  ///< a state that is
        open    ///< too many boxes
    };
    /// m: ln rho_i + μ_i^r/(RT) of the plane.
    Enclosure(Cubic::At<Long> const& at, Long P, Long const* m, double slack, long most = 300000)
        : n_(at.size()), d1_(double(at.d1())), d2_(double(at.d2())), level_(double(at.b(0, 0) * P)) {
        for (int i = 0; i < n_; ++i) {
            const Long b = at.b(i, i);
            beta_[i] = double(at.b(0, 0) / b);
            c_[i] = double(std::log(b) + m[i] + at.c(i) * P) - slack;  // without translation
            for (int j = 0; j < n_; ++j)
                q_[i][j] = double(at.a(i, j) * at.b(0, 0) / (b * at.b(j, j)));
        }
        prove(most);
    }
    /// Is the covolume linear in composition, and the attraction quadratic?
    static bool serves(Cubic::At<Long> const& at) {
        if (!at.quadratic()) return false;
        for (int i = 0; i < at.size(); ++i)
            for (int j = 0; j < i; ++j)
                if (at.b(i, j) != (at.b(i, i) + at.b(j, j)) / 2) return false;
        return true;
    }
    Answer answer() const { return answer_; }
    long boxes() const { return boxes_; }

  private:
    static constexpr double kRounding = 1e-14, kMargin = 1e-9, kSmall = 0.02;
    struct Range {
        double lo, hi;
    };
    using Array = std::array<double, kMax>;
    using Square = std::array<Array, kMax>;
    using Box = std::array<Range, kMax>;

    static Range times(Range a, Range b) {
        const double q[] = {a.lo * b.lo, a.lo * b.hi, a.hi * b.lo, a.hi * b.hi};
        return {std::min({q[0], q[1], q[2], q[3]}), std::max({q[0], q[1], q[2], q[3]})};
    }
    template <std::size_t N>
    static double low(std::array<double, N> const& terms) {
        double sum = 0, all = 0;
        for (double t : terms) sum += t, all += std::fabs(t);
        return sum - kRounding * all;
    }

    double s(double B) const { return 1 / ((1 + d1_ * B) * (1 + d2_ * B)); }
    double s1(double B) const {
        const double q = s(B);
        return -(d1_ + d2_ + 2 * d1_ * d2_ * B) * q * q;
    }
    double s2(double B) const {
        const double q = s(B), u = d1_ + d2_ + 2 * d1_ * d2_ * B;
        return 2 * q * q * (u * u * q - d1_ * d2_);
    }
    double G(double B) const {
        return B > 0 ? (std::log1p(d1_ * B) - std::log1p(d2_ * B)) / ((d1_ - d2_) * B) : 1;
    }
    // Bounds: of small B by the monotonic integrands, else with what cancels.
    double G1(double B, int side) const {
        if (B < kSmall) return s1(side > 0 ? B : 0) / 2;
        return (s(B) - G(B)) / B + side * kRounding / B;
    }
    double G2(double B, int side) const {
        if (B < kSmall) return s2(side > 0 ? 0 : B) / 3;
        return (s1(B) - 2 * (s(B) - G(B)) / B) / B + side * 4 * kRounding / (B * B);
    }

    struct Value {
        double E, off;  ///< off: rounding
        Array slope;
    };
    Value value(Array const& x) const {
        double B = 0, N = 0, Q = 0, size = 0;
        Array Qi{};
        for (int i = 0; i < n_; ++i) {
            B += x[i];
            N += beta_[i] * x[i];
            for (int j = 0; j < n_; ++j) {
                Qi[i] += 2 * q_[i][j] * x[j];
                size += std::fabs(q_[i][j]) * x[i] * x[j];
            }
            Q += Qi[i] * x[i] / 2;
        }
        const double packed = -std::log1p(-B), g = G(B);
        const double g1 = B < kSmall ? s1(0) / 2 + B * s2(0) / 3 : (s(B) - g) / B;
        Value v{level_ + N * packed - Q * g, level_ + N * packed + size, {}};
        for (int i = 0; i < n_; ++i) {
            const double l = x[i] > 0 ? std::log(x[i]) : 0;
            v.E += beta_[i] * x[i] * (l - 1 - c_[i]);
            v.off += beta_[i] * x[i] * (std::fabs(l) + 1 + std::fabs(c_[i]));
            v.slope[i] = beta_[i] * (l - c_[i] + packed) + N / (1 - B) - Qi[i] * g - Q * g1;
        }
        v.off *= kRounding;
        return v;
    }

    /// On a box: lower bounds of the diagonal of the Hessian, middles of the rest and how far that is
    /// off; lower bounds of the slopes.
    struct Bounds {
        Square H, off;
        Array rise;
    };
    Bounds bounds(Box const& x) const {
        Range B{0, 0}, N{0, 0}, Q{0, 0};
        std::array<Range, kMax> Qi{};
        for (int i = 0; i < n_; ++i) {
            B = {B.lo + x[i].lo, B.hi + x[i].hi};
            N = {N.lo + beta_[i] * x[i].lo, N.hi + beta_[i] * x[i].hi};
            for (int j = 0; j < n_; ++j) {
                const Range t = times({q_[i][j], q_[i][j]}, x[j]),
                            u = times({q_[i][j], q_[i][j]}, {x[i].lo * x[j].lo, x[i].hi * x[j].hi});
                Qi[i] = {Qi[i].lo + 2 * t.lo, Qi[i].hi + 2 * t.hi};
                Q = {Q.lo + u.lo, Q.hi + u.hi};
            }
        }
        B.hi = std::min(B.hi, 1.0);
        const double dense = 1 / (1 - B.lo), stiff = 1 / std::max(1 - B.hi, 1e-300);
        const double packed = -std::log1p(-B.lo);
        const Range g{G(B.hi), G(B.lo)}, g1{G1(B.lo, -1), G1(B.hi, 1)}, g2{G2(B.hi, -1), G2(B.lo, 1)};
        const Range Q1 = times(Q, g1), Q2 = times(Q, g2);
        Bounds k{};
        for (int i = 0; i < n_; ++i) {
            const Range own = times(Qi[i], g);
            k.rise[i] = x[i].lo > 0 ? low<6>({beta_[i] * std::log(x[i].lo), -beta_[i] * c_[i],
                                              beta_[i] * packed, N.lo * dense, -own.hi, -Q1.hi})
                                    : -1;
            for (int j = 0; j <= i; ++j) {
                const Range sum = times({Qi[i].lo + Qi[j].lo, Qi[i].hi + Qi[j].hi}, g1),
                            pair = times({2 * q_[i][j], 2 * q_[i][j]}, g);
                const double free = beta_[i] + beta_[j];
                const double lo = low<6>({i == j ? beta_[i] / x[i].hi : 0, free * dense,
                                          N.lo * dense * dense, -pair.hi, -sum.hi, -Q2.hi});
                k.H[i][j] = lo;
                if (i == j) continue;
                const double hi = -low<5>({-free * stiff, -N.hi * stiff * stiff, pair.lo, sum.lo, Q2.lo});
                k.H[i][j] = k.H[j][i] = (lo + hi) / 2;
                k.off[i][j] = k.off[j][i] = (hi - lo) / 2 * (1 + kMargin);
            }
        }
        return k;
    }

    /// Cholesky's factor of H + shift; false if that is not positive definite with a margin.
    bool factor(Square const& H, double shift, Square& L) const {
        for (int i = 0; i < n_; ++i)
            for (int j = 0; j <= i; ++j) {
                double sum = H[i][j] + (i == j ? shift : 0);
                const double whole = std::fabs(sum);
                for (int k = 0; k < j; ++k) sum -= L[i][k] * L[j][k];
                if (i == j && !(sum > kMargin * whole && whole > 0)) return false;
                L[i][j] = i == j ? std::sqrt(sum) : sum / L[j][j];
            }
        return true;
    }
    Array solve(Square const& L, Array v) const {
        for (int i = 0; i < n_; ++i) {
            for (int k = 0; k < i; ++k) v[i] -= L[i][k] * v[k];
            v[i] /= L[i][i];
        }
        for (int i = n_ - 1; i >= 0; --i) {
            for (int k = i + 1; k < n_; ++k) v[i] -= L[k][i] * v[k];
            v[i] /= L[i][i];
        }
        return v;
    }
    /// Is every Hessian within the bounds positive definite? Its diagonal scaled to 1.
    bool convex(Bounds const& k) const {
        Square H{}, L{};
        for (int i = 0; i < n_; ++i) {
            if (!(k.H[i][i] > 0)) return false;
            for (int j = 0; j < n_; ++j) {
                const double scale = std::sqrt(k.H[i][i] * k.H[j][j]);
                H[i][j] += k.H[i][j] / scale;
                H[i][i] -= k.off[i][j] / scale;
            }
        }
        return factor(H, 0, L);
    }

    /// On a box where E is convex: above the tangent at a point near the minimum.
    bool convex_above(Box const& q, Array p) {
        for (int it = 0; it < 80 && !below_; ++it) {
            double B = 0;
            for (int i = 0; i < n_; ++i) B += p[i];
            if (B >= 1) return false;
            const Value v = value(p);
            double least = v.E - v.off;
            Box point = q;
            for (int i = 0; i < n_; ++i) {
                const double g = v.slope[i];
                least -= g > 0 ? g * (p[i] - q[i].lo) : -g * (q[i].hi - p[i]);
                point[i] = {p[i], p[i]};
            }
            if (least >= 0) return true;
            below_ = v.E + v.off < 0;
            // Newton's step of what does not press against a side.
            Square H = bounds(point).H, L{};
            Array step = v.slope;
            for (int i = 0; i < n_; ++i) {
                const bool held = (p[i] <= q[i].lo && step[i] > 0) || (p[i] >= q[i].hi && step[i] < 0);
                if (!held) continue;
                for (int j = 0; j < n_; ++j) H[i][j] = H[j][i] = i == j;
                step[i] = 0;
            }
            if (!factor(H, 0, L)) return false;
            step = solve(L, step);
            double part = 1;
            for (int i = 0; i < n_; ++i)  // x·ln x: not by more than a factor of 20 towards zero
                if (step[i] > 0.95 * p[i]) part = std::min(part, 0.95 * p[i] / step[i]);
            bool moved = false;
            for (int i = 0; i < n_; ++i) {
                const double next =
                    std::clamp(p[i] - part * step[i], std::max(q[i].lo, 1e-300), q[i].hi);
                moved = moved || std::fabs(next - p[i]) > 1e-16 * p[i];
                p[i] = next;
            }
            if (!moved) return false;
        }
        return false;
    }

    /// Is a quadratic below E positive? In half widths r from the middle; g·u + ½·uᵀHu, |u_i| <= 1, is
    /// at least −½·gᵀ(H + s)⁻¹g − ½·n·s, and −Σ |g_i| − ½·n·s, where H + s is positive definite.
    bool quadratic_above(Array const& middle, Array const& r, Bounds const& k, Array& worse) {
        const Value v = value(middle);
        below_ = below_ || v.E + v.off < 0;
        Square H{};
        Array g{};
        double sum = 0, size = 0, loose = 0;
        for (int i = 0; i < n_; ++i) {
            g[i] = r[i] * v.slope[i];
            sum += std::fabs(g[i]);
            worse[i] = std::fabs(g[i]) + std::max(0.0, -r[i] * r[i] * k.H[i][i]);
            for (int j = 0; j < n_; ++j) {
                H[i][j] = r[i] * r[j] * k.H[i][j];
                size = std::max(size, std::fabs(H[i][j]));
                worse[i] += 2 * r[i] * r[j] * k.off[i][j];
                loose += r[i] * r[j] * k.off[i][j] / 2;
            }
        }
        const double here = v.E - v.off - loose - kRounding * sum;
        Square L{};
        bool first = true;
        for (double part : {0.0, 0.03, 0.1, 0.3, 1.0, 3.0}) {
            const double s = part * size;
            if (!factor(H, s, L)) continue;
            if (first && here - sum - 0.5 * n_ * s >= 0) return true;
            first = false;
            const Array u = solve(L, g);
            double fall = 0;
            for (int i = 0; i < n_; ++i) fall += g[i] * u[i];
            if (here - 0.5 * (fall + n_ * s) * (1 + kMargin) >= 0) return true;
        }
        return false;
    }

    bool settled(Box const& q, Array& worse) {
        double lo = 0, hi = 0;
        Array middle{}, r{};
        for (int i = 0; i < n_; ++i) {
            middle[i] = (q[i].lo + q[i].hi) / 2;
            worse[i] = r[i] = (q[i].hi - q[i].lo) / 2;
            lo += q[i].lo, hi += q[i].hi;
        }
        if (lo >= 1 - 1e-9) return lo >= 1;
        const Bounds k = bounds(q);
        for (int i = 0; i < n_; ++i)
            if (k.rise[i] >= 0) return true;
        if (hi >= 1) return false;
        if (convex(k) && convex_above(q, middle)) return true;
        return !below_ && quadratic_above(middle, r, k, worse);
    }
    void prove(long most) {
        std::vector<Box> left(1);
        for (Range& r : left[0]) r = {0, 1};
        while (!left.empty()) {
            Box q = left.back();
            left.pop_back();
            if (++boxes_ > most) return;
            Array worse{};
            const bool done = settled(q, worse);
            if (below_) {
                answer_ = Answer::below;
                return;
            }
            if (done) continue;
            int w = 0;
            for (int i = 1; i < n_; ++i)
                if (worse[i] > worse[w]) w = i;
            Box half = q;
            const Range a = q[w];
            q[w].hi = half[w].lo = a.lo == 0         ? a.hi / 4
                                   : a.hi > 16 * a.lo ? std::sqrt(a.lo * a.hi)
                                                      : (a.lo + a.hi) / 2;
            left.push_back(q);
            left.push_back(half);
        }
        answer_ = Answer::above;
    }

    int n_;
    double d1_, d2_, level_;
    Array beta_{}, c_{};
    Square q_{};
    Answer answer_ = Answer::open;
    bool below_ = false;
    long boxes_ = 0;
};

}  // namespace judge
