// A PC-SAFT mixture at one composition: a function of temperature and density alone.
//
// Along an isotherm all moments ζ_n = rho·Σ x_i·m_i·d_i^n are proportional to eta = ζ_3, so that
// the mixture has the form of a pure fluid with a few coefficients more (Gross & Sadowski, Ind.
// Eng. Chem. Res. 40 (2001) 1244, eqs. A.3-A.23):
//     a = a_hs(eta) − Σ x_i·(m_i − 1)·ln g_ii − 12·rho·E1/T·I1 − 6·rho·E2/T²·m·C1·I2 + a_assoc +
//         a_polar
// with E1, E2 the quadratic sums of the pair energies.
#pragma once

#include <corvane/core/containers.h>
#include <plugins/common/pcsaft/cross_association.h>
#include <plugins/common/pcsaft/diameter.h>
#include <plugins/common/pcsaft/dispersion.h>
#include <plugins/common/pcsaft/hard_mixture.h>
#include <plugins/pcsaft_lb/components.h>

#include <optional>

namespace corvane::pcsaft {

/// T is double, or a type that carries temperature derivatives. Absent components count nowhere.
template <class T>
class MixtureIsotherm {
  public:
    MixtureIsotherm(Components const& c, Vector<double> const& x, T const& temperature)
        : associating_(associating(c, x)),
          chains_(c.size),
          sites_(associating_),
          molecules_(associating_),
          pairs_(associating_ * associating_),
          dispersion_(mean_segments(c, x)) {
        SmallArray<int> present(c.size);
        int n = 0, found = 0;
        for (int i = 0; i < c.size; ++i)
            if (x[i] != 0.0) present[n++] = i;
        SmallArray<T> d(n);
        T z2 = 0.0;
        PairEnergy sum;
        for (int a = 0; a < n; ++a) {
            const int i = present[a];
            const double xm = x[i] * c[i].m;
            const T delta = diameter(T(c[i].Ts / temperature)), square = delta * delta;
            d[a] = c[i].sigma * delta;
            m_ += xm;
            z1_ += xm * d[a];
            z2 += (xm * c[i].sigma * c[i].sigma) * square;
            packing_ += (xm * c[i].vs) * (square * delta);
            for (int b = 0; b <= a; ++b) {
                const double weight = (a == b ? 1.0 : 2.0) * x[i] * x[present[b]];
                sum.add(c.energy(i, present[b]), weight);
            }
            if (c.associates(i)) sites_[found++] = a;
        }
        const T ratio = z2 / packing_, beta = 1.0 / temperature;  // ζ2/ζ3
        cross_ = 3.0 * z1_ * ratio;
        unequal_ = z2 * ratio * ratio;
        first_ = (-12.0 * sum.first) * beta / packing_;
        second_ = (-6.0 * m_ * sum.second) * (beta * beta) / packing_;
        if (sum.varies()) {
            first_ += -12.0 * sum.first_more(beta) * beta / packing_;
            second_ += -6.0 * m_ * sum.second_more(beta) * (beta * beta) / packing_;
        }
        count_ = n;
        for (int a = 0; a < n; ++a) {
            const int i = present[a];
            chains_[a] = {x[i] * (c[i].m - 1.0), ContactLine<T>(d[a] * ratio)};
        }
        if (associating_ > 0) prepare_sites(c, x, temperature, present, d, ratio);
        if (c.polar()) prepare_moments(c, x, temperature);
    }
    MixtureIsotherm(MixtureIsotherm const&) = delete;
    MixtureIsotherm& operator=(MixtureIsotherm const&) = delete;

    /// eta/rho, cm³/mol.
    T const& packing() const { return packing_; }
    /// Mean number of segments of a molecule.
    double segments() const { return m_; }

    /// A^r/(RT) at the packing fraction eta.
    template <class S>
    S ar(S const& eta) const {
        using std::log1p;
        // −ζ0·ln(1 − eta) and the logarithm in ψ cancel for segments of one size.
        const S inverse = 1.0 / (1.0 - eta);
        S a = (unequal_ - m_) * log1p(-eta) + eta * inverse * (cross_ + unequal_ * inverse);
        for (int i = 0; i < count_; ++i)
            if (chains_[i].bonds != 0.0) a -= chains_[i].bonds * chains_[i].contact.ln_g(eta);
        a += eta *
             (first_ * dispersion_.i1(eta) + second_ * (dispersion_.c1(eta) * dispersion_.i2(eta)));
        if (associating_ > 0) {
            Sites<S> sites(associating_);
            solve(sites, eta);
            a += sites.energy();
        }
        if (polar_) a += polar_->ar(eta);
        return a;
    }

