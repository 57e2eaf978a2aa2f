// Three phases and more in equilibrium, by Newton's method with 113 bits from phases nearby.
#pragma once

#include "pair.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace judge {

/// K phases of equal potentials and pressures, all of which (a flash) or all but the last (its
/// first vapour) make up the whole z. Variables: the logarithms of all partial densities, ln T
/// where p alone is given, and the volume fractions of all phases in the whole but the first one's.
/// Equations: ln f_i/(RT) and p/(RT), over the density, against the first phase, p, ln of the
/// composition of the whole against z. Plain differences of potentials: phases that differ by d
/// leave 10^-34/d^3, and the trivial solution is far from phases that are claimed to 1e-6·d.
template <class Equation>
class SeveralNewton {
  public:
    SeveralNewton(Equation const& equation, bool T_given, bool p_given, bool incipient, double p,
                  double T, Values<Quad> const& z)
        : eq_(equation),
          at_(equation, Quad(T)),
          n_(equation.n),
          T_given_(T_given),
          p_given_(p_given),
          incipient_(incipient),
          z_(z),
          p_(p),
          T_(T) {}
    bool p_given() const { return p_given_; }
    Quad z(int i) const { return z_[i]; }
    Quad T() const { return T_; }
    Quad P() const { return P_; }                 ///< p/(RT)
    Quad p() const { return P_ * Quad(R) * T_; }  ///< MPa
    Quad mu(int i) const { return mu_[i]; }       ///< m_i of all
    std::vector<Phase<Quad>> phase;
    std::vector<Quad> part;  ///< mole fractions of the whole

    /// From `phase` and the amounts of those that make up the whole.
    bool solve(std::vector<Phase<Quad>> from, std::vector<double> const& amount) {
        phase = std::move(from);
        const int K = static_cast<int>(phase.size()), L = K - incipient_, N = unknowns();
        if (K > kPhases || static_cast<int>(amount.size()) != L) return false;
        Quad y[kEquations], F[kEquations], G[kEquations], J[kEquations][kEquations];
        Quad volume = 0;
        for (int f = 0; f < L; ++f) volume += amount[f] / phase[f].total(n_);
        int k = 0;
        for (auto const& f : phase)
            for (int i = 0; i < n_; ++i) y[k++] = log(f.rho[i]);
        for (int f = 1; f < L; ++f) y[k++] = amount[f] / phase[f].total(n_) / volume;
        if (!T_given_) y[k] = log(T_);
        if (!equations(y, F)) return false;
        Quad last = 1e30;
        for (int it = 0; it < 40; ++it) {
            const Quad h =
                Equation::kPrecision.bounds ? Quad(1e-17) : Quad(Equation::kPrecision.step);
            for (int j = 0; j < N; ++j) {
                const Quad keep = y[j];
                y[j] = keep + h;
                if (!equations(y, G)) return false;
                for (int i = 0; i < N; ++i) J[i][j] = (G[i] - F[i]) / h;
                y[j] = keep;
            }
            for (int i = 0; i < N; ++i) G[i] = -F[i];
            if (!eliminate(J, G, N)) return false;
            Quad size = 0;
            for (int i = 0; i < N; ++i) size = std::max(size, Quad(abs(G[i])));
            const Quad f = size > Quad(0.1) ? Quad(Quad(0.1) / size) : Quad(1);
            for (int i = 0; i < N; ++i) y[i] += f * G[i];
            if (!equations(y, F)) return false;
            if (size < Quad(1e-22) ||
                (size < Quad(Equation::kPrecision.stalled) && size > last / 4))
                return true;
            last = size;
        }
        return false;
    }

  private:
    static constexpr int kPhases = kMax + 1, kEquations = kPhases * kMax + kPhases;
    int unknowns() const {
        const int K = static_cast<int>(phase.size());
        return K * n_ + (K - incipient_ - 1) + !T_given_;
    }
    bool equations(Quad const* y, Quad* F) {
        const int K = static_cast<int>(phase.size()), L = K - incipient_;
        int k = K * n_, row = 0;
        std::vector<Quad> share(1, Quad(1));
        for (int f = 1; f < L; ++f, ++k) {
            share.push_back(y[k]);
            share[0] -= y[k];
        }
        if (!T_given_) {
            T_ = exp(y[k]);
            at_ = typename Equation::template At<Quad>(eq_, T_);
        }
        Values<Quad> x{}, h{}, whole{};
        Quad P0 = 0, moles = 0;
        for (int f = 0; f < K; ++f) {
            for (int i = 0; i < n_; ++i) phase[f].rho[i] = exp(y[f * n_ + i]);
            const Quad rho = phase[f].total(n_);
            for (int i = 0; i < n_; ++i) {
                x[i] = phase[f].rho[i] / rho;
                if (f < L) whole[i] += share[f] * phase[f].rho[i];
            }
            const Quad P = at_.state(rho, x.data(), h.data());
            for (int i = 0; i < n_; ++i) {
                const Quad m = h[i] + log(x[i]);
                if (f == 0)
                    mu_[i] = m;
                else
                    F[row++] = m - mu_[i];
            }
            if (f == 0)
                P0 = P;
            else
                F[row++] = (P - P0) / rho;
            if (f == K - 1) P_ = P;
        }
        if (p_given_) F[row++] = P_ * Quad(R) * T_ / p_ - 1;
        for (int i = 0; i < n_; ++i) moles += whole[i];
        for (int i = 1; i < n_; ++i) F[row++] = log(whole[i] / whole[0] * z_[0] / z_[i]);
        part.clear();
        for (int f = 0; f < L; ++f) part.push_back(share[f] * phase[f].total(n_) / moles);
        for (int i = 0; i < row; ++i)
            if (!isfinite(F[i])) return false;
        return row == unknowns();
    }

    Equation const& eq_;
    typename Equation::template At<Quad> at_;
    int n_;
    bool T_given_, p_given_, incipient_;
    Values<Quad> z_{}, mu_{};
    Quad p_, T_, P_ = 0;
};

}  // namespace judge
