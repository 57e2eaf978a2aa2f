// The true critical point of a composition next to one that is given, with 113 bits.
#pragma once

#include "real.h"

#include <corvane/core/containers.h>

#include <algorithm>

namespace judge {

/// Where the smallest eigenvalue λ of B_ij = √(rho_i·rho_j)·∂m_i/∂rho_j and its slope along the
/// eigenvector vanish (Heidemann & Khalil, AIChE J. 26 (1980) 769): Newton's method in ln T and ln rho
/// with all derivatives by differences of potentials, whose steps leave 1e-13 or less.
template <class Equation>
class CriticalNewton {
  public:
    CriticalNewton(Equation const& equation, Vector<double> const& z) : eq_(equation), n_(z.size()) {
        for (int i = 0; i < n_; ++i) z_[i] = z[i];
    }
    /// False if it does not converge.
    bool solve(double T, double rho) {
        T_ = T, rho_ = rho;
        for (int it = 0; it < 12; ++it) {
            const Quad step = 1e-7;
            Quad f[2], g[2], r[2], J[2][2];
            conditions(T_, rho_, f);
            for (int k : {0, 1}) {
                conditions(k ? T_ : Quad(T_ * (1 + step)), k ? Quad(rho_ * (1 + step)) : rho_, g);
                for (int i : {0, 1}) J[i][k] = (g[i] - f[i]) / step;
            }
            for (int i : {0, 1}) r[i] = -f[i];
            if (!eliminate(J, r, 2)) return false;
            T_ *= 1 + r[0];
            rho_ *= 1 + r[1];
            if (abs(r[0]) + abs(r[1]) < 1e-13) return true;
        }
        return false;
    }
    Quad T() const { return T_; }
    Quad rho() const { return rho_; }
    Quad p() const {
        Values<Quad> h{}, x = z_;
        return typename Equation::template At<Quad>(eq_, T_).state(rho_, x.data(), h.data()) *
               Quad(R) * T_;
    }

  private:
    using Square = Quad[kMax][kMax];
    /// √(rho_i·rho_j)·∂m_i/∂rho_j at the densities d, scaled by those of the composition z.
    template <class At>
    void hessian(At const& at, Quad rho, Values<Quad> const& d, Square& B) const {
        const Quad step = 1e-9;  // leaves 1e-18 of truncation, 1e-25 of rounding
        for (int j = 0; j < n_; ++j) {
            Values<Quad> m[2];
            for (int side : {0, 1}) {
                Values<Quad> e = d, x{}, h{};
                e[j] *= side ? 1 + step : 1 - step;
                Quad total = 0;
                for (int i = 0; i < n_; ++i) total += e[i];
                for (int i = 0; i < n_; ++i) x[i] = e[i] / total;
                at.state(total, x.data(), h.data());
                for (int i = 0; i < n_; ++i) m[side][i] = h[i] + log(x[i]);
            }
            for (int i = 0; i < n_; ++i)
                B[i][j] = sqrt(z_[i] * z_[j]) * rho * (m[1][i] - m[0][i]) / (2 * step * d[j]);
        }
    }
    void conditions(Quad T, Quad rho, Quad* f) {
        const typename Equation::template At<Quad> at(eq_, T);
        Values<Quad> d{};
        for (int i = 0; i < n_; ++i) d[i] = rho * z_[i];
        Square B;
        hessian(at, rho, d, B);
        // Inverse iteration, shifted so that the matrix is not singular.
        Values<Quad> u = u_;
        for (int it = 0; it < 40; ++it) {
            Square A;
            Quad b[kMax], norm = 0;
            for (int i = 0; i < n_; ++i) {
                b[i] = u[i];
                for (int j = 0; j < n_; ++j) A[i][j] = B[i][j] + (i == j ? Quad(1e-3) : Quad(0));
            }
            if (!eliminate(A, b, n_)) break;
            for (int i = 0; i < n_; ++i) norm += b[i] * b[i];
            for (int i = 0; i < n_; ++i) u[i] = b[i] / sqrt(norm);
        }
        u_ = u;
        auto form = [&](Square const& A) {
            Quad sum = 0;
            for (int i = 0; i < n_; ++i)
                for (int j = 0; j < n_; ++j) sum += u[i] * u[j] * A[i][j];
            return sum;
        };
        f[0] = form(B);
        const Quad h = 1e-8;
        Quad side[2];
        for (int k : {0, 1}) {
            Values<Quad> e{};
            for (int i = 0; i < n_; ++i)
                e[i] = d[i] + (k ? h : Quad(-h)) * rho * sqrt(z_[i]) * u[i];
            hessian(at, rho, e, B);
            side[k] = form(B);
        }
        f[1] = (side[1] - side[0]) / (2 * h);
    }

    Equation const& eq_;
    int n_;
    Values<Quad> z_{}, u_{1, Quad(-0.7), Quad(0.3)};
    Quad T_, rho_;
};

}  // namespace judge
