// Association in mixtures: which sites of which molecules are free.
//
// Every molecule k has nd donors and na acceptors; a donor of k bonds to an acceptor of l with the
// strength Δ(k, l) = Δ(l, k). With the donors eliminated, the fractions X of free acceptors solve
//     X_k = T_k(X) = 1/(1 + Σ_l rho_l·nd_l·Δ(k, l)·Y_l),   Y_l = 1/(1 + Σ_j rho_j·na_j·Δ(l, j)·X_j)
// (Chapman, Gubbins, Jackson & Radosz, Ind. Eng. Chem. Res. 29 (1990) 1709). T increases with every
// X, and it is concave, since a harmonic mean of linear functions is. So X − T(X) is convex with an
// M-matrix as its derivative wherever T(X) <= X, and Newton's method from such a point falls
// monotonically to the only root in (0, 1] (Ortega & Rheinboldt, Iterative Solution of Nonlinear
// Equations in Several Variables (1970), 13.3.4): it needs no damping.
#pragma once

#include <corvane/plugin/jet.h>
#include <plugins/common/pcsaft/association.h>
#include <corvane/plugin/small_array.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace corvane::pcsaft {

/// Highest order of the derivatives that a type carries, those of its values included.
template <class S>
inline constexpr int order_of = 0;
template <Differentiable S>
inline constexpr int order_of<S> = S::order + order_of<std::decay_t<decltype(std::declval<S>().value())>>;

/// Two kinds of molecules are the usual case: loops of a known length.
using Two = std::integral_constant<int, 2>;

/// LU decomposition without pivoting, which M-matrices do not need, in place. Count: int, or Two.
template <class Count>
void factorize(Count n, double* a) {
    for (int k = 0; k < n; ++k)
        for (int i = k + 1; i < n; ++i) {
            const double f = a[i * n + k] /= a[k * n + k];
            for (int j = k + 1; j < n; ++j) a[i * n + j] -= f * a[k * n + j];
        }
}
/// Solves with the factors; the right-hand side becomes the solution.
template <class Count, class S>
void substitute(Count n, double const* lu, S* b) {
    for (int i = 1; i < n; ++i)
        for (int j = 0; j < i; ++j) b[i] -= b[j] * lu[i * n + j];
    for (int i = n - 1; i >= 0; --i) {
        for (int j = i + 1; j < n; ++j) b[i] -= b[j] * lu[i * n + j];
        b[i] *= 1.0 / lu[i * n + i];
    }
}

/// The sites of molecules that are alone in associating, with D = rho·Δ: members as those of Sites.
template <class S>
struct OneKind {
    OneKind(double nd, double na, S const& D)
        : free_a(free_sites(nd, na, D).acceptors), to_a(na * (D * free_a)) {
        const bool alike = nd == na;  // then to the last bit, for Sites::respond
        free_d = alike ? free_a : 1.0 / (1.0 + to_a);
        to_d = alike ? to_a : nd * D * free_d;
    }
    S free_a, to_a, free_d, to_d;
};
/// What molecules of one kind add to the residual Helmholtz energy. With ln X = −ln(1 + to) it is
/// relatively accurate for few bonds and for many.
template <class S>
S site_energy(double nd, double na, S const& free_d, S const& to_a, S const& to_d) {
    using std::log1p;
    return nd * (free_d * to_a - log1p(to_a)) - na * log1p(to_d);
}

/// The sites of n associating molecules at one state. The caller fills the public arrays up to
/// `strength`, then calls solve().
template <class S>
class Sites {
  public:
    explicit Sites(int size)
        : n(size),
          nd(n),
          na(n),
          rho(n),
          strength(n * n),
          free_d(n),
          free_a(n),
          to_a(n),
          to_d(n),
          lu(n * n),
          step_(n),
          to_donors_(n * n),
          to_acceptors_(n * n) {}

