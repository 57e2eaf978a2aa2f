// Two phases in equilibrium, by Newton's method with 113 bits and more from phases nearby.
#pragma once

#include "real.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace judge {

template <class Real>
struct Phase {
    Values<Real> rho{};  ///< partial densities, mol/cm³
    Real total(int n) const {
        Real s = 0;
        for (int i = 0; i < n; ++i) s += rho[i];
        return s;
    }
    Real x(int i, int n) const { return rho[i] / total(n); }
};

enum class Given {
    T_and_x,  ///< T and the composition of the first phase
    p_and_x,  ///< p and that composition
    p_and_T   ///< p, T and a composition between the phases
};

/// Of the phases a, b. Equations, with m_i = ln f_i/(RT), P = p/(RT), u the mean of both phases'
/// partial densities and d = |ln a_i/b_i|:
///
///     (m_i(a) − m_i(b))/d = 0,    [P(a) − P(b) − Σ u_i·(m_i(a) − m_i(b))]/(d³·Σ u_i) = 0,
///
/// which the trivial solution does not satisfy, then p and where the composition z lies. 1/d³ costs
/// 113 bits nothing that matters down to phases that differ by 1e-5; nearer ones need Wide. Variables
/// ln a_i, ln b_i (where x is given the total density of a) and ln T; Jacobian by forward differences
/// of 1e-7·d, or, where d < 1e-3, central ones. When both phases move together entries of 1/d cancel
/// to d, so that these have to be right to d²: their step is where truncation and rounding are equal,
/// or, of Wide, as small as that.
template <class Equation, class Real = Quad>
class PairNewton {
  public:
    static constexpr int kEquations = 2 * kMax + 1;

    PairNewton(Equation const& equation, Given given, double p, double T, Values<Quad> const& z)
        : eq_(equation), at_(equation, Real(T)), given_(given), n_(equation.n), p_(p), T_(T) {
        Real sum = 0;
        for (int i = 0; i < n_; ++i) sum += z_[i] = Real(z[i]);
        for (int i = 0; i < n_; ++i) z_[i] /= sum;
    }
    Quad T() const { return Quad(T_); }
    Quad P() const { return Quad(P_); }                       ///< p/(RT)
    Quad p() const { return Quad(P_ * Real(R) * T_); }        ///< MPa
    Phase<Quad> a() const { return rounded(a_); }
    Phase<Quad> b() const { return rounded(b_); }
    Quad mu(int i) const { return Quad(mu_[i]); }             ///< m_i of both
    int iterations() const { return iterations_; }
    double uncertainty() const { return uncertainty_; }  ///< of ln rho_i; 0 beside a double's

    /// Starts at the phases a and b; a must have the composition where that is given.
    bool solve(Phase<Quad> const& from_a, Phase<Quad> const& from_b) {
        using std::abs;
        using std::exp;
        using std::log;
        const int N = unknowns();
        Phase<Real> a, b;
        for (int i = 0; i < n_; ++i) a.rho[i] = Real(from_a.rho[i]), b.rho[i] = Real(from_b.rho[i]);
        Real y[kEquations], F[kEquations], G[kEquations], J[kEquations][kEquations];
        int k = 0;
        if (given_ == Given::p_and_T)
            for (int i = 0; i < n_; ++i) y[k++] = log(a.rho[i]);
        else
            y[k++] = log(a.total(n_));
        for (int i = 0; i < n_; ++i) y[k++] = log(b.rho[i]);
        if (given_ == Given::p_and_x) y[k++] = log(T_);
        if (!equations(y, F)) return false;
        const Real first = distance();
        Real last = 1e30;
        for (iterations_ = 1; iterations_ <= 60; ++iterations_) {
            const Real d = distance();
            if (!(d > first / 1000)) return false;  // running into the trivial solution
            const Real scale = d < 1 ? d : Real(1);
            const bool close = d < Real(1e-3);
            const Real h = !close   ? Real(Equation::kPrecision.step) * scale
                           : kWider ? Real(1e-3) * d * d
                                    : std::min(Real(2e-11), Real(1e-3) * scale);
            for (int j = 0; j < N; ++j) {
                const Real keep = y[j];
                for (int side = close ? -1 : 1; side <= 1; side += 2) {
                    y[j] = keep + side * h;
                    if (!equations(y, G)) return false;
                    for (int i = 0; i < N; ++i)
                        J[i][j] = side < 0 ? G[i] : (G[i] - (close ? J[i][j] : F[i]));
                }
                for (int i = 0; i < N; ++i) J[i][j] /= close ? 2 * h : h;
                y[j] = keep;
            }
            for (int i = 0; i < N; ++i) G[i] = -F[i];
            if (!eliminate(J, G, N)) return false;
            Real size = 0;
            for (int i = 0; i < N; ++i) size = std::max(size, Real(abs(G[i])));
            const Real most = Real(0.4) * scale;
            const Real f = size > most ? Real(most / size) : Real(1);
            for (int i = 0; i < N; ++i) y[i] += f * G[i];
            if (!equations(y, F)) return false;
            // A factor of 1e-7 a step, until rounding is reached.
            constexpr double stalled = Equation::kPrecision.stalled;
            if (size < Real(1e-26) * scale || (size < Real(stalled) * scale && size > last / 4))
                return true;
            // Phases nearer than 1e-4 leave steps of rounding: that is how well they are known.
            if (!kWider && d < Real(1e-4) && last < Real(1e-4) * d && size > last / 4) {
                uncertainty_ = 20 * double(std::max(size, last));
                return true;
            }
            last = size;
        }
        return false;
    }

