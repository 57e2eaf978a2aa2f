#include <corvane/core/errors.h>
#include <corvane/core/tasks.h>
#include <corvane/pure/many_states.h>
#include <corvane/pure/model1.h>
#include <corvane/state/phase_columns.h>
#include <corvane/state/phase_formulas.h>
#include <corvane/state/phase_properties.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
using lanes::V4;
constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();
constexpr int kStatesOfABlock = 256;  // states whose 27 columns, 55 kB, stay in a near cache
constexpr std::size_t kStatesOfATask = 4096;  // states that a thread takes

/// The columns, in the order of PhaseValues.
using ColumnList = std::array<double*, 16>;
ColumnList list_of(PropertyColumns const& c) {
    return {c.p,  c.Z, c.u,     c.h,       c.g,       c.a,     c.s,       c.cv,
            c.cp, c.w, c.mu_JT, c.kappa_T, c.alpha_p, c.dp_dT, c.dp_drho, c.n_s};
}

/// A block of states and what is known of them.
struct StateBlock {
    double T[kStatesOfABlock], rho[kStatesOfABlock], d[6][kStatesOfABlock], U[kStatesOfABlock],
        S[kStatesOfABlock], cv[kStatesOfABlock], out[16][kStatesOfABlock];
};

[[gnu::always_inline]] inline void block_in_lanes(StateBlock& k, int count, double M) {
    for (int i = 0; i < count; i += 4) {
        V4 T{}, rho{}, d{};
        ResidualPart<V4> r;
        IdealPart<V4> gas;
        PhaseValues<V4> q;
        lanes::get(T, k.T + i), lanes::get(rho, k.rho + i);
        lanes::get(r.a, k.d[0] + i), lanes::get(r.Ta, k.d[1] + i), lanes::get(r.TTa, k.d[2] + i);
        lanes::get(d, k.d[3] + i);
        r.Z = 1 + d;
        lanes::get(r.P_T, k.d[4] + i), lanes::get(r.P_rho, k.d[5] + i);
        r.P_T = 1 + d + r.P_T, r.P_rho = 1 + 2 * d + r.P_rho;
        lanes::get(gas.U, k.U + i), lanes::get(gas.S, k.S + i), lanes::get(gas.cv, k.cv + i);
        V4 ln_rho = rho;
        lanes::log_lanes<true>(ln_rho);
        derive(T, rho, ln_rho, M, r, gas, q);
        V4 const* const values[] = {&q.p,       &q.Z,     &q.u,       &q.h,  &q.g,     &q.a,
                                    &q.s,       &q.cv,    &q.cp,      &q.w,  &q.mu_JT, &q.kappa_T,
                                    &q.alpha_p, &q.dp_dT, &q.dp_drho, &q.n_s};
        for (int c = 0; c < 16; ++c) lanes::put(k.out[c] + i, *values[c]);
    }
}
void block_narrow(StateBlock& block, int count, double M) {
    block_in_lanes(block, count, M);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void block_wide(StateBlock& block, int count, double M) {
    block_in_lanes(block, count, M);
}
#endif

class ColumnWork {
  public:
    ColumnWork(Model1 const& model, double const* T, double const* rho,
               PropertyColumns const& columns)
        : model_(model),
          many_(dynamic_cast<ManyStates1 const*>(&model)),
          T_(T),
          rho_(rho),
          out_(list_of(columns)),
          M_(model.M() > 0.0 ? model.M() : kNoValue) {
        auto const* const own = dynamic_cast<Deriv1 const*>(&model);
        if (!own || own != model.derivatives()) many_ = nullptr;  // somebody else's stand in front
    }
    /// Returns how many failed.
    std::size_t run(std::size_t first, std::size_t last) const {
        std::size_t failed = 0;
        if (many_) {
            StateBlock block;
            for (; first < last; first += kStatesOfABlock)
                failed += together(
                    block, first,
                    static_cast<int>(std::min<std::size_t>(kStatesOfABlock, last - first)));
        } else {
            for (; first < last; ++first) failed += alone(first) ? 0 : 1;
        }
        return failed;
    }

  private:
    std::size_t together(StateBlock& k, std::size_t first, int n) const {
        bool valid[kStatesOfABlock];
        int any = -1;
        for (int i = 0; i < n; ++i) {
            k.T[i] = T_[first + static_cast<unsigned>(i)],
            k.rho[i] = rho_[first + static_cast<unsigned>(i)];
            valid[i] =
                k.T[i] > 0 && k.rho[i] > 0 && std::isfinite(k.T[i]) && std::isfinite(k.rho[i]);
            if (valid[i]) any = i;
        }
        if (any >= 0) {
            const int count = lanes::padded(n);
            for (int i = 0; i < count; ++i)  // others stand in for what fails and fills up
                if (i >= n || !valid[i]) k.T[i] = k.T[any], k.rho[i] = k.rho[any];
            double* const d[] = {k.d[0], k.d[1], k.d[2], k.d[3], k.d[4], k.d[5]};
            many_->second(count, k.rho, k.T, d);
            try {
                model_.ideal.parts(count, k.T, k.U, k.S, k.cv);
            } catch (ThException const&) {  // no table
                for (double* column : {k.U, k.S, k.cv}) std::fill_n(column, count, kNoValue);
            }
#if defined(__x86_64__)
            if (lanes::wide)
                block_wide(k, count, M_);
            else
#endif
                block_narrow(k, count, M_);
        }
        std::size_t failed = 0;
        for (int i = 0; i < n; ++i) {
            if (any >= 0 && valid[i] && std::isfinite(k.d[0][i]) &&
                std::isfinite(1 + 2 * k.d[3][i] + k.d[5][i]))
                continue;
            ++failed;
            for (auto& column : k.out) column[i] = kNoValue;
        }
        for (unsigned c = 0; c < out_.size(); ++c)
            if (out_[c]) std::copy_n(k.out[c], n, out_[c] + first);
        return failed;
    }
    bool alone(std::size_t i) const {
        try {
            const PhaseProperties q = phase_properties(model_, T_[i], rho_[i]);
            double const values[] = {q.p,       q.Z,     q.u,       q.h,  q.g,     q.a,
                                     q.s,       q.cv,    q.cp,      q.w,  q.mu_JT, q.kappa_T,
                                     q.alpha_p, q.dp_dT, q.dp_drho, q.n_s};
            for (unsigned c = 0; c < out_.size(); ++c)
                if (out_[c]) out_[c][i] = values[c];
            return true;
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
        for (double* column : out_)
            if (column) column[i] = kNoValue;
        return false;
    }

    Model1 const& model_;
    ManyStates1 const* many_;
    double const *T_, *rho_;
    ColumnList out_;
    double M_;
};
}  // namespace

std::size_t phase_properties(Model1 const& model, std::size_t n, double const* T, double const* rho,
                             PropertyColumns const& columns, int threads) {
    const ColumnWork work(model, T, rho, columns);
    return over_threads(n, kStatesOfATask, threads,
                        [&](std::size_t first, std::size_t last) { return work.run(first, last); });
}

std::size_t densities(Model1 const& model, std::size_t n, double const* p, double const* T,
                      double* rho, Root root, int threads) {
    const int phase = root == Root::dense ? 1 : root == Root::dilute ? 3 : -1;
    const auto one = [&](std::size_t i) {
        double first = 0.0, second = 0.0;  // without a start that of lower Gibbs energy
        try {
            if (T[i] > 0.0 && std::isfinite(T[i]) && std::isfinite(p[i]) &&
                model.vcalc(p[i], T[i], phase, first, second) > 0)
                return first;
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
        return kNoValue;
    };
    auto const* const many = dynamic_cast<ManyDensities1 const*>(&model);
    return over_threads(n, kStatesOfATask, threads, [&](std::size_t i, std::size_t last) {
        if (many)
            many->densities(static_cast<int>(last - i), p + i, T + i, phase, rho + i);
        else
            for (std::size_t k = i; k < last; ++k) rho[k] = one(k);
        return static_cast<std::size_t>(
            std::count_if(rho + i, rho + last, [](double x) { return std::isnan(x); }));
    });
}

}  // namespace corvane
