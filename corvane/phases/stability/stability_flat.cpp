#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/stability/stability.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane {
namespace {
constexpr double kLevelled = 1e-3;  // of w·(1 − w)·t″: a pair whose distance is below rounding may be near
constexpr double kLeastWay = 3e-4, kOneRoot = 0.5;  // steps: in logits, of ln rho
constexpr double kHalves[] = {1e-3, 1e-2, 3e-4, 3e-2};  // half distances of pairs, of ln rho
constexpr double kBeside = 1e-4;  // of p: from there the slope of a distance gives its sign,
constexpr double kSlope = 1e-12;  // if it is above the rounding of its terms
constexpr int kPair = 30;                           // iterations

double curvature(PhaseState const& s) {
    return s.m_n(0, 0) - s.m_n(0, 1) - s.m_n(1, 0) + s.m_n(1, 1);
}
}  // namespace

/// Next to a critical point the distance is of fourth order, and rounding hides what is negative of
/// it. There a whole is decided by where it lies with respect to the pair of phases next to it
/// (RegularPair): between the two, outside, or, as far as their errors tell, at one of them, which
/// is no decision.
class Stability::Flat {
  public:
    Flat(Stability& test, PhaseState const& whole, double p, StabilityResult& r)
        : test_(test), whole_(whole), p_(p), r_(r) {}
    /// From the whole and a trial phase as good as beside it. True if that decides.
    bool from_trial() {
        double apart = 0.0;
        std::vector<double> rho(2);
        for (int i = 0; i < 2; ++i) {
            rho[i] = r_.trial.rho * r_.trial.w[i];
            apart = std::max(apart, 0.5 * std::fabs(std::log(rho[i] / whole_.rho_i[i])));
        }
        return apart < RegularPair::kNearEach && decided(whole_.rho_i, rho, 0.0);
    }
    /// From the double tangent of t = s²·(A + B·s + C·s²), s the way from the whole, which the second
    /// derivatives at three compositions give to rounding. Where that is negative somewhere and leads
    /// to no pair there is no decision.
    void from_double_tangent() {
        const double room = whole_.x[0] * whole_.x[1], here = curvature(whole_);
        if (!(std::fabs(room * here) < kLevelled)) return;
        const double h = 0.1 * room * std::max(std::sqrt(std::fabs(room * here)), kLeastWay);
        if (!at(h, phase_H)) return;
        const double above = curvature(test_.s_);
        if (!at(-h, phase_H)) return;
        const double below = curvature(test_.s_);
        const double A = 0.5 * here, B = (above - below) / (12.0 * h),
                     C = (above - 2.0 * here + below) / (24.0 * h * h);
        const double middle = -B / (4.0 * C), square = (0.75 * B * B / C - 2.0 * A) / (4.0 * C);
        if (!(C > 0.0) || !(square > 0.0)) return;
        for (double width : {1.0, 0.5, 2.0})
            if (from_either_side(middle, width * std::sqrt(square))) return;
        if (B * B <= 4.0 * A * C || along_softest()) return;
        r_.unconverged = 1;
    }