    int n;
    SmallArray<double, 4> nd, na;
    SmallArray<S, 4> rho;             // amounts of the molecules, mol/cm³
    SmallArray<S, 16> strength;       // Δ(k, l), row by row, cm³/mol
    SmallArray<S, 4> free_d, free_a;  // fractions of free donors and acceptors
    SmallArray<S, 4> to_a, to_d;      // 1/free_d − 1 and 1/free_a − 1
    SmallArray<double, 16> lu;        // factors of I − T' at the root, if n > 1

    /// At most 100 steps, about five as a rule; the last iterate counts. What is not finite gives fractions that are not.
    void solve() {
        if (n == 1) {
            const OneKind<S> one(nd[0], na[0], S(rho[0] * strength[0]));
            free_a[0] = one.free_a;
            to_a[0] = one.to_a;
            free_d[0] = one.free_d;
            to_d[0] = one.to_d;
            return;
        }
        if (n == 2)
            iterate(Two{});
        else
            iterate(n);
    }

    /// Residual Helmholtz energy over R·T [mol/cm³], Σ over sites of ln X − X/2 + 1/2.
    S energy() const {
        S a = 0.0;
        for (int k = 0; k < n; ++k)
            a += rho[k] * site_energy(nd[k], na[k], free_d[k], to_a[k], to_d[k]);
        return a;
    }
    /// Density of the bonds between donors of k and acceptors of l over rho_k and rho_l.
    S bonds(int k, int l) const {
        return (nd[k] * na[l]) * (free_d[k] * free_a[l] * strength[k * n + l]);
    }
    /// Response of the fractions to a change that makes to_a grow by `da` and to_d by `dd` at
    /// constant fractions: on return the changes of ln free_d and ln free_a.
    void respond(double* da, double* dd) const {
        if (n == 1) return respond_alone(*da, *dd);
        SmallArray<double, 4> dX(n);
        for (int k = 0; k < n; ++k) {
            double sum = dd[k];
            for (int l = 0; l < n; ++l)
                sum -= rho[l] * nd[l] * strength[k * n + l] * free_d[l] * free_d[l] * da[l];
            dX[k] = -free_a[k] * free_a[k] * sum;
        }
        substitute(n, &lu[0], &dX[0]);
        for (int k = 0; k < n; ++k) {
            for (int j = 0; j < n; ++j) da[k] += rho[j] * na[j] * strength[k * n + j] * dX[j];
            da[k] *= -free_d[k];
        }
        for (int k = 0; k < n; ++k) dd[k] = dX[k] / free_a[k];
    }