  private:
    static constexpr bool kWider = !std::is_same_v<Real, Quad>;
    Phase<Quad> rounded(Phase<Real> const& f) const {
        Phase<Quad> q;
        for (int i = 0; i < n_; ++i) q.rho[i] = Quad(f.rho[i]);
        return q;
    }
    int unknowns() const {
        return given_ == Given::T_and_x ? n_ + 1 : given_ == Given::p_and_x ? n_ + 2 : 2 * n_;
    }
    Real distance() const {
        using std::log;
        using std::sqrt;
        Real s = 0;
        for (int i = 0; i < n_; ++i) {
            const Real l = log(a_.rho[i] / b_.rho[i]);
            s += l * l;
        }
        return sqrt(s);
    }
    bool equations(Real const* y, Real* F) {
        using std::abs;
        using std::exp;
        using std::isfinite;
        using std::log;
        int k = 0;
        if (given_ == Given::p_and_T)
            for (int i = 0; i < n_; ++i) a_.rho[i] = exp(y[k++]);
        else {
            const Real rho = exp(y[k++]);
            for (int i = 0; i < n_; ++i) a_.rho[i] = z_[i] * rho;
        }
        for (int i = 0; i < n_; ++i) b_.rho[i] = exp(y[k++]);
        if (given_ == Given::p_and_x) {
            T_ = exp(y[k]);
            at_ = typename Equation::template At<Real>(eq_, T_);
        }
        Values<Real> xa, xb, ha, hb;
        const Real ra = a_.total(n_), rb = b_.total(n_);
        for (int i = 0; i < n_; ++i) xa[i] = a_.rho[i] / ra, xb[i] = b_.rho[i] / rb;
        const Real Pa = at_.state(ra, xa.data(), ha.data());
        const Real Pb = at_.state(rb, xb.data(), hb.data());
        const Real d = distance();
        Real dP = Pa - Pb;
        for (int i = 0; i < n_; ++i) {
            mu_[i] = ha[i] + log(xa[i]);
            const Real dm = ha[i] - hb[i] + log(xa[i] / xb[i]);
            dP -= (a_.rho[i] + b_.rho[i]) / 2 * dm;
            F[i] = dm / d;
        }
        P_ = ra < rb ? Pa : Pb;
        F[n_] = dP / (d * d * d * (ra + rb) / 2);
        if (given_ != Given::T_and_x) F[n_ + 1] = P_ * Real(R) * T_ / Real(p_) - 1;
        if (given_ == Given::p_and_T) {  // z on the straight line between the phases
            int c = 0;
            for (int i = 1; i < n_; ++i)
                if (abs(xa[i] - xb[i]) > abs(xa[c] - xb[c])) c = i;
            beta_ = (z_[c] - xa[c]) / (xb[c] - xa[c]);
            int row = n_ + 2;
            for (int i = 0, left = n_ - 2; i < n_ && left > 0; ++i) {
                if (i == c) continue;
                F[row++] = (z_[i] - xa[i] - beta_ * (xb[i] - xa[i])) / (d * z_[i]);
                --left;
            }
        }
        for (int i = 0; i < unknowns(); ++i)
            if (!isfinite(F[i])) return false;
        return true;
    }

  public:
    Quad beta() const { return Quad(beta_); }  ///< mole fraction of the whole in b (p and T given)

  private:
    Equation const& eq_;
    typename Equation::template At<Real> at_;
    Given given_;
    int n_;
    Values<Real> z_{}, mu_{};
    double p_;
    Real T_, P_ = 0, beta_ = 0;
    Phase<Real> a_, b_;
    int iterations_ = 0;
    double uncertainty_ = 0;
};

}  // namespace judge
