// The phases of a whole from the lower hull of its Gibbs energy: no start values, no number of
// phases, nothing that has to converge before the next phase is found.
#include <corvane/phases/flash/flash_parts.h>
#include <corvane/phases/numerics/dense.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr int kRounds = 30, kPivots = 400;
constexpr double kTrace = 1e-30;   // of the other components in a pure column
constexpr double kPriced = 1e-10;  // a distance above minus this does not lower the energy
constexpr double kLevels[] = {0.2, 0.03};  // Σ|Δx| of columns that are one phase
constexpr double kSameRoot = 0.3;          // their difference in ln rho at most

/// Linear program: the amounts beta >= 0 of columns of given composition that add up to the whole,
/// Σ beta·w = z, at least energy Σ beta·g. Its prices are the potentials of the tangent plane; a
/// composition below that plane is a column that lowers the energy. So the columns come from the
/// descents of the stability test, and the program is solved anew with them (column generation:
/// Dantzig & Wolfe, Oper. Res. 8 (1960) 101; for phases White, Johnson & Dantzig, J. Chem. Phys. 28
/// (1958) 751, with a fixed grid). The energy falls in every round.
class Columns {
  public:
    Columns(FluidModel const& fluid, Stability& stability, double p, double T)
        : fluid_(fluid), stability_(stability), p_(p), T_(T), n_(fluid.size()) {
        plane_.resize(n_);
        trial_.resize(n_);
        plane_.T = T;
        plane_.x = fluid.z();
        plane_.rho = std::nan("");  // no phase that trials could run into
        matrix_.resize(static_cast<std::size_t>(n_ * n_));
    }

    /// Every component by itself: a basis that is always possible.
    bool pure() {
        std::vector<double> w(static_cast<std::size_t>(n_));
        for (int k = 0; k < n_; ++k) {
            std::fill(w.begin(), w.end(), kTrace);
            w[k] = 1.0;
            if (!add(w)) return false;
            basis_.push_back(k);
        }
        return optimal();
    }
    /// Compositions below the tangent plane into the columns. False if there are none.
    bool more() {
        bool below = false;
        std::vector<std::vector<double>>
            used;  // a column of the right kind need not be the lowest of it
        for (std::size_t k : basis_) used.push_back(pool_[k].w);
        for (TrialPhase const& t : stability_.minima(plane_, p_, used))
            if (t.tpd < -kPriced && add(t.w)) below = true;
        return below && optimal();
    }
    /// The columns in use, those that are one phase taken together, and their amounts.
    std::vector<std::vector<double>> phases(double level, std::vector<double>& amount) const {
        std::vector<std::vector<double>> sum;
        std::vector<double> rho;
        amount.clear();
        for (int k = 0; k < n_; ++k) {
            Column const& c = pool_[basis_[k]];
            std::size_t to = 0;
            for (; to < sum.size(); ++to) {
                double off = 0.0;
                for (int i = 0; i < n_; ++i) off += std::fabs(sum[to][i] / amount[to] - c.w[i]);
                if (off < level && std::fabs(std::log(c.rho / rho[to])) < kSameRoot) break;
            }
            if (to == sum.size()) {
                sum.emplace_back(c.w.size(), 0.0);
                rho.push_back(c.rho);
                amount.push_back(0.0);
            }
            const double part = std::max(beta_[k], kTrace);
            amount[to] += part;
            for (int i = 0; i < n_; ++i) sum[to][i] += part * c.w[i];
        }
        for (std::size_t k = 0; k < sum.size(); ++k)
            for (double& x : sum[k]) x /= amount[k];
        return sum;
    }

  private:
    struct Column {
        std::vector<double> w;
        double g, rho;
    };
    bool add(std::vector<double> const& w) {
        if (!fluid_.evaluate_at(trial_, p_, T_, w, Root::stable, 0)) return false;
        double g = 0.0;
        for (int i = 0; i < n_; ++i) g += w[i] * trial_.m[i];
        pool_.push_back({w, g, trial_.rho});
        return std::isfinite(g);
    }
    /// Solves for the basis (or with its transpose) in place.
    bool solve(std::vector<double>& b, bool transposed) {
        for (int k = 0; k < n_; ++k)
            for (int i = 0; i < n_; ++i)
                matrix_[transposed ? k * n_ + i : i * n_ + k] = pool_[basis_[k]].w[i];
        return lu_solve(n_, matrix_.data(), b.data());
    }
    /// Simplex method over the columns that are known.
    bool optimal() {
        std::vector<double> in;
        for (int pivot = 0; pivot < kPivots; ++pivot) {
            beta_ = fluid_.z();
            for (int k = 0; k < n_; ++k) plane_.m[k] = pool_[basis_[k]].g;
            if (!solve(beta_, false) || !solve(plane_.m, true)) return false;
            double least = -kPriced;
            std::size_t enters = pool_.size();
            for (std::size_t c = 0; c < pool_.size(); ++c) {
                double d = pool_[c].g;
                for (int i = 0; i < n_; ++i) d -= pool_[c].w[i] * plane_.m[i];
                if (d < least) least = d, enters = c;
            }
            if (enters == pool_.size()) return true;
            in = pool_[enters].w;
            if (!solve(in, false)) return false;
            int leaves = -1;
            double most = 1e300;
            for (int k = 0; k < n_; ++k)
                if (in[k] > 1e-12 && std::max(beta_[k], 0.0) / in[k] < most)
                    most = std::max(beta_[k], 0.0) / in[k], leaves = k;
            if (leaves < 0) return false;
            basis_[leaves] = enters;
        }
        return true;  // cycles among equal columns: these prices will do
    }

    FluidModel const& fluid_;
    Stability& stability_;
    const double p_, T_;
    const int n_;
    PhaseState plane_, trial_;
    std::vector<Column> pool_;
    std::vector<std::size_t> basis_;
    std::vector<double> beta_, matrix_;
};
}  // namespace

bool detail::flash_columns(FluidModel const& fluid, Stability& stability, FlashResult& q) {
    Columns columns(fluid, stability, q.p, q.T);
    if (!columns.pure()) return false;
    for (int round = 0; round < kRounds; ++round) {
        const bool below = columns.more();
        std::size_t last = 0;
        std::vector<double> amount;
        for (double level : kLevels) {
            const auto x = columns.phases(level, amount);
            if (x.size() > 1 && x.size() != last && flash_many(fluid, stability, x, q)) return true;
            // A scarce phase is lost by substitution: from the program's own amounts.
            if (x.size() > 1 && !below && flash_many(fluid, stability, x, q, amount)) return true;
            last = x.size();
        }
        if (!below) return false;
    }
    return false;
}

}  // namespace corvane
