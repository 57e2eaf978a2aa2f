// Chemical potentials of a PC-SAFT mixture and their derivatives, in closed form.
//
// The residual Helmholtz energy density over R·T is a function of the partial densities n_i through
// n = Σ n_i and the moments ζ_k = Σ n_i·m_i·d_i^k, and of
//     D1 = Σ Σ n_i·n_j·E1_ij/T,  D2 = Σ Σ n_i·n_j·E2_ij/T²,  m = ζ_0/n:
//     F = F_hs(ζ) − Σ n_i·(m_i − 1)·ln g_ii(ζ2, ζ3) − 12·D1·I1(ζ3, m) − 6·D2·G(ζ3, m) + F_assoc
// with G = m·C1·I2. F_assoc is stationary in the fractions of free sites (Michelsen & Hendriks,
// Fluid Phase Equilib. 180 (2001) 165); its second derivatives follow from the mass balance by
// implicit differentiation.
#pragma once

#include <plugins/pcsaft_lb/isotherm.h>
#include <plugins/pcsaft_lb/polar_potentials.h>

#include <array>
#include <optional>

namespace corvane::pcsaft {

/// A function of ζ3 and m with its derivatives.
struct Surface {
    double f, z, m, zz, zm, mm;
};

/// I1 and G with their derivatives; those of second order from Order = 2 on.
template <int Order>
void dispersion_surfaces(double eta, double mean, Surface& i1, Surface& G) {
    using Series = Jet<Order, Order>;
    // Steps of absolute size: the value 1 carries them, then it is exchanged.
    const Series z = Series::along_h(1.0) - 1.0 + eta, m = Series::along_k(1.0) - 1.0 + mean;
    const Dispersion<Series> d(m);
    auto surface = [](Series const& s) {
        Surface r{s(0, 0), s(1, 0), s(0, 1), 0, 0, 0};
        if constexpr (Order > 1) {
            r.zz = 2.0 * s(2, 0);
            r.zm = s(1, 1);
            r.mm = 2.0 * s(0, 2);
        }
        return r;
    };
    i1 = surface(d.i1(z));
    G = surface(m * (d.c1(z) * d.i2(z)));
}

/// The mixture at given partial densities. S is double, or Jet<1> that carries derivatives in T.
/// Second derivatives are for S = double.
template <class S>
class Potentials {
  public:
    Potentials(Components const& components, Vector<double> const& n_i, S const& T, bool second)
        : c_(components),
          N_(c_.size),
          second_(second),
          rho_(N_),
          d_(N_),
          D1_(N_),
          D2_(N_),
          own_(N_),
          index_(N_),
          sites_(count_associating()),
          row_(N_) {
        for (int i = 0; i < N_; ++i) rho_[i] = n_i[i];
        moments(T);
        hard_spheres();
        for (int i = 0; i < N_; ++i) {
            const ContactPoint<S> g(d_[i], z_[2], z_[3], ln_free_, second);
            own_[i] = {(c_[i].m - 1.0) * g.ln_g(), (c_[i].m - 1.0) * g.d2, (c_[i].m - 1.0) * g.d3};
            add_contact(g, rho_[i] * (c_[i].m - 1.0));
        }
        dispersion();
        if (sites_.n > 0) associate(T);
        if (c_.polar()) F_[3] += polar_.emplace(c_, rho_, T, z_[3], second).slope();
        if constexpr (order_of<S> == 0)
            if (second) prepare_rows();
    }
    Potentials(Potentials const&) = delete;
    Potentials& operator=(Potentials const&) = delete;

    /// ∂F/∂n_i, the residual chemical potential over R·T.
    S mu(int i) const {
        using std::log1p;
        S mu = F_[0] * moment(i, 0) - own_[i].ln_g;
        for (int k = 1; k < 4; ++k) mu += F_[k] * moment(i, k);
        const double m_i = (c_[i].m - mean_) / n_;
        mu -= 12.0 * (D1_[i] * i1_ + D1sum_ * (i1_m_ * m_i));
        mu -= 6.0 * (D2_[i] * G_ + D2sum_ * (G_m_ * m_i));
        if (index_[i] >= 0) {
            const int k = index_[i];
            mu -= sites_.nd[k] * log1p(sites_.to_a[k]) + sites_.na[k] * log1p(sites_.to_d[k]);
        }
        if (polar_) mu += polar_->mu(i);
        return mu;
    }