  private:
    /// With the changes ξ of ln X and υ of ln Y the mass balance is
    ///     ξ + (1 − X)·υ = −X·dd,   (1 − Y)·ξ + υ = −Y·da.
    /// Its determinant is X + Y − X·Y, however few sites are free; of as many donors as acceptors
    /// the differences below vanish exactly.
    void respond_alone(double& da, double& dd) const {
        const double X = free_a[0], Y = free_d[0], xd = X * dd, ya = Y * da;
        const double determinant = X + Y - X * Y;
        dd = ((ya - xd) - X * ya) / determinant;
        da = ((xd - ya) - Y * xd) / determinant;
    }
    template <class Count>
    void iterate(Count count) {
        for (int k = 0; k < count; ++k)
            for (int l = 0; l < count; ++l) {
                const S amount = rho[l] * strength[k * count + l];
                to_donors_[k * count + l] = nd[l] * amount;
                to_acceptors_[k * count + l] = na[l] * amount;
            }
        if constexpr (order_of<S> == 0) {
            start(count);
            for (int k = 0; k < 100; ++k) {
                defect(count);
                jacobian(count);
                substitute(count, &lu[0], &step_[0]);
                double change = 0.0;
                for (int i = 0; i < count; ++i) {
                    free_a[i] += step_[i];
                    change = std::max(change, std::abs(step_[i] / free_a[i]));
                }
                if (!(change > 1e-9)) break;  // quadratic convergence: the next step is rounding
            }
            defect(count);
            jacobian(count);  // of the root, for its derivatives
        } else {
            // The root of the values; then each correction adds an order of derivatives.
            Sites<double> base(n);
            for (int k = 0; k < count; ++k) {
                base.nd[k] = nd[k];
                base.na[k] = na[k];
                base.rho[k] = value_of(rho[k]);
                for (int l = 0; l < count; ++l)
                    base.strength[k * count + l] = value_of(strength[k * count + l]);
            }
            base.solve();
            for (int k = 0; k < count; ++k) free_a[k] = base.free_a[k];
            for (int order = 0; order < order_of<S>; ++order) {
                defect(count);
                substitute(count, &base.lu[0], &step_[0]);
                for (int k = 0; k < count; ++k) free_a[k] += step_[k];
            }
            defect(count);
        }
    }
    /// T(X) − X, and the free donors next to the present free acceptors.
    template <class Count>
    void defect(Count count) {
        for (int k = 0; k < count; ++k) {
            S sum = to_acceptors_[k * count] * free_a[0];
            for (int j = 1; j < count; ++j) sum += to_acceptors_[k * count + j] * free_a[j];
            to_a[k] = sum;
            free_d[k] = 1.0 / (1.0 + sum);
        }
        for (int k = 0; k < count; ++k) {
            S sum = to_donors_[k * count] * free_d[0];
            for (int l = 1; l < count; ++l) sum += to_donors_[k * count + l] * free_d[l];
            to_d[k] = sum;
            step_[k] = 1.0 / (1.0 + sum) - free_a[k];
        }
    }
    /// What a fluid of one kind of molecules with such bonds would have, or else 1.
    template <class Count>
    void start(Count count) {
        for (int k = 0; k < count; ++k) {
            double bonds = 0.0;
            for (int l = 0; l < count; ++l) bonds += to_donors_[k * count + l];
            free_a[k] = bonds > 0.0 ? 2.0 / (1.0 + std::sqrt(1.0 + 4.0 * bonds)) : 1.0;
        }
        defect(count);
        if (std::any_of(&step_[0], &step_[0] + count, [](double d) { return d > 0.0; }))
            std::fill_n(&free_a[0], count, 1.0);
    }
    /// Factors of I − T' with T' = T_k²·Σ_l c(k, l)·Y_l²·e(l, j).
    template <class Count>
    void jacobian(Count count) {
        for (int k = 0; k < count; ++k) {
            const double T = 1.0 / (1.0 + to_d[k]);
            for (int j = 0; j < count; ++j) {
                double sum = 0.0;
                for (int l = 0; l < count; ++l)
                    sum += to_donors_[k * count + l] * (free_d[l] * free_d[l]) *
                           to_acceptors_[l * count + j];
                lu[k * count + j] = (k == j) - T * T * sum;
            }
        }
        factorize(count, &lu[0]);
    }

    SmallArray<S, 4> step_;
    SmallArray<S, 16> to_donors_, to_acceptors_;  // c(k, l) and e(k, l): nd_l or na_l, times rho_l·Δ(k, l)
};

/// A^r/(RT) of the association in a fluid of the authors' kit: at[i] has donors and acceptors, x[i]
/// is the mole fraction, strength(i, j) gives rho·Δ of a pair with i >= j.
template <class S, class At, class X, class Strength>
S association_energy(At const& at, X const& x, Strength const& strength) {
    SmallArray<int, 8> of(at.size());
    int n = 0;
    for (int i = 0; i < at.size(); ++i)
        if (at[i].donors + at[i].acceptors > 0.0) of[n++] = i;
    if (n == 0) return S(0.0);
    if (n == 1) {
        const int i = of[0];
        const auto amount = x[i];
        const double nd = at[i].donors, na = at[i].acceptors;
        const OneKind<S> one(nd, na, S(amount * strength(i, i)));
        return amount * site_energy(nd, na, one.free_d, one.to_a, one.to_d);
    }
    Sites<S> sites(n);
    for (int k = 0; k < n; ++k) {
        sites.nd[k] = at[of[k]].donors;
        sites.na[k] = at[of[k]].acceptors;
        sites.rho[k] = x[of[k]];
        for (int l = 0; l <= k; ++l)
            sites.strength[k * n + l] = sites.strength[l * n + k] = strength(of[k], of[l]);
    }
    sites.solve();
    return sites.energy();
}

}  // namespace corvane::pcsaft