    /// ∂(A^r/RT)/∂eta at constant temperature: Z = 1 + eta·slope.
    template <class S>
    S slope(S const& eta) const {
        const S inverse = 1.0 / (1.0 - eta);
        S a = m_ * inverse + cross_ * (inverse * inverse) +
              unequal_ * (eta * unequal_spheres_slope_over_eta(eta));
        for (int i = 0; i < count_; ++i)
            if (chains_[i].bonds != 0.0) a -= chains_[i].bonds * chains_[i].contact.ln_g_slope(eta);
        a += first_ * dispersion_.i1_slope(eta) + second_ * dispersion_.c1i2_slope(eta);
        if (associating_ > 0) {  // dA^r = −Σ bonds·d ln(rho·Δ)
            Sites<S> sites(associating_);
            solve(sites, eta);
            const int n = associating_;
            for (int k = 0; k < n; ++k)
                for (int l = 0; l < n; ++l) {
                    Molecule const &donor = molecules_[k], &acceptor = molecules_[l];
                    SitePair const& p = pairs_[k * n + l];
                    a -= (donor.x * acceptor.x * donor.donors * acceptor.acceptors) *
                         (sites.free_d[k] * sites.free_a[l]) * (p.bond * p.contact.g(eta)) *
                         (1.0 + eta * p.contact.ln_g_slope(eta));
                }
        }
        if (polar_) a += polar_->slope(eta);
        return a;
    }

  private:
    struct Chain {
        double bonds = 0;  // x·(m − 1)
        ContactLine<T> contact{};
    };
    struct Molecule {
        double x, donors, acceptors;
    };
    struct SitePair {
        T bond{};  // Δ/(g·packing)
        ContactLine<T> contact{};
    };

    static double mean_segments(Components const& c, Vector<double> const& x) {
        double m = 0.0;
        for (int i = 0; i < c.size; ++i) m += x[i] * c[i].m;
        return m;
    }
    static int associating(Components const& c, Vector<double> const& x) {
        int n = 0;
        for (int i = 0; i < c.size; ++i) n += x[i] != 0.0 && c.associates(i);
        return n;
    }
    void prepare_sites(Components const& c, Vector<double> const& x, T const& temperature,
                       SmallArray<int> const& present, SmallArray<T> const& d, T const& ratio) {
        const int n = associating_;
        for (int k = 0; k < n; ++k) {
            const int i = present[sites_[k]];
            molecules_[k] = {x[i], c[i].donors, c[i].acceptors};
            for (int l = 0; l <= k; ++l) {
                T const &dk = d[sites_[k]], &dl = d[sites_[l]];
                const T mean = k == l ? dk : T(2.0 * dk * dl / (dk + dl));
                const T bond = c.bond(i, present[sites_[l]], temperature) / packing_;
                pairs_[k * n + l] = pairs_[l * n + k] = {bond, ContactLine<T>(mean * ratio)};
            }
        }
    }
    void prepare_moments(Components const& c, Vector<double> const& x, T const& temperature) {
        SmallArray<Moments, 8> of(c.size);
        SmallArray<double> fraction(c.size);
        SmallArray<int> number(c.size);
        int n = 0;
        for (int i = 0; i < c.size; ++i)
            if (x[i] != 0.0 && c[i].polar()) {
                fraction[n] = x[i];
                number[n] = i;
                of[n++] = c[i].moments();
            }
        const auto like = [&](int k, int l) { return c.like(number[k], number[l]); };
        if (n > 0) polar_.emplace(of, n, fraction, like, temperature, packing_);
    }
    /// Free sites. The amounts are mole fractions and the strengths rho·Δ, so that energies come
    /// out per molecule.
    template <class S>
    void solve(Sites<S>& s, S const& eta) const {
        const int n = associating_;
        for (int k = 0; k < n; ++k) {
            s.nd[k] = molecules_[k].donors;
            s.na[k] = molecules_[k].acceptors;
            s.rho[k] = molecules_[k].x;
            for (int l = 0; l <= k; ++l) {
                SitePair const& p = pairs_[k * n + l];
                s.strength[k * n + l] = s.strength[l * n + k] = p.bond * eta * p.contact.g(eta);
            }
        }
        s.solve();
    }

    int count_ = 0, associating_;
    double m_ = 0.0;
    T z1_ = 0.0, packing_ = 0.0;
    T cross_, unequal_, first_, second_;
    SmallArray<Chain> chains_;
    SmallArray<int, 4> sites_;  // of the associating among the present components
    SmallArray<Molecule, 4> molecules_;
    SmallArray<SitePair, 16> pairs_;
    Dispersion<double> dispersion_;
    std::optional<PolarLines<T>> polar_;
};

}  // namespace corvane::pcsaft