    /// ∂²F/∂n_i∂n_j for all pairs, row by row.
    void hessian(double* H) const {
        for (int i = 0; i < N_; ++i)
            for (int j = 0; j <= i; ++j) {
                double sum = 0.0;
                for (int k = 0; k < 4; ++k) sum += row_[i][k] * moment(j, k);
                sum -= contact_part(i, j) + contact_part(j, i);
                sum += dispersion_part(i, j);
                if (polar_) sum += polar_->hessian(i, j, moment(i, 3), moment(j, 3));
                H[i * N_ + j] = H[j * N_ + i] = sum;
            }
        if (sites_.n > 0) add_site_response(H);
    }

  private:
    struct Own {
        S ln_g, d2, d3;  // (m − 1) times ln g_ii and its slopes in ζ2, ζ3
    };

    /// ∂ζ_k/∂n_i.
    S moment(int i, int k) const {
        S q = c_[i].m;
        for (int p = 0; p < k; ++p) q = q * d_[i];
        return q;
    }
    int count_associating() {
        int n = 0;
        for (int i = 0; i < N_; ++i) index_[i] = c_.associates(i) ? n++ : -1;
        return n;
    }

    void moments(S const& T) {
        const S beta = 1.0 / T, beta2 = beta * beta;
        for (int i = 0; i < N_; ++i) {
            d_[i] = c_[i].sigma * diameter(S(c_[i].Ts * beta));
            n_ += rho_[i];
            for (int k = 0; k < 4; ++k) z_[k] += rho_[i] * moment(i, k);
            D1_[i] = D2_[i] = 0.0;
        }
        mean_ = value_of(z_[0]) / n_;
        SmallArray<PairEnergy> sum(N_);
        for (int i = 0; i < N_; ++i) sum[i] = {};
        for (int i = 0; i < N_; ++i)
            for (int j = 0; j <= i; ++j) {
                const PairEnergy e = c_.energy(i, j);
                sum[i].add(e, rho_[j]);
                if (i != j) sum[j].add(e, rho_[i]);
            }
        for (int i = 0; i < N_; ++i) {
            D1_[i] = 2.0 * sum[i].first * beta;
            D2_[i] = 2.0 * sum[i].second * beta2;
            if (sum[i].varies()) {
                D1_[i] += 2.0 * sum[i].first_more(beta) * beta;
                D2_[i] += 2.0 * sum[i].second_more(beta) * beta2;
            }
            D1sum_ += 0.5 * rho_[i] * D1_[i];
            D2sum_ += 0.5 * rho_[i] * D2_[i];
        }
        beta_ = value_of(beta);
    }
    void hard_spheres() {
        using std::log1p;
        S const &z0 = z_[0], &z1 = z_[1], &z2 = z_[2], &z3 = z_[3];
        const S inverse = 1.0 / (1.0 - z3), w = z2 / z3;
        ln_free_ = log1p(-z3);
        const S psi = unequal_spheres(z3);
        const S slope = z3 * z3 * unequal_spheres_slope_over_eta(z3);  // ζ3·ψ'
        F_[0] = -ln_free_;
        F_[1] = 3.0 * z2 * inverse;
        F_[2] = 3.0 * (z1 * inverse + w * w * psi);
        F_[3] = inverse * (z0 + 3.0 * z1 * z2 * inverse) + w * w * w * (slope - 2.0 * psi);
        if constexpr (order_of<S> == 0) {
            if (!second_) return;
            const double curve = z3 * z3 * unequal_spheres_curvature(z3);
            F03_ = inverse;
            F12_ = 3.0 * inverse;
            F13_ = 3.0 * z2 * inverse * inverse;
            F22_ = 6.0 * w * (psi / z3);
            F23_ = 3.0 * (z1 * inverse * inverse + w * w * ((slope - 2.0 * psi) / z3));
            F33_ = inverse * inverse * (z0 + 6.0 * z1 * z2 * inverse) +
                   w * w * w * ((curve - 4.0 * slope + 6.0 * psi) / z3);
        }
    }
    /// −weight·ln g(ζ2, ζ3) as part of F, at constant weight.
    void add_contact(ContactPoint<S> const& g, S const& weight) {
        F_[2] -= weight * g.d2;
        F_[3] -= weight * g.d3;
        if constexpr (order_of<S> == 0) {
            F22_ -= weight * g.d22;
            F23_ -= weight * g.d23;
            F33_ -= weight * g.d33;
        }
    }
    void dispersion() {
        const double z3 = value_of(z_[3]);
        if (second_ || order_of < S >> 0)
            dispersion_surfaces<2>(z3, mean_, surface1_, surfaceG_);
        else
            dispersion_surfaces<1>(z3, mean_, surface1_, surfaceG_);
        const S dz = z_[3] - z3;  // zero, with the slope of ζ3 in T
        auto along = [&](double f, double f_z) -> S { return f + f_z * dz; };
        i1_ = along(surface1_.f, surface1_.z);
        G_ = along(surfaceG_.f, surfaceG_.z);
        i1_m_ = along(surface1_.m, surface1_.zm);
        G_m_ = along(surfaceG_.m, surfaceG_.zm);
        F_[3] -= 12.0 * D1sum_ * along(surface1_.z, surface1_.zz) +
                 6.0 * D2sum_ * along(surfaceG_.z, surfaceG_.zz);
    }
    void associate(S const& T) {
        const int n = sites_.n;
        for (int i = 0; i < N_; ++i) {
            const int k = index_[i];
            if (k < 0) continue;
            sites_.nd[k] = c_[i].donors;
            sites_.na[k] = c_[i].acceptors;
            sites_.rho[k] = rho_[i];
            for (int j = 0; j <= i; ++j)
                if (index_[j] >= 0) {
                    const ContactPoint<S> g = site_contact(i, j, false);
                    sites_.strength[k * n + index_[j]] = sites_.strength[index_[j] * n + k] =
                        c_.bond(i, j, T) * g.g;
                }
        }
        sites_.solve();
        for (int i = 0; i < N_; ++i)  // dF = −Σ bonds·d ln g at constant amounts
            for (int j = 0; j < N_; ++j)
                if (index_[i] >= 0 && index_[j] >= 0)
                    add_contact(site_contact(i, j, second_),
                                rho_[i] * rho_[j] * sites_.bonds(index_[i], index_[j]));
    }
    ContactPoint<S> site_contact(int i, int j, bool second) const {
        const S d = i == j ? d_[i] : S(2.0 * d_[i] * d_[j] / (d_[i] + d_[j]));
        return {d, z_[2], z_[3], ln_free_, second};
    }