  private:
    /// From phases on either side along the eigenvector of the smallest eigenvalue of
    /// √(rho_i·rho_j)·∂m_i/∂rho_j: next to a critical azeotrope they differ in density, not in
    /// composition.
    bool along_softest() {
        std::vector<double> const &rho = whole_.rho_i, &H = whole_.H;
        const double aa = rho[0] * H[0], ab = std::sqrt(rho[0] * rho[1]) * H[1], bb = rho[1] * H[3];
        const double least = 0.5 * (aa + bb) - std::hypot(0.5 * (aa - bb), ab);
        double n[2] = {-ab, aa - least};
        if (std::fabs(bb - least) > std::fabs(n[1])) n[0] = bb - least, n[1] = -ab;
        const double length = std::hypot(n[0], n[1]);
        for (double half : kHalves) {
            std::vector<double> one(2), two(2);
            for (int i = 0; i < 2; ++i) {
                const double way = half * n[i] / length * std::sqrt(whole_.rho / rho[i]);
                one[i] = rho[i] * std::exp(way);
                two[i] = rho[i] * std::exp(-way);
            }
            if (decided(one, two, 0.5) || beside_boundary(one, two) || beside_boundary(two, one))
                return true;
        }
        return false;
    }
    /// From the phase of this composition that is in equilibrium at T with another, and the slope
    /// in p of the distance of that: where p is too high or too low for any pair.
    bool beside_boundary(std::vector<double> const& a, std::vector<double> const& b) {
        RegularPair pair(test_.fluid_);
        pair.T = whole_.T;
        pair.start(a, b, whole_.T);
        Certificate c;
        if (!pair.solve(kPair) || !pair.bound(c) || !c.holds() || !pair.locally_stable())
            return false;
        const double off = p_ / pair.a.p - 1.0;
        double slope = 0.0, terms = 0.0;
        for (int i = 0; i < 2; ++i) {
            slope += pair.b.x[i] * (pair.b.m_p(i) - pair.a.m_p(i));
            terms += pair.b.x[i] * (std::fabs(pair.b.m_p(i)) + std::fabs(pair.a.m_p(i)));
        }
        if (!(std::fabs(off) < kBeside) || !(std::fabs(off) > 10.0 * c.value_error) ||
            !(std::fabs(slope) > kSlope * terms))
            return false;
        if (slope * off < 0.0) {
            r_.stable = false;
            r_.other = true;
            r_.tpd = slope * off * p_;
            r_.trial = {r_.tpd, pair.b.rho, pair.b.x};
        }
        return true;
    }
    bool from_either_side(double middle, double half) {
        std::vector<double> rho[2];
        for (int k = 0; k < 2; ++k)
            if (at(middle + (k == 0 ? half : -half), 0)) rho[k] = test_.s_.rho_i;
        if (rho[0].empty() || rho[1].empty()) return false;
        const double in_a = (half - middle) / (rho[0][0] + rho[0][1]),
                     in_b = (half + middle) / (rho[1][0] + rho[1][1]);
        return decided(rho[0], rho[1], std::clamp(in_b / (in_a + in_b), 0.0, 1.0));
    }
    /// The test's state at the way s from the whole, on its density root.
    bool at(double s, int order) {
        std::vector<double>& x = test_.step_;
        x[0] = whole_.x[0] + s;
        x[1] = whole_.x[1] - s;
        return x[0] > 0.0 && x[1] > 0.0 &&
               test_.fluid_.evaluate_at(test_.s_, p_, whole_.T, x, Root::stable, order) &&
               std::fabs(std::log(test_.s_.rho / whole_.rho)) < kOneRoot;
    }
    /// Solves the pair from partial densities and fraction, and says where the whole lies.
    bool decided(std::vector<double> const& a, std::vector<double> const& b, double fraction) {
        if (!solver_) {  // most tests of a whole need none
            solver_.emplace(test_.fluid_);
            solver_->T = whole_.T;
            solver_->p = p_;
            solver_->fixed_fraction = false;
        }
        RegularPair& pair = *solver_;
        pair.start(a, b, whole_.T, fraction);
        Certificate c;
        if (!pair.solve(kPair) || !pair.bound(c) || !c.holds() || !pair.locally_stable())
            return false;
        double nearest = 1.0;
        for (PhaseState const* s : {&pair.a, &pair.b})
            nearest = std::min(nearest, std::fabs(s->x[0] - whole_.x[0]));
        if (!(nearest > c.x_error)) {
            r_.unconverged = 1;
        } else if (pair.y.back() > 0.0 && pair.y.back() < 1.0) {
            PhaseState const& far = pair.y.back() > 0.5 ? pair.a : pair.b;
            r_.stable = false;
            r_.other = true;
            r_.trial = {std::min(0.0, distance(far, whole_)), far.rho, far.x};
            r_.tpd = r_.trial.tpd;
        }
        return true;
    }

    Stability& test_;
    PhaseState const& whole_;
    const double p_;
    StabilityResult& r_;
    std::optional<RegularPair> solver_;
};

void Stability::flat(PhaseState const& whole, double p, double tolerance, StabilityResult& r) {
    Flat pair(*this, whole, p, r);
    if (r.other && std::fabs(r.tpd) <= tolerance && pair.from_trial()) return;
    pair.from_double_tangent();
}

}  // namespace corvane