    // ---- second derivatives, S = double

    void prepare_rows() {
        F33_ -= 12.0 * D1sum_ * surface1_.zz + 6.0 * D2sum_ * surfaceG_.zz;
        for (int i = 0; i < N_; ++i) {
            const S q0 = moment(i, 0), q1 = moment(i, 1), q2 = moment(i, 2), q3 = moment(i, 3);
            row_[i] = {F03_ * q3, F12_ * q2 + F13_ * q3, F12_ * q1 + F22_ * q2 + F23_ * q3,
                       F03_ * q0 + F13_ * q1 + F23_ * q2 + F33_ * q3};
        }
    }
    double contact_part(int i, int j) const {
        return own_[i].d2 * moment(j, 2) + own_[i].d3 * moment(j, 3);
    }
    double dispersion_part(int i, int j) const {
        const PairEnergy e = c_.energy(i, j);
        const double zi = moment(i, 3), zj = moment(j, 3);
        const double mi = (c_[i].m - mean_) / n_, mj = (c_[j].m - mean_) / n_;
        const double mij = -(mi + mj) / n_;
        auto term = [&](Surface const& s, double D, double Di, double Dj, double Dij) {
            return Dij * s.f + Di * (s.z * zj + s.m * mj) + Dj * (s.z * zi + s.m * mi) +
                   D * (s.zm * (zi * mj + zj * mi) + s.mm * mi * mj + s.m * mij);
        };
        const double first = e.first + e.first_more(beta_), second = e.second + e.second_more(beta_);
        return -12.0 * term(surface1_, D1sum_, D1_[i], D1_[j], 2.0 * first * beta_) -
               6.0 * term(surfaceG_, D2sum_, D2_[i], D2_[j], 2.0 * second * beta_ * beta_);
    }
    /// How the bonds and the free sites follow a change of n_j.
    void add_site_response(double* H) const {
        const int n = sites_.n;
        SmallArray<double, 4> da(n), dd(n);
        SmallArray<int, 4> molecule(n);
        for (int i = 0; i < N_; ++i)
            if (index_[i] >= 0) molecule[index_[i]] = i;
        for (int j = 0; j < N_; ++j) {
            const double q2 = moment(j, 2), q3 = moment(j, 3);
            const int at = index_[j];
            for (int k = 0; k < n; ++k) {
                da[k] = dd[k] = 0.0;
                for (int l = 0; l < n; ++l) {
                    const ContactPoint<S> g = site_contact(molecule[k], molecule[l], false);
                    const double D = sites_.strength[k * n + l];
                    const double amount = (l == at) + sites_.rho[l] * (g.d2 * q2 + g.d3 * q3);
                    da[k] += sites_.na[l] * D * sites_.free_a[l] * amount;
                    dd[k] += sites_.nd[l] * D * sites_.free_d[l] * amount;
                }
            }
            sites_.respond(&da[0], &dd[0]);
            double s2 = 0.0, s3 = 0.0;  // slopes of −Σ bonds·∂ln g/∂ζ at constant ∂ln g/∂ζ
            for (int k = 0; k < n; ++k)
                for (int l = 0; l < n; ++l) {
                    const ContactPoint<S> g = site_contact(molecule[k], molecule[l], false);
                    const double rk = sites_.rho[k], rl = sites_.rho[l];
                    const double slope = rk * rl * (da[k] + dd[l] + g.d2 * q2 + g.d3 * q3) +
                                         (k == at) * rl + (l == at) * rk;
                    const double bonds = sites_.bonds(k, l) * slope;
                    s2 -= bonds * g.d2;
                    s3 -= bonds * g.d3;
                }
            for (int i = 0; i <= j; ++i) {
                double sum = s2 * moment(i, 2) + s3 * moment(i, 3);
                if (index_[i] >= 0)
                    sum +=
                        sites_.nd[index_[i]] * da[index_[i]] + sites_.na[index_[i]] * dd[index_[i]];
                H[i * N_ + j] += sum;
                H[j * N_ + i] = H[i * N_ + j];
            }
        }
    }

    Components const& c_;
    const int N_;
    const bool second_;
    SmallArray<double> rho_;
    SmallArray<S> d_, D1_, D2_;  // diameters, ∂D1/∂n_i, ∂D2/∂n_i
    SmallArray<Own> own_;
    SmallArray<int> index_;  // among the associating components, or −1
    Sites<S> sites_;
    double n_ = 0.0, mean_ = 0.0, beta_ = 0.0;
    S z_[4] = {0.0, 0.0, 0.0, 0.0}, F_[4];
    S D1sum_ = 0.0, D2sum_ = 0.0, ln_free_, i1_, i1_m_, G_, G_m_;
    double F03_ = 0, F12_ = 0, F13_ = 0, F22_ = 0, F23_ = 0, F33_ = 0;
    Surface surface1_, surfaceG_;
    SmallArray<std::array<double, 4>> row_;
    std::optional<PolarPotentials<S>> polar_;
};

}  // namespace corvane::pcsaft
